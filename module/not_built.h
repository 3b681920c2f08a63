// The one callback path of functions that are in the tables but not built yet: the
// call prints "\n<name>: not available in this build" and returns nil. The name comes
// from the function code of the call in progress.
#pragma once

namespace kelvo {

int notBuiltDatabaseFunction();  // through the database per-call guard, like every kv_
int notBuiltGeneralFunction();

}  // namespace kelvo
