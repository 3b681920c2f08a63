// Numbers: 32-bit wraparound, integer and real division, rem, fix, comparison, bits,
// transcendental functions and the errors of each.
#include <gtest/gtest.h>

#include "lisp_test_support.h"

namespace lisp::test {
namespace {

TEST(LispNumbers, IntegersWrapAtThirtyTwoBits) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(+ 2147483647 1)"), L"-2147483648");
    EXPECT_EQ(t.run(L"(- -2147483648 1)"), L"2147483647");
    EXPECT_EQ(t.run(L"(* 65536 65536)"), L"0");
    EXPECT_EQ(t.run(L"(1+ 2147483647)"), L"-2147483648");
    EXPECT_EQ(t.run(L"(abs -2147483648)"), L"-2147483648");
    EXPECT_EQ(t.run(L"(/ -2147483648 -1)"), L"-2147483648");
    EXPECT_EQ(t.run(L"(expt 2 31)"), L"-2147483648");
}

TEST(LispNumbers, ArithmeticKeepsIntegersUnlessARealJoins) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (+) (*) (+ 5) (- 5) (- 10 3 2) (* 2 3 4))"), L"(0 1 5 -5 5 24)");
    EXPECT_EQ(t.run(L"(+ 1 2.5)"), L"3.5");
    EXPECT_EQ(t.run(L"(/ 7 2)"), L"3");
    EXPECT_EQ(t.run(L"(/ -7 2)"), L"-3");
    EXPECT_EQ(t.run(L"(/ 7 2.0)"), L"3.5");
    EXPECT_EQ(t.run(L"(/ 100 5 2)"), L"10");
    EXPECT_EQ(t.error(L"(/ 1 0)"), L"divide by zero");
    EXPECT_EQ(t.error(L"(/ 1.0 0.0)"), L"divide by zero");
    EXPECT_EQ(t.error(L"(+ 1 \"a\")"), L"bad argument type: numberp: \"a\"");
    EXPECT_EQ(t.error(L"(* 'x 2)"), L"bad argument type: numberp: X");
    EXPECT_EQ(t.error(L"(1+ nil)"), L"bad argument type: numberp: nil");
}

TEST(LispNumbers, RemAndFixTruncateTowardZero) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (rem 7 2) (rem -7 2) (rem 7 -2) (rem 20 7 4))"), L"(1 -1 1 2)");
    EXPECT_EQ(t.run(L"(rem 7.5 2)"), L"1.5");
    EXPECT_EQ(t.error(L"(rem 1 0)"), L"divide by zero");
    EXPECT_EQ(t.run(L"(list (fix 3.7) (fix -3.7) (fix 5) (fix -0.5))"), L"(3 -3 5 0)");
    EXPECT_EQ(t.run(L"(float 3)"), L"3.0");
}

TEST(LispNumbers, ComparisonsAcceptNumbersAndStrings) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (= 1 1.0) (= 1 1 2) (/= 1 2) (< 1 2 3) (< 1 3 2) (>= 3 3 1) (<= 1 1 0))"),
              L"(T nil T T nil T nil)");
    EXPECT_EQ(t.run(L"(list (< \"abc\" \"abd\") (= \"a\" \"a\") (> \"b\" \"a\"))"), L"(T T T)");
    EXPECT_EQ(t.error(L"(< 1 \"a\")"), L"bad argument type: numberp: \"a\"");
    EXPECT_EQ(t.run(L"(list (max 1 3 2) (min 4 2 8) (max 1 2.0) (min 1 2.0))"), L"(3 2 2.0 1.0)");
}

TEST(LispNumbers, PredicatesAndEquality) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (zerop 0) (zerop 0.0) (zerop 1) (minusp -1) (minusp 0) (numberp 1) (numberp \"1\"))"),
              L"(T T nil T nil T nil)");
    EXPECT_EQ(t.run(L"(list (equal 1.0 1.05 0.1) (equal 1.0 1.2 0.1) (equal '(1 (2 \"x\")) '(1 (2 \"x\"))))"),
              L"(T nil T)");
    EXPECT_EQ(t.run(L"(list (eq 'a 'a) (eq \"a\" \"a\") (eq 3 3) (setq l '(1)) (eq l l) (eq '(1) '(1)))"),
              L"(T nil T (1) T nil)");
    EXPECT_EQ(t.run(L"(equal '(1.0 2.0) '(1.001 2.0) 0.01)"), L"T");
}

TEST(LispNumbers, BitwiseOperations) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (logand 7 12) (logior 1 4) (~ 5) (lsh 1 4) (lsh 16 -2) (lsh 1 31) (lsh -1 -28))"),
              L"(4 5 -6 16 4 -2147483648 15)");
    EXPECT_EQ(t.run(L"(list (gcd 12 18) (gcd -4 6))"), L"(6 2)");
    EXPECT_EQ(t.error(L"(logand 1.0 2)"), L"bad argument type: fixnump: 1.0");
}

TEST(LispNumbers, TranscendentalFunctions) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (sqrt 16) (expt 2 10) (expt 2.0 3) (exp 0) (log 1))"), L"(4.0 1024 8.0 1.0 0.0)");
    EXPECT_EQ(t.run(L"(list (sin 0) (cos 0) (atan 1 1) (atan 1))"), L"(0.0 1.0 0.785398 0.785398)");
    EXPECT_EQ(t.run(L"(atan 1 -1)"), L"2.35619");
    EXPECT_EQ(t.error(L"(sqrt -1)"), L"function undefined for argument: -1");
    EXPECT_EQ(t.error(L"(log 0)"), L"function undefined for argument: 0");
}

TEST(LispNumbers, Geometry) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(distance '(0 0) '(3 4))"), L"5.0");
    EXPECT_EQ(t.run(L"(distance '(0 0 0) '(2 3 6))"), L"7.0");
    EXPECT_EQ(t.run(L"(angle '(0 0) '(0 -1))"), L"4.71239");
    EXPECT_EQ(t.run(L"(polar '(1 1 5) (/ pi 2) 2)"), L"(1.0 3.0 5.0)");
    EXPECT_EQ(t.run(L"(inters '(0 0) '(2 2) '(0 2) '(2 0))"), L"(1.0 1.0)");
    EXPECT_EQ(t.run(L"(inters '(0 0) '(1 1) '(0 3) '(3 0))"), L"nil");
    EXPECT_EQ(t.run(L"(inters '(0 0) '(1 1) '(0 3) '(3 0) nil)"), L"(1.5 1.5)");
    EXPECT_EQ(t.error(L"(distance '(1) '(2 2))"), L"bad argument type: 2D/3D point: (1)");
}

TEST(LispNumbers, BooleAppliesItsTruthTableBitByBit) {
    TestInterp t;
    // 12 = 1100 and 10 = 1010 cover all four bit pairs.
    EXPECT_EQ(t.run(L"(list (boole 1 12 10) (boole 6 12 10) (boole 7 12 10) (boole 8 12 10))"),
              L"(8 6 14 -15)");
    EXPECT_EQ(t.run(L"(list (boole 2 12 10) (boole 4 12 10) (boole 0 12 10) (boole 15 12 10))"),
              L"(4 2 0 -1)");
    EXPECT_EQ(t.run(L"(list (boole 6 5) (boole 1 7 6 3) (boole 6 1 2 4))"), L"(5 2 7)");
    EXPECT_EQ(t.error(L"(boole 1)"), L"too few arguments");
    EXPECT_EQ(t.error(L"(boole 1 2.0 3)"), L"bad argument type: fixnump: 2.0");
}

}  // namespace
}  // namespace lisp::test
