// kv_list_tables, kv_structure, kv_list_indexes, kv_indexFields, kv_indexUnique,
// kv_field_required, kv_attributes, kv_relationCount, kv_relationExists and
// kv_relationInfo: what a table is made of, read through the table definitions and the
// database's relations (descriptions: database/structure_descriptions.h).
#include "database/structure_functions.h"

#include <string>
#include <vector>

#include "adslib.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"
#include "database/structure_descriptions.h"
#include "database/structure_lookup.h"
#include "database/table_cursor.h"

namespace kelvo::database {
namespace {

using namespace structure;

int listTablesHandler() {
    HandlerArgs args;
    onDatabase([](CDaoDatabase& database) {
        std::vector<std::wstring> names(static_cast<std::size_t>(database.GetTableDefCount()));
        for (std::size_t i = 0; i < names.size(); ++i) {
            CDaoTableDefInfo info;
            database.GetTableDefInfo(static_cast<int>(i), info, AFX_DAO_PRIMARY_INFO);
            names[i] = std::move(info.m_strName);
        }
        returnTexts(names);
    });
    return kArgOk;
}

int structureHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    onTableDef(table, [&](CDaoTableDef& definition) {
        ResultBuilder out;
        out.open();
        const short count = definition.GetFieldCount();
        for (short i = 0; i < count; ++i) {
            CDaoFieldInfo info;
            definition.GetFieldInfo(i, info, AFX_DAO_ALL_INFO);
            addFieldDescription(out, info);
        }
        out.close();
    });
    return kArgOk;
}

int listIndexesHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    bool describe = false;
    if (!args.atEnd() && !readBoolean(args.cursor(), describe)) return kWrongArgType;
    onTableDef(table, [&](CDaoTableDef& definition) {
        const std::vector<CDaoIndexInfo> indexes = indexesOf(definition);
        if (indexes.empty()) return;
        ResultBuilder out;
        out.open();
        for (const CDaoIndexInfo& index : indexes) {
            if (describe) {
                addIndexDescription(out, index);
            } else {
                out.addText(index.m_strName);
            }
        }
        out.close();
    });
    return kArgOk;
}

int indexFieldsHandler() {
    HandlerArgs args;
    std::wstring table, index;
    if (int status = readNames(args, {&table, &index}); status != kArgOk) return status;
    onTableDef(table, [&](CDaoTableDef& definition) {
        const CDaoIndexInfo info = findIndex(definition, index);
        std::vector<std::wstring> names;
        for (const CDaoIndexFieldInfo& field : info.m_fieldInfos) {
            names.push_back(keyFieldName(field));
        }
        returnTexts(names);
    });
    return kArgOk;
}

int indexUniqueHandler() {
    HandlerArgs args;
    std::wstring table, index;
    if (int status = readNames(args, {&table, &index}); status != kArgOk) return status;
    onTableDef(table, [&](CDaoTableDef& definition) {
        const CDaoIndexInfo info = findIndex(definition, index);
        if (info.m_bUnique || info.m_bPrimary) acedRetT();
    });
    return kArgOk;
}

int fieldRequiredHandler() {
    HandlerArgs args;
    std::wstring table, field;
    if (int status = readNames(args, {&table, &field}); status != kArgOk) return status;
    onTableDef(table, [&](CDaoTableDef& definition) {
        if (findField(definition, field).m_bRequired) acedRetT();
    });
    return kArgOk;
}

int attributesHandler() {
    HandlerArgs args;
    std::wstring table, field;
    if (int status = readNames(args, {&table, &field}); status != kArgOk) return status;
    onTableDef(table, [&](CDaoTableDef& definition) {
        returnInteger(findField(definition, field).m_lAttributes);
    });
    return kArgOk;
}

int relationCountHandler() {
    HandlerArgs args;
    std::wstring table;
    const bool ofTable = !args.atEnd();
    if (ofTable && !readText(args.cursor(), table)) return kWrongArgType;
    onDatabase([&](CDaoDatabase& database) {
        long count = 0;
        if (!ofTable) {
            count = database.GetRelationCount();
        } else {
            CDaoTableDef definition(&database);
            openTableDef(definition, table);
            for (const CDaoRelationInfo& relation : relationsOf(database)) {
                if (sameTableName(relation.m_strTable, table) ||
                    sameTableName(relation.m_strForeignTable, table)) {
                    ++count;
                }
            }
        }
        returnInteger(count);
    });
    return kArgOk;
}

int relationExistsHandler() {
    HandlerArgs args;
    std::wstring first, second;
    if (int status = readNames(args, {&first}); status != kArgOk) return status;
    const bool byTables = !args.atEnd();
    if (byTables && !readText(args.cursor(), second)) return kWrongArgType;
    onDatabase([&](CDaoDatabase& database) {
        if (byTables) {
            CDaoTableDef primary(&database), foreign(&database);
            openTableDef(primary, first);
            openTableDef(foreign, second);
        } else {
            checkName(first);
        }
        for (const CDaoRelationInfo& relation : relationsOf(database)) {
            const bool found = byTables ? sameTableName(relation.m_strTable, first) &&
                                              sameTableName(relation.m_strForeignTable, second)
                                        : sameTableName(relation.m_strName, first);
            if (found) {
                acedRetT();
                return;
            }
        }
    });
    return kArgOk;
}

int relationInfoHandler() {
    HandlerArgs args;
    if (args.atEnd()) return kTooFewArgs;
    std::wstring name;
    std::int32_t position = -1;
    const bool byName = args.cursor()->restype == RTSTR;
    if (byName ? !readText(args.cursor(), name) : !readInteger(args.cursor(), position)) {
        return kWrongArgType;
    }
    onDatabase([&](CDaoDatabase& database) {
        const std::vector<CDaoRelationInfo> relations = relationsOf(database);
        if (!byName) {
            if (position < 0 || position >= static_cast<std::int32_t>(relations.size())) {
                failNotFound(L"there is no relation at position " + std::to_wstring(position));
            }
            returnRelationDescription(relations[static_cast<std::size_t>(position)]);
            return;
        }
        checkName(name);
        for (const CDaoRelationInfo& relation : relations) {
            if (sameTableName(relation.m_strName, name)) {
                returnRelationDescription(relation);
                return;
            }
        }
        failNotFound(L"there is no relation '" + name + L"'");
    });
    return kArgOk;
}

}  // namespace

int kvListTables() {
    return runDatabaseCall(listTablesHandler);
}
int kvStructure() {
    return runDatabaseCall(structureHandler);
}
int kvListIndexes() {
    return runDatabaseCall(listIndexesHandler);
}
int kvIndexFields() {
    return runDatabaseCall(indexFieldsHandler);
}
int kvIndexUnique() {
    return runDatabaseCall(indexUniqueHandler);
}
int kvFieldRequired() {
    return runDatabaseCall(fieldRequiredHandler);
}
int kvAttributes() {
    return runDatabaseCall(attributesHandler);
}
int kvRelationCount() {
    return runDatabaseCall(relationCountHandler);
}
int kvRelationExists() {
    return runDatabaseCall(relationExistsHandler);
}
int kvRelationInfo() {
    return runDatabaseCall(relationInfoHandler);
}

}  // namespace kelvo::database
