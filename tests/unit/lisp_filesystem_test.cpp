// File names and the file system: vl-filename-*, vl-file-*, vl-directory-files, vl-mkdir.
#include <gtest/gtest.h>

#include <filesystem>
#include <ctime>
#include <fstream>
#include <unistd.h>

#include "lisp_test_support.h"

namespace lisp::test {
namespace {

namespace fs = std::filesystem;

TEST(LispFilenames, SplitIntoFolderBaseAndExtension) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(mapcar 'vl-filename-base '(\"/a/b/c.lsp\" \"c:\\\\acad\\\\acad.exe\" \"foo\" \"a.b.c\" \"/a/b/\"))"),
              L"(\"c\" \"acad\" \"foo\" \"a.b\" \"\")");
    EXPECT_EQ(t.run(L"(mapcar 'vl-filename-directory '(\"/a/b/c.lsp\" \"c:\\\\acad\\\\acad.exe\" \"c.lsp\" \"/c.lsp\" \"a/b/\"))"),
              L"(\"/a/b\" \"c:\\\\acad\" \"\" \"/\" \"a/b\")");
    EXPECT_EQ(t.run(L"(mapcar 'vl-filename-extension '(\"foo.lsp\" \"foo\" \"a.b/c\" \"a/b.c.txt\"))"),
              L"(\".lsp\" nil nil \".txt\")");
    EXPECT_EQ(t.error(L"(vl-filename-base 1)"), L"bad argument type: stringp 1");
}

class LispFileSystem : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  ("kelvo-lispfs-" + std::to_string(::getpid()) + "-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    // The folder, as LISP source text with a final slash.
    std::wstring dir() const { return folder_.wstring() + L"/"; }
    // (setq d "<folder>/") followed by the source, run in the interpreter.
    std::wstring run(const std::wstring& source) { return t_.run(L"(setq d \"" + dir() + L"\") " + source); }
    void write(const std::string& name, const std::string& text) const { std::ofstream(folder_ / name) << text; }
    std::string read(const std::string& name) const {
        std::ifstream in(folder_ / name);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    fs::path folder_;
    TestInterp t_;
};

TEST_F(LispFileSystem, SizeDeleteAndDirectoryTest) {
    write("five.txt", "12345");
    write("empty.txt", "");
    EXPECT_EQ(run(L"(mapcar '(lambda (n) (vl-file-size (strcat d n))) '(\"five.txt\" \"empty.txt\" \"none\" \"\"))"),
              L"(5 0 nil 0)");
    EXPECT_EQ(run(L"(list (vl-file-directory-p d) (vl-file-directory-p (strcat d \"five.txt\")) "
                  L"(vl-file-directory-p (strcat d \"none\")))"),
              L"(T nil nil)");
    EXPECT_EQ(run(L"(list (vl-file-delete (strcat d \"five.txt\")) (vl-file-delete (strcat d \"five.txt\")))"),
              L"(T nil)");
    EXPECT_FALSE(fs::exists(folder_ / "five.txt"));
    EXPECT_EQ(run(L"(vl-mkdir (strcat d \"sub\")) (vl-file-delete (strcat d \"sub\"))"), L"nil");
    EXPECT_TRUE(fs::is_directory(folder_ / "sub"));
}

TEST_F(LispFileSystem, CopyRefusesToOverwriteUnlessAppending) {
    write("a.txt", "hello\n");
    write("b.txt", "old");
    EXPECT_EQ(run(L"(vl-file-copy (strcat d \"a.txt\") (strcat d \"c.txt\"))"), L"6");
    EXPECT_EQ(read("c.txt"), "hello\n");
    EXPECT_EQ(run(L"(vl-file-copy (strcat d \"a.txt\") (strcat d \"b.txt\"))"), L"nil");
    EXPECT_EQ(read("b.txt"), "old");
    EXPECT_EQ(run(L"(vl-file-copy (strcat d \"a.txt\") (strcat d \"b.txt\") T)"), L"6");
    EXPECT_EQ(read("b.txt"), "oldhello\n");
    EXPECT_EQ(run(L"(list (vl-file-copy (strcat d \"none\") (strcat d \"x\")) "
                  L"(vl-file-copy (strcat d \"a.txt\") (strcat d \"a.txt\") T))"),
              L"(nil nil)");
    EXPECT_EQ(read("a.txt"), "hello\n");
}

TEST_F(LispFileSystem, RenameRefusesAnExistingTarget) {
    write("a.txt", "A");
    write("b.txt", "B");
    EXPECT_EQ(run(L"(vl-file-rename (strcat d \"a.txt\") (strcat d \"b.txt\"))"), L"nil");
    EXPECT_EQ(read("b.txt"), "B");
    EXPECT_EQ(run(L"(vl-file-rename (strcat d \"a.txt\") (strcat d \"c.txt\"))"), L"T");
    EXPECT_EQ(read("c.txt"), "A");
    EXPECT_FALSE(fs::exists(folder_ / "a.txt"));
    EXPECT_EQ(run(L"(vl-file-rename (strcat d \"a.txt\") (strcat d \"d.txt\"))"), L"nil");
}

TEST_F(LispFileSystem, DirectoryFilesFiltersByPatternAndKind) {
    write("one.lsp", "");
    write("Two.LSP", "");
    write("notes.txt", "");
    write("README", "");
    fs::create_directory(folder_ / "sub");
    EXPECT_EQ(run(L"(vl-directory-files d)"),
              L"(\".\" \"..\" \"README\" \"Two.LSP\" \"notes.txt\" \"one.lsp\" \"sub\")");
    EXPECT_EQ(run(L"(vl-directory-files d nil 1)"), L"(\"README\" \"Two.LSP\" \"notes.txt\" \"one.lsp\")");
    EXPECT_EQ(run(L"(vl-directory-files d nil -1)"), L"(\".\" \"..\" \"sub\")");
    EXPECT_EQ(run(L"(vl-directory-files d \"*.lsp\")"), L"(\"Two.LSP\" \"one.lsp\")");
    EXPECT_EQ(run(L"(vl-directory-files d \"?o*\" 1)"), L"(\"notes.txt\")");
    EXPECT_EQ(run(L"(vl-directory-files d \"*.*\" 1)"), L"(\"README\" \"Two.LSP\" \"notes.txt\" \"one.lsp\")");
    EXPECT_EQ(run(L"(vl-directory-files (strcat d \"none\"))"), L"nil");
    EXPECT_EQ(run(L"(vl-directory-files (strcat d \"sub\") nil 1)"), L"nil");
    EXPECT_EQ(t_.error(L"(vl-directory-files \".\" nil 2)"), L"bad argument value: 2");
}

TEST_F(LispFileSystem, MkdirMakesOneNewFolder) {
    EXPECT_EQ(run(L"(list (vl-mkdir (strcat d \"new\")) (vl-mkdir (strcat d \"new\")) "
                  L"(vl-mkdir (strcat d \"x/y\")))"),
              L"(T nil nil)");
    EXPECT_TRUE(fs::is_directory(folder_ / "new"));
}

TEST_F(LispFileSystem, MktempNamesAFileThatDoesNotExist) {
    std::wstring first = run(L"(setq a (vl-filename-mktemp \"probe.txt\" d))");
    EXPECT_EQ(first.substr(0, dir().size() + 6), L"\"" + dir() + L"probe");
    EXPECT_EQ(run(L"(list (strlen (vl-filename-base a)) (vl-filename-extension a) (vl-file-size a))"),
              L"(8 \".txt\" nil)");
    // Creating the file makes the next call choose another name.
    EXPECT_EQ(run(L"(close (open a \"w\")) (equal a (vl-filename-mktemp \"probe.txt\" d))"), L"nil");
    EXPECT_EQ(run(L"(vl-filename-extension (vl-filename-mktemp \"x\" d \"dat\"))"), L"\".dat\"");
    EXPECT_EQ(run(L"(vl-filename-directory (vl-filename-mktemp (strcat d \"p\")))"),
              L"\"" + folder_.wstring() + L"\"");
}

TEST_F(LispFileSystem, SystimeIsTheLocalTimeOfTheLastChange) {
    write("a.txt", "x");
    std::time_t now = std::time(nullptr);
    std::tm tm{};
    localtime_r(&now, &tm);
    std::wstring got = run(L"(setq st (vl-file-systime (strcat d \"a.txt\"))) (list (car st) (cadr st) (length st))");
    EXPECT_EQ(got, L"(" + std::to_wstring(tm.tm_year + 1900) + L" " + std::to_wstring(tm.tm_mon + 1) + L" 8)");
    EXPECT_EQ(run(L"(nth 2 st)"), std::to_wstring(tm.tm_wday));
    EXPECT_EQ(run(L"(vl-file-systime (strcat d \"none\"))"), L"nil");
}

}  // namespace
}  // namespace lisp::test
