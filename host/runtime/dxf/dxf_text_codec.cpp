// DXF text: code pages through iconv, UTF-8, \U+ and \M+ escapes, caret notation.

#include "runtime/dxf/dxf_text_codec.h"

#include <iconv.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <vector>

#include "utf8.h"

namespace kelvo::host::dxf {
namespace {

// An iconv conversion descriptor, closed on destruction.
struct Iconv {
    iconv_t cd = reinterpret_cast<iconv_t>(-1);
    Iconv() = default;
    Iconv(const char* to, const char* from) : cd(iconv_open(to, from)) {}
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;
    ~Iconv() {
        if (ok()) iconv_close(cd);
    }
    bool ok() const { return cd != reinterpret_cast<iconv_t>(-1); }
};

// The iconv name of a DXF code page name: ANSI_1252 -> CP1252, dos932 -> CP932 ...
std::string iconvName(std::string_view dxfName) {
    std::string upper;
    for (char c : dxfName) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (upper.starts_with("ISO8859-")) return "ISO-8859-" + upper.substr(8);
    if (upper == "BIG5" || upper == "JOHAB" || upper == "KSC5601") return upper;
    if (upper == "GB2312") return "GBK";
    std::string digits;
    for (char c : upper)
        if (std::isdigit(static_cast<unsigned char>(c))) digits += c;
    return digits.empty() ? "CP1252" : "CP" + digits;
}

// Bytes to wide text through `cd`; false when the bytes do not convert.
bool convertIn(const Iconv& cd, std::string_view bytes, std::wstring& out) {
    iconv(cd.cd, nullptr, nullptr, nullptr, nullptr);
    std::vector<char> in(bytes.begin(), bytes.end());
    std::vector<wchar_t> buf(bytes.size() + 1);
    char* src = in.data();
    size_t srcLeft = in.size();
    char* dst = reinterpret_cast<char*>(buf.data());
    size_t dstLeft = buf.size() * sizeof(wchar_t);
    if (iconv(cd.cd, &src, &srcLeft, &dst, &dstLeft) == static_cast<size_t>(-1)) return false;
    out.assign(buf.data(), (buf.size() * sizeof(wchar_t) - dstLeft) / sizeof(wchar_t));
    return true;
}

// One wide character to the code page's bytes; false when it has none.
bool convertOut(const Iconv& cd, wchar_t c, std::string& out) {
    iconv(cd.cd, nullptr, nullptr, nullptr, nullptr);
    wchar_t in[1] = {c};
    char buf[8];
    char* src = reinterpret_cast<char*>(in);
    size_t srcLeft = sizeof in;
    char* dst = buf;
    size_t dstLeft = sizeof buf;
    if (iconv(cd.cd, &src, &srcLeft, &dst, &dstLeft) == static_cast<size_t>(-1)) return false;
    out.append(buf, dst);
    return true;
}

bool isAscii(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

int hexValue(wchar_t c) {
    if (c >= L'0' && c <= L'9') return c - L'0';
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    return -1;
}

// The value of `count` hex digits at text[i], or -1.
long hexAt(std::wstring_view text, size_t i, size_t count) {
    if (i + count > text.size()) return -1;
    long v = 0;
    for (size_t k = 0; k < count; ++k) {
        int h = hexValue(text[i + k]);
        if (h < 0) return -1;
        v = v * 16 + h;
    }
    return v;
}

// The code page of a \M+n escape's n.
const char* mbcsCodePage(wchar_t n) {
    switch (n) {
        case L'1':
            return "CP932";
        case L'2':
            return "CP950";
        case L'3':
            return "CP949";
        case L'4':
            return "JOHAB";
        case L'5':
            return "CP936";
        default:
            return nullptr;
    }
}

bool decodeMbcs(std::wstring_view text, size_t i, std::wstring& out) {
    const char* page = mbcsCodePage(text[i + 3]);
    long code = hexAt(text, i + 4, 4);
    if (!page || code < 0) return false;
    Iconv cd("WCHAR_T", page);
    std::string bytes{static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    std::wstring decoded;
    if (!cd.ok() || !convertIn(cd, bytes, decoded) || decoded.size() != 1) return false;
    out += decoded;
    return true;
}

// \U+XXXX, as a surrogate pair beyond the first plane.
void appendUnicodeEscape(char32_t c, std::string& out) {
    char esc[16];
    if (c > 0xFFFF) {
        c -= 0x10000;
        appendUnicodeEscape(0xD800 + (c >> 10), out);
        c = 0xDC00 + (c & 0x3FF);
    }
    std::snprintf(esc, sizeof esc, "\\U+%04X", static_cast<unsigned>(c));
    out += esc;
}

bool caretDecodes(wchar_t c) {
    return (c >= L'@' && c <= L'_') || c == L' ';
}

// "^@" (the character 0) cannot live in a string that ends at its first 0: it is read as
// the visible symbol for it, which is written back as "^@".
constexpr wchar_t kNullSymbol = 0x2400;

}  // namespace

std::wstring resolveEscapes(std::wstring_view text) {
    if (text.find(L'\\') == std::wstring_view::npos && text.find(L'^') == std::wstring_view::npos)
        return std::wstring(text);
    std::wstring out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        wchar_t c = text[i];
        if (c == L'\\' && text.substr(i, 3) == L"\\U+") {
            long code = hexAt(text, i + 3, 4);
            if (code >= 0) {
                i += 6;
                // A surrogate pair written as two escapes is one character.
                long low = code >= 0xD800 && code < 0xDC00 && text.substr(i + 1, 3) == L"\\U+"
                               ? hexAt(text, i + 4, 4)
                               : -1;
                if (low >= 0xDC00 && low < 0xE000) {
                    code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                    i += 7;
                }
                out += static_cast<wchar_t>(code);
                continue;
            }
        }
        if (c == L'\\' && text.substr(i, 3) == L"\\M+" && i + 8 <= text.size() &&
            decodeMbcs(text, i, out)) {
            i += 7;
            continue;
        }
        if (c == L'^' && i + 1 < text.size() && caretDecodes(text[i + 1])) {
            wchar_t next = text[++i];
            out += next == L' '   ? L'^'
                   : next == L'@' ? kNullSymbol
                                  : static_cast<wchar_t>(next - L'@');
            continue;
        }
        out += c;
    }
    return out;
}

std::wstring caretEncode(std::wstring_view text) {
    std::wstring out;
    out.reserve(text.size());
    for (wchar_t c : text) {
        if (c >= 0 && c < 0x20) {
            out += L'^';
            out += static_cast<wchar_t>(c + L'@');
        } else if (c == kNullSymbol) {
            out += L"^@";
        } else if (c == L'^') {  // a caret of the text itself, always as the pair
            out += L"^ ";
        } else {
            out += c;
        }
    }
    return out;
}

struct TextCodec::State {
    std::string name;
    bool utf8 = false;
    std::unique_ptr<Iconv> in, out;
};

TextCodec::TextCodec(std::unique_ptr<State> state) : state_(std::move(state)) {}
TextCodec::TextCodec(TextCodec&&) noexcept = default;
TextCodec& TextCodec::operator=(TextCodec&&) noexcept = default;
TextCodec::~TextCodec() = default;

TextCodec TextCodec::utf8() {
    auto s = std::make_unique<State>();
    s->name = "UTF-8";
    s->utf8 = true;
    return TextCodec(std::move(s));
}

TextCodec TextCodec::codePage(std::string_view name) {
    auto s = std::make_unique<State>();
    s->name = name.empty() ? "ANSI_1252" : std::string(name);
    std::string page = iconvName(s->name);
    s->in = std::make_unique<Iconv>("WCHAR_T", page.c_str());
    s->out = std::make_unique<Iconv>(page.c_str(), "WCHAR_T");
    if (!s->in->ok() || !s->out->ok()) {  // a code page iconv does not know: Windows Latin
        s->in = std::make_unique<Iconv>("WCHAR_T", "CP1252");
        s->out = std::make_unique<Iconv>("CP1252", "WCHAR_T");
    }
    return TextCodec(std::move(s));
}

TextCodec TextCodec::forDrawing(std::string_view acadver, std::string_view codepage) {
    // AC1021 and later: UTF-8 whatever the code page variable says.
    if (acadver.size() == 6 && acadver.starts_with("AC") && acadver >= "AC1021") return utf8();
    return codePage(codepage);
}

bool TextCodec::isUtf8() const {
    return state_->utf8;
}
const std::string& TextCodec::name() const {
    return state_->name;
}

std::wstring TextCodec::decode(std::string_view bytes) const {
    std::wstring text;
    if (isAscii(bytes)) {
        text.assign(bytes.begin(), bytes.end());
    } else if (state_->utf8 || !state_->in->ok() || !convertIn(*state_->in, bytes, text)) {
        // Not valid in the code page: UTF-8 if it is that, else byte for byte.
        text = fromUtf8(bytes, InvalidBytes::Latin1);
    }
    return resolveEscapes(text);
}

std::string TextCodec::encode(std::wstring_view text) const {
    std::wstring careted = caretEncode(text);
    if (state_->utf8) return toUtf8(careted);
    std::string out;
    out.reserve(careted.size());
    for (wchar_t c : careted) {
        if (c >= 0 && c < 0x80) {
            out += static_cast<char>(c);
        } else if (!state_->out->ok() || !convertOut(*state_->out, c, out)) {
            appendUnicodeEscape(static_cast<char32_t>(c), out);
        }
    }
    return out;
}

}  // namespace kelvo::host::dxf
