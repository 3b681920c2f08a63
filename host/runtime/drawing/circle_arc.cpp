// Circles and arcs. The centre is kept in world coordinates; DXF gives it in the object
// coordinates of the normal, and arc angles are measured from that plane's X axis.

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"

using namespace kelvo::drawing;
using std::numbers::pi;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCircle, AcDbCurve)

AcDbCircle::AcDbCircle() = default;
AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : center_(center),
      radius_(radius),
      normal_(normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal()) {}
AcDbCircle::~AcDbCircle() = default;

AcGePoint3d AcDbCircle::center() const {
    return center_;
}
double AcDbCircle::radius() const {
    return radius_;
}
double AcDbCircle::thickness() const {
    return thickness_;
}
AcGeVector3d AcDbCircle::normal() const {
    return normal_;
}
double AcDbCircle::circumference() const {
    return 2 * pi * radius_;
}
double AcDbCircle::diameter() const {
    return 2 * radius_;
}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& c) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    center_ = c;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::setRadius(double r) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (r <= 0) return Acad::eInvalidInput;
    radius_ = r;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::setThickness(double t) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    thickness_ = t;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    normal_ = n.normal();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::setCircumference(double c) {
    return setRadius(c / (2 * pi));
}
Acad::ErrorStatus AcDbCircle::setDiameter(double d) {
    return setRadius(d / 2);
}

Adesk::Boolean AcDbCircle::isClosed() const {
    return true;
}
Adesk::Boolean AcDbCircle::isPeriodic() const {
    return true;
}
Adesk::Boolean AcDbCircle::isPlanar() const {
    return true;
}
Acad::ErrorStatus AcDbCircle::getStartParam(double& p) const {
    p = 0;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::getEndParam(double& p) const {
    p = 2 * pi;
    return Acad::eOk;
}

// The parameter is the angle from the plane's X axis.
Acad::ErrorStatus AcDbCircle::getPointAtParam(double param, AcGePoint3d& point) const {
    AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
    point = center_ + x * (radius_ * std::cos(param)) + y * (radius_ * std::sin(param));
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::getStartPoint(AcGePoint3d& p) const {
    return getPointAtParam(0, p);
}
Acad::ErrorStatus AcDbCircle::getEndPoint(AcGePoint3d& p) const {
    return getPointAtParam(0, p);
}
Acad::ErrorStatus AcDbCircle::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    AcGePoint3d local = wcsToOcs(point, normal_) - wcsToOcs(center_, normal_).asVector();
    if (std::fabs(std::hypot(local.x, local.y) - radius_) > 1e-8 * std::max(1.0, radius_))
        return Acad::eInvalidInput;
    param = normalizeAngle(std::atan2(local.y, local.x));
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::getDistAtParam(double param, double& dist) const {
    dist = radius_ * param;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::getParamAtDist(double dist, double& param) const {
    if (radius_ <= 0) return Acad::eInvalidInput;
    param = dist / radius_;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es != Acad::eOk ? es : getDistAtParam(param, dist);
}
Acad::ErrorStatus AcDbCircle::getPointAtDist(double dist, AcGePoint3d& point) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtDist(dist, param);
    return es != Acad::eOk ? es : getPointAtParam(param, point);
}
Acad::ErrorStatus AcDbCircle::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& on,
                                                Adesk::Boolean extend) const {
    AcGePoint3d p = given.orthoProject(AcGePlane(center_, normal_));
    AcGeVector3d d = p - center_;
    on = d.isZeroLength() ? center_ + ocsXAxis(normal_) * radius_ : center_ + d.normal() * radius_;
    // An arc answers a point on itself: off its sweep, the nearer of its ends.
    if (auto* arc = AcDbArc::cast(this); arc && !extend) {
        AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
        double along =
            normalizeAngle(std::atan2((on - center_).dotProduct(y), (on - center_).dotProduct(x)) -
                           arc->startAngle());
        if (along > arc->totalAngle()) {
            AcGePoint3d start, end;
            arc->getStartPoint(start);
            arc->getEndPoint(end);
            on = given.distanceTo(start) <= given.distanceTo(end) ? start : end;
        }
    }
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::getArea(double& area) const {
    area = pi * radius_ * radius_;
    return Acad::eOk;
}

Adesk::Boolean AcDbCircle::subWorldDraw(AcGiWorldDraw* wd) {
    wd->geometry().circle(center_, radius_, normal_);
    return true;
}

void AcDbCircle::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"            center point, X=%10.4f  Y=%10.4f  Z=%10.4f\n", center_.x, center_.y,
               center_.z);
    acutPrintf(L"            radius %10.4f\n", radius_);
}

Acad::ErrorStatus AcDbCircle::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                                const AcGePoint3d& pick, const AcGePoint3d&,
                                                const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                                AcDbIntArray&) const {
    if (mode == AcDb::kOsModeCen) snaps.append(center_);
    if (mode == AcDb::kOsModeQuad)
        for (int i = 0; i < 4; ++i) {
            AcGePoint3d p;
            getPointAtParam(i * pi / 2, p);
            snaps.append(p);
        }
    if (mode == AcDb::kOsModeNear) {
        AcGePoint3d p;
        getClosestPointTo(pick, p);
        snaps.append(p);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                               AcDbIntArray&) const {
    grips.append(center_);
    for (int i = 0; i < 4; ++i) {
        AcGePoint3d p;
        getPointAtParam(i * pi / 2, p);
        grips.append(p);
    }
    return Acad::eOk;
}

// The centre grip moves the circle; a quadrant grip changes the radius.
Acad::ErrorStatus AcDbCircle::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                  const AcGeVector3d& offset) {
    for (int i : indices) {
        if (i == 0) {
            center_ += offset;
            return Acad::eOk;
        }
    }
    for (int i : indices) {
        if (i >= 1 && i <= 4) {
            AcGePoint3d p;
            getPointAtParam((i - 1) * pi / 2, p);
            double r = (p + offset).distanceTo(center_);
            if (r > 0) radius_ = r;
            break;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& xform) {
    if (!xform.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    center_.transformBy(xform);
    radius_ *= xform.scale();
    normal_ = transformNormal(normal_, xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (int i = 0; i < 3; ++i) {
        AcGeVector3d axis;
        axis[i] = 1;
        double reach =
            radius_ * std::sqrt(std::max(0.0, 1 - std::pow(normal_.dotProduct(axis), 2)));
        AcGePoint3d lo = center_, hi = center_;
        lo[i] -= reach;
        hi[i] += reach;
        extents.addPoint(lo);
        extents.addPoint(hi);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writePoint3d(center_);
    filer->writeDouble(radius_);
    filer->writeDouble(thickness_);
    filer->writeVector3d(normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    filer->readPoint3d(&center_);
    filer->readDouble(&radius_);
    filer->readDouble(&thickness_);
    filer->readVector3d(&normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbCircle");
    if (thickness_ != 0) filer->writeDouble(AcDb::kDxfThickness, thickness_);
    filer->writePoint3d(AcDb::kDxfXCoord, wcsToOcs(center_, normal_));
    filer->writeDouble(AcDb::kDxfReal, radius_);
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbCircle")) return Acad::eOk;
    AcGePoint3d ocsCenter = wcsToOcs(center_, normal_);
    es = readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 10:
                ocsCenter = item.point();
                break;
            case 40:
                radius_ = item.real();
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
    if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
    center_ = ocsToWcs(ocsCenter, normal_);
    if (es == Acad::eOk && radius_ <= 0) return Acad::eInvalidInput;
    return es;
}

// --- arcs --------------------------------------------------------------------------------

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbArc, AcDbCircle)

AcDbArc::AcDbArc() = default;
AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbCircle(center, AcGeVector3d::kZAxis, radius),
      startAngle_(normalizeAngle(startAngle)),
      endAngle_(normalizeAngle(endAngle)) {}
AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                 double startAngle, double endAngle)
    : AcDbCircle(center, normal, radius),
      startAngle_(normalizeAngle(startAngle)),
      endAngle_(normalizeAngle(endAngle)) {}
AcDbArc::~AcDbArc() = default;

double AcDbArc::startAngle() const {
    return startAngle_;
}
double AcDbArc::endAngle() const {
    return endAngle_;
}
Acad::ErrorStatus AcDbArc::setStartAngle(double a) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    startAngle_ = normalizeAngle(a);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::setEndAngle(double a) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    endAngle_ = normalizeAngle(a);
    return Acad::eOk;
}
double AcDbArc::totalAngle() const {
    double sweep = normalizeAngle(endAngle_ - startAngle_);
    return sweep == 0 ? 2 * pi : sweep;
}

Adesk::Boolean AcDbArc::isClosed() const {
    return false;
}
Adesk::Boolean AcDbArc::isPeriodic() const {
    return false;
}
Acad::ErrorStatus AcDbArc::getStartParam(double& p) const {
    p = startAngle_;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getEndParam(double& p) const {
    p = startAngle_ + totalAngle();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getStartPoint(AcGePoint3d& p) const {
    return getPointAtParam(startAngle_, p);
}
Acad::ErrorStatus AcDbArc::getEndPoint(AcGePoint3d& p) const {
    return getPointAtParam(endAngle_, p);
}
Acad::ErrorStatus AcDbArc::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    double angle = 0;
    Acad::ErrorStatus es = AcDbCircle::getParamAtPoint(point, angle);
    if (es != Acad::eOk) return es;
    double along = normalizeAngle(angle - startAngle_);
    if (along > totalAngle() + 1e-10) return Acad::eInvalidInput;
    param = startAngle_ + along;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getDistAtParam(double param, double& dist) const {
    dist = radius_ * (param - startAngle_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getParamAtDist(double dist, double& param) const {
    if (radius_ <= 0) return Acad::eInvalidInput;
    param = startAngle_ + dist / radius_;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getArea(double& area) const {
    double a = totalAngle();
    area = 0.5 * radius_ * radius_ * (a - std::sin(a));
    return Acad::eOk;
}

Adesk::Boolean AcDbArc::subWorldDraw(AcGiWorldDraw* wd) {
    AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
    AcGeVector3d start = x * std::cos(startAngle_) + y * std::sin(startAngle_);
    wd->geometry().circularArc(center_, radius_, normal_, start, totalAngle());
    return true;
}

void AcDbArc::subList() const {
    AcDbCircle::subList();
    acutPrintf(L"            start angle %10.4f\n", startAngle_ * 180 / pi);
    acutPrintf(L"              end angle %10.4f\n", endAngle_ * 180 / pi);
}

Acad::ErrorStatus AcDbArc::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                             const AcGePoint3d& pick, const AcGePoint3d& last,
                                             const AcGeMatrix3d& view, AcGePoint3dArray& snaps,
                                             AcDbIntArray& ids) const {
    AcGePoint3d s, e, m;
    getStartPoint(s);
    getEndPoint(e);
    getPointAtParam(startAngle_ + totalAngle() / 2, m);
    if (mode == AcDb::kOsModeEnd) {
        snaps.append(s);
        snaps.append(e);
    } else if (mode == AcDb::kOsModeMid) {
        snaps.append(m);
    } else if (mode == AcDb::kOsModeQuad) {
        // the quadrant points the arc passes through
        for (int i = 0; i < 4; ++i)
            if (normalizeAngle(i * pi / 2 - startAngle_) <= totalAngle()) {
                AcGePoint3d q;
                getPointAtParam(startAngle_ + normalizeAngle(i * pi / 2 - startAngle_), q);
                snaps.append(q);
            }
    } else {
        return AcDbCircle::subGetOsnapPoints(mode, marker, pick, last, view, snaps, ids);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                            AcDbIntArray&) const {
    AcGePoint3d s, e, m;
    getStartPoint(s);
    getEndPoint(e);
    getPointAtParam(startAngle_ + totalAngle() / 2, m);
    grips.append(s);
    grips.append(m);
    grips.append(e);
    grips.append(center_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& xform) {
    AcGePoint3d s, e;
    getStartPoint(s);
    getEndPoint(e);
    Acad::ErrorStatus es = AcDbCircle::subTransformBy(xform);
    if (es != Acad::eOk) return es;
    s.transformBy(xform);
    e.transformBy(xform);
    double a0 = 0, a1 = 0;
    AcDbCircle::getParamAtPoint(s, a0);
    AcDbCircle::getParamAtPoint(e, a1);
    if (xform.det() < 0) std::swap(a0, a1);  // a mirror reverses the direction
    startAngle_ = a0;
    endAngle_ = a1;
    return Acad::eOk;
}

// The ends, and the points of the sweep where a world coordinate is at its least or most.
Acad::ErrorStatus AcDbArc::subGetGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
    auto pointAt = [&](double a) {
        return center_ + (x * std::cos(a) + y * std::sin(a)) * radius_;
    };
    extents.addPoint(pointAt(startAngle_));
    extents.addPoint(pointAt(startAngle_ + totalAngle()));
    for (int i = 0; i < 3; ++i) {
        if (x[i] == 0 && y[i] == 0) continue;
        double peak = std::atan2(y[i], x[i]);
        for (double a : {peak, peak + pi})
            if (normalizeAngle(a - startAngle_) <= totalAngle()) extents.addPoint(pointAt(a));
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbCircle::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeDouble(startAngle_);
    filer->writeDouble(endAngle_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbCircle::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    filer->readDouble(&startAngle_);
    filer->readDouble(&endAngle_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbCircle::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbArc");
    filer->writeDouble(AcDb::kDxfAngle, startAngle_);
    filer->writeDouble(static_cast<AcDb::DxfCode>(51), endAngle_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbCircle::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbArc")) return Acad::eOk;
    return readClassItems(filer, [&](const DxfItem& item) {
        if (item.code() == 50) startAngle_ = normalizeAngle(item.real());
        if (item.code() == 51) endAngle_ = normalizeAngle(item.real());
    });
}
