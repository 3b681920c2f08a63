// The per-document records: one for each drawing opened while the module is loaded,
// in the order the drawings opened. The list owns its records.
#pragma once

#include <list>
#include <string>

#include "database/connection_fwd.h"

namespace kelvo {

struct DocumentRecord {
    std::wstring documentFileName;        // the current document's name at its open
    CDBConnection* connection = nullptr;  // null until the document connects
    std::wstring secondText;              // emptied whenever the connection is dropped
    bool flag = false;
};

class DocumentRecords {
public:
    // Appends a record for the current document. False (and nothing added) when the
    // record cannot be made.
    bool addForCurrentDocument();
    // The first record, by design not a search for any particular document. Throws
    // CInvalidArgException* when the list is empty.
    DocumentRecord& head();
    // Removes the first record (nothing when the list is empty).
    void dropHead();
    // Drops every record, releasing each one's connection.
    void clear();

    bool empty() const { return records_.empty(); }
    std::size_t size() const { return records_.size(); }
    const std::list<DocumentRecord>& records() const { return records_; }

private:
    std::list<DocumentRecord> records_;
};

// The module-wide list.
DocumentRecords& documentRecords();

}  // namespace kelvo
