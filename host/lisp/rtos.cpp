// rtos and angtos formatting.
#include "rtos.h"

#include <cmath>
#include <cwchar>

#include "interp.h"

namespace lisp {

namespace {

// Rounds half away from zero, as a person reading a drawing expects (printf alone rounds
// 2.5 to 2).
std::wstring fixed(double v, int precision) {
    double scale = std::pow(10.0, precision);
    if (std::fabs(v) * scale < 1e15) v = std::round(v * scale) / scale;
    wchar_t buf[400];
    std::swprintf(buf, 400, L"%.*f", precision, v);
    std::wstring s = buf;
    if (s[0] == L'-' && s.find_first_not_of(L"-0.") == std::wstring::npos) s.erase(0, 1);
    return s;
}

std::wstring scientific(double v, int precision) {
    wchar_t buf[64];
    std::swprintf(buf, 64, L"%.*E", precision, v);
    return buf;
}

// Whole part and a reduced fraction with denominator up to 2^precision, or "" when the
// value is whole after rounding.
std::wstring fraction(double v, int precision, bool spaceAfterWhole, bool keepZeroWhole) {
    long long den = 1LL << precision;
    long long units = std::llround(v * static_cast<double>(den));
    long long whole = units / den, num = units % den;
    while (num && num % 2 == 0) {
        num /= 2;
        den /= 2;
    }
    std::wstring out;
    if (whole || keepZeroWhole || !num) out = std::to_wstring(whole);
    if (num) out += (out.empty() || !spaceAfterWhole ? L"" : L" ") + std::to_wstring(num) + L"/" + std::to_wstring(den);
    return out;
}

// Feet and inches of mode 3 or 4; the feet are left out when zero.
std::wstring feetInches(double v, int mode, int precision) {
    double step = mode == 3 ? std::pow(10.0, -precision) : 1.0 / static_cast<double>(1LL << precision);
    double rounded = std::round(v / step) * step;
    double feet = std::floor(rounded / 12.0 + 1e-9);
    double inches = std::max(0.0, rounded - feet * 12.0);
    std::wstring in = mode == 3 ? fixed(inches, precision) : fraction(inches, precision, true, true);
    if (feet == 0) return in + L"\"";
    return fixed(feet, 0) + L"'-" + in + L"\"";
}

}  // namespace

// DIMZIN's zero suppression of a decimal number.
std::wstring suppressZeros(std::wstring s, int zeros) {
    if ((zeros & 8) && s.find(L'.') != std::wstring::npos) {
        while (s.back() == L'0') s.pop_back();
        if (s.back() == L'.') s.pop_back();
    }
    if (zeros & 4) {
        std::size_t digit = s[0] == L'-' ? 1 : 0;
        if (s.size() > digit + 1 && s[digit] == L'0' && s[digit + 1] == L'.') s.erase(digit, 1);
    }
    return s;
}

std::wstring formatDistance(double value, int mode, int precision, DistanceStyle style) {
    if (precision < 0 || precision > 15) throw Error(L"bad argument value: precision " + std::to_wstring(precision));
    std::wstring sign = value < 0 ? L"-" : L"";
    double mag = std::fabs(value);
    auto inputForm = [&](std::wstring s) {
        if (!style.inputForm) return s;
        for (auto& c : s)
            if (c == L' ') c = L'-';
        auto dash = s.find(L"'-");
        if (dash != std::wstring::npos) s.erase(dash + 1, 1);
        return s;
    };
    switch (mode) {
    case 1: return scientific(value, precision);
    case 2:
        return suppressZeros(fixed(value, precision), style.zeros);
    case 3:
    case 4:
        return sign + inputForm(feetInches(mag, mode, std::min(precision, 8)));
    case 5:
        return sign + inputForm(fraction(mag, std::min(precision, 8), true, false));
    default: throw Error(L"bad argument value: units mode " + std::to_wstring(mode));
    }
}

std::wstring formatAngle(double radians, int mode, int precision) {
    if (precision < 0 || precision > 15) throw Error(L"bad argument value: precision " + std::to_wstring(precision));
    const double turn = 2 * std::acos(-1.0);
    double a = std::fmod(radians, turn);
    if (a < 0) a += turn;
    double degrees = a * 360.0 / turn;
    switch (mode) {
    case 0: return fixed(degrees, precision);
    case 1: {
        double totalSeconds = std::round(degrees * 3600.0);
        auto d = static_cast<long long>(totalSeconds / 3600);
        auto m = static_cast<long long>(std::fmod(totalSeconds, 3600) / 60);
        auto s = static_cast<long long>(std::fmod(totalSeconds, 60));
        std::wstring out = std::to_wstring(d) + L"d";
        if (precision >= 1) out += std::to_wstring(m) + L"'";
        if (precision >= 3) out += std::to_wstring(s) + L"\"";
        return out;
    }
    case 2: return fixed(a * 400.0 / turn, precision) + L"g";
    case 3: return fixed(a, precision) + L"r";
    default: throw Error(L"bad argument value: angle mode " + std::to_wstring(mode));
    }
}

}  // namespace lisp
