// The host's standard entities: lines, circles, arcs, points, text, attributes, block
// references, 2D polylines with their vertices, 3D faces, and the markers of a block
// definition (BLOCK, ENDBLK) and of a sub-entity list (SEQEND).
#pragma once

#include "dbcurve.h"
#include "dbmain.h"
#include "gescl3d.h"

#include <string>

// --- curves --------------------------------------------------------------------------
class KELVO_HOST_API AcDbLine : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLine);
    AcDbLine();
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
    ~AcDbLine() override;

    AcGePoint3d startPoint() const;
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& p);
    AcGePoint3d endPoint() const;
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& p);
    double thickness() const;
    Acad::ErrorStatus setThickness(double t);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& n);

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
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& firstDeriv) const override;
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
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices,
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
    AcGePoint3d start_, end_;
    double thickness_ = 0;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
};

class KELVO_HOST_API AcDbCircle : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbCircle);
    AcDbCircle();
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    ~AcDbCircle() override;

    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& c);
    double radius() const;
    Acad::ErrorStatus setRadius(double r);
    double thickness() const;
    Acad::ErrorStatus setThickness(double t);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& n);
    double circumference() const;
    Acad::ErrorStatus setCircumference(double c);
    double diameter() const;
    Acad::ErrorStatus setDiameter(double d);

    Adesk::Boolean isClosed() const override;
    Adesk::Boolean isPeriodic() const override;
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

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subList() const override;
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

    AcGePoint3d center_;
    double radius_ = 0;
    double thickness_ = 0;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
};

// Angles are measured in the plane of the normal from its X axis (arbitrary axis rule).
class KELVO_HOST_API AcDbArc : public AcDbCircle {
public:
    ACRX_DECLARE_MEMBERS(AcDbArc);
    AcDbArc();
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
            double startAngle, double endAngle);
    ~AcDbArc() override;

    double startAngle() const;
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const;
    Acad::ErrorStatus setEndAngle(double angle);
    // The angle swept counter-clockwise from start to end, in (0, 2pi].
    double totalAngle() const;

    Adesk::Boolean isClosed() const override;
    Adesk::Boolean isPeriodic() const override;
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    Acad::ErrorStatus getArea(double& area) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subList() const override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    double startAngle_ = 0, endAngle_ = 0;
};

class KELVO_HOST_API AcDbPoint : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbPoint);
    AcDbPoint();
    explicit AcDbPoint(const AcGePoint3d& position);
    ~AcDbPoint() override;
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& p);
    double thickness() const;
    Acad::ErrorStatus setThickness(double t);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& n);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
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
    AcGePoint3d position_;
    double thickness_ = 0;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
};

// --- text ----------------------------------------------------------------------------
class KELVO_HOST_API AcDbText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbText);
    AcDbText();
    AcDbText(const AcGePoint3d& position, const ACHAR* text,
             AcDbObjectId style = AcDbObjectId::kNull, double height = 0, double rotation = 0);
    ~AcDbText() override;

    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& p);
    AcGePoint3d alignmentPoint() const;
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& p);
    bool isDefaultAlignment() const;
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& n);
    double thickness() const;
    Acad::ErrorStatus setThickness(double t);
    double oblique() const;
    Acad::ErrorStatus setOblique(double angle);
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    double height() const;
    Acad::ErrorStatus setHeight(double h);
    double widthFactor() const;
    Acad::ErrorStatus setWidthFactor(double w);
    // A new string the caller frees with acutDelString.
    ACHAR* textString() const;
    const ACHAR* textStringConst() const;
    Acad::ErrorStatus setTextString(const ACHAR* text);
    AcDbObjectId textStyle() const;
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    bool isMirroredInX() const;
    Acad::ErrorStatus mirrorInX(bool mirror);
    bool isMirroredInY() const;
    Acad::ErrorStatus mirrorInY(bool mirror);
    AcDb::TextHorzMode horizontalMode() const;
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    AcDb::TextVertMode verticalMode() const;
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    // Recomputes the position from the alignment point for non-default alignments.
    Acad::ErrorStatus adjustAlignment(const AcDbDatabase* pDb = nullptr);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subList() const override;
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
    // The text fields without the subclass markers of a derived attribute class.
    Acad::ErrorStatus dxfInTextFields(AcDbDxfFiler* pFiler);
    Acad::ErrorStatus dxfOutTextFields(AcDbDxfFiler* pFiler) const;

private:
    AcGePoint3d position_, alignment_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0, oblique_ = 0, rotation_ = 0, height_ = 0, widthFactor_ = 1;
    std::wstring text_;
    AcDbObjectId style_;
    Adesk::Int16 generation_ = 0;
    AcDb::TextHorzMode horizontal_ = AcDb::kTextLeft;
    AcDb::TextVertMode vertical_ = AcDb::kTextBase;
};

// An attribute's template inside a block definition.
class KELVO_HOST_API AcDbAttributeDefinition : public AcDbText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition);
    AcDbAttributeDefinition();
    AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                            const ACHAR* prompt, AcDbObjectId style = AcDbObjectId::kNull);
    ~AcDbAttributeDefinition() override;

    ACHAR* tag() const;
    const ACHAR* tagConst() const;
    Acad::ErrorStatus setTag(const ACHAR* tag);
    ACHAR* prompt() const;
    const ACHAR* promptConst() const;
    Acad::ErrorStatus setPrompt(const ACHAR* prompt);
    bool isInvisible() const;
    Acad::ErrorStatus setInvisible(bool value);
    bool isConstant() const;
    Acad::ErrorStatus setConstant(bool value);
    bool isVerifiable() const;
    Acad::ErrorStatus setVerifiable(bool value);
    bool isPreset() const;
    Acad::ErrorStatus setPreset(bool value);
    Adesk::Int16 flags() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;

private:
    std::wstring tag_;
    std::wstring prompt_;
    Adesk::Int16 flags_ = 0;
};

// An attribute of a block reference, owned by it.
class KELVO_HOST_API AcDbAttribute : public AcDbText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttribute);
    AcDbAttribute();
    AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                  AcDbObjectId style = AcDbObjectId::kNull);
    ~AcDbAttribute() override;

    ACHAR* tag() const;
    const ACHAR* tagConst() const;
    Acad::ErrorStatus setTag(const ACHAR* tag);
    bool isInvisible() const;
    Acad::ErrorStatus setInvisible(bool value);
    bool isConstant() const;
    bool isVerifiable() const;
    bool isPreset() const;
    Adesk::Int16 flags() const;
    // Takes text, tag, flags and the placement of the definition, transformed by xform.
    Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* pAttdef,
                                            const AcGeMatrix3d& xform);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;

private:
    std::wstring tag_;
    Adesk::Int16 flags_ = 0;
};

// --- blocks --------------------------------------------------------------------------
class AcDbAttribute;

class KELVO_HOST_API AcDbBlockReference : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockReference);
    AcDbBlockReference();
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRec);
    ~AcDbBlockReference() override;

    AcDbObjectId blockTableRecord() const;
    virtual Acad::ErrorStatus setBlockTableRecord(AcDbObjectId id);
    AcGePoint3d position() const;
    virtual Acad::ErrorStatus setPosition(const AcGePoint3d& p);
    AcGeScale3d scaleFactors() const;
    virtual Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
    double rotation() const;
    virtual Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const;
    virtual Acad::ErrorStatus setNormal(const AcGeVector3d& n);
    // Block coordinates to world: minus the block origin, scale, rotate, into the plane of
    // the normal, to the position.
    AcGeMatrix3d blockTransform() const;
    virtual Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& xform);

    // Attributes: owned by the reference, appended in order. appendAttribute takes the
    // attribute; while the reference is not in a database the attribute waits and is added
    // with it.
    Acad::ErrorStatus appendAttribute(AcDbAttribute* pAttr);
    Acad::ErrorStatus appendAttribute(AcDbObjectId& attId, AcDbAttribute* pAttr);
    // A new iterator over the attribute ids; the caller deletes it.
    AcDbObjectIterator* attributeIterator() const;
    AcDbObjectIdArray attributeIds() const;
    AcDbObjectId seqendId() const;

    Acad::ErrorStatus explodeToOwnerSpace() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

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
    friend class kelvo::drawing::ObjectAccess;
    AcDbHardPointerId block_;
    AcGePoint3d position_;
    AcGeScale3d scale_;
    double rotation_ = 0;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcDbObjectIdArray attributes_;
    AcDbObjectId seqend_;
    AcArray<AcDbAttribute*> pendingAttributes_;
};

// The BLOCK and ENDBLK markers of a block definition. The block table record owns them;
// they carry the definition's layer and are what entmake and DXF files see.
class KELVO_HOST_API AcDbBlockBegin : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockBegin);
    AcDbBlockBegin();
    ~AcDbBlockBegin() override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
};

class KELVO_HOST_API AcDbBlockEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockEnd);
    AcDbBlockEnd();
    ~AcDbBlockEnd() override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
};

// Ends the vertices of a polyline or the attributes of a block reference.
class KELVO_HOST_API AcDbSequenceEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSequenceEnd);
    AcDbSequenceEnd();
    ~AcDbSequenceEnd() override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
};

// --- 2D polylines --------------------------------------------------------------------
class KELVO_HOST_API AcDbVertex : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbVertex);
    ~AcDbVertex() override;

protected:
    AcDbVertex();
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
};

// A vertex of a 2D polyline. Its position is in the polyline's coordinate system (the
// elevation and normal are the polyline's).
class KELVO_HOST_API AcDb2dVertex : public AcDbVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dVertex);
    AcDb2dVertex();
    explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0, double startWidth = 0,
                          double endWidth = 0, double tangent = 0);
    ~AcDb2dVertex() override;

    AcDb::Vertex2dType vertexType() const;
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& p);
    double startWidth() const;
    Acad::ErrorStatus setStartWidth(double w);
    double endWidth() const;
    Acad::ErrorStatus setEndWidth(double w);
    double bulge() const;
    Acad::ErrorStatus setBulge(double b);
    bool isTangentUsed() const;
    double tangent() const;
    Acad::ErrorStatus setTangent(double t);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;

private:
    AcGePoint3d position_;
    double startWidth_ = 0, endWidth_ = 0, bulge_ = 0, tangent_ = 0;
    Adesk::Int16 flags_ = 0;
};

class KELVO_HOST_API AcDb2dPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline);
    AcDb2dPolyline();
    AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation = 0,
                   Adesk::Boolean closed = false, double defStartWidth = 0,
                   double defEndWidth = 0, const AcGeDoubleArray* bulges = nullptr);
    ~AcDb2dPolyline() override;

    AcDb::Poly2dType polyType() const;
    Acad::ErrorStatus setPolyType(AcDb::Poly2dType type);
    Acad::ErrorStatus makeClosed();
    Acad::ErrorStatus makeOpen();
    double defaultStartWidth() const;
    Acad::ErrorStatus setDefaultStartWidth(double w);
    double defaultEndWidth() const;
    Acad::ErrorStatus setDefaultEndWidth(double w);
    double elevation() const;
    Acad::ErrorStatus setElevation(double e);
    double thickness() const;
    Acad::ErrorStatus setThickness(double t);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& n);
    bool isLinetypeGenerationOn() const;
    Acad::ErrorStatus setLinetypeGenerationOn();
    Acad::ErrorStatus setLinetypeGenerationOff();

    // Vertices: owned by the polyline; while it is not in a database they wait and are
    // added with it.
    Acad::ErrorStatus appendVertex(AcDb2dVertex* pVertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& vertexId, AcDb2dVertex* pVertex);
    AcDbObjectIterator* vertexIterator() const;
    AcDbObjectIdArray vertexIds() const;
    AcDbObjectId seqendId() const;
    // The world position of a vertex.
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;

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
    Acad::ErrorStatus getArea(double& area) const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

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
    friend class kelvo::drawing::ObjectAccess;
    AcDb::Poly2dType type_ = AcDb::k2dSimplePoly;
    Adesk::Int16 flags_ = 0;
    double startWidth_ = 0, endWidth_ = 0, elevation_ = 0, thickness_ = 0;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcDbObjectIdArray vertices_;
    AcDbObjectId seqend_;
    AcArray<AcDb2dVertex*> pendingVertices_;
};

// --- 3D faces ------------------------------------------------------------------------
class KELVO_HOST_API AcDbFace : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbFace);
    AcDbFace();
    AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
             const AcGePoint3d& pt3, Adesk::Boolean e0vis = true, Adesk::Boolean e1vis = true,
             Adesk::Boolean e2vis = true, Adesk::Boolean e3vis = true);
    AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2,
             Adesk::Boolean e0vis = true, Adesk::Boolean e1vis = true,
             Adesk::Boolean e2vis = true, Adesk::Boolean e3vis = true);
    ~AcDbFace() override;

    Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& p) const;
    Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& p);
    Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const;
    Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);
    Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
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
    AcGePoint3d vertices_[4];
    Adesk::Int16 invisibleEdges_ = 0;   // bit i set: edge i is invisible
};
