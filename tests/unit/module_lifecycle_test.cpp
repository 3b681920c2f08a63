// Module start and stop, drawing open and close, as the host's messages drive them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>
#include <set>
#include <stdexcept>

#include "afx.h"
#include "entities/tv_leader_class.h"
#include "host_ui.h"
#include "module/dao_start.h"
#include "database/document_records.h"
#include "module/editor_reactor.h"
#include "module/function_tables.h"
#include "module/lifecycle.h"
#include "module/running_lock.h"
#include "module_test_support.h"
#include "rxobject.h"

namespace kelvo {
namespace {

using host::Host;

class Lifecycle : public ::testing::Test {
protected:
    void SetUp() override {
        closeAllDocuments();
        documentRecords().clear();
    }
    void TearDown() override {
        ::unsetenv("KELVO_FAULT");
        stopModule();
        closeAllDocuments();
        documentRecords().clear();
    }
    static void closeAllDocuments() {
        while (Host::instance().documentCount() > 0) Host::instance().closeDocument(0);
    }
    // A new drawing, opened as the host opens one for a loaded module.
    static std::wstring openNewDrawing() {
        Host::instance().newDocument();
        test::CapturedOutput output;
        EXPECT_EQ(openDrawing(), AcRx::kRetOK);
        return output.text();
    }
    static void closeCurrentDrawing() {
        EXPECT_EQ(closeDrawing(), AcRx::kRetOK);
        Host::instance().closeDocument(Host::instance().currentIndex());
    }
    static std::wstring eval(const std::wstring& source) {
        return lisp::Interp::prin1String(Host::instance().interp().evalString(source));
    }
};

TEST_F(Lifecycle, OpeningADrawingDefinesBothTablesInCodeOrder) {
    EXPECT_EQ(openNewDrawing(), L"\nLoading Tarvik Kelvo (Direct)");
    const auto defined = Host::instance().definedFunctions();
    const auto database = databaseFunctions();
    const auto general = generalFunctions();
    ASSERT_EQ(defined.size(), database.size() + general.size());
    for (std::size_t i = 0; i < defined.size(); ++i) {
        const auto& entry = i < database.size() ? database[i] : general[i - database.size()];
        EXPECT_EQ(defined[i].first, static_cast<int>(i));
        EXPECT_EQ(defined[i].second, entry.name);
    }
    EXPECT_EQ(defined[61].second, L"kv_relationInfo");
    EXPECT_EQ(defined[62].second, L"tv_tv-setGroupSelectable");
    EXPECT_EQ(defined.back().second, L"tv_tv-sendToBack");
}

TEST_F(Lifecycle, EveryFunctionNameIsDefinedOnce) {
    openNewDrawing();
    std::set<std::wstring> names;
    for (const auto& [code, name] : Host::instance().definedFunctions()) {
        EXPECT_TRUE(names.insert(name).second) << "duplicate " << code;
    }
    EXPECT_EQ(names.size(), 162u);
}

TEST_F(Lifecycle, SecondDrawingGetsTheSameCodesAndItsOwnRecord) {
    openNewDrawing();
    const auto first = Host::instance().definedFunctions();
    openNewDrawing();
    EXPECT_EQ(Host::instance().definedFunctions(), first);
    ASSERT_EQ(documentRecords().size(), 2u);
    const DocumentRecord& second = documentRecords().records().back();
    EXPECT_NE(second.documentFileName, documentRecords().head().documentFileName);
    EXPECT_EQ(second.connection, nullptr);
    EXPECT_TRUE(second.secondText.empty());
    EXPECT_FALSE(second.flag);
}

TEST_F(Lifecycle, FunctionsNotBuiltSayWhoTheyAreAndGiveNil) {
    openNewDrawing();
    test::CapturedOutput output;
    EXPECT_EQ(eval(L"(kv_modify_table \"tblLayer\")"), L"nil");
    EXPECT_EQ(eval(L"(tv_tv-multiMoveJig \"Move\" '(0 0) nil)"), L"nil");
    EXPECT_EQ(eval(L"(kv_link_table)"), L"nil");
    EXPECT_EQ(output.text(),
              L"\nkv_modify_table: not available in this build"
              L"\ntv_tv-multiMoveJig: not available in this build"
              L"\nkv_link_table: not available in this build");
}

TEST_F(Lifecycle, ClosingDropsTheHeadRecordAndAllWithTheLastDrawing) {
    openNewDrawing();
    const std::wstring firstName = documentRecords().head().documentFileName;
    openNewDrawing();
    openNewDrawing();
    closeCurrentDrawing();  // the third drawing closes, the first record goes
    ASSERT_EQ(documentRecords().size(), 2u);
    EXPECT_NE(documentRecords().head().documentFileName, firstName);
    closeCurrentDrawing();
    EXPECT_EQ(documentRecords().size(), 1u);
    documentRecords().addForCurrentDocument();  // a stray record
    closeCurrentDrawing();                      // the last drawing: the list empties
    EXPECT_TRUE(documentRecords().empty());
}

TEST_F(Lifecycle, ClosingWithNoRecordsLeavesTheListEmpty) {
    Host::instance().newDocument();
    Host::instance().newDocument();
    closeCurrentDrawing();
    EXPECT_TRUE(documentRecords().empty());
    EXPECT_THROW(
        {
            try {
                documentRecords().head();
            } catch (CException* e) {
                e->Delete();
                throw std::logic_error("empty");
            }
        },
        std::logic_error);
}

TEST_F(Lifecycle, StartBringsUpTheReactorClassAndLockAndStopTakesThemDown) {
    EXPECT_EQ(startModule(nullptr), AcRx::kRetOK);
    EXPECT_TRUE(daoStarted());
    EXPECT_NE(editorReactor(), nullptr);
    AcRxClass* cls = acrxFindClass(L"TVLeader");
    ASSERT_NE(cls, nullptr);
    EXPECT_STREQ(cls->dxfName(), L"TVLEADER");
    ASSERT_NE(cls->myParent(), nullptr);
    EXPECT_STREQ(cls->myParent()->name(), L"AcDbCurve");

    const int probe = ::open(runningLockPath().c_str(), O_RDONLY);
    ASSERT_GE(probe, 0);
    EXPECT_NE(::flock(probe, LOCK_EX | LOCK_NB), 0);  // the module holds it shared
    EXPECT_EQ(::flock(probe, LOCK_SH | LOCK_NB), 0);  // others may share it
    ::close(probe);

    EXPECT_EQ(stopModule(), AcRx::kRetOK);
    EXPECT_FALSE(daoStarted());
    EXPECT_EQ(editorReactor(), nullptr);
    EXPECT_EQ(acrxFindClass(L"TVLeader"), nullptr);
    EXPECT_EQ(tvLeaderClass(), nullptr);
}

TEST_F(Lifecycle, SecondStartDoesNotStartTheEngineAgain) {
    ASSERT_EQ(startModule(nullptr), AcRx::kRetOK);
    ::setenv("KELVO_FAULT", "dao-init", 1);  // would fail, were it called
    test::ScriptedUi ui;
    EXPECT_EQ(startModule(nullptr), AcRx::kRetOK);
    EXPECT_TRUE(ui->boxes.empty());
}

TEST_F(Lifecycle, EngineFailureOffersTheDriverFixAndRefusesTheModule) {
    ::setenv("KELVO_FAULT", "x,dao-init", 1);
    test::ScriptedUi ui;
    ui->answers = {IDNO};
    test::CapturedOutput output;
    EXPECT_EQ(startModule(nullptr), AcRx::kRetError);
    ASSERT_EQ(ui->boxes.size(), 1u);
    EXPECT_EQ(ui->boxes[0].caption, L"Tarvik Error");
    EXPECT_EQ(ui->boxes[0].text,
              L"Error loading database drivers.\nWould you like to download a fix to this error?");
    EXPECT_EQ(ui->boxes[0].style, MB_YESNO);
    EXPECT_TRUE(ui->opened.empty());
    EXPECT_EQ(output.text(), L"");
    EXPECT_EQ(editorReactor(), nullptr);  // later start steps skipped
    EXPECT_EQ(acrxFindClass(L"TVLeader"), nullptr);
}

TEST_F(Lifecycle, AcceptedDriverFixOpensTheDownload) {
    ::setenv("KELVO_FAULT", "dao-init", 1);
    test::ScriptedUi ui;
    ui->answers = {IDYES, IDOK};
    test::CapturedOutput output;
    EXPECT_EQ(startModule(nullptr), AcRx::kRetError);
    ASSERT_EQ(ui->opened.size(), 1u);
    EXPECT_EQ(ui->opened[0], L"OPEN https://downloads.tarvik.example/fixDAO.exe");
    EXPECT_EQ(output.text(), L"\nDownloading https://downloads.tarvik.example/fixDAO.exe");
    ASSERT_EQ(ui->boxes.size(), 2u);
    EXPECT_TRUE(ui->boxes[1].text.starts_with(
        L"Finish downloading fixDAO.exe.\nClose AutoCAD.\nRun fixDAO.exe.\nRestart AutoCAD.\n\n"
        L"If you continue to have problems, contact Tarvik Software technical support."));
    EXPECT_TRUE(ui->boxes[1].text.ends_with(L"\n+1 555 0100"));
}

TEST_F(Lifecycle, FailedDownloadTellsWhomToCall) {
    ::setenv("KELVO_FAULT", "dao-init", 1);
    test::ScriptedUi ui;
    ui->answers = {IDYES};
    ui->shellResult = 2;
    test::CapturedOutput output;
    EXPECT_EQ(startModule(nullptr), AcRx::kRetError);
    EXPECT_TRUE(output.text().starts_with(
        L"\nError downloading https://downloads.tarvik.example/fixDAO.exe\n"));
    EXPECT_NE(output.text().find(L"Tarvik Software technical support"), std::wstring::npos);
    ASSERT_EQ(ui->boxes.size(), 2u);
    EXPECT_TRUE(ui->boxes[1].text.starts_with(
        L"Error downloading FixDAO.exe.\nContact Tarvik Software technical support."));
    EXPECT_TRUE(ui->boxes[1].text.ends_with(L"+1 555 0100"));
    EXPECT_EQ(ui->boxes[1].caption, L"Tarvik Error");
}

TEST_F(Lifecycle, OtherMessagesDoNothing) {
    for (auto msg : {AcRx::kInvkSubrMsg, AcRx::kQuitMsg, AcRx::kSaveMsg, AcRx::kNullMsg}) {
        EXPECT_EQ(dispatchAppMessage(msg, nullptr), AcRx::kRetOK);
    }
    EXPECT_EQ(editorReactor(), nullptr);
    EXPECT_TRUE(documentRecords().empty());
}

}  // namespace
}  // namespace kelvo
