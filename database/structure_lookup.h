// Shared by the structure functions: the open database, the engine's name rule, and
// finding tables, fields, indexes and relations with one clear error when they are not
// there. Every failure is thrown as the engine throws (a new CDaoException), so that
// onDatabase records it in the connection and reports it once.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "bridge/value_list.h"
#include "dao.h"
#include "database/db_connection.h"
#include "database/error_report.h"

namespace kelvo::database::structure {

// The current connection when its database is open; otherwise prints "No database is
// open." and answers null.
CDBConnection* openDatabase();

// Runs work(database) on the open database; a failure goes through the error report.
// The work sets the LISP result itself, once it has everything.
template <class Work>
void onDatabase(Work&& work) {
    CDBConnection* connection = openDatabase();
    if (connection == nullptr) return;
    if (!connection->withDatabase(std::forward<Work>(work))) reportError(connection);
}

[[noreturn]] void fail(long code, std::wstring text);
// The engine's "Item not found in this collection." (3265) with what was looked for.
[[noreturn]] void failNotFound(const std::wstring& what);
// 3125 for a name the engine does not allow for a table, field, index or relation.
void checkName(const std::wstring& name);
// 3027 on a database that cannot be updated.
void requireWritable(CDaoDatabase& database);

// Opens the definition of `table`: 3078 when the database has no such table.
void openTableDef(CDaoTableDef& definition, const std::wstring& table);

// onDatabase with the definition of `table` open (a missing table fails with 3078).
template <typename Work>
void onTableDef(const std::wstring& table, Work&& work) {
    onDatabase([&](CDaoDatabase& database) {
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        work(definition);
    });
}

// 3265 when the table has no such field / index.
CDaoFieldInfo findField(CDaoTableDef& definition, const std::wstring& field);
CDaoIndexInfo findIndex(CDaoTableDef& definition, const std::wstring& index);
std::vector<CDaoIndexInfo> indexesOf(CDaoTableDef& definition);
std::vector<CDaoRelationInfo> relationsOf(CDaoDatabase& database);

// Reads text arguments in order; the guard's status when one is missing or not a text.
int readNames(HandlerArgs& args, std::initializer_list<std::wstring*> names);

}  // namespace kelvo::database::structure
