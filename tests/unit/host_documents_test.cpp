// The host's documents and the calls that reach LISP from a module: each document has
// its own names, the document manager iterates the open ones, acedInvoke calls LISP.

#include <gtest/gtest.h>

#include <memory>

#include "acdocman.h"
#include "adslib.h"
#include "lisp/interp.h"
#include "runtime/host.h"

namespace {

using kelvo::host::Host;

struct RbDeleter {
    void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using Chain = std::unique_ptr<resbuf, RbDeleter>;

class HostDocuments : public ::testing::Test {
protected:
    void SetUp() override { Host::instance().setOutput([this](std::wstring_view s) { out_ += s; }); }
    void TearDown() override {
        Host::instance().shutdown();
        Host::instance().setOutput(nullptr);
    }
    std::wstring out_;
};

std::vector<std::wstring> iteratedNames() {
    std::unique_ptr<AcApDocumentIterator> it(acDocManagerPtr()->newAcApDocumentIterator());
    std::vector<std::wstring> names;
    for (; !it->done(); it->step()) names.push_back(it->document()->fileName());
    return names;
}

TEST_F(HostDocuments, EachDocumentHasItsOwnNamesAndTheManagerSeesThemAll) {
    Host& host = Host::instance();
    EXPECT_EQ(host.newDocument(), 0);
    host.interp().evalString(L"(setq here 1)");
    EXPECT_EQ(host.newDocument(), 1);
    EXPECT_TRUE(host.interp().evalString(L"here").isNil());
    ASSERT_EQ(iteratedNames().size(), 2u);
    std::wstring first = iteratedNames()[0], second = iteratedNames()[1];
    EXPECT_NE(first, second);
    EXPECT_EQ(acDocManagerPtr()->curDocument()->fileName(), second);

    ASSERT_TRUE(host.activateDocument(0));
    EXPECT_EQ(host.interp().evalString(L"here").asInt(), 1);
    EXPECT_FALSE(host.activateDocument(2));

    ASSERT_TRUE(host.closeDocument(0));
    host.collectClosed();
    EXPECT_EQ(iteratedNames(), std::vector<std::wstring>{second});
    EXPECT_EQ(acDocManagerPtr()->curDocument()->fileName(), second);
    ASSERT_TRUE(host.closeDocument(0));
    EXPECT_EQ(acDocManagerPtr()->curDocument(), nullptr);
    EXPECT_THROW(host.interp(), lisp::Error);
}

TEST_F(HostDocuments, InvokeCallsALispFunctionAndReturnsItsValue) {
    Host::instance().newDocument();
    Host::instance().interp().evalString(L"(defun twice (x) (list x x))");
    Chain args(acutBuildList(RTSTR, L"twice", RTSTR, L"ab", 0));
    resbuf* result = nullptr;
    ASSERT_EQ(acedInvoke(args.get(), &result), RTNORM);
    Chain owned(result);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->restype, RTLB);
    EXPECT_STREQ(result->rbnext->resval.rstring, L"ab");

    Chain nilArgs(acutBuildList(RTSTR, L"not", RTSTR, L"x", 0));
    ASSERT_EQ(acedInvoke(nilArgs.get(), &result), RTNORM);
    Chain ownedNil(result);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->restype, RTNIL);
}

TEST_F(HostDocuments, InvokeOfAnUndefinedFunctionFailsWithItsMessage) {
    Host::instance().newDocument();
    Chain args(acutBuildList(RTSTR, L"compactDatabase", RTNIL, 0));
    resbuf* result = nullptr;
    EXPECT_EQ(acedInvoke(args.get(), &result), RTERROR);
    EXPECT_EQ(result, nullptr);
    EXPECT_NE(out_.find(L"no function definition: COMPACTDATABASE"), std::wstring::npos);
    Chain notAName(acutBuildList(RTSHORT, 1, 0));
    EXPECT_EQ(acedInvoke(notAName.get(), &result), RTERROR);
}

TEST_F(HostDocuments, VariablesReadOnlyAndUnknown) {
    Host& host = Host::instance();
    host.defineVar(L"ACADPREFIX", lisp::Value::string(L"/a;/b"));
    host.newDocument();
    resbuf rb{};
    ASSERT_EQ(acedGetVar(L"acadprefix", &rb), RTNORM);
    EXPECT_EQ(rb.restype, RTSTR);
    EXPECT_STREQ(rb.resval.rstring, L"/a;/b");
    acutDelString(rb.resval.rstring);
    EXPECT_EQ(acedGetVar(L"NOSUCHVAR", &rb), RTERROR);
    EXPECT_FALSE(host.setVar(L"ACADPREFIX", lisp::Value::string(L"x")));
    ASSERT_EQ(acedGetVar(L"DWGNAME", &rb), RTNORM);
    EXPECT_STREQ(rb.resval.rstring, acDocManagerPtr()->curDocument()->fileName());
    acutDelString(rb.resval.rstring);
}

}  // namespace
