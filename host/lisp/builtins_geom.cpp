// Plane geometry on points (lists of 2 or 3 numbers).
#include <array>
#include <cmath>
#include <optional>

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

// --- trans: between the world, the user and display systems and an object's own -----
// This host's user coordinate system is the world's and its view is the plan view, so
// codes 0 (world), 1 (user), 2 (display) and 3 (paper display) are the same system. An
// object's system (OCS) is given by its extrusion direction: a normal vector, or an
// entity name whose group 210 gives it.

using Vec = std::array<double, 3>;

Vec cross(const Vec& a, const Vec& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vec unit(const Vec& v) {
    double len = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (len == 0) throw Error(L"bad argument value: zero extrusion vector");
    return {v[0] / len, v[1] / len, v[2] / len};
}

// The axes of the object system of normal n (the arbitrary axis algorithm).
std::array<Vec, 3> ocsAxes(const Vec& normal) {
    Vec n = unit(normal);
    Vec ax = std::fabs(n[0]) < 1.0 / 64 && std::fabs(n[1]) < 1.0 / 64 ? cross({0, 1, 0}, n)
                                                                      : cross({0, 0, 1}, n);
    ax = unit(ax);
    Vec ay = unit(cross(n, ax));
    return {ax, ay, n};
}

// nullopt for the world-like systems, else the object system's normal.
std::optional<Vec> systemNormal(Interp& in, const Value& code) {
    if (code.type() == Type::Int) {
        if (code.asInt() < 0 || code.asInt() > 3)
            throw Error(L"bad argument value: " + std::to_wstring(code.asInt()));
        return std::nullopt;
    }
    Value normal = code;
    if (code.type() == Type::Ename) {
        Value data = in.apply(Value::symbol(L"ENTGET"), {code});
        normal = {};
        for (Value p = data; p.isCons(); p = p.cdr())
            if (p.car().isCons() && p.car().car().type() == Type::Int &&
                p.car().car().asInt() == 210)
                normal = p.car().cdr();
        if (normal.isNil()) return std::nullopt;
    }
    std::vector<Value> items = normal.toVector();
    if (items.size() != 3) badArgType(L"coordinate system", code);
    Vec n{};
    for (std::size_t i = 0; i < 3; ++i) {
        if (!items[i].isNumber()) badArgType(L"numberp", items[i]);
        n[i] = items[i].asReal();
    }
    if (n[0] == 0 && n[1] == 0 && n[2] > 0) return std::nullopt;
    return n;
}

// (trans pt from to [disp]): the point (or, with disp, the vector) in the other system.
Value fnTrans(Interp& in, std::vector<Value>& args) {
    Args a(args, 3, 4);
    auto p = a.point(0);
    bool flat = p.size() == 2;
    Vec v{p[0], p[1], flat ? 0.0 : p[2]};
    if (auto from = systemNormal(in, a[1])) {
        auto axes = ocsAxes(*from);
        Vec w{};
        for (std::size_t i = 0; i < 3; ++i)
            w[i] = v[0] * axes[0][i] + v[1] * axes[1][i] + v[2] * axes[2][i];
        v = w;
    }
    if (auto to = systemNormal(in, a[2])) {
        auto axes = ocsAxes(*to);
        Vec o{};
        for (std::size_t k = 0; k < 3; ++k)
            o[k] = v[0] * axes[k][0] + v[1] * axes[k][1] + v[2] * axes[k][2];
        v = o;
    }
    return pointValue({v[0], v[1], v[2]});
}

const Builtin kGeomLib[] = {
    {L"trans", fnTrans}, {L"polar", fnPolar},   {L"distance", fnDistance},
    {L"angle", fnAngle}, {L"inters", fnInters},
};

}  // namespace

void openGeomLib(Interp& in) { openLibrary(in, kGeomLib); }

}  // namespace lisp
