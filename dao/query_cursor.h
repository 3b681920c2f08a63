// A cursor over the rows of a query, read in full when opened (a snapshot of the result;
// read-only here, whatever the open type).
#pragma once

#include "dao_cursor.h"
#include "row_store.h"
#include "sql_execution.h"

namespace dao {

class QueryCursor : public Cursor {
public:
    // Runs the prepared query (parameters already bound) and keeps its rows.
    QueryCursor(PreparedQuery& prepared, std::wstring name, std::wstring sql, short openType);

    short type() const override { return type_; }
    std::wstring name() const override { return name_; }
    std::wstring sql() const override { return sql_; }

    void moveFirst() override;
    void moveLast() override;
    void moveNext() override;
    void movePrev() override;
    long recordCount() override { return static_cast<long>(rows_.rows()); }
    long absolutePosition() override { return hasCurrent() ? static_cast<long>(row_) : -1; }

    COleVariant bookmark() override;
    void setBookmark(const COleVariant& bookmark) override;
    void requery() override { moveFirst(); }

protected:
    COleVariant currentValue(int field) override;

private:
    void settle();

    std::wstring name_;
    std::wstring sql_;
    short type_;
    RowStore rows_;
    std::size_t row_ = 0;
};

}  // namespace dao
