// Geometry globals: the tolerance used by comparisons and the global context.
#pragma once

#include "adsdef.h"

class KELVO_HOST_API AcGeTol {
public:
    AcGeTol() = default;
    double equalPoint() const { return equalPoint_; }
    double equalVector() const { return equalVector_; }
    void setEqualPoint(double value) { equalPoint_ = value; }
    void setEqualVector(double value) { equalVector_ = value; }

private:
    double equalPoint_ = 1e-10;
    double equalVector_ = 1e-12;
};

struct KELVO_HOST_API AcGeContext {
    static AcGeTol gTol;
};

namespace AcGe {
enum ErrorCondition { kOk = 0, kNonCoplanarGeometry, kDegenerateGeometry, kSingularPoint };
}  // namespace AcGe
