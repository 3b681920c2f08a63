// Making and changing tables and indexes: the one path that CDaoTableDef and the DDL
// statements of the SQL dialect both take. Each change runs in one write transaction and
// tells the connection that the schema changed.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "field_types.h"
#include "table_schema.h"

namespace dao {

class Connection;

struct IndexDesign {
    std::wstring name;
    std::vector<std::pair<std::wstring, bool>> fields;  // field name, descending
    bool primary = false;
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
};

struct TableDesign {
    std::wstring name;
    std::vector<FieldDef> fields;
    std::vector<IndexDesign> indexes;
};

// 3125 for a name Access does not allow, 3001 for a Text size outside 1..255.
void checkField(const FieldDef& field);

// 3010 when the name is taken, 3264 with no field, 3191 for a field named twice, 3265 for
// an index on a field the table lacks, 3283 for two primary keys.
void createTable(Connection& connection, TableDesign design);
// 3265 (or missingCode) when there is no such table.
void dropTable(Connection& connection, std::wstring_view table, long missingCode);
void renameTable(Connection& connection, std::wstring_view from, std::wstring_view to);

// 3191 when the table has the field already.
void addField(Connection& connection, std::wstring_view table, FieldDef field);
// 3265 for a missing field, 3280 for a field an index uses.
void dropField(Connection& connection, std::wstring_view table, std::wstring_view field);
// Changes a field's type, size or Required (the table is rebuilt).
void alterField(Connection& connection, std::wstring_view table, FieldDef field);

// 3284 when the table has an index of that name, 3283 for a second primary key.
void createIndex(Connection& connection, std::wstring_view table, IndexDesign index);
void dropIndex(Connection& connection, std::wstring_view table, std::wstring_view index);

// Text of a default value as DAO gives it (a number, "text", True) as an SQLite expression;
// empty for none.
std::string defaultExpression(std::wstring_view jetDefault);

}  // namespace dao
