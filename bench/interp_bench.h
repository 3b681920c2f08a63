// The interpreter on its own, no module: building a list, mapcar over it, assoc over
// record lists and string work, 100 k elements each, beside a C++ loop doing the
// equivalent work in the same run (for scale: there is no floor for an interpreter).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/timing.h"

namespace lisp {
class Interp;
}

namespace kelvo::bench {

struct InterpResult {
    std::string name;
    std::int64_t elements = 0;
    PairTiming timing;  // floor: the C++ loop; module: the LISP program
};

// Runs each program `rounds` times in alternation with its C++ loop; both must give the
// same count. Throws on a difference.
std::vector<InterpResult> timeInterpreter(lisp::Interp& interp, int rounds);
void printInterpResults(const std::vector<InterpResult>& results);

}  // namespace kelvo::bench
