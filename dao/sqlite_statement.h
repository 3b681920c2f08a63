// SQLite handles owned by C++ types: the connection handle and a prepared statement that
// resets itself, with the bind and column calls the engine uses (text is UTF-8 here and
// wide at the engine's interface).
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace dao {

struct SqliteCloser {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
using SqliteHandle = std::unique_ptr<sqlite3, SqliteCloser>;

struct StatementFinalizer {
    void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};

std::string utf8(std::wstring_view text);
std::wstring wide(std::string_view text);
// A name quoted as an SQLite identifier ("a""b").
std::string quoteName(std::wstring_view name);
std::string quoteName(std::string_view name);

// A prepared statement. step() returns true for a row, false when done, and throws the
// DAO error of any failure (after resetting, so no transaction stays open).
class Statement {
public:
    Statement() = default;
    Statement(sqlite3* db, std::string_view sql);
    explicit operator bool() const { return stmt_ != nullptr; }
    sqlite3_stmt* get() const { return stmt_.get(); }

    bool step();
    void reset();  // ends the statement's read, keeps the bindings
    void clearBindings() { sqlite3_clear_bindings(stmt_.get()); }

    void bindNull(int i) { sqlite3_bind_null(stmt_.get(), i); }
    void bindInt(int i, std::int64_t v) { sqlite3_bind_int64(stmt_.get(), i, v); }
    void bindDouble(int i, double v) { sqlite3_bind_double(stmt_.get(), i, v); }
    void bindText(int i, std::string_view v) {
        sqlite3_bind_text(stmt_.get(), i, v.data(), static_cast<int>(v.size()), SQLITE_TRANSIENT);
    }
    void bindBlob(int i, const void* data, std::size_t size) {
        sqlite3_bind_blob(stmt_.get(), i, data, static_cast<int>(size), SQLITE_TRANSIENT);
    }
    void bindValue(int i, const sqlite3_value* v) { sqlite3_bind_value(stmt_.get(), i, v); }

    int columnCount() const { return sqlite3_column_count(stmt_.get()); }
    int type(int i) const { return sqlite3_column_type(stmt_.get(), i); }
    std::int64_t integer(int i) const { return sqlite3_column_int64(stmt_.get(), i); }
    double real(int i) const { return sqlite3_column_double(stmt_.get(), i); }
    std::string_view text(int i) const {
        const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(stmt_.get(), i));
        return p ? std::string_view(p, static_cast<std::size_t>(sqlite3_column_bytes(stmt_.get(), i)))
                 : std::string_view();
    }
    std::wstring wideText(int i) const { return wide(text(i)); }

private:
    std::unique_ptr<sqlite3_stmt, StatementFinalizer> stmt_;
};

}  // namespace dao
