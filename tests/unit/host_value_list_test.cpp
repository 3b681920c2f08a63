// The host's value lists: building, releasing, and conversion to and from LISP values
// at the external-call boundary.

#include <gtest/gtest.h>

#include <memory>

#include "adslib.h"
#include "afx.h"
#include "lisp/interp.h"
#include "runtime/host.h"
#include "utf8.h"
#include "runtime/value_resbuf.h"

namespace {

using kelvo::host::chainToList;
using kelvo::host::chainToValue;
using kelvo::host::chainToValues;
using kelvo::host::valuesToChain;
using lisp::Interp;
using lisp::Value;

struct RbDeleter {
    void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using Chain = std::unique_ptr<resbuf, RbDeleter>;

std::vector<short> types(const resbuf* rb) {
    std::vector<short> out;
    for (; rb; rb = rb->rbnext) out.push_back(rb->restype);
    return out;
}

std::wstring printed(const Value& v) { return Interp::prin1String(v); }

TEST(ValueList, BuildListTakesEachKindOfValue) {
    ads_point p = {1.5, 2.5, 3.5};
    ads_name n = {42, 0};
    Chain rb(acutBuildList(RTSTR, L"abc", RTSHORT, -7, RTLONG, 100000, RTREAL, 0.25,
                           RT3DPOINT, p, RTENAME, n, RTLB, RTT, RTNIL, RTLE, 0));
    ASSERT_TRUE(rb);
    EXPECT_EQ(types(rb.get()), (std::vector<short>{RTSTR, RTSHORT, RTLONG, RTREAL, RT3DPOINT,
                                                   RTENAME, RTLB, RTT, RTNIL, RTLE}));
    const resbuf* r = rb.get();
    EXPECT_STREQ(r->resval.rstring, L"abc");
    EXPECT_EQ(r->rbnext->resval.rint, -7);
    EXPECT_EQ(r->rbnext->rbnext->resval.rlong, 100000);
    EXPECT_DOUBLE_EQ(r->rbnext->rbnext->rbnext->rbnext->resval.rpoint[2], 3.5);
    EXPECT_EQ(r->rbnext->rbnext->rbnext->rbnext->rbnext->resval.rlname[0], 42);
}

TEST(ValueList, BuildListCopiesStringsAndRefusesUnknownCodes) {
    wchar_t text[] = L"xyz";
    Chain rb(acutBuildList(RTSTR, text, 0));
    text[0] = L'Q';
    EXPECT_STREQ(rb->resval.rstring, L"xyz");
    EXPECT_EQ(acutBuildList(RTSTR, L"a", 4999, 0), nullptr);   // no leak: the sanitizer run checks
}

TEST(ValueList, GroupCodesCarryTheValueOfTheirRange) {
    ads_point p = {1, 2, 3};
    Chain rb(acutBuildList(RTDXF0, L"LINE", 8, L"WALLS", 10, p, 40, 2.5, 62, 3, 90, 70000,
                           1000, L"key", 1040, 1.25, 1071, 123456, 0));
    ASSERT_TRUE(rb);
    EXPECT_EQ(printed(chainToList(rb.get())),
              L"((0 . \"LINE\") (8 . \"WALLS\") (10 1.0 2.0 3.0) (40 . 2.5) (62 . 3) "
              L"(90 . 70000) (1000 . \"key\") (1040 . 1.25) (1071 . 123456))");
}

TEST(ValueConversion, IntegersGoOutAsShortWhenTheyFitElseLong) {
    Chain rb(valuesToChain({Value::integer(32767), Value::integer(-32768), Value::integer(32768)}));
    EXPECT_EQ(types(rb.get()), (std::vector<short>{RTSHORT, RTSHORT, RTLONG}));
    EXPECT_EQ(rb->rbnext->resval.rint, -32768);
    EXPECT_EQ(rb->rbnext->rbnext->resval.rlong, 32768);
}

TEST(ValueConversion, ListsPairsAndPointsKeepTheirShape) {
    Value record = Value::list({Value::cons(Value::string(L"sName"), Value::string(L"A")),
                                Value::cons(Value::string(L"n"), Value::integer(1))});
    Value point = Value::list({Value::real(1), Value::real(2), Value::real(3)});
    Value intList = Value::list({Value::integer(1), Value::integer(2)});
    Value dotted = Value::list({Value::integer(1), Value::integer(2)}, Value::integer(3));
    std::vector<Value> args{record, point, intList, dotted, Value::t(), Value()};
    Chain rb(valuesToChain(args));
    EXPECT_EQ(types(rb.get()),
              (std::vector<short>{RTLB, RTLB, RTSTR, RTDOTE, RTSTR, RTLE, RTLB, RTSTR, RTDOTE,
                                  RTSHORT, RTLE, RTLE, RT3DPOINT, RTLB, RTSHORT, RTSHORT, RTLE,
                                  RTLB, RTSHORT, RTSHORT, RTDOTE, RTSHORT, RTLE, RTT, RTNIL}));
    auto back = chainToValues(rb.get());
    ASSERT_EQ(back.size(), args.size());
    for (size_t i = 0; i < args.size(); ++i) EXPECT_EQ(printed(back[i]), printed(args[i]));
}

// A list nested far deeper than any call passes goes out as a value list and comes back
// unchanged, dotted tails included, without recursion.
TEST(ValueConversion, DeepListsConvertBothWays) {
    const int depth = 200000;
    Value deep = Value::cons(Value::integer(1), Value::integer(2));
    for (int i = 0; i < depth; ++i) deep = Value::list({deep, Value::string(L"s")});
    Chain rb(valuesToChain({deep}));
    std::size_t nodes = 0;
    for (const resbuf* p = rb.get(); p; p = p->rbnext) ++nodes;
    EXPECT_EQ(nodes, 3u * depth + 5u);  // each level RTLB RTSTR RTLE, the pair 5 nodes
    Value back = chainToValue(rb.get());
    EXPECT_EQ(printed(back), printed(deep));
    EXPECT_EQ(printed(chainToList(rb.get())), printed(deep));
}

TEST(ValueConversion, TwoRealsAreA2dPointButMixedNumbersAreAList) {
    Chain p2(valuesToChain({Value::list({Value::real(1), Value::real(2)})}));
    EXPECT_EQ(types(p2.get()), (std::vector<short>{RTPOINT}));
    Chain mixed(valuesToChain({Value::list({Value::real(1), Value::integer(2)})}));
    EXPECT_EQ(types(mixed.get()), (std::vector<short>{RTLB, RTREAL, RTSHORT, RTLE}));
    Chain four(valuesToChain({Value::list({Value::real(1), Value::real(2), Value::real(3),
                                           Value::real(4)})}));
    EXPECT_EQ(types(four.get()).front(), RTLB);
}

TEST(ValueConversion, FunctionsHaveNoValueListForm) {
    Value f = Value::subr(L"F", [](Interp&, std::vector<Value>&) { return Value(); });
    EXPECT_THROW(valuesToChain({Value::integer(1), f}), lisp::Error);
}

TEST(ValueConversion, RetListReturnsTheListABuilderClosed) {
    // A builder opens with RTLB and closes with RTLE: the result is that list, not a
    // list around it. A bare run of values is made a list.
    Chain wrapped(acutBuildList(RTLB, RTSTR, L"a", RTSTR, L"b", RTLE, 0));
    EXPECT_EQ(printed(chainToList(wrapped.get())), L"(\"a\" \"b\")");
    Chain bare(acutBuildList(RTSTR, L"a", RTSTR, L"b", 0));
    EXPECT_EQ(printed(chainToList(bare.get())), L"(\"a\" \"b\")");
    Chain twoLists(acutBuildList(RTLB, RTSHORT, 1, RTLE, RTLB, RTSHORT, 2, RTLE, 0));
    EXPECT_EQ(printed(chainToList(twoLists.get())), L"((1) (2))");
    Chain pair(acutBuildList(RTLB, RTSTR, L"k", RTDOTE, RTREAL, 2.0, RTLE, 0));
    EXPECT_EQ(printed(chainToValue(pair.get())), L"(\"k\" . 2.0)");
    EXPECT_EQ(printed(chainToList(nullptr)), L"nil");
}

TEST(HostText, Utf8RoundTripAndInvalidBytesAreReplacedNotDropped) {
    std::wstring text = L"Gr\u00fc\u00dfe \u20ac \U0001F600";
    EXPECT_EQ(kelvo::fromUtf8(kelvo::toUtf8(text)), text);
    EXPECT_EQ(kelvo::fromUtf8("a\xff" "b"), L"a\uFFFDb");
    EXPECT_EQ(kelvo::fromUtf8("\xe2\x82"), L"\uFFFD\uFFFD");   // truncated sequence
    EXPECT_EQ(kelvo::fromUtf8("\xc0\xaf"), L"\uFFFD\uFFFD");   // overlong form
    // A file in a Windows code page keeps its characters.
    EXPECT_EQ(kelvo::fromUtf8("Gr\xfc\xdf" "e", kelvo::InvalidBytes::Latin1), L"Gr\u00fc\u00dfe");
    EXPECT_EQ(kelvo::toUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xef\xbf\xbd");
}

// --- the call protocol ----------------------------------------------------------------

int echoArgs() {
    resbuf* args = acedGetArgs();
    acedRetList(args);
    acutRelRb(args);
    return RSRSLT;
}

int printAndFail() {
    acutPrintf(L"\n%s=%d %5.2f|%-4s|", L"width", 7, 3.14159, L"ab");
    return RSERR;
}

[[noreturn]] int throwsClassLibraryException() { throw new CException(L"disk full"); }

TEST(ExternalCall, ArgumentsComeBackUnchanged) {
    Chain args(acutBuildList(RTSTR, L"x", RTLB, RTSHORT, 1, RTREAL, 2.0, RTLE, 0));
    auto outcome = kelvo::host::runExternalCall(echoArgs, args.get());
    EXPECT_EQ(outcome.rc, RSRSLT);
    EXPECT_EQ(outcome.result, L"(\"x\" (1 2.0))");
}

TEST(ExternalCall, PrintfTakesWideStringsAndKeepsWidths) {
    auto outcome = kelvo::host::runExternalCall(printAndFail, nullptr);
    EXPECT_EQ(outcome.rc, RSERR);
    EXPECT_EQ(outcome.printed, L"\nwidth=7  3.14|ab  |");
    EXPECT_EQ(outcome.result, L"nil");
}

TEST(ExternalCall, LongPrintfOutputIsNotCut) {
    std::wstring longText(5000, L'x');
    static std::wstring* text;
    text = &longText;
    auto outcome = kelvo::host::runExternalCall(
        [] {
            acutPrintf(L"%s|", text->c_str());
            return RSRSLT;
        },
        nullptr);
    EXPECT_EQ(outcome.printed, longText + L"|");
}

TEST(ExternalCall, ClassLibraryExceptionBecomesALispErrorAndIsDeleted) {
    EXPECT_THROW(kelvo::host::runExternalCall(throwsClassLibraryException, nullptr), lisp::Error);
}

TEST(ExternalCall, ResultsOutsideACallAreRefused) {
    EXPECT_EQ(acedRetT(), RTERROR);
    EXPECT_EQ(acedGetArgs(), nullptr);
}

}  // namespace
