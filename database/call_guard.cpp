// The per-call guard of the database functions.
#include "database/call_guard.h"

#include "acdocman.h"
#include "database/current_connection.h"
#include "database/document_records.h"

namespace kelvo::database {
namespace {

std::wstring& checkedDocument() {
    static std::wstring name;
    return name;
}

}  // namespace

void noteCurrentDocument() {
    // Read in place: the guard runs before every database call, row reads included.
    AcApDocManager* manager = acDocManagerPtr();
    const AcApDocument* document = manager != nullptr ? manager->curDocument() : nullptr;
    const ACHAR* name = document != nullptr ? document->fileName() : nullptr;
    std::wstring& noted = checkedDocument();
    if (name == nullptr) {
        noted.clear();
    } else if (noted != name) {
        noted = name;
    }
}

void checkCurrentDocument() {
    noteCurrentDocument();
    DocumentRecord* record = documentRecords().find(checkedDocument());
    if (record == nullptr || record->secondText.empty()) return;
    if (isCurrentConnection(record->connection)) return;
    const std::wstring path = record->secondText;
    if (connectDatabase(path, record->flag) == ConnectResult::kFailed) {
        record = documentRecords().find(checkedDocument());
        if (record != nullptr) {
            record->connection = nullptr;
            record->secondText.clear();
        }
    }
}

const std::wstring& lastCheckedDocument() {
    return checkedDocument();
}

}  // namespace kelvo::database
