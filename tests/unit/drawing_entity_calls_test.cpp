// The C-level entity calls on the working database: make, read, walk, select.

#include <gtest/gtest.h>

#include "acedads.h"
#include "adslib.h"
#include "dbapserv.h"
#include "dbmain.h"
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
