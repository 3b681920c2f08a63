// The engine's catalog: what an Access database holds beyond SQLite's own schema. The file
// format is described at the top of catalog.cpp.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dao_database.h"
#include "table_schema.h"

namespace dao {

class Connection;

// Makes the catalog tables when the file has none yet (a new database, or an SQLite file
// made by another program, at its first change).
void ensureCatalog(Connection& connection);

// Field and index extras (kept per table, moved on rename, dropped with the table).
struct FieldExtras {
    bool counter = false;
    bool allowZeroLength = true;
};
std::optional<FieldExtras> fieldExtras(Connection& connection, std::wstring_view table,
                                       std::wstring_view field);
void saveFieldExtras(Connection& connection, std::wstring_view table, const FieldDef& field);
std::optional<std::wstring> primaryKeyName(Connection& connection, std::wstring_view table);
void savePrimaryKeyName(Connection& connection, std::wstring_view table, std::wstring_view name);
void renameInCatalog(Connection& connection, std::wstring_view from, std::wstring_view to);
void renameFieldInCatalog(Connection& connection, std::wstring_view table,
                          std::wstring_view from, std::wstring_view to);
// Forgets a table's field and index rows, and with relationsToo the relations naming it.
void dropFromCatalog(Connection& connection, std::wstring_view table, bool relationsToo);

// Stored queries.
struct StoredQuery {
    std::wstring name;
    std::wstring sql;
    short type = 0;
    double created = 0;
    double updated = 0;
};
std::vector<StoredQuery> storedQueries(Connection& connection);
std::optional<StoredQuery> storedQuery(Connection& connection, std::wstring_view name);
// Stores a new query (3012 when the name is taken by a query or a table).
void addStoredQuery(Connection& connection, const StoredQuery& query);
// Replaces the SQL of a stored query (3265 when there is none).
void updateStoredQuery(Connection& connection, std::wstring_view name, std::wstring_view sql,
                       short type);
void deleteStoredQuery(Connection& connection, std::wstring_view name);

// Relations.
std::vector<CDaoRelationInfo> relations(Connection& connection);
void addRelation(Connection& connection, const CDaoRelationInfo& relation);
void deleteRelation(Connection& connection, std::wstring_view name);

}  // namespace dao
