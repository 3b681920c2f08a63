// UTF-8 encoding and decoding of wide strings (one wchar_t per code point).
#include "module/utf8_text.h"

namespace kelvo {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isScalarValue(char32_t c) {
    return c < 0x110000 && (c < 0xD800 || c > 0xDFFF);
}

void appendUtf8(std::string& out, char32_t c) {
    if (!isScalarValue(c)) c = kReplacement;
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

// The length of the sequence that a lead byte announces, 0 for an invalid lead byte.
int sequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    if (lead >= 0xF0 && lead < 0xF5) return 4;
    return 0;
}

// Decodes one sequence at text[i]; advances i past it (or past one byte when invalid).
char32_t decodeOne(std::string_view text, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const int length = sequenceLength(lead);
    if (length == 0 || i + length > text.size()) {
        ++i;
        return kReplacement;
    }
    char32_t c = length == 1 ? lead : (lead & (0x7F >> length));
    for (int k = 1; k < length; ++k) {
        const auto next = static_cast<unsigned char>(text[i + k]);
        if ((next & 0xC0) != 0x80) {
            ++i;
            return kReplacement;
        }
        c = (c << 6) | (next & 0x3F);
    }
    i += length;
    const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    return overlong || !isScalarValue(c) ? kReplacement : c;
}

}  // namespace

std::string toUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (wchar_t c : text) appendUtf8(out, static_cast<char32_t>(c));
    return out;
}

std::wstring fromUtf8(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) out += static_cast<wchar_t>(decodeOne(text, i));
    return out;
}

}  // namespace kelvo
