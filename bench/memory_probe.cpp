// Reading the allocator's statistics and the process's resident memory.

#include "bench/memory_probe.h"

#include <malloc.h>

#include <fstream>
#include <string>

namespace kelvo::bench {

namespace {

std::int64_t statusField(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    const std::string prefix = std::string(field) + ":";
    while (std::getline(status, line)) {
        if (line.rfind(prefix, 0) != 0) continue;
        return std::stoll(line.substr(prefix.size())) * 1024;  // given in kB
    }
    return -1;
}

}  // namespace

std::int64_t allocatedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

std::int64_t residentBytes() {
    return statusField("VmRSS");
}
std::int64_t residentPeakBytes() {
    return statusField("VmHWM");
}

bool resetResidentPeak() {
    malloc_trim(0);
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5";
    clear.flush();
    return static_cast<bool>(clear);
}

}  // namespace kelvo::bench
