// The benchmarks' table: its columns, its DDL, its rows as a function of the row number,
// and the raw bulk fill of a file whose schema the engine made.

#include "bench/bench_table.h"

#include <cstdio>
#include <stdexcept>

#include "bench/sqlite_handle.h"

namespace kelvo::bench {

const std::vector<Column>& benchColumns() {
    static const std::vector<Column> columns = {
        {"ixBench", ColumnKind::Long},     {"sName", ColumnKind::Text},
        {"sGroup", ColumnKind::Text},      {"iCode", ColumnKind::Long},
        {"iQuantity", ColumnKind::Short},  {"dValue", ColumnKind::Double},
        {"dCost", ColumnKind::Double},     {"bActive", ColumnKind::YesNo},
        {"bFlag", ColumnKind::YesNo},      {"dtCreated", ColumnKind::Date},
        {"sNote", ColumnKind::Text},       {"iColor", ColumnKind::Long},
    };
    return columns;
}

std::vector<std::string> benchTableDdl() {
    return {
        "CREATE TABLE tblBench (ixBench COUNTER CONSTRAINT ixBench PRIMARY KEY, "
        "sName TEXT(50) NOT NULL, sGroup TEXT(20) NOT NULL, iCode LONG NOT NULL, "
        "iQuantity SHORT, dValue DOUBLE NOT NULL, dCost DOUBLE, bActive YESNO NOT NULL, "
        "bFlag YESNO NOT NULL, dtCreated DATETIME, sNote TEXT(255), iColor LONG)",
        "CREATE UNIQUE INDEX sName ON tblBench (sName)",
        "CREATE UNIQUE INDEX isxGroupCode ON tblBench (sGroup, iCode)",
    };
}

std::string benchName(std::int64_t i) {
    // An odd multiplier permutes the 32-bit numbers: unique names, in an order that has
    // nothing to do with the row order.
    const auto scrambled = static_cast<std::uint32_t>(static_cast<std::uint64_t>(i) * 2654435761u);
    char text[24];
    std::snprintf(text, sizeof text, "ITEM-%08X", scrambled);
    return text;
}

std::string benchGroup(std::int64_t i) {
    char text[16];
    std::snprintf(text, sizeof text, "Zone %03d", static_cast<int>(i % kGroups));
    return text;
}

std::int32_t benchCode(std::int64_t i) { return static_cast<std::int32_t>(i / kGroups); }

namespace {

constexpr double kFirstDate = 43831.0;  // 1/1/2020

std::string noteOf(std::int64_t i) {
    if (i % 11 == 0) return {};
    char text[96];
    if (i % 13 == 0)
        std::snprintf(text, sizeof text, "Unité de traitement d'air n° %lld", static_cast<long long>(i));
    else
        std::snprintf(text, sizeof text, "Supply air terminal, zone %d, level %d",
                      static_cast<int>(i % 500), static_cast<int>(i % 9));
    std::string note = text;
    if (i % 17 == 0) note += "  ";  // trailing blanks, which a text field loses
    return note;
}

}  // namespace

BenchRow benchRow(std::int64_t i) {
    BenchRow row;
    row.id = static_cast<std::int32_t>(i);
    row.name = benchName(i);
    row.group = benchGroup(i);
    row.code = benchCode(i);
    row.quantity = static_cast<std::int16_t>((i * 7) % 30000);
    row.value = static_cast<double>(i) * 0.25 + 0.125;
    if (i % 10 != 0) row.cost = static_cast<double>(i % 1000) * 1.5;
    row.active = i % 3 != 0;
    row.flag = i % 5 == 0;
    const double minutes = i % 4 == 0 ? 0.0 : static_cast<double>((i * 37) % 1440);
    row.created = kFirstDate + static_cast<double>(i % 2000) + minutes / 1440.0;
    if (i % 11 != 0) row.note = noteOf(i);
    if (i % 4 != 0) row.color = static_cast<std::int32_t>(i % 256);
    return row;
}

namespace {

void bindText(sqlite3_stmt* s, int at, const std::string& text) {
    sqlite3_bind_text(s, at, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void bindRow(sqlite3_stmt* s, const BenchRow& r) {
    sqlite3_bind_int(s, 1, r.id);
    bindText(s, 2, r.name);
    bindText(s, 3, r.group);
    sqlite3_bind_int(s, 4, r.code);
    sqlite3_bind_int(s, 5, r.quantity);
    sqlite3_bind_double(s, 6, r.value);
    if (r.cost) sqlite3_bind_double(s, 7, *r.cost); else sqlite3_bind_null(s, 7);
    sqlite3_bind_int(s, 8, r.active ? -1 : 0);
    sqlite3_bind_int(s, 9, r.flag ? -1 : 0);
    sqlite3_bind_double(s, 10, r.created);
    if (r.note) bindText(s, 11, *r.note); else sqlite3_bind_null(s, 11);
    if (r.color) sqlite3_bind_int(s, 12, *r.color); else sqlite3_bind_null(s, 12);
}

}  // namespace

void fillBenchTable(const std::filesystem::path& file, std::int64_t rows) {
    SqliteDb db = openRaw(file, true);
    std::string columns, marks;
    for (const Column& c : benchColumns()) {
        columns += (columns.empty() ? "" : ", ") + std::string(c.name);
        marks += marks.empty() ? "?" : ", ?";
    }
    exec(db.get(), "BEGIN");
    Statement insert = prepare(db.get(), "INSERT INTO tblBench (" + columns + ") VALUES (" +
                                             marks + ")");
    for (std::int64_t i = 1; i <= rows; ++i) {
        bindRow(insert.get(), benchRow(i));
        if (sqlite3_step(insert.get()) != SQLITE_DONE)
            throw std::runtime_error(std::string("insert failed: ") + sqlite3_errmsg(db.get()));
        sqlite3_reset(insert.get());
    }
    insert.reset();
    exec(db.get(), "COMMIT");
}

std::optional<std::int64_t> countBenchRows(const std::filesystem::path& file) {
    std::error_code ec;
    if (!std::filesystem::exists(file, ec)) return std::nullopt;
    try {
        SqliteDb db = openRaw(file, false);
        Statement count = prepare(db.get(), "SELECT count(*) FROM tblBench");
        if (sqlite3_step(count.get()) != SQLITE_ROW) return std::nullopt;
        return sqlite3_column_int64(count.get(), 0);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

}  // namespace kelvo::bench
