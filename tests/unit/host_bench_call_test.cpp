// Raw external calls, as the benchmarks make them: the callback gets its own copy of the
// value list given, and its result stays a value list (counted, or copied when kept),
// while ordinary calls still give LISP values.

#include <gtest/gtest.h>

#include <cwchar>
#include <memory>

#include "adslib.h"
#include "runtime/bench_call.h"
#include "runtime/host.h"

namespace {

using kelvo::host::Host;
using kelvo::host::RawCall;

struct RbDeleter {
    void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using Chain = std::unique_ptr<resbuf, RbDeleter>;

// What the probe callbacks saw of their arguments.
const resbuf* givenArgs = nullptr;
std::wstring firstText;

// Returns its own arguments as a list, then (when the first is "then 7") the integer 7.
int echoArguments() {
    Chain a(acedGetArgs());
    givenArgs = a.get();
    firstText = a && a->restype == RTSTR ? a->resval.rstring : L"";
    acedRetList(a.get());
    if (firstText == L"then 7") acedRetInt(7);
    return RSRSLT;
}

int returnsText() {
    acedRetStr(L"plain");
    return RSERR;
}

class RawCalls : public ::testing::Test {
protected:
    void SetUp() override { Host::instance().setOutput([](std::wstring_view) {}); }
    void TearDown() override {
        Host::instance().shutdown();
        Host::instance().setOutput(nullptr);
    }
};

TEST_F(RawCalls, TheCallbackGetsACopyAndTheListItReturnsIsCountedOrKept) {
    Chain given(acutBuildList(RTSTR, L"key", RTLB, RTLONG, 12, RTREAL, 2.5, RTLE, 0));
    RawCall counted;
    const auto& outcome = counted(echoArguments, given.get());
    EXPECT_EQ(outcome.rc, RSRSLT);
    EXPECT_EQ(outcome.kind, RTLB);
    EXPECT_EQ(outcome.nodes, 5u);
    EXPECT_EQ(outcome.chain, nullptr);
    EXPECT_NE(givenArgs, given.get());
    EXPECT_EQ(firstText, L"key");

    RawCall kept(true);
    const auto& copy = kept(echoArguments, given.get());
    ASSERT_NE(copy.chain, nullptr);
    EXPECT_NE(copy.chain->resval.rstring, given->resval.rstring);
    EXPECT_STREQ(copy.chain->resval.rstring, L"key");
    const resbuf* real = copy.chain->rbnext->rbnext->rbnext;
    ASSERT_EQ(real->restype, RTREAL);
    EXPECT_EQ(real->resval.rreal, 2.5);
}

TEST_F(RawCalls, APlainResultAfterAListReplacesIt) {
    Chain given(acutBuildList(RTSTR, L"then 7", 0));
    RawCall kept(true);
    const auto& outcome = kept(echoArguments, given.get());
    EXPECT_EQ(outcome.kind, RTLONG);
    EXPECT_EQ(outcome.nodes, 0u);
    EXPECT_EQ(outcome.chain, nullptr);

    const auto& text = kept(returnsText, nullptr);
    EXPECT_EQ(text.rc, RSERR);
    EXPECT_EQ(text.kind, RTSTR);
}

TEST_F(RawCalls, OrdinaryCallsStillConvertAndFunctionsAreFoundByName) {
    Host& host = Host::instance();
    host.newDocument();
    ASSERT_EQ(acedDefun(L"bench:echo", 3), RTNORM);
    ASSERT_EQ(acedRegFunc(echoArguments, 3), RTNORM);
    EXPECT_EQ(kelvo::host::findExternalFunction(L"bench:echo"), &echoArguments);
    EXPECT_EQ(kelvo::host::findExternalFunction(L"bench:none"), nullptr);

    Chain given(acutBuildList(RTSTR, L"x", RTLONG, 4, 0));
    const auto outcome = kelvo::host::runExternalCall(echoArguments, given.get());
    EXPECT_EQ(outcome.result, L"(\"x\" 4)");
}

}  // namespace
