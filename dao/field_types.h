// Access field types over SQLite storage: the declared column type that stands for each
// DAO type, and the conversion of values between variants and stored values.
//
// Declared types (chosen so SQLite's type affinity keeps what Access keeps): Yes/No BIT,
// Byte BYTE, Integer SMALLINT, Long LONG (INTEGER for an AutoNumber primary key, the row
// id), Currency CURRENCY, Single REAL, Double DOUBLE, Date DATETIME, Text VARCHAR(n),
// Memo LONGTEXT, long binary LONGBINARY, GUID GUID. Text columns collate JETNOCASE.
// Stored values: Yes/No -1/0, Currency and Date as REAL (dates as automation dates),
// Single as the REAL of the float, text UTF-8, binary as BLOB.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dao_field_info.h"
#include "dao_variant.h"

namespace dao {

class Statement;

// A field as the engine keeps it.
struct FieldDef {
    std::wstring name;
    short type = dbText;
    long size = 0;
    bool counter = false;  // AutoNumber
    bool required = false;
    bool allowZeroLength = true;
    std::string defaultSql;  // the SQLite DEFAULT expression, empty for none
    bool rowid = false;      // the table's row id (an AutoNumber or Long primary key)

    bool isText() const { return type == dbText || type == dbMemo || type == dbGUID; }
};

long defaultFieldSize(short type);  // bytes, or 255 characters for Text
std::string declaredType(const FieldDef& field);
// The DAO type of a declared SQLite type, with the size of VARCHAR(n); types from other
// programs fall back on SQLite's affinity rules (dbMemo for text, dbDouble for reals ...).
short typeFromDeclared(std::string_view declared, long* size = nullptr);
// The DAO type of a value whose column has no declared type (an expression).
short typeFromStorage(int sqliteType, std::int64_t integer);
VARTYPE variantType(short fieldType);

// A stored value (one column of one row) as a variant of the field's type. Values that do
// not fit the type (text in a number column written by another program) come back as
// they are stored, never lost.
COleVariant toVariant(short fieldType, int sqliteType, std::int64_t integer, double real,
                      std::string_view bytes);
COleVariant columnVariant(short fieldType, const Statement& statement, int column);

// Converts a value for a field of this definition, as DAO does when a field is set:
// 3421 when it does not convert, 3163 for text longer than the field, 3315 for empty text
// where it is not allowed. VT_EMPTY becomes VT_NULL.
COleVariant convertForField(const FieldDef& field, const COleVariant& value,
                            std::wstring_view tableName);
// Binds a value already converted by convertForField.
void bindVariant(Statement& statement, int index, const COleVariant& value);
// Binds any variant as it stands (query parameters).
void bindParameter(Statement& statement, int index, const COleVariant& value);

// The text of a variant as DAO converts it to a string (numbers in the shortest form,
// Yes/No as "True"/"False", dates in their default form).
std::wstring variantText(const COleVariant& value);

}  // namespace dao
