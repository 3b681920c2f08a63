// LISP functions that the host itself provides in every document: variables, modules,
// and the host:* functions that open, close and switch drawings from a script.

#include <cstdlib>

#include "lisp/args.h"
#include "runtime/drawing_files.h"
#include "runtime/host_impl.h"
#include "utf8.h"

namespace kelvo::host {
namespace {

using lisp::Args;
using lisp::Interp;
using lisp::Type;
using lisp::Value;
using Values = std::vector<Value>;

Value getvarFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    auto v = Host::instance().getVar(args.string(0));
    return v ? *v : Value();
}

Value setvarFn(Interp&, Values& values) {
    Args args(values, 2, 2);
    const std::wstring& name = args.string(0);
    if (!Host::instance().setVar(name, args[1]))
        throw lisp::Error(L"variable setting rejected: " + Interp::prin1String(args[0]) + L" " +
                          Interp::prin1String(args[1]));
    return args[1];
}

// (arxload file [onfailure]) and (arxunload file [onfailure]): the file name on success;
// else onfailure when given, else an error after the reason is printed.
template <typename Operation>
Value moduleOperation(Values& values, Operation operation, const wchar_t* failure) {
    Args args(values, 1, 2);
    std::wstring error;
    if (operation(Host::instance(), args.string(0), &error)) return args[0];
    if (args.has(1)) return args[1];
    Host::instance().write(L"\n" + error + L"\n");
    throw lisp::Error(failure);
}

Value arxloadFn(Interp&, Values& values) {
    auto load = [](Host& host, const std::wstring& file, std::wstring* error) {
        return host.loadModule(utf8Path(file), error);
    };
    return moduleOperation(values, load, L"ARXLOAD failed");
}

Value arxunloadFn(Interp&, Values& values) {
    auto unload = [](Host& host, const std::wstring& file, std::wstring* error) {
        return host.unloadModule(file, error);
    };
    return moduleOperation(values, unload, L"ARXUNLOAD failed");
}

Value arxFn(Interp&, Values& values) {
    Args args(values, 0, 0);
    std::vector<Value> names;
    for (auto& n : Host::instance().loadedModules())
        names.push_back(Value::string(widePath(utf8Path(n).filename())));
    return Value::list(names);
}

// (alert text): a message box with an OK button, on the host's user interface.
Value alertFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    Host::instance().ui().messageBox(args.string(0), L"kelvo-host", 0);
    return Value();
}

Value hostNewFn(Interp&, Values& values) {
    Args args(values, 0, 0);
    return Value::integer(Host::instance().newDocument());
}

Value hostCloseFn(Interp&, Values& values) {
    Args args(values, 0, 1);
    Host& host = Host::instance();
    int index = args.has(0) ? args.integer(0) : host.currentIndex();
    return lisp::boolValue(host.closeDocument(index));
}

Value hostActivateFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    return lisp::boolValue(Host::instance().activateDocument(args.integer(0)));
}

// (host:documents): the open drawings' file names, in order; the current one is
// (host:current).
Value hostDocumentsFn(Interp&, Values& values) {
    Args args(values, 0, 0);
    std::vector<Value> names;
    for (auto& doc : Host::instance().impl().documents) names.push_back(Value::string(doc->fileName()));
    return Value::list(names);
}

Value hostCurrentFn(Interp&, Values& values) {
    Args args(values, 0, 0);
    int i = Host::instance().currentIndex();
    return i < 0 ? Value() : Value::integer(i);
}

constexpr lisp::Builtin kHostFunctions[] = {
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
        if (!dir.empty()) folders.push_back(utf8Path(dir));
        rest = end == std::wstring_view::npos ? std::wstring_view() : rest.substr(end + 1);
    }
    return folders;
}

std::optional<std::filesystem::path> findSupportFile(std::wstring_view name) {
    const std::filesystem::path file = utf8Path(name);
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
    lisp::openLibrary(interp, kHostFunctions);
    defineDrawingFileFunctions(interp);
}

lisp::InterpIO makeInterpIO() {
    lisp::InterpIO io;
    io.write = [](std::wstring_view text) { Host::instance().write(text); };
    io.readLine = [](std::wstring_view prompt) { return Host::instance().readInputLine(prompt); };
    io.findFile = findSupportFile;
    io.getVar = [](std::wstring_view name) { return Host::instance().getVar(name); };
    io.setVar = [](std::wstring_view name, Value value) {
        Host::instance().defineVar(name, std::move(value));
    };
    return io;
}

}  // namespace kelvo::host
