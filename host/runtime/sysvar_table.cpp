// Reads the system-variable table (sysvar_table.tsv, embedded at build time) once.

#include "runtime/sysvar_table.h"

#include <cwctype>
#include <map>
#include <stdexcept>

#include "lisp/interp.h"
#include "utf8.h"

namespace kelvo::host {
namespace {

const char kTable[] =
#include "sysvar_table.inc"
    ;

std::vector<std::string> splitTabs(const std::string& line) {
    std::vector<std::string> fields;
    std::size_t start = 0;
    for (;;) {
        std::size_t tab = line.find('\t', start);
        fields.push_back(
            line.substr(start, tab == std::string::npos ? std::string::npos : tab - start));
        if (tab == std::string::npos) return fields;
        start = tab + 1;
    }
}

std::optional<double> bound(const std::string& text) {
    if (text.empty()) return std::nullopt;
    return std::stod(text);
}

lisp::Value typeDefault(SysvarType type) {
    switch (type) {
        case SysvarType::Int:
            return lisp::Value::integer(0);
        case SysvarType::Real:
            return lisp::Value::real(0.0);
        case SysvarType::Str:
            return lisp::Value::string(L"");
        case SysvarType::List:
            return lisp::Value::list(
                {lisp::Value::real(0), lisp::Value::real(0), lisp::Value::real(0)});
    }
    return {};
}

Sysvar parseRow(const std::vector<std::string>& f) {
    static const std::map<std::string, SysvarType> types = {{"int", SysvarType::Int},
                                                            {"real", SysvarType::Real},
                                                            {"str", SysvarType::Str},
                                                            {"list", SysvarType::List}};
    static const std::map<std::string, SysvarScope> scopes = {{"session", SysvarScope::Session},
                                                              {"drawing", SysvarScope::Drawing},
                                                              {"host", SysvarScope::Host}};
    if (f.size() != 6 || !types.count(f[1]) || !scopes.count(f[4]))
        throw std::logic_error("bad system variable row: " + f[0]);
    Sysvar v;
    v.name = fromUtf8(f[0]);
    v.type = types.at(f[1]);
    v.initial = typeDefault(v.type);
    if (!f[2].empty()) {
        auto forms = lisp::Interp::readForms(fromUtf8(f[2]));
        if (forms.size() != 1) throw std::logic_error("bad default of " + f[0]);
        v.initial = forms[0];
        if (v.type == SysvarType::Real && v.initial.isNumber())
            v.initial = lisp::Value::real(v.initial.asReal());
    }
    v.readOnly = f[3] == "ro";
    v.scope = scopes.at(f[4]);
    if (!f[5].empty()) {
        std::size_t dots = f[5].find("..");
        if (dots == std::string::npos) throw std::logic_error("bad range of " + f[0]);
        v.low = bound(f[5].substr(0, dots));
        v.high = bound(f[5].substr(dots + 2));
    }
    return v;
}

const std::map<std::wstring, Sysvar>& table() {
    static const std::map<std::wstring, Sysvar> rows = [] {
        std::map<std::wstring, Sysvar> out;
        std::string text(kTable);
        std::size_t start = 0;
        while (start < text.size()) {
            std::size_t end = text.find('\n', start);
            if (end == std::string::npos) end = text.size();
            std::string line = text.substr(start, end - start);
            start = end + 1;
            if (line.empty() || line[0] == '#') continue;
            Sysvar v = parseRow(splitTabs(line));
            out.emplace(v.name, std::move(v));
        }
        return out;
    }();
    return rows;
}

}  // namespace

const Sysvar* findSysvar(std::wstring_view name) {
    std::wstring key(name);
    for (auto& c : key) c = static_cast<wchar_t>(std::towupper(c));
    auto it = table().find(key);
    return it == table().end() ? nullptr : &it->second;
}

std::size_t sysvarCount() {
    return table().size();
}

}  // namespace kelvo::host
