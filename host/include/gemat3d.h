// A 4x4 transformation matrix acting on points (column vectors: p' = M p).
#pragma once

#include "gepnt3d.h"
#include "gescl3d.h"

class KELVO_HOST_API AcGeMatrix3d {
public:
    AcGeMatrix3d();

    static const AcGeMatrix3d kIdentity;

    AcGeMatrix3d& setToIdentity();
    bool isIdentity(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeMatrix3d& setToTranslation(const AcGeVector3d& v);
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(double scale, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(const AcGeScale3d& scale,
                               const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToMirroring(const AcGePlane& plane);
    AcGeMatrix3d& setToMirroring(const AcGePoint3d& point);
    // Maps the world axes onto the given coordinate system.
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                     const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                     const AcGeVector3d& toY, const AcGeVector3d& toZ);

    static AcGeMatrix3d translation(const AcGeVector3d& v);
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(double scale, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d mirroring(const AcGePlane& plane);
    static AcGeMatrix3d mirroring(const AcGePoint3d& point);
    // The transformation from the object coordinate system of `normal` (the arbitrary axis
    // algorithm) to world coordinates, and back.
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);

    AcGeMatrix3d operator*(const AcGeMatrix3d& m) const;
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& m) { return *this = *this * m; }
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d inverse() const;
    AcGeMatrix3d& invert() { return *this = inverse(); }
    AcGeMatrix3d transpose() const;
    double det() const;
    bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    bool isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // The largest scale factor of the linear part.
    double scale() const;
    AcGeVector3d translation() const;

    double operator()(int row, int col) const { return entry[row][col]; }
    double& operator()(int row, int col) { return entry[row][col]; }

    double entry[4][4];
};
