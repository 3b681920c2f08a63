// Text to distances and angles (distof, angtof) and conversion between units of
// measure (cvunit, with the units of units.txt, built in).
#include <cmath>
#include <cwctype>
#include <map>
#include <optional>

#include "args.h"
#include "interp_impl.h"
#include "library.h"
#include "text.h"

namespace lisp {

namespace {

const char kUnitsText[] =
#include "units.inc"
    ;

// --- reading numbers -----------------------------------------------------------------

// Reads text left to right; each reader answers nullopt and leaves the position where
// it was when the text does not continue with what it reads.
class Scanner {
public:
    explicit Scanner(std::wstring_view text) : s_(text) {}
    bool done() const { return i_ >= s_.size(); }
    bool eat(wchar_t c) {
        if (i_ < s_.size() && std::towlower(s_[i_]) == std::towlower(c)) {
            ++i_;
            return true;
        }
        return false;
    }
    void skipSpaces() {
        while (i_ < s_.size() && s_[i_] == L' ') ++i_;
    }
    std::size_t position() const { return i_; }
    void reset(std::size_t i) { i_ = i; }
    // A decimal number without sign: 12, 12.5, .5, 1.5E+02 (exponent only if allowed).
    std::optional<double> number(bool exponent) {
        std::size_t start = i_;
        auto digits = [&] {
            std::size_t from = i_;
            while (i_ < s_.size() && std::iswdigit(s_[i_])) ++i_;
            return i_ > from;
        };
        bool whole = digits();
        bool fraction = false;
        if (i_ < s_.size() && s_[i_] == L'.') {
            ++i_;
            fraction = digits();
        }
        if (!whole && !fraction) {
            i_ = start;
            return std::nullopt;
        }
        if (exponent && i_ < s_.size() && (s_[i_] == L'e' || s_[i_] == L'E')) {
            std::size_t mark = i_++;
            if (i_ < s_.size() && (s_[i_] == L'+' || s_[i_] == L'-')) ++i_;
            if (!digits()) i_ = mark;
        }
        return std::wcstod(std::wstring(s_.substr(start, i_ - start)).c_str(), nullptr);
    }
    // An integer numerator over a denominator: 1/2.
    std::optional<double> fraction() {
        std::size_t start = i_;
        std::size_t from = i_;
        while (i_ < s_.size() && std::iswdigit(s_[i_])) ++i_;
        if (i_ == from || !eat(L'/')) {
            i_ = start;
            return std::nullopt;
        }
        std::size_t denFrom = i_;
        while (i_ < s_.size() && std::iswdigit(s_[i_])) ++i_;
        if (i_ == denFrom) {
            i_ = start;
            return std::nullopt;
        }
        double num = std::stod(std::wstring(s_.substr(from, denFrom - 1 - from)));
        double den = std::stod(std::wstring(s_.substr(denFrom, i_ - denFrom)));
        if (den == 0) {
            i_ = start;
            return std::nullopt;
        }
        return num / den;
    }

private:
    std::wstring_view s_;
    std::size_t i_ = 0;
};

// A whole number with an optional fraction ("17 1/2", "17-1/2", "1/2", "17.5").
std::optional<double> mixedNumber(Scanner& in) {
    if (auto f = in.fraction()) return f;
    std::size_t start = in.position();
    auto whole = in.number(false);
    if (!whole) return std::nullopt;
    std::size_t afterWhole = in.position();
    if (in.eat(L' ') || in.eat(L'-')) {
        in.skipSpaces();
        if (auto f = in.fraction()) return *whole + *f;
    }
    in.reset(afterWhole);
    (void)start;
    return whole;
}

// Inches, with or without feet: 1'-5 1/2", 1'5.5", 1', 17.5", 17 1/2.
std::optional<double> feetAndInches(Scanner& in) {
    std::size_t start = in.position();
    auto first = mixedNumber(in);
    if (!first) return std::nullopt;
    if (in.eat(L'\'')) {
        double feet = *first;
        if (in.done()) return feet * 12;
        in.eat(L'-');
        auto inches = mixedNumber(in);
        if (!inches) {
            in.reset(start);
            return std::nullopt;
        }
        in.eat(L'"');
        return feet * 12 + *inches;
    }
    in.eat(L'"');
    return first;
}

// distof: 1 scientific, 2 decimal, 3 engineering, 4 architectural, 5 fractional. Each
// mode reads the forms that rtos writes in it, and a plain number.
std::optional<double> parseDistance(std::wstring_view text, int mode) {
    std::size_t first = text.find_first_not_of(L' ');
    std::size_t last = text.find_last_not_of(L' ');
    if (first == std::wstring_view::npos) return std::nullopt;
    text = text.substr(first, last - first + 1);
    Scanner in(text);
    bool negative = in.eat(L'-');
    if (!negative) in.eat(L'+');
    std::optional<double> v;
    std::size_t start = in.position();
    if (mode == 1 || mode == 2) {
        v = in.number(true);
    } else if (mode == 3 || mode == 4) {
        v = feetAndInches(in);
        if (!v || !in.done()) {
            in.reset(start);
            v = in.number(true);
        }
    } else if (mode == 5) {
        v = mixedNumber(in);
        if (!v || !in.done()) {
            in.reset(start);
            v = in.number(true);
        }
    } else {
        throw Error(L"bad argument value: units mode " + std::to_wstring(mode));
    }
    if (!v || !in.done()) return std::nullopt;
    return negative ? -*v : *v;
}

constexpr double kPi = 3.14159265358979323846;

// Degrees, minutes and seconds: 45d30'15.5" (each part optional after the degrees).
std::optional<double> dmsDegrees(Scanner& in) {
    auto d = in.number(false);
    if (!d) return std::nullopt;
    double total = *d;
    if (!in.eat(L'd') && !in.eat(L'\u00b0'))
        return in.done() ? std::optional<double>(total) : std::nullopt;
    if (auto m = in.number(false)) {
        if (!in.eat(L'\'')) return std::nullopt;
        total += *m / 60;
        if (auto sec = in.number(false)) {
            if (!in.eat(L'"')) return std::nullopt;
            total += *sec / 3600;
        }
    }
    return total;
}

// angtof: 0 degrees, 1 degrees/minutes/seconds, 2 grads, 3 radians, 4 surveyor's units.
std::optional<double> parseAngle(std::wstring_view text, int mode) {
    std::size_t first = text.find_first_not_of(L' ');
    std::size_t last = text.find_last_not_of(L' ');
    if (first == std::wstring_view::npos) return std::nullopt;
    text = text.substr(first, last - first + 1);
    Scanner in(text);
    bool negative = false;
    std::optional<double> radians;
    switch (mode) {
        case 0:
        case 1:
        case 2:
        case 3: {
            negative = in.eat(L'-');
            if (mode == 1) {
                if (auto d = dmsDegrees(in)) radians = *d * kPi / 180;
            } else if (auto v = in.number(true)) {
                if (mode == 0) radians = *v * kPi / 180;
                if (mode == 2) radians = (in.eat(L'g'), *v * kPi / 200);
                if (mode == 3) radians = (in.eat(L'r'), *v);
            }
            break;
        }
        case 4: {
            // N 45d30' E: the bearing from north or south toward east or west; "N", "S",
            // "E", "W" alone are the four directions.
            wchar_t ns = text.empty() ? 0 : static_cast<wchar_t>(std::towupper(text[0]));
            if (text.size() == 1) {
                static const std::map<wchar_t, double> cardinal = {
                    {L'E', 0}, {L'N', kPi / 2}, {L'W', kPi}, {L'S', 3 * kPi / 2}};
                auto it = cardinal.find(ns);
                if (it != cardinal.end()) return it->second;
                return std::nullopt;
            }
            if (ns != L'N' && ns != L'S') return std::nullopt;
            in.eat(ns);
            in.skipSpaces();
            auto d = dmsDegrees(in);
            in.skipSpaces();
            if (!d || in.done()) return std::nullopt;
            wchar_t ew = static_cast<wchar_t>(std::towupper(text[in.position()]));
            if (ew != L'E' && ew != L'W') return std::nullopt;
            in.eat(ew);
            double bearing = *d * kPi / 180;
            double base = ns == L'N' ? kPi / 2 : 3 * kPi / 2;
            bool clockwise = (ns == L'N') == (ew == L'E');
            radians = clockwise ? base - bearing : base + bearing;
            break;
        }
        default:
            throw Error(L"bad argument value: angle mode " + std::to_wstring(mode));
    }
    if (!radians || !in.done()) return std::nullopt;
    double a = std::fmod(negative ? -*radians : *radians, 2 * kPi);
    if (a < 0) a += 2 * kPi;
    return a;
}

Value fnDistof(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    int mode = a.has(1) && !a[1].isNil() ? a.integer(1) : in.intVariable(L"LUNITS", 2);
    auto v = parseDistance(a.string(0), mode);
    return v ? Value::real(*v) : Value();
}

Value fnAngtof(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    int mode = a.has(1) && !a[1].isNil() ? a.integer(1) : in.intVariable(L"AUNITS", 0);
    auto v = parseAngle(a.string(0), mode);
    return v ? Value::real(*v) : Value();
}

// --- units of measure ------------------------------------------------------------------

struct Unit {
    std::wstring quantity;
    double factor = 1;
    double offset = 0;
};

std::wstring folded(std::wstring_view s) {
    std::wstring out;
    bool space = false;
    for (wchar_t c : s) {
        if (c == L' ' || c == L'\t') {
            space = !out.empty();
            continue;
        }
        if (space) out += L' ';
        space = false;
        out += lowerChar(c);
    }
    return out;
}

const std::map<std::wstring, Unit>& units() {
    static const std::map<std::wstring, Unit> table = [] {
        std::map<std::wstring, Unit> out;
        std::wstring text = fromUtf8(kUnitsText);
        std::size_t start = 0;
        while (start < text.size()) {
            std::size_t end = text.find(L'\n', start);
            if (end == std::wstring::npos) end = text.size();
            std::wstring line = text.substr(start, end - start);
            start = end + 1;
            if (line.empty() || line[0] == L'#') continue;
            std::vector<std::wstring> f;
            for (std::size_t p = 0;;) {
                std::size_t bar = line.find(L'|', p);
                f.push_back(line.substr(p, bar == std::wstring::npos ? bar : bar - p));
                if (bar == std::wstring::npos) break;
                p = bar + 1;
            }
            if (f.size() < 4) throw Error(L"units: bad line: " + line);
            Unit u{f[2], std::stod(f[3]), f.size() > 4 ? std::stod(f[4]) : 0.0};
            out[folded(f[0])] = u;
            for (std::size_t p = 0; !f[1].empty();) {
                std::size_t comma = f[1].find(L',', p);
                out[folded(f[1].substr(p, comma == std::wstring::npos ? comma : comma - p))] = u;
                if (comma == std::wstring::npos) break;
                p = comma + 1;
            }
        }
        return out;
    }();
    return table;
}

// A unit by name, with "sq"/"square" and "cu"/"cubic" before a length.
std::optional<Unit> findUnit(std::wstring_view name) {
    std::wstring key = folded(name);
    auto it = units().find(key);
    if (it != units().end()) return it->second;
    static const std::pair<const wchar_t*, int> powers[] = {
        {L"sq ", 2}, {L"square ", 2}, {L"cu ", 3}, {L"cubic ", 3}};
    for (const auto& [prefix, power] : powers) {
        std::wstring p = prefix;
        if (key.rfind(p, 0) != 0) continue;
        auto base = units().find(key.substr(p.size()));
        if (base == units().end() || base->second.quantity != L"length") return std::nullopt;
        return Unit{power == 2 ? L"area" : L"volume", std::pow(base->second.factor, power), 0};
    }
    return std::nullopt;
}

// (cvunit value from to): a number or a list of numbers converted between two units of
// the same quantity; nil for an unknown unit or two different quantities.
Value fnCvunit(Interp&, std::vector<Value>& args) {
    Args a(args, 3, 3);
    auto from = findUnit(a.string(1));
    auto to = findUnit(a.string(2));
    if (!from || !to || from->quantity != to->quantity) return {};
    auto convert = [&](double v) {
        return (v + from->offset) * from->factor / to->factor - to->offset;
    };
    if (a[0].isNumber()) return Value::real(convert(a[0].asReal()));
    std::vector<Value> out;
    for (const Value& v : a.list(0).toVector()) {
        if (!v.isNumber()) badArgType(L"numberp", v);
        out.push_back(Value::real(convert(v.asReal())));
    }
    return Value::list(out);
}

const Builtin kUnitsLib[] = {
    {L"distof", fnDistof},
    {L"angtof", fnAngtof},
    {L"cvunit", fnCvunit},
};

}  // namespace

void openUnitsLib(Interp& in) {
    openLibrary(in, kUnitsLib);
}

}  // namespace lisp
