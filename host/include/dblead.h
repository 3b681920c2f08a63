// The host's leader: a path of vertices with an arrowhead at the first, optionally tied
// to an annotation.
#pragma once

#include "dbcurve.h"

class KELVO_HOST_API AcDbLeader : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLeader);
    AcDbLeader();
    ~AcDbLeader() override;

    int numVertices() const;
    Adesk::Boolean appendVertex(const AcGePoint3d& p);
    void removeLastVertex();
    AcGePoint3d firstVertex() const;
    AcGePoint3d lastVertex() const;
    AcGePoint3d vertexAt(int index) const;
    Adesk::Boolean setVertexAt(int index, const AcGePoint3d& p);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setPlane(const AcGePlane& plane);

    Adesk::Boolean hasArrowHead() const;
    void enableArrowHead();
    void disableArrowHead();
    Adesk::Boolean hasHookLine() const;
    Adesk::Boolean isSplined() const;
    void setToSplineLeader();
    void setToStraightLeader();
    AcDbHardPointerId dimensionStyle() const;
    void setDimensionStyle(const AcDbHardPointerId& dimStyleId);
    AcDbObjectId annotationObjId() const;
    Acad::ErrorStatus attachAnnotation(const AcDbObjectId& annoId);
    Acad::ErrorStatus detachAnnotation();
    // The arrowhead's length: the database's DIMASZ times DIMSCALE.
    double dimasz() const;

    Adesk::Boolean isClosed() const override;
    Adesk::Boolean isPlanar() const override;
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subList() const override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices,
                                          const AcGeVector3d& offset) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    AcGePoint3dArray vertices_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    bool arrowHead_ = true, splined_ = false, hookLine_ = false;
    AcDbHardPointerId dimStyle_;
    AcDbObjectId annotation_;
    double textHeight_ = 0, textWidth_ = 0;
};
