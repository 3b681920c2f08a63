// The get* functions with scripted answers, and initget.
#include <gtest/gtest.h>

#include "lisp_test_support.h"

namespace lisp::test {
namespace {

TEST(LispInput, GetintRepromptsUntilAnInteger) {
    TestInterp t;
    t.feed(L"abc");
    t.feed(L"1.5");
    t.feed(L"99999");
    t.feed(L"42");
    EXPECT_EQ(t.run(L"(getint \"Count: \")"), L"42");
    EXPECT_EQ(t.takeOutput(),
              L"Count: Requires an integer value.\nCount: Requires an integer value.\n"
              L"Count: Value must be between -32768 and 32767.\nCount: ");
}

TEST(LispInput, GetrealAcceptsIntegersAndReturnsReals) {
    TestInterp t;
    t.feed(L"x");
    t.feed(L"3");
    EXPECT_EQ(t.run(L"(getreal)"), L"3.0");
    EXPECT_EQ(t.takeOutput(), L"Requires numeric value.\n");
}

TEST(LispInput, EnterGivesNilUnlessInitgetForbidsIt) {
    TestInterp t;
    t.feed(L"");
    EXPECT_EQ(t.run(L"(getreal)"), L"nil");
    t.feed(L"");
    t.feed(L"0");
    t.feed(L"-1");
    t.feed(L"2");
    EXPECT_EQ(t.run(L"(initget 7) (getint)"), L"2");
    EXPECT_EQ(t.takeOutput(), L"Requires an integer value.\nValue must be nonzero.\nValue must be positive.\n");
    t.feed(L"");
    EXPECT_EQ(t.run(L"(getint)"), L"nil") << "initget applies to one request only";
}

TEST(LispInput, CancelRaisesFunctionCancelled) {
    TestInterp t;
    EXPECT_EQ(t.error(L"(getint)"), L"Function cancelled");
    t.feed(L"*Cancel*");
    EXPECT_EQ(t.error(L"(getstring)"), L"Function cancelled");
}

TEST(LispInput, Getpoint) {
    TestInterp t;
    t.feed(L"1,2");
    EXPECT_EQ(t.run(L"(getpoint \"Point: \")"), L"(1.0 2.0 0.0)");
    t.feed(L"nonsense");
    t.feed(L"1,2,3,4");
    t.feed(L"1.5,-2,3");
    EXPECT_EQ(t.run(L"(getpoint)"), L"(1.5 -2.0 3.0)");
    EXPECT_EQ(t.takeOutput(), L"Point: Invalid point.\nInvalid point.\n");
    t.feed(L"@1,1");
    EXPECT_EQ(t.run(L"(getpoint '(10 10 0) \"Next: \")"), L"(11.0 11.0 0.0)");
    t.feed(L"4,4");
    EXPECT_EQ(t.run(L"(getcorner '(0 0) \"Corner: \")"), L"(4.0 4.0 0.0)");
}

TEST(LispInput, GetdistAndGetangle) {
    TestInterp t;
    t.feed(L"2.5");
    EXPECT_EQ(t.run(L"(getdist)"), L"2.5");
    t.feed(L"3,4");
    EXPECT_EQ(t.run(L"(getdist '(0 0))"), L"5.0");
    t.feed(L"90");
    EXPECT_EQ(t.run(L"(getangle)"), L"1.5708");
}

TEST(LispInput, KeywordsAndAbbreviations) {
    TestInterp t;
    t.run(L"(defun ask () (initget 1 \"Yes No eXit LType\") (getkword \"Choose: \"))");
    for (const auto& [typed, want] : std::vector<std::pair<std::wstring, std::wstring>>{
             {L"y", L"\"Yes\""}, {L"YES", L"\"Yes\""}, {L"x", L"\"eXit\""}, {L"exit", L"\"eXit\""},
             {L"lt", L"\"LType\""}, {L"lty", L"\"LType\""}}) {
        t.feed(typed);
        EXPECT_EQ(t.run(L"(ask)"), want) << typed;
    }
    t.takeOutput();
    t.feed(L"maybe");
    t.feed(L"ex");
    t.feed(L"l");
    t.feed(L"n");
    EXPECT_EQ(t.run(L"(ask)"), L"\"No\"");
    EXPECT_EQ(t.takeOutput(), L"Choose: Invalid option keyword.\nChoose: Invalid option keyword.\n"
                              L"Choose: Invalid option keyword.\nChoose: ");
    t.feed(L"Line");
    EXPECT_EQ(t.run(L"(initget \"Line\") (getint)"), L"\"Line\"");
}

TEST(LispInput, Getstring) {
    TestInterp t;
    t.feed(L"two words");
    EXPECT_EQ(t.run(L"(getstring \"Name: \")"), L"\"two\"");
    t.feed(L"two words");
    EXPECT_EQ(t.run(L"(getstring T \"Name: \")"), L"\"two words\"");
    t.feed(L"");
    EXPECT_EQ(t.run(L"(getstring)"), L"\"\"");
}

}  // namespace
}  // namespace lisp::test
