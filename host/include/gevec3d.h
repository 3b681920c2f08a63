// A 3D vector.
#pragma once

#include <cmath>

#include "gegbl.h"
#include "gevec2d.h"

class AcGeMatrix3d;

class KELVO_HOST_API AcGeVector3d {
public:
    AcGeVector3d() = default;
    AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    double length() const { return std::sqrt(x * x + y * y + z * z); }
    double lengthSqrd() const { return x * x + y * y + z * z; }
    double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    // The unit vector in this direction; the zero vector when this one is shorter than the
    // tolerance.
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        double len = length();
        return len <= tol.equalVector() ? AcGeVector3d() : AcGeVector3d(x / len, y / len, z / len);
    }
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::fabs(length() - 1.0) <= tol.equalVector();
    }
    bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).length() <= tol.equalVector();
    }
    bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return normal(tol).crossProduct(v.normal(tol)).length() <= tol.equalVector();
    }
    bool isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return normal(tol).isEqualTo(v.normal(tol), tol);
    }
    // The angle between the two vectors, in [0, pi].
    double angleTo(const AcGeVector3d& v) const {
        return std::atan2(crossProduct(v).length(), dotProduct(v));
    }
    // A vector perpendicular to this one (the arbitrary-axis choice for normals).
    AcGeVector3d perpVector() const;
    AcGeVector3d& transformBy(const AcGeMatrix3d& m);
    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
    AcGeVector2d convert2d() const { return {x, y}; }

    AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGeVector3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    AcGeVector3d& operator*=(double s) { return *this = *this * s; }
    bool operator==(const AcGeVector3d& v) const { return isEqualTo(v); }
    double operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }

    static const AcGeVector3d kIdentity;
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    double x = 0, y = 0, z = 0;
};

inline AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
