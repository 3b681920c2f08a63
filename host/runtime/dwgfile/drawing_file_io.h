// Whole drawings in files: this host's binary drawing file (".dwg") and ASCII DXF.
// AcDbDatabase::readDwgFile, saveAs, dxfIn and dxfOut come here.
#pragma once

#include <filesystem>
#include <string>

#include "acdb.h"

class AcDbDatabase;

namespace kelvo::files {

enum class DrawingFormat { Dwg, Dxf, Unknown };

// The format of FILE by its first bytes (not its name); Unknown when it is neither.
DrawingFormat sniffFormat(const std::filesystem::path& file);

// Reads FILE, a binary drawing or (as a convenience) ASCII DXF, into db. On failure the
// status says what kind and *why (when given) the reason, in words.
Acad::ErrorStatus readDrawing(AcDbDatabase& db, const std::filesystem::path& file,
                              std::wstring* why = nullptr);
// Writes db: ASCII DXF when FILE ends in ".dxf", else the binary drawing format.
Acad::ErrorStatus writeDrawing(AcDbDatabase& db, const std::filesystem::path& file,
                               std::wstring* why = nullptr);
Acad::ErrorStatus readDxf(AcDbDatabase& db, const std::filesystem::path& file,
                          std::wstring* why = nullptr);
Acad::ErrorStatus writeDxf(AcDbDatabase& db, const std::filesystem::path& file,
                           std::wstring* why = nullptr);
Acad::ErrorStatus readDwg(AcDbDatabase& db, const std::filesystem::path& file,
                          std::wstring* why = nullptr);
Acad::ErrorStatus writeDwg(AcDbDatabase& db, const std::filesystem::path& file,
                           std::wstring* why = nullptr);

}  // namespace kelvo::files
