// The host's housekeeping functions (gc, mem, alloc, expand, trace, vl-load-com ...), a
// session registry and configuration (vl-registry-*, getcfg, setcfg, setenv), the
// viewport functions of a host without a screen (vports, setview), and the functions
// such a host cannot have: each answers a clear "not available" error.
#include <cstdlib>
#include <map>

#include "args.h"
#include "interp_impl.h"
#include "library.h"
#include "text.h"

namespace lisp {

namespace {

Value fnNil(Interp&, std::vector<Value>&) {
    return {};
}

// (gc): memory is freed as values are released; nothing to collect.
Value fnGc(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 0);
    return {};
}

// (mem): the interpreter's memory in the form the host prints it; nil.
Value fnMem(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 0);
    if (in.io().write)
        in.io().write(L"; symbols: " + std::to_wstring(in.impl().globals.size()) +
                      L"\n; memory is allocated as needed; there are no fixed segments\n");
    return {};
}

// (alloc n) and (expand n): segment sizes of the host's old memory manager; this
// interpreter allocates as needed, so alloc answers the default segment size and
// expand the number of segments asked for.
Value fnAlloc(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    a.integer(0);
    return Value::integer(514);
}

Value fnExpand(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::integer(a.integer(0));
}

// (trace fn ...) and (untrace fn ...): accepted; they answer the last name.
Value fnTrace(Interp&, std::vector<Value>& args) {
    Args a(args, 0, kAnyCount);
    for (std::size_t i = 0; i < a.size(); ++i) a.symbol(i);
    return a.size() ? a[a.size() - 1] : Value();
}

// (vl-load-com): loads nothing. The functions it brings in a host with automation
// objects (vla-, vlax-, vlr-) answer that they are not available here.
Value fnLoadCom(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 0);
    return {};
}

Value fnTrue(Interp&, std::vector<Value>&) {
    return Value::t();
}

// The registry and the configuration of a host without one: kept for the session.
std::map<std::wstring, std::map<std::wstring, std::wstring>>& registry() {
    static std::map<std::wstring, std::map<std::wstring, std::wstring>> keys;
    return keys;
}

std::wstring keyName(const std::wstring& key) {
    std::wstring k;
    for (wchar_t c : key) k += upperChar(c);
    return k;
}

Value fnRegistryRead(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 2);
    auto key = registry().find(keyName(a.string(0)));
    if (key == registry().end()) return {};
    std::wstring name = a.has(1) && !a[1].isNil() ? a.string(1) : L"";
    auto value = key->second.find(keyName(name));
    return value == key->second.end() ? Value() : Value::string(value->second);
}

Value fnRegistryWrite(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 3);
    std::wstring name = a.has(1) && !a[1].isNil() ? a.string(1) : L"";
    std::wstring data =
        a.has(2) ? (a[2].type() == Type::Str ? a[2].asString() : Interp::princString(a[2])) : L"";
    registry()[keyName(a.string(0))][keyName(name)] = data;
    return a.has(2) ? a[2] : Value::string(L"");
}

Value fnRegistryDelete(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 2);
    auto key = registry().find(keyName(a.string(0)));
    if (key == registry().end()) return {};
    if (!a.has(1) || a[1].isNil()) {
        registry().erase(key);
        return Value::t();
    }
    return boolValue(key->second.erase(keyName(a.string(1))) > 0);
}

// (vl-registry-descendents key [value-names]): the subkeys, or with a second argument
// the value names.
Value fnRegistryDescendents(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 2);
    std::wstring key = keyName(a.string(0));
    std::vector<Value> out;
    if (a.has(1) && !a[1].isNil()) {
        auto it = registry().find(key);
        if (it == registry().end()) return {};
        for (const auto& entry : it->second)
            if (!entry.first.empty()) out.push_back(Value::string(entry.first));
        return Value::list(out);
    }
    std::wstring prefix = key + L"\\";
    for (const auto& entry : registry())
        if (entry.first.rfind(prefix, 0) == 0) {
            std::wstring rest = entry.first.substr(prefix.size());
            rest = rest.substr(0, rest.find(L'\\'));
            Value name = Value::string(rest);
            if (out.empty() || out.back().asString() != rest) out.push_back(name);
        }
    return Value::list(out);
}

// (setcfg "AppData/app/section/param" value) and (getcfg name), for the session.
Value fnSetcfg(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    const std::wstring& name = a.string(0);
    if (keyName(name).rfind(L"APPDATA/", 0) != 0) return {};
    registry()[L"CFG"][keyName(name)] = a.string(1);
    return a[1];
}

Value fnGetcfg(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    auto& cfg = registry()[L"CFG"];
    auto it = cfg.find(keyName(a.string(0)));
    return it == cfg.end() ? Value::string(L"") : Value::string(it->second);
}

// (setenv name value): an environment variable of the process.
Value fnSetenv(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    ::setenv(toUtf8(a.string(0)).c_str(), toUtf8(a.string(1)).c_str(), 1);
    return a[1];
}

// (vports): the one viewport of a host without a screen: number, lower left, upper right.
Value fnVports(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 0);
    return Value::list(
        {Value::list({Value::integer(1), Value::list({Value::real(0), Value::real(0)}),
                      Value::list({Value::real(1), Value::real(1)})})});
}

// (setview view [vport]): there is no view to change; nil.
Value fnSetview(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 2);
    a.list(0);
    return {};
}

// (redraw [ename [mode]]): nothing is on a screen; nil.
Value fnRedraw(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 2);
    return {};
}

// (ssgetfirst): a host without a screen has no selection made before a command:
// (nil nil). (sssetfirst gripset [pickset]) answers what it was given.
Value fnSsgetfirst(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 0);
    return Value::list({Value(), Value()});
}

Value fnSssetfirst(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 2);
    return Value::list({a[0], a.has(1) ? a[1] : Value()});
}

[[noreturn]] void notAvailable(const Interp&, const std::wstring& name, const wchar_t* why) {
    throw Error(name + L" is not available: " + why);
}

// The functions a host without a screen, a dialog language or automation cannot have.
struct Missing {
    const wchar_t* name;
    const wchar_t* why;
};

constexpr const wchar_t* kNoDialogs = L"this host has no dialog boxes (the dialog language)";
constexpr const wchar_t* kNoScreen = L"this host has no graphics screen";
constexpr const wchar_t* kNoVba = L"this host has no macro language";
constexpr const wchar_t* kNotBuilt = L"not built yet in this host";

const Missing kMissing[] = {
    {L"load_dialog", kNoDialogs},
    {L"unload_dialog", kNoDialogs},
    {L"new_dialog", kNoDialogs},
    {L"start_dialog", kNoDialogs},
    {L"done_dialog", kNoDialogs},
    {L"term_dialog", kNoDialogs},
    {L"action_tile", kNoDialogs},
    {L"set_tile", kNoDialogs},
    {L"get_tile", kNoDialogs},
    {L"mode_tile", kNoDialogs},
    {L"get_attr", kNoDialogs},
    {L"client_data_tile", kNoDialogs},
    {L"start_list", kNoDialogs},
    {L"add_list", kNoDialogs},
    {L"end_list", kNoDialogs},
    {L"start_image", kNoDialogs},
    {L"fill_image", kNoDialogs},
    {L"vector_image", kNoDialogs},
    {L"slide_image", kNoDialogs},
    {L"end_image", kNoDialogs},
    {L"dimx_tile", kNoDialogs},
    {L"dimy_tile", kNoDialogs},
    {L"acad_colordlg", kNoDialogs},
    {L"acad_truecolordlg", kNoDialogs},
    {L"acad_helpdlg", kNoDialogs},
    {L"getfiled", kNoDialogs},
    {L"initdia", kNoDialogs},
    {L"help", kNoDialogs},
    {L"setfunhelp", kNoDialogs},
    {L"grdraw", kNoScreen},
    {L"grvecs", kNoScreen},
    {L"grtext", kNoScreen},
    {L"grread", kNoScreen},
    {L"grclear", kNoScreen},
    {L"graphscr", kNoScreen},
    {L"textscr", kNoScreen},
    {L"textpage", kNoScreen},
    {L"menucmd", kNoScreen},
    {L"menugroup", kNoScreen},
    {L"tablet", kNoScreen},
    {L"textbox", L"this host has no fonts to measure text with"},
    {L"startapp", L"this host starts no other programs"},
    {L"vl-vbaload", kNoVba},
    {L"vl-vbarun", kNoVba},
    {L"vl-get-resource", L"this host loads no compiled applications"},
    {L"vl-unload-vlx", L"this host loads no compiled applications"},
    {L"vl-arx-import", L"this host loads no compiled applications"},
    {L"getpropertyvalue", L"this host has no automation objects"},
    {L"setpropertyvalue", L"this host has no automation objects"},
    {L"ispropertyreadonly", L"this host has no automation objects"},
    {L"dumpallproperties", L"this host has no automation objects"},
    {L"layoutlist", kNotBuilt},
    {L"ssnamex", kNotBuilt},
    {L"entsel", kNotBuilt},
    {L"nentsel", kNotBuilt},
    {L"nentselp", kNotBuilt},
    {L"osnap", kNotBuilt},
    {L"getcname", kNotBuilt},
    {L"acad_truecolorcli", kNotBuilt},
    {L"acdimenableupdate", kNotBuilt},
    {L"command-s", kNotBuilt},
    {L"initcommandversion", kNotBuilt},
    {L"layerstate-save", kNotBuilt},
    {L"layerstate-restore", kNotBuilt},
    {L"layerstate-delete", kNotBuilt},
    {L"layerstate-rename", kNotBuilt},
    {L"layerstate-getnames", kNotBuilt},
    {L"layerstate-has", kNotBuilt},
    {L"layerstate-import", kNotBuilt},
    {L"layerstate-export", kNotBuilt},
    {L"layerstate-getlayers", kNotBuilt},
    {L"layerstate-addlayers", kNotBuilt},
    {L"layerstate-removelayers", kNotBuilt},
    {L"layerstate-compare", kNotBuilt},
    {L"layerstate-getlastrestored", kNotBuilt},
    {L"layerstate-setdescription", kNotBuilt},
    {L"layerstate-getdescription", kNotBuilt},
};

const Builtin kSystemLib[] = {
    {L"gc", fnGc},
    {L"mem", fnMem},
    {L"alloc", fnAlloc},
    {L"expand", fnExpand},
    {L"trace", fnTrace},
    {L"untrace", fnTrace},
    {L"vl-load-com", fnLoadCom},
    {L"vl-load-reactors", fnLoadCom},
    {L"acad-push-dbmod", fnTrue},
    {L"acad-pop-dbmod", fnTrue},
    {L"vl-acad-defun", fnTrue},
    {L"vl-acad-undefun", fnTrue},
    {L"vl-list-loaded-vlx", fnNil},
    {L"vl-vlx-loaded-p", fnNil},
    {L"vl-list-exported-functions", fnNil},
    {L"vl-registry-read", fnRegistryRead},
    {L"vl-registry-write", fnRegistryWrite},
    {L"vl-registry-delete", fnRegistryDelete},
    {L"vl-registry-descendents", fnRegistryDescendents},
    {L"setcfg", fnSetcfg},
    {L"getcfg", fnGetcfg},
    {L"setenv", fnSetenv},
    {L"vports", fnVports},
    {L"setview", fnSetview},
    {L"redraw", fnRedraw},
    {L"ssgetfirst", fnSsgetfirst},
    {L"sssetfirst", fnSssetfirst},
};

}  // namespace

void openSystemLib(Interp& in) {
    openLibrary(in, kSystemLib);
    for (const Missing& m : kMissing) {
        std::wstring name = Value::symbol(m.name).symbolName();
        const wchar_t* why = m.why;
        in.defineSubr(m.name, [name, why](Interp& interp, std::vector<Value>&) -> Value {
            notAvailable(interp, name, why);
        });
    }
}

}  // namespace lisp
