// Functions registered but not built yet.
#include "module/not_built.h"

#include "adslib.h"
#include "module/function_tables.h"
#include "bridge/handler_guard.h"
#include "bridge/value_list.h"

namespace kelvo {
namespace {

int notBuiltHandler() {
    HandlerArgs args;
    const ACHAR* name = functionNameForCode(acedGetFunCode());
    acutPrintf(L"\n%s: not available in this build", name != nullptr ? name : L"?");
    return kArgOk;
}

}  // namespace

int notBuiltDatabaseFunction() {
    return runDatabaseCall(notBuiltHandler);
}

int notBuiltGeneralFunction() {
    return runGuarded(notBuiltHandler);
}

}  // namespace kelvo
