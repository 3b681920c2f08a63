// kv_replace, kv_append and kv_delete: writes to the current table, each under the
// lock-conflict retry of the connection.
#include "adslib.h"
#include "database/current_connection.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/error_report.h"
#include "database/record_lists.h"
#include "bridge/handler_guard.h"
#include "bridge/value_list.h"

namespace kelvo::database {
namespace {

bool isNumber(const resbuf* node) {
    return node != nullptr &&
           (node->restype == RTSHORT || node->restype == RTLONG || node->restype == RTREAL);
}

// Writes the record list at the cursor with `write`; answers the record read back.
template <typename Write>
int writeRecord(const resbuf* list, Write&& write) {
    if (list == nullptr) return kWrongArgType;
    VariantArray pairs, written;
    // A pair without a text name, or a value that does not convert: nothing is written.
    if (!recordFromLisp(list, pairs)) return kWrongArgType;
    if (write(pairs, written)) {
        returnRecord(written);
    } else {
        reportError();
    }
    return kArgOk;
}

int replaceHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    return writeRecord(args.cursor(), [&](const VariantArray& pairs, VariantArray& written) {
        return connection->replace(pairs, written);
    });
}

int appendHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    const bool flagged = isNumber(args.cursor());
    if (flagged) args.cursor() = args.cursor()->rbnext;
    return writeRecord(args.cursor(), [&](const VariantArray& pairs, VariantArray& written) {
        return connection->append(flagged, pairs, written);
    });
}

int deleteHandler() {
    HandlerArgs args;
    CDBConnection* connection = currentConnection();
    if (connection == nullptr) return kArgOk;
    if (connection->deleteRecord()) {
        acedRetT();
    } else {
        reportError();
    }
    return kArgOk;
}

}  // namespace

int kvReplace() {
    return runDatabaseCall(replaceHandler);
}
int kvAppend() {
    return runDatabaseCall(appendHandler);
}
int kvDelete() {
    return runDatabaseCall(deleteHandler);
}

}  // namespace kelvo::database
