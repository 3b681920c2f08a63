// TVLeader: construction, its geometry, grips, transformation and the curve queries.
#include "entities/tv_leader.h"

#include "entities/leader_geometry.h"
#include "entities/tv_leader_class.h"

AcRxClass* TVLeader::desc() {
    return kelvo::tvLeaderClass();
}

AcRxClass* TVLeader::isA() const {
    return desc();
}

void TVLeader::rxInit() {
    kelvo::registerTvLeaderClass();
}

TVLeader::TVLeader() = default;

TVLeader::TVLeader(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end,
                   double scale, AcDbObjectId blockId, AcDbObjectId layerId)
    : start_(start), middle_(middle), end_(end) {
    AcDbCurve::setLayer(layerId, true, false);
    blockId_ = blockId;
    tag_.setBlockTableRecord(blockId);
    tag_.setLayer(layerId, true, false);
    synchronise();
    setScale(scale);
}

TVLeader::~TVLeader() = default;

// --- the leader's geometry -------------------------------------------------------------

Acad::ErrorStatus TVLeader::setPoints(const AcGePoint3d& start, const AcGePoint3d& middle,
                                      const AcGePoint3d& end) {
    assertWriteEnabled();
    start_ = start;
    middle_ = middle;
    end_ = end;
    synchronise();
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::setBlock(AcDbObjectId blockId) {
    assertWriteEnabled();
    blockId_ = blockId;
    return tag_.setBlockTableRecord(blockId);
}

Acad::ErrorStatus TVLeader::setScale(double scale) {
    assertWriteEnabled();
    scale_ = scale;
    return tag_.setScaleFactors(AcGeScale3d(scale, scale, scale));
}

void TVLeader::synchronise() {
    tag_.setPosition(end_);
    tag_.setRotation(kelvo::planAngle(middle_, end_));
}

AcGePoint3d TVLeader::tailPoint() const {
    return kelvo::polar(end_, kelvo::planAngle(end_, middle_), scale_);
}

// --- grips, stretching, transformation -------------------------------------------------

Acad::ErrorStatus TVLeader::getGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&,
                                          AcDbIntArray&) const {
    return getGripPoints(gripPoints);
}

Acad::ErrorStatus TVLeader::moveGripPointsAt(const AcDbVoidPtrArray&, const AcGeVector3d&, int) {
    return Acad::eNotImplemented;
}

Acad::ErrorStatus TVLeader::getGripPoints(AcGePoint3dArray& gripPoints) const {
    gripPoints.append(start_);
    gripPoints.append(middle_);
    gripPoints.append(end_);
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::moveGripPointsAt(const AcDbIntArray& indices,
                                             const AcGeVector3d& offset) {
    AcGePoint3d* points[] = {&start_, &middle_, &end_};
    for (int i = 0; i < 3; ++i) {
        if (indices.contains(i)) *points[i] += offset;
    }
    synchronise();
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::transformBy(const AcGeMatrix3d& xform) {
    start_.transformBy(xform);
    middle_.transformBy(xform);
    end_.transformBy(xform);
    synchronise();
    return Acad::eOk;
}

// --- host operations -------------------------------------------------------------------

Acad::ErrorStatus TVLeader::setLayer(AcDbObjectId newVal, Adesk::Boolean doSubents,
                                     bool allowHiddenLayer) {
    const Acad::ErrorStatus es = AcDbCurve::setLayer(newVal, doSubents, allowHiddenLayer);
    if (es == Acad::eOk && doSubents) return tag_.setLayer(newVal, doSubents, allowHiddenLayer);
    return es;
}

Acad::ErrorStatus TVLeader::audit(AcDbAuditInfo*) {
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                             AcDbIntArray& geomIds) const {
    assertReadEnabled();
    return getGripPoints(gripPoints, osnapModes, geomIds);
}

Acad::ErrorStatus TVLeader::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                const AcGeVector3d& offset) {
    assertWriteEnabled();
    return moveGripPointsAt(indices, offset);
}

Acad::ErrorStatus TVLeader::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    assertReadEnabled();
    return getGripPoints(stretchPoints);
}

Acad::ErrorStatus TVLeader::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                   const AcGeVector3d& offset) {
    assertWriteEnabled();
    return moveGripPointsAt(indices, offset);
}

Acad::ErrorStatus TVLeader::subTransformBy(const AcGeMatrix3d& xform) {
    assertWriteEnabled();
    return transformBy(xform);
}

// --- curve queries along the chord -----------------------------------------------------

namespace {

AcGeVector3d chordDirection(const AcGePoint3d& start, const AcGePoint3d& end) {
    return (end - start).normal(AcGeContext::gTol);
}

}  // namespace

Acad::ErrorStatus TVLeader::getStartParam(double& param) const {
    assertReadEnabled();
    param = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getEndParam(double& param) const {
    assertReadEnabled();
    param = start_.distanceTo(end_);
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getStartPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    point = start_;
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getEndPoint(AcGePoint3d& point) const {
    assertReadEnabled();
    point = end_;
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    point = start_ + chordDirection(start_, end_) * param;
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    assertReadEnabled();
    param = (point - start_).dotProduct(chordDirection(start_, end_));
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getDistAtParam(double param, double& dist) const {
    assertReadEnabled();
    dist = param;
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getParamAtDist(double dist, double& param) const {
    assertReadEnabled();
    param = dist;
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    assertReadEnabled();
    dist = start_.distanceTo(point);
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::getPointAtDist(double dist, AcGePoint3d& point) const {
    return getPointAtParam(dist, point);
}
