// Conversions at the edges: wide strings inside, UTF-8 in files and byte strings.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lisp {

std::string toUtf8(std::wstring_view s);
// Invalid bytes are taken as Latin-1 characters, so no input is refused.
std::wstring fromUtf8(std::string_view s);
// The whole text of a file; throws Error when it cannot be read.
std::wstring readTextFile(const std::filesystem::path& file);

}  // namespace lisp
