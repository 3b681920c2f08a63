// Conversions between database field values and LISP values.
#include "database/field_values.h"

#include <cmath>

#include "adslib.h"

namespace kelvo {
namespace {

std::wstring_view trimTrailingBlanks(std::wstring_view text) {
    const auto end = text.find_last_not_of(L' ');
    return end == std::wstring_view::npos ? std::wstring_view() : text.substr(0, end + 1);
}

resbuf* newLong(std::int32_t value) {
    resbuf* node = acutNewRb(RTLONG);
    if (node != nullptr) node->resval.rlong = value;
    return node;
}

resbuf* newReal(double value) {
    resbuf* node = acutNewRb(RTREAL);
    if (node != nullptr) node->resval.rreal = std::isnan(value) ? 0.0 : value;
    return node;
}

// A text node holding a copy of `text` (zero-terminated) in the host's allocation.
resbuf* newText(const wchar_t* text) {
    resbuf* node = acutNewRb(RTSTR);
    if (node == nullptr) return nullptr;
    if (acutNewString(text, node->resval.rstring) != RTNORM) {
        acutRelRb(node);
        return nullptr;
    }
    return node;
}

resbuf* newText(std::wstring_view text) {
    return newText(std::wstring(text).c_str());
}

// Copies the text once, and twice only when blanks are actually cut off.
resbuf* newFieldText(const std::wstring& value, bool trimText) {
    if (!trimText) return newText(value == L" " ? L"" : value.c_str());
    const std::wstring_view kept = trimTrailingBlanks(value);
    return kept.size() == value.size() ? newText(value.c_str()) : newText(kept);
}

}  // namespace

bool trimsFieldText(std::wstring_view fieldName) {
    return !fieldName.starts_with(L"s_");
}

std::wstring lispFieldText(std::wstring_view fieldName, std::wstring_view value) {
    if (!trimsFieldText(fieldName)) return value == L" " ? std::wstring() : std::wstring(value);
    return std::wstring(trimTrailingBlanks(value));
}

resbuf* newFieldValueNode(const COleVariant& value, bool trimText) {
    switch (value.vt) {
        case VT_I2:
            return newLong(value.iVal);
        case VT_BOOL:
            return newLong(value.boolVal);
        case VT_I4:
            return newLong(value.lVal);
        case VT_UI1:
            return newLong(value.bVal);
        case VT_R4:
            return newReal(value.fltVal);
        case VT_R8:
            return newReal(value.dblVal);
        case VT_DATE:
            return newText(trimTrailingBlanks(COleDateTime(value.date).Format()));
        case VT_BSTR:
            return newFieldText(value.bstrVal, trimText);
        default:
            return acutNewRb(RTNIL);
    }
}

bool fieldValueFromLisp(const resbuf& node, COleVariant& out) {
    switch (node.restype) {
        case RTREAL:
            out = COleVariant(node.resval.rreal);
            return true;
        case RTSHORT:
            out = COleVariant(static_cast<int>(node.resval.rint));
            return true;
        case RTLONG:
            out = COleVariant(static_cast<int>(node.resval.rlong));
            return true;
        case RTSTR:
            out = COleVariant(node.resval.rstring != nullptr ? node.resval.rstring : L"");
            return true;
        case RTNIL:
            out = COleVariant();
            return true;
        case RTT:
            out = COleVariant::Bool(true);
            return true;
        default:
            return false;
    }
}

}  // namespace kelvo
