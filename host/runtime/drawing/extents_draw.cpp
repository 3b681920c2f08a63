// The extents collector: an AcGiWorldDraw whose primitives only grow a box.

#include "runtime/drawing/extents_draw.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <vector>

#include "dbpl.h"

namespace kelvo::drawing {
namespace {

class ExtentsTraits : public AcGiDrawableTraits {
public:
    void setColor(Adesk::UInt16) override {}
    void setTrueColor(const AcCmEntityColor&) override {}
    void setLayer(AcDbObjectId) override {}
    void setLineType(AcDbObjectId) override {}
    void setSelectionMarker(Adesk::LongPtr) override {}
    void setFillType(AcGi::FillType) override {}
    void setLineWeight(int) override {}
    void setLineTypeScale(double) override {}
    void setThickness(double) override {}
    Adesk::UInt16 color() const override { return 7; }
    AcCmEntityColor trueColor() const override { return {}; }
    AcDbObjectId layerId() const override { return {}; }
    AcDbObjectId lineTypeId() const override { return {}; }
    AcGi::FillType fillType() const override { return AcGi::kAcGiFillNever; }
    int lineWeight() const override { return 0; }
    double lineTypeScale() const override { return 1; }
    double thickness() const override { return 0; }
};

class ExtentsGeometry : public AcGiWorldGeometry {
public:
    AcDbExtents extents;
    bool any = false;

    void add(const AcGePoint3d& p) const {
        auto* self = const_cast<ExtentsGeometry*>(this);
        self->extents.addPoint(transforms_.back() * p);
        self->any = true;
    }
    void addCircle(const AcGePoint3d& c, double r, const AcGeVector3d& normal) const {
        AcGeVector3d n = normal.normal();
        if (n.isZeroLength()) n = AcGeVector3d::kZAxis;
        AcGeVector3d u = n.perpVector();
        AcGeVector3d v = n.crossProduct(u);
        for (int i = 0; i < 64; ++i) {
            double a = i * 2 * M_PI / 64;
            add(c + u * (r * std::cos(a)) + v * (r * std::sin(a)));
        }
    }

    Adesk::Boolean circle(const AcGePoint3d& c, double r, const AcGeVector3d& n) const override {
        addCircle(c, r, n);
        return false;
    }
    Adesk::Boolean circle(const AcGePoint3d& p1, const AcGePoint3d& p2,
                          const AcGePoint3d& p3) const override {
        add(p1);
        add(p2);
        add(p3);
        return false;
    }
    Adesk::Boolean circularArc(const AcGePoint3d& c, double r, const AcGeVector3d& normal,
                               const AcGeVector3d& start, double sweep, AcGi::ArcType) const override {
        AcGeVector3d n = normal.normal();
        AcGeVector3d u = start.normal();
        AcGeVector3d v = n.crossProduct(u);
        int steps = std::max(2, static_cast<int>(std::fabs(sweep) / (M_PI / 32)) + 1);
        for (int i = 0; i <= steps; ++i) {
            double a = sweep * i / steps;
            add(c + u * (r * std::cos(a)) + v * (r * std::sin(a)));
        }
        return false;
    }
    Adesk::Boolean circularArc(const AcGePoint3d& s, const AcGePoint3d& m, const AcGePoint3d& e,
                               AcGi::ArcType) const override {
        add(s);
        add(m);
        add(e);
        return false;
    }
    Adesk::Boolean polyline(Adesk::UInt32 n, const AcGePoint3d* pts, const AcGeVector3d*,
                            Adesk::LongPtr) const override {
        for (Adesk::UInt32 i = 0; i < n; ++i) add(pts[i]);
        return false;
    }
    Adesk::Boolean polygon(Adesk::UInt32 n, const AcGePoint3d* pts) const override {
        return polyline(n, pts, nullptr, -1);
    }
    Adesk::Boolean pline(const AcDbPolyline& pl, Adesk::UInt32, Adesk::UInt32) const override {
        AcDbExtents e;
        if (pl.getGeomExtents(e) == Acad::eOk) {
            add(e.minPoint());
            add(e.maxPoint());
        }
        return false;
    }
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, double height, double width, double,
                        const ACHAR* msg) const override {
        AcGeVector3d x = direction.normal();
        AcGeVector3d y = normal.normal().crossProduct(x);
        double len = textAdvance(msg, height, width);
        add(position);
        add(position + x * len);
        add(position + y * height);
        add(position + x * len + y * height);
        return false;
    }
    Adesk::Boolean text(const AcGePoint3d& position, const AcGeVector3d& normal,
                        const AcGeVector3d& direction, const ACHAR* msg, Adesk::Int32, Adesk::Boolean,
                        const AcGiTextStyle& style) const override {
        return text(position, normal, direction, style.textSize(), style.xScale(),
                    style.obliquingAngle(), msg);
    }
    Adesk::Boolean xline(const AcGePoint3d& p1, const AcGePoint3d& p2) const override {
        add(p1);
        add(p2);
        return false;
    }
    Adesk::Boolean ray(const AcGePoint3d& o, const AcGePoint3d& t) const override {
        add(o);
        add(t);
        return false;
    }
    Adesk::Boolean draw(AcGiDrawable* drawable) const override;
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& m) override {
        transforms_.push_back(transforms_.back() * m);
        return false;
    }
    Adesk::Boolean pushModelTransform(const AcGeVector3d& normal) override {
        return pushModelTransform(AcGeMatrix3d::planeToWorld(normal));
    }
    Adesk::Boolean popModelTransform() override {
        if (transforms_.size() > 1) transforms_.pop_back();
        return false;
    }
    AcGeMatrix3d getModelToWorldTransform() const override { return transforms_.back(); }
    AcGeMatrix3d getWorldToModelTransform() const override { return transforms_.back().inverse(); }
    void setExtents(AcGePoint3d*) const override {}

    class ExtentsDraw* owner = nullptr;

private:
    std::vector<AcGeMatrix3d> transforms_{AcGeMatrix3d()};
};

class ExtentsDraw : public AcGiWorldDraw {
public:
    ExtentsDraw() { geometry_.owner = this; }
    AcGiWorldGeometry& geometry() const override { return const_cast<ExtentsGeometry&>(geometry_); }
    AcGiRegenType regenType() const override { return kAcGiForExtents; }
    Adesk::Boolean regenAbort() const override { return false; }
    AcGiSubEntityTraits& subEntityTraits() const override { return const_cast<ExtentsTraits&>(traits_); }
    AcGiGeometry* rawGeometry() const override { return &geometry(); }
    Adesk::Boolean isDragging() const override { return false; }
    AcGiContext* context() override { return nullptr; }
    double deviation(int, const AcGePoint3d&) const override { return 0.01; }
    Adesk::UInt32 numberOfIsolines() const override { return 4; }
    const ExtentsGeometry& collected() const { return geometry_; }
    int depth = 0;

private:
    ExtentsGeometry geometry_;
    ExtentsTraits traits_;
};

Adesk::Boolean ExtentsGeometry::draw(AcGiDrawable* drawable) const {
    if (!drawable || owner->depth > 32) return false;
    ++owner->depth;
    drawable->worldDraw(owner);
    --owner->depth;
    return false;
}

}  // namespace

Acad::ErrorStatus extentsOfDrawing(const AcGiDrawable& drawable, AcDbExtents& extents) {
    ExtentsDraw wd;
    const_cast<AcGiDrawable&>(drawable).worldDraw(&wd);
    if (!wd.collected().any) return Acad::eInvalidExtents;
    extents = wd.collected().extents;
    return Acad::eOk;
}

double textAdvance(const wchar_t* text, double height, double widthFactor) {
    return text ? std::wcslen(text) * 0.8 * height * widthFactor : 0.0;
}

}  // namespace kelvo::drawing
