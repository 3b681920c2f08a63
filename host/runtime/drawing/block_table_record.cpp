// Block table records (block definitions), their entity iterator, and the BLOCK, ENDBLK
// and SEQEND marker entities.

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"

using namespace kelvo::drawing;

namespace {

ACHAR* newString(const std::wstring& s) {
    ACHAR* out = nullptr;
    acutNewString(s.c_str(), out);
    return out;
}

}  // namespace

ACRX_DXF_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT, 0, 0,
                        BLOCK_RECORD, ObjectDBX)

AcDbBlockTableRecord::AcDbBlockTableRecord() = default;
AcDbBlockTableRecord::~AcDbBlockTableRecord() = default;

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* pEntity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, pEntity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& pOutputId,
                                                         AcDbEntity* pEntity) {
    pOutputId.setNull();
    if (!pEntity) return Acad::eNullEntityPointer;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    AcDbDatabase* db = database();
    if (!db) return Acad::eNoDatabase;
    if (!pEntity->objectId().isNull()) return Acad::eAlreadyInDb;
    if (pEntity->layerId().isNull()) {
        // An entity made without properties takes the database's current ones.
        AcDbObjectId linetype = pEntity->linetypeId();
        AcCmColor color = pEntity->color();
        pEntity->setDatabaseDefaults(db);
        if (!linetype.isNull()) pEntity->setLinetype(linetype);
        pEntity->setColor(color);
    }
    if (pEntity->linetypeId().isNull()) pEntity->setLinetype(db->byLayerLinetype());
    Acad::ErrorStatus es = addObject(*db, pEntity, pOutputId);
    if (es != Acad::eOk) return es;
    ObjectAccess::setOwner(*pEntity, objectId());
    entities_.append(pOutputId);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& pIterator,
                                                    bool atBeginning, bool skipDeleted) const {
    assertReadEnabled();
    pIterator = new AcDbBlockTableRecordIterator(this, atBeginning, skipDeleted);
    return Acad::eOk;
}

const AcDbObjectIdArray& AcDbBlockTableRecord::entityIds() const { return entities_; }
AcGePoint3d AcDbBlockTableRecord::origin() const { return origin_; }
Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    origin_ = origin;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::comments(ACHAR*& p) const {
    p = newString(comments_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* p) {
    comments_ = p ? p : L"";
    return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::pathName(ACHAR*& p) const {
    p = newString(path_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::setPathName(const ACHAR* p) {
    path_ = p ? p : L"";
    return Acad::eOk;
}
bool AcDbBlockTableRecord::isAnonymous() const {
    return !name().empty() && name()[0] == L'*' && !isLayout();
}
bool AcDbBlockTableRecord::isLayout() const {
    std::wstring n = upperName(name());
    return n.rfind(L"*MODEL_SPACE", 0) == 0 || n.rfind(L"*PAPER_SPACE", 0) == 0;
}
bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    AcRxClass* attdef = acrxFindClass(L"AcDbAttributeDefinition");
    for (AcDbObjectId id : entities_) {
        AcDbObject* o = peekObject(id);
        if (o && !o->isErased() && attdef && o->isKindOf(attdef)) return true;
    }
    return false;
}
bool AcDbBlockTableRecord::isFromExternalReference() const { return !path_.empty(); }
AcDbObjectId AcDbBlockTableRecord::blockBeginId() const { return begin_; }
AcDbObjectId AcDbBlockTableRecord::blockEndId() const { return end_; }

Acad::ErrorStatus AcDbBlockTableRecord::openBlockBegin(AcDbBlockBegin*& p, AcDb::OpenMode mode) {
    return acdbOpenObject(p, begin_, mode);
}

Acad::ErrorStatus AcDbBlockTableRecord::openBlockEnd(AcDbBlockEnd*& p, AcDb::OpenMode mode) {
    return acdbOpenObject(p, end_, mode);
}

// Erasing a block definition erases its entities with it.
Acad::ErrorStatus AcDbBlockTableRecord::subErase(Adesk::Boolean erasing) {
    if (erasing && isLayout()) return Acad::eCannotBeErasedByCaller;
    for (AcDbObjectId id : entities_) {
        AcDbObject* o = peekObject(id);
        if (o && o->isErased() != erasing) ObjectAccess::setErased(*o, erasing);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writePoint3d(origin_);
    filer->writeString(comments_.c_str());
    filer->writeString(path_.c_str());
    filer->writeHardOwnershipId(begin_);
    filer->writeHardOwnershipId(end_);
    filer->writeInt32(entities_.length());
    for (AcDbObjectId id : entities_) filer->writeHardOwnershipId(id);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    ACHAR* comments = nullptr;
    ACHAR* path = nullptr;
    AcDbHardOwnershipId begin, end;
    Adesk::Int32 n = 0;
    filer->readPoint3d(&origin_);
    filer->readString(&comments);
    filer->readString(&path);
    filer->readHardOwnershipId(&begin);
    filer->readHardOwnershipId(&end);
    filer->readInt32(&n);
    comments_ = comments ? comments : L"";
    path_ = path ? path : L"";
    acutDelString(comments);
    acutDelString(path);
    begin_ = begin;
    end_ = end;
    AcDbObjectIdArray ids;
    for (Adesk::Int32 i = 0; i < n && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbHardOwnershipId id;
        filer->readHardOwnershipId(&id);
        if (!id.isNull()) ids.append(id);
    }
    entities_ = ids;
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbBlockTableRecord");
    filer->writeString(AcDb::kDxfSymbolTableName, name().c_str());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbBlockTableRecord")) return Acad::eOk;
    Acad::ErrorStatus bad = Acad::eOk;
    es = readClassItems(filer, [&](const DxfItem& item) {
        if (item.code() == AcDb::kDxfSymbolTableName) {
            Acad::ErrorStatus r = setName(item.text().c_str());
            if (r != Acad::eOk) bad = r;
        }
    });
    return es != Acad::eOk ? es : bad;
}

// --- iterator ----------------------------------------------------------------------------

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const AcDbBlockTableRecord* block,
                                                           bool atBeginning, bool skipDeleted)
    : ids_(block->entityIds()) {
    start(atBeginning, skipDeleted);
}

AcDbBlockTableRecordIterator::~AcDbBlockTableRecordIterator() = default;

void AcDbBlockTableRecordIterator::skipErased(bool forward) {
    while (skipDeleted_ && index_ >= 0 && index_ < ids_.length() && ids_[index_].isErased())
        index_ += forward ? 1 : -1;
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    skipDeleted_ = skipDeleted;
    index_ = atBeginning ? 0 : ids_.length() - 1;
    skipErased(atBeginning);
}

bool AcDbBlockTableRecordIterator::done() const { return index_ < 0 || index_ >= ids_.length(); }

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
    skipDeleted_ = skipDeleted;
    index_ += forward ? 1 : -1;
    skipErased(forward);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& entityId) const {
    if (done()) return Acad::eIteratorDone;
    entityId = ids_[index_];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& pEntity,
                                                          AcDb::OpenMode openMode,
                                                          bool openErasedEntity) const {
    pEntity = nullptr;
    if (done()) return Acad::eIteratorDone;
    return acdbOpenObject(pEntity, ids_[index_], openMode, openErasedEntity);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
    int at = ids_.find(id);
    if (at < 0) return Acad::eInvalidInput;
    index_ = at;
    return Acad::eOk;
}

// --- markers -----------------------------------------------------------------------------

namespace {

AcDbBlockTableRecord* ownerBlock(const AcDbObject& o) {
    return AcDbBlockTableRecord::cast(peekObject(o.ownerId()));
}

}  // namespace

ACRX_DXF_DEFINE_MEMBERS(AcDbBlockBegin, AcDbEntity, AcDb::kDHL_CURRENT, 0, 0, BLOCK, ObjectDBX)

AcDbBlockBegin::AcDbBlockBegin() = default;
AcDbBlockBegin::~AcDbBlockBegin() = default;
Adesk::Boolean AcDbBlockBegin::subWorldDraw(AcGiWorldDraw*) { return true; }

// BLOCK carries the block's name, flags, base point and path.
Acad::ErrorStatus AcDbBlockBegin::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbBlockBegin");
    AcDbBlockTableRecord* block = ownerBlock(*this);
    std::wstring name = block ? block->name() : L"";
    Adesk::Int16 flags = 0;
    ACHAR* path = nullptr;
    if (block) {
        if (block->isAnonymous()) flags |= 1;
        if (block->hasAttributeDefinitions()) flags |= 2;
        if (block->isFromExternalReference()) flags |= 4;
        block->pathName(path);
    }
    filer->writeString(AcDb::kDxfBlockName, name.c_str());
    filer->writeInt16(AcDb::kDxfInt16, flags);
    filer->writePoint3d(AcDb::kDxfXCoord, block ? block->origin() : AcGePoint3d());
    filer->writeString(AcDb::kDxfAttributePrompt, name.c_str());
    filer->writeString(AcDb::kDxfXRefPath, path ? path : L"");
    acutDelString(path);
    return filer->filerStatus();
}

// The block's fields are read by whoever makes the block (entmake, the file reader); the
// marker keeps only the entity's own.
Acad::ErrorStatus AcDbBlockBegin::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (filer->atSubclassData(L"AcDbBlockBegin")) readClassItems(filer, [](const DxfItem&) {});
    return Acad::eOk;
}

ACRX_DXF_DEFINE_MEMBERS(AcDbBlockEnd, AcDbEntity, AcDb::kDHL_CURRENT, 0, 0, ENDBLK, ObjectDBX)

AcDbBlockEnd::AcDbBlockEnd() = default;
AcDbBlockEnd::~AcDbBlockEnd() = default;
Adesk::Boolean AcDbBlockEnd::subWorldDraw(AcGiWorldDraw*) { return true; }

Acad::ErrorStatus AcDbBlockEnd::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbBlockEnd");
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockEnd::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (filer->atSubclassData(L"AcDbBlockEnd")) readClassItems(filer, [](const DxfItem&) {});
    return Acad::eOk;
}

ACRX_DXF_DEFINE_MEMBERS(AcDbSequenceEnd, AcDbEntity, AcDb::kDHL_CURRENT, 0, 0, SEQEND, ObjectDBX)

AcDbSequenceEnd::AcDbSequenceEnd() = default;
AcDbSequenceEnd::~AcDbSequenceEnd() = default;
Adesk::Boolean AcDbSequenceEnd::subWorldDraw(AcGiWorldDraw*) { return true; }

Acad::ErrorStatus AcDbSequenceEnd::dxfOutFields(AcDbDxfFiler* filer) const {
    return AcDbEntity::dxfOutFields(filer);
}

Acad::ErrorStatus AcDbSequenceEnd::dxfInFields(AcDbDxfFiler* filer) {
    return AcDbEntity::dxfInFields(filer);
}
