// The host's leader: vertices from the arrowhead to the last point. The arrowhead is a
// filled triangle as long as the database's DIMASZ times DIMSCALE.

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dblead.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"

using namespace kelvo::drawing;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbLeader, AcDbCurve)

AcDbLeader::AcDbLeader() = default;
AcDbLeader::~AcDbLeader() = default;

int AcDbLeader::numVertices() const { return vertices_.length(); }
Adesk::Boolean AcDbLeader::appendVertex(const AcGePoint3d& p) {
    if (!isWriteEnabled()) return false;
    vertices_.append(p);
    return true;
}
void AcDbLeader::removeLastVertex() {
    if (isWriteEnabled() && !vertices_.isEmpty()) vertices_.removeLast();
}
AcGePoint3d AcDbLeader::firstVertex() const { return vertices_.isEmpty() ? AcGePoint3d() : vertices_.first(); }
AcGePoint3d AcDbLeader::lastVertex() const { return vertices_.isEmpty() ? AcGePoint3d() : vertices_.last(); }
AcGePoint3d AcDbLeader::vertexAt(int index) const {
    return index >= 0 && index < vertices_.length() ? vertices_[index] : AcGePoint3d();
}
Adesk::Boolean AcDbLeader::setVertexAt(int index, const AcGePoint3d& p) {
    if (!isWriteEnabled() || index < 0 || index >= vertices_.length()) return false;
    vertices_[index] = p;
    return true;
}
AcGeVector3d AcDbLeader::normal() const { return normal_; }
Acad::ErrorStatus AcDbLeader::setPlane(const AcGePlane& plane) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    normal_ = plane.normal();
    for (AcGePoint3d& p : vertices_) p = p.orthoProject(plane);
    return Acad::eOk;
}
Adesk::Boolean AcDbLeader::hasArrowHead() const { return arrowHead_; }
void AcDbLeader::enableArrowHead() { arrowHead_ = true; }
void AcDbLeader::disableArrowHead() { arrowHead_ = false; }
Adesk::Boolean AcDbLeader::hasHookLine() const { return hookLine_; }
Adesk::Boolean AcDbLeader::isSplined() const { return splined_; }
void AcDbLeader::setToSplineLeader() { splined_ = true; }
void AcDbLeader::setToStraightLeader() { splined_ = false; }
AcDbHardPointerId AcDbLeader::dimensionStyle() const { return dimStyle_; }
void AcDbLeader::setDimensionStyle(const AcDbHardPointerId& id) { dimStyle_ = id; }
AcDbObjectId AcDbLeader::annotationObjId() const { return annotation_; }
Acad::ErrorStatus AcDbLeader::attachAnnotation(const AcDbObjectId& id) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!AcDbEntity::cast(peekObject(id))) return Acad::eInvalidInput;
    annotation_ = id;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::detachAnnotation() {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    annotation_.setNull();
    return Acad::eOk;
}
double AcDbLeader::dimasz() const {
    AcDbDatabase* db = database() ? database() : workingDatabase();
    return db ? db->dimasz() * (db->dimscale() > 0 ? db->dimscale() : 1.0) : 2.5;
}

Adesk::Boolean AcDbLeader::isClosed() const { return false; }
Adesk::Boolean AcDbLeader::isPlanar() const { return true; }
Acad::ErrorStatus AcDbLeader::getStartParam(double& p) const { p = 0; return Acad::eOk; }
Acad::ErrorStatus AcDbLeader::getEndParam(double& p) const {
    if (vertices_.isEmpty()) return Acad::eDegenerateGeometry;
    p = vertices_.length() - 1;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::getStartPoint(AcGePoint3d& p) const {
    if (vertices_.isEmpty()) return Acad::eDegenerateGeometry;
    p = vertices_.first();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::getEndPoint(AcGePoint3d& p) const {
    if (vertices_.isEmpty()) return Acad::eDegenerateGeometry;
    p = vertices_.last();
    return Acad::eOk;
}
// The parameter is the vertex index plus the fraction of the next segment.
Acad::ErrorStatus AcDbLeader::getPointAtParam(double param, AcGePoint3d& point) const {
    int n = vertices_.length();
    if (n == 0 || param < 0 || param > n - 1) return Acad::eInvalidInput;
    int i = std::min(static_cast<int>(param), std::max(0, n - 2));
    if (n == 1) {
        point = vertices_[0];
        return Acad::eOk;
    }
    point = vertices_[i] + (vertices_[i + 1] - vertices_[i]) * (param - i);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::getDistAtParam(double param, double& dist) const {
    int n = vertices_.length();
    if (n == 0 || param < 0 || param > n - 1) return Acad::eInvalidInput;
    dist = 0;
    for (int i = 0; i + 1 < n && param > i; ++i)
        dist += vertices_[i].distanceTo(vertices_[i + 1]) * std::min(1.0, param - i);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::getParamAtDist(double dist, double& param) const {
    double done = 0;
    for (int i = 0; i + 1 < vertices_.length(); ++i) {
        double len = vertices_[i].distanceTo(vertices_[i + 1]);
        if (dist <= done + len + 1e-10) {
            param = i + (len > 0 ? (dist - done) / len : 0);
            return Acad::eOk;
        }
        done += len;
    }
    return Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbLeader::getPointAtDist(double dist, AcGePoint3d& point) const {
    double param = 0;
    Acad::ErrorStatus es = getParamAtDist(dist, param);
    return es != Acad::eOk ? es : getPointAtParam(param, point);
}

Adesk::Boolean AcDbLeader::subWorldDraw(AcGiWorldDraw* wd) {
    int n = vertices_.length();
    if (n < 2) return true;
    wd->geometry().polyline(static_cast<Adesk::UInt32>(n), vertices_.asArrayPtr());
    double size = dimasz();
    AcGeVector3d along = vertices_[1] - vertices_[0];
    if (arrowHead_ && size > 0 && along.length() > size) {
        AcGeVector3d dir = along.normal();
        AcGeVector3d side = normal_.crossProduct(dir) * (size / 6);
        AcGePoint3d base = vertices_[0] + dir * size;
        AcGePoint3d tri[3] = {vertices_[0], base + side, base - side};
        wd->subEntityTraits().setFillType(AcGi::kAcGiFillAlways);
        wd->geometry().polygon(3, tri);
        wd->subEntityTraits().setFillType(AcGi::kAcGiFillNever);
    }
    return true;
}

void AcDbLeader::subList() const {
    AcDbEntity::subList();
    for (const AcGePoint3d& p : vertices_)
        acutPrintf(L"                 Vertex: X=%10.4f  Y=%10.4f  Z=%10.4f\n", p.x, p.y, p.z);
}

Acad::ErrorStatus AcDbLeader::subExplode(AcDbVoidPtrArray& entitySet) const {
    for (int i = 0; i + 1 < vertices_.length(); ++i) {
        auto* line = new AcDbLine(vertices_[i], vertices_[i + 1]);
        line->setPropertiesFrom(this);
        entitySet.append(line);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                                const AcGePoint3d& pick, const AcGePoint3d&,
                                                const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                                AcDbIntArray&) const {
    if (mode == AcDb::kOsModeEnd)
        for (const AcGePoint3d& p : vertices_) snaps.append(p);
    if (mode == AcDb::kOsModeMid)
        for (int i = 0; i + 1 < vertices_.length(); ++i)
            snaps.append(vertices_[i] + (vertices_[i + 1] - vertices_[i]) * 0.5);
    if (mode == AcDb::kOsModeNear && vertices_.length() > 1) {
        AcGePoint3d best = vertices_[0];
        for (int i = 0; i + 1 < vertices_.length(); ++i) {
            AcGePoint3d p = closestOnSegment(vertices_[i], vertices_[i + 1], pick);
            if (p.distanceTo(pick) < best.distanceTo(pick)) best = p;
        }
        snaps.append(best);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&, AcDbIntArray&) const {
    grips.append(vertices_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    moveMarked(vertices_, vertices_.length(), indices, offset);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subTransformBy(const AcGeMatrix3d& xform) {
    for (AcGePoint3d& p : vertices_) p.transformBy(xform);
    normal_ = transformNormal(normal_, xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetGeomExtents(AcDbExtents& extents) const {
    if (vertices_.isEmpty()) return Acad::eInvalidExtents;
    extents = AcDbExtents();
    for (const AcGePoint3d& p : vertices_) extents.addPoint(p);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeInt32(vertices_.length());
    for (const AcGePoint3d& p : vertices_) filer->writePoint3d(p);
    filer->writeVector3d(normal_);
    filer->writeBool(arrowHead_);
    filer->writeBool(splined_);
    filer->writeBool(hookLine_);
    filer->writeHardPointerId(dimStyle_);
    filer->writeSoftPointerId(annotation_);
    filer->writeDouble(textHeight_);
    filer->writeDouble(textWidth_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLeader::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int32 n = 0;
    filer->readInt32(&n);
    vertices_.removeAll();
    for (Adesk::Int32 i = 0; i < n && filer->filerStatus() == Acad::eOk; ++i) {
        AcGePoint3d p;
        filer->readPoint3d(&p);
        vertices_.append(p);
    }
    AcDbHardPointerId style;
    AcDbSoftPointerId annotation;
    filer->readVector3d(&normal_);
    filer->readBool(&arrowHead_);
    filer->readBool(&splined_);
    filer->readBool(&hookLine_);
    filer->readHardPointerId(&style);
    filer->readSoftPointerId(&annotation);
    filer->readDouble(&textHeight_);
    filer->readDouble(&textWidth_);
    dimStyle_ = style;
    annotation_ = annotation;
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLeader::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbLeader");
    filer->writeString(AcDb::kDxfDimStyleName, L"Standard");
    filer->writeInt16(AcDb::kDxfRegAppFlags, arrowHead_ ? 1 : 0);
    filer->writeInt16(AcDb::kDxfLinetypeAlign, splined_ ? 1 : 0);
    filer->writeInt16(AcDb::kDxfLinetypePDC, annotation_.isNull() ? 3 : 1);
    filer->writeInt16(static_cast<AcDb::DxfCode>(74), 0);
    filer->writeInt16(static_cast<AcDb::DxfCode>(75), hookLine_ ? 1 : 0);
    filer->writeDouble(AcDb::kDxfReal, textHeight_);
    filer->writeDouble(AcDb::kDxfTxtStyleXScale, textWidth_);
    filer->writeInt16(static_cast<AcDb::DxfCode>(76), static_cast<Adesk::Int16>(vertices_.length()));
    for (const AcGePoint3d& p : vertices_) filer->writePoint3d(AcDb::kDxfXCoord, p);
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    if (!annotation_.isNull()) filer->writeObjectId(AcDb::kDxfHardPointerId, annotation_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLeader::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbLeader")) return Acad::eOk;
    AcGePoint3dArray read;
    bool sawVertex = false;
    es = readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 10: read.append(item.point()); sawVertex = true; break;
            case 71: arrowHead_ = item.integer() != 0; break;
            case 72: splined_ = item.integer() != 0; break;
            case 75: hookLine_ = item.integer() != 0; break;
            case 40: textHeight_ = item.real(); break;
            case 41: textWidth_ = item.real(); break;
            case 210: normal_ = item.point().asVector().normal(); break;
            case 340: annotation_ = item.id(); break;
            default: break;
        }
    });
    if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
    if (sawVertex) vertices_ = read;
    return es;
}
