// Field, index and option constants of the data access engine, and the information
// records that describe fields and indexes (shared by recordsets and table definitions).
#pragma once

#include <string>
#include <vector>

#include "dao_variant.h"

// Field data types (CDaoFieldInfo::m_nType), as Access declares its columns.
constexpr short dbBoolean = 1;     // Yes/No, VT_BOOL
constexpr short dbByte = 2;        // VT_UI1
constexpr short dbInteger = 3;     // 16 bits, VT_I2
constexpr short dbLong = 4;        // 32 bits, VT_I4 (AutoNumber with dbAutoIncrField)
constexpr short dbCurrency = 5;    // VT_CY
constexpr short dbSingle = 6;      // VT_R4
constexpr short dbDouble = 7;      // VT_R8
constexpr short dbDate = 8;        // VT_DATE
constexpr short dbBinary = 9;      // short binary, VT_ARRAY|VT_UI1
constexpr short dbText = 10;       // Text(n), VT_BSTR
constexpr short dbLongBinary = 11;  // OLE object, VT_ARRAY|VT_UI1
constexpr short dbMemo = 12;       // VT_BSTR
constexpr short dbGUID = 15;       // VT_BSTR in braces

// Field attributes (m_lAttributes).
constexpr long dbFixedField = 0x1;
constexpr long dbVariableField = 0x2;
constexpr long dbAutoIncrField = 0x10;
constexpr long dbUpdatableField = 0x20;

// Open types of a recordset.
constexpr int dbOpenTable = 1;
constexpr int dbOpenDynaset = 2;
constexpr int dbOpenSnapshot = 4;
constexpr int dbOpenForwardOnly = 8;
constexpr int AFX_DAO_USE_DEFAULT_TYPE = -1;

// Options of Open and Execute.
constexpr int dbDenyWrite = 0x1;
constexpr int dbDenyRead = 0x2;
constexpr int dbReadOnly = 0x4;
constexpr int dbAppendOnly = 0x8;
constexpr int dbInconsistent = 0x10;
constexpr int dbConsistent = 0x20;
constexpr int dbSQLPassThrough = 0x40;
constexpr int dbFailOnError = 0x80;
constexpr int dbForwardOnly = 0x100;
constexpr int dbSeeChanges = 0x200;

// Edit modes (CDaoRecordset::GetEditMode).
constexpr short dbEditNone = 0;
constexpr short dbEditInProgress = 1;
constexpr short dbEditAdd = 2;

// Levels of information the Get...Info calls fill in.
constexpr DWORD AFX_DAO_PRIMARY_INFO = 1;
constexpr DWORD AFX_DAO_SECONDARY_INFO = 2;
constexpr DWORD AFX_DAO_ALL_INFO = 3;

// The locale Access databases are made with.
inline constexpr const wchar_t* dbLangGeneral = L";LANGID=0x0409;CP=1252;COUNTRY=0";

// One field. Primary: name, type, size, attributes. Secondary: ordinal, required,
// allow-zero-length, source table and field. All: default value, validation.
struct CDaoFieldInfo {
    std::wstring m_strName;
    short m_nType = 0;
    long m_lSize = 0;  // bytes for numbers, characters for Text(n); 0 for Memo and binary
    long m_lAttributes = 0;
    short m_nOrdinal = 0;
    bool m_bRequired = false;
    bool m_bAllowZeroLength = false;
    long m_lCollatingOrder = 0;
    std::wstring m_strForeignName;
    std::wstring m_strSourceField;
    std::wstring m_strSourceTable;
    std::wstring m_strValidationRule;
    std::wstring m_strValidationText;
    std::wstring m_strDefaultValue;
};

// One field of an index.
struct CDaoIndexFieldInfo {
    std::wstring m_strName;
    bool m_bDescending = false;
};

// One index. The primary key's index is named "PrimaryKey" and has m_bPrimary set.
struct CDaoIndexInfo {
    std::wstring m_strName;
    std::vector<CDaoIndexFieldInfo> m_fieldInfos;  // key fields in order
    short m_nFields = 0;                           // == m_fieldInfos.size()
    bool m_bPrimary = false;
    bool m_bUnique = false;
    bool m_bClustered = false;
    bool m_bIgnoreNulls = false;
    bool m_bRequired = false;
    bool m_bForeign = false;
    long m_lDistinctCount = 0;
};

// One parameter of a query definition (PARAMETERS name type, ...).
struct CDaoParameterInfo {
    std::wstring m_strName;
    short m_nType = 0;
    COleVariant m_varValue;
};
