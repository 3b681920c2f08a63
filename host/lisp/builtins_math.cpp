// Numbers: arithmetic (32-bit integers wrap, mixing in a real gives a real), comparison,
// bitwise operations and the transcendental functions.
#include <cmath>
#include <limits>
#include <utility>

#include "args.h"
#include "library.h"
#include "printer.h"

namespace lisp {

namespace {

std::int32_t wrap(std::int64_t v) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(v)); }

enum class Op { Add, Sub, Mul, Div };

Value intOp(Op op, std::int32_t x, std::int32_t y) {
    switch (op) {
    case Op::Add: return Value::integer(wrap(std::int64_t{x} + y));
    case Op::Sub: return Value::integer(wrap(std::int64_t{x} - y));
    case Op::Mul: return Value::integer(wrap(std::int64_t{x} * y));
    case Op::Div:
        if (y == 0) throw Error(L"divide by zero");
        return Value::integer(wrap(std::int64_t{x} / y));
    }
    return {};
}

Value realOp(Op op, double x, double y) {
    switch (op) {
    case Op::Add: return Value::real(x + y);
    case Op::Sub: return Value::real(x - y);
    case Op::Mul: return Value::real(x * y);
    case Op::Div:
        if (y == 0.0) throw Error(L"divide by zero");
        return Value::real(x / y);
    }
    return {};
}

Value combine(Op op, const Value& x, const Value& y) {
    if (x.type() == Type::Int && y.type() == Type::Int) return intOp(op, x.asInt(), y.asInt());
    return realOp(op, x.asReal(), y.asReal());
}

// Folds the arguments left to right; `identity` is the answer with no arguments, and a
// single argument combines with `unary` first ((- 5) is 0 - 5).
Value arithmetic(std::vector<Value>& args, Op op, std::int32_t identity, bool unaryFromIdentity) {
    Args a(args, 0, kAnyCount);
    for (std::size_t i = 0; i < args.size(); ++i) a.number(i);
    if (args.empty()) return Value::integer(identity);
    if (args.size() == 1)
        return unaryFromIdentity ? combine(op, Value::integer(identity), args[0]) : args[0];
    Value acc = args[0];
    for (std::size_t i = 1; i < args.size(); ++i) acc = combine(op, acc, args[i]);
    return acc;
}

Value fnAdd(Interp&, std::vector<Value>& args) { return arithmetic(args, Op::Add, 0, false); }
Value fnSub(Interp&, std::vector<Value>& args) { return arithmetic(args, Op::Sub, 0, true); }
Value fnMul(Interp&, std::vector<Value>& args) { return arithmetic(args, Op::Mul, 1, false); }
Value fnDiv(Interp&, std::vector<Value>& args) { return arithmetic(args, Op::Div, 0, false); }

Value fnRem(Interp&, std::vector<Value>& args) {
    Args a(args, 1, kAnyCount);
    Value acc = Value::integer(0);
    for (std::size_t i = 0; i < args.size(); ++i) {
        a.number(i);
        if (i == 0) { acc = args[0]; continue; }
        const Value& y = args[i];
        if (y.asReal() == 0.0) throw Error(L"divide by zero");
        if (acc.type() == Type::Int && y.type() == Type::Int)
            acc = Value::integer(y.asInt() == -1 ? 0 : acc.asInt() % y.asInt());
        else
            acc = Value::real(std::fmod(acc.asReal(), y.asReal()));
    }
    return acc;
}

// -1, 0 or 1; numbers compare by value, strings by character codes.
int compare(const Value& x, const Value& y) {
    if (x.type() == Type::Str && y.type() == Type::Str) {
        int c = x.asString().compare(y.asString());
        return c < 0 ? -1 : c > 0;
    }
    if (!x.isNumber()) badArgType(L"numberp", x);
    if (!y.isNumber()) badArgType(L"numberp", y);
    if (x.type() == Type::Int && y.type() == Type::Int) return (x.asInt() > y.asInt()) - (x.asInt() < y.asInt());
    return (x.asReal() > y.asReal()) - (x.asReal() < y.asReal());
}

template <class Pred>
Value compareChain(std::vector<Value>& args, Pred pred) {
    Args a(args, 1, kAnyCount);
    bool ok = true;
    for (std::size_t i = 0; i + 1 < args.size(); ++i) ok = pred(compare(args[i], args[i + 1])) && ok;
    if (args.size() == 1 && !args[0].isNumber() && args[0].type() != Type::Str) badArgType(L"numberp", args[0]);
    return boolValue(ok);
}

// Whether = holds between two values: numbers by value, strings by characters, anything
// else (symbols, nil, lists, names, files) by identity. A number never equals a string.
bool sameValue(const Value& x, const Value& y) {
    if (x.isNumber() && y.isNumber()) return compare(x, y) == 0;
    if (x.type() == Type::Str && y.type() == Type::Str) return x.asString() == y.asString();
    return x.eq(y);
}

// (= a b ...) true when each argument equals the next; (/= a b ...) true when each
// argument differs from the next ((/= 1 2 2) is nil). Neither refuses a type.
Value fnNumEq(Interp&, std::vector<Value>& args) {
    Args a(args, 1, kAnyCount);
    for (std::size_t i = 0; i + 1 < args.size(); ++i)
        if (!sameValue(args[i], args[i + 1])) return Value();
    return Value::t();
}
Value fnNumNe(Interp&, std::vector<Value>& args) {
    Args a(args, 1, kAnyCount);
    for (std::size_t i = 0; i + 1 < args.size(); ++i)
        if (sameValue(args[i], args[i + 1])) return Value();
    return Value::t();
}
Value fnLt(Interp&, std::vector<Value>& args) { return compareChain(args, [](int c) { return c < 0; }); }
Value fnGt(Interp&, std::vector<Value>& args) { return compareChain(args, [](int c) { return c > 0; }); }
Value fnLe(Interp&, std::vector<Value>& args) { return compareChain(args, [](int c) { return c <= 0; }); }
Value fnGe(Interp&, std::vector<Value>& args) { return compareChain(args, [](int c) { return c >= 0; }); }

Value fnIncr(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    a.number(0);
    return combine(Op::Add, args[0], Value::integer(1));
}

Value fnDecr(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    a.number(0);
    return combine(Op::Sub, args[0], Value::integer(1));
}

Value fnAbs(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    double d = a.number(0);
    if (args[0].type() == Type::Int) return Value::integer(wrap(std::llabs(args[0].asInt())));
    return Value::real(std::fabs(d));
}

Value minMax(std::vector<Value>& args, bool wantMax) {
    Args a(args, 0, kAnyCount);
    bool anyReal = false;
    for (std::size_t i = 0; i < args.size(); ++i) anyReal = (a.number(i), args[i].type() == Type::Real) || anyReal;
    if (args.empty()) return Value::integer(0);
    Value best = args[0];
    for (const Value& v : args)
        if (wantMax ? compare(v, best) > 0 : compare(v, best) < 0) best = v;
    return anyReal ? Value::real(best.asReal()) : best;
}

Value fnMax(Interp&, std::vector<Value>& args) { return minMax(args, true); }
Value fnMin(Interp&, std::vector<Value>& args) { return minMax(args, false); }

Value fnGcd(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    std::int64_t x = std::llabs(a.integer(0)), y = std::llabs(a.integer(1));
    while (y) x = std::exchange(y, x % y);
    return Value::integer(wrap(x));
}

Value fnFix(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    double d = std::trunc(a.number(0));
    if (args[0].type() == Type::Int) return args[0];
    if (d < INT32_MIN || d > INT32_MAX) return Value::real(d);
    return Value::integer(static_cast<std::int32_t>(d));
}

Value fnFloat(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::real(a.number(0));
}

template <class Op2>
Value bitwise(std::vector<Value>& args, std::int32_t identity, Op2 op) {
    Args a(args, 0, kAnyCount);
    std::uint32_t acc = static_cast<std::uint32_t>(identity);
    for (std::size_t i = 0; i < args.size(); ++i) {
        auto v = static_cast<std::uint32_t>(a.integer(i));
        acc = i == 0 ? v : op(acc, v);
    }
    return Value::integer(static_cast<std::int32_t>(acc));
}

Value fnLogand(Interp&, std::vector<Value>& args) {
    return bitwise(args, -1, [](std::uint32_t x, std::uint32_t y) { return x & y; });
}
Value fnLogior(Interp&, std::vector<Value>& args) {
    return bitwise(args, 0, [](std::uint32_t x, std::uint32_t y) { return x | y; });
}

// (boole operator int1 int2 ...): the low four bits of `operator` are a truth table,
// looked up for each bit pair of the running result and the next integer: 1 when both
// are set, 2 when only the first is, 4 when only the second is, 8 when neither is
// (1 is AND, 6 XOR, 7 OR, 8 NOR).
Value fnBoole(Interp&, std::vector<Value>& args) {
    Args a(args, 2, kAnyCount);
    auto table = static_cast<std::uint32_t>(a.integer(0));
    auto acc = static_cast<std::uint32_t>(a.integer(1));
    for (std::size_t i = 2; i < args.size(); ++i) {
        auto y = static_cast<std::uint32_t>(a.integer(i));
        std::uint32_t out = 0;
        if (table & 1u) out |= acc & y;
        if (table & 2u) out |= acc & ~y;
        if (table & 4u) out |= ~acc & y;
        if (table & 8u) out |= ~acc & ~y;
        acc = out;
    }
    return Value::integer(static_cast<std::int32_t>(acc));
}

Value fnLsh(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 2);
    auto v = static_cast<std::uint32_t>(a.has(0) ? a.integer(0) : 0);
    std::int32_t n = a.has(1) ? a.integer(1) : 0;
    if (n >= 32 || n <= -32) return Value::integer(0);
    v = n >= 0 ? v << n : v >> -n;
    return Value::integer(static_cast<std::int32_t>(v));
}

Value fnNot(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::integer(~a.integer(0));
}

[[noreturn]] void undefinedFor(const Value& v) {
    throw Error(L"function undefined for argument: " + printValue(v, true));
}

Value fnSqrt(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    if (a.number(0) < 0) undefinedFor(args[0]);
    return Value::real(std::sqrt(a.number(0)));
}

Value fnLog(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    if (a.number(0) <= 0) undefinedFor(args[0]);
    return Value::real(std::log(a.number(0)));
}

Value fnExp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::real(std::exp(a.number(0)));
}

Value fnExpt(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    double base = a.number(0), power = a.number(1);
    if (args[0].type() != Type::Int || args[1].type() != Type::Int)
        return Value::real(std::pow(base, power));
    if (power < 0) return Value::integer(std::abs(args[0].asInt()) == 1 ? wrap(static_cast<std::int64_t>(std::pow(base, power))) : 0);
    // By squaring, in wrapping 32-bit arithmetic: the same result as repeated
    // multiplication, in at most 31 steps.
    std::uint32_t acc = 1;
    std::uint32_t square = static_cast<std::uint32_t>(args[0].asInt());
    for (auto n = static_cast<std::uint32_t>(args[1].asInt()); n != 0; n >>= 1) {
        if (n & 1u) acc *= square;
        square *= square;
    }
    return Value::integer(static_cast<std::int32_t>(acc));
}

Value fnSin(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::real(std::sin(a.number(0)));
}

Value fnCos(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::real(std::cos(a.number(0)));
}

Value fnAtan(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 2);
    if (!a.has(1)) return Value::real(std::atan(a.number(0)));
    return Value::real(std::atan2(a.number(0), a.number(1)));
}

Value fnZerop(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a.number(0) == 0.0);
}

Value fnMinusp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a.number(0) < 0.0);
}

const Builtin kMathLib[] = {
    {L"+", fnAdd},       {L"-", fnSub},       {L"*", fnMul},         {L"/", fnDiv},
    {L"rem", fnRem},     {L"=", fnNumEq},     {L"/=", fnNumNe},      {L"<", fnLt},
    {L">", fnGt},        {L"<=", fnLe},       {L">=", fnGe},         {L"1+", fnIncr},
    {L"1-", fnDecr},     {L"abs", fnAbs},     {L"max", fnMax},       {L"min", fnMin},
    {L"gcd", fnGcd},     {L"fix", fnFix},     {L"float", fnFloat},   {L"logand", fnLogand},
    {L"logior", fnLogior}, {L"lsh", fnLsh},  {L"boole", fnBoole},   {L"~", fnNot},         {L"sqrt", fnSqrt},
    {L"log", fnLog},     {L"exp", fnExp},     {L"expt", fnExpt},     {L"sin", fnSin},
    {L"cos", fnCos},     {L"atan", fnAtan},   {L"zerop", fnZerop},   {L"minusp", fnMinusp},
};

}  // namespace

void openMathLib(Interp& in) { openLibrary(in, kMathLib); }

}  // namespace lisp
