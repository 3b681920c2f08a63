// The module's record lists against the floor's, node for node.

#include "bench/list_check.h"

#include "bench/bench_table.h"
#include "utf8.h"

namespace kelvo::bench {

std::vector<std::int64_t> sampleRows(std::int64_t rows, int count) {
    std::vector<std::int64_t> out;
    std::uint64_t x = 0x9E3779B97F4A7C15ull;
    for (int i = 0; i < count; ++i) {
        x = x * 6364136223846793005ull + 1442695040888963407ull;
        out.push_back(1 + static_cast<std::int64_t>((x >> 17) % static_cast<std::uint64_t>(rows)));
    }
    return out;
}

namespace {

class Differences {
public:
    void compare(const std::string& what, resbuf* expected, const resbuf* actual) {
        const std::string difference = firstDifference(expected, actual);
        acutRelRb(expected);
        if (!difference.empty() && lines_.size() < 20)
            lines_.push_back(what + ": " + difference);
    }
    std::vector<std::string> take() { return std::move(lines_); }

private:
    std::vector<std::string> lines_;
};

void compareWalk(ModuleSession& module, RawFloor& floor, std::int64_t rows, Differences& d) {
    module.useTable(L"ixBench");
    const host::RawOutcome* r = &module.call(L"kv_top", nullptr, true);
    for (std::int64_t id = 1; id <= rows; ++id) {
        d.compare("walk, row " + std::to_string(id), floor.recordById(id), r->chain);
        r = &module.call(L"kv_skip", nullptr, true);
    }
}

void compareSeeks(ModuleSession& module, RawFloor& floor, std::int64_t tableRows, int seeks,
                  Differences& d) {
    const auto sample = sampleRows(tableRows, seeks);
    module.useTable(fromUtf8(kOneColumnIndex));
    for (std::int64_t i : sample) {
        const std::wstring name = fromUtf8(benchName(i));
        d.compare("seek " + benchName(i), floor.recordByName(name),
                  module.call(L"kv_seek", args(name).get(), true).chain);
    }
    // Text keys compare without regard to case, as Access compares them.
    const std::wstring lower = fromUtf8("item-") + fromUtf8(benchName(sample[0]).substr(5));
    d.compare("seek in lower case", floor.recordByName(fromUtf8(benchName(sample[0]))),
              module.call(L"kv_seek", args(lower).get(), true).chain);
    d.compare("seek of a missing name", nullptr,
              module.call(L"kv_seek", args(L"NO-SUCH-ITEM").get(), true).chain);

    module.useTable(fromUtf8(kTwoColumnIndex));
    for (std::int64_t i : sample) {
        const GroupCode key{fromUtf8(benchGroup(i)), benchCode(i)};
        d.compare("seek " + benchGroup(i) + "/" + std::to_string(benchCode(i)),
                  floor.recordByGroupCode(key),
                  module.call(L"kv_seek", groupCodeArgs(key).get(), true).chain);
    }
    const GroupCode missing{L"Zone 000", 1 << 30};
    d.compare("seek of a missing pair", nullptr,
              module.call(L"kv_seek", groupCodeArgs(missing).get(), true).chain);
}

}  // namespace

std::vector<std::string> compareLists(ModuleSession& module, RawFloor& floor,
                                      std::int64_t tableRows, std::int64_t walkRows,
                                      int seeks, std::int64_t selectRows) {
    Differences d;
    compareWalk(module, floor, walkRows, d);
    compareSeeks(module, floor, tableRows, seeks, d);
    d.compare("select of " + std::to_string(selectRows) + " rows", floor.resultList(selectRows),
              module.call(L"kv_sql", args(ModuleSession::selectSql(selectRows)).get(), true).chain);
    module.takePrinted();
    return d.take();
}

}  // namespace kelvo::bench
