// Argument checking shared by all natives.
#include "args.h"

#include "printer.h"

namespace lisp {

void badArgType(std::wstring_view predicate, const Value& v) {
    bool colon = predicate == L"numberp" || predicate == L"fixnump" ||
                 predicate == L"2D/3D point";
    throw Error(L"bad argument type: " + std::wstring(predicate) + (colon ? L": " : L" ") +
                printValue(v, true));
}

Args::Args(std::vector<Value>& args, std::size_t min, std::size_t max) : args_(args) {
    if (args.size() < min) throw Error(L"too few arguments");
    if (args.size() > max) throw Error(L"too many arguments");
}

std::int32_t Args::integer(std::size_t i) const {
    if (args_[i].type() != Type::Int) badArgType(L"fixnump", args_[i]);
    return args_[i].asInt();
}

double Args::number(std::size_t i) const {
    if (!args_[i].isNumber()) badArgType(L"numberp", args_[i]);
    return args_[i].asReal();
}

const std::wstring& Args::string(std::size_t i) const {
    if (args_[i].type() != Type::Str) badArgType(L"stringp", args_[i]);
    return args_[i].asString();
}

const Value& Args::list(std::size_t i) const {
    if (!args_[i].isList()) badArgType(L"listp", args_[i]);
    return args_[i];
}

const Value& Args::symbol(std::size_t i) const {
    if (args_[i].type() != Type::Sym) badArgType(L"symbolp", args_[i]);
    return args_[i];
}

const Value& Args::file(std::size_t i) const {
    if (args_[i].type() != Type::File) badArgType(L"streamp", args_[i]);
    return args_[i];
}

std::vector<double> Args::point(std::size_t i) const {
    std::vector<double> out;
    for (Value p = args_[i]; p.isCons(); p = p.cdr()) {
        if (!p.car().isNumber() || out.size() == 3) break;
        out.push_back(p.car().asReal());
    }
    if (out.size() < 2) badArgType(L"2D/3D point", args_[i]);
    return out;
}

void openLibrary(Interp& in, std::span<const Builtin> table) {
    for (const auto& b : table) in.defineSubr(b.name, b.fn);
}

}  // namespace lisp
