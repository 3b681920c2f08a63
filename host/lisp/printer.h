// The printed forms of values, as prin1 (escape = true) and princ print them.
#pragma once

#include <string>

#include "value.h"

namespace lisp {

std::wstring printValue(const Value& v, bool escape);
// A real as AutoLISP prints it: up to 6 significant digits, always with a decimal point
// or an exponent ("1.0", "0.5", "3.14159", "1.0e+20").
std::wstring formatReal(double d);

}  // namespace lisp
