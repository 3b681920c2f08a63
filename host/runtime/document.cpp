// A document: a drawing, its database and its own LISP interpreter.

#include "runtime/commands/command_runner.h"
#include "runtime/host_impl.h"

namespace kelvo::host {

Document::Document(int id, std::wstring fileName)
    : id_(id),
      fileName_(std::move(fileName)),
      db_(std::make_unique<AcDbDatabase>()),
      interp_(std::make_unique<lisp::Interp>(makeInterpIO())) {
    defineHostFunctions(*interp_);
    defineEntityFunctions(*interp_);
    defineCommandFunctions(*interp_);
    defineDictionaryFunctions(*interp_);
}

// A drawing's command line goes with its database.
Document::~Document() { commands::forgetDrawing(db_.get()); }

void Document::setDatabase(std::unique_ptr<AcDbDatabase> db) {
    commands::forgetDrawing(db_.get());
    db_ = std::move(db);
}

namespace {

class DocumentIterator : public AcApDocumentIterator {
public:
    explicit DocumentIterator(std::vector<AcApDocument*> docs) : docs_(std::move(docs)) {}
    bool done() const override { return index_ >= docs_.size(); }
    void step() override { ++index_; }
    AcApDocument* document() override { return done() ? nullptr : docs_[index_]; }

private:
    std::vector<AcApDocument*> docs_;
    size_t index_ = 0;
};

class DocManager : public AcApDocManager {
public:
    AcApDocument* curDocument() const override { return impl().currentDocument(); }
    AcApDocument* mdiActiveDocument() const override { return impl().currentDocument(); }
    int documentCount() const override { return static_cast<int>(impl().documents.size()); }
    AcApDocumentIterator* newAcApDocumentIterator() override {
        std::vector<AcApDocument*> docs;
        for (auto& d : impl().documents) docs.push_back(d.get());
        return new DocumentIterator(std::move(docs));
    }

private:
    static Host::Impl& impl() { return Host::instance().impl(); }
};

}  // namespace

Document* Host::Impl::currentDocument() const {
    if (current < 0 || current >= static_cast<int>(documents.size())) return nullptr;
    return documents[current].get();
}

Document* Host::Impl::findDocument(int id) const {
    for (auto* list : {&documents, &closed})
        for (auto& d : *list)
            if (d->id() == id) return d.get();
    return nullptr;
}

}  // namespace kelvo::host

AcApDocManager* acDocManagerPtr() {
    static kelvo::host::DocManager manager;
    return &manager;
}
