// kv_lastError, kv_resetLastError and kv_compact.
#include <unistd.h>

#include <climits>

#include "adslib.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/error_report.h"
#include "host_ui.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"
#include "utf8.h"

namespace kelvo::database {
namespace {

// The computer-name buffer of the box, terminator included: a name of the full 15
// characters does not fit, and then no box is shown.
constexpr std::size_t kComputerNameSize = 15;

bool computerName(std::wstring& name) {
    char buffer[HOST_NAME_MAX + 1] = {};
    if (::gethostname(buffer, sizeof buffer - 1) != 0) return false;
    name = fromUtf8(buffer);
    return name.size() + 1 <= kComputerNameSize;
}

void showCompactionBox(const std::wstring& message) {
    std::wstring name;
    if (!computerName(name)) return;
    const std::wstring text = message + L"\n(Your computer name is " + name + L".)";
    hostMessageBox(nullptr, text.c_str(), L"Database Error", MB_ICONERROR);
}

int lastErrorHandler() {
    HandlerArgs args;
    acedRetStr(lastErrorText().c_str());
    return kArgOk;
}

int resetLastErrorHandler() {
    HandlerArgs args;
    resetLastErrorText();
    acedRetStr(lastErrorText().c_str());
    return kArgOk;
}

int compactHandler() {
    HandlerArgs args;
    std::wstring source, destination;
    bool showBox = false;
    if (!readText(args.cursor(), source) || !readText(args.cursor(), destination)) {
        return kWrongArgType;
    }
    readBoolean(args.cursor(), showBox);
    CDBConnection temporary;
    if (temporary.compact(source, destination)) {
        acedRetStr(L"OK");
        return kArgOk;
    }
    long code = 0;
    std::wstring message;
    temporary.lastError(code, message);
    if (temporary.hasError()) recordAndPrintError(code, message);
    if (showBox) showCompactionBox(message);
    returnInteger(code);
    return kArgOk;
}

}  // namespace

int kvLastError() {
    return runDatabaseCall(lastErrorHandler);
}
int kvResetLastError() {
    return runDatabaseCall(resetLastErrorHandler);
}
int kvCompact() {
    return runDatabaseCall(compactHandler);
}

}  // namespace kelvo::database
