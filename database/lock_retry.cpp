// Lock conflicts and the wait between attempts.
#include "database/lock_retry.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace kelvo::database {

bool isLockConflict(long daoCode) {
    static constexpr std::array<long, 15> kConflicts = {3009, 3046, 3158, 3164, 3186,
                                                        3187, 3188, 3189, 3202, 3211,
                                                        3212, 3218, 3225, 3260, 3261};
    return std::find(kConflicts.begin(), kConflicts.end(), daoCode) != kConflicts.end();
}

void waitBeforeRetry() {
    std::this_thread::sleep_for(std::chrono::milliseconds(10 + std::rand() % 490));
}

}  // namespace kelvo::database
