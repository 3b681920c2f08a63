// DDL as Access writes it: CREATE TABLE with its column types and constraints, CREATE
// INDEX with its WITH options, DROP TABLE / DROP INDEX ... ON, ALTER TABLE, and CREATE
// PROCEDURE / CREATE VIEW (a stored query). Nothing is created here: the statement comes
// back described, for the catalog to carry out.
//
// Unnamed constraints get the names Access users see: "PrimaryKey" for a primary key,
// "<table>_<columns>" for a unique index, "<table><foreign table>" for a relation.
#include "jet_translator.h"

namespace kelvo::jet {
namespace {

const char* kCreateTable = "Syntax error in CREATE TABLE statement.";
const char* kCreateIndex = "Syntax error in CREATE INDEX statement.";
const char* kField = "Syntax error in field definition.";
const char* kAlter = "Syntax error in ALTER TABLE statement.";
const char* kDrop = "Syntax error in DROP TABLE or DROP INDEX.";
const char* kConstraint = "Syntax error in CONSTRAINT clause.";

std::vector<std::string> columnList(Translator& t, long code, const std::string& message) {
    t.expectSymbol("(", code, message);
    std::vector<std::string> columns;
    do columns.push_back(t.name(code, message));
    while (t.acceptSymbol(","));
    t.expectSymbol(")", code, message);
    return columns;
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
    std::string out;
    for (const std::string& p : parts) out += (out.empty() ? "" : separator) + p;
    return out;
}

// ON UPDATE CASCADE / ON DELETE CASCADE (SET NULL and NO ACTION are read and ignored).
void referentialActions(Translator& t, RelationDef& relation) {
    while (t.acceptKeyword("on")) {
        const bool update = t.acceptKeyword("update");
        if (!update) t.expectKeyword("delete", 3289, kConstraint);
        bool cascade = false;
        if (t.acceptKeyword("cascade")) {
            cascade = true;
        } else if (t.acceptKeyword("set")) {
            t.expectKeyword("null", 3289, kConstraint);
        } else {
            t.expectKeyword("no", 3289, kConstraint);
            t.expectKeyword("action", 3289, kConstraint);
        }
        (update ? relation.cascadeUpdate : relation.cascadeDelete) = cascade;
    }
}

// REFERENCES table [(columns)] [ON ...]: the relation of the given foreign columns.
RelationDef references(Translator& t, const std::string& name, const std::string& foreignTable,
                       const std::vector<std::string>& foreignColumns) {
    t.expectKeyword("references", 3289, kConstraint);
    RelationDef relation;
    relation.table = t.name(3289, kConstraint);
    relation.foreignTable = foreignTable;
    relation.name = name.empty() ? relation.table + foreignTable : name;
    std::vector<std::string> primary;
    if (t.atSymbol("(")) primary = columnList(t, 3289, kConstraint);
    if (!primary.empty() && primary.size() != foreignColumns.size()) t.fail(3289, kConstraint);
    for (size_t i = 0; i < foreignColumns.size(); ++i)
        relation.fields.emplace_back(primary.empty() ? std::string{} : primary[i],
                                     foreignColumns[i]);
    referentialActions(t, relation);
    return relation;
}

IndexDef keyIndex(const std::string& name, const std::string& table,
                  const std::vector<std::string>& columns, bool primary) {
    IndexDef index;
    index.table = table;
    index.name = !name.empty() ? name : primary ? "PrimaryKey" : table + "_" + joined(columns, "_");
    for (const std::string& c : columns) index.columns.emplace_back(c, false);
    index.unique = true;
    index.primary = primary;
    index.disallowNulls = primary;
    return index;
}

// A table constraint after CONSTRAINT name (or without a name).
void tableConstraint(Translator& t, const std::string& table, std::vector<IndexDef>& indexes,
                     std::vector<RelationDef>& relations, long code, const std::string& message) {
    std::string name;
    if (t.acceptKeyword("constraint")) name = t.name(code, message);
    if (t.acceptKeyword("primary")) {
        t.expectKeyword("key", code, message);
        indexes.push_back(keyIndex(name, table, columnList(t, code, message), true));
    } else if (t.acceptKeyword("unique")) {
        indexes.push_back(keyIndex(name, table, columnList(t, code, message), false));
    } else if (t.acceptKeyword("foreign")) {
        t.expectKeyword("key", code, message);
        if (t.acceptKeyword("no")) t.expectKeyword("index", code, message);
        const auto columns = columnList(t, code, message);
        relations.push_back(references(t, name, table, columns));
    } else if (t.atKeyword("check")) {
        t.fail(code, "CHECK constraints are not supported.");
    } else {
        t.fail(code, message);
    }
}

}  // namespace

ColumnDef Translator::columnDefinition(long code, const std::string& message) {
    ColumnDef column;
    column.name = name(code, message);
    const Token& typeToken = peek();
    if (typeToken.kind != TokenKind::Word) fail(3292, kField);
    const auto type = typeFromName(typeToken.text);
    if (!type || *type == DataType::Value) fail(3292, kField);
    column.type = *type;
    column.autoIncrement = equalsNoCase(typeToken.text, "counter") ||
                           equalsNoCase(typeToken.text, "autoincrement") ||
                           equalsNoCase(typeToken.text, "identity");
    const bool charType = equalsNoCase(typeToken.text, "char") ||
                          equalsNoCase(typeToken.text, "character");
    take();
    if (column.type == DataType::Text) column.size = charType ? 1 : 255;
    if (acceptSymbol("(")) {  // TEXT(n), or COUNTER(seed, increment)
        if (peek().kind != TokenKind::Number) fail(3292, kField);
        const std::string n = take().text;
        if (column.autoIncrement) {
            expectSymbol(",", 3292, kField);
            if (peek().kind != TokenKind::Number) fail(3292, kField);
            take();
        } else if (column.type == DataType::Text) {
            column.size = std::stoi(n);
            if (column.size < 1 || column.size > 255) fail(3292, kField);
        }
        expectSymbol(")", 3292, kField);
    }
    while (true) {
        if (acceptKeyword("not")) {
            expectKeyword("null", 3292, kField);
            column.required = true;
        } else if (acceptKeyword("null")) {
            column.required = false;
        } else if (acceptKeyword("default")) {
            column.defaultSql = value(expression());
        } else if (acceptKeyword("with")) {
            if (!acceptKeyword("compression") && !acceptKeyword("comp")) fail(3292, kField);
        } else {
            break;
        }
    }
    return column;
}

Statement Translator::createStatement() {
    take();  // CREATE
    if (acceptKeyword("table")) {
        CreateTable ct;
        ct.name = name(3290, kCreateTable);
        expectSymbol("(", 3290, kCreateTable);
        do {
            if (atKeyword("constraint") || atKeyword("primary") || atKeyword("foreign") ||
                (atKeyword("unique") && atSymbol("(", 1)) || atKeyword("check")) {
                tableConstraint(*this, ct.name, ct.indexes, ct.relations, 3290, kCreateTable);
                continue;
            }
            ColumnDef column = columnDefinition(3290, kCreateTable);
            // column constraints: [CONSTRAINT name] PRIMARY KEY | UNIQUE | REFERENCES ...
            std::string constraintName;
            if (acceptKeyword("constraint")) constraintName = name(3292, kField);
            if (acceptKeyword("primary")) {
                expectKeyword("key", 3292, kField);
                ct.indexes.push_back(keyIndex(constraintName, ct.name, {column.name}, true));
            } else if (acceptKeyword("unique")) {
                ct.indexes.push_back(keyIndex(constraintName, ct.name, {column.name}, false));
            } else if (atKeyword("references")) {
                ct.relations.push_back(references(*this, constraintName, ct.name, {column.name}));
            } else if (!constraintName.empty()) {
                fail(3292, kField);
            }
            for (const ColumnDef& c : ct.columns)
                if (equalsNoCase(c.name, column.name))
                    fail(3191, "Cannot define field more than once.");
            ct.columns.push_back(std::move(column));
        } while (acceptSymbol(","));
        expectSymbol(")", 3290, kCreateTable);
        if (ct.columns.empty()) fail(3290, kCreateTable);
        return ct;
    }
    if (atKeyword("unique") || atKeyword("index")) {
        CreateIndex ci;
        ci.index.unique = acceptKeyword("unique");
        expectKeyword("index", 3291, kCreateIndex);
        ci.index.name = name(3291, kCreateIndex);
        expectKeyword("on", 3291, kCreateIndex);
        ci.index.table = name(3291, kCreateIndex);
        expectSymbol("(", 3291, kCreateIndex);
        do {
            std::string column = name(3291, kCreateIndex);
            bool descending = false;
            if (acceptKeyword("desc")) descending = true;
            else acceptKeyword("asc");
            ci.index.columns.emplace_back(std::move(column), descending);
        } while (acceptSymbol(","));
        expectSymbol(")", 3291, kCreateIndex);
        if (acceptKeyword("with")) {
            do {
                if (acceptKeyword("primary")) {
                    ci.index.primary = ci.index.unique = ci.index.disallowNulls = true;
                } else if (acceptKeyword("disallow")) {
                    expectKeyword("null", 3291, kCreateIndex);
                    ci.index.disallowNulls = true;
                } else if (acceptKeyword("ignore")) {
                    expectKeyword("null", 3291, kCreateIndex);
                    ci.index.ignoreNulls = true;
                } else {
                    fail(3291, kCreateIndex);
                }
            } while (!atEnd() && !atSymbol(";"));
        }
        return ci;
    }
    if (acceptKeyword("procedure") || acceptKeyword("proc") || acceptKeyword("view")) {
        CreateProcedure cp;
        const std::string bad = "Syntax error in CREATE PROCEDURE statement.";
        cp.name = name(3290, bad);
        if (acceptSymbol("(")) {
            if (!atSymbol(")")) {
                do {
                    Parameter p;
                    p.name = name(3290, bad);
                    if (peek().kind != TokenKind::Word || !typeFromName(peek().text))
                        fail(3290, bad);
                    p.type = *typeFromName(take().text);
                    if (acceptSymbol("(")) {
                        take();
                        expectSymbol(")", 3290, bad);
                    }
                    cp.parameters.push_back(std::move(p));
                } while (acceptSymbol(","));
            }
            expectSymbol(")", 3290, bad);
        }
        expectKeyword("as", 3290, bad);
        const size_t start = position();
        while (!atEnd()) take();
        std::string declaration;
        for (const Parameter& p : cp.parameters)
            declaration += (declaration.empty() ? "PARAMETERS " : ", ") + quoteName(p.name) +
                           " " + std::string(typeName(p.type));
        cp.jetSql = (declaration.empty() ? "" : declaration + "; ") + textFrom(start);
        const Statement body = parse(cp.jetSql, options);  // throws when the body is wrong
        if (!std::holds_alternative<Query>(body)) fail(3290, bad);
        return cp;
    }
    fail(3290, kCreateTable);
}

Statement Translator::dropStatement() {
    take();  // DROP
    if (acceptKeyword("table")) return DropTable{name(3295, kDrop)};
    if (acceptKeyword("index")) {
        DropIndex di;
        di.index = name(3295, kDrop);
        expectKeyword("on", 3295, kDrop);
        di.table = name(3295, kDrop);
        return di;
    }
    if (acceptKeyword("procedure") || acceptKeyword("proc") || acceptKeyword("view"))
        fail(3295, "DROP PROCEDURE and DROP VIEW are not supported; delete the query instead.");
    fail(3295, kDrop);
}

AlterTable Translator::alterStatement() {
    take();  // ALTER
    expectKeyword("table", 3293, kAlter);
    AlterTable at;
    at.table = name(3293, kAlter);
    if (acceptKeyword("add")) {
        if (atKeyword("constraint") || atKeyword("primary") || atKeyword("foreign") ||
            (atKeyword("unique") && atSymbol("(", 1))) {
            at.action = AlterTable::Action::AddConstraint;
            tableConstraint(*this, at.table, at.indexes, at.relations, 3293, kAlter);
            return at;
        }
        at.action = AlterTable::Action::AddColumns;
        acceptKeyword("column");
        do {
            at.columns.push_back(columnDefinition(3293, kAlter));
            std::string constraintName;
            if (acceptKeyword("constraint")) constraintName = name(3292, kField);
            const std::string& column = at.columns.back().name;
            if (acceptKeyword("primary")) {
                expectKeyword("key", 3292, kField);
                at.indexes.push_back(keyIndex(constraintName, at.table, {column}, true));
            } else if (acceptKeyword("unique")) {
                at.indexes.push_back(keyIndex(constraintName, at.table, {column}, false));
            } else if (atKeyword("references")) {
                at.relations.push_back(references(*this, constraintName, at.table, {column}));
            } else if (!constraintName.empty()) {
                fail(3292, kField);
            }
        } while (acceptSymbol(","));
        return at;
    }
    if (acceptKeyword("drop")) {
        if (acceptKeyword("constraint")) {
            at.action = AlterTable::Action::DropConstraint;
        } else {
            acceptKeyword("column");
            at.action = AlterTable::Action::DropColumn;
        }
        at.name = name(3293, kAlter);
        return at;
    }
    if (acceptKeyword("alter")) {
        acceptKeyword("column");
        at.action = AlterTable::Action::AlterColumn;
        at.columns.push_back(columnDefinition(3293, kAlter));
        return at;
    }
    fail(3293, kAlter);
}

}  // namespace kelvo::jet
