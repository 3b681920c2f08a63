// Symbol tables: records by name (without regard to case), in the order added.

#include <cwctype>

#include "adslib.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"

using namespace kelvo::drawing;

namespace {

AcDbSymbolTableRecord* recordOf(AcDbObjectId id) {
    return AcDbSymbolTableRecord::cast(peekObject(id));
}

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject)

AcDbSymbolTable::AcDbSymbolTable() = default;
AcDbSymbolTable::~AcDbSymbolTable() = default;

const AcDbObjectIdArray& AcDbSymbolTable::recordIds() const { return records_; }

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* entryName, AcDbObjectId& recordId,
                                         bool getErasedRecord) const {
    recordId.setNull();
    if (!entryName) return Acad::eInvalidInput;
    std::wstring wanted = upperName(entryName);
    AcDbObjectId erased;
    for (AcDbObjectId id : records_) {
        AcDbSymbolTableRecord* record = recordOf(id);
        if (!record || upperName(record->name()) != wanted) continue;
        if (!record->isErased()) {
            recordId = id;
            return Acad::eOk;
        }
        erased = id;
    }
    if (getErasedRecord && !erased.isNull()) {
        recordId = erased;
        return Acad::eOk;
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* entryName, AcDbSymbolTableRecord*& pRec,
                                         AcDb::OpenMode openMode, bool openErasedRec) const {
    pRec = nullptr;
    AcDbObjectId id;
    Acad::ErrorStatus es = getAt(entryName, id, openErasedRec);
    if (es != Acad::eOk) return es;
    return acdbOpenObject(pRec, id, openMode, openErasedRec);
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
    AcDbObjectId id;
    return getAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
    AcDbSymbolTableRecord* record = recordOf(id);
    return record && !record->isErased() && records_.contains(id);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* pRecord) {
    AcDbObjectId id;
    return add(id, pRecord);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& recordId, AcDbSymbolTableRecord* pRecord) {
    recordId.setNull();
    if (!pRecord) return Acad::eNullObjectPointer;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!database()) return Acad::eNoDatabase;
    if (!pRecord->isKindOf(recordClass())) return Acad::eWrongObjectType;
    if (!pRecord->objectId().isNull()) return Acad::eAlreadyInDb;
    if (pRecord->name().empty()) return Acad::eInvalidSymbolTableName;
    if (has(pRecord->name().c_str())) return Acad::eDuplicateRecordName;
    Acad::ErrorStatus es = addObject(*database(), pRecord, recordId);
    if (es != Acad::eOk) return es;
    ObjectAccess::setOwner(*pRecord, objectId());
    records_.append(recordId);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& pIterator,
                                               bool atBeginning, bool skipDeleted) const {
    assertReadEnabled();
    pIterator = new AcDbSymbolTableIterator(this, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeInt32(records_.length());
    for (AcDbObjectId id : records_) filer->writeSoftOwnershipId(id);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTable::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int32 n = 0;
    filer->readInt32(&n);
    AcDbObjectIdArray ids;
    for (Adesk::Int32 i = 0; i < n && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbSoftOwnershipId id;
        filer->readSoftOwnershipId(&id);
        if (!id.isNull()) ids.append(id);
    }
    if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
    records_ = ids;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbSymbolTable");
    int count = 0;
    for (AcDbObjectId id : records_)
        if (!id.isErased()) ++count;
    filer->writeInt16(AcDb::kDxfInt16, static_cast<Adesk::Int16>(count));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTable::dxfInFields(AcDbDxfFiler* filer) {
    return AcDbObject::dxfInFields(filer);
}

// --- iterators -------------------------------------------------------------------------

AcDbSymbolTableIterator::AcDbSymbolTableIterator(const AcDbSymbolTable* table, bool atBeginning,
                                                 bool skipDeleted)
    : ids_(table->recordIds()) {
    start(atBeginning, skipDeleted);
}

AcDbSymbolTableIterator::~AcDbSymbolTableIterator() = default;

void AcDbSymbolTableIterator::skipErased(bool forward) {
    while (skipDeleted_ && index_ >= 0 && index_ < ids_.length() && ids_[index_].isErased())
        index_ += forward ? 1 : -1;
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    skipDeleted_ = skipDeleted;
    index_ = atBeginning ? 0 : ids_.length() - 1;
    skipErased(atBeginning);
}

bool AcDbSymbolTableIterator::done() const { return index_ < 0 || index_ >= ids_.length(); }

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
    skipDeleted_ = skipDeleted;
    index_ += forward ? 1 : -1;
    skipErased(forward);
}

AcDbObjectId AcDbSymbolTableIterator::getRecordId() const {
    return done() ? AcDbObjectId() : ids_[index_];
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done()) return Acad::eIteratorDone;
    id = ids_[index_];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& pRecord,
                                                     AcDb::OpenMode openMode,
                                                     bool openErasedRec) const {
    pRecord = nullptr;
    if (done()) return Acad::eIteratorDone;
    return acdbOpenObject(pRecord, ids_[index_], openMode, openErasedRec);
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(AcDbObjectId id) {
    int at = ids_.find(id);
    if (at < 0) return Acad::eRecordNotInTable;
    index_ = at;
    return Acad::eOk;
}

// --- the typed tables ----------------------------------------------------------------

#define KELVO_DEFINE_SYMBOL_TABLE(TABLE, RECORD, ITERATOR)                                  \
    ACRX_NO_CONS_DEFINE_MEMBERS(TABLE, AcDbSymbolTable)                                     \
    TABLE::TABLE() = default;                                                               \
    TABLE::~TABLE() = default;                                                              \
    AcRxClass* TABLE::recordClass() const { return RECORD::desc(); }                        \
    Acad::ErrorStatus TABLE::getAt(const ACHAR* entryName, RECORD*& pRec,                   \
                                   AcDb::OpenMode openMode, bool openErasedRec) const {     \
        pRec = nullptr;                                                                     \
        AcDbObjectId id;                                                                    \
        Acad::ErrorStatus es = getAt(entryName, id, openErasedRec);                         \
        if (es != Acad::eOk) return es;                                                     \
        return acdbOpenObject(pRec, id, openMode, openErasedRec);                           \
    }                                                                                       \
    Acad::ErrorStatus TABLE::add(RECORD* pRecord) {                                         \
        return AcDbSymbolTable::add(static_cast<AcDbSymbolTableRecord*>(pRecord));          \
    }                                                                                       \
    Acad::ErrorStatus TABLE::add(AcDbObjectId& recordId, RECORD* pRecord) {                 \
        return AcDbSymbolTable::add(recordId, static_cast<AcDbSymbolTableRecord*>(pRecord)); \
    }                                                                                       \
    Acad::ErrorStatus TABLE::newIterator(ITERATOR*& pIterator, bool atBeginning,            \
                                         bool skipDeleted) const {                          \
        assertReadEnabled();                                                                \
        pIterator = new ITERATOR(this, atBeginning, skipDeleted);                           \
        return Acad::eOk;                                                                   \
    }                                                                                       \
    Acad::ErrorStatus ITERATOR::getRecord(RECORD*& pRecord, AcDb::OpenMode openMode,        \
                                          bool openErasedRec) const {                       \
        pRecord = nullptr;                                                                  \
        AcDbObjectId id;                                                                    \
        Acad::ErrorStatus es = getRecordId(id);                                             \
        if (es != Acad::eOk) return es;                                                     \
        return acdbOpenObject(pRecord, id, openMode, openErasedRec);                        \
    }

KELVO_DEFINE_SYMBOL_TABLE(AcDbBlockTable, AcDbBlockTableRecord, AcDbBlockTableIterator)
KELVO_DEFINE_SYMBOL_TABLE(AcDbLayerTable, AcDbLayerTableRecord, AcDbLayerTableIterator)
KELVO_DEFINE_SYMBOL_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord, AcDbTextStyleTableIterator)
KELVO_DEFINE_SYMBOL_TABLE(AcDbLinetypeTable, AcDbLinetypeTableRecord, AcDbLinetypeTableIterator)
KELVO_DEFINE_SYMBOL_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord, AcDbRegAppTableIterator)
