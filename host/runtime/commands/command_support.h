// What the command families share: adding entities to the current space, opening the
// selected entities, copying them, and the angle and point arithmetic of prompts.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "gemat3d.h"
#include "gepnt3d.h"

namespace kelvo::commands {

inline constexpr double kPi = 3.14159265358979323846;

// Adds a new entity (taking it) to the current space with the drawing's current layer,
// colour and linetype; answers its id (null when it could not be added).
AcDbObjectId addToCurrentSpace(AcDbDatabase& db, AcDbEntity* entity);
// Erases an entity (or brings it back).
void eraseEntity(AcDbObjectId id, bool erase = true);
// Applies the matrix to each entity; answers how many took it.
int transformEntities(const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& m);
// Copies the entities into their own blocks (with what they own); the copies' ids in the
// same order.
std::vector<AcDbObjectId> copyEntities(AcDbDatabase& db, const std::vector<AcDbObjectId>& ids);
// A table record by name in a table, case-insensitive (null when none).
AcDbObjectId findRecord(AcDbObjectId tableId, const std::wstring& name);
// The name of a table record ("" when it is not one).
std::wstring recordName(AcDbObjectId id);
// An angle in degrees as the host shows defaults ("0", "45", "22.5").
std::wstring formatAngle(double radians);

}  // namespace kelvo::commands
