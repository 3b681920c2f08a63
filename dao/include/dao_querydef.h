// A query definition: Jet SQL, temporary (no name; never stored) or stored in the
// database under a name, with its declared parameters.
//
// States: closed -> open [Create, Open] -> closed [Close]. A named definition made with
// Create is stored by Append; Open reads a stored one. SetSQL on a stored, appended
// definition stores the new text at once (as DAO does).
#pragma once

#include <vector>
#include <string>

#include "dao_exception.h"
#include "dao_field_info.h"
#include "dao_variant.h"

class CDaoDatabase;

class CDaoQueryDef {
public:
    explicit CDaoQueryDef(CDaoDatabase* database);
    virtual ~CDaoQueryDef();
    CDaoQueryDef(const CDaoQueryDef&) = delete;
    CDaoQueryDef& operator=(const CDaoQueryDef&) = delete;

    CDaoDatabase* m_pDatabase;

    // name empty or null: a temporary definition. The SQL is checked by the translator
    // (its syntax errors are thrown here). A name already stored throws 3012.
    virtual void Create(const wchar_t* name = nullptr, const wchar_t* sql = nullptr);
    virtual void Append();
    // Opens the stored definition of that name: 3265 when there is none.
    virtual void Open(const wchar_t* name);
    virtual void Close();
    bool IsOpen() const { return open_; }

    std::wstring GetName() const { return name_; }
    std::wstring GetSQL() const { return sql_; }
    void SetSQL(const wchar_t* sql);
    short GetType() const;
    bool GetReturnsRecords() const;
    bool CanUpdate() const;

    // Parameters declared by PARAMETERS (in declared order), and their values. Setting an
    // undeclared name throws 3265. Running with a parameter never set throws 3061.
    short GetParameterCount() const;
    void GetParameterInfo(int index, CDaoParameterInfo& info,
                          DWORD level = AFX_DAO_PRIMARY_INFO) const;
    COleVariant GetParamValue(const wchar_t* name) const;
    COleVariant GetParamValue(int index) const;
    void SetParamValue(const wchar_t* name, const COleVariant& value);
    void SetParamValue(int index, const COleVariant& value);

    // Runs an action query (3065 for one that returns rows).
    void Execute(int options = dbFailOnError);
    long GetRecordsAffected() const { return recordsAffected_; }

private:
    void requireOpen() const;
    void readParameters();
    int parameterIndex(const wchar_t* name) const;

    bool open_ = false;
    bool stored_ = false;
    std::wstring name_;
    std::wstring sql_;
    short type_ = 0;
    std::vector<CDaoParameterInfo> parameters_;
    std::vector<bool> parameterSet_;
    long recordsAffected_ = 0;

    friend class CDaoRecordset;
};
