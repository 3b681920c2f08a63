// The pure-interpreter benchmarks.

#include "bench/interp_bench.h"

#include <algorithm>
#include <cstdio>
#include <cwctype>
#include <forward_list>
#include <stdexcept>
#include <utility>

#include "bench/bench_table.h"
#include "lisp/interp.h"
#include "utf8.h"

namespace kelvo::bench {

namespace {

constexpr std::int64_t kElements = 100000;
constexpr std::int64_t kRecords = 1000;  // assoc: kElements / kRecords passes over them

std::int64_t lispCount(lisp::Interp& interp, const std::wstring& source) {
    const lisp::Value v = interp.evalString(source);
    if (v.type() != lisp::Type::Int)
        throw std::runtime_error("the LISP program gave " + toUtf8(lisp::Interp::prin1String(v)) +
                                 ": " + toUtf8(source));
    return v.asInt();
}

// The record lists assoc searches: kRecords lists of the benchmark table's column names,
// each paired with a short string; the name looked up is the last one.
using Record = std::vector<std::pair<std::wstring, std::wstring>>;

std::vector<Record> makeRecords() {
    std::vector<Record> records(kRecords);
    for (std::int64_t i = 0; i < kRecords; ++i)
        for (const Column& c : benchColumns())
            records[i].emplace_back(fromUtf8(c.name), L"v" + std::to_wstring(i));
    return records;
}

std::wstring recordsAsLisp(const std::vector<Record>& records) {
    std::wstring source = L"(setq bench-recs (list";
    for (const Record& r : records) {
        source += L" (list";
        for (const auto& [key, value] : r) source += L" (cons \"" + key + L"\" \"" + value + L"\")";
        source += L")";
    }
    return source + L"))";
}

template <typename T>
void keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

}  // namespace

std::vector<InterpResult> timeInterpreter(lisp::Interp& interp, int rounds) {
    std::vector<InterpResult> results;
    auto time = [&](const std::string& name, auto&& cpp, const std::wstring& program) {
        results.push_back({name, kElements, timePair(rounds, kElements, name, cpp, [&] {
                               return lispCount(interp, program);
                           })});
    };

    const std::wstring n = std::to_wstring(kElements);
    time(
        "cons a list",
        [] {
            std::forward_list<int> list;
            for (int i = 0; i < kElements; ++i) list.push_front(i);
            keep(list);
            return static_cast<std::int64_t>(std::distance(list.begin(), list.end()));
        },
        L"(progn (setq bench-l nil bench-i 0)"
        L" (repeat " +
            n +
            L" (setq bench-l (cons bench-i bench-l) bench-i (1+ bench-i)))"
            L" (length bench-l))");

    std::vector<int> numbers(kElements);
    for (int i = 0; i < kElements; ++i) numbers[i] = i;
    interp.evalString(L"(setq bench-l nil bench-i " + n +
                      L")"
                      L"(repeat " +
                      n + L" (setq bench-i (1- bench-i) bench-l (cons bench-i bench-l)))");
    time(
        "mapcar (lambda)",
        [&] {
            std::vector<int> out(numbers.size());
            std::transform(numbers.begin(), numbers.end(), out.begin(),
                           [](int x) { return x * 2 + 1; });
            keep(out);
            return static_cast<std::int64_t>(out.size());
        },
        L"(length (mapcar '(lambda (x) (+ (* x 2) 1)) bench-l))");

    const std::vector<Record> records = makeRecords();
    interp.evalString(recordsAsLisp(records));
    const std::wstring lastKey = records.front().back().first;
    time(
        "assoc, 12-pair records",
        [&] {
            std::int64_t found = 0;
            for (std::int64_t pass = 0; pass < kElements / kRecords; ++pass)
                for (const Record& r : records) {
                    const auto at = std::find_if(r.begin(), r.end(),
                                                 [&](const auto& p) { return p.first == lastKey; });
                    found += at != r.end();
                    keep(at);
                }
            return found;
        },
        L"(progn (setq bench-n 0) (repeat " + std::to_wstring(kElements / kRecords) +
            L" (foreach r bench-recs (if (assoc \"" + lastKey +
            L"\" r) (setq bench-n (1+ bench-n))))) bench-n)");

    time(
        "strcat, itoa, substr, strcase",
        [&] {
            std::int64_t ok = 0;
            for (int i : numbers) {
                std::wstring s = L"row-" + std::to_wstring(i) + L"-x";
                std::transform(s.begin(), s.end(), s.begin(),
                               [](wchar_t c) { return std::towupper(c); });
                ok += s.substr(2, 4).size() == 4;
                keep(s);
            }
            return ok;
        },
        L"(progn (setq bench-n 0)"
        L" (foreach i bench-l (setq bench-s (strcase (strcat \"row-\" (itoa i) \"-x\")))"
        L" (if (= (strlen (substr bench-s 3 4)) 4) (setq bench-n (1+ bench-n))))"
        L" bench-n)");

    interp.evalString(L"(setq bench-l nil bench-recs nil bench-s nil)");
    return results;
}

void printInterpResults(const std::vector<InterpResult>& results) {
    std::printf("\n%-32s %9s %12s %12s %9s\n", "interpreter alone", "elements", "C++/elem",
                "LISP/elem", "LISP/C++");
    for (const InterpResult& r : results) {
        const double e = static_cast<double>(r.elements);
        std::printf("%-32s %9lld %9.3f us %9.3f us %8.0fx\n", r.name.c_str(),
                    static_cast<long long>(r.elements), r.timing.floorSeconds / e * 1e6,
                    r.timing.moduleSeconds / e * 1e6,
                    r.timing.moduleSeconds / r.timing.floorSeconds);
    }
    std::printf("(no target: the C++ loop gives the scale of the same work, not a floor)\n");
}

}  // namespace kelvo::bench
