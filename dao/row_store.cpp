// Copied rows.
#include "row_store.h"

#include <sqlite3.h>

#include "field_types.h"
#include "sqlite_statement.h"

namespace dao {

void RowStore::append(const Statement& statement) {
    sqlite3_stmt* stmt = statement.get();
    for (int c = 0; c < columns_; ++c) {
        // The value calls skip the per-call checks of the column calls.
        sqlite3_value* value = sqlite3_column_value(stmt, c);
        Cell cell;
        cell.type = sqlite3_value_type(value);
        switch (cell.type) {
            case SQLITE_INTEGER: cell.integer = sqlite3_value_int64(value); break;
            case SQLITE_FLOAT: cell.real = sqlite3_value_double(value); break;
            case SQLITE_NULL: break;
            default: {
                const void* data = cell.type == SQLITE_BLOB
                                       ? sqlite3_value_blob(value)
                                       : static_cast<const void*>(sqlite3_value_text(value));
                cell.length = static_cast<std::size_t>(sqlite3_value_bytes(value));
                cell.offset = bytes_.size();
                if (cell.length) bytes_.append(static_cast<const char*>(data), cell.length);
            }
        }
        cells_.push_back(cell);
    }
}

void RowStore::appendFrom(const RowStore& other, std::size_t row) {
    for (int c = 0; c < columns_; ++c) {
        Cell cell = other.cell(row, c);
        if (cell.type == SQLITE_TEXT || cell.type == SQLITE_BLOB) {
            const std::string_view data = other.bytes(cell);
            cell.offset = bytes_.size();
            bytes_.append(data);
        }
        cells_.push_back(cell);
    }
}

COleVariant RowStore::variant(std::size_t row, int column, short fieldType) const {
    const Cell& c = cell(row, column);
    return toVariant(fieldType, c.type, c.integer, c.real, bytes(c));
}

void RowStore::bind(Statement& statement, int index, std::size_t row, int column) const {
    const Cell& c = cell(row, column);
    switch (c.type) {
        case SQLITE_INTEGER: statement.bindInt(index, c.integer); break;
        case SQLITE_FLOAT: statement.bindDouble(index, c.real); break;
        case SQLITE_TEXT: statement.bindText(index, bytes(c)); break;
        case SQLITE_BLOB: statement.bindBlob(index, bytes(c).data(), c.length); break;
        default: statement.bindNull(index); break;
    }
}

}  // namespace dao
