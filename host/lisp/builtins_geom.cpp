// Plane geometry on points (lists of 2 or 3 numbers).
#include <cmath>

#include "args.h"
#include "library.h"

namespace lisp {

namespace {

Value pointValue(const std::vector<double>& p) {
    std::vector<Value> items;
    for (double d : p) items.push_back(Value::real(d));
    return Value::list(items);
}

Value fnPolar(Interp&, std::vector<Value>& args) {
    Args a(args, 3, 3);
    auto p = a.point(0);
    double ang = a.number(1), dist = a.number(2);
    p[0] += dist * std::cos(ang);
    p[1] += dist * std::sin(ang);
    return pointValue(p);
}

// 3D distance when both points are 3D, else in the plane.
Value fnDistance(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    auto p = a.point(0), q = a.point(1);
    double dz = p.size() == 3 && q.size() == 3 ? q[2] - p[2] : 0.0;
    return Value::real(std::sqrt(std::pow(q[0] - p[0], 2) + std::pow(q[1] - p[1], 2) + dz * dz));
}

Value fnAngle(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    auto p = a.point(0), q = a.point(1);
    double ang = std::atan2(q[1] - p[1], q[0] - p[0]);
    if (ang < 0) ang += 2 * std::acos(-1.0);
    return Value::real(ang);
}

// Intersection of lines p1-p2 and p3-p4 in the plane; with onseg nil the lines are
// infinite, else the point must lie on both segments.
Value fnInters(Interp&, std::vector<Value>& args) {
    Args a(args, 4, 5);
    auto p1 = a.point(0), p2 = a.point(1), p3 = a.point(2), p4 = a.point(3);
    bool onSeg = !a.has(4) || !a[4].isNil();
    double d1x = p2[0] - p1[0], d1y = p2[1] - p1[1], d2x = p4[0] - p3[0], d2y = p4[1] - p3[1];
    double den = d1x * d2y - d1y * d2x;
    if (std::fabs(den) < 1e-12) return {};
    double t = ((p3[0] - p1[0]) * d2y - (p3[1] - p1[1]) * d2x) / den;
    double u = ((p3[0] - p1[0]) * d1y - (p3[1] - p1[1]) * d1x) / den;
    const double eps = 1e-10;
    if (onSeg && (t < -eps || t > 1 + eps || u < -eps || u > 1 + eps)) return {};
    std::vector<double> r{p1[0] + t * d1x, p1[1] + t * d1y};
    if (p1.size() == 3 && p2.size() == 3) r.push_back(p1[2] + t * (p2[2] - p1[2]));
    return pointValue(r);
}

const Builtin kGeomLib[] = {
    {L"polar", fnPolar},
    {L"distance", fnDistance},
    {L"angle", fnAngle},
    {L"inters", fnInters},
};

}  // namespace

void openGeomLib(Interp& in) { openLibrary(in, kGeomLib); }

}  // namespace lisp
