// UTF-8 decoding and encoding for the dialect's text functions and collation. A byte that
// does not start a valid sequence decodes as one code point 0xDC00 + byte (as a lone
// surrogate, which no valid text holds), so that invalid text still compares and
// round-trips byte for byte.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvo::jet {

inline char32_t decodeUtf8(std::string_view s, size_t& i) {
    const unsigned char c = static_cast<unsigned char>(s[i]);
    if (c < 0x80) {
        ++i;
        return c;
    }
    const int extra = c >= 0xF5 ? -1 : c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC2 ? 1 : -1;
    if (extra < 0 || i + static_cast<size_t>(extra) >= s.size()) {
        ++i;
        return 0xDC00 + c;
    }
    char32_t cp = c & (0x3F >> extra);
    for (int k = 1; k <= extra; ++k) {
        const unsigned char d = static_cast<unsigned char>(s[i + static_cast<size_t>(k)]);
        if ((d & 0xC0) != 0x80) {
            ++i;
            return 0xDC00 + c;
        }
        cp = (cp << 6) | (d & 0x3F);
    }
    const bool overlong = (extra == 2 && cp < 0x800) || (extra == 3 && cp < 0x10000);
    if (overlong || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        ++i;
        return 0xDC00 + c;
    }
    i += static_cast<size_t>(extra) + 1;
    return cp;
}

inline void appendUtf8(std::string& out, char32_t cp) {
    if (cp >= 0xDC80 && cp <= 0xDCFF) {  // an undecodable byte, written back as it was
        out += static_cast<char>(cp - 0xDC00);
    } else if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

inline std::u32string toCodePoints(std::string_view s) {
    std::u32string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) out += decodeUtf8(s, i);
    return out;
}

inline std::string toUtf8(std::u32string_view s) {
    std::string out;
    out.reserve(s.size());
    for (char32_t c : s) appendUtf8(out, c);
    return out;
}

}  // namespace kelvo::jet
