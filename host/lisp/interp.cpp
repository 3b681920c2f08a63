// The Interp facade: construction, top-level evaluation, globals and error handling.
#include "interp.h"

#include <cmath>

#include "interp_impl.h"
#include "library.h"
#include "printer.h"
#include "reader.h"
#include "text.h"

namespace lisp {

Error::Error(std::wstring message) : message_(std::move(message)), narrow_(toUtf8(message_)) {}

Interp::Interp(InterpIO io) : impl_(std::make_unique<Impl>(std::move(io))) {
    openSpecialForms(*this);
    openCoreLib(*this);
    openListLib(*this);
    openMathLib(*this);
    openStringLib(*this);
    openPrintLib(*this);
    openFileLib(*this);
    openInputLib(*this);
    openGeomLib(*this);
    openFilenameLib(*this);
    openVlFileLib(*this);
    openUnitsLib(*this);
    openSystemLib(*this);
    setGlobal(L"PI", Value::real(std::acos(-1.0)));
    setGlobal(L"PAUSE", Value::string(L"\\"));
    setGlobal(L"T", Value::t());
    openNamespaceLib(*this);
}

Interp::~Interp() {
    closeNamespaceLib(*this);
}

Value Interp::evalString(std::wstring_view source) {
    Reader reader(source);
    Value result;
    while (auto form = reader.next()) result = eval(*form);
    return result;
}

Value Interp::loadFile(const std::filesystem::path& file) {
    return evalString(readTextFile(file));
}

bool Interp::runErrorHandler(const Error& error) {
    Value handler = getGlobal(L"*error*");
    if (handler.type() != Type::Usubr) return false;
    apply(handler, {Value::string(error.message())});
    return true;
}

void Interp::defineSubr(std::wstring_view name, NativeFn fn, bool external) {
    Value sym = Value::symbol(name);
    impl_->assign(sym, Value::subr(sym.symbolName(), std::move(fn), external));
}

Value Interp::getGlobal(std::wstring_view name) const {
    return impl_->lookup(Value::symbol(name));
}

void Interp::setGlobal(std::wstring_view name, Value value) {
    impl_->assign(Value::symbol(name), std::move(value));
}

bool Interp::formsComplete(std::wstring_view source) {
    Reader reader(source);
    try {
        while (reader.next()) {
        }
    } catch (const IncompleteInput&) {
        return false;
    } catch (const Error&) {
        return true;
    }
    return true;
}

std::vector<Value> Interp::readForms(std::wstring_view source) {
    Reader reader(source);
    std::vector<Value> forms;
    while (auto form = reader.next()) forms.push_back(std::move(*form));
    return forms;
}

bool Interp::isSilent(const Value& v) { return v.isSilent(); }

std::wstring Interp::prin1String(const Value& v) { return printValue(v, true); }
std::wstring Interp::princString(const Value& v) { return printValue(v, false); }

InterpIO& Interp::io() { return impl_->io; }

int Interp::intVariable(std::wstring_view name, int fallback) {
    if (!impl_->io.getVar) return fallback;
    auto v = impl_->io.getVar(name);
    return v && v->type() == Type::Int ? v->asInt() : fallback;
}

void Interp::setErrno(int code) {
    if (impl_->io.setVar) impl_->io.setVar(L"ERRNO", Value::integer(code));
}

}  // namespace lisp
