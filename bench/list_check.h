// Proof that the comparison is fair: the module's lists and the floor's lists for the same
// rows are the same lists, node for node. Run before any timing, and alone with --check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/module_session.h"
#include "bench/raw_floor.h"

namespace kelvo::bench {

// Compares the first `walkRows` records of a walk, `seeks` lookups on each index (and
// one key that is not there), and a select of `selectRows` rows. Returns one line per
// difference found (empty when all agree). The module's cursor is left on tblBench.
std::vector<std::string> compareLists(ModuleSession& module, RawFloor& floor,
                                      std::int64_t tableRows, std::int64_t walkRows,
                                      int seeks, std::int64_t selectRows);

// `count` row numbers from 1..rows, spread over the table, the same every run.
std::vector<std::int64_t> sampleRows(std::int64_t rows, int count);

}  // namespace kelvo::bench
