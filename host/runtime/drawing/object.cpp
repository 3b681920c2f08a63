// Objects of the drawing database: opening and closing, erasing, extended data, the
// extension dictionary and the object's own part of filing.
//
// Open states of a database-resident object (readers_, writer_, notifier_):
//   closed --open(read)--> reading(n) --close--> reading(n-1) ... closed
//   closed --open(write)--> writing --close--> closed
//   reading(1) --upgradeOpen--> writing --downgradeOpen--> reading(1)

#include <algorithm>
#include <cstdio>
#include <cwchar>

#include "dbdict.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/object_filing.h"
#include "runtime/drawing/proxy_data.h"
#include "runtime/drawing/resbuf_chain.h"
#include "runtime/drawing/xdata_size.h"

using namespace kelvo::drawing;

namespace kelvo::drawing {

int& assertionFailures() {
    static int count = 0;
    return count;
}

namespace {

constexpr int kMaxReaders = 256;

void reportAssertion(const char* what) {
    ++assertionFailures();
    std::fprintf(stderr, "; drawing: %s\n", what);
}

// The application name of a 1001 node.
std::wstring appName(const resbuf* rb) {
    return rb && rb->resval.rstring ? rb->resval.rstring : L"";
}

// The end of the application part that starts at `start` (the next 1001 or null).
const resbuf* segmentEnd(const resbuf* start) {
    const resbuf* rb = start->rbnext;
    while (rb && rb->restype != AcDb::kDxfRegAppName) rb = rb->rbnext;
    return rb;
}

bool isXDataCode(int code) {
    return (code >= 1000 && code <= 1071) && code != 1001;
}

// The host's limits on extended data: a string item holds at most 255 characters, and
// one object's extended data takes at most 16383 bytes.
constexpr std::size_t kMaxXDataString = 255;
constexpr std::size_t kMaxXDataBytes = 16383;

// The bytes one item takes in the object's extended data: its code, then its value.
std::size_t xdataItemSize(const resbuf* rb) {
    auto text = [&] { return rb->resval.rstring ? std::wcslen(rb->resval.rstring) : 0; };
    switch (rb->restype) {
        case 1001:
            return 1 + 2;
        case 1002:
            return 1 + 1;
        case 1000:
        case 1003:
        case 1005:
            return 1 + 2 + text();
        case 1004:
            return 1 + 1 + static_cast<std::size_t>(std::max<short>(rb->resval.rbinary.clen, 0));
        case 1070:
            return 1 + 2;
        case 1071:
            return 1 + 4;
        case 1040:
        case 1041:
        case 1042:
            return 1 + 8;
        default:
            return 1 + 24;  // the points and vectors, 1010..1013
    }
}

// Checks the items after the application names: strings within their limit, braces that
// open and close in order, the whole within the size limit.
Acad::ErrorStatus checkXDataItems(const resbuf* xdata) {
    std::size_t bytes = 0;
    int depth = 0;
    for (const resbuf* rb = xdata; rb; rb = rb->rbnext) {
        bytes += xdataItemSize(rb);
        if (rb->restype == AcDb::kDxfRegAppName) {
            if (depth != 0) return Acad::eInvalidInput;
            continue;
        }
        const ACHAR* s = rb->resval.rstring;
        if ((rb->restype == 1000 || rb->restype == 1003 || rb->restype == 1005) && s &&
            std::wcslen(s) > kMaxXDataString)
            return Acad::eStringTooLong;
        if (rb->restype == 1005) {  // a handle: one to sixteen hexadecimal digits
            std::wstring handle = s ? s : L"";
            if (handle.empty() || handle.size() > 16 ||
                handle.find_first_not_of(L"0123456789abcdefABCDEF") != std::wstring::npos)
                return Acad::eInvalidInput;
        }
        if (rb->restype == 1002) {
            std::wstring brace = s ? s : L"";
            if (brace == L"{")
                ++depth;
            else if (brace == L"}" && depth > 0)
                --depth;
            else
                return Acad::eInvalidInput;
        }
    }
    if (depth != 0) return Acad::eInvalidInput;
    return bytes > kMaxXDataBytes ? Acad::eXdataSizeExceeded : Acad::eOk;
}

bool isRegistered(AcDbDatabase* db, const std::wstring& name) {
    if (!db) return true;
    auto* table = AcDbRegAppTable::cast(peekObject(db->regAppTableId()));
    return table && table->has(name.c_str());
}

}  // namespace

std::size_t xdataBytes(const resbuf* xdata) {
    std::size_t bytes = 0;
    for (const resbuf* rb = xdata; rb; rb = rb->rbnext)
        if (rb->restype != AcDb::kDxfXDataStart) bytes += xdataItemSize(rb);
    return bytes;
}

std::size_t xdataLimit() {
    return kMaxXDataBytes;
}

}  // namespace kelvo::drawing

AcGiDrawable::~AcGiDrawable() = default;
AcRxClass* AcGiDrawable::desc() {
    return acrxFindClass(L"AcGiDrawable");
}
AcRxClass* AcGiDrawable::isA() const {
    return desc();
}

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObject, AcGiDrawable)

AcDbObject::AcDbObject() = default;

AcDbObject::~AcDbObject() {
    acutRelRb(xdata_);
}

AcDbObjectId AcDbObject::objectId() const {
    return AcDbObjectId(stub_);
}
AcDbObjectId AcDbObject::ownerId() const {
    return ownerId_;
}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId ownerId) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    ownerId_ = ownerId;
    return Acad::eOk;
}

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const {
    handle = stub_ ? stub_->handle : AcDbHandle();
}

AcDbDatabase* AcDbObject::database() const {
    return stub_ ? stub_->database : nullptr;
}

Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased) {
    pObj = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    if (!isLiveStub(id.stub())) return Acad::eInvalidObjectId;
    AcDbObject* object = id.stub()->object;
    if (!object) return Acad::eUnknownHandle;
    if (object->isErased() && !openErased) return Acad::eWasErased;
    int& readers = ObjectAccess::readersRef(*object);
    bool& writer = ObjectAccess::writerRef(*object);
    bool& notifier = ObjectAccess::notifierRef(*object);
    switch (mode) {
        case AcDb::kForRead:
            if (writer) return Acad::eWasOpenForWrite;
            if (readers >= kMaxReaders) return Acad::eAtMaxReaders;
            ++readers;
            break;
        case AcDb::kForWrite:
            if (writer) return Acad::eWasOpenForWrite;
            if (notifier) return Acad::eWasOpenForNotify;
            if (readers > 0) return Acad::eWasOpenForRead;
            writer = true;
            ++DatabaseAccess::data(*id.stub()->database).writeCount;
            break;
        case AcDb::kForNotify:
            if (notifier) return Acad::eWasOpenForNotify;
            notifier = true;
            break;
    }
    Acad::ErrorStatus es = ObjectAccess::callSubOpen(*object, mode);
    if (es != Acad::eOk) {
        if (mode == AcDb::kForRead)
            --readers;
        else if (mode == AcDb::kForWrite)
            writer = false;
        else
            notifier = false;
        return es;
    }
    pObj = object;
    return Acad::eOk;
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return acdbOpenObject(pObj, id, mode, openErased);
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return acdbOpenObject<AcDbEntity>(pEnt, id, mode, openErased);
}

Acad::ErrorStatus AcDbObject::close() {
    if (!stub_) return Acad::eNotInDatabase;
    if (writer_)
        writer_ = false;
    else if (readers_ > 0)
        --readers_;
    else if (notifier_)
        notifier_ = false;
    else
        return Acad::eNotOpenForRead;
    subClose();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (!stub_) return Acad::eOk;
    if (writer_) return Acad::eWasOpenForWrite;
    if (readers_ == 0) return Acad::eNotOpenForRead;
    if (readers_ > 1) return Acad::eHadMultipleReaders;
    readers_ = 0;
    writer_ = true;
    ++DatabaseAccess::data(*stub_->database).writeCount;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (!stub_) return Acad::eOk;
    if (!writer_) return Acad::eNotOpenForWrite;
    writer_ = false;
    readers_ = 1;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(Adesk::Boolean erasing) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!stub_) return Acad::eNotInDatabase;
    if (erasing == erased_) return erasing ? Acad::eWasErased : Acad::eWasNotErased;
    Acad::ErrorStatus es = subErase(erasing);
    if (es != Acad::eOk) return es;
    erased_ = erasing;
    modified_ = true;
    return Acad::eOk;
}

bool AcDbObject::isErased() const {
    return erased_;
}
bool AcDbObject::isReadEnabled() const {
    return !stub_ || readers_ > 0 || writer_ || notifier_;
}
bool AcDbObject::isWriteEnabled() const {
    return !stub_ || writer_;
}
bool AcDbObject::isNotifyEnabled() const {
    return !stub_ || notifier_;
}
bool AcDbObject::isNewObject() const {
    return !stub_;
}
bool AcDbObject::isModified() const {
    return modified_;
}

void AcDbObject::assertReadEnabled() const {
    if (!isReadEnabled()) reportAssertion("object is not open for read");
}

void AcDbObject::assertWriteEnabled(Adesk::Boolean, Adesk::Boolean recordModified) {
    if (!isWriteEnabled()) reportAssertion("object is not open for write");
    if (recordModified) modified_ = true;
}

void AcDbObject::assertNotifyEnabled() const {
    if (!isNotifyEnabled()) reportAssertion("object is not open for notify");
}

Acad::ErrorStatus AcDbObject::subOpen(AcDb::OpenMode) {
    return Acad::eOk;
}
Acad::ErrorStatus AcDbObject::subClose() {
    return Acad::eOk;
}
Acad::ErrorStatus AcDbObject::subErase(Adesk::Boolean) {
    return Acad::eOk;
}
Adesk::UInt32 AcDbObject::subSetAttributes(AcGiDrawableTraits*) {
    return kDrawableNone;
}
Adesk::Boolean AcDbObject::subWorldDraw(AcGiWorldDraw*) {
    return true;
}
void AcDbObject::subViewportDraw(AcGiViewportDraw*) {}
Adesk::Boolean AcDbObject::isPersistent() const {
    return stub_ != nullptr;
}
AcDbObjectId AcDbObject::id() const {
    return objectId();
}
Acad::ErrorStatus AcDbObject::audit(AcDbAuditInfo*) {
    return Acad::eOk;
}

// --- extended data -------------------------------------------------------------------

resbuf* AcDbObject::xData(const ACHAR* regappName) const {
    assertReadEnabled();
    if (!regappName) return copyChain(xdata_);
    std::wstring wanted = upperName(regappName);
    for (const resbuf* rb = xdata_; rb; rb = segmentEnd(rb))
        if (upperName(appName(rb)) == wanted) return copyChain(rb, segmentEnd(rb));
    return nullptr;
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!xdata) return Acad::eOk;
    if (xdata->restype != AcDb::kDxfRegAppName) return Acad::eInvalidInput;
    AcDbDatabase* db = stub_ ? stub_->database : workingDatabase();
    for (const resbuf* rb = xdata; rb; rb = rb->rbnext) {
        if (rb->restype == AcDb::kDxfRegAppName) {
            if (appName(rb).empty()) return Acad::eInvalidInput;
            if (!isRegistered(db, appName(rb))) return Acad::eRegappIdNotFound;
        } else if (!isXDataCode(rb->restype)) {
            return Acad::eInvalidInput;
        }
    }
    if (Acad::ErrorStatus es = checkXDataItems(xdata); es != Acad::eOk) return es;
    // Merged on a copy, so that data over the size limit leaves the object as it was.
    resbuf* merged = copyChain(xdata_);
    for (const resbuf* seg = xdata; seg; seg = segmentEnd(seg)) {
        std::wstring name = upperName(appName(seg));
        // Drop the application's old part, then append the new one if it has data.
        resbuf* kept = nullptr;
        resbuf* tail = nullptr;
        resbuf* old = merged;
        while (old) {
            resbuf* end = const_cast<resbuf*>(segmentEnd(old));
            resbuf* last = old;
            while (last->rbnext != end) last = last->rbnext;
            last->rbnext = nullptr;
            if (upperName(appName(old)) == name)
                acutRelRb(old);
            else
                appendNode(kept, tail, old);
            old = end;
        }
        if (seg->rbnext && seg->rbnext->restype != AcDb::kDxfRegAppName)
            appendNode(kept, tail, copyChain(seg, segmentEnd(seg)));
        merged = kept;
    }
    if (checkXDataItems(merged) != Acad::eOk) {
        acutRelRb(merged);
        return Acad::eXdataSizeExceeded;
    }
    acutRelRb(xdata_);
    xdata_ = merged;
    modified_ = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::xDataTransformBy(const AcGeMatrix3d& xform) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    for (resbuf* rb = xdata_; rb; rb = rb->rbnext) {
        AcGePoint3d p(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
        AcGeVector3d v(p.x, p.y, p.z);
        if (rb->restype == AcDb::kDxfXdWorldXCoord)
            p.transformBy(xform);
        else if (rb->restype == AcDb::kDxfXdWorldXDisp || rb->restype == AcDb::kDxfXdWorldXDir) {
            v.transformBy(xform);
            if (rb->restype == AcDb::kDxfXdWorldXDir) v.normalize();
            p = AcGePoint3d(v.x, v.y, v.z);
        } else if (rb->restype == AcDb::kDxfXdDist) {
            rb->resval.rreal *= xform.scale();
            continue;
        } else if (rb->restype == AcDb::kDxfXdScale) {
            rb->resval.rreal *= xform.scale();
            continue;
        } else {
            continue;
        }
        for (int i = 0; i < 3; ++i) rb->resval.rpoint[i] = p[i];
    }
    return Acad::eOk;
}

// --- extension dictionary ------------------------------------------------------------

AcDbObjectId AcDbObject::extensionDictionary() const {
    return extensionDictionary_;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!stub_) return Acad::eNotInDatabase;
    if (!extensionDictionary_.isNull()) return Acad::eAlreadyInDb;
    auto* dict = new AcDbDictionary();
    AcDbObjectId id;
    addObject(*stub_->database, dict, id);
    ObjectAccess::setOwner(*dict, objectId());
    dict->close();
    extensionDictionary_ = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (extensionDictionary_.isNull()) return Acad::eOk;
    AcDbDictionary* dict = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(dict, extensionDictionary_, AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    if (dict->numEntries() > 0) {
        dict->close();
        return Acad::eContainerNotEmpty;
    }
    dict->erase();
    dict->close();
    extensionDictionary_.setNull();
    return Acad::eOk;
}

// --- filing --------------------------------------------------------------------------

Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    filer->writeSoftPointerId(ownerId_);
    filer->writeHardOwnershipId(extensionDictionary_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    AcDbSoftPointerId owner;
    AcDbHardOwnershipId dict;
    filer->readSoftPointerId(&owner);
    filer->readHardOwnershipId(&dict);
    if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
    ownerId_ = owner;
    extensionDictionary_ = dict;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* filer) const {
    assertReadEnabled();
    if (stub_) {  // a dimension style's record carries its handle in group 105
        const ProxyData* proxy = ObjectAccess::proxy(*this);
        bool dimStyle = proxy && proxy->dxfName == L"DIMSTYLE";
        filer->writeAcDbHandle(dimStyle ? static_cast<AcDb::DxfCode>(105) : AcDb::kDxfHandle,
                               stub_->handle);
    }
    if (!extensionDictionary_.isNull()) {
        filer->writeString(AcDb::kDxfControlString, L"{ACAD_XDICTIONARY");
        filer->writeObjectId(AcDb::kDxfHardOwnershipId, extensionDictionary_);
        filer->writeString(AcDb::kDxfControlString, L"}");
    }
    filer->writeObjectId(AcDb::kDxfSoftPointerId, ownerId_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) {
    assertWriteEnabled();
    bool inDictionaryGroup = false;
    return readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case AcDb::kDxfControlString:
                inDictionaryGroup = item.text() == L"{ACAD_XDICTIONARY";
                break;
            case AcDb::kDxfHardOwnershipId:
                if (inDictionaryGroup) extensionDictionary_ = item.id();
                break;
            case AcDb::kDxfSoftPointerId:
                if (!filer->isModifyingExistingObject()) ownerId_ = item.id();
                break;
            default:
                break;
        }
    });
}

Acad::ErrorStatus AcDbObject::dwgOut(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    const ProxyData* proxy = ObjectAccess::proxy(*this);
    if (proxy && proxy->fromDwg) return Acad::eOk;  // its stream holds its extended data
    return writeXDataToDwg(filer, xdata_);
}

Acad::ErrorStatus AcDbObject::dwgIn(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = dwgInFields(filer);
    if (es != Acad::eOk) return es;
    resbuf* chain = nullptr;
    es = readXDataFromDwg(filer, chain);
    if (es != Acad::eOk) return es;
    acutRelRb(xdata_);
    xdata_ = chain;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::dxfOut(AcDbDxfFiler* filer) const {
    AcRxClass* cls = isA();
    const ProxyData* proxy = ObjectAccess::proxy(*this);
    filer->writeString(AcDb::kDxfStart, proxy ? proxy->dxfName.c_str()
                                        : cls ? dxfNameOf(cls)
                                              : L"");
    Acad::ErrorStatus es = dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    if (xdata_) {
        filer->writeXDataStart();
        for (const resbuf* rb = xdata_; rb; rb = rb->rbnext) filer->writeItem(*rb);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfIn(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atExtendedData()) return Acad::eOk;
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    DxfItem item;
    while (item.read(filer)) appendNode(head, tail, copyNode(&item.rb()));
    RbChain chain(head);
    return head ? setXData(head) : Acad::eOk;
}

// --- copies --------------------------------------------------------------------------

AcRxObject* AcDbObject::clone() const {
    return cloneThroughFiler(*this);
}

Acad::ErrorStatus AcDbObject::copyFrom(const AcRxObject* other) {
    return copyThroughFiler(*this, other);
}
