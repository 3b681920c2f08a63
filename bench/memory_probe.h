// The process's memory as the benchmarks read it: the allocator's own count of bytes in
// use, and the resident high-water mark of /proc/self/status, which writing "5" to
// /proc/self/clear_refs resets to the current resident size.
#pragma once

#include <cstdint>

namespace kelvo::bench {

// Bytes handed out by malloc and not freed (small blocks and mapped ones).
std::int64_t allocatedBytes();
// VmRSS and VmHWM in bytes; -1 when /proc/self/status cannot be read.
std::int64_t residentBytes();
std::int64_t residentPeakBytes();
// Gives freed memory back to the system, then resets the high-water mark. False when
// the mark cannot be reset (the kernel refuses the write).
bool resetResidentPeak();

}  // namespace kelvo::bench
