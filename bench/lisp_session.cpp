// The module's kv_ functions called from LISP programs through the host's interpreter.

#include "bench/lisp_session.h"

#include <stdexcept>

#include "bench/memory_probe.h"
#include "bench/module_session.h"
#include "lisp/interp.h"
#include "runtime/host.h"
#include "utf8.h"

namespace kelvo::bench {

namespace {

void visit(const lisp::Value& value, ListCensus& census) {
    lisp::Value at = value;
    while (at.isCons()) {
        ++census.conses;
        visit(at.car(), census);
        at = at.cdr();
    }
    switch (at.type()) {
        case lisp::Type::Nil:
            break;
        case lisp::Type::Str:
            ++census.strings;
            census.characters += static_cast<std::int64_t>(at.asString().size());
            break;
        case lisp::Type::Int:
        case lisp::Type::Real:
            ++census.numbers;
            break;
        default:
            ++census.others;
            break;
    }
}

}  // namespace

ListCensus censusOf(const lisp::Value& list) {
    ListCensus census;
    visit(list, census);
    return census;
}

LispSession::LispSession() : interp_(&host::Host::instance().interp()) {}

std::int64_t LispSession::count(const std::wstring& source) {
    const lisp::Value v = interp_->evalString(source);
    if (v.type() != lisp::Type::Int)
        throw std::runtime_error("the LISP program gave " + toUtf8(lisp::Interp::prin1String(v)) +
                                 ", not a count: " + toUtf8(source));
    return v.asInt();
}

void LispSession::useTable(const std::wstring& index) {
    const lisp::Value v = interp_->evalString(L"(kv_table \"tblBench\" \"" + index + L"\")");
    if (v.type() != lisp::Type::Str)
        throw std::runtime_error("(kv_table) from LISP gave " +
                                 toUtf8(lisp::Interp::prin1String(v)));
}

void LispSession::setNames(const std::vector<std::wstring>& names) {
    std::vector<lisp::Value> items;
    items.reserve(names.size());
    for (const std::wstring& name : names) items.push_back(lisp::Value::string(name));
    interp_->setGlobal(L"bench-names", lisp::Value::list(items));
}

void LispSession::setGroupCodes(const std::vector<GroupCode>& keys) {
    std::vector<lisp::Value> items;
    items.reserve(keys.size());
    for (const GroupCode& key : keys)
        items.push_back(
            lisp::Value::list({lisp::Value::string(key.first), lisp::Value::integer(key.second)}));
    interp_->setGlobal(L"bench-keys", lisp::Value::list(items));
}

std::int64_t LispSession::walk() {
    return count(
        L"(progn (setq bench-n 0 bench-r (kv_top))"
        L" (while bench-r (setq bench-n (1+ bench-n) bench-r (kv_skip)))"
        L" bench-n)");
}

std::int64_t LispSession::seekNames() {
    return count(
        L"(progn (setq bench-n 0)"
        L" (foreach k bench-names (if (kv_seek k) (setq bench-n (1+ bench-n))))"
        L" bench-n)");
}

std::int64_t LispSession::seekGroupCodes() {
    return count(
        L"(progn (setq bench-n 0)"
        L" (foreach k bench-keys (if (kv_seek k) (setq bench-n (1+ bench-n))))"
        L" bench-n)");
}

std::int64_t LispSession::select(std::int64_t lastId) {
    return count(L"(length (kv_sql \"" + ModuleSession::selectSql(lastId) + L"\"))");
}

SelectMemory LispSession::selectMemory(std::int64_t lastId) {
    SelectMemory m;
    interp_->setGlobal(L"bench-rows", lisp::Value());
    const bool peakKnown = resetResidentPeak();
    const std::int64_t residentBefore = residentBytes();
    const std::int64_t allocatedBefore = allocatedBytes();
    m.rows =
        count(L"(length (setq bench-rows (kv_sql \"" + ModuleSession::selectSql(lastId) + L"\")))");
    if (peakKnown && residentBefore >= 0) m.peakBytes = residentPeakBytes() - residentBefore;
    m.listBytes = allocatedBytes() - allocatedBefore;
    m.census = censusOf(interp_->getGlobal(L"bench-rows"));
    interp_->setGlobal(L"bench-rows", lisp::Value());
    return m;
}

}  // namespace kelvo::bench
