// LISP functions of the host for drawing files, defined in every document:
//   (host:open FILE)      opens FILE as a new, current drawing; its index
//   (host:save [FILE])    saves the current drawing (to FILE, else under its own name)
//   (host:saveas FILE)    saves the current drawing to FILE
//   (host:render FILE)    a picture of the current drawing's model space (.svg or .png)
// The saving and rendering functions answer the absolute file name written.

#include "lisp/args.h"
#include "runtime/drawing_files.h"
#include "utf8.h"

namespace kelvo::host {
namespace {

using lisp::Args;
using lisp::Interp;
using lisp::Value;
using Values = std::vector<Value>;

// Runs `operation`, turning a drawing-file failure into the LISP error of its words.
template <typename Operation>
Value guarded(Operation operation) {
    try {
        return operation();
    } catch (const DrawingFileError& e) {
        throw lisp::Error(fromUtf8(e.what()));
    }
}

Value hostOpenFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    const std::filesystem::path file = utf8Path(args.string(0));
    return guarded([&] { return Value::integer(openDrawingDocument(file)); });
}

Value hostSaveFn(Interp&, Values& values) {
    Args args(values, 0, 1);
    const std::filesystem::path file = args.has(0) ? utf8Path(args.string(0)) : "";
    return guarded([&] { return Value::string(saveCurrentDrawing(file)); });
}

Value hostSaveAsFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    const std::filesystem::path file = utf8Path(args.string(0));
    return guarded([&] { return Value::string(saveCurrentDrawing(file)); });
}

Value hostRenderFn(Interp&, Values& values) {
    Args args(values, 1, 1);
    const std::filesystem::path file = utf8Path(args.string(0));
    return guarded([&] {
        renderCurrentDrawing(file);
        return Value::string(widePath(std::filesystem::absolute(file).lexically_normal()));
    });
}

constexpr lisp::Builtin kDrawingFileFunctions[] = {
    {L"host:open", hostOpenFn},
    {L"host:save", hostSaveFn},
    {L"host:saveas", hostSaveAsFn},
    {L"host:render", hostRenderFn},
};

}  // namespace

void defineDrawingFileFunctions(Interp& interp) {
    lisp::openLibrary(interp, kDrawingFileFunctions);
}

}  // namespace kelvo::host
