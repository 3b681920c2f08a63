// 2D polylines and their vertices. Vertex positions are in the polyline's object
// coordinates (Z = elevation).

#include <memory>

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbpl.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"

using namespace kelvo::drawing;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbVertex, AcDbEntity)
AcDbVertex::AcDbVertex() = default;
AcDbVertex::~AcDbVertex() = default;
Adesk::Boolean AcDbVertex::subWorldDraw(AcGiWorldDraw*) {
    return true;
}

ACRX_NO_CONS_DEFINE_MEMBERS(AcDb2dVertex, AcDbVertex)

AcDb2dVertex::AcDb2dVertex() = default;
AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth,
                           double endWidth, double tangent)
    : position_(position),
      startWidth_(startWidth),
      endWidth_(endWidth),
      bulge_(bulge),
      tangent_(tangent) {}
AcDb2dVertex::~AcDb2dVertex() = default;

AcDb::Vertex2dType AcDb2dVertex::vertexType() const {
    if (flags_ & 16) return AcDb::k2dSplineCtlVertex;
    if (flags_ & 8) return AcDb::k2dSplineFitVertex;
    if (flags_ & 1) return AcDb::k2dCurveFitVertex;
    return AcDb::k2dVertex;
}
AcGePoint3d AcDb2dVertex::position() const {
    return position_;
}
double AcDb2dVertex::startWidth() const {
    return startWidth_;
}
double AcDb2dVertex::endWidth() const {
    return endWidth_;
}
double AcDb2dVertex::bulge() const {
    return bulge_;
}
bool AcDb2dVertex::isTangentUsed() const {
    return (flags_ & 2) != 0;
}
double AcDb2dVertex::tangent() const {
    return tangent_;
}

#define KELVO_VERTEX_SETTER(NAME, MEMBER, TYPE)               \
    Acad::ErrorStatus AcDb2dVertex::NAME(TYPE v) {            \
        if (!isWriteEnabled()) return Acad::eNotOpenForWrite; \
        MEMBER = v;                                           \
        return Acad::eOk;                                     \
    }
KELVO_VERTEX_SETTER(setPosition, position_, const AcGePoint3d&)
KELVO_VERTEX_SETTER(setStartWidth, startWidth_, double)
KELVO_VERTEX_SETTER(setEndWidth, endWidth_, double)
KELVO_VERTEX_SETTER(setBulge, bulge_, double)
#undef KELVO_VERTEX_SETTER
Acad::ErrorStatus AcDb2dVertex::setTangent(double t) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    tangent_ = t;
    flags_ |= 2;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dVertex::subTransformBy(const AcGeMatrix3d& xform) {
    position_.transformBy(xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dVertex::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbVertex::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writePoint3d(position_);
    filer->writeDouble(startWidth_);
    filer->writeDouble(endWidth_);
    filer->writeDouble(bulge_);
    filer->writeDouble(tangent_);
    filer->writeInt16(flags_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dVertex::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbVertex::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    filer->readPoint3d(&position_);
    filer->readDouble(&startWidth_);
    filer->readDouble(&endWidth_);
    filer->readDouble(&bulge_);
    filer->readDouble(&tangent_);
    filer->readInt16(&flags_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbVertex::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbVertex");
    filer->writeString(AcDb::kDxfSubclass, L"AcDb2dVertex");
    filer->writePoint3d(AcDb::kDxfXCoord, position_);
    // A vertex without widths of its own takes its polyline's default widths: in files
    // only widths that differ from those are written.
    double defaultStart = 0, defaultEnd = 0;
    if (auto* pl = filer->includesDefaultValues() ? AcDb2dPolyline::cast(peekObject(ownerId()))
                                                  : nullptr) {
        defaultStart = pl->defaultStartWidth();
        defaultEnd = pl->defaultEndWidth();
    }
    if (startWidth_ != defaultStart) filer->writeDouble(AcDb::kDxfReal, startWidth_);
    if (endWidth_ != defaultEnd) filer->writeDouble(AcDb::kDxfTxtStyleXScale, endWidth_);
    if (bulge_ != 0) filer->writeDouble(AcDb::kDxfTxtStylePSize, bulge_);
    filer->writeInt16(AcDb::kDxfInt16, flags_);
    if (isTangentUsed()) filer->writeDouble(AcDb::kDxfAngle, tangent_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dVertex::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbVertex::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    filer->atSubclassData(L"AcDbVertex");
    if (!filer->atSubclassData(L"AcDb2dVertex")) return Acad::eOk;
    if (!filer->isModifyingExistingObject())
        if (auto* pl = AcDb2dPolyline::cast(peekObject(ownerId()))) {
            startWidth_ = pl->defaultStartWidth();
            endWidth_ = pl->defaultEndWidth();
        }
    return readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 10:
                position_ = item.point();
                break;
            case 40:
                startWidth_ = item.real();
                break;
            case 41:
                endWidth_ = item.real();
                break;
            case 42:
                bulge_ = item.real();
                break;
            case 50:
                tangent_ = item.real();
                break;
            case 70:
                flags_ = static_cast<Adesk::Int16>(item.integer());
                break;
            default:
                break;
        }
    });
}

// --- the polyline --------------------------------------------------------------------------

namespace {

struct PlineVertex {
    AcGePoint3d position;  // object coordinates
    double bulge, startWidth, endWidth;
};

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve)

AcDb2dPolyline::AcDb2dPolyline() = default;
AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices,
                               double elevation, Adesk::Boolean closed, double defStartWidth,
                               double defEndWidth, const AcGeDoubleArray* bulges)
    : type_(type),
      flags_(closed ? 1 : 0),
      startWidth_(defStartWidth),
      endWidth_(defEndWidth),
      elevation_(elevation) {
    for (int i = 0; i < vertices.length(); ++i) {
        AcGePoint3d p(vertices[i].x, vertices[i].y, elevation);
        double bulge = bulges && i < bulges->length() ? (*bulges)[i] : 0.0;
        pendingVertices_.append(new AcDb2dVertex(p, bulge, defStartWidth, defEndWidth));
    }
}
AcDb2dPolyline::~AcDb2dPolyline() {
    for (AcDb2dVertex* v : pendingVertices_) delete v;
}

AcDb::Poly2dType AcDb2dPolyline::polyType() const {
    return type_;
}
Acad::ErrorStatus AcDb2dPolyline::setPolyType(AcDb::Poly2dType t) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    type_ = t;
    return Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::makeClosed() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    flags_ |= 1;
    return Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::makeOpen() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    flags_ &= ~1;
    return Acad::eOk;
}
double AcDb2dPolyline::defaultStartWidth() const {
    return startWidth_;
}
double AcDb2dPolyline::defaultEndWidth() const {
    return endWidth_;
}
double AcDb2dPolyline::elevation() const {
    return elevation_;
}
double AcDb2dPolyline::thickness() const {
    return thickness_;
}
AcGeVector3d AcDb2dPolyline::normal() const {
    return normal_;
}
#define KELVO_PLINE_SETTER(NAME, MEMBER)                      \
    Acad::ErrorStatus AcDb2dPolyline::NAME(double v) {        \
        if (!isWriteEnabled()) return Acad::eNotOpenForWrite; \
        MEMBER = v;                                           \
        return Acad::eOk;                                     \
    }
KELVO_PLINE_SETTER(setDefaultStartWidth, startWidth_)
KELVO_PLINE_SETTER(setDefaultEndWidth, endWidth_)
KELVO_PLINE_SETTER(setElevation, elevation_)
KELVO_PLINE_SETTER(setThickness, thickness_)
#undef KELVO_PLINE_SETTER
Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    normal_ = n.normal();
    return Acad::eOk;
}
bool AcDb2dPolyline::isLinetypeGenerationOn() const {
    return (flags_ & 128) != 0;
}
Acad::ErrorStatus AcDb2dPolyline::setLinetypeGenerationOn() {
    flags_ |= 128;
    return Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::setLinetypeGenerationOff() {
    flags_ &= ~128;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* pVertex) {
    AcDbObjectId id;
    return appendVertex(id, pVertex);
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& vertexId, AcDb2dVertex* pVertex) {
    vertexId.setNull();
    if (!pVertex) return Acad::eNullObjectPointer;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!pVertex->objectId().isNull()) return Acad::eAlreadyInDb;
    if (!database()) {
        pendingVertices_.append(pVertex);
        return Acad::eOk;
    }
    Acad::ErrorStatus es = addObject(*database(), pVertex, vertexId);
    if (es != Acad::eOk) return es;
    ObjectAccess::setOwner(*pVertex, objectId());
    if (pVertex->layerId().isNull()) pVertex->setPropertiesFrom(this);
    vertices_.append(vertexId);
    if (seqend_.isNull()) {
        auto* end = new AcDbSequenceEnd();
        end->setPropertiesFrom(this);
        addObject(*database(), end, seqend_);
        ObjectAccess::setOwner(*end, objectId());
        end->close();
    }
    return Acad::eOk;
}

AcDbObjectIterator* AcDb2dPolyline::vertexIterator() const {
    return newIdIterator(vertices_);
}
AcDbObjectIdArray AcDb2dPolyline::vertexIds() const {
    return vertices_;
}
AcDbObjectId AcDb2dPolyline::seqendId() const {
    return seqend_;
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    AcGePoint3d p = vertex.position();
    return ocsToWcs(AcGePoint3d(p.x, p.y, elevation_), normal_);
}

namespace {

std::vector<PlineVertex> collect(const AcDbObjectIdArray& ids,
                                 const AcArray<AcDb2dVertex*>& pending) {
    std::vector<PlineVertex> out;
    auto add = [&](const AcDb2dVertex* v) {
        if (v && !v->isErased() && v->vertexType() != AcDb::k2dSplineCtlVertex)
            out.push_back({v->position(), v->bulge(), v->startWidth(), v->endWidth()});
    };
    for (AcDbObjectId id : ids) add(AcDb2dVertex::cast(peekObject(id)));
    for (const AcDb2dVertex* v : pending) add(v);
    return out;
}

}  // namespace

// The polyline as a lightweight polyline (what drawing, length and explode work on).
static AcDbPolyline* asLightweight(const AcDb2dPolyline& p, const std::vector<PlineVertex>& vs) {
    auto* pl = new AcDbPolyline();
    for (std::size_t i = 0; i < vs.size(); ++i)
        pl->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(vs[i].position.x, vs[i].position.y),
                        vs[i].bulge, vs[i].startWidth, vs[i].endWidth);
    pl->setClosed(p.isClosed());
    pl->setElevation(p.elevation());
    pl->setNormal(p.normal());
    pl->setThickness(p.thickness());
    pl->setPropertiesFrom(&p);
    return pl;
}

#define KELVO_VIA_LW(CALL)                                                                        \
    std::unique_ptr<AcDbPolyline> pl(asLightweight(*this, collect(vertices_, pendingVertices_))); \
    return pl->CALL;

Adesk::Boolean AcDb2dPolyline::isClosed() const {
    return (flags_ & 1) != 0;
}
Adesk::Boolean AcDb2dPolyline::isPlanar() const {
    return true;
}
Acad::ErrorStatus AcDb2dPolyline::getStartParam(double& p) const {
    p = 0;
    return Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::getEndParam(double& p) const {KELVO_VIA_LW(
    getEndParam(p))} Acad::ErrorStatus AcDb2dPolyline::getStartPoint(AcGePoint3d& p) const {
    KELVO_VIA_LW(getStartPoint(p))} Acad::ErrorStatus AcDb2dPolyline::getEndPoint(AcGePoint3d& p)
    const {KELVO_VIA_LW(getEndPoint(p))} Acad::ErrorStatus AcDb2dPolyline::getPointAtParam(
        double t, AcGePoint3d& p) const {KELVO_VIA_LW(getPointAtParam(t, p))} Acad::ErrorStatus
    AcDb2dPolyline::getDistAtParam(double t, double& d) const {KELVO_VIA_LW(getDistAtParam(
        t, d))} Acad::ErrorStatus AcDb2dPolyline::getParamAtDist(double d, double& t) const {
        KELVO_VIA_LW(getParamAtDist(d, t))} Acad::ErrorStatus
    AcDb2dPolyline::getPointAtDist(double d, AcGePoint3d& p) const {
        KELVO_VIA_LW(getPointAtDist(d, p))} Acad::ErrorStatus
    AcDb2dPolyline::getArea(double& a) const {KELVO_VIA_LW(getArea(a))}

Adesk::Boolean AcDb2dPolyline::subWorldDraw(AcGiWorldDraw* wd) {
    std::unique_ptr<AcDbPolyline> pl(asLightweight(*this, collect(vertices_, pendingVertices_)));
    return pl->worldDraw(wd);
}

void AcDb2dPolyline::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"                  %s\n", isClosed() ? L"Closed" : L"Open");
    for (const PlineVertex& v : collect(vertices_, pendingVertices_)) {
        AcGePoint3d p = ocsToWcs(AcGePoint3d(v.position.x, v.position.y, elevation_), normal_);
        acutPrintf(L"                  VERTEX  X=%10.4f  Y=%10.4f  Z=%10.4f\n", p.x, p.y, p.z);
    }
}

Acad::ErrorStatus AcDb2dPolyline::subExplode(AcDbVoidPtrArray& entitySet) const {
    std::unique_ptr<AcDbPolyline> pl(asLightweight(*this, collect(vertices_, pendingVertices_)));
    return pl->explode(entitySet);
}

Acad::ErrorStatus AcDb2dPolyline::subGetOsnapPoints(
    AcDb::OsnapMode mode, Adesk::GsMarker m, const AcGePoint3d& pick, const AcGePoint3d& last,
    const AcGeMatrix3d& view, AcGePoint3dArray& snaps,
    AcDbIntArray& ids) const {KELVO_VIA_LW(getOsnapPoints(mode, m, pick, last, view, snaps, ids))}

Acad::ErrorStatus AcDb2dPolyline::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                                   AcDbIntArray&) const {
    for (const PlineVertex& v : collect(vertices_, pendingVertices_))
        grips.append(ocsToWcs(AcGePoint3d(v.position.x, v.position.y, elevation_), normal_));
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                      const AcGeVector3d& offset) {
    AcGeVector3d local = offset;
    local.transformBy(AcGeMatrix3d::worldToPlane(normal_));
    local.z = 0;
    int i = 0;
    std::vector<bool> moved(vertices_.length() + pendingVertices_.length(), false);
    auto move = [&](AcDb2dVertex* v) {
        if (indices.contains(i) && !moved[i]) {
            bool was = ObjectAccess::writer(*v);
            ObjectAccess::writerRef(*v) = true;
            v->setPosition(v->position() + local);
            ObjectAccess::writerRef(*v) = was;
            moved[i] = true;
        }
        ++i;
    };
    for (AcDbObjectId id : vertices_)
        if (auto* v = AcDb2dVertex::cast(peekObject(id)); v && !v->isErased()) move(v);
    for (AcDb2dVertex* v : pendingVertices_) move(v);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& xform) {
    // An arc segment scaled unevenly is no longer an arc.
    if (!xform.isUniScaledOrtho()) {
        auto bulged = [](const AcDb2dVertex* v) { return v && v->bulge() != 0; };
        for (AcDbObjectId id : vertices_)
            if (bulged(AcDb2dVertex::cast(peekObject(id)))) return Acad::eCannotScaleNonUniformly;
        for (const AcDb2dVertex* v : pendingVertices_)
            if (bulged(v)) return Acad::eCannotScaleNonUniformly;
    }
    AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal_);
    AcGeVector3d n = transformNormal(normal_, xform);
    AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(n);
    double newElevation = elevation_;
    bool first = true;
    auto move = [&](AcDb2dVertex* v) {
        AcGePoint3d p =
            toPlane *
            (xform * (toWorld * AcGePoint3d(v->position().x, v->position().y, elevation_)));
        if (first) newElevation = p.z;
        first = false;
        bool was = ObjectAccess::writer(*v);
        ObjectAccess::writerRef(*v) = true;
        v->setPosition(AcGePoint3d(p.x, p.y, 0));
        v->setStartWidth(v->startWidth() * xform.scale());
        v->setEndWidth(v->endWidth() * xform.scale());
        if (xform.det() < 0) v->setBulge(-v->bulge());
        ObjectAccess::writerRef(*v) = was;
    };
    for (AcDbObjectId id : vertices_)
        if (auto* v = AcDb2dVertex::cast(peekObject(id))) move(v);
    for (AcDb2dVertex* v : pendingVertices_) move(v);
    normal_ = n;
    elevation_ = newElevation;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    return AcDbEntity::subGetGeomExtents(extents);
}

Acad::ErrorStatus AcDb2dPolyline::subErase(Adesk::Boolean erasing) {
    for (AcDbObjectId id : vertices_)
        if (AcDbObject* o = peekObject(id)) ObjectAccess::setErased(*o, erasing);
    if (AcDbObject* o = peekObject(seqend_)) ObjectAccess::setErased(*o, erasing);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeInt16(static_cast<Adesk::Int16>(type_));
    filer->writeInt16(flags_);
    filer->writeDouble(startWidth_);
    filer->writeDouble(endWidth_);
    filer->writeDouble(elevation_);
    filer->writeDouble(thickness_);
    filer->writeVector3d(normal_);
    filer->writeInt32(vertices_.length());
    for (AcDbObjectId id : vertices_) filer->writeHardOwnershipId(id);
    filer->writeHardOwnershipId(seqend_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int16 type = 0;
    Adesk::Int32 n = 0;
    filer->readInt16(&type);
    filer->readInt16(&flags_);
    filer->readDouble(&startWidth_);
    filer->readDouble(&endWidth_);
    filer->readDouble(&elevation_);
    filer->readDouble(&thickness_);
    filer->readVector3d(&normal_);
    filer->readInt32(&n);
    type_ = static_cast<AcDb::Poly2dType>(type);
    AcDbObjectIdArray ids;
    for (Adesk::Int32 i = 0; i < n && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbHardOwnershipId id;
        filer->readHardOwnershipId(&id);
        if (!id.isNull()) ids.append(id);
    }
    AcDbHardOwnershipId seqend;
    filer->readHardOwnershipId(&seqend);
    vertices_ = ids;
    seqend_ = seqend;
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDb2dPolyline");
    filer->writeInt16(AcDb::kDxfHasSubentities, 1);
    filer->writePoint3d(AcDb::kDxfXCoord, AcGePoint3d(0, 0, elevation_));
    if (thickness_ != 0) filer->writeDouble(AcDb::kDxfThickness, thickness_);
    filer->writeInt16(AcDb::kDxfInt16, flags_);
    if (startWidth_ != 0 || filer->includesDefaultValues())
        filer->writeDouble(AcDb::kDxfReal, startWidth_);
    if (endWidth_ != 0 || filer->includesDefaultValues())
        filer->writeDouble(AcDb::kDxfTxtStyleXScale, endWidth_);
    if (type_ != AcDb::k2dSimplePoly) {
        int curve = type_ == AcDb::k2dQuadSplinePoly    ? 5
                    : type_ == AcDb::k2dCubicSplinePoly ? 6
                                                        : 8;
        filer->writeInt16(static_cast<AcDb::DxfCode>(75), static_cast<Adesk::Int16>(curve));
    }
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDb2dPolyline::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDb2dPolyline")) return Acad::eOk;
    return readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 10:
                elevation_ = item.point().z;
                break;
            case 39:
                thickness_ = item.real();
                break;
            case 70:
                flags_ = static_cast<Adesk::Int16>(item.integer());
                break;
            case 40:
                startWidth_ = item.real();
                break;
            case 41:
                endWidth_ = item.real();
                break;
            case 75: {
                int c = item.integer();
                type_ = c == 5   ? AcDb::k2dQuadSplinePoly
                        : c == 6 ? AcDb::k2dCubicSplinePoly
                        : c == 8 ? AcDb::k2dFitCurvePoly
                                 : AcDb::k2dSimplePoly;
                break;
            }
            case 210:
                normal_ = item.point().asVector().normal();
                break;
            default:
                break;
        }
    });
}
