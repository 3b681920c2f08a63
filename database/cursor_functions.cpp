// kv_table, kv_close_table, kv_closeall_tables, kv_top, kv_bottom, kv_skip, kv_seek,
// kv_getrec and kv_count: the current table's cursor, one record at a time.
#include "adslib.h"
#include "database/current_connection.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/error_report.h"
#include "database/record_lists.h"
#include "bridge/arg_readers.h"
#include "database/field_values.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"

namespace kelvo::database {
namespace {

// Most keys a seek takes from a list.
constexpr int kMaxSeekKeys = 10;

// The record array, reused from call to call so that a walk does not reallocate.
VariantArray& recordBuffer() {
    static VariantArray buffer;
    return buffer;
}

// Returns the record the connection read, or reports why there is none.
void answerRecord(bool read) {
    if (read) {
        returnRecord(recordBuffer());
    } else {
        reportError();
    }
}

// The first text among the arguments from the cursor on; the cursor moves past it.
bool findText(Cursor& cursor, std::wstring& text) {
    for (Cursor at = cursor; at != nullptr; at = at->rbnext) {
        if (at->restype != RTSTR) continue;
        cursor = at;
        return readText(cursor, text);
    }
    return false;
}

int tableHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    if (args.atEnd()) return kTooFewArgs;
    std::wstring table, index;
    if (!findText(args.cursor(), table)) return kWrongArgType;
    findText(args.cursor(), index);
    if (connection->openTable(table, index)) {
        acedRetStr(connection->currentTableName().c_str());
    } else {
        reportError();
    }
    return kArgOk;
}

int closeTableHandler() {
    HandlerArgs args;
    if (CDBConnection* connection = currentConnection()) connection->closeTable();
    return kArgOk;
}

int closeallTablesHandler() {
    HandlerArgs args;
    if (CDBConnection* connection = currentConnection()) connection->closeAllTables();
    return kArgOk;
}

int topHandler() {
    HandlerArgs args;
    if (CDBConnection* connection = currentConnection()) {
        answerRecord(connection->moveFirst(recordBuffer()));
    }
    return kArgOk;
}

int bottomHandler() {
    HandlerArgs args;
    if (CDBConnection* connection = currentConnection()) {
        answerRecord(connection->moveLast(recordBuffer()));
    }
    return kArgOk;
}

int skipHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    std::int32_t count = 1;
    if (!args.atEnd() && !readInteger(args.cursor(), count)) return kWrongArgType;
    answerRecord(connection->skip(count, recordBuffer()));
    return kArgOk;
}

// The keys of a list argument: up to ten elements. False when one does not convert.
bool readKeyList(Cursor& cursor, VariantArray& keys) {
    readListBegin(cursor);
    for (; cursor != nullptr && cursor->restype != RTLE; cursor = cursor->rbnext) {
        if (static_cast<int>(keys.size()) == kMaxSeekKeys) break;
        COleVariant key;
        if (!fieldValueFromLisp(*cursor, key)) return false;
        keys.push_back(std::move(key));
    }
    return true;
}

int seekHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    const resbuf* key = args.cursor();
    if (key == nullptr) return kTooFewArgs;
    VariantArray keys;
    switch (key->restype) {
        case RTNIL:
            return kArgOk;
        case RT3DPOINT:
        case RTPOINT:
            for (int i = 0; i < (key->restype == RTPOINT ? 2 : 3); ++i) {
                keys.emplace_back(key->resval.rpoint[i]);
            }
            break;
        case RTLB:
            if (!readKeyList(args.cursor(), keys)) return kWrongArgType;
            break;
        default:
            keys.emplace_back();
            if (!fieldValueFromLisp(*key, keys.back())) return kWrongArgType;
    }
    answerRecord(connection->seek(keys, recordBuffer()));
    return kArgOk;
}

int getrecHandler() {
    HandlerArgs args;
    if (CDBConnection* connection = currentConnection()) {
        answerRecord(connection->readRecord(recordBuffer()));
    }
    return kArgOk;
}

int countHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    long count = 0;
    if (connection->recordCount(count)) {
        returnInteger(count);
    } else {
        reportError();
    }
    return kArgOk;
}

}  // namespace

int kvTable() {
    return runDatabaseCall(tableHandler);
}
int kvCloseTable() {
    return runDatabaseCall(closeTableHandler);
}
int kvCloseallTables() {
    return runDatabaseCall(closeallTablesHandler);
}
int kvTop() {
    return runDatabaseCall(topHandler);
}
int kvBottom() {
    return runDatabaseCall(bottomHandler);
}
int kvSkip() {
    return runDatabaseCall(skipHandler);
}
int kvSeek() {
    return runDatabaseCall(seekHandler);
}
int kvGetrec() {
    return runDatabaseCall(getrecHandler);
}
int kvCount() {
    return runDatabaseCall(countHandler);
}

}  // namespace kelvo::database
