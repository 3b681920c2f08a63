// Fault injection for the test build of kelvo-host (kelvo-host-fault): linked into the
// executable, it replaces the global operator new and interposes the C library's file
// calls, and fails one call on request, so that a test can prove every error path
// releases what it opened and says what went wrong.
//
//   KELVO_FAULT_ALLOC=N   the Nth allocation fails: operator new throws std::bad_alloc,
//                         SQLite's allocator answers null (SQLite: SQLITE_NOMEM)
//   KELVO_FAULT_IO=N      the Nth file call fails: open/fopen with EIO ... read, write,
//                         fsync and truncation of a file (never standard input, output
//                         or error) with EIO
//   KELVO_FAULT_COUNT=1   at exit, print to standard error how many of each were made
//
// Each fault happens once (the calls after it succeed), and its line goes to standard
// error when it does: "kelvo-fault: failing allocation N" or "... file call N (read)".
// Counting starts with the process. Allocations by malloc outside SQLite (the host's
// value lists) are not counted.
#include <dlfcn.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

struct Counter {
    std::atomic<long> made{0};
    long failAt = 0;  // 0: never
    // True for the call that must fail.
    bool next() { return ++made == failAt; }
};

Counter& allocations() {
    static Counter c;
    return c;
}
Counter& fileCalls() {
    static Counter c;
    return c;
}

long fromEnvironment(const char* name) {
    const char* text = std::getenv(name);
    return text ? std::atol(text) : 0;
}

// Writes without allocating and without the counted calls.
void say(const char* what, long n) {
    char line[96];
    const int length = std::snprintf(line, sizeof line, "kelvo-fault: failing %s %ld\n", what, n);
    if (length > 0) (void)!::syscall(1 /* write */, 2, line, static_cast<size_t>(length));
}

bool failAllocation() {
    if (!allocations().next()) return false;
    say("allocation", allocations().made);
    return true;
}

bool failFileCall(int fd, const char* what) {
    if (fd >= 0 && fd <= 2) return false;
    if (!fileCalls().next()) return false;
    char name[48];
    std::snprintf(name, sizeof name, "file call (%s)", what);
    say(name, fileCalls().made);
    errno = EIO;
    return true;
}

// SQLite's allocator, counted with operator new.
sqlite3_mem_methods sqliteDefault;

void* sqliteMalloc(int n) {
    return failAllocation() ? nullptr : sqliteDefault.xMalloc(n);
}
void* sqliteRealloc(void* p, int n) {
    return failAllocation() ? nullptr : sqliteDefault.xRealloc(p, n);
}

struct Setup {
    Setup() {
        allocations().failAt = fromEnvironment("KELVO_FAULT_ALLOC");
        fileCalls().failAt = fromEnvironment("KELVO_FAULT_IO");
        sqlite3_config(SQLITE_CONFIG_GETMALLOC, &sqliteDefault);
        sqlite3_mem_methods counted = sqliteDefault;
        counted.xMalloc = sqliteMalloc;
        counted.xRealloc = sqliteRealloc;
        sqlite3_config(SQLITE_CONFIG_MALLOC, &counted);
        if (fromEnvironment("KELVO_FAULT_COUNT") != 0) std::atexit(report);
    }
    static void report() {
        std::fprintf(stderr, "kelvo-fault: %ld allocations, %ld file calls\n",
                     allocations().made.load(), fileCalls().made.load());
    }
} setup;

template <typename F>
F real(const char* name) {
    return reinterpret_cast<F>(dlsym(RTLD_NEXT, name));
}

void* allocate(std::size_t n) {
    if (failAllocation()) throw std::bad_alloc();
    if (void* p = std::malloc(n ? n : 1)) return p;
    throw std::bad_alloc();
}

void* allocateAligned(std::size_t n, std::align_val_t align) {
    if (failAllocation()) throw std::bad_alloc();
    const std::size_t a = static_cast<std::size_t>(align);
    if (void* p = std::aligned_alloc(a, (n + a - 1) / a * a)) return p;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t n) {
    return allocate(n);
}
void* operator new[](std::size_t n) {
    return allocate(n);
}
void* operator new(std::size_t n, std::align_val_t a) {
    return allocateAligned(n, a);
}
void* operator new[](std::size_t n, std::align_val_t a) {
    return allocateAligned(n, a);
}
void* operator new(std::size_t n, const std::nothrow_t&) noexcept {
    return failAllocation() ? nullptr : std::malloc(n ? n : 1);
}
void* operator new[](std::size_t n, const std::nothrow_t&) noexcept {
    return failAllocation() ? nullptr : std::malloc(n ? n : 1);
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete[](void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete(void* p, std::align_val_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::align_val_t) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t, std::align_val_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept {
    std::free(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    std::free(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    std::free(p);
}

// The C library's file calls, counted; each forwards to the next definition (the C
// library's, or a sanitizer's in front of it).
extern "C" {

int open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if (flags & (O_CREAT | O_TMPFILE)) {
        va_list ap;
        va_start(ap, flags);
        mode = va_arg(ap, mode_t);
        va_end(ap);
    }
    if (failFileCall(-1, "open")) return -1;
    static auto next = real<int (*)(const char*, int, ...)>("open");
    return next(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    mode_t mode = 0;
    if (flags & (O_CREAT | O_TMPFILE)) {
        va_list ap;
        va_start(ap, flags);
        mode = va_arg(ap, mode_t);
        va_end(ap);
    }
    if (failFileCall(-1, "open")) return -1;
    static auto next = real<int (*)(const char*, int, ...)>("open64");
    return next(path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    if (failFileCall(-1, "fopen")) return nullptr;
    static auto next = real<FILE* (*)(const char*, const char*)>("fopen");
    return next(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    if (failFileCall(-1, "fopen")) return nullptr;
    static auto next = real<FILE* (*)(const char*, const char*)>("fopen64");
    return next(path, mode);
}

ssize_t read(int fd, void* buffer, size_t n) {
    if (failFileCall(fd, "read")) return -1;
    static auto next = real<ssize_t (*)(int, void*, size_t)>("read");
    return next(fd, buffer, n);
}

ssize_t pread64(int fd, void* buffer, size_t n, off_t at) {
    if (failFileCall(fd, "read")) return -1;
    static auto next = real<ssize_t (*)(int, void*, size_t, off_t)>("pread64");
    return next(fd, buffer, n, at);
}

ssize_t write(int fd, const void* buffer, size_t n) {
    if (failFileCall(fd, "write")) return -1;
    static auto next = real<ssize_t (*)(int, const void*, size_t)>("write");
    return next(fd, buffer, n);
}

ssize_t pwrite64(int fd, const void* buffer, size_t n, off_t at) {
    if (failFileCall(fd, "write")) return -1;
    static auto next = real<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite64");
    return next(fd, buffer, n, at);
}

ssize_t writev(int fd, const struct iovec* parts, int count) {
    if (failFileCall(fd, "write")) return -1;
    static auto next = real<ssize_t (*)(int, const struct iovec*, int)>("writev");
    return next(fd, parts, count);
}

int fsync(int fd) {
    if (failFileCall(fd, "fsync")) return -1;
    static auto next = real<int (*)(int)>("fsync");
    return next(fd);
}

int fdatasync(int fd) {
    if (failFileCall(fd, "fsync")) return -1;
    static auto next = real<int (*)(int)>("fdatasync");
    return next(fd);
}

int ftruncate64(int fd, off_t length) {
    if (failFileCall(fd, "truncate")) return -1;
    static auto next = real<int (*)(int, off_t)>("ftruncate64");
    return next(fd, length);
}

}  // extern "C"
