// The host's drawing-file operations on documents: opening a drawing file as a new
// document, saving the current one (with the editor's save notifications), and a picture
// of its model space. Used by kelvo-host's options and the host:open/save/saveas/render
// LISP functions.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "aced.h"
#include "lisp/interp.h"

namespace kelvo::host {

// What went wrong, in words for "; error: ..." ("cannot open drawing F: reason").
class DrawingFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Opens FILE as a new document, made current, after which every module gets kLoadDwgMsg.
// Its file name (DWGNAME) is FILE's absolute path. Returns the document's index.
int openDrawingDocument(const std::filesystem::path& file);

// Saves the current document to FILE, or to its own file name when FILE is empty. Every
// editor reactor gets beginSave before and saveComplete(db, name written) after; the
// document then carries the name written. Returns the absolute name written.
std::wstring saveCurrentDrawing(const std::filesystem::path& file = {});

// Renders the current document's model space to FILE (.svg or .png).
void renderCurrentDrawing(const std::filesystem::path& file);

// The editor's reactors, in the order they were attached (kept with the editor in
// rx_class.cpp).
std::vector<AcEditorReactor*> editorReactors();

// host:open, host:save, host:saveas and host:render in an interpreter.
void defineDrawingFileFunctions(lisp::Interp& interp);

}  // namespace kelvo::host
