// System variables as LISP's getvar/setvar and the module's acedGetVar/acedSetVar see
// them. Every variable is a row of the table (sysvar_table.h): its type, default,
// access, range, and where the value lives:
// - the drawing's header variables (DIMSCALE, CLAYER, EXTMIN ...) in the current
//   drawing's database, which checks its own values too;
// - other per-drawing variables (USERI1, TDCREATE ...) with the current document;
// - per-session variables (CMDECHO, ERRNO ...) with the host;
// - values the host works out when read (DATE, CDATE, MILLISECS, DWGNAME, DWGPREFIX,
//   HANDSEED, CTAB ...).
// A write is refused when the variable is unknown or read-only, the value has the wrong
// type, or it is outside the variable's range; the variable then keeps what it had.

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <cwctype>

#include "adslib.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/host_impl.h"
#include "runtime/sysvar_table.h"
#include "runtime/value_resbuf.h"
#include "utf8.h"

namespace kelvo::host {
namespace {

using lisp::Value;

std::wstring upper(std::wstring_view name) {
    std::wstring u(name);
    for (auto& c : u) c = static_cast<wchar_t>(std::towupper(c));
    return u;
}

AcDbDatabase* currentDatabase() {
    Document* doc = Host::instance().impl().currentDocument();
    return doc ? doc->database() : nullptr;
}

// CECOLOR is text for LISP ("BYLAYER", "BYBLOCK", "1" ...); the drawing keeps the index.
Value colorText(int index) {
    if (index == 256) return Value::string(L"BYLAYER");
    if (index == 0) return Value::string(L"BYBLOCK");
    return Value::string(std::to_wstring(index));
}

std::optional<int> colorIndex(const Value& v) {
    if (v.type() == lisp::Type::Int) return v.asInt();
    if (v.type() != lisp::Type::Str) return std::nullopt;
    std::wstring text = upper(v.asString());
    if (text == L"BYLAYER") return 256;
    if (text == L"BYBLOCK") return 0;
    if (text.empty() || text.size() > 3 ||
        text.find_first_not_of(L"0123456789") != std::wstring::npos)
        return std::nullopt;
    return std::stoi(text);
}

Value headerValue(const std::wstring& key, const drawing::HeaderValue& v) {
    if (auto* i = std::get_if<int>(&v))
        return key == L"CECOLOR" ? colorText(*i) : Value::integer(*i);
    if (auto* d = std::get_if<double>(&v)) return Value::real(*d);
    if (auto* s = std::get_if<std::wstring>(&v)) return Value::string(*s);
    if (auto* p = std::get_if<AcGePoint3d>(&v))
        return Value::list({Value::real(p->x), Value::real(p->y), Value::real(p->z)});
    return {};
}

// A LISP value as a header value; nullopt when it has no such form.
std::optional<drawing::HeaderValue> fromLisp(const std::wstring& key, const Value& v) {
    if (key == L"CECOLOR") {
        auto index = colorIndex(v);
        if (!index) return std::nullopt;
        return drawing::HeaderValue(*index);
    }
    if (v.type() == lisp::Type::Int) return drawing::HeaderValue(static_cast<int>(v.asInt()));
    if (v.type() == lisp::Type::Real) return drawing::HeaderValue(v.asReal());
    if (v.type() == lisp::Type::Str) return drawing::HeaderValue(v.asString());
    if (v.isCons()) {
        std::vector<double> p;
        for (Value it = v; it.isCons(); it = it.cdr()) {
            if (!it.car().isNumber()) return std::nullopt;
            p.push_back(it.car().asReal());
        }
        if (p.size() == 2 || p.size() == 3)
            return drawing::HeaderValue(AcGePoint3d(p[0], p[1], p.size() == 3 ? p[2] : 0.0));
    }
    return std::nullopt;
}

// The value a write stores, converted to the variable's type; nullopt when refused.
std::optional<Value> checked(const Sysvar& var, const Value& v) {
    auto inRange = [&](double x) {
        return std::isfinite(x) && (!var.low || x >= *var.low) && (!var.high || x <= *var.high);
    };
    switch (var.type) {
        case SysvarType::Int:
            if (v.type() != lisp::Type::Int || !inRange(v.asInt())) return std::nullopt;
            return v;
        case SysvarType::Real:
            if (!v.isNumber() || !inRange(v.asReal())) return std::nullopt;
            return Value::real(v.asReal());
        case SysvarType::Str:
            if (v.type() != lisp::Type::Str) return std::nullopt;
            return v;
        case SysvarType::List: {
            std::vector<Value> p;
            for (Value it = v; it.isCons(); it = it.cdr()) {
                if (!it.car().isNumber()) return std::nullopt;
                p.push_back(Value::real(it.car().asReal()));
            }
            if (p.size() < 2 || p.size() > 3) return std::nullopt;
            return Value::list(p);
        }
    }
    return std::nullopt;
}

// Now as a Julian day with the fraction of the day (local time).
double julianNow() {
    auto now = std::chrono::system_clock::now();
    double seconds = std::chrono::duration<double>(now.time_since_epoch()).count();
    std::time_t t = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&t, &local);
    return 2440587.5 + (seconds + static_cast<double>(local.tm_gmtoff)) / 86400.0;
}

// Now as YYYYMMDD.HHMMSSmmm (local time).
double calendarNow() {
    auto now = std::chrono::system_clock::now();
    std::time_t t = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&t, &local);
    auto ms =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() %
        1000;
    double day = (local.tm_year + 1900) * 10000.0 + (local.tm_mon + 1) * 100.0 + local.tm_mday;
    double time = local.tm_hour * 10000.0 + local.tm_min * 100.0 + local.tm_sec + ms / 1000.0;
    return day + time / 1e6;
}

std::wstring folderOf(const std::wstring& file) {
    auto slash = file.find_last_of(L"/\\");
    if (slash == std::wstring::npos) return std::filesystem::current_path().wstring() + L"/";
    return file.substr(0, slash + 1);
}

// The variables the host works out when read; nullopt for one kept as set.
std::optional<Value> workedOut(const Host::Impl& impl, const std::wstring& key) {
    Document* doc = impl.currentDocument();
    if (key == L"DATE") return Value::real(julianNow());
    if (key == L"CDATE") return Value::real(calendarNow());
    if (key == L"MILLISECS") {
        auto elapsed = std::chrono::steady_clock::now() - impl.started;
        return Value::integer(static_cast<std::int32_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count()));
    }
    if (key == L"DWGNAME") {
        std::wstring file = doc ? doc->fileName() : L"";
        auto slash = file.find_last_of(L"/\\");
        return Value::string(slash == std::wstring::npos ? file : file.substr(slash + 1));
    }
    if (key == L"DWGPREFIX") return Value::string(folderOf(doc ? doc->fileName() : L""));
    if (key == L"HANDSEED") {
        AcDbDatabase* db = doc ? doc->database() : nullptr;
        if (auto v = db ? drawing::getHeaderVariable(*db, key) : std::nullopt)
            return headerValue(key, *v);
        return Value::string(L"1");
    }
    if (key == L"CTAB") {
        AcDbDatabase* db = doc ? doc->database() : nullptr;
        bool model = !db || db->tilemode();
        return Value::string(model ? L"Model" : L"Layout1");
    }
    if (key == L"ACADVER") return Value::string(L"24.1");
    if (key == L"PLATFORM") return Value::string(L"Linux");
    if (key == L"PRODUCT") return Value::string(L"Kelvo host");
    if (key == L"PROGRAM") return Value::string(L"kelvo-host");
    if (key == L"LOGINNAME") {
        const char* user = std::getenv("USER");
        return Value::string(user ? fromUtf8(user) : L"");
    }
    if (key == L"TEMPPREFIX")
        return Value::string(std::filesystem::temp_directory_path().wstring() + L"/");
    if (key == L"SYSCODEPAGE" || key == L"DWGCODEPAGE") return Value::string(L"ANSI_1252");
    if (key == L"LOCALE") return Value::string(L"ENU");
    if (key == L"TDINDWG" || key == L"TDUSRTIMER") {
        auto elapsed = std::chrono::steady_clock::now() - impl.started;
        return Value::real(std::chrono::duration<double>(elapsed).count() / 86400.0);
    }
    return std::nullopt;
}

// The dates a drawing takes when it is made.
bool isCreationDate(const std::wstring& key) {
    return key == L"TDCREATE" || key == L"TDUPDATE" || key == L"TDUCREATE" || key == L"TDUUPDATE";
}

}  // namespace

std::optional<Value> Host::getVar(std::wstring_view name) const {
    std::wstring key = upper(name);
    const Sysvar* var = findSysvar(key);
    if (var && var->scope == SysvarScope::Host) {
        if (auto it = impl_->vars.find(key); it != impl_->vars.end()) return it->second;
        if (auto v = workedOut(*impl_, key)) return v;
    }
    if (AcDbDatabase* db = currentDatabase())
        if (auto value = drawing::getHeaderVariable(*db, key)) return headerValue(key, *value);
    if (!var) {
        auto it = impl_->vars.find(key);
        if (it == impl_->vars.end()) return std::nullopt;
        return it->second;
    }
    if (var->scope == SysvarScope::Drawing) {
        Document* doc = impl_->currentDocument();
        if (!doc) return var->initial;
        auto& values = doc->variables();
        auto it = values.find(key);
        if (it != values.end()) return it->second;
        if (isCreationDate(key)) return values[key] = Value::real(julianNow());
        return var->initial;
    }
    auto it = impl_->vars.find(key);
    return it == impl_->vars.end() ? var->initial : it->second;
}

bool Host::setVar(std::wstring_view name, const Value& value) {
    std::wstring key = upper(name);
    const Sysvar* var = findSysvar(key);
    AcDbDatabase* db = currentDatabase();
    if (var && var->readOnly) return false;
    if (db && key != L"HANDSEED" && drawing::getHeaderVariable(*db, key)) {
        if (var && var->type != SysvarType::Str && !checked(*var, value)) return false;
        auto converted = fromLisp(key, value);
        return converted && drawing::setHeaderVariable(*db, key, *converted) == Acad::eOk;
    }
    if (!var) {
        // a variable the host defined for itself (defineVar) and left writable
        auto it = impl_->vars.find(key);
        if (it == impl_->vars.end() || it->second.type() != value.type()) return false;
        it->second = value;
        return true;
    }
    auto stored = checked(*var, value);
    if (!stored) return false;
    Document* doc = impl_->currentDocument();
    if (var->scope == SysvarScope::Drawing && doc)
        doc->variables()[key] = *stored;
    else
        impl_->vars[key] = *stored;
    return true;
}

void Host::defineVar(std::wstring_view name, Value value) {
    std::wstring key = upper(name);
    const Sysvar* var = findSysvar(key);
    Document* doc = impl_->currentDocument();
    if (var && var->scope == SysvarScope::Drawing && doc)
        doc->variables()[key] = std::move(value);
    else
        impl_->vars[key] = std::move(value);
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
    chain->restype = RTNIL;  // the string, if any, now belongs to *result
    acutRelRb(chain);
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
    if (!name || !value) return RTERROR;
    resbuf copy = *value;
    copy.rbnext = nullptr;
    return Host::instance().setVar(name, kelvo::host::chainToValue(&copy)) ? RTNORM : RTERROR;
}
