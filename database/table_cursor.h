// The connection's table cursor: one table that kv_table opened, as a table-type
// recordset, with its field names read once at open.
//
// Cursor states (the recordset's): BOF, on a record, EOF; an empty table is at BOF and
// EOF at once. A seek needs a current index (none: it fails without an error). Running
// off either end is not an error: the read answers false with the error flag clear.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/db_connection.h"

struct CDBConnection::TableCursor {
    explicit TableCursor(CDaoDatabase* database) : recordset(database) {}

    CDaoRecordset recordset;
    std::wstring name;                    // the table's name as the database has it
    std::vector<std::wstring> fieldNames;  // in field order
};

namespace kelvo::database {

// Table names compare as the database compares them: without case.
bool sameTableName(std::wstring_view a, std::wstring_view b);

// The field names of an open recordset, in field order.
std::vector<std::wstring> fieldNamesOf(CDaoRecordset& recordset);

// Fills `record` with the current record of `recordset` as name/value pairs, reusing the
// array's storage. The recordset must be on a record.
void readPairs(CDaoRecordset& recordset, const std::vector<std::wstring>& names,
               VariantArray& record);

}  // namespace kelvo::database
