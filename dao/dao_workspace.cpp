// Compaction: a compacted copy of a database file.
#include <filesystem>

#include "dao_connection.h"
#include "dao_database.h"
#include "dao_errors.h"
#include "sqlite_errors.h"

void CDaoWorkspace::CompactDatabase(const wchar_t* src, const wchar_t* dst, const wchar_t*, int) {
    const std::wstring source = src ? src : L"";
    const std::wstring destination = dst ? dst : L"";
    std::error_code ec;
    if (std::filesystem::exists(std::filesystem::path(destination), ec))
        dao::throwError(dao::kDatabaseExists);
    dao::Connection connection(source, dao::Connection::Mode::open, false, true);
    const std::filesystem::path parent = std::filesystem::path(destination).parent_path();
    if (!parent.empty() && !std::filesystem::is_directory(parent, ec))
        dao::throwError(dao::kInvalidPath, {parent.wstring()});
    dao::FileScope file(destination);
    dao::LockScope lock(dao::LockAction::read);
    dao::Statement vacuum(connection.db(), "VACUUM INTO ?1");
    vacuum.bindText(1, dao::utf8(destination));
    vacuum.step();
}
