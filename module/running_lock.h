// The sign that the module is running: a shared lock on the file "TarvikKelvo" in the
// user's runtime folder ($XDG_RUNTIME_DIR, else /tmp/kelvo-<uid>). It is taken at
// module start and held for as long as the process has the module loaded; the lock is
// released when the module is unloaded or the process ends (a crash releases it too).
// Another program tests for a running module by asking for a non-blocking exclusive
// lock on the same file: it is refused while any process holds the shared lock.
#pragma once

#include <filesystem>

namespace kelvo {

// Takes the lock once per load; later calls do nothing. Failure is silent (the lock
// only informs other programs) and reported by the return value.
bool holdRunningLock();

// Where the lock file lives for this user.
std::filesystem::path runningLockPath();

}  // namespace kelvo
