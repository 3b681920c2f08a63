// The lightweight polyline: 2D vertices with bulges and widths, in the plane of its normal
// at its elevation.
#pragma once

#include <vector>

#include "dbcurve.h"

class KELVO_HOST_API AcDbPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyline);
    AcDbPolyline();
    explicit AcDbPolyline(unsigned int numVerts);
    ~AcDbPolyline() override;

    unsigned int numVerts() const;
    // Inserts a vertex before index (numVerts() appends).
    Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge = 0.,
                                  double startWidth = -1., double endWidth = -1.);
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& pt) const;
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& pt) const;   // world
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& pt);
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
    Acad::ErrorStatus getConstantWidth(double& width) const;
    Acad::ErrorStatus setConstantWidth(double width);
    bool hasBulges() const;
    bool hasWidth() const;
    void setClosed(Adesk::Boolean closed);
    Adesk::Boolean closed() const;
    void setPlinegen(Adesk::Boolean plinegen);
    Adesk::Boolean hasPlinegen() const;
    double elevation() const;
    void setElevation(double elevation);
    double thickness() const;
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isOnlyLines() const;
    void reset(Adesk::Boolean reuse, unsigned int numVerts);

    Adesk::Boolean isClosed() const override;
    Adesk::Boolean isPlanar() const override;
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override;
    Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPoint, AcGePoint3d& pointOnCurve,
                                        Adesk::Boolean extend = false) const override;
    Acad::ErrorStatus getArea(double& area) const override;
    Acad::ErrorStatus reverseCurve() override;

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
    struct Vertex {
        AcGePoint2d point;
        double bulge = 0, startWidth = 0, endWidth = 0;
    };
    std::vector<Vertex> vertices_;
    bool closed_ = false, plinegen_ = false;
    double constantWidth_ = 0, elevation_ = 0, thickness_ = 0;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
};
