// Entity colours: an index of the 256-colour palette, by layer or by block, or a true colour.
#pragma once

#include <cstdint>

#include "adesk.h"
#include "adsdef.h"

class KELVO_HOST_API AcCmEntityColor {
public:
    enum ColorMethod : std::uint8_t { kByLayer = 0xC0, kByBlock = 0xC1, kByColor = 0xC2,
                                      kByACI = 0xC3, kForeground = 0xC5, kNone = 0xC8 };
    enum ACIcolorMethod : Adesk::Int16 { kACIbyBlock = 0, kACIRed = 1, kACIYellow = 2,
                                         kACIGreen = 3, kACICyan = 4, kACIBlue = 5,
                                         kACIMagenta = 6, kACIforeground = 7,
                                         kACIbyLayer = 256 };

    AcCmEntityColor() = default;
    explicit AcCmEntityColor(Adesk::Int16 colorIndex) { setColorIndex(colorIndex); }
    AcCmEntityColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        setRGB(red, green, blue);
    }

    ColorMethod colorMethod() const { return method_; }
    void setColorMethod(ColorMethod method) { method_ = method; }
    bool isByLayer() const { return method_ == kByLayer; }
    bool isByBlock() const { return method_ == kByBlock; }
    bool isByColor() const { return method_ == kByColor; }
    bool isByACI() const { return method_ == kByACI; }
    // 0 by block, 256 by layer, 1..255 a palette index; a true colour answers its nearest
    // palette index.
    Adesk::Int16 colorIndex() const;
    void setColorIndex(Adesk::Int16 index);
    void setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    std::uint8_t red() const;
    std::uint8_t green() const;
    std::uint8_t blue() const;
    // 0x00RRGGBB of the colour (the palette colour for an index).
    std::uint32_t rgb() const;
    bool operator==(const AcCmEntityColor& c) const {
        return method_ == c.method_ && value_ == c.value_;
    }

    // The palette's colour of an index 1..255, 0x00RRGGBB.
    static std::uint32_t lookUpRGB(int colorIndex);
    static Adesk::Int16 lookUpACI(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

private:
    ColorMethod method_ = kByLayer;
    std::uint32_t value_ = 256;   // index, or 0x00RRGGBB for kByColor
};

class KELVO_HOST_API AcCmColor : public AcCmEntityColor {
public:
    AcCmColor() = default;
    AcCmColor(const AcCmEntityColor& c) : AcCmEntityColor(c) {}   // NOLINT
    AcCmEntityColor entityColor() const { return *this; }
};

namespace AcCm {
enum DialogTabs { kACITab = 1, kTrueColorTab = 2, kColorBookTab = 4 };
}
