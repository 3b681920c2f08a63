// Conversions at the edges: wide strings inside, UTF-8 in files and byte strings.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "utf8.h"

namespace lisp {

using kelvo::toUtf8;
// Invalid bytes are taken as Latin-1 characters, so no input is refused.
inline std::wstring fromUtf8(std::string_view s) {
    return kelvo::fromUtf8(s, kelvo::InvalidBytes::Latin1);
}
// The whole text of a file; throws Error when it cannot be read.
std::wstring readTextFile(const std::filesystem::path& file);
// The bytes of a whole file; false (with errno set) when it cannot be opened or a read
// fails part way, so that a damaged read is never taken for a shorter file.
bool readFileBytes(const std::filesystem::path& file, std::string& out);

// Upper and lower case of one character, for all of Unicode's one-to-one case pairs
// (letters with accents, Greek, Cyrillic ...); other characters are returned as they are.
wchar_t upperChar(wchar_t c);
wchar_t lowerChar(wchar_t c);

}  // namespace lisp
