// CDBConnection: one database file opened through the data access engine, with the
// tables opened on it as cursors, the current table, and the last error.
//
// States (see database/current_connection.h for which object is current):
//   closed --open()--> open          (open() closes first when already open)
//   open --close()--> closed         (every table cursor closed first)
//   open --openTable()--> open with a current table (a cursor per table, one current)
//
// Every engine call runs under a catch for CDaoException*: the error's code and message
// are copied into the connection, the error flag is set, the exception is deleted and
// the operation answers false. No engine exception leaves this class. Each operation
// that can fail clears the error flag first, so the flag always describes the last
// operation.
//
// Records travel out as flat name/value arrays (database/record_lists.h); the caller's
// array is reused from call to call, so a walk over a table does not reallocate.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "dao.h"

class CDBConnection {
public:
    // What open() answers for a file that is damaged or not a database.
    static constexpr const wchar_t* kRepair = L"*REPAIR*";

    CDBConnection();
    virtual ~CDBConnection();
    CDBConnection(const CDBConnection&) = delete;
    CDBConnection& operator=(const CDBConnection&) = delete;

    // --- the database (db_connection.cpp) ---
    // Opens `path` non-exclusively with an empty connect string, closing this object's
    // database first. Answers the database's name (its full path) on success, kRepair when
    // the file is damaged or not a database, and "" on any other failure.
    virtual std::wstring open(const std::wstring& path, bool readOnly);
    // Makes a new empty database at `path` (Access's locale) and closes it at once.
    virtual bool create(const std::wstring& path);
    // Closes every table cursor, then the database when it is open.
    virtual void close();
    bool isOpen() const;
    bool canUpdate() const;
    // The full path of the open database; empty when closed.
    std::wstring databasePath() const;
    // Whether the open database has a table of that name: VARIANT_TRUE or VARIANT_FALSE.
    bool tableExists(const std::wstring& name, VARIANT_BOOL& answer);
    // A compacted copy of `source` at `destination` (refused when it exists).
    bool compact(const std::wstring& source, const std::wstring& destination);

    // --- errors (db_connection.cpp) ---
    bool hasError() const { return errorFlag_; }
    // The last error's DAO code and message.
    virtual void lastError(long& code, std::wstring& text) const;
    // Copies the error into the connection, sets the flag and deletes the exception.
    void recordError(CDaoException* error);
    void clearError() { errorFlag_ = false; }
    // Records an error found without the engine (its DAO code and a message).
    void recordError(long code, std::wstring text);

    // --- table cursors (db_connection_tables.cpp) ---
    // Opens `table` as a cursor (or finds it already open) and makes it current; with a
    // non-empty `index`, sets the cursor's current index. On failure (no such table or
    // index) the open tables and the current table stay as they were.
    bool openTable(const std::wstring& table, const std::wstring& index);
    // Closes and forgets the current table / every table.
    void closeTable();
    void closeAllTables();
    bool hasCurrentTable() const { return current_ < tables_.size(); }
    // Empty when there is no current table / current index.
    std::wstring currentTableName() const;
    std::wstring currentIndexName();

    // Movements: each moves the current table's cursor and reads the record it lands on
    // into `record`. False, with no error, when the move or the read runs off an end.
    bool moveFirst(VariantArray& record);
    bool moveLast(VariantArray& record);
    bool skip(long count, VariantArray& record);
    bool seek(const VariantArray& keys, VariantArray& record);
    bool readRecord(VariantArray& record);
    bool recordCount(long& count);

    // Writes, under the lock-conflict retry; each reads back the record written.
    bool replace(const VariantArray& pairs, VariantArray& record);
    bool append(bool flagged, const VariantArray& pairs, VariantArray& record);
    bool deleteRecord();

    // --- SQL (db_connection_sql.cpp) ---
    // Receives the rows of a select one at a time, each as name/value pairs in an array
    // that is reused from row to row.
    class RowSink {
    public:
        virtual ~RowSink() = default;
        virtual void row(const VariantArray& pairs) = 0;
    };

    // Runs a select and hands its rows to `sink`, in the order the engine gives them.
    bool select(const std::wstring& sql, RowSink& sink);
    // Runs an action statement; needs a database that can be updated.
    bool execute(const std::wstring& sql, long& recordsAffected);
    // Runs a stored query with parameters (name, value, name, value ...).
    bool runQuery(const std::wstring& name, const VariantArray& parameters, RowSink& sink);
    // Replaces the SQL of an existing stored query.
    bool setQuerySql(const std::wstring& name, const std::wstring& sql);

    // --- structure (database/structure_functions.cpp) ---
    // Runs work(database) on the open database under the engine-error catch. False when
    // no database is open (no error recorded) or when the work throws a CDaoException*
    // (recorded as every operation records it).
    template <class Work>
    bool withDatabase(Work&& work) {
        clearError();
        if (!database_.IsOpen()) return false;
        try {
            work(database_);
            return true;
        } catch (CDaoException* error) {
            recordError(error);
            return false;
        }
    }

private:
    struct TableCursor;

    TableCursor* currentTable() const;
    // The open table cursor of that name (case-insensitive), or the end.
    std::size_t findTable(const std::wstring& table) const;
    bool readCurrent(TableCursor& table, VariantArray& record);
    void writeFields(TableCursor& table, const VariantArray& pairs);
    // A current table on a database that can be updated. A read-only database records
    // the engine's read-only error; no table fails without one.
    bool requireWritableTable();
    // An open database that can be updated; a read-only one records the read-only error.
    bool requireWritableDatabase();

    CDaoDatabase database_;
    std::vector<std::unique_ptr<TableCursor>> tables_;
    static constexpr std::size_t kNoTable = static_cast<std::size_t>(-1);
    std::size_t current_ = kNoTable;

    bool errorFlag_ = false;
    long errorCode_ = 0;
    std::wstring errorText_;
};
