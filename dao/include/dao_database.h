// The workspace (compaction) and the database object: one SQLite file opened as an Access
// database would be, with its tables, stored queries and relations.
//
// States: closed -> open [Open, Create] -> closed [Close, destructor]. Open on an open
// object throws kInvalidOperation; Close on a closed one does nothing. Closing closes the
// recordsets still open on the database (they report IsOpen false, and other calls throw
// 3420). Every failure throws CDaoException* with the DAO number a DAO program would see.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dao_exception.h"
#include "dao_field_info.h"
#include "dao_variant.h"

namespace dao {
class Connection;  // the engine's own side of an open database (dao/dao_connection.h)
}

// Relation attributes (CDaoRelationInfo::m_lAttributes).
constexpr long dbRelationUnique = 0x1;
constexpr long dbRelationDontEnforce = 0x2;
constexpr long dbRelationInherited = 0x4;
constexpr long dbRelationUpdateCascade = 0x100;
constexpr long dbRelationDeleteCascade = 0x1000;
constexpr long dbRelationLeft = 0x1000000;
constexpr long dbRelationRight = 0x2000000;

// Query definition types (CDaoQueryDefInfo::m_nType).
constexpr short dbQSelect = 0;
constexpr short dbQAction = 0xF0;
constexpr short dbQDelete = 0x20;
constexpr short dbQUpdate = 0x30;
constexpr short dbQAppend = 0x40;
constexpr short dbQMakeTable = 0x50;
constexpr short dbQDDL = 0x60;

class CDaoWorkspace {
public:
    // Writes a compacted copy of the database at src to dst. Throws kDatabaseExists (3204)
    // when dst exists, kFileNotFound (3024) when src does not, kUnrecognizedFormat (3343)
    // when src is not a database. The locale and options are accepted and ignored.
    static void CompactDatabase(const wchar_t* src, const wchar_t* dst,
                                const wchar_t* locale = dbLangGeneral, int options = 0);
};

struct CDaoTableDefInfo {
    std::wstring m_strName;
    bool m_bUpdatable = true;
    long m_lAttributes = 0;
    COleDateTime m_dateCreated;
    COleDateTime m_dateLastUpdated;
    std::wstring m_strSrcTableName;
    std::wstring m_strConnect;
    std::wstring m_strValidationRule;
    std::wstring m_strValidationText;
    long m_lRecordCount = 0;  // filled at AFX_DAO_ALL_INFO only
};

struct CDaoQueryDefInfo {
    std::wstring m_strName;
    short m_nType = dbQSelect;
    COleDateTime m_dateCreated;
    COleDateTime m_dateLastUpdated;
    bool m_bUpdatable = true;
    bool m_bReturnsRecords = true;
    std::wstring m_strSQL;
    std::wstring m_strConnect;
    short m_nODBCTimeout = 60;
};

struct CDaoRelationFieldInfo {
    std::wstring m_strName;         // field of the primary table
    std::wstring m_strForeignName;  // matching field of the foreign table
};

struct CDaoRelationInfo {
    std::wstring m_strName;
    std::wstring m_strTable;         // the primary (one) side
    std::wstring m_strForeignTable;  // the many side
    long m_lAttributes = 0;
    std::vector<CDaoRelationFieldInfo> m_fieldInfos;
    short m_nFields = 0;
};

class CDaoDatabase {
public:
    CDaoDatabase();
    virtual ~CDaoDatabase();
    CDaoDatabase(const CDaoDatabase&) = delete;
    CDaoDatabase& operator=(const CDaoDatabase&) = delete;

    // Opens an existing database. A missing file throws 3024, a file that is not a database
    // or is damaged 3343, a file held exclusively by another process 3045. readOnly (or a
    // file the process cannot write) opens it so that CanUpdate is false and writes throw
    // 3027. exclusive keeps other processes out while it is open. The connect string is
    // accepted and kept (GetConnect).
    virtual void Open(const wchar_t* path, bool exclusive = false, bool readOnly = false,
                      const wchar_t* connect = L"");
    // Makes a new empty database and leaves it open read-write. Throws 3204 when the file
    // exists.
    virtual void Create(const wchar_t* path, const wchar_t* locale = dbLangGeneral,
                        int options = 0);
    virtual void Close();

    bool IsOpen() const;
    bool CanUpdate() const;
    bool CanTransact() const { return IsOpen(); }
    std::wstring GetName() const;  // the full path of the open file
    std::wstring GetConnect() const;
    std::wstring GetVersion() const { return L"4.0"; }

    // Runs a Jet SQL action statement or DDL. A statement that returns rows throws 3065.
    void Execute(const wchar_t* sql, int options = dbFailOnError);
    long GetRecordsAffected() const;

    // Transactions over the whole database (the workspace's in DAO). Without one, every
    // write commits on its own.
    void BeginTrans();
    void CommitTrans();
    void Rollback();

    // User tables (the engine's catalog tables are never listed), in name order.
    short GetTableDefCount();
    void GetTableDefInfo(int index, CDaoTableDefInfo& info, DWORD level = AFX_DAO_PRIMARY_INFO);
    void GetTableDefInfo(const wchar_t* name, CDaoTableDefInfo& info,
                         DWORD level = AFX_DAO_PRIMARY_INFO);
    void DeleteTableDef(const wchar_t* name);

    // Stored queries, in name order.
    short GetQueryDefCount();
    void GetQueryDefInfo(int index, CDaoQueryDefInfo& info, DWORD level = AFX_DAO_PRIMARY_INFO);
    void GetQueryDefInfo(const wchar_t* name, CDaoQueryDefInfo& info,
                         DWORD level = AFX_DAO_PRIMARY_INFO);
    void DeleteQueryDef(const wchar_t* name);

    // Relations, in name order. A relation is kept in the catalog with its attributes; the
    // engine does not enforce referential integrity.
    short GetRelationCount();
    void GetRelationInfo(int index, CDaoRelationInfo& info, DWORD level = AFX_DAO_PRIMARY_INFO);
    void GetRelationInfo(const wchar_t* name, CDaoRelationInfo& info,
                         DWORD level = AFX_DAO_PRIMARY_INFO);
    void CreateRelation(const wchar_t* name, const wchar_t* table, const wchar_t* foreignTable,
                        long attributes, const wchar_t* field, const wchar_t* foreignField);
    void CreateRelation(CDaoRelationInfo& info);
    void DeleteRelation(const wchar_t* name);

    // The engine's own side of the open database, for the engine's classes (null when
    // closed).
    dao::Connection* connection() const { return connection_.get(); }

private:
    std::unique_ptr<dao::Connection> connection_;
};
