// Multiline text: a paragraph of formatted text in a box of a given width.
#pragma once

#include <string>

#include "dbmain.h"

class KELVO_HOST_API AcDbMText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMText);
    AcDbMText();
    ~AcDbMText() override;

    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter = 2,
        kTopRight = 3,
        kMiddleLeft = 4,
        kMiddleCenter = 5,
        kMiddleRight = 6,
        kBottomLeft = 7,
        kBottomCenter = 8,
        kBottomRight = 9,
    };
    enum FlowDirection { kLtoR = 1, kRtoL = 2, kTtoB = 3, kBtoT = 4, kByStyle = 5 };

    AcGePoint3d location() const;
    Acad::ErrorStatus setLocation(const AcGePoint3d& p);
    AcGeVector3d normal() const;
    Acad::ErrorStatus setNormal(const AcGeVector3d& n);
    // The text's X axis (unit vector in the plane of the normal).
    AcGeVector3d direction() const;
    Acad::ErrorStatus setDirection(const AcGeVector3d& d);
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    double width() const;
    Acad::ErrorStatus setWidth(double w);
    double textHeight() const;
    Acad::ErrorStatus setTextHeight(double h);
    AttachmentPoint attachment() const;
    Acad::ErrorStatus setAttachment(AttachmentPoint a);
    FlowDirection flowDirection() const;
    Acad::ErrorStatus setFlowDirection(FlowDirection d);
    AcDbObjectId textStyle() const;
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    double lineSpacingFactor() const;
    Acad::ErrorStatus setLineSpacingFactor(double f);
    // 1: at least the factor (taller lines take more room), 2: exactly.
    Adesk::Int16 lineSpacingStyle() const;
    Acad::ErrorStatus setLineSpacingStyle(Adesk::Int16 style);
    // The raw contents with their format codes; contents() is a new string the caller
    // frees with acutDelString.
    ACHAR* contents() const;
    const ACHAR* contentsConst() const;
    Acad::ErrorStatus setContents(const ACHAR* text);
    // The contents without format codes, paragraphs separated by "\n".
    std::wstring text() const;
    // The size of the text as laid out (lines wrapped at width when it is not 0).
    double actualHeight() const;
    double actualWidth() const;
    // Background mask.
    bool backgroundFillOn() const;
    Acad::ErrorStatus setBackgroundFill(bool enable);
    bool useBackgroundColorOn() const;
    Acad::ErrorStatus setUseBackgroundColor(bool enable);
    double getBackgroundScaleFactor() const;
    Acad::ErrorStatus setBackgroundScaleFactor(double scale);
    AcCmColor getBackgroundFillColor() const;
    Acad::ErrorStatus setBackgroundFillColor(const AcCmColor& color);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subList() const override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                       AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices,
                                          const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                        AcDbIntArray& geomIds) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    AcGePoint3d location_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcGeVector3d direction_ = AcGeVector3d::kXAxis;
    double width_ = 0, height_ = 0, lineSpacing_ = 1.0;
    Adesk::Int16 lineSpacingStyle_ = 1;
    AttachmentPoint attachment_ = kTopLeft;
    FlowDirection flow_ = kLtoR;
    AcDbObjectId style_;
    std::wstring contents_;
    bool backgroundFill_ = false, useBackgroundColor_ = false;
    double backgroundScale_ = 1.5;
    AcCmColor backgroundColor_;
};
