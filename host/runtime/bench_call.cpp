// Raw external calls for the benchmarks: value lists in, value lists out, no LISP values
// on either side of the callback.

#include "runtime/bench_call.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "runtime/host_impl.h"

namespace kelvo::host {
namespace {

Host::Impl& state() { return Host::instance().impl(); }

std::size_t countNodes(const resbuf* list) {
    std::size_t n = 0;
    for (; list; list = list->rbnext) ++n;
    return n;
}

// The kind of a plain result that an acedRet... call left in the frame.
short kindOfValue(const lisp::Value& v) {
    switch (v.type()) {
        case lisp::Type::Nil: return RTNIL;
        case lisp::Type::Int: return RTLONG;
        case lisp::Type::Real: return RTREAL;
        case lisp::Type::Str: return RTSTR;
        case lisp::Type::Sym: return RTT;
        case lisp::Type::Ename: return RTENAME;
        case lisp::Type::Pickset: return RTPICKS;
        default: return RTLB;
    }
}

resbuf* copyNode(const resbuf* from) {
    resbuf* to = acutNewRb(from->restype);
    if (!to) return nullptr;
    to->resval = from->resval;
    switch (rbKindOf(from->restype)) {
        case RbKind::String:
            to->resval.rstring = nullptr;
            if (from->resval.rstring) acutNewString(from->resval.rstring, to->resval.rstring);
            break;
        case RbKind::Binary: {
            const short n = from->resval.rbinary.clen;
            to->resval.rbinary.buf = nullptr;
            if (n > 0 && from->resval.rbinary.buf) {
                to->resval.rbinary.buf = static_cast<char*>(std::malloc(n));
                if (to->resval.rbinary.buf) std::memcpy(to->resval.rbinary.buf, from->resval.rbinary.buf, n);
            }
            break;
        }
        default: break;
    }
    return to;
}

// Keeps the frame on the host's call stack for one raw call.
class RawScope {
public:
    explicit RawScope(CallFrame& frame) { state().calls.push_back(&frame); }
    ~RawScope() { state().calls.pop_back(); }
    RawScope(const RawScope&) = delete;
    RawScope& operator=(const RawScope&) = delete;
};

}  // namespace

resbuf* copyValueList(const resbuf* list) {
    resbuf* head = nullptr;
    resbuf** tail = &head;
    for (; list; list = list->rbnext) {
        resbuf* node = copyNode(list);
        if (!node) {
            acutRelRb(head);
            return nullptr;
        }
        *tail = node;
        tail = &node->rbnext;
    }
    return head;
}

AcedFunction findExternalFunction(std::wstring_view lispName) {
    Document* doc = state().currentDocument();
    if (!doc) return nullptr;
    for (auto& [key, entry] : doc->functions())
        if (entry.name == lispName) return entry.callback;
    return nullptr;
}

RawCall::~RawCall() { acutRelRb(outcome_.chain); }

const RawOutcome& RawCall::operator()(AcedFunction callback, const resbuf* args) {
    acutRelRb(outcome_.chain);
    outcome_ = RawOutcome{};
    RawCapture capture{keep_, &outcome_};
    CallFrame frame;
    frame.rawArgs = args;
    frame.raw = &capture;
    {
        RawScope scope(frame);
        outcome_.rc = callback();
    }
    if (outcome_.kind != RTLB) outcome_.kind = kindOfValue(frame.result);
    return outcome_;
}

int captureRawList(RawCapture& capture, const resbuf* list) {
    RawOutcome& out = *capture.outcome;
    acutRelRb(out.chain);
    out.chain = nullptr;
    out.kind = RTLB;
    out.nodes = countNodes(list);
    if (capture.keep) out.chain = copyValueList(list);
    return RTNORM;
}

void dropRawList(RawCapture& capture) {
    RawOutcome& out = *capture.outcome;
    acutRelRb(out.chain);
    out.chain = nullptr;
    out.kind = RTNIL;
    out.nodes = 0;
}

}  // namespace kelvo::host
