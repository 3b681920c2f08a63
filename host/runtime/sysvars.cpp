// Host variables as LISP's getvar and the module's acedGetVar see them.
// ACADPREFIX: the support folders, separated by ";" (read-only, set by the host).
// DWGNAME: the current drawing's file name (read-only). Others are kept as set.

#include <cctype>
#include <cwctype>

#include "adslib.h"
#include "runtime/host_impl.h"
#include "runtime/value_resbuf.h"

namespace kelvo::host {
namespace {

std::wstring upper(std::wstring_view name) {
    std::wstring u(name);
    for (auto& c : u) c = static_cast<wchar_t>(std::towupper(c));
    return u;
}

bool isReadOnly(const std::wstring& name) { return name == L"ACADPREFIX" || name == L"DWGNAME"; }

}  // namespace

std::optional<lisp::Value> Host::getVar(std::wstring_view name) const {
    std::wstring key = upper(name);
    if (key == L"DWGNAME") {
        Document* doc = impl_->currentDocument();
        return lisp::Value::string(doc ? doc->fileName() : L"");
    }
    auto it = impl_->vars.find(key);
    if (it == impl_->vars.end()) return std::nullopt;
    return it->second;
}

bool Host::setVar(std::wstring_view name, const lisp::Value& value) {
    std::wstring key = upper(name);
    auto it = impl_->vars.find(key);
    if (it == impl_->vars.end() || isReadOnly(key)) return false;
    if (it->second.type() != value.type() &&
        !(it->second.isNumber() && value.isNumber()))
        return false;
    it->second = value;
    return true;
}

void Host::defineVar(std::wstring_view name, lisp::Value value) {
    impl_->vars[upper(name)] = std::move(value);
}

}  // namespace kelvo::host

using kelvo::host::Host;

int acedGetVar(const ACHAR* name, resbuf* result) {
    if (!name || !result) return RTERROR;
    auto value = Host::instance().getVar(name);
    if (!value) return RTERROR;
    resbuf* chain = kelvo::host::valueToChain(*value);
    *result = *chain;
    result->rbnext = nullptr;
    chain->restype = RTNIL;   // the string, if any, now belongs to *result
    acutRelRb(chain);
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
    if (!name || !value) return RTERROR;
    resbuf copy = *value;
    copy.rbnext = nullptr;
    return Host::instance().setVar(name, kelvo::host::chainToValue(&copy)) ? RTNORM : RTERROR;
}
