// Beeps, the message box and its keywords, random numbers and the version query, seen
// through a recording user interface.
#include <gtest/gtest.h>

#include <set>

#include "host_ui.h"
#include "module/message_functions.h"
#include "module_test_support.h"

namespace kelvo {
namespace {

using test::call;
using test::list;

TEST(MessageFunctions, BeepIsTheSimpleBeep) {
    test::ScriptedUi ui;
    EXPECT_EQ(call(kvBeep).result, L"T");
    EXPECT_EQ(ui->beeps, std::vector<unsigned>{0xFFFFFFFF});
}

TEST(MessageFunctions, MessageBeepSounds) {
    test::ScriptedUi ui;
    EXPECT_EQ(call(kvMessageBeep).result, L"T");  // no argument: silent
    EXPECT_TRUE(ui->beeps.empty());
    EXPECT_EQ(call(kvMessageBeep, list(RTLONG, 16)).result, L"T");
    EXPECT_TRUE(ui->beeps.empty());
    for (const wchar_t* name : {L"?", L"*", L"HAND", L"!", L"OK", L"hand", L"beep"}) {
        EXPECT_EQ(call(kvMessageBeep, list(RTSTR, name)).result, L"T");
    }
    const std::vector<unsigned> want = {32, 64, 16, 48, 0, 0xFFFFFFFF, 0xFFFFFFFF};
    EXPECT_EQ(ui->beeps, want);
}

// The style the box was shown with, for a keyword list given as separate arguments.
unsigned styleFor(std::initializer_list<const wchar_t*> keywords = {}) {
    std::vector<const wchar_t*> texts = {L"Cap", L"Msg"};
    texts.insert(texts.end(), keywords);
    test::ScriptedUi ui;
    call(kvMessageBox, test::texts(texts));
    return ui->boxes.empty() ? 0xDEAD : ui->boxes.back().style;
}

TEST(MessageFunctions, ButtonKeywordsReplaceTheWholeStyle) {
    EXPECT_EQ(styleFor(), MB_OK);
    EXPECT_EQ(styleFor({L"?", L"YESNO"}), MB_YESNO);
    EXPECT_EQ(styleFor({L"YESNO", L"?"}), MB_YESNO | MB_ICONQUESTION);
    EXPECT_EQ(styleFor({L"ABORT"}), MB_ABORTRETRYIGNORE);
    EXPECT_EQ(styleFor({L"RETRYCANCEL", L"STOP", L"DEF2"}),
              MB_RETRYCANCEL | MB_ICONSTOP | MB_DEFBUTTON2);
    EXPECT_EQ(styleFor({L"YESNOCANCEL", L"i", L"DEF3", L"DEF1"}),
              MB_YESNOCANCEL | MB_ICONINFORMATION | MB_DEFBUTTON3);
    EXPECT_EQ(styleFor({L"OKCANCEL", L"!", L"OK"}), MB_OK);
    EXPECT_EQ(styleFor({L"yesno", L"Question", L"!"}), MB_ICONEXCLAMATION);  // exact compare
}

TEST(MessageFunctions, KeywordsInsideOneListAsSeparateArguments) {
    test::ScriptedUi ui;
    call(kvMessageBox,
         list(RTSTR, L"Cap", RTSTR, L"Msg", RTLB, RTSTR, L"YESNO", RTSTR, L"?", RTLE));
    ASSERT_EQ(ui->boxes.size(), 1u);
    EXPECT_EQ(ui->boxes[0].style, MB_YESNO | MB_ICONQUESTION);
    EXPECT_EQ(ui->boxes[0].caption, L"Cap");
    EXPECT_EQ(ui->boxes[0].text, L"Msg");
}

TEST(MessageFunctions, KeywordsStopAtTheFirstNonText) {
    EXPECT_EQ(styleFor({L"YESNO"}), MB_YESNO);
    test::ScriptedUi ui;
    call(kvMessageBox, list(RTSTR, L"C", RTSTR, L"M", RTLONG, 1, RTSTR, L"YESNO"));
    ASSERT_EQ(ui->boxes.size(), 1u);
    EXPECT_EQ(ui->boxes[0].style, MB_OK);
}

TEST(MessageFunctions, AnswerIsTheButtonName) {
    test::ScriptedUi ui;
    ui->answers = {IDOK, IDCANCEL, IDABORT, IDRETRY, IDIGNORE, IDYES, IDNO, 0, 99};
    const wchar_t* want[] = {L"\"OK\"",  L"\"CANCEL\"", L"\"ABORT\"", L"\"RETRY\"", L"\"IGNORE\"",
                             L"\"YES\"", L"\"NO\"",     L"nil",       L"nil"};
    for (const wchar_t* name : want) {
        EXPECT_EQ(call(kvMessageBox, list(RTSTR, L"C", RTSTR, L"M")).result, name);
    }
}

TEST(MessageFunctions, MessageBoxWantsCaptionAndMessage) {
    test::ScriptedUi ui;
    const auto onlyCaption = call(kvMessageBox, list(RTSTR, L"only caption"));
    EXPECT_EQ(onlyCaption.rc, RSERR);
    EXPECT_EQ(onlyCaption.printed, L"\nWrong type of arguments passed.\n");
    const auto numberMessage = call(kvMessageBox, list(RTSTR, L"C", RTLONG, 2));
    EXPECT_EQ(numberMessage.rc, RSERR);
    EXPECT_EQ(numberMessage.printed, L"\nWrong type of arguments passed.\n");
    EXPECT_TRUE(ui->boxes.empty());
}

TEST(MessageFunctions, RandomStaysInRangeAndVaries) {
    std::set<std::wstring> seen;
    for (int i = 0; i < 50; ++i) {
        const std::wstring value = call(kvRandom).result;
        const long number = std::stol(value);
        EXPECT_GE(number, 0);
        EXPECT_LE(number, 32767);
        seen.insert(value);
    }
    EXPECT_GT(seen.size(), 1u);
}

TEST(MessageFunctions, VersionIsMinusOneWhateverIsPassed) {
    EXPECT_EQ(call(kvGetVersion).result, L"-1");
    EXPECT_EQ(call(kvGetVersion, list(RTSTR, L"x", RTLONG, 3)).result, L"-1");
}

}  // namespace
}  // namespace kelvo
