// The per-document records.
#include "module/document_records.h"

#include <new>

#include "acdocman.h"
#include "afx.h"

namespace kelvo {
namespace {

std::wstring currentDocumentFileName() {
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager != nullptr ? manager->curDocument() : nullptr;
    const ACHAR* name = document != nullptr ? document->fileName() : nullptr;
    return name != nullptr ? name : L"";
}

// Drops the record's hold on its connection. The connection object itself belongs to
// the database layer, which closes it when it drops the current connection.
void releaseConnection(DocumentRecord& record) {
    record.connection = nullptr;
    record.secondText.clear();
}

}  // namespace

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
