// The engine's catalog.
//
// File format. A database is an SQLite 3 file (application id 0x4B4C564F) kept in the
// rollback-journal mode, so that the file alone holds every committed change.
// - Each Access table is an SQLite table of the same name, its columns in field order and
//   declared as field_types.h says (text collating JETNOCASE; Required fields NOT NULL).
//   A primary key of one AutoNumber or Long field is the row id (INTEGER PRIMARY KEY,
//   AUTOINCREMENT for an AutoNumber); any other primary key is the PRIMARY KEY clause.
// - Each other index is an SQLite index named "<table>.<index>" (Access names never hold
//   a dot); its DAO name is what follows the first dot.
// - MSysKelvoFields(TableName, FieldName, Counter, AllowZeroLength): fields with more to
//   say than their declaration (an AutoNumber that is not the row id; Text or Memo that
//   refuses empty text).
// - MSysKelvoIndexes(TableName, IndexName): the name of each table's primary key
//   ("PrimaryKey" when a table has no row here).
// - MSysKelvoQueries(Name, SQL, Type, Created, Updated): stored queries, their Jet SQL as
//   given, the DAO query type, dates as automation dates.
// - MSysKelvoRelations(Name, TableName, ForeignTable, Attributes, Fields): relations;
//   Fields holds "primary=foreign" pairs joined by ";".
// Names compare without case (NOCASE). Tables named MSys... or sqlite_... are never listed
// as user tables.
#include "catalog.h"

#include "dao_connection.h"
#include "dao_errors.h"
#include "sqlite_errors.h"

namespace dao {
namespace {

constexpr const char* kCatalogSql =
    "CREATE TABLE IF NOT EXISTS MSysKelvoFields(TableName TEXT NOT NULL COLLATE NOCASE,"
    " FieldName TEXT NOT NULL COLLATE NOCASE, Counter INTEGER NOT NULL DEFAULT 0,"
    " AllowZeroLength INTEGER NOT NULL DEFAULT 1, PRIMARY KEY(TableName, FieldName));"
    "CREATE TABLE IF NOT EXISTS MSysKelvoIndexes(TableName TEXT PRIMARY KEY COLLATE NOCASE,"
    " IndexName TEXT NOT NULL);"
    "CREATE TABLE IF NOT EXISTS MSysKelvoQueries(Name TEXT PRIMARY KEY COLLATE NOCASE,"
    " SQL TEXT NOT NULL, Type INTEGER NOT NULL DEFAULT 0, Created REAL, Updated REAL);"
    "CREATE TABLE IF NOT EXISTS MSysKelvoRelations(Name TEXT PRIMARY KEY COLLATE NOCASE,"
    " TableName TEXT NOT NULL, ForeignTable TEXT NOT NULL, Attributes INTEGER NOT NULL,"
    " Fields TEXT NOT NULL);";

bool hasCatalog(Connection& connection) {
    Statement& find = connection.cached(
        "SELECT count(*) FROM sqlite_schema WHERE type='table' AND name='MSysKelvoQueries'");
    find.step();
    const bool found = find.integer(0) > 0;
    find.reset();
    return found;
}

// Runs a catalog change: nothing when the file has no catalog and the change only removes.
Statement& catalogStatement(Connection& connection, const std::string& sql) {
    ensureCatalog(connection);
    return connection.cached(sql);
}

void run(Statement& statement) {
    while (statement.step()) {
    }
}


std::wstring joinFields(const CDaoRelationInfo& relation) {
    std::wstring text;
    for (const auto& field : relation.m_fieldInfos) {
        if (!text.empty()) text += L';';
        text += field.m_strName + L'=' + field.m_strForeignName;
    }
    return text;
}

std::vector<CDaoRelationFieldInfo> splitFields(const std::wstring& text) {
    std::vector<CDaoRelationFieldInfo> fields;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find(L';', start);
        if (end == std::wstring::npos) end = text.size();
        const std::wstring pair = text.substr(start, end - start);
        const auto eq = pair.find(L'=');
        fields.push_back({pair.substr(0, eq), eq == std::wstring::npos ? L"" : pair.substr(eq + 1)});
        start = end + 1;
    }
    return fields;
}

}  // namespace

void ensureCatalog(Connection& connection) {
    if (hasCatalog(connection) || !connection.canUpdate()) return;
    char* error = nullptr;
    if (sqlite3_exec(connection.db(), kCatalogSql, nullptr, nullptr, &error) != SQLITE_OK) {
        const std::string message = error ? error : "";
        sqlite3_free(error);
        throwSqliteError(sqlite3_extended_errcode(connection.db()), message);
    }
}

std::optional<FieldExtras> fieldExtras(Connection& connection, std::wstring_view table,
                                       std::wstring_view field) {
    if (!hasCatalog(connection)) return std::nullopt;
    Statement& find = connection.cached(
        "SELECT Counter, AllowZeroLength FROM MSysKelvoFields WHERE TableName=? AND FieldName=?");
    find.bindText(1, utf8(table));
    find.bindText(2, utf8(field));
    std::optional<FieldExtras> extras;
    if (find.step()) extras = FieldExtras{find.integer(0) != 0, find.integer(1) != 0};
    find.reset();
    return extras;
}

void saveFieldExtras(Connection& connection, std::wstring_view table, const FieldDef& field) {
    const bool counter = field.counter && !field.rowid;
    if (!counter && field.allowZeroLength) {
        if (!hasCatalog(connection)) return;
        Statement& drop = connection.cached(
            "DELETE FROM MSysKelvoFields WHERE TableName=? AND FieldName=?");
        drop.bindText(1, utf8(table));
        drop.bindText(2, utf8(field.name));
        run(drop);
        return;
    }
    Statement& save = catalogStatement(
        connection, "INSERT OR REPLACE INTO MSysKelvoFields VALUES(?,?,?,?)");
    save.bindText(1, utf8(table));
    save.bindText(2, utf8(field.name));
    save.bindInt(3, counter ? 1 : 0);
    save.bindInt(4, field.allowZeroLength ? 1 : 0);
    run(save);
}

std::optional<std::wstring> primaryKeyName(Connection& connection, std::wstring_view table) {
    if (!hasCatalog(connection)) return std::nullopt;
    Statement& find =
        connection.cached("SELECT IndexName FROM MSysKelvoIndexes WHERE TableName=?");
    find.bindText(1, utf8(table));
    std::optional<std::wstring> name;
    if (find.step()) name = find.wideText(0);
    find.reset();
    return name;
}

void savePrimaryKeyName(Connection& connection, std::wstring_view table, std::wstring_view name) {
    Statement& save =
        catalogStatement(connection, "INSERT OR REPLACE INTO MSysKelvoIndexes VALUES(?,?)");
    save.bindText(1, utf8(table));
    save.bindText(2, utf8(name));
    run(save);
}

void renameInCatalog(Connection& connection, std::wstring_view from, std::wstring_view to) {
    if (!hasCatalog(connection)) return;
    for (const char* sql : {"UPDATE MSysKelvoFields SET TableName=?2 WHERE TableName=?1",
                            "UPDATE MSysKelvoIndexes SET TableName=?2 WHERE TableName=?1",
                            "UPDATE MSysKelvoRelations SET TableName=?2 WHERE TableName=?1",
                            "UPDATE MSysKelvoRelations SET ForeignTable=?2 WHERE ForeignTable=?1"}) {
        Statement& update = connection.cached(sql);
        update.bindText(1, utf8(from));
        update.bindText(2, utf8(to));
        run(update);
    }
}

void renameFieldInCatalog(Connection& connection, std::wstring_view table, std::wstring_view from,
                          std::wstring_view to) {
    if (!hasCatalog(connection)) return;
    Statement& update = connection.cached(
        "UPDATE MSysKelvoFields SET FieldName=?3 WHERE TableName=?1 AND FieldName=?2");
    update.bindText(1, utf8(table));
    update.bindText(2, utf8(from));
    update.bindText(3, utf8(to));
    run(update);
}

void dropFromCatalog(Connection& connection, std::wstring_view table, bool relationsToo) {
    if (!hasCatalog(connection)) return;
    for (const char* sql : {"DELETE FROM MSysKelvoFields WHERE TableName=?",
                            "DELETE FROM MSysKelvoIndexes WHERE TableName=?",
                            "DELETE FROM MSysKelvoRelations WHERE TableName=?1 OR ForeignTable=?1"}) {
        if (!relationsToo && std::string_view(sql).find("Relations") != std::string_view::npos) continue;
        Statement& drop = connection.cached(sql);
        drop.bindText(1, utf8(table));
        run(drop);
    }
}

std::vector<StoredQuery> storedQueries(Connection& connection) {
    std::vector<StoredQuery> queries;
    if (!hasCatalog(connection)) return queries;
    Statement& list = connection.cached(
        "SELECT Name, SQL, Type, Created, Updated FROM MSysKelvoQueries ORDER BY Name");
    while (list.step())
        queries.push_back({list.wideText(0), list.wideText(1), static_cast<short>(list.integer(2)),
                           list.real(3), list.real(4)});
    return queries;
}

std::optional<StoredQuery> storedQuery(Connection& connection, std::wstring_view name) {
    if (!hasCatalog(connection)) return std::nullopt;
    Statement& find = connection.cached(
        "SELECT Name, SQL, Type, Created, Updated FROM MSysKelvoQueries WHERE Name=?");
    find.bindText(1, utf8(name));
    std::optional<StoredQuery> query;
    if (find.step())
        query = StoredQuery{find.wideText(0), find.wideText(1), static_cast<short>(find.integer(2)),
                            find.real(3), find.real(4)};
    find.reset();
    return query;
}

void addStoredQuery(Connection& connection, const StoredQuery& query) {
    if (storedQuery(connection, query.name) || connection.schema(query.name))
        throwError(kObjectExists, {query.name});
    Statement& add = catalogStatement(connection, "INSERT INTO MSysKelvoQueries VALUES(?,?,?,?,?)");
    const double when = COleDateTime::GetCurrentTime().m_dt;
    add.bindText(1, utf8(query.name));
    add.bindText(2, utf8(query.sql));
    add.bindInt(3, query.type);
    add.bindDouble(4, when);
    add.bindDouble(5, when);
    run(add);
}

void updateStoredQuery(Connection& connection, std::wstring_view name, std::wstring_view sql,
                       short type) {
    if (!storedQuery(connection, name)) throwError(kItemNotFound);
    Statement& update = connection.cached(
        "UPDATE MSysKelvoQueries SET SQL=?2, Type=?3, Updated=?4 WHERE Name=?1");
    update.bindText(1, utf8(name));
    update.bindText(2, utf8(sql));
    update.bindInt(3, type);
    update.bindDouble(4, COleDateTime::GetCurrentTime().m_dt);
    run(update);
}

void deleteStoredQuery(Connection& connection, std::wstring_view name) {
    if (!storedQuery(connection, name)) throwError(kItemNotFound);
    Statement& drop = connection.cached("DELETE FROM MSysKelvoQueries WHERE Name=?");
    drop.bindText(1, utf8(name));
    run(drop);
}

std::vector<CDaoRelationInfo> relations(Connection& connection) {
    std::vector<CDaoRelationInfo> list;
    if (!hasCatalog(connection)) return list;
    Statement& all = connection.cached(
        "SELECT Name, TableName, ForeignTable, Attributes, Fields FROM MSysKelvoRelations"
        " ORDER BY Name");
    while (all.step()) {
        CDaoRelationInfo info;
        info.m_strName = all.wideText(0);
        info.m_strTable = all.wideText(1);
        info.m_strForeignTable = all.wideText(2);
        info.m_lAttributes = static_cast<long>(all.integer(3));
        info.m_fieldInfos = splitFields(all.wideText(4));
        info.m_nFields = static_cast<short>(info.m_fieldInfos.size());
        list.push_back(std::move(info));
    }
    return list;
}

void addRelation(Connection& connection, const CDaoRelationInfo& relation) {
    for (const auto& existing : relations(connection))
        if (sameName(existing.m_strName, relation.m_strName))
            throwError(kObjectExists, {relation.m_strName});
    Statement& add = catalogStatement(connection, "INSERT INTO MSysKelvoRelations VALUES(?,?,?,?,?)");
    add.bindText(1, utf8(relation.m_strName));
    add.bindText(2, utf8(relation.m_strTable));
    add.bindText(3, utf8(relation.m_strForeignTable));
    add.bindInt(4, relation.m_lAttributes);
    add.bindText(5, utf8(joinFields(relation)));
    run(add);
}

void deleteRelation(Connection& connection, std::wstring_view name) {
    bool found = false;
    for (const auto& existing : relations(connection)) found = found || sameName(existing.m_strName, name);
    if (!found) throwError(kItemNotFound);
    Statement& drop = connection.cached("DELETE FROM MSysKelvoRelations WHERE Name=?");
    drop.bindText(1, utf8(name));
    run(drop);
}

}  // namespace dao
