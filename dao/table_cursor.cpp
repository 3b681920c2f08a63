// Table cursors: index-order reading ahead, seeks, bookmarks and record writes.
#include "table_cursor.h"

#include <sqlite3.h>

#include <cstring>

#include "dao_connection.h"
#include "dao_errors.h"
#include "sqlite_errors.h"

namespace dao {
namespace {

constexpr std::size_t kFirstBatch = 8;
constexpr std::size_t kLargestBatch = 512;

// Comparisons a level makes on its first key after the equal ones.
enum class Compare { none, greater, less, notNull, isNull };

void exec(Connection& connection, const char* sql) {
    char* error = nullptr;
    if (sqlite3_exec(connection.db(), sql, nullptr, nullptr, &error) == SQLITE_OK) return;
    const std::string message = error ? error : sqlite3_errmsg(connection.db());
    sqlite3_free(error);
    throwSqliteError(sqlite3_extended_errcode(connection.db()), message);
}

COleVariant rowidBookmark(std::int64_t rowid) {
    std::vector<unsigned char> bytes(sizeof rowid);
    std::memcpy(bytes.data(), &rowid, sizeof rowid);
    return COleVariant(bytes);
}

}  // namespace

struct TableCursor::KeyValue {
    int type = SQLITE_NULL;
    std::int64_t integer = 0;
    double real = 0;
    std::string bytes;

    void bind(Statement& statement, int index) const {
        switch (type) {
            case SQLITE_INTEGER: statement.bindInt(index, integer); break;
            case SQLITE_FLOAT: statement.bindDouble(index, real); break;
            case SQLITE_TEXT: statement.bindText(index, bytes); break;
            case SQLITE_BLOB: statement.bindBlob(index, bytes.data(), bytes.size()); break;
            default: statement.bindNull(index); break;
        }
    }
};

struct TableCursor::Level {
    int equal = 0;  // leading keys that equal the bound
    Compare compare = Compare::none;
};

TableCursor::TableCursor(Connection& connection, const TableSchema& schema, short openType,
                         bool readOnly)
    : connection_(connection), schema_(schema), type_(openType), readOnly_(readOnly) {
    fields_ = schema_.fields;
    // The row id field is read once, as column 0.
    selectList_ = "rowid";
    for (const FieldDef& field : fields_) selectList_ += ", " + (field.rowid ? "NULL" : quoteName(field.name));
    rows_.setColumns(static_cast<int>(fields_.size()) + 1);
    snapshot_.setColumns(rows_.columns());
    position(false);
    connection_.attach(this);
}

TableCursor::~TableCursor() {
    if (detached()) return;
    if (holdsLock_) sqlite3_exec(connection_.db(), "ROLLBACK", nullptr, nullptr, nullptr);
    connection_.release(this);
}

void TableCursor::detach() {
    // The connection's close rolls back a held lock.
    statements_.clear();
    holdsLock_ = false;
    Cursor::detach();
}

std::string TableCursor::keyExpression(int key) const {
    if (key == keyCount() - 1) return "rowid";
    return quoteName(fields_[static_cast<std::size_t>(orderFields_[static_cast<std::size_t>(key)])].name);
}

bool TableCursor::keyDescending(int key) const {
    return key < keyCount() - 1 && orderDescending_[static_cast<std::size_t>(key)];
}

std::vector<TableCursor::KeyValue> TableCursor::currentKey() const {
    std::vector<KeyValue> key;
    for (int k = 0; k < keyCount(); ++k) {
        const int column = k == keyCount() - 1 ? 0 : columnOf(orderFields_[static_cast<std::size_t>(k)]);
        const Cell& cell = rows_.cell(row_, column);
        KeyValue value{cell.type, cell.integer, cell.real, {}};
        if (cell.type == SQLITE_TEXT || cell.type == SQLITE_BLOB) value.bytes = rows_.bytes(cell);
        key.push_back(std::move(value));
    }
    return key;
}

// The statements that together give every row after (or from) the bound, in order: first
// the rows equal on all given keys (when inclusive), then those equal on one key fewer and
// beyond it on the next, and so on.
std::vector<TableCursor::Level> TableCursor::levels(const std::vector<KeyValue>& bound,
                                                    bool backward, bool inclusive) const {
    std::vector<Level> result;
    if (bound.empty()) return {Level{}};
    if (inclusive) result.push_back({static_cast<int>(bound.size()), Compare::none});
    for (int k = static_cast<int>(bound.size()) - 1; k >= 0; --k) {
        const bool isNull = bound[static_cast<std::size_t>(k)].type == SQLITE_NULL;
        const bool ascending = keyDescending(k) == backward;
        // Nulls sort first in ascending order and last in descending order.
        if (ascending) {
            result.push_back({k, isNull ? Compare::notNull : Compare::greater});
        } else if (!isNull) {
            result.push_back({k, Compare::less});
            result.push_back({k, Compare::isNull});
        }
    }
    return result;
}

Statement& TableCursor::statement(const std::string& sql) {
    auto found = statements_.find(sql);
    if (found == statements_.end())
        found = statements_.emplace(sql, Statement(connection_.db(), sql)).first;
    return found->second;
}

Statement& TableCursor::levelStatement(const Level& level, bool backward) {
    std::string where;
    for (int k = 0; k < level.equal; ++k)
        where += (k ? " AND " : "") + keyExpression(k) + " IS ?" + std::to_string(k + 1);
    if (level.compare != Compare::none) {
        if (!where.empty()) where += " AND ";
        const std::string key = keyExpression(level.equal);
        const std::string parameter = "?" + std::to_string(level.equal + 1);
        switch (level.compare) {
            case Compare::greater: where += key + " > " + parameter; break;
            case Compare::less: where += key + " < " + parameter; break;
            case Compare::notNull: where += key + " IS NOT NULL"; break;
            default: where += key + " IS NULL"; break;
        }
    }
    std::string order;
    for (int k = 0; k < keyCount(); ++k)
        order += (k ? ", " : "") + keyExpression(k) + (keyDescending(k) != backward ? " DESC" : "");
    return statement("SELECT " + selectList_ + " FROM " + quoteName(schema_.name) +
                     (where.empty() ? "" : " WHERE " + where) + " ORDER BY " + order);
}

void TableCursor::fetch(const std::vector<KeyValue>& bound, bool backward, bool inclusive,
                        std::size_t want) {
    LockScope lock(LockAction::read);
    // Taken before the rows: a change committed meanwhile makes the batch look stale.
    version_ = connection_.fileChangeCounter();
    rows_.clear();
    for (const Level& level : levels(bound, backward, inclusive)) {
        Statement& query = levelStatement(level, backward);
        for (int k = 0; k < level.equal; ++k) bound[static_cast<std::size_t>(k)].bind(query, k + 1);
        if (level.compare == Compare::greater || level.compare == Compare::less)
            bound[static_cast<std::size_t>(level.equal)].bind(query, level.equal + 1);
        while (rows_.rows() < want && query.step()) rows_.append(query);
        query.reset();
        if (rows_.rows() >= want) break;
    }
    row_ = 0;
    direction_ = backward ? -1 : 1;
    stamp_ = connection_.ownChanges();
}

void TableCursor::position(bool backward) {
    batch_ = kFirstBatch;
    fetch({}, backward, false, batch_);
    deleted_ = false;
    bof_ = eof_ = rows_.empty();
}

bool TableCursor::aheadFresh() const {
    return stamp_ == connection_.ownChanges() && version_ == connection_.fileChangeCounter();
}

void TableCursor::step(int direction) {
    const std::size_t rows = rows_.rows();
    if (direction_ != 0 && !rows_.empty() && aheadFresh()) {
        if (direction == direction_ && row_ + 1 < rows) {
            ++row_;
            deleted_ = false;
            return;
        }
        if (direction == -direction_ && row_ > 0) {
            --row_;
            deleted_ = false;
            return;
        }
    }
    const std::vector<KeyValue> key = currentKey();
    batch_ = direction == direction_ ? std::min(batch_ * 2, kLargestBatch) : kFirstBatch;
    fetch(key, direction < 0, false, batch_);
    deleted_ = false;
    if (!rows_.empty()) return;
    // Off the end: BOF or EOF, and both when the table has become empty.
    (direction > 0 ? eof_ : bof_) = true;
    if (tableEmpty()) bof_ = eof_ = true;
}

void TableCursor::moveFirst() {
    dropEdit();
    position(false);
    if (eof_) throwError(kNoCurrentRecord);
}

void TableCursor::moveLast() {
    dropEdit();
    position(true);
    if (eof_) throwError(kNoCurrentRecord);
}

void TableCursor::moveNext() {
    if (eof_) throwError(kNoCurrentRecord);
    dropEdit();
    if (bof_) {
        position(false);
        if (!rows_.empty()) bof_ = false;
        return;
    }
    step(1);
}

void TableCursor::movePrev() {
    if (bof_) throwError(kNoCurrentRecord);
    dropEdit();
    if (eof_) {
        position(true);
        if (!rows_.empty()) eof_ = false;
        return;
    }
    step(-1);
}

bool TableCursor::tableEmpty() {
    LockScope lock(LockAction::read);
    Statement& any = statement("SELECT 1 FROM " + quoteName(schema_.name) + " LIMIT 1");
    const bool found = any.step();
    any.reset();
    return !found;
}

long TableCursor::recordCount() {
    const std::int64_t version = connection_.dataVersion();
    if (count_ >= 0 && countStamp_ == connection_.ownChanges() && countVersion_ == version)
        return count_;
    LockScope lock(LockAction::read);
    Statement& count = statement("SELECT count(*) FROM " + quoteName(schema_.name));
    count.step();
    count_ = static_cast<long>(count.integer(0));
    count.reset();
    countVersion_ = version;
    countStamp_ = connection_.ownChanges();
    return count_;
}

void TableCursor::adjustCount(long delta, std::uint64_t stampBefore) {
    if (count_ >= 0 && countStamp_ == stampBefore) {
        count_ += delta;
        countStamp_ = connection_.ownChanges();
    }
}

long TableCursor::absolutePosition() { throwError(kNotSupported); }

std::int64_t TableCursor::currentRowid() const { return rows_.cell(row_, 0).integer; }

COleVariant TableCursor::currentValue(int field) {
    requireCurrent();
    return rows_.variant(row_, columnOf(field), fields_[static_cast<std::size_t>(field)].type);
}

COleVariant TableCursor::bookmark() {
    requireCurrent();
    return rowidBookmark(currentRowid());
}

// Reads one record by row id as the current one; false when it is gone.
bool TableCursor::readRow(std::int64_t rowid) {
    LockScope lock(LockAction::read);
    Statement& read =
        statement("SELECT " + selectList_ + " FROM " + quoteName(schema_.name) + " WHERE rowid=?1");
    read.bindInt(1, rowid);
    RowStore found(rows_.columns());
    if (read.step()) found.append(read);
    read.reset();
    if (found.empty()) return false;
    rows_ = std::move(found);
    row_ = 0;
    direction_ = 0;
    batch_ = kFirstBatch;
    bof_ = eof_ = deleted_ = false;
    return true;
}

void TableCursor::setBookmark(const COleVariant& bookmark) {
    if (bookmark.vt != (VT_ARRAY | VT_UI1) || bookmark.bytes.size() != sizeof(std::int64_t))
        throwError(kInvalidBookmark);
    std::int64_t rowid = 0;
    std::memcpy(&rowid, bookmark.bytes.data(), sizeof rowid);
    dropEdit();
    if (!readRow(rowid)) throwError(kInvalidBookmark);
}

bool TableCursor::canUpdate() const {
    return !readOnly_ && connection_.canUpdate() && type_ != dbOpenSnapshot;
}

void TableCursor::setIndex(std::wstring_view index) {
    dropEdit();
    if (index.empty()) {
        orderFields_.clear();
        orderDescending_.clear();
        indexName_.clear();
    } else {
        const IndexSchema* found = schema_.index(index);
        if (found == nullptr) throwError(kNotAnIndex, {index});
        const bool rowidKey = found->fields.size() == 1 &&
                              fields_[static_cast<std::size_t>(found->fields[0])].rowid &&
                              !found->descending[0];
        orderFields_ = rowidKey ? std::vector<int>{} : found->fields;
        orderDescending_ = rowidKey ? std::vector<bool>{} : found->descending;
        indexName_ = found->name;
    }
    statements_.clear();
    position(false);
}

bool TableCursor::seek(std::wstring_view comparison, const COleVariant* keys, int count) {
    if (indexName_.empty()) throwError(kNoCurrentIndex);
    const int fieldsInKey = orderFields_.empty() ? 1 : static_cast<int>(orderFields_.size());
    if (count < 1 || count > fieldsInKey || keys == nullptr) throwError(kInvalidArgument);
    std::vector<KeyValue> bound;
    for (int k = 0; k < count; ++k) {
        const int field = orderFields_.empty() ? schema_.rowidField() : orderFields_[static_cast<std::size_t>(k)];
        const FieldDef& def = fields_[static_cast<std::size_t>(field)];
        COleVariant value = keys[k];
        if (value.vt != VT_NULL && value.vt != VT_EMPTY)
            value = def.isText() ? COleVariant(variantText(value)) : convertForField(def, value, schema_.name);
        KeyValue key;
        switch (value.vt) {
            case VT_NULL:
            case VT_EMPTY: break;
            case VT_BSTR: key.type = SQLITE_TEXT, key.bytes = utf8(value.bstrVal); break;
            case VT_R4: key.type = SQLITE_FLOAT, key.real = value.fltVal; break;
            case VT_R8: key.type = SQLITE_FLOAT, key.real = value.dblVal; break;
            case VT_DATE: key.type = SQLITE_FLOAT, key.real = value.date; break;
            case VT_CY: key.type = SQLITE_FLOAT, key.real = static_cast<double>(value.cyVal) / 10000.0; break;
            case VT_I2: key.type = SQLITE_INTEGER, key.integer = value.iVal; break;
            case VT_I4: key.type = SQLITE_INTEGER, key.integer = value.lVal; break;
            case VT_UI1: key.type = SQLITE_INTEGER, key.integer = value.bVal; break;
            case VT_BOOL: key.type = SQLITE_INTEGER, key.integer = value.boolVal ? -1 : 0; break;
            default: key.type = SQLITE_BLOB, key.bytes.assign(value.bytes.begin(), value.bytes.end()); break;
        }
        bound.push_back(std::move(key));
    }
    dropEdit();
    const std::wstring op(comparison);
    const bool backward = op == L"<" || op == L"<=";
    const bool inclusive = op == L"=" || op == L">=" || op == L"<=";
    if (!backward && !inclusive && op != L">") throwError(kInvalidArgument);
    batch_ = kFirstBatch;
    if (op == L"=") {
        LockScope lock(LockAction::read);
        version_ = connection_.fileChangeCounter();
        rows_.clear();
        Statement& query = levelStatement(Level{count, Compare::none}, false);
        for (int k = 0; k < count; ++k) bound[static_cast<std::size_t>(k)].bind(query, k + 1);
        if (query.step()) rows_.append(query);
        query.reset();
        row_ = 0;
        direction_ = 1;
        stamp_ = connection_.ownChanges();
    } else {
        fetch(bound, backward, inclusive, 1);
    }
    deleted_ = false;
    if (rows_.empty()) {
        // No match: no current record.
        bof_ = false;
        eof_ = true;
        return false;
    }
    bof_ = eof_ = false;
    return true;
}

void TableCursor::beginEdit(bool pessimistic) {
    const std::int64_t rowid = currentRowid();
    if (pessimistic && sqlite3_get_autocommit(connection_.db())) {
        LockScope lock(LockAction::edit);
        exec(connection_, "BEGIN IMMEDIATE");
        holdsLock_ = true;
    }
    if (!readRow(rowid)) {
        endEdit(false);
        throwError(kRecordDeleted);
    }
    snapshot_.clear();
    snapshot_.appendFrom(rows_, 0);
}

void TableCursor::endEdit(bool commit) {
    if (!holdsLock_) return;
    if (commit) {
        LockScope lock(LockAction::write);
        exec(connection_, "COMMIT");
    } else {
        sqlite3_exec(connection_.db(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    holdsLock_ = false;
}

void TableCursor::writeNew(const std::vector<std::optional<COleVariant>>& values) {
    std::string columns, parameters;
    int count = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!values[i]) continue;
        const bool first = count++ == 0;
        columns += (first ? "" : ", ") + quoteName(fields_[i].name);
        parameters += (first ? "?" : ", ?") + std::to_string(count);
    }
    const std::string sql = "INSERT INTO " + quoteName(schema_.name) +
                            (count ? " (" + columns + ") VALUES (" + parameters + ")" : " DEFAULT VALUES");
    LockScope lock(LockAction::write);
    const std::uint64_t before = connection_.ownChanges();
    WriteTransaction transaction(connection_);
    Statement& insert = statement(sql);
    int index = 0;
    for (const auto& value : values)
        if (value) bindVariant(insert, ++index, *value);
    insert.step();
    insert.clearBindings();
    const std::int64_t rowid = sqlite3_last_insert_rowid(connection_.db());
    transaction.commit();
    lastModified_ = rowidBookmark(rowid);
    adjustCount(1, before);
}

void TableCursor::writeChanges(const std::vector<std::optional<COleVariant>>& values) {
    std::int64_t rowid = currentRowid();
    std::string assignments;
    int count = 0;
    std::optional<std::int64_t> newRowid;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!values[i]) continue;
        const bool first = count++ == 0;
        assignments += (first ? "" : ", ") + quoteName(fields_[i].name) + "=?" + std::to_string(count);
        if (fields_[i].rowid && values[i]->vt == VT_I4) newRowid = values[i]->lVal;
    }
    LockScope lock(LockAction::write);
    const std::uint64_t before = connection_.ownChanges();
    {
        WriteTransaction transaction(connection_);
        if (!holdsLock_) {
            // Optimistic: the record must be as Edit found it.
            RowStore edited = std::move(snapshot_);
            snapshot_.setColumns(rows_.columns());
            if (!readRow(rowid)) throwError(kRecordDeleted);
            for (int c = 0; c < rows_.columns(); ++c) {
                const Cell &a = rows_.cell(0, c), &b = edited.cell(0, c);
                if (a.type != b.type || a.integer != b.integer ||
                    (a.real != b.real && !(a.real != a.real)) || rows_.bytes(a) != edited.bytes(b))
                    throwError(kWriteConflict);
            }
        }
        if (count > 0) {
            Statement& change = statement("UPDATE " + quoteName(schema_.name) + " SET " +
                                          assignments + " WHERE rowid=?" + std::to_string(count + 1));
            int index = 0;
            for (const auto& value : values)
                if (value) bindVariant(change, ++index, *value);
            change.bindInt(count + 1, rowid);
            change.step();
            change.clearBindings();
            if (sqlite3_changes(connection_.db()) == 0) throwError(kRecordDeleted);
        }
        transaction.commit();
    }
    endEdit(true);
    if (count > 0) connection_.noteChange();
    (void)before;
    if (newRowid) rowid = *newRowid;
    lastModified_ = rowidBookmark(rowid);
    readRow(rowid);
}

void TableCursor::remove() {
    if (!canUpdate()) throwError(kReadOnly);
    requireCurrent();
    dropEdit();
    LockScope lock(LockAction::write);
    const std::uint64_t before = connection_.ownChanges();
    WriteTransaction transaction(connection_);
    Statement& erase = statement("DELETE FROM " + quoteName(schema_.name) + " WHERE rowid=?1");
    erase.bindInt(1, currentRowid());
    erase.step();
    if (sqlite3_changes(connection_.db()) == 0) throwError(kRecordDeleted);
    transaction.commit();
    deleted_ = true;
    adjustCount(-1, before);
}

}  // namespace dao
