// A property every fuzz target checks: when it does not hold, the input is printed as a
// finding and the run stops (abort), as a sanitizer's report would stop it.
#pragma once

#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition, what)                                                            \
    do {                                                                                       \
        if (!(condition)) {                                                                    \
            std::fprintf(stderr, "fuzz check failed: %s (%s:%d)\n", what, __FILE__, __LINE__); \
            std::abort();                                                                      \
        }                                                                                      \
    } while (false)
