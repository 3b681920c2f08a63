// The editor reactor's save rule: a connection made for one drawing file is dropped when
// the drawing is saved under another name (compared case-sensitively), and kept when it is
// saved under its own.
#include <gtest/gtest.h>

#include <filesystem>

#include "acdocman.h"
#include "dbmain.h"
#include "database/current_connection.h"
#include "database/database_functions.h"
#include "database/document_records.h"
#include "module/editor_reactor.h"
#include "module_test_support.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;
using test::call;
using test::list;

class SaveReactor : public ::testing::Test {
protected:
    void SetUp() override {
        host::Host::instance().newDocument();
        documentRecords().addForCurrentDocument();
        folder_ = fs::temp_directory_path() / ("kelvo-reactor-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
        path_ = (folder_ / "jobs.mdb").wstring();
        ASSERT_EQ(call(database::kvCreateDb, list(RTSTR, path_.c_str())).result, L"T");
        ASSERT_EQ(call(database::kvConnect, list(RTSTR, path_.c_str())).result, L"T");
        ASSERT_NE(database::currentConnection(), nullptr);
        ASSERT_TRUE(database::isCurrentConnection(documentRecords().head().connection));
    }
    void TearDown() override {
        database::closeCurrentDatabase();
        documentRecords().clear();
        database::deleteAllConnections();
        host::Host::instance().shutdown();
        fs::remove_all(folder_);
    }

    static AcDbDatabase* currentDb() { return acDocManagerPtr()->curDocument()->database(); }
    static std::wstring drawingName() { return acDocManagerPtr()->curDocument()->fileName(); }
    bool connected() const { return !database::currentPath().empty(); }

    kvEditorReactor reactor_;
    fs::path folder_;
    std::wstring path_;
};

TEST_F(SaveReactor, SavingUnderItsOwnNameKeepsTheConnection) {
    reactor_.saveComplete(currentDb(), drawingName().c_str());
    EXPECT_TRUE(connected());
    EXPECT_TRUE(database::isCurrentConnection(documentRecords().head().connection));
}

TEST_F(SaveReactor, SavingAnotherDatabaseChangesNothing) {
    AcDbDatabase background;
    reactor_.saveComplete(&background, L"/elsewhere/copy.dwg");
    EXPECT_TRUE(connected());
}

TEST_F(SaveReactor, SavingUnderAnotherNameClosesTheConnection) {
    reactor_.saveComplete(currentDb(), (folder_ / "copy.dwg").wstring().c_str());
    EXPECT_FALSE(connected());
    EXPECT_EQ(documentRecords().head().connection, nullptr);
    // The next database function finds no database until LISP connects again.
    EXPECT_EQ(call(database::kvMdb).result, L"nil");
}

TEST_F(SaveReactor, TheSameNameInAnotherCaseIsAnotherName) {
    std::wstring name = drawingName();
    for (wchar_t& c : name) c = static_cast<wchar_t>(std::towupper(c));
    ASSERT_NE(name, drawingName());
    reactor_.saveComplete(currentDb(), name.c_str());
    EXPECT_FALSE(connected());
}

// With several drawings the first drawing's record decides, whichever drawing is saved.
TEST_F(SaveReactor, AConnectionTheHeadRecordDoesNotHoldIsKept) {
    database::closeCurrentDatabase();
    host::Host::instance().newDocument();
    documentRecords().addForCurrentDocument();
    ASSERT_EQ(call(database::kvConnect, list(RTSTR, path_.c_str())).result, L"T");
    reactor_.saveComplete(currentDb(), L"/elsewhere/second.dwg");
    EXPECT_TRUE(connected());
}

}  // namespace
}  // namespace kelvo
