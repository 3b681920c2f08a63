// TVLeader as the host sees it: geometry, curve queries, grips, transformation, explosion,
// listing, and its DWG and DXF filing.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>

#include "dbidmap.h"
#include "dbobjptr.h"
#include "entities/tv_leader.h"
#include "entities/tv_leader_class.h"
#include "entities_test_support.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/host.h"

namespace kelvo {
namespace {

using test::ListDxfFiler;

constexpr double kTol = 1e-9;

void expectPoint(const AcGePoint3d& actual, double x, double y, double z) {
    EXPECT_NEAR(actual.x, x, kTol);
    EXPECT_NEAR(actual.y, y, kTol);
    EXPECT_NEAR(actual.z, z, kTol);
}

class LeaderTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { registerTvLeaderClass(); }
    static void TearDownTestSuite() { unregisterTvLeaderClass(); }

    void SetUp() override {
        layer_ = test::addLayer(db_, L"TAGS");
        block_ = test::addTagBlock(db_, L"TAG1");
    }

    // start (0,0,0), middle (10,10,0), end (20,10,0): the tag points along +X.
    std::unique_ptr<TVLeader> makeLeader(double scale = 2.0) {
        return std::make_unique<TVLeader>(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 10, 0),
                                          AcGePoint3d(20, 10, 0), scale, block_, layer_);
    }

    AcDbDatabase db_;
    AcDbObjectId layer_, block_;
};

TEST_F(LeaderTest, TheClassIsRegisteredAsAFiledCurve) {
    AcRxClass* cls = TVLeader::desc();
    ASSERT_NE(cls, nullptr);
    EXPECT_STREQ(cls->name(), L"TVLeader");
    EXPECT_STREQ(cls->myParent()->name(), L"AcDbCurve");
    EXPECT_STREQ(cls->dxfName(), L"TVLEADER");
    EXPECT_STREQ(cls->appName(), kTvLeaderAppDescription);
    EXPECT_EQ(cls->proxyFlags(), 1);
    int maintenance = 0;
    EXPECT_EQ(cls->dwgVersion(maintenance), 1);
    EXPECT_EQ(maintenance, 1);
    std::unique_ptr<AcRxObject> made(cls->create());
    EXPECT_NE(TVLeader::cast(made.get()), nullptr);
    EXPECT_EQ(registerTvLeaderClass(), cls);  // a second registration keeps the first
}

TEST_F(LeaderTest, AnotherTVLeaderClassStopsTheHost) {
    EXPECT_DEATH(
        {
            unregisterTvLeaderClass();
            newAcRxClass(L"TVLeader", L"AcDbEntity");
            registerTvLeaderClass();
        },
        "Class mismatch");
}

TEST_F(LeaderTest, TheSecondSegmentStopsOneScaleShortOfTheEndAndTheTagFollows) {
    auto leader = makeLeader(2.0);
    expectPoint(leader->tailPoint(), 18, 10, 0);
    expectPoint(leader->tag().position(), 20, 10, 0);
    EXPECT_NEAR(leader->tag().rotation(), 0.0, kTol);
    EXPECT_NEAR(leader->tag().scaleFactors().sx, 2.0, kTol);
    EXPECT_EQ(leader->tag().blockTableRecord(), block_);
    EXPECT_EQ(leader->tag().layerId(), layer_);
    EXPECT_EQ(leader->layerId(), layer_);

    leader->setPoints(AcGePoint3d(0, 0, 0), AcGePoint3d(5, 0, 0), AcGePoint3d(5, 4, 0));
    expectPoint(leader->tailPoint(), 5, 2, 0);
    EXPECT_NEAR(leader->tag().rotation(), std::numbers::pi / 2, kTol);

    leader->setScale(0.0);  // the segment reaches the end point, the tag shrinks to nothing
    expectPoint(leader->tailPoint(), 5, 4, 0);
    EXPECT_NEAR(leader->tag().scaleFactors().sy, 0.0, kTol);
}

TEST_F(LeaderTest, MiddleOnTheEndPointGivesAngleZeroAndZIsKept) {
    auto leader = makeLeader(3.0);
    leader->setPoints(AcGePoint3d(0, 0, 0), AcGePoint3d(7, 7, 1), AcGePoint3d(7, 7, 4));
    expectPoint(leader->tailPoint(), 10, 7, 4);  // +X by the scale, the end point's Z
    EXPECT_NEAR(leader->tag().rotation(), 0.0, kTol);

    leader->setPoints(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 9), AcGePoint3d(4, 0, 2));
    expectPoint(leader->tailPoint(), 1, 0, 2);
}

TEST_F(LeaderTest, CurveQueriesFollowTheChordFromStartToEnd) {
    auto leader = makeLeader();
    const double chord = std::hypot(20.0, 10.0);
    double value = -1;
    EXPECT_EQ(leader->getStartParam(value), Acad::eOk);
    EXPECT_EQ(value, 0.0);
    EXPECT_EQ(leader->getEndParam(value), Acad::eOk);
    EXPECT_NEAR(value, chord, kTol);
    AcGePoint3d p;
    EXPECT_EQ(leader->getPointAtParam(chord / 2, p), Acad::eOk);
    expectPoint(p, 10, 5, 0);  // on the chord, not at the elbow
    EXPECT_EQ(leader->getPointAtDist(chord, p), Acad::eOk);
    expectPoint(p, 20, 10, 0);
    EXPECT_EQ(leader->getParamAtPoint(AcGePoint3d(10, 10, 0), value), Acad::eOk);
    EXPECT_NEAR(value, (20.0 * 10 + 10.0 * 10) / chord, kTol);  // projection onto the chord
    EXPECT_EQ(leader->getDistAtPoint(AcGePoint3d(10, 10, 0), value), Acad::eOk);
    EXPECT_NEAR(value, std::hypot(10.0, 10.0), kTol);  // straight, off the chord
    EXPECT_EQ(leader->getDistAtParam(4.5, value), Acad::eOk);
    EXPECT_EQ(value, 4.5);
    EXPECT_EQ(leader->getParamAtDist(3.25, value), Acad::eOk);
    EXPECT_EQ(value, 3.25);
    EXPECT_EQ(leader->getStartPoint(p), Acad::eOk);
    expectPoint(p, 0, 0, 0);
}

TEST_F(LeaderTest, GripsAreTheThreePointsAndEachMarkedPointMovesOnce) {
    auto leader = makeLeader();
    AcGePoint3dArray grips, stretch;
    AcDbIntArray modes, ids;
    AcDbEntity* entity = leader.get();
    EXPECT_EQ(entity->getGripPoints(grips, modes, ids), Acad::eOk);
    ASSERT_EQ(grips.length(), 3);
    expectPoint(grips[0], 0, 0, 0);
    expectPoint(grips[1], 10, 10, 0);
    expectPoint(grips[2], 20, 10, 0);
    EXPECT_EQ(entity->getStretchPoints(stretch), Acad::eOk);
    EXPECT_EQ(stretch, grips);

    const AcDbIntArray indices{2, 0, 2, 7, -1, 0};
    EXPECT_EQ(entity->moveGripPointsAt(indices, AcGeVector3d(1, 2, 3)), Acad::eOk);
    expectPoint(leader->startPoint(), 1, 2, 3);
    expectPoint(leader->middlePoint(), 10, 10, 0);
    expectPoint(leader->endPoint(), 21, 12, 3);
    expectPoint(leader->tag().position(), 21, 12, 3);

    EXPECT_EQ(entity->moveStretchPointsAt(AcDbIntArray{1}, AcGeVector3d(0, -10, 0)), Acad::eOk);
    expectPoint(leader->middlePoint(), 10, 0, 0);
}

TEST_F(LeaderTest, TransformMovesThePointsRebuildsTheTagAndKeepsTheScale) {
    auto leader = makeLeader(2.0);
    AcDbEntity* entity = leader.get();
    const AcGeMatrix3d rotation =
        AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d::kZAxis, AcGePoint3d(0, 0, 0));
    EXPECT_EQ(entity->transformBy(rotation * AcGeMatrix3d::scaling(2.0)), Acad::eOk);
    expectPoint(leader->middlePoint(), -20, 20, 0);
    expectPoint(leader->endPoint(), -20, 40, 0);
    EXPECT_NEAR(leader->tag().rotation(), std::numbers::pi / 2, kTol);
    EXPECT_EQ(leader->scale(), 2.0);
    expectPoint(leader->tailPoint(), -20, 38, 0);
}

TEST_F(LeaderTest, ExplodeGivesTwoLinesThenTheTagsEntities) {
    auto leader = makeLeader(2.0);
    AcDbVoidPtrArray parts;
    ASSERT_EQ(static_cast<AcDbEntity*>(leader.get())->explode(parts), Acad::eOk);
    std::vector<std::unique_ptr<AcDbEntity>> owned;
    for (void* part : parts) owned.emplace_back(static_cast<AcDbEntity*>(part));
    ASSERT_EQ(owned.size(), 4u);
    auto* first = AcDbLine::cast(owned[0].get());
    auto* second = AcDbLine::cast(owned[1].get());
    ASSERT_TRUE(first && second);
    expectPoint(first->startPoint(), 0, 0, 0);
    expectPoint(first->endPoint(), 10, 10, 0);
    expectPoint(second->endPoint(), 18, 10, 0);
    EXPECT_EQ(first->layerId(), layer_);
    auto* circle = AcDbCircle::cast(owned[2].get());
    ASSERT_NE(circle, nullptr);
    expectPoint(circle->center(), 20, 10, 0);
    EXPECT_NEAR(circle->radius(), 1.0, kTol);  // the unit tag at scale 2
}

TEST_F(LeaderTest, ExtentsCoverTheSegmentsAndTheTag) {
    auto leader = makeLeader(2.0);
    AcDbExtents extents;
    EXPECT_EQ(static_cast<AcDbEntity*>(leader.get())->getGeomExtents(extents), Acad::eOk);
    expectPoint(extents.minPoint(), 0, 0, 0);
    EXPECT_NEAR(extents.maxPoint().x, 21, 1e-6);  // the tag circle reaches one past the end
    EXPECT_NEAR(extents.maxPoint().y, 11, 1e-6);
}

TEST_F(LeaderTest, SnapsAndIntersectionsAskBothSegmentsAndTheTag) {
    auto leader = makeLeader(2.0);
    AcGePoint3dArray snaps;
    AcDbIntArray ids;
    EXPECT_EQ(static_cast<AcDbEntity*>(leader.get())
                  ->getOsnapPoints(AcDb::kOsModeEnd, 0, AcGePoint3d(), AcGePoint3d(),
                                   AcGeMatrix3d::kIdentity, snaps, ids),
              Acad::eOk);
    EXPECT_TRUE(snaps.contains(AcGePoint3d(0, 0, 0)));
    EXPECT_TRUE(snaps.contains(AcGePoint3d(10, 10, 0)));
    EXPECT_TRUE(snaps.contains(AcGePoint3d(18, 10, 0)));

    AcDbLine across(AcGePoint3d(5, -5, 0), AcGePoint3d(5, 20, 0));
    AcGePoint3dArray points;
    EXPECT_EQ(static_cast<AcDbEntity*>(leader.get())
                  ->intersectWith(&across, AcDb::kOnBothOperands, points),
              Acad::eOk);
    ASSERT_FALSE(points.isEmpty());
    expectPoint(points[0], 5, 5, 0);
}

TEST_F(LeaderTest, SetLayerReachesTheTagOnlyWithSubentities) {
    auto leader = makeLeader();
    const AcDbObjectId other = test::addLayer(db_, L"OTHER");
    EXPECT_EQ(leader->setLayer(other, false), Acad::eOk);
    EXPECT_EQ(leader->layerId(), other);
    EXPECT_EQ(leader->tag().layerId(), layer_);
    EXPECT_EQ(leader->setLayer(other), Acad::eOk);  // with subentities by default
    EXPECT_EQ(leader->tag().layerId(), other);
}

TEST_F(LeaderTest, ListPrintsThePointsThenTheTag) {
    const AcDbObjectId id = test::addToModelSpace(db_, makeLeader().release());
    std::wstring out;
    host::Host::instance().setOutput([&](std::wstring_view s) { out += s; });
    {
        AcDbObjectPointer<TVLeader> leader(id, AcDb::kForRead);
        static_cast<const AcDbEntity*>(leader.object())->list();
    }
    host::Host::instance().setOutput(nullptr);
    const std::wstring points =
        L"                   Starting point = 0.000000, 0.000000, 0.000000\n"
        L"                   Middle point = 10.000000, 10.000000, 0.000000\n"
        L"                   End point = 20.000000, 10.000000, 0.000000\n\n";
    const auto at = out.find(points);
    ASSERT_NE(at, std::wstring::npos) << std::string(out.begin(), out.end());
    EXPECT_LT(out.find(L"TVLeader"), at);                             // the base listing first
    EXPECT_NE(out.find(L"AcDbBlockReference", at), std::wstring::npos);  // the tag's after
}

// --- DWG filing --------------------------------------------------------------------------

TEST_F(LeaderTest, ACopyThroughTheDwgFilerIsTheSameLeader) {
    auto leader = makeLeader(2.5);
    leader->setPoints(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6), AcGePoint3d(7, 8, 9));
    std::unique_ptr<TVLeader> copy(TVLeader::cast(leader->clone()));
    ASSERT_NE(copy, nullptr);
    expectPoint(copy->startPoint(), 1, 2, 3);
    expectPoint(copy->middlePoint(), 4, 5, 6);
    expectPoint(copy->endPoint(), 7, 8, 9);
    EXPECT_EQ(copy->scale(), 2.5);
    EXPECT_EQ(copy->blockId(), block_);
    EXPECT_EQ(copy->tag().blockTableRecord(), block_);
    EXPECT_EQ(copy->tag().layerId(), layer_);
    EXPECT_NEAR(copy->tag().scaleFactors().sz, 2.5, kTol);
    expectPoint(copy->tag().position(), 7, 8, 9);
}

TEST_F(LeaderTest, DeepCloneInTheDrawingKeepsBlockLayerAndExtendedData) {
    const AcDbObjectId id = test::addToModelSpace(db_, makeLeader(1.5).release());
    {
        AcDbObjectPointer<TVLeader> leader(id, AcDb::kForWrite);
        AcDbRegAppTable* apps = nullptr;
        ASSERT_EQ(db_.getSymbolTable(apps, AcDb::kForWrite), Acad::eOk);
        auto* app = new AcDbRegAppTableRecord();
        app->setName(L"TARVIK");
        apps->add(app);
        app->close();
        apps->close();
        resbuf* xdata = acutBuildList(1001, L"TARVIK", 1000, L"Tag", 1071, 42, 0);
        EXPECT_EQ(leader->setXData(xdata), Acad::eOk);
        acutRelRb(xdata);
    }
    AcDbIdMapping map;
    AcDbObjectIdArray ids{id};
    ASSERT_EQ(db_.deepCloneObjects(ids, db_.modelSpaceId(), map), Acad::eOk);
    AcDbIdPair pair(id, AcDbObjectId(), false);
    ASSERT_TRUE(map.compute(pair));
    AcDbObjectPointer<TVLeader> copy(pair.value(), AcDb::kForRead);
    ASSERT_EQ(copy.openStatus(), Acad::eOk);
    EXPECT_EQ(copy->blockId(), block_);
    EXPECT_EQ(copy->layerId(), layer_);
    EXPECT_EQ(copy->scale(), 1.5);
    resbuf* xdata = copy->xData(L"TARVIK");
    ASSERT_NE(xdata, nullptr);
    ASSERT_NE(xdata->rbnext, nullptr);
    ASSERT_NE(xdata->rbnext->rbnext, nullptr);
    EXPECT_EQ(xdata->rbnext->rbnext->resval.rlong, 42);
    acutRelRb(xdata);
}

// Writes the entity's base fields and then a leader body of the given version by hand.
drawing::DwgMemoryFiler streamOfVersion(const TVLeader& base, AcDbDatabase* db,
                                        Adesk::Int32 version, double scale, AcDbObjectId block) {
    drawing::DwgMemoryFiler filer(AcDb::kCopyFiler, db);
    base.AcDbEntity::dwgOutFields(&filer);
    filer.writeInt32(version);
    filer.writePoint3d(AcGePoint3d(0, 0, 0));
    filer.writePoint3d(AcGePoint3d(0, 4, 0));
    filer.writePoint3d(AcGePoint3d(3, 4, 0));
    filer.writeDouble(scale);
    filer.writeBool(!block.isNull());
    if (!block.isNull()) filer.writeHardPointerId(block);
    filer.writeInt32(0);  // no extended data
    filer.rewind();
    return filer;
}

TEST_F(LeaderTest, AVersionOneStreamIsReadWithTheDrawingScaleApplied) {
    db_.setDimscale(48.0);
    auto base = makeLeader();
    auto filer = streamOfVersion(*base, &db_, 1, 0.125, block_);
    TVLeader read;
    EXPECT_EQ(read.dwgIn(&filer), Acad::eOk);
    EXPECT_DOUBLE_EQ(read.scale(), 6.0);
    EXPECT_NEAR(read.tag().scaleFactors().sx, 6.0, kTol);
    EXPECT_EQ(read.blockId(), block_);
    EXPECT_EQ(read.tag().blockTableRecord(), block_);
    expectPoint(read.tailPoint(), -3, 4, 0);

    auto v2 = streamOfVersion(*base, &db_, 2, 0.125, AcDbObjectId());
    TVLeader second;
    EXPECT_EQ(second.dwgIn(&v2), Acad::eOk);
    EXPECT_DOUBLE_EQ(second.scale(), 0.125);  // version 2 stores the applied scale
    EXPECT_TRUE(second.blockId().isNull());
    EXPECT_EQ(second.tag().layerId(), layer_);
}

TEST_F(LeaderTest, ANewerVersionAsksToBeKeptAsAProxy) {
    auto base = makeLeader();
    for (Adesk::Int32 version : {3, 17}) {
        auto filer = streamOfVersion(*base, &db_, version, 1.0, block_);
        TVLeader read;
        EXPECT_EQ(read.dwgIn(&filer), Acad::eMakeMeProxy) << version;
        EXPECT_EQ(static_cast<int>(Acad::eMakeMeProxy), 301);
    }
}

TEST_F(LeaderTest, AnErasedBlockIsNotWritten) {
    auto leader = makeLeader();
    {
        AcDbObjectPointer<AcDbBlockTableRecord> block(block_, AcDb::kForWrite);
        ASSERT_EQ(block->erase(), Acad::eOk);
    }
    std::unique_ptr<TVLeader> copy(TVLeader::cast(leader->clone()));
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->blockId().isNull());
}

// --- DXF filing --------------------------------------------------------------------------

TEST_F(LeaderTest, DxfOutWritesTheSubclassPointsAndScaleButNoBlock) {
    auto leader = makeLeader(2.0);
    ListDxfFiler filer(&db_);
    ASSERT_EQ(leader->dxfOutFields(&filer), Acad::eOk);
    std::size_t marker = 0;
    while (marker < filer.items.size() &&
           !(filer.items[marker].code == 100 && filer.items[marker].text == L"TVLeader"))
        ++marker;
    ASSERT_EQ(filer.items.size(), marker + 5);
    EXPECT_EQ(filer.items[marker + 1].code, 10);
    EXPECT_EQ(filer.items[marker + 2].code, 11);
    EXPECT_EQ(filer.items[marker + 3].code, 12);
    EXPECT_EQ(filer.items[marker + 4].code, 40);
    expectPoint(filer.items[marker + 2].point, 10, 10, 0);
    EXPECT_EQ(filer.items[marker + 4].real, 2.0);
    EXPECT_EQ(filer.find(340), nullptr);
    EXPECT_NE(filer.find(8), nullptr);  // the entity's base fields come first

    TVLeader read;
    filer.startReading();
    ASSERT_EQ(read.dxfInFields(&filer), Acad::eOk);
    expectPoint(read.middlePoint(), 10, 10, 0);
    expectPoint(read.endPoint(), 20, 10, 0);
    EXPECT_EQ(read.scale(), 2.0);
    EXPECT_EQ(read.layerId(), layer_);
    expectPoint(read.tag().position(), 20, 10, 0);
}

TEST_F(LeaderTest, DxfWithoutScaleKeepsTheScaleAndOtherGroupsAreSkipped) {
    auto leader = makeLeader(4.0);
    ListDxfFiler filer(&db_);
    filer.items = {{100, L"AcDbEntity"}, {8, L"TAGS"}, {100, L"TVLeader"}};
    filer.items.push_back(test::DxfRecord::pointItem(12, AcGePoint3d(1, 1, 5)));
    filer.items.push_back(test::DxfRecord::integerItem(62, 3));
    ASSERT_EQ(leader->dxfInFields(&filer), Acad::eOk);
    EXPECT_EQ(leader->scale(), 4.0);
    expectPoint(leader->endPoint(), 1, 1, 5);
    expectPoint(leader->tag().position(), 1, 1, 5);

    ListDxfFiler wrong(&db_);
    wrong.items = {{100, L"AcDbEntity"}, {8, L"TAGS"}, {100, L"AcDbLine"}};
    EXPECT_EQ(leader->dxfInFields(&wrong), Acad::eBadDxfSequence);
    EXPECT_EQ(static_cast<int>(Acad::eBadDxfSequence), 52);
}

}  // namespace
}  // namespace kelvo
