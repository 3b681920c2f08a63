// The result builders as LISP sees their results.
#include <gtest/gtest.h>

#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"
#include "module_test_support.h"

namespace kelvo {
namespace {

using test::call;

int everyElementHandler() {
    HandlerArgs args;
    ads_point point = {1.0, 2.0, 3.0};
    ResultBuilder result;
    result.open();
    result.addText(L"a\"b");
    result.addReal(1.5);
    result.addBool(true);
    result.addBool(false);
    result.addPoint(point);
    result.close();
    EXPECT_TRUE(result.empty());
    return kArgOk;
}

TEST(ResultBuilder, ListOfSingleElements) {
    const auto outcome = call([] { return runGuarded(everyElementHandler); });
    EXPECT_EQ(outcome.rc, RSRSLT);
    EXPECT_EQ(outcome.result, L"(\"a\\\"b\" 1.5 T nil (1.0 2.0 3.0))");
}

int pairsHandler() {
    HandlerArgs args;
    ResultBuilder result;
    result.open();
    result.addPair(L"i", std::int32_t{7});
    result.addPair(L"r", 2.5);
    result.addPair(L"s", std::wstring(L"v"));
    result.addNilPair(L"n");
    result.addPair(L"e", AcDbObjectId());
    result.addPair(0.5, std::int32_t{1});
    result.addPair(std::int32_t{2}, 0.25);
    result.addPair(std::int32_t{3}, std::int32_t{4});
    result.close();
    return kArgOk;
}

TEST(ResultBuilder, DottedPairs) {
    const auto outcome = call([] { return runGuarded(pairsHandler); });
    EXPECT_EQ(outcome.result,
              L"((\"i\" . 7) (\"r\" . 2.5) (\"s\" . \"v\") (\"n\") (\"e\") (0.5 . 1) "
              L"(2 . 0.25) (3 . 4))");
}

int nestedHandler() {
    HandlerArgs args;
    ResultBuilder result;
    result.open();
    result.addBoolPair(L"t", true);
    result.addBoolPair(L"f", false);
    result.beginList();
    result.addText(L"k");
    result.beginList();
    result.addPair(L"a", std::wstring(L"b"));
    result.endList();
    result.endList();
    result.close();
    return kArgOk;
}

TEST(ResultBuilder, BooleanPairsAndNestedLists) {
    const auto outcome = call([] { return runGuarded(nestedHandler); });
    EXPECT_EQ(outcome.result, L"((\"t\" . T) (\"f\") (\"k\" ((\"a\" . \"b\"))))");
}

int hostValuePairsHandler() {
    HandlerArgs args;
    ads_point point = {1, 2, 0};
    ValueList values(acutBuildList(RTSHORT, 5, RTSTR, L"t", RTPOINT, point, RTT, 0));
    ResultBuilder result;
    result.open();
    for (const resbuf* v = values.get(); v != nullptr; v = v->rbnext) {
        if (!result.addPair(L"k", *v)) result.addText(L"refused");
    }
    result.close();
    return kArgOk;
}

TEST(ResultBuilder, PairsOfHostValuesAndRefusedTypes) {
    const auto outcome = call([] { return runGuarded(hostValuePairsHandler); });
    EXPECT_EQ(outcome.result, L"((\"k\" . 5) (\"k\" . \"t\") (\"k\" 1.0 2.0) \"refused\")");
}

int unclosedHandler() {
    HandlerArgs args;
    ResultBuilder result;
    result.open();
    result.addText(L"dropped");
    return kArgOk;  // never closed: released, result stays nil
}

TEST(ResultBuilder, UnclosedListIsReleasedAndSetsNoResult) {
    EXPECT_EQ(call([] { return runGuarded(unclosedHandler); }).result, L"nil");
}

TEST(ResultBuilder, IntegersBeyond16BitsBecomeReals) {
    struct Case {
        std::int64_t value;
        const wchar_t* printed;
    };
    const Case cases[] = {
        {32767, L"32767"}, {-32768, L"-32768"}, {40000, L"40000.0"}, {-32769, L"-32769.0"}};
    static std::int64_t current = 0;
    for (const Case& c : cases) {
        current = c.value;
        const auto outcome = call([] {
            returnInteger(current);
            return RSRSLT;
        });
        EXPECT_EQ(outcome.result, c.printed);
    }
}

TEST(ResultBuilder, ObjectIdWithoutNameGivesNil) {
    const auto outcome = call([] {
        acedRetT();
        returnObjectId(AcDbObjectId(123456789));
        return RSRSLT;
    });
    EXPECT_EQ(outcome.result, L"nil");
}

}  // namespace
}  // namespace kelvo
