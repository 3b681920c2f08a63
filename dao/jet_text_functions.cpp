// Text functions of the dialect, and the & and + operators. Positions and lengths
// count characters (code points), from 1. A Null text gives Null. InStr, InStrRev,
// Replace and StrComp compare without regard to case unless their compare argument is 0
// (binary), as queries do in Access.
#include <algorithm>
#include <cmath>

#include "jet_utf8.h"
#include "jet_values.h"
#include "text_collation.h"

namespace kelvo::jet {
namespace {

using Fn = void (*)(sqlite3_context*, int, sqlite3_value**);

std::u32string chars(sqlite3_value* v) { return toCodePoints(textOf(v)); }

// A whole-number argument; false (after raising the error) when it is not one.
bool count(sqlite3_context* ctx, sqlite3_value* v, long long& out, long long min = 0) {
    const auto n = numberOf(v);
    if (!n) {
        resultError(ctx, isNull(v) ? kInvalidNull : kTypeMismatch);
        return false;
    }
    const double r = roundEven(*n);
    if (r < static_cast<double>(min) || r > 2147483647.0) {
        resultError(ctx, kInvalidCall);
        return false;
    }
    out = static_cast<long long>(r);
    return true;
}

std::u32string folded(std::u32string s) {
    for (char32_t& c : s) c = foldCase(c);
    return s;
}

// Binary compare (0) or text compare (1, the default).
bool textCompare(sqlite3_value* v) {
    const auto n = numberOf(v);
    return !n || *n != 0;
}

void cat(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0]) && isNull(a[1])) return sqlite3_result_null(ctx);
    resultText(ctx, textOf(a[0]) + textOf(a[1]));
}

void add(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0]) || isNull(a[1])) return sqlite3_result_null(ctx);
    if (sqlite3_value_type(a[0]) == SQLITE_TEXT && sqlite3_value_type(a[1]) == SQLITE_TEXT)
        return resultText(ctx, textOf(a[0]) + textOf(a[1]));
    if (sqlite3_value_type(a[0]) == SQLITE_INTEGER && sqlite3_value_type(a[1]) == SQLITE_INTEGER) {
        sqlite3_int64 sum;
        if (!__builtin_add_overflow(sqlite3_value_int64(a[0]), sqlite3_value_int64(a[1]), &sum))
            return sqlite3_result_int64(ctx, sum);
    }
    const auto x = numberOf(a[0]);
    const auto y = numberOf(a[1]);
    if (!x || !y) return resultError(ctx, kTypeMismatch);
    sqlite3_result_double(ctx, *x + *y);
}

void len(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, static_cast<sqlite3_int64>(chars(a[0]).size()));
}

void mid(sqlite3_context* ctx, int n, sqlite3_value** a) {
    long long start, length = -1;
    if (!count(ctx, a[1], start, 1)) return;
    if (n > 2 && !count(ctx, a[2], length)) return;
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    const std::u32string s = chars(a[0]);
    const size_t from = std::min(s.size(), static_cast<size_t>(start - 1));
    const size_t take = length < 0 ? std::u32string::npos : static_cast<size_t>(length);
    resultText(ctx, toUtf8(std::u32string_view(s).substr(from, take)));
}

void left(sqlite3_context* ctx, int, sqlite3_value** a) {
    long long n;
    if (!count(ctx, a[1], n)) return;
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    const std::u32string s = chars(a[0]);
    resultText(ctx, toUtf8(std::u32string_view(s).substr(0, static_cast<size_t>(n))));
}

void right(sqlite3_context* ctx, int, sqlite3_value** a) {
    long long n;
    if (!count(ctx, a[1], n)) return;
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    const std::u32string s = chars(a[0]);
    const size_t k = std::min(s.size(), static_cast<size_t>(n));
    resultText(ctx, toUtf8(std::u32string_view(s).substr(s.size() - k)));
}

template <std::string (*Map)(std::string_view)>
void mapped(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    resultText(ctx, Map(textOf(a[0])));
}

template <bool Left, bool Right>
void trim(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    std::string s = textOf(a[0]);
    if (Right) s.erase(s.find_last_not_of(' ') + 1);
    if (Left) s.erase(0, std::min(s.size(), s.find_first_not_of(' ')));
    resultText(ctx, s);
}

// Position (from 1) of needle in hay at or after start; 0 when absent.
size_t findFrom(const std::u32string& hay, const std::u32string& needle, size_t start,
                bool text) {
    if (start > hay.size() + 1) return 0;
    if (needle.empty()) return start;
    const size_t at = text ? folded(hay).find(folded(needle), start - 1)
                           : hay.find(needle, start - 1);
    return at == std::u32string::npos ? 0 : at + 1;
}

void instr(sqlite3_context* ctx, int n, sqlite3_value** a) {
    long long start = 1;
    int first = 0;
    if (n >= 3) {  // InStr(start, s1, s2 [, compare])
        if (!count(ctx, a[0], start, 1)) return;
        first = 1;
    }
    sqlite3_value* hay = a[first];
    sqlite3_value* needle = a[first + 1];
    if (isNull(hay) || isNull(needle)) return sqlite3_result_null(ctx);
    const bool text = n == 4 ? textCompare(a[3]) : true;
    sqlite3_result_int64(ctx, static_cast<sqlite3_int64>(findFrom(
                                  chars(hay), chars(needle), static_cast<size_t>(start), text)));
}

void instrrev(sqlite3_context* ctx, int n, sqlite3_value** a) {
    long long start = -1;
    if (n >= 3 && !(numberOf(a[2]) && *numberOf(a[2]) == -1) && !count(ctx, a[2], start, 1))
        return;
    if (isNull(a[0]) || isNull(a[1])) return sqlite3_result_null(ctx);
    const bool text = n == 4 ? textCompare(a[3]) : true;
    std::u32string hay = chars(a[0]);
    std::u32string needle = chars(a[1]);
    if (text) {
        hay = folded(hay);
        needle = folded(needle);
    }
    if (start == -1) start = static_cast<long long>(hay.size());
    if (static_cast<size_t>(start) > hay.size()) return sqlite3_result_int(ctx, 0);
    if (needle.empty()) return sqlite3_result_int64(ctx, start);
    if (needle.size() > static_cast<size_t>(start)) return sqlite3_result_int(ctx, 0);
    const size_t at = hay.rfind(needle, static_cast<size_t>(start) - needle.size());
    sqlite3_result_int64(ctx, at == std::u32string::npos ? 0 : static_cast<sqlite3_int64>(at + 1));
}

void replace(sqlite3_context* ctx, int n, sqlite3_value** a) {
    long long start = 1, limit = -1;
    if (n >= 4 && !count(ctx, a[3], start, 1)) return;
    if (n >= 5 && !(numberOf(a[4]) && *numberOf(a[4]) == -1) && !count(ctx, a[4], limit)) return;
    if (isNull(a[0]) || isNull(a[1]) || isNull(a[2])) return sqlite3_result_null(ctx);
    const bool text = n == 6 ? textCompare(a[5]) : true;
    const std::u32string all = chars(a[0]);
    if (static_cast<size_t>(start) > all.size()) return resultText(ctx, "");
    const std::u32string s = all.substr(static_cast<size_t>(start - 1));  // as Access: from start
    const std::u32string find = chars(a[1]);
    const std::u32string with = chars(a[2]);
    if (find.empty()) return resultText(ctx, toUtf8(s));
    const std::u32string hay = text ? folded(s) : s;
    const std::u32string needle = text ? folded(find) : find;
    std::u32string out;
    size_t pos = 0;
    long long done = 0;
    while (limit < 0 || done < limit) {
        const size_t at = hay.find(needle, pos);
        if (at == std::u32string::npos) break;
        out.append(s, pos, at - pos);
        out += with;
        pos = at + needle.size();
        ++done;
    }
    out.append(s, pos, std::u32string::npos);
    resultText(ctx, toUtf8(out));
}

void space(sqlite3_context* ctx, int, sqlite3_value** a) {
    long long n;
    if (!count(ctx, a[0], n)) return;
    resultText(ctx, std::string(static_cast<size_t>(n), ' '));
}

void string(sqlite3_context* ctx, int, sqlite3_value** a) {
    long long n;
    if (!count(ctx, a[0], n)) return;
    if (isNull(a[1])) return sqlite3_result_null(ctx);
    char32_t c;
    if (sqlite3_value_type(a[1]) == SQLITE_TEXT) {
        const std::u32string s = chars(a[1]);
        if (s.empty()) return resultError(ctx, kInvalidCall);
        c = s[0];
    } else {
        long long code;
        if (!count(ctx, a[1], code)) return;
        c = static_cast<char32_t>(code % 256);
    }
    resultText(ctx, toUtf8(std::u32string(static_cast<size_t>(n), c)));
}

void strcomp(sqlite3_context* ctx, int n, sqlite3_value** a) {
    if (isNull(a[0]) || isNull(a[1])) return sqlite3_result_null(ctx);
    const bool text = n == 3 ? textCompare(a[2]) : true;
    const std::string x = textOf(a[0]), y = textOf(a[1]);
    const int c = text ? compareNoCase(x, y) : x.compare(y);
    sqlite3_result_int(ctx, c < 0 ? -1 : c > 0 ? 1 : 0);
}

void strreverse(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return resultError(ctx, kInvalidNull);
    std::u32string s = chars(a[0]);
    std::reverse(s.begin(), s.end());
    resultText(ctx, toUtf8(s));
}

void strconv(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return sqlite3_result_null(ctx);
    long long mode;
    if (!count(ctx, a[1], mode)) return;
    const std::string s = textOf(a[0]);
    if (mode == 1) return resultText(ctx, upperText(s));
    if (mode == 2) return resultText(ctx, lowerText(s));
    if (mode != 3) return resultError(ctx, kInvalidCall);
    std::u32string cs = toCodePoints(lowerText(s));  // proper case: each word capitalised
    bool startOfWord = true;
    for (char32_t& c : cs) {
        if (startOfWord) c = upperCase(c);
        startOfWord = c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\0';
    }
    resultText(ctx, toUtf8(cs));
}

void asc(sqlite3_context* ctx, int, sqlite3_value** a) {
    if (isNull(a[0])) return resultError(ctx, kInvalidNull);
    const std::u32string s = chars(a[0]);
    if (s.empty()) return resultError(ctx, kInvalidCall);
    sqlite3_result_int64(ctx, s[0]);
}

void chr(sqlite3_context* ctx, int, sqlite3_value** a) {
    long long code;
    if (!count(ctx, a[0], code)) return;
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return resultError(ctx, kInvalidCall);
    resultText(ctx, toUtf8(std::u32string(1, static_cast<char32_t>(code))));
}

}  // namespace

void registerTextFunctions(sqlite3* db) {
    static constexpr struct { const char* name; int args; Fn fn; } kTable[] = {
        {"jet_cat", 2, cat},
        {"jet_add", 2, add},
        {"jet_len", 1, len},
        {"jet_mid", -1, mid},
        {"jet_left", 2, left},
        {"jet_right", 2, right},
        {"jet_ucase", 1, mapped<upperText>},
        {"jet_lcase", 1, mapped<lowerText>},
        {"jet_trim", 1, trim<true, true>},
        {"jet_ltrim", 1, trim<true, false>},
        {"jet_rtrim", 1, trim<false, true>},
        {"jet_instr", -1, instr},
        {"jet_instrrev", -1, instrrev},
        {"jet_replace", -1, replace},
        {"jet_space", 1, space},
        {"jet_string", 2, string},
        {"jet_strcomp", -1, strcomp},
        {"jet_strreverse", 1, strreverse},
        {"jet_strconv", -1, strconv},
        {"jet_asc", 1, asc},
        {"jet_chr", 1, chr},
    };
    for (const auto& f : kTable) addFunction(db, f.name, f.args, f.fn);
}

}  // namespace kelvo::jet
