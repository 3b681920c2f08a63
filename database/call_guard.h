// The database layer's per-call guard: the one routine that every kv_ callback runs first
// (runDatabaseCall, kv_connect included) and that runs first when a drawing closes.
//
// The database connection is process-wide: the database that is open serves every
// drawing. The per-document records (database/document_records.h) say which drawing
// connected to which database; each record follows its drawing whatever the drawing is
// called. With several drawings open the guard keeps the connection consistent with the
// drawing that is current, by these rules, in order:
//
//   1. Find the current document's record. When there is none, or it names no database
//      (the drawing never connected, or its database was closed with kv_close_db or
//      dropped when it was saved under another name), stop: the current connection,
//      whichever drawing made it, serves as it is.
//   2. When the current connection is the record's connection, stop: the drawing's own
//      connection serves it, open or not (a database that a failed reconnect of kv_sql
//      or a failed kv_connect left closed stays closed, as it would with one drawing).
//   3. Otherwise another drawing has connected elsewhere since, or a drawing's close has
//      dropped the connection: reconnect to the record's database in the record's
//      access, as kv_connect does (a damaged file goes through "compactDatabase" once,
//      and the drawing's open tables are not restored). A failure is reported once and
//      the record forgets its database, so that the next call does not try again.
#pragma once

namespace kelvo::database {

void checkCurrentDocument();

}  // namespace kelvo::database
