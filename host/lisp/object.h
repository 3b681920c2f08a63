// The heap objects behind lisp::Value. Private to the interpreter: the host sees only
// Value. Each object records its Type; the concrete struct is chosen by that tag.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "value.h"

namespace lisp {

struct Object {
    explicit Object(Type t) : type(t) {}
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    const Type type;
};

struct IntObj : Object {
    explicit IntObj(std::int32_t v) : Object(Type::Int), value(v) {}
    std::int32_t value;
};

struct RealObj : Object {
    explicit RealObj(double v) : Object(Type::Real), value(v) {}
    double value;
};

struct StrObj : Object {
    explicit StrObj(std::wstring v) : Object(Type::Str), value(std::move(v)) {}
    std::wstring value;
};

// Interned for the life of the process; the name is upper case. The symbol with the
// empty name is the "silent" value of (princ).
struct SymObj : Object {
    explicit SymObj(std::wstring n) : Object(Type::Sym), name(std::move(n)) {}
    std::wstring name;
};

// The destructor unlinks the cdr chain iteratively, so a long list never recurses.
struct ConsObj : Object {
    ConsObj(Value a, Value d) : Object(Type::Cons), car(std::move(a)), cdr(std::move(d)) {}
    ~ConsObj() override;
    Value car;
    Value cdr;
};

// A special form is a Subr whose `special` is set: the evaluator dispatches on it and
// never calls `fn`.
struct SubrObj : Object {
    SubrObj(std::wstring n, NativeFn f, bool ext)
        : Object(Type::Subr), name(std::move(n)), fn(std::move(f)), external(ext) {}
    std::wstring name;
    NativeFn fn;
    bool external;
    int special = -1;
};

// A function made by defun or lambda: parameters, locals after "/", and the body forms.
struct UsubrObj : Object {
    UsubrObj() : Object(Type::Usubr) {}
    std::wstring name;   // empty for a lambda
    std::vector<Value> params;
    std::vector<Value> locals;
    Value body;          // list of forms
};

struct HandleObj : Object {
    HandleObj(Type t, std::int64_t i) : Object(t), id(i) {}
    std::int64_t id;
};

struct FileCloser {
    void operator()(std::FILE* f) const { if (f) std::fclose(f); }
};

// An open (or closed) file of open/close. `mode` is 'r', 'w' or 'a'.
struct FileObj : Object {
    FileObj(std::wstring n, std::FILE* f, wchar_t m)
        : Object(Type::File), name(std::move(n)), file(f), mode(m) {}
    std::wstring name;
    std::unique_ptr<std::FILE, FileCloser> file;
    wchar_t mode;
};

struct CatchErrorObj : Object {
    explicit CatchErrorObj(std::wstring m) : Object(Type::CatchError), message(std::move(m)) {}
    std::wstring message;
};

// Typed access to the object of a value whose type has been checked.
template <class T>
T& as(const Value& v) {
    return static_cast<T&>(*v.object());
}

}  // namespace lisp
