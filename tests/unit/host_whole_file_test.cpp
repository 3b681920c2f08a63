// Files written whole or not at all, and the read-only test (which must hold for root,
// whom the system lets write anything).
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "whole_file.h"

namespace {

namespace fs = std::filesystem;

class WholeFile : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / ("kelvo-whole-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    static std::string contents(const fs::path& file) {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream out;
        out << in.rdbuf();
        return out.str();
    }
    // Everything in the folder: no temporary file may be left behind.
    std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), {}));
    }

    fs::path folder_;
};

TEST_F(WholeFile, WritesNewAndReplacesExistingKeepingTheirPermissions) {
    const fs::path file = folder_ / "Zeichnung ß.dxf";
    ASSERT_EQ(kelvo::writeWholeFile(file, "first"), 0);
    EXPECT_EQ(contents(file), "first");
    const mode_t mask = ::umask(0);
    ::umask(mask);
    struct stat info {};
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0666 & ~mask);

    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    ASSERT_EQ(kelvo::writeWholeFile(file, "second, longer"), 0);
    EXPECT_EQ(contents(file), "second, longer");
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
    EXPECT_EQ(entries(), 1u);
}

TEST_F(WholeFile, ReadOnlyFilesFoldersAndDevicesAreNotWritten) {
    const fs::path file = folder_ / "locked.dwg";
    ASSERT_EQ(kelvo::writeWholeFile(file, "kept"), 0);
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
    EXPECT_TRUE(kelvo::isReadOnlyFile(file));
    EXPECT_EQ(kelvo::writeWholeFile(file, "lost"), EACCES);
    EXPECT_EQ(contents(file), "kept");
    EXPECT_EQ(kelvo::writeWholeFile(folder_, "x"), EISDIR);
    EXPECT_EQ(kelvo::writeWholeFile("/dev/null", "x"), EINVAL);
    EXPECT_EQ(kelvo::writeWholeFile(folder_ / "missing" / "x.dxf", "x"), ENOENT);
    EXPECT_EQ(entries(), 1u);

    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_FALSE(kelvo::isReadOnlyFile(file));
    EXPECT_FALSE(kelvo::isReadOnlyFile(folder_ / "missing"));
}

TEST_F(WholeFile, ATemporaryFileGoesUnlessMovedIntoPlace) {
    const fs::path target = folder_ / "copy.mdb";
    {
        kelvo::TemporaryFile unused(target);
        ASSERT_EQ(unused.error(), 0);
        EXPECT_EQ(unused.path().parent_path(), folder_);
        EXPECT_TRUE(fs::exists(unused.path()));
    }
    EXPECT_EQ(entries(), 0u);

    std::ofstream(target) << "there first";
    kelvo::TemporaryFile copy(target);
    ASSERT_EQ(::write(copy.descriptor(), "new", 3), 3);
    EXPECT_EQ(copy.moveIntoPlace(false), EEXIST);
    EXPECT_EQ(contents(target), "there first");
    fs::remove(target);
    EXPECT_EQ(copy.moveIntoPlace(false), 0);
    EXPECT_EQ(contents(target), "new");
    EXPECT_EQ(entries(), 1u);
}

}  // namespace
