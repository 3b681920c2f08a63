// 2D solids: four corners (a triangle repeats its third), filled when drawn.

#include "dbfiler.h"
#include "dbsolid.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"

using namespace kelvo::drawing;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSolid, AcDbEntity)

AcDbSolid::AcDbSolid() = default;
AcDbSolid::AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
                     const AcGePoint3d& pt3)
    : corners_{pt0, pt1, pt2, pt3} {}
AcDbSolid::AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2)
    : AcDbSolid(pt0, pt1, pt2, pt2) {}
AcDbSolid::~AcDbSolid() = default;

Acad::ErrorStatus AcDbSolid::getPointAt(Adesk::UInt16 index, AcGePoint3d& p) const {
    assertReadEnabled();
    if (index > 3) return Acad::eInvalidIndex;
    p = corners_[index];
    return Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::setPointAt(Adesk::UInt16 index, const AcGePoint3d& p) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index > 3) return Acad::eInvalidIndex;
    corners_[index] = p;
    return Acad::eOk;
}
double AcDbSolid::thickness() const {
    return thickness_;
}
Acad::ErrorStatus AcDbSolid::setThickness(double thickness) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    thickness_ = thickness;
    return Acad::eOk;
}
AcGeVector3d AcDbSolid::normal() const {
    return normal_;
}
Acad::ErrorStatus AcDbSolid::setNormal(const AcGeVector3d& normal) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    normal_ = normal.normal();
    return Acad::eOk;
}

Adesk::Boolean AcDbSolid::subWorldDraw(AcGiWorldDraw* wd) {
    AcGePoint3d outline[4] = {corners_[0], corners_[1], corners_[3], corners_[2]};
    int n = corners_[3].isEqualTo(corners_[2]) ? 3 : 4;
    AcGi::FillType before = wd->subEntityTraits().fillType();
    wd->subEntityTraits().setFillType(AcGi::kAcGiFillAlways);
    wd->geometry().polygon(static_cast<Adesk::UInt32>(n), outline);
    wd->subEntityTraits().setFillType(before);
    return true;
}

Acad::ErrorStatus AcDbSolid::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                              AcDbIntArray&) const {
    for (const AcGePoint3d& p : corners_) grips.append(p);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                 const AcGeVector3d& offset) {
    moveMarked(corners_, 4, indices, offset);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::subTransformBy(const AcGeMatrix3d& xform) {
    for (AcGePoint3d& p : corners_) p.transformBy(xform);
    normal_ = transformNormal(normal_, xform);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::subGetGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& p : corners_) extents.addPoint(p);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    for (const AcGePoint3d& p : corners_) filer->writePoint3d(p);
    filer->writeDouble(thickness_);
    filer->writeVector3d(normal_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbSolid::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    for (AcGePoint3d& p : corners_) filer->readPoint3d(&p);
    filer->readDouble(&thickness_);
    filer->readVector3d(&normal_);
    return filer->filerStatus();
}

// Files give the corners in the object coordinates of the normal's plane.
Acad::ErrorStatus AcDbSolid::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbTrace");
    for (int i = 0; i < 4; ++i)
        filer->writePoint3d(static_cast<AcDb::DxfCode>(10 + i), wcsToOcs(corners_[i], normal_));
    if (thickness_ != 0) filer->writeDouble(AcDb::kDxfThickness, thickness_);
    if (!normal_.isEqualTo(AcGeVector3d::kZAxis) || !filer->includesDefaultValues())
        filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}
Acad::ErrorStatus AcDbSolid::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbTrace")) return Acad::eOk;
    AcGePoint3d ocs[4];
    for (int i = 0; i < 4; ++i) ocs[i] = wcsToOcs(corners_[i], normal_);
    bool sawFourth = false;
    es = readClassItems(filer, [&](const DxfItem& item) {
        int c = item.code();
        if (c >= 10 && c <= 13) ocs[c - 10] = item.point();
        if (c == 13) sawFourth = true;
        if (c == 39) thickness_ = item.real();
        if (c == 210 && !item.point().asVector().isZeroLength())
            normal_ = item.point().asVector().normal();
    });
    if (!sawFourth && !filer->isModifyingExistingObject()) ocs[3] = ocs[2];
    for (int i = 0; i < 4; ++i) corners_[i] = ocsToWcs(ocs[i], normal_);
    return es;
}
