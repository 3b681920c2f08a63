// A table definition: reads a table's fields and indexes, and makes or changes tables.
//
// States: closed -> open [Open: an existing table] -> closed [Close];
// closed -> new [Create] -> open [Append: the table is made]. On a new definition
// CreateField and CreateIndex collect the design; on an open one they change the table
// at once (as ALTER TABLE and CREATE INDEX would).
#pragma once

#include <string>
#include <vector>

#include "dao_exception.h"
#include "dao_field_info.h"
#include "dao_variant.h"

class CDaoDatabase;

class CDaoTableDef {
public:
    explicit CDaoTableDef(CDaoDatabase* database);
    virtual ~CDaoTableDef();
    CDaoTableDef(const CDaoTableDef&) = delete;
    CDaoTableDef& operator=(const CDaoTableDef&) = delete;

    CDaoDatabase* m_pDatabase;

    // Opens an existing table: 3265 when there is none.
    virtual void Open(const wchar_t* name);
    // Starts a new table design: 3010 when a table of that name exists.
    virtual void Create(const wchar_t* name, long attributes = 0,
                        const wchar_t* srcTable = nullptr, const wchar_t* connect = nullptr);
    // Makes the designed table (at least one field; 3010 if the name is taken meanwhile).
    virtual void Append();
    virtual void Close();
    bool IsOpen() const { return state_ != State::closed; }

    std::wstring GetName() const { return name_; }
    // Renames an open table (3010 when the new name is taken).
    void SetName(const wchar_t* name);
    bool CanUpdate() const;
    long GetRecordCount();

    // size: characters for dbText (default 50 when 0), ignored otherwise.
    void CreateField(const wchar_t* name, short type, long size, long attributes = 0);
    void CreateField(CDaoFieldInfo& info);
    void DeleteField(const wchar_t* name);
    void DeleteField(int index);
    short GetFieldCount();
    void GetFieldInfo(int index, CDaoFieldInfo& info, DWORD level = AFX_DAO_PRIMARY_INFO);
    void GetFieldInfo(const wchar_t* name, CDaoFieldInfo& info,
                      DWORD level = AFX_DAO_PRIMARY_INFO);

    // m_bPrimary makes the primary key (named as given, "PrimaryKey" by custom).
    void CreateIndex(CDaoIndexInfo& info);
    void DeleteIndex(const wchar_t* name);
    void DeleteIndex(int index);
    short GetIndexCount();
    void GetIndexInfo(int index, CDaoIndexInfo& info, DWORD level = AFX_DAO_PRIMARY_INFO);
    void GetIndexInfo(const wchar_t* name, CDaoIndexInfo& info,
                      DWORD level = AFX_DAO_PRIMARY_INFO);

private:
    enum class State { closed, designing, open };
    void requireOpen() const;

    State state_ = State::closed;
    std::wstring name_;
    std::vector<CDaoFieldInfo> fields_;  // the design, until Append
    std::vector<CDaoIndexInfo> indexes_;
};
