// The raw SQLite floor of the benchmarks.

#include "bench/raw_floor.h"

#include "utf8.h"

namespace kelvo::bench {

std::size_t consumeList(const resbuf* list) {
    std::size_t n = 0;
    for (; list; list = list->rbnext) ++n;
    return n;
}

RawFloor::RawFloor(const std::filesystem::path& file) : db_(openRaw(file, false)) {
    for (const Column& c : benchColumns())
        columns_ += (columns_.empty() ? "" : ", ") + std::string(c.name);
    const std::string select = "SELECT " + columns_ + " FROM tblBench WHERE ";
    byName_ = prepare(db_.get(), select + "sName = ?1");
    byGroupCode_ = prepare(db_.get(), select + "sGroup = ?1 AND iCode = ?2");
    byId_ = prepare(db_.get(), select + "ixBench = ?1");
}

std::int64_t RawFloor::walk() {
    Statement all = prepare(db_.get(), "SELECT " + columns_ + " FROM tblBench ORDER BY ixBench");
    std::int64_t rows = 0;
    while (sqlite3_step(all.get()) == SQLITE_ROW) {
        ChainBuilder record;
        builder_.appendRow(all.get(), record);
        consumeList(record.head());
        ++rows;
    }
    return rows;
}

namespace {

// Steps a bound lookup; builds, hands on and releases the row's list when found.
bool lookUp(sqlite3_stmt* s, const RecordBuilder& builder) {
    bool found = false;
    if (sqlite3_step(s) == SQLITE_ROW) {
        ChainBuilder record;
        builder.appendRow(s, record);
        consumeList(record.head());
        found = true;
    }
    sqlite3_reset(s);
    return found;
}

void bindName(sqlite3_stmt* s, const std::wstring& name) {
    const std::string text = toUtf8(name);
    sqlite3_bind_text(s, 1, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void bindGroupCode(sqlite3_stmt* s, const GroupCode& key) {
    const std::string group = toUtf8(key.first);
    sqlite3_bind_text(s, 1, group.data(), static_cast<int>(group.size()), SQLITE_TRANSIENT);
    sqlite3_bind_int(s, 2, key.second);
}

}  // namespace

std::int64_t RawFloor::seekNames(const std::vector<std::wstring>& names) {
    std::int64_t found = 0;
    for (const std::wstring& name : names) {
        bindName(byName_.get(), name);
        found += lookUp(byName_.get(), builder_);
    }
    return found;
}

std::int64_t RawFloor::seekGroupCodes(const std::vector<GroupCode>& keys) {
    std::int64_t found = 0;
    for (const GroupCode& key : keys) {
        bindGroupCode(byGroupCode_.get(), key);
        found += lookUp(byGroupCode_.get(), builder_);
    }
    return found;
}

std::int64_t RawFloor::select(std::int64_t lastId) {
    std::int64_t rows = 0;
    acutRelRb(resultList(lastId, &rows));
    return rows;
}

resbuf* RawFloor::resultList(std::int64_t lastId, std::int64_t* rowCount) {
    Statement rows = prepare(db_.get(), "SELECT " + columns_ +
                                            " FROM tblBench WHERE ixBench <= ?1 ORDER BY ixBench");
    sqlite3_bind_int64(rows.get(), 1, lastId);
    ChainBuilder out;
    out.add(RTLB);
    std::int64_t n = 0;
    for (; sqlite3_step(rows.get()) == SQLITE_ROW; ++n) builder_.appendRow(rows.get(), out);
    out.add(RTLE);
    consumeList(out.head());
    if (rowCount) *rowCount = n;
    return out.release();
}

resbuf* RawFloor::keepOne(sqlite3_stmt* s) {
    resbuf* list = nullptr;
    if (sqlite3_step(s) == SQLITE_ROW) {
        ChainBuilder record;
        builder_.appendRow(s, record);
        list = record.release();
    }
    sqlite3_reset(s);
    return list;
}

resbuf* RawFloor::recordById(std::int64_t id) {
    sqlite3_bind_int64(byId_.get(), 1, id);
    return keepOne(byId_.get());
}

resbuf* RawFloor::recordByName(const std::wstring& name) {
    bindName(byName_.get(), name);
    return keepOne(byName_.get());
}

resbuf* RawFloor::recordByGroupCode(const GroupCode& key) {
    bindGroupCode(byGroupCode_.get(), key);
    return keepOne(byGroupCode_.get());
}

}  // namespace kelvo::bench
