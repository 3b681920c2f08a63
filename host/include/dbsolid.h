// A 2D solid: a filled triangle or quadrilateral in the plane of its normal. Its corners
// are given in the order the file gives them, which draws the outline 0, 1, 3, 2.
#pragma once

#include "dbmain.h"

class KELVO_HOST_API AcDbSolid : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSolid);
    AcDbSolid();
    // A triangle repeats its third corner as its fourth.
    AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
              const AcGePoint3d& pt3);
    AcDbSolid(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2);
    ~AcDbSolid() override;

    Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& p) const;
    Acad::ErrorStatus setPointAt(Adesk::UInt16 index, const AcGePoint3d& p);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices,
                                          const AcGeVector3d& offset) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    AcGePoint3d corners_[4];  // world coordinates
    double thickness_ = 0;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
};
