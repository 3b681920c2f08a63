// Date functions of the dialect. Dates are OLE dates (REAL); a date argument may also be
// date text ("1/31/2003"). Intervals: yyyy year, q quarter, m month, y day of year,
// d day, w weekday, ww week, h hour, n minute, s second. A Null date gives Null.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <string>

#include "jet_dates.h"
#include "jet_values.h"

namespace kelvo::jet {
namespace {

using Fn = void (*)(sqlite3_context*, int, sqlite3_value**);

// The date parts of an argument; false (after raising or returning Null) otherwise.
bool partsOf(sqlite3_context* ctx, sqlite3_value* v, DateParts& out, double* ole = nullptr) {
    if (isNull(v)) {
        sqlite3_result_null(ctx);
        return false;
    }
    const auto d = dateOf(v);
    const auto p = d ? fromOleDate(*d) : std::nullopt;
    if (!p) {
        resultError(ctx, kTypeMismatch);
        return false;
    }
    out = *p;
    if (ole != nullptr) *ole = *d;
    return true;
}

void resultDate(sqlite3_context* ctx, std::optional<double> d) {
    if (!d) return resultError(ctx, kInvalidCall);
    sqlite3_result_double(ctx, *d);
}

void now(sqlite3_context* ctx, int, sqlite3_value**) { sqlite3_result_double(ctx, nowOleDate()); }
void today(sqlite3_context* ctx, int, sqlite3_value**) {
    sqlite3_result_double(ctx, std::floor(nowOleDate()));
}
void timeNow(sqlite3_context* ctx, int, sqlite3_value**) {
    const double n = nowOleDate();
    sqlite3_result_double(ctx, n - std::floor(n));
}

template <int DateParts::*Field>
void part(sqlite3_context* ctx, int, sqlite3_value** a) {
    DateParts p;
    if (partsOf(ctx, a[0], p)) sqlite3_result_int(ctx, p.*Field);
}

// The first day of the week argument (1 = Sunday ... 7; 0 means Sunday here).
int firstDay(sqlite3_value** a, int n, int index) {
    if (n <= index) return 1;
    const auto v = numberOf(a[index]);
    const int d = v ? static_cast<int>(*v) : 1;
    return d >= 1 && d <= 7 ? d : 1;
}

int weekdayFrom(const DateParts& p, int first) { return (p.weekday() - first + 7) % 7 + 1; }

void weekday(sqlite3_context* ctx, int n, sqlite3_value** a) {
    DateParts p;
    if (partsOf(ctx, a[0], p)) sqlite3_result_int(ctx, weekdayFrom(p, firstDay(a, n, 1)));
}

std::string intervalOf(sqlite3_value* v) {
    std::string s = textOf(v);
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// Week of the year, with weeks starting on the given day and week 1 holding January 1.
int weekOfYear(const DateParts& p, int first) {
    const DateParts jan1{p.year, 1, 1};
    const long long day = serialDay(p.year, p.month, p.day) - serialDay(p.year, 1, 1);
    return static_cast<int>((day + weekdayFrom(jan1, first) - 1) / 7) + 1;
}

void datepart(sqlite3_context* ctx, int n, sqlite3_value** a) {
    const std::string i = intervalOf(a[0]);
    DateParts p;
    if (!partsOf(ctx, a[1], p)) return;
    const int first = firstDay(a, n, 2);
    int r;
    if (i == "yyyy") r = p.year;
    else if (i == "q") r = (p.month - 1) / 3 + 1;
    else if (i == "m") r = p.month;
    else if (i == "y") r = static_cast<int>(serialDay(p.year, p.month, p.day) - serialDay(p.year, 1, 1)) + 1;
    else if (i == "d") r = p.day;
    else if (i == "w") r = weekdayFrom(p, first);
    else if (i == "ww") r = weekOfYear(p, first);
    else if (i == "h") r = p.hour;
    else if (i == "n") r = p.minute;
    else if (i == "s") r = p.second;
    else return resultError(ctx, kInvalidCall);
    sqlite3_result_int(ctx, r);
}

double timeOf(const DateParts& p) { return (p.hour * 3600.0 + p.minute * 60.0 + p.second) / 86400.0; }

std::optional<double> oleOf(long long days, double time) {
    if (days < -657434 || days > 2958465) return std::nullopt;
    return days >= 0 ? static_cast<double>(days) + time : static_cast<double>(days) - time;
}

void dateadd(sqlite3_context* ctx, int, sqlite3_value** a) {
    const std::string i = intervalOf(a[0]);
    const auto count = numberOf(a[1]);
    if (isNull(a[1])) return sqlite3_result_null(ctx);
    if (!count) return resultError(ctx, kTypeMismatch);
    DateParts p;
    double ole;
    if (!partsOf(ctx, a[2], p, &ole)) return;
    const long long k = static_cast<long long>(std::trunc(*count));
    if (i == "yyyy" || i == "q" || i == "m") {
        const long long months = k * (i == "yyyy" ? 12 : i == "q" ? 3 : 1);
        const long long total = p.year * 12LL + (p.month - 1) + months;
        const long long y = total >= 0 ? total / 12 : (total - 11) / 12;
        const int m = static_cast<int>(total - y * 12) + 1;
        const long long lastDay = serialDay(y, m + 1, 1) - serialDay(y, m, 1);
        const long long day = std::min<long long>(p.day, lastDay);
        return resultDate(ctx, oleOf(serialDay(y, m, day), timeOf(p)));
    }
    double seconds;
    if (i == "y" || i == "d" || i == "w") seconds = k * 86400.0;
    else if (i == "ww") seconds = k * 7 * 86400.0;
    else if (i == "h") seconds = k * 3600.0;
    else if (i == "n") seconds = k * 60.0;
    else if (i == "s") seconds = static_cast<double>(k);
    else return resultError(ctx, kInvalidCall);
    // Work in signed seconds from the epoch so that dates before 1899 add correctly.
    const long long day = serialDay(p.year, p.month, p.day);
    const double abs = day * 86400.0 + timeOf(p) * 86400.0 + seconds;
    const long long newDay = static_cast<long long>(std::floor(abs / 86400.0));
    resultDate(ctx, oleOf(newDay, (abs - newDay * 86400.0) / 86400.0));
}

void datediff(sqlite3_context* ctx, int n, sqlite3_value** a) {
    const std::string i = intervalOf(a[0]);
    DateParts p1, p2;
    if (!partsOf(ctx, a[1], p1) || !partsOf(ctx, a[2], p2)) return;
    const int first = firstDay(a, n, 3);
    const long long d1 = serialDay(p1.year, p1.month, p1.day);
    const long long d2 = serialDay(p2.year, p2.month, p2.day);
    const long long s1 = d1 * 86400 + p1.hour * 3600 + p1.minute * 60 + p1.second;
    const long long s2 = d2 * 86400 + p2.hour * 3600 + p2.minute * 60 + p2.second;
    auto floorDiv = [](long long x, long long y) { return x >= 0 ? x / y : -((-x + y - 1) / y); };
    long long r;
    if (i == "yyyy") r = p2.year - p1.year;
    else if (i == "q") r = (p2.year * 4LL + (p2.month - 1) / 3) - (p1.year * 4LL + (p1.month - 1) / 3);
    else if (i == "m") r = (p2.year * 12LL + p2.month) - (p1.year * 12LL + p1.month);
    else if (i == "y" || i == "d") r = d2 - d1;
    else if (i == "w") r = (d2 - d1) / 7;
    else if (i == "ww") {  // first days of the week after date1, up to date2
        const long long f0 = first % 7;  // a serial day of that weekday (0 was a Saturday)
        r = floorDiv(d2 - f0, 7) - floorDiv(d1 - f0, 7);
    }
    else if (i == "h") r = floorDiv(s2, 3600) - floorDiv(s1, 3600);
    else if (i == "n") r = floorDiv(s2, 60) - floorDiv(s1, 60);
    else if (i == "s") r = s2 - s1;
    else return resultError(ctx, kInvalidCall);
    sqlite3_result_int64(ctx, r);
}

bool whole(sqlite3_context* ctx, sqlite3_value* v, long long& out) {
    const auto n = numberOf(v);
    if (!n) {
        resultError(ctx, isNull(v) ? kInvalidNull : kTypeMismatch);
        return false;
    }
    out = static_cast<long long>(roundEven(*n));
    return true;
}

void dateserial(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0]) || isNull(a[1]) || isNull(a[2])) return sqlite3_result_null(ctx);
    long long y, m, d;
    if (!whole(ctx, a[0], y) || !whole(ctx, a[1], m) || !whole(ctx, a[2], d)) return;
    if (y >= 0 && y < 30) y += 2000;
    else if (y >= 30 && y < 100) y += 1900;
    if (std::llabs(y) > 100000 || std::llabs(m) > 1200000 || std::llabs(d) > 40000000)
        return resultError(ctx, kInvalidCall);
    resultDate(ctx, oleOf(serialDay(y, m, d), 0));
}

void timeserial(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0]) || isNull(a[1]) || isNull(a[2])) return sqlite3_result_null(ctx);
    long long h, m, s;
    if (!whole(ctx, a[0], h) || !whole(ctx, a[1], m) || !whole(ctx, a[2], s)) return;
    const long long total = h * 3600 + m * 60 + s;
    const long long day = total >= 0 ? total / 86400 : -((-total + 86399) / 86400);
    resultDate(ctx, oleOf(day, static_cast<double>(total - day * 86400) / 86400.0));
}

void datevalue(sqlite3_context* ctx, int, sqlite3_value** a) {
    double ole;
    DateParts p;
    if (partsOf(ctx, a[0], p, &ole)) sqlite3_result_double(ctx, std::trunc(ole));
}

void timevalue(sqlite3_context* ctx, int, sqlite3_value** a) {
    DateParts p;
    if (partsOf(ctx, a[0], p)) sqlite3_result_double(ctx, timeOf(p));
}

void cdate(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return resultError(ctx, kInvalidNull);
    double ole;
    DateParts p;
    if (partsOf(ctx, a[0], p, &ole)) sqlite3_result_double(ctx, ole);
}

void isdate(sqlite3_context* ctx, int, sqlite3_value** a) {
    const bool date = sqlite3_value_type(a[0]) == SQLITE_TEXT && parseDate(textOf(a[0]));
    sqlite3_result_int(ctx, date ? -1 : 0);
}

void monthname(sqlite3_context* ctx, int n, sqlite3_value** a) {
    long long m;
    if (!whole(ctx, a[0], m)) return;
    if (m < 1 || m > 12) return resultError(ctx, kInvalidCall);
    std::string name(monthName(static_cast<int>(m)));
    if (n > 1 && numberOf(a[1]).value_or(0) != 0) name.resize(3);
    resultText(ctx, name);
}

void weekdayname(sqlite3_context* ctx, int n, sqlite3_value** a) {
    long long w;
    if (!whole(ctx, a[0], w)) return;
    if (w < 1 || w > 7) return resultError(ctx, kInvalidCall);
    const int first = firstDay(a, n, 2);
    std::string name(weekdayName(static_cast<int>((w - 1 + first - 1) % 7 + 1)));
    if (n > 1 && numberOf(a[1]).value_or(0) != 0) name.resize(3);
    resultText(ctx, name);
}

}  // namespace

void registerDateFunctions(sqlite3* db) {
    addFunction(db, "jet_now", 0, now, false);
    addFunction(db, "jet_date", 0, today, false);
    addFunction(db, "jet_time", 0, timeNow, false);
    static constexpr struct { const char* name; int args; Fn fn; } kTable[] = {
        {"jet_year", 1, part<&DateParts::year>},
        {"jet_month", 1, part<&DateParts::month>},
        {"jet_day", 1, part<&DateParts::day>},
        {"jet_hour", 1, part<&DateParts::hour>},
        {"jet_minute", 1, part<&DateParts::minute>},
        {"jet_second", 1, part<&DateParts::second>},
        {"jet_weekday", -1, weekday},
        {"jet_datepart", -1, datepart},
        {"jet_dateadd", 3, dateadd},
        {"jet_datediff", -1, datediff},
        {"jet_dateserial", 3, dateserial},
        {"jet_timeserial", 3, timeserial},
        {"jet_datevalue", 1, datevalue},
        {"jet_timevalue", 1, timevalue},
        {"jet_cdate", 1, cdate},
        {"jet_isdate", 1, isdate},
        {"jet_monthname", -1, monthname},
        {"jet_weekdayname", -1, weekdayname},
    };
    for (const auto& f : kTable) addFunction(db, f.name, f.args, f.fn);
}

}  // namespace kelvo::jet
