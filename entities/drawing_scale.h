// The drawing scale setting that leader scales are multiplied by: the drawing's dimension
// scale (DIMSCALE).
#pragma once

class AcDbDatabase;

namespace kelvo {

// DIMSCALE of `db`; 1 when there is no database.
double drawingScale(const AcDbDatabase* db);
// DIMSCALE of the document manager's current document (1 when no drawing is open).
double currentDrawingScale();
// The current document's database, or null.
AcDbDatabase* currentDatabase();

}  // namespace kelvo
