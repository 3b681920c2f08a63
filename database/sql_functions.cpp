// kv_sql, kv_sql-nil, kv_sql-error, kv_command, kv_query and kv_create_query.
//
// A select that fails gets one reconnect of the same connection object and one retry
// (the connection may have gone stale: a network drive, another process). What a
// failure then gives depends on the failure mode: 0 asks the user in a message box,
// 1 answers nil quietly, 2 answers "*ERROR*".
#include "adslib.h"
#include "database/current_connection.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/error_report.h"
#include "database/record_lists.h"
#include "host_ui.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"

namespace kelvo::database {
namespace {

enum FailureMode : int { kAskUser = 0, kQuietNil = 1, kErrorText = 2 };

constexpr const wchar_t* kErrorResult = L"*ERROR*";
constexpr const wchar_t* kConnectionErrorText =
    L"Database connection error.\nClose and reopen AutoCAD.\n\nIf you are getting this error "
    L"frequently, press \"Yes\" to send an error report to Tarvik Support.";

// Runs the select; on success the rows (or nil) are the LISP result.
bool runSelect(CDBConnection& connection, const std::wstring& sql) {
    ResultSetBuilder rows;
    if (!connection.select(sql, rows)) return false;
    rows.returnAsResult();
    return true;
}

// The end of a failed select: nil, "*ERROR*", or the question to the user.
int failByMode(int mode, const wchar_t* label, const std::wstring& sql) {
    if (mode == kQuietNil) return kArgOk;
    if (mode == kErrorText) {
        acedRetStr(kErrorResult);
        return kArgOk;
    }
    HostWindow active = hostGetActiveWindow();
    const int answer = hostMessageBox(active, kConnectionErrorText, L"Tarvik", MB_YESNO);
    hostSetActiveWindow(active);
    if (answer != IDYES) return kArgOk;
    acutPrintf(L"%s%s", label, sql.c_str());
    reportError();
    return kBadArgData;
}

// Closes and reopens the connection's database in the access it had (or, with none
// open, the stored database of the current connection), then runs the select again.
int reconnectAndRetry(CDBConnection& connection, const std::wstring& sql, int mode) {
    std::wstring path = connection.databasePath();
    bool readOnly = false;
    if (!path.empty()) {
        readOnly = !connection.canUpdate();
        connection.close();
    } else {
        path = currentPath();
        readOnly = currentReadOnly() != VARIANT_FALSE;
    }
    if (path.empty()) return failByMode(mode, L"\nQuery 1: ", sql);
    const std::wstring status = connection.open(path, readOnly);
    if (status.empty() || status == CDBConnection::kRepair) {
        reportError(&connection);
        if (mode == kQuietNil) return kArgOk;
        if (mode == kErrorText) acedRetStr(kErrorResult);
        return mode == kErrorText ? kArgOk : kBadArgData;
    }
    if (runSelect(connection, sql)) return kArgOk;
    return failByMode(mode, L"\nQuery 2: ", sql);
}

int sqlWithMode(const std::wstring& sql, int mode) {
    CDBConnection* connection = currentConnection();
    if (runSelect(*connection, sql)) return kArgOk;
    return reconnectAndRetry(*connection, sql, mode);
}

// Reads the SQL text: 1 when missing, 2 when not a text.
int readSql(HandlerArgs& args, std::wstring& sql) {
    if (args.atEnd()) return kTooFewArgs;
    return readText(args.cursor(), sql) ? kArgOk : kWrongArgType;
}

int sqlHandler() {
    HandlerArgs args;
    if (currentConnection() == nullptr) return kArgOk;
    std::wstring sql;
    if (const int status = readSql(args, sql); status != kArgOk) return status;
    std::int32_t mode = kAskUser;
    if (!args.atEnd() && !readInteger(args.cursor(), mode)) return kWrongArgType;
    return sqlWithMode(sql, mode);
}

int sqlNilHandler() {
    HandlerArgs args;
    if (currentConnection() == nullptr) return kArgOk;
    std::wstring sql;
    if (const int status = readSql(args, sql); status != kArgOk) return status;
    return sqlWithMode(sql, kQuietNil);
}

int sqlErrorHandler() {
    HandlerArgs args;
    if (currentConnection() == nullptr) return kArgOk;
    std::wstring sql;
    if (const int status = readSql(args, sql); status != kArgOk) return status;
    return sqlWithMode(sql, kErrorText);
}

int commandHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    std::wstring sql;
    if (const int status = readSql(args, sql); status != kArgOk) return status;
    long affected = 0;
    if (connection->execute(sql, affected)) {
        returnInteger(affected);
    } else {
        reportError();
    }
    return kArgOk;
}

int queryHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    std::wstring name;
    if (const int status = readSql(args, name); status != kArgOk) return status;
    VariantArray parameters;
    if (!argumentsFromLisp(args.cursor(), parameters)) return kWrongArgType;
    ResultSetBuilder rows;
    if (connection->runQuery(name, parameters, rows)) {
        rows.returnAsResult();
    } else {
        reportError();
    }
    return kArgOk;
}

int createQueryHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    std::wstring name, sql;
    if (const int status = readSql(args, name); status != kArgOk) return status;
    if (!readText(args.cursor(), sql)) return kWrongArgType;
    if (connection->setQuerySql(name, sql)) {
        acedRetT();
    } else {
        reportError();
    }
    return kArgOk;
}

}  // namespace

int kvSql() {
    return runDatabaseCall(sqlHandler);
}
int kvSqlNil() {
    return runDatabaseCall(sqlNilHandler);
}
int kvSqlError() {
    return runDatabaseCall(sqlErrorHandler);
}
int kvCommand() {
    return runDatabaseCall(commandHandler);
}
int kvQuery() {
    return runDatabaseCall(queryHandler);
}
int kvCreateQuery() {
    return runDatabaseCall(createQueryHandler);
}

}  // namespace kelvo::database
