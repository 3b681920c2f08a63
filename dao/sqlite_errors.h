// SQLite failures as the DAO errors a DAO program would see.
//
// Lock conflicts depend on what was being done when the file was busy: LockScope sets
// that for the calls inside it (the innermost scope counts). Reads that find the file
// locked give 3187, a pessimistic Edit 3260, every other write 3218, an open 3045.
#pragma once

#include <string>
#include <string_view>

namespace dao {

enum class LockAction { read, write, edit, open };

class LockScope {
public:
    explicit LockScope(LockAction action);
    ~LockScope();
    LockScope(const LockScope&) = delete;
    LockScope& operator=(const LockScope&) = delete;

private:
    LockAction previous_;
};

// How long a call of the current lock action waits for a busy file, in milliseconds:
// 2 s to read or open, 250 ms to write.
int busyWaitMilliseconds();

// The file the failing call worked on, for the messages that name it (3343, 3045 ...).
// Set by the connection for the calls inside it.
class FileScope {
public:
    explicit FileScope(const std::wstring& path);
    ~FileScope();
    FileScope(const FileScope&) = delete;
    FileScope& operator=(const FileScope&) = delete;

private:
    const std::wstring* previous_;
};

// The DAO error of an SQLite result code (extended codes understood) and its message.
// "no such table: X" gives 3078, constraint failures 3022 / 3314 / 3201, errors raised by
// the dialect's functions their own numbers.
[[noreturn]] void throwSqliteError(int code, std::string_view message);

// The machine name lock messages report.
std::wstring machineName();

}  // namespace dao
