// The process-wide current connection, the DB_INFO list and connecting.
#include "database/current_connection.h"

#include <cwctype>
#include <memory>
#include <vector>

#include "database/database_search.h"
#include "database/db_connection.h"
#include "database/error_report.h"
#include "database/repair.h"
#include "database/document_records.h"

namespace kelvo::database {
namespace {

struct DbInfo {
    std::unique_ptr<CDBConnection> connection;
    std::wstring path;  // the database's full path when it was opened
    bool readOnly = false;
};

struct State {
    CDBConnection* current = nullptr;
    std::wstring path;
    VARIANT_BOOL readOnly = VARIANT_FALSE;
    std::vector<DbInfo> records;
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

// The record of the database that `path` names, or null.
DbInfo* findRecord(const std::wstring& path) {
    for (DbInfo& record : state().records) {
        if (pathNamesDatabase(path, record.path)) return &record;
    }
    return nullptr;
}

void makeCurrent(DbInfo& record) {
    State& s = state();
    s.current = record.connection.get();
    s.path = record.path;
    s.readOnly = record.readOnly ? VARIANT_TRUE : VARIANT_FALSE;
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
    if (DocumentRecord* record = documentRecords().find(currentDocumentFileName())) {
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
    CDBConnection* previous = s.current;
    DbInfo* known = findRecord(path);
    if (known != nullptr && !isSameDatabase(previous, path)) makeCurrent(*known);
    if (alreadyConnected(path, readOnly)) {
        noteInCurrentDocument();
        return ConnectResult::kConnected;
    }
    if (previous != nullptr) previous->close();
    if (s.current != nullptr) s.current->close();
    s.path.clear();

    std::unique_ptr<CDBConnection> made;
    CDBConnection* connection = known != nullptr ? known->connection.get() : nullptr;
    if (connection == nullptr) {
        made = std::make_unique<CDBConnection>();
        connection = made.get();
    }
    // A known database is reopened where it was found before.
    const std::wstring file = known != nullptr ? known->path : findDatabaseFile(path);
    const std::wstring status = openWithRepair(*connection, file, readOnly);
    if (status.empty() || status == CDBConnection::kRepair) {
        reportError(connection);
        return ConnectResult::kFailed;
    }
    if (made != nullptr) {
        s.records.push_back({std::move(made), status, readOnly});
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
    s.current->close();
    s.path.clear();
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
    s.current->close();
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
