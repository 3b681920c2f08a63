// The C-level entity calls on the working database: make, read, walk, select.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "acedads.h"
#include "adslib.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/drawing/resbuf_chain.h"

namespace {

using kelvo::drawing::RbChain;

class WorkingDatabase : public ::testing::Test {
protected:
    void SetUp() override { acdbHostApplicationServices()->setWorkingDatabase(&db); }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }
    AcDbDatabase db;
};

const resbuf* group(const resbuf* list, int code) {
    for (; list; list = list->rbnext)
        if (list->restype == code) return list;
    return nullptr;
}

TEST_F(WorkingDatabase, MakeReadWalkAndSelect) {
    ads_point a = {0, 0, 0}, b = {3, 4, 0};
    RbChain line(acutBuildList(RTDXF0, L"LINE", 8, L"Ducts", 10, a, 11, b, 0));
    RbChain circle(acutBuildList(RTDXF0, L"CIRCLE", 10, b, 40, 2.0, 0));
    ASSERT_EQ(acdbEntMake(line.get()), RTNORM);
    ASSERT_EQ(acdbEntMake(circle.get()), RTNORM);

    ads_name first{}, second{}, none{};
    ASSERT_EQ(acdbEntNext(nullptr, first), RTNORM);
    ASSERT_EQ(acdbEntNext(first, second), RTNORM);
    EXPECT_NE(acdbEntNext(second, none), RTNORM);
    ads_name last{};
    ASSERT_EQ(acdbEntLast(last), RTNORM);
    EXPECT_EQ(last[0], second[0]);

    RbChain data(acdbEntGet(first));
    ASSERT_NE(group(data.get(), 8), nullptr);
    EXPECT_STREQ(group(data.get(), 8)->resval.rstring, L"Ducts");
    ads_name again{};
    ASSERT_EQ(acdbHandEnt(group(data.get(), 5)->resval.rstring, again), RTNORM);
    EXPECT_EQ(again[0], first[0]);

    RbChain filter(acutBuildList(RTDXF0, L"CIRCLE", 0));
    ads_name ss{};
    ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, filter.get(), ss), RTNORM);
    std::int32_t n = 0;
    ASSERT_EQ(acedSSLength(ss, &n), RTNORM);
    EXPECT_EQ(n, 1);
    ads_name member{};
    ASSERT_EQ(acedSSName(ss, 0, member), RTNORM);
    EXPECT_EQ(member[0], second[0]);
    EXPECT_EQ(acedSSName(ss, 1, member), RTERROR);
    EXPECT_EQ(acedSSFree(ss), RTNORM);
    EXPECT_EQ(acedSSLength(ss, &n), RTERROR);
    EXPECT_EQ(acedSSGet(L"W", nullptr, nullptr, nullptr, ss), RTREJ);

    ASSERT_EQ(acdbEntDel(first), RTNORM);
    EXPECT_EQ(acdbEntGet(first), nullptr);
    ASSERT_EQ(acdbEntNext(nullptr, first), RTNORM);
    EXPECT_EQ(first[0], second[0]);   // an erased entity is skipped
}

// The codes of the groups that follow (100 . "AcDbEntity"), up to the layer.
std::vector<std::pair<int, std::wstring>> afterEntityMarker(const resbuf* list) {
    std::vector<std::pair<int, std::wstring>> out;
    while (list && !(list->restype == 100 && std::wstring(list->resval.rstring) == L"AcDbEntity"))
        list = list->rbnext;
    for (list = list ? list->rbnext : nullptr; list && list->restype != 8; list = list->rbnext)
        out.emplace_back(list->restype, list->restype == 67 ? std::to_wstring(list->resval.rint)
                                                            : std::wstring(list->resval.rstring));
    return out;
}

// Appends a line to the block and answers its entity list.
RbChain lineListIn(AcDbObjectId block) {
    AcDbBlockTableRecord* record = nullptr;
    EXPECT_EQ(acdbOpenObject(record, block, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0));
    EXPECT_EQ(record->appendAcDbEntity(id, line), Acad::eOk);
    line->close();
    record->close();
    ads_name name{};
    EXPECT_EQ(acdbGetAdsName(name, id), RTNORM);
    return RbChain(acdbEntGet(name));
}

TEST_F(WorkingDatabase, ListsNameTheSpaceAndLayoutOfTheirEntity) {
    using Groups = std::vector<std::pair<int, std::wstring>>;
    EXPECT_EQ(afterEntityMarker(lineListIn(db.modelSpaceId()).get()),
              (Groups{{67, L"0"}, {410, L"Model"}}));
    EXPECT_EQ(afterEntityMarker(lineListIn(db.paperSpaceId()).get()),
              (Groups{{67, L"1"}, {410, L"Layout1"}}));
    // An entity of a block definition is in no layout.
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(db.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* block = new AcDbBlockTableRecord();
    block->setName(L"TAG");
    AcDbObjectId blockId;
    ASSERT_EQ(table->add(blockId, block), Acad::eOk);
    block->close();
    table->close();
    EXPECT_EQ(afterEntityMarker(lineListIn(blockId).get()), Groups{});
}

TEST_F(WorkingDatabase, PolylineListsGiveEveryVertexItsWidths) {
    auto* pline = new AcDbPolyline();
    pline->addVertexAt(0, AcGePoint2d(0, 0));
    pline->addVertexAt(1, AcGePoint2d(4, 0), 0.5);
    pline->setConstantWidth(0.25);
    AcDbBlockTableRecord* space = nullptr;
    ASSERT_EQ(acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    ASSERT_EQ(space->appendAcDbEntity(id, pline), Acad::eOk);
    pline->close();
    space->close();
    ads_name name{};
    ASSERT_EQ(acdbGetAdsName(name, id), RTNORM);
    RbChain data(acdbEntGet(name));
    std::vector<int> codes;
    for (const resbuf* rb = group(data.get(), 43); rb && rb->restype != 210; rb = rb->rbnext)
        codes.push_back(rb->restype);
    EXPECT_EQ(codes, (std::vector<int>{43, 10, 40, 41, 42, 10, 40, 41, 42}));
    EXPECT_EQ(group(data.get(), 40)->resval.rreal, 0.25);
    EXPECT_EQ(group(data.get(), 43)->resval.rreal, 0.25);
    EXPECT_TRUE(kelvo::drawing::listsPointsIn2d(data.get(), 10));
    EXPECT_FALSE(kelvo::drawing::listsPointsIn2d(data.get(), 210));
}

TEST_F(WorkingDatabase, TablesAndApplications) {
    EXPECT_EQ(acdbRegApp(L"TARVIK"), RTNORM);
    EXPECT_EQ(acdbRegApp(L"tarvik"), RTERROR);   // names ignore case
    RbChain entry(acdbTblSearch(L"APPID", L"Tarvik", 0));
    ASSERT_NE(entry, nullptr);
    EXPECT_STREQ(group(entry.get(), 2)->resval.rstring, L"TARVIK");
    RbChain first(acdbTblNext(L"APPID", 1));
    ASSERT_NE(first, nullptr);
    EXPECT_STREQ(group(first.get(), 2)->resval.rstring, L"ACAD");
    ads_name layer{};
    EXPECT_EQ(acdbTblObjName(L"LAYER", L"0", layer), RTNORM);
    AcDbObjectId id;
    ASSERT_EQ(acdbGetObjectId(id, layer), RTNORM);
    EXPECT_EQ(id, db.layerZero());
}

}  // namespace
