// The module's side of the benchmarks: the real KelvoBrx15.arx loaded into the host
// runtime with one drawing open, as kelvo-host does, and its kv_ functions called at the
// callback boundary (value lists in and out, no LISP in between).
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "adslib.h"
#include "bench/raw_floor.h"
#include "runtime/bench_call.h"

namespace kelvo::bench {

struct ChainReleaser {
    void operator()(resbuf* list) const noexcept { acutRelRb(list); }
};
using Chain = std::unique_ptr<resbuf, ChainReleaser>;

Chain args(const std::wstring& text);
Chain args(const std::wstring& first, const std::wstring& second);
Chain groupCodeArgs(const GroupCode& key);

class ModuleSession {
public:
    // Loads the module from `folder`. Throws std::runtime_error when it cannot.
    explicit ModuleSession(const std::filesystem::path& folder);
    ~ModuleSession();
    ModuleSession(const ModuleSession&) = delete;
    ModuleSession& operator=(const ModuleSession&) = delete;

    // The callback of a kv_ function. Throws when the module does not define it, or
    // when it answers that it is not available in this build.
    AcedFunction function(const std::wstring& name);

    // Calls `name` once with `arguments`; the result is kept when `keep`.
    const host::RawOutcome& call(const std::wstring& name, const resbuf* arguments,
                                 bool keep = false);
    // What the module printed since the last take, and forget it.
    std::wstring takePrinted();

    // Makes an empty database with tblBench through kv_create_db, kv_connect and
    // kv_command, and closes it. Throws with what the module printed on failure.
    void createBenchDatabase(const std::filesystem::path& file);
    void connect(const std::filesystem::path& file);
    void useTable(const std::wstring& index);

    // The timed operations; each returns the rows it got back.
    std::int64_t walk();
    std::int64_t seekNames(const std::vector<std::wstring>& names);
    std::int64_t seekGroupCodes(const std::vector<GroupCode>& keys);
    std::int64_t select(std::int64_t lastId);

    static std::wstring selectSql(std::int64_t lastId);

private:
    void expect(const std::wstring& name, const host::RawOutcome& outcome, short kind);
    std::wstring printed_;
    host::RawCall discard_{false};
    host::RawCall keep_{true};
    AcedFunction top_ = nullptr, skip_ = nullptr, seek_ = nullptr, sql_ = nullptr;
};

}  // namespace kelvo::bench
