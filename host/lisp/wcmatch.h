// AutoLISP wildcard matching.
#pragma once

#include <string_view>

namespace lisp {

// True when `text` matches `pattern`: comma-separated alternatives, each optionally
// negated by a leading ~, made of # (digit), @ (letter), . (non-alphanumeric),
// * (any run), ? (any character), [...] and [~...] (character classes, with ranges),
// ` (takes the next character literally) and plain characters (case-sensitive).
bool wcmatch(std::wstring_view text, std::wstring_view pattern);

}  // namespace lisp
