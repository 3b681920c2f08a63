// The text rule of database field values.
#include "module/field_values.h"

namespace kelvo {

bool trimsFieldText(std::wstring_view fieldName) {
    return !fieldName.starts_with(L"s_");
}

std::wstring lispFieldText(std::wstring_view fieldName, std::wstring_view value) {
    if (!trimsFieldText(fieldName)) return value == L" " ? std::wstring() : std::wstring(value);
    const auto end = value.find_last_not_of(L' ');
    return end == std::wstring_view::npos ? std::wstring() : std::wstring(value.substr(0, end + 1));
}

}  // namespace kelvo
