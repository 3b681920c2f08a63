// Conversion functions: CStr, CInt, CLng, CByte, CDbl, CSng, CCur, CBool, CVar, Val,
// Str, Hex, Oct, IsNumeric. Whole-number conversions round half to even and raise
// "Overflow." outside their type's range; converting Null raises "Invalid use of Null."
// (Access shows #Error there), except CVar and Str, which pass Null on.
#include <cctype>
#include <cmath>
#include <string>

#include "jet_values.h"

namespace kelvo::jet {
namespace {

using Fn = void (*)(sqlite3_context*, int, sqlite3_value**);

// The number of an argument for a conversion; false after raising the error.
bool convertible(sqlite3_context* ctx, sqlite3_value* v, double& out) {
    if (isNull(v)) {
        resultError(ctx, kInvalidNull);
        return false;
    }
    const auto n = numberOf(v);
    if (!n) {
        resultError(ctx, kTypeMismatch);
        return false;
    }
    out = *n;
    return true;
}

template <long long Min, long long Max>
void wholeNumber(sqlite3_context* ctx, int, sqlite3_value** a) {
    double d;
    if (!convertible(ctx, a[0], d)) return;
    const double r = roundEven(d);
    if (r < static_cast<double>(Min) || r > static_cast<double>(Max)) return resultError(ctx, kOverflow);
    sqlite3_result_int64(ctx, static_cast<sqlite3_int64>(r));
}

void cdbl(sqlite3_context* ctx, int, sqlite3_value** a) {
    double d;
    if (convertible(ctx, a[0], d)) sqlite3_result_double(ctx, d);
}

void csng(sqlite3_context* ctx, int, sqlite3_value** a) {
    double d;
    if (!convertible(ctx, a[0], d)) return;
    if (std::fabs(d) > 3.402823466e38) return resultError(ctx, kOverflow);
    sqlite3_result_double(ctx, static_cast<double>(static_cast<float>(d)));
}

void ccur(sqlite3_context* ctx, int, sqlite3_value** a) {
    double d;
    if (!convertible(ctx, a[0], d)) return;
    if (std::fabs(d) > 922337203685477.5807) return resultError(ctx, kOverflow);
    sqlite3_result_double(ctx, roundEven(d, 4));
}

void cbool(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return resultError(ctx, kInvalidNull);
    if (sqlite3_value_type(a[0]) == SQLITE_TEXT) {
        std::string s = textOf(a[0]);
        for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (s == "true" || s == "yes" || s == "on") return sqlite3_result_int(ctx, -1);
        if (s == "false" || s == "no" || s == "off") return sqlite3_result_int(ctx, 0);
    }
    double d;
    if (convertible(ctx, a[0], d)) sqlite3_result_int(ctx, d != 0 ? -1 : 0);
}

void cstr(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return resultError(ctx, kInvalidNull);
    resultText(ctx, textOf(a[0]));
}

void cvar(sqlite3_context* ctx, int, sqlite3_value** a) { sqlite3_result_value(ctx, a[0]); }

// Val: the number at the start of the text, blanks anywhere ignored; &H and &O prefixes.
void val(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return resultError(ctx, kInvalidNull);
    if (sqlite3_value_type(a[0]) != SQLITE_TEXT) return sqlite3_result_value(ctx, a[0]);
    std::string compact;
    for (char c : textOf(a[0]))
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') compact += c;
    if (compact.size() > 2 && compact[0] == '&' && (compact[1] == 'h' || compact[1] == 'H' ||
                                                    compact[1] == 'o' || compact[1] == 'O')) {
        const int base = (compact[1] == 'h' || compact[1] == 'H') ? 16 : 8;
        long long v = 0;
        for (size_t i = 2; i < compact.size(); ++i) {
            const int c = std::tolower(static_cast<unsigned char>(compact[i]));
            const int digit = std::isdigit(c) ? c - '0' : (c >= 'a' && c <= 'f') ? c - 'a' + 10 : 99;
            if (digit >= base || v > 0xFFFFFFFFLL) break;
            v = v * base + digit;
        }
        return sqlite3_result_double(ctx, static_cast<double>(v));
    }
    size_t i = 0;
    std::string number;
    if (i < compact.size() && (compact[i] == '+' || compact[i] == '-')) number += compact[i++];
    bool dot = false;
    while (i < compact.size() && (std::isdigit(static_cast<unsigned char>(compact[i])) ||
                                  (compact[i] == '.' && !dot))) {
        dot = dot || compact[i] == '.';
        number += compact[i++];
    }
    if (i + 1 < compact.size() && (compact[i] == 'e' || compact[i] == 'E' || compact[i] == 'd' ||
                                   compact[i] == 'D')) {
        std::string exponent = "e";
        size_t j = i + 1;
        if (compact[j] == '+' || compact[j] == '-') exponent += compact[j++];
        const size_t digits = j;
        while (j < compact.size() && std::isdigit(static_cast<unsigned char>(compact[j])))
            exponent += compact[j++];
        if (j > digits) number += exponent;
    }
    const double d = number.empty() || number == "+" || number == "-" || number == "."
                         ? 0.0
                         : std::strtod(number.c_str(), nullptr);
    sqlite3_result_double(ctx, d);
}

void str(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    double d;
    if (!convertible(ctx, a[0], d)) return;
    const std::string text = numberText(d);
    resultText(ctx, d >= 0 ? " " + text : text);
}

template <int Base>
void radix(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    double d;
    if (!convertible(ctx, a[0], d)) return;
    const double r = roundEven(d);
    if (r < -2147483648.0 || r > 2147483647.0) return resultError(ctx, kOverflow);
    auto v = static_cast<unsigned long>(static_cast<unsigned int>(static_cast<int>(r)));
    char buf[24];
    std::snprintf(buf, sizeof buf, Base == 16 ? "%lX" : "%lo", v);
    resultText(ctx, buf);
}

void isnumeric(sqlite3_context* ctx, int, sqlite3_value** a) {
    sqlite3_result_int(ctx, !isNull(a[0]) && numberOf(a[0]) ? -1 : 0);
}

}  // namespace

void registerConversionFunctions(sqlite3* db) {
    static constexpr struct { const char* name; int args; Fn fn; } kTable[] = {
        {"jet_cstr", 1, cstr},
        {"jet_cint", 1, wholeNumber<-32768, 32767>},
        {"jet_clng", 1, wholeNumber<-2147483648LL, 2147483647LL>},
        {"jet_cbyte", 1, wholeNumber<0, 255>},
        {"jet_cdbl", 1, cdbl},
        {"jet_csng", 1, csng},
        {"jet_ccur", 1, ccur},
        {"jet_cbool", 1, cbool},
        {"jet_cvar", 1, cvar},
        {"jet_val", 1, val},
        {"jet_str", 1, str},
        {"jet_hex", 1, radix<16>},
        {"jet_oct", 1, radix<8>},
        {"jet_isnumeric", 1, isnumeric},
    };
    for (const auto& f : kTable) addFunction(db, f.name, f.args, f.fn);
}

}  // namespace kelvo::jet
