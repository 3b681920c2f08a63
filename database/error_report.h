// The single error report of the database functions, and the module-wide last-error
// text that kv_lastError reads.
//
// The report prints at most one error, for a connection whose error flag is set:
// nothing for DAO error 3021 (no current record: a cursor run past its end is a silent
// nil); for 3043 the two disk-or-network lines; for any other code "\nKelvo Error: "
// and the DAO message. Whenever it runs on a flagged connection it first records the
// last-error text "(code) message", 3021 included. The caller's LISP result is nil.
#pragma once

#include <string>

class CDBConnection;

namespace kelvo::database {

// The report for the current connection (nothing when there is none).
void reportError();
// The report for a given connection (nothing when it is null or its flag is clear).
void reportError(const CDBConnection* connection);
// Records `code` and `message` as the last error and prints them as the report does.
void recordAndPrintError(long code, const std::wstring& message);

// "(code) message" of the last reported error; empty at start and after a reset.
const std::wstring& lastErrorText();
void resetLastErrorText();

}  // namespace kelvo::database
