// Saving and opening documents' drawings: every editor reactor hears beginSave and then
// saveComplete with the absolute name written, the document takes that name, a failed
// save says why and completes nothing, and an opened file becomes the current document.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "aced.h"
#include "acdocman.h"
#include "dbmain.h"
#include "runtime/drawing_files.h"
#include "runtime/host.h"

namespace {

using kelvo::host::Host;
namespace fs = std::filesystem;

struct Event {
    std::string what;
    AcDbDatabase* db;
    std::wstring name;
    bool operator==(const Event&) const = default;
};

class Recorder : public AcEditorReactor {
public:
    void beginSave(AcDbDatabase* db, const ACHAR* name) override { events.push_back({"begin", db, name}); }
    void saveComplete(AcDbDatabase* db, const ACHAR* name) override { events.push_back({"complete", db, name}); }
    std::vector<Event> events;
};

AcEditor* editor() { return AcEditor::cast(acrxSysRegistry()->at(L"AcEditor")); }

class SaveNotifications : public ::testing::Test {
protected:
    void SetUp() override {
        Host::instance().setOutput([](std::wstring_view) {});
        dir_ = fs::temp_directory_path() / ("kelvo-save-" + std::to_string(::getpid()));
        fs::create_directories(dir_);
        previous_ = fs::current_path();
        fs::current_path(dir_);
        Host::instance().newDocument();
        editor()->addReactor(&first_);
        editor()->addReactor(&second_);
    }
    void TearDown() override {
        editor()->removeReactor(&first_);
        editor()->removeReactor(&second_);
        Host::instance().shutdown();
        Host::instance().setOutput(nullptr);
        fs::current_path(previous_);
        fs::remove_all(dir_);
    }
    AcDbDatabase* db() const { return acDocManagerPtr()->curDocument()->database(); }

    fs::path dir_, previous_;
    Recorder first_, second_;
};

TEST_F(SaveNotifications, EveryReactorHearsTheAbsoluteNameWritten) {
    std::wstring written = kelvo::host::saveCurrentDrawing("plan.dxf");
    std::wstring expected = (dir_ / "plan.dxf").wstring();
    EXPECT_EQ(written, expected);
    std::vector<Event> want = {{"begin", db(), expected}, {"complete", db(), expected}};
    EXPECT_EQ(first_.events, want);
    EXPECT_EQ(second_.events, want);
    EXPECT_EQ(std::wstring(acDocManagerPtr()->curDocument()->fileName()), expected);
    EXPECT_EQ(Host::instance().getVar(L"DWGPREFIX")->asString() +
                  Host::instance().getVar(L"DWGNAME")->asString(),
              expected);
    EXPECT_TRUE(fs::exists(dir_ / "plan.dxf"));

    // Saved again without a name: under the document's own.
    first_.events.clear();
    EXPECT_EQ(kelvo::host::saveCurrentDrawing(), expected);
    EXPECT_EQ(first_.events.back(), (Event{"complete", db(), expected}));
}

TEST_F(SaveNotifications, AFailedSaveSaysWhyAndCompletesNothing) {
    std::wstring before = acDocManagerPtr()->curDocument()->fileName();
    try {
        kelvo::host::saveCurrentDrawing("no/such/folder/plan.dwg");
        FAIL() << "saved";
    } catch (const kelvo::host::DrawingFileError& e) {
        EXPECT_EQ(std::string(e.what()), "cannot save drawing no/such/folder/plan.dwg: No such file or directory");
    }
    ASSERT_EQ(first_.events.size(), 1u);
    EXPECT_EQ(first_.events[0].what, "begin");
    EXPECT_EQ(std::wstring(acDocManagerPtr()->curDocument()->fileName()), before);
}

TEST_F(SaveNotifications, AnOpenedFileIsTheCurrentDocumentUnderItsAbsoluteName) {
    kelvo::host::saveCurrentDrawing("plan.dwg");
    int index = kelvo::host::openDrawingDocument("plan.dwg");
    EXPECT_EQ(index, 1);
    EXPECT_EQ(Host::instance().currentIndex(), 1);
    EXPECT_EQ(std::wstring(acDocManagerPtr()->curDocument()->fileName()), (dir_ / "plan.dwg").wstring());
    const ACHAR* name = nullptr;
    db()->getFilename(name);
    EXPECT_EQ(std::wstring(name), (dir_ / "plan.dwg").wstring());
    EXPECT_THROW(kelvo::host::openDrawingDocument("absent.dwg"), kelvo::host::DrawingFileError);
    EXPECT_EQ(Host::instance().documentCount(), 2);

    kelvo::host::renderCurrentDrawing("plan.png");
    EXPECT_GT(fs::file_size(dir_ / "plan.png"), 0u);
}

}  // namespace
