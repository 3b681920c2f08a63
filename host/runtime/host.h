// The headless host: its documents, their interpreters, the loaded modules and the
// user-interface backend. One Host per process, reached with Host::instance().
// This header is for the host program and tests; modules see only host/include/.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adslib.h"
#include "lisp/interp.h"

namespace kelvo::host {

class UiBackend;

class KELVO_HOST_API Host {
public:
    static Host& instance();

    // --- output and input ---------------------------------------------------------
    // Where the command line goes (acutPrintf, princ ...). Default: standard output.
    void setOutput(std::function<void(std::wstring_view)> sink);
    void write(std::wstring_view text);
    // Ends the current command-line line if something is on it, so that what the host
    // prints next starts a line of its own.
    void freshLine();
    // Answers to prompts, one per line; without a source, prompts read the terminal.
    void setInputLines(std::vector<std::wstring> lines);
    std::optional<std::wstring> readInputLine(std::wstring_view prompt);

    // --- documents ---------------------------------------------------------------
    // Opens a new drawing and makes it current; every loaded module gets kLoadDwgMsg.
    // Returns its index.
    int newDocument();
    // Closes document `index`: it is made current, modules get kUnloadDwgMsg, then it is
    // removed and the next one becomes current. False for a bad index.
    bool closeDocument(int index);
    bool activateDocument(int index);
    int documentCount() const;
    int currentIndex() const;
    lisp::Interp& interp();   // the current document's interpreter; throws with none open
    // Frees closed documents; called between top-level forms, when none of their LISP
    // code can be running.
    void collectClosed();

    // --- modules -----------------------------------------------------------------
    // Loads a module (dlopen), sends kInitAppMsg and then kLoadDwgMsg for each open
    // document. On failure returns false with the reason in *error.
    bool loadModule(const std::filesystem::path& file, std::wstring* error = nullptr);
    // Sends kUnloadAppMsg and unloads. A locked module is refused unless `force` (the
    // host's exit unloads everything).
    bool unloadModule(std::wstring_view name, std::wstring* error = nullptr, bool force = false);
    std::vector<std::wstring> loadedModules() const;   // file names as given to arxload
    std::filesystem::path moduleFolder() const;         // where bare module names are found
    void setModuleFolder(std::filesystem::path folder);

    // External functions defined in the current document, in code order.
    std::vector<std::pair<int, std::wstring>> definedFunctions() const;

    // --- user interface ----------------------------------------------------------
    UiBackend& ui();
    void setUi(std::unique_ptr<UiBackend> backend);

    // System variables (the table in sysvar_table.tsv, the drawing's header variables),
    // as LISP's getvar sees them; nullopt for a name the host does not have. setVar
    // changes a variable that exists, is not read-only, and takes the value (its type,
    // its range); false otherwise, nothing changed. defineVar is the host's own write:
    // it sets a read-only variable too (ACADPREFIX at start, ERRNO after a call), or
    // creates one the table does not have.
    std::optional<lisp::Value> getVar(std::wstring_view name) const;
    bool setVar(std::wstring_view name, const lisp::Value& value);
    void defineVar(std::wstring_view name, lisp::Value value);

    // Closes every document and unloads every module (the host's exit).
    void shutdown();

    struct Impl;
    Impl& impl() { return *impl_; }

private:
    Host();
    ~Host();
    std::unique_ptr<Impl> impl_;
};

// --- for tests of native functions -------------------------------------------------
struct CallOutcome {
    int rc = 0;               // what the callback returned (RSRSLT, RSERR)
    std::wstring result;      // the result in prin1 form ("nil" when none was set)
    std::wstring printed;     // what was printed on the command line during the call
};
// Runs `callback` as the host runs an external function, with a copy of `args` as the
// argument list.
KELVO_HOST_API CallOutcome runExternalCall(AcedFunction callback, const resbuf* args);

}  // namespace kelvo::host
