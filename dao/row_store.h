// Rows copied out of a statement: each column's storage class and value, text and blobs in
// one shared buffer. Used for the rows a cursor reads ahead and for query results.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dao_variant.h"

namespace dao {

class Statement;

struct Cell {
    int type = 0;  // SQLITE_INTEGER, SQLITE_FLOAT, SQLITE_TEXT, SQLITE_BLOB, SQLITE_NULL
    std::int64_t integer = 0;
    double real = 0.0;
    std::size_t offset = 0;
    std::size_t length = 0;
};

class RowStore {
public:
    explicit RowStore(int columns = 0) : columns_(columns) {}
    void setColumns(int columns) {
        columns_ = columns;
        clear();
    }
    int columns() const { return columns_; }
    std::size_t rows() const { return columns_ ? cells_.size() / static_cast<std::size_t>(columns_) : 0; }
    bool empty() const { return cells_.empty(); }
    void clear() {
        cells_.clear();
        bytes_.clear();
    }

    // Appends the statement's current row (its first columns() columns).
    void append(const Statement& statement);
    // Appends row `row` of another store with the same columns.
    void appendFrom(const RowStore& other, std::size_t row);

    const Cell& cell(std::size_t row, int column) const {
        return cells_[row * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column)];
    }
    std::string_view bytes(const Cell& cell) const {
        return std::string_view(bytes_).substr(cell.offset, cell.length);
    }
    COleVariant variant(std::size_t row, int column, short fieldType) const;
    // Binds a cell's value to a statement parameter, as it is stored.
    void bind(Statement& statement, int index, std::size_t row, int column) const;

private:
    int columns_;
    std::vector<Cell> cells_;
    std::string bytes_;
};

}  // namespace dao
