// The results table of the benchmarks.

#include "bench/timing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace kelvo::bench {

void settleHeap() {
    static void* volatile block;
    block = std::malloc(4096);
    std::free(block);
}

namespace {

std::string perOp(double seconds) {
    char text[32];
    if (seconds < 1e-3) std::snprintf(text, sizeof text, "%.2f us", seconds * 1e6);
    else std::snprintf(text, sizeof text, "%.2f ms", seconds * 1e3);
    return text;
}

const char* verdict(double ratio, double target) { return ratio <= target ? "PASS" : "MISS"; }

int printGrowth(const std::vector<Result>& results, double target) {
    std::map<std::string, std::vector<const Result*>> byName;
    for (const Result& r : results) byName[r.name].push_back(&r);
    int missed = 0;
    bool header = false;
    for (auto& [name, runs] : byName) {
        if (runs.size() < 2 || name.rfind("select", 0) == 0) continue;
        auto [small, large] = std::minmax_element(runs.begin(), runs.end(), [](auto a, auto b) {
            return a->rows < b->rows;
        });
        if (!header) {
            std::printf("\n%-28s %18s %12s %12s %7s %7s\n", "growth of the cost per row",
                        "from -> to rows", "module", "floor", "target", "result");
            header = true;
        }
        const double growth = (*large)->modulePerOp() / (*small)->modulePerOp();
        const double floorGrowth = (*large)->floorPerOp() / (*small)->floorPerOp();
        char span[40];
        std::snprintf(span, sizeof span, "%lld -> %lld", static_cast<long long>((*small)->rows),
                      static_cast<long long>((*large)->rows));
        std::printf("%-28s %18s %11.2fx %11.2fx %6.2fx %7s\n", name.c_str(), span, growth,
                    floorGrowth, target, verdict(growth, target));
        missed += growth > target;
    }
    return missed;
}

}  // namespace

int printResults(const std::vector<Result>& results, double growthTarget) {
    std::printf("\n%-28s %9s %9s %11s %11s %7s %7s %7s\n", "benchmark", "rows", "ops/round",
                "floor/op", "module/op", "ratio", "target", "result");
    int missed = 0;
    for (const Result& r : results) {
        std::printf("%-28s %9lld %9lld %11s %11s %6.2fx %6.2fx %7s\n", r.name.c_str(),
                    static_cast<long long>(r.rows), static_cast<long long>(r.ops),
                    perOp(r.floorPerOp()).c_str(), perOp(r.modulePerOp()).c_str(), r.ratio(),
                    r.target, verdict(r.ratio(), r.target));
        missed += r.ratio() > r.target;
    }
    missed += printGrowth(results, growthTarget);
    std::printf("\n%d target%s missed.\n", missed, missed == 1 ? "" : "s");
    return missed;
}

}  // namespace kelvo::bench
