// Number and angle to text, as rtos and angtos format them.
#pragma once

#include <string>

namespace lisp {

// Modes: 1 scientific, 2 decimal, 3 engineering (feet and decimal inches), 4 architectural
// (feet and fractional inches), 5 fractional. `precision` is decimal places, or for the
// fractional modes the largest denominator as a power of two. Trailing zeros are kept.
struct DistanceStyle {
    int zeros = 0;           // DIMZIN: 4 drops a leading zero, 8 trailing zeros (decimal)
    bool inputForm = false;  // UNITMODE 1: "17-1/2" and "1'5-1/2\"" (no spaces)
};
std::wstring formatDistance(double value, int mode, int precision, DistanceStyle style = {});

// Modes: 0 degrees, 1 degrees/minutes/seconds, 2 grads, 3 radians. The angle is taken
// modulo a full turn.
std::wstring formatAngle(double radians, int mode, int precision);

}  // namespace lisp
