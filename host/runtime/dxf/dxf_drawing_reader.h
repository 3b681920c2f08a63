// A whole ASCII DXF drawing into a database: tables and their records, blocks, entities
// with their attributes and vertices, objects, extended data, custom classes by the DXF
// names of the CLASSES section.
#pragma once

#include <string>

#include "runtime/dxf/dxf_file.h"

class AcDbDatabase;

namespace kelvo::host::dxf {

// Reads `file` into db, a new database with or without the default drawing (records of
// the same name as db's own are updated, not doubled). Objects of types the host does not
// know are kept as proxies when the file lays them out by subclass, else skipped. The
// answer reports them, and objects whose fields could not all be read, in one line:
// "skipped 3 HATCH, 1 SPLINE; kept as proxies 2 MLINE; read in part 1 LINE" ("" when
// there is nothing to say). Throws DxfError when the file's structure cannot be read.
std::wstring readDrawingDxf(const DxfFile& file, AcDbDatabase& db);

}  // namespace kelvo::host::dxf
