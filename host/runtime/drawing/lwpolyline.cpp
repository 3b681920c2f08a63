// Lightweight polylines. Vertices are 2D points in the plane of the normal at the
// elevation; a segment with a bulge is an arc (bulge = tan of a quarter of its angle,
// positive counter-clockwise). The parameter of a point is its segment index plus the
// fraction of that segment.

#include <memory>

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbpl.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"

using namespace kelvo::drawing;

namespace {

struct Segment {
    AcGePoint2d a, b;
    double bulge;

    bool isArc() const { return std::fabs(bulge) > 1e-12 && a.distanceTo(b) > 0; }
    double angle() const { return 4 * std::atan(bulge); }
    double radius() const { return a.distanceTo(b) / (2 * std::fabs(std::sin(angle() / 2))); }
    // The centre lies on the chord's left for a counter-clockwise arc under half a turn.
    AcGePoint2d center() const {
        AcGeVector2d chord = b - a;
        double c = chord.length();
        AcGeVector2d left(-chord.y / c, chord.x / c);
        AcGePoint2d mid(a.x + chord.x / 2, a.y + chord.y / 2);
        return mid + left * ((c / 2) / std::tan(angle() / 2));
    }
    double length() const { return isArc() ? radius() * std::fabs(angle()) : a.distanceTo(b); }
    AcGePoint2d at(double f) const {
        if (!isArc()) return a + (b - a) * f;
        AcGePoint2d c = center();
        double start = std::atan2(a.y - c.y, a.x - c.x) + angle() * f;
        return AcGePoint2d(c.x + radius() * std::cos(start), c.y + radius() * std::sin(start));
    }
};

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve)

AcDbPolyline::AcDbPolyline() = default;
AcDbPolyline::AcDbPolyline(unsigned int numVerts) {
    vertices_.reserve(numVerts);
}
AcDbPolyline::~AcDbPolyline() = default;

unsigned int AcDbPolyline::numVerts() const {
    return static_cast<unsigned>(vertices_.size());
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge,
                                            double startWidth, double endWidth) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index > vertices_.size()) return Acad::eInvalidIndex;
    Vertex v{pt, bulge, startWidth < 0 ? constantWidth_ : startWidth,
             endWidth < 0 ? constantWidth_ : endWidth};
    vertices_.insert(vertices_.begin() + index, v);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    vertices_.erase(vertices_.begin() + index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& pt) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    pt = vertices_[index].point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& pt) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    const AcGePoint2d& p = vertices_[index].point;
    pt = ocsToWcs(AcGePoint3d(p.x, p.y, elevation_), normal_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& pt) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    vertices_[index].point = pt;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    bulge = vertices_[index].bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    vertices_[index].bulge = bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& s, double& e) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    s = vertices_[index].startWidth;
    e = vertices_[index].endWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double s, double e) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    if (s < 0 || e < 0) return Acad::eNegativeValueNotAllowed;
    vertices_[index].startWidth = s;
    vertices_[index].endWidth = e;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
    for (const Vertex& v : vertices_)
        if (v.startWidth != vertices_[0].startWidth || v.endWidth != vertices_[0].startWidth)
            return Acad::eNotApplicable;
    width = vertices_.empty() ? constantWidth_ : vertices_[0].startWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (width < 0) return Acad::eNegativeValueNotAllowed;
    constantWidth_ = width;
    for (Vertex& v : vertices_) v.startWidth = v.endWidth = width;
    return Acad::eOk;
}

bool AcDbPolyline::hasBulges() const {
    for (const Vertex& v : vertices_)
        if (v.bulge != 0) return true;
    return false;
}
bool AcDbPolyline::hasWidth() const {
    for (const Vertex& v : vertices_)
        if (v.startWidth != 0 || v.endWidth != 0) return true;
    return false;
}
void AcDbPolyline::setClosed(Adesk::Boolean closed) {
    closed_ = closed;
}
Adesk::Boolean AcDbPolyline::closed() const {
    return closed_;
}
void AcDbPolyline::setPlinegen(Adesk::Boolean plinegen) {
    plinegen_ = plinegen;
}
Adesk::Boolean AcDbPolyline::hasPlinegen() const {
    return plinegen_;
}
double AcDbPolyline::elevation() const {
    return elevation_;
}
void AcDbPolyline::setElevation(double elevation) {
    elevation_ = elevation;
}
double AcDbPolyline::thickness() const {
    return thickness_;
}
Acad::ErrorStatus AcDbPolyline::setThickness(double t) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    thickness_ = t;
    return Acad::eOk;
}
AcGeVector3d AcDbPolyline::normal() const {
    return normal_;
}
Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    normal_ = n.normal();
    return Acad::eOk;
}
bool AcDbPolyline::isOnlyLines() const {
    return !hasBulges();
}
void AcDbPolyline::reset(Adesk::Boolean reuse, unsigned int numVerts) {
    if (!reuse)
        vertices_.clear();
    else if (numVerts < vertices_.size())
        vertices_.resize(numVerts);
}

// --- curve queries -----------------------------------------------------------------------

namespace {

std::vector<Segment> segmentsOf(const AcDbPolyline& pl) {
    std::vector<Segment> out;
    unsigned n = pl.numVerts();
    unsigned count = pl.closed() ? n : (n > 0 ? n - 1 : 0);
    for (unsigned i = 0; i < count && n > 1; ++i) {
        AcGePoint2d a, b;
        double bulge = 0;
        pl.getPointAt(i, a);
        pl.getPointAt((i + 1) % n, b);
        pl.getBulgeAt(i, bulge);
        out.push_back({a, b, bulge});
    }
    return out;
}

}  // namespace

Adesk::Boolean AcDbPolyline::isClosed() const {
    return closed_;
}
Adesk::Boolean AcDbPolyline::isPlanar() const {
    return true;
}
Acad::ErrorStatus AcDbPolyline::getStartParam(double& p) const {
    p = 0;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getEndParam(double& p) const {
    if (vertices_.empty()) return Acad::eDegenerateGeometry;
    p = static_cast<double>(segmentsOf(*this).size());
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getStartPoint(AcGePoint3d& p) const {
    return getPointAtParam(0, p);
}
Acad::ErrorStatus AcDbPolyline::getEndPoint(AcGePoint3d& p) const {
    double end = 0;
    Acad::ErrorStatus es = getEndParam(end);
    return es != Acad::eOk ? es : getPointAtParam(end, p);
}

Acad::ErrorStatus AcDbPolyline::getPointAtParam(double param, AcGePoint3d& point) const {
    if (vertices_.empty()) return Acad::eDegenerateGeometry;
    auto segs = segmentsOf(*this);
    if (param < -1e-10 || param > segs.size() + 1e-10) return Acad::eInvalidInput;
    AcGePoint2d p = vertices_[0].point;
    if (!segs.empty()) {
        std::size_t i =
            std::min(static_cast<std::size_t>(std::max(0.0, std::floor(param))), segs.size() - 1);
        p = segs[i].at(std::clamp(param - static_cast<double>(i), 0.0, 1.0));
    }
    point = ocsToWcs(AcGePoint3d(p.x, p.y, elevation_), normal_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    AcGePoint3d local = wcsToOcs(point, normal_);
    auto segs = segmentsOf(*this);
    for (std::size_t i = 0; i < segs.size(); ++i) {
        const int steps = segs[i].isArc() ? 256 : 1;
        for (int k = 0; k < steps; ++k) {
            AcGePoint2d a = segs[i].at(double(k) / steps), b = segs[i].at(double(k + 1) / steps);
            AcGePoint3d on = closestOnSegment(AcGePoint3d(a.x, a.y, 0), AcGePoint3d(b.x, b.y, 0),
                                              AcGePoint3d(local.x, local.y, 0));
            if (on.distanceTo(AcGePoint3d(local.x, local.y, 0)) < 1e-6) {
                double f = a.distanceTo(b) > 0
                               ? on.distanceTo(AcGePoint3d(a.x, a.y, 0)) / a.distanceTo(b)
                               : 0;
                param = static_cast<double>(i) + (k + f) / steps;
                return Acad::eOk;
            }
        }
    }
    return Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbPolyline::getDistAtParam(double param, double& dist) const {
    auto segs = segmentsOf(*this);
    if (param < -1e-10 || param > segs.size() + 1e-10) return Acad::eInvalidInput;
    dist = 0;
    for (std::size_t i = 0; i < segs.size() && param > static_cast<double>(i); ++i)
        dist += segs[i].length() * std::min(1.0, param - static_cast<double>(i));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getParamAtDist(double dist, double& param) const {
    auto segs = segmentsOf(*this);
    if (dist < -1e-10) return Acad::eInvalidInput;
    double done = 0;
    for (std::size_t i = 0; i < segs.size(); ++i) {
        double len = segs[i].length();
        if (dist <= done + len + 1e-10) {
            param = static_cast<double>(i) + (len > 0 ? std::min(1.0, (dist - done) / len) : 0);
            return Acad::eOk;
        }
        done += len;
    }
    return Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbPolyline::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es != Acad::eOk ? es : getDistAtParam(param, dist);
}

Acad::ErrorStatus AcDbPolyline::getPointAtDist(double dist, AcGePoint3d& point) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtDist(dist, param);
    return es != Acad::eOk ? es : getPointAtParam(param, point);
}

Acad::ErrorStatus AcDbPolyline::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& on,
                                                  Adesk::Boolean) const {
    if (vertices_.empty()) return Acad::eDegenerateGeometry;
    AcGePoint3d local = wcsToOcs(given, normal_);
    AcGePoint3d target(local.x, local.y, 0);
    AcGePoint3d best(vertices_[0].point.x, vertices_[0].point.y, 0);
    auto consider = [&](const AcGePoint3d& p) {
        if (p.distanceTo(target) < best.distanceTo(target)) best = p;
    };
    for (const Segment& s : segmentsOf(*this)) {
        if (!s.isArc()) {
            consider(closestOnSegment(AcGePoint3d(s.a.x, s.a.y, 0), AcGePoint3d(s.b.x, s.b.y, 0),
                                      target));
            continue;
        }
        // On the arc where the direction from its centre falls within the sweep, else an end.
        consider(AcGePoint3d(s.a.x, s.a.y, 0));
        consider(AcGePoint3d(s.b.x, s.b.y, 0));
        AcGePoint2d c = s.center();
        AcGeVector2d toTarget(target.x - c.x, target.y - c.y);
        if (toTarget.length() == 0) continue;
        double start = std::atan2(s.a.y - c.y, s.a.x - c.x);
        double direction = std::atan2(toTarget.y, toTarget.x);
        double sweep = s.angle();
        double along =
            sweep > 0 ? normalizeAngle(direction - start) : normalizeAngle(start - direction);
        if (along <= std::fabs(sweep)) {
            AcGePoint2d p = s.at(along / std::fabs(sweep));
            consider(AcGePoint3d(p.x, p.y, 0));
        }
    }
    on = ocsToWcs(AcGePoint3d(best.x, best.y, elevation_), normal_);
    return Acad::eOk;
}

// The shoelace area of the vertices plus the circular segments of the bulges.
Acad::ErrorStatus AcDbPolyline::getArea(double& area) const {
    double sum = 0;
    std::size_t n = vertices_.size();
    for (std::size_t i = 0; i < n; ++i) {
        const AcGePoint2d& a = vertices_[i].point;
        const AcGePoint2d& b = vertices_[(i + 1) % n].point;
        sum += a.x * b.y - b.x * a.y;
    }
    double arcs = 0;
    for (const Segment& s : segmentsOf(*this))
        if (s.isArc()) {
            double r = s.radius(), t = s.angle();
            arcs += (t > 0 ? 1 : -1) * 0.5 * r * r * (std::fabs(t) - std::sin(std::fabs(t)));
        }
    area = std::fabs(sum / 2 + arcs);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::reverseCurve() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    std::size_t n = vertices_.size();
    if (n < 2) return Acad::eOk;
    std::vector<Vertex> out(n);
    std::size_t segCount = closed_ ? n : n - 1;
    for (std::size_t i = 0; i < n; ++i) out[i].point = vertices_[n - 1 - i].point;
    for (std::size_t i = 0; i < segCount; ++i) {
        const Vertex& from = vertices_[(n - 2 - i + n) % n];
        out[i].bulge = -from.bulge;
        out[i].startWidth = from.endWidth;
        out[i].endWidth = from.startWidth;
    }
    if (closed_) {
        const Vertex& last = vertices_[n - 1];
        out[n - 1].bulge = -last.bulge;
        out[n - 1].startWidth = last.endWidth;
        out[n - 1].endWidth = last.startWidth;
    }
    vertices_ = out;
    return Acad::eOk;
}

// --- drawing and editing -----------------------------------------------------------------

Adesk::Boolean AcDbPolyline::subWorldDraw(AcGiWorldDraw* wd) {
    if (vertices_.empty()) return true;
    if (hasBulges() || hasWidth()) {
        wd->geometry().pline(*this);
        return true;
    }
    std::vector<AcGePoint3d> pts;
    for (unsigned i = 0; i < numVerts(); ++i) {
        AcGePoint3d p;
        getPointAt(i, p);
        pts.push_back(p);
    }
    if (closed_ && pts.size() > 2) pts.push_back(pts.front());
    wd->geometry().polyline(static_cast<Adesk::UInt32>(pts.size()), pts.data());
    return true;
}

void AcDbPolyline::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"                  %s\n", closed_ ? L"Closed" : L"Open");
    for (unsigned i = 0; i < numVerts(); ++i) {
        AcGePoint3d p;
        getPointAt(i, p);
        acutPrintf(L"              at point  X=%10.4f  Y=%10.4f  Z=%10.4f\n", p.x, p.y, p.z);
    }
}

Acad::ErrorStatus AcDbPolyline::subExplode(AcDbVoidPtrArray& entitySet) const {
    for (const Segment& s : segmentsOf(*this)) {
        AcDbEntity* part = nullptr;
        if (s.isArc()) {
            AcGePoint2d c = s.center();
            double a0 = std::atan2(s.a.y - c.y, s.a.x - c.x);
            double a1 = std::atan2(s.b.y - c.y, s.b.x - c.x);
            if (s.bulge < 0) std::swap(a0, a1);
            part = new AcDbArc(ocsToWcs(AcGePoint3d(c.x, c.y, elevation_), normal_), normal_,
                               s.radius(), a0, a1);
        } else {
            part = new AcDbLine(ocsToWcs(AcGePoint3d(s.a.x, s.a.y, elevation_), normal_),
                                ocsToWcs(AcGePoint3d(s.b.x, s.b.y, elevation_), normal_));
        }
        part->setPropertiesFrom(this);
        entitySet.append(part);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                                  const AcGePoint3d& pick, const AcGePoint3d&,
                                                  const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                                  AcDbIntArray&) const {
    auto segs = segmentsOf(*this);
    auto world = [&](const AcGePoint2d& p) {
        return ocsToWcs(AcGePoint3d(p.x, p.y, elevation_), normal_);
    };
    if (mode == AcDb::kOsModeEnd)
        for (const Vertex& v : vertices_) snaps.append(world(v.point));
    if (mode == AcDb::kOsModeMid)
        for (const Segment& s : segs) snaps.append(world(s.at(0.5)));
    if (mode == AcDb::kOsModeCen)
        for (const Segment& s : segs)
            if (s.isArc()) snaps.append(world(s.center()));
    if (mode == AcDb::kOsModeNear) {
        AcGePoint3d on;
        if (getClosestPointTo(pick, on) == Acad::eOk) snaps.append(on);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                                 AcDbIntArray&) const {
    for (unsigned i = 0; i < numVerts(); ++i) {
        AcGePoint3d p;
        getPointAt(i, p);
        grips.append(p);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                    const AcGeVector3d& offset) {
    AcGeVector3d local = offset;
    local.transformBy(AcGeMatrix3d::worldToPlane(normal_));
    std::vector<bool> moved(vertices_.size(), false);
    for (int i : indices)
        if (i >= 0 && i < static_cast<int>(vertices_.size()) && !moved[i]) {
            vertices_[i].point = vertices_[i].point + AcGeVector2d(local.x, local.y);
            moved[i] = true;
        }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& xform) {
    // An arc segment scaled unevenly is no longer an arc.
    if (hasBulges() && !xform.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal_);
    AcGeVector3d n = transformNormal(normal_, xform);
    AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(n);
    double scale = xform.scale();
    bool mirrored = xform.det() < 0;
    for (std::size_t i = 0; i < vertices_.size(); ++i) {
        Vertex& v = vertices_[i];
        AcGePoint3d p =
            toPlane * (xform * (toWorld * AcGePoint3d(v.point.x, v.point.y, elevation_)));
        v.point = AcGePoint2d(p.x, p.y);
        if (i == 0) elevation_ = p.z;
        v.startWidth *= scale;
        v.endWidth *= scale;
        if (mirrored) v.bulge = -v.bulge;
    }
    constantWidth_ *= scale;
    normal_ = n;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    if (vertices_.empty()) return Acad::eInvalidExtents;
    extents = AcDbExtents();
    auto world = [&](const AcGePoint2d& p) {
        return ocsToWcs(AcGePoint3d(p.x, p.y, elevation_), normal_);
    };
    for (const Vertex& v : vertices_) extents.addPoint(world(v.point));
    for (const Segment& s : segmentsOf(*this))
        if (s.isArc())
            for (int k = 1; k < 64; ++k) extents.addPoint(world(s.at(k / 64.0)));
    return Acad::eOk;
}

// --- filing ------------------------------------------------------------------------------

Acad::ErrorStatus AcDbPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeBool(closed_);
    filer->writeBool(plinegen_);
    filer->writeDouble(constantWidth_);
    filer->writeDouble(elevation_);
    filer->writeDouble(thickness_);
    filer->writeVector3d(normal_);
    filer->writeInt32(static_cast<Adesk::Int32>(vertices_.size()));
    for (const Vertex& v : vertices_) {
        filer->writePoint2d(v.point);
        filer->writeDouble(v.bulge);
        filer->writeDouble(v.startWidth);
        filer->writeDouble(v.endWidth);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int32 n = 0;
    filer->readBool(&closed_);
    filer->readBool(&plinegen_);
    filer->readDouble(&constantWidth_);
    filer->readDouble(&elevation_);
    filer->readDouble(&thickness_);
    filer->readVector3d(&normal_);
    filer->readInt32(&n);
    vertices_.clear();
    for (Adesk::Int32 i = 0; i < n && filer->filerStatus() == Acad::eOk; ++i) {
        Vertex v;
        filer->readPoint2d(&v.point);
        filer->readDouble(&v.bulge);
        filer->readDouble(&v.startWidth);
        filer->readDouble(&v.endWidth);
        vertices_.push_back(v);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbPolyline");
    filer->writeInt32(AcDb::kDxfInt32, static_cast<Adesk::Int32>(vertices_.size()));
    filer->writeInt16(AcDb::kDxfInt16,
                      static_cast<Adesk::Int16>((closed_ ? 1 : 0) | (plinegen_ ? 128 : 0)));
    double width = 0;
    bool constant = getConstantWidth(width) == Acad::eOk;
    filer->writeDouble(static_cast<AcDb::DxfCode>(43), constant ? width : 0.0);
    if (elevation_ != 0) filer->writeDouble(AcDb::kDxfElevation, elevation_);
    if (thickness_ != 0) filer->writeDouble(AcDb::kDxfThickness, thickness_);
    // Files give a vertex its widths only when they vary; entity lists always give them.
    const bool vertexWidths = !constant || filer->filerType() != AcDb::kFileFiler;
    for (const Vertex& v : vertices_) {
        filer->writePoint2d(AcDb::kDxfXCoord, v.point);
        if (vertexWidths) {
            filer->writeDouble(AcDb::kDxfReal, v.startWidth);
            filer->writeDouble(AcDb::kDxfTxtStyleXScale, v.endWidth);
        }
        filer->writeDouble(AcDb::kDxfTxtStylePSize, v.bulge);
    }
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbPolyline")) return Acad::eOk;
    std::vector<Vertex> read;
    bool sawVertex = false;
    double width = -1;
    bool vertexWidths = false;  // widths per vertex win over the constant width
    es = readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 10: {
                AcGePoint3d p = item.point();
                read.push_back({AcGePoint2d(p.x, p.y), 0, 0, 0});
                sawVertex = true;
                break;
            }
            case 40:
                if (!read.empty()) read.back().startWidth = item.real();
                vertexWidths = vertexWidths || item.real() != 0;
                break;
            case 41:
                if (!read.empty()) read.back().endWidth = item.real();
                vertexWidths = vertexWidths || item.real() != 0;
                break;
            case 42:
                if (!read.empty()) read.back().bulge = item.real();
                break;
            case 43:
                width = item.real();
                break;
            case 70:
                closed_ = item.integer() & 1;
                plinegen_ = (item.integer() & 128) != 0;
                break;
            case 38:
                elevation_ = item.real();
                break;
            case 39:
                thickness_ = item.real();
                break;
            case 210:
                normal_ = item.point().asVector().normal();
                break;
            default:
                break;
        }
    });
    if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
    if (width > 0 && !vertexWidths) {
        constantWidth_ = width;
        for (Vertex& v : read) v.startWidth = v.endWidth = width;
    }
    if (sawVertex) vertices_ = read;
    return es;
}
