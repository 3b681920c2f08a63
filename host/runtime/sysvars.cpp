// Host variables as LISP's getvar and the module's acedGetVar see them.
// ACADPREFIX: the support folders, separated by ";" (read-only, set by the host).
// DWGNAME: the current drawing's file name (read-only). The drawing's header variables
// (DIMSCALE, CLAYER, TEXTSIZE ...) are read from and written to the current drawing's
// database. Others are kept as set.

#include <cctype>
#include <cwctype>

#include "adslib.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/host_impl.h"
#include "runtime/value_resbuf.h"

namespace kelvo::host {
namespace {

std::wstring upper(std::wstring_view name) {
    std::wstring u(name);
    for (auto& c : u) c = static_cast<wchar_t>(std::towupper(c));
    return u;
}

// Variables every session starts with, before anything sets them.
void addSessionDefault(std::map<std::wstring, lisp::Value>& vars, const std::wstring& key) {
    if (key == L"CMDECHO" && !vars.count(key)) vars[key] = lisp::Value::integer(1);
}

bool isReadOnly(const std::wstring& name) { return name == L"ACADPREFIX" || name == L"DWGNAME"; }

AcDbDatabase* currentDatabase() {
    Document* doc = Host::instance().impl().currentDocument();
    return doc ? doc->database() : nullptr;
}

lisp::Value headerValue(const drawing::HeaderValue& v) {
    if (auto* d = std::get_if<double>(&v)) return lisp::Value::real(*d);
    if (auto* i = std::get_if<int>(&v)) return lisp::Value::integer(*i);
    if (auto* s = std::get_if<std::wstring>(&v)) return lisp::Value::string(*s);
    if (auto* p = std::get_if<AcGePoint3d>(&v))
        return lisp::Value::list({lisp::Value::real(p->x), lisp::Value::real(p->y), lisp::Value::real(p->z)});
    return {};
}

// A LISP value as a header value; nullopt when it has no such form.
std::optional<drawing::HeaderValue> fromLisp(const lisp::Value& v) {
    if (v.type() == lisp::Type::Int) return drawing::HeaderValue(static_cast<int>(v.asInt()));
    if (v.type() == lisp::Type::Real) return drawing::HeaderValue(v.asReal());
    if (v.type() == lisp::Type::Str) return drawing::HeaderValue(v.asString());
    if (v.isCons()) {
        std::vector<double> p;
        for (lisp::Value it = v; it.isCons(); it = it.cdr()) {
            if (!it.car().isNumber()) return std::nullopt;
            p.push_back(it.car().asReal());
        }
        if (p.size() == 2 || p.size() == 3)
            return drawing::HeaderValue(AcGePoint3d(p[0], p[1], p.size() == 3 ? p[2] : 0.0));
    }
    return std::nullopt;
}

}  // namespace

std::optional<lisp::Value> Host::getVar(std::wstring_view name) const {
    std::wstring key = upper(name);
    if (key == L"DWGNAME") {
        Document* doc = impl_->currentDocument();
        return lisp::Value::string(doc ? doc->fileName() : L"");
    }
    if (AcDbDatabase* db = currentDatabase())
        if (auto value = drawing::getHeaderVariable(*db, key); value && key != L"HANDSEED")
            return headerValue(*value);
    addSessionDefault(impl_->vars, key);
    auto it = impl_->vars.find(key);
    if (it == impl_->vars.end()) return std::nullopt;
    return it->second;
}

bool Host::setVar(std::wstring_view name, const lisp::Value& value) {
    std::wstring key = upper(name);
    AcDbDatabase* db = currentDatabase();
    if (db && key != L"HANDSEED" && drawing::getHeaderVariable(*db, key)) {
        auto converted = fromLisp(value);
        return converted && drawing::setHeaderVariable(*db, key, *converted) == Acad::eOk;
    }
    addSessionDefault(impl_->vars, key);
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
