// Group codes and the kinds of value they carry; numeric views of a group's text.

#include "runtime/dxf/dxf_group.h"

#include <cwchar>
#include <cwctype>

namespace kelvo::host::dxf {

GroupKind groupKind(int code) {
    struct Range {
        int first, last;
        GroupKind kind;
    };
    static constexpr Range kRanges[] = {
        {0, 4, GroupKind::String},       {5, 5, GroupKind::Handle},
        {6, 9, GroupKind::String},       {10, 59, GroupKind::Double},
        {60, 79, GroupKind::Int16},      {90, 99, GroupKind::Int32},
        {100, 103, GroupKind::String},   {105, 105, GroupKind::Handle},
        {110, 149, GroupKind::Double},   {160, 169, GroupKind::Int64},
        {170, 179, GroupKind::Int16},    {210, 239, GroupKind::Double},
        {270, 289, GroupKind::Int16},    {290, 299, GroupKind::Bool},
        {300, 309, GroupKind::String},   {310, 319, GroupKind::Binary},
        {320, 369, GroupKind::Handle},   {370, 389, GroupKind::Int16},
        {390, 399, GroupKind::Handle},   {400, 409, GroupKind::Int16},
        {410, 419, GroupKind::String},   {420, 429, GroupKind::Int32},
        {430, 439, GroupKind::String},   {440, 449, GroupKind::Int32},
        {450, 459, GroupKind::Int32},    {460, 469, GroupKind::Double},
        {470, 479, GroupKind::String},   {480, 481, GroupKind::Handle},
        {999, 999, GroupKind::Comment},  {1000, 1003, GroupKind::String},
        {1004, 1004, GroupKind::Binary}, {1005, 1005, GroupKind::Handle},
        {1006, 1009, GroupKind::String}, {1010, 1059, GroupKind::Double},
        {1060, 1070, GroupKind::Int16},  {1071, 1071, GroupKind::Int32},
    };
    for (const Range& r : kRanges)
        if (code >= r.first && code <= r.last) return r.kind;
    return GroupKind::String;
}

namespace {

std::wstring_view trimmed(std::wstring_view s) {
    while (!s.empty() && std::iswspace(s.front())) s.remove_prefix(1);
    while (!s.empty() && std::iswspace(s.back())) s.remove_suffix(1);
    return s;
}

}  // namespace

double Group::toDouble(bool* ok) const {
    std::wstring t(trimmed(text));
    wchar_t* end = nullptr;
    double v = t.empty() ? 0.0 : std::wcstod(t.c_str(), &end);
    if (ok) *ok = !t.empty() && end && *end == L'\0';
    return v;
}

std::int64_t Group::toInt(bool* ok) const {
    std::wstring t(trimmed(text));
    wchar_t* end = nullptr;
    long long v = t.empty() ? 0 : std::wcstoll(t.c_str(), &end, 10);
    bool whole = !t.empty() && end && *end == L'\0';
    if (!whole && !t.empty()) {
        // Some writers put reals where integers belong ("1.0"); take the integer part.
        double d = std::wcstod(t.c_str(), &end);
        whole = end && *end == L'\0';
        if (whole) v = static_cast<long long>(d);
    }
    if (ok) *ok = whole;
    return v;
}

std::uint64_t Group::toHandle() const {
    std::wstring t(trimmed(text));
    wchar_t* end = nullptr;
    unsigned long long v = t.empty() ? 0 : std::wcstoull(t.c_str(), &end, 16);
    return end && *end == L'\0' ? v : 0;
}

}  // namespace kelvo::host::dxf
