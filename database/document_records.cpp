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

std::wstring currentDocumentFileName() {
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager != nullptr ? manager->curDocument() : nullptr;
    const ACHAR* name = document != nullptr ? document->fileName() : nullptr;
    return name != nullptr ? name : L"";
}

bool DocumentRecords::addForCurrentDocument() {
    try {
        DocumentRecord record;
        record.documentFileName = currentDocumentFileName();
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

DocumentRecord* DocumentRecords::find(const std::wstring& documentFileName) {
    for (DocumentRecord& record : records_) {
        if (record.documentFileName == documentFileName) return &record;
    }
    return nullptr;
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
