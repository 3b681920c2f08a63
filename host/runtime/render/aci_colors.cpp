// The colour index palette. 1-9 are named colours; 10-249 are 24 hues 15 degrees apart,
// each in five shades at full and at half saturation; 250-255 are greys.

#include "runtime/render/aci_colors.h"

#include <array>
#include <cmath>

namespace kelvo::host::render {
namespace {

Rgb fromHsv(double hueDegrees, double saturation, double value) {
    double c = value * saturation;
    double h = std::fmod(hueDegrees, 360.0) / 60.0;
    double x = c * (1 - std::fabs(std::fmod(h, 2.0) - 1));
    double r = 0, g = 0, b = 0;
    switch (static_cast<int>(h)) {
        case 0: r = c, g = x; break;
        case 1: r = x, g = c; break;
        case 2: g = c, b = x; break;
        case 3: g = x, b = c; break;
        case 4: r = x, b = c; break;
        default: r = c, b = x; break;
    }
    double m = value - c;
    auto byte = [m](double v) { return static_cast<std::uint8_t>(std::lround((v + m) * 255.0)); };
    return Rgb{byte(r), byte(g), byte(b)};
}

std::array<Rgb, 256> makePalette() {
    std::array<Rgb, 256> p{};
    const Rgb named[] = {{0, 0, 0},     {255, 0, 0},   {255, 255, 0},   {0, 255, 0},
                         {0, 255, 255}, {0, 0, 255},   {255, 0, 255},   {255, 255, 255},
                         {128, 128, 128}, {192, 192, 192}};
    for (int i = 0; i < 10; ++i) p[i] = named[i];
    static constexpr double kShades[] = {1.0, 0.8, 0.6, 0.5, 0.3};
    for (int i = 10; i < 250; ++i) {
        int hue = (i - 10) / 10, k = (i - 10) % 10;
        p[i] = fromHsv(hue * 15.0, k % 2 ? 0.5 : 1.0, kShades[k / 2]);
    }
    static constexpr std::uint8_t kGreys[] = {51, 91, 132, 173, 214, 255};
    for (int i = 250; i < 256; ++i) p[i] = Rgb{kGreys[i - 250], kGreys[i - 250], kGreys[i - 250]};
    p[0] = p[7];
    return p;
}

}  // namespace

Rgb aciToRgb(int index) {
    static const std::array<Rgb, 256> palette = makePalette();
    if (index < 0 || index > 255) return palette[7];
    return palette[index];
}

}  // namespace kelvo::host::render
