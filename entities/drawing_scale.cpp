// The drawing scale setting of leaders.
#include "entities/drawing_scale.h"

#include "acdocman.h"
#include "dbmain.h"

namespace kelvo {

double drawingScale(const AcDbDatabase* db) {
    return db != nullptr ? db->dimscale() : 1.0;
}

AcDbDatabase* currentDatabase() {
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager != nullptr ? manager->curDocument() : nullptr;
    return document != nullptr ? document->database() : nullptr;
}

double currentDrawingScale() {
    return drawingScale(currentDatabase());
}

}  // namespace kelvo
