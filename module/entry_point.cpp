// The module's exported entry points, the only functions of its own that KelvoBrx15.arx
// exports. Each is thin; the work is in module/lifecycle.cpp.
#include "module/lifecycle.h"

#define KELVO_EXPORT extern "C" __attribute__((visibility("default")))

// The host's messages: start, stop, drawing opened, drawing closed (see lifecycle.h).
KELVO_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
    return kelvo::dispatchAppMessage(msg, pkt);
}

// The version functions the host's loader asks of every module before it starts it.
// They carry no logic of the module:
//   int acrxGetApiVersion()        the programming interface release the module was
//                                  built against: 15.
//   void* odrxCreateModuleObject() the module object the loader keeps for the module; a
//                                  static token, never null and never dereferenced.
//   int odrxGetAPIVersion()        the same release number, 15.
namespace {
constexpr int kApiVersion = 15;
int moduleToken = 0;
}  // namespace

KELVO_EXPORT int acrxGetApiVersion() {
    return kApiVersion;
}

KELVO_EXPORT void* odrxCreateModuleObject() {
    return &moduleToken;
}

KELVO_EXPORT int odrxGetAPIVersion() {
    return kApiVersion;
}
