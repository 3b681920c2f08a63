// The state behind an Interp, shared by the evaluator and the built-in libraries.
// Variables are dynamically scoped as in AutoLISP: a function call saves the values of
// its parameters and locals, binds them, and restores them when it returns or throws
// (shallow binding: one value cell per symbol per interpreter).
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "interp.h"
#include "object.h"

namespace lisp {

// What initget set up for the next get* call.
struct InputControl {
    int bits = 0;
    std::vector<std::wstring> keywords;
};

struct Interp::Impl {
    explicit Impl(InterpIO ioIn) : io(std::move(ioIn)) {}

    // The value of a symbol; nil when unbound.
    Value lookup(const Value& sym) const {
        auto it = globals.find(sym.object().get());
        return it == globals.end() ? Value() : it->second;
    }
    // Sets a symbol's value; nil unbinds it.
    void assign(const Value& sym, Value v) {
        if (v.isNil()) globals.erase(sym.object().get());
        else globals[sym.object().get()] = std::move(v);
    }

    InterpIO io;
    std::unordered_map<const Object*, Value> globals;
    int depth = 0;
    InputControl input;
};

// Saves a symbol's value and restores it when the scope ends (a function's parameters
// and locals).
class DynamicBinding {
public:
    explicit DynamicBinding(Interp::Impl& impl) : impl_(impl) {}
    ~DynamicBinding() {
        for (auto it = saved_.rbegin(); it != saved_.rend(); ++it) impl_.assign(it->first, it->second);
    }
    DynamicBinding(const DynamicBinding&) = delete;
    DynamicBinding& operator=(const DynamicBinding&) = delete;
    void bind(const Value& sym, Value v) {
        saved_.emplace_back(sym, impl_.lookup(sym));
        impl_.assign(sym, std::move(v));
    }

private:
    Interp::Impl& impl_;
    std::vector<std::pair<Value, Value>> saved_;
};

// The function a value names: a Subr or Usubr as is, a symbol's function value, or a
// (LAMBDA args body...) list. Throws "no function definition" / "bad function".
Value resolveFunction(Interp& in, const Value& f);
// Calls an already resolved function with evaluated arguments.
Value callFunction(Interp& in, const Value& fn, std::vector<Value>& args);
// Builds the Usubr of (lambda params body...) or a defun.
Value makeUsubr(std::wstring name, const Value& params, const Value& body);

}  // namespace lisp

namespace lisp {

// equal: same structure, strings by content, numbers within `fuzz` (1 and 1.0 are equal).
bool lispEqual(const Value& a, const Value& b, double fuzz = 0.0);

}  // namespace lisp

namespace lisp {

// Writes text to an open output file (UTF-8); throws when the file is not open for output.
void writeToFile(const Value& file, std::wstring_view text);

}  // namespace lisp
