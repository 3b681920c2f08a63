// The host's drawing interface (AcGiWorldDraw, its geometry and sub-entity traits) over a
// Picture: what an entity's worldDraw describes becomes flat paths and texts in world XY
// (a plan view), coloured by true colour, colour index, layer, or the enclosing block
// reference.
//
// Traits: each drawable drawn (top-level or through geometry().draw) gets fresh traits
// from its setAttributes, and its caller's traits come back when it is done. By-block
// colours take the resolved colour of the drawable that draws them; entities on layer
// "0" inside a block take that drawable's layer.
#pragma once

#include <map>
#include <vector>

#include "acgi.h"
#include "runtime/render/picture.h"

class AcDbDatabase;

namespace kelvo::host::render {

class PictureDraw;

class PictureTraits : public AcGiDrawableTraits {
public:
    void reset(AcDbObjectId layer);
    void setColor(Adesk::UInt16 colorIndex) override;
    void setTrueColor(const AcCmEntityColor& color) override { color_ = color; }
    void setLayer(AcDbObjectId layerId) override { layer_ = layerId; }
    void setLineType(AcDbObjectId linetypeId) override { linetype_ = linetypeId; }
    void setSelectionMarker(Adesk::LongPtr) override {}
    void setFillType(AcGi::FillType type) override { fill_ = type; }
    void setLineWeight(int lineWeight) override { lineWeight_ = lineWeight; }
    void setLineTypeScale(double scale = 1.0) override { linetypeScale_ = scale; }
    void setThickness(double thickness) override { thickness_ = thickness; }
    Adesk::UInt16 color() const override;
    AcCmEntityColor trueColor() const override { return color_; }
    AcDbObjectId layerId() const override { return layer_; }
    AcDbObjectId lineTypeId() const override { return linetype_; }
    AcGi::FillType fillType() const override { return fill_; }
    int lineWeight() const override { return lineWeight_; }
    double lineTypeScale() const override { return linetypeScale_; }
    double thickness() const override { return thickness_; }

private:
    AcCmEntityColor color_;
    AcDbObjectId layer_, linetype_;
    AcGi::FillType fill_ = AcGi::kAcGiFillNever;
    int lineWeight_ = -1;
    double linetypeScale_ = 1.0, thickness_ = 0.0;
};

class PictureGeometry : public AcGiWorldGeometry {
public:
    explicit PictureGeometry(PictureDraw& draw) : draw_(draw) {}
    Adesk::Boolean circle(const AcGePoint3d& center, double radius,
                          const AcGeVector3d& normal) const override;
    Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2,
                          const AcGePoint3d& p3) const override;
    Adesk::Boolean circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                               const AcGeVector3d& startVector, double sweepAngle,
                               AcGi::ArcType arcType) const override;
    Adesk::Boolean circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                               const AcGePoint3d& end, AcGi::ArcType arcType) const override;
    Adesk::Boolean polyline(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                            const AcGeVector3d* pNormal, Adesk::LongPtr marker) const override;
    Adesk::Boolean polygon(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList) const override;
    Adesk::Boolean pline(const AcDbPolyline& lwBuf, Adesk::UInt32 fromIndex,
                         Adesk::UInt32 numSegs) const override;
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, double height, double width,
                        double oblique, const ACHAR* pMsg) const override;
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const ACHAR* pMsg, Adesk::Int32 length,
                        Adesk::Boolean raw, const AcGiTextStyle& textStyle) const override;
    // Unbounded lines have no place in a picture fitted to extents: not drawn.
    Adesk::Boolean xline(const AcGePoint3d&, const AcGePoint3d&) const override { return false; }
    Adesk::Boolean ray(const AcGePoint3d&, const AcGePoint3d&) const override { return false; }
    Adesk::Boolean draw(AcGiDrawable* pDrawable) const override;
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& xMat) override;
    Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) override;
    Adesk::Boolean popModelTransform() override;
    AcGeMatrix3d getModelToWorldTransform() const override;
    AcGeMatrix3d getWorldToModelTransform() const override;
    void setExtents(AcGePoint3d*) const override {}

private:
    PictureDraw& draw_;
};

class PictureDraw : public AcGiWorldDraw, public AcGiContext {
public:
    PictureDraw(AcDbDatabase* db, Picture& picture);
    // Draws a drawable with fresh traits from its setAttributes; the caller's traits and
    // by-block colour come back afterwards. Nested drawables see `this` drawable's colour
    // as their by-block colour.
    void drawDrawable(AcGiDrawable& drawable);

    AcGiRegenType regenType() const override { return kAcGiStandardDisplay; }
    Adesk::Boolean regenAbort() const override { return false; }
    AcGiSubEntityTraits& subEntityTraits() const override { return traits_; }
    AcGiGeometry* rawGeometry() const override { return &geometry_; }
    Adesk::Boolean isDragging() const override { return false; }
    AcGiContext* context() override { return this; }
    double deviation(int, const AcGePoint3d&) const override { return 0.0; }
    Adesk::UInt32 numberOfIsolines() const override { return 4; }
    AcGiWorldGeometry& geometry() const override { return geometry_; }
    AcDbDatabase* database() const override { return db_; }

    // For the geometry: where model points land, and the colour of what is drawn now.
    Point2 toWorld(const AcGePoint3d& p) const;
    AcGeVector3d vectorToWorld(const AcGeVector3d& v) const;
    Rgb currentColor() const;
    // A path of model points in the current colour.
    void addPath(const std::vector<AcGePoint3d>& points, bool closed, bool filled);
    Picture& picture() { return picture_; }
    std::vector<AcGeMatrix3d>& transforms() { return transforms_; }

private:
    struct LayerInfo {
        Rgb color = aciToRgb(7);
        bool hidden = false;   // off or frozen
    };
    AcDbObjectId effectiveLayer() const;
    const LayerInfo& layerInfo(AcDbObjectId layer) const;

    AcDbDatabase* db_;
    Picture& picture_;
    mutable PictureTraits traits_;
    mutable PictureGeometry geometry_;
    std::vector<AcGeMatrix3d> transforms_;   // model to world; the last one is current
    struct Enclosing {
        Rgb color;
        AcDbObjectId layer;
    };
    std::vector<Enclosing> enclosing_;   // the drawables being drawn around the current one
    int depth_ = 0;
    mutable std::map<std::int64_t, LayerInfo> layers_;
};

}  // namespace kelvo::host::render
