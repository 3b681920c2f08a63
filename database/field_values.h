// Database field values as LISP sees them, and LISP values as field values.
//
// Text rule: ordinary text fields lose their trailing blanks; fields whose name begins
// with "s_" (case-sensitive) keep them, except that a value of exactly one blank becomes
// the empty text.
//
// Field value to LISP, by variant type: 16-bit integer, Yes/No (-1 or 0), byte and
// 32-bit integer give a long integer; single and double a real (NaN gives 0.0); a date
// its US text ("M/D/YYYY h:mm:ss AM", the time left out at midnight) without trailing
// blanks; text by the text rule; anything else (currency, null, empty, binary) nil.
//
// LISP to field value: a real gives a double, a short or long integer a 32-bit integer,
// a text a text, nil an empty value, T the Yes/No true; anything else does not convert.
#pragma once

#include <string>
#include <string_view>

#include "adsdef.h"
#include "dao_variant.h"

namespace kelvo {

// True when a text field of this name is trimmed (its name does not begin with "s_").
bool trimsFieldText(std::wstring_view fieldName);

// The LISP text for a text field value.
std::wstring lispFieldText(std::wstring_view fieldName, std::wstring_view value);

// A new value-list node holding the LISP value of a field value; `trimText` is
// trimsFieldText of the field's name. The caller links it and releases it with
// acutRelRb. Null when the host cannot allocate.
resbuf* newFieldValueNode(const COleVariant& value, bool trimText);

// The field value of one LISP value node. False (and `out` unchanged) for a type that
// does not convert.
bool fieldValueFromLisp(const resbuf& node, COleVariant& out);

}  // namespace kelvo
