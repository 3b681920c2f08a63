// A 2D point.
#pragma once

#include "gevec2d.h"

class KELVO_HOST_API AcGePoint2d {
public:
    AcGePoint2d() = default;
    AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    double distanceTo(const AcGePoint2d& p) const { return std::hypot(p.x - x, p.y - y); }
    bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }
    AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
    AcGeVector2d asVector() const { return {x, y}; }
    bool operator==(const AcGePoint2d& p) const { return isEqualTo(p); }
    double operator[](int i) const { return i == 0 ? x : y; }
    double& operator[](int i) { return i == 0 ? x : y; }

    static const AcGePoint2d kOrigin;

    double x = 0, y = 0;
};
