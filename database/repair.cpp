// The call to the product's repair function.
#include "database/repair.h"

#include "adslib.h"
#include "bridge/value_list.h"

namespace kelvo::database {

bool invokeRepair(const std::wstring& path) {
    const ValueList call(acutBuildList(RTSTR, L"compactDatabase", RTSTR, path.c_str(), RTNIL,
                                       RTSTR, L"Repair", 0));
    if (!call) return false;
    resbuf* answer = nullptr;
    const int status = acedInvoke(call.get(), &answer);
    const ValueList result(answer);
    if (status != RTNORM || result == nullptr) return false;
    return !(result->restype == RTNIL && result->rbnext == nullptr);
}

}  // namespace kelvo::database
