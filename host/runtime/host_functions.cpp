// LISP functions that the host itself provides in every document: variables, modules,
// and the host:* functions that open, close and switch drawings from a script.

#include <cstdlib>

#include "runtime/host_impl.h"
#include "utf8.h"

namespace kelvo::host {
namespace {

using lisp::Interp;
using lisp::Type;
using lisp::Value;
using Args = std::vector<Value>;

void checkCount(const Args& args, size_t least, size_t most) {
    if (args.size() < least) throw lisp::Error(L"too few arguments");
    if (args.size() > most) throw lisp::Error(L"too many arguments");
}

const std::wstring& stringArg(const Args& args, size_t i) {
    if (args[i].type() != Type::Str)
        throw lisp::Error(L"bad argument type: stringp " + Interp::prin1String(args[i]));
    return args[i].asString();
}

int intArg(const Args& args, size_t i) {
    if (args[i].type() != Type::Int)
        throw lisp::Error(L"bad argument type: fixnump " + Interp::prin1String(args[i]));
    return args[i].asInt();
}

Value truth(bool b) { return b ? Value::t() : Value(); }

Value getvarFn(Interp&, Args& args) {
    checkCount(args, 1, 1);
    auto v = Host::instance().getVar(stringArg(args, 0));
    return v ? *v : Value();
}

Value setvarFn(Interp&, Args& args) {
    checkCount(args, 2, 2);
    const std::wstring& name = stringArg(args, 0);
    if (!Host::instance().getVar(name)) throw lisp::Error(L"setvar rejected: unknown variable " + name);
    if (!Host::instance().setVar(name, args[1]))
        throw lisp::Error(L"setvar rejected: " + name + L" cannot be set to " +
                          Interp::prin1String(args[1]));
    return args[1];
}

// (arxload file [onfailure]): the file name on success; else onfailure when given,
// else an error after the reason is printed.
Value arxloadFn(Interp&, Args& args) {
    checkCount(args, 1, 2);
    std::wstring error;
    if (Host::instance().loadModule(stringArg(args, 0), &error)) return args[0];
    if (args.size() == 2) return args[1];
    Host::instance().write(L"\n" + error + L"\n");
    throw lisp::Error(L"ARXLOAD failed");
}

Value arxunloadFn(Interp&, Args& args) {
    checkCount(args, 1, 2);
    std::wstring error;
    if (Host::instance().unloadModule(stringArg(args, 0), &error)) return args[0];
    if (args.size() == 2) return args[1];
    Host::instance().write(L"\n" + error + L"\n");
    throw lisp::Error(L"ARXUNLOAD failed");
}

Value arxFn(Interp&, Args& args) {
    checkCount(args, 0, 0);
    std::vector<Value> names;
    for (auto& n : Host::instance().loadedModules())
        names.push_back(Value::string(std::filesystem::path(n).filename().wstring()));
    return Value::list(names);
}

// (alert text): a message box with an OK button, on the host's user interface.
Value alertFn(Interp&, Args& args) {
    checkCount(args, 1, 1);
    Host::instance().ui().messageBox(stringArg(args, 0), L"kelvo-host", 0);
    return Value();
}

Value hostNewFn(Interp&, Args& args) {
    checkCount(args, 0, 0);
    return Value::integer(Host::instance().newDocument());
}

Value hostCloseFn(Interp&, Args& args) {
    checkCount(args, 0, 1);
    Host& host = Host::instance();
    int index = args.empty() ? host.currentIndex() : intArg(args, 0);
    return truth(host.closeDocument(index));
}

Value hostActivateFn(Interp&, Args& args) {
    checkCount(args, 1, 1);
    return truth(Host::instance().activateDocument(intArg(args, 0)));
}

// (host:documents): the open drawings' file names, in order; the current one is
// (host:current).
Value hostDocumentsFn(Interp&, Args& args) {
    checkCount(args, 0, 0);
    std::vector<Value> names;
    for (auto& doc : Host::instance().impl().documents) names.push_back(Value::string(doc->fileName()));
    return Value::list(names);
}

Value hostCurrentFn(Interp&, Args& args) {
    checkCount(args, 0, 0);
    int i = Host::instance().currentIndex();
    return i < 0 ? Value() : Value::integer(i);
}

struct HostFunction {
    const wchar_t* name;
    Value (*fn)(Interp&, Args&);
};

constexpr HostFunction kHostFunctions[] = {
    {L"getvar", getvarFn},
    {L"setvar", setvarFn},
    {L"arxload", arxloadFn},
    {L"arxunload", arxunloadFn},
    {L"arx", arxFn},
    {L"alert", alertFn},
    {L"host:new", hostNewFn},
    {L"host:close", hostCloseFn},
    {L"host:activate", hostActivateFn},
    {L"host:documents", hostDocumentsFn},
    {L"host:current", hostCurrentFn},
};

std::vector<std::filesystem::path> supportFolders() {
    std::vector<std::filesystem::path> folders{std::filesystem::current_path()};
    auto prefix = Host::instance().getVar(L"ACADPREFIX");
    if (!prefix || prefix->type() != Type::Str) return folders;
    std::wstring_view rest = prefix->asString();
    while (!rest.empty()) {
        size_t end = rest.find(L';');
        std::wstring_view dir = rest.substr(0, end);
        if (!dir.empty()) folders.emplace_back(dir);
        rest = end == std::wstring_view::npos ? std::wstring_view() : rest.substr(end + 1);
    }
    return folders;
}

std::optional<std::filesystem::path> findSupportFile(std::wstring_view name) {
    std::filesystem::path file(name);
    std::error_code ec;
    if (file.is_absolute()) {
        if (std::filesystem::exists(file, ec)) return file;
        return std::nullopt;
    }
    for (auto& folder : supportFolders())
        if (std::filesystem::exists(folder / file, ec)) return folder / file;
    return std::nullopt;
}

}  // namespace

void defineHostFunctions(Interp& interp) {
    for (const HostFunction& f : kHostFunctions) interp.defineSubr(f.name, f.fn);
}

lisp::InterpIO makeInterpIO() {
    lisp::InterpIO io;
    io.write = [](std::wstring_view text) { Host::instance().write(text); };
    io.readLine = [](std::wstring_view prompt) { return Host::instance().readInputLine(prompt); };
    io.findFile = findSupportFile;
    return io;
}

}  // namespace kelvo::host
