// Text at the host's edges: wide strings inside, UTF-8 in files and on the terminal.
#pragma once

#include <string>
#include <string_view>

#include "adsdef.h"

namespace kelvo::host {

KELVO_HOST_API std::string toUtf8(std::wstring_view text);
// Invalid sequences become U+FFFD, so nothing read is silently dropped.
KELVO_HOST_API std::wstring fromUtf8(std::string_view text);

}  // namespace kelvo::host
