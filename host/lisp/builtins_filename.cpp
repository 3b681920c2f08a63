// File names as text: vl-filename-base, -directory, -extension and -mktemp. Both / and
// \ separate folders, so names written for either system split the same way.
#include <atomic>
#include <cwchar>
#include <filesystem>
#include <system_error>

#include "args.h"
#include "library.h"
#include "text.h"

namespace lisp {

namespace {

struct NameParts {
    std::wstring directory;   // without the final separator
    std::wstring base;        // the name without folder and extension
    std::wstring extension;   // with its dot; empty when there is none
    bool hasExtension = false;
};

NameParts split(const std::wstring& name) {
    NameParts p;
    std::size_t sep = name.find_last_of(L"/\\");
    std::wstring file = name;
    if (sep != std::wstring::npos) {
        // A name directly under the root keeps the root as its folder.
        p.directory = name.substr(0, sep == 0 ? 1 : sep);
        file = name.substr(sep + 1);
    }
    std::size_t dot = file.rfind(L'.');
    if (dot == std::wstring::npos) {
        p.base = file;
    } else {
        p.base = file.substr(0, dot);
        p.extension = file.substr(dot);
        p.hasExtension = true;
    }
    return p;
}

Value fnFilenameBase(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::string(split(a.string(0)).base);
}

Value fnFilenameDirectory(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::string(split(a.string(0)).directory);
}

Value fnFilenameExtension(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    NameParts p = split(a.string(0));
    return p.hasExtension ? Value::string(p.extension) : Value();
}

std::wstring tempDirectory() {
    std::error_code ec;
    std::filesystem::path dir = std::filesystem::temp_directory_path(ec);
    return ec ? std::wstring(L".") : fromUtf8(dir.string());
}

bool exists(const std::wstring& name) {
    std::error_code ec;
    return std::filesystem::exists(kelvo::utf8Path(name), ec);
}

// (vl-filename-mktemp [pattern directory extension]): a name no file has yet, made of
// the first five characters of the pattern's base and three hexadecimal digits. The
// pattern's own folder and extension apply unless the other arguments give them.
Value fnFilenameMktemp(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 3);
    auto optString = [&](std::size_t i) -> const std::wstring* {
        return a.has(i) && !a[i].isNil() ? &a.string(i) : nullptr;
    };
    const std::wstring* pattern = optString(0);
    const std::wstring* directory = optString(1);
    const std::wstring* extension = optString(2);
    NameParts p = split(pattern ? *pattern : std::wstring(L"$VL~~"));
    std::wstring dir = directory ? *directory : !p.directory.empty() ? p.directory : tempDirectory();
    if (!dir.empty() && dir.back() != L'/' && dir.back() != L'\\') dir += L'/';
    std::wstring ext = extension ? *extension : p.extension;
    if (!ext.empty() && ext[0] != L'.') ext.insert(0, 1, L'.');
    std::wstring stem = dir + p.base.substr(0, 5);

    // Names handed out stay unique within the process even before their files exist.
    static std::atomic<unsigned> counter{0};
    for (unsigned tries = 0; tries < 0x1000; ++tries) {
        wchar_t digits[8];
        std::swprintf(digits, 8, L"%03x", (counter++ + 1) & 0xFFFu);
        std::wstring name = stem + digits + ext;
        if (!exists(name)) return Value::string(std::move(name));
    }
    return {};
}

const Builtin kFilenameLib[] = {
    {L"vl-filename-base", fnFilenameBase},
    {L"vl-filename-directory", fnFilenameDirectory},
    {L"vl-filename-extension", fnFilenameExtension},
    {L"vl-filename-mktemp", fnFilenameMktemp},
};

}  // namespace

void openFilenameLib(Interp& in) { openLibrary(in, kFilenameLib); }

}  // namespace lisp
