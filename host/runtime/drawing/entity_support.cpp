// Segment intersections and the straight pieces an entity draws.

#include "runtime/drawing/entity_support.h"

#include <vector>

#include "acgi.h"
#include "dbpl.h"

namespace kelvo::drawing {

void intersectSegments(const AcGePoint3d& a1, const AcGePoint3d& a2, const AcGePoint3d& b1,
                       const AcGePoint3d& b2, AcDb::Intersect extend, AcGePoint3dArray& out) {
    double dx1 = a2.x - a1.x, dy1 = a2.y - a1.y, dx2 = b2.x - b1.x, dy2 = b2.y - b1.y;
    double denom = dx1 * dy2 - dy1 * dx2;
    if (std::fabs(denom) < 1e-12) return;
    double t = ((b1.x - a1.x) * dy2 - (b1.y - a1.y) * dx2) / denom;
    double u = ((b1.x - a1.x) * dy1 - (b1.y - a1.y) * dx1) / denom;
    const double eps = 1e-9;
    bool extendThis = extend == AcDb::kExtendThis || extend == AcDb::kExtendBoth;
    bool extendArg = extend == AcDb::kExtendArg || extend == AcDb::kExtendBoth;
    if (!extendThis && (t < -eps || t > 1 + eps)) return;
    if (!extendArg && (u < -eps || u > 1 + eps)) return;
    AcGePoint3d p = a1 + (a2 - a1) * t;
    for (const AcGePoint3d& q : out)
        if (q.isEqualTo(p)) return;
    out.append(p);
}

namespace {

using Segments = std::vector<std::pair<AcGePoint3d, AcGePoint3d>>;

class SegmentTraits : public AcGiDrawableTraits {
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

class SegmentGeometry : public AcGiWorldGeometry {
public:
    explicit SegmentGeometry(Segments& out) : out_(out) {}
    void add(const AcGePoint3d& a, const AcGePoint3d& b) const {
        out_.emplace_back(stack_.back() * a, stack_.back() * b);
    }
    void arc(const AcGePoint3d& c, double r, const AcGeVector3d& n, const AcGeVector3d& start,
             double sweep) const {
        AcGeVector3d u = start.normal(), v = n.normal().crossProduct(u);
        const int steps = 64;
        AcGePoint3d prev = c + u * r;
        for (int i = 1; i <= steps; ++i) {
            double a = sweep * i / steps;
            AcGePoint3d p = c + u * (r * std::cos(a)) + v * (r * std::sin(a));
            add(prev, p);
            prev = p;
        }
    }
    Adesk::Boolean circle(const AcGePoint3d& c, double r, const AcGeVector3d& n) const override {
        arc(c, r, n, ocsXAxis(n.normal()), 2 * std::numbers::pi);
        return false;
    }
    Adesk::Boolean circle(const AcGePoint3d&, const AcGePoint3d&, const AcGePoint3d&) const override {
        return false;
    }
    Adesk::Boolean circularArc(const AcGePoint3d& c, double r, const AcGeVector3d& n,
                               const AcGeVector3d& s, double sweep, AcGi::ArcType) const override {
        arc(c, r, n, s, sweep);
        return false;
    }
    Adesk::Boolean circularArc(const AcGePoint3d& s, const AcGePoint3d& m, const AcGePoint3d& e,
                               AcGi::ArcType) const override {
        add(s, m);
        add(m, e);
        return false;
    }
    Adesk::Boolean polyline(Adesk::UInt32 n, const AcGePoint3d* pts, const AcGeVector3d*,
                            Adesk::LongPtr) const override {
        for (Adesk::UInt32 i = 1; i < n; ++i) add(pts[i - 1], pts[i]);
        return false;
    }
    Adesk::Boolean polygon(Adesk::UInt32 n, const AcGePoint3d* pts) const override {
        polyline(n, pts, nullptr, -1);
        if (n > 2) add(pts[n - 1], pts[0]);
        return false;
    }
    Adesk::Boolean pline(const AcDbPolyline& pl, Adesk::UInt32, Adesk::UInt32) const override {
        AcDbVoidPtrArray parts;
        if (pl.explode(parts) != Acad::eOk) return false;
        for (void* p : parts) {
            auto* e = static_cast<AcDbEntity*>(p);
            Segments sub;
            drawnSegments(*e, sub);
            for (auto& [a, b] : sub) add(a, b);
            delete e;
        }
        return false;
    }
    Adesk::Boolean text(const AcGePoint3d&, const AcGeVector3d&, const AcGeVector3d&, double, double,
                        double, const ACHAR*) const override {
        return false;
    }
    Adesk::Boolean text(const AcGePoint3d&, const AcGeVector3d&, const AcGeVector3d&, const ACHAR*,
                        Adesk::Int32, Adesk::Boolean, const AcGiTextStyle&) const override {
        return false;
    }
    Adesk::Boolean xline(const AcGePoint3d& a, const AcGePoint3d& b) const override {
        add(a, b);
        return false;
    }
    Adesk::Boolean ray(const AcGePoint3d& a, const AcGePoint3d& b) const override {
        add(a, b);
        return false;
    }
    Adesk::Boolean draw(AcGiDrawable* d) const override;
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d& m) override {
        stack_.push_back(stack_.back() * m);
        return false;
    }
    Adesk::Boolean pushModelTransform(const AcGeVector3d& n) override {
        return pushModelTransform(AcGeMatrix3d::planeToWorld(n));
    }
    Adesk::Boolean popModelTransform() override {
        if (stack_.size() > 1) stack_.pop_back();
        return false;
    }
    AcGeMatrix3d getModelToWorldTransform() const override { return stack_.back(); }
    AcGeMatrix3d getWorldToModelTransform() const override { return stack_.back().inverse(); }
    void setExtents(AcGePoint3d*) const override {}
    AcGiWorldDraw* owner = nullptr;
    mutable int depth = 0;

private:
    Segments& out_;
    std::vector<AcGeMatrix3d> stack_{AcGeMatrix3d()};
};

class SegmentDraw : public AcGiWorldDraw {
public:
    explicit SegmentDraw(Segments& out) : geometry_(out) { geometry_.owner = this; }
    AcGiWorldGeometry& geometry() const override { return const_cast<SegmentGeometry&>(geometry_); }
    AcGiRegenType regenType() const override { return kAcGiForExplode; }
    Adesk::Boolean regenAbort() const override { return false; }
    AcGiSubEntityTraits& subEntityTraits() const override { return const_cast<SegmentTraits&>(traits_); }
    AcGiGeometry* rawGeometry() const override { return &geometry(); }
    Adesk::Boolean isDragging() const override { return false; }
    AcGiContext* context() override { return nullptr; }
    double deviation(int, const AcGePoint3d&) const override { return 0.01; }
    Adesk::UInt32 numberOfIsolines() const override { return 4; }

private:
    SegmentGeometry geometry_;
    SegmentTraits traits_;
};

Adesk::Boolean SegmentGeometry::draw(AcGiDrawable* d) const {
    if (!d || depth > 32) return false;
    ++depth;
    d->worldDraw(owner);
    --depth;
    return false;
}

}  // namespace

void drawnSegments(const AcDbEntity& entity, Segments& out) {
    SegmentDraw wd(out);
    const_cast<AcDbEntity&>(entity).worldDraw(&wd);
}

}  // namespace kelvo::drawing
