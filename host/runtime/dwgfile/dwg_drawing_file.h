// This host's binary drawing file (".dwg"): a signature, then one typed stream (the DWG
// filer's) holding the format version, the header variables, the database's tables, the
// next handle, and every object as its class name, handle and its own dwgOut stream.
// References inside the streams are handles, so a file reads back with every handle, owner
// and reference as it was.
//
//   "KELVODWG" "\r\n\x1a\n"            signature (text-mode damage shows in the last bytes)
//   Int32 format version (1)
//   Int32 n, n x (String name, Int16 code, UInt8 kind, value)        header variables
//   6 x UInt64 handle   block, layer, text style, linetype, application tables, dictionary
//   UInt64 next handle
//   Int32 n, n x (String class name, Bool entity, UInt64 handle, Int32 size, bytes)
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "acdb.h"

class AcDbDatabase;

namespace kelvo::files {

// The first bytes of every binary drawing file of this host.
constexpr std::string_view kDwgSignature{"KELVODWG\r\n\x1a\n", 12};

// The bytes of the file for db. eOk, or the status of the object that could not be
// written (*why says which).
Acad::ErrorStatus encodeDwgDrawing(const AcDbDatabase& db, std::vector<std::uint8_t>& bytes,
                                   std::wstring* why = nullptr);
// Reads the bytes of a file into db, which must be new and empty (AcDbDatabase(false)):
// eWrongDatabase otherwise. eInvalidDwgVersion for bytes that are not such a file or of a
// newer format; eDwgObjectImproperlyRead (or the object's status) for a damaged one.
Acad::ErrorStatus decodeDwgDrawing(AcDbDatabase& db, const std::vector<std::uint8_t>& bytes,
                                   std::wstring* why = nullptr);

}  // namespace kelvo::files
