// Cloning objects within a database (deepClone) and between databases (wblockClone,
// insert). A copy is made through the DWG filer; while it is read back, every reference
// is translated: what the source owns is copied too and the copy refers to the copy; a
// reference to a layer, linetype, text style, application or block of another database
// is matched by name in this one, and the record is copied over when it is missing.

#include "dbdict.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/drawing/resbuf_chain.h"

using namespace kelvo::drawing;

Acad::ErrorStatus AcDbIdMapping::assign(const AcDbIdPair& pair) {
    pairs_[pair.key()] = pair;
    return Acad::eOk;
}

bool AcDbIdMapping::compute(AcDbIdPair& pair) const {
    auto it = pairs_.find(pair.key());
    if (it == pairs_.end()) return false;
    pair = it->second;
    return true;
}

bool AcDbIdMapping::del(AcDbObjectId key) { return pairs_.erase(key) > 0; }

namespace kelvo::drawing {
namespace {

class Cloner {
public:
    Cloner(AcDbIdMapping& map, AcDbDatabase& dest, bool crossDatabase)
        : map_(map), dest_(dest), cross_(crossDatabase) {
        if (!map_.destDb()) map_.setDestDb(&dest);
    }

    // The copy of `source` owned by `owner` (made once; later calls answer the same copy).
    Acad::ErrorStatus cloneObject(AcDbObjectId source, AcDbObjectId owner, AcDbObjectId& copyId,
                                  bool primary = false) {
        copyId.setNull();
        AcDbIdPair pair(source, {}, false);
        if (map_.compute(pair) && !pair.value().isNull()) {
            copyId = pair.value();
            return Acad::eOk;
        }
        AcDbObject* from = peekObject(source);
        if (!from) return Acad::eInvalidObjectId;
        AcRxClass* cls = from->isA();
        AcDbObject* copy = AcDbObject::cast(cls ? cls->create() : nullptr);
        if (!copy) return Acad::eNotApplicable;
        Acad::ErrorStatus es = addObject(dest_, copy, copyId);
        if (es != Acad::eOk) {
            delete copy;
            return es;
        }
        map_.assign(AcDbIdPair(source, copyId, true, primary));
        DwgMemoryFiler filer(cross_ ? AcDb::kWblockCloneFiler : AcDb::kDeepCloneFiler,
                             from->database());
        AcDbObjectId self = copyId;
        filer.setIdTranslator([this, self](AcDbObjectId id, IdKind kind) {
            return translate(id, kind, self);
        });
        // The source is read as it is, whatever its open state.
        ++ObjectAccess::readersRef(*from);
        es = from->dwgOut(&filer);
        --ObjectAccess::readersRef(*from);
        filer.rewind();
        if (es == Acad::eOk) es = copy->dwgIn(&filer);
        if (es == Acad::eOk && cross_) registerXDataApplications(*copy);
        ObjectAccess::setOwner(*copy, owner);
        copy->close();
        return es;
    }

private:
    // Extended data copied into another database needs its applications registered there.
    void registerXDataApplications(const AcDbObject& copy) {
        RbChain data(copy.xData(nullptr));
        for (const resbuf* rb = data.get(); rb; rb = rb->rbnext)
            if (rb->restype == AcDb::kDxfRegAppName && rb->resval.rstring)
                registerApplication(dest_, rb->resval.rstring);
    }

    AcDbObjectId translate(AcDbObjectId source, IdKind kind, AcDbObjectId copyOwner) {
        if (source.isNull()) return {};
        AcDbIdPair pair(source, {}, false);
        if (map_.compute(pair) && !pair.value().isNull()) return pair.value();
        if (kind == IdKind::HardOwnership || kind == IdKind::SoftOwnership) {
            AcDbObjectId copy;
            cloneObject(source, copyOwner, copy);
            return copy;
        }
        if (!cross_) return source;
        return matchInDestination(source);
    }

    // A reference into another database: tables and records by name, else nothing.
    AcDbObjectId matchInDestination(AcDbObjectId source) {
        AcDbDatabase* from = source.database();
        if (!from) return {};
        if (source == from->blockTableId()) return dest_.blockTableId();
        if (source == from->layerTableId()) return dest_.layerTableId();
        if (source == from->textStyleTableId()) return dest_.textStyleTableId();
        if (source == from->linetypeTableId()) return dest_.linetypeTableId();
        if (source == from->regAppTableId()) return dest_.regAppTableId();
        if (source == from->namedObjectsDictionaryId()) return dest_.namedObjectsDictionaryId();
        auto* record = AcDbSymbolTableRecord::cast(peekObject(source));
        if (!record) return {};
        AcDbObjectId tableId = matchInDestination(record->ownerId());
        auto* table = AcDbSymbolTable::cast(peekObject(tableId));
        if (!table) return {};
        AcDbObjectId existing;
        if (table->getAt(record->name().c_str(), existing) == Acad::eOk) {
            map_.assign(AcDbIdPair(source, existing, false));
            return existing;
        }
        AcDbObjectId copy;
        if (cloneObject(source, tableId, copy) != Acad::eOk) return {};
        ObjectAccess::records(*table).append(copy);
        return copy;
    }

    AcDbIdMapping& map_;
    AcDbDatabase& dest_;
    bool cross_;
};

Acad::ErrorStatus cloneAll(const AcDbObjectIdArray& ids, AcDbObjectId owner, AcDbIdMapping& idMap,
                           AcDbDatabase& dest, bool cross) {
    AcDbObject* ownerObject = peekObject(owner);
    if (!ownerObject || ownerObject->database() != &dest) return Acad::eWrongDatabase;
    Cloner cloner(idMap, dest, cross);
    auto* block = AcDbBlockTableRecord::cast(ownerObject);
    for (AcDbObjectId id : ids) {
        if (!cross && id.database() != &dest) return Acad::eWrongDatabase;
        AcDbObjectId copy;
        Acad::ErrorStatus es = cloner.cloneObject(id, owner, copy, true);
        if (es != Acad::eOk) return es;
        if (block && AcDbEntity::cast(peekObject(copy)) &&
            !ObjectAccess::entities(*block).contains(copy))
            ObjectAccess::entities(*block).append(copy);
    }
    return Acad::eOk;
}

}  // namespace
}  // namespace kelvo::drawing

Acad::ErrorStatus AcDbObject::deepClone(AcDbObject* pOwnerObject, AcDbObject*& pClonedObject,
                                        AcDbIdMapping& idMap, Adesk::Boolean isPrimary) const {
    pClonedObject = nullptr;
    if (!stub_) return Acad::eNotInDatabase;
    if (!pOwnerObject || !pOwnerObject->database()) return Acad::eNullObjectPointer;
    if (pOwnerObject->database() != database()) return Acad::eWrongDatabase;
    idMap.setOrigDb(database());
    AcDbObjectIdArray ids;
    ids.append(objectId());
    Acad::ErrorStatus es =
        cloneAll(ids, pOwnerObject->objectId(), idMap, *pOwnerObject->database(), false);
    if (es != Acad::eOk) return es;
    AcDbIdPair pair(objectId(), {}, false);
    if (idMap.compute(pair)) {
        pClonedObject = peekObject(pair.value());
        if (AcDbIdPair p = pair; isPrimary != p.isPrimary()) {
            p.setIsPrimary(isPrimary);
            idMap.assign(p);
        }
    }
    return pClonedObject ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbObject::wblockClone(AcRxObject* pOwnerObject, AcDbObject*& pClonedObject,
                                          AcDbIdMapping& idMap, Adesk::Boolean) const {
    pClonedObject = nullptr;
    auto* owner = AcDbObject::cast(pOwnerObject);
    if (!stub_) return Acad::eNotInDatabase;
    if (!owner || !owner->database()) return Acad::eNullObjectPointer;
    idMap.setOrigDb(database());
    AcDbObjectIdArray ids;
    ids.append(objectId());
    Acad::ErrorStatus es = cloneAll(ids, owner->objectId(), idMap, *owner->database(), true);
    if (es != Acad::eOk) return es;
    AcDbIdPair pair(objectId(), {}, false);
    if (idMap.compute(pair)) pClonedObject = peekObject(pair.value());
    return pClonedObject ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const AcDbObjectIdArray& objectIds,
                                                 const AcDbObjectId& owner, AcDbIdMapping& idMap,
                                                 bool) {
    idMap.setOrigDb(this);
    idMap.setDeepCloneContext(AcDb::kDcCopy);
    return cloneAll(objectIds, owner, idMap, *this, false);
}

Acad::ErrorStatus AcDbDatabase::wblockCloneObjects(const AcDbObjectIdArray& objectIds,
                                                   const AcDbObjectId& owner, AcDbIdMapping& idMap,
                                                   AcDb::DuplicateRecordCloning drc, bool) {
    if (!objectIds.isEmpty()) idMap.setOrigDb(objectIds[0].database());
    idMap.setDuplicateRecordCloning(drc);
    idMap.setDeepCloneContext(AcDb::kDcWblkObjects);
    return cloneAll(objectIds, owner, idMap, *this, true);
}

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const ACHAR* pBlockName,
                                       AcDbDatabase* pDb, bool) {
    blockId.setNull();
    if (!pDb || pDb == this) return Acad::eInvalidInput;
    if (!pBlockName || !*pBlockName) return Acad::eNullBlockName;
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus es = getBlockTable(table, AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    if (table->has(pBlockName)) {
        table->close();
        return Acad::eDuplicateRecordName;
    }
    auto* block = new AcDbBlockTableRecord();
    es = block->setName(pBlockName);
    if (es == Acad::eOk) es = table->add(blockId, block);
    table->close();
    if (es != Acad::eOk) {
        delete block;
        return es;
    }
    block->setOrigin(pDb->insbase());
    for (AcDbEntity* marker : {static_cast<AcDbEntity*>(new AcDbBlockBegin()),
                               static_cast<AcDbEntity*>(new AcDbBlockEnd())}) {
        AcDbObjectId markerId;
        addObject(*this, marker, markerId);
        ObjectAccess::setOwner(*marker, blockId);
        marker->setLayer(layerZero());
        (AcDbBlockBegin::cast(marker) ? ObjectAccess::blockBegin(*block)
                                      : ObjectAccess::blockEnd(*block)) = markerId;
        marker->close();
    }
    block->close();

    AcDbIdMapping map;
    map.setOrigDb(pDb);
    map.setDestDb(this);
    map.setDeepCloneContext(AcDb::kDcInsert);
    map.assign(AcDbIdPair(pDb->modelSpaceId(), blockId, false));
    AcDbObjectIdArray ids;
    if (auto* space = AcDbBlockTableRecord::cast(peekObject(pDb->modelSpaceId())))
        for (AcDbObjectId id : space->entityIds())
            if (!id.isErased()) ids.append(id);
    return cloneAll(ids, blockId, map, *this, true);
}
