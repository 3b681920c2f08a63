// Entity geometry: extents, transformations and explosion of arcs, bulged lightweight
// polylines, text and block references with attributes; cloning of a reference with its
// attributes; the limits on extended data and header variables.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>

#include "adslib.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/drawing/resbuf_chain.h"

namespace {

constexpr double kPi = std::numbers::pi;

// Adds an entity to a block (model space when none is named) and answers its id.
AcDbObjectId append(AcDbDatabase& db, AcDbEntity* entity, AcDbObjectId block = {}) {
    AcDbBlockTableRecord* owner = nullptr;
    EXPECT_EQ(acdbOpenObject(owner, block.isNull() ? db.modelSpaceId() : block, AcDb::kForWrite),
              Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(owner->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    owner->close();
    return id;
}

void expectNear(const AcGePoint3d& have, double x, double y, double z = 0) {
    EXPECT_NEAR(have.x, x, 1e-9);
    EXPECT_NEAR(have.y, y, 1e-9);
    EXPECT_NEAR(have.z, z, 1e-9);
}

// The text of a string the caller owns, which is freed.
std::wstring taken(ACHAR* text) {
    std::wstring out = text ? text : L"";
    acutDelString(text);
    return out;
}

// Deletes the entities an explode answered.
struct Exploded {
    AcDbVoidPtrArray items;
    ~Exploded() {
        for (int i = 0; i < items.length(); ++i) delete static_cast<AcDbEntity*>(items[i]);
    }
    AcDbEntity* at(int i) const { return static_cast<AcDbEntity*>(items[i]); }
};

TEST(DrawingGeometry, ArcExtentsFollowTheSweptQuadrants) {
    // A quarter arc from 0 to 90 degrees reaches only its own quadrant ...
    AcDbArc quarter(AcGePoint3d(1, 1, 0), 2, 0, kPi / 2);
    AcDbExtents e;
    ASSERT_EQ(quarter.getGeomExtents(e), Acad::eOk);
    expectNear(e.minPoint(), 1, 1);
    expectNear(e.maxPoint(), 3, 3);
    // ... an arc over the top reaches the top but not the sides ...
    AcDbArc top(AcGePoint3d(0, 0, 0), 1, kPi / 4, 3 * kPi / 4);
    ASSERT_EQ(top.getGeomExtents(e), Acad::eOk);
    const double c = std::sqrt(0.5);
    expectNear(e.minPoint(), -c, c);
    expectNear(e.maxPoint(), c, 1);
    // ... and one that crosses angle zero reaches the right side.
    AcDbArc across(AcGePoint3d(0, 0, 0), 1, 3 * kPi / 2, kPi / 2);
    ASSERT_EQ(across.getGeomExtents(e), Acad::eOk);
    expectNear(e.minPoint(), 0, -1);
    expectNear(e.maxPoint(), 1, 1);
}

TEST(DrawingGeometry, ArcSnapsAndClosestPointsStayOnTheArc) {
    AcDbArc arc(AcGePoint3d(0, 0, 0), 2, 0, kPi / 2);
    AcGePoint3d on;
    // Beside the sweep: the nearer end, not a point of the full circle.
    ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(1, -3, 0), on), Acad::eOk);
    expectNear(on, 2, 0);
    ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(-0.5, -3, 0), on), Acad::eOk);
    expectNear(on, 2, 0);
    ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(-3, 0.5, 0), on), Acad::eOk);
    expectNear(on, 0, 2);
    ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(3, 3, 0), on), Acad::eOk);
    expectNear(on, std::sqrt(2.0), std::sqrt(2.0));
    // Extended, the arc is its circle.
    ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(-3, 0, 0), on, true), Acad::eOk);
    expectNear(on, -2, 0);

    AcGePoint3dArray snaps;
    AcDbIntArray ids;
    ASSERT_EQ(arc.getOsnapPoints(AcDb::kOsModeQuad, 0, AcGePoint3d(), AcGePoint3d(), AcGeMatrix3d::kIdentity,
                                 snaps, ids), Acad::eOk);
    ASSERT_EQ(snaps.length(), 2);   // the arc passes through two of the circle's quadrants
    expectNear(snaps[0], 2, 0);
    expectNear(snaps[1], 0, 2);
    snaps.setLogicalLength(0);
    ASSERT_EQ(arc.getOsnapPoints(AcDb::kOsModeNear, 0, AcGePoint3d(-1, -5, 0), AcGePoint3d(),
                                 AcGeMatrix3d::kIdentity, snaps, ids), Acad::eOk);
    ASSERT_EQ(snaps.length(), 1);
    expectNear(snaps[0], 2, 0);
}

TEST(DrawingGeometry, ArcTransformsKeepItsEndsAndRefuseUnevenScaling) {
    AcDbArc arc(AcGePoint3d(0, 0, 0), 1, 0, kPi / 2);
    // Mirrored in the plane x = 0, the arc runs from the mirror of its end to the mirror
    // of its start.
    ASSERT_EQ(arc.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d::kXAxis))),
              Acad::eOk);
    AcGePoint3d start, end;
    ASSERT_EQ(arc.getStartPoint(start), Acad::eOk);
    ASSERT_EQ(arc.getEndPoint(end), Acad::eOk);
    expectNear(start, 0, 1);
    expectNear(end, -1, 0);
    EXPECT_NEAR(arc.normal().z, 1, 1e-9);   // still drawn the same way round, seen from above
    // Uniform scaling about a point moves the centre and the radius.
    ASSERT_EQ(arc.transformBy(AcGeMatrix3d::scaling(2, AcGePoint3d(1, 0, 0))), Acad::eOk);
    expectNear(arc.center(), -1, 0);
    EXPECT_NEAR(arc.radius(), 2, 1e-9);
    AcGeMatrix3d uneven;
    uneven.setToScaling(AcGeScale3d(1, 3, 1));
    EXPECT_EQ(arc.transformBy(uneven), Acad::eCannotScaleNonUniformly);
    EXPECT_NEAR(arc.radius(), 2, 1e-9);
}

TEST(DrawingGeometry, BulgedPolylineMeasuresExtendsAndExplodesAsArcs) {
    // (0,0) -> (10,0) with bulge 1 is a half circle turning left, so it passes below.
    AcDbPolyline pline;
    ASSERT_EQ(pline.addVertexAt(0, AcGePoint2d(0, 0), 1.0), Acad::eOk);
    ASSERT_EQ(pline.addVertexAt(1, AcGePoint2d(10, 0), 0.0), Acad::eOk);
    ASSERT_EQ(pline.addVertexAt(2, AcGePoint2d(10, 10), 0.0), Acad::eOk);
    AcDbExtents e;
    ASSERT_EQ(pline.getGeomExtents(e), Acad::eOk);
    expectNear(e.minPoint(), 0, -5);
    expectNear(e.maxPoint(), 10, 10);
    AcGePoint3d mid;
    ASSERT_EQ(pline.getPointAtParam(0.5, mid), Acad::eOk);
    expectNear(mid, 5, -5);
    double dist = 0;
    ASSERT_EQ(pline.getDistAtParam(2, dist), Acad::eOk);
    EXPECT_NEAR(dist, 5 * kPi + 10, 1e-9);
    // The closest point lies on the arc itself, where the line to its centre meets it.
    AcGePoint3d near;
    ASSERT_EQ(pline.getClosestPointTo(AcGePoint3d(5 + 6 * std::cos(-1.0), 6 * std::sin(-1.0), 0), near),
              Acad::eOk);
    expectNear(near, 5 + 5 * std::cos(-1.0), 5 * std::sin(-1.0));
    ASSERT_EQ(pline.getClosestPointTo(AcGePoint3d(-1, 1, 0), near), Acad::eOk);
    expectNear(near, 0, 0);

    Exploded parts;
    ASSERT_EQ(pline.explode(parts.items), Acad::eOk);
    ASSERT_EQ(parts.items.length(), 2);
    auto* arc = AcDbArc::cast(parts.at(0));
    ASSERT_NE(arc, nullptr);
    expectNear(arc->center(), 5, 0);
    EXPECT_NEAR(arc->radius(), 5, 1e-9);
    AcGePoint3d s, en;
    arc->getStartPoint(s);
    arc->getEndPoint(en);
    expectNear(s, 0, 0);
    expectNear(en, 10, 0);
    auto* line = AcDbLine::cast(parts.at(1));
    ASSERT_NE(line, nullptr);
    expectNear(line->endPoint(), 10, 10);

    // A closed polyline's area counts the bulge's half disc.
    pline.setClosed(true);
    double area = 0;
    ASSERT_EQ(pline.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, 50 + 12.5 * kPi, 1e-6);

    // A mirror turns the bulge the other way.
    ASSERT_EQ(pline.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d::kYAxis))),
              Acad::eOk);
    double bulge = 0;
    ASSERT_EQ(pline.getBulgeAt(0, bulge), Acad::eOk);
    ASSERT_EQ(pline.getGeomExtents(e), Acad::eOk);
    expectNear(e.minPoint(), 0, -10);
    expectNear(e.maxPoint(), 10, 5);
    ASSERT_EQ(pline.getPointAtParam(0.5, mid), Acad::eOk);
    expectNear(mid, 5, 5);

    // Uneven scaling would turn the arc segment into something else: refused, unchanged;
    // once the bulge is gone the polyline scales like its lines.
    AcGeMatrix3d uneven;
    uneven.setToScaling(AcGeScale3d(2, 1, 1));
    EXPECT_EQ(pline.transformBy(uneven), Acad::eCannotScaleNonUniformly);
    AcGePoint3d corner;
    ASSERT_EQ(pline.getPointAt(1, corner), Acad::eOk);
    expectNear(corner, 10, 0);
    ASSERT_EQ(pline.setBulgeAt(0, 0.0), Acad::eOk);
    ASSERT_EQ(pline.transformBy(uneven), Acad::eOk);
    ASSERT_EQ(pline.getPointAt(1, corner), Acad::eOk);
    expectNear(corner, 20, 0);
}

TEST(DrawingGeometry, OldStylePolylineWithBulgesRefusesUnevenScaling) {
    AcDbDatabase db;
    AcGePoint3dArray points;
    points.append(AcGePoint3d(0, 0, 0));
    points.append(AcGePoint3d(10, 0, 0));
    auto* pline = new AcDb2dPolyline(AcDb::k2dSimplePoly, points);
    AcDbObjectId id = append(db, pline);
    AcDbObjectPointer<AcDb2dPolyline> open(id, AcDb::kForWrite);
    ASSERT_EQ(open.openStatus(), Acad::eOk);
    {
        AcDbObjectPointer<AcDb2dVertex> first(open->vertexIds()[0], AcDb::kForWrite);
        ASSERT_EQ(first.openStatus(), Acad::eOk);
        first->setBulge(1.0);
    }
    AcGeMatrix3d uneven;
    uneven.setToScaling(AcGeScale3d(1, 3, 1));
    EXPECT_EQ(open->transformBy(uneven), Acad::eCannotScaleNonUniformly);
    ASSERT_EQ(open->transformBy(AcGeMatrix3d::scaling(3)), Acad::eOk);
    AcDbObjectPointer<AcDb2dVertex> second(open->vertexIds()[1], AcDb::kForRead);
    expectNear(second->position(), 30, 0);
}

TEST(DrawingGeometry, TextTurnsAndScalesWithItsTransform) {
    AcDbText text(AcGePoint3d(2, 0, 0), L"AHU-1", AcDbObjectId::kNull, 2.5, 0.0);
    ASSERT_EQ(text.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis)), Acad::eOk);
    expectNear(text.position(), 0, 2);
    EXPECT_NEAR(text.rotation(), kPi / 2, 1e-9);
    ASSERT_EQ(text.transformBy(AcGeMatrix3d::scaling(2)), Acad::eOk);
    EXPECT_NEAR(text.height(), 5, 1e-9);
    expectNear(text.position(), 0, 4);
    AcDbExtents e;
    ASSERT_EQ(text.getGeomExtents(e), Acad::eOk);
    // Turned a quarter, the text runs up from its position and lies to its left.
    EXPECT_LE(e.maxPoint().x, 1e-9);
    EXPECT_NEAR(e.minPoint().y, 4, 1e-9);
    EXPECT_GT(e.maxPoint().y, 4 + 5);
}

class BlockWithAttributes : public ::testing::Test {
protected:
    void SetUp() override {
        AcDbBlockTable* blocks = nullptr;
        ASSERT_EQ(db.getBlockTable(blocks, AcDb::kForWrite), Acad::eOk);
        auto* record = new AcDbBlockTableRecord;
        record->setName(L"TAG");
        record->setOrigin(AcGePoint3d(1, 1, 0));
        ASSERT_EQ(blocks->add(block, record), Acad::eOk);
        record->close();
        blocks->close();
        append(db, new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 1), block);
        append(db, new AcDbLine(AcGePoint3d(0, 1, 0), AcGePoint3d(2, 1, 0)), block);

        auto* ref = new AcDbBlockReference(AcGePoint3d(10, 10, 0), block);
        ref->setScaleFactors(AcGeScale3d(2));
        reference = append(db, ref);
        AcDbObjectPointer<AcDbBlockReference> open(reference, AcDb::kForWrite);
        ASSERT_EQ(open.openStatus(), Acad::eOk);
        for (const wchar_t* tag : {L"NAME", L"FLOW"}) {
            auto* attribute = new AcDbAttribute(AcGePoint3d(10, 12, 0), L"value", tag);
            AcDbObjectId id;
            ASSERT_EQ(open->appendAttribute(id, attribute), Acad::eOk);
            attribute->close();
        }
    }

    AcDbDatabase db;
    AcDbObjectId block;
    AcDbObjectId reference;
};

TEST_F(BlockWithAttributes, ExplodePlacesTheBlockEntitiesByTheReference) {
    AcDbObjectPointer<AcDbBlockReference> ref(reference, AcDb::kForRead);
    ASSERT_EQ(ref.openStatus(), Acad::eOk);
    Exploded parts;
    ASSERT_EQ(ref->explode(parts.items), Acad::eOk);
    ASSERT_EQ(parts.items.length(), 2);   // the block's entities; attributes are not among them
    auto* circle = AcDbCircle::cast(parts.at(0));
    ASSERT_NE(circle, nullptr);
    expectNear(circle->center(), 10, 10);   // the block origin lands on the position
    EXPECT_NEAR(circle->radius(), 2, 1e-9);
    auto* line = AcDbLine::cast(parts.at(1));
    ASSERT_NE(line, nullptr);
    expectNear(line->startPoint(), 8, 10);
    expectNear(line->endPoint(), 12, 10);
    AcDbExtents e;
    ASSERT_EQ(ref->getGeomExtents(e), Acad::eOk);
    expectNear(e.minPoint(), 8, 8);
    EXPECT_NEAR(e.maxPoint().x, 12, 1e-9);
    EXPECT_GE(e.maxPoint().y, 12);
}

TEST_F(BlockWithAttributes, TransformMovesTheAttributesAlong) {
    {
        AcDbObjectPointer<AcDbBlockReference> ref(reference, AcDb::kForWrite);
        ASSERT_EQ(ref.openStatus(), Acad::eOk);
        ASSERT_EQ(ref->transformBy(AcGeMatrix3d::translation(AcGeVector3d(5, -5, 0))), Acad::eOk);
        expectNear(ref->position(), 15, 5);
        AcGeMatrix3d uneven;
        uneven.setToScaling(AcGeScale3d(1, 2, 1));
        ASSERT_EQ(ref->transformBy(uneven), Acad::eOk);   // a reference takes uneven scales
        EXPECT_NEAR(ref->scaleFactors().sy, 4, 1e-9);
        EXPECT_NEAR(ref->scaleFactors().sx, 2, 1e-9);
    }
    AcDbObjectPointer<AcDbBlockReference> ref(reference, AcDb::kForRead);
    for (const AcDbObjectId& id : ref->attributeIds()) {
        AcDbObjectPointer<AcDbAttribute> attribute(id, AcDb::kForRead);
        ASSERT_EQ(attribute.openStatus(), Acad::eOk);
        expectNear(attribute->position(), 15, 14);
    }
}

TEST_F(BlockWithAttributes, DeepCloneMapsTheReferenceAndEachAttribute) {
    AcDbIdMapping map;
    AcDbObjectIdArray ids;
    ids.append(reference);
    ASSERT_EQ(db.deepCloneObjects(ids, db.modelSpaceId(), map), Acad::eOk);
    AcDbIdPair pair(reference, {}, false);
    ASSERT_TRUE(map.compute(pair));
    ASSERT_NE(pair.value(), reference);
    AcDbObjectPointer<AcDbBlockReference> original(reference, AcDb::kForRead);
    AcDbObjectPointer<AcDbBlockReference> copy(pair.value(), AcDb::kForRead);
    ASSERT_EQ(copy.openStatus(), Acad::eOk);
    EXPECT_EQ(copy->blockTableRecord(), block);   // the definition is shared, not copied
    AcDbObjectIdArray from = original->attributeIds(), to = copy->attributeIds();
    ASSERT_EQ(to.length(), from.length());
    for (int i = 0; i < from.length(); ++i) {
        AcDbIdPair attributePair(from[i], {}, false);
        ASSERT_TRUE(map.compute(attributePair)) << i;
        EXPECT_EQ(attributePair.value(), to[i]);
        AcDbObjectPointer<AcDbAttribute> a(from[i], AcDb::kForRead), b(to[i], AcDb::kForRead);
        EXPECT_EQ(b->ownerId(), pair.value());
        EXPECT_EQ(taken(a->tag()), taken(b->tag()));
    }
    EXPECT_NE(copy->seqendId(), original->seqendId());
    AcDbIdPair blockPair(block, {}, false);
    EXPECT_FALSE(map.compute(blockPair) && blockPair.value() != block);
}

// Extended data of `count` strings of `length` characters for one application.
kelvo::drawing::RbChain strings(const wchar_t* app, int count, std::size_t length) {
    resbuf* chain = acutBuildList(AcDb::kDxfRegAppName, app, 0);
    resbuf* tail = chain;
    std::wstring text(length, L'x');
    for (int i = 0; i < count; ++i) {
        tail->rbnext = acutBuildList(AcDb::kDxfXdAsciiString, text.c_str(), 0);
        tail = tail->rbnext;
    }
    return kelvo::drawing::RbChain(chain);
}

TEST(DrawingGeometry, ExtendedDataLimitsLeaveTheObjectAsItWas) {
    AcDbDatabase db;
    ASSERT_TRUE(kelvo::drawing::registerApplication(db, L"TARVIK"));
    ASSERT_TRUE(kelvo::drawing::registerApplication(db, L"OTHER"));
    AcDbObjectId id = append(db, new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 1));
    AcDbObjectPointer<AcDbCircle> circle(id, AcDb::kForWrite);
    ASSERT_EQ(circle.openStatus(), Acad::eOk);
    ASSERT_EQ(circle->setXData(strings(L"TARVIK", 45, 200).get()), Acad::eOk);
    EXPECT_EQ(circle->setXData(strings(L"OTHER", 1, 256).get()), Acad::eStringTooLong);
    // Each part fits alone; together they are over the limit.
    EXPECT_EQ(circle->setXData(strings(L"OTHER", 45, 200).get()), Acad::eXdataSizeExceeded);
    kelvo::drawing::RbChain kept(circle->xData(nullptr));
    int items = 0;
    for (const resbuf* rb = kept.get(); rb; rb = rb->rbnext) ++items;
    EXPECT_EQ(items, 46);   // TARVIK's name and its 45 strings, nothing of OTHER
    // Replacing an application's part counts only what stays.
    EXPECT_EQ(circle->setXData(strings(L"TARVIK", 70, 200).get()), Acad::eOk);

    kelvo::drawing::RbChain unbalanced(acutBuildList(AcDb::kDxfRegAppName, L"OTHER",
                                                     AcDb::kDxfXdControlString, L"}",
                                                     AcDb::kDxfXdControlString, L"{", 0));
    EXPECT_EQ(circle->setXData(unbalanced.get()), Acad::eInvalidInput);
    kelvo::drawing::RbChain nested(acutBuildList(AcDb::kDxfRegAppName, L"OTHER",
                                                 AcDb::kDxfXdControlString, L"{",
                                                 AcDb::kDxfXdControlString, L"{",
                                                 AcDb::kDxfXdControlString, L"}",
                                                 AcDb::kDxfXdControlString, L"}", 0));
    EXPECT_EQ(circle->setXData(nested.get()), Acad::eOk);
}

TEST(DrawingGeometry, HeaderVariablesByNameKeepTheirRanges) {
    AcDbDatabase db;
    using kelvo::drawing::setHeaderVariable;
    EXPECT_EQ(setHeaderVariable(db, L"DIMSCALE", -1.0), Acad::eOutOfRange);
    EXPECT_EQ(setHeaderVariable(db, L"$DIMSCALE", 0.0), Acad::eOk);
    EXPECT_DOUBLE_EQ(db.dimscale(), 0.0);
    EXPECT_EQ(setHeaderVariable(db, L"LTSCALE", 0), Acad::eOutOfRange);
    EXPECT_EQ(setHeaderVariable(db, L"LTSCALE", std::nan("")), Acad::eOutOfRange);
    EXPECT_DOUBLE_EQ(db.ltscale(), 1.0);
    EXPECT_EQ(setHeaderVariable(db, L"LUNITS", 6), Acad::eOutOfRange);
    EXPECT_EQ(setHeaderVariable(db, L"LUNITS", 4), Acad::eOk);
    EXPECT_EQ(db.lunits(), 4);
    EXPECT_EQ(setHeaderVariable(db, L"TEXTSIZE", std::wstring(L"3")), Acad::eInvalidInput);
    EXPECT_DOUBLE_EQ(db.textsize(), 2.5);
}

}  // namespace

namespace {

// A block definition of one circle, added to `db`.
AcDbObjectId addBlock(AcDbDatabase& db, const wchar_t* name) {
    AcDbBlockTable* blocks = nullptr;
    EXPECT_EQ(db.getBlockTable(blocks, AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbBlockTableRecord;
    record->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(blocks->add(id, record), Acad::eOk);
    record->close();
    blocks->close();
    append(db, new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 1), id);
    return id;
}

TEST(DrawingGeometry, InsertBringsNestedBlocksAndApplicationsAlong) {
    AcDbDatabase source;
    addBlock(source, L"VALVE");
    AcDbObjectId valve;
    {
        AcDbBlockTable* blocks = nullptr;
        ASSERT_EQ(source.getBlockTable(blocks), Acad::eOk);
        ASSERT_EQ(blocks->getAt(L"VALVE", valve), Acad::eOk);
        blocks->close();
    }
    ASSERT_TRUE(kelvo::drawing::registerApplication(source, L"TARVIK"));
    auto* ref = new AcDbBlockReference(AcGePoint3d(5, 0, 0), valve);
    AcDbObjectId refId = append(source, ref);
    {
        AcDbObjectPointer<AcDbBlockReference> open(refId, AcDb::kForWrite);
        kelvo::drawing::RbChain data(acutBuildList(AcDb::kDxfRegAppName, L"TARVIK",
                                                   AcDb::kDxfXdAsciiString, L"V-1", 0));
        ASSERT_EQ(open->setXData(data.get()), Acad::eOk);
    }

    AcDbDatabase target;
    AcDbObjectId block;
    ASSERT_EQ(target.insert(block, L"ASSEMBLY", &source), Acad::eOk);
    AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    ASSERT_EQ(record->entityIds().length(), 1);
    AcDbObjectPointer<AcDbBlockReference> copy(record->entityIds()[0], AcDb::kForRead);
    ASSERT_EQ(copy.openStatus(), Acad::eOk);
    // The nested definition is the target's own, with its circle ...
    AcDbObjectPointer<AcDbBlockTableRecord> nested(copy->blockTableRecord(), AcDb::kForRead);
    ASSERT_EQ(nested.openStatus(), Acad::eOk);
    EXPECT_EQ(nested->database(), &target);
    EXPECT_EQ(nested->name(), L"VALVE");
    EXPECT_EQ(nested->entityIds().length(), 1);
    // ... and the extended data's application is registered there.
    AcDbRegAppTable* apps = nullptr;
    ASSERT_EQ(target.getRegAppTable(apps), Acad::eOk);
    EXPECT_TRUE(apps->has(L"TARVIK"));
    apps->close();
    kelvo::drawing::RbChain data(copy->xData(L"TARVIK"));
    ASSERT_NE(data, nullptr);
    ASSERT_NE(data->rbnext, nullptr);
    EXPECT_EQ(std::wstring(data->rbnext->resval.rstring), L"V-1");
}

}  // namespace

namespace {

// Where multiline text lies around its location follows its attachment point.
TEST(DrawingGeometry, MTextExtentsFollowTheAttachment) {
    auto extentsFor = [](AcDbMText::AttachmentPoint attachment) {
        AcDbMText text;
        text.setLocation(AcGePoint3d(10, 10, 0));
        text.setTextHeight(2);
        text.setWidth(40);
        text.setContents(L"First line\\PSecond line");
        text.setAttachment(attachment);
        AcDbExtents e;
        EXPECT_EQ(text.getGeomExtents(e), Acad::eOk);
        return e;
    };
    AcDbExtents topLeft = extentsFor(AcDbMText::kTopLeft);
    EXPECT_NEAR(topLeft.minPoint().x, 10, 1e-6);
    EXPECT_LE(topLeft.maxPoint().y, 10 + 1e-6);
    EXPECT_LT(topLeft.minPoint().y, 10 - 2 * 2);   // two lines below the location
    AcDbExtents bottomRight = extentsFor(AcDbMText::kBottomRight);
    EXPECT_NEAR(bottomRight.maxPoint().x, 10, 1e-6);
    EXPECT_GE(bottomRight.minPoint().y, 10 - 1);   // above, but for descenders
    AcDbExtents middle = extentsFor(AcDbMText::kMiddleCenter);
    double mid = (middle.minPoint().y + middle.maxPoint().y) / 2;
    EXPECT_NEAR(mid, 10, 1.0);
    // The same text, only placed differently: the same size whatever the attachment.
    EXPECT_NEAR(topLeft.maxPoint().x - topLeft.minPoint().x,
                bottomRight.maxPoint().x - bottomRight.minPoint().x, 1e-6);
}

TEST(DrawingGeometry, LeaderExtentsAndTransformCoverItsVertices) {
    AcDbLeader leader;
    leader.appendVertex(AcGePoint3d(0, 0, 0));
    leader.appendVertex(AcGePoint3d(5, 5, 0));
    leader.appendVertex(AcGePoint3d(10, 5, 0));
    AcDbExtents e;
    ASSERT_EQ(leader.getGeomExtents(e), Acad::eOk);
    EXPECT_LE(e.minPoint().x, 0);
    EXPECT_GE(e.maxPoint().x, 10);
    EXPECT_NEAR(e.maxPoint().y, 5, 1e-6);
    ASSERT_EQ(leader.transformBy(AcGeMatrix3d::translation(AcGeVector3d(1, 2, 0))), Acad::eOk);
    EXPECT_TRUE(leader.vertexAt(2).isEqualTo(AcGePoint3d(11, 7, 0)));
    Exploded parts;
    ASSERT_EQ(leader.explode(parts.items), Acad::eOk);
    ASSERT_GE(parts.items.length(), 2);
    auto* last = AcDbLine::cast(parts.at(1));
    ASSERT_NE(last, nullptr);
    expectNear(last->endPoint(), 11, 7);
}

}  // namespace
