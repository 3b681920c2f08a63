// Raw SQLite handles for the benchmarks.

#include "bench/sqlite_handle.h"

#include <stdexcept>

#include "jet_sql.h"

namespace kelvo::bench {

SqliteDb openRaw(const std::filesystem::path& file, bool write) {
    sqlite3* raw = nullptr;
    const int flags = write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    const int rc = sqlite3_open_v2(file.c_str(), &raw, flags, nullptr);
    SqliteDb db(raw);
    if (rc != SQLITE_OK)
        throw std::runtime_error("cannot open " + file.string() + ": " +
                                 (raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc)));
    jet::registerCollation(db.get());
    return db;
}

Statement prepare(sqlite3* db, const std::string& sql) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK)
        throw std::runtime_error(std::string(sqlite3_errmsg(db)) + " in: " + sql);
    return Statement(raw);
}

void exec(sqlite3* db, const std::string& sql) {
    char* message = nullptr;
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        std::string text = message ? message : "unknown error";
        sqlite3_free(message);
        throw std::runtime_error(text + " in: " + sql);
    }
}

}  // namespace kelvo::bench
