// Declared column types and value conversion between variants and SQLite storage.
#include "field_types.h"

#include <sqlite3.h>

#include <cmath>
#include <cwchar>
#include <cwctype>
#include <limits>

#include "dao_errors.h"
#include "sqlite_statement.h"

namespace dao {
namespace {

bool startsWithNoCase(std::string_view text, std::string_view word) {
    if (text.size() < word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(text[i])) != word[i]) return false;
    return true;
}

bool containsNoCase(std::string_view text, std::string_view word) {
    for (std::size_t i = 0; i + word.size() <= text.size(); ++i)
        if (startsWithNoCase(text.substr(i), word)) return true;
    return false;
}

std::wstring trimmed(const std::wstring& text) {
    const auto first = text.find_first_not_of(L" \t");
    if (first == std::wstring::npos) return L"";
    return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

bool equalsNoCase(const std::wstring& a, const wchar_t* b) {
    const std::size_t n = std::wcslen(b);
    if (a.size() != n) return false;
    for (std::size_t i = 0; i < n; ++i)
        if (std::towlower(a[i]) != std::towlower(b[i])) return false;
    return true;
}

// The number a variant stands for, as DAO reads one for a numeric field.
bool numberOf(const COleVariant& v, double& out) {
    switch (v.vt) {
        case VT_I2: out = v.iVal; return true;
        case VT_I4: out = v.lVal; return true;
        case VT_UI1: out = v.bVal; return true;
        case VT_R4: out = v.fltVal; return true;
        case VT_R8: out = v.dblVal; return true;
        case VT_BOOL: out = v.boolVal != 0 ? -1.0 : 0.0; return true;
        case VT_DATE: out = v.date; return true;
        case VT_CY: out = static_cast<double>(v.cyVal) / 10000.0; return true;
        case VT_BSTR: {
            const std::wstring text = trimmed(v.bstrVal);
            if (equalsNoCase(text, L"true") || equalsNoCase(text, L"yes") ||
                equalsNoCase(text, L"on")) {
                out = -1.0;
                return true;
            }
            if (equalsNoCase(text, L"false") || equalsNoCase(text, L"no") ||
                equalsNoCase(text, L"off")) {
                out = 0.0;
                return true;
            }
            if (text.empty()) return false;
            wchar_t* end = nullptr;
            out = std::wcstod(text.c_str(), &end);
            return end != nullptr && *end == 0 && std::isfinite(out);
        }
        default: return false;
    }
}

[[noreturn]] void conversionError() { throwError(kConversionError); }

// Rounds half to even, as DAO does when a real goes into an integer field.
double roundedInteger(double value, double low, double high) {
    const double r = std::nearbyint(value);
    if (!(r >= low && r <= high)) conversionError();
    return r;
}

COleVariant dateFor(const COleVariant& v) {
    if (v.vt == VT_BSTR) {
        COleDateTime parsed;
        if (!parsed.ParseDateTime(v.bstrVal.c_str())) conversionError();
        return COleVariant::Date(parsed.m_dt);
    }
    double number = 0;
    if (!numberOf(v, number)) conversionError();
    return COleVariant::Date(number);
}

COleVariant textFor(const FieldDef& field, const COleVariant& v, std::wstring_view table) {
    std::wstring text = v.vt == VT_BSTR ? v.bstrVal : variantText(v);
    if (field.type == dbText && field.size > 0 && static_cast<long>(text.size()) > field.size)
        throwError(kFieldTooSmall);
    if (text.empty() && !field.allowZeroLength)
        throwError(kZeroLength, {std::wstring(table) + L"." + field.name});
    return COleVariant(std::move(text));
}

COleVariant numberFor(short type, const COleVariant& v) {
    double n = 0;
    if (!numberOf(v, n)) conversionError();
    switch (type) {
        case dbBoolean: return COleVariant::Bool(n != 0.0);
        case dbByte: return COleVariant(static_cast<unsigned char>(roundedInteger(n, 0, 255)));
        case dbInteger: return COleVariant(static_cast<short>(roundedInteger(n, -32768, 32767)));
        case dbLong:
            return COleVariant(static_cast<int>(roundedInteger(n, -2147483648.0, 2147483647.0)));
        case dbCurrency: {
            const double scaled = std::nearbyint(n * 10000.0);
            if (!(std::fabs(scaled) < 9.2e18)) conversionError();
            return COleVariant::Currency(static_cast<std::int64_t>(scaled));
        }
        case dbSingle:
            if (std::fabs(n) > std::numeric_limits<float>::max()) conversionError();
            return COleVariant(static_cast<float>(n));
        default: return COleVariant(n);
    }
}

std::wstring numberText(double value) {
    if (value == std::trunc(value) && std::fabs(value) < 1e15)
        return std::to_wstring(static_cast<long long>(value));
    wchar_t buffer[64];
    std::swprintf(buffer, 64, L"%.15G", value);
    return buffer;
}

}  // namespace

long defaultFieldSize(short type) {
    switch (type) {
        case dbBoolean:
        case dbByte: return 1;
        case dbInteger: return 2;
        case dbLong:
        case dbSingle: return 4;
        case dbCurrency:
        case dbDouble:
        case dbDate: return 8;
        case dbText: return 255;
        case dbGUID: return 16;
        default: return 0;
    }
}

std::string declaredType(const FieldDef& field) {
    switch (field.type) {
        case dbBoolean: return "BIT";
        case dbByte: return "BYTE";
        case dbInteger: return "SMALLINT";
        case dbLong: return field.rowid ? "INTEGER" : "LONG";
        case dbCurrency: return "CURRENCY";
        case dbSingle: return "REAL";
        case dbDouble: return "DOUBLE";
        case dbDate: return "DATETIME";
        case dbText:
            return "VARCHAR(" + std::to_string(field.size > 0 ? field.size : 255) + ")";
        case dbMemo: return "LONGTEXT";
        case dbGUID: return "GUID";
        default: return "LONGBINARY";
    }
}

short typeFromDeclared(std::string_view declared, long* size) {
    if (size) *size = 0;
    const auto paren = declared.find('(');
    const std::string_view word = declared.substr(0, paren);
    struct Name {
        std::string_view name;
        short type;
    };
    static constexpr Name kNames[] = {
        {"bit", dbBoolean},       {"yesno", dbBoolean},    {"boolean", dbBoolean},
        {"logical", dbBoolean},   {"byte", dbByte},        {"tinyint", dbByte},
        {"smallint", dbInteger},  {"short", dbInteger},    {"long", dbLong},
        {"integer", dbLong},      {"int", dbLong},         {"counter", dbLong},
        {"autoincrement", dbLong}, {"currency", dbCurrency}, {"money", dbCurrency},
        {"real", dbSingle},       {"single", dbSingle},    {"float4", dbSingle},
        {"double", dbDouble},     {"float", dbDouble},     {"float8", dbDouble},
        {"datetime", dbDate},     {"date", dbDate},        {"varchar", dbText},
        {"text", dbText},         {"char", dbText},        {"longtext", dbMemo},
        {"memo", dbMemo},         {"guid", dbGUID},        {"longbinary", dbLongBinary},
        {"blob", dbLongBinary},   {"image", dbLongBinary},
    };
    for (const Name& n : kNames) {
        if (word.size() == n.name.size() && startsWithNoCase(word, n.name)) {
            if (n.type == dbText) {
                long length = 255;
                if (paren != std::string_view::npos) length = std::atol(declared.data() + paren + 1);
                if (word.size() == 4 && paren == std::string_view::npos) return dbMemo;  // TEXT
                if (size) *size = length > 0 ? length : 255;
            }
            return n.type;
        }
    }
    if (containsNoCase(declared, "int")) return dbLong;
    if (containsNoCase(declared, "char") || containsNoCase(declared, "clob") ||
        containsNoCase(declared, "text"))
        return dbMemo;
    if (containsNoCase(declared, "real") || containsNoCase(declared, "floa") ||
        containsNoCase(declared, "doub"))
        return dbDouble;
    if (declared.empty() || containsNoCase(declared, "blob")) return dbLongBinary;
    return dbDouble;
}

short typeFromStorage(int sqliteType, std::int64_t integer) {
    switch (sqliteType) {
        case SQLITE_INTEGER:
            return integer >= INT32_MIN && integer <= INT32_MAX ? dbLong : dbDouble;
        case SQLITE_FLOAT: return dbDouble;
        case SQLITE_BLOB: return dbLongBinary;
        default: return dbMemo;
    }
}

VARTYPE variantType(short fieldType) {
    switch (fieldType) {
        case dbBoolean: return VT_BOOL;
        case dbByte: return VT_UI1;
        case dbInteger: return VT_I2;
        case dbLong: return VT_I4;
        case dbCurrency: return VT_CY;
        case dbSingle: return VT_R4;
        case dbDouble: return VT_R8;
        case dbDate: return VT_DATE;
        case dbText:
        case dbMemo:
        case dbGUID: return VT_BSTR;
        default: return VT_ARRAY | VT_UI1;
    }
}

COleVariant toVariant(short fieldType, int sqliteType, std::int64_t integer, double real,
                      std::string_view bytes) {
    if (sqliteType == SQLITE_NULL) return COleVariant::Null();
    const bool number = sqliteType == SQLITE_INTEGER || sqliteType == SQLITE_FLOAT;
    const double value = sqliteType == SQLITE_INTEGER ? static_cast<double>(integer) : real;
    switch (fieldType) {
        case dbBoolean:
            if (number) return COleVariant::Bool(value != 0.0);
            break;
        case dbByte:
            if (number && value >= 0 && value <= 255)
                return COleVariant(static_cast<unsigned char>(value));
            break;
        case dbInteger:
            if (number && value >= -32768 && value <= 32767)
                return COleVariant(static_cast<short>(value));
            break;
        case dbLong:
            if (sqliteType == SQLITE_INTEGER && integer >= INT32_MIN && integer <= INT32_MAX)
                return COleVariant(static_cast<int>(integer));
            if (number) return COleVariant(value);
            break;
        case dbCurrency:
            if (number) return COleVariant::Currency(std::llround(value * 10000.0));
            break;
        case dbSingle:
            if (number) return COleVariant(static_cast<float>(value));
            break;
        case dbDouble:
            if (number) return COleVariant(value);
            break;
        case dbDate:
            if (number) return COleVariant::Date(value);
            if (sqliteType == SQLITE_TEXT) {
                COleDateTime parsed;
                if (parsed.ParseDateTime(wide(bytes).c_str()))
                    return COleVariant::Date(parsed.m_dt);
            }
            break;
        case dbLongBinary:
        case dbBinary:
            return COleVariant(std::vector<unsigned char>(bytes.begin(), bytes.end()));
        default:
            if (sqliteType == SQLITE_TEXT || sqliteType == SQLITE_BLOB)
                return COleVariant(wide(bytes));
            if (sqliteType == SQLITE_INTEGER) return COleVariant(std::to_wstring(integer));
            return COleVariant(numberText(real));
    }
    // A stored value the field's type cannot hold: give it back as it is stored.
    switch (sqliteType) {
        case SQLITE_INTEGER:
            if (integer >= INT32_MIN && integer <= INT32_MAX)
                return COleVariant(static_cast<int>(integer));
            return COleVariant(value);
        case SQLITE_FLOAT: return COleVariant(real);
        case SQLITE_TEXT: return COleVariant(wide(bytes));
        default: return COleVariant(std::vector<unsigned char>(bytes.begin(), bytes.end()));
    }
}

COleVariant columnVariant(short fieldType, const Statement& statement, int column) {
    const int type = statement.type(column);
    switch (type) {
        case SQLITE_NULL: return COleVariant::Null();
        case SQLITE_INTEGER: return toVariant(fieldType, type, statement.integer(column), 0, {});
        case SQLITE_FLOAT: return toVariant(fieldType, type, 0, statement.real(column), {});
        case SQLITE_BLOB: {
            const void* data = sqlite3_column_blob(statement.get(), column);
            const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column));
            return toVariant(fieldType, type, 0, 0,
                             std::string_view(static_cast<const char*>(data), size));
        }
        default: return toVariant(fieldType, type, 0, 0, statement.text(column));
    }
}

COleVariant convertForField(const FieldDef& field, const COleVariant& value,
                            std::wstring_view tableName) {
    if (value.vt == VT_EMPTY || value.vt == VT_NULL) return COleVariant::Null();
    switch (field.type) {
        case dbText:
        case dbMemo:
        case dbGUID: return textFor(field, value, tableName);
        case dbDate: return dateFor(value);
        case dbLongBinary:
        case dbBinary:
            if (value.vt == (VT_ARRAY | VT_UI1)) return value;
            if (value.vt == VT_BSTR) {
                const std::string bytes = utf8(value.bstrVal);
                return COleVariant(std::vector<unsigned char>(bytes.begin(), bytes.end()));
            }
            conversionError();
        default: return numberFor(field.type, value);
    }
}

void bindVariant(Statement& statement, int index, const COleVariant& value) {
    switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL: statement.bindNull(index); break;
        case VT_I2: statement.bindInt(index, value.iVal); break;
        case VT_I4:
        case VT_ERROR: statement.bindInt(index, value.lVal); break;
        case VT_UI1: statement.bindInt(index, value.bVal); break;
        case VT_BOOL: statement.bindInt(index, value.boolVal != 0 ? -1 : 0); break;
        case VT_R4: statement.bindDouble(index, value.fltVal); break;
        case VT_R8: statement.bindDouble(index, value.dblVal); break;
        case VT_DATE: statement.bindDouble(index, value.date); break;
        case VT_CY: statement.bindDouble(index, static_cast<double>(value.cyVal) / 10000.0); break;
        case VT_BSTR: statement.bindText(index, utf8(value.bstrVal)); break;
        default: statement.bindBlob(index, value.bytes.data(), value.bytes.size()); break;
    }
}

void bindParameter(Statement& statement, int index, const COleVariant& value) {
    bindVariant(statement, index, value);
}

std::wstring variantText(const COleVariant& value) {
    switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL: return L"";
        case VT_BOOL: return value.boolVal != 0 ? L"True" : L"False";
        case VT_DATE: return COleDateTime(value.date).Format();
        case VT_BSTR: return value.bstrVal;
        case VT_R4: {
            // A Single has about seven significant digits.
            if (value.fltVal == std::trunc(value.fltVal) && std::fabs(value.fltVal) < 1e7f)
                return std::to_wstring(static_cast<long long>(value.fltVal));
            wchar_t buffer[32];
            std::swprintf(buffer, 32, L"%.7G", static_cast<double>(value.fltVal));
            return buffer;
        }
        case VT_ARRAY | VT_UI1: return wide(std::string(value.bytes.begin(), value.bytes.end()));
        default: {
            double n = 0;
            numberOf(value, n);
            return numberText(n);
        }
    }
}

}  // namespace dao
