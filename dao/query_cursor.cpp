// Query results held in full.
#include "query_cursor.h"

#include <sqlite3.h>

#include <cstring>

#include "dao_errors.h"
#include "sqlite_errors.h"

namespace dao {

QueryCursor::QueryCursor(PreparedQuery& prepared, std::wstring name, std::wstring sql, short openType)
    : name_(std::move(name)), sql_(std::move(sql)), type_(openType) {
    Statement& statement = prepared.statement;
    sqlite3_stmt* stmt = statement.get();
    const int columns = sqlite3_column_count(stmt);
    rows_.setColumns(columns);
    {
        LockScope lock(LockAction::read);
        while (statement.step()) rows_.append(statement);
    }
    for (int c = 0; c < columns; ++c) {
        FieldDef field;
        field.name = wide(sqlite3_column_name(stmt, c));
        const char* declared = sqlite3_column_decltype(stmt, c);
        field.type = 0;
        if (declared != nullptr) field.type = typeFromDeclared(declared, &field.size);
        for (const auto& [output, type] : prepared.query.expressionTypes)
            if (wide(output) == field.name && daoType(type) != 0) field.type = daoType(type);
        // Without a declared type, the first stored value tells.
        for (std::size_t r = 0; field.type == 0 && r < rows_.rows(); ++r) {
            const Cell& cell = rows_.cell(r, c);
            if (cell.type != SQLITE_NULL) field.type = typeFromStorage(cell.type, cell.integer);
        }
        if (field.type == 0) field.type = dbMemo;
        if (field.size == 0) field.size = defaultFieldSize(field.type);
        fields_.push_back(std::move(field));
    }
    settle();
}

void QueryCursor::settle() {
    row_ = 0;
    deleted_ = false;
    bof_ = eof_ = rows_.empty();
}

void QueryCursor::moveFirst() {
    dropEdit();
    settle();
    if (eof_) throwError(kNoCurrentRecord);
}

void QueryCursor::moveLast() {
    dropEdit();
    settle();
    if (eof_) throwError(kNoCurrentRecord);
    row_ = rows_.rows() - 1;
}

void QueryCursor::moveNext() {
    if (eof_) throwError(kNoCurrentRecord);
    dropEdit();
    if (bof_) {
        bof_ = false;
        row_ = 0;
        return;
    }
    if (++row_ >= rows_.rows()) eof_ = true;
}

void QueryCursor::movePrev() {
    if (bof_) throwError(kNoCurrentRecord);
    dropEdit();
    if (eof_) {
        eof_ = false;
        row_ = rows_.rows() - 1;
        return;
    }
    if (row_ == 0) {
        bof_ = true;
        return;
    }
    --row_;
}

COleVariant QueryCursor::currentValue(int field) {
    requireCurrent();
    return rows_.variant(row_, field, fields_[static_cast<std::size_t>(field)].type);
}

COleVariant QueryCursor::bookmark() {
    requireCurrent();
    const std::int64_t row = static_cast<std::int64_t>(row_);
    std::vector<unsigned char> bytes(sizeof row);
    std::memcpy(bytes.data(), &row, sizeof row);
    return COleVariant(bytes);
}

void QueryCursor::setBookmark(const COleVariant& bookmark) {
    std::int64_t row = -1;
    if (bookmark.vt == (VT_ARRAY | VT_UI1) && bookmark.bytes.size() == sizeof row)
        std::memcpy(&row, bookmark.bytes.data(), sizeof row);
    if (row < 0 || static_cast<std::size_t>(row) >= rows_.rows()) throwError(kInvalidBookmark);
    dropEdit();
    row_ = static_cast<std::size_t>(row);
    bof_ = eof_ = deleted_ = false;
}

}  // namespace dao
