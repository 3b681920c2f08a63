// Proxies: objects of classes this host cannot read, kept as they were read so that they
// are written back unchanged. From a DXF source a proxy keeps the groups after the common
// entity part; from a DWG source, the object's whole stream.

#include <vector>

#include "adslib.h"
#include "dbfiler.h"
#include "dbproxy.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/proxy_data.h"
#include "runtime/drawing/resbuf_chain.h"

using namespace kelvo::drawing;

namespace kelvo::drawing {

ProxyData::~ProxyData() {
    acutRelRb(dxfItems);
}

void ProxyData::setDxfItems(resbuf* items) {
    acutRelRb(dxfItems);
    dxfItems = items;
}

namespace {

Acad::ErrorStatus writeRaw(AcDbDwgFiler* filer, const ProxyData& data) {
    if (auto* memory = dynamic_cast<DwgMemoryFiler*>(filer)) {
        memory->appendRaw(data.dwgBytes);
        return memory->filerStatus();
    }
    return filer->writeBytes(data.dwgBytes.data(), data.dwgBytes.size());
}

// Keeps every remaining item of the object.
resbuf* readRemainingItems(AcDbDxfFiler* filer) {
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    DxfItem item;
    while (item.read(filer)) appendNode(head, tail, copyNode(&item.rb()));
    return head;
}

bool isObjectPartGroup(int code) {
    return code == 5 || code == 105 || code == 102 || code == 330 || code == 360;
}

// The groups the common entity part (AcDbEntity) writes from its own fields.
bool isEntityFieldGroup(int code) {
    switch (code) {
        case 6:
        case 8:
        case 48:
        case 60:
        case 62:
        case 67:
        case 370:
        case 420:
            return true;
        default:
            return false;
    }
}

// From the groups of a file's record: the groups after the common part up to the extended
// data (before the first subclass marker, those that are not the object's handle, owner
// and reactors), and the common entity part's groups the host has no field for.
void keepFileGroups(const std::vector<AcDbDxfGroupText>& all, bool entity, ProxyData& data) {
    data.dxfGroups.clear();
    data.entityExtras.clear();
    size_t i = 0;
    bool inBrace = false;
    for (; i < all.size() && all[i].code != 100 && all[i].code < 1000; ++i) {
        if (all[i].code == 102)
            inBrace = all[i].text.starts_with(L"{");
        else if (!inBrace && !isObjectPartGroup(all[i].code))
            data.dxfGroups.push_back(all[i]);
    }
    if (entity && i < all.size() && all[i].code == 100 && all[i].text == L"AcDbEntity") {
        for (++i; i < all.size() && all[i].code != 100 && all[i].code < 1000; ++i)
            if (!isEntityFieldGroup(all[i].code)) data.entityExtras.push_back(all[i]);
    }
    for (; i < all.size() && all[i].code < 1000; ++i) data.dxfGroups.push_back(all[i]);
    data.fromDxfFile = true;
}

// Writes what a proxy keeps: the file's groups to a file, else the items.
Acad::ErrorStatus writeKept(AcDbDxfFiler* filer, const ProxyData& data) {
    auto writeGroup = [filer](const AcDbDxfGroupText& g) {
        if (!g.id.isNull()) return filer->writeObjectId(static_cast<AcDb::DxfCode>(g.code), g.id);
        return filer->writeGroupText(g.code, g.text);
    };
    if (data.fromDxfFile &&
        (data.dxfGroups.empty() || writeGroup(data.dxfGroups.front()) != Acad::eNotImplemented)) {
        for (size_t i = 1; i < data.dxfGroups.size(); ++i) writeGroup(data.dxfGroups[i]);
        return filer->filerStatus();
    }
    for (const resbuf* rb = data.dxfItems; rb; rb = rb->rbnext) filer->writeItem(*rb);
    return filer->filerStatus();
}

// Reads what a proxy keeps, after its common part.
Acad::ErrorStatus readKept(AcDbDxfFiler* filer, ProxyData& data, bool entity) {
    std::vector<AcDbDxfGroupText> all;
    data.fromDxfFile = false;
    if (filer->objectGroupTexts(all)) keepFileGroups(all, entity, data);
    data.setDxfItems(readRemainingItems(filer));
    Acad::ErrorStatus es = filer->filerStatus();
    return es == Acad::eEndOfObject || es == Acad::eEndOfFile ? Acad::eOk : es;
}

}  // namespace
}  // namespace kelvo::drawing

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbProxyEntity, AcDbEntity)

AcDbProxyEntity::AcDbProxyEntity() : data_(new ProxyData) {}
AcDbProxyEntity::~AcDbProxyEntity() {
    delete data_;
}

int AcDbProxyEntity::proxyFlags() const {
    return data_->proxyFlags;
}
const ACHAR* AcDbProxyEntity::originalClassName() const {
    return data_->className.c_str();
}
const ACHAR* AcDbProxyEntity::originalDxfName() const {
    return data_->dxfName.c_str();
}
const ACHAR* AcDbProxyEntity::applicationDescription() const {
    return data_->appName.c_str();
}
Acad::ErrorStatus AcDbProxyEntity::getReferences(AcDbObjectIdArray&, AcDbIntArray&) const {
    return Acad::eOk;
}
AcDbProxyEntity::GraphicsMetafileType AcDbProxyEntity::graphicsMetafileType() const {
    return kNoMetafile;
}

Adesk::Boolean AcDbProxyEntity::subWorldDraw(AcGiWorldDraw*) {
    return true;
}

void AcDbProxyEntity::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"                  Proxy of class \"%s\" (%s)\n", data_->className.c_str(),
               data_->dxfName.c_str());
}

Acad::ErrorStatus AcDbProxyEntity::subTransformBy(const AcGeMatrix3d&) {
    return Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::subGetGeomExtents(AcDbExtents&) const {
    return Acad::eInvalidExtents;
}

Acad::ErrorStatus AcDbProxyEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    if (data_->fromDwg) return writeRaw(filer, *data_);
    return AcDbEntity::dwgOutFields(filer);
}

Acad::ErrorStatus AcDbProxyEntity::dwgInFields(AcDbDwgFiler* filer) {
    return AcDbEntity::dwgInFields(filer);
}

Acad::ErrorStatus AcDbProxyEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    if (data_->fromDxfFile && !data_->entityExtras.empty() &&
        filer->writeGroupText(data_->entityExtras.front().code, data_->entityExtras.front().text) ==
            Acad::eOk)
        for (size_t i = 1; i < data_->entityExtras.size(); ++i)
            filer->writeGroupText(data_->entityExtras[i].code, data_->entityExtras[i].text);
    return writeKept(filer, *data_);
}

Acad::ErrorStatus AcDbProxyEntity::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    return readKept(filer, *data_, true);
}

// --- proxy objects -----------------------------------------------------------------------

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbProxyObject, AcDbObject)

AcDbProxyObject::AcDbProxyObject() : data_(new ProxyData) {}
AcDbProxyObject::~AcDbProxyObject() {
    delete data_;
}

int AcDbProxyObject::proxyFlags() const {
    return data_->proxyFlags;
}
const ACHAR* AcDbProxyObject::originalClassName() const {
    return data_->className.c_str();
}
const ACHAR* AcDbProxyObject::originalDxfName() const {
    return data_->dxfName.c_str();
}
const ACHAR* AcDbProxyObject::applicationDescription() const {
    return data_->appName.c_str();
}

Acad::ErrorStatus AcDbProxyObject::dwgOutFields(AcDbDwgFiler* filer) const {
    if (data_->fromDwg) return writeRaw(filer, *data_);
    return AcDbObject::dwgOutFields(filer);
}

Acad::ErrorStatus AcDbProxyObject::dwgInFields(AcDbDwgFiler* filer) {
    return AcDbObject::dwgInFields(filer);
}

Acad::ErrorStatus AcDbProxyObject::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    return writeKept(filer, *data_);
}

Acad::ErrorStatus AcDbProxyObject::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    return readKept(filer, *data_, false);
}
