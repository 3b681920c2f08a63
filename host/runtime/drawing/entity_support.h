// What the entity classes share: object coordinate systems, angle helpers, and the
// grip and snap bookkeeping.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>
#include <numbers>

#include "dbmain.h"

namespace kelvo::drawing {

// Object coordinates of a normal's plane to world coordinates, and back.
inline AcGePoint3d ocsToWcs(const AcGePoint3d& p, const AcGeVector3d& normal) {
    if (normal.isEqualTo(AcGeVector3d::kZAxis)) return p;
    return AcGeMatrix3d::planeToWorld(normal) * p;
}
inline AcGePoint3d wcsToOcs(const AcGePoint3d& p, const AcGeVector3d& normal) {
    if (normal.isEqualTo(AcGeVector3d::kZAxis)) return p;
    return AcGeMatrix3d::worldToPlane(normal) * p;
}
// The X axis of the normal's plane (the arbitrary axis rule).
inline AcGeVector3d ocsXAxis(const AcGeVector3d& normal) {
    return normal.isEqualTo(AcGeVector3d::kZAxis) ? AcGeVector3d::kXAxis : normal.perpVector();
}

// An angle brought into [0, 2pi).
inline double normalizeAngle(double a) {
    constexpr double twoPi = 2 * std::numbers::pi;
    a = std::fmod(a, twoPi);
    return a < 0 ? a + twoPi : a;
}

// Moves the points marked by grip indices once each (repeated indices count once).
template <typename Points>
void moveMarked(Points& points, int count, const AcDbIntArray& indices, const AcGeVector3d& offset) {
    std::vector<bool> moved(count, false);
    for (int i : indices)
        if (i >= 0 && i < count && !moved[i]) {
            points[i] += offset;
            moved[i] = true;
        }
}

// A transform's effect on a normal: the transformed, renormalised direction.
inline AcGeVector3d transformNormal(const AcGeVector3d& normal, const AcGeMatrix3d& m) {
    AcGeVector3d n = normal;
    n.transformBy(m);
    n.normalize();
    return n.isZeroLength() ? AcGeVector3d::kZAxis : n;
}

// Nearest point of segment ab to p.
inline AcGePoint3d closestOnSegment(const AcGePoint3d& a, const AcGePoint3d& b,
                                    const AcGePoint3d& p, bool extend = false) {
    AcGeVector3d d = b - a;
    double len2 = d.lengthSqrd();
    if (len2 == 0) return a;
    double t = (p - a).dotProduct(d) / len2;
    if (!extend) t = std::clamp(t, 0.0, 1.0);
    return a + d * t;
}

// A new iterator over a list of ids; the caller deletes it.
AcDbObjectIterator* newIdIterator(const AcDbObjectIdArray& ids);

// Intersections of two segments in the XY plane (Z taken from the first); extend says
// which of the two may be extended to full lines.
void intersectSegments(const AcGePoint3d& a1, const AcGePoint3d& a2, const AcGePoint3d& b1,
                       const AcGePoint3d& b2, AcDb::Intersect extend, AcGePoint3dArray& out);
// The straight pieces an entity draws (lines, polylines, arcs as chords), for the simple
// intersections the host offers.
void drawnSegments(const AcDbEntity& entity, std::vector<std::pair<AcGePoint3d, AcGePoint3d>>& out);

}  // namespace kelvo::drawing
