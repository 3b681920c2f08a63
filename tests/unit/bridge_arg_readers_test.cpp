// The argument readers: what each accepts, what it yields, and where it leaves the
// cursor on success and on failure.
#include <gtest/gtest.h>

#include "bridge/arg_readers.h"
#include "module_test_support.h"

namespace kelvo {
namespace {

using test::list;

TEST(ArgReaders, IntegerTruncatesRealsTowardZero) {
    auto args = list(RTREAL, 2.9, RTREAL, -2.9, RTSHORT, -7, RTLONG, 100000);
    Cursor at = args.get();
    std::int32_t a = 0, b = 0, c = 0, d = 0;
    ASSERT_TRUE(readInteger(at, a) && readInteger(at, b) && readInteger(at, c) &&
                readInteger(at, d));
    EXPECT_EQ(a, 2);
    EXPECT_EQ(b, -2);
    EXPECT_EQ(c, -7);
    EXPECT_EQ(d, 100000);
    EXPECT_EQ(at, nullptr);
}

TEST(ArgReaders, IntegerOnGroupCodeYieldsTheCodeWithoutMoving) {
    auto args = list(62, 5);
    Cursor at = args.get();
    std::int32_t value = 0;
    ASSERT_TRUE(readInteger(at, value));
    EXPECT_EQ(value, 62);
    EXPECT_EQ(at, args.get());
}

TEST(ArgReaders, IntegerRefusesTextAndRealsBeyond32Bits) {
    auto args = list(RTSTR, L"1", RTREAL, 3e10);
    Cursor at = args.get();
    std::int32_t value = 99;
    EXPECT_FALSE(readInteger(at, value));
    EXPECT_EQ(at, args.get());
    at = args.get()->rbnext;
    EXPECT_FALSE(readInteger(at, value));
    EXPECT_EQ(value, 99);
}

TEST(ArgReaders, TextFailsOnOtherTypesAndAtTheEnd) {
    auto args = list(RTLONG, 4, RTSTR, L"x");
    Cursor at = args.get();
    std::wstring text = L"kept";
    EXPECT_FALSE(readText(at, text));
    EXPECT_EQ(text, L"kept");
    EXPECT_EQ(at, args.get());
    Cursor end = nullptr;
    EXPECT_FALSE(readText(end, text));
}

TEST(ArgReaders, NarrowTextKeepsTheLowByteOfEachCharacter) {
    auto args = list(RTSTR, L"A\u0142z");  // U+0142 has low byte 0x42 'B'
    Cursor at = args.get();
    std::unique_ptr<char[]> text;
    ASSERT_TRUE(readNarrowText(at, text));
    EXPECT_STREQ(text.get(), "ABz");
}

TEST(ArgReaders, NumberWidensIntegers) {
    auto args = list(RTSHORT, 3, RTREAL, 1.5, RTSTR, L"no");
    Cursor at = args.get();
    double a = 0, b = 0, c = 42;
    EXPECT_TRUE(readNumber(at, a));
    EXPECT_TRUE(readNumber(at, b));
    EXPECT_FALSE(readNumber(at, c));
    EXPECT_EQ(a, 3.0);
    EXPECT_EQ(b, 1.5);
    EXPECT_EQ(c, 42);
}

TEST(ArgReaders, BooleanRules) {
    auto args = list(RTNIL, RTT, RTSTR, L"", RTLE);
    Cursor at = args.get();
    bool a = true, b = false, c = false, d = true;
    ASSERT_TRUE(readBoolean(at, a) && readBoolean(at, b) && readBoolean(at, c));
    EXPECT_FALSE(a);
    EXPECT_TRUE(b);
    EXPECT_TRUE(c);
    const resbuf* listEnd = at;
    EXPECT_TRUE(readBoolean(at, d));  // an empty list: false, RTLE left in place
    EXPECT_FALSE(d);
    EXPECT_EQ(at, listEnd);

    auto nested = list(RTLB, RTT, RTLE);
    Cursor in = nested.get();
    EXPECT_FALSE(readBoolean(in, d));
    EXPECT_EQ(in, nested.get());
}

TEST(ArgReaders, DaoBooleanWritesZeroOrAllBits) {
    auto args = list(RTT, RTNIL);
    Cursor at = args.get();
    std::uint16_t yes = 0, no = 1;
    ASSERT_TRUE(readDaoBoolean(at, yes) && readDaoBoolean(at, no));
    EXPECT_EQ(yes, 65535);
    EXPECT_EQ(no, 0);
}

TEST(ArgReaders, SkipAndListMarkers) {
    auto args = list(RTLB, RTLE);
    Cursor at = args.get();
    EXPECT_FALSE(readListEnd(at));
    EXPECT_TRUE(readListBegin(at));
    EXPECT_FALSE(readListBegin(at));
    EXPECT_TRUE(readListEnd(at));
    EXPECT_FALSE(skipArgument(at));
    EXPECT_EQ(at, nullptr);
}

TEST(ArgReaders, ThreeDPointFromEveryForm) {
    ads_point p2 = {1, 2, 9}, p3 = {4, 5, 6};
    auto args = list(RTPOINT, p2, RT3DPOINT, p3, 11, p3, RTREAL, 7.0, RTSHORT, 8, RTSTR, L"s");
    Cursor at = args.get();
    ads_point out{};
    ASSERT_TRUE(read3dPoint(at, out));
    EXPECT_EQ(out[Z], 0.0);  // a 2D point has no z
    ASSERT_TRUE(read3dPoint(at, out));
    EXPECT_EQ(out[Z], 6.0);
    ASSERT_TRUE(read3dPoint(at, out));  // group code 11
    EXPECT_EQ(out[X], 4.0);
    ASSERT_TRUE(read3dPoint(at, out));  // two numbers, then a text: z is 0
    EXPECT_EQ(out[X], 7.0);
    EXPECT_EQ(out[Y], 8.0);
    EXPECT_EQ(out[Z], 0.0);
    EXPECT_EQ(at->restype, RTSTR);
}

TEST(ArgReaders, ThreeDPointTakesAThirdNumberAndFailsWithoutMoving) {
    auto args = list(RTREAL, 1.0, RTLONG, 2, RTSHORT, 3, RTREAL, 4.0);
    Cursor at = args.get();
    ads_point out{};
    ASSERT_TRUE(read3dPoint(at, out));
    EXPECT_EQ(out[Z], 3.0);
    const resbuf* last = at;
    EXPECT_FALSE(read3dPoint(at, out));  // one number only
    EXPECT_EQ(at, last);
}

TEST(ArgReaders, TwoDPointNeedsTwoReals) {
    auto args = list(RTREAL, 1.0, RTSHORT, 2, RTREAL, 3.0, RTREAL, 4.0);
    Cursor at = args.get();
    ads_point out{};
    EXPECT_FALSE(read2dPoint(at, out));
    EXPECT_EQ(at, args.get());
    at = args.get()->rbnext->rbnext;
    ASSERT_TRUE(read2dPoint(at, out));
    EXPECT_EQ(out[X], 3.0);
    EXPECT_EQ(out[Y], 4.0);
}

TEST(ArgReaders, DottedPairOfTextAndInteger) {
    auto args = list(RTLB, RTSTR, L"width", RTDOTE, RTSHORT, 12, RTLE, RTSTR, L"after");
    Cursor at = args.get();
    EXPECT_TRUE(isDottedPair(at));
    std::wstring name;
    std::int32_t value = 0;
    ASSERT_TRUE(readNamedInteger(at, name, value));
    EXPECT_EQ(name, L"width");
    EXPECT_EQ(value, 12);
    ASSERT_NE(at, nullptr);
    EXPECT_EQ(at->restype, RTSTR);
}

TEST(ArgReaders, PlainListIsNoDottedPair) {
    auto args = list(RTLB, RTSTR, L"a", RTLONG, 1, RTLE);
    Cursor at = args.get();
    EXPECT_FALSE(isDottedPair(at));
    std::wstring name;
    std::int32_t value = 0;
    EXPECT_FALSE(readNamedInteger(at, name, value));
    EXPECT_EQ(at, args.get());

    auto wrong = list(RTLB, RTSTR, L"a", RTDOTE, RTSTR, L"b", RTLE);
    Cursor w = wrong.get();
    EXPECT_FALSE(readNamedInteger(w, name, value));
    EXPECT_EQ(w, wrong.get());
}

TEST(ArgReaders, NamesOfTheirOwnKindOnly) {
    ads_name ent = {11, 12}, ss = {21, 22};
    auto args = list(RTENAME, ent, RTPICKS, ss);
    Cursor at = args.get();
    ads_name out{};
    EXPECT_FALSE(readSelectionSet(at, out));
    ASSERT_TRUE(readEntity(at, out));
    EXPECT_EQ(out[0], 11);
    EXPECT_FALSE(readEntity(at, out));
    ASSERT_TRUE(readSelectionSet(at, out));
    EXPECT_EQ(out[1], 22);
}

TEST(ArgReaders, ObjectFailsForAnUnknownEntityName) {
    ads_name unknown = {987654321, 0};
    auto args = list(RTENAME, unknown);
    Cursor at = args.get();
    AcDbObjectId id;
    EXPECT_FALSE(readObject(at, id));
    EXPECT_EQ(at, args.get());
}

}  // namespace
}  // namespace kelvo
