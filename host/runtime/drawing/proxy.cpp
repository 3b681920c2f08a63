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

ProxyData::~ProxyData() { acutRelRb(dxfItems); }

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

}  // namespace
}  // namespace kelvo::drawing

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbProxyEntity, AcDbEntity)

AcDbProxyEntity::AcDbProxyEntity() : data_(new ProxyData) {}
AcDbProxyEntity::~AcDbProxyEntity() { delete data_; }

int AcDbProxyEntity::proxyFlags() const { return data_->proxyFlags; }
const ACHAR* AcDbProxyEntity::originalClassName() const { return data_->className.c_str(); }
const ACHAR* AcDbProxyEntity::originalDxfName() const { return data_->dxfName.c_str(); }
const ACHAR* AcDbProxyEntity::applicationDescription() const { return data_->appName.c_str(); }
Acad::ErrorStatus AcDbProxyEntity::getReferences(AcDbObjectIdArray&, AcDbIntArray&) const {
    return Acad::eOk;
}
AcDbProxyEntity::GraphicsMetafileType AcDbProxyEntity::graphicsMetafileType() const { return kNoMetafile; }

Adesk::Boolean AcDbProxyEntity::subWorldDraw(AcGiWorldDraw*) { return true; }

void AcDbProxyEntity::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"                  Proxy of class \"%s\" (%s)\n", data_->className.c_str(),
               data_->dxfName.c_str());
}

Acad::ErrorStatus AcDbProxyEntity::subTransformBy(const AcGeMatrix3d&) {
    return Acad::eNotAllowedForThisProxy;
}

Acad::ErrorStatus AcDbProxyEntity::subGetGeomExtents(AcDbExtents&) const { return Acad::eInvalidExtents; }

Acad::ErrorStatus AcDbProxyEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    if (data_->fromDwg) return writeRaw(filer, *data_);
    return AcDbEntity::dwgOutFields(filer);
}

Acad::ErrorStatus AcDbProxyEntity::dwgInFields(AcDbDwgFiler* filer) { return AcDbEntity::dwgInFields(filer); }

Acad::ErrorStatus AcDbProxyEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    for (const resbuf* rb = data_->dxfItems; rb; rb = rb->rbnext) filer->writeItem(*rb);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbProxyEntity::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    data_->setDxfItems(readRemainingItems(filer));
    es = filer->filerStatus();
    return es == Acad::eEndOfObject || es == Acad::eEndOfFile ? Acad::eOk : es;
}

// --- proxy objects -----------------------------------------------------------------------

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbProxyObject, AcDbObject)

AcDbProxyObject::AcDbProxyObject() : data_(new ProxyData) {}
AcDbProxyObject::~AcDbProxyObject() { delete data_; }

int AcDbProxyObject::proxyFlags() const { return data_->proxyFlags; }
const ACHAR* AcDbProxyObject::originalClassName() const { return data_->className.c_str(); }
const ACHAR* AcDbProxyObject::originalDxfName() const { return data_->dxfName.c_str(); }
const ACHAR* AcDbProxyObject::applicationDescription() const { return data_->appName.c_str(); }

Acad::ErrorStatus AcDbProxyObject::dwgOutFields(AcDbDwgFiler* filer) const {
    if (data_->fromDwg) return writeRaw(filer, *data_);
    return AcDbObject::dwgOutFields(filer);
}

Acad::ErrorStatus AcDbProxyObject::dwgInFields(AcDbDwgFiler* filer) { return AcDbObject::dwgInFields(filer); }

Acad::ErrorStatus AcDbProxyObject::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    for (const resbuf* rb = data_->dxfItems; rb; rb = rb->rbnext) filer->writeItem(*rb);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbProxyObject::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    data_->setDxfItems(readRemainingItems(filer));
    es = filer->filerStatus();
    return es == Acad::eEndOfObject || es == Acad::eEndOfFile ? Acad::eOk : es;
}
