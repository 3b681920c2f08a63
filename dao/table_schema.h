// What the engine knows of one table: its fields in order and its indexes, read from the
// SQLite schema and the engine's catalog (catalog.h).
#pragma once

#include <string>
#include <vector>

#include "field_types.h"

namespace dao {

class Connection;

struct IndexSchema {
    std::wstring name;        // the DAO name ("PrimaryKey" ...)
    std::string sqliteName;   // the SQLite index, empty for the row id or a PRIMARY KEY clause
    std::vector<int> fields;  // key fields, by field index
    std::vector<bool> descending;
    bool primary = false;
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
};

struct TableSchema {
    std::wstring name;
    std::vector<FieldDef> fields;
    std::vector<IndexSchema> indexes;

    int fieldIndex(std::wstring_view field) const;  // -1 when there is none
    const IndexSchema* index(std::wstring_view indexName) const;
    int rowidField() const;  // the field that is the row id, or -1
};

// Names compare as Access compares them: without case.
bool sameName(std::wstring_view a, std::wstring_view b);

// Reads a table's schema; false when there is no such table (the engine's catalog tables
// count as none).
bool loadSchema(Connection& connection, std::wstring_view table, TableSchema& schema);

// The user tables of the database, in name order, with their exact names.
std::vector<std::wstring> userTables(Connection& connection);
// Whether a table name is one of the engine's own (catalog or SQLite's).
bool isSystemTable(std::wstring_view name);

}  // namespace dao
