// TVLeader: the product's tag leader. Two straight segments (start -> middle, middle ->
// a point just short of the end) and a tag block inserted at the end point, scaled by the
// leader's scale. The scale is also the gap between the second segment and the end point,
// so that the segment stops at the edge of a unit-size tag symbol.
//
// The tag is a block reference held by value (never in a database); it is rebuilt from the
// points whenever they change (synchronise): position = end point, rotation = angle from
// the middle point to the end point, scale factors = (scale, scale, scale).
//
// As a curve the leader is the straight chord from the start point to the end point: the
// middle point plays no part in the curve queries, and parameter and distance are the
// same measure.
#pragma once

#include "dbcurve.h"
#include "dbents.h"

class TVLeader : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(TVLeader);

    // All points at the origin, no block, a default tag; the scale stays 0 until set.
    TVLeader();
    // Stores the points, puts the leader and its tag on `layerId`, sets the tag's block,
    // synchronises and sets the scale.
    TVLeader(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end,
             double scale, AcDbObjectId blockId, AcDbObjectId layerId);
    ~TVLeader() override;

    // --- the leader's own operations ---------------------------------------------------
    AcGePoint3d startPoint() const { return start_; }
    AcGePoint3d middlePoint() const { return middle_; }
    AcGePoint3d endPoint() const { return end_; }
    double scale() const { return scale_; }
    AcDbObjectId blockId() const { return blockId_; }
    const AcDbBlockReference& tag() const { return tag_; }

    // Requires write access. Stores the three points and synchronises.
    Acad::ErrorStatus setPoints(const AcGePoint3d& start, const AcGePoint3d& middle,
                                const AcGePoint3d& end);
    // Requires write access. Stores the block id and gives it to the tag.
    Acad::ErrorStatus setBlock(AcDbObjectId blockId);
    // Requires write access. Stores the scale and sets the tag's scale factors.
    Acad::ErrorStatus setScale(double scale);
    // Tag position = end point, tag rotation = angle(middle point, end point).
    void synchronise();
    // polar(end point, angle(end point, middle point), scale): where the second segment
    // ends. Keeps the end point's Z.
    AcGePoint3d tailPoint() const;

    // The entity operations of the leader. The host's hooks (sub...) check the open state
    // and hand the call to these.
    virtual Adesk::Boolean worldDraw(AcGiWorldDraw* wd);
    virtual Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const;
    virtual void list() const;
    virtual Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode osnapMode,
                                             Adesk::GsMarker gsSelectionMark,
                                             const AcGePoint3d& pickPoint,
                                             const AcGePoint3d& lastPoint,
                                             const AcGeMatrix3d& viewXform,
                                             AcGePoint3dArray& snapPoints,
                                             AcDbIntArray& geomIds) const;
    virtual Acad::ErrorStatus getGripPoints(AcGePoint3dArray& gripPoints,
                                            AcDbIntArray& osnapModes,
                                            AcDbIntArray& geomIds) const;
    // The grip-data forms are not provided (eNotImplemented): the host then uses the
    // point-array forms.
    virtual Acad::ErrorStatus moveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                               const AcGeVector3d& offset, int bitflags);
    // Start, middle and end point, in that order.
    virtual Acad::ErrorStatus getGripPoints(AcGePoint3dArray& gripPoints) const;
    // Indices 0, 1, 2 name the start, middle and end point; each named point moves once
    // by the offset however often it is named; other indices are ignored.
    virtual Acad::ErrorStatus moveGripPointsAt(const AcDbIntArray& indices,
                                               const AcGeVector3d& offset);
    // Transforms the three points and synchronises; the scale is unchanged.
    virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);
    virtual Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                            const AcGePlane& projPlane,
                                            AcGePoint3dArray& points,
                                            Adesk::GsMarker thisGsMarker = 0,
                                            Adesk::GsMarker otherGsMarker = 0) const;
    virtual Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                            AcGePoint3dArray& points,
                                            Adesk::GsMarker thisGsMarker = 0,
                                            Adesk::GsMarker otherGsMarker = 0) const;
    virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;

    // --- host operations ---------------------------------------------------------------
    using AcDbEntity::setLayer;
    // Sets the leader's layer and, with doSubents, the tag's.
    Acad::ErrorStatus setLayer(AcDbObjectId newVal, Adesk::Boolean doSubents = true,
                               bool allowHiddenLayer = false) override;
    void saveAs(AcGiWorldDraw* mode, AcDb::SaveType st) override;
    Acad::ErrorStatus audit(AcDbAuditInfo* pAuditInfo) override;

    // Filing: DWG object version 2 (versions 1 and 2 are read; 3 and above answer
    // eMakeMeProxy); DXF subclass "TVLeader" with groups 10, 11, 12 and 40.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

    // Curve queries along the chord start -> end.
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

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    void subList() const override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices,
                                          const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices,
                                             const AcGeVector3d& offset) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                       AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                       Adesk::GsMarker otherGsMarker) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                       const AcGePlane& projPlane, AcGePoint3dArray& points,
                                       Adesk::GsMarker thisGsMarker,
                                       Adesk::GsMarker otherGsMarker) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    // The two segments as temporary lines (for snapping and intersections).
    void segments(AcDbLine& first, AcDbLine& second) const;
    Acad::ErrorStatus readVersion1(AcDbDwgFiler* filer);
    Acad::ErrorStatus readVersion2(AcDbDwgFiler* filer);
    // The has-block bool and, when set, the block id; then the tag's block.
    Acad::ErrorStatus readBlock(AcDbDwgFiler* filer);

    AcGePoint3d start_;
    AcGePoint3d middle_;
    AcGePoint3d end_;
    AcDbHardPointerId blockId_;
    AcDbBlockReference tag_;
    double scale_ = 0.0;
};
