// The functions that reach past one document's names: the blackboard shared by all
// documents (vl-bb-set, vl-bb-ref), the document's own names (vl-doc-set, vl-doc-ref,
// vl-doc-export, vl-doc-import), values and files given to every document
// (vl-propagate, vl-load-all), and leaving with a value (vl-exit-with-value).
// Every program here runs in its document's namespace (there are no separately
// compiled applications), so vl-doc-* work on the current document's names.
#include <map>
#include <set>

#include "args.h"
#include "interp_impl.h"
#include "library.h"

namespace lisp {

namespace {

// What all interpreters of the process share. Values stay until the process ends.
struct SharedNames {
    std::set<Interp*> interps;                   // every live interpreter
    std::map<std::wstring, Value> blackboard;    // symbol name -> value
    std::map<std::wstring, Value> propagated;    // given to interpreters made later
    std::vector<std::filesystem::path> loadAll;  // loaded by interpreters made later
};

// Kept for the life of the process: interpreters owned by objects with static storage
// (the host's documents) close their namespace after function-local statics are gone.
SharedNames& shared() {
    static SharedNames* names = new SharedNames;
    return *names;
}

Value fnBbSet(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    const Value& sym = a.symbol(0);
    if (a[1].isNil())
        shared().blackboard.erase(sym.symbolName());
    else
        shared().blackboard[sym.symbolName()] = a[1];
    return a[1];
}

Value fnBbRef(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    auto it = shared().blackboard.find(a.symbol(0).symbolName());
    return it == shared().blackboard.end() ? Value() : it->second;
}

Value fnDocSet(Interp& in, std::vector<Value>& args) {
    Args a(args, 2, 2);
    in.impl().assign(a.symbol(0), a[1]);
    return a[1];
}

Value fnDocRef(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return in.impl().lookup(a.symbol(0));
}

// (vl-doc-export 'name): a function of the document is already the document's.
Value fnDocExport(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    a.symbol(0);
    return {};
}

// (vl-doc-import application [function ...]): the functions are the document's own; each
// one named must be defined.
Value fnDocImport(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, kAnyCount);
    for (std::size_t i = 1; i < a.size(); ++i) {
        const Value& sym = a.symbol(i);
        Value fn = in.impl().lookup(sym);
        if (fn.type() != Type::Subr && fn.type() != Type::Usubr)
            throw Error(L"vl-doc-import: no function " + sym.symbolName() + L" to import");
    }
    return {};
}

// (vl-propagate 'sym): the symbol's value in every open document and every one opened
// later.
Value fnPropagate(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    const Value& sym = a.symbol(0);
    Value v = in.impl().lookup(sym);
    for (Interp* other : shared().interps) other->impl().assign(sym, v);
    shared().propagated[sym.symbolName()] = v;
    return v;
}

// (vl-load-all file): loads the file in every open document and every one opened later.
Value fnLoadAll(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    std::filesystem::path file(a.string(0));
    if (in.io().findFile)
        if (auto found = in.io().findFile(a.string(0))) file = *found;
    if (!std::filesystem::exists(file)) throw Error(L"LOAD failed: \"" + a.string(0) + L"\"");
    std::vector<Interp*> all(shared().interps.begin(), shared().interps.end());
    for (Interp* each : all) each->loadFile(file);
    shared().loadAll.push_back(file);
    return {};
}

Value fnExitWithValue(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    throw ExitWithValue(a[0]);
}

const Builtin kNamespaceLib[] = {
    {L"vl-bb-set", fnBbSet},
    {L"vl-bb-ref", fnBbRef},
    {L"vl-doc-set", fnDocSet},
    {L"vl-doc-ref", fnDocRef},
    {L"vl-doc-export", fnDocExport},
    {L"vl-doc-import", fnDocImport},
    {L"vl-propagate", fnPropagate},
    {L"vl-load-all", fnLoadAll},
    {L"vl-exit-with-value", fnExitWithValue},
};

}  // namespace

void openNamespaceLib(Interp& in) {
    openLibrary(in, kNamespaceLib);
    for (const auto& [name, value] : shared().propagated)
        in.impl().assign(Value::symbol(name), value);
    shared().interps.insert(&in);
    for (const auto& file : shared().loadAll) {
        try {
            in.loadFile(file);
        } catch (const Error&) {
            // a file that fails in a new document leaves the rest of the document usable
        }
    }
}

void closeNamespaceLib(Interp& in) {
    shared().interps.erase(&in);
}

}  // namespace lisp
