// The reader and the printer: text in, printed forms out.
#include <gtest/gtest.h>

#include "lisp_test_support.h"
#include "lisp/reader.h"

namespace lisp::test {
namespace {

std::wstring roundTrip(std::wstring_view text) {
    Reader reader(text);
    auto form = reader.next();
    return form ? Interp::prin1String(*form) : L"<none>";
}

TEST(LispReader, AtomsReadAsTheirTypes) {
    EXPECT_EQ(roundTrip(L"42"), L"42");
    EXPECT_EQ(roundTrip(L"-7"), L"-7");
    EXPECT_EQ(roundTrip(L"+7"), L"7");
    EXPECT_EQ(roundTrip(L"1.5"), L"1.5");
    EXPECT_EQ(roundTrip(L".5"), L"0.5");
    EXPECT_EQ(roundTrip(L"-.5"), L"-0.5");
    EXPECT_EQ(roundTrip(L"2."), L"2.0");
    EXPECT_EQ(roundTrip(L"1e3"), L"1000.0");
    EXPECT_EQ(roundTrip(L"foo"), L"FOO");
    EXPECT_EQ(roundTrip(L"1+"), L"1+");
    EXPECT_EQ(roundTrip(L"-"), L"-");
    EXPECT_EQ(roundTrip(L"nil"), L"nil");
    EXPECT_EQ(roundTrip(L"NIL"), L"nil");
}

TEST(LispReader, IntegerOutsideThirtyTwoBitsReadsAsReal) {
    EXPECT_EQ(roundTrip(L"2147483647"), L"2147483647");
    EXPECT_EQ(roundTrip(L"-2147483648"), L"-2147483648");
    EXPECT_EQ(roundTrip(L"2147483648"), L"2.14748e+09");
    EXPECT_EQ(Reader(L"99999999999").next()->type(), Type::Real);
}

TEST(LispReader, StringsAndEscapes) {
    Reader reader(LR"("a\"b" "tab\there" "\\" "\101" "new\nline")");
    EXPECT_EQ(reader.next()->asString(), L"a\"b");
    EXPECT_EQ(reader.next()->asString(), L"tab\there");
    EXPECT_EQ(reader.next()->asString(), L"\\");
    EXPECT_EQ(reader.next()->asString(), L"A");
    EXPECT_EQ(reader.next()->asString(), L"new\nline");
    EXPECT_FALSE(reader.next());
}

TEST(LispReader, ListsDottedPairsAndQuote) {
    EXPECT_EQ(roundTrip(L"(1 2 3)"), L"(1 2 3)");
    EXPECT_EQ(roundTrip(L"(a . b)"), L"(A . B)");
    EXPECT_EQ(roundTrip(L"(1 2 . 3)"), L"(1 2 . 3)");
    EXPECT_EQ(roundTrip(L"(1 . (2 3))"), L"(1 2 3)");
    EXPECT_EQ(roundTrip(L"'x"), L"(QUOTE X)");
    EXPECT_EQ(roundTrip(L"()"), L"nil");
    EXPECT_EQ(roundTrip(L"(a(b)c)"), L"(A (B) C)");
}

TEST(LispReader, CommentsAreSkipped) {
    EXPECT_EQ(roundTrip(L"; line comment\n  (1 ;| block\n comment |; 2)"), L"(1 2)");
    EXPECT_EQ(roundTrip(L"  ; only a comment"), L"<none>");
}

TEST(LispReader, SyntaxErrors) {
    EXPECT_THROW(Reader(L"(1 2").next(), IncompleteInput);
    EXPECT_THROW(Reader(L"\"abc").next(), IncompleteInput);
    try {
        Reader(L")").next();
        FAIL() << "no error";
    } catch (const Error& e) {
        EXPECT_EQ(e.message(), L"extra right paren on input");
    }
    try {
        Reader(L"(1 2").next();
        FAIL() << "no error";
    } catch (const Error& e) {
        EXPECT_EQ(e.message(), L"malformed list on input");
    }
}

// Nesting is read with a stack of open lists, so depth is limited by memory alone; the
// dotted-pair and quote rules hold at every depth.
TEST(LispReader, DeepNestingReadsAndPrintsBack) {
    const int depth = 200000;
    std::wstring text(depth, L'(');
    text += L"1 . 2";
    text += std::wstring(depth, L')');
    Reader reader(text);
    auto form = reader.next();
    ASSERT_TRUE(form);
    EXPECT_TRUE(Interp::prin1String(*form) == text);  // (not EXPECT_EQ: no 400 KB message)
    std::wstring quotes(depth, L'\'');
    quotes += L"x";
    auto quoted = Reader(quotes).next();
    ASSERT_TRUE(quoted);
    Value v = *quoted;
    int levels = 0;
    for (; v.isCons(); v = v.cdr().car()) ++levels;
    EXPECT_EQ(levels, depth);
    EXPECT_EQ(Interp::prin1String(v), L"X");
    EXPECT_THROW(Reader(std::wstring(depth, L'(')).next(), IncompleteInput);
    EXPECT_THROW(Reader(L"(1 . 2 3)").next(), Error);
    EXPECT_THROW(Reader(L"( . 2)").next(), Error);
    EXPECT_THROW(Reader(L"(1 . )").next(), Error);
    EXPECT_EQ(roundTrip(L"((a . b) . (c))"), L"((A . B) C)");
    EXPECT_EQ(roundTrip(L"'(1 '2)"), L"(QUOTE (1 (QUOTE 2)))");
}

TEST(LispReader, FormsComplete) {
    EXPECT_TRUE(Interp::formsComplete(L"(+ 1 2) (a)"));
    EXPECT_FALSE(Interp::formsComplete(L"(defun f ()\n (princ"));
    EXPECT_FALSE(Interp::formsComplete(L"(princ \"abc)"));
    EXPECT_TRUE(Interp::formsComplete(L"(princ \"a(\") ; (unclosed in comment"));
    EXPECT_TRUE(Interp::formsComplete(L")"));
    EXPECT_TRUE(Interp::formsComplete(L""));
}

TEST(LispPrinter, RealsUseSixSignificantDigits) {
    TestInterp t;
    EXPECT_EQ(t.run(L"1.0"), L"1.0");
    EXPECT_EQ(t.run(L"0.5"), L"0.5");
    EXPECT_EQ(t.run(L"pi"), L"3.14159");
    EXPECT_EQ(t.run(L"1e20"), L"1.0e+20");
    EXPECT_EQ(t.run(L"1.5e-7"), L"1.5e-07");
    EXPECT_EQ(t.run(L"123456789.0"), L"1.23457e+08");
    EXPECT_EQ(t.run(L"100000.0"), L"100000.0");
    EXPECT_EQ(t.run(L"-2.25"), L"-2.25");
}

TEST(LispPrinter, Prin1EscapesAndPrincDoesNot) {
    Value s = Value::string(L"a\"b\\c\nd\te\x1b");
    EXPECT_EQ(Interp::prin1String(s), LR"("a\"b\\c\nd\te\e")");
    EXPECT_EQ(Interp::princString(s), L"a\"b\\c\nd\te\x1b");
    Value l = Value::list({Value::string(L"x"), Value::symbol(L"y")});
    EXPECT_EQ(Interp::prin1String(l), L"(\"x\" Y)");
    EXPECT_EQ(Interp::princString(l), L"(x Y)");
}

TEST(LispPrinter, OpaqueValuesPrintDeterministically) {
    TestInterp t;
    EXPECT_EQ(Interp::prin1String(Value::ename(0x1f)), L"<Entity name: 1f>");
    EXPECT_EQ(Interp::prin1String(Value::pickset(3)), L"<Selection set: 3>");
    EXPECT_EQ(t.run(L"car"), L"#<SUBR @ CAR>");
    EXPECT_EQ(t.run(L"(defun foo () 1) foo"), L"#<USUBR @ FOO>");
    t.interp().defineSubr(L"kv_connect", [](Interp&, std::vector<Value>&) { return Value(); }, true);
    EXPECT_EQ(t.run(L"kv_connect"), L"#<EXRXSUBR @ KV_CONNECT>");
}

TEST(LispPrinter, SilentValueOfBarePrinc) {
    TestInterp t;
    Value v = t.interp().evalString(L"(princ)");
    EXPECT_TRUE(v.isSilent());
    EXPECT_EQ(Interp::prin1String(v), L"");
    EXPECT_FALSE(t.interp().evalString(L"(princ 1)").isSilent());
    EXPECT_EQ(t.takeOutput(), L"1");
}

}  // namespace
}  // namespace lisp::test
