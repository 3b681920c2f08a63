// Prepared statements and the text conversions at the SQLite edge.
#include "sqlite_statement.h"

#include "sqlite_errors.h"
#include "utf8.h"

namespace dao {

std::string utf8(std::wstring_view text) { return kelvo::toUtf8(text); }

// Bytes that are not UTF-8 (text written by another program) keep their values as Latin-1
// characters rather than being lost.
std::wstring wide(std::string_view text) {
    // Most stored text is ASCII: widen it directly.
    bool ascii = true;
    for (const char c : text) ascii = ascii && static_cast<unsigned char>(c) < 0x80;
    if (ascii) return std::wstring(text.begin(), text.end());
    return kelvo::fromUtf8(text, kelvo::InvalidBytes::Latin1);
}

std::string quoteName(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

std::string quoteName(std::wstring_view name) { return quoteName(std::string_view(utf8(name))); }

Statement::Statement(sqlite3* db, std::string_view sql) {
    sqlite3_stmt* stmt = nullptr;
    const int rc = sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &stmt, nullptr);
    stmt_.reset(stmt);
    if (rc != SQLITE_OK) throwSqliteError(sqlite3_extended_errcode(db), sqlite3_errmsg(db));
}

bool Statement::step() {
    const int rc = sqlite3_step(stmt_.get());
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) {
        sqlite3_reset(stmt_.get());
        return false;
    }
    sqlite3* db = sqlite3_db_handle(stmt_.get());
    const int code = sqlite3_extended_errcode(db);
    const std::string message = sqlite3_errmsg(db);
    sqlite3_reset(stmt_.get());
    throwSqliteError(code != SQLITE_OK ? code : rc, message);
}

void Statement::reset() { sqlite3_reset(stmt_.get()); }

}  // namespace dao
