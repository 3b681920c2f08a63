// The file system: vl-file-size, -delete, -rename, -copy, -directory-p, -systime,
// vl-directory-files and vl-mkdir. Failures answer nil, as these functions do, rather
// than raising an error; only wrong argument types are errors.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <cwctype>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "args.h"
#include "library.h"
#include "text.h"

namespace lisp {

namespace fs = std::filesystem;

namespace {

fs::path pathOf(const std::wstring& name) {
    return kelvo::utf8Path(name);
}

bool isDirectory(const fs::path& p) {
    std::error_code ec;
    return fs::is_directory(p, ec);
}

bool present(const fs::path& p) {
    std::error_code ec;
    return fs::exists(p, ec);
}

// A file with contents of its own: not a folder, a device, a pipe or a socket, whose
// reading may never end.
bool isRegularFile(const fs::path& p) {
    std::error_code ec;
    return fs::is_regular_file(p, ec);
}

Value fnFileSize(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    fs::path p = pathOf(a.string(0));
    if (!present(p)) return {};
    if (isDirectory(p)) return Value::integer(0);
    std::error_code ec;
    auto size = fs::file_size(p, ec);
    if (ec) return {};
    return Value::integer(static_cast<std::int32_t>(size));
}

Value fnFileDelete(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    fs::path p = pathOf(a.string(0));
    if (isDirectory(p)) return {};
    std::error_code ec;
    return boolValue(fs::remove(p, ec));
}

// Refuses to replace an existing file.
Value fnFileRename(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    fs::path from = pathOf(a.string(0));
    fs::path to = pathOf(a.string(1));
    if (!present(from) || present(to)) return {};
    std::error_code ec;
    fs::rename(from, to, ec);
    return boolValue(!ec);
}

// (vl-file-copy source destination [append]): the number of bytes copied. An existing
// destination is appended to when `append` is non-nil, and otherwise left alone (nil).
Value fnFileCopy(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 3);
    fs::path from = pathOf(a.string(0));
    fs::path to = pathOf(a.string(1));
    bool append = a.has(2) && !a[2].isNil();
    if (!isRegularFile(from) || (present(to) && (!append || !isRegularFile(to)))) return {};
    std::error_code ec;
    if (fs::equivalent(from, to, ec)) return {};
    std::ifstream in(from, std::ios::binary);
    std::ofstream out(to, std::ios::binary | (append ? std::ios::app : std::ios::trunc));
    if (!in || !out) return {};
    std::int64_t copied = 0;
    char buffer[1 << 14];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
        out.write(buffer, in.gcount());
        copied += in.gcount();
    }
    if (!out) return {};
    return Value::integer(static_cast<std::int32_t>(copied));
}

Value fnFileDirectoryp(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return boolValue(isDirectory(pathOf(a.string(0))));
}

// Creates one folder; nil when it exists already or cannot be made.
Value fnMkdir(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    std::error_code ec;
    return boolValue(fs::create_directory(pathOf(a.string(0)), ec));
}

// (year month day-of-week day hour minute second millisecond) of the last change, in
// local time; the day of the week counts from Sunday as 0.
Value fnFileSystime(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    std::error_code ec;
    auto written = fs::last_write_time(pathOf(a.string(0)), ec);
    if (ec) return {};
    auto sys = std::chrono::time_point_cast<std::chrono::system_clock::duration>(
        written - fs::file_time_type::clock::now() + std::chrono::system_clock::now());
    std::time_t t = std::chrono::system_clock::to_time_t(sys);
    std::tm tm{};
    if (!localtime_r(&t, &tm)) return {};
    auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(sys.time_since_epoch()).count() % 1000;
    return Value::list({Value::integer(tm.tm_year + 1900), Value::integer(tm.tm_mon + 1),
                        Value::integer(tm.tm_wday), Value::integer(tm.tm_mday),
                        Value::integer(tm.tm_hour), Value::integer(tm.tm_min),
                        Value::integer(tm.tm_sec), Value::integer(static_cast<std::int32_t>(ms))});
}

// File-name wildcards: * (any run) and ? (one character), ignoring case. As with
// "*.*", a pattern ending in ".*" also takes names without an extension.
bool nameMatches(std::wstring_view name, std::wstring_view pattern) {
    std::size_t n = 0, p = 0, starP = std::wstring_view::npos, starN = 0;
    auto same = [](wchar_t x, wchar_t y) { return std::towlower(x) == std::towlower(y); };
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == L'?' || same(pattern[p], name[n]))) {
            ++n, ++p;
        } else if (p < pattern.size() && pattern[p] == L'*') {
            starP = p++, starN = n;
        } else if (starP != std::wstring_view::npos) {
            p = starP + 1, n = ++starN;
        } else {
            break;
        }
    }
    while (p < pattern.size() && pattern[p] == L'*') ++p;
    if (n == name.size() && p == pattern.size()) return true;
    if (pattern.size() >= 2 && pattern.substr(pattern.size() - 2) == L".*" &&
        name.find(L'.') == std::wstring_view::npos)
        return nameMatches(name, pattern.substr(0, pattern.size() - 2));
    return false;
}

// (vl-directory-files [directory pattern which]): the names in a folder matching the
// pattern, sorted; `which` -1 gives folders only (with "." and ".."), 1 files only,
// 0 or nil both. nil when the folder does not exist or nothing matches.
Value fnDirectoryFiles(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 3);
    auto given = [&](std::size_t i) { return a.has(i) && !a[i].isNil(); };
    fs::path dir = given(0) ? pathOf(a.string(0)) : fs::path(".");
    std::wstring pattern = given(1) ? a.string(1) : std::wstring(L"*.*");
    std::int32_t which = given(2) ? a.integer(2) : 0;
    if (which < -1 || which > 1) throw Error(L"bad argument value: " + std::to_wstring(which));
    if (!isDirectory(dir)) return {};
    bool wantDirs = which <= 0, wantFiles = which >= 0;

    std::vector<std::wstring> names;
    if (wantDirs)
        for (const wchar_t* dot : {L".", L".."})
            if (nameMatches(dot, pattern)) names.emplace_back(dot);
    std::error_code ec;
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
        bool folder = it->is_directory(ec);
        if (folder ? !wantDirs : !wantFiles) continue;
        std::wstring name = kelvo::widePath(it->path().filename());
        if (nameMatches(name, pattern)) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    std::vector<Value> out;
    for (auto& n : names) out.push_back(Value::string(std::move(n)));
    return Value::list(out);
}

const Builtin kVlFileLib[] = {
    {L"vl-file-size", fnFileSize},
    {L"vl-file-delete", fnFileDelete},
    {L"vl-file-rename", fnFileRename},
    {L"vl-file-copy", fnFileCopy},
    {L"vl-file-directory-p", fnFileDirectoryp},
    {L"vl-file-systime", fnFileSystime},
    {L"vl-directory-files", fnDirectoryFiles},
    {L"vl-mkdir", fnMkdir},
};

}  // namespace

void openVlFileLib(Interp& in) { openLibrary(in, kVlFileLib); }

}  // namespace lisp
