// Text of DXF string values: the bytes of a file and the wide strings of the drawing.
//
// Files before AC1021 are in the drawing's code page ($DWGCODEPAGE, "ANSI_1252" when
// absent); AC1021 and later are UTF-8. In both, \U+XXXX stands for a Unicode character,
// \M+nXXXX for a double-byte character of an East Asian code page, and a caret before
// '@'..'_' for a control character ("^J" is a line feed, "^ " a caret).
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace kelvo::host::dxf {

class TextCodec {
public:
    // UTF-8 for `acadver` AC1021 or later; else the code page named (ANSI_1252, dos932 ...).
    static TextCodec forDrawing(std::string_view acadver, std::string_view codepage);
    static TextCodec utf8();
    static TextCodec codePage(std::string_view name);

    TextCodec(TextCodec&&) noexcept;
    TextCodec& operator=(TextCodec&&) noexcept;
    ~TextCodec();

    bool isUtf8() const;
    // The code page name this codec reads, as the file spells it ("ANSI_1252"), or "UTF-8".
    const std::string& name() const;

    // Bytes of a value line to text: decoded, then escapes and carets resolved. Bytes the
    // code page cannot decode become the Latin-1 character of each byte.
    std::wstring decode(std::string_view bytes) const;
    // Text to the bytes of a value line: control characters as carets, characters the code
    // page cannot represent as \U+XXXX.
    std::string encode(std::wstring_view text) const;

private:
    struct State;
    explicit TextCodec(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

// The escape and caret rules alone (on wide text): used by decode/encode, exposed for tests.
std::wstring resolveEscapes(std::wstring_view text);
std::wstring caretEncode(std::wstring_view text);

}  // namespace kelvo::host::dxf
