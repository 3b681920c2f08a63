// The leader functions and the extended data functions, called as the host calls them in
// a drawing of the host: arguments, results, messages and what lands in the drawing.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "acdocman.h"
#include "dbobjptr.h"
#include "entities/leader_functions.h"
#include "entities/tv_leader.h"
#include "entities/tv_leader_class.h"
#include "entities/xdata_functions.h"
#include "entities_test_support.h"
#include "module_test_support.h"

namespace kelvo {
namespace {

using test::call;
using test::list;

class EntityFunctions : public ::testing::Test {
protected:
    static void SetUpTestSuite() { registerTvLeaderClass(); }
    static void TearDownTestSuite() { unregisterTvLeaderClass(); }

    void SetUp() override {
        host::Host::instance().newDocument();
        db_ = acDocManagerPtr()->curDocument()->database();
        test::addLayer(*db_, L"TAGS");
        block_ = test::addTagBlock(*db_, L"TAG1");
        test::addTagBlock(*db_, L"TAG2");
    }
    void TearDown() override { host::Host::instance().shutdown(); }

    // (tv_tv-leader-insert ((0 0) (10 10) (20 10)) layer block scale)
    host::CallOutcome insert(const wchar_t* layer, const wchar_t* block, resbuf* scale) {
        ads_point p0{0, 0, 0}, p1{10, 10, 0}, p2{20, 10, 0};
        ValueList args(acutBuildList(RTLB, RT3DPOINT, p0, RTPOINT, p1, RT3DPOINT, p2, RTLE,
                                     RTSTR, layer, RTSTR, block, 0));
        resbuf* tail = args.get();
        while (tail->rbnext) tail = tail->rbnext;
        tail->rbnext = scale;
        return call(tvLeaderInsert, args);
    }

    // The newest entity of model space.
    AcDbObjectId lastEntity() {
        AcDbObjectPointer<AcDbBlockTableRecord> space(db_->modelSpaceId(), AcDb::kForRead);
        const AcDbObjectIdArray& ids = space->entityIds();
        return ids.isEmpty() ? AcDbObjectId() : ids.last();
    }
    int entityCount() {
        AcDbObjectPointer<AcDbBlockTableRecord> space(db_->modelSpaceId(), AcDb::kForRead);
        return space->entityIds().length();
    }

    ValueList nameArg(AcDbObjectId id) {
        ads_name name;
        EXPECT_EQ(acdbGetAdsName(name, id), RTNORM);
        return list(RTENAME, name);
    }
    // The entity name followed by more arguments.
    ValueList nameThen(AcDbObjectId id, resbuf* rest) {
        ValueList args = nameArg(id);
        args->rbnext = rest;
        return args;
    }

    AcDbObjectId insertLeader(double scale = 2.0) {
        const auto out = insert(L"TAGS", L"TAG1", acutBuildList(RTREAL, scale, 0));
        EXPECT_NE(out.result, L"nil") << out.printed;
        return lastEntity();
    }

    AcDbDatabase* db_ = nullptr;
    AcDbObjectId block_;
};

TEST_F(EntityFunctions, InsertTakesAnIntegerScaleTimesDimscale) {
    db_->setDimscale(4.0);
    const auto out = insert(L"tags", L"TAG1", acutBuildList(RTSHORT, 3, 0));
    EXPECT_EQ(out.rc, RSRSLT);
    EXPECT_EQ(out.result.rfind(L"<Entity name", 0), 0u) << out.result;
    AcDbObjectPointer<TVLeader> leader(lastEntity(), AcDb::kForRead);
    ASSERT_EQ(leader.openStatus(), Acad::eOk);
    EXPECT_EQ(leader->scale(), 12.0);
    EXPECT_EQ(leader->blockId(), block_);
    EXPECT_EQ(leader->tag().blockTableRecord(), block_);
    EXPECT_EQ(leader->ownerId(), db_->modelSpaceId());
}

TEST_F(EntityFunctions, InsertWithAnUnknownLayerOrBlockAddsNothing) {
    test::ScriptedUi ui;
    EXPECT_EQ(insert(L"NOLAYER", L"TAG1", acutBuildList(RTREAL, 1.0, 0)).result, L"nil");
    EXPECT_TRUE(ui->boxes.empty());
    EXPECT_EQ(insert(L"TAGS", L"NOSUCHTAG", acutBuildList(RTREAL, 1.0, 0)).result, L"nil");
    ASSERT_EQ(ui->boxes.size(), 1u);
    EXPECT_EQ(ui->boxes[0].text,
              L"Block NOSUCHTAG could not be found.\nLocate this drawing and place it in your "
              L"AutoCAD support path.");
    EXPECT_EQ(ui->boxes[0].caption, L"Tarvik");
    EXPECT_EQ(ui->boxes[0].style, MB_ICONERROR);
    EXPECT_EQ(entityCount(), 0);
}

TEST_F(EntityFunctions, ABlockFileOnTheSupportPathIsLookedFor) {
    const auto folder = std::filesystem::temp_directory_path() / "kelvo-entities-blocks";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "BROKEN.dwg") << "not a drawing\n";
    host::Host::instance().defineVar(L"ACADPREFIX", lisp::Value::string(folder.wstring() + L";"));
    test::ScriptedUi ui;
    const auto out = insert(L"TAGS", L"BROKEN", acutBuildList(RTREAL, 1.0, 0));
    EXPECT_EQ(out.result, L"nil");
    EXPECT_TRUE(ui->boxes.empty());  // found, so no box: it could not be read instead
    EXPECT_NE(out.printed.find(L"Block BROKEN could not be read from"), std::wstring::npos)
        << out.printed;
    std::filesystem::remove_all(folder);
}

TEST_F(EntityFunctions, PointsMayComeAsListsOfIntegers) {
    ads_point end{20, 10, 0};
    const auto out = call(tvLeaderInsert,
                          list(RTLB, RTLB, RTSHORT, 1, RTSHORT, 2, RTLE, RTLB, RTSHORT, 3,
                               RTSHORT, 4, RTSHORT, 5, RTLE, RT3DPOINT, end, RTLE, RTSTR, L"TAGS",
                               RTSTR, L"TAG1", RTREAL, 1.0));
    ASSERT_NE(out.result, L"nil") << out.printed;
    AcDbObjectPointer<TVLeader> leader(lastEntity(), AcDb::kForRead);
    EXPECT_EQ(leader->startPoint(), AcGePoint3d(1, 2, 0));
    EXPECT_EQ(leader->middlePoint(), AcGePoint3d(3, 4, 5));
}

TEST_F(EntityFunctions, InsertRefusesBadArguments) {
    ads_point p{0, 0, 0};
    const auto twoPoints = call(tvLeaderInsert, list(RTLB, RT3DPOINT, p, RT3DPOINT, p, RTLE,
                                                     RTSTR, L"TAGS", RTSTR, L"TAG1", RTREAL, 1.0));
    EXPECT_EQ(twoPoints.result, L"nil");
    EXPECT_EQ(twoPoints.printed, L"\nWrong type of arguments passed.\n");
    const auto textScale = insert(L"TAGS", L"TAG1", acutBuildList(RTSTR, L"2", 0));
    EXPECT_EQ(textScale.printed, L"\nWrong type of arguments passed.\n");
    EXPECT_EQ(entityCount(), 0);
}

TEST_F(EntityFunctions, SetPointsBlockAndOffsetEditTheLeader) {
    const AcDbObjectId id = insertLeader(2.0);
    ads_point a{1, 1, 0}, b{1, 5, 0}, c{4, 5, 0};
    EXPECT_EQ(call(tvLeaderSetPoints,
                   nameThen(id, acutBuildList(RTLB, RT3DPOINT, a, RTPOINT, b, RT3DPOINT, c,
                                              RTLE, 0)))
                  .result,
              L"T");
    db_->setDimscale(10.0);
    EXPECT_EQ(call(tvLeaderSetOffset, nameThen(id, acutBuildList(RTSHORT, 2, 0))).result, L"T");
    EXPECT_EQ(call(tvLeaderSetBlock, nameThen(id, acutBuildList(RTSTR, L"TAG2", 0))).result, L"T");
    AcDbObjectPointer<TVLeader> leader(id, AcDb::kForRead);
    EXPECT_EQ(leader->middlePoint(), AcGePoint3d(1, 5, 0));
    EXPECT_EQ(leader->tag().position(), AcGePoint3d(4, 5, 0));
    EXPECT_EQ(leader->scale(), 20.0);
    EXPECT_NE(leader->blockId(), block_);
    EXPECT_EQ(leader->tag().blockTableRecord(), leader->blockId());
}

TEST_F(EntityFunctions, AnUnknownBlockLeavesTheLeaderAndStillAnswersT) {
    const AcDbObjectId id = insertLeader();
    test::ScriptedUi ui;
    EXPECT_EQ(call(tvLeaderSetBlock, nameThen(id, acutBuildList(RTSTR, L"GONE", 0))).result, L"T");
    EXPECT_EQ(ui->boxes.size(), 1u);
    AcDbObjectPointer<TVLeader> leader(id, AcDb::kForRead);
    EXPECT_EQ(leader->blockId(), block_);
}

TEST_F(EntityFunctions, EditingSomethingThatIsNotALeaderAnswersNil) {
    const AcDbObjectId line =
        test::addToModelSpace(*db_, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0)));
    const auto out = call(tvLeaderSetOffset, nameThen(line, acutBuildList(RTREAL, 2.0, 0)));
    EXPECT_EQ(out.result, L"nil");
    EXPECT_EQ(out.printed, L"");
    EXPECT_EQ(call(tvLeaderExplode, nameArg(line)).result, L"nil");
    EXPECT_EQ(call(tvLeaderSetOffset, list(RTSTR, L"x", RTREAL, 2.0)).printed,
              L"\nWrong type of arguments passed.\n");
}

TEST_F(EntityFunctions, ExplodeAddsTwoLinesAndTheTagAndKeepsTheLeader) {
    const AcDbObjectId id = insertLeader(0.0);  // scale 0: the second line reaches the end
    {
        AcDbObjectPointer<TVLeader> leader(id, AcDb::kForWrite);
        leader->setLinetype(db_->continuousLinetype());
    }
    const auto out = call(tvLeaderExplode, nameArg(id));
    EXPECT_EQ(out.result.rfind(L"(<Entity name", 0), 0u) << out.result;
    ASSERT_EQ(entityCount(), 4);
    AcDbObjectPointer<AcDbBlockTableRecord> space(db_->modelSpaceId(), AcDb::kForRead);
    const AcDbObjectIdArray& ids = space->entityIds();
    EXPECT_EQ(ids[0], id);
    AcDbObjectPointer<AcDbLine> second(ids[2], AcDb::kForRead);
    ASSERT_EQ(second.openStatus(), Acad::eOk);
    EXPECT_EQ(second->endPoint(), AcGePoint3d(20, 10, 0));
    AcDbObjectPointer<AcDbBlockReference> tag(ids[3], AcDb::kForRead);
    ASSERT_EQ(tag.openStatus(), Acad::eOk);
    EXPECT_EQ(tag->blockTableRecord(), block_);
    EXPECT_EQ(tag->position(), AcGePoint3d(20, 10, 0));
    EXPECT_EQ(tag->scaleFactors().sx, 0.0);
    AcDbObjectPointer<TVLeader> leader(id, AcDb::kForRead);
    EXPECT_EQ(tag->layerId(), leader->layerId());
    EXPECT_EQ(second->linetypeId(), db_->continuousLinetype());
}

// --- extended data -----------------------------------------------------------------------

class ExtendedData : public EntityFunctions {
protected:
    void SetUp() override {
        EntityFunctions::SetUp();
        line_ = test::addToModelSpace(*db_, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    }
    host::CallOutcome put(resbuf* items) { return call(kvXdputList, nameThen(line_, items)); }
    std::wstring get(const wchar_t* key) {
        return call(kvXdget, nameThen(line_, acutBuildList(RTSTR, key, 0))).result;
    }
    std::wstring all() { return call(kvXdgetAll, nameArg(line_)).result; }
    AcDbObjectId line_;
};

TEST_F(ExtendedData, ValuesComeBackWithTheirTypesInStoredOrder) {
    EXPECT_EQ(put(acutBuildList(RTLB, RTSTR, L"Size", RTSTR, L"12x8", RTSTR, L"Flow", RTREAL,
                                450.5, RTSTR, L"Count", RTSHORT, 3, RTSTR, L"Big", RTLONG,
                                100000, RTLE, 0))
                  .result,
              L"T");
    EXPECT_EQ(get(L"Size"), L"\"12x8\"");
    EXPECT_EQ(get(L"Flow"), L"450.5");
    EXPECT_EQ(get(L"Count"), L"3");
    EXPECT_EQ(get(L"Big"), L"100000");
    EXPECT_EQ(get(L"size"), L"nil");  // keys are case-sensitive
    EXPECT_EQ(all(), L"((\"Size\" . \"12x8\") (\"Flow\" . 450.5) (\"Count\" . 3) (\"Big\" . 100000))");
    EXPECT_EQ(call(kvXdgetList,
                   nameThen(line_, acutBuildList(RTLB, RTSTR, L"Big", RTSTR, L"Size", RTSTR,
                                                 L"None", RTLE, 0)))
                  .result,
              L"((\"Size\" . \"12x8\") (\"Big\" . 100000))");

    AcDbObjectPointer<AcDbEntity> line(line_, AcDb::kForRead);
    ValueList raw(line->xData(L"TARVIK"));
    std::vector<int> codes;
    for (const resbuf* rb = raw.get(); rb; rb = rb->rbnext) codes.push_back(rb->restype);
    EXPECT_EQ(codes, (std::vector<int>{1001, 1000, 1000, 1000, 1040, 1000, 1071, 1000, 1071}));
}

TEST_F(ExtendedData, ANewListReplacesEverythingNilDropsAKeyAndNoListClears) {
    put(acutBuildList(RTLB, RTSTR, L"A", RTSTR, L"1", RTSTR, L"B", RTSTR, L"2", RTLE, 0));
    EXPECT_EQ(put(acutBuildList(RTLB, RTSTR, L"B", RTNIL, RTSTR, L"C", RTREAL, 3.0, RTLE, 0)).result,
              L"T");
    EXPECT_EQ(all(), L"((\"C\" . 3.0))");
    EXPECT_EQ(call(kvXdputList, nameArg(line_)).result, L"T");
    EXPECT_EQ(all(), L"nil");
    EXPECT_EQ(get(L"C"), L"nil");
}

TEST_F(ExtendedData, ADuplicateKeyIsStoredTwiceAndTheFirstIsFound) {
    put(acutBuildList(RTLB, RTSTR, L"K", RTSTR, L"first", RTSTR, L"k", RTSTR, L"lower", RTSTR,
                      L"K", RTSTR, L"second", RTLE, 0));
    EXPECT_EQ(get(L"K"), L"\"first\"");
    EXPECT_EQ(get(L"k"), L"\"lower\"");
    EXPECT_EQ(all(), L"((\"K\" . \"first\") (\"k\" . \"lower\") (\"K\" . \"second\"))");
}

TEST_F(ExtendedData, AValueThatCannotBeStoredChangesNothing) {
    put(acutBuildList(RTLB, RTSTR, L"Keep", RTSTR, L"me", RTLE, 0));
    ads_point p{1, 2, 3};
    for (resbuf* bad : {acutBuildList(RTLB, RTSTR, L"A", RTT, RTLE, 0),
                        acutBuildList(RTLB, RTSTR, L"A", RT3DPOINT, p, RTLE, 0),
                        acutBuildList(RTLB, RTSTR, L"A", RTLB, RTSTR, L"x", RTLE, RTLE, 0),
                        acutBuildList(RTSTR, L"A", RTSTR, L"1", 0)}) {
        const auto out = put(bad);
        EXPECT_EQ(out.result, L"nil");
        EXPECT_EQ(out.printed, L"\nWrong type of arguments passed.\n");
    }
    EXPECT_EQ(all(), L"((\"Keep\" . \"me\"))");
}

TEST_F(ExtendedData, ANonTextWhereAKeyIsExpectedWritesThePairsBeforeIt) {
    put(acutBuildList(RTLB, RTSTR, L"Old", RTSTR, L"gone", RTLE, 0));
    const auto out = put(acutBuildList(RTLB, RTSTR, L"A", RTSTR, L"1", RTREAL, 2.0, RTSTR, L"B",
                                       RTSTR, L"never", RTLE, 0));
    EXPECT_EQ(out.result, L"T");
    EXPECT_EQ(out.printed, L"");
    EXPECT_EQ(all(), L"((\"A\" . \"1\"))");
    // Nothing before it: the application's values are cleared.
    EXPECT_EQ(put(acutBuildList(RTLB, RTLONG, 5, RTSTR, L"C", RTSTR, L"x", RTLE, 0)).result, L"T");
    EXPECT_EQ(all(), L"nil");
}

TEST_F(ExtendedData, AnEntityWithoutDataReadsNilAndTheApplicationIsRegisteredOnWrite) {
    EXPECT_EQ(get(L"A"), L"nil");
    EXPECT_EQ(all(), L"nil");
    EXPECT_EQ(call(kvXdgetList, nameThen(line_, acutBuildList(RTLB, RTSTR, L"A", RTLE, 0))).result,
              L"nil");
    AcDbRegAppTable* apps = nullptr;
    ASSERT_EQ(db_->getSymbolTable(apps, AcDb::kForRead), Acad::eOk);
    EXPECT_FALSE(apps->has(L"TARVIK"));
    apps->close();
    put(acutBuildList(RTLB, RTSTR, L"A", RTLONG, 7, RTLE, 0));
    ASSERT_EQ(db_->getSymbolTable(apps, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(apps->has(L"TARVIK"));
    apps->close();
    EXPECT_EQ(call(kvXdget, list(RTSTR, L"not an entity", RTSTR, L"A")).printed,
              L"\nWrong type of arguments passed.\n");
}

TEST_F(ExtendedData, ValuesOfOtherApplicationsAndUnreportableKindsAreLeftAlone) {
    AcDbObjectPointer<AcDbEntity> line(line_, AcDb::kForWrite);
    AcDbRegAppTable* apps = nullptr;
    ASSERT_EQ(db_->getSymbolTable(apps, AcDb::kForWrite), Acad::eOk);
    for (const wchar_t* name : {L"OTHER", L"TARVIK"}) {
        if (apps->has(name)) continue;
        auto* app = new AcDbRegAppTableRecord();
        app->setName(name);
        apps->add(app);
        app->close();
    }
    apps->close();
    ads_point p{1, 2, 3};
    resbuf* data = acutBuildList(1001, L"OTHER", 1000, L"X", 1000, L"y", 1001, L"TARVIK", 1000,
                                 L"", 1000, L"empty key", 1070, 5, 1000, L"P", 1010, p, 1000,
                                 L"S", 1070, 9, 1000, L"Last", 0);
    ASSERT_EQ(line->setXData(data), Acad::eOk);
    acutRelRb(data);
    line.close();
    EXPECT_EQ(all(), L"((\"P\" 1.0 2.0 3.0) (\"S\" . 9))");
    EXPECT_EQ(get(L"P"), L"(1.0 2.0 3.0)");
    EXPECT_EQ(get(L"Last"), L"nil");  // a key with nothing after it
    EXPECT_EQ(get(L"X"), L"nil");     // another application's key
    put(acutBuildList(RTLB, RTSTR, L"Mine", RTSTR, L"1", RTLE, 0));
    AcDbObjectPointer<AcDbEntity> again(line_, AcDb::kForRead);
    ValueList other(again->xData(L"OTHER"));
    ASSERT_NE(other, nullptr);
    EXPECT_STREQ(other->rbnext->resval.rstring, L"X");
}

}  // namespace
}  // namespace kelvo
