// Scale factors along X, Y and Z.
#pragma once

#include "gegbl.h"

class KELVO_HOST_API AcGeScale3d {
public:
    AcGeScale3d() = default;
    explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
    AcGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}
    bool isEqualTo(const AcGeScale3d& s, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeScale3d& s) const { return isEqualTo(s); }
    double operator[](int i) const { return i == 0 ? sx : i == 1 ? sy : sz; }
    double& operator[](int i) { return i == 0 ? sx : i == 1 ? sy : sz; }

    static const AcGeScale3d kIdentity;

    double sx = 1, sy = 1, sz = 1;
};
