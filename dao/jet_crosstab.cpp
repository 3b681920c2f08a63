// TRANSFORM <aggregate> SELECT <row headings> ... PIVOT <expression> [IN (values)]: one
// output column per pivot value, each the aggregate over the rows with that value.
// Without an IN list the values are read from the database first (sorted ascending; a
// Null value makes the column "<>"), which needs ParseOptions::database.
#include <sqlite3.h>

#include <cstdio>
#include <memory>

#include "jet_select_core.h"

namespace kelvo::jet {
namespace {

struct PivotValue {
    std::string sql;   // literal, or empty for Null
    std::string name;  // output column name
};

struct StatementDeleter {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};

std::vector<PivotValue> readPivotValues(Translator& t, const std::string& pivot,
                                        const Core& core) {
    if (t.options.database == nullptr)
        t.fail(3141, "A crosstab query without an IN list of column headings needs the "
                     "database to read them from.");
    if (!t.placeholderNames.empty())
        t.fail(3141, "A crosstab query with parameters needs an IN list of column headings.");
    const std::string sql = "SELECT DISTINCT " + pivot + " AS v" + core.fromWhere +
                            " ORDER BY 1 COLLATE JETNOCASE";
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(t.options.database, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK)
        t.fail(3141, std::string("Cannot read the crosstab's column headings: ") +
                         sqlite3_errmsg(t.options.database));
    std::unique_ptr<sqlite3_stmt, StatementDeleter> stmt(raw);
    std::vector<PivotValue> values;
    int rc;
    while ((rc = sqlite3_step(stmt.get())) == SQLITE_ROW) {
        PivotValue v;
        switch (sqlite3_column_type(stmt.get(), 0)) {
            case SQLITE_NULL:
                v.name = "<>";
                break;
            case SQLITE_INTEGER:
                v.sql = v.name = std::to_string(sqlite3_column_int64(stmt.get(), 0));
                break;
            case SQLITE_FLOAT: {
                char buf[40];
                std::snprintf(buf, sizeof buf, "%.15g", sqlite3_column_double(stmt.get(), 0));
                v.name = buf;
                std::snprintf(buf, sizeof buf, "%.17g", sqlite3_column_double(stmt.get(), 0));
                v.sql = buf;
                break;
            }
            default:
                v.name = reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 0));
                v.sql = Translator::quoteString(v.name);
        }
        values.push_back(std::move(v));
    }
    if (rc != SQLITE_DONE)
        t.fail(3141, std::string("Cannot read the crosstab's column headings: ") +
                         sqlite3_errmsg(t.options.database));
    return values;
}

}  // namespace

SelectText Translator::crosstab() {
    const std::string bad = "Syntax error in TRANSFORM statement.";
    expectKeyword("transform", 3125, bad);
    const size_t aggregateStart = position();
    if (!expression().aggregate) fail(3125, bad);
    if (acceptKeyword("as")) name(3125, bad);  // the value's name; columns take the headings
    Core core = selectCore(*this, nullptr);
    std::vector<OrderKey> keys = orderBy(*this);
    expectKeyword("pivot", 3125, bad);
    pivotExpression = true;
    const std::string pivot = value(expression());
    pivotExpression = false;
    std::vector<PivotValue> values;
    if (acceptKeyword("in")) {
        expectSymbol("(", 3125, bad);
        do {
            const Token& t = peek();
            if (t.kind != TokenKind::String && t.kind != TokenKind::Number &&
                t.kind != TokenKind::Date)
                fail(3125, bad);
            PivotValue v;
            v.name = t.text;
            v.sql = value(expression());
            values.push_back(std::move(v));
        } while (acceptSymbol(","));
        expectSymbol(")", 3125, bad);
    } else {
        values = readPivotValues(*this, pivot, core);
    }
    const size_t end = position();

    SelectText out;
    out.kind = QueryKind::Crosstab;
    std::string columns = core.itemList();
    for (const Item& item : core.items) out.names.push_back(item.name);
    for (const PivotValue& v : values) {
        aggregateFilter = v.sql.empty() ? "(" + pivot + " IS NULL)"
                                        : "(" + pivot + " COLLATE JETNOCASE = " + v.sql + ")";
        seek(aggregateStart);
        columns += ", " + value(expression()) + " AS " + quoteName(v.name);
        out.names.push_back(v.name);
    }
    aggregateFilter.clear();
    seek(end);
    out.sql = "SELECT " + columns + core.body;
    if (!keys.empty()) out.sql += " ORDER BY " + orderList(keys);
    return out;
}

}  // namespace kelvo::jet
