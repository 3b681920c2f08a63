// Value conversions shared by the dialect's functions, and their registration.
#include "jet_values.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "jet_dates.h"
#include "jet_sql.h"

namespace kelvo::jet {

std::optional<double> numberOf(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER: return static_cast<double>(sqlite3_value_int64(v));
        case SQLITE_FLOAT: return sqlite3_value_double(v);
        case SQLITE_TEXT: {
            const std::string text(reinterpret_cast<const char*>(sqlite3_value_text(v)),
                                   static_cast<size_t>(sqlite3_value_bytes(v)));
            const size_t first = text.find_first_not_of(" \t");
            if (first == std::string::npos) return std::nullopt;
            const char* begin = text.c_str() + first;
            if (*begin != '+' && *begin != '-' && *begin != '.' && (*begin < '0' || *begin > '9'))
                return std::nullopt;  // no hex, inf or nan
            char* end = nullptr;
            errno = 0;
            const double d = std::strtod(begin, &end);
            if (end == begin || errno == ERANGE) return std::nullopt;
            while (*end == ' ' || *end == '\t') ++end;
            if (*end != '\0') return std::nullopt;
            return d;
        }
        default: return std::nullopt;
    }
}

std::string numberText(double d) {
    if (d == 0) return "0";
    if (d == std::trunc(d) && std::fabs(d) < 1e15) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%.0f", d);
        return buf;
    }
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.15G", d);
    std::string s = buf;
    const size_t e = s.find('E');
    std::string mantissa = s.substr(0, e);
    if (mantissa.find('.') != std::string::npos) {
        while (mantissa.back() == '0') mantissa.pop_back();
        if (mantissa.back() == '.') mantissa.pop_back();
    }
    if (e == std::string::npos) return mantissa;
    std::string exponent = s.substr(e + 1);  // "+20", "-07"
    const char sign = exponent[0];
    exponent.erase(0, 1);
    while (exponent.size() > 2 && exponent[0] == '0') exponent.erase(0, 1);
    return mantissa + "E" + sign + exponent;
}

std::string textOf(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER: return std::to_string(sqlite3_value_int64(v));
        case SQLITE_FLOAT: return numberText(sqlite3_value_double(v));
        case SQLITE_NULL: return {};
        default:
            return std::string(reinterpret_cast<const char*>(sqlite3_value_text(v)),
                               static_cast<size_t>(sqlite3_value_bytes(v)));
    }
}

double roundEven(double x, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double scaled = x * scale;
    double r = std::floor(scaled);
    const double diff = scaled - r;
    if (diff > 0.5 || (diff == 0.5 && std::fmod(r, 2.0) != 0)) r += 1;
    return r / scale;
}

std::optional<double> dateOf(sqlite3_value* v) {
    if (sqlite3_value_type(v) == SQLITE_TEXT) {
        if (auto d = parseDate(textOf(v))) return d;
    }
    return numberOf(v);
}

void resultText(sqlite3_context* ctx, const std::string& text) {
    sqlite3_result_text(ctx, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void resultNumber(sqlite3_context* ctx, double d, bool preferInteger) {
    if (preferInteger && d == std::trunc(d) && std::fabs(d) < 9.2e18)
        sqlite3_result_int64(ctx, static_cast<sqlite3_int64>(d));
    else
        sqlite3_result_double(ctx, d);
}

void addFunction(sqlite3* db, const char* name, int nArgs,
                 void (*fn)(sqlite3_context*, int, sqlite3_value**), bool deterministic) {
    const int flags = SQLITE_UTF8 | (deterministic ? SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS : 0);
    sqlite3_create_function_v2(db, name, nArgs, flags, nullptr, fn, nullptr, nullptr, nullptr);
}

void registerFunctions(sqlite3* db) {
    registerTextFunctions(db);
    registerDateFunctions(db);
    registerConversionFunctions(db);
    registerMathFunctions(db);
    registerFormatFunctions(db);
    registerAggregateFunctions(db);
    registerLikeFunction(db);
}

long daoErrorCode(std::string_view message) {
    struct Known { const char* text; long code; };
    static constexpr Known kKnown[] = {
        {kTypeMismatch, 3464}, {kInvalidNull, 94},    {kInvalidCall, 5},
        {kOverflow, 6},        {kDivisionByZero, 11}, {kInvalidPattern, 93}};
    for (const Known& k : kKnown)
        if (message == k.text) return k.code;
    return 0;
}

}  // namespace kelvo::jet
