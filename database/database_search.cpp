// The search for a database file along ACADPREFIX.
#include "database/database_search.h"

#include <filesystem>
#include <system_error>

#include "adslib.h"
#include "utf8.h"

namespace kelvo::database {
namespace {

bool fileExists(const std::wstring& path) {
    std::error_code error;
    return !path.empty() && std::filesystem::exists(toUtf8(path), error);
}

std::wstring supportFolders() {
    resbuf value{};
    if (acedGetVar(L"ACADPREFIX", &value) != RTNORM) return {};
    std::wstring folders;
    if (value.restype == RTSTR && value.resval.rstring != nullptr) {
        folders = value.resval.rstring;
        acutDelString(value.resval.rstring);
    }
    return folders;
}

std::wstring joinPath(const std::wstring& folder, const std::wstring& path) {
    const wchar_t last = folder.back();
    return last == L'/' || last == L'\\' ? folder + path : folder + L'/' + path;
}

}  // namespace

std::wstring findDatabaseFile(const std::wstring& path) {
    if (fileExists(path)) return path;
    const std::wstring folders = supportFolders();
    std::size_t start = 0;
    while (start <= folders.size()) {
        std::size_t end = folders.find(L';', start);
        if (end == std::wstring::npos) end = folders.size();
        const std::wstring folder = folders.substr(start, end - start);
        if (!folder.empty()) {
            std::wstring candidate = joinPath(folder, path);
            if (fileExists(candidate)) return candidate;
        }
        start = end + 1;
    }
    return path;
}

}  // namespace kelvo::database
