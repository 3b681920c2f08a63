// UTF-8 conversion and whole-file reading.
#include "text.h"

#include <fstream>
#include <sstream>

#include "interp.h"

namespace lisp {

std::string toUtf8(std::wstring_view s) {
    std::string out;
    for (wchar_t wc : s) {
        auto c = static_cast<std::uint32_t>(wc);
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
            out += static_cast<char>(0xF0 | ((c >> 18) & 0x07));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

namespace {

// Length of the UTF-8 sequence starting at s[i] and its code point; 0 when invalid.
std::size_t decodeOne(std::string_view s, std::size_t i, std::uint32_t& cp) {
    auto b = static_cast<unsigned char>(s[i]);
    std::size_t len = b >= 0xF0 ? 4 : b >= 0xE0 ? 3 : b >= 0xC0 ? 2 : 0;
    if (len == 0 || i + len > s.size()) return 0;
    cp = b & (0x3F >> (len - 1));
    for (std::size_t k = 1; k < len; ++k) {
        auto cont = static_cast<unsigned char>(s[i + k]);
        if ((cont & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (cont & 0x3F);
    }
    return len;
}

}  // namespace

std::wstring fromUtf8(std::string_view s) {
    std::wstring out;
    for (std::size_t i = 0; i < s.size();) {
        auto b = static_cast<unsigned char>(s[i]);
        std::uint32_t cp = 0;
        std::size_t len = b < 0x80 ? 0 : decodeOne(s, i, cp);
        out += static_cast<wchar_t>(len ? cp : b);
        i += len ? len : 1;
    }
    return out;
}

std::wstring readTextFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw Error(L"cannot read file: " + file.wstring());
    std::ostringstream buf;
    buf << in.rdbuf();
    return fromUtf8(buf.str());
}

}  // namespace lisp
