// Strings, wildcard matching and number formatting.
#include <gtest/gtest.h>

#include "lisp_test_support.h"
#include "lisp/rtos.h"
#include "lisp/wcmatch.h"

namespace lisp::test {
namespace {

TEST(LispStrings, BasicFunctions) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(strcat \"ab\" \"\" \"cd\")"), L"\"abcd\"");
    EXPECT_EQ(t.run(L"(strcat)"), L"\"\"");
    EXPECT_EQ(t.run(L"(list (strlen \"hello\") (strlen) (strlen \"a\" \"bc\"))"), L"(5 0 3)");
    EXPECT_EQ(t.run(L"(list (substr \"hello\" 2) (substr \"hello\" 2 3) (substr \"hello\" 9) (substr \"hi\" 1 10))"),
              L"(\"ello\" \"ell\" \"\" \"hi\")");
    EXPECT_EQ(t.run(L"(list (strcase \"MiXed\") (strcase \"MiXed\" T))"), L"(\"MIXED\" \"mixed\")");
    EXPECT_EQ(t.run(L"(list (chr 65) (ascii \"a\") (ascii \"\"))"), L"(\"A\" 97 0)");
    EXPECT_EQ(t.error(L"(strlen 1)"), L"bad argument type: stringp 1");
    EXPECT_EQ(t.error(L"(strcat \"a\" nil)"), L"bad argument type: stringp nil");
    EXPECT_EQ(t.error(L"(substr \"abc\" 0)"), L"bad argument value: positive 0");
}

TEST(LispStrings, NumberConversions) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (itoa 42) (itoa -7) (atoi \"12abc\") (atoi \"3.9\") (atoi \"x\") (atoi \" -5\"))"),
              L"(\"42\" \"-7\" 12 3 0 -5)");
    EXPECT_EQ(t.run(L"(list (atof \"2.5\") (atof \"-.5\") (atof \"x\") (atof \"1e2\"))"), L"(2.5 -0.5 0.0 100.0)");
    EXPECT_EQ(t.error(L"(itoa 1.5)"), L"bad argument type: fixnump: 1.5");
}

TEST(LispStrings, VisualLispStringFunctions) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(vl-string-trim \" \" \"  ab c  \")"), L"\"ab c\"");
    EXPECT_EQ(t.run(L"(vl-string-left-trim \"x\" \"xxaxx\")"), L"\"axx\"");
    EXPECT_EQ(t.run(L"(vl-string-right-trim \"x\" \"xxaxx\")"), L"\"xxa\"");
    EXPECT_EQ(t.run(L"(list (vl-string-search \"b\" \"abcb\") (vl-string-search \"b\" \"abcb\" 2) (vl-string-search \"z\" \"a\"))"),
              L"(1 3 nil)");
    EXPECT_EQ(t.run(L"(vl-string-subst \"X\" \"b\" \"abcb\")"), L"\"aXcb\"");
    EXPECT_EQ(t.run(L"(vl-string-translate \"ab\" \"AB\" \"abcab\")"), L"\"ABcAB\"");
    EXPECT_EQ(t.run(L"(vl-string->list \"AB\")"), L"(65 66)");
    EXPECT_EQ(t.run(L"(vl-list->string '(72 105))"), L"\"Hi\"");
    EXPECT_EQ(t.run(L"(list (vl-string-position 97 \"banana\") (vl-string-position 97 \"banana\" nil T))"), L"(1 5)");
}

TEST(LispStrings, ReadAndPrintToString) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(read \"(a \\\"b\\\" 1.5)\")"), L"(A \"b\" 1.5)");
    EXPECT_EQ(t.run(L"(read \"\")"), L"nil");
    EXPECT_EQ(t.run(L"(read \"x y\")"), L"X");
    EXPECT_EQ(t.error(L"(read \"(1\")"), L"malformed list on input");
    EXPECT_EQ(t.run(L"(vl-prin1-to-string '(\"a\" b))"), L"\"(\\\"a\\\" B)\"");
    EXPECT_EQ(t.run(L"(vl-princ-to-string '(\"a\" b))"), L"\"(a B)\"");
}

TEST(LispWcmatch, SingleCharacterClasses) {
    EXPECT_TRUE(wcmatch(L"a1", L"@#"));
    EXPECT_FALSE(wcmatch(L"aa", L"@#"));
    EXPECT_TRUE(wcmatch(L"a-b", L"@.@"));
    EXPECT_FALSE(wcmatch(L"a1b", L"@.@"));
    EXPECT_TRUE(wcmatch(L"xyz", L"x?z"));
    EXPECT_FALSE(wcmatch(L"xz", L"x?z"));
    EXPECT_FALSE(wcmatch(L"ABC", L"abc"));
}

TEST(LispWcmatch, StarsBracketsNegationAndAlternatives) {
    EXPECT_TRUE(wcmatch(L"Layer-01", L"Layer*"));
    EXPECT_TRUE(wcmatch(L"abc", L"*"));
    EXPECT_TRUE(wcmatch(L"", L"*"));
    EXPECT_TRUE(wcmatch(L"abcabc", L"*b*c"));
    EXPECT_FALSE(wcmatch(L"abcab", L"*b*c"));
    EXPECT_TRUE(wcmatch(L"b", L"[abc]"));
    EXPECT_FALSE(wcmatch(L"d", L"[abc]"));
    EXPECT_TRUE(wcmatch(L"m", L"[a-z]"));
    EXPECT_TRUE(wcmatch(L"d", L"[~abc]"));
    EXPECT_FALSE(wcmatch(L"a", L"[~abc]"));
    EXPECT_TRUE(wcmatch(L"dog", L"~cat"));
    EXPECT_FALSE(wcmatch(L"cat", L"~cat"));
    EXPECT_TRUE(wcmatch(L"dog", L"cat,dog,bird"));
    EXPECT_FALSE(wcmatch(L"cow", L"cat,dog"));
}

TEST(LispWcmatch, BackquoteEscapesSpecialCharacters) {
    EXPECT_TRUE(wcmatch(L"a*b", L"a`*b"));
    EXPECT_FALSE(wcmatch(L"axb", L"a`*b"));
    EXPECT_TRUE(wcmatch(L"1,2", L"1`,2"));
    EXPECT_TRUE(wcmatch(L"#", L"`#"));
    EXPECT_FALSE(wcmatch(L"5", L"`#"));
    TestInterp t;
    EXPECT_EQ(t.run(L"(wcmatch \"Name\" \"N*\")"), L"T");
    EXPECT_EQ(t.error(L"(wcmatch 1 \"*\")"), L"bad argument type: stringp 1");
}

TEST(LispRtos, DecimalAndScientific) {
    EXPECT_EQ(formatDistance(3.14159, 2, 4), L"3.1416");
    EXPECT_EQ(formatDistance(1.0, 2, 2), L"1.00");
    EXPECT_EQ(formatDistance(2.5, 2, 0), L"3");
    EXPECT_EQ(formatDistance(-0.00001, 2, 2), L"0.00");
    EXPECT_EQ(formatDistance(1234.5678, 1, 3), L"1.235E+03");
    EXPECT_EQ(formatDistance(-0.05, 1, 2), L"-5.00E-02");
    TestInterp t;
    EXPECT_EQ(t.run(L"(rtos 2)"), L"\"2.0000\"");
    EXPECT_EQ(t.run(L"(rtos 1.23456 2 2)"), L"\"1.23\"");
    EXPECT_EQ(t.error(L"(rtos \"1\")"), L"bad argument type: numberp: \"1\"");
    EXPECT_EQ(t.error(L"(rtos 1 9 2)"), L"bad argument value: units mode 9");
}

TEST(LispRtos, FeetInchesAndFractions) {
    EXPECT_EQ(formatDistance(17.5, 3, 2), L"1'-5.50\"");
    EXPECT_EQ(formatDistance(6.25, 3, 2), L"6.25\"");
    EXPECT_EQ(formatDistance(17.5, 4, 2), L"1'-5 1/2\"");
    EXPECT_EQ(formatDistance(12.5, 4, 4), L"1'-0 1/2\"");
    EXPECT_EQ(formatDistance(24.0, 4, 4), L"2'-0\"");
    EXPECT_EQ(formatDistance(11.99, 4, 2), L"1'-0\"");
    EXPECT_EQ(formatDistance(-17.5, 4, 2), L"-1'-5 1/2\"");
    EXPECT_EQ(formatDistance(17.5, 5, 2), L"17 1/2");
    EXPECT_EQ(formatDistance(0.375, 5, 3), L"3/8");
    EXPECT_EQ(formatDistance(0.375, 5, 2), L"1/2");
    EXPECT_EQ(formatDistance(3.0, 5, 4), L"3");
}

TEST(LispRtos, Angles) {
    const double pi = 3.14159265358979323846;
    EXPECT_EQ(formatAngle(pi, 0, 2), L"180.00");
    EXPECT_EQ(formatAngle(-pi / 2, 0, 0), L"270");
    EXPECT_EQ(formatAngle(pi / 4 + pi / 720, 1, 4), L"45d15'0\"");
    EXPECT_EQ(formatAngle(pi / 2, 2, 1), L"100.0g");
    EXPECT_EQ(formatAngle(1.0, 3, 3), L"1.000r");
    TestInterp t;
    EXPECT_EQ(t.run(L"(angtos pi)"), L"\"180.0000\"");
}

TEST(LispStrings, MismatchCountsTheCommonPrefix) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(vl-string-mismatch \"abcdef\" \"abcXyz\")"), L"3");
    EXPECT_EQ(t.run(L"(vl-string-mismatch \"abc\" \"abcd\")"), L"3");
    EXPECT_EQ(t.run(L"(vl-string-mismatch \"xxabc\" \"abz\" 2 0)"), L"2");
    EXPECT_EQ(t.run(L"(vl-string-mismatch \"abc\" \"abc\" 9)"), L"0");
    EXPECT_EQ(t.run(L"(list (vl-string-mismatch \"ABc\" \"abc\") (vl-string-mismatch \"ABc\" \"abc\" nil nil T))"),
              L"(0 3)");
    EXPECT_EQ(t.error(L"(vl-string-mismatch \"a\" 'b)"), L"bad argument type: stringp B");
}

TEST(LispStrings, SnvalidChecksSymbolTableNames) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(mapcar 'snvalid '(\"0\" \"Walls 2\" \"A-B_C$\" \"\"))"), L"(T T T nil)");
    EXPECT_EQ(t.run(L"(mapcar 'snvalid '(\"a<b\" \"a/b\" \"a\\\\b\" \"a:b\" \"a*b\" \"a,b\" \"a=b\" \"a`b\" \"a\\tb\"))"),
              L"(nil nil nil nil nil nil nil nil nil)");
    EXPECT_EQ(t.run(L"(list (snvalid \"x|y\") (snvalid \"x|y\" 1) (snvalid \"|y\" 1) (snvalid \"x|\" 1))"),
              L"(nil T nil nil)");
    std::wstring longest(255, L'n');
    EXPECT_EQ(t.run(L"(snvalid \"" + longest + L"\")"), L"T");
    EXPECT_EQ(t.run(L"(snvalid \"" + longest + L"n\")"), L"nil");
    EXPECT_EQ(t.error(L"(snvalid 'abc)"), L"bad argument type: stringp ABC");
}

TEST(LispStrings, StrlsortIsAlphabeticalAndNilForBadLists) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(acad_strlsort '(\"Tuesday\" \"b\" \"Monday\" \"a\" \"B\" \"A\"))"),
              L"(\"A\" \"a\" \"B\" \"b\" \"Monday\" \"Tuesday\")");
    EXPECT_EQ(t.run(L"(acad_strlsort nil)"), L"nil");
    EXPECT_EQ(t.run(L"(list (acad_strlsort '(\"a\" 1)) (acad_strlsort '(\"a\" . \"b\")) (acad_strlsort 5))"),
              L"(nil nil nil)");
}

}  // namespace
}  // namespace lisp::test
