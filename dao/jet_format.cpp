// Format and its kin, in the US English locale. Format(value[, format]) knows the named
// formats (General Date, Long Date, Medium Date, Short Date, Long Time, Medium Time,
// Short Time, General Number, Currency, Fixed, Standard, Percent, Scientific, Yes/No,
// True/False, On/Off) and custom formats: dates (d dd ddd dddd ddddd dddddd w ww m mm
// mmm mmmm q y yy yyyy h hh n nn s ss ttttt c AM/PM am/pm A/P a/p AMPM), numbers (0 # .
// , % E+ E-, with up to four sections positive;negative;zero;null), and text (@ & < >).
// "quoted" text and \c are literal. A format that has date parts formats the value as a
// date; one with 0 or # as a number.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "jet_dates.h"
#include "jet_values.h"
#include "text_collation.h"

namespace kelvo::jet {
namespace {

bool startsNoCase(std::string_view s, size_t at, std::string_view word) {
    if (s.size() - at < word.size()) return false;
    for (size_t i = 0; i < word.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(s[at + i])) != word[i]) return false;
    return true;
}

std::string lowered(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// The custom format behind a named one; the name itself when it is not one.
std::string namedFormat(const std::string& f) {
    static constexpr std::pair<std::string_view, std::string_view> kNamed[] = {
        {"long date", "dddd, mmmm d, yyyy"},
        {"medium date", "dd-mmm-yy"},
        {"short date", "m/d/yyyy"},
        {"long time", "h:nn:ss AM/PM"},
        {"medium time", "hh:nn AM/PM"},
        {"short time", "hh:nn"},
        {"currency", "$#,##0.00;($#,##0.00)"},
        {"fixed", "0.00"},
        {"standard", "#,##0.00"},
        {"percent", "0.00%"},
        {"scientific", "0.00E+00"},
    };
    const std::string key = lowered(f);
    for (const auto& [name, format] : kNamed)
        if (key == name) return std::string(format);
    return f;
}

// ---- dates ----

std::string twoDigits(int v) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "%02d", v);
    return buf;
}

bool hasAmPm(std::string_view f) {
    for (size_t i = 0; i < f.size(); ++i) {
        if (f[i] == '"') {
            const size_t close = f.find('"', i + 1);
            if (close == std::string_view::npos) return false;
            i = close;
        } else if (f[i] == '\\') {
            ++i;
        } else if (startsNoCase(f, i, "am/pm") || startsNoCase(f, i, "a/p") ||
                   startsNoCase(f, i, "ampm")) {
            return true;
        }
    }
    return false;
}

std::string formatDate(double ole, std::string_view f, int firstDay) {
    const auto parts = fromOleDate(ole);
    if (!parts) return {};
    const DateParts& p = *parts;
    const bool twelve = hasAmPm(f);
    std::string out;
    bool afterHour = false;  // m right after h means minutes
    for (size_t i = 0; i < f.size();) {
        const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(f[i])));
        size_t run = 1;
        while (i + run < f.size() &&
               std::tolower(static_cast<unsigned char>(f[i + run])) == c)
            ++run;
        if (f[i] == '"') {
            const size_t close = f.find('"', i + 1);
            out += f.substr(i + 1, (close == std::string_view::npos ? f.size() : close) - i - 1);
            i = close == std::string_view::npos ? f.size() : close + 1;
            continue;
        }
        if (f[i] == '\\' && i + 1 < f.size()) {
            out += f[i + 1];
            i += 2;
            continue;
        }
        if (startsNoCase(f, i, "am/pm") || startsNoCase(f, i, "a/p")) {
            const bool full = startsNoCase(f, i, "am/pm");
            const bool upper = std::isupper(static_cast<unsigned char>(f[i]));
            std::string mark = p.hour < 12 ? (full ? "am" : "a") : (full ? "pm" : "p");
            if (upper) for (char& m : mark) m = static_cast<char>(std::toupper(static_cast<unsigned char>(m)));
            out += mark;
            i += full ? 5 : 3;
            continue;
        }
        if (startsNoCase(f, i, "ampm")) {
            out += p.hour < 12 ? "AM" : "PM";
            i += 4;
            continue;
        }
        const int hour = twelve ? (p.hour % 12 == 0 ? 12 : p.hour % 12) : p.hour;
        switch (c) {
            case 'c': out += generalDateText(ole); break;
            case 'd':
                if (run >= 6) out += formatDate(ole, "dddd, mmmm d, yyyy", firstDay);
                else if (run == 5) out += formatDate(ole, "m/d/yyyy", firstDay);
                else if (run == 4) out += weekdayName(p.weekday());
                else if (run == 3) out += weekdayName(p.weekday()).substr(0, 3);
                else out += run == 2 ? twoDigits(p.day) : std::to_string(p.day);
                break;
            case 'w':
                if (run >= 2) {
                    const DateParts jan1{p.year, 1, 1};
                    const long long day = serialDay(p.year, p.month, p.day) - serialDay(p.year, 1, 1);
                    out += std::to_string((day + (jan1.weekday() - firstDay + 7) % 7) / 7 + 1);
                } else {
                    out += std::to_string((p.weekday() - firstDay + 7) % 7 + 1);
                }
                break;
            case 'm': {
                size_t k = i + run;
                while (k < f.size() && !std::isalpha(static_cast<unsigned char>(f[k]))) ++k;
                const bool minutes = run <= 2 && (afterHour || (k < f.size() &&
                                                                std::tolower(static_cast<unsigned char>(f[k])) == 's'));
                if (minutes) out += run == 2 ? twoDigits(p.minute) : std::to_string(p.minute);
                else if (run >= 4) out += monthName(p.month);
                else if (run == 3) out += monthName(p.month).substr(0, 3);
                else out += run == 2 ? twoDigits(p.month) : std::to_string(p.month);
                break;
            }
            case 'q': out += std::to_string((p.month - 1) / 3 + 1); break;
            case 'y':
                if (run >= 3) out += std::to_string(p.year);
                else if (run == 2) out += twoDigits(p.year % 100);
                else out += std::to_string(serialDay(p.year, p.month, p.day) - serialDay(p.year, 1, 1) + 1);
                break;
            case 'h': out += run >= 2 ? twoDigits(hour) : std::to_string(hour); break;
            case 'n': out += run >= 2 ? twoDigits(p.minute) : std::to_string(p.minute); break;
            case 's': out += run >= 2 ? twoDigits(p.second) : std::to_string(p.second); break;
            case 't':
                if (run >= 5) {
                    out += formatDate(ole, "h:nn:ss AM/PM", firstDay);
                    break;
                }
                [[fallthrough]];
            default:
                out += f.substr(i, run);
        }
        if (c == 'h') afterHour = true;
        else if (std::isalpha(static_cast<unsigned char>(c))) afterHour = false;
        i += run;
    }
    return out;
}

// ---- numbers ----

std::vector<std::string> sections(std::string_view f) {
    std::vector<std::string> out(1);
    for (size_t i = 0; i < f.size(); ++i) {
        if (f[i] == '"') {
            const size_t close = f.find('"', i + 1);
            const size_t end = close == std::string_view::npos ? f.size() : close + 1;
            out.back() += f.substr(i, end - i);
            i = end - 1;
        } else if (f[i] == '\\' && i + 1 < f.size()) {
            out.back() += f.substr(i, 2);
            ++i;
        } else if (f[i] == ';') {
            out.emplace_back();
        } else {
            out.back() += f[i];
        }
    }
    return out;
}

struct Piece {
    enum Kind { Zero, Hash, Literal } kind;
    std::string text;
};

// Digits of a whole number, grouped in thousands when asked.
std::string groupDigits(const std::string& digits, bool group) {
    if (!group) return digits;
    std::string out;
    for (size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) out += ',';
        out += digits[i];
    }
    return out;
}

std::string formatNumberSection(double value, std::string_view f) {
    std::vector<Piece> integer, fraction, exponentDigits;
    std::string prefix, exponentSign;
    bool seenDigit = false, inFraction = false, group = false, percent = false, scientific = false;
    std::string suffix;
    auto literal = [&](const std::string& text) {
        std::vector<Piece>& target = scientific ? exponentDigits : inFraction ? fraction : integer;
        if (!seenDigit) prefix += text;
        else if (scientific || inFraction) suffix += text;
        else target.push_back({Piece::Literal, text});
    };
    for (size_t i = 0; i < f.size(); ++i) {
        const char c = f[i];
        if (c == '"') {
            const size_t close = f.find('"', i + 1);
            const size_t end = close == std::string_view::npos ? f.size() : close;
            literal(std::string(f.substr(i + 1, end - i - 1)));
            i = end;
        } else if (c == '\\' && i + 1 < f.size()) {
            literal(std::string(1, f[++i]));
        } else if (c == '0' || c == '#') {
            if (!suffix.empty() && !scientific) {  // digits after a literal: keep it in place
                (inFraction ? fraction : integer).push_back({Piece::Literal, suffix});
                suffix.clear();
            }
            seenDigit = true;
            (scientific ? exponentDigits : inFraction ? fraction : integer)
                .push_back({c == '0' ? Piece::Zero : Piece::Hash, {}});
        } else if (c == '.' && !inFraction && !scientific) {
            inFraction = true;
            seenDigit = true;
        } else if (c == ',' && seenDigit && !inFraction && !scientific) {
            group = true;
        } else if (c == '%') {
            percent = true;
            literal("%");
        } else if ((c == 'E' || c == 'e') && i + 1 < f.size() && (f[i + 1] == '+' || f[i + 1] == '-')) {
            scientific = true;
            exponentSign = f.substr(i, 2);
            ++i;
        } else {
            literal(std::string(1, c));
        }
    }
    if (percent) value *= 100;
    int exponent = 0;
    if (scientific && value != 0) {
        int intDigits = 0;
        for (const Piece& p : integer) intDigits += p.kind != Piece::Literal;
        exponent = static_cast<int>(std::floor(std::log10(value))) - (intDigits > 0 ? intDigits - 1 : -1);
        value /= std::pow(10.0, exponent);
    }
    int decimals = 0;
    for (const Piece& p : fraction) decimals += p.kind != Piece::Literal;
    char buf[400];
    std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
    std::string text = buf;
    if (scientific && decimals >= 0) {  // rounding may have made 10.0
        const double rounded = std::strtod(buf, nullptr);
        int intDigits = 0;
        for (const Piece& p : integer) intDigits += p.kind != Piece::Literal;
        if (rounded >= std::pow(10.0, std::max(intDigits, 1))) {
            value /= 10;
            ++exponent;
            std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
            text = buf;
        }
    }
    const size_t dot = text.find('.');
    std::string whole = text.substr(0, dot);
    std::string frac = dot == std::string::npos ? "" : text.substr(dot + 1);
    if (whole == "0") whole.clear();

    // Integer part: digits fill placeholders from the right; extra digits go first.
    std::string digits = groupDigits(whole, group);
    std::string intOut;
    size_t next = digits.size();
    bool firstPlaceholderDone = false;
    for (size_t k = integer.size(); k-- > 0;) {
        const Piece& p = integer[k];
        if (p.kind == Piece::Literal) {
            intOut.insert(0, p.text);
            continue;
        }
        bool leftmost = true;
        for (size_t j = 0; j < k; ++j) leftmost = leftmost && integer[j].kind == Piece::Literal;
        if (leftmost) {
            intOut.insert(0, digits.substr(0, next));
            if (next == 0 && p.kind == Piece::Zero) intOut.insert(0, "0");
            next = 0;
        } else if (next > 0) {
            size_t take = 1;
            if (digits[next - 1] == ',' && next >= 2) take = 2;
            intOut.insert(0, digits.substr(next - take, take));
            next -= take;
        } else if (p.kind == Piece::Zero) {
            intOut.insert(0, "0");
        }
        firstPlaceholderDone = true;
    }
    if (!firstPlaceholderDone) intOut = digits;
    // Fraction: trailing digits under # are dropped when zero.
    std::string fracOut;
    size_t d = 0;
    size_t lastKept = 0;
    std::vector<std::pair<std::string, bool>> fracPieces;  // text, optional digit
    for (const Piece& p : fraction) {
        if (p.kind == Piece::Literal) {
            fracPieces.emplace_back(p.text, false);
        } else {
            fracPieces.emplace_back(std::string(1, frac[d++]), p.kind == Piece::Hash);
        }
    }
    for (size_t k = 0; k < fracPieces.size(); ++k)
        if (!fracPieces[k].second || fracPieces[k].first != "0") lastKept = k + 1;
    for (size_t k = 0; k < lastKept; ++k) fracOut += fracPieces[k].first;
    const bool hasDot = f.find('.') != std::string_view::npos;
    std::string out = prefix + intOut + (hasDot && (!fracOut.empty() || fraction.empty()) ? "." : "") + fracOut;
    if (hasDot && fracOut.empty() && !fraction.empty()) out = prefix + intOut + ".";
    if (scientific) {
        int minDigits = 0;
        for (const Piece& p : exponentDigits) minDigits += p.kind == Piece::Zero;
        std::string e = std::to_string(std::abs(exponent));
        while (static_cast<int>(e.size()) < minDigits) e.insert(0, "0");
        const char mark = exponentSign[0];
        out += std::string(1, mark) + (exponent < 0 ? "-" : exponentSign[1] == '+' ? "+" : "") + e;
    }
    return out + suffix;
}

std::string formatNumber(double value, std::string_view f) {
    const std::vector<std::string> s = sections(f);
    if (value == 0 && s.size() >= 3 && !s[2].empty()) return formatNumberSection(0, s[2]);
    if (value < 0 && s.size() >= 2 && !s[1].empty()) return formatNumberSection(-value, s[1]);
    const std::string body = formatNumberSection(std::fabs(value), s[0]);
    const bool showsNonZero = body.find_first_of("123456789") != std::string::npos;
    return value < 0 && showsNonZero ? "-" + body : body;
}

// ---- text ----

std::string formatText(const std::string& text, std::string_view f) {
    std::string value = text;
    if (f.find('>') != std::string_view::npos) value = upperText(value);
    else if (f.find('<') != std::string_view::npos) value = lowerText(value);
    size_t placeholders = 0;
    for (char c : f) placeholders += c == '@' || c == '&';
    if (placeholders == 0) return value;
    std::string out;
    size_t from = value.size() > placeholders ? value.size() - placeholders : 0;
    out = value.substr(0, from);
    size_t missing = placeholders > value.size() ? placeholders - value.size() : 0;
    for (char c : f) {
        if (c == '@' || c == '&') {
            if (missing > 0) {
                if (c == '@') out += ' ';
                --missing;
            } else {
                out += value[from++];
            }
        } else if (c != '<' && c != '>' && c != '!') {
            out += c;
        }
    }
    return out;
}

bool isDateFormat(std::string_view f) {
    bool date = false;
    for (size_t i = 0; i < f.size(); ++i) {
        const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(f[i])));
        if (f[i] == '"') {
            const size_t close = f.find('"', i + 1);
            if (close == std::string_view::npos) break;
            i = close;
        } else if (f[i] == '\\') {
            ++i;
        } else if (c == '0' || c == '#') {
            return false;
        } else if (std::string_view("dmyhnswqc").find(c) != std::string_view::npos ||
                   startsNoCase(f, i, "am/pm") || startsNoCase(f, i, "a/p")) {
            date = true;
        }
    }
    return date;
}

std::string yesNo(double v, const std::string& key) {
    if (key == "yes/no") return v != 0 ? "Yes" : "No";
    if (key == "true/false") return v != 0 ? "True" : "False";
    return v != 0 ? "On" : "Off";
}

void format(sqlite3_context* ctx, int n, sqlite3_value** a) {
    const std::string f = n > 1 && !isNull(a[1]) ? textOf(a[1]) : std::string{};
    if (isNull(a[0])) {
        const std::vector<std::string> s = sections(f);
        if (s.size() >= 4) return resultText(ctx, formatNumberSection(0, s[3]).substr(0));
        return sqlite3_result_null(ctx);
    }
    const int firstDay = n > 2 ? static_cast<int>(numberOf(a[2]).value_or(1)) : 1;
    const std::string key = lowered(f);
    const auto number = numberOf(a[0]);
    if (f.empty() || key == "general number") {
        return resultText(ctx, number && sqlite3_value_type(a[0]) != SQLITE_TEXT ? numberText(*number)
                                                                               : textOf(a[0]));
    }
    if (key == "general date") {
        const auto d = dateOf(a[0]);
        return resultText(ctx, d ? generalDateText(*d) : textOf(a[0]));
    }
    if (key == "yes/no" || key == "true/false" || key == "on/off") {
        if (!number) return resultText(ctx, textOf(a[0]));
        return resultText(ctx, yesNo(*number, key));
    }
    const std::string custom = namedFormat(f);
    if (isDateFormat(custom)) {
        const auto d = dateOf(a[0]);
        if (!d || !fromOleDate(*d)) return resultText(ctx, textOf(a[0]));
        return resultText(ctx, formatDate(*d, custom, firstDay >= 1 && firstDay <= 7 ? firstDay : 1));
    }
    if (custom.find_first_of("0#") != std::string::npos) {
        if (!number) return resultText(ctx, textOf(a[0]));
        return resultText(ctx, formatNumber(*number, custom));
    }
    resultText(ctx, formatText(textOf(a[0]), custom));
}

void formatWith(sqlite3_context* ctx, int n, sqlite3_value** a, const std::string& pattern) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    const auto number = numberOf(a[0]);
    if (!number) return resultError(ctx, kTypeMismatch);
    std::string f = pattern;
    int decimals = 2;
    if (n > 1 && !isNull(a[1])) decimals = static_cast<int>(numberOf(a[1]).value_or(2));
    if (decimals < 0 || decimals > 15) return resultError(ctx, kInvalidCall);
    const std::string zeros = decimals > 0 ? "." + std::string(static_cast<size_t>(decimals), '0') : "";
    size_t at;
    while ((at = f.find("{d}")) != std::string::npos) f.replace(at, 3, zeros);
    resultText(ctx, formatNumber(*number, f));
}

void formatnumber(sqlite3_context* ctx, int n, sqlite3_value** a) { formatWith(ctx, n, a, "#,##0{d}"); }
void formatcurrency(sqlite3_context* ctx, int n, sqlite3_value** a) {
    formatWith(ctx, n, a, "$#,##0{d};($#,##0{d})");
}
void formatpercent(sqlite3_context* ctx, int n, sqlite3_value** a) { formatWith(ctx, n, a, "#,##0{d}%"); }

void formatdatetime(sqlite3_context* ctx, int n, sqlite3_value** a) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    const auto d = dateOf(a[0]);
    if (!d || !fromOleDate(*d)) return resultError(ctx, kTypeMismatch);
    const int kind = n > 1 ? static_cast<int>(numberOf(a[1]).value_or(0)) : 0;
    static constexpr std::string_view kFormats[] = {"", "dddd, mmmm d, yyyy", "m/d/yyyy",
                                                    "h:nn:ss AM/PM", "hh:nn"};
    if (kind < 0 || kind > 4) return resultError(ctx, kInvalidCall);
    resultText(ctx, kind == 0 ? generalDateText(*d) : formatDate(*d, kFormats[kind], 1));
}

}  // namespace

void registerFormatFunctions(sqlite3* db) {
    addFunction(db, "jet_format", -1, format);
    addFunction(db, "jet_formatnumber", -1, formatnumber);
    addFunction(db, "jet_formatcurrency", -1, formatcurrency);
    addFunction(db, "jet_formatpercent", -1, formatpercent);
    addFunction(db, "jet_formatdatetime", -1, formatdatetime);
}

}  // namespace kelvo::jet
