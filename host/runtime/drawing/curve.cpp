// Curves: the queries every curve class may answer; by default they do not apply.

#include "dbcurve.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCurve, AcDbEntity)

AcDbCurve::AcDbCurve() = default;
AcDbCurve::~AcDbCurve() = default;

Adesk::Boolean AcDbCurve::isClosed() const { return false; }
Adesk::Boolean AcDbCurve::isPeriodic() const { return false; }
Adesk::Boolean AcDbCurve::isPlanar() const { return false; }
Acad::ErrorStatus AcDbCurve::getPlane(AcGePlane&, int&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getStartParam(double&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getEndParam(double&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getPointAtParam(double, AcGePoint3d&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d&, double&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getDistAtParam(double, double&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getParamAtDist(double, double&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es != Acad::eOk ? es : getDistAtParam(param, dist);
}
Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtDist(dist, param);
    return es != Acad::eOk ? es : getPointAtParam(param, point);
}
Acad::ErrorStatus AcDbCurve::getFirstDeriv(double, AcGeVector3d&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& d) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es != Acad::eOk ? es : getFirstDeriv(param, d);
}
Acad::ErrorStatus AcDbCurve::getSecondDeriv(double, AcGeVector3d&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& d) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es != Acad::eOk ? es : getSecondDeriv(param, d);
}
Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d&, AcGePoint3d&, Adesk::Boolean) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& p, const AcGeVector3d&,
                                               AcGePoint3d& on, Adesk::Boolean extend) const {
    return getClosestPointTo(p, on, extend);
}
Acad::ErrorStatus AcDbCurve::getOffsetCurves(double, AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getSpline(AcDbCurve*&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGeDoubleArray&, AcDbVoidPtrArray&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGePoint3dArray&, AcDbVoidPtrArray&) const {
    return Acad::eNotApplicable;
}
Acad::ErrorStatus AcDbCurve::extend(double) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::extend(Adesk::Boolean, const AcGePoint3d&) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getArea(double&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::reverseCurve() { return Acad::eNotApplicable; }
