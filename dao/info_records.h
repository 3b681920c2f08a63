// The information records the Get...Info calls fill in, from the engine's field and
// index descriptions.
#pragma once

#include "dao_field_info.h"
#include "table_ddl.h"
#include "table_schema.h"

namespace dao {

CDaoFieldInfo fieldInfo(const FieldDef& field, int ordinal, std::wstring_view table, bool updatable);
CDaoIndexInfo indexInfo(const IndexSchema& index, const std::vector<FieldDef>& fields);

// A field or index design from a DAO information record.
FieldDef fieldFromInfo(const CDaoFieldInfo& info);
IndexDesign indexFromInfo(const CDaoIndexInfo& info);

}  // namespace dao
