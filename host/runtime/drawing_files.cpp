// Opening, saving and rendering the documents' drawings.

#include "runtime/drawing_files.h"

#include "dbmain.h"
#include "runtime/dwgfile/drawing_file_io.h"
#include "runtime/host_impl.h"
#include "runtime/render/render_drawing.h"
#include "utf8.h"

namespace kelvo::host {
namespace {

namespace fs = std::filesystem;

fs::path absoluteName(const fs::path& file) {
    std::error_code ec;
    fs::path abs = fs::absolute(file, ec);
    return ec ? file : abs.lexically_normal();
}

std::string words(const std::wstring& text) { return toUtf8(text); }

Document& currentDocument() {
    Document* doc = Host::instance().impl().currentDocument();
    if (!doc) throw DrawingFileError("no drawing is open");
    return *doc;
}

}  // namespace

int openDrawingDocument(const fs::path& file) {
    Host::Impl& s = Host::instance().impl();
    fs::path abs = absoluteName(file);
    auto db = std::make_unique<AcDbDatabase>(false, true);
    std::wstring why;
    if (kelvo::files::readDrawing(*db, abs, &why) != Acad::eOk)
        throw DrawingFileError("cannot open drawing " + file.string() + ": " + words(why));
    db->setFilename(widePath(abs).c_str());
    auto doc = std::make_unique<Document>(s.nextDocumentId, widePath(abs));
    doc->setDatabase(std::move(db));
    ++s.nextDocumentId;
    s.documents.push_back(std::move(doc));
    s.current = static_cast<int>(s.documents.size()) - 1;
    s.sendToModules(AcRx::kLoadDwgMsg);
    return s.current;
}

std::wstring saveCurrentDrawing(const fs::path& file) {
    Document& doc = currentDocument();
    AcDbDatabase* db = doc.database();
    fs::path target = absoluteName(file.empty() ? utf8Path(doc.fileName()) : file);
    std::wstring name = widePath(target);
    // A reactor may detach itself while it is told: tell the ones attached now.
    for (AcEditorReactor* r : editorReactors()) r->beginSave(db, name.c_str());
    std::wstring why;
    if (kelvo::files::writeDrawing(*db, target, &why) != Acad::eOk)
        throw DrawingFileError("cannot save drawing " + (file.empty() ? target : file).string() + ": " +
                               words(why));
    doc.setFileName(name);
    db->setFilename(name.c_str());
    for (AcEditorReactor* r : editorReactors()) r->saveComplete(db, name.c_str());
    return name;
}

void renderCurrentDrawing(const fs::path& file) {
    Document& doc = currentDocument();
    try {
        render::renderModelSpace(*doc.database()).write(file);
    } catch (const render::RenderError& e) {
        throw DrawingFileError(e.what());
    }
}

}  // namespace kelvo::host
