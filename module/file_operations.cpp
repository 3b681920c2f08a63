// File system operations behind the file and folder functions.
#include "module/file_operations.h"

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

// An open file descriptor, closed when it goes out of scope.
class FileDescriptor {
public:
    explicit FileDescriptor(const std::string& path) : fd_(::open(path.c_str(), O_RDONLY)) {}
    ~FileDescriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    bool isOpen() const { return fd_ >= 0; }
    int get() const { return fd_; }

private:
    int fd_;
};

struct DirCloser {
    void operator()(DIR* dir) const noexcept { ::closedir(dir); }
};

bool modificationSeconds(const FileDescriptor& file, time_t& seconds) {
    struct stat info {};
    if (::fstat(file.get(), &info) != 0) return false;
    seconds = info.st_mtim.tv_sec;
    return true;
}

bool moveAcrossFileSystems(const std::string& source, const std::string& destination) {
    std::error_code ec;
    if (!fs::is_regular_file(source, ec) || fs::exists(destination, ec)) return false;
    if (!copyFile(source, destination)) return false;
    if (::unlink(source.c_str()) == 0) return true;
    ::unlink(destination.c_str());
    return false;
}

// For file systems that refuse RENAME_NOREPLACE: test, then rename.
bool moveWithoutNoReplace(const std::string& source, const std::string& destination) {
    struct stat info {};
    if (::lstat(destination.c_str(), &info) == 0 || errno != ENOENT) return false;
    return ::rename(source.c_str(), destination.c_str()) == 0;
}

// Splits "folder/pattern" into the folder to read ("." when none) and the name pattern.
std::pair<std::string, std::string> splitPattern(const std::string& pattern) {
    const auto slash = pattern.rfind('/');
    if (slash == std::string::npos) return {".", pattern};
    std::string folder = slash == 0 ? "/" : pattern.substr(0, slash);
    return {folder, pattern.substr(slash + 1)};
}

}  // namespace

bool makeFolder(const std::string& path) {
    return ::mkdir(path.c_str(), 0777) == 0;
}

bool removeFolder(const std::string& path) {
    return ::rmdir(path.c_str()) == 0;
}

bool deleteFile(const std::string& path) {
    return ::unlink(path.c_str()) == 0;
}

bool copyFile(const std::string& source, const std::string& destination) {
    std::error_code ec;
    if (!fs::copy_file(source, destination, fs::copy_options::overwrite_existing, ec)) {
        return false;
    }
    const auto written = fs::last_write_time(source, ec);
    if (!ec) fs::last_write_time(destination, written, ec);
    return true;
}

bool copyFileIfNewer(const std::string& source, const std::string& destination) {
    const FileDescriptor from(source);
    if (!from.isOpen()) return false;
    const FileDescriptor to(destination);
    if (!to.isOpen()) return false;
    time_t sourceTime = 0, destinationTime = 0;
    if (!modificationSeconds(from, sourceTime) || !modificationSeconds(to, destinationTime)) {
        return false;
    }
    return sourceTime > destinationTime && copyFile(source, destination);
}

bool moveFile(const std::string& source, const std::string& destination) {
    if (::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, destination.c_str(), RENAME_NOREPLACE) ==
        0) {
        return true;
    }
    if (errno == EXDEV) return moveAcrossFileSystems(source, destination);
    if (errno == EINVAL) return moveWithoutNoReplace(source, destination);
    return false;
}

std::vector<std::string> listMatchingNames(const std::string& pattern) {
    auto [folder, namePattern] = splitPattern(pattern);
    if (namePattern == "*.*") namePattern = "*";
    std::vector<std::string> names;
    if (namePattern.empty()) return names;
    const std::unique_ptr<DIR, DirCloser> dir(::opendir(folder.c_str()));
    if (!dir) return names;
    while (const dirent* entry = ::readdir(dir.get())) {
        if (::fnmatch(namePattern.c_str(), entry->d_name, FNM_NOESCAPE) == 0) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace kelvo
