// Field and index information records.
#include "info_records.h"

#include "dao_errors.h"
#include "sqlite_statement.h"

namespace dao {

CDaoFieldInfo fieldInfo(const FieldDef& field, int ordinal, std::wstring_view table, bool updatable) {
    CDaoFieldInfo info;
    info.m_strName = field.name;
    info.m_nType = field.type;
    info.m_lSize = field.type == dbText ? field.size : defaultFieldSize(field.type);
    info.m_lAttributes = (field.isText() || field.type == dbLongBinary ? dbVariableField : dbFixedField) |
                         (field.counter ? dbAutoIncrField : 0) |
                         (updatable && !field.counter ? dbUpdatableField : 0);
    info.m_nOrdinal = static_cast<short>(ordinal);
    info.m_bRequired = field.required;
    info.m_bAllowZeroLength = field.isText() && field.allowZeroLength;
    info.m_strSourceTable = std::wstring(table);
    info.m_strSourceField = field.name;
    info.m_strDefaultValue = wide(field.defaultSql);
    return info;
}

CDaoIndexInfo indexInfo(const IndexSchema& index, const std::vector<FieldDef>& fields) {
    CDaoIndexInfo info;
    info.m_strName = index.name;
    for (std::size_t i = 0; i < index.fields.size(); ++i)
        info.m_fieldInfos.push_back({fields[static_cast<std::size_t>(index.fields[i])].name,
                                     static_cast<bool>(index.descending[i])});
    info.m_nFields = static_cast<short>(info.m_fieldInfos.size());
    info.m_bPrimary = index.primary;
    info.m_bUnique = index.unique;
    info.m_bIgnoreNulls = index.ignoreNulls;
    info.m_bRequired = index.required;
    return info;
}

FieldDef fieldFromInfo(const CDaoFieldInfo& info) {
    FieldDef field;
    field.name = info.m_strName;
    field.type = info.m_nType;
    switch (field.type) {
        case dbBoolean: case dbByte: case dbInteger: case dbLong: case dbCurrency:
        case dbSingle: case dbDouble: case dbDate: case dbText: case dbLongBinary:
        case dbMemo: case dbGUID: break;
        default: throwError(kInvalidArgument);
    }
    field.size = field.type == dbText ? (info.m_lSize > 0 ? info.m_lSize : 50)
                                      : defaultFieldSize(field.type);
    field.counter = (info.m_lAttributes & dbAutoIncrField) != 0 && field.type == dbLong;
    field.required = info.m_bRequired;
    field.allowZeroLength = info.m_bAllowZeroLength;
    field.defaultSql = defaultExpression(info.m_strDefaultValue);
    return field;
}

IndexDesign indexFromInfo(const CDaoIndexInfo& info) {
    IndexDesign index;
    index.name = info.m_strName;
    for (const CDaoIndexFieldInfo& field : info.m_fieldInfos)
        index.fields.emplace_back(field.m_strName, field.m_bDescending);
    index.primary = info.m_bPrimary;
    index.unique = info.m_bUnique || info.m_bPrimary;
    index.ignoreNulls = info.m_bIgnoreNulls;
    index.required = info.m_bRequired || info.m_bPrimary;
    return index;
}

}  // namespace dao
