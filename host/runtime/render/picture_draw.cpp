// The drawing interface over a Picture: traits, the geometry primitives as flat paths in
// world XY, text placement, nested drawables and their colours.

#include "runtime/render/picture_draw.h"

#include <cmath>
#include <numbers>

#include "dbmain.h"
#include "dbpl.h"
#include "dbsymtb.h"

namespace kelvo::host::render {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
// Chords per full turn when a circle or arc becomes a path.
constexpr int kChordsPerTurn = 128;

AcGeVector3d unit(const AcGeVector3d& v) {
    double len = v.length();
    return len > 0 ? AcGeVector3d(v.x / len, v.y / len, v.z / len) : AcGeVector3d(0, 0, 1);
}

// The X axis of a plane with this normal (the drawing's arbitrary axis rule).
AcGeVector3d arbitraryXAxis(const AcGeVector3d& normal) {
    AcGeVector3d n = unit(normal);
    AcGeVector3d axis = std::fabs(n.x) < 1.0 / 64 && std::fabs(n.y) < 1.0 / 64
                            ? AcGeVector3d(0, 1, 0).crossProduct(n)
                            : AcGeVector3d(0, 0, 1).crossProduct(n);
    return unit(axis);
}

// The centre and normal of the circle through three points; false when they are in line.
bool circleThrough(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c,
                   AcGePoint3d& center, AcGeVector3d& normal) {
    AcGeVector3d ab = b - a, ac = c - a;
    AcGeVector3d n = ab.crossProduct(ac);
    double n2 = n.lengthSqrd();
    if (n2 < 1e-24) return false;
    AcGeVector3d toCenter =
        (n.crossProduct(ab) * ac.lengthSqrd() + ac.crossProduct(n) * ab.lengthSqrd()) *
        (1.0 / (2.0 * n2));
    center = a + toCenter;
    normal = unit(n);
    return true;
}

// Counter-clockwise angle about `normal` from u to v, in [0, 2pi).
double sweepBetween(const AcGeVector3d& u, const AcGeVector3d& v, const AcGeVector3d& normal) {
    double angle = std::atan2(u.crossProduct(v).dotProduct(unit(normal)), u.dotProduct(v));
    return angle < 0 ? angle + kTwoPi : angle;
}

std::vector<AcGePoint3d> arcPoints(const AcGePoint3d& center, double radius,
                                   const AcGeVector3d& normal, const AcGeVector3d& startVector,
                                   double sweep) {
    AcGeVector3d u = unit(startVector), v = unit(normal).crossProduct(u);
    int chords = std::max(8, static_cast<int>(std::ceil(std::fabs(sweep) / kTwoPi * kChordsPerTurn)));
    std::vector<AcGePoint3d> points;
    points.reserve(chords + 1);
    for (int i = 0; i <= chords; ++i) {
        double t = sweep * i / chords;
        points.push_back(center + u * (radius * std::cos(t)) + v * (radius * std::sin(t)));
    }
    return points;
}

}  // namespace

// --- traits --------------------------------------------------------------------------

void PictureTraits::reset(AcDbObjectId layer) {
    *this = PictureTraits();
    layer_ = layer;
}

void PictureTraits::setColor(Adesk::UInt16 colorIndex) {
    color_.setColorIndex(static_cast<Adesk::Int16>(colorIndex));
}

Adesk::UInt16 PictureTraits::color() const { return static_cast<Adesk::UInt16>(color_.colorIndex()); }

// --- the drawing context -------------------------------------------------------------

PictureDraw::PictureDraw(AcDbDatabase* db, Picture& picture)
    : db_(db), picture_(picture), geometry_(*this) {
    transforms_.push_back(AcGeMatrix3d());
}

Point2 PictureDraw::toWorld(const AcGePoint3d& p) const {
    AcGePoint3d w = transforms_.back() * p;
    return {w.x, w.y};
}

AcGeVector3d PictureDraw::vectorToWorld(const AcGeVector3d& v) const {
    AcGeVector3d w = v;
    return w.transformBy(transforms_.back());
}

AcDbObjectId PictureDraw::effectiveLayer() const {
    AcDbObjectId layer = traits_.layerId();
    // Entities on layer 0 inside a block take the layer of the reference that draws them.
    if (!enclosing_.empty() && db_ && layer == db_->layerZero()) return enclosing_.back().layer;
    return layer;
}

const PictureDraw::LayerInfo& PictureDraw::layerInfo(AcDbObjectId layer) const {
    auto [it, fresh] = layers_.try_emplace(layer.asOldId());
    if (!fresh) return it->second;
    AcDbLayerTableRecord* record = nullptr;
    if (acdbOpenObject(record, layer, AcDb::kForRead) != Acad::eOk) return it->second;
    AcCmColor c = record->color();
    it->second.color = c.isByColor() ? rgbFromPacked(c.rgb()) : aciToRgb(std::abs(c.colorIndex()));
    it->second.hidden = record->isOff() || record->isFrozen() || c.colorIndex() < 0;
    record->close();
    return it->second;
}

Rgb PictureDraw::currentColor() const {
    AcCmEntityColor c = traits_.trueColor();
    if (c.isByColor()) return rgbFromPacked(c.rgb());
    if (c.isByBlock()) return enclosing_.empty() ? aciToRgb(7) : enclosing_.back().color;
    if (c.isByLayer()) return layerInfo(effectiveLayer()).color;
    if (c.isByACI()) return aciToRgb(c.colorIndex());
    return aciToRgb(7);
}

void PictureDraw::drawDrawable(AcGiDrawable& drawable) {
    PictureTraits saved = traits_;
    size_t transforms = transforms_.size();
    bool nested = depth_ > 0;
    if (nested) enclosing_.push_back({currentColor(), effectiveLayer()});
    traits_.reset(db_ ? db_->layerZero() : AcDbObjectId());
    drawable.setAttributes(&traits_);
    ++depth_;
    if (!layerInfo(effectiveLayer()).hidden) drawable.worldDraw(this);
    --depth_;
    transforms_.resize(transforms);   // a drawable that pushed more than it popped
    traits_ = saved;
    if (nested) enclosing_.pop_back();
}

void PictureDraw::addPath(const std::vector<AcGePoint3d>& points, bool closed, bool filled) {
    Path path;
    path.points.reserve(points.size());
    for (const AcGePoint3d& p : points) path.points.push_back(toWorld(p));
    path.closed = closed;
    path.filled = filled;
    path.color = currentColor();
    picture_.add(std::move(path));
}

// --- geometry ------------------------------------------------------------------------

Adesk::Boolean PictureGeometry::circle(const AcGePoint3d& center, double radius,
                                       const AcGeVector3d& normal) const {
    draw_.addPath(arcPoints(center, radius, normal, arbitraryXAxis(normal), kTwoPi), true,
                  draw_.subEntityTraits().fillType() == AcGi::kAcGiFillAlways);
    return false;
}

Adesk::Boolean PictureGeometry::circle(const AcGePoint3d& p1, const AcGePoint3d& p2,
                                       const AcGePoint3d& p3) const {
    AcGePoint3d center;
    AcGeVector3d normal;
    if (!circleThrough(p1, p2, p3, center, normal)) return false;
    return circle(center, center.distanceTo(p1), normal);
}

Adesk::Boolean PictureGeometry::circularArc(const AcGePoint3d& center, double radius,
                                            const AcGeVector3d& normal,
                                            const AcGeVector3d& startVector, double sweepAngle,
                                            AcGi::ArcType arcType) const {
    std::vector<AcGePoint3d> points = arcPoints(center, radius, normal, startVector, sweepAngle);
    if (arcType == AcGi::kAcGiArcSector) points.push_back(center);
    bool closed = arcType != AcGi::kAcGiArcSimple;
    draw_.addPath(points, closed,
                  closed && draw_.subEntityTraits().fillType() == AcGi::kAcGiFillAlways);
    return false;
}

Adesk::Boolean PictureGeometry::circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                            const AcGePoint3d& end, AcGi::ArcType arcType) const {
    AcGePoint3d center;
    AcGeVector3d normal;
    if (!circleThrough(start, point, end, center, normal)) {   // in line: a straight path
        AcGePoint3d line[] = {start, end};
        return polyline(2, line, nullptr, -1);
    }
    double sweep = sweepBetween(start - center, end - center, normal);
    return circularArc(center, center.distanceTo(start), normal, start - center, sweep, arcType);
}

Adesk::Boolean PictureGeometry::polyline(Adesk::UInt32 nbPoints, const AcGePoint3d* pVertexList,
                                         const AcGeVector3d*, Adesk::LongPtr) const {
    if (nbPoints == 0 || !pVertexList) return false;
    draw_.addPath(std::vector<AcGePoint3d>(pVertexList, pVertexList + nbPoints), false, false);
    return false;
}

Adesk::Boolean PictureGeometry::polygon(Adesk::UInt32 nbPoints,
                                        const AcGePoint3d* pVertexList) const {
    if (nbPoints == 0 || !pVertexList) return false;
    draw_.addPath(std::vector<AcGePoint3d>(pVertexList, pVertexList + nbPoints), true,
                  draw_.subEntityTraits().fillType() == AcGi::kAcGiFillAlways);
    return false;
}

Adesk::Boolean PictureGeometry::pline(const AcDbPolyline& pl, Adesk::UInt32 fromIndex,
                                      Adesk::UInt32 numSegs) const {
    unsigned n = pl.numVerts();
    if (n == 0) return false;
    unsigned segments = pl.isClosed() ? n : n - 1;
    unsigned last = numSegs == 0 ? segments : std::min(segments, fromIndex + numSegs);
    bool flipped = pl.normal().z < 0;
    std::vector<AcGePoint3d> points;
    for (unsigned i = fromIndex; i < last || (points.empty() && i == fromIndex); ++i) {
        AcGePoint3d p0, p1;
        double bulge = 0;
        pl.getPointAt(i, p0);
        if (points.empty()) points.push_back(p0);
        if (i >= last) break;
        pl.getPointAt((i + 1) % n, p1);
        pl.getBulgeAt(i, bulge);
        AcGeVector3d chord = p1 - p0;
        double length = std::hypot(chord.x, chord.y);
        if (std::fabs(bulge) < 1e-12 || length == 0) {
            points.push_back(p1);
            continue;
        }
        // A bulge is tan(sweep/4); the centre is left of the chord for a positive sweep.
        double sweep = 4 * std::atan(flipped ? -bulge : bulge);
        double h = (length / 2) / std::tan(sweep / 2);
        AcGePoint3d mid(p0.x + chord.x / 2, p0.y + chord.y / 2, p0.z);
        AcGePoint3d c(mid.x - chord.y / length * h, mid.y + chord.x / length * h, p0.z);
        AcGeVector3d start = p0 - c;
        AcGeVector3d normal(0, 0, sweep < 0 ? -1 : 1);
        auto arc = arcPoints(c, start.length(), normal, start, std::fabs(sweep));
        points.insert(points.end(), arc.begin() + 1, arc.end());
    }
    draw_.addPath(points, false, false);
    return false;
}

Adesk::Boolean PictureGeometry::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                     const AcGeVector3d& direction, double height, double width,
                                     double oblique, const ACHAR* pMsg) const {
    if (!pMsg || !*pMsg) return false;
    AcGeVector3d up = unit(normal).crossProduct(unit(direction)) * height;
    AcGeVector3d dir = draw_.vectorToWorld(direction), upWorld = draw_.vectorToWorld(up);
    Text t;
    t.position = draw_.toWorld(position);
    t.angle = std::atan2(dir.y, dir.x);
    t.height = std::hypot(upWorld.x, upWorld.y);
    t.widthFactor = width > 0 ? width : 1.0;
    t.oblique = oblique;
    t.text = pMsg;
    t.color = draw_.currentColor();
    draw_.picture().add(std::move(t));
    return false;
}

Adesk::Boolean PictureGeometry::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                     const AcGeVector3d& direction, const ACHAR* pMsg,
                                     Adesk::Int32 length, Adesk::Boolean,
                                     const AcGiTextStyle& style) const {
    if (!pMsg) return false;
    std::wstring msg = length < 0 ? std::wstring(pMsg) : std::wstring(pMsg, static_cast<size_t>(length));
    return text(position, normal, direction, style.textSize(), style.xScale(),
                style.obliquingAngle(), msg.c_str());
}

Adesk::Boolean PictureGeometry::draw(AcGiDrawable* pDrawable) const {
    if (pDrawable) draw_.drawDrawable(*pDrawable);
    return false;
}

Adesk::Boolean PictureGeometry::pushModelTransform(const AcGeMatrix3d& xMat) {
    draw_.transforms().push_back(draw_.transforms().back() * xMat);
    return false;
}

Adesk::Boolean PictureGeometry::pushModelTransform(const AcGeVector3d& normal) {
    return pushModelTransform(AcGeMatrix3d::planeToWorld(normal));
}

Adesk::Boolean PictureGeometry::popModelTransform() {
    if (draw_.transforms().size() > 1) draw_.transforms().pop_back();
    return false;
}

AcGeMatrix3d PictureGeometry::getModelToWorldTransform() const { return draw_.transforms().back(); }
AcGeMatrix3d PictureGeometry::getWorldToModelTransform() const {
    return draw_.transforms().back().inverse();
}

}  // namespace kelvo::host::render
