// The 4x4 transformation matrix and the geometry constants.

#include <cmath>
#include <algorithm>
#include <cstring>

#include "gemat3d.h"

AcGeTol AcGeContext::gTol;

const AcGeVector2d AcGeVector2d::kIdentity(1, 1);
const AcGeVector2d AcGeVector2d::kXAxis(1, 0);
const AcGeVector2d AcGeVector2d::kYAxis(0, 1);
const AcGePoint2d AcGePoint2d::kOrigin(0, 0);
const AcGeVector3d AcGeVector3d::kIdentity(1, 1, 1);
const AcGeVector3d AcGeVector3d::kXAxis(1, 0, 0);
const AcGeVector3d AcGeVector3d::kYAxis(0, 1, 0);
const AcGeVector3d AcGeVector3d::kZAxis(0, 0, 1);
const AcGePoint3d AcGePoint3d::kOrigin(0, 0, 0);
const AcGeScale3d AcGeScale3d::kIdentity(1, 1, 1);
const AcGePlane AcGePlane::kXYPlane(AcGePoint3d(0, 0, 0), AcGeVector3d(0, 0, 1));
const AcGeMatrix3d AcGeMatrix3d::kIdentity;

bool AcGeScale3d::isEqualTo(const AcGeScale3d& s, const AcGeTol& tol) const {
    return std::fabs(sx - s.sx) <= tol.equalVector() && std::fabs(sy - s.sy) <= tol.equalVector() &&
           std::fabs(sz - s.sz) <= tol.equalVector();
}

// The arbitrary axis rule: the X axis of a normal's plane is Wy x N when N is close to the
// world Z axis, else Wz x N.
AcGeVector3d AcGeVector3d::perpVector() const {
    AcGeVector3d n = normal();
    if (std::fabs(n.x) < 1.0 / 64 && std::fabs(n.y) < 1.0 / 64)
        return AcGeVector3d::kYAxis.crossProduct(n).normal();
    return AcGeVector3d::kZAxis.crossProduct(n).normal();
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& m) {
    AcGeVector3d v = *this;
    x = m(0, 0) * v.x + m(0, 1) * v.y + m(0, 2) * v.z;
    y = m(1, 0) * v.x + m(1, 1) * v.y + m(1, 2) * v.z;
    z = m(2, 0) * v.x + m(2, 1) * v.y + m(2, 2) * v.z;
    return *this;
}

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis));
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }

AcGePoint3d AcGePoint3d::project(const AcGePlane& plane, const AcGeVector3d& dir) const {
    double denom = dir.dotProduct(plane.normal());
    if (std::fabs(denom) < 1e-12) return orthoProject(plane);
    double t = -plane.signedDistanceTo(*this) / denom;
    return *this + dir * t;
}

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlane& plane) const {
    return *this - plane.normal() * plane.signedDistanceTo(*this);
}

AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
    double x = m(0, 0) * p.x + m(0, 1) * p.y + m(0, 2) * p.z + m(0, 3);
    double y = m(1, 0) * p.x + m(1, 1) * p.y + m(1, 2) * p.z + m(1, 3);
    double z = m(2, 0) * p.x + m(2, 1) * p.y + m(2, 2) * p.z + m(2, 3);
    double w = m(3, 0) * p.x + m(3, 1) * p.y + m(3, 2) * p.z + m(3, 3);
    if (w != 0 && w != 1) return {x / w, y / w, z / w};
    return {x, y, z};
}

AcGeMatrix3d::AcGeMatrix3d() { setToIdentity(); }

AcGeMatrix3d& AcGeMatrix3d::setToIdentity() {
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) entry[r][c] = r == c ? 1.0 : 0.0;
    return *this;
}

bool AcGeMatrix3d::isIdentity(const AcGeTol& tol) const { return isEqualTo(kIdentity, tol); }

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& v) {
    setToIdentity();
    entry[0][3] = v.x;
    entry[1][3] = v.y;
    entry[2][3] = v.z;
    return *this;
}

// Rodrigues' rotation about an axis through the centre.
AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis,
                                          const AcGePoint3d& center) {
    AcGeVector3d u = axis.normal();
    double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
    setToIdentity();
    entry[0][0] = t * u.x * u.x + c;
    entry[0][1] = t * u.x * u.y - s * u.z;
    entry[0][2] = t * u.x * u.z + s * u.y;
    entry[1][0] = t * u.x * u.y + s * u.z;
    entry[1][1] = t * u.y * u.y + c;
    entry[1][2] = t * u.y * u.z - s * u.x;
    entry[2][0] = t * u.x * u.z - s * u.y;
    entry[2][1] = t * u.y * u.z + s * u.x;
    entry[2][2] = t * u.z * u.z + c;
    AcGeVector3d cv = center.asVector();
    AcGeVector3d rc = cv;
    rc.transformBy(*this);
    AcGeVector3d shift = cv - rc;
    entry[0][3] = shift.x;
    entry[1][3] = shift.y;
    entry[2][3] = shift.z;
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double scale, const AcGePoint3d& center) {
    return setToScaling(AcGeScale3d(scale), center);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(const AcGeScale3d& scale, const AcGePoint3d& center) {
    setToIdentity();
    for (int i = 0; i < 3; ++i) {
        entry[i][i] = scale[i];
        entry[i][3] = center[i] * (1 - scale[i]);
    }
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& plane) {
    AcGeVector3d n = plane.normal();
    setToIdentity();
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c) entry[r][c] -= 2 * n[r] * n[c];
    double d = plane.pointOnPlane().asVector().dotProduct(n);
    for (int r = 0; r < 3; ++r) entry[r][3] = 2 * d * n[r];
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& point) {
    return setToScaling(-1.0, point);
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
    setToIdentity();
    for (int r = 0; r < 3; ++r) {
        entry[r][0] = xAxis[r];
        entry[r][1] = yAxis[r];
        entry[r][2] = zAxis[r];
        entry[r][3] = origin[r];
    }
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
    for (int r = 0; r < 3; ++r) {
        xAxis[r] = entry[r][0];
        yAxis[r] = entry[r][1];
        zAxis[r] = entry[r][2];
        origin[r] = entry[r][3];
    }
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin,
                                               const AcGeVector3d& fromX, const AcGeVector3d& fromY,
                                               const AcGeVector3d& fromZ,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                               const AcGeVector3d& toY, const AcGeVector3d& toZ) {
    AcGeMatrix3d from, to;
    from.setCoordSystem(fromOrigin, fromX, fromY, fromZ);
    to.setCoordSystem(toOrigin, toX, toY, toZ);
    return *this = to * from.inverse();
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& v) {
    return AcGeMatrix3d().setToTranslation(v);
}
AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis,
                                    const AcGePoint3d& center) {
    return AcGeMatrix3d().setToRotation(angle, axis, center);
}
AcGeMatrix3d AcGeMatrix3d::scaling(double scale, const AcGePoint3d& center) {
    return AcGeMatrix3d().setToScaling(scale, center);
}
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePlane& plane) {
    return AcGeMatrix3d().setToMirroring(plane);
}
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& point) {
    return AcGeMatrix3d().setToMirroring(point);
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
    AcGeVector3d z = normal.normal();
    if (z.isZeroLength()) z = AcGeVector3d::kZAxis;
    AcGeVector3d x = z.perpVector();
    AcGeVector3d y = z.crossProduct(x).normal();
    return AcGeMatrix3d().setCoordSystem(AcGePoint3d::kOrigin, x, y, z);
}

AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) {
    return planeToWorld(normal).inverse();
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& m) const {
    AcGeMatrix3d out;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) {
            double sum = 0;
            for (int k = 0; k < 4; ++k) sum += entry[r][k] * m.entry[k][c];
            out.entry[r][c] = sum;
        }
    return out;
}

// Gauss-Jordan elimination with partial pivoting; a singular matrix gives the identity.
AcGeMatrix3d AcGeMatrix3d::inverse() const {
    double a[4][8];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) {
            a[r][c] = entry[r][c];
            a[r][c + 4] = r == c ? 1.0 : 0.0;
        }
    for (int col = 0; col < 4; ++col) {
        int pivot = col;
        for (int r = col + 1; r < 4; ++r)
            if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) pivot = r;
        if (std::fabs(a[pivot][col]) < 1e-300) return AcGeMatrix3d();
        if (pivot != col)
            for (int c = 0; c < 8; ++c) std::swap(a[pivot][c], a[col][c]);
        double p = a[col][col];
        for (int c = 0; c < 8; ++c) a[col][c] /= p;
        for (int r = 0; r < 4; ++r) {
            if (r == col) continue;
            double f = a[r][col];
            for (int c = 0; c < 8; ++c) a[r][c] -= f * a[col][c];
        }
    }
    AcGeMatrix3d out;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) out.entry[r][c] = a[r][c + 4];
    return out;
}

AcGeMatrix3d AcGeMatrix3d::transpose() const {
    AcGeMatrix3d out;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) out.entry[r][c] = entry[c][r];
    return out;
}

double AcGeMatrix3d::det() const {
    const auto& m = entry;
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

bool AcGeMatrix3d::isSingular(const AcGeTol& tol) const { return std::fabs(det()) <= tol.equalVector(); }

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol) const {
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (std::fabs(entry[r][c] - m.entry[r][c]) > tol.equalVector()) return false;
    return true;
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    AcGePoint3d o;
    AcGeVector3d x, y, z;
    getCoordSystem(o, x, y, z);
    double s = x.length();
    return std::fabs(y.length() - s) <= tol.equalVector() &&
           std::fabs(z.length() - s) <= tol.equalVector() &&
           std::fabs(x.dotProduct(y)) <= tol.equalVector() * s * s &&
           std::fabs(y.dotProduct(z)) <= tol.equalVector() * s * s &&
           std::fabs(x.dotProduct(z)) <= tol.equalVector() * s * s;
}

double AcGeMatrix3d::scale() const {
    AcGePoint3d o;
    AcGeVector3d x, y, z;
    getCoordSystem(o, x, y, z);
    return std::max({x.length(), y.length(), z.length()});
}

AcGeVector3d AcGeMatrix3d::translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
