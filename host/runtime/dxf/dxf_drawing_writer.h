// A whole drawing database as ASCII DXF (AC1015 structure): HEADER, CLASSES, TABLES,
// BLOCKS, ENTITIES, OBJECTS, each object through its own dxfOut.
#pragma once

#include <string>

class AcDbDatabase;

namespace kelvo::host::dxf {

// The DXF text of db. Throws DxfError when an object fails to write.
std::string writeDrawingDxf(const AcDbDatabase& db);

}  // namespace kelvo::host::dxf
