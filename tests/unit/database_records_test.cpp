// Records between the connection's variant arrays and LISP: each value type, the "s_"
// rule, the record list's shape, and record lists and query arguments coming from LISP.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "database/record_lists.h"
#include "database/field_values.h"
#include "module_test_support.h"

namespace kelvo::database {
namespace {

using test::list;

VariantArray& shown() {
    static VariantArray pairs;
    return pairs;
}

int returnShown() {
    returnRecord(shown());
    return RSRSLT;
}

// The LISP text of the record list of `pairs`.
std::wstring recordText(VariantArray pairs) {
    shown() = std::move(pairs);
    return test::call(returnShown).result;
}

// The LISP text of one field value under a field name.
std::wstring valueText(const wchar_t* name, COleVariant value) {
    return recordText({COleVariant(name), std::move(value)});
}

TEST(DatabaseRecords, NumbersYesNoAndEmptyValues) {
    EXPECT_EQ(valueText(L"iColor", COleVariant(short{7})), LR"((("iColor" . 7)))");
    EXPECT_EQ(valueText(L"lCount", COleVariant(100000L)), LR"((("lCount" . 100000)))");
    EXPECT_EQ(valueText(L"bySize", COleVariant(static_cast<unsigned char>(200))),
              LR"((("bySize" . 200)))");
    EXPECT_EQ(valueText(L"bPlot", COleVariant::Bool(true)), LR"((("bPlot" . -1)))");
    EXPECT_EQ(valueText(L"bPlot", COleVariant::Bool(false)), LR"((("bPlot" . 0)))");
    EXPECT_EQ(valueText(L"dH", COleVariant(2.5)), LR"((("dH" . 2.5)))");
    EXPECT_EQ(valueText(L"fS", COleVariant(0.25f)), LR"((("fS" . 0.25)))");
    EXPECT_EQ(valueText(L"dNan", COleVariant(std::numeric_limits<double>::quiet_NaN())),
              LR"((("dNan" . 0.0)))");
    EXPECT_EQ(valueText(L"yCost", COleVariant::Currency(123400)), LR"((("yCost")))");
    EXPECT_EQ(valueText(L"sNull", COleVariant::Null()), LR"((("sNull")))");
    EXPECT_EQ(valueText(L"sEmpty", COleVariant()), LR"((("sEmpty")))");
    EXPECT_EQ(valueText(L"oBlob", COleVariant(std::vector<unsigned char>{1, 2})),
              LR"((("oBlob")))");
}

TEST(DatabaseRecords, DatesInTheUsForm) {
    // 45365 is 3/14/2024; the fraction is the time of day.
    EXPECT_EQ(valueText(L"dtMade", COleVariant::Date(45365.0)), LR"((("dtMade" . "3/14/2024")))");
    const double time = (15 * 3600 + 7 * 60 + 9) / 86400.0;
    EXPECT_EQ(valueText(L"dtMade", COleVariant::Date(45365.0 + time)),
              LR"((("dtMade" . "3/14/2024 3:07:09 PM")))");
}

TEST(DatabaseRecords, TextLosesTrailingBlanksExceptUnderSUnderscore) {
    EXPECT_EQ(valueText(L"sName", COleVariant(L"ABC  ")), LR"((("sName" . "ABC")))");
    EXPECT_EQ(valueText(L"sName", COleVariant(L" ")), LR"((("sName" . "")))");
    EXPECT_EQ(valueText(L"s_Code", COleVariant(L"AB  ")), LR"((("s_Code" . "AB  ")))");
    EXPECT_EQ(valueText(L"s_Code", COleVariant(L" ")), LR"((("s_Code" . "")))");
    EXPECT_EQ(valueText(L"s_Code", COleVariant(L"  ")), LR"((("s_Code" . "  ")))");
    EXPECT_EQ(valueText(L"S_Code", COleVariant(L"AB  ")), LR"((("S_Code" . "AB")))");
}

TEST(DatabaseRecords, RecordListKeepsFieldOrderAndEmptyArrayIsNil) {
    EXPECT_EQ(recordText({COleVariant(L"b"), COleVariant(1L), COleVariant(L"a"),
                          COleVariant(L"x ")}),
              LR"((("b" . 1) ("a" . "x")))");
    EXPECT_EQ(recordText({}), L"nil");
}

int returnTwoRows() {
    ResultSetBuilder rows;
    rows.row({COleVariant(L"n"), COleVariant(1L)});
    rows.row({COleVariant(L"n"), COleVariant(L"*NewRecord*")});
    rows.returnAsResult();
    return RSRSLT;
}

int returnNoRows() {
    ResultSetBuilder rows;
    rows.returnAsResult();
    return RSRSLT;
}

TEST(DatabaseRecords, ResultSetIsAListOfRecords) {
    EXPECT_EQ(test::call(returnTwoRows).result, LR"(((("n" . 1)) (("n" . "*NewRecord*"))))");
    EXPECT_EQ(test::call(returnNoRows).result, L"nil");
}

TEST(DatabaseRecords, RecordFromLispPairs) {
    const auto record = list(RTLB, RTLB, RTSTR, L"sName", RTDOTE, RTSTR, L"Pump", RTLE, RTLB,
                             RTSTR, L"iColor", RTDOTE, RTSHORT, 3, RTLE, RTLB, RTSTR, L"dH",
                             RTDOTE, RTREAL, 1.5, RTLE, RTLB, RTSTR, L"bPlot", RTDOTE, RTT, RTLE,
                             RTLB, RTSTR, L"sNote", RTLE, RTLB, RTSTR, L"sOld", RTNIL, RTLE, RTLE);
    VariantArray pairs;
    ASSERT_TRUE(recordFromLisp(record.get(), pairs));
    ASSERT_EQ(pairs.size(), 12u);
    EXPECT_EQ(pairs[0], COleVariant(L"sName"));
    EXPECT_EQ(pairs[1], COleVariant(L"Pump"));
    EXPECT_EQ(pairs[3].vt, VT_I4);  // a short integer is widened
    EXPECT_EQ(pairs[3].lVal, 3);
    EXPECT_EQ(pairs[5], COleVariant(1.5));
    EXPECT_EQ(pairs[7], COleVariant::Bool(true));
    EXPECT_EQ(pairs[8], COleVariant(L"sNote"));
    EXPECT_EQ(pairs[9].vt, VT_NULL);   // a name with no value
    EXPECT_EQ(pairs[11].vt, VT_EMPTY);  // nil
}

TEST(DatabaseRecords, RecordFromLispRefusesWhatIsNotARecord) {
    VariantArray pairs;
    // A pair that does not begin with a name.
    EXPECT_FALSE(recordFromLisp(list(RTLB, RTLB, RTLONG, 1, RTDOTE, RTLONG, 2, RTLE, RTLE).get(),
                                pairs));
    // A value that does not convert.
    const ads_point point = {1, 2, 3};
    EXPECT_FALSE(recordFromLisp(
        list(RTLB, RTLB, RTSTR, L"p", RTDOTE, RT3DPOINT, point, RTLE, RTLE).get(), pairs));
    // Two values after one name: the second is taken for a name.
    EXPECT_FALSE(recordFromLisp(
        list(RTLB, RTSTR, L"a", RTLONG, 1, RTLONG, 2, RTLE).get(), pairs));
    // A name with nothing after it ends the list.
    ASSERT_TRUE(recordFromLisp(list(RTSTR, L"a", RTLONG, 1, RTSTR, L"end").get(), pairs));
    EXPECT_EQ(pairs.size(), 2u);
    ASSERT_TRUE(recordFromLisp(nullptr, pairs));
    EXPECT_TRUE(pairs.empty());
}

TEST(DatabaseRecords, QueryArgumentsKeepListStructureAsMarkers) {
    VariantArray values;
    ASSERT_TRUE(argumentsFromLisp(list(RTSTR, L"pMin", RTSHORT, 5, RTLB, RTSTR, L"x", RTDOTE,
                                       RTREAL, 2.0, RTLE)
                                      .get(),
                                  values));
    const VariantArray want = {COleVariant(L"pMin"), COleVariant(5),       COleVariant(L"*RTLB*"),
                               COleVariant(L"x"),    COleVariant(L"*RTDOTE*"), COleVariant(2.0),
                               COleVariant(L"*RTLE*")};
    EXPECT_EQ(values, want);
    const ads_name name = {1, 0};
    EXPECT_FALSE(argumentsFromLisp(list(RTSTR, L"p", RTENAME, name).get(), values));
}

}  // namespace
}  // namespace kelvo::database
