// The handler guard and the two callback paths (general and database table).
#include "bridge/handler_guard.h"

#include "adslib.h"
#include "afx.h"

namespace kelvo {
namespace {

CallGuard databaseCallGuard = nullptr;

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

void setDatabaseCallGuard(CallGuard guard) {
    databaseCallGuard = guard;
}

int runDatabaseCall(InnerHandler handler) {
    if (databaseCallGuard != nullptr) databaseCallGuard();
    return runGuarded(handler);
}

}  // namespace kelvo
