// Value construction and access, and the process-wide symbol table.
#include "value.h"

#include <cwctype>
#include <mutex>
#include <unordered_map>

#include "interp.h"
#include "object.h"

namespace lisp {

namespace {

// Symbols live as long as the process; several interpreters share them.
class SymbolTable {
public:
    Value intern(std::wstring_view name) {
        std::wstring upper(name);
        for (auto& c : upper) c = static_cast<wchar_t>(std::towupper(c));
        std::lock_guard lock(mutex_);
        auto it = symbols_.find(upper);
        if (it != symbols_.end()) return it->second;
        Value sym(std::make_shared<SymObj>(upper));
        symbols_.emplace(std::move(upper), sym);
        return sym;
    }

private:
    std::mutex mutex_;
    std::unordered_map<std::wstring, Value> symbols_;
};

SymbolTable& symbolTable() {
    static SymbolTable table;
    return table;
}

[[noreturn]] void wrongType(const char* what) {
    throw Error(std::wstring(L"internal: value is not ") +
                std::wstring(what, what + std::char_traits<char>::length(what)));
}

}  // namespace

namespace {

bool heldOnlyHere(const Value& v) {
    return v.isCons() && v.object().use_count() == 1;
}

// Releases a list held only by `node`, of any length or depth, without recursion and
// without allocating (this runs in destructors, where running out of memory must not
// throw): a cons whose car is another cons held only here is rotated (the car takes the
// cons's place, the cons becomes the car's cdr) until its car is not, then the cons goes
// and its cdr follows. Each cons that goes releases nothing but atoms and shared values.
void releaseList(Value node) {
    while (heldOnlyHere(node)) {
        auto& cons = as<ConsObj>(node);
        if (heldOnlyHere(cons.car)) {
            Value car = std::move(cons.car);
            auto& inner = as<ConsObj>(car);
            cons.car = std::move(inner.cdr);
            inner.cdr = std::move(node);
            node = std::move(car);
        } else {
            Value next = heldOnlyHere(cons.cdr) ? std::move(cons.cdr) : Value();
            node = std::move(next);
        }
    }
}

}  // namespace

// Conses held only here are taken apart by releaseList instead of by recursion, so that
// any length or depth of list is released.
ConsObj::~ConsObj() {
    if (heldOnlyHere(car)) releaseList(std::move(car));
    if (heldOnlyHere(cdr)) releaseList(std::move(cdr));
}

Value Value::t() {
    static const Value tSym = symbol(L"T");
    return tSym;
}
Value Value::silent() {
    static const Value empty = symbol(L"");
    return empty;
}
Value Value::integer(std::int32_t v) {
    return Value(std::make_shared<IntObj>(v));
}
Value Value::real(double v) {
    return Value(std::make_shared<RealObj>(v));
}
Value Value::string(std::wstring v) {
    return Value(std::make_shared<StrObj>(std::move(v)));
}
Value Value::symbol(std::wstring_view name) {
    return symbolTable().intern(name);
}
Value Value::cons(Value car, Value cdr) {
    return Value(std::make_shared<ConsObj>(std::move(car), std::move(cdr)));
}
Value Value::list(std::initializer_list<Value> items) {
    return list(std::vector<Value>(items));
}
Value Value::list(const std::vector<Value>& items, Value tail) {
    Value result = std::move(tail);
    for (auto it = items.rbegin(); it != items.rend(); ++it) result = cons(*it, std::move(result));
    return result;
}
Value Value::ename(std::int64_t id) {
    return Value(std::make_shared<HandleObj>(Type::Ename, id));
}
Value Value::pickset(std::int64_t id) {
    return Value(std::make_shared<HandleObj>(Type::Pickset, id));
}
Value Value::subr(std::wstring name, NativeFn fn, bool external) {
    return Value(std::make_shared<SubrObj>(std::move(name), std::move(fn), external));
}
Value Value::catchError(std::wstring message) {
    return Value(std::make_shared<CatchErrorObj>(std::move(message)));
}

Type Value::type() const {
    return obj_ ? obj_->type : Type::Nil;
}
bool Value::isT() const {
    return obj_ && obj_ == t().obj_;
}
bool Value::isSilent() const {
    return obj_ && obj_ == silent().obj_;
}

std::int32_t Value::asInt() const {
    if (type() != Type::Int) wrongType("an integer");
    return as<IntObj>(*this).value;
}
double Value::asReal() const {
    if (type() == Type::Int) return as<IntObj>(*this).value;
    if (type() != Type::Real) wrongType("a number");
    return as<RealObj>(*this).value;
}
const std::wstring& Value::asString() const {
    if (type() != Type::Str) wrongType("a string");
    return as<StrObj>(*this).value;
}
const std::wstring& Value::symbolName() const {
    if (type() != Type::Sym) wrongType("a symbol");
    return as<SymObj>(*this).name;
}
std::int64_t Value::handleId() const {
    if (type() != Type::Ename && type() != Type::Pickset) wrongType("a handle");
    return as<HandleObj>(*this).id;
}
const std::wstring& Value::subrName() const {
    if (type() != Type::Subr) wrongType("a built-in function");
    return as<SubrObj>(*this).name;
}
bool Value::isExternal() const {
    return type() == Type::Subr && as<SubrObj>(*this).external;
}
const NativeFn& Value::native() const {
    if (type() != Type::Subr) wrongType("a built-in function");
    return as<SubrObj>(*this).fn;
}
const std::wstring& Value::errorMessage() const {
    if (type() != Type::CatchError) wrongType("an error object");
    return as<CatchErrorObj>(*this).message;
}

Value Value::car() const {
    return isCons() ? as<ConsObj>(*this).car : Value();
}
Value Value::cdr() const {
    return isCons() ? as<ConsObj>(*this).cdr : Value();
}

std::vector<Value> Value::toVector() const {
    std::vector<Value> out;
    for (const Value* p = this; p->isCons(); p = &as<ConsObj>(*p).cdr)
        out.push_back(as<ConsObj>(*p).car);
    return out;
}

bool Value::eq(const Value& other) const {
    if (obj_ == other.obj_) return true;
    if (type() != other.type()) return false;
    switch (type()) {
        case Type::Int:
            return asInt() == other.asInt();
        case Type::Real:
            return asReal() == other.asReal();
        case Type::Ename:
        case Type::Pickset:
            return handleId() == other.handleId();
        default:
            return false;
    }
}

}  // namespace lisp
