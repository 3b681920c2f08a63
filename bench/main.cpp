// kelvo-bench: the database functions of the module against the raw SQLite floor, on the
// same file and rows, measured at the callback boundary.
//
//   kelvo-bench [--sizes 10000,100000,1000000] [--rounds N]
//               [--only walk|seek|select|lisp|interp] [--lisp-select-rows N]
//               [--data DIR] [--fresh]
//   kelvo-bench --check [--sizes 3000]
//
// For each table size it makes (or reuses) a file with tblBench, proves that the module
// and the floor build the same record lists, then times: a walk (kv_top, then kv_skip to
// the end), seeks on a one- and a two-column index (kv_seek), and a select of up to 100 k
// rows (kv_sql). It prints each ratio against its target, and the growth of the module's
// costs from the smallest table to the largest. Then the same walk, seeks and select as
// LISP programs through the host's interpreter, beside the callbacks and the floor, with
// the memory of a select kept as a LISP list (up to --lisp-select-rows rows, 100 k by
// default: a larger select through LISP needs gigabytes today); and, once, the interpreter
// alone on 100 k-element lists. --check compares lists only and runs each LISP program
// once, checking its counts, with no timing.
// Exit status: 0 when it ran (targets missed or not), 1 on a difference or an error.

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/bench_table.h"
#include "bench/interp_bench.h"
#include "bench/lisp_bench.h"
#include "bench/lisp_session.h"
#include "bench/list_check.h"
#include "bench/module_session.h"
#include "bench/raw_floor.h"
#include "bench/timing.h"
#include "utf8.h"

namespace kelvo::bench {
namespace {

constexpr double kWalkTarget = 2.0;
constexpr double kSeekTarget = 2.0;
constexpr double kSelectTarget = 1.5;
constexpr double kGrowthTarget = 1.5;
constexpr std::int64_t kSelectRows = 100000;
constexpr int kSeeks = 20000;

struct Options {
    std::vector<std::int64_t> sizes;
    int rounds = 0;   // 0: by table size
    std::int64_t lispSelectRows = kSelectRows;
    std::filesystem::path data;
    bool fresh = false;
    bool check = false;
    std::string only;  // one kind of benchmark (for profiling), or all when empty
    bool runs(const char* kind) const { return only.empty() || only == kind; }
};

[[noreturn]] void usage(const char* problem) {
    std::fprintf(stderr, "kelvo-bench: %s\n"
                 "usage: kelvo-bench [--sizes N,N...] [--rounds N]\n"
                 "                   [--only walk|seek|select|lisp|interp]\n"
                 "                   [--lisp-select-rows N] [--data DIR] [--fresh] [--check]\n",
                 problem);
    std::exit(2);
}

std::filesystem::path executableFolder() {
    std::error_code ec;
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::current_path() : exe.parent_path();
}

std::vector<std::int64_t> parseSizes(const std::string& text) {
    std::vector<std::int64_t> sizes;
    size_t at = 0;
    while (at <= text.size()) {
        const size_t comma = text.find(',', at);
        const std::string item = text.substr(at, comma == std::string::npos ? std::string::npos : comma - at);
        char* end = nullptr;
        const long long n = std::strtoll(item.c_str(), &end, 10);
        if (item.empty() || *end != '\0' || n < 100 || n > 5000000)
            usage("--sizes takes row counts from 100 to 5000000, separated by commas");
        sizes.push_back(n);
        if (comma == std::string::npos) break;
        at = comma + 1;
    }
    return sizes;
}

Options parseOptions(int argc, char** argv) {
    Options o;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        auto value = [&]() -> std::string {
            if (i + 1 >= argc) usage(("missing value after " + a).c_str());
            return argv[++i];
        };
        if (a == "--sizes") o.sizes = parseSizes(value());
        else if (a == "--rounds") o.rounds = std::atoi(value().c_str());
        else if (a == "--data") o.data = value();
        else if (a == "--fresh") o.fresh = true;
        else if (a == "--check") o.check = true;
        else if (a == "--only") o.only = value();
        else if (a == "--lisp-select-rows") o.lispSelectRows = std::atoll(value().c_str());
        else usage(("unknown option " + a).c_str());
    }
    if (!o.only.empty() && !o.runs("walk") && !o.runs("seek") && !o.runs("select") &&
        !o.runs("lisp") && !o.runs("interp"))
        usage("--only takes walk, seek, select, lisp or interp");
    if (o.lispSelectRows < 1) usage("--lisp-select-rows takes a positive row count");
    if (o.sizes.empty()) o.sizes = o.check ? std::vector<std::int64_t>{3000}
                                           : std::vector<std::int64_t>{10000, 100000, 1000000};
    if (o.data.empty()) o.data = executableFolder() / "bench-data";
    return o;
}

// The cached file of a table size, made when missing or not of that size.
std::filesystem::path benchFile(ModuleSession& module, const Options& o, std::int64_t rows) {
    std::filesystem::create_directories(o.data);
    const auto file = o.data / ("bench-v1-" + std::to_string(rows) + ".mdb");
    if (!o.fresh && countBenchRows(file) == rows) return file;
    std::printf("Making %s (%lld rows).\n", file.c_str(), static_cast<long long>(rows));
    std::fflush(stdout);
    std::filesystem::remove(file);
    const auto start = std::chrono::steady_clock::now();
    module.createBenchDatabase(file);
    fillBenchTable(file, rows);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("Made it in %.1f s.\n", took.count());
    return file;
}

int roundsFor(const Options& o, std::int64_t rows) {
    if (o.rounds > 0) return o.rounds;
    return rows <= 10000 ? 9 : rows <= 100000 ? 5 : 3;
}

bool listsAgree(ModuleSession& module, RawFloor& floor, std::int64_t rows, bool thorough) {
    const auto differences =
        thorough ? compareLists(module, floor, rows, rows, 500, std::min(rows, kSelectRows))
                 : compareLists(module, floor, rows, std::min<std::int64_t>(rows, 200), 50, 200);
    for (const std::string& line : differences)
        std::printf("DIFFERENT %s\n", line.c_str());
    return differences.empty();
}

void timeWalk(ModuleSession& module, RawFloor& floor, std::int64_t rows, int rounds,
              std::vector<Result>& results) {
    module.useTable(L"ixBench");
    results.push_back({"walk (per row)", rows, rows,
                       timePair(rounds, rows, "walk", [&] { return floor.walk(); },
                                [&] { return module.walk(); }),
                       kWalkTarget});
}

void timeSeeks(ModuleSession& module, RawFloor& floor, std::int64_t rows, int rounds,
               std::vector<Result>& results) {
    std::vector<std::wstring> names;
    std::vector<GroupCode> pairs;
    const auto sample = sampleRows(rows, kSeeks);
    for (std::int64_t i : sample) {
        names.push_back(fromUtf8(benchName(i)));
        pairs.push_back({fromUtf8(benchGroup(i)), benchCode(i)});
    }
    const auto seeks = static_cast<std::int64_t>(sample.size());
    module.useTable(fromUtf8(kOneColumnIndex));
    results.push_back({"seek sName", rows, seeks,
                       timePair(rounds, seeks, "seek sName", [&] { return floor.seekNames(names); },
                                [&] { return module.seekNames(names); }),
                       kSeekTarget});
    module.useTable(fromUtf8(kTwoColumnIndex));
    results.push_back({"seek (sGroup, iCode)", rows, seeks,
                       timePair(rounds, seeks, "seek (sGroup, iCode)",
                                [&] { return floor.seekGroupCodes(pairs); },
                                [&] { return module.seekGroupCodes(pairs); }),
                       kSeekTarget});
}

void timeSelect(ModuleSession& module, RawFloor& floor, std::int64_t rows, int rounds,
                std::vector<Result>& results) {
    const std::int64_t selected = std::min(rows, kSelectRows);
    results.push_back({"select " + std::to_string(selected) + " (per row)", rows, selected,
                       timePair(rounds, selected, "select", [&] { return floor.select(selected); },
                                [&] { return module.select(selected); }),
                       kSelectTarget});
}

void timeSize(ModuleSession& module, RawFloor& floor, std::int64_t rows, const Options& o,
              std::vector<Result>& results) {
    const int rounds = roundsFor(o, rows);
    if (o.runs("walk")) timeWalk(module, floor, rows, rounds, results);
    if (o.runs("seek")) timeSeeks(module, floor, rows, rounds, results);
    if (o.runs("select")) timeSelect(module, floor, rows, rounds, results);
    std::printf("Timed the table of %lld rows.\n", static_cast<long long>(rows));
    std::fflush(stdout);
}

int run(const Options& o) {
    ModuleSession module(executableFolder());
    LispSession lisp;
    std::vector<Result> results;
    LispRun lispRun;
    bool agree = true;
    for (std::int64_t rows : o.sizes) {
        const auto file = benchFile(module, o, rows);
        module.connect(file);
        RawFloor floor(file);
        if (!listsAgree(module, floor, rows, o.check)) {
            agree = false;
            continue;
        }
        if (o.check) {
            std::printf("The module's lists equal the floor's on %lld rows.\n",
                        static_cast<long long>(rows));
            runLispSize(module, floor, lisp, rows, o.lispSelectRows, 0, lispRun);
            std::printf("The LISP programs count what the callbacks count on %lld rows.\n",
                        static_cast<long long>(rows));
            continue;
        }
        timeSize(module, floor, rows, o, results);
        if (o.runs("lisp")) {
            runLispSize(module, floor, lisp, rows, o.lispSelectRows,
                        std::min(roundsFor(o, rows), 3), lispRun);
            std::printf("Timed the table of %lld rows through LISP.\n",
                        static_cast<long long>(rows));
            std::fflush(stdout);
        }
    }
    std::vector<InterpResult> interpResults;
    if (agree && (o.check || o.runs("interp")))
        interpResults = timeInterpreter(lisp.interp(), o.check ? 1 : 5);
    if (o.check && agree) std::printf("The interpreter's programs count what C++ counts.\n");
    if (!o.check && !results.empty()) printResults(results, kGrowthTarget);
    if (!o.check && !lispRun.timings.empty()) printLispResults(lispRun);
    if (!o.check && !interpResults.empty()) printInterpResults(interpResults);
    const std::wstring printed = module.takePrinted();
    if (!printed.empty()) std::printf("The module printed:%s\n", toUtf8(printed).c_str());
    return agree ? 0 : 1;
}

}  // namespace
}  // namespace kelvo::bench

int main(int argc, char** argv) {
    const auto options = kelvo::bench::parseOptions(argc, argv);
    try {
        return kelvo::bench::run(options);
    } catch (const std::exception& e) {
        std::fflush(stdout);
        std::fprintf(stderr, "kelvo-bench: %s\n", e.what());
        return 1;
    }
}
