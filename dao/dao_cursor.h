// The engine's cursor behind a recordset: the position rules every kind of recordset
// shares, and the edit buffer. TableCursor (table_cursor.h) walks a table in index order;
// QueryCursor (query_cursor.h) holds the rows of a query.
//
// Positions: bof -> row [moveNext, moveFirst] -> eof [moveNext past the last]; the
// mirror for movePrev. A deleted current record leaves "no current record" at its place
// until the next move. Edit buffer: none -> edit [edit] | add [addNew] -> none [update,
// cancelUpdate, any move].
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dao_variant.h"
#include "field_types.h"
#include "table_schema.h"

namespace dao {

class Cursor {
public:
    virtual ~Cursor() = default;

    virtual short type() const = 0;
    virtual std::wstring name() const = 0;
    virtual std::wstring sql() const { return name(); }
    const std::vector<FieldDef>& fields() const { return fields_; }
    // The table's schema for table cursors; null for query results.
    virtual const TableSchema* schema() const { return nullptr; }
    int fieldIndex(std::wstring_view name) const;  // 3265 when there is none
    int checkedIndex(int index) const;             // 3265 when out of range

    bool isBOF() const { return bof_; }
    bool isEOF() const { return eof_; }
    virtual void moveFirst() = 0;
    virtual void moveLast() = 0;
    virtual void moveNext() = 0;
    virtual void movePrev() = 0;
    void move(long rows);
    virtual long recordCount() = 0;
    virtual long absolutePosition() = 0;

    // The current record's value (or the edit buffer's).
    COleVariant value(int field);

    virtual COleVariant bookmark() = 0;
    virtual void setBookmark(const COleVariant& bookmark) = 0;
    COleVariant lastModified() const;

    virtual bool canUpdate() const { return false; }
    void addNew();
    void edit(bool pessimistic);
    void setValue(int field, const COleVariant& value);
    void update();
    void cancelUpdate();
    virtual void remove();
    short editMode() const { return editMode_; }

    virtual void setIndex(std::wstring_view index);
    virtual std::wstring index() const { return {}; }
    virtual bool seek(std::wstring_view comparison, const COleVariant* keys, int count);
    virtual void requery() = 0;

    // The database was closed under the cursor: it lets go of it, and every later call
    // through the recordset finds it closed.
    virtual void detach() { detached_ = true; }
    bool detached() const { return detached_; }

protected:
    // The current row's stored value of a field (3021 with no current record).
    virtual COleVariant currentValue(int field) = 0;
    bool hasCurrent() const { return !bof_ && !eof_ && !deleted_; }
    void requireCurrent() const;
    void dropEdit();  // before any move

    // Writes of updatable cursors.
    virtual void beginEdit(bool pessimistic);
    virtual void endEdit(bool commit);
    virtual void writeNew(const std::vector<std::optional<COleVariant>>& values);
    virtual void writeChanges(const std::vector<std::optional<COleVariant>>& values);

    std::vector<FieldDef> fields_;
    bool bof_ = true;
    bool eof_ = true;
    bool deleted_ = false;
    std::optional<COleVariant> lastModified_;

private:
    bool detached_ = false;
    short editMode_ = 0;
    std::vector<std::optional<COleVariant>> buffer_;
};

}  // namespace dao
