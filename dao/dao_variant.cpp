// COleVariant: construction from the natural C++ types and comparison.
#include "dao_variant.h"

#include <limits>
#include <stdexcept>

COleVariant::COleVariant(short value, VARTYPE type) {
    if (type == VT_BOOL) {
        vt = VT_BOOL;
        boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else {
        vt = VT_I2;
        iVal = value;
    }
}

COleVariant::COleVariant(int value) : vt(VT_I4), lVal(value) {}

COleVariant::COleVariant(long value, VARTYPE type) {
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max())
        throw std::out_of_range("COleVariant: value does not fit a 32-bit integer");
    vt = type == VT_ERROR ? VT_ERROR : VT_I4;
    lVal = static_cast<std::int32_t>(value);
}

COleVariant::COleVariant(unsigned char value) : vt(VT_UI1), bVal(value) {}

COleVariant::COleVariant(float value) : vt(VT_R4), fltVal(value) {}

COleVariant::COleVariant(double value, VARTYPE type) {
    if (type == VT_DATE) {
        vt = VT_DATE;
        date = value;
    } else {
        vt = VT_R8;
        dblVal = value;
    }
}

COleVariant::COleVariant(const wchar_t* text) : vt(VT_BSTR), bstrVal(text ? text : L"") {}

COleVariant::COleVariant(std::wstring text) : vt(VT_BSTR), bstrVal(std::move(text)) {}

COleVariant::COleVariant(const COleDateTime& when) : vt(VT_DATE), date(when.m_dt) {
    if (when.GetStatus() == COleDateTime::null) vt = VT_NULL;
}

COleVariant::COleVariant(const std::vector<unsigned char>& data)
    : vt(VT_ARRAY | VT_UI1), bytes(data) {}

COleVariant COleVariant::Null() {
    COleVariant v;
    v.vt = VT_NULL;
    return v;
}

COleVariant COleVariant::Bool(bool value) {
    return COleVariant(static_cast<short>(value ? VARIANT_TRUE : VARIANT_FALSE), VT_BOOL);
}

COleVariant COleVariant::Currency(std::int64_t tenThousandths) {
    COleVariant v;
    v.vt = VT_CY;
    v.cyVal = tenThousandths;
    return v;
}

COleVariant COleVariant::Date(DATE value) { return COleVariant(value, VT_DATE); }

COleVariant COleVariant::Error(std::int32_t code) { return COleVariant(long{code}, VT_ERROR); }

void COleVariant::Clear() { *this = COleVariant(); }

bool COleVariant::operator==(const COleVariant& other) const {
    if (vt != other.vt) return false;
    switch (vt) {
        case VT_EMPTY:
        case VT_NULL: return true;
        case VT_I2: return iVal == other.iVal;
        case VT_I4:
        case VT_ERROR: return lVal == other.lVal;
        case VT_UI1: return bVal == other.bVal;
        case VT_R4: return fltVal == other.fltVal;
        case VT_R8: return dblVal == other.dblVal;
        case VT_BOOL: return boolVal == other.boolVal;
        case VT_DATE: return date == other.date;
        case VT_CY: return cyVal == other.cyVal;
        case VT_BSTR: return bstrVal == other.bstrVal;
        default: return bytes == other.bytes;
    }
}
