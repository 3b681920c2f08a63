// Database field values as LISP sees them: the text rule. Ordinary text fields lose
// their trailing blanks; fields whose name begins with "s_" (case-sensitive) keep them,
// except that a value of exactly one blank becomes the empty text. The conversion of
// the other variant types comes with the data access engine's variants.
#pragma once

#include <string>
#include <string_view>

namespace kelvo {

// True when a text field of this name is trimmed (its name does not begin with "s_").
bool trimsFieldText(std::wstring_view fieldName);

// The LISP text for a text field value.
std::wstring lispFieldText(std::wstring_view fieldName, std::wstring_view value);

}  // namespace kelvo
