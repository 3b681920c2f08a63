// A cursor over one table in the order of its current index (row id order without one).
//
// It keeps the current record's key (the index fields and the row id) and reads ahead
// from it in short batches: each batch is one run of a prepared statement that starts
// after the key (`WHERE k1 IS ?1 AND k2 > ?2 ORDER BY k1, k2, rowid` and its kin, one
// statement per key level, so every step is an index range scan), and the statement is
// reset at once, so no read transaction outlives the call. Moving serves rows from the
// batch while it is fresh: no write through this connection since it was read, and the
// file's change counter unchanged (no other connection or process committed since), so
// a move always gives the record as committed when it is made; otherwise it reads the
// next batch from the current key. Batches start small and
// double while moves go on in one direction. Seeks are `=` lookups on the index, bookmarks
// are row ids, and the record count is kept until the file changes.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "dao_cursor.h"
#include "row_store.h"
#include "sqlite_statement.h"

namespace dao {

class Connection;

class TableCursor : public Cursor {
public:
    TableCursor(Connection& connection, const TableSchema& schema, short openType, bool readOnly);
    ~TableCursor() override;

    short type() const override { return type_; }
    std::wstring name() const override { return schema_.name; }
    const TableSchema* schema() const override { return &schema_; }

    void moveFirst() override;
    void moveLast() override;
    void moveNext() override;
    void movePrev() override;
    long recordCount() override;
    long absolutePosition() override;

    COleVariant bookmark() override;
    void setBookmark(const COleVariant& bookmark) override;

    bool canUpdate() const override;
    void remove() override;

    void setIndex(std::wstring_view index) override;
    std::wstring index() const override { return indexName_; }
    bool seek(std::wstring_view comparison, const COleVariant* keys, int count) override;
    void requery() override { moveFirst(); }
    void detach() override;

protected:
    COleVariant currentValue(int field) override;
    void beginEdit(bool pessimistic) override;
    void endEdit(bool commit) override;
    void writeNew(const std::vector<std::optional<COleVariant>>& values) override;
    void writeChanges(const std::vector<std::optional<COleVariant>>& values) override;

private:
    struct KeyValue;
    struct Level;

    int columnOf(int field) const { return fields_[static_cast<std::size_t>(field)].rowid ? 0 : field + 1; }
    int keyCount() const { return static_cast<int>(orderFields_.size()) + 1; }
    std::string keyExpression(int key) const;
    bool keyDescending(int key) const;
    std::vector<KeyValue> currentKey() const;
    std::vector<Level> levels(const std::vector<KeyValue>& bound, bool backward, bool inclusive) const;
    Statement& levelStatement(const Level& level, bool backward);
    Statement& statement(const std::string& sql);
    void fetch(const std::vector<KeyValue>& bound, bool backward, bool inclusive, std::size_t want);
    void position(bool backward);
    void step(int direction);
    bool aheadFresh() const;
    bool readRow(std::int64_t rowid);
    std::int64_t currentRowid() const;
    bool tableEmpty();
    void adjustCount(long delta, std::uint64_t stampBefore);

    Connection& connection_;
    TableSchema schema_;
    short type_;
    bool readOnly_;
    std::wstring indexName_;
    std::vector<int> orderFields_;
    std::vector<bool> orderDescending_;
    std::string selectList_;
    std::map<std::string, Statement> statements_;

    RowStore rows_;  // the batch the current record is in (column 0 the row id)
    std::size_t row_ = 0;
    int direction_ = 0;  // the batch's order: 1 forward, -1 backward, 0 a single record
    std::uint64_t stamp_ = 0;
    std::int64_t version_ = -1;  // the file's change counter when the batch was read
    std::size_t batch_ = 8;

    long count_ = -1;
    std::int64_t countVersion_ = 0;
    std::uint64_t countStamp_ = 0;

    bool holdsLock_ = false;
    RowStore snapshot_;  // the record as Edit found it (optimistic locking)
};

}  // namespace dao
