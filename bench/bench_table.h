// The benchmarks' table: tblBench, twelve columns of the Access types a standards table
// uses (AutoNumber, text, long, integer, double, Yes/No, date), with a one-column and a
// two-column unique index. Row i (from 1) is a pure function of i, so the raw floor, the
// module and the file agree on every value without reading each other.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo::bench {

enum class ColumnKind { Long, Short, Double, Text, YesNo, Date };

struct Column {
    const char* name;
    ColumnKind kind;
};

// The columns in field order.
const std::vector<Column>& benchColumns();

constexpr const char* kBenchTable = "tblBench";
constexpr const char* kOneColumnIndex = "sName";         // (sName)
constexpr const char* kTwoColumnIndex = "isxGroupCode";  // (sGroup, iCode)
constexpr int kGroups = 997;

// The Access DDL that makes the table and its indexes, one statement each.
std::vector<std::string> benchTableDdl();

// One row's values. Null columns are empty optionals of the matching member.
struct BenchRow {
    std::int32_t id;
    std::string name;
    std::string group;
    std::int32_t code;
    std::int16_t quantity;
    double value;
    std::optional<double> cost;
    bool active;
    bool flag;
    double created;  // automation date: days since 12/30/1899, time as the fraction
    std::optional<std::string> note;
    std::optional<std::int32_t> color;
};
BenchRow benchRow(std::int64_t i);

// Key values of row i for the two seeks.
std::string benchName(std::int64_t i);
std::string benchGroup(std::int64_t i);
std::int32_t benchCode(std::int64_t i);

// Fills the table of a file whose schema the engine made (through the module): one
// transaction of raw inserts of rows 1..rows. Throws std::runtime_error on failure.
void fillBenchTable(const std::filesystem::path& file, std::int64_t rows);

// The number of rows in tblBench of `file`, or nullopt when the file or table is not
// there or unreadable.
std::optional<std::int64_t> countBenchRows(const std::filesystem::path& file);

}  // namespace kelvo::bench
