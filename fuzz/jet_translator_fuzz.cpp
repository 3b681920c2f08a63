// Fuzz target: the Access SQL translator. The bytes are one statement (kv_sql,
// kv_command or a stored query); the translator either refuses it with DAO's error or
// gives SQLite text, which is then prepared and run on a small in-memory database with
// the dialect's functions, so the functions meet the arguments a user can write. Saved
// queries are offered by name, one of them naming itself.
#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "fuzz_check.h"
#include "jet_sql.h"

namespace {

struct Closer {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
struct Finalizer {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};

constexpr const char* kSchema =
    "CREATE TABLE t (id INTEGER PRIMARY KEY, a TEXT COLLATE JETNOCASE, b LONG, c DOUBLE,"
    " d DATETIME, e YESNO);"
    "CREATE TABLE u (x TEXT, y LONG);"
    "INSERT INTO t (a, b, c, d, e) VALUES ('one', 1, 1.5, 45000.25, -1), ('Two', -2, 0, "
    "0, 0), (NULL, NULL, NULL, NULL, NULL), ('', 2147483647, -1e300, 2958465.99, -1);"
    "INSERT INTO u VALUES ('one', 1), ('x', NULL);";

std::optional<std::string> savedQuery(std::string_view name) {
    if (name == "q1") return "SELECT a, b FROM t WHERE b > 0";
    if (name == "qself") return "SELECT * FROM qself";
    if (name == "qparam") return "PARAMETERS p Long; SELECT a FROM t WHERE b = p";
    return std::nullopt;
}

int steps = 0;

// One database for the whole run: statements run in a transaction that is rolled back.
sqlite3* database() {
    static const std::unique_ptr<sqlite3, Closer> db = [] {
        sqlite3* raw = nullptr;
        FUZZ_CHECK(sqlite3_open(":memory:", &raw) == SQLITE_OK, "an in-memory database opens");
        std::unique_ptr<sqlite3, Closer> owned(raw);
        kelvo::jet::registerCollation(raw);
        kelvo::jet::registerFunctions(raw);
        FUZZ_CHECK(sqlite3_exec(raw, kSchema, nullptr, nullptr, nullptr) == SQLITE_OK,
                   "the fuzz schema is made");
        sqlite3_limit(raw, SQLITE_LIMIT_LENGTH, 1 << 20);
        // Bounded work: a statement stops after some virtual machine steps.
        sqlite3_progress_handler(
            raw, 1000, [](void*) { return ++steps > 200 ? 1 : 0; }, nullptr);
        return owned;
    }();
    steps = 0;
    return db.get();
}

void run(sqlite3* db, const std::string& sql) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) return;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement(raw);
    for (int rows = 0; rows < 64 && sqlite3_step(raw) == SQLITE_ROW; ++rows) {
        for (int i = 0; i < sqlite3_column_count(raw); ++i) (void)sqlite3_column_text(raw, i);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view sql(reinterpret_cast<const char*>(data), size);
    kelvo::jet::ParseOptions options;
    options.savedQuery = savedQuery;
    sqlite3* db = database();
    options.database = db;
    kelvo::jet::Statement statement;
    try {
        statement = kelvo::jet::parse(sql, options);
    } catch (const kelvo::jet::SyntaxError& e) {
        FUZZ_CHECK(e.daoCode > 0 && e.what()[0] != '\0', "a refusal has a DAO code and text");
        return 0;
    }
    if (const auto* query = std::get_if<kelvo::jet::Query>(&statement)) {
        sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
        run(db, query->sqliteSql);
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    return 0;
}
