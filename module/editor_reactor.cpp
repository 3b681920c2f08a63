// The editor reactor and its attachment to the host's editor.
#include "module/editor_reactor.h"

#include <memory>

kvEditorReactor::~kvEditorReactor() = default;

void kvEditorReactor::saveComplete(AcDbDatabase* /*db*/, const ACHAR* /*actualName*/) {}

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
