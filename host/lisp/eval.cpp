// The evaluator: atoms, function calls, and the special forms. Functions are the values
// of symbols (one namespace, as in AutoLISP); a special form is a Subr marked `special`
// whose arguments reach it unevaluated.
#include <array>
#include <filesystem>

#include "args.h"
#include "interp_impl.h"
#include "printer.h"
#include "utf8.h"

namespace lisp {

namespace {

// Deep enough for real recursion, shallow enough for the thread's stack.
constexpr int kMaxDepth = 4000;

class DepthGuard {
public:
    explicit DepthGuard(int& depth) : depth_(depth) {
        if (++depth_ > kMaxDepth) {
            --depth_;
            throw Error(L"internal stack limit reached");
        }
    }
    ~DepthGuard() { --depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    int& depth_;
};

// The unevaluated argument forms of a special form, count-checked.
std::vector<Value> formArgs(const Value& form, std::size_t min, std::size_t max) {
    std::vector<Value> args = form.cdr().toVector();
    Args{args, min, max};
    return args;
}

const Value& checkSymbol(const Value& v) {
    if (v.type() != Type::Sym || v.isT()) badArgType(L"symbolp", v);
    return v;
}

Value progn(Interp& in, Value body) {
    Value result;
    for (; body.isCons(); body = body.cdr()) result = in.eval(body.car());
    return result;
}

Value sfQuote(Interp&, const Value& form) { return formArgs(form, 1, 1)[0]; }

Value sfSetq(Interp& in, const Value& form) {
    auto args = formArgs(form, 0, kAnyCount);   // (setq) alone is nil
    if (args.size() % 2) throw Error(L"too few arguments");
    Value result;
    for (std::size_t i = 0; i < args.size(); i += 2) {
        checkSymbol(args[i]);
        result = in.eval(args[i + 1]);
        in.impl().assign(args[i], result);
    }
    return result;
}

Value sfDefun(Interp& in, const Value& form) {
    auto args = formArgs(form, 2, kAnyCount);
    const Value& name = checkSymbol(args[0]);
    in.impl().assign(name, makeUsubr(name.symbolName(), args[1], form.cdr().cdr().cdr()));
    return name;
}

// defun-q keeps the definition as the list (params body...), which a call turns into a
// function and defun-q-list-ref returns; the parameters are checked at once all the same.
Value sfDefunQ(Interp& in, const Value& form) {
    auto args = formArgs(form, 2, kAnyCount);
    const Value& name = checkSymbol(args[0]);
    Value definition = form.cdr().cdr();
    makeUsubr(name.symbolName(), definition.car(), definition.cdr());
    in.impl().assign(name, definition);
    return name;
}

Value sfLambda(Interp&, const Value& form) {
    auto args = formArgs(form, 1, kAnyCount);
    return makeUsubr(L"", args[0], form.cdr().cdr());
}

Value sfFunction(Interp& in, const Value& form) {
    Value arg = formArgs(form, 1, 1)[0];
    bool lambda = arg.isCons() && arg.car().type() == Type::Sym && arg.car().symbolName() == L"LAMBDA";
    return lambda ? in.eval(arg) : arg;
}

Value sfIf(Interp& in, const Value& form) {
    auto args = formArgs(form, 2, 3);
    if (!in.eval(args[0]).isNil()) return in.eval(args[1]);
    return args.size() == 3 ? in.eval(args[2]) : Value();
}

Value sfCond(Interp& in, const Value& form) {
    for (Value c = form.cdr(); c.isCons(); c = c.cdr()) {
        Value clause = c.car();
        if (!clause.isCons()) badArgType(L"consp", clause);
        Value test = in.eval(clause.car());
        if (test.isNil()) continue;
        return clause.cdr().isNil() ? test : progn(in, clause.cdr());
    }
    return {};
}

Value sfWhile(Interp& in, const Value& form) {
    auto args = formArgs(form, 1, kAnyCount);
    Value result;
    while (!in.eval(args[0]).isNil()) result = progn(in, form.cdr().cdr());
    return result;
}

Value sfRepeat(Interp& in, const Value& form) {
    auto args = formArgs(form, 1, kAnyCount);
    Value count = in.eval(args[0]);
    if (count.type() != Type::Int) badArgType(L"fixnump", count);
    Value result;
    for (std::int32_t i = 0; i < count.asInt(); ++i) result = progn(in, form.cdr().cdr());
    return result;
}

Value sfForeach(Interp& in, const Value& form) {
    auto args = formArgs(form, 2, kAnyCount);
    const Value& var = checkSymbol(args[0]);
    Value items = in.eval(args[1]);
    if (!items.isList()) badArgType(L"listp", items);
    DynamicBinding binding(in.impl());
    binding.bind(var, {});
    Value result;
    for (; items.isCons(); items = items.cdr()) {
        in.impl().assign(var, items.car());
        result = progn(in, form.cdr().cdr().cdr());
    }
    return result;
}

Value sfProgn(Interp& in, const Value& form) { return progn(in, form.cdr()); }

Value sfAnd(Interp& in, const Value& form) {
    for (Value p = form.cdr(); p.isCons(); p = p.cdr())
        if (in.eval(p.car()).isNil()) return {};
    return Value::t();
}

Value sfOr(Interp& in, const Value& form) {
    for (Value p = form.cdr(); p.isCons(); p = p.cdr())
        if (!in.eval(p.car()).isNil()) return Value::t();
    return {};
}

using SpecialFn = Value (*)(Interp&, const Value&);

struct SpecialForm {
    const wchar_t* name;
    SpecialFn fn;
};

constexpr std::array<SpecialForm, 14> kSpecialForms{{
    {L"quote", sfQuote},     {L"setq", sfSetq},       {L"defun", sfDefun},
    {L"defun-q", sfDefunQ},   {L"lambda", sfLambda},   {L"function", sfFunction},
    {L"if", sfIf},           {L"cond", sfCond},       {L"while", sfWhile},
    {L"repeat", sfRepeat},   {L"foreach", sfForeach}, {L"progn", sfProgn},
    {L"and", sfAnd},         {L"or", sfOr},
}};

Value callUsubr(Interp& in, const UsubrObj& fn, std::vector<Value>& args) {
    if (args.size() < fn.params.size()) throw Error(L"too few arguments");
    if (args.size() > fn.params.size()) throw Error(L"too many arguments");
    DynamicBinding binding(in.impl());
    for (std::size_t i = 0; i < args.size(); ++i) binding.bind(fn.params[i], std::move(args[i]));
    for (const auto& local : fn.locals) binding.bind(local, {});
    return progn(in, fn.body);
}

// The error of calling a symbol with no function. The automation families (VLA-,
// VLAX-, VLR-) are never defined in a host without the automation objects; the error
// says so.
[[noreturn]] void noFunction(const Value& sym) {
    const std::wstring& name = sym.symbolName();
    for (const wchar_t* family : {L"VLA-", L"VLAX-", L"VLR-"})
        if (name.rfind(family, 0) == 0)
            throw Error(name + L" is not available: this host has no automation objects (" +
                        family + L"...)");
    throw Error(L"no function definition: " + name);
}

Value evalCall(Interp& in, const Value& form) {
    Value head = form.car();
    Value fn;
    if (head.type() == Type::Sym) {
        fn = in.impl().lookup(head);
        if (fn.isNil()) noFunction(head);
    } else {
        fn = in.eval(head);
    }
    if (fn.type() == Type::Subr && as<SubrObj>(fn).special >= 0)
        return kSpecialForms[static_cast<std::size_t>(as<SubrObj>(fn).special)].fn(in, form);
    fn = resolveFunction(in, fn);
    std::vector<Value> args;
    for (Value p = form.cdr(); p.isCons(); p = p.cdr()) args.push_back(in.eval(p.car()));
    return callFunction(in, fn, args);
}

}  // namespace

void openSpecialForms(Interp& in) {
    for (std::size_t i = 0; i < kSpecialForms.size(); ++i) {
        Value subr = Value::subr(Value::symbol(kSpecialForms[i].name).symbolName(), nullptr);
        as<SubrObj>(subr).special = static_cast<int>(i);
        in.setGlobal(kSpecialForms[i].name, subr);
    }
}

Value makeUsubr(std::wstring name, const Value& params, const Value& body) {
    if (!params.isList()) badArgType(L"listp", params);
    auto fn = std::make_shared<UsubrObj>();
    fn->name = std::move(name);
    bool locals = false;
    for (const Value& p : params.toVector()) {
        if (p.type() == Type::Sym && p.symbolName() == L"/") {
            locals = true;
            continue;
        }
        (locals ? fn->locals : fn->params).push_back(checkSymbol(p));
    }
    fn->body = body;
    return Value(std::move(fn));
}

Value resolveFunction(Interp& in, const Value& f) {
    switch (f.type()) {
    case Type::Subr:
        if (as<SubrObj>(f).special >= 0) break;
        return f;
    case Type::Usubr: return f;
    case Type::Sym: {
        Value v = in.impl().lookup(f);
        if (v.isNil()) noFunction(f);
        if (v.type() == Type::Sym) break;
        return resolveFunction(in, v);
    }
    case Type::Cons:
        if (f.car().type() == Type::Sym && f.car().symbolName() == L"LAMBDA")
            return makeUsubr(L"", f.cdr().car(), f.cdr().cdr());
        if (f.car().isList()) return makeUsubr(L"", f.car(), f.cdr());  // defun-q list
        break;
    default: break;
    }
    throw Error(L"bad function: " + printValue(f, true));
}

Value callFunction(Interp& in, const Value& fn, std::vector<Value>& args) {
    if (fn.type() == Type::Usubr) return callUsubr(in, as<UsubrObj>(fn), args);
    try {
        return as<SubrObj>(fn).fn(in, args);
    } catch (const std::filesystem::filesystem_error& e) {
        // A file function that met a name or a file it cannot handle: a LISP error, never
        // an exception that ends the host.
        throw Error(kelvo::fromUtf8(e.what()));
    }
}

Value Interp::eval(const Value& form) {
    switch (form.type()) {
    case Type::Sym: return impl_->lookup(form);
    case Type::Cons: {
        DepthGuard guard(impl_->depth);
        return evalCall(*this, form);
    }
    default: return form;
    }
}

Value Interp::apply(const Value& function, std::vector<Value> args) {
    Value fn = resolveFunction(*this, function);
    return callFunction(*this, fn, args);
}

}  // namespace lisp
