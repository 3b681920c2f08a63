// The drawing interface: objects describe their graphics by calling the primitives of a
// geometry object they are handed (worldDraw), with traits such as colour and layer set
// on the side. A renderer implements AcGiWorldDraw, AcGiWorldGeometry and
// AcGiSubEntityTraits; an object implements AcGiDrawable::subWorldDraw.
#pragma once

#include "adesk.h"
#include "dbcolor.h"
#include "dbid.h"
#include "gemat3d.h"
#include "rxobject.h"

enum AcGiRegenType { kAcGiStandardDisplay = 2, kAcGiHideOrShadeCommand, kAcGiRenderCommand,
                     kAcGiForExplode, kAcGiSaveWorldDrawForProxy, kAcGiForExtents };

class AcGiWorldDraw;
class AcGiDrawable;
class AcGiViewportDraw;
class AcGiDrawableTraits;
class AcDbPolyline;

namespace AcGi {
enum FillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };
enum ArcType { kAcGiArcSimple = 0, kAcGiArcSector = 1, kAcGiArcChord = 2 };
enum OrientationType { kAcGiCounterClockwise = -1, kAcGiNoOrientation = 0,
                       kAcGiClockwise = 1 };
}  // namespace AcGi

// Text style as the text primitive sees it.
class KELVO_HOST_API AcGiTextStyle {
public:
    AcGiTextStyle() = default;
    double textSize() const { return textSize_; }
    void setTextSize(double size) { textSize_ = size; }
    double xScale() const { return xScale_; }
    void setXScale(double scale) { xScale_ = scale; }
    double obliquingAngle() const { return obliquing_; }
    void setObliquingAngle(double angle) { obliquing_ = angle; }
    const ACHAR* fileName() const { return fileName_; }
    void setFileName(const ACHAR* name) { fileName_ = name ? name : L""; }

private:
    double textSize_ = 1.0;
    double xScale_ = 1.0;
    double obliquing_ = 0.0;
    const ACHAR* fileName_ = L"";
};

// Properties of what is drawn next.
class KELVO_HOST_API AcGiSubEntityTraits {
public:
    virtual ~AcGiSubEntityTraits() = default;
    virtual void setColor(Adesk::UInt16 colorIndex) = 0;
    virtual void setTrueColor(const AcCmEntityColor& color) = 0;
    virtual void setLayer(AcDbObjectId layerId) = 0;
    virtual void setLineType(AcDbObjectId linetypeId) = 0;
    virtual void setSelectionMarker(Adesk::LongPtr marker) = 0;
    virtual void setFillType(AcGi::FillType type) = 0;
    virtual void setLineWeight(int lineWeight) = 0;
    virtual void setLineTypeScale(double scale = 1.0) = 0;
    virtual void setThickness(double thickness) = 0;

    virtual Adesk::UInt16 color() const = 0;
    virtual AcCmEntityColor trueColor() const = 0;
    virtual AcDbObjectId layerId() const = 0;
    virtual AcDbObjectId lineTypeId() const = 0;
    virtual AcGi::FillType fillType() const = 0;
    virtual int lineWeight() const = 0;
    virtual double lineTypeScale() const = 0;
    virtual double thickness() const = 0;
};

// What a drawable's subSetAttributes fills in.
class KELVO_HOST_API AcGiDrawableTraits : public AcGiSubEntityTraits {};

// The primitives. Points are in the current model coordinates: world coordinates
// transformed by the model transforms pushed so far. Each call answers true when the
// drawing should stop (the host's regenerate-abort convention), false to go on.
class KELVO_HOST_API AcGiGeometry {
public:
    virtual ~AcGiGeometry() = default;
    virtual Adesk::Boolean circle(const AcGePoint3d& center, double radius,
                                  const AcGeVector3d& normal) const = 0;
    virtual Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2,
                                  const AcGePoint3d& p3) const = 0;
    // An arc from startVector (from the centre), sweeping counter-clockwise about normal.
    virtual Adesk::Boolean circularArc(const AcGePoint3d& center, double radius,
                                       const AcGeVector3d& normal,
                                       const AcGeVector3d& startVector, double sweepAngle,
                                       AcGi::ArcType arcType = AcGi::kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                       const AcGePoint3d& end,
                                       AcGi::ArcType arcType = AcGi::kAcGiArcSimple) const = 0;
    virtual Adesk::Boolean polyline(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                                    const AcGeVector3d* pNormal = nullptr,
                                    Adesk::LongPtr lBaseSubEntMarker = -1) const = 0;
    // A closed, filled (per the fill type) polygon.
    virtual Adesk::Boolean polygon(Adesk::UInt32 nbPoints,
                                   const AcGePoint3d* pVertexList) const = 0;
    // A lightweight polyline with its widths and bulges.
    virtual Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex = 0,
                                 Adesk::UInt32 numSegs = 0) const = 0;
    // Text on the baseline from position along direction, of the given height; width is
    // the width factor, oblique the obliquing angle.
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, double height, double width,
                                double oblique, const ACHAR* pMsg) const = 0;
    virtual Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                const AcGeVector3d& direction, const ACHAR* pMsg,
                                Adesk::Int32 length, Adesk::Boolean raw,
                                const AcGiTextStyle& textStyle) const = 0;
    virtual Adesk::Boolean xline(const AcGePoint3d& p1, const AcGePoint3d& p2) const = 0;
    virtual Adesk::Boolean ray(const AcGePoint3d& origin, const AcGePoint3d& through) const = 0;
    // Draws another drawable (a block reference's entities, an embedded entity) with its
    // own worldDraw, under the current traits and model transform.
    virtual Adesk::Boolean draw(AcGiDrawable* pDrawable) const = 0;

    virtual Adesk::Boolean pushModelTransform(const AcGeMatrix3d& xMat) = 0;
    virtual Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) = 0;
    virtual Adesk::Boolean popModelTransform() = 0;
    virtual AcGeMatrix3d getModelToWorldTransform() const = 0;
    virtual AcGeMatrix3d getWorldToModelTransform() const = 0;
};

class KELVO_HOST_API AcGiWorldGeometry : public AcGiGeometry {
public:
    virtual void setExtents(AcGePoint3d* pNewExtents) const = 0;
};

class KELVO_HOST_API AcGiViewportGeometry : public AcGiGeometry {};

class KELVO_HOST_API AcGiContext {
public:
    virtual ~AcGiContext() = default;
    virtual Adesk::Boolean isPsOut() const { return false; }
    virtual Adesk::Boolean isPlotGeneration() const { return false; }
    virtual AcDbDatabase* database() const = 0;
};

class KELVO_HOST_API AcGiCommonDraw {
public:
    virtual ~AcGiCommonDraw() = default;
    virtual AcGiRegenType regenType() const = 0;
    virtual Adesk::Boolean regenAbort() const = 0;
    virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
    virtual AcGiGeometry* rawGeometry() const = 0;
    virtual Adesk::Boolean isDragging() const = 0;
    virtual AcGiContext* context() = 0;
    // The largest distance from a true curve to its drawn chords, in drawing units.
    virtual double deviation(int type, const AcGePoint3d& p) const = 0;
    virtual Adesk::UInt32 numberOfIsolines() const = 0;
};

class KELVO_HOST_API AcGiWorldDraw : public AcGiCommonDraw {
public:
    virtual AcGiWorldGeometry& geometry() const = 0;
};

class KELVO_HOST_API AcGiViewportDraw : public AcGiCommonDraw {
public:
    virtual AcGiViewportGeometry& geometry() const = 0;
};

// Anything that can be drawn. AcDbObject derives from it.
class KELVO_HOST_API AcGiDrawable : public AcRxObject {
public:
    enum SetAttributesFlags { kDrawableNone = 0, kDrawableIsAnEntity = 1,
                              kDrawableUsesNesting = 2, kDrawableIsCompoundObject = 4 };
    ~AcGiDrawable() override;
    static AcRxClass* desc();
    AcRxClass* isA() const override;

    Adesk::UInt32 setAttributes(AcGiDrawableTraits* traits) { return subSetAttributes(traits); }
    // Describes the drawable's graphics. Answers true when the graphics are complete (no
    // viewportDraw needed), false when drawing failed or was abandoned.
    Adesk::Boolean worldDraw(AcGiWorldDraw* wd) { return subWorldDraw(wd); }
    void viewportDraw(AcGiViewportDraw* vd) { subViewportDraw(vd); }
    virtual Adesk::Boolean isPersistent() const = 0;
    virtual AcDbObjectId id() const = 0;

protected:
    virtual Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) = 0;
    virtual Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) = 0;
    virtual void subViewportDraw(AcGiViewportDraw* vd) = 0;
};
