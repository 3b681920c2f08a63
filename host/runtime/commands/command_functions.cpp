// LISP's command and vl-cmdf: the arguments become inputs of the current drawing's
// command line (command_runner.h).
//   a string        typed text ("LINE", "1,2", "@5<45", "Undo"); "" is Enter and "\\"
//                   (the value of PAUSE) takes the next --input line
//   a number        a number; a list of 2 or 3 numbers a point
//   an entity name  that object; a selection set its objects (at "Select objects:")
//   nil             nothing
// (command) with no argument is Esc. command answers nil; vl-cmdf checks every argument
// first and answers nil without running anything when one is not of these kinds, else T.
// CMDECHO 1 (the default) prints the prompts.

#include "lisp/args.h"
#include "runtime/commands/command_runner.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/host_impl.h"

namespace kelvo::host {
namespace {

using commands::Input;
using lisp::Interp;
using lisp::Type;
using lisp::Value;
using Values = std::vector<Value>;

// The input an argument gives; nullopt for nil, false in *ok for a kind it cannot be.
std::optional<Input> inputOf(const Value& v, bool* ok) {
    Input in;
    *ok = true;
    switch (v.type()) {
        case Type::Nil:
            return std::nullopt;
        case Type::Str:
            if (v.asString() == L"\\")
                in.kind = Input::Kind::Pause;
            else if (v.asString().empty())
                in.kind = Input::Kind::Enter;
            else {
                in.kind = Input::Kind::Text;
                in.text = v.asString();
            }
            return in;
        case Type::Int:
        case Type::Real:
            in.kind = Input::Kind::Number;
            in.number = v.asReal();
            in.integer = v.type() == Type::Int;
            return in;
        case Type::Ename:
            in.kind = Input::Kind::Entity;
            in.ids.push_back(AcDbObjectId(v.handleId()));
            return in;
        case Type::Pickset:
            in.kind = Input::Kind::Selection;
            if (auto* set = drawing::selectionSet(v.handleId())) in.ids = *set;
            return in;
        case Type::Cons: {
            std::vector<double> p;
            for (Value it = v; it.isCons(); it = it.cdr()) {
                if (!it.car().isNumber()) {
                    *ok = false;
                    return std::nullopt;
                }
                p.push_back(it.car().asReal());
            }
            if (p.size() < 2 || p.size() > 3) break;
            in.kind = Input::Kind::Point;
            in.point = AcGePoint3d(p[0], p[1], p.size() == 3 ? p[2] : 0.0);
            return in;
        }
        default:
            break;
    }
    *ok = false;
    return std::nullopt;
}

AcDbDatabase& currentDatabase() {
    Document* doc = Host::instance().impl().currentDocument();
    if (!doc || !doc->database()) throw lisp::Error(L"no drawing is open");
    return *doc->database();
}

bool echoOn() {
    auto v = Host::instance().getVar(L"CMDECHO");
    return !v || !v->isNumber() || v->asReal() != 0;  // unknown: 1, the host's default
}

// Runs the arguments; false (nothing run) when one is not an input.
bool runCommand(Values& values, bool strict) {
    commands::CommandLine& line = commands::commandLineFor(currentDatabase());
    if (values.empty()) {
        line.cancel();
        return true;
    }
    std::vector<Input> inputs;
    for (const Value& v : values) {
        bool ok = true;
        auto in = inputOf(v, &ok);
        if (!ok) {
            if (strict) return false;
            throw lisp::Error(L"bad argument type for command: " + Interp::prin1String(v));
        }
        if (in) inputs.push_back(std::move(*in));
    }
    line.feed(std::move(inputs), echoOn());
    return true;
}

Value commandFn(Interp&, Values& values) {
    runCommand(values, false);
    return Value();
}

Value vlCmdfFn(Interp&, Values& values) {
    return lisp::boolValue(runCommand(values, true));
}

constexpr lisp::Builtin kCommandFunctions[] = {
    {L"command", commandFn},
    {L"vl-cmdf", vlCmdfFn},
};

}  // namespace

void defineCommandFunctions(Interp& interp) {
    lisp::openLibrary(interp, kCommandFunctions);
}

}  // namespace kelvo::host
