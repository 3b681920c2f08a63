// Opening a database file and the connection's shared services.
#include "dao_connection.h"

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "catalog.h"
#include "dao_cursor.h"
#include "dao_errors.h"
#include "jet_sql.h"
#include "sqlite_errors.h"
#include "utf8.h"
#include "whole_file.h"

namespace dao {
namespace {

namespace fs = std::filesystem;

// Files up to this size get a full structural check when opened, so that a damaged file
// is refused at once; larger ones are checked as their pages are read.
constexpr std::uintmax_t kCheckedSize = 32u << 20;

constexpr int kApplicationId = 0x4B4C564F;  // "KLVO"

int busyHandler(void*, int attempt) {
    // Wait 1 ms per attempt up to the limit of what is being done.
    if (attempt >= busyWaitMilliseconds()) return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 1;
}

void exec(sqlite3* db, const char* sql) {
    char* error = nullptr;
    const int rc = sqlite3_exec(db, sql, nullptr, nullptr, &error);
    if (rc == SQLITE_OK) return;
    const std::string message = error ? error : sqlite3_errmsg(db);
    sqlite3_free(error);
    throwSqliteError(sqlite3_extended_errcode(db), message);
}

std::wstring absolutePath(const std::wstring& path) {
    std::error_code ec;
    const fs::path full = fs::absolute(kelvo::utf8Path(path), ec);
    return ec ? path : kelvo::widePath(full.lexically_normal());
}

}  // namespace

Connection::Connection(const std::wstring& path, Mode mode, bool exclusive, bool readOnly)
    : path_(absolutePath(path)), readOnly_(readOnly) {
    FileScope file(path_);
    LockScope lock(LockAction::open);
    const std::string name = utf8(path_);
    std::error_code ec;
    const bool exists = fs::exists(kelvo::utf8Path(path_), ec);
    if (mode == Mode::create) {
        if (exists) throwError(kDatabaseExists);
        const fs::path parent = kelvo::utf8Path(path_).parent_path();
        if (!parent.empty() && !fs::is_directory(parent, ec))
            throwError(kInvalidPath, {kelvo::widePath(parent)});
        readOnly_ = false;
    } else {
        if (!exists || fs::is_directory(kelvo::utf8Path(path_), ec))
            throwError(kFileNotFound, {path_});
        if (!fs::is_regular_file(kelvo::utf8Path(path_), ec)) throwError(kCannotOpenFile, {path_});
        if (fs::file_size(kelvo::utf8Path(path_), ec) == 0)
            throwError(kUnrecognizedFormat, {path_});
        if (::access(name.c_str(), R_OK) != 0) throwError(kCannotOpenFile, {path_});
        if (kelvo::isReadOnlyFile(name)) readOnly_ = true;
    }
    const int flags = (readOnly_ ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) |
                      (mode == Mode::create ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX;
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(name.c_str(), &db, flags, nullptr);
    db_.reset(db);
    if (rc != SQLITE_OK) throwSqliteError(db ? sqlite3_extended_errcode(db) : rc, db ? sqlite3_errmsg(db) : "");
    setUp(exclusive);
    if (mode == Mode::create) {
        exec(db_.get(), ("PRAGMA application_id=" + std::to_string(kApplicationId)).c_str());
        ensureCatalog(*this);
    } else {
        verify();
    }
}

Connection::~Connection() {
    for (Cursor* cursor : std::set<Cursor*>(cursors_)) cursor->detach();
    statements_.clear();
    if (userTransaction_) sqlite3_exec(db_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Connection::setUp(bool exclusive) {
    sqlite3* db = db_.get();
    sqlite3_extended_result_codes(db, 1);
    sqlite3_busy_handler(db, busyHandler, nullptr);
    kelvo::jet::registerCollation(db);
    kelvo::jet::registerFunctions(db);
    if (exclusive) {
        exec(db, "PRAGMA locking_mode=EXCLUSIVE");
        // Take the lock now, so that others are kept out while this connection lasts.
        exec(db, readOnly_ ? "SELECT count(*) FROM sqlite_schema" : "BEGIN EXCLUSIVE; COMMIT");
    }
}

// Reads the schema (a file that is not a database fails here) and, for files small enough,
// checks every page.
void Connection::verify() {
    exec(db_.get(), "SELECT count(*) FROM sqlite_schema");
    std::error_code ec;
    if (fs::file_size(kelvo::utf8Path(path_), ec) > kCheckedSize) return;
    Statement check(db_.get(), "PRAGMA quick_check(1)");
    if (!check.step() || check.text(0) != "ok") throwError(kUnrecognizedFormat, {path_});
}

void Connection::requireWritable() const {
    if (readOnly_) throwError(kReadOnly);
}

Statement& Connection::cached(const std::string& sql) {
    auto found = statements_.find(sql);
    if (found == statements_.end()) found = statements_.emplace(sql, Statement(db_.get(), sql)).first;
    return found->second;
}

std::int64_t Connection::dataVersion() {
    LockScope lock(LockAction::read);
    Statement& version = cached("PRAGMA data_version");
    version.step();
    const std::int64_t value = version.integer(0);
    version.reset();
    return value;
}

std::int64_t Connection::fileChangeCounter() {
    // Rollback-journal files count their commits at offset 24 of the header.
    sqlite3_file* file = nullptr;
    unsigned char bytes[4] = {};
    if (sqlite3_file_control(db_.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file == nullptr || file->pMethods == nullptr ||
        file->pMethods->xRead(file, bytes, sizeof bytes, 24) != SQLITE_OK)
        return -1 - dataVersion();  // never equal to a counter read from the file
    return static_cast<std::int64_t>(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

const TableSchema* Connection::schema(std::wstring_view table) {
    LockScope lock(LockAction::read);
    Statement& version = cached("PRAGMA schema_version");
    version.step();
    const std::int64_t current = version.integer(0);
    version.reset();
    if (current != schemaVersion_) {
        schemas_.clear();
        schemaVersion_ = current;
    }
    for (auto& [name, schema] : schemas_)
        if (sameName(name, table)) return &schema;
    TableSchema loaded;
    if (!loadSchema(*this, table, loaded)) return nullptr;
    const std::wstring key = loaded.name;
    return &schemas_.emplace(key, std::move(loaded)).first->second;
}

const TableSchema& Connection::requireSchema(std::wstring_view table) {
    const TableSchema* found = schema(table);
    if (found == nullptr) throwError(kInputTableNotFound, {table});
    return *found;
}

void Connection::schemaChanged() {
    schemas_.clear();
    schemaVersion_ = -1;
    ++schemaChanges_;
    ++ownChanges_;
}

void Connection::beginUserTransaction() {
    if (userTransaction_) throwError(kInvalidOperation);
    requireWritable();
    LockScope lock(LockAction::write);
    exec(db_.get(), "BEGIN IMMEDIATE");
    userTransaction_ = true;
}

void Connection::commitUserTransaction() {
    if (!userTransaction_) throwError(kNotInTransaction);
    LockScope lock(LockAction::write);
    exec(db_.get(), "COMMIT");
    userTransaction_ = false;
}

void Connection::rollbackUserTransaction() {
    if (!userTransaction_) throwError(kNotInTransaction);
    userTransaction_ = false;
    exec(db_.get(), "ROLLBACK");
    schemaChanged();
}

WriteTransaction::WriteTransaction(Connection& connection)
    : connection_(connection), nested_(sqlite3_get_autocommit(connection.db()) == 0) {
    connection.requireWritable();
    exec(connection.db(), nested_ ? "SAVEPOINT kelvo_write" : "BEGIN IMMEDIATE");
}

WriteTransaction::~WriteTransaction() {
    if (done_) return;
    sqlite3* db = connection_.db();
    if (nested_) {
        sqlite3_exec(db, "ROLLBACK TO kelvo_write; RELEASE kelvo_write", nullptr, nullptr, nullptr);
    } else {
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void WriteTransaction::commit() {
    exec(connection_.db(), nested_ ? "RELEASE kelvo_write" : "COMMIT");
    done_ = true;
    connection_.noteChange();
}

}  // namespace dao
