// The per-document records: one for each drawing opened while the module is loaded,
// in the order the drawings opened. The list owns its records.
#pragma once

#include <list>
#include <string>

#include "database/connection_fwd.h"

namespace kelvo {

// What a drawing connected to: a successful kv_connect made while the drawing is current
// stores the connection, the database's full path (second text) and the read-only flag;
// kv_close_db clears them (database/current_connection.h).
struct DocumentRecord {
    std::wstring documentFileName;        // the current document's name at its open
    CDBConnection* connection = nullptr;  // null until the document connects
    std::wstring secondText;              // the database path; emptied with the connection
    bool flag = false;                    // the database was opened read-only
};

class DocumentRecords {
public:
    // Appends a record for the current document. False (and nothing added) when the
    // record cannot be made.
    bool addForCurrentDocument();
    // The first record, by design not a search for any particular document. Throws
    // CInvalidArgException* when the list is empty.
    DocumentRecord& head();
    // The first record of the document of that file name, or null.
    DocumentRecord* find(const std::wstring& documentFileName);
    // Removes the first record (nothing when the list is empty).
    void dropHead();
    // Drops every record, closing each one's connection.
    void clear();

    bool empty() const { return records_.empty(); }
    std::size_t size() const { return records_.size(); }
    const std::list<DocumentRecord>& records() const { return records_; }
    std::list<DocumentRecord>& records() { return records_; }

private:
    std::list<DocumentRecord> records_;
};

// The module-wide list.
DocumentRecords& documentRecords();

// The file name of the document manager's current document (empty when none).
std::wstring currentDocumentFileName();

}  // namespace kelvo
