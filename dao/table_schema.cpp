// Reading a table's fields and indexes from SQLite's schema and the catalog.
#include "table_schema.h"

#include <algorithm>

#include "catalog.h"
#include "dao_connection.h"
#include "dao_errors.h"
#include "text_collation.h"

namespace dao {
namespace {

bool equalsNoCaseAscii(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

bool containsNoCase(std::string_view text, std::string_view word) {
    for (std::size_t i = 0; i + word.size() <= text.size(); ++i)
        if (equalsNoCaseAscii(text.substr(i, word.size()), word)) return true;
    return false;
}

void readFields(Connection& connection, TableSchema& schema, bool autoIncrement) {
    Statement& info = connection.cached(
        "SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info(?)");
    info.bindText(1, utf8(schema.name));
    int pkColumns = 0, pkField = -1;
    while (info.step()) {
        FieldDef field;
        field.name = info.wideText(0);
        field.type = typeFromDeclared(info.text(1), &field.size);
        if (field.type != dbText) field.size = defaultFieldSize(field.type);
        field.required = info.integer(2) != 0;
        field.defaultSql = std::string(info.text(3));
        if (info.integer(4) > 0) {
            ++pkColumns;
            pkField = static_cast<int>(schema.fields.size());
        }
        schema.fields.push_back(std::move(field));
    }
    if (pkColumns == 1) {
        // A single INTEGER primary key is the row id.
        Statement& type = connection.cached("SELECT type FROM pragma_table_info(?) WHERE pk=1");
        type.bindText(1, utf8(schema.name));
        if (type.step() && equalsNoCaseAscii(type.text(0), "integer")) {
            schema.fields[static_cast<std::size_t>(pkField)].rowid = true;
            schema.fields[static_cast<std::size_t>(pkField)].counter = autoIncrement;
            schema.fields[static_cast<std::size_t>(pkField)].required = true;
        }
        type.reset();
    }
    for (FieldDef& field : schema.fields) {
        if (const auto extras = fieldExtras(connection, schema.name, field.name)) {
            field.counter = field.counter || extras->counter;
            field.allowZeroLength = extras->allowZeroLength;
        }
    }
}

IndexSchema readIndex(Connection& connection, const TableSchema& schema, std::string sqliteName) {
    IndexSchema index;
    Statement& keys = connection.cached(
        "SELECT cid, \"desc\" FROM pragma_index_xinfo(?) WHERE key=1 ORDER BY seqno");
    keys.bindText(1, sqliteName);
    while (keys.step()) {
        index.fields.push_back(static_cast<int>(keys.integer(0)));
        index.descending.push_back(keys.integer(1) != 0);
    }
    const auto dot = sqliteName.find('.');
    index.name = wide(dot == std::string::npos ? sqliteName : sqliteName.substr(dot + 1));
    index.sqliteName = std::move(sqliteName);
    (void)schema;
    return index;
}

void readIndexes(Connection& connection, TableSchema& schema) {
    const std::wstring primaryName =
        primaryKeyName(connection, schema.name).value_or(L"PrimaryKey");
    if (const int rowid = schema.rowidField(); rowid >= 0) {
        IndexSchema primary;
        primary.name = primaryName;
        primary.fields = {rowid};
        primary.descending = {false};
        primary.primary = primary.unique = primary.required = true;
        schema.indexes.push_back(std::move(primary));
    }
    struct Listed {
        std::string name;
        bool unique;
        std::string origin;
    };
    std::vector<Listed> listed;
    Statement& list =
        connection.cached("SELECT name, \"unique\", origin FROM pragma_index_list(?)");
    list.bindText(1, utf8(schema.name));
    while (list.step())
        listed.push_back({std::string(list.text(0)), list.integer(1) != 0, std::string(list.text(2))});
    for (Listed& entry : listed) {
        IndexSchema index = readIndex(connection, schema, entry.name);
        index.unique = entry.unique;
        if (entry.origin == "pk") {
            index.name = primaryName;
            index.sqliteName.clear();
            index.primary = index.required = true;
        }
        schema.indexes.push_back(std::move(index));
    }
    std::stable_sort(schema.indexes.begin(), schema.indexes.end(),
                     [](const IndexSchema& a, const IndexSchema& b) {
                         if (a.primary != b.primary) return a.primary;
                         return a.name < b.name;
                     });
}

}  // namespace

bool sameName(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) {
               return x == y || kelvo::jet::foldCase(static_cast<char32_t>(x)) ==
                                    kelvo::jet::foldCase(static_cast<char32_t>(y));
           });
}

int TableSchema::fieldIndex(std::wstring_view field) const {
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (sameName(fields[i].name, field)) return static_cast<int>(i);
    return -1;
}

const IndexSchema* TableSchema::index(std::wstring_view indexName) const {
    for (const IndexSchema& candidate : indexes)
        if (sameName(candidate.name, indexName)) return &candidate;
    return nullptr;
}

int TableSchema::rowidField() const {
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i].rowid) return static_cast<int>(i);
    return -1;
}

bool isSystemTable(std::wstring_view name) {
    return name.size() >= 4 && (sameName(name.substr(0, 4), L"MSys") ||
                                (name.size() >= 7 && sameName(name.substr(0, 7), L"sqlite_")));
}

bool loadSchema(Connection& connection, std::wstring_view table, TableSchema& schema) {
    if (isSystemTable(table)) return false;
    // SQLite's NOCASE folds ASCII only: look for other spellings among the tables.
    std::wstring name(table);
    for (const std::wstring& candidate : userTables(connection))
        if (sameName(candidate, table)) name = candidate;
    Statement& find = connection.cached(
        "SELECT name, sql FROM sqlite_schema WHERE type='table' AND name=? COLLATE NOCASE");
    find.bindText(1, utf8(name));
    if (!find.step()) return false;
    schema.name = find.wideText(0);
    const bool autoIncrement = containsNoCase(find.text(1), "autoincrement");
    find.reset();
    readFields(connection, schema, autoIncrement);
    readIndexes(connection, schema);
    return true;
}

std::vector<std::wstring> userTables(Connection& connection) {
    std::vector<std::wstring> names;
    Statement& list =
        connection.cached("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name COLLATE NOCASE");
    while (list.step()) {
        std::wstring name = list.wideText(0);
        if (!isSystemTable(name)) names.push_back(std::move(name));
    }
    return names;
}

}  // namespace dao
