// The repair of a damaged database: the product's LISP function "compactDatabase",
// which the module calls and does not define. It is expected to compact the file (with
// kv_compact) into a repaired copy that takes the damaged file's place.
#pragma once

#include <string>

namespace kelvo::database {

// Calls (compactDatabase path nil "Repair") through the host. True when the call
// returned normally with a value other than nil.
bool invokeRepair(const std::wstring& path);

}  // namespace kelvo::database
