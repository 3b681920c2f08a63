// The process-wide current database connection and the list of connections behind it.
//
// Module-wide state (one copy for the process, not one per drawing):
//   - the current connection: null until the first successful kv_connect, and again
//     after a drawing closes (dropCurrentConnection);
//   - the stored path and read-only value (0 read-write, -1 read-only) of the current
//     database: set by a successful connect, emptied by kv_close_db;
//   - the DB_INFO list: one record per database file connected in this session (its
//     connection object, its path while open, the file it was opened from and the
//     read-only flag). A connect whose path names the open database (the same-database
//     test) makes its record current again; closing a database (kv_close_db, or a
//     connect to another) empties its record's path, so a closed database is never
//     taken for the file a later path names: that path is looked up. A later connect
//     to the same file reuses the record's connection object; the list owns the objects
//     and deletes them at module unload. At most one connection is open at a time: the
//     current one.
//
// Connection states: none -> open [connectDatabase] -> closed [closeCurrentDatabase]
// -> open again [connectDatabase, or the per-call guard reconnecting a drawing's database]
// -> none [dropCurrentConnection, at drawing close].
//
// The per-document records (database/document_records.h) say which drawing made which
// connection: a successful connect stores the connection, path and read-only flag in the
// record of the drawing that is current, and kv_close_db clears every record that holds
// the current connection. database/call_guard.h uses them.
#pragma once

#include <string>

#include "dao_variant.h"

class CDBConnection;

namespace kelvo::database {

CDBConnection* currentConnection();
// The stored path of the current database (empty when none is open).
const std::wstring& currentPath();
// The stored access of the current database: 0 read-write, -1 read-only.
VARIANT_BOOL currentReadOnly();

// The same-database test: the connection exists, its database is open, and `path`
// (compared in upper case with every "/" made "\") equals its path or is a substring of
// it. An empty path never names a database.
bool isSameDatabase(const CDBConnection* connection, const std::wstring& path);
// The text half of the test.
bool pathNamesDatabase(const std::wstring& path, const std::wstring& openPath);

// What connectDatabase did.
enum class ConnectResult {
    kConnected,  // opened, or the open database was already the one asked for
    kFailed      // reported on the command line; nothing is open
};

// Connects the process to the database file at `path`, read-write or read-only. Reuses
// the open database when `path` names it (the same-database test) in the same access
// (its open tables survive); otherwise closes the current database, looks the file up
// (as given, then along ACADPREFIX) and opens it, going through the repair
// ("compactDatabase") once when the file is damaged. A failure is reported once.
ConnectResult connectDatabase(const std::wstring& path, bool readOnly);

// The inner work of kv_close_db: closes the current connection's tables and database,
// empties the stored path and its DB_INFO record's path, and clears the connection of
// every per-document record that holds it. The connection object stays for later use.
// Does nothing when there is no current connection.
void closeCurrentDatabase();

// Whether `connection` (a per-document record's) is the current connection.
bool isCurrentConnection(const CDBConnection* connection);

// At drawing close: closes the current connection's database and clears the current
// connection (the next database function starts with none).
void dropCurrentConnection();

// At module unload: closes and deletes every connection object and clears the
// per-document records' hold on them.
void deleteAllConnections();

}  // namespace kelvo::database
