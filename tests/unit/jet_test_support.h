// A SQLite database in memory with the Access dialect's collation and functions, that
// runs Access SQL through the translator and hands rows back as text.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "jet_sql.h"

namespace kelvo::jet::testing {

using Row = std::vector<std::string>;
using Rows = std::vector<Row>;
using Bound = std::variant<long long, double, std::string>;

// A cell as text: NULL, integers as digits, reals with up to 15 significant digits.
inline std::string cellText(sqlite3_stmt* s, int i) {
    switch (sqlite3_column_type(s, i)) {
        case SQLITE_NULL: return "NULL";
        case SQLITE_INTEGER: return std::to_string(sqlite3_column_int64(s, i));
        case SQLITE_FLOAT: {
            char buf[40];
            std::snprintf(buf, sizeof buf, "%.15g", sqlite3_column_double(s, i));
            return buf;
        }
        default: return reinterpret_cast<const char*>(sqlite3_column_text(s, i));
    }
}

class JetDb {
public:
    JetDb() {
        if (sqlite3_open(":memory:", &db_) != SQLITE_OK) throw std::runtime_error("open");
        registerCollation(db_);
        registerFunctions(db_);
    }
    ~JetDb() { sqlite3_close(db_); }
    JetDb(const JetDb&) = delete;
    JetDb& operator=(const JetDb&) = delete;

    sqlite3* handle() { return db_; }

    // Plain SQLite, for setting up tables.
    void exec(const std::string& sql) {
        char* error = nullptr;
        if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
            const std::string message = error ? error : "?";
            sqlite3_free(error);
            throw std::runtime_error(message + " in: " + sql);
        }
    }

    // Runs translated SQLite text; parameters bound by name (case-insensitive).
    Rows run(const Query& q, const std::map<std::string, Bound>& params = {},
             std::vector<std::string>* names = nullptr) {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(db_, q.sqliteSql.c_str(), -1, &raw, nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string(sqlite3_errmsg(db_)) + " in: " + q.sqliteSql);
        std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> stmt(raw, sqlite3_finalize);
        for (size_t i = 0; i < q.placeholderNames.size(); ++i) {
            const Bound* value = nullptr;
            for (const auto& [name, v] : params)
                if (sqlite3_stricmp(name.c_str(), q.placeholderNames[i].c_str()) == 0) value = &v;
            if (value == nullptr) throw std::runtime_error("unbound " + q.placeholderNames[i]);
            const int index = static_cast<int>(i) + 1;
            if (auto* n = std::get_if<long long>(value)) sqlite3_bind_int64(raw, index, *n);
            else if (auto* d = std::get_if<double>(value)) sqlite3_bind_double(raw, index, *d);
            else sqlite3_bind_text(raw, index, std::get<std::string>(*value).c_str(), -1, SQLITE_TRANSIENT);
        }
        if (names != nullptr) {
            names->clear();
            for (int i = 0; i < sqlite3_column_count(raw); ++i)
                names->push_back(sqlite3_column_name(raw, i));
        }
        Rows rows;
        int rc;
        while ((rc = sqlite3_step(raw)) == SQLITE_ROW) {
            Row row;
            for (int i = 0; i < sqlite3_column_count(raw); ++i) row.push_back(cellText(raw, i));
            rows.push_back(std::move(row));
        }
        if (rc != SQLITE_DONE)
            throw std::runtime_error(std::string(sqlite3_errmsg(db_)) + " in: " + q.sqliteSql);
        lastChanges_ = sqlite3_changes(db_);
        return rows;
    }

    Query translate(std::string_view jet, const ParseOptions& options = {}) {
        Statement s = parse(jet, options);
        if (!std::holds_alternative<Query>(s)) throw std::runtime_error("not a query");
        return std::get<Query>(s);
    }

    Rows query(std::string_view jet, const std::map<std::string, Bound>& params = {},
               std::vector<std::string>* names = nullptr) {
        return run(translate(jet), params, names);
    }

    // Runs an action query and returns the rows it changed.
    int action(std::string_view jet, const std::map<std::string, Bound>& params = {}) {
        run(translate(jet), params);
        return lastChanges_;
    }

    // The value of one expression, as text ("NULL" for Null).
    std::string value(const std::string& jetExpression) {
        return query("SELECT " + jetExpression).at(0).at(0);
    }

    // The error message an expression raises while it runs ("" when it does not).
    std::string runtimeError(const std::string& jetExpression) {
        try {
            value(jetExpression);
            return {};
        } catch (const SyntaxError&) {
            throw;
        } catch (const std::runtime_error& e) {
            const std::string m = e.what();
            return m.substr(0, m.find(" in: "));
        }
    }

private:
    sqlite3* db_ = nullptr;
    int lastChanges_ = 0;
};

// The DAO error code parse() gives a statement (0 when it parses).
inline long syntaxCode(std::string_view jet) {
    try {
        parse(jet);
        return 0;
    } catch (const SyntaxError& e) {
        return e.daoCode;
    }
}

inline std::string syntaxMessage(std::string_view jet) {
    try {
        parse(jet);
        return {};
    } catch (const SyntaxError& e) {
        return e.what();
    }
}

}  // namespace kelvo::jet::testing
