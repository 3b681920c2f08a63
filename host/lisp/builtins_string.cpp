// String functions, including the conversions between numbers and text.
#include <algorithm>
#include <cwchar>
#include <cwctype>

#include "args.h"
#include "library.h"
#include "rtos.h"
#include "text.h"
#include "wcmatch.h"

namespace lisp {

namespace {

Value fnStrcat(Interp&, std::vector<Value>& args) {
    Args a(args, 0, kAnyCount);
    std::wstring out;
    for (std::size_t i = 0; i < args.size(); ++i) out += a.string(i);
    return Value::string(std::move(out));
}

Value fnStrlen(Interp&, std::vector<Value>& args) {
    Args a(args, 0, kAnyCount);
    std::size_t n = 0;
    for (std::size_t i = 0; i < args.size(); ++i) n += a.string(i).size();
    return Value::integer(static_cast<std::int32_t>(n));
}

[[noreturn]] void badValue(std::wstring_view what, const Value& v) {
    throw Error(L"bad argument value: " + std::wstring(what) + L" " + std::to_wstring(v.asInt()));
}

Value fnSubstr(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 3);
    const std::wstring& s = a.string(0);
    std::int32_t start = a.integer(1);
    if (start < 1) badValue(L"positive", args[1]);
    std::int32_t len = a.has(2) ? a.integer(2) : INT32_MAX;
    if (len < 0) badValue(L"non-negative", args[2]);
    if (static_cast<std::size_t>(start) > s.size()) return Value::string(L"");
    return Value::string(s.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(len)));
}

Value fnStrcase(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 2);
    std::wstring s = a.string(0);
    bool lower = a.has(1) && !args[1].isNil();
    for (auto& c : s) c = lower ? lowerChar(c) : upperChar(c);
    return Value::string(std::move(s));
}

Value fnItoa(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::string(std::to_wstring(a.integer(0)));
}

Value fnAtoi(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    long long v = std::wcstoll(a.string(0).c_str(), nullptr, 10);
    return Value::integer(static_cast<std::int32_t>(std::clamp<long long>(v, INT32_MIN, INT32_MAX)));
}

Value fnAtof(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    const std::wstring& s = a.string(0);
    std::size_t start = s.find_first_not_of(L" \t\n");
    if (start == std::wstring::npos) return Value::real(0.0);
    // only a decimal number is read ("0x10" is 0.0, as are "inf" and "nan")
    std::size_t i = start;
    auto digits = [&] {
        std::size_t from = i;
        while (i < s.size() && s[i] >= L'0' && s[i] <= L'9') ++i;
        return i > from;
    };
    if (i < s.size() && (s[i] == L'-' || s[i] == L'+')) ++i;
    bool whole = digits();
    bool fraction = false;
    if (i < s.size() && s[i] == L'.') {
        ++i;
        fraction = digits();
    }
    if (!whole && !fraction) return Value::real(0.0);
    std::size_t end = i;
    if (i < s.size() && (s[i] == L'e' || s[i] == L'E')) {
        ++i;
        if (i < s.size() && (s[i] == L'-' || s[i] == L'+')) ++i;
        if (digits()) end = i;
    }
    return Value::real(std::wcstod(s.substr(start, end - start).c_str(), nullptr));
}

Value fnChr(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::string(std::wstring(1, static_cast<wchar_t>(a.integer(0))));
}

Value fnAscii(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    const std::wstring& s = a.string(0);
    return Value::integer(s.empty() ? 0 : static_cast<std::int32_t>(s[0]));
}

// (rtos number [mode [precision]]): mode and precision default to LUNITS and LUPREC;
// DIMZIN drops zeros and UNITMODE writes fractions in their input form.
Value fnRtos(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 3);
    double v = a.number(0);
    int mode = a.has(1) ? a.integer(1) : in.intVariable(L"LUNITS", 2);
    int prec = a.has(2) ? a.integer(2) : in.intVariable(L"LUPREC", 4);
    DistanceStyle style;
    style.zeros = in.intVariable(L"DIMZIN", 0);
    style.inputForm = in.intVariable(L"UNITMODE", 0) == 1;
    return Value::string(formatDistance(v, mode, prec, style));
}

// (angtos angle [mode [precision]]): mode and precision default to AUNITS and AUPREC.
Value fnAngtos(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 3);
    double v = a.number(0);
    int mode = a.has(1) ? a.integer(1) : in.intVariable(L"AUNITS", 0);
    int prec = a.has(2) ? a.integer(2) : in.intVariable(L"AUPREC", 4);
    return Value::string(formatAngle(v, mode, prec));
}

Value fnWcmatch(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    return boolValue(wcmatch(a.string(0), a.string(1)));
}

// vl-string-trim and its one-sided forms: (fn chars string).
Value trim(std::vector<Value>& args, bool left, bool right) {
    Args a(args, 2, 2);
    const std::wstring& chars = a.string(0);
    const std::wstring& s = a.string(1);
    std::size_t b = left ? s.find_first_not_of(chars) : 0;
    if (b == std::wstring::npos) return Value::string(L"");
    std::size_t e = right ? s.find_last_not_of(chars) + 1 : s.size();
    return Value::string(s.substr(b, e - b));
}

Value fnTrim(Interp&, std::vector<Value>& args) { return trim(args, true, true); }
Value fnLeftTrim(Interp&, std::vector<Value>& args) { return trim(args, true, false); }
Value fnRightTrim(Interp&, std::vector<Value>& args) { return trim(args, false, true); }

std::size_t startArg(const Args& a, std::size_t i) {
    return a.has(i) && !a[i].isNil() ? static_cast<std::size_t>(std::max(0, a.integer(i))) : 0;
}

Value fnSearch(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 3);
    std::size_t pos = a.string(1).find(a.string(0), startArg(a, 2));
    return pos == std::wstring::npos ? Value() : Value::integer(static_cast<std::int32_t>(pos));
}

Value fnSubst(Interp&, std::vector<Value>& args) {
    Args a(args, 3, 4);
    std::wstring s = a.string(2);
    const std::wstring& fresh = a.string(0);
    const std::wstring& old = a.string(1);
    std::size_t pos = s.find(old, startArg(a, 3));
    if (pos != std::wstring::npos) s.replace(pos, old.size(), fresh);
    return Value::string(std::move(s));
}

Value fnTranslate(Interp&, std::vector<Value>& args) {
    Args a(args, 3, 3);
    const std::wstring& from = a.string(0);
    const std::wstring& to = a.string(1);
    std::wstring s = a.string(2);
    for (auto& c : s) {
        std::size_t k = from.find(c);
        if (k != std::wstring::npos && k < to.size()) c = to[k];
    }
    return Value::string(std::move(s));
}

Value fnStringToList(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    std::vector<Value> codes;
    for (wchar_t c : a.string(0)) codes.push_back(Value::integer(static_cast<std::int32_t>(c)));
    return Value::list(codes);
}

Value fnListToString(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    std::wstring s;
    for (Value v : a.list(0).toVector()) {
        if (v.type() != Type::Int) badArgType(L"fixnump", v);
        s += static_cast<wchar_t>(v.asInt());
    }
    return Value::string(std::move(s));
}

Value fnStringPosition(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 4);
    auto c = static_cast<wchar_t>(a.integer(0));
    const std::wstring& s = a.string(1);
    bool fromEnd = a.has(3) && !args[3].isNil();
    std::size_t start = startArg(a, 2);
    std::size_t pos = fromEnd ? s.rfind(c) : s.find(c, start);
    return pos == std::wstring::npos ? Value() : Value::integer(static_cast<std::int32_t>(pos));
}

Value fnStringElt(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    const std::wstring& s = a.string(0);
    std::int32_t i = a.integer(1);
    if (i < 0 || static_cast<std::size_t>(i) >= s.size()) badValue(L"index", args[1]);
    return Value::integer(static_cast<std::int32_t>(s[static_cast<std::size_t>(i)]));
}

// (vl-string-mismatch str1 str2 [pos1 pos2 ignore-case]): the length of the common
// prefix of str1 from pos1 and str2 from pos2.
Value fnStringMismatch(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 5);
    std::wstring_view x = a.string(0), y = a.string(1);
    x.remove_prefix(std::min(startArg(a, 2), x.size()));
    y.remove_prefix(std::min(startArg(a, 3), y.size()));
    bool ignoreCase = a.has(4) && !args[4].isNil();
    std::size_t n = 0;
    while (n < x.size() && n < y.size() &&
           (x[n] == y[n] || (ignoreCase && std::towupper(x[n]) == std::towupper(y[n]))))
        ++n;
    return Value::integer(static_cast<std::int32_t>(n));
}

// (snvalid name [flag]): T when `name` may name a layer, block, style or other symbol
// table entry: 1 to 255 characters, none of them a control character or one of
// < > / \ " : ; ? * , = ` and no vertical bar unless `flag` is 1 (as in the names
// of externally referenced entries), and then not as the first or last character.
Value fnSnvalid(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    const std::wstring& name = a.string(0);
    bool barAllowed = a.has(1) && a.integer(1) == 1;
    // EXTNAMES 0: the old names of up to 31 letters, digits, "$", "-" and "_"
    bool oldNames = in.intVariable(L"EXTNAMES", 1) == 0;
    if (name.empty() || name.size() > (oldNames ? 31u : 255u)) return {};
    for (std::size_t i = 0; i < name.size(); ++i) {
        wchar_t c = name[i];
        if (oldNames && !std::iswalnum(c) && c != L'$' && c != L'-' && c != L'_' && c != L'|')
            return {};
        if (c < 0x20 || c == 0x7F || std::wcschr(L"<>/\\\":;?*,=`", c)) return {};
        if (c == L'|' && (!barAllowed || i == 0 || i + 1 == name.size())) return {};
    }
    return Value::t();
}

// Alphabetical order: letters compare without case, then by code so the order is
// total. nil when the argument is not a proper list of strings.
Value fnStrlsort(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    std::vector<std::wstring> items;
    Value p = args[0];
    for (; p.isCons(); p = p.cdr()) {
        if (p.car().type() != Type::Str) return {};
        items.push_back(p.car().asString());
    }
    if (!p.isNil()) return {};
    // MAXSORT: longer lists are not sorted
    if (items.size() > static_cast<std::size_t>(std::max(0, in.intVariable(L"MAXSORT", 1000))))
        return {};
    auto key = [](const std::wstring& s) {
        std::wstring k = s;
        for (auto& c : k) c = static_cast<wchar_t>(std::towlower(c));
        return k;
    };
    std::stable_sort(items.begin(), items.end(), [&](const std::wstring& x, const std::wstring& y) {
        int c = key(x).compare(key(y));
        return c != 0 ? c < 0 : x < y;
    });
    std::vector<Value> out;
    for (auto& s : items) out.push_back(Value::string(std::move(s)));
    return Value::list(out);
}

const Builtin kStringLib[] = {
    {L"strcat", fnStrcat},
    {L"strlen", fnStrlen},
    {L"substr", fnSubstr},
    {L"strcase", fnStrcase},
    {L"xstrcase", fnStrcase},
    {L"itoa", fnItoa},
    {L"atoi", fnAtoi},
    {L"atof", fnAtof},
    {L"chr", fnChr},
    {L"ascii", fnAscii},
    {L"rtos", fnRtos},
    {L"angtos", fnAngtos},
    {L"wcmatch", fnWcmatch},
    {L"vl-string-trim", fnTrim},
    {L"vl-string-left-trim", fnLeftTrim},
    {L"vl-string-right-trim", fnRightTrim},
    {L"vl-string-search", fnSearch},
    {L"vl-string-subst", fnSubst},
    {L"vl-string-translate", fnTranslate},
    {L"vl-string->list", fnStringToList},
    {L"vl-list->string", fnListToString},
    {L"vl-string-position", fnStringPosition},
    {L"vl-string-elt", fnStringElt},
    {L"vl-string-mismatch", fnStringMismatch},
    {L"snvalid", fnSnvalid},
    {L"acad_strlsort", fnStrlsort},
};

}  // namespace

void openStringLib(Interp& in) { openLibrary(in, kStringLib); }

}  // namespace lisp
