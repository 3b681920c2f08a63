#include "utf8.h"

namespace kelvo {
namespace {

bool isScalar(char32_t c) { return c <= 0x10FFFF && !(c >= 0xD800 && c <= 0xDFFF); }

// The length of the well-formed sequence at text[i] and its character; 0 when there is
// none (a stray, truncated, overlong or out-of-range sequence).
size_t decode(std::string_view text, size_t i, char32_t& c) {
    auto b = static_cast<unsigned char>(text[i]);
    size_t len = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
    if (len == 0 || i + len > text.size()) return 0;
    c = len == 1 ? b : len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
    for (size_t k = 1; k < len; ++k) {
        auto cb = static_cast<unsigned char>(text[i + k]);
        if ((cb & 0xC0) != 0x80) return 0;
        c = (c << 6) | (cb & 0x3F);
    }
    static constexpr char32_t kMin[] = {0, 0, 0x80, 0x800, 0x10000};
    return c >= kMin[len] && isScalar(c) ? len : 0;
}

}  // namespace

std::string toUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (wchar_t wc : text) {
        auto c = static_cast<char32_t>(wc);
        if (!isScalar(c)) c = 0xFFFD;
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

std::wstring fromUtf8(std::string_view text, InvalidBytes invalid) {
    std::wstring out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        char32_t c = 0;
        size_t len = decode(text, i, c);
        if (len == 0) {
            out += invalid == InvalidBytes::Latin1 ? static_cast<wchar_t>(static_cast<unsigned char>(text[i]))
                                                   : L'\uFFFD';
            ++i;
            continue;
        }
        out += static_cast<wchar_t>(c);
        i += len;
    }
    return out;
}

// A byte of a file name that is not part of valid UTF-8 travels as the lone surrogate
// U+DC80 to U+DCFF, so that every name the file system holds comes back to the same bytes.
constexpr char32_t kEscapedByte = 0xDC00;

std::filesystem::path utf8Path(std::wstring_view name) {
    std::string bytes;
    size_t run = 0;  // start of the run of ordinary characters not yet converted
    for (size_t i = 0; i < name.size(); ++i) {
        const auto c = static_cast<char32_t>(name[i]);
        if (c < kEscapedByte + 0x80 || c > kEscapedByte + 0xFF) continue;
        bytes += toUtf8(name.substr(run, i - run));
        bytes += static_cast<char>(c - kEscapedByte);
        run = i + 1;
    }
    bytes += toUtf8(name.substr(run));
    return std::filesystem::path(std::move(bytes));
}

std::wstring widePath(const std::filesystem::path& path) {
    const std::string& text = path.native();
    std::wstring out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        char32_t c = 0;
        const size_t len = decode(text, i, c);
        if (len == 0) {
            out += static_cast<wchar_t>(kEscapedByte + static_cast<unsigned char>(text[i]));
            ++i;
            continue;
        }
        out += static_cast<wchar_t>(c);
        i += len;
    }
    return out;
}

}  // namespace kelvo
