// The host's internal state: documents, modules, external calls in progress.
// Private to host/runtime.
#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "acdocman.h"
#include "dbmain.h"
#include "runtime/host.h"
#include "runtime/ui_backend.h"
#include "rxobject.h"

namespace kelvo::host {

// A module loaded with dlopen. Its address is the "packet" its entry point receives.
struct LoadedModule {
    using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);
    std::wstring name;   // as given to arxload
    std::filesystem::path path;
    void* handle = nullptr;
    EntryPoint entry = nullptr;
    int id = 0;
    bool unlocked = false;
    bool mdiAware = false;
};

// An external function of one document: its LISP name and the callback registered for
// its code by the module that defined it.
struct ExternalEntry {
    std::wstring name;
    AcedFunction callback = nullptr;
};

class Document : public AcApDocument {
public:
    Document(int id, std::wstring fileName);
    ~Document() override;
    const ACHAR* fileName() const override { return fileName_.c_str(); }
    void setFileName(std::wstring name) { fileName_ = std::move(name); }
    AcDbDatabase* database() const override { return db_.get(); }
    // A drawing read from a file takes the place of the new one (before modules see it).
    void setDatabase(std::unique_ptr<AcDbDatabase> db);

    int id() const { return id_; }
    lisp::Interp& interp() { return *interp_; }
    // (module id, code) -> entry
    std::map<std::pair<int, int>, ExternalEntry>& functions() { return functions_; }
    // The drawing's own system variables that its database does not keep (upper-case
    // names; a variable not here has its default).
    std::map<std::wstring, lisp::Value>& variables() { return variables_; }

private:
    int id_;
    std::wstring fileName_;
    std::unique_ptr<AcDbDatabase> db_;
    std::unique_ptr<lisp::Interp> interp_;
    std::map<std::pair<int, int>, ExternalEntry> functions_;
    std::map<std::wstring, lisp::Value> variables_;
};

struct RawCapture;

// One external function call in progress. A raw call (bench_call.h) gives its arguments
// as a value list and keeps the value list returned.
struct CallFrame {
    std::vector<lisp::Value> args;
    lisp::Value result;
    int code = 0;
    const resbuf* rawArgs = nullptr;
    RawCapture* raw = nullptr;
};

struct Host::Impl {
    std::function<void(std::wstring_view)> output;
    bool atLineStart = true;
    std::optional<std::deque<std::wstring>> input;   // scripted answers to prompts

    std::vector<std::unique_ptr<Document>> documents;
    std::vector<std::unique_ptr<Document>> closed;   // freed at the next safe point
    int current = -1;
    int nextDocumentId = 1;
    int drawingCounter = 0;

    std::vector<std::unique_ptr<LoadedModule>> modules;
    LoadedModule* activeModule = nullptr;   // whose entry point or callback is running
    int nextModuleId = 1;
    std::filesystem::path moduleFolder;

    std::vector<CallFrame*> calls;
    std::unique_ptr<UiBackend> ui;
    std::map<std::wstring, lisp::Value> vars;  // session variables set, upper-case names
    std::chrono::steady_clock::time_point started = std::chrono::steady_clock::now();

    Document* currentDocument() const;
    Document* findDocument(int id) const;
    void sendToModules(AcRx::AppMsgCode msg);
    AcRx::AppRetCode send(LoadedModule& module, AcRx::AppMsgCode msg);
    lisp::Value callExternal(int documentId, int moduleId, int code, const std::wstring& name,
                             std::vector<lisp::Value>& args);
};

// Host functions of LISP (getvar, arxload, host:new ...), defined in every interpreter.
void defineHostFunctions(lisp::Interp& interp);
// The entity, table and selection-set functions (entget, tblsearch, ssget ...).
void defineEntityFunctions(lisp::Interp& interp);
// command and vl-cmdf (host/runtime/commands).
void defineCommandFunctions(lisp::Interp& interp);
// The dictionary functions (namedobjdict, dictsearch, dictnext, dictadd ...).
void defineDictionaryFunctions(lisp::Interp& interp);
lisp::InterpIO makeInterpIO();

}  // namespace kelvo::host
