// The raw floor's side of a record list: the same value list the module returns for a
// row ((name . value) pairs in field order, values converted as the module converts
// them), built straight from a SQLite statement's current row with the host's own node
// allocation. Also the comparison that proves the floor builds what the module builds.
#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

#include "adslib.h"
#include "bench/bench_table.h"

namespace kelvo::bench {

// Appends nodes to a value list that it owns until released.
class ChainBuilder {
public:
    ChainBuilder() = default;
    ~ChainBuilder() { acutRelRb(head_); }
    ChainBuilder(const ChainBuilder&) = delete;
    ChainBuilder& operator=(const ChainBuilder&) = delete;

    resbuf* add(short type);        // a new node of that type at the end
    void addString(const std::wstring& text);
    resbuf* head() const { return head_; }
    resbuf* release();              // the list; the builder is empty after

private:
    resbuf* head_ = nullptr;
    resbuf** tail_ = &head_;
};

// The columns of a statement whose result columns are benchColumns(), in order.
class RecordBuilder {
public:
    RecordBuilder();
    // Appends the record list of the statement's current row: RTLB, the pairs, RTLE.
    void appendRow(sqlite3_stmt* row, ChainBuilder& out) const;

private:
    std::vector<std::wstring> names_;
    std::vector<ColumnKind> kinds_;
    std::vector<bool> trims_;
};

// An automation date as the module shows it: "M/D/YYYY h:mm:ss AM", the time left out at
// midnight, the date left out when its day is 0 (12/30/1899).
std::wstring formatAutomationDate(double date);

// Empty when both lists hold the same nodes with the same values; otherwise where and
// how they first differ.
std::string firstDifference(const resbuf* expected, const resbuf* actual);

}  // namespace kelvo::bench
