// The engine's side of an open database: the SQLite handle with the dialect's collation
// and functions registered, the file's path and access, prepared statements kept for the
// engine's repeated calls, the table schemas read so far, and the change counters that
// cursors and record counts use to know when what they hold is stale.
//
// Locking: the file stays in SQLite's rollback-journal mode, so the file alone holds
// every committed change (a copied database file is complete). No read transaction is
// held between calls: cursors read ahead in short batches and end their statement each
// time, so other processes can always write. Writes run in short transactions
// (WriteTransaction). A busy file is waited for only a few milliseconds on writes, so
// that the caller's own lock-conflict retry does the waiting; reads and opens wait up to
// two seconds, since a writer holds the file for no longer than its commit.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "sqlite_statement.h"
#include "table_schema.h"

namespace dao {

class Cursor;

class Connection {
public:
    enum class Mode { open, create };

    // Opens (or creates) the database file; throws the DAO error of any failure.
    Connection(const std::wstring& path, Mode mode, bool exclusive, bool readOnly);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    sqlite3* db() const { return db_.get(); }
    const std::wstring& path() const { return path_; }
    bool canUpdate() const { return !readOnly_; }
    void requireWritable() const;  // 3027 when the database is read-only

    // A statement prepared once and kept for the life of the connection.
    Statement& cached(const std::string& sql);

    // Changes made through this connection (every write adds one), and the file's data
    // version, which moves when another connection commits.
    std::uint64_t ownChanges() const { return ownChanges_; }
    void noteChange() { ++ownChanges_; }
    std::int64_t dataVersion();
    // The file change counter of the database header, read without taking a lock: every
    // commit by any connection (this one too) changes it. One read of four bytes, to tell
    // cheaply whether the file may have changed since a batch was read.
    std::int64_t fileChangeCounter();

    // Table schemas, read once and forgotten on any change of the schema.
    const TableSchema* schema(std::wstring_view table);
    const TableSchema& requireSchema(std::wstring_view table);  // 3078 when missing
    void schemaChanged();
    std::uint64_t schemaChanges() const { return schemaChanges_; }

    // Whether a transaction begun by BeginTrans is open.
    bool inUserTransaction() const { return userTransaction_; }
    void beginUserTransaction();
    void commitUserTransaction();
    void rollbackUserTransaction();

    // Cursors working on this connection; closing it detaches them.
    void attach(Cursor* cursor) { cursors_.insert(cursor); }
    void release(Cursor* cursor) { cursors_.erase(cursor); }
    const std::set<Cursor*>& cursors() const { return cursors_; }

    long recordsAffected = 0;
    std::wstring connectString;

private:
    void setUp(bool exclusive);
    void verify();

    SqliteHandle db_;
    std::wstring path_;
    bool readOnly_ = false;
    bool userTransaction_ = false;
    std::uint64_t ownChanges_ = 0;
    std::uint64_t schemaChanges_ = 0;
    std::map<std::string, Statement> statements_;
    std::map<std::wstring, TableSchema> schemas_;
    std::int64_t schemaVersion_ = -1;
    std::set<Cursor*> cursors_;
};

// A short write transaction: BEGIN IMMEDIATE, or a savepoint inside BeginTrans. Rolls back
// in its destructor unless committed. Throws 3027 on a read-only database.
class WriteTransaction {
public:
    explicit WriteTransaction(Connection& connection);
    ~WriteTransaction();
    WriteTransaction(const WriteTransaction&) = delete;
    WriteTransaction& operator=(const WriteTransaction&) = delete;
    void commit();

private:
    Connection& connection_;
    bool nested_;
    bool done_ = false;
};

}  // namespace dao
