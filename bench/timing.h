// Timing for the benchmarks: the floor and the module run in alternation, and each keeps
// its best round, so that noise from other processes on the machine counts against
// neither side more than the other. Time is the CPU time of the benchmark's thread (user
// and system), not the wall clock: on a machine shared with other work, the time spent
// waiting for a processor would otherwise swamp what is measured.
#pragma once

#include <time.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelvo::bench {

struct PairTiming {
    double floorSeconds = std::numeric_limits<double>::infinity();
    double moduleSeconds = std::numeric_limits<double>::infinity();
};

inline double threadCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Makes the allocator merge the small blocks freed so far. With glibc's malloc, the next
// request above the small sizes does that merging, for every block freed since the last
// one; done here, outside the timed runs, neither side pays for the other's freed lists.
void settleHeap();

template <typename F>
double secondsOf(F&& run, std::int64_t& count) {
    settleHeap();
    const double start = threadCpuSeconds();
    count = run();
    return threadCpuSeconds() - start;
}

// Runs floor, then module, `rounds` times; both must give `expected` each time.
template <typename Floor, typename Module>
PairTiming timePair(int rounds, std::int64_t expected, const std::string& what, Floor&& floor,
                    Module&& module) {
    PairTiming best;
    for (int r = 0; r < rounds; ++r) {
        std::int64_t got = 0;
        const double f = secondsOf(floor, got);
        if (got != expected)
            throw std::runtime_error(what + ": the floor got " + std::to_string(got) +
                                     " rows, expected " + std::to_string(expected));
        const double m = secondsOf(module, got);
        if (got != expected)
            throw std::runtime_error(what + ": the module got " + std::to_string(got) +
                                     " rows, expected " + std::to_string(expected));
        best.floorSeconds = std::min(best.floorSeconds, f);
        best.moduleSeconds = std::min(best.moduleSeconds, m);
    }
    return best;
}

// One line of the results table.
struct Result {
    std::string name;
    std::int64_t rows = 0;      // rows in the table
    std::int64_t ops = 0;       // rows walked, seeks made or rows selected per round
    PairTiming timing;
    double target = 0;          // highest ratio that passes
    double floorPerOp() const { return timing.floorSeconds / static_cast<double>(ops); }
    double modulePerOp() const { return timing.moduleSeconds / static_cast<double>(ops); }
    double ratio() const { return timing.moduleSeconds / timing.floorSeconds; }
};

// Prints the table of ratios and, when several sizes ran, the growth of the module's
// per-row and per-seek costs from the smallest table to the largest. Returns the number
// of targets missed.
int printResults(const std::vector<Result>& results, double growthTarget);

}  // namespace kelvo::bench
