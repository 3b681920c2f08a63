// The module's named values in extended data, under the registered application "TARVIK":
// (1001 "TARVIK") then pairs, each (1000 key) followed by one value item (1000 text, 1040
// real or 1071 32-bit integer). Keys are compared exactly; pairs keep the order in which
// they were written; every read walks the chain.
#pragma once

#include <functional>
#include <string>

#include "acdb.h"
#include "dbid.h"
#include "bridge/value_list.h"

class AcDbDatabase;

namespace kelvo {

constexpr const ACHAR* kTarvikApplication = L"TARVIK";

// Adds "TARVIK" to the database's registered-application table when it is not there.
Acad::ErrorStatus registerTarvikApplication(AcDbDatabase* db);

// The object's "TARVIK" data, (1001 "TARVIK") first; null when it has none or cannot be
// opened for read.
ValueList readTarvikData(AcDbObjectId id);

// Opens the object for write (not when erased), registers "TARVIK" in its database and
// replaces all of the application's data with `data` (which starts with the 1001 group;
// that group alone removes every value).
Acad::ErrorStatus writeTarvikData(AcDbObjectId id, const resbuf* data);

// The value item stored under `key` in `data` (the chain readTarvikData gives): walking
// from the item after the application name, an item read as text is a key; a key that
// does not match is skipped with the item after it; any other item is stepped over.
// Null when the key is not there or is the last item.
const resbuf* findTarvikValue(const resbuf* data, const std::wstring& key);

// Calls visit(key, value item) for every pair of `data` in stored order whose key is not
// empty and has an item after it, walking as findTarvikValue does.
void forEachTarvikPair(const resbuf* data,
                       const std::function<void(const std::wstring&, const resbuf&)>& visit);

}  // namespace kelvo
