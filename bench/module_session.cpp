// The module loaded into the host runtime for the benchmarks, and its kv_ functions
// called through raw external calls.

#include "bench/module_session.h"

#include <stdexcept>

#include "bench/bench_table.h"
#include "runtime/host.h"
#include "utf8.h"

namespace kelvo::bench {

using host::Host;
using host::RawOutcome;

Chain args(const std::wstring& text) { return Chain(acutBuildList(RTSTR, text.c_str(), 0)); }

Chain args(const std::wstring& first, const std::wstring& second) {
    return Chain(acutBuildList(RTSTR, first.c_str(), RTSTR, second.c_str(), 0));
}

Chain groupCodeArgs(const GroupCode& key) {
    return Chain(acutBuildList(RTLB, RTSTR, key.first.c_str(), RTLONG, key.second, RTLE, 0));
}

ModuleSession::ModuleSession(const std::filesystem::path& folder) {
    Host& host = Host::instance();
    host.setOutput([this](std::wstring_view text) { printed_ += text; });
    host.defineVar(L"ACADPREFIX", lisp::Value::string(L""));
    host.setModuleFolder(folder);
    std::wstring error;
    if (!host.loadModule(L"KelvoBrx15.arx", &error))
        throw std::runtime_error("cannot load the module: " + toUtf8(error));
    host.newDocument();
    takePrinted();
    top_ = function(L"kv_top");
    skip_ = function(L"kv_skip");
    seek_ = function(L"kv_seek");
    sql_ = function(L"kv_sql");
}

ModuleSession::~ModuleSession() {
    Host::instance().shutdown();
    Host::instance().setOutput([](std::wstring_view) {});
}

AcedFunction ModuleSession::function(const std::wstring& name) {
    AcedFunction callback = host::findExternalFunction(name);
    if (!callback) throw std::runtime_error("the module defines no " + toUtf8(name));
    return callback;
}

std::wstring ModuleSession::takePrinted() {
    std::wstring text;
    text.swap(printed_);
    return text;
}

const RawOutcome& ModuleSession::call(const std::wstring& name, const resbuf* arguments,
                                      bool keep) {
    const RawOutcome& outcome = (keep ? keep_ : discard_)(function(name), arguments);
    if (printed_.find(L"not available in this build") != std::wstring::npos)
        throw std::runtime_error(toUtf8(name) + " is not available in this build of the module");
    return outcome;
}

void ModuleSession::expect(const std::wstring& name, const RawOutcome& outcome, short kind) {
    if (outcome.rc == RSRSLT && outcome.kind == kind) return;
    throw std::runtime_error(toUtf8(name) + " failed (result type " +
                             std::to_string(outcome.kind) + "): " + toUtf8(takePrinted()));
}

void ModuleSession::createBenchDatabase(const std::filesystem::path& file) {
    const std::wstring path = file.wstring();
    expect(L"kv_create_db", call(L"kv_create_db", args(path).get()), RTT);
    connect(file);
    for (const std::string& statement : benchTableDdl())
        expect(L"kv_command", call(L"kv_command", args(fromUtf8(statement)).get()), RTLONG);
    call(L"kv_close_db", nullptr);
    takePrinted();
}

void ModuleSession::connect(const std::filesystem::path& file) {
    expect(L"kv_connect", call(L"kv_connect", args(file.wstring()).get()), RTT);
}

void ModuleSession::useTable(const std::wstring& index) {
    expect(L"kv_table", call(L"kv_table", args(L"tblBench", index).get()), RTSTR);
}

std::int64_t ModuleSession::walk() {
    std::int64_t rows = 0;
    for (const RawOutcome* r = &discard_(top_, nullptr); r->kind == RTLB;
         r = &discard_(skip_, nullptr))
        ++rows;
    return rows;
}

std::int64_t ModuleSession::seekNames(const std::vector<std::wstring>& names) {
    std::int64_t found = 0;
    for (const std::wstring& name : names) {
        resbuf argument{};
        argument.restype = RTSTR;
        argument.resval.rstring = const_cast<ACHAR*>(name.c_str());
        found += discard_(seek_, &argument).kind == RTLB;
    }
    return found;
}

std::int64_t ModuleSession::seekGroupCodes(const std::vector<GroupCode>& keys) {
    std::int64_t found = 0;
    for (const GroupCode& key : keys) {
        resbuf nodes[4]{};
        nodes[0].restype = RTLB;
        nodes[1].restype = RTSTR;
        nodes[1].resval.rstring = const_cast<ACHAR*>(key.first.c_str());
        nodes[2].restype = RTLONG;
        nodes[2].resval.rlong = key.second;
        nodes[3].restype = RTLE;
        for (int i = 0; i < 3; ++i) nodes[i].rbnext = &nodes[i + 1];
        found += discard_(seek_, nodes).kind == RTLB;
    }
    return found;
}

std::wstring ModuleSession::selectSql(std::int64_t lastId) {
    return L"SELECT * FROM tblBench WHERE ixBench <= " + std::to_wstring(lastId);
}

std::int64_t ModuleSession::select(std::int64_t lastId) {
    const std::wstring sql = selectSql(lastId);
    resbuf argument{};
    argument.restype = RTSTR;
    argument.resval.rstring = const_cast<ACHAR*>(sql.c_str());
    const RawOutcome& outcome = discard_(sql_, &argument);
    if (outcome.kind != RTLB) return 0;
    // A result list of n records of 12 pairs has 2 + n * (2 + 12 * 5) nodes.
    const std::size_t perRecord = 2 + benchColumns().size() * 5;
    return static_cast<std::int64_t>((outcome.nodes - 2) / perRecord);
}

}  // namespace kelvo::bench
