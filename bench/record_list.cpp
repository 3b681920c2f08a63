// The raw floor's record lists, the date text, and the comparison of two value lists.

#include "bench/record_list.h"

#include <cmath>
#include <cstdio>
#include <cwchar>
#include <sstream>

#include "utf8.h"

namespace kelvo::bench {

resbuf* ChainBuilder::add(short type) {
    resbuf* node = acutNewRb(type);
    *tail_ = node;
    tail_ = &node->rbnext;
    return node;
}

void ChainBuilder::addString(const std::wstring& text) {
    resbuf* node = add(RTSTR);
    acutNewString(text.c_str(), node->resval.rstring);
}

resbuf* ChainBuilder::release() {
    resbuf* list = head_;
    head_ = nullptr;
    tail_ = &head_;
    return list;
}

RecordBuilder::RecordBuilder() {
    for (const Column& c : benchColumns()) {
        names_.push_back(fromUtf8(c.name));
        kinds_.push_back(c.kind);
        // A text field loses its trailing blanks unless its name begins with "s_".
        trims_.push_back(std::string_view(c.name).substr(0, 2) != "s_");
    }
}

namespace {

std::wstring columnText(sqlite3_stmt* row, int i, bool trim) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, i));
    std::wstring text = fromUtf8(std::string_view(bytes, sqlite3_column_bytes(row, i)));
    if (trim) {
        const size_t end = text.find_last_not_of(L' ');
        text.erase(end == std::wstring::npos ? 0 : end + 1);
    } else if (text == L" ") {
        text.clear();
    }
    return text;
}

void appendValue(sqlite3_stmt* row, int i, ColumnKind kind, bool trim, ChainBuilder& out) {
    if (sqlite3_column_type(row, i) == SQLITE_NULL) {
        out.add(RTNIL);
        return;
    }
    switch (kind) {
        case ColumnKind::Long:
        case ColumnKind::Short:
        case ColumnKind::YesNo:
            out.add(RTLONG)->resval.rlong = sqlite3_column_int(row, i);
            break;
        case ColumnKind::Double: {
            const double v = sqlite3_column_double(row, i);
            out.add(RTREAL)->resval.rreal = std::isnan(v) ? 0.0 : v;
            break;
        }
        case ColumnKind::Text:
            out.addString(columnText(row, i, trim));
            break;
        case ColumnKind::Date:
            out.addString(formatAutomationDate(sqlite3_column_double(row, i)));
            break;
    }
}

}  // namespace

void RecordBuilder::appendRow(sqlite3_stmt* row, ChainBuilder& out) const {
    out.add(RTLB);
    for (size_t i = 0; i < names_.size(); ++i) {
        out.add(RTLB);
        out.addString(names_[i]);
        out.add(RTDOTE);
        appendValue(row, static_cast<int>(i), kinds_[i], trims_[i], out);
        out.add(RTLE);
    }
    out.add(RTLE);
}

std::wstring formatAutomationDate(double date) {
    // Whole seconds from 12/30/1899, rounded to the nearest second.
    const long long total = std::llround(date * 86400.0);
    long long days = total / 86400;
    long long seconds = total % 86400;
    if (seconds < 0) {
        seconds += 86400;
        --days;
    }
    // Civil date of a day count from 1/1/1970 (proleptic Gregorian).
    const long long z = days - 25569 + 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const long long doe = z - era * 146097;
    const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const long long mp = (5 * doy + 2) / 153;
    const long long day = doy - (153 * mp + 2) / 5 + 1;
    const long long month = mp < 10 ? mp + 3 : mp - 9;
    const long long year = yoe + era * 400 + (month <= 2 ? 1 : 0);

    wchar_t text[64];
    std::wstring out;
    if (days != 0) {
        std::swprintf(text, 64, L"%lld/%lld/%lld", month, day, year);
        out = text;
    }
    if (seconds != 0 || days == 0) {
        const long long h = seconds / 3600;
        const long long h12 = h % 12 == 0 ? 12 : h % 12;
        std::swprintf(text, 64, L"%lld:%02lld:%02lld %ls", h12, (seconds / 60) % 60, seconds % 60,
                      h < 12 ? L"AM" : L"PM");
        if (!out.empty()) out += L' ';
        out += text;
    }
    return out;
}

namespace {

std::string describe(const resbuf* node) {
    if (!node) return "the end of the list";
    std::ostringstream s;
    s << "type " << node->restype;
    switch (rbKindOf(node->restype)) {
        case RbKind::String:
            s << " \"" << (node->resval.rstring ? toUtf8(node->resval.rstring) : "") << '"';
            break;
        case RbKind::Real: s << ' ' << node->resval.rreal; break;
        case RbKind::Long: s << ' ' << node->resval.rlong; break;
        case RbKind::Short: s << ' ' << node->resval.rint; break;
        default: break;
    }
    return s.str();
}

bool sameNode(const resbuf* a, const resbuf* b) {
    if (a->restype != b->restype) return false;
    switch (rbKindOf(a->restype)) {
        case RbKind::String: {
            const wchar_t* x = a->resval.rstring ? a->resval.rstring : L"";
            const wchar_t* y = b->resval.rstring ? b->resval.rstring : L"";
            return std::wcscmp(x, y) == 0;
        }
        case RbKind::Real: return a->resval.rreal == b->resval.rreal;
        case RbKind::Long: return a->resval.rlong == b->resval.rlong;
        case RbKind::Short: return a->resval.rint == b->resval.rint;
        default: return true;
    }
}

}  // namespace

std::string firstDifference(const resbuf* expected, const resbuf* actual) {
    for (size_t at = 0; expected || actual; ++at) {
        if (!expected || !actual || !sameNode(expected, actual))
            return "node " + std::to_string(at) + ": expected " + describe(expected) +
                   ", got " + describe(actual);
        expected = expected->rbnext;
        actual = actual->rbnext;
    }
    return {};
}

}  // namespace kelvo::bench
