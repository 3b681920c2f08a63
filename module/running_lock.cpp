// The running-module lock file.
#include "module/running_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace kelvo {
namespace {

// A program testing for a running module holds the exclusive lock only for a moment;
// wait a little for it rather than block module start.
bool lockShared(int fd) {
    for (int attempt = 0; attempt < 20; ++attempt) {
        if (::flock(fd, LOCK_SH | LOCK_NB) == 0) return true;
        ::usleep(10'000);
    }
    return false;
}

// The open lock file. A static object: its destructor runs when the module is unloaded
// (or the process exits) and closing the descriptor releases the lock.
class RunningLock {
public:
    RunningLock() = default;
    ~RunningLock() {
        if (fd_ >= 0) ::close(fd_);
    }
    RunningLock(const RunningLock&) = delete;
    RunningLock& operator=(const RunningLock&) = delete;

    bool hold() {
        if (fd_ >= 0) return true;
        const std::filesystem::path path = runningLockPath();
        ::mkdir(path.parent_path().c_str(), 0700);
        fd_ = ::open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600);
        if (fd_ >= 0 && lockShared(fd_)) return true;
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
        return false;
    }

private:
    int fd_ = -1;
};

RunningLock runningLock;

}  // namespace

std::filesystem::path runningLockPath() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime != '\0') {
        return std::filesystem::path(runtime) / "TarvikKelvo";
    }
    return std::filesystem::path("/tmp/kelvo-" + std::to_string(::getuid())) / "TarvikKelvo";
}

bool holdRunningLock() {
    return runningLock.hold();
}

}  // namespace kelvo
