// Model space to a picture.

#include "runtime/render/render_drawing.h"

#include "dbmain.h"
#include "dbsymtb.h"
#include "runtime/render/picture_draw.h"

namespace kelvo::host::render {

Picture renderModelSpace(AcDbDatabase& db) {
    Picture picture;
    PictureDraw draw(&db, picture);
    AcDbBlockTableRecord* space = nullptr;
    if (acdbOpenObject(space, db.modelSpaceId(), AcDb::kForRead) != Acad::eOk)
        throw RenderError("the drawing has no model space");
    AcDbObjectIdArray ids = space->entityIds();
    space->close();
    for (const AcDbObjectId& id : ids) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;   // erased
        if (entity->visibility() == AcDb::kVisible) draw.drawDrawable(*entity);
        entity->close();
    }
    return picture;
}

void renderEntity(AcDbEntity& entity, Picture& picture) {
    PictureDraw draw(entity.database(), picture);
    draw.drawDrawable(entity);
}

}  // namespace kelvo::host::render
