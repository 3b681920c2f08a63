// The error report and the last-error text.
#include "database/error_report.h"

#include "adslib.h"
#include "dao_errors.h"
#include "database/current_connection.h"
#include "database/db_connection.h"

namespace kelvo::database {
namespace {

std::wstring& lastError() {
    static std::wstring text;
    return text;
}

void printError(long code, const std::wstring& message) {
    if (code == dao::kNoCurrentRecord) return;
    if (code == dao::kDiskOrNetwork) {
        // Two texts, printed one after the other as they are: the second starts on the
        // line the first ends on.
        acutPrintf(L"%s",
                   L"\nA disk or network error occurred while trying to access the database.");
        acutPrintf(L"%s",
                   L"Try the command again. If it continues to not work, try restarting "
                   L"AutoCAD. If that does not fix the error, try restarting your computer.");
        return;
    }
    acutPrintf(L"\nKelvo Error: %s", message.c_str());
}

}  // namespace

void recordAndPrintError(long code, const std::wstring& message) {
    lastError() = L"(" + std::to_wstring(code) + L") " + message;
    printError(code, message);
}

void reportError(const CDBConnection* connection) {
    if (connection == nullptr || !connection->hasError()) return;
    long code = 0;
    std::wstring message;
    connection->lastError(code, message);
    recordAndPrintError(code, message);
}

void reportError() {
    reportError(currentConnection());
}

const std::wstring& lastErrorText() {
    return lastError();
}

void resetLastErrorText() {
    lastError().clear();
}

}  // namespace kelvo::database
