#include "whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

namespace kelvo {
namespace {

// The permissions a new file gets: 0666 less the process's umask.
mode_t newFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::filesystem::path& target) : target_(target) {
    const std::filesystem::path folder = target.parent_path();
    const std::string name = "." + target.filename().native() + ".XXXXXX";
    std::string pattern = (folder.empty() ? std::filesystem::path(name) : folder / name).native();
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    fd_ = ::mkostemp(buffer.data(), O_CLOEXEC);
    if (fd_ < 0) {
        error_ = errno;
        return;
    }
    path_ = std::filesystem::path(std::string(buffer.data()));
    struct stat existing {};
    const mode_t mode =
        ::stat(target.c_str(), &existing) == 0 ? existing.st_mode & 07777 : newFileMode();
    ::fchmod(fd_, mode);
}

TemporaryFile::~TemporaryFile() {
    if (fd_ >= 0) ::close(fd_);
    if (!path_.empty() && !placed_) ::unlink(path_.c_str());
}

int TemporaryFile::moveIntoPlace(bool replace) {
    if (error_ != 0) return error_;
    if (::fsync(fd_) != 0) return errno;
    if (replace) {
        if (::rename(path_.c_str(), target_.c_str()) != 0) return errno;
    } else {
        // A hard link fails when the name is taken, so no existing file is ever replaced.
        if (::link(path_.c_str(), target_.c_str()) != 0) return errno;
        ::unlink(path_.c_str());
    }
    placed_ = true;
    return 0;
}

int writeWholeFile(const std::filesystem::path& file, std::string_view bytes) {
    struct stat existing {};
    if (::stat(file.c_str(), &existing) == 0) {
        if (!S_ISREG(existing.st_mode)) return S_ISDIR(existing.st_mode) ? EISDIR : EINVAL;
        if (isReadOnlyFile(file)) return EACCES;
    }
    TemporaryFile temporary(file);
    if (temporary.error() != 0) return temporary.error();
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t n = ::write(temporary.descriptor(), bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        done += static_cast<std::size_t>(n);
    }
    return temporary.moveIntoPlace(true);
}

bool isReadOnlyFile(const std::filesystem::path& file) {
    struct stat info {};
    if (::stat(file.c_str(), &info) != 0) return false;
    return ::access(file.c_str(), W_OK) != 0 || (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

}  // namespace kelvo
