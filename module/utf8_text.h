// Conversion of the host's wide strings to and from UTF-8, for file system calls.
#pragma once

#include <string>
#include <string_view>

namespace kelvo {

// Characters outside Unicode become U+FFFD.
std::string toUtf8(std::wstring_view text);
// Invalid sequences become U+FFFD.
std::wstring fromUtf8(std::string_view text);

}  // namespace kelvo
