// The handler guard: status codes to result codes and messages, exceptions reported
// and passed on, and the argument list released on every path.
#include <gtest/gtest.h>

#include <stdexcept>

#include "afx.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/value_list.h"
#include "module_test_support.h"

namespace kelvo {
namespace {

using test::call;
using test::list;

// Returns the status named by its first argument, after setting the result T.
int statusFromArgument() {
    HandlerArgs args;
    acedRetT();
    std::int32_t status = 0;
    if (!readInteger(args.cursor(), status)) return kTooFewArgs;
    return status;
}
int statusCallback() {
    return runGuarded(statusFromArgument);
}

struct StatusCase {
    int status;
    int rc;
    const wchar_t* printed;
};

TEST(HandlerGuard, MapsEveryStatusToItsResultCodeAndMessage) {
    const StatusCase cases[] = {
        {0, RSRSLT, L""},
        {1, RSERR, L"\nToo few arguments passed.\n"},
        {2, RSERR, L"\nWrong type of arguments passed.\n"},
        {3, RSERR, L"\nBad data passed .\n"},
        {4, RSERR, L""},
        {5, RSRSLT, L""},
        {-1, RSRSLT, L""},
    };
    for (const StatusCase& c : cases) {
        const auto outcome = call(statusCallback, list(RTLONG, c.status));
        EXPECT_EQ(outcome.rc, c.rc) << "status " << c.status;
        EXPECT_EQ(outcome.printed, c.printed) << "status " << c.status;
    }
}

TEST(HandlerGuard, NoArgumentsGivesTooFewAndNil) {
    const auto outcome = call(statusCallback);
    EXPECT_EQ(outcome.rc, RSERR);
    EXPECT_EQ(outcome.printed, L"\nToo few arguments passed.\n");
}

int throwsClassLibraryException() {
    HandlerArgs args;  // released while the exception unwinds
    throw new CException(L"boom");
}

int throwsStandardException() {
    HandlerArgs args;
    throw std::runtime_error("boom");
}

TEST(HandlerGuard, ClassLibraryExceptionIsReportedAndPassedOn) {
    auto args = list(RTSTR, L"kept until the throw");
    test::CapturedOutput output;
    CException* caught = nullptr;
    try {
        runGuarded(throwsClassLibraryException);
    } catch (CException* e) {
        caught = e;
    }
    ASSERT_NE(caught, nullptr);
    EXPECT_EQ(caught->errorMessage(), L"boom");
    caught->Delete();
    EXPECT_EQ(output.text(), L"\nGeneral Exception");
}

TEST(HandlerGuard, OtherExceptionsAreReportedAsErrorAndPassedOn) {
    test::CapturedOutput output;
    EXPECT_THROW(runGuarded(throwsStandardException), std::runtime_error);
    EXPECT_EQ(output.text(), L"\nError");
}

TEST(HandlerGuard, DatabaseCallRunsTheHandlerAfterThePerCallGuard) {
    const auto outcome = host::runExternalCall([] { return runDatabaseCall(statusFromArgument); },
                                               list(RTLONG, 3).get());
    EXPECT_EQ(outcome.rc, RSERR);
    EXPECT_EQ(outcome.printed, L"\nBad data passed .\n");
}

}  // namespace
}  // namespace kelvo
