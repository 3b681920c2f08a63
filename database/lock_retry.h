// The lock-conflict retry of the database writes: an attempt that throws a DAO lock
// conflict (a locked table, record or page, or a user conflict) waits 10 + rand() % 490
// milliseconds and runs again, at most 20 attempts in all. Any other error, or the 20th
// conflict, travels on to the caller as the CDaoException* it is.
#pragma once

#include "dao_exception.h"

namespace kelvo::database {

inline constexpr int kMaxLockAttempts = 20;

// True for the DAO codes 3009, 3046, 3158, 3164, 3186, 3187, 3188, 3189, 3202, 3211,
// 3212, 3218, 3225, 3260 and 3261.
bool isLockConflict(long daoCode);

// Waits before the next attempt: 10 + rand() % 490 milliseconds.
void waitBeforeRetry();

// Runs `attempt` (callable with no arguments) under the retry. Returns the number of
// attempts that were made.
template <typename Attempt>
int runWithLockRetry(Attempt&& attempt) {
    for (int made = 1;; ++made) {
        try {
            attempt();
            return made;
        } catch (CDaoException* error) {
            if (!isLockConflict(error->daoCode()) || made >= kMaxLockAttempts) throw;
            error->Delete();
        }
        waitBeforeRetry();
    }
}

}  // namespace kelvo::database
