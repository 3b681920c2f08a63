// The one path by which natives check their arguments, so every argument error reads
// the same: "too few arguments", "too many arguments", "bad argument type: ...".
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "interp.h"

namespace lisp {

inline constexpr std::size_t kAnyCount = std::numeric_limits<std::size_t>::max();

// Throws "bad argument type: <pred> <value>" (numberp and fixnump add a colon, as
// AutoLISP prints them).
[[noreturn]] void badArgType(std::wstring_view predicate, const Value& v);

class Args {
public:
    // Checks the count first: between `min` and `max` arguments.
    Args(std::vector<Value>& args, std::size_t min, std::size_t max);

    std::size_t size() const { return args_.size(); }
    bool has(std::size_t i) const { return i < args_.size(); }
    const Value& operator[](std::size_t i) const { return args_[i]; }
    std::vector<Value>& all() { return args_; }

    std::int32_t integer(std::size_t i) const;        // fixnump
    double number(std::size_t i) const;               // numberp
    const std::wstring& string(std::size_t i) const;  // stringp
    const Value& list(std::size_t i) const;           // listp
    const Value& symbol(std::size_t i) const;         // symbolp
    const Value& file(std::size_t i) const;           // streamp
    // A point: a list of 2 or 3 numbers, widened to reals.
    std::vector<double> point(std::size_t i) const;

private:
    std::vector<Value>& args_;
};

using BuiltinFn = Value (*)(Interp&, std::vector<Value>&);

// One entry of a built-in library table.
struct Builtin {
    const wchar_t* name;
    BuiltinFn fn;
};

// Defines every function of a library table in the interpreter.
void openLibrary(Interp& in, std::span<const Builtin> table);

// T or nil.
inline Value boolValue(bool b) { return b ? Value::t() : Value(); }

}  // namespace lisp
