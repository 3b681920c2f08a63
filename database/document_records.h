// The per-document records: one for each drawing opened while the module is loaded,
// in the order the drawings opened. The list owns its records.
//
// A record follows its drawing, whatever the drawing is called: it is found by the
// document itself, never by its file name, so saving a drawing under a new name keeps
// its record (the editor reactor notes the new name in it).
#pragma once

#include <list>
#include <string>

#include "database/connection_fwd.h"

class AcApDocument;

namespace kelvo {

// What a drawing connected to: a successful kv_connect made while the drawing is current
// stores the connection, the database's full path (second text) and the read-only flag;
// kv_close_db clears them (database/current_connection.h).
struct DocumentRecord {
    const AcApDocument* document = nullptr;  // the drawing it follows; null once that closed
    std::wstring documentFileName;           // the drawing's file name at its open, then as saved
    CDBConnection* connection = nullptr;     // null until the document connects
    std::wstring secondText;                 // the database path; emptied with the connection
    bool flag = false;                       // the database was opened read-only
};

class DocumentRecords {
public:
    // Appends a record for the current document. False (and nothing added) when the
    // record cannot be made.
    bool addForCurrentDocument();
    // The first record, by design not a search for any particular document. Throws
    // CInvalidArgException* when the list is empty.
    DocumentRecord& head();
    // The record that follows `document`, or null (none for a null document).
    DocumentRecord* find(const AcApDocument* document);
    // The record of the document manager's current document, or null.
    DocumentRecord* findCurrent();
    // The document has closed: no record follows it any more.
    void forget(const AcApDocument* document);
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

// The document manager's current document (null when none).
const AcApDocument* currentDocument();
// The file name of the document manager's current document (empty when none).
std::wstring currentDocumentFileName();

}  // namespace kelvo
