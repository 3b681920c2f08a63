// Dictionaries (named entries owning their objects) and Xrecords.

#include <cstdlib>

#include "adslib.h"
#include "dbdict.h"
#include "dbfiler.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/object_filing.h"
#include "runtime/drawing/resbuf_chain.h"

using namespace kelvo::drawing;

ACRX_DXF_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, AcDb::kDHL_CURRENT, 0, 0, DICTIONARY, ObjectDBX)

AcDbDictionary::AcDbDictionary() = default;
AcDbDictionary::~AcDbDictionary() = default;

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObjectId& entryId) const {
    entryId.setNull();
    if (!entryName) return Acad::eInvalidKey;
    auto it = entries_.find(upperName(entryName));
    if (it == entries_.end() || it->second.isErased()) return Acad::eKeyNotFound;
    entryId = it->second;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObject*& entryObj,
                                        AcDb::OpenMode mode) const {
    entryObj = nullptr;
    AcDbObjectId id;
    Acad::ErrorStatus es = getAt(entryName, id);
    return es != Acad::eOk ? es : acdbOpenObject(entryObj, id, mode);
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId objId, ACHAR*& name) const {
    name = nullptr;
    for (const auto& [key, id] : entries_)
        if (id == objId) {
            acutNewString(names_.at(key).c_str(), name);
            return Acad::eOk;
        }
    return Acad::eKeyNotFound;
}

bool AcDbDictionary::has(const ACHAR* entryName) const {
    AcDbObjectId id;
    return getAt(entryName, id) == Acad::eOk;
}

bool AcDbDictionary::has(AcDbObjectId objId) const {
    for (const auto& [key, id] : entries_)
        if (id == objId) return true;
    return false;
}

Adesk::UInt32 AcDbDictionary::numEntries() const {
    Adesk::UInt32 n = 0;
    for (const auto& [key, id] : entries_)
        if (!id.isErased()) ++n;
    return n;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* srchKey, AcDbObject* newValue,
                                        AcDbObjectId& retObjId) {
    retObjId.setNull();
    if (!srchKey || !*srchKey) return Acad::eInvalidKey;
    if (!newValue) return Acad::eNullObjectPointer;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!database()) return Acad::eNoDatabase;
    if (newValue->objectId().isNull()) {
        Acad::ErrorStatus es = addObject(*database(), newValue, retObjId);
        if (es != Acad::eOk) return es;
    } else {
        retObjId = newValue->objectId();
    }
    ObjectAccess::setOwner(*newValue, objectId());
    std::wstring key = upperName(srchKey);
    auto old = entries_.find(key);
    if (old != entries_.end() && old->second != retObjId) {
        if (AcDbObject* o = peekObject(old->second)) ObjectAccess::setErased(*o, true);
    }
    entries_[key] = retObjId;
    names_[key] = srchKey;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key) {
    AcDbObjectId id;
    return remove(key, id);
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key, AcDbObjectId& returnId) {
    returnId.setNull();
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    auto it = key ? entries_.find(upperName(key)) : entries_.end();
    if (it == entries_.end()) return Acad::eKeyNotFound;
    returnId = it->second;
    names_.erase(it->first);
    entries_.erase(it);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::setName(const ACHAR* oldName, const ACHAR* newName) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!oldName || !newName || !*newName) return Acad::eInvalidKey;
    auto it = entries_.find(upperName(oldName));
    if (it == entries_.end()) return Acad::eKeyNotFound;
    std::wstring key = upperName(newName);
    if (key != it->first && entries_.contains(key)) return Acad::eDuplicateKey;
    AcDbObjectId id = it->second;
    names_.erase(it->first);
    entries_.erase(it);
    entries_[key] = id;
    names_[key] = newName;
    return Acad::eOk;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const {
    return new AcDbDictionaryIterator(this);
}

Acad::ErrorStatus AcDbDictionary::subErase(Adesk::Boolean erasing) {
    for (const auto& [key, id] : entries_)
        if (AcDbObject* o = peekObject(id)) ObjectAccess::setErased(*o, erasing);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeInt32(static_cast<Adesk::Int32>(entries_.size()));
    for (const auto& [key, id] : entries_) {
        filer->writeString(names_.at(key).c_str());
        filer->writeHardOwnershipId(id);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int32 n = 0;
    filer->readInt32(&n);
    entries_.clear();
    names_.clear();
    for (Adesk::Int32 i = 0; i < n && filer->filerStatus() == Acad::eOk; ++i) {
        ACHAR* name = nullptr;
        AcDbHardOwnershipId id;
        filer->readString(&name);
        filer->readHardOwnershipId(&id);
        if (name && !id.isNull()) {
            entries_[upperName(name)] = id;
            names_[upperName(name)] = name;
        }
        acutDelString(name);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbDictionary");
    if (hardOwnerFlag_) filer->writeInt16(static_cast<AcDb::DxfCode>(280), hardOwnerFlag_);
    filer->writeInt16(static_cast<AcDb::DxfCode>(281), mergeStyle_);
    for (const auto& [key, id] : entries_) {
        if (id.isErased()) continue;
        filer->writeString(AcDb::kDxfAttributePrompt, names_.at(key).c_str());  // 3
        filer->writeObjectId(hardEntries_ ? AcDb::kDxfHardOwnershipId : AcDb::kDxfSoftOwnershipId,
                             id);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbDictionary::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbDictionary")) return Acad::eOk;
    std::wstring name;
    return readClassItems(filer, [&](const DxfItem& item) {
        if (item.code() == AcDb::kDxfXTextString || item.code() == 3) {
            name = item.text();
        } else if (item.code() == 280) {
            hardOwnerFlag_ = static_cast<Adesk::Int16>(item.integer());
        } else if (item.code() == 281) {
            mergeStyle_ = static_cast<Adesk::Int16>(item.integer());
        } else if ((item.code() == AcDb::kDxfSoftOwnershipId ||
                    item.code() == AcDb::kDxfHardOwnershipId) &&
                   !name.empty()) {
            entries_[upperName(name)] = item.id();
            names_[upperName(name)] = name;
            hardEntries_ = hardEntries_ || item.code() == AcDb::kDxfHardOwnershipId;
            name.clear();
        }
    });
}

AcDbDictionaryIterator::AcDbDictionaryIterator(const AcDbDictionary* dict) {
    for (const auto& [key, id] : dict->entries_)
        if (!id.isErased()) entries_.emplace_back(dict->names_.at(key), id);
}

const ACHAR* AcDbDictionaryIterator::name() const {
    return done() ? nullptr : entries_[index_].first.c_str();
}
AcDbObjectId AcDbDictionaryIterator::objectId() const {
    return done() ? AcDbObjectId() : entries_[index_].second;
}
Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& pObject, AcDb::OpenMode mode) {
    pObject = nullptr;
    if (done()) return Acad::eIteratorDone;
    return acdbOpenObject(pObject, entries_[index_].second, mode);
}
bool AcDbDictionaryIterator::done() const {
    return index_ >= entries_.size();
}
bool AcDbDictionaryIterator::next() {
    if (!done()) ++index_;
    return !done();
}

// --- Xrecords ----------------------------------------------------------------------------

ACRX_DXF_DEFINE_MEMBERS(AcDbXrecord, AcDbObject, AcDb::kDHL_CURRENT, 0, 0, XRECORD, ObjectDBX)

AcDbXrecord::AcDbXrecord() = default;
AcDbXrecord::~AcDbXrecord() {
    acutRelRb(data_);
}

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** ppRb, AcDbDatabase*) const {
    assertReadEnabled();
    *ppRb = copyChain(data_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& pRb, AcDbDatabase*) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    resbuf* copy = copyChain(&pRb);
    acutRelRb(data_);
    data_ = copy;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    return es != Acad::eOk ? es : writeXDataToDwg(filer, data_);
}

Acad::ErrorStatus AcDbXrecord::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    resbuf* chain = nullptr;
    es = readXDataFromDwg(filer, chain);
    if (es != Acad::eOk) return es;
    acutRelRb(data_);
    data_ = chain;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbXrecord");
    for (const resbuf* rb = data_; rb; rb = rb->rbnext) filer->writeItem(*rb);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbXrecord")) return Acad::eOk;
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    es = readClassItems(filer,
                        [&](const DxfItem& item) { appendNode(head, tail, copyNode(&item.rb())); });
    acutRelRb(data_);
    data_ = head;
    return es;
}
