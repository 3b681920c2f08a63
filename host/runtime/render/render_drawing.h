// Pictures of a drawing database: its model space drawn through each entity's worldDraw.
#pragma once

#include "runtime/render/picture.h"

class AcDbDatabase;
class AcDbEntity;

namespace kelvo::host::render {

// Every visible entity of model space on a layer that is on and thawed, with block
// references through their blocks and custom entities through their worldDraw.
Picture renderModelSpace(AcDbDatabase& db);

// One entity (for tests and previews), as renderModelSpace draws it.
void renderEntity(AcDbEntity& entity, Picture& picture);

}  // namespace kelvo::host::render
