// Curves: entities with a parameter running from a start to an end.
// Every query answers eNotApplicable unless the curve class provides it.
#pragma once

#include "dbmain.h"

class KELVO_HOST_API AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve);
    ~AcDbCurve() override;

    virtual Adesk::Boolean isClosed() const;
    virtual Adesk::Boolean isPeriodic() const;
    virtual Adesk::Boolean isPlanar() const;
    virtual Acad::ErrorStatus getPlane(AcGePlane& plane, int& type) const;

    virtual Acad::ErrorStatus getStartParam(double& param) const;
    virtual Acad::ErrorStatus getEndParam(double& param) const;
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
    virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
    virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
    virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
    virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& firstDeriv) const;
    virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point,
                                            AcGeVector3d& firstDeriv) const;
    virtual Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& secDeriv) const;
    virtual Acad::ErrorStatus getSecondDeriv(const AcGePoint3d& point,
                                             AcGeVector3d& secDeriv) const;
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPoint,
                                                AcGePoint3d& pointOnCurve,
                                                Adesk::Boolean extend = false) const;
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPoint,
                                                const AcGeVector3d& direction,
                                                AcGePoint3d& pointOnCurve,
                                                Adesk::Boolean extend = false) const;
    virtual Acad::ErrorStatus getOffsetCurves(double offsetDist,
                                              AcDbVoidPtrArray& offsetCurves) const;
    virtual Acad::ErrorStatus getSpline(AcDbCurve*& spline) const;
    virtual Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params,
                                             AcDbVoidPtrArray& curveSegments) const;
    virtual Acad::ErrorStatus getSplitCurves(const AcGePoint3dArray& points,
                                             AcDbVoidPtrArray& curveSegments) const;
    virtual Acad::ErrorStatus extend(double newParam);
    virtual Acad::ErrorStatus extend(Adesk::Boolean extendStart, const AcGePoint3d& toPoint);
    virtual Acad::ErrorStatus getArea(double& area) const;
    virtual Acad::ErrorStatus reverseCurve();

protected:
    AcDbCurve();
};
