// Plane geometry shared by the leader and its functions.
#include "entities/leader_geometry.h"

#include <cmath>
#include <numbers>

namespace kelvo {

double planAngle(const AcGePoint3d& a, const AcGePoint3d& b) {
    const double angle = std::atan2(b.y - a.y, b.x - a.x);
    return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

AcGePoint3d polar(const AcGePoint3d& p, double angle, double distance) {
    return {p.x + std::cos(angle) * distance, p.y + std::sin(angle) * distance, p.z};
}

}  // namespace kelvo
