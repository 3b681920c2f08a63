// The file and folder functions on a scratch folder: results, argument checks, and the
// refresh rule of kv_fcopyIfChanged.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "module/file_functions.h"
#include "module/file_operations.h"
#include "module_test_support.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;
using test::call;
using test::list;

class FileFunctions : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  ("kelvo-files-" + std::to_string(::getpid()) + "-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    std::wstring path(const std::string& name) const { return (folder_ / name).wstring(); }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ / name) << text;
    }
    std::string read(const std::string& name) const {
        std::ifstream in(folder_ / name);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void setAge(const std::string& name, std::chrono::seconds age) const {
        fs::last_write_time(folder_ / name, fs::file_time_type::clock::now() - age);
    }

    fs::path folder_;
};

TEST_F(FileFunctions, MakeAndRemoveFolder) {
    EXPECT_EQ(call(kvMkdir, list(RTSTR, path("sub").c_str())).result, L"T");
    EXPECT_TRUE(fs::is_directory(folder_ / "sub"));
    EXPECT_EQ(call(kvMkdir, list(RTSTR, path("sub").c_str())).result, L"nil");
    EXPECT_EQ(call(kvMkdir, list(RTSTR, path("no/such").c_str())).result, L"nil");
    write("sub/f", "x");
    EXPECT_EQ(call(kvRmdir, list(RTSTR, path("sub").c_str())).result, L"nil");
    fs::remove(folder_ / "sub/f");
    EXPECT_EQ(call(kvRmdir, list(RTSTR, path("sub").c_str())).result, L"T");
    EXPECT_FALSE(fs::exists(folder_ / "sub"));
}

TEST_F(FileFunctions, FolderFunctionsWantOneText) {
    for (AcedFunction f : {kvMkdir, kvRmdir}) {
        auto missing = call(f);
        EXPECT_EQ(missing.rc, RSERR);
        EXPECT_EQ(missing.printed, L"\nWrong type of arguments passed.\n");
        EXPECT_EQ(call(f, list(RTLONG, 1)).printed, L"\nWrong type of arguments passed.\n");
    }
}

TEST_F(FileFunctions, DeleteIsSilentOnBadArguments) {
    write("f.txt", "x");
    EXPECT_EQ(call(kvFdelete, list(RTSTR, path("f.txt").c_str())).result, L"T");
    EXPECT_FALSE(fs::exists(folder_ / "f.txt"));
    EXPECT_EQ(call(kvFdelete, list(RTSTR, path("f.txt").c_str())).result, L"nil");
    fs::create_directory(folder_ / "d");
    EXPECT_EQ(call(kvFdelete, list(RTSTR, path("d").c_str())).result, L"nil");
    const auto bad = call(kvFdelete, list(RTREAL, 1.0));
    EXPECT_EQ(bad.rc, RSRSLT);
    EXPECT_EQ(bad.printed, L"");
    EXPECT_EQ(bad.result, L"nil");
}

TEST_F(FileFunctions, DirectoryListingIncludesDotEntriesAndFolders) {
    write("b.dwg", "");
    write("a.dwg", "");
    write("c.txt", "");
    fs::create_directory(folder_ / "sub");
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("*").c_str())).result,
              L"(\".\" \"..\" \"a.dwg\" \"b.dwg\" \"c.txt\" \"sub\")");
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("*.dwg").c_str())).result, L"(\"a.dwg\" \"b.dwg\")");
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("?.txt").c_str())).result, L"(\"c.txt\")");
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("*.*").c_str())).result,
              call(kvFdir, list(RTSTR, path("*").c_str())).result);
}

TEST_F(FileFunctions, DirectoryPatternsKnowOnlyStarAndQuestionMark) {
    write("a1.txt", "");
    write("a[1].txt", "");
    write("README", "");
    write("notes.", "");
    fs::create_directory(folder_ / "sub");
    // Brackets are ordinary characters, not a character class.
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("a[1].txt").c_str())).result, L"(\"a[1].txt\")");
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("a[0-9].txt").c_str())).result, L"nil");
    // "*." lists the names without an extension.
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("*.").c_str())).result,
              L"(\".\" \"..\" \"README\" \"notes.\" \"sub\")");
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("R*.").c_str())).result, L"(\"README\")");
    // A trailing ".*" also takes names without an extension.
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("RE*.*").c_str())).result, L"(\"README\")");
}

TEST(FilePatterns, QuestionMarkIsOneCharacter) {
    EXPECT_TRUE(matchesFilePattern("?.txt", "\xC3\xA9.txt"));  // one character, two bytes
    EXPECT_FALSE(matchesFilePattern("?.txt", "ab.txt"));
    EXPECT_FALSE(matchesFilePattern("?.txt", ".txt"));
    EXPECT_TRUE(matchesFilePattern("*a*a*a*a*a*b", std::string(200, 'a') + "b"));
    EXPECT_FALSE(matchesFilePattern("*a*a*a*a*a*b", std::string(200, 'a')));
    EXPECT_FALSE(matchesFilePattern("*.", "plan.dwg"));
    EXPECT_TRUE(matchesFilePattern("*.dwg", "plan.dwg"));
    EXPECT_FALSE(matchesFilePattern("*.DWG", "plan.dwg"));  // names compare with case
}

TEST_F(FileFunctions, DirectoryListingGivesNilWhenNothingMatches) {
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("*.none").c_str())).result, L"nil");
    EXPECT_EQ(call(kvFdir, list(RTSTR, path("missing/*").c_str())).result, L"nil");
    const auto bad = call(kvFdir);
    EXPECT_EQ(bad.printed, L"");
    EXPECT_EQ(bad.result, L"nil");
}

TEST_F(FileFunctions, CopyOverwritesAndChecksArguments) {
    write("src", "new");
    write("dst", "old");
    EXPECT_EQ(call(kvFcopy, list(RTSTR, path("src").c_str(), RTSTR, path("dst").c_str())).result,
              L"T");
    EXPECT_EQ(read("dst"), "new");
    EXPECT_EQ(call(kvFcopy, list(RTSTR, path("none").c_str(), RTSTR, path("x").c_str())).result,
              L"nil");
    const auto one = call(kvFcopy, list(RTSTR, path("src").c_str()));
    EXPECT_EQ(one.rc, RSERR);
    EXPECT_EQ(one.printed, L"\nToo few arguments passed.\n");
    EXPECT_EQ(one.result, L"nil");
    EXPECT_EQ(call(kvFcopy).printed, L"\nToo few arguments passed.\n");
    EXPECT_EQ(call(kvFcopy, list(RTSTR, path("src").c_str(), RTLONG, 3)).printed,
              L"\nWrong type of arguments passed.\n");
}

TEST_F(FileFunctions, CopyIfChangedNeverCreatesADestination) {
    write("src", "data");
    const auto outcome =
        call(kvFcopyIfChanged, list(RTSTR, path("src").c_str(), RTSTR, path("dst").c_str()));
    EXPECT_EQ(outcome.result, L"nil");
    EXPECT_FALSE(fs::exists(folder_ / "dst"));
}

TEST_F(FileFunctions, CopyIfChangedRefreshesOnlyAnOlderCopy) {
    write("src", "new");
    write("dst", "old");
    const auto args = [&] { return list(RTSTR, path("src").c_str(), RTSTR, path("dst").c_str()); };
    fs::last_write_time(folder_ / "dst", fs::last_write_time(folder_ / "src"));
    EXPECT_EQ(call(kvFcopyIfChanged, args()).result, L"nil");  // same time
    EXPECT_EQ(read("dst"), "old");
    setAge("src", std::chrono::seconds(100));  // source older
    EXPECT_EQ(call(kvFcopyIfChanged, args()).result, L"nil");
    setAge("dst", std::chrono::seconds(200));  // destination older
    EXPECT_EQ(call(kvFcopyIfChanged, args()).result, L"T");
    EXPECT_EQ(read("dst"), "new");
    EXPECT_EQ(call(kvFcopyIfChanged, args()).result, L"nil");  // now up to date
    EXPECT_EQ(call(kvFcopyIfChanged, list(RTSTR, path("src").c_str())).printed,
              L"\nToo few arguments passed.\n");
}

TEST_F(FileFunctions, MoveNeverReplacesAnExistingDestination) {
    write("a", "A");
    write("b", "B");
    EXPECT_EQ(call(kvFmove, list(RTSTR, path("a").c_str(), RTSTR, path("b").c_str())).result,
              L"nil");
    EXPECT_EQ(read("b"), "B");
    EXPECT_EQ(call(kvFmove, list(RTSTR, path("a").c_str(), RTSTR, path("c").c_str())).result, L"T");
    EXPECT_FALSE(fs::exists(folder_ / "a"));
    EXPECT_EQ(read("c"), "A");
    const auto one = call(kvFmove, list(RTSTR, path("c").c_str()));
    EXPECT_EQ(one.rc, RSERR);
    EXPECT_EQ(one.printed, L"\nWrong type of arguments passed.\n");
}

}  // namespace
}  // namespace kelvo
