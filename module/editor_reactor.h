// kvEditorReactor: the module's one editor reactor, attached from module start to
// module stop. It drops the database connection when the drawing that owns it is saved
// under another file name.
#pragma once

#include "aced.h"

class kvEditorReactor : public AcEditorReactor {
public:
    kvEditorReactor() = default;
    ~kvEditorReactor() override;

    // When `db` is the current document's database and the head per-document record's
    // file name differs (case-sensitively) from `actualName`, and that record holds the
    // current connection, runs the inner work of kv_close_db (closes the current
    // connection, empties the current database name and clears the records' hold on it).
    // Then the saved document's own record takes `actualName` as the drawing's file name.
    // With no per-document record at all it does nothing.
    void saveComplete(AcDbDatabase* db, const ACHAR* actualName) override;
};

namespace kelvo {

// The host's editor, from the system registry; null when the host has none.
AcEditor* hostEditor();

}  // namespace kelvo

namespace kelvo {

// Creates the reactor and adds it to the host's editor (once; later calls do nothing).
void attachEditorReactor();
// Removes the reactor from the editor and deletes it (nothing when there is none).
void detachEditorReactor();
// The module's reactor, null outside module start..stop.
kvEditorReactor* editorReactor();

}  // namespace kelvo
