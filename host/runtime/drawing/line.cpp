// Lines.

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"

using namespace kelvo::drawing;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbLine, AcDbCurve)

AcDbLine::AcDbLine() = default;
AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : start_(start), end_(end) {}
AcDbLine::~AcDbLine() = default;

AcGePoint3d AcDbLine::startPoint() const {
    return start_;
}
AcGePoint3d AcDbLine::endPoint() const {
    return end_;
}
double AcDbLine::thickness() const {
    return thickness_;
}
AcGeVector3d AcDbLine::normal() const {
    return normal_;
}

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& p) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    start_ = p;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& p) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    end_ = p;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::setThickness(double t) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    thickness_ = t;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    normal_ = n.normal();
    return Acad::eOk;
}

Adesk::Boolean AcDbLine::isClosed() const {
    return false;
}
Adesk::Boolean AcDbLine::isPlanar() const {
    return true;
}
Acad::ErrorStatus AcDbLine::getStartParam(double& p) const {
    p = 0;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getEndParam(double& p) const {
    p = start_.distanceTo(end_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getStartPoint(AcGePoint3d& p) const {
    p = start_;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getEndPoint(AcGePoint3d& p) const {
    p = end_;
    return Acad::eOk;
}

// The parameter is the distance from the start point.
Acad::ErrorStatus AcDbLine::getPointAtParam(double param, AcGePoint3d& point) const {
    double len = start_.distanceTo(end_);
    if (param < -1e-10 || param > len + 1e-10) return Acad::eInvalidInput;
    point = start_ + (end_ - start_).normal() * param;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    AcGePoint3d on = closestOnSegment(start_, end_, point);
    if (!on.isEqualTo(point, AcGeTol())) {
        AcGeTol tol;
        tol.setEqualPoint(1e-8);
        if (!on.isEqualTo(point, tol)) return Acad::eInvalidInput;
    }
    param = start_.distanceTo(on);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getDistAtParam(double param, double& dist) const {
    if (param < -1e-10 || param > start_.distanceTo(end_) + 1e-10) return Acad::eInvalidInput;
    dist = param;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getParamAtDist(double dist, double& param) const {
    if (dist < -1e-10 || dist > start_.distanceTo(end_) + 1e-10) return Acad::eInvalidInput;
    param = dist;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    return getParamAtPoint(point, dist);
}
Acad::ErrorStatus AcDbLine::getPointAtDist(double dist, AcGePoint3d& point) const {
    return getPointAtParam(dist, point);
}
Acad::ErrorStatus AcDbLine::getFirstDeriv(double, AcGeVector3d& d) const {
    d = (end_ - start_).normal();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& on,
                                              Adesk::Boolean extend) const {
    on = closestOnSegment(start_, end_, given, extend);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getArea(double& area) const {
    area = 0;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::reverseCurve() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    std::swap(start_, end_);
    return Acad::eOk;
}

Adesk::Boolean AcDbLine::subWorldDraw(AcGiWorldDraw* wd) {
    AcGePoint3d pts[2] = {start_, end_};
    wd->geometry().polyline(2, pts);
    return true;
}

void AcDbLine::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"              from point, X=%10.4f  Y=%10.4f  Z=%10.4f\n", start_.x, start_.y,
               start_.z);
    acutPrintf(L"                to point, X=%10.4f  Y=%10.4f  Z=%10.4f\n", end_.x, end_.y, end_.z);
    acutPrintf(L"                Length = %10.4f\n", start_.distanceTo(end_));
}

Acad::ErrorStatus AcDbLine::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                              const AcGePoint3d& pick, const AcGePoint3d& last,
                                              const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                              AcDbIntArray&) const {
    switch (mode) {
        case AcDb::kOsModeEnd:
            snaps.append(start_);
            snaps.append(end_);
            break;
        case AcDb::kOsModeMid:
            snaps.append(start_ + (end_ - start_) * 0.5);
            break;
        case AcDb::kOsModeNear:
            snaps.append(closestOnSegment(start_, end_, pick));
            break;
        case AcDb::kOsModePerp:
            snaps.append(closestOnSegment(start_, end_, last, true));
            break;
        default:
            break;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                             AcDbIntArray&) const {
    grips.append(start_);
    grips.append(start_ + (end_ - start_) * 0.5);
    grips.append(end_);
    return Acad::eOk;
}

// Grip 0 and 2 move an end; the middle grip moves the whole line.
Acad::ErrorStatus AcDbLine::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                const AcGeVector3d& offset) {
    bool moveStart = false, moveEnd = false;
    for (int i : indices) {
        if (i == 0) moveStart = true;
        if (i == 2) moveEnd = true;
        if (i == 1) moveStart = moveEnd = true;
    }
    if (moveStart) start_ += offset;
    if (moveEnd) end_ += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& xform) {
    start_.transformBy(xform);
    end_.transformBy(xform);
    normal_ = transformNormal(normal_, xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             AcGePoint3dArray& points, Adesk::GsMarker a,
                                             Adesk::GsMarker b) const {
    if (auto* other = AcDbLine::cast(pEnt)) {
        intersectSegments(start_, end_, other->start_, other->end_, intType, points);
        return Acad::eOk;
    }
    return AcDbCurve::subIntersectWith(pEnt, intType, points, a, b);
}

Acad::ErrorStatus AcDbLine::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             const AcGePlane&, AcGePoint3dArray& points,
                                             Adesk::GsMarker a, Adesk::GsMarker b) const {
    return subIntersectWith(pEnt, intType, points, a, b);
}

Acad::ErrorStatus AcDbLine::subGetGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    extents.addPoint(start_);
    extents.addPoint(end_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writePoint3d(start_);
    filer->writePoint3d(end_);
    filer->writeDouble(thickness_);
    filer->writeVector3d(normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLine::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    filer->readPoint3d(&start_);
    filer->readPoint3d(&end_);
    filer->readDouble(&thickness_);
    filer->readVector3d(&normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbLine");
    if (thickness_ != 0) filer->writeDouble(AcDb::kDxfThickness, thickness_);
    filer->writePoint3d(AcDb::kDxfXCoord, start_);
    filer->writePoint3d(static_cast<AcDb::DxfCode>(11), end_);
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbLine")) return Acad::eOk;
    return readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 10:
                start_ = item.point();
                break;
            case 11:
                end_ = item.point();
                break;
            case 39:
                thickness_ = item.real();
                break;
            case 210:
                normal_ = item.point().asVector().normal();
                break;
            default:
                break;
        }
    });
}
