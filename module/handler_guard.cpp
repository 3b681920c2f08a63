// The handler guard and the two callback paths (general and database).
#include "module/handler_guard.h"

#include "adslib.h"
#include "afx.h"
#include "database/call_guard.h"

namespace kelvo {
namespace {

void printMessage(const ACHAR* message) {
    acutPrintf(L"%s", message);
}

}  // namespace

int reportStatus(int status) {
    switch (status) {
        case kTooFewArgs:
            printMessage(L"\nToo few arguments passed.\n");
            return RSERR;
        case kWrongArgType:
            printMessage(L"\nWrong type of arguments passed.\n");
            return RSERR;
        case kBadArgData:
            printMessage(L"\nBad data passed .\n");
            return RSERR;
        case kWantTextScreen:
            acedTextScr();
            printMessage(L"");
            return RSERR;
        default:
            return RSRSLT;
    }
}

int runGuarded(InnerHandler handler) {
    try {
        return reportStatus(handler());
    } catch (CException*) {
        printMessage(L"\nGeneral Exception");
        throw;
    } catch (...) {
        printMessage(L"\nError");
        throw;
    }
}

int runDatabaseCall(InnerHandler handler) {
    database::checkCurrentDocument();
    return runGuarded(handler);
}

}  // namespace kelvo
