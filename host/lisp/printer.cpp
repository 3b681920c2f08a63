// Printing of values: prin1 quotes and escapes strings, princ writes them as they are.
#include "printer.h"

#include <cmath>
#include <cstdio>
#include <vector>

#include "object.h"

namespace lisp {

namespace {

std::wstring escapeString(const std::wstring& s) {
    std::wstring out = L"\"";
    for (wchar_t c : s) {
        switch (c) {
        case L'\\': out += L"\\\\"; break;
        case L'"': out += L"\\\""; break;
        case L'\n': out += L"\\n"; break;
        case L'\t': out += L"\\t"; break;
        case L'\r': out += L"\\r"; break;
        case L'\x1b': out += L"\\e"; break;
        default: out += c;
        }
    }
    return out + L"\"";
}

std::wstring hex(std::int64_t id) {
    wchar_t buf[32];
    std::swprintf(buf, 32, L"%llx", static_cast<unsigned long long>(id));
    return buf;
}

std::wstring printFunction(const Value& v) {
    if (v.type() == Type::Usubr) {
        const auto& name = as<UsubrObj>(v).name;
        return L"#<USUBR @ " + (name.empty() ? std::wstring(L"-LAMBDA-") : name) + L">";
    }
    return (v.isExternal() ? L"#<EXRXSUBR @ " : L"#<SUBR @ ") + v.subrName() + L">";
}

}  // namespace

std::wstring formatReal(double d) {
    if (std::isnan(d)) return L"NAN";
    if (std::isinf(d)) return d > 0 ? L"1.#INF" : L"-1.#INF";
    wchar_t buf[64];
    std::swprintf(buf, 64, L"%.6g", d);
    std::wstring s = buf;
    auto e = s.find(L'e');
    if (s.find(L'.') != std::wstring::npos) return s;
    if (e == std::wstring::npos) return s + L".0";
    return s.insert(e, L".0");
}

namespace {

std::wstring printAtom(const Value& v, bool escape) {
    switch (v.type()) {
    case Type::Nil: return L"nil";
    case Type::Int: return std::to_wstring(v.asInt());
    case Type::Real: return formatReal(v.asReal());
    case Type::Str: return escape ? escapeString(v.asString()) : v.asString();
    case Type::Sym: return v.symbolName();
    case Type::Cons:
        break;
    case Type::Subr:
    case Type::Usubr: return printFunction(v);
    case Type::Ename: return L"<Entity name: " + hex(v.handleId()) + L">";
    case Type::Pickset: return L"<Selection set: " + hex(v.handleId()) + L">";
    case Type::File: return L"#<file \"" + as<FileObj>(v).name + L"\">";
    case Type::CatchError: return L"#<%catch-all-apply-error%>";
    }
    return {};
}

}  // namespace

// Lists are printed with a stack of the lists still open rather than by recursion, so
// that any depth of nesting prints.
std::wstring printValue(const Value& v, bool escape) {
    if (!v.isCons()) return printAtom(v, escape);
    std::wstring out = L"(";
    std::vector<Value> open{v};  // the rest of each open list still to print
    bool first = true;
    while (!open.empty()) {
        Value& rest = open.back();
        if (!rest.isCons()) {
            if (!rest.isNil()) out += L" . " + printAtom(rest, escape);
            out += L')';
            open.pop_back();
            first = false;
            continue;
        }
        if (!first) out += L' ';
        first = false;
        Value item = rest.car();
        rest = rest.cdr();
        if (item.isCons()) {
            out += L'(';
            open.push_back(std::move(item));
            first = true;
        } else {
            out += printAtom(item, escape);
        }
    }
    return out;
}

}  // namespace lisp
