// The kv_ database functions of the connection, cursors, records, SQL and errors: the
// callbacks registered in the database table. Each runs the per-call guard and the
// handler guard around its inner handler, so it can be called as the host calls it
// (its arguments from acedGetArgs, its result through acedRet...).
#pragma once

namespace kelvo::database {

// Connection (connection_functions.cpp).
int kvConnect();        // (kv_connect path [mode [show-errors]]) -> T or nil
int kvCreateDb();       // (kv_create_db path) -> T or nil
int kvCloseDb();        // (kv_close_db) -> nil
int kvMdb();            // (kv_mdb) -> the open database's full path
int kvCurrentTable();   // (kv_current_table) -> the current table's name
int kvCurrentIndex();   // (kv_current_index) -> the current index's name
int kvReadonly();       // (kv_readonly) -> T when nothing can be updated
int kvExist();          // (kv_exist table) -> T or nil

// Table cursors (cursor_functions.cpp).
int kvTable();          // (kv_table name [index]) -> the name
int kvCloseTable();     // (kv_close_table) -> nil
int kvCloseallTables(); // (kv_closeall_tables) -> nil
int kvTop();            // (kv_top) -> the first record
int kvBottom();         // (kv_bottom) -> the last record
int kvSkip();           // (kv_skip [n]) -> the record n places on
int kvSeek();           // (kv_seek key | (key ...) | point) -> the record found
int kvGetrec();         // (kv_getrec) -> the current record
int kvCount();          // (kv_count) -> the number of records

// Record writes (record_functions.cpp).
int kvReplace();        // (kv_replace record) -> the record as written
int kvAppend();         // (kv_append [flag] record) -> the new record
int kvDelete();         // (kv_delete) -> T

// SQL (sql_functions.cpp).
int kvSql();            // (kv_sql sql [mode]) -> rows
int kvSqlNil();         // (kv_sql-nil sql) -> rows; nil on failure
int kvSqlError();       // (kv_sql-error sql) -> rows; "*ERROR*" on failure
int kvCommand();        // (kv_command sql) -> records affected
int kvQuery();          // (kv_query name [param value ...]) -> rows
int kvCreateQuery();    // (kv_create_query name sql) -> T

// Errors and compaction (error_functions.cpp).
int kvLastError();      // (kv_lastError) -> "(code) message" or ""
int kvResetLastError(); // (kv_resetLastError) -> ""
int kvCompact();        // (kv_compact source destination [show-box]) -> "OK" or the code

}  // namespace kelvo::database
