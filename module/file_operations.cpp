// File system operations behind the file and folder functions.
#include "module/file_operations.h"

#include <dirent.h>
#include <fcntl.h>
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

// Whether `name` matches `pattern` character by character: "*" stands for any run of
// characters, "?" for exactly one (a whole UTF-8 sequence), everything else for itself.
// "[" is an ordinary character.
bool matchesLiterally(std::string_view pattern, std::string_view name) {
    // reached[i * (n + 1) + j]: the first i pattern bytes can match the first j name bytes.
    const std::size_t n = name.size();
    std::vector<char> reached((pattern.size() + 1) * (n + 1), 0);
    auto at = [&](std::size_t i, std::size_t j) -> char& { return reached[i * (n + 1) + j]; };
    auto isContinuation = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    at(0, 0) = 1;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        for (std::size_t j = 0; j <= n; ++j) {
            if (!at(i, j)) continue;
            const char p = pattern[i];
            if (p == '*') {
                for (std::size_t k = j; k <= n; ++k) at(i + 1, k) = 1;
                break;
            }
            if (j == n) continue;
            if (p == '?') {
                std::size_t k = j + 1;
                while (k < n && isContinuation(name[k])) ++k;
                at(i + 1, k) = 1;
            } else if (p == name[j]) {
                at(i + 1, j + 1) = 1;
            }
        }
    }
    return at(pattern.size(), n) != 0;
}

}  // namespace

bool matchesFilePattern(std::string_view pattern, std::string_view name) {
    if (matchesLiterally(pattern, name)) return true;
    // A pattern ending in ".*" also takes names without an extension ("*.*" takes all).
    if (pattern.size() >= 2 && pattern.substr(pattern.size() - 2) == ".*") {
        return matchesLiterally(pattern.substr(0, pattern.size() - 2), name);
    }
    // A pattern ending in "." asks for names without an extension ("*." lists them).
    if (!pattern.empty() && pattern.back() == '.' && name.find('.') == std::string_view::npos) {
        return matchesLiterally(pattern.substr(0, pattern.size() - 1), name);
    }
    return false;
}

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
    const auto [folder, namePattern] = splitPattern(pattern);
    std::vector<std::string> names;
    if (namePattern.empty()) return names;
    const std::unique_ptr<DIR, DirCloser> dir(::opendir(folder.c_str()));
    if (!dir) return names;
    while (const dirent* entry = ::readdir(dir.get())) {
        if (matchesFilePattern(namePattern, entry->d_name)) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace kelvo
