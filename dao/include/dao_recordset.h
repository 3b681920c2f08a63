// A recordset: a cursor over a table (dbOpenTable, with a current index) or over the rows
// of a query (dbOpenDynaset, dbOpenSnapshot).
//
// Positions: BOF (before the first record), a current record, EOF (after the last). An
// empty recordset is at BOF and EOF at once. Open puts the cursor on the first record (or
// BOF/EOF when empty). MovePrev off the first record gives BOF, MoveNext off the last EOF;
// MoveNext at EOF or MovePrev at BOF throws 3021, as do field reads, Edit and Delete with
// no current record. After Delete there is no current record until the next move.
//
// Edit buffer: AddNew or Edit start one (GetEditMode), SetFieldValue fills it, Update
// writes it (one short write transaction), CancelUpdate drops it. Moving while a buffer
// is pending drops it, as in DAO.
//
// Table cursors keep their place by the current record's key, so writes by other
// recordsets or processes do not disturb them. Query recordsets (dynaset or snapshot)
// are read-only here: writes throw 3027.
#pragma once

#include <memory>
#include <string>

#include "dao_exception.h"
#include "dao_field_info.h"
#include "dao_variant.h"

class CDaoDatabase;
class CDaoQueryDef;
class CDaoTableDef;

namespace dao {
class Cursor;  // the engine's cursor behind a recordset (dao/dao_cursor.h)
}

class CDaoRecordset {
public:
    explicit CDaoRecordset(CDaoDatabase* database = nullptr);
    virtual ~CDaoRecordset();
    CDaoRecordset(const CDaoRecordset&) = delete;
    CDaoRecordset& operator=(const CDaoRecordset&) = delete;

    CDaoDatabase* m_pDatabase;

    // source: a table name (any open type), or a Jet SQL SELECT (dynaset or snapshot).
    // The default type is dbOpenTable for a table name, dbOpenDynaset for SQL. Throws 3078
    // for an unknown table, 3251 for dbOpenTable on SQL, and the translator's syntax errors.
    virtual void Open(int openType = AFX_DAO_USE_DEFAULT_TYPE, const wchar_t* source = nullptr,
                      int options = 0);
    // Opens the rows of a query definition, with its parameter values as they stand.
    virtual void Open(CDaoQueryDef* queryDef, int openType = dbOpenDynaset, int options = 0);
    virtual void Open(CDaoTableDef* tableDef, int openType = dbOpenTable, int options = 0);
    virtual void Close();
    bool IsOpen() const;

    bool IsBOF() const;
    bool IsEOF() const;
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrev();
    // Moves rows records from the current one (negative: backwards), ending at BOF or EOF
    // when it runs off an end. Throws 3021 with no current record.
    void Move(long rows);

    long GetRecordCount();
    short GetFieldCount();
    void GetFieldInfo(int index, CDaoFieldInfo& info, DWORD level = AFX_DAO_PRIMARY_INFO);
    void GetFieldInfo(const wchar_t* name, CDaoFieldInfo& info,
                      DWORD level = AFX_DAO_PRIMARY_INFO);

    // The value of a field of the current record (or of the edit buffer while one is
    // pending), with the field's variant type; VT_NULL for a null. An unknown name or an
    // index out of range throws 3265.
    COleVariant GetFieldValue(int index);
    COleVariant GetFieldValue(const wchar_t* name);
    void GetFieldValue(int index, COleVariant& value) { value = GetFieldValue(index); }
    void GetFieldValue(const wchar_t* name, COleVariant& value) { value = GetFieldValue(name); }

    // Sets a field in the edit buffer, converting to the field's type (3421 when the value
    // does not convert, 3163 for text longer than the field). VT_EMPTY and VT_NULL set null.
    // Throws 3020 with no edit buffer, 3164 on an AutoNumber field.
    void SetFieldValue(int index, const COleVariant& value);
    void SetFieldValue(const wchar_t* name, const COleVariant& value);
    void SetFieldValue(const wchar_t* name, const wchar_t* text) {
        SetFieldValue(name, COleVariant(text));
    }
    void SetFieldValueNull(int index);
    void SetFieldValueNull(const wchar_t* name);

    void AddNew();
    void Edit();
    // Writes the edit buffer. 3022 duplicate key, 3314 required field null, 3315 empty text
    // not allowed, 3201 missing related record, lock errors (3218, 3260 ...) when another
    // process holds the file. On failure the buffer stays pending.
    void Update();
    void CancelUpdate();
    void Delete();
    short GetEditMode() const;

    bool CanUpdate() const;
    bool CanAppend() const { return CanUpdate(); }
    bool CanBookmark() const { return IsOpen(); }
    bool CanScroll() const { return IsOpen(); }
    bool CanTransact() const { return IsOpen(); }

    // A bookmark names a record for as long as it exists (VT_ARRAY|VT_UI1).
    COleVariant GetBookmark();
    void SetBookmark(const COleVariant& bookmark);  // 3159 when it names no record
    COleVariant GetLastModifiedBookmark();          // the record last added or changed

    // Table cursors: order by a named index ("PrimaryKey" for the primary key). 3015 for a
    // name the table has no index of; 3251 on a query recordset. The cursor goes to the
    // first record in the new order.
    void SetCurrentIndex(const wchar_t* index);
    std::wstring GetCurrentIndex();
    // Finds the first record (in index order) whose key compares with the given values as
    // the comparison says ("=", "<", "<=", ">", ">="); fewer values than key fields compare
    // a leading part of the key. Text compares without case; a VT_NULL value matches a null
    // key field. Returns true and makes that record current, or returns false with no
    // current record. Throws 3019 with no current index.
    bool Seek(const wchar_t* comparison, const COleVariant* keys, int count);
    bool Seek(const wchar_t* comparison, const COleVariant* key1,
              const COleVariant* key2 = nullptr, const COleVariant* key3 = nullptr);

    // Pessimistic or optimistic locking; here both lock only while a write commits.
    void SetLockingMode(bool pessimistic);
    bool GetLockingMode() const;

    std::wstring GetName() const;  // the table name, or the SQL text
    std::wstring GetSQL() const;
    short GetType() const;
    long GetAbsolutePosition();  // 0-based; -1 with no current record
    void Requery();

    short GetIndexCount();
    void GetIndexInfo(int index, CDaoIndexInfo& info, DWORD level = AFX_DAO_PRIMARY_INFO);
    void GetIndexInfo(const wchar_t* name, CDaoIndexInfo& info,
                      DWORD level = AFX_DAO_PRIMARY_INFO);

private:
    dao::Cursor& cursor() const;  // throws 3420 when not open

    std::unique_ptr<dao::Cursor> cursor_;
    bool pessimistic_ = true;
};
