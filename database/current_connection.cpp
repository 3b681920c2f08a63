// The process-wide current connection, the DB_INFO list and connecting.
#include "database/current_connection.h"

#include <cwctype>
#include <filesystem>
#include <list>
#include <memory>
#include <system_error>

#include "database/database_search.h"
#include "database/db_connection.h"
#include "database/document_records.h"
#include "database/error_report.h"
#include "database/repair.h"
#include "utf8.h"

namespace kelvo::database {
namespace {

struct DbInfo {
    std::unique_ptr<CDBConnection> connection;
    std::wstring path;  // the database's path while it is open; emptied when it is closed
    std::wstring file;  // the full name of the file it opened, kept to reuse the object
    bool readOnly = false;
};

struct State {
    CDBConnection* current = nullptr;
    std::wstring path;
    VARIANT_BOOL readOnly = VARIANT_FALSE;
    std::list<DbInfo> records;  // a list: a record stays put while the repair runs LISP
};

State& state() {
    static State instance;
    return instance;
}

std::wstring comparable(const std::wstring& path) {
    std::wstring text(path);
    for (wchar_t& c : text) c = c == L'/' ? L'\\' : static_cast<wchar_t>(std::towupper(c));
    return text;
}

// The record whose database `path` names by the same-database test: only an open
// database matches, so a closed one is never reopened in place of the file `path` names.
DbInfo* findOpenRecord(const std::wstring& path) {
    for (DbInfo& record : state().records) {
        if (!record.path.empty() && isSameDatabase(record.connection.get(), path)) return &record;
    }
    return nullptr;
}

// A file's full, normalised name, so that one file found by several paths is one file.
std::wstring fullFileName(const std::wstring& file) {
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(toUtf8(file), error);
    return error ? file : fromUtf8(full.lexically_normal().string());
}

// The record last opened from this file, whose connection object serves it again (the
// drawings that connected to the file hold that object).
DbInfo* findRecordOfFile(const std::wstring& fullName) {
    const std::wstring wanted = comparable(fullName);
    for (DbInfo& record : state().records) {
        if (comparable(record.file) == wanted) return &record;
    }
    return nullptr;
}

DbInfo* findRecordOf(const CDBConnection* connection) {
    for (DbInfo& record : state().records) {
        if (record.connection.get() == connection) return &record;
    }
    return nullptr;
}

void makeCurrent(DbInfo& record) {
    State& s = state();
    s.current = record.connection.get();
    s.path = record.path;
    s.readOnly = record.readOnly ? VARIANT_TRUE : VARIANT_FALSE;
}

// Closes the current database and empties its record's path (the object stays).
void closeCurrent() {
    State& s = state();
    if (s.current == nullptr) return;
    s.current->close();
    s.path.clear();
    if (DbInfo* record = findRecordOf(s.current)) record->path.clear();
}

// The open database already answers the request: same file, same access.
bool alreadyConnected(const std::wstring& path, bool readOnly) {
    const CDBConnection* current = state().current;
    return current != nullptr && isSameDatabase(current, path) &&
           current->canUpdate() == !readOnly;
}

// Notes in the current drawing's record that it uses the current connection.
void noteInCurrentDocument() {
    const State& s = state();
    if (DocumentRecord* record = documentRecords().findCurrent()) {
        record->connection = s.current;
        record->secondText = s.path;
        record->flag = s.readOnly != VARIANT_FALSE;
    }
}

// Opens the file on `connection`; a damaged file goes through the repair once.
std::wstring openWithRepair(CDBConnection& connection, const std::wstring& path, bool readOnly) {
    std::wstring status = connection.open(path, readOnly);
    if (status != CDBConnection::kRepair) return status;
    connection.close();
    if (invokeRepair(path)) status = connection.open(path, readOnly);
    return status;
}

}  // namespace

CDBConnection* currentConnection() {
    return state().current;
}

const std::wstring& currentPath() {
    return state().path;
}

VARIANT_BOOL currentReadOnly() {
    return state().readOnly;
}

bool pathNamesDatabase(const std::wstring& path, const std::wstring& openPath) {
    if (path.empty()) return false;
    const std::wstring given = comparable(path), open = comparable(openPath);
    return given == open || open.find(given) != std::wstring::npos;
}

bool isSameDatabase(const CDBConnection* connection, const std::wstring& path) {
    return connection != nullptr && connection->isOpen() &&
           pathNamesDatabase(path, connection->databasePath());
}

ConnectResult connectDatabase(const std::wstring& path, bool readOnly) {
    State& s = state();
    // An open database that the path names is made current again.
    if (DbInfo* open = findOpenRecord(path);
        open != nullptr && open->connection.get() != s.current) {
        closeCurrent();
        makeCurrent(*open);
    }
    if (alreadyConnected(path, readOnly)) {
        noteInCurrentDocument();
        return ConnectResult::kConnected;
    }
    closeCurrent();

    // The file the path names, as given or along the support folders.
    const std::wstring file = findDatabaseFile(path);
    const std::wstring fullName = fullFileName(file);
    DbInfo* known = findRecordOfFile(fullName);
    std::unique_ptr<CDBConnection> made;
    CDBConnection* connection = known != nullptr ? known->connection.get() : nullptr;
    if (connection == nullptr) {
        made = std::make_unique<CDBConnection>();
        connection = made.get();
    }
    const std::wstring status = openWithRepair(*connection, file, readOnly);
    if (status.empty() || status == CDBConnection::kRepair) {
        reportError(connection);
        return ConnectResult::kFailed;
    }
    if (made != nullptr) {
        s.records.push_back({std::move(made), {}, fullName, readOnly});
        known = &s.records.back();
    }
    known->path = status;
    known->readOnly = readOnly;
    makeCurrent(*known);
    noteInCurrentDocument();
    return ConnectResult::kConnected;
}

void closeCurrentDatabase() {
    State& s = state();
    if (s.current == nullptr) return;
    closeCurrent();
    for (DocumentRecord& record : documentRecords().records()) {
        if (record.connection != s.current) continue;
        record.connection = nullptr;
        record.secondText.clear();
    }
}

bool isCurrentConnection(const CDBConnection* connection) {
    return connection != nullptr && connection == state().current;
}

void dropCurrentConnection() {
    State& s = state();
    if (s.current == nullptr) return;
    closeCurrent();
    s.current = nullptr;
    s.path.clear();
    s.readOnly = VARIANT_FALSE;
}

void deleteAllConnections() {
    State& s = state();
    for (DocumentRecord& record : documentRecords().records()) record.connection = nullptr;
    s.current = nullptr;
    s.path.clear();
    s.readOnly = VARIANT_FALSE;
    s.records.clear();
}

}  // namespace kelvo::database
