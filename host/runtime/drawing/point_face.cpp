// Points and 3D faces.

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"

using namespace kelvo::drawing;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbPoint, AcDbEntity)

AcDbPoint::AcDbPoint() = default;
AcDbPoint::AcDbPoint(const AcGePoint3d& position) : position_(position) {}
AcDbPoint::~AcDbPoint() = default;

AcGePoint3d AcDbPoint::position() const {
    return position_;
}
Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& p) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    position_ = p;
    return Acad::eOk;
}
double AcDbPoint::thickness() const {
    return thickness_;
}
Acad::ErrorStatus AcDbPoint::setThickness(double t) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    thickness_ = t;
    return Acad::eOk;
}
AcGeVector3d AcDbPoint::normal() const {
    return normal_;
}
Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    normal_ = n.normal();
    return Acad::eOk;
}

// A dot: a zero-length line.
Adesk::Boolean AcDbPoint::subWorldDraw(AcGiWorldDraw* wd) {
    AcGePoint3d pts[2] = {position_, position_};
    wd->geometry().polyline(2, pts);
    return true;
}

Acad::ErrorStatus AcDbPoint::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                               const AcGePoint3d&, const AcGePoint3d&,
                                               const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                               AcDbIntArray&) const {
    if (mode == AcDb::kOsModeNode) snaps.append(position_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPoint::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                              AcDbIntArray&) const {
    grips.append(position_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPoint::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                 const AcGeVector3d& offset) {
    if (indices.contains(0)) position_ += offset;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& xform) {
    position_.transformBy(xform);
    normal_ = transformNormal(normal_, xform);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPoint::subGetGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents(position_, position_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writePoint3d(position_);
    filer->writeDouble(thickness_);
    filer->writeVector3d(normal_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbPoint::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    filer->readPoint3d(&position_);
    filer->readDouble(&thickness_);
    filer->readVector3d(&normal_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbPoint");
    filer->writePoint3d(AcDb::kDxfXCoord, position_);
    if (thickness_ != 0) filer->writeDouble(AcDb::kDxfThickness, thickness_);
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbPoint::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbPoint")) return Acad::eOk;
    return readClassItems(filer, [&](const DxfItem& item) {
        if (item.code() == 10) position_ = item.point();
        if (item.code() == 39) thickness_ = item.real();
        if (item.code() == 210) normal_ = item.point().asVector().normal();
    });
}

// --- 3D faces ------------------------------------------------------------------------------

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbFace, AcDbEntity)

AcDbFace::AcDbFace() = default;
AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
                   const AcGePoint3d& pt3, Adesk::Boolean e0, Adesk::Boolean e1, Adesk::Boolean e2,
                   Adesk::Boolean e3)
    : vertices_{pt0, pt1, pt2, pt3},
      invisibleEdges_(
          static_cast<Adesk::Int16>((e0 ? 0 : 1) | (e1 ? 0 : 2) | (e2 ? 0 : 4) | (e3 ? 0 : 8))) {}
AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
                   Adesk::Boolean e0, Adesk::Boolean e1, Adesk::Boolean e2, Adesk::Boolean e3)
    : AcDbFace(pt0, pt1, pt2, pt2, e0, e1, e2, e3) {}
AcDbFace::~AcDbFace() = default;

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& p) const {
    if (index > 3) return Acad::eInvalidIndex;
    p = vertices_[index];
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& p) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index > 3) return Acad::eInvalidIndex;
    vertices_[index] = p;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const {
    if (index > 3) return Acad::eInvalidIndex;
    visible = (invisibleEdges_ & (1 << index)) == 0;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(Adesk::UInt16 index) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index > 3) return Acad::eInvalidIndex;
    invisibleEdges_ = static_cast<Adesk::Int16>(invisibleEdges_ & ~(1 << index));
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(Adesk::UInt16 index) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index > 3) return Acad::eInvalidIndex;
    invisibleEdges_ = static_cast<Adesk::Int16>(invisibleEdges_ | (1 << index));
    return Acad::eOk;
}

Adesk::Boolean AcDbFace::subWorldDraw(AcGiWorldDraw* wd) {
    for (int i = 0; i < 4; ++i) {
        if (invisibleEdges_ & (1 << i)) continue;
        AcGePoint3d edge[2] = {vertices_[i], vertices_[(i + 1) % 4]};
        if (edge[0].isEqualTo(edge[1])) continue;
        wd->geometry().polyline(2, edge);
    }
    return true;
}

Acad::ErrorStatus AcDbFace::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                              const AcGePoint3d&, const AcGePoint3d&,
                                              const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                              AcDbIntArray&) const {
    if (mode == AcDb::kOsModeEnd)
        for (const AcGePoint3d& p : vertices_) snaps.append(p);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                             AcDbIntArray&) const {
    for (const AcGePoint3d& p : vertices_) grips.append(p);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                const AcGeVector3d& offset) {
    moveMarked(vertices_, 4, indices, offset);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& xform) {
    for (AcGePoint3d& p : vertices_) p.transformBy(xform);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subGetGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& p : vertices_) extents.addPoint(p);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    for (const AcGePoint3d& p : vertices_) filer->writePoint3d(p);
    filer->writeInt16(invisibleEdges_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbFace::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    for (AcGePoint3d& p : vertices_) filer->readPoint3d(&p);
    filer->readInt16(&invisibleEdges_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbFace::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbFace");
    for (int i = 0; i < 4; ++i)
        filer->writePoint3d(static_cast<AcDb::DxfCode>(10 + i), vertices_[i]);
    if (invisibleEdges_ != 0 || filer->includesDefaultValues())
        filer->writeInt16(AcDb::kDxfInt16, invisibleEdges_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbFace::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbFace")) return Acad::eOk;
    bool sawFourth = false;
    es = readClassItems(filer, [&](const DxfItem& item) {
        int c = item.code();
        if (c >= 10 && c <= 13) vertices_[c - 10] = item.point();
        if (c == 13) sawFourth = true;
        if (c == 70) invisibleEdges_ = static_cast<Adesk::Int16>(item.integer());
    });
    if (!sawFourth && !filer->isModifyingExistingObject()) vertices_[3] = vertices_[2];
    return es;
}
