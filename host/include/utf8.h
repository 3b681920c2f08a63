// Text at the edges: wide strings inside, UTF-8 in files, paths and on the terminal.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kelvo {

// What becomes of bytes that are not UTF-8: U+FFFD, or the Latin-1 character of each byte
// (for text files written in a Windows code page, so that nothing read is lost).
enum class InvalidBytes { Replace, Latin1 };

// Characters outside Unicode become U+FFFD.
std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view text, InvalidBytes invalid = InvalidBytes::Replace);

// File names are bytes: a wide name is its UTF-8 bytes, and a path's bytes read as UTF-8
// give its wide name; a byte that is not valid UTF-8 becomes the lone surrogate U+DC80 to
// U+DCFF and goes back to the same byte, so any name the file system holds round-trips
// (printed, such a character shows as U+FFFD). Always convert through these, never
// through std::filesystem::path's own wide constructor or wstring(), which go through the
// C locale and throw for any character outside ASCII.
std::filesystem::path utf8Path(std::wstring_view name);
std::wstring widePath(const std::filesystem::path& path);

}  // namespace kelvo
