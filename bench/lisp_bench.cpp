// The module's functions through LISP, beside the callbacks and the floor.

#include "bench/lisp_bench.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <stdexcept>

#include "bench/bench_table.h"
#include "bench/list_check.h"
#include "bench/module_session.h"
#include "bench/raw_floor.h"
#include "utf8.h"

namespace kelvo::bench {

namespace {

constexpr double kLispTarget = 1.5;        // LISP walk, seek and select against callbacks
constexpr double kPeakTarget = 2.0;        // a select's peak against its final list
constexpr double kRowBytesTarget = 1024;   // final list per 12-column row
constexpr double kLispGrowthTarget = 1.3;  // cost per row, smallest table to largest
constexpr int kSeeks = 20000;

template <typename Floor, typename Callback, typename Lisp>
void timeThree(LispResult& r, int rounds, Floor&& floor, Callback&& callback, Lisp&& lisp) {
    const double inf = std::numeric_limits<double>::infinity();
    r.floorSeconds = r.callbackSeconds = r.lispSeconds = inf;
    auto check = [&](const char* side, std::int64_t got) {
        if (got != r.ops)
            throw std::runtime_error(r.name + ": " + side + " got " + std::to_string(got) +
                                     ", expected " + std::to_string(r.ops));
    };
    for (int i = 0; i < std::max(rounds, 1); ++i) {
        std::int64_t got = 0;
        r.floorSeconds = std::min(r.floorSeconds, secondsOf(floor, got));
        check("the floor", got);
        r.callbackSeconds = std::min(r.callbackSeconds, secondsOf(callback, got));
        check("the callbacks", got);
        r.lispSeconds = std::min(r.lispSeconds, secondsOf(lisp, got));
        check("the LISP program", got);
    }
}

std::string perOp(double seconds) {
    char text[32];
    if (seconds < 1e-3)
        std::snprintf(text, sizeof text, "%.2f us", seconds * 1e6);
    else
        std::snprintf(text, sizeof text, "%.2f ms", seconds * 1e3);
    return text;
}

const char* verdict(bool pass) {
    return pass ? "PASS" : "MISS";
}

}  // namespace

void runLispSize(ModuleSession& module, RawFloor& floor, LispSession& lisp, std::int64_t rows,
                 std::int64_t selectRows, int rounds, LispRun& run) {
    auto add = [&](std::string name, std::int64_t ops) -> LispResult& {
        run.timings.push_back({std::move(name), rows, ops, 0, 0, 0, kLispTarget});
        return run.timings.back();
    };

    module.useTable(L"ixBench");
    lisp.useTable(L"ixBench");
    timeThree(
        add("LISP walk (per row)", rows), rounds, [&] { return floor.walk(); },
        [&] { return module.walk(); }, [&] { return lisp.walk(); });

    std::vector<std::wstring> names;
    std::vector<GroupCode> pairs;
    const auto sample = sampleRows(rows, kSeeks);
    for (std::int64_t i : sample) {
        names.push_back(fromUtf8(benchName(i)));
        pairs.push_back({fromUtf8(benchGroup(i)), benchCode(i)});
    }
    lisp.setNames(names);
    lisp.setGroupCodes(pairs);
    const auto seeks = static_cast<std::int64_t>(sample.size());
    module.useTable(fromUtf8(kOneColumnIndex));
    lisp.useTable(fromUtf8(kOneColumnIndex));
    timeThree(
        add("LISP seek sName", seeks), rounds, [&] { return floor.seekNames(names); },
        [&] { return module.seekNames(names); }, [&] { return lisp.seekNames(); });
    module.useTable(fromUtf8(kTwoColumnIndex));
    lisp.useTable(fromUtf8(kTwoColumnIndex));
    timeThree(
        add("LISP seek (sGroup, iCode)", seeks), rounds,
        [&] { return floor.seekGroupCodes(pairs); }, [&] { return module.seekGroupCodes(pairs); },
        [&] { return lisp.seekGroupCodes(); });
    lisp.setNames({});
    lisp.setGroupCodes({});

    const std::int64_t selected = std::min(rows, selectRows);
    timeThree(
        add("LISP select " + std::to_string(selected) + " (per row)", selected), rounds,
        [&] { return floor.select(selected); }, [&] { return module.select(selected); },
        [&] { return lisp.select(selected); });
    SelectMemory memory = lisp.selectMemory(selected);
    if (memory.rows != selected)
        throw std::runtime_error("the kept LISP select has " + std::to_string(memory.rows) +
                                 " rows, expected " + std::to_string(selected));
    run.selects.push_back(memory);
}

int printLispResults(const LispRun& run) {
    int missed = 0;
    std::printf("\n%-32s %9s %9s %11s %11s %11s %8s %7s %7s\n", "through the interpreter", "rows",
                "ops/round", "floor/op", "callback/op", "LISP/op", "LISP/cb", "target", "result");
    for (const LispResult& r : run.timings) {
        std::printf("%-32s %9lld %9lld %11s %11s %11s %7.2fx %6.2fx %7s\n", r.name.c_str(),
                    static_cast<long long>(r.rows), static_cast<long long>(r.ops),
                    perOp(r.perOp(r.floorSeconds)).c_str(),
                    perOp(r.perOp(r.callbackSeconds)).c_str(),
                    perOp(r.perOp(r.lispSeconds)).c_str(), r.ratio(), r.target,
                    verdict(r.ratio() <= r.target));
        missed += r.ratio() > r.target;
    }

    std::printf("\n%-22s %12s %12s %8s %7s %12s %7s %9s %9s %9s\n", "memory of a LISP select",
                "peak/row", "list/row", "peak/lst", "target", "list target", "result", "conses/r",
                "strings/r", "chars/r");
    for (const SelectMemory& m : run.selects) {
        const double rows = static_cast<double>(m.rows);
        const double peak = static_cast<double>(m.peakBytes) / rows;
        const double list = static_cast<double>(m.listBytes) / rows;
        const bool peakPass = m.peakBytes >= 0 && m.peakBytes <= kPeakTarget * m.listBytes;
        const bool listPass = list <= kRowBytesTarget;
        char name[40];
        std::snprintf(name, sizeof name, "select %lld rows", static_cast<long long>(m.rows));
        char peakText[24] = "unknown";
        if (m.peakBytes >= 0) std::snprintf(peakText, sizeof peakText, "%.0f B", peak);
        std::printf("%-22s %12s %10.0f B %7.2fx %6.1fx %9.0f B %4s/%-4s %9.1f %9.1f %9.1f\n", name,
                    peakText, list, peak / list, kPeakTarget, kRowBytesTarget, verdict(peakPass),
                    verdict(listPass), static_cast<double>(m.census.conses) / rows,
                    static_cast<double>(m.census.strings) / rows,
                    static_cast<double>(m.census.characters) / rows);
        missed += !peakPass + !listPass;
    }
    std::printf(
        "(peak: the resident high-water mark above the resident size before the select,\n"
        " the final list included; list: the allocator's bytes in use (mallinfo2) while\n"
        " the list is kept, above before; conses and strings counted by walking it)\n");

    std::map<std::string, std::vector<const LispResult*>> byKind;
    for (const LispResult& r : run.timings)
        byKind[r.name.rfind("LISP select", 0) == 0 ? "LISP select (per row)" : r.name].push_back(
            &r);
    bool header = false;
    for (auto& [name, runs] : byKind) {
        if (runs.size() < 2) continue;
        auto [small, large] = std::minmax_element(runs.begin(), runs.end(),
                                                  [](auto a, auto b) { return a->rows < b->rows; });
        if ((*small)->rows == (*large)->rows) continue;
        if (!header) {
            std::printf("\n%-32s %18s %10s %10s %7s %7s\n", "growth of the LISP cost per op",
                        "from -> to rows", "LISP", "callback", "target", "result");
            header = true;
        }
        const double growth =
            (*large)->perOp((*large)->lispSeconds) / (*small)->perOp((*small)->lispSeconds);
        const double callbackGrowth =
            (*large)->perOp((*large)->callbackSeconds) / (*small)->perOp((*small)->callbackSeconds);
        char span[40];
        std::snprintf(span, sizeof span, "%lld -> %lld", static_cast<long long>((*small)->rows),
                      static_cast<long long>((*large)->rows));
        std::printf("%-32s %18s %9.2fx %9.2fx %6.2fx %7s\n", name.c_str(), span, growth,
                    callbackGrowth, kLispGrowthTarget, verdict(growth <= kLispGrowthTarget));
        missed += growth > kLispGrowthTarget;
    }
    std::printf("\n%d interpreter-level target%s missed.\n", missed, missed == 1 ? "" : "s");
    return missed;
}

}  // namespace kelvo::bench
