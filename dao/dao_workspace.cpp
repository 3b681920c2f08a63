// Compaction: a compacted copy of a database file, written whole or not at all.
#include <cerrno>
#include <filesystem>

#include "dao_connection.h"
#include "dao_database.h"
#include "dao_errors.h"
#include "sqlite_errors.h"
#include "utf8.h"
#include "whole_file.h"

void CDaoWorkspace::CompactDatabase(const wchar_t* src, const wchar_t* dst, const wchar_t*, int) {
    const std::wstring source = src ? src : L"";
    const std::wstring destination = dst ? dst : L"";
    const std::filesystem::path target = kelvo::utf8Path(destination);
    std::error_code ec;
    if (std::filesystem::exists(target, ec)) dao::throwError(dao::kDatabaseExists);
    dao::Connection connection(source, dao::Connection::Mode::open, false, true);
    const std::filesystem::path parent = target.parent_path();
    if (!parent.empty() && !std::filesystem::is_directory(parent, ec))
        dao::throwError(dao::kInvalidPath, {kelvo::widePath(parent)});
    // The copy is made under a temporary name beside the destination and takes its name
    // only when complete: an interrupted compaction leaves no destination behind.
    kelvo::TemporaryFile copy(target);
    if (copy.error() != 0) dao::throwError(dao::kInvalidPath, {kelvo::widePath(parent)});
    {
        dao::FileScope file(destination);
        dao::LockScope lock(dao::LockAction::read);
        dao::Statement vacuum(connection.db(), "VACUUM INTO ?1");
        vacuum.bindText(1, copy.path().native());
        vacuum.step();
    }
    const int placed = copy.moveIntoPlace(false);
    if (placed == EEXIST) dao::throwError(dao::kDatabaseExists);
    if (placed != 0) dao::throwError(dao::kDiskOrNetwork);
}
