// The argument readers: each reads one argument (or one structure of nodes) at the
// cursor. On success it stores the value, moves the cursor past what it read and
// returns true; on failure it returns false and leaves the cursor where it was.
// Readers never print and never throw.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "adsdef.h"
#include "dbid.h"

namespace kelvo {

using Cursor = const resbuf*;

bool readText(Cursor& cursor, std::wstring& out);
// Each wide character's low byte, zero-terminated.
bool readNarrowText(Cursor& cursor, std::unique_ptr<char[]>& out);
bool readReal(Cursor& cursor, double& out);
// RTREAL, or whatever readInteger accepts, widened.
bool readNumber(Cursor& cursor, double& out);
// RTSHORT, RTLONG, RTREAL (truncated toward zero; fails when that does not fit in 32
// bits). A group-code node (type below 1000) yields its type code; the cursor stays.
bool readInteger(Cursor& cursor, std::int32_t& out);
// RTNIL false and moves; RTLE false and stays; RTLB fails; any other value true.
bool readBoolean(Cursor& cursor, bool& out);
// The same rules, writing a database boolean: 0 or 65535.
bool readDaoBoolean(Cursor& cursor, std::uint16_t& out);
bool readListBegin(Cursor& cursor);
bool readListEnd(Cursor& cursor);
// Moves past any one node; a null cursor stays null (and the skip fails).
bool skipArgument(Cursor& cursor);
bool readSelectionSet(Cursor& cursor, ads_name out);
bool readEntity(Cursor& cursor, ads_name out);
// An entity name converted with acdbGetObjectId.
bool readObject(Cursor& cursor, AcDbObjectId& out);
// RTLB whose next-but-one node is RTDOTE. Does not move.
bool isDottedPair(Cursor cursor);
// A dotted pair (text . integer); the cursor moves past its closing node.
bool readNamedInteger(Cursor& cursor, std::wstring& name, std::int32_t& value);
// RTPOINT (z 0), RT3DPOINT, group code 10..17, or two or three numbers in a row.
bool read3dPoint(Cursor& cursor, ads_point out);
// RTPOINT, RT3DPOINT, group code 10..17, or two RTREAL nodes in a row.
bool read2dPoint(Cursor& cursor, ads_point out);

}  // namespace kelvo
