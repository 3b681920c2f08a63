// The per-call guard of the database functions.
#include "database/call_guard.h"

#include "database/current_connection.h"
#include "database/document_records.h"

namespace kelvo::database {

void checkCurrentDocument() {
    const AcApDocument* document = currentDocument();
    DocumentRecord* record = documentRecords().find(document);
    if (record == nullptr || record->secondText.empty()) return;
    if (isCurrentConnection(record->connection)) return;
    const std::wstring path = record->secondText;
    if (connectDatabase(path, record->flag) == ConnectResult::kFailed) {
        // The reconnect may have run LISP (the repair): look the record up again.
        record = documentRecords().find(document);
        if (record != nullptr) {
            record->connection = nullptr;
            record->secondText.clear();
        }
    }
}

}  // namespace kelvo::database
