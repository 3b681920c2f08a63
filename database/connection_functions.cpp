// kv_connect, kv_create_db, kv_close_db, kv_mdb, kv_current_table, kv_current_index,
// kv_readonly and kv_exist.
#include "adslib.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/value_list.h"
#include "database/current_connection.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/error_report.h"

namespace kelvo::database {
namespace {

// "w", exactly, means read-write; any other mode read-only.
constexpr const wchar_t* kReadWrite = L"w";

int connectHandler() {
    HandlerArgs args;
    std::wstring path, mode = kReadWrite;
    bool showErrors = false;
    if (!readText(args.cursor(), path)) return kWrongArgType;
    if (!args.atEnd()) {
        if (!readText(args.cursor(), mode)) return kWrongArgType;
        readBoolean(args.cursor(), showErrors);
    }
    if (connectDatabase(path, mode != kReadWrite) == ConnectResult::kFailed) {
        return showErrors ? kWantTextScreen : kArgOk;
    }
    acedRetT();
    return kArgOk;
}

// The new file's errors go through the current connection's report, never the
// temporary object's own: a failure here is normally silent.
int createDbHandler() {
    HandlerArgs args;
    std::wstring path;
    if (!readText(args.cursor(), path)) return kWrongArgType;
    CDBConnection made;
    if (made.create(path)) {
        acedRetT();
    } else {
        reportError();
    }
    return kArgOk;
}

int closeDbHandler() {
    HandlerArgs args;
    closeCurrentDatabase();
    return kArgOk;
}

int mdbHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    const std::wstring path = connection->databasePath();
    if (path.empty()) {
        reportError();
    } else {
        acedRetStr(path.c_str());
    }
    return kArgOk;
}

int currentTableHandler() {
    HandlerArgs args;
    if (CDBConnection* connection = currentConnection()) {
        acedRetStr(connection->currentTableName().c_str());
    }
    return kArgOk;
}

int currentIndexHandler() {
    HandlerArgs args;
    if (CDBConnection* connection = currentConnection()) {
        acedRetStr(connection->currentIndexName().c_str());
    }
    return kArgOk;
}

int readonlyHandler() {
    HandlerArgs args;
    const CDBConnection* connection = currentConnection();
    if (connection == nullptr || !connection->canUpdate()) acedRetT();
    return kArgOk;
}

int existHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    std::wstring table;
    if (!readText(args.cursor(), table)) return kWrongArgType;
    VARIANT_BOOL answer = VARIANT_FALSE;
    if (!connection->tableExists(table, answer)) {
        reportError();
    } else if (static_cast<unsigned short>(answer) == 0xFFFF) {
        acedRetT();
    }
    return kArgOk;
}

}  // namespace

int kvConnect() {
    return runDatabaseCall(connectHandler);
}
int kvCreateDb() {
    return runDatabaseCall(createDbHandler);
}
int kvCloseDb() {
    return runDatabaseCall(closeDbHandler);
}
int kvMdb() {
    return runDatabaseCall(mdbHandler);
}
int kvCurrentTable() {
    return runDatabaseCall(currentTableHandler);
}
int kvCurrentIndex() {
    return runDatabaseCall(currentIndexHandler);
}
int kvReadonly() {
    return runDatabaseCall(readonlyHandler);
}
int kvExist() {
    return runDatabaseCall(existHandler);
}

}  // namespace kelvo::database
