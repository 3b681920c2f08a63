// The per-document records.
#include "database/document_records.h"

#include <new>

#include "acdocman.h"
#include "afx.h"
#include "database/db_connection.h"

namespace kelvo {
namespace {

// Closes the record's connection and drops its hold on it. The connection object itself
// belongs to the database layer, which deletes it at module unload.
void releaseConnection(DocumentRecord& record) {
    if (record.connection != nullptr) record.connection->close();
    record.connection = nullptr;
    record.secondText.clear();
}

}  // namespace

const AcApDocument* currentDocument() {
    AcApDocManager* manager = acDocManagerPtr();
    return manager != nullptr ? manager->curDocument() : nullptr;
}

std::wstring currentDocumentFileName() {
    const AcApDocument* document = currentDocument();
    const ACHAR* name = document != nullptr ? document->fileName() : nullptr;
    return name != nullptr ? name : L"";
}

bool DocumentRecords::addForCurrentDocument() {
    try {
        DocumentRecord record;
        record.document = currentDocument();
        record.documentFileName = currentDocumentFileName();
        // A drawing that opens now cannot be one an older record still follows: that
        // record's drawing has closed and its document's place was taken.
        forget(record.document);
        records_.push_back(std::move(record));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

DocumentRecord& DocumentRecords::head() {
    if (records_.empty()) throw new CInvalidArgException();
    return records_.front();
}

DocumentRecord* DocumentRecords::find(const AcApDocument* document) {
    if (document == nullptr) return nullptr;
    for (DocumentRecord& record : records_) {
        if (record.document == document) return &record;
    }
    return nullptr;
}

DocumentRecord* DocumentRecords::findCurrent() {
    return find(currentDocument());
}

void DocumentRecords::forget(const AcApDocument* document) {
    if (document == nullptr) return;
    for (DocumentRecord& record : records_) {
        if (record.document == document) record.document = nullptr;
    }
}

void DocumentRecords::dropHead() {
    if (records_.empty()) return;
    records_.front().secondText.clear();
    records_.pop_front();
}

void DocumentRecords::clear() {
    for (DocumentRecord& record : records_) releaseConnection(record);
    records_.clear();
}

DocumentRecords& documentRecords() {
    static DocumentRecords records;
    return records;
}

}  // namespace kelvo
