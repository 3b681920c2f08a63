// The database layer's per-call guard: runs first in every kv_ callback and in the
// drawing-closed step of the module.
#pragma once

#include <string>

namespace kelvo::database {

// Looks at the document that is current now. Until the connection layer exists it only
// reads the current document and its file name and keeps that name.
//
// What it will enforce once connections exist: the module's current connection always
// belongs to the drawing that is now current. When the current document differs from
// the one the connection was made for, it selects that document's record, drops or
// restores the connection accordingly, and after a "*REPAIR*" open it retries once.
void checkCurrentDocument();

// The file name of the document current at the last checkCurrentDocument (empty when
// no document was current).
const std::wstring& lastCheckedDocument();

}  // namespace kelvo::database
