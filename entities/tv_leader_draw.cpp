// TVLeader: drawing, listing, snapping, intersections, explosion and extents. The two
// segments are asked as temporary lines, the tag as the block reference it holds.
#include "entities/tv_leader.h"

#include "adslib.h"

void TVLeader::segments(AcDbLine& first, AcDbLine& second) const {
    first.setStartPoint(start_);
    first.setEndPoint(middle_);
    second.setStartPoint(middle_);
    second.setEndPoint(tailPoint());
}

Adesk::Boolean TVLeader::worldDraw(AcGiWorldDraw* wd) {
    const AcGePoint3d first[2] = {start_, middle_};
    const AcGePoint3d second[2] = {middle_, tailPoint()};
    wd->geometry().polyline(2, first, nullptr, -1);
    wd->geometry().polyline(2, second, nullptr, -1);

    AcGiSubEntityTraits& traits = wd->subEntityTraits();
    const Adesk::UInt16 color = traits.color();
    traits.setLayer(layerId());
    const Adesk::Boolean result = wd->geometry().draw(&tag_);
    traits.setColor(color);
    return result;
}

void TVLeader::list() const {
    AcDbCurve::subList();
    acutPrintf(L"                   Starting point = %f, %f, %f\n", start_.x, start_.y, start_.z);
    acutPrintf(L"                   Middle point = %f, %f, %f\n", middle_.x, middle_.y, middle_.z);
    acutPrintf(L"                   End point = %f, %f, %f\n", end_.x, end_.y, end_.z);
    acutPrintf(L"\n");
    tag_.list();
}

Acad::ErrorStatus TVLeader::getOsnapPoints(AcDb::OsnapMode osnapMode,
                                           Adesk::GsMarker gsSelectionMark,
                                           const AcGePoint3d& pickPoint,
                                           const AcGePoint3d& lastPoint,
                                           const AcGeMatrix3d& viewXform,
                                           AcGePoint3dArray& snapPoints,
                                           AcDbIntArray& geomIds) const {
    AcDbLine first, second;
    segments(first, second);
    for (const AcDbEntity* part : {static_cast<const AcDbEntity*>(&first),
                                   static_cast<const AcDbEntity*>(&second),
                                   static_cast<const AcDbEntity*>(&tag_)}) {
        const Acad::ErrorStatus es = part->getOsnapPoints(
            osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints, geomIds);
        if (es != Acad::eOk) return es;
    }
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                          const AcGePlane& projPlane, AcGePoint3dArray& points,
                                          Adesk::GsMarker thisGsMarker,
                                          Adesk::GsMarker otherGsMarker) const {
    AcDbLine first, second;
    segments(first, second);
    for (const AcDbEntity* part : {static_cast<const AcDbEntity*>(&first),
                                   static_cast<const AcDbEntity*>(&second),
                                   static_cast<const AcDbEntity*>(&tag_)}) {
        const Acad::ErrorStatus es =
            part->intersectWith(pEnt, intType, projPlane, points, thisGsMarker, otherGsMarker);
        if (es != Acad::eOk) return es;
    }
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                          AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                          Adesk::GsMarker otherGsMarker) const {
    AcDbLine first, second;
    segments(first, second);
    for (const AcDbEntity* part : {static_cast<const AcDbEntity*>(&first),
                                   static_cast<const AcDbEntity*>(&second),
                                   static_cast<const AcDbEntity*>(&tag_)}) {
        const Acad::ErrorStatus es =
            part->intersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
        if (es != Acad::eOk) return es;
    }
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::explode(AcDbVoidPtrArray& entitySet) const {
    auto* first = new AcDbLine(start_, middle_);
    auto* second = new AcDbLine(middle_, tailPoint());
    for (AcDbLine* line : {first, second}) {
        line->setPropertiesFrom(this);
        entitySet.append(line);
    }
    return tag_.explode(entitySet);
}

Acad::ErrorStatus TVLeader::getGeomExtents(AcDbExtents& extents) const {
    extents.addPoint(start_);
    extents.addPoint(middle_);
    extents.addPoint(tailPoint());
    AcDbExtents tagExtents;
    if (tag_.getGeomExtents(tagExtents) == Acad::eOk && !tagExtents.isEmpty())
        extents.addExt(tagExtents);
    return Acad::eOk;
}

void TVLeader::saveAs(AcGiWorldDraw* mode, AcDb::SaveType) {
    assertReadEnabled();
    worldDraw(mode);
}

// --- the host's hooks ------------------------------------------------------------------

Adesk::Boolean TVLeader::subWorldDraw(AcGiWorldDraw* wd) {
    assertReadEnabled();
    return worldDraw(wd);
}

Acad::ErrorStatus TVLeader::subExplode(AcDbVoidPtrArray& entitySet) const {
    assertReadEnabled();
    return explode(entitySet);
}

void TVLeader::subList() const {
    assertReadEnabled();
    list();
}

Acad::ErrorStatus TVLeader::subGetOsnapPoints(AcDb::OsnapMode osnapMode,
                                              Adesk::GsMarker gsSelectionMark,
                                              const AcGePoint3d& pickPoint,
                                              const AcGePoint3d& lastPoint,
                                              const AcGeMatrix3d& viewXform,
                                              AcGePoint3dArray& snapPoints,
                                              AcDbIntArray& geomIds) const {
    assertReadEnabled();
    return getOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints,
                          geomIds);
}

Acad::ErrorStatus TVLeader::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                             Adesk::GsMarker otherGsMarker) const {
    assertReadEnabled();
    return intersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus TVLeader::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             const AcGePlane& projPlane, AcGePoint3dArray& points,
                                             Adesk::GsMarker thisGsMarker,
                                             Adesk::GsMarker otherGsMarker) const {
    assertReadEnabled();
    return intersectWith(pEnt, intType, projPlane, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus TVLeader::subGetGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    return getGeomExtents(extents);
}
