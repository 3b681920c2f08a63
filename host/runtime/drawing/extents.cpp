// Extents boxes, handles and colours: the small value types of the drawing interface.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cwchar>

#include "dbcolor.h"
#include "dbmain.h"

AcDbExtents::AcDbExtents() : min_(1e20, 1e20, 1e20), max_(-1e20, -1e20, -1e20) {}
AcDbExtents::AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : min_(min), max_(max) {}

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
    if (min.x > max.x || min.y > max.y || min.z > max.z) return Acad::eInvalidExtents;
    min_ = min;
    max_ = max;
    return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& p) {
    for (int i = 0; i < 3; ++i) {
        min_[i] = std::min(min_[i], p[i]);
        max_[i] = std::max(max_[i], p[i]);
    }
}

void AcDbExtents::addExt(const AcDbExtents& other) {
    if (other.isEmpty()) return;
    addPoint(other.min_);
    addPoint(other.max_);
}

void AcDbExtents::expandBy(const AcGeVector3d& v) {
    addPoint(min_ + v);
    addPoint(max_ + v);
}

void AcDbExtents::transformBy(const AcGeMatrix3d& m) {
    if (isEmpty()) return;
    AcDbExtents out;
    for (int i = 0; i < 8; ++i) {
        AcGePoint3d corner((i & 1) ? max_.x : min_.x, (i & 2) ? max_.y : min_.y,
                           (i & 4) ? max_.z : min_.z);
        out.addPoint(m * corner);
    }
    *this = out;
}

bool AcDbExtents::isEmpty() const { return min_.x > max_.x; }

AcDbHandle::AcDbHandle(const ACHAR* hex) {
    if (!hex || !*hex) return;
    std::uint64_t v = 0;
    for (const ACHAR* p = hex; *p; ++p) {
        int d;
        if (*p >= L'0' && *p <= L'9') d = *p - L'0';
        else if (*p >= L'a' && *p <= L'f') d = *p - L'a' + 10;
        else if (*p >= L'A' && *p <= L'F') d = *p - L'A' + 10;
        else return;
        if (p - hex >= 16) return;
        v = v * 16 + static_cast<std::uint64_t>(d);
    }
    value_ = v;
}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, std::size_t size) const {
    wchar_t text[24];
    std::swprintf(text, 24, L"%llX", static_cast<unsigned long long>(value_));
    if (std::wcslen(text) + 1 > size) return false;
    std::wcscpy(buffer, text);
    return true;
}

// --- colours ---------------------------------------------------------------------------

namespace {

// The standard 256-colour palette: 1..9 fixed, 10..249 hue wheel in 24 hues with 5
// shades each at full and half saturation, 250..255 greys.
std::uint32_t paletteColour(int index) {
    static const std::uint32_t fixed[10] = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                            0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
    if (index >= 0 && index <= 9) return fixed[index];
    if (index >= 250) {
        static const std::uint32_t greys[6] = {0x333333, 0x505050, 0x696969,
                                               0x828282, 0xBEBEBE, 0xFFFFFF};
        return greys[index - 250];
    }
    int hue = (index - 10) / 10;
    int shade = (index - 10) % 10;
    double h = hue * 15.0;
    double value = 1.0 - (shade / 2) * 0.175;
    if (shade / 2 == 1) value = 0.65;
    if (shade / 2 == 2) value = 0.5;
    if (shade / 2 == 3) value = 0.3;
    if (shade / 2 == 4) value = 0.15;
    double saturation = (shade % 2) ? 0.5 : 1.0;
    double c = value * saturation;
    double x = c * (1 - std::fabs(std::fmod(h / 60.0, 2) - 1));
    double m = value - c;
    double r = 0, g = 0, b = 0;
    if (h < 60) { r = c; g = x; }
    else if (h < 120) { r = x; g = c; }
    else if (h < 180) { g = c; b = x; }
    else if (h < 240) { g = x; b = c; }
    else if (h < 300) { r = x; b = c; }
    else { r = c; b = x; }
    auto byte = [](double v) { return static_cast<std::uint32_t>(std::lround(v * 255)); };
    return (byte(r + m) << 16) | (byte(g + m) << 8) | byte(b + m);
}

}  // namespace

Adesk::Int16 AcCmEntityColor::colorIndex() const {
    switch (method_) {
        case kByLayer: return 256;
        case kByBlock: return 0;
        case kByColor: return lookUpACI(red(), green(), blue());
        case kForeground: return 7;
        default: return static_cast<Adesk::Int16>(value_);
    }
}

void AcCmEntityColor::setColorIndex(Adesk::Int16 index) {
    if (index == 256) method_ = kByLayer;
    else if (index == 0) method_ = kByBlock;
    else method_ = kByACI;
    value_ = static_cast<std::uint32_t>(index);
}

void AcCmEntityColor::setRGB(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    method_ = kByColor;
    value_ = (std::uint32_t(r) << 16) | (std::uint32_t(g) << 8) | b;
}

std::uint32_t AcCmEntityColor::rgb() const {
    if (method_ == kByColor) return value_;
    return lookUpRGB(colorIndex());
}
std::uint8_t AcCmEntityColor::red() const { return static_cast<std::uint8_t>(rgb() >> 16); }
std::uint8_t AcCmEntityColor::green() const { return static_cast<std::uint8_t>(rgb() >> 8); }
std::uint8_t AcCmEntityColor::blue() const { return static_cast<std::uint8_t>(rgb()); }

std::uint32_t AcCmEntityColor::lookUpRGB(int colorIndex) {
    if (colorIndex < 1 || colorIndex > 255) return 0xFFFFFF;
    return paletteColour(colorIndex);
}

Adesk::Int16 AcCmEntityColor::lookUpACI(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    int best = 7;
    long bestDistance = -1;
    for (int i = 1; i <= 255; ++i) {
        std::uint32_t c = paletteColour(i);
        long dr = long(c >> 16 & 0xFF) - red, dg = long(c >> 8 & 0xFF) - green,
             db = long(c & 0xFF) - blue;
        long d = dr * dr + dg * dg + db * db;
        if (bestDistance < 0 || d < bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    return static_cast<Adesk::Int16>(best);
}
