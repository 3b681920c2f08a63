// Files written whole or not at all, and the read-only test of a file.
//
// A file that is replaced is first written under a temporary name in the same folder and
// renamed onto its name at the end, so that a reader (or a crash) sees either the old
// file or the new one, never a part of it.
#pragma once

#include <filesystem>
#include <string_view>

namespace kelvo {

// A new, empty file beside `target` under a hidden unique name ("." + name + ".XXXXXX"),
// created with the permissions the target has (or would get). It is removed when this
// owner goes, unless moveIntoPlace succeeded.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::filesystem::path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // 0 when the file was made, else the errno of the failure.
    int error() const { return error_; }
    const std::filesystem::path& path() const { return path_; }
    int descriptor() const { return fd_; }

    // Flushes the file to the disk and renames it onto the target: replacing an existing
    // target, or (replace false) failing with EEXIST when there is one. 0 or an errno.
    int moveIntoPlace(bool replace = true);

private:
    std::filesystem::path target_;
    std::filesystem::path path_;
    int fd_ = -1;
    int error_ = 0;
    bool placed_ = false;
};

// Writes `bytes` as the whole new contents of `file`, through a TemporaryFile. An existing
// file that is read-only (see isReadOnlyFile) is refused with EACCES, and anything that is
// not a regular file with EINVAL. 0 or an errno.
int writeWholeFile(const std::filesystem::path& file, std::string_view bytes);

// True when the file may not be written: the system says so (access), or no write
// permission bit is set at all. The second test matters for root, whom the system lets
// write anything.
bool isReadOnlyFile(const std::filesystem::path& file);

}  // namespace kelvo
