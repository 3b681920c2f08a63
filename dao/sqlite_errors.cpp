// Mapping of SQLite failures to DAO errors.
#include "sqlite_errors.h"

#include <sqlite3.h>
#include <unistd.h>

#include "dao_errors.h"
#include "dao_exception.h"
#include "jet_sql.h"
#include "sqlite_statement.h"

namespace dao {
namespace {

thread_local LockAction currentAction = LockAction::write;
thread_local const std::wstring* currentFile = nullptr;

// The user name Jet reports for a lock held elsewhere: its default account.
constexpr const wchar_t* kLockUser = L"Admin";

std::wstring fileName() { return currentFile ? *currentFile : std::wstring(); }

std::wstring afterPrefix(std::string_view message, std::string_view prefix) {
    const auto at = message.find(prefix);
    return at == std::string_view::npos ? wide(message) : wide(message.substr(at + prefix.size()));
}

[[noreturn]] void throwBusy(int code) {
    switch (currentAction) {
        case LockAction::read:
            throwError(kReadLockedByUser, {kLockUser, machineName()}, code);
        case LockAction::edit:
            throwError(kUpdateLockedByUser, {kLockUser, machineName()}, code);
        case LockAction::open: throwError(kFileInUse, {fileName()}, code);
        case LockAction::write: break;
    }
    throwError(kUpdateLocked, {}, code);
}

// Errors raised inside SQL by the engine's own triggers: "kelvo:<number>:<insert>".
[[noreturn]] void throwRaised(int code, std::string_view message) {
    const auto at = message.find("kelvo:");
    const std::string_view rest = message.substr(at + 6);
    const auto colon = rest.find(':');
    const long number = std::stol(std::string(rest.substr(0, colon)));
    const std::wstring insert =
        colon == std::string_view::npos ? std::wstring() : wide(rest.substr(colon + 1));
    throwError(number, {insert}, code);
}

[[noreturn]] void throwConstraint(int code, std::string_view message) {
    if (message.find("kelvo:") != std::string_view::npos) throwRaised(code, message);
    switch (code) {
        case SQLITE_CONSTRAINT_NOTNULL:
            throwError(kRequiredNull, {afterPrefix(message, "constraint failed: ")}, code);
        case SQLITE_CONSTRAINT_FOREIGNKEY: throwError(kRelatedRecordRequired, {L""}, code);
        default: throwError(kDuplicateKey, {}, code);
    }
}

[[noreturn]] void throwGeneric(int code, std::string_view message) {
    if (message.find("kelvo:") != std::string_view::npos) throwRaised(code, message);
    if (message.starts_with("Expression tree is too large") ||
        message.starts_with("parser stack overflow") || message.starts_with("too many terms"))
        throwError(kQueryTooComplex, {}, code);
    if (message.starts_with("no such table: "))
        throwError(kInputTableNotFound, {afterPrefix(message, "no such table: ")}, code);
    if (message.starts_with("no such column: "))
        throwError(kUnknownFieldName, {afterPrefix(message, "no such column: ")}, code);
    if (const long jet = kelvo::jet::daoErrorCode(message); jet != 0)
        throw new CDaoException(jet, wide(message), code);
    // Anything else keeps SQLite's own words behind DAO's general message.
    throw new CDaoException(kInvalidOperation,
                            errorText(kInvalidOperation) + L" (" + wide(message) + L")", code);
}

}  // namespace

LockScope::LockScope(LockAction action) : previous_(currentAction) { currentAction = action; }
LockScope::~LockScope() { currentAction = previous_; }

int busyWaitMilliseconds() {
    switch (currentAction) {
        case LockAction::read: return 2000;
        case LockAction::open: return 2000;
        // A write waits a little for a file another process is writing (a write holds
        // the file for milliseconds), then gives the lock error that callers retry.
        default:
            return 250;
    }
}

FileScope::FileScope(const std::wstring& path) : previous_(currentFile) { currentFile = &path; }
FileScope::~FileScope() { currentFile = previous_; }

std::wstring machineName() {
    char name[256] = {};
    if (gethostname(name, sizeof name - 1) != 0) return L"localhost";
    return wide(name);
}

void throwSqliteError(int code, std::string_view message) {
    switch (code & 0xFF) {
        case SQLITE_BUSY: throwBusy(code);
        case SQLITE_LOCKED: throwError(kTableInUse, {L""}, code);
        case SQLITE_READONLY: throwError(kReadOnly, {}, code);
        case SQLITE_IOERR: throwError(kDiskOrNetwork, {}, code);
        case SQLITE_FULL: throwError(kDiskFull, {}, code);
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB: throwError(kUnrecognizedFormat, {fileName()}, code);
        case SQLITE_CANTOPEN: throwError(kFileNotFound, {fileName()}, code);
        case SQLITE_PERM: throwError(kCannotOpenFile, {fileName()}, code);
        case SQLITE_NOMEM: throwError(kResourceExceeded, {}, code);
        case SQLITE_TOOBIG: throwError(kFieldTooSmall, {}, code);
        case SQLITE_MISMATCH: throwError(kTypeMismatch, {}, code);
        case SQLITE_CONSTRAINT: throwConstraint(code, message);
        default: throwGeneric(code, message);
    }
}

}  // namespace dao
