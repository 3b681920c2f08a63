// COleDateTime: automation dates (days since 12/30/1899; the fraction is the time of day,
// taken as positive also for dates before the epoch), their parts, the US-English default
// text form and the parse of US dates.
#include <cmath>
#include <cstdint>
#include <ctime>
#include <cwctype>
#include <string>

#include "dao_variant.h"

namespace {

constexpr long long kEpochToUnixDays = 25569;  // 12/30/1899 .. 1/1/1970
constexpr double kMinDate = -657434.0;         // 1/1/100
constexpr double kMaxDate = 2958465.99999;     // 12/31/9999 23:59:59

struct Parts {
    int year, month, day, hour, minute, second;
};

// Days since 1/1/1970 of a proleptic Gregorian date, and back.
long long daysFromCivil(long long y, unsigned m, unsigned d) {
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long long>(doe) - 719468;
}

void civilFromDays(long long z, int& y, int& m, int& d) {
    z += 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(static_cast<long long>(yoe) + era * 400 + (m <= 2));
}

int daysInMonth(int year, int month) {
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

// The day number and the seconds into that day, rounded to the nearest second.
void split(DATE dt, long long& day, long long& seconds) {
    day = static_cast<long long>(std::trunc(dt));
    seconds = std::llround(std::fabs(dt - static_cast<double>(day)) * 86400.0);
    if (seconds >= 86400) {
        seconds -= 86400;
        day += dt < 0 ? -1 : 1;
    }
}

Parts partsOf(DATE dt) {
    long long day = 0, seconds = 0;
    split(dt, day, seconds);
    Parts p{};
    civilFromDays(day - kEpochToUnixDays, p.year, p.month, p.day);
    p.hour = static_cast<int>(seconds / 3600);
    p.minute = static_cast<int>(seconds / 60 % 60);
    p.second = static_cast<int>(seconds % 60);
    return p;
}

bool validParts(const Parts& p) {
    return p.year >= 100 && p.year <= 9999 && p.month >= 1 && p.month <= 12 && p.day >= 1 &&
           p.day <= daysInMonth(p.year, p.month) && p.hour >= 0 && p.hour <= 23 &&
           p.minute >= 0 && p.minute <= 59 && p.second >= 0 && p.second <= 59;
}

DATE dateOf(const Parts& p) {
    const long long day = daysFromCivil(p.year, p.month, p.day) + kEpochToUnixDays;
    const double time = (p.hour * 3600 + p.minute * 60 + p.second) / 86400.0;
    return day >= 0 ? static_cast<double>(day) + time : static_cast<double>(day) - time;
}

// A small reader over the text of a date.
struct Scanner {
    const wchar_t* s;
    void blanks() {
        while (*s == L' ' || *s == L'\t') ++s;
    }
    bool number(int& out, int& digits) {
        blanks();
        digits = 0;
        out = 0;
        while (std::iswdigit(*s) && digits < 5) {
            out = out * 10 + (*s++ - L'0');
            ++digits;
        }
        return digits > 0;
    }
    bool take(wchar_t c) {
        blanks();
        if (*s != c) return false;
        ++s;
        return true;
    }
    bool atEnd() {
        blanks();
        return *s == 0;
    }
};

// "M/D/YYYY", "M/D/YY", "M-D-YYYY" or "YYYY-MM-DD" (also with "/").
bool parseDate(Scanner& in, Parts& p) {
    int a = 0, b = 0, c = 0, da = 0, db = 0, dc = 0;
    const wchar_t* start = in.s;
    if (!in.number(a, da)) return false;
    in.blanks();
    const wchar_t sep = *in.s;
    if (sep != L'/' && sep != L'-') {
        in.s = start;
        return false;
    }
    ++in.s;
    if (!in.number(b, db) || !in.take(sep) || !in.number(c, dc)) return false;
    if (da == 4) {
        p.year = a, p.month = b, p.day = c;
    } else {
        p.month = a, p.day = b, p.year = c;
        if (dc <= 2) p.year += c < 30 ? 2000 : 1900;
    }
    return true;
}

// "h:mm[:ss] [AM|PM]".
bool parseTime(Scanner& in, Parts& p) {
    int h = 0, m = 0, s = 0, digits = 0;
    if (!in.number(h, digits) || !in.take(L':') || !in.number(m, digits)) return false;
    if (in.take(L':') && !in.number(s, digits)) return false;
    in.blanks();
    const wchar_t first = static_cast<wchar_t>(std::towupper(in.s[0]));
    if ((first == L'A' || first == L'P') && std::towupper(in.s[1]) == L'M') {
        if (h < 1 || h > 12) return false;
        h = h % 12 + (first == L'P' ? 12 : 0);
        in.s += 2;
    }
    p.hour = h, p.minute = m, p.second = s;
    return true;
}

}  // namespace

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second) {
    SetDateTime(year, month, day, hour, minute, second);
}

COleDateTime COleDateTime::GetCurrentTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return COleDateTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                        local.tm_min, local.tm_sec);
}

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) {
    const Parts p{year, month, day, hour, minute, second};
    if (!validParts(p)) {
        m_dt = 0.0;
        m_status = invalid;
        return 1;
    }
    m_dt = dateOf(p);
    m_status = valid;
    return 0;
}

int COleDateTime::GetYear() const { return partsOf(m_dt).year; }
int COleDateTime::GetMonth() const { return partsOf(m_dt).month; }
int COleDateTime::GetDay() const { return partsOf(m_dt).day; }
int COleDateTime::GetHour() const { return partsOf(m_dt).hour; }
int COleDateTime::GetMinute() const { return partsOf(m_dt).minute; }
int COleDateTime::GetSecond() const { return partsOf(m_dt).second; }

int COleDateTime::GetDayOfWeek() const {
    long long day = 0, seconds = 0;
    split(m_dt, day, seconds);
    // 12/30/1899 was a Saturday (7).
    return static_cast<int>(((day + 6) % 7 + 7) % 7) + 1;
}

int COleDateTime::GetDayOfYear() const {
    const Parts p = partsOf(m_dt);
    return static_cast<int>(daysFromCivil(p.year, p.month, p.day) - daysFromCivil(p.year, 1, 1)) +
           1;
}

std::wstring COleDateTime::Format() const {
    if (m_status == null) return L"";
    if (m_status == invalid || m_dt < kMinDate || m_dt > kMaxDate) return L"Invalid DateTime";
    long long day = 0, seconds = 0;
    split(m_dt, day, seconds);
    const Parts p = partsOf(m_dt);
    std::wstring text;
    if (day != 0) {
        text = std::to_wstring(p.month) + L'/' + std::to_wstring(p.day) + L'/' +
               std::to_wstring(p.year);
    }
    if (seconds != 0 || day == 0) {
        const int hour12 = p.hour % 12 == 0 ? 12 : p.hour % 12;
        wchar_t buffer[32];
        swprintf(buffer, 32, L"%d:%02d:%02d %ls", hour12, p.minute, p.second,
                 p.hour < 12 ? L"AM" : L"PM");
        if (!text.empty()) text += L' ';
        text += buffer;
    }
    return text;
}

bool COleDateTime::ParseDateTime(const wchar_t* text) {
    Scanner in{text ? text : L""};
    Parts p{1899, 12, 30, 0, 0, 0};
    const bool hasDate = parseDate(in, p);
    bool ok = hasDate || in.atEnd() == false;
    if (ok && !in.atEnd()) ok = parseTime(in, p);
    ok = ok && in.atEnd() && validParts(p);
    if (!ok) {
        m_dt = 0.0;
        m_status = invalid;
        return false;
    }
    m_dt = dateOf(p);
    m_status = valid;
    return true;
}
