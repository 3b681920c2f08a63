// INSERT INTO, UPDATE and DELETE as Access writes them. UPDATE over inner joins becomes
// SQLite's UPDATE ... FROM; DELETE over joins deletes the target table's rows whose
// rowid the join selects.
#include <functional>

#include "jet_translator.h"

namespace kelvo::jet {
namespace {

const char* kUpdateError = "Syntax error in UPDATE statement.";
const char* kInsertError = "Syntax error in INSERT INTO statement.";

// A table of a FROM tree for UPDATE: its SQL (with alias) and the name it goes by.
struct Source {
    std::string sql;
    std::string name;
};

}  // namespace

Query Translator::insertStatement() {
    take();  // INSERT
    expectKeyword("into", 3134, kInsertError);
    const std::string table = name(3134, kInsertError);
    if (atKeyword("in")) fail(3134, "Queries on other database files are not supported.");
    Query q;
    q.kind = QueryKind::Insert;
    q.returnsRows = false;
    q.sqliteSql = "INSERT INTO " + quoteName(table);
    if (acceptSymbol("(")) {
        std::string columns;
        do {
            std::string column = name(3134, kInsertError);
            while (acceptSymbol(".") || acceptSymbol("!")) column = name(3134, kInsertError);
            columns += (columns.empty() ? "" : ", ") + quoteName(column);
        } while (acceptSymbol(","));
        expectSymbol(")", 3134, kInsertError);
        q.sqliteSql += " (" + columns + ")";
    }
    if (acceptKeyword("values")) {
        expectSymbol("(", 3134, kInsertError);
        std::string values;
        do values += (values.empty() ? "" : ", ") + value(expression());
        while (acceptSymbol(","));
        expectSymbol(")", 3134, kInsertError);
        q.sqliteSql += " VALUES (" + values + ")";
    } else if (atKeyword("select") || atSymbol("(") || atKeyword("table")) {
        q.sqliteSql += " " + selectStatement(false).sql;
    } else {
        fail(3134, kInsertError);
    }
    return q;
}

Query Translator::updateStatement() {
    take();  // UPDATE
    // The tables: one, or a tree of inner joins flattened into sources and conditions.
    std::vector<Source> sources;
    std::vector<std::string> conditions;
    std::function<void()> tree = [&] {
        auto one = [&] {
            if (acceptSymbol("(")) {
                tree();
                expectSymbol(")", 3144, kUpdateError);
                return;
            }
            const std::string table = name(3144, kUpdateError);
            std::string alias;
            if (acceptKeyword("as")) alias = name(3144, kUpdateError);
            else if (peek().kind == TokenKind::Name ||
                     (peek().kind == TokenKind::Word && !atReservedWord()))
                alias = take().text;
            sources.push_back({quoteName(table) + (alias.empty() ? "" : " AS " + quoteName(alias)),
                               alias.empty() ? table : alias});
        };
        one();
        while (true) {
            if (atKeyword("left") || atKeyword("right"))
                fail(3144, "UPDATE over an outer join is not supported; use an inner join.");
            if (!acceptKeyword("inner") && !atKeyword("join")) return;
            expectKeyword("join", 3144, kUpdateError);
            one();
            expectKeyword("on", 3144, kUpdateError);
            conditions.push_back(condition(expression()));
        }
    };
    tree();
    expectKeyword("set", 3144, kUpdateError);
    std::string target;
    std::string assignments;
    do {
        std::vector<std::string> parts{name(3144, kUpdateError)};
        while (acceptSymbol(".") || acceptSymbol("!")) parts.push_back(name(3144, kUpdateError));
        if (parts.size() > 2) fail(3144, kUpdateError);
        if (parts.size() == 2) {
            if (!target.empty() && !equalsNoCase(target, parts[0]))
                fail(3144, "UPDATE of more than one table is not supported.");
            target = parts[0];
        }
        expectSymbol("=", 3144, kUpdateError);
        assignments += (assignments.empty() ? "" : ", ") + quoteName(parts.back()) + " = " +
                       value(expression());
    } while (acceptSymbol(","));
    if (acceptKeyword("where")) conditions.push_back(condition(expression()));

    size_t targetIndex = 0;
    for (size_t i = 0; i < sources.size(); ++i)
        if (!target.empty() && equalsNoCase(sources[i].name, target)) targetIndex = i;
    if (!target.empty() && !equalsNoCase(sources[targetIndex].name, target))
        fail(3144, kUpdateError);
    Query q;
    q.kind = QueryKind::Update;
    q.returnsRows = false;
    q.sqliteSql = "UPDATE " + sources[targetIndex].sql + " SET " + assignments;
    std::string from;
    for (size_t i = 0; i < sources.size(); ++i)
        if (i != targetIndex) from += (from.empty() ? "" : ", ") + sources[i].sql;
    if (!from.empty()) q.sqliteSql += " FROM " + from;
    std::string where;
    for (const std::string& c : conditions) where += (where.empty() ? "" : " AND ") + c;
    if (!where.empty()) q.sqliteSql += " WHERE " + where;
    return q;
}

Query Translator::deleteStatement() {
    take();  // DELETE
    const std::string bad = "Syntax error in DELETE statement.";
    std::string target;
    if (!atKeyword("from")) {  // DELETE *, DELETE T.*, or DELETE T.a, T.b (fields ignored)
        do {
            if (acceptSymbol("*")) continue;
            const std::string first = name(3141, bad);
            if (target.empty()) target = first;
            while (acceptSymbol(".") || acceptSymbol("!"))
                if (!acceptSymbol("*")) name(3141, bad);
        } while (acceptSymbol(","));
    }
    expectKeyword("from", 3141, bad);
    const size_t fromStart = position();
    const std::string from = fromClause();
    std::string where;
    if (acceptKeyword("where")) where = condition(expression());

    Query q;
    q.kind = QueryKind::Delete;
    q.returnsRows = false;
    const bool single = from.find(" JOIN ") == std::string::npos &&
                        from.find(", ") == std::string::npos && from.front() == '[';
    if (single) {
        q.sqliteSql = "DELETE FROM " + from + (where.empty() ? "" : " WHERE " + where);
        return q;
    }
    if (target.empty()) {  // the first table of the FROM clause
        const size_t save = position();
        seek(fromStart);
        while (acceptSymbol("(")) {}
        target = name(3141, bad);
        seek(save);
    }
    std::string table = target;
    for (const auto& [alias, aliased] : aliases)
        if (equalsNoCase(alias, target)) table = aliased;
    q.sqliteSql = "DELETE FROM " + quoteName(table) + " WHERE rowid IN (SELECT " +
                  quoteName(target) + ".rowid FROM " + from +
                  (where.empty() ? "" : " WHERE " + where) + ")";
    return q;
}

}  // namespace kelvo::jet
