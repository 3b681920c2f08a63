// OLE dates: calendar arithmetic, and reading dates the way Access reads them.
#include "jet_dates.h"

#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <vector>

namespace kelvo::jet {
namespace {

constexpr std::array<std::string_view, 12> kMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

// Days from 1970-01-01 of a civil date (H. Hinnant's algorithm).
long long daysFromCivil(long long y, long long m, long long d) {
    y -= m <= 2 ? 1 : 0;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const long long yoe = y - era * 400;
    const long long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const long long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

void civilFromDays(long long z, int& y, int& m, int& d) {
    z += 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const long long doe = z - era * 146097;
    const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const long long mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(yoe + era * 400 + (m <= 2 ? 1 : 0));
}

constexpr long long kEpochFrom1970 = -25569;  // 1899-12-30 counted from 1970-01-01

bool sameWord(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

// A month named in full or by its first three letters; 0 when none.
int monthFromWord(std::string_view word) {
    for (int i = 0; i < 12; ++i) {
        const std::string_view name = kMonths[static_cast<size_t>(i)];
        if (sameWord(word, name) || (word.size() == 3 && sameWord(word, name.substr(0, 3))) ||
            (word.size() == 4 && sameWord(word, "sept") && i == 8))
            return i + 1;
    }
    return 0;
}

bool isWeekdayWord(std::string_view word) {
    for (std::string_view name : kWeekdays)
        if (sameWord(word, name) || (word.size() == 3 && sameWord(word, name.substr(0, 3))))
            return true;
    return false;
}

struct DatePiece {
    enum Kind { Number, Word, Colon } kind;
    int value = 0;
    int digits = 0;
    std::string_view text;
};

std::optional<std::vector<DatePiece>> splitDate(std::string_view s) {
    std::vector<DatePiece> pieces;
    size_t i = 0;
    while (i < s.size()) {
        const unsigned char c = static_cast<unsigned char>(s[i]);
        if (std::isdigit(c)) {
            size_t j = i;
            long long v = 0;
            while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) {
                v = v * 10 + (s[j] - '0');
                if (v > 99999) return std::nullopt;
                ++j;
            }
            pieces.push_back({DatePiece::Number, static_cast<int>(v), static_cast<int>(j - i), {}});
            i = j;
        } else if (std::isalpha(c)) {
            size_t j = i;
            while (j < s.size() && std::isalpha(static_cast<unsigned char>(s[j]))) ++j;
            pieces.push_back({DatePiece::Word, 0, 0, s.substr(i, j - i)});
            i = j;
        } else if (c == ':') {
            pieces.push_back({DatePiece::Colon, 0, 0, {}});
            ++i;
        } else if (c == '/' || c == '-' || c == '.' || c == ',' || std::isspace(c)) {
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return pieces;
}

int fullYear(const DatePiece& p) {
    if (p.digits <= 2) return p.value < 30 ? 2000 + p.value : 1900 + p.value;
    return p.value;
}

int currentYear() {
    const std::time_t t = std::time(nullptr);
    std::tm local{};
    localtime_r(&t, &local);
    return local.tm_year + 1900;
}

bool validDay(int y, int m, int d) {
    if (m < 1 || m > 12 || d < 1 || y < 100 || y > 9999) return false;
    const long long next = m == 12 ? daysFromCivil(y + 1, 1, 1) : daysFromCivil(y, m + 1, 1);
    return d <= next - daysFromCivil(y, m, 1);
}

// Takes the time (h:m[:s] [AM|PM]) out of the pieces; false when it is malformed.
bool takeTime(std::vector<DatePiece>& pieces, DateParts& parts, bool& hasTime) {
    for (size_t i = 0; i + 1 < pieces.size(); ++i) {
        if (pieces[i].kind != DatePiece::Number ||
            pieces[i + 1].kind != DatePiece::Colon)
            continue;
        std::vector<int> fields{pieces[i].value};
        size_t j = i + 1;
        while (j + 1 < pieces.size() && pieces[j].kind == DatePiece::Colon &&
               pieces[j + 1].kind == DatePiece::Number && fields.size() < 3) {
            fields.push_back(pieces[j + 1].value);
            j += 2;
        }
        if (fields.size() < 2 || (j < pieces.size() && pieces[j].kind == DatePiece::Colon))
            return false;
        int hour = fields[0];
        if (j < pieces.size() && pieces[j].kind == DatePiece::Word &&
            (sameWord(pieces[j].text, "AM") || sameWord(pieces[j].text, "PM") ||
             sameWord(pieces[j].text, "A") || sameWord(pieces[j].text, "P"))) {
            if (hour < 1 || hour > 12) return false;
            const bool pm = std::tolower(static_cast<unsigned char>(pieces[j].text[0])) == 'p';
            hour = hour % 12 + (pm ? 12 : 0);
            ++j;
        }
        parts.hour = hour;
        parts.minute = fields[1];
        parts.second = fields.size() > 2 ? fields[2] : 0;
        if (parts.hour > 23 || parts.minute > 59 || parts.second > 59) return false;
        pieces.erase(pieces.begin() + static_cast<long>(i), pieces.begin() + static_cast<long>(j));
        hasTime = true;
        return true;
    }
    return true;
}

// An hour alone with AM or PM ("3 PM").
void takeBareHour(std::vector<DatePiece>& pieces, DateParts& parts, bool& hasTime) {
    for (size_t i = 0; i + 1 < pieces.size(); ++i) {
        const DatePiece& w = pieces[i + 1];
        if (pieces[i].kind == DatePiece::Number && w.kind == DatePiece::Word &&
            (sameWord(w.text, "AM") || sameWord(w.text, "PM")) && pieces[i].value >= 1 &&
            pieces[i].value <= 12) {
            parts.hour = pieces[i].value % 12 + (sameWord(w.text, "PM") ? 12 : 0);
            pieces.erase(pieces.begin() + static_cast<long>(i),
                         pieces.begin() + static_cast<long>(i) + 2);
            hasTime = true;
            return;
        }
    }
}

bool assignDate(const std::vector<DatePiece>& numbers, int month, DateParts& parts) {
    if (month != 0) {  // a month name: the numbers are the day and the year
        if (numbers.size() == 1) {
            if (numbers[0].digits > 2 || numbers[0].value > 31) {
                parts.year = fullYear(numbers[0]);
                parts.day = 1;
            } else {
                parts.year = currentYear();
                parts.day = numbers[0].value;
            }
        } else if (numbers.size() == 2) {
            const bool yearFirst = numbers[0].digits > 2 || numbers[0].value > 31;
            parts.year = fullYear(numbers[yearFirst ? 0 : 1]);
            parts.day = numbers[yearFirst ? 1 : 0].value;
        } else {
            return false;
        }
        parts.month = month;
        return validDay(parts.year, parts.month, parts.day);
    }
    if (numbers.size() == 3) {
        if (numbers[0].digits > 2 || numbers[0].value > 31) {  // y m d
            parts.year = fullYear(numbers[0]);
            parts.month = numbers[1].value;
            parts.day = numbers[2].value;
        } else {  // m d y, or d m y when the first cannot be a month
            parts.year = fullYear(numbers[2]);
            parts.month = numbers[0].value;
            parts.day = numbers[1].value;
            if (parts.month > 12 && parts.day <= 12) std::swap(parts.month, parts.day);
        }
    } else if (numbers.size() == 2) {
        if (numbers[1].digits > 2 || numbers[1].value > 31) {  // m y
            parts.year = fullYear(numbers[1]);
            parts.month = numbers[0].value;
            parts.day = 1;
        } else {  // m d of this year
            parts.year = currentYear();
            parts.month = numbers[0].value;
            parts.day = numbers[1].value;
            if (parts.month > 12 && parts.day <= 12) std::swap(parts.month, parts.day);
        }
    } else {
        return false;
    }
    return validDay(parts.year, parts.month, parts.day);
}

}  // namespace

int DateParts::weekday() const {
    const long long days = daysFromCivil(year, month, day);  // 1970-01-01 was a Thursday
    return static_cast<int>(((days % 7) + 7 + 4) % 7) + 1;
}

long long serialDay(long long year, long long month, long long day) {
    year += (month - 1 >= 0 ? (month - 1) / 12 : (month - 12) / 12);
    month = ((month - 1) % 12 + 12) % 12 + 1;
    return daysFromCivil(year, month, 1) + (day - 1) - kEpochFrom1970;
}

std::optional<double> toOleDate(const DateParts& p) {
    if (p.year < 100 || p.year > 9999) return std::nullopt;
    const long long days = serialDay(p.year, p.month, p.day);
    const double time = (p.hour * 3600.0 + p.minute * 60.0 + p.second) / 86400.0;
    return days >= 0 ? static_cast<double>(days) + time : static_cast<double>(days) - time;
}

std::optional<DateParts> fromOleDate(double oleDate) {
    if (!std::isfinite(oleDate) || oleDate < -657435.0 || oleDate >= 2958466.0)
        return std::nullopt;
    double whole = std::trunc(oleDate);
    long long seconds = std::llround(std::fabs(oleDate - whole) * 86400.0);
    if (seconds >= 86400) {  // rounding reached the next midnight
        seconds -= 86400;
        whole += oleDate < 0 ? -1 : 1;
    }
    DateParts p;
    civilFromDays(static_cast<long long>(whole) + kEpochFrom1970, p.year, p.month, p.day);
    p.hour = static_cast<int>(seconds / 3600);
    p.minute = static_cast<int>(seconds / 60 % 60);
    p.second = static_cast<int>(seconds % 60);
    if (p.year < 100 || p.year > 9999) return std::nullopt;
    return p;
}

std::optional<double> parseDate(std::string_view text) {
    auto pieces = splitDate(text);
    if (!pieces || pieces->empty()) return std::nullopt;
    DateParts parts;
    bool hasTime = false;
    if (!takeTime(*pieces, parts, hasTime)) return std::nullopt;
    if (!hasTime) takeBareHour(*pieces, parts, hasTime);
    std::vector<DatePiece> numbers;
    int month = 0;
    for (const DatePiece& p : *pieces) {
        if (p.kind == DatePiece::Number) {
            numbers.push_back(p);
        } else if (p.kind == DatePiece::Word) {
            const int m = monthFromWord(p.text);
            if (m != 0 && month == 0) month = m;
            else if (!isWeekdayWord(p.text)) return std::nullopt;
        } else {
            return std::nullopt;
        }
    }
    if (numbers.empty() && month == 0) {
        if (!hasTime) return std::nullopt;
    } else if (!assignDate(numbers, month, parts)) {
        return std::nullopt;
    }
    return toOleDate(parts);
}

std::string_view monthName(int month) {
    return month >= 1 && month <= 12 ? kMonths[static_cast<size_t>(month - 1)] : "";
}

std::string_view weekdayName(int weekday) {
    return weekday >= 1 && weekday <= 7 ? kWeekdays[static_cast<size_t>(weekday - 1)] : "";
}

std::string generalDateText(double oleDate) {
    const auto p = fromOleDate(oleDate);
    if (!p) return {};
    std::string out;
    const bool hasDate = std::trunc(oleDate) != 0.0;
    const bool hasTime = p->hour != 0 || p->minute != 0 || p->second != 0;
    if (hasDate || !hasTime)
        out = std::to_string(p->month) + "/" + std::to_string(p->day) + "/" +
              std::to_string(p->year);
    if (hasTime) {
        char buf[32];
        const int h12 = p->hour % 12 == 0 ? 12 : p->hour % 12;
        std::snprintf(buf, sizeof buf, "%d:%02d:%02d %s", h12, p->minute, p->second,
                      p->hour < 12 ? "AM" : "PM");
        if (!out.empty()) out += ' ';
        out += buf;
    }
    return out;
}

double nowOleDate() {
    const std::time_t t = std::time(nullptr);
    std::tm local{};
    localtime_r(&t, &local);
    DateParts p{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                local.tm_hour,        local.tm_min,     local.tm_sec};
    return toOleDate(p).value_or(0.0);
}

}  // namespace kelvo::jet
