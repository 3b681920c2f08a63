// Number functions (Abs, Int, Fix, Round, Sgn, Sqr, Exp, Log, Sin, Cos, Tan, Atn) and
// the operators that SQLite does differently: / always divides as reals, \ and Mod round
// their operands to whole numbers first (half to even), ^ is a real power. Division by
// zero raises "Division by zero.". A Null operand gives Null.
#include <cmath>

#include "jet_values.h"

namespace kelvo::jet {
namespace {

using Fn = void (*)(sqlite3_context*, int, sqlite3_value**);

// The operands as numbers; false when the result was set (Null, or an error).
bool operands(sqlite3_context* ctx, int n, sqlite3_value** a, double* out) {
    for (int i = 0; i < n; ++i) {
        if (isNull(a[i])) {
            sqlite3_result_null(ctx);
            return false;
        }
        const auto v = numberOf(a[i]);
        if (!v) {
            resultError(ctx, kTypeMismatch);
            return false;
        }
        out[i] = *v;
    }
    return true;
}

bool integral(sqlite3_value** a, int n) {
    for (int i = 0; i < n; ++i)
        if (sqlite3_value_type(a[i]) != SQLITE_INTEGER) return false;
    return true;
}

void divide(sqlite3_context* ctx, int, sqlite3_value** a) {
    double v[2];
    if (!operands(ctx, 2, a, v)) return;
    if (v[1] == 0) return resultError(ctx, kDivisionByZero);
    sqlite3_result_double(ctx, v[0] / v[1]);
}

template <bool Remainder>
void wholeDivide(sqlite3_context* ctx, int, sqlite3_value** a) {
    double v[2];
    if (!operands(ctx, 2, a, v)) return;
    const double x = roundEven(v[0]), y = roundEven(v[1]);
    if (y == 0) return resultError(ctx, kDivisionByZero);
    if (std::fabs(x) > 9.2e18 || std::fabs(y) > 9.2e18) return resultError(ctx, kOverflow);
    const auto ix = static_cast<long long>(x), iy = static_cast<long long>(y);
    if (iy == -1) return sqlite3_result_int64(ctx, Remainder ? 0 : -ix);
    sqlite3_result_int64(ctx, Remainder ? ix % iy : ix / iy);
}

void power(sqlite3_context* ctx, int, sqlite3_value** a) {
    double v[2];
    if (!operands(ctx, 2, a, v)) return;
    const double r = std::pow(v[0], v[1]);
    if (std::isnan(r)) return resultError(ctx, kInvalidCall);
    if (std::isinf(r)) return resultError(ctx, kOverflow);
    sqlite3_result_double(ctx, r);
}

template <double (*F)(double)>
void keepType(sqlite3_context* ctx, int, sqlite3_value** a) {
    double v;
    if (operands(ctx, 1, a, &v)) resultNumber(ctx, F(v), integral(a, 1));
}

double sign(double x) { return x > 0 ? 1 : x < 0 ? -1 : 0; }

void round(sqlite3_context* ctx, int n, sqlite3_value** a) {
    double v[2] = {0, 0};
    if (!operands(ctx, n, a, v)) return;
    if (v[1] < 0 || v[1] > 15) return resultError(ctx, kInvalidCall);
    resultNumber(ctx, roundEven(v[0], static_cast<int>(v[1])), integral(a, 1));
}

void sgn(sqlite3_context* ctx, int, sqlite3_value** a) {
    double v;
    if (operands(ctx, 1, a, &v)) sqlite3_result_int(ctx, static_cast<int>(sign(v)));
}

template <double (*F)(double), bool PositiveOnly, bool NonNegativeOnly>
void real(sqlite3_context* ctx, int, sqlite3_value** a) {
    double v;
    if (!operands(ctx, 1, a, &v)) return;
    if ((PositiveOnly && v <= 0) || (NonNegativeOnly && v < 0)) return resultError(ctx, kInvalidCall);
    const double r = F(v);
    if (std::isinf(r)) return resultError(ctx, kOverflow);
    sqlite3_result_double(ctx, r);
}

double absolute(double x) { return std::fabs(x); }
double floorOf(double x) { return std::floor(x); }
double truncOf(double x) { return std::trunc(x); }
double sqrtOf(double x) { return std::sqrt(x); }
double expOf(double x) { return std::exp(x); }
double logOf(double x) { return std::log(x); }
double sinOf(double x) { return std::sin(x); }
double cosOf(double x) { return std::cos(x); }
double tanOf(double x) { return std::tan(x); }
double atnOf(double x) { return std::atan(x); }

}  // namespace

void registerMathFunctions(sqlite3* db) {
    static constexpr struct { const char* name; int args; Fn fn; } kTable[] = {
        {"jet_div", 2, divide},
        {"jet_intdiv", 2, wholeDivide<false>},
        {"jet_mod", 2, wholeDivide<true>},
        {"jet_pow", 2, power},
        {"jet_abs", 1, keepType<absolute>},
        {"jet_int", 1, keepType<floorOf>},
        {"jet_fix", 1, keepType<truncOf>},
        {"jet_round", -1, round},
        {"jet_sgn", 1, sgn},
        {"jet_sqr", 1, real<sqrtOf, false, true>},
        {"jet_exp", 1, real<expOf, false, false>},
        {"jet_log", 1, real<logOf, true, false>},
        {"jet_sin", 1, real<sinOf, false, false>},
        {"jet_cos", 1, real<cosOf, false, false>},
        {"jet_tan", 1, real<tanOf, false, false>},
        {"jet_atn", 1, real<atnOf, false, false>},
    };
    for (const auto& f : kTable) addFunction(db, f.name, f.args, f.fn);
}

}  // namespace kelvo::jet
