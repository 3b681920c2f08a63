// The host: command-line output and input, the open documents and the messages that
// opening, switching and closing them send to the loaded modules.
//
// Documents: none -> open [newDocument: kLoadDwgMsg to each module, the new one current]
//   -> closed [closeDocument: made current, kUnloadDwgMsg, removed; kept alive in
//   `closed` until collectClosed(), since LISP code of that document may still be running].

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <unistd.h>

#include "runtime/host_impl.h"
#include "utf8.h"

namespace kelvo::host {

Host& Host::instance() {
    static Host host;
    return host;
}

Host::Host() : impl_(std::make_unique<Impl>()) {
    impl_->ui = makeConsoleUi({}, {});
}

Host::~Host() = default;

void Host::setOutput(std::function<void(std::wstring_view)> sink) {
    impl_->output = std::move(sink);
}

void Host::write(std::wstring_view text) {
    if (text.empty()) return;
    impl_->atLineStart = text.back() == L'\n';
    if (impl_->output) {
        impl_->output(text);
        return;
    }
    std::string bytes = toUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

void Host::freshLine() {
    if (!impl_->atLineStart) write(L"\n");
}

void Host::setInputLines(std::vector<std::wstring> lines) {
    impl_->input.emplace(lines.begin(), lines.end());
}

std::optional<std::wstring> Host::readInputLine(std::wstring_view prompt) {
    write(prompt);
    if (impl_->input) {
        if (impl_->input->empty()) return std::nullopt;
        std::wstring line = std::move(impl_->input->front());
        impl_->input->pop_front();
        write(line + L"\n");   // a transcript shows what was typed
        return line;
    }
    if (!isatty(STDIN_FILENO)) return std::nullopt;
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    return fromUtf8(line);
}

// --- documents -----------------------------------------------------------------------

int Host::newDocument() {
    Impl& s = *impl_;
    std::wstring name = L"Drawing" + std::to_wstring(++s.drawingCounter) + L".dwg";
    s.documents.push_back(std::make_unique<Document>(s.nextDocumentId++, name));
    s.current = static_cast<int>(s.documents.size()) - 1;
    s.sendToModules(AcRx::kLoadDwgMsg);
    return s.current;
}

bool Host::closeDocument(int index) {
    Impl& s = *impl_;
    if (index < 0 || index >= documentCount()) return false;
    s.current = index;
    s.sendToModules(AcRx::kUnloadDwgMsg);
    s.closed.push_back(std::move(s.documents[index]));
    s.documents.erase(s.documents.begin() + index);
    int n = documentCount();
    s.current = n == 0 ? -1 : std::min(index, n - 1);
    return true;
}

bool Host::activateDocument(int index) {
    if (index < 0 || index >= documentCount()) return false;
    impl_->current = index;
    return true;
}

int Host::documentCount() const { return static_cast<int>(impl_->documents.size()); }
int Host::currentIndex() const { return impl_->current; }

lisp::Interp& Host::interp() {
    Document* doc = impl_->currentDocument();
    if (!doc) throw lisp::Error(L"no drawing is open");
    return doc->interp();
}

void Host::collectClosed() { impl_->closed.clear(); }

std::vector<std::pair<int, std::wstring>> Host::definedFunctions() const {
    std::vector<std::pair<int, std::wstring>> out;
    Document* doc = impl_->currentDocument();
    if (!doc) return out;
    for (auto& [key, entry] : doc->functions())
        if (!entry.name.empty()) out.emplace_back(key.second, entry.name);
    std::stable_sort(out.begin(), out.end(),
                     [](auto& a, auto& b) { return a.first < b.first; });
    return out;
}

UiBackend& Host::ui() { return *impl_->ui; }
void Host::setUi(std::unique_ptr<UiBackend> backend) { impl_->ui = std::move(backend); }

void Host::shutdown() {
    freshLine();
    while (documentCount() > 0) closeDocument(documentCount() - 1);
    collectClosed();
    while (!impl_->modules.empty()) {
        LoadedModule& m = *impl_->modules.back();
        impl_->send(m, AcRx::kQuitMsg);
        unloadModule(m.name, nullptr, /*force=*/true);
    }
}

}  // namespace kelvo::host
