// Filing helpers shared by the objects: extended data in a DWG stream, the DXF name of a
// class, and copies made through the DWG copy filer.
#pragma once

#include "dbfiler.h"
#include "dbmain.h"

namespace kelvo::drawing {

Acad::ErrorStatus writeXDataToDwg(AcDbDwgFiler* filer, const resbuf* xdata);
// Reads what writeXDataToDwg wrote into a new chain (null when there was none).
Acad::ErrorStatus readXDataFromDwg(AcDbDwgFiler* filer, resbuf*& xdata);
// The DXF name of a class, or of its nearest ancestor that has one.
const ACHAR* dxfNameOf(const AcRxClass* cls);
// A new object of the same class, not in a database, with the same fields.
AcRxObject* cloneThroughFiler(const AcDbObject& source);
Acad::ErrorStatus copyThroughFiler(AcDbObject& target, const AcRxObject* source);

}  // namespace kelvo::drawing
