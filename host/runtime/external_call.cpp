// External functions: their definition in a document, the call protocol (arguments out
// as a value list, the callback, the result back) and acedInvoke in the other direction.

#include "adslib.h"
#include "afx.h"
#include "runtime/host_impl.h"
#include "utf8.h"
#include "runtime/value_resbuf.h"
#include "runtime/bench_call.h"

namespace kelvo::host {
namespace {

using lisp::Value;

Host::Impl& state() { return Host::instance().impl(); }

CallFrame* currentCall() {
    auto& calls = state().calls;
    return calls.empty() ? nullptr : calls.back();
}

int activeModuleId() {
    LoadedModule* m = state().activeModule;
    return m ? m->id : 0;
}

LoadedModule* findModule(int id) {
    for (auto& m : state().modules)
        if (m->id == id) return m.get();
    return nullptr;
}

// Keeps the frame on the call stack and the calling module active for one call.
class CallScope {
public:
    CallScope(CallFrame& frame, LoadedModule* module)
        : savedModule_(state().activeModule) {
        state().calls.push_back(&frame);
        if (module) state().activeModule = module;
    }
    ~CallScope() {
        state().calls.pop_back();
        state().activeModule = savedModule_;
    }
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

private:
    LoadedModule* savedModule_;
};

// Runs a callback; an exception that leaves it becomes a LISP error.
int runCallback(AcedFunction callback, const std::wstring& name) {
    try {
        return callback();
    } catch (CException* e) {
        std::wstring message = e->errorMessage();
        e->Delete();
        throw lisp::Error(name + L": exception in the external function" +
                          (message.empty() ? L"" : L": " + message));
    } catch (const lisp::Error&) {
        throw;
    } catch (const std::exception& e) {
        throw lisp::Error(name + L": exception in the external function: " + fromUtf8(e.what()));
    } catch (...) {
        throw lisp::Error(name + L": exception in the external function");
    }
}

int setResult(Value v) {
    CallFrame* frame = currentCall();
    if (!frame) return RTERROR;
    if (frame->raw) dropRawList(*frame->raw);
    frame->result = std::move(v);
    return RTNORM;
}

}  // namespace

Value Host::Impl::callExternal(int documentId, int moduleId, int code, const std::wstring& name,
                               std::vector<Value>& args) {
    Document* doc = findDocument(documentId);
    AcedFunction callback = nullptr;
    if (doc) {
        auto it = doc->functions().find({moduleId, code});
        if (it != doc->functions().end()) callback = it->second.callback;
    }
    if (!callback) throw lisp::Error(name + L": the module that defined it is not loaded");
    CallFrame frame;
    frame.args = args;
    frame.code = code;
    CallScope scope(frame, findModule(moduleId));
    runCallback(callback, name);
    return frame.result;
}

CallOutcome runExternalCall(AcedFunction callback, const resbuf* args) {
    CallOutcome outcome;
    CallFrame frame;
    frame.args = chainToValues(args);
    Host& host = Host::instance();
    auto savedOutput = std::move(state().output);
    host.setOutput([&](std::wstring_view text) { outcome.printed += text; });
    {
        CallScope scope(frame, nullptr);
        try {
            outcome.rc = runCallback(callback, L"test");
        } catch (...) {
            host.setOutput(std::move(savedOutput));
            throw;
        }
    }
    host.setOutput(std::move(savedOutput));
    outcome.result = lisp::Interp::prin1String(frame.result);
    return outcome;
}

}  // namespace kelvo::host

using namespace kelvo::host;

int acedDefun(const ACHAR* name, int code) {
    Document* doc = state().currentDocument();
    if (!doc || !name || !*name) return RTERROR;
    int moduleId = activeModuleId();
    int docId = doc->id();
    std::wstring fname = name;
    doc->functions()[{moduleId, code}].name = fname;
    doc->interp().defineSubr(
        fname,
        [docId, moduleId, code, fname](lisp::Interp&, std::vector<Value>& args) {
            return state().callExternal(docId, moduleId, code, fname, args);
        },
        /*external=*/true);
    return RTNORM;
}

int acedUndef(const ACHAR* name, int code) {
    Document* doc = state().currentDocument();
    if (!doc || !name) return RTERROR;
    doc->functions().erase({activeModuleId(), code});
    doc->interp().setGlobal(name, Value());
    return RTNORM;
}

int acedRegFunc(AcedFunction callback, int code) {
    Document* doc = state().currentDocument();
    if (!doc) return RTERROR;
    doc->functions()[{activeModuleId(), code}].callback = callback;
    return RTNORM;
}

int acedGetFunCode() {
    CallFrame* frame = currentCall();
    return frame ? frame->code : RTERROR;
}

resbuf* acedGetArgs() {
    CallFrame* frame = currentCall();
    if (frame && frame->raw) return copyValueList(frame->rawArgs);
    return frame ? valuesToChain(frame->args) : nullptr;
}

int acedRetNil() { return setResult(Value()); }
int acedRetT() { return setResult(Value::t()); }
int acedRetVoid() { return setResult(Value()); }
int acedRetInt(int value) { return setResult(Value::integer(value)); }
int acedRetReal(ads_real value) { return setResult(Value::real(value)); }
int acedRetStr(const ACHAR* value) { return setResult(Value::string(value ? value : L"")); }
int acedRetPoint(const ads_point p) {
    return setResult(Value::list({Value::real(p[0]), Value::real(p[1]), Value::real(p[2])}));
}
int acedRetName(const ads_name value, int type) {
    return setResult(type == RTPICKS ? Value::pickset(value[0]) : Value::ename(value[0]));
}
int acedRetVal(const resbuf* value) {
    CallFrame* frame = currentCall();
    if (frame && frame->raw) return captureRawList(*frame->raw, value);
    return setResult(chainToValue(value));
}
int acedRetList(const resbuf* list) {
    CallFrame* frame = currentCall();
    if (frame && frame->raw) return captureRawList(*frame->raw, list);
    return setResult(chainToList(list));
}

int acedInvoke(const resbuf* args, resbuf** result) {
    if (result) *result = nullptr;
    if (!args || args->restype != RTSTR || !args->resval.rstring) return RTERROR;
    try {
        lisp::Interp& interp = Host::instance().interp();
        Value function = Value::symbol(args->resval.rstring);
        Value value = interp.apply(function, chainToValues(args->rbnext));
        if (result) *result = valueToChain(value);
        return RTNORM;
    } catch (const lisp::Error& e) {
        Host::instance().write(L"\n; error: " + e.message() + L"\n");
        return RTERROR;
    }
}

int acedTextScr() { return RTNORM; }
int acedGraphScr() { return RTNORM; }
