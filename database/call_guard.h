// The database layer's per-call guard: it runs first in every kv_ callback
// (runDatabaseCall) and, in its note-only form, when a drawing closes.
//
// The database connection is process-wide: the database that is open serves every
// drawing. The per-document records (database/document_records.h) say which drawing
// connected to which database. With several drawings open the guard keeps the
// connection consistent with the drawing that is current, by these rules, in order:
//
//   1. Note the current document's file name.
//   2. Find the current document's record (the first record of that file name). When
//      there is none, or it names no database (the drawing never connected, or its
//      database was closed with kv_close_db or dropped when it was saved under another
//      name), stop: the current connection, whichever drawing made it, serves as it is.
//   3. When the current connection is the record's connection, stop: the drawing's own
//      connection serves it, open or not (a database that a failed reconnect of kv_sql
//      left closed stays closed, as it would with one drawing).
//   4. Otherwise another drawing has connected elsewhere since, or a drawing's close has
//      dropped the connection: reconnect to the record's database in the record's
//      access, as kv_connect does (a damaged file goes through "compactDatabase" once,
//      and the drawing's open tables are not restored). A failure is reported once and
//      the record forgets its database, so that the next call does not try again.
//
// kv_connect runs only rule 1 (it replaces the connection anyway), and so does the
// drawing-closed step (the closing drawing's database is closed right after).
#pragma once

#include <string>

namespace kelvo::database {

// The full guard: rules 1 to 4.
void checkCurrentDocument();

// Rule 1 only.
void noteCurrentDocument();

// The file name of the document current at the last check (empty when no document was
// current).
const std::wstring& lastCheckedDocument();

}  // namespace kelvo::database
