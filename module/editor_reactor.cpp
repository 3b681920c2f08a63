// The editor reactor and its attachment to the host's editor.
#include "module/editor_reactor.h"

#include <memory>
#include <string>

#include "acdocman.h"
#include "database/current_connection.h"
#include "database/document_records.h"

kvEditorReactor::~kvEditorReactor() = default;

// The head record is compared, by design not the saved document's own record: with
// several drawings open it is the first drawing's record that decides. The saved
// document's own record (found by the document, whatever it was called) takes the name.
void kvEditorReactor::saveComplete(AcDbDatabase* db, const ACHAR* actualName) {
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager != nullptr ? manager->curDocument() : nullptr;
    if (document == nullptr || db != document->database()) return;
    kelvo::DocumentRecords& records = kelvo::documentRecords();
    if (records.empty()) return;
    const std::wstring savedName(actualName != nullptr ? actualName : L"");
    const kelvo::DocumentRecord& head = records.head();
    if (head.documentFileName != savedName && kelvo::database::isCurrentConnection(head.connection))
        kelvo::database::closeCurrentDatabase();
    // The saved drawing is now called by that name: its next save under it keeps what
    // it connects to from here on.
    if (kelvo::DocumentRecord* own = records.find(document)) own->documentFileName = savedName;
}

namespace kelvo {
namespace {

std::unique_ptr<kvEditorReactor>& reactor() {
    static std::unique_ptr<kvEditorReactor> instance;
    return instance;
}

}  // namespace

AcEditor* hostEditor() {
    AcRxDictionary* registry = acrxSysRegistry();
    return registry != nullptr ? AcEditor::cast(registry->at(L"AcEditor")) : nullptr;
}

void attachEditorReactor() {
    if (reactor()) return;
    reactor() = std::make_unique<kvEditorReactor>();
    if (AcEditor* editor = hostEditor()) editor->addReactor(reactor().get());
}

void detachEditorReactor() {
    if (!reactor()) return;
    if (AcEditor* editor = hostEditor()) editor->removeReactor(reactor().get());
    reactor().reset();
}

kvEditorReactor* editorReactor() {
    return reactor().get();
}

}  // namespace kelvo
