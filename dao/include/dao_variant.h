// The automation value types the data access engine passes values in: VARTYPE codes,
// COleVariant (a typed value; only the member that matches vt is meaningful), the array
// of variants that rows travel in, and COleDateTime (an automation date: days since
// 12/30/1899, the fraction being the time of day).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

using VARTYPE = unsigned short;
using VARIANT_BOOL = short;
using DATE = double;
using DWORD = std::uint32_t;

constexpr VARTYPE VT_EMPTY = 0;
constexpr VARTYPE VT_NULL = 1;
constexpr VARTYPE VT_I2 = 2;
constexpr VARTYPE VT_I4 = 3;
constexpr VARTYPE VT_R4 = 4;
constexpr VARTYPE VT_R8 = 5;
constexpr VARTYPE VT_CY = 6;
constexpr VARTYPE VT_DATE = 7;
constexpr VARTYPE VT_BSTR = 8;
constexpr VARTYPE VT_ERROR = 10;
constexpr VARTYPE VT_BOOL = 11;
constexpr VARTYPE VT_VARIANT = 12;
constexpr VARTYPE VT_UI1 = 17;
constexpr VARTYPE VT_ARRAY = 0x2000;

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

class COleDateTime;

// A typed value. Constructors follow the natural C++ types: short VT_I2 (or VT_BOOL when
// asked), int VT_I4, long VT_I4 (or VT_ERROR when asked; a value that does not fit 32 bits
// throws std::out_of_range), unsigned char VT_UI1, float VT_R4, double VT_R8 (or VT_DATE
// when asked), text VT_BSTR, COleDateTime VT_DATE. Narrow C strings are refused at compile
// time so that a char pointer never turns into something else silently.
class COleVariant {
public:
    VARTYPE vt = VT_EMPTY;
    short iVal = 0;                   // VT_I2
    std::int32_t lVal = 0;            // VT_I4, and the code of VT_ERROR
    unsigned char bVal = 0;           // VT_UI1
    float fltVal = 0.0f;              // VT_R4
    double dblVal = 0.0;              // VT_R8
    VARIANT_BOOL boolVal = 0;         // VT_BOOL: -1 true, 0 false
    DATE date = 0.0;                  // VT_DATE
    std::int64_t cyVal = 0;           // VT_CY, in 1/10000 units
    std::wstring bstrVal;             // VT_BSTR
    std::vector<unsigned char> bytes;  // VT_ARRAY | VT_UI1 (long binary, bookmarks)

    COleVariant() = default;
    COleVariant(short value, VARTYPE type = VT_I2);
    COleVariant(int value);
    COleVariant(long value, VARTYPE type = VT_I4);
    COleVariant(unsigned char value);
    COleVariant(float value);
    COleVariant(double value, VARTYPE type = VT_R8);
    COleVariant(const wchar_t* text);
    COleVariant(std::wstring text);
    COleVariant(const COleDateTime& when);
    COleVariant(const std::vector<unsigned char>& data);
    COleVariant(const char*) = delete;
    COleVariant(bool) = delete;  // use Bool(): -1 true, 0 false

    static COleVariant Null();
    static COleVariant Bool(bool value);
    static COleVariant Currency(std::int64_t tenThousandths);
    static COleVariant Date(DATE value);
    static COleVariant Error(std::int32_t code);

    void Clear();  // back to VT_EMPTY
    bool isNull() const { return vt == VT_NULL; }
    bool isEmpty() const { return vt == VT_EMPTY; }

    // Same type and same value (text compared exactly).
    bool operator==(const COleVariant& other) const;
};

// The array of variants the database layer passes rows and argument lists in.
using VariantArray = std::vector<COleVariant>;

// An automation date. Status: valid, invalid (a failed parse or an out-of-range date) or
// null.
class COleDateTime {
public:
    enum DateTimeStatus { valid = 0, invalid = 1, null = 2 };

    DATE m_dt = 0.0;
    DateTimeStatus m_status = valid;

    COleDateTime() = default;
    COleDateTime(DATE value) : m_dt(value) {}
    // Invalid when a part is out of range (month 1..12, day of that month, hour 0..23 ...).
    COleDateTime(int year, int month, int day, int hour, int minute, int second);

    static COleDateTime GetCurrentTime();  // local time, whole seconds

    // Returns 0 on success, 1 when the parts are out of range (the status turns invalid).
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);
    int SetDate(int year, int month, int day) { return SetDateTime(year, month, day, 0, 0, 0); }

    DateTimeStatus GetStatus() const { return m_status; }
    void SetStatus(DateTimeStatus status) { m_status = status; }

    int GetYear() const;
    int GetMonth() const;      // 1..12
    int GetDay() const;        // 1..31
    int GetHour() const;       // 0..23
    int GetMinute() const;     // 0..59
    int GetSecond() const;     // 0..59
    int GetDayOfWeek() const;  // 1 = Sunday .. 7 = Saturday
    int GetDayOfYear() const;  // 1..366

    // The US-English default form "M/D/YYYY h:mm:ss AM": no leading zero on month, day or
    // hour; the time left out when it is exactly midnight, the date left out when the date
    // part is 12/30/1899. An invalid date formats as "Invalid DateTime", a null one as "".
    std::wstring Format() const;

    // Parses a US date and/or time: "M/D/YYYY", "M/D/YY", "YYYY-MM-DD", each optionally
    // followed by "h:mm[:ss] [AM|PM]", or a time alone. Returns false and sets the status
    // invalid when the text is not a date.
    bool ParseDateTime(const wchar_t* text);

    operator DATE() const { return m_dt; }
    bool operator==(const COleDateTime& other) const { return m_dt == other.m_dt; }
};
