// Plane geometry shared by the leader and its functions.
#pragma once

#include "gepnt3d.h"

namespace kelvo {

// The angle in the XY plane of the direction from a to b, counter-clockwise from the X
// axis, in [0, 2pi). A zero vector (a equal to b in X and Y) gives 0.
double planAngle(const AcGePoint3d& a, const AcGePoint3d& b);
// (p.x + cos(angle) * distance, p.y + sin(angle) * distance, p.z): Z is kept, not moved.
AcGePoint3d polar(const AcGePoint3d& p, double angle, double distance);

}  // namespace kelvo
