// Variants, automation dates and DAO error texts.
#include <gtest/gtest.h>

#include <cmath>

#include "dao.h"

namespace {

TEST(DaoVariant, ConstructorsPickTheAutomationType) {
    EXPECT_EQ(COleVariant(short{7}).vt, VT_I2);
    EXPECT_EQ(COleVariant(7).vt, VT_I4);
    EXPECT_EQ(COleVariant(7L).lVal, 7);
    EXPECT_EQ(COleVariant(static_cast<unsigned char>(200)).bVal, 200);
    EXPECT_EQ(COleVariant(1.5f).vt, VT_R4);
    EXPECT_EQ(COleVariant(1.5).vt, VT_R8);
    EXPECT_EQ(COleVariant(L"abc").bstrVal, L"abc");
    EXPECT_EQ(COleVariant(short{1}, VT_BOOL).boolVal, VARIANT_TRUE);
    EXPECT_EQ(COleVariant::Bool(false).boolVal, VARIANT_FALSE);
    EXPECT_EQ(COleVariant(36526.0, VT_DATE).vt, VT_DATE);
    EXPECT_EQ(COleVariant::Null().vt, VT_NULL);
    EXPECT_THROW(COleVariant(5000000000L), std::out_of_range);
    EXPECT_EQ(COleVariant(std::vector<unsigned char>{1, 2}).vt, VT_ARRAY | VT_UI1);
}

TEST(DaoVariant, EqualityNeedsTypeAndValue) {
    EXPECT_EQ(COleVariant(5), COleVariant(5));
    EXPECT_NE(COleVariant(5), COleVariant(short{5}));
    EXPECT_NE(COleVariant(L"a"), COleVariant(L"A"));
    EXPECT_EQ(COleVariant::Null(), COleVariant::Null());
    EXPECT_NE(COleVariant::Null(), COleVariant());
}

TEST(DaoDate, PartsOfKnownDates) {
    const COleDateTime y2k(36526.0);  // 1/1/2000
    EXPECT_EQ(y2k.GetYear(), 2000);
    EXPECT_EQ(y2k.GetMonth(), 1);
    EXPECT_EQ(y2k.GetDay(), 1);
    EXPECT_EQ(y2k.GetDayOfWeek(), 7);  // a Saturday
    EXPECT_EQ(COleDateTime(2000, 1, 1, 0, 0, 0).m_dt, 36526.0);
    EXPECT_EQ(COleDateTime(2024, 12, 31, 0, 0, 0).GetDayOfYear(), 366);
    // Before the epoch the fraction is still the time of day.
    const COleDateTime before(-1.25);
    EXPECT_EQ(before.GetDay(), 29);
    EXPECT_EQ(before.GetHour(), 6);
    EXPECT_EQ(COleDateTime(1899, 12, 29, 6, 0, 0).m_dt, -1.25);
}

TEST(DaoDate, InvalidPartsGiveInvalidStatus) {
    EXPECT_EQ(COleDateTime(2023, 2, 29, 0, 0, 0).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(2024, 2, 29, 0, 0, 0).GetStatus(), COleDateTime::valid);
    EXPECT_EQ(COleDateTime(2024, 1, 1, 24, 0, 0).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(2024, 1, 1, 24, 0, 0).Format(), L"Invalid DateTime");
}

TEST(DaoDate, FormatAsUsEnglishDefault) {
    EXPECT_EQ(COleDateTime(2020, 3, 5, 14, 7, 9).Format(), L"3/5/2020 2:07:09 PM");
    EXPECT_EQ(COleDateTime(2020, 11, 25, 0, 0, 0).Format(), L"11/25/2020");
    EXPECT_EQ(COleDateTime(2020, 11, 25, 0, 0, 1).Format(), L"11/25/2020 12:00:01 AM");
    EXPECT_EQ(COleDateTime(2020, 11, 25, 12, 30, 0).Format(), L"11/25/2020 12:30:00 PM");
    EXPECT_EQ(COleDateTime(0.5).Format(), L"12:00:00 PM");
    EXPECT_EQ(COleDateTime(0.0).Format(), L"12:00:00 AM");
    // Times round to the nearest second, carrying into the next day.
    EXPECT_EQ(COleDateTime(36526.0 - 0.1 / 86400).Format(), L"1/1/2000");
}

TEST(DaoDate, ParseUsDatesAndTimes) {
    COleDateTime d;
    ASSERT_TRUE(d.ParseDateTime(L"3/5/2020 2:07:09 PM"));
    EXPECT_EQ(d, COleDateTime(2020, 3, 5, 14, 7, 9));
    ASSERT_TRUE(d.ParseDateTime(L"2020-03-05"));
    EXPECT_EQ(d, COleDateTime(2020, 3, 5, 0, 0, 0));
    ASSERT_TRUE(d.ParseDateTime(L"1/2/29"));
    EXPECT_EQ(d.GetYear(), 2029);
    ASSERT_TRUE(d.ParseDateTime(L"1/2/30"));
    EXPECT_EQ(d.GetYear(), 1930);
    ASSERT_TRUE(d.ParseDateTime(L"12:00 am"));
    EXPECT_EQ(d.m_dt, 0.0);
    ASSERT_TRUE(d.ParseDateTime(L"23:15:00"));
    EXPECT_EQ(d.GetHour(), 23);
    for (const wchar_t* bad : {L"", L"13/1/2020", L"2/30/2020", L"3/5", L"abc", L"3/5/2020 x",
                               L"13:00 PM"}) {
        EXPECT_FALSE(d.ParseDateTime(bad)) << bad;
        EXPECT_EQ(d.GetStatus(), COleDateTime::invalid);
    }
}

TEST(DaoDate, FormatAndParseRoundTrip) {
    for (double dt = -3000.0; dt < 80000.0; dt += 997.123457) {
        const double whole = std::round(dt * 86400.0) / 86400.0;
        COleDateTime parsed;
        ASSERT_TRUE(parsed.ParseDateTime(COleDateTime(whole).Format().c_str()));
        EXPECT_NEAR(parsed.m_dt, whole, 1e-9) << COleDateTime(whole).Format();
    }
}

TEST(DaoErrors, MessagesWithInserts) {
    EXPECT_EQ(dao::errorText(3024, {L"/x/y.mdb"}), L"Could not find file '/x/y.mdb'.");
    EXPECT_EQ(dao::errorText(3260, {L"Admin", L"pc1"}),
              L"Could not update; currently locked by user 'Admin' on machine 'pc1'.");
    EXPECT_EQ(dao::errorText(3021), L"No current record.");
    EXPECT_EQ(dao::errorText(1), L"Reserved error (1); there is no message for this error.");
    try {
        dao::throwError(dao::kTableExists, {L"tblA"});
        FAIL();
    } catch (CDaoException* e) {
        EXPECT_EQ(e->daoCode(), 3010);
        EXPECT_EQ(e->m_pErrorInfo->m_strDescription, L"Table 'tblA' already exists.");
        e->Delete();
    }
    EXPECT_TRUE(dao::isLockError(3218));
    EXPECT_TRUE(dao::isLockError(3260));
    EXPECT_FALSE(dao::isLockError(3022));
}

}  // namespace
