// A 3D point.
#pragma once

#include "gepnt2d.h"
#include "gevec3d.h"

class AcGeMatrix3d;
class AcGePlane;

class KELVO_HOST_API AcGePoint3d {
public:
    AcGePoint3d() = default;
    AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    double distanceTo(const AcGePoint3d& p) const { return (p - *this).length(); }
    bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }
    AcGePoint3d& transformBy(const AcGeMatrix3d& m);
    AcGePoint3d& setToSum(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = p + v; }
    AcGeVector3d asVector() const { return {x, y, z}; }
    AcGePoint2d convert2d() const { return {x, y}; }
    // The point projected along `dir` onto `plane`.
    AcGePoint3d project(const AcGePlane& plane, const AcGeVector3d& dir) const;
    AcGePoint3d orthoProject(const AcGePlane& plane) const;

    AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGePoint3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
    bool operator!=(const AcGePoint3d& p) const { return !isEqualTo(p); }
    double operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }

    static const AcGePoint3d kOrigin;

    double x = 0, y = 0, z = 0;
};

KELVO_HOST_API AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p);

// The midpoint-free plane: a point and a unit normal.
class KELVO_HOST_API AcGePlane {
public:
    AcGePlane() = default;
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal)
        : origin_(origin), normal_(normal.normal()) {}
    AcGePoint3d pointOnPlane() const { return origin_; }
    AcGeVector3d normal() const { return normal_; }
    double signedDistanceTo(const AcGePoint3d& p) const { return (p - origin_).dotProduct(normal_); }

    static const AcGePlane kXYPlane;

private:
    AcGePoint3d origin_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
};
