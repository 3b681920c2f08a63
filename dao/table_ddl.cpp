// Tables and indexes: CREATE, DROP, ALTER, and the rebuild SQLite needs for the changes it
// cannot make in place (a new primary key, a changed column).
#include "table_ddl.h"

#include <algorithm>
#include <cwctype>

#include "catalog.h"
#include "dao_connection.h"
#include "dao_cursor.h"
#include "dao_errors.h"
#include "jet_sql.h"
#include "sqlite_errors.h"

namespace dao {
namespace {

void exec(Connection& connection, const std::string& sql) {
    char* error = nullptr;
    if (sqlite3_exec(connection.db(), sql.c_str(), nullptr, nullptr, &error) == SQLITE_OK) return;
    const std::string message = error ? error : sqlite3_errmsg(connection.db());
    sqlite3_free(error);
    throwSqliteError(sqlite3_extended_errcode(connection.db()), message);
}

int findField(const std::vector<FieldDef>& fields, std::wstring_view name) {
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (sameName(fields[i].name, name)) return static_cast<int>(i);
    return -1;
}

void checkName(std::wstring_view name) {
    if (name.empty() || name.find(L'.') != std::wstring_view::npos ||
        name.find(L'!') != std::wstring_view::npos || name.find(L'[') != std::wstring_view::npos ||
        name.find(L']') != std::wstring_view::npos || name.front() == L' ' || name.size() > 64)
        throwError(kInvalidName, {name});
}

// The engine cannot lock a table that a recordset has open, so its structure cannot
// change while one does (3211).
void requireNotInUse(const Connection& connection, const std::wstring& table) {
    for (const Cursor* cursor : connection.cursors()) {
        const TableSchema* schema = cursor->schema();
        if (!cursor->detached() && schema != nullptr && sameName(schema->name, table)) {
            throwError(kTableInUse, {table});
        }
    }
}

}  // namespace

void checkField(const FieldDef& field);

namespace {

// Settles the row id: a primary key of one Long field is the table's row id.
void markRowid(TableDesign& design) {
    for (FieldDef& field : design.fields) field.rowid = false;
    for (const IndexDesign& index : design.indexes) {
        if (!index.primary || index.fields.size() != 1 || index.fields[0].second) continue;
        const int f = findField(design.fields, index.fields[0].first);
        if (f >= 0 && design.fields[static_cast<std::size_t>(f)].type == dbLong)
            design.fields[static_cast<std::size_t>(f)].rowid = true;
    }
}

void validate(const TableDesign& design) {
    checkName(design.name);
    if (design.fields.empty()) throwError(kNoFieldDefined);
    for (std::size_t i = 0; i < design.fields.size(); ++i) {
        checkField(design.fields[i]);
        if (findField(design.fields, design.fields[i].name) != static_cast<int>(i))
            throwError(kFieldDefinedTwice);
    }
    int primaries = 0;
    for (std::size_t i = 0; i < design.indexes.size(); ++i) {
        const IndexDesign& index = design.indexes[i];
        if (index.fields.empty()) throwError(kNoFieldDefined);
        for (const auto& [field, descending] : index.fields)
            if (findField(design.fields, field) < 0) throwError(kItemNotFound);
        primaries += index.primary ? 1 : 0;
        for (std::size_t j = 0; j < i; ++j)
            if (sameName(design.indexes[j].name, index.name)) throwError(kIndexExists);
    }
    if (primaries > 1) throwError(kPrimaryKeyExists);
}

bool inPrimaryKey(const TableDesign& design, std::wstring_view field) {
    for (const IndexDesign& index : design.indexes)
        if (index.primary)
            for (const auto& key : index.fields)
                if (sameName(key.first, field)) return true;
    return false;
}

std::string columnSql(const TableDesign& design, const FieldDef& field) {
    std::string sql = quoteName(field.name) + " " + declaredType(field);
    if (field.rowid) return sql + (field.counter ? " PRIMARY KEY AUTOINCREMENT" : " PRIMARY KEY");
    if (field.isText()) sql += " COLLATE JETNOCASE";
    if (field.required || inPrimaryKey(design, field.name)) sql += " NOT NULL";
    if (!field.defaultSql.empty()) sql += " DEFAULT (" + field.defaultSql + ")";
    return sql;
}

std::string keyList(const std::vector<std::pair<std::wstring, bool>>& fields) {
    std::string sql;
    for (const auto& [field, descending] : fields) {
        if (!sql.empty()) sql += ", ";
        sql += quoteName(field) + (descending ? " DESC" : "");
    }
    return sql;
}

std::string createTableSql(const TableDesign& design, std::wstring_view sqliteName) {
    std::string sql = "CREATE TABLE " + quoteName(sqliteName) + " (";
    for (std::size_t i = 0; i < design.fields.size(); ++i)
        sql += (i ? ", " : "") + columnSql(design, design.fields[i]);
    for (const IndexDesign& index : design.indexes) {
        if (!index.primary) continue;
        const bool rowidKey = index.fields.size() == 1 &&
                              design.fields[static_cast<std::size_t>(
                                  findField(design.fields, index.fields[0].first))].rowid;
        if (!rowidKey) sql += ", PRIMARY KEY (" + keyList(index.fields) + ")";
    }
    return sql + ")";
}

std::string sqliteIndexName(std::wstring_view table, std::wstring_view index) {
    return utf8(table) + "." + utf8(index);
}

void createIndexSql(Connection& connection, std::wstring_view table, const IndexDesign& index) {
    exec(connection, std::string(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                         quoteName(sqliteIndexName(table, index.name)) + " ON " +
                         quoteName(table) + " (" + keyList(index.fields) + ")");
}

void counterTriggers(Connection& connection, const TableDesign& design) {
    for (const FieldDef& field : design.fields) {
        if (!field.counter || field.rowid) continue;
        const std::string t = quoteName(design.name), f = quoteName(field.name);
        exec(connection, "CREATE TRIGGER " + quoteName(utf8(design.name) + ".counter." + utf8(field.name)) +
                             " AFTER INSERT ON " + t + " WHEN NEW." + f + " IS NULL BEGIN UPDATE " + t +
                             " SET " + f + "=(SELECT ifnull(max(" + f + "),0)+1 FROM " + t +
                             ") WHERE rowid=NEW.rowid; END");
    }
}

// Makes the table's SQLite objects and catalog rows (inside the caller's transaction).
void makeTable(Connection& connection, const TableDesign& design, std::wstring_view sqliteName) {
    exec(connection, createTableSql(design, sqliteName));
    for (const FieldDef& field : design.fields) saveFieldExtras(connection, design.name, field);
    for (const IndexDesign& index : design.indexes) {
        if (index.primary) {
            savePrimaryKeyName(connection, design.name, index.name);
            continue;
        }
        createIndexSql(connection, sqliteName == design.name ? design.name : sqliteName, index);
    }
}

TableDesign designOf(const TableSchema& schema) {
    TableDesign design;
    design.name = schema.name;
    design.fields = schema.fields;
    for (const IndexSchema& index : schema.indexes) {
        IndexDesign d;
        d.name = index.name;
        for (std::size_t i = 0; i < index.fields.size(); ++i)
            d.fields.emplace_back(schema.fields[static_cast<std::size_t>(index.fields[i])].name,
                                  index.descending[i]);
        d.primary = index.primary;
        d.unique = index.unique;
        d.required = index.required;
        design.indexes.push_back(std::move(d));
    }
    return design;
}

// Rebuilds a table to a new design, copying the columns named in both (by the old names in
// sources, which parallels design.fields; an empty source is a new column).
void rebuild(Connection& connection, const TableSchema& old, TableDesign design,
             const std::vector<std::wstring>& sources) {
    markRowid(design);
    validate(design);
    const std::wstring temporary = design.name + L"_kelvo_rebuild";
    exec(connection, createTableSql(design, temporary));
    std::string to, from;
    for (std::size_t i = 0; i < design.fields.size(); ++i) {
        if (sources[i].empty() || old.fieldIndex(sources[i]) < 0) continue;
        to += (to.empty() ? "" : ", ") + quoteName(design.fields[i].name);
        from += (from.empty() ? "" : ", ") + quoteName(sources[i]);
    }
    if (!to.empty())
        exec(connection, "INSERT INTO " + quoteName(temporary) + " (" + to + ") SELECT " + from +
                             " FROM " + quoteName(old.name));
    exec(connection, "DROP TABLE " + quoteName(old.name));
    exec(connection, "ALTER TABLE " + quoteName(temporary) + " RENAME TO " + quoteName(design.name));
    dropFromCatalog(connection, old.name, false);
    for (const FieldDef& field : design.fields) saveFieldExtras(connection, design.name, field);
    for (const IndexDesign& index : design.indexes) {
        if (index.primary)
            savePrimaryKeyName(connection, design.name, index.name);
        else
            createIndexSql(connection, design.name, index);
    }
    counterTriggers(connection, design);
}

const TableSchema& existing(Connection& connection, std::wstring_view table) {
    const TableSchema* schema = connection.schema(table);
    if (schema == nullptr) throwError(kInputTableNotFound, {table});
    return *schema;
}

std::vector<std::wstring> sameSources(const TableDesign& design) {
    std::vector<std::wstring> sources;
    for (const FieldDef& field : design.fields) sources.push_back(field.name);
    return sources;
}

}  // namespace

void checkField(const FieldDef& field) {
    checkName(field.name);
    if (field.type == dbText && (field.size < 0 || field.size > 255)) throwError(kInvalidArgument);
}

void createTable(Connection& connection, TableDesign design) {
    markRowid(design);
    validate(design);
    if (connection.schema(design.name) != nullptr) throwError(kTableExists, {design.name});
    WriteTransaction transaction(connection);
    makeTable(connection, design, design.name);
    counterTriggers(connection, design);
    transaction.commit();
    connection.schemaChanged();
}

void dropTable(Connection& connection, std::wstring_view table, long missingCode) {
    const TableSchema* schema = connection.schema(table);
    if (schema == nullptr) throwError(missingCode, {table});
    const std::wstring name = schema->name;
    requireNotInUse(connection, name);
    WriteTransaction transaction(connection);
    exec(connection, "DROP TABLE " + quoteName(name));
    dropFromCatalog(connection, name, true);
    transaction.commit();
    connection.schemaChanged();
}

void renameTable(Connection& connection, std::wstring_view from, std::wstring_view to) {
    checkName(to);
    const TableSchema old = existing(connection, from);
    if (!sameName(from, to) && connection.schema(to) != nullptr) throwError(kTableExists, {to});
    requireNotInUse(connection, old.name);
    WriteTransaction transaction(connection);
    exec(connection, "ALTER TABLE " + quoteName(old.name) + " RENAME TO " + quoteName(to));
    renameInCatalog(connection, old.name, to);
    // Index names carry the table's name: make them anew under the new one.
    TableDesign design = designOf(old);
    design.name = std::wstring(to);
    for (const IndexSchema& index : old.indexes)
        if (!index.sqliteName.empty()) exec(connection, "DROP INDEX " + quoteName(index.sqliteName));
    for (const IndexDesign& index : design.indexes)
        if (!index.primary) createIndexSql(connection, design.name, index);
    transaction.commit();
    connection.schemaChanged();
}

void addField(Connection& connection, std::wstring_view table, FieldDef field) {
    checkField(field);
    const TableSchema old = existing(connection, table);
    if (old.fieldIndex(field.name) >= 0) throwError(kFieldDefinedTwice);
    requireNotInUse(connection, old.name);
    TableDesign design = designOf(old);
    WriteTransaction transaction(connection);
    if (field.required || field.counter) {
        // SQLite adds neither a NOT NULL column without a default nor a counter in place.
        design.fields.push_back(field);
        std::vector<std::wstring> sources = sameSources(design);
        sources.back().clear();
        rebuild(connection, old, design, sources);
    } else {
        exec(connection, "ALTER TABLE " + quoteName(old.name) + " ADD COLUMN " + columnSql(design, field));
        saveFieldExtras(connection, old.name, field);
    }
    transaction.commit();
    connection.schemaChanged();
}

void dropField(Connection& connection, std::wstring_view table, std::wstring_view field) {
    const TableSchema old = existing(connection, table);
    const int index = old.fieldIndex(field);
    if (index < 0) throwError(kItemNotFound);
    for (const IndexSchema& i : old.indexes)
        if (std::find(i.fields.begin(), i.fields.end(), index) != i.fields.end())
            throwError(kFieldInIndex);
    if (old.fields.size() == 1) throwError(kNoFieldDefined);
    requireNotInUse(connection, old.name);
    TableDesign design = designOf(old);
    design.fields.erase(design.fields.begin() + index);
    WriteTransaction transaction(connection);
    rebuild(connection, old, design, sameSources(design));
    transaction.commit();
    connection.schemaChanged();
}

void alterField(Connection& connection, std::wstring_view table, FieldDef field) {
    const TableSchema old = existing(connection, table);
    const int index = old.fieldIndex(field.name);
    if (index < 0) throwError(kItemNotFound);
    requireNotInUse(connection, old.name);
    TableDesign design = designOf(old);
    design.fields[static_cast<std::size_t>(index)] = field;
    WriteTransaction transaction(connection);
    rebuild(connection, old, design, sameSources(design));
    transaction.commit();
    connection.schemaChanged();
}

void createIndex(Connection& connection, std::wstring_view table, IndexDesign index) {
    checkName(index.name);
    const TableSchema old = existing(connection, table);
    if (old.index(index.name) != nullptr) throwError(kIndexExists);
    requireNotInUse(connection, old.name);
    TableDesign design = designOf(old);
    if (index.primary)
        for (const IndexDesign& i : design.indexes)
            if (i.primary) throwError(kPrimaryKeyExists);
    if (index.primary) index.unique = index.required = true;
    design.indexes.push_back(index);
    validate(design);
    WriteTransaction transaction(connection);
    if (index.primary) {
        for (auto& [name, descending] : index.fields) {
            FieldDef& f = design.fields[static_cast<std::size_t>(findField(design.fields, name))];
            f.required = true;
        }
        rebuild(connection, old, design, sameSources(design));
    } else {
        createIndexSql(connection, old.name, index);
    }
    transaction.commit();
    connection.schemaChanged();
}

void dropIndex(Connection& connection, std::wstring_view table, std::wstring_view index) {
    const TableSchema old = existing(connection, table);
    const IndexSchema* found = old.index(index);
    if (found == nullptr) throwError(kItemNotFound);
    requireNotInUse(connection, old.name);
    WriteTransaction transaction(connection);
    if (found->sqliteName.empty()) {
        TableDesign design = designOf(old);
        design.indexes.erase(std::remove_if(design.indexes.begin(), design.indexes.end(),
                                            [](const IndexDesign& i) { return i.primary; }),
                             design.indexes.end());
        rebuild(connection, old, design, sameSources(design));
    } else {
        exec(connection, "DROP INDEX " + quoteName(found->sqliteName));
    }
    transaction.commit();
    connection.schemaChanged();
}

std::string defaultExpression(std::wstring_view jetDefault) {
    std::wstring text(jetDefault);
    while (!text.empty() && text.front() == L' ') text.erase(text.begin());
    if (!text.empty() && text.front() == L'=') text.erase(text.begin());
    if (text.empty()) return {};
    constexpr std::string_view kAlias = " AS [kelvoDefault]";
    try {
        const auto statement = kelvo::jet::parse("SELECT " + utf8(text) + " AS kelvoDefault");
        const auto* query = std::get_if<kelvo::jet::Query>(&statement);
        if (query != nullptr && query->sqliteSql.starts_with("SELECT ") &&
            query->sqliteSql.ends_with(kAlias))
            return query->sqliteSql.substr(7, query->sqliteSql.size() - 7 - kAlias.size());
    } catch (const kelvo::jet::SyntaxError& error) {
        throwError(error.daoCode == 0 ? kInvalidArgument : error.daoCode);
    }
    throwError(kInvalidArgument);
}

}  // namespace dao
