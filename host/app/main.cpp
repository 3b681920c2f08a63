// kelvo-host: the headless CAD host. Loads the module, opens a drawing, runs LISP files
// and expressions, or an interactive command line.

#include <editline/readline.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <new>
#include <sstream>

#include "lisp/text.h"
#include "runtime/drawing_files.h"
#include "runtime/host.h"
#include "utf8.h"
#include "runtime/ui_backend.h"

// Fontconfig keeps its configuration for the life of the process, by design; the leak
// checker of sanitizer builds is told so (pictures with text load it).
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
// The statistics of the suppressions used would otherwise end every such run on standard
// error, which scripts read as the host's own errors.
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }

namespace {

using kelvo::fromUtf8;
using kelvo::host::Host;
using kelvo::toUtf8;

constexpr const char* kUsage =
    "usage: kelvo-host [options] [FILE.lsp ...]\n"
    "  -e, --eval EXPR     evaluate EXPR after the files and print its value (repeatable)\n"
    "  --module PATH       the module to load (default: KelvoBrx15.arx beside kelvo-host)\n"
    "  --no-module         load no module\n"
    "  --input FILE        answers to prompts, one per line (x,y[,z], numbers, keywords,\n"
    "                      an empty line for Enter, *Cancel* for Esc)\n"
    "  --answers FILE      answers to message boxes and dialogs (YES, OK ...), one per line\n"
    "  --ui console|qt     user-interface backend (default console)\n"
    "  --ui-log FILE       append one line per user-interface event to FILE\n"
    "  --prefix \"d1;d2\"    support folders (ACADPREFIX; default: $ACADPREFIX)\n"
    "  --functions         list the external functions of the drawing (CODE NAME) and exit\n"
    "  --drawing FILE      open FILE (.dwg or .dxf) as the first drawing\n"
    "  --save FILE         save the current drawing to FILE (.dxf: ASCII DXF) at the end\n"
    "  --render FILE       a picture of the current drawing (.svg or .png) at the end\n"
    "  -h, --help          this text\n"
    "With no file and no -e, an interactive command line.\n";

struct Options {
    std::vector<std::string> files, exprs;
    std::string module, input, answers, ui = "console", uiLog, prefix;
    std::string drawing, save, render;
    bool noModule = false, listFunctions = false, prefixGiven = false;
};

[[noreturn]] void usageError(const std::string& message) {
    std::fprintf(stderr, "kelvo-host: %s\n%s", message.c_str(), kUsage);
    std::exit(2);
}

Options parseOptions(int argc, char** argv) {
    Options o;
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        auto value = [&]() -> std::string {
            if (i + 1 >= argc) usageError(a + " needs a value");
            return argv[++i];
        };
        if (a == "-e" || a == "--eval") o.exprs.push_back(value());
        else if (a == "--module") o.module = value();
        else if (a == "--no-module") o.noModule = true;
        else if (a == "--input") o.input = value();
        else if (a == "--answers") o.answers = value();
        else if (a == "--ui") o.ui = value();
        else if (a == "--ui-log") o.uiLog = value();
        else if (a == "--prefix") o.prefix = value(), o.prefixGiven = true;
        else if (a == "--functions") o.listFunctions = true;
        else if (a == "--drawing") o.drawing = value();
        else if (a == "--save") o.save = value();
        else if (a == "--render") o.render = value();
        else if (a == "-h" || a == "--help") std::fputs(kUsage, stdout), std::exit(0);
        else if (!a.empty() && a[0] == '-') usageError("unknown option " + a);
        else o.files.push_back(a);
    }
    if (o.ui != "console" && o.ui != "qt") usageError("--ui takes console or qt");
    return o;
}

// nullopt when the file cannot be opened or a read fails part way.
std::optional<std::wstring> readTextFile(const std::string& path) {
    std::string bytes;
    if (!lisp::readFileBytes(path, bytes)) return std::nullopt;
    return fromUtf8(bytes, kelvo::InvalidBytes::Latin1);   // LISP files may be in a code page
}

std::vector<std::wstring> readLines(const std::string& path) {
    auto text = readTextFile(path);
    if (!text) {
        std::fprintf(stderr, "kelvo-host: cannot read %s\n", path.c_str());
        std::exit(2);
    }
    std::vector<std::wstring> lines;
    std::wistringstream ss(*text);
    for (std::wstring line; std::getline(ss, line);) {
        if (!line.empty() && line.back() == L'\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

void printError(const std::wstring& message) {
    Host::instance().freshLine();
    std::fflush(stdout);
    std::fprintf(stderr, "; error: %s\n", toUtf8(message).c_str());
}

// Reports an error the LISP way: the document's *error* when the user defined one, else
// the "; error:" line.
void reportError(lisp::Interp& interp, const lisp::Error& error) {
    try {
        if (interp.runErrorHandler(error)) return;
    } catch (const lisp::Error& nested) {
        printError(nested.message());
        return;
    }
    printError(error.message());
}

// Evaluates forms one by one, each in the drawing that is current when it starts, as a
// script does. Returns false after an error, which ends the run.
bool runForms(const std::vector<lisp::Value>& forms, lisp::Value* last) {
    Host& host = Host::instance();
    for (const lisp::Value& form : forms) {
        lisp::Interp* interp = nullptr;
        try {
            interp = &host.interp();
            lisp::Value v = interp->eval(form);
            if (last) *last = v;
        } catch (const lisp::ExitWithValue& e) {
            if (last) *last = e.value();
        } catch (const lisp::Error& e) {
            if (interp) reportError(*interp, e);
            else printError(e.message());
            host.collectClosed();
            return false;
        }
        host.collectClosed();
    }
    return true;
}

bool runSource(const std::wstring& source, lisp::Value* last) {
    std::vector<lisp::Value> forms;
    try {
        forms = lisp::Interp::readForms(source);
    } catch (const lisp::Error& e) {
        printError(e.message());
        return false;
    }
    return runForms(forms, last);
}

void echo(const lisp::Value& v) {
    if (lisp::Interp::isSilent(v)) return;
    Host::instance().freshLine();
    Host::instance().write(lisp::Interp::prin1String(v) + L"\n");
}

bool commandLine() {
    bool terminal = isatty(STDIN_FILENO);
    bool ok = true;
    std::wstring pending;
    for (;;) {
        const char* prompt = pending.empty() ? "Command: " : "";
        std::string line;
        if (terminal) {
            char* raw = readline(prompt);
            if (!raw) break;
            line = raw;
            std::free(raw);
            if (!line.empty()) add_history(line.c_str());
        } else {
            Host::instance().write(fromUtf8(prompt));
            if (!std::getline(std::cin, line)) break;
            Host::instance().write(fromUtf8(line) + L"\n");   // a transcript shows the input
        }
        pending += fromUtf8(line) + L"\n";
        if (!lisp::Interp::formsComplete(pending)) continue;
        lisp::Value last;
        if (runSource(pending, &last)) echo(last);
        else ok = false;
        pending.clear();
    }
    return ok;
}

std::filesystem::path executableFolder() {
    std::error_code ec;
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::current_path() : exe.parent_path();
}

void configureHost(const Options& o) {
    Host& host = Host::instance();
    host.setModuleFolder(executableFolder());
    if (!o.input.empty()) host.setInputLines(readLines(o.input));
    std::deque<std::wstring> answers;
    if (!o.answers.empty())
        for (auto& l : readLines(o.answers)) answers.push_back(l);
    host.setUi(kelvo::host::makeConsoleUi(std::move(answers), o.uiLog));
    const char* env = std::getenv("ACADPREFIX");
    std::string prefix = o.prefixGiven ? o.prefix : (env ? env : "");
    host.defineVar(L"ACADPREFIX", lisp::Value::string(fromUtf8(prefix)));
}

// The first drawing: FILE of --drawing, else a new one. False (after the message) when
// the file cannot be opened.
bool openFirstDrawing(const Options& o) {
    if (o.drawing.empty()) {
        Host::instance().newDocument();
        return true;
    }
    try {
        kelvo::host::openDrawingDocument(o.drawing);
        return true;
    } catch (const kelvo::host::DrawingFileError& e) {
        printError(fromUtf8(e.what()));
        return false;
    }
}

// --save and --render, after the files and expressions ran without error.
bool finishDrawing(const Options& o) {
    try {
        if (!o.save.empty()) kelvo::host::saveCurrentDrawing(o.save);
        if (!o.render.empty()) kelvo::host::renderCurrentDrawing(o.render);
        return true;
    } catch (const kelvo::host::DrawingFileError& e) {
        printError(fromUtf8(e.what()));
        return false;
    }
}

int run(int argc, char** argv) {
    Options o = parseOptions(argc, argv);
    if (o.ui == "qt") usageError("the qt backend is not available in this build; use --ui console");
    configureHost(o);
    Host& host = Host::instance();
    bool ok = true;
    if (!o.noModule) {
        std::wstring error;
        std::string module = o.module.empty() ? "KelvoBrx15.arx" : o.module;
        if (!host.loadModule(std::filesystem::path(module), &error)) {
            std::fflush(stdout);
            std::fprintf(stderr, "kelvo-host: %s\n", toUtf8(error).c_str());
            ok = false;
        }
    }
    if (!openFirstDrawing(o)) {
        host.shutdown();
        return 1;
    }
    if (o.listFunctions) {
        host.freshLine();
        for (auto& [code, name] : host.definedFunctions())
            host.write(std::to_wstring(code) + L" " + name + L"\n");
        host.shutdown();
        return ok ? 0 : 1;
    }
    bool running = true;
    for (auto& file : o.files) {
        auto source = readTextFile(file);
        if (!source) {
            printError(L"LOAD failed: " + fromUtf8(file));
            running = ok = false;
            break;
        }
        if (!runSource(*source, nullptr)) {
            running = ok = false;
            break;
        }
    }
    for (auto& expr : o.exprs) {
        if (!running) break;
        lisp::Value last;
        if (runSource(fromUtf8(expr), &last)) echo(last);
        else running = ok = false;
    }
    if (o.files.empty() && o.exprs.empty()) ok = commandLine() && ok;
    if (running) ok = finishDrawing(o) && ok;
    host.shutdown();
    return ok ? 0 : 1;
}

}  // namespace

// What no handler below caught (memory running out while the host starts or stops, a
// module's failure outside any LISP call) ends the run with a message and status 1,
// never an abort.
int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        std::fflush(stdout);
        std::fprintf(stderr, "kelvo-host: out of memory\n");
    } catch (const std::exception& e) {
        std::fflush(stdout);
        std::fprintf(stderr, "kelvo-host: %s\n", e.what());
    }
    return 1;
}
