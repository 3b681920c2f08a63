// The floor the module is measured against: the same file, the same rows and the same
// record lists, through the raw SQLite C API (prepared statements, sqlite3_step, column
// reads) with no engine and no module in between. Each list built is handed on the way
// a callback's result is (walked once) and released, exactly as the module's are.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "bench/record_list.h"
#include "bench/sqlite_handle.h"

namespace kelvo::bench {

// Seek keys as the callback receives them (wide text); the floor converts them to UTF-8
// for SQLite as the module must.
using GroupCode = std::pair<std::wstring, std::int32_t>;

class RawFloor {
public:
    explicit RawFloor(const std::filesystem::path& file);

    // Every row in primary key order, one record list each. Returns the rows read.
    std::int64_t walk();
    // One indexed lookup per key, one record list each. Returns the rows found.
    std::int64_t seekNames(const std::vector<std::wstring>& names);
    std::int64_t seekGroupCodes(const std::vector<GroupCode>& keys);
    // The rows with ixBench <= lastId as one result list. Returns the rows in it.
    std::int64_t select(std::int64_t lastId);

    // For the comparison with the module: the lists themselves, kept (the caller
    // releases them with acutRelRb). Null when there is no such row.
    resbuf* recordById(std::int64_t id);
    resbuf* recordByName(const std::wstring& name);
    resbuf* recordByGroupCode(const GroupCode& key);
    resbuf* resultList(std::int64_t lastId, std::int64_t* rowCount = nullptr);

private:
    resbuf* keepOne(sqlite3_stmt* s);
    SqliteDb db_;
    RecordBuilder builder_;
    std::string columns_;
    Statement byName_, byGroupCode_, byId_;
};

// Walks a value list once, as a host takes a callback's result; returns its nodes.
std::size_t consumeList(const resbuf* list);

}  // namespace kelvo::bench
