// Raw SQLite handles for the benchmarks, owned: the connection and its statements close
// on every path. The connection has the engine's text collation registered, without
// which a table the engine made cannot be read or written.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>

namespace kelvo::bench {

struct SqliteCloser {
    void operator()(sqlite3* db) const noexcept { sqlite3_close_v2(db); }
};
struct StatementFinalizer {
    void operator()(sqlite3_stmt* s) const noexcept { sqlite3_finalize(s); }
};
using SqliteDb = std::unique_ptr<sqlite3, SqliteCloser>;
using Statement = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

// Opens `file` (read-write when `write`). Throws std::runtime_error with SQLite's message.
SqliteDb openRaw(const std::filesystem::path& file, bool write);
Statement prepare(sqlite3* db, const std::string& sql);
void exec(sqlite3* db, const std::string& sql);

}  // namespace kelvo::bench
