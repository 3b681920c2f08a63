// Helpers shared by the command families (see command_support.h).

#include "runtime/commands/command_support.h"

#include <cmath>
#include <cstdio>
#include <map>

#include "dbidmap.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "runtime/commands/command_input.h"

namespace kelvo::commands {

AcDbObjectId addToCurrentSpace(AcDbDatabase& db, AcDbEntity* entity) {
    AcDbObjectPointer<AcDbEntity> owned;
    owned.acquire(entity);
    owned->setDatabaseDefaults(&db);
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.currentSpaceId(), AcDb::kForWrite);
    if (!space) return {};
    AcDbObjectId id;
    if (space->appendAcDbEntity(id, owned.object()) != Acad::eOk) return {};
    return id;  // `owned` closes the entity, now in the drawing
}

void eraseEntity(AcDbObjectId id, bool erase) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
    if (entity && entity->isErased() != erase) entity->erase(erase);
}

int transformEntities(const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& m) {
    int done = 0;
    for (AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity && entity->transformBy(m) == Acad::eOk) ++done;
    }
    return done;
}

std::vector<AcDbObjectId> copyEntities(AcDbDatabase& db, const std::vector<AcDbObjectId>& ids) {
    std::map<AcDbObjectId, AcDbObjectIdArray> byOwner;
    for (AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity) byOwner[entity->ownerId()].append(id);
    }
    AcDbIdMapping map;
    for (auto& [owner, group] : byOwner) db.deepCloneObjects(group, owner, map);
    std::vector<AcDbObjectId> copies;
    for (AcDbObjectId id : ids) {
        AcDbIdPair pair(id, AcDbObjectId(), false);
        if (map.compute(pair) && !pair.value().isNull()) copies.push_back(pair.value());
    }
    return copies;
}

AcDbObjectId findRecord(AcDbObjectId tableId, const std::wstring& name) {
    AcDbObjectPointer<AcDbSymbolTable> table(tableId, AcDb::kForRead);
    if (!table) return {};
    AcDbObjectId id;
    if (table->getAt(name.c_str(), id) != Acad::eOk) return {};
    return id;
}

std::wstring recordName(AcDbObjectId id) {
    AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
    return record ? record->name() : L"";
}

std::wstring formatAngle(double radians) {
    double degrees = radians * 180.0 / kPi;
    wchar_t buffer[64];
    std::swprintf(buffer, 64, L"%.8g", std::abs(degrees) < 1e-10 ? 0.0 : degrees);
    return buffer;
}

}  // namespace kelvo::commands
