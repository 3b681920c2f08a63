// Whole-file reading.
#include "text.h"

#include <locale.h>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cwctype>
#include <memory>

#include "interp.h"

namespace lisp {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

bool readFileBytes(const std::filesystem::path& file, std::string& out) {
    out.clear();
    std::unique_ptr<std::FILE, FileCloser> in(std::fopen(file.c_str(), "rb"));
    if (!in) return false;
    char block[65536];
    for (;;) {
        const std::size_t n = std::fread(block, 1, sizeof block, in.get());
        out.append(block, n);
        if (n < sizeof block) break;
    }
    if (std::ferror(in.get())) {
        if (errno == 0) errno = EIO;
        return false;
    }
    return true;
}

std::wstring readTextFile(const std::filesystem::path& file) {
    std::error_code ec;
    if (std::filesystem::exists(file, ec) && !std::filesystem::is_regular_file(file, ec))
        throw Error(L"cannot read file: " + kelvo::widePath(file) + L" is not a regular file");
    std::string bytes;
    if (!readFileBytes(file, bytes)) throw Error(L"cannot read file: " + kelvo::widePath(file));
    return fromUtf8(bytes);
}

namespace {

// The character classes of UTF-8 text, whatever the process's own locale is.
class UnicodeCase {
public:
    UnicodeCase() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr))) {}
    ~UnicodeCase() {
        if (locale_) freelocale(locale_);
    }
    UnicodeCase(const UnicodeCase&) = delete;
    UnicodeCase& operator=(const UnicodeCase&) = delete;
    wchar_t upper(wchar_t c) const {
        return static_cast<wchar_t>(locale_ ? towupper_l(static_cast<wint_t>(c), locale_)
                                            : std::towupper(c));
    }
    wchar_t lower(wchar_t c) const {
        return static_cast<wchar_t>(locale_ ? towlower_l(static_cast<wint_t>(c), locale_)
                                            : std::towlower(c));
    }

private:
    locale_t locale_;
};

const UnicodeCase& unicodeCase() {
    static const UnicodeCase cases;
    return cases;
}

}  // namespace

wchar_t upperChar(wchar_t c) {
    return c < 0x80 ? static_cast<wchar_t>(std::towupper(c)) : unicodeCase().upper(c);
}
wchar_t lowerChar(wchar_t c) {
    return c < 0x80 ? static_cast<wchar_t>(std::towlower(c)) : unicodeCase().lower(c);
}

}  // namespace lisp
