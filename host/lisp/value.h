// LISP values of the host's interpreter. A Value is a cheap, reference-counted handle;
// nil is the empty handle. Lists are built from conses and are never circular (the
// language has no destructive list operations), so reference counting frees everything.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lisp {

class Interp;
class Value;

// A native function: receives the evaluated arguments, returns the result or throws
// lisp::Error.
using NativeFn = std::function<Value(Interp&, std::vector<Value>& args)>;

enum class Type {
    Nil,
    Int,       // 32-bit signed, wraps on overflow
    Real,      // double
    Str,       // wide string (one wchar_t per character)
    Sym,       // interned, case-insensitive; T is the symbol T
    Cons,
    Subr,      // built-in function (type SUBR) or external function (type EXRXSUBR)
    Usubr,     // function defined with defun or lambda
    Ename,     // entity name
    Pickset,   // selection-set name
    File,      // open file handle
    CatchError // the error object of vl-catch-all-apply
};

struct Object;

class Value {
public:
    Value() = default;   // nil

    static Value nil() { return {}; }
    static Value t();
    static Value integer(std::int32_t v);
    static Value real(double v);
    static Value string(std::wstring v);
    static Value symbol(std::wstring_view name);   // interned; the name is upper-cased
    static Value cons(Value car, Value cdr);
    static Value list(std::initializer_list<Value> items);
    static Value list(const std::vector<Value>& items, Value tail = {});
    static Value ename(std::int64_t id);
    static Value pickset(std::int64_t id);
    static Value subr(std::wstring name, NativeFn fn, bool external = false);
    static Value catchError(std::wstring message);
    // The value of (princ) with no argument: a symbol with an empty name that prints as
    // nothing. A host echoing results skips it (see isSilent).
    static Value silent();

    Type type() const;
    bool isNil() const { return !obj_; }
    bool isT() const;           // the symbol T
    bool isSilent() const;      // the value of (princ): print nothing when echoing
    bool isCons() const { return type() == Type::Cons; }
    bool isList() const { return isNil() || isCons(); }
    bool isNumber() const { return type() == Type::Int || type() == Type::Real; }

    std::int32_t asInt() const;            // Int only
    double asReal() const;                 // Int or Real, widened
    const std::wstring& asString() const;  // Str
    const std::wstring& symbolName() const;  // Sym: upper-case name
    std::int64_t handleId() const;         // Ename or Pickset
    const std::wstring& subrName() const;  // Subr
    bool isExternal() const;               // Subr defined by a module
    const NativeFn& native() const;        // Subr
    const std::wstring& errorMessage() const;  // CatchError

    Value car() const;   // nil for nil
    Value cdr() const;   // nil for nil
    // Elements of a proper list (a dotted tail is left out).
    std::vector<Value> toVector() const;

    // Identity (eq): same object, or equal numbers/symbols for atoms that are not boxed.
    bool eq(const Value& other) const;

    const std::shared_ptr<Object>& object() const { return obj_; }
    explicit Value(std::shared_ptr<Object> obj) : obj_(std::move(obj)) {}

private:
    std::shared_ptr<Object> obj_;
};

}  // namespace lisp
