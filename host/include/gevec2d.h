// A 2D vector.
#pragma once

#include <cmath>
#include <numbers>

#include "gegbl.h"

class KELVO_HOST_API AcGeVector2d {
public:
    AcGeVector2d() = default;
    AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    double length() const { return std::hypot(x, y); }
    // The angle from the X axis, counter-clockwise, in [0, 2pi).
    double angle() const {
        double a = std::atan2(y, x);
        return a < 0 ? a + 2 * std::numbers::pi : a;
    }
    double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
    AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        double len = length();
        return len <= tol.equalVector() ? AcGeVector2d() : AcGeVector2d(x / len, y / len);
    }
    AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator-() const { return {-x, -y}; }
    AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    double operator[](int i) const { return i == 0 ? x : y; }
    double& operator[](int i) { return i == 0 ? x : y; }

    static const AcGeVector2d kIdentity;
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    double x = 0, y = 0;
};
