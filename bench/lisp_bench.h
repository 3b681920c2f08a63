// The walk, seeks and select run three ways in alternation on one table: the raw SQLite
// floor, the module's callbacks (value lists, no LISP) and a LISP program through the
// interpreter; plus the memory of a select kept as a LISP list. Targets are the LISP
// program against the callbacks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/lisp_session.h"
#include "bench/timing.h"

namespace kelvo::bench {

class ModuleSession;
class RawFloor;

struct LispResult {
    std::string name;
    std::int64_t rows = 0;  // rows in the table
    std::int64_t ops = 0;   // rows walked, seeks made or rows selected per round
    double floorSeconds = 0, callbackSeconds = 0, lispSeconds = 0;  // best rounds
    double target = 0;  // highest LISP / callback ratio that passes
    double perOp(double seconds) const { return seconds / static_cast<double>(ops); }
    double ratio() const { return lispSeconds / callbackSeconds; }
};

struct LispRun {
    std::vector<LispResult> timings;
    std::vector<SelectMemory> selects;
};

// Times the three sides on the open table (the module connected to it, the floor
// reading it). `selectRows` caps the rows selected. With `rounds` 0, checks only: each
// side once, and the counts must agree (throws when they do not).
void runLispSize(ModuleSession& module, RawFloor& floor, LispSession& lisp, std::int64_t rows,
                 std::int64_t selectRows, int rounds, LispRun& run);

// Prints the table, the memory of the selects and the growth per row from the smallest
// table to the largest. Returns the number of targets missed.
int printLispResults(const LispRun& run);

}  // namespace kelvo::bench
