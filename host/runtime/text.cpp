#include "runtime/text.h"

namespace kelvo::host {

std::string toUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (wchar_t wc : text) {
        auto c = static_cast<char32_t>(wc);
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = 0xFFFD;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::wstring fromUtf8(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        auto b = static_cast<unsigned char>(text[i]);
        int len = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
        char32_t c = len == 1 ? b : len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
        bool ok = len > 0 && i + len <= text.size();
        for (int k = 1; ok && k < len; ++k) {
            auto cb = static_cast<unsigned char>(text[i + k]);
            ok = (cb & 0xC0) == 0x80;
            c = (c << 6) | (cb & 0x3F);
        }
        static constexpr char32_t kMin[] = {0, 0, 0x80, 0x800, 0x10000};
        if (ok && (c < kMin[len] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))) ok = false;
        out += ok ? static_cast<wchar_t>(c) : L'\uFFFD';
        i += ok ? len : 1;
    }
    return out;
}

}  // namespace kelvo::host
