// For the benchmarks: a module's external function called from C++ exactly at the
// callback boundary. The argument list goes in as the value list given (acedGetArgs hands
// the callback a copy of it, as the host does) and the result stays the value list the
// callback returned, never converted to LISP, so that interpreter time is left out.
// This header is for the host program, tests and benchmarks; modules never see it.
#pragma once

#include <cstddef>
#include <string_view>

#include "adslib.h"

namespace kelvo::host {

// What one raw call returned.
struct RawOutcome {
    int rc = 0;               // what the callback returned (RSRSLT, RSERR)
    // The result's kind: RTNIL, RTT, RTSTR, RTLONG, RTREAL ... as set by an acedRet...
    // call, or RTLB when acedRetList (or acedRetVal) was given a value list.
    short kind = RTNIL;
    std::size_t nodes = 0;    // nodes of the value list returned (0 for a plain value)
    resbuf* chain = nullptr;  // a copy of that list when kept (see RawCall), else null
};

// The callback registered for the external function `lispName` in the current document;
// null when there is none.
KELVO_HOST_API AcedFunction findExternalFunction(std::wstring_view lispName);

// Runs external calls with raw value lists. When `keepResults` is set, each returned
// value list is copied into RawOutcome::chain (released by the next call or by the
// destructor); otherwise it is only walked and counted, as cheaply as a list can be
// consumed. What the callback prints still goes to the host's output.
class KELVO_HOST_API RawCall {
public:
    explicit RawCall(bool keepResults = false) : keep_(keepResults) {}
    ~RawCall();
    RawCall(const RawCall&) = delete;
    RawCall& operator=(const RawCall&) = delete;

    const RawOutcome& operator()(AcedFunction callback, const resbuf* args);
    const RawOutcome& last() const { return outcome_; }

private:
    bool keep_;
    RawOutcome outcome_;
};

// A copy of a value list, strings and binaries included; the caller releases it.
KELVO_HOST_API resbuf* copyValueList(const resbuf* list);

// --- used by the host's own call protocol (external_call.cpp) ---------------------------
// Where a raw call keeps what its callback returns; null outside a raw call.
struct RawCapture {
    bool keep = false;
    RawOutcome* outcome = nullptr;
};
// acedRetList / acedRetVal inside a raw call: records (or copies) the list.
int captureRawList(RawCapture& capture, const resbuf* list);
// The other acedRet... calls inside a raw call: a plain value replaces any list kept;
// its kind is read from the frame when the call ends.
void dropRawList(RawCapture& capture);

}  // namespace kelvo::host
