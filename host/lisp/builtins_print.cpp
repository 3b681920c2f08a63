// Printing to the host (through InterpIO::write) or to a file, and reading a form back
// from a string.
#include <cstdlib>

#include "args.h"
#include "interp_impl.h"
#include "library.h"
#include "printer.h"
#include "reader.h"
#include "text.h"

namespace lisp {

namespace {

// Sends text to the optional file argument at `fileArg`, else to the host.
void emit(Interp& in, const Args& a, std::size_t fileArg, std::wstring_view text) {
    if (a.has(fileArg) && !a[fileArg].isNil()) {
        writeToFile(a.file(fileArg), text);
    } else if (in.io().write) {
        in.io().write(text);
    }
}

Value fnPrinc(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    if (!a.has(0)) return Value::silent();
    emit(in, a, 1, printValue(a[0], false));
    return a[0];
}

Value fnPrin1(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    if (!a.has(0)) return Value::silent();
    emit(in, a, 1, printValue(a[0], true));
    return a[0];
}

Value fnPrint(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 2);
    if (!a.has(0)) return Value::silent();
    emit(in, a, 1, L"\n" + printValue(a[0], true) + L" ");
    return a[0];
}

Value fnTerpri(Interp& in, std::vector<Value>& args) {
    Args a(args, 0, 0);
    emit(in, a, 0, L"\n");
    return {};
}

Value fnPrompt(Interp& in, std::vector<Value>& args) {
    Args a(args, 1, 1);
    emit(in, a, 1, a.string(0));
    return {};
}

Value fnPrin1ToString(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::string(printValue(a[0], true));
}

Value fnPrincToString(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::string(printValue(a[0], false));
}

Value fnRead(Interp&, std::vector<Value>& args) {
    Args a(args, 0, 1);
    if (!a.has(0)) return {};
    Reader reader(a.string(0));
    auto form = reader.next();
    return form ? *form : Value();
}

Value fnGetenv(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    const char* v = std::getenv(toUtf8(a.string(0)).c_str());
    return v ? Value::string(fromUtf8(v)) : Value();
}

const Builtin kPrintLib[] = {
    {L"princ", fnPrinc},
    {L"prin1", fnPrin1},
    {L"print", fnPrint},
    {L"terpri", fnTerpri},
    {L"prompt", fnPrompt},
    {L"vl-prin1-to-string", fnPrin1ToString},
    {L"vl-princ-to-string", fnPrincToString},
    {L"read", fnRead},
    {L"getenv", fnGetenv},
};

}  // namespace

void openPrintLib(Interp& in) { openLibrary(in, kPrintLib); }

}  // namespace lisp
