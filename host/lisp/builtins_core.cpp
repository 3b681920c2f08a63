// Evaluation, symbols, types, predicates, equality and error catching.
#include <algorithm>
#include <cmath>

#include "args.h"
#include "interp_impl.h"
#include "library.h"

namespace lisp {

namespace {

// Two values that are not both lists.
bool atomsEqual(const Value& a, const Value& b, double fuzz) {
    if (a.isNumber() && b.isNumber()) {
        if (a.type() == Type::Int && b.type() == Type::Int) return a.asInt() == b.asInt();
        return std::fabs(a.asReal() - b.asReal()) <= fuzz;
    }
    if (a.type() != b.type()) return false;
    if (a.type() == Type::Str) return a.asString() == b.asString();
    return a.eq(b);
}

}  // namespace

// Lists are compared with a stack of the pairs of sublists still to compare rather than
// by recursion, so that any depth of nesting compares.
bool lispEqual(const Value& a, const Value& b, double fuzz) {
    if (!a.isCons() || !b.isCons()) return atomsEqual(a, b, fuzz);
    std::vector<std::pair<Value, Value>> pending{{a, b}};
    while (!pending.empty()) {
        auto [x, y] = std::move(pending.back());
        pending.pop_back();
        for (; x.isCons() && y.isCons(); x = x.cdr(), y = y.cdr()) {
            Value xItem = x.car(), yItem = y.car();
            if (xItem.isCons() && yItem.isCons())
                pending.emplace_back(xItem, yItem);
            else if (!atomsEqual(xItem, yItem, fuzz))
                return false;
        }
        if (x.isCons() || y.isCons() || !atomsEqual(x, y, fuzz)) return false;
    }
    return true;
}

namespace {

const wchar_t* typeName(const Value& v) {
    switch (v.type()) {
    case Type::Nil: return nullptr;
    case Type::Int: return L"INT";
    case Type::Real: return L"REAL";
    case Type::Str: return L"STR";
    case Type::Sym: return L"SYM";
    case Type::Cons: return L"LIST";
    case Type::Subr: return v.isExternal() ? L"EXRXSUBR" : L"SUBR";
    case Type::Usubr: return L"USUBR";
    case Type::Ename: return L"ENAME";
    case Type::Pickset: return L"PICKSET";
    case Type::File: return L"FILE";
    case Type::CatchError: return L"VL-CATCH-ALL-APPLY-ERROR";
    }
    return nullptr;
}

Value fnType(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    const wchar_t* name = typeName(a[0]);
    return name ? Value::symbol(name) : Value();
}

Value fnEval(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return in.eval(a[0]);
}

Value fnSet(Interp& in, std::vector<Value>& args) {
    Args a(args, 2, 2);
    if (a[0].type() != Type::Sym || a[0].isT()) badArgType(L"symbolp", a[0]);
    in.impl().assign(a[0], a[1]);
    return a[1];
}

Value fnApply(Interp& in, std::vector<Value>& args) {
    Args a(args, 2, 2);
    return in.apply(a[0], a.list(1).toVector());
}

Value fnBoundp(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    if (a[0].isNil()) return {};
    a.symbol(0);
    return boolValue(!in.impl().lookup(a[0]).isNil());
}

Value fnSymbolValue(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return in.impl().lookup(a.symbol(0));
}

Value fnSymbolName(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::string(a.symbol(0).symbolName());
}

Value fnSymbolp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a[0].isNil() || a[0].type() == Type::Sym);
}

Value fnNull(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a[0].isNil());
}

Value fnAtom(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(!a[0].isCons());
}

Value fnListp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a[0].isList());
}

Value fnConsp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a[0].isCons());
}

Value fnNumberp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a[0].isNumber());
}

Value fnEq(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    return boolValue(a[0].eq(a[1]));
}

Value fnEqual(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 3);
    return boolValue(lispEqual(a[0], a[1], a.has(2) ? a.number(2) : 0.0));
}

Value fnExit(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 0);
    throw Error(L"quit / exit abort");
}

Value fnCatchAllApply(Interp& in, std::vector<Value>& args) {
    Args a(args, 2, 2);
    std::vector<Value> callArgs = a.list(1).toVector();
    try {
        return in.apply(a[0], std::move(callArgs));
    } catch (const ExitWithValue& e) {
        return e.value();
    } catch (const Error& e) {
        return Value::catchError(e.message());
    }
}

Value fnCatchAllErrorp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(a[0].type() == Type::CatchError);
}

Value fnCatchAllErrorMessage(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    if (a[0].type() != Type::CatchError) badArgType(L"vl-catch-all-apply-error-p", a[0]);
    return Value::string(a[0].errorMessage());
}

Value fnExitWithError(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    throw Error(a.string(0));
}

Value fnVer(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 0);
    return Value::string(L"Kelvo LISP 1.0 (en)");
}

// (atoms-family format [names]): the symbols that have a value, as symbols (format 0)
// or as their names (format 1), sorted by name. With a list of names, answers for each
// name in turn: the symbol or name when it has a value, else nil.
Value fnAtomsFamily(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    std::int32_t format = a.integer(0);
    if (format != 0 && format != 1) throw Error(L"bad argument value: " + std::to_wstring(format));
    auto shown = [format](const Value& sym) {
        return format == 0 ? sym : Value::string(sym.symbolName());
    };
    std::vector<Value> out;
    if (a.has(1) && !a[1].isNil()) {
        for (const Value& name : a.list(1).toVector()) {
            if (name.type() != Type::Str) badArgType(L"stringp", name);
            Value sym = Value::symbol(name.asString());
            out.push_back(in.impl().lookup(sym).isNil() ? Value() : shown(sym));
        }
        return Value::list(out);
    }
    std::vector<Value> symbols;
    for (const auto& entry : in.impl().globals) {
        const auto& name = static_cast<const SymObj*>(entry.first)->name;   // interned
        if (!name.empty()) symbols.push_back(Value::symbol(name));
    }
    std::sort(symbols.begin(), symbols.end(),
              [](const Value& x, const Value& y) { return x.symbolName() < y.symbolName(); });
    for (const Value& sym : symbols) out.push_back(shown(sym));
    return Value::list(out);
}

// The list a defun-q definition keeps; nil when the symbol's value is not a list.
Value fnDefunQListRef(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    Value v = in.impl().lookup(a.symbol(0));
    return v.isCons() ? v : Value();
}

Value fnDefunQListSet(Interp& in, std::vector<Value>& args) {
    Args a(args, 2, 2);
    if (a[0].type() != Type::Sym || a[0].isT()) badArgType(L"symbolp", a[0]);
    in.impl().assign(a[0], a.list(1));
    return a[0];
}

const Builtin kCoreLib[] = {
    {L"type", fnType},
    {L"eval", fnEval},
    {L"set", fnSet},
    {L"apply", fnApply},
    {L"boundp", fnBoundp},
    {L"vl-symbol-value", fnSymbolValue},
    {L"vl-symbol-name", fnSymbolName},
    {L"vl-symbolp", fnSymbolp},
    {L"null", fnNull},
    {L"not", fnNull},
    {L"atom", fnAtom},
    {L"listp", fnListp},
    {L"vl-consp", fnConsp},
    {L"numberp", fnNumberp},
    {L"eq", fnEq},
    {L"equal", fnEqual},
    {L"exit", fnExit},
    {L"quit", fnExit},
    {L"vl-catch-all-apply", fnCatchAllApply},
    {L"vl-catch-all-error-p", fnCatchAllErrorp},
    {L"vl-catch-all-error-message", fnCatchAllErrorMessage},
    {L"vl-exit-with-error", fnExitWithError},
    {L"ver", fnVer},
    {L"atoms-family", fnAtomsFamily},
    {L"defun-q-list-ref", fnDefunQListRef},
    {L"defun-q-list-set", fnDefunQListSet},
};

}  // namespace

void openCoreLib(Interp& in) { openLibrary(in, kCoreLib); }

}  // namespace lisp
