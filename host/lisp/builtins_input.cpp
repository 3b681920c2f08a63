// initget and the get* functions. Each get* asks the host for a line (InterpIO::readLine);
// no line, or the line "*Cancel*", cancels with "Function cancelled". Enter (an empty
// line) gives nil unless initget bit 1 forbids it. Input that does not parse prints the
// usual message on its own line and asks again. initget applies to the next get* only.
#include <cmath>
#include <cwctype>
#include <sstream>
#include <utility>

#include "args.h"
#include "interp_impl.h"
#include "library.h"
#include "reader.h"

namespace lisp {

namespace {

constexpr int kNoNull = 1, kNoZero = 2, kNoNegative = 4, kIgnoreZ = 64;

// The prompt and base point of a get* call: a string argument is the prompt, a list the
// base point.
struct Request {
    std::wstring prompt;
    std::optional<std::vector<double>> base;
};

Request readRequest(const Args& a) {
    Request r;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].type() == Type::Str) r.prompt = a[i].asString();
        else if (a[i].isCons()) r.base = a.point(i);
        else if (!a[i].isNil()) badArgType(L"stringp", a[i]);
    }
    return r;
}

std::wstring askLine(Interp& in, const std::wstring& prompt) {
    auto line = in.io().readLine ? in.io().readLine(prompt) : std::nullopt;
    if (!line || *line == L"*Cancel*") throw Error(L"Function cancelled");
    return *line;
}

std::wstring upper(std::wstring s) {
    for (auto& c : s) c = static_cast<wchar_t>(std::towupper(c));
    return s;
}

// True when `input` selects `keyword`: the whole word, or its capitalised abbreviation
// (a leading capitalised part may be extended by any further prefix of the word).
bool keywordMatches(const std::wstring& keyword, const std::wstring& input) {
    std::wstring in = upper(input), kw = upper(keyword), caps;
    for (wchar_t c : keyword)
        if (std::iswupper(c)) caps += c;
    if (in == kw) return true;
    if (caps.empty() || caps == kw) return false;
    std::size_t lead = 0;
    while (lead < keyword.size() && !std::iswlower(keyword[lead])) ++lead;
    if (lead == caps.size()) return in.size() >= lead && kw.compare(0, in.size(), in) == 0;
    return in == caps;
}

std::optional<std::wstring> findKeyword(const InputControl& ctl, const std::wstring& input) {
    for (const auto& kw : ctl.keywords)
        if (keywordMatches(kw, input)) return kw;
    return std::nullopt;
}

// A parser turns a non-empty line into a value, or sets the message to print.
using Parser = std::function<std::optional<Value>(const std::wstring&, std::wstring& message)>;

Value ask(Interp& in, const std::wstring& prompt, const std::wstring& invalid, const Parser& parse) {
    InputControl ctl = std::exchange(in.impl().input, {});
    for (;;) {
        std::wstring line = askLine(in, prompt);
        std::wstring message = invalid;
        if (line.empty() && !(ctl.bits & kNoNull)) return {};
        if (!line.empty()) {
            if (auto kw = findKeyword(ctl, line)) return Value::string(*kw);
            if (auto v = parse(line, message)) return *v;
        }
        if (in.io().write) in.io().write(message + L"\n");
    }
}

std::optional<double> parseNumber(const std::wstring& text) {
    std::size_t b = text.find_first_not_of(L' '), e = text.find_last_not_of(L' ');
    if (b == std::wstring::npos) return std::nullopt;
    Value v = parseAtom(std::wstring_view(text).substr(b, e - b + 1));
    return v.isNumber() ? std::optional(v.asReal()) : std::nullopt;
}

// Applies initget bits 2 and 4 to a number; false with the message when refused.
bool numberAllowed(int bits, double v, std::wstring& message) {
    if ((bits & kNoZero) && v == 0) message = L"Value must be nonzero.";
    else if ((bits & kNoNegative) && v < 0) message = L"Value must be positive.";
    else return true;
    return false;
}

std::optional<std::vector<double>> parsePoint(const std::wstring& text, const Request& req) {
    std::wstring body = text;
    bool relative = !body.empty() && body[0] == L'@';
    if (relative) body.erase(0, 1);
    std::vector<double> p;
    std::wstringstream parts(body);
    for (std::wstring part; std::getline(parts, part, L',');) {
        auto d = parseNumber(part);
        if (!d) return std::nullopt;
        p.push_back(*d);
    }
    if (relative && body.empty()) p = {0, 0};
    if (p.size() < 2 || p.size() > 3) return std::nullopt;
    if (p.size() == 2) p.push_back(0.0);
    if (relative) {
        if (!req.base) return std::nullopt;
        for (std::size_t i = 0; i < req.base->size(); ++i) p[i] += (*req.base)[i];
    }
    return p;
}

Value pointValue(const std::vector<double>& p) {
    return Value::list({Value::real(p[0]), Value::real(p[1]), Value::real(p[2])});
}

Value fnInitget(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    InputControl ctl;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].type() == Type::Int) {
            ctl.bits = a[i].asInt();
            continue;
        }
        std::wstringstream words(a.string(i));
        for (std::wstring w; words >> w;) ctl.keywords.push_back(w);
    }
    in.impl().input = std::move(ctl);
    return {};
}

Value fnGetint(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 1);
    Request req = readRequest(a);
    int bits = in.impl().input.bits;
    return ask(in, req.prompt, L"Requires an integer value.", [&](const std::wstring& s, std::wstring& msg) -> std::optional<Value> {
        Value v = parseAtom(s);
        if (v.type() != Type::Int) return std::nullopt;
        if (v.asInt() < -32768 || v.asInt() > 32767) {
            msg = L"Value must be between -32768 and 32767.";
            return std::nullopt;
        }
        return numberAllowed(bits, v.asInt(), msg) ? std::optional(v) : std::nullopt;
    });
}

Value fnGetreal(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 1);
    Request req = readRequest(a);
    int bits = in.impl().input.bits;
    return ask(in, req.prompt, L"Requires numeric value.", [&](const std::wstring& s, std::wstring& msg) -> std::optional<Value> {
        auto d = parseNumber(s);
        if (!d || !numberAllowed(bits, *d, msg)) return std::nullopt;
        return Value::real(*d);
    });
}

Value fnGetdist(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    Request req = readRequest(a);
    int bits = in.impl().input.bits;
    return ask(in, req.prompt, L"Requires numeric distance or second point.",
               [&](const std::wstring& s, std::wstring& msg) -> std::optional<Value> {
        auto d = parseNumber(s);
        auto p = d || !req.base ? std::nullopt : parsePoint(s, req);
        if (p) {
            double dz = (bits & kIgnoreZ) || req.base->size() < 3 ? 0.0 : (*p)[2] - (*req.base)[2];
            d = std::sqrt(std::pow((*p)[0] - (*req.base)[0], 2) + std::pow((*p)[1] - (*req.base)[1], 2) + dz * dz);
        }
        if (!d || !numberAllowed(bits, *d, msg)) return std::nullopt;
        return Value::real(*d);
    });
}

// getangle and getorient: degrees typed, radians returned.
Value fnGetangle(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    Request req = readRequest(a);
    int bits = in.impl().input.bits;
    return ask(in, req.prompt, L"Requires valid numeric angle or second point.",
               [&](const std::wstring& s, std::wstring& msg) -> std::optional<Value> {
        auto d = parseNumber(s);
        if (!d || !numberAllowed(bits, *d, msg)) return std::nullopt;
        const double turn = 2 * std::acos(-1.0);
        double r = std::fmod(*d * turn / 360.0, turn);
        return Value::real(r < 0 ? r + turn : r);
    });
}

Value fnGetpoint(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    Request req = readRequest(a);
    return ask(in, req.prompt, L"Invalid point.", [&](const std::wstring& s, std::wstring&) -> std::optional<Value> {
        auto p = parsePoint(s, req);
        return p ? std::optional(pointValue(*p)) : std::nullopt;
    });
}

Value fnGetcorner(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    a.point(0);
    return fnGetpoint(in, args);
}

Value fnGetkword(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 1);
    Request req = readRequest(a);
    return ask(in, req.prompt, L"Invalid option keyword.",
               [](const std::wstring&, std::wstring&) -> std::optional<Value> { return std::nullopt; });
}

Value fnGetstring(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    bool spaces = a.size() == 2 ? !a[0].isNil() : false;
    std::wstring prompt;
    if (a.size() == 2) prompt = a.string(1);
    else if (a.size() == 1 && a[0].type() == Type::Str) prompt = a[0].asString();
    in.impl().input = {};
    std::wstring line = askLine(in, prompt);
    if (!spaces) line = line.substr(0, line.find(L' '));
    return Value::string(std::move(line));
}

const Builtin kInputLib[] = {
    {L"initget", fnInitget},
    {L"getint", fnGetint},
    {L"getreal", fnGetreal},
    {L"getdist", fnGetdist},
    {L"getangle", fnGetangle},
    {L"getorient", fnGetangle},
    {L"getpoint", fnGetpoint},
    {L"getcorner", fnGetcorner},
    {L"getkword", fnGetkword},
    {L"getstring", fnGetstring},
};

}  // namespace

void openInputLib(Interp& in) { openLibrary(in, kInputLib); }

}  // namespace lisp
