// Files: open/close and line or character I/O (UTF-8 on disk), findfile and load.
// Without a file argument, read-line and read-char read the host's input and
// write-line and write-char print through the host.
#include <cwctype>

#include "args.h"
#include "interp_impl.h"
#include "library.h"
#include "text.h"

namespace lisp {

void writeToFile(const Value& file, std::wstring_view text) {
    auto& f = as<FileObj>(file);
    if (!f.file || f.mode == L'r') throw Error(L"bad argument type: output file " + f.name);
    std::string bytes = toUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), f.file.get());
}

namespace {

std::FILE* inputFile(const Value& file) {
    auto& f = as<FileObj>(file);
    if (!f.file || f.mode != L'r') throw Error(L"bad argument type: input file " + f.name);
    return f.file.get();
}

// One UTF-8 character from a file; nullopt at the end.
std::optional<wchar_t> readCodePoint(std::FILE* f) {
    int b = std::fgetc(f);
    if (b == EOF) return std::nullopt;
    int extra = b >= 0xF0 ? 3 : b >= 0xE0 ? 2 : b >= 0xC0 ? 1 : 0;
    std::string bytes(1, static_cast<char>(b));
    for (int i = 0; i < extra; ++i) {
        int c = std::fgetc(f);
        if (c == EOF) break;
        bytes += static_cast<char>(c);
    }
    std::wstring w = fromUtf8(bytes);
    return w.empty() ? std::nullopt : std::optional(w[0]);
}

std::optional<std::wstring> hostLine(Interp& in) {
    return in.io().readLine ? in.io().readLine(L"") : std::nullopt;
}

// ERRNO after a file that cannot be found or opened.
constexpr int kErrnoFileNotFound = 22;

Value fnOpen(Interp& in, std::vector<Value>& args) {
    Args a(args, 2, 2);
    const std::wstring& name = a.string(0);
    std::wstring mode = a.string(1);
    wchar_t m = mode.empty() ? 0 : static_cast<wchar_t>(std::towlower(mode[0]));
    if (m != L'r' && m != L'w' && m != L'a') throw Error(L"bad argument value: open mode \"" + mode + L"\"");
    const char* cmode = m == L'r' ? "rb" : m == L'w' ? "wb" : "ab";
    // Reading a device or a pipe may never end: only a regular file is read.
    std::error_code ec;
    if (m == L'r' && !std::filesystem::is_regular_file(kelvo::utf8Path(name), ec)) {
        in.setErrno(kErrnoFileNotFound);
        return {};
    }
    std::FILE* f = std::fopen(kelvo::utf8Path(name).c_str(), cmode);
    if (!f) {
        in.setErrno(kErrnoFileNotFound);
        return {};
    }
    return Value(std::make_shared<FileObj>(name, f, m));
}

Value fnClose(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    as<FileObj>(a.file(0)).file.reset();
    return {};
}

Value fnReadLine(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 1);
    if (!a.has(0) || a[0].isNil()) {
        auto line = hostLine(in);
        return line ? Value::string(*line) : Value();
    }
    std::FILE* f = inputFile(a.file(0));
    std::wstring line;
    std::optional<wchar_t> c;
    while ((c = readCodePoint(f)) && *c != L'\n') line += *c;
    if (!c && line.empty()) return {};
    if (!line.empty() && line.back() == L'\r') line.pop_back();
    return Value::string(std::move(line));
}

Value fnWriteLine(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    std::wstring text = a.string(0) + L"\n";
    if (a.has(1) && !a[1].isNil()) writeToFile(a.file(1), text);
    else if (in.io().write) in.io().write(text);
    return a[0];
}

Value fnReadChar(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 1);
    if (!a.has(0) || a[0].isNil()) {
        auto line = hostLine(in);
        if (!line) return {};
        return Value::integer(line->empty() ? 10 : static_cast<std::int32_t>((*line)[0]));
    }
    auto c = readCodePoint(inputFile(a.file(0)));
    return c ? Value::integer(static_cast<std::int32_t>(*c)) : Value();
}

Value fnWriteChar(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    std::wstring text(1, static_cast<wchar_t>(a.integer(0)));
    if (a.has(1) && !a[1].isNil()) writeToFile(a.file(1), text);
    else if (in.io().write) in.io().write(text);
    return a[0];
}

std::optional<std::filesystem::path> find(Interp& in, const std::wstring& name) {
    return in.io().findFile ? in.io().findFile(name) : std::nullopt;
}

Value fnFindfile(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    if (a.string(0).empty()) return {};   // not the folder the search starts from
    auto path = find(in, a.string(0));
    in.setErrno(path ? 0 : kErrnoFileNotFound);
    return path ? Value::string(kelvo::widePath(*path)) : Value();
}

Value fnLoad(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 2);
    const std::wstring& name = a.string(0);
    auto path = find(in, name);
    if (!path && kelvo::utf8Path(name).extension().empty()) path = find(in, name + L".lsp");
    if (!path) {
        if (a.has(1)) return a[1];
        throw Error(L"LOAD failed: \"" + name + L"\"");
    }
    return in.loadFile(*path);
}

// (autoload file '("cmd" ...)) and (autoarxload file '("cmd" ...)): defines each C:CMD
// so that its first call loads the file (with `loader`, load or arxload) and then runs
// the C:CMD the file defined.
Value autoDefine(Interp& in, std::vector<Value>& args, const wchar_t* loader) {
    Args a(args, 2, 2);
    std::wstring file = a.string(0);
    for (const Value& command : a.list(1).toVector()) {
        if (command.type() != Type::Str) badArgType(L"stringp", command);
        std::wstring name = Value::symbol(L"C:" + command.asString()).symbolName();
        std::wstring loaderName = loader;
        std::wstring stubName = name + L" (autoload " + file + L")";
        in.defineSubr(
            name, [file, name, loaderName, stubName](Interp& interp, std::vector<Value>& callArgs) {
                interp.apply(Value::symbol(loaderName), {Value::string(file)});
                Value fn = interp.getGlobal(name);
                if (fn.isNil() || (fn.type() == Type::Subr && fn.subrName() == stubName))
                    throw Error(name + L" is not defined by " + file);
                return interp.apply(fn, callArgs);
            });
        Value stub = in.getGlobal(name);
        in.setGlobal(name, Value::subr(stubName, stub.native()));
    }
    return {};
}

Value fnAutoload(Interp& in, std::vector<Value>& args) {
    return autoDefine(in, args, L"load");
}
Value fnAutoarxload(Interp& in, std::vector<Value>& args) {
    return autoDefine(in, args, L"arxload");
}

const Builtin kFileLib[] = {
    {L"autoload", fnAutoload},
    {L"autoarxload", fnAutoarxload},
    {L"findtrustedfile", fnFindfile},
    {L"open", fnOpen},
    {L"close", fnClose},
    {L"read-line", fnReadLine},
    {L"write-line", fnWriteLine},
    {L"read-char", fnReadChar},
    {L"write-char", fnWriteChar},
    {L"findfile", fnFindfile},
    {L"load", fnLoad},
};

}  // namespace

void openFileLib(Interp& in) { openLibrary(in, kFileLib); }

}  // namespace lisp
