// The 256 colour indexes of drawings (ACI) as red, green and blue.
#pragma once

#include <cstdint>

namespace kelvo::host::render {

struct Rgb {
    std::uint8_t r = 0, g = 0, b = 0;
    friend bool operator==(Rgb a, Rgb b) = default;
};

// 1..255: the palette; 7 is white (drawn black on a white background by the picture);
// 0 (by block) and 256 (by layer) have no colour of their own and answer 7's.
Rgb aciToRgb(int index);

// A true colour packed as in group 420: 0x00RRGGBB.
inline Rgb rgbFromPacked(std::uint32_t packed) {
    return Rgb{static_cast<std::uint8_t>(packed >> 16), static_cast<std::uint8_t>(packed >> 8),
               static_cast<std::uint8_t>(packed)};
}

}  // namespace kelvo::host::render
