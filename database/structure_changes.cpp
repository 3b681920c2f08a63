// kv_create_table, kv_delete_table, kv_rename_table, kv_create_index and
// kv_relationDelete: changes to the structure, through the table definitions.
#include <string>
#include <vector>

#include "adslib.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/value_list.h"
#include "database/structure_descriptions.h"
#include "database/structure_functions.h"
#include "database/structure_lookup.h"
#include "database/table_cursor.h"

namespace kelvo::database {
namespace {

using namespace structure;

int createTableHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    if (args.atEnd()) return kTooFewArgs;
    std::vector<std::vector<Property>> fieldDescriptions, indexDescriptions;
    if (!readDescriptions(args.cursor(), fieldDescriptions)) return kWrongArgType;
    if (!args.atEnd() && !readDescriptions(args.cursor(), indexDescriptions)) {
        return kWrongArgType;
    }
    std::vector<CDaoFieldInfo> fields(fieldDescriptions.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!fieldFromDescription(fieldDescriptions[i], fields[i])) return kBadArgData;
    }
    std::vector<CDaoIndexInfo> indexes(indexDescriptions.size());
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        if (!indexFromDescription(indexDescriptions[i], indexes[i])) return kBadArgData;
    }
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        checkName(table);
        CDaoTableDef definition(&database);
        definition.Create(table.c_str());
        for (CDaoFieldInfo& field : fields) {
            checkName(field.m_strName);
            definition.CreateField(field);
        }
        for (CDaoIndexInfo& index : indexes) {
            checkName(index.m_strName);
            for (const CDaoIndexFieldInfo& key : index.m_fieldInfos) {
                bool found = false;
                for (const CDaoFieldInfo& field : fields) {
                    found = found || sameTableName(field.m_strName, key.m_strName);
                }
                if (!found) {
                    failNotFound(L"index '" + index.m_strName + L"' names no field of table '" +
                                 table + L"': '" + key.m_strName + L"'");
                }
            }
            definition.CreateIndex(index);
        }
        definition.Append();
        acedRetT();
    });
    return kArgOk;
}

int deleteTableHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        const std::wstring name = definition.GetName();
        definition.Close();
        database.DeleteTableDef(name.c_str());
        acedRetT();
    });
    return kArgOk;
}

int renameTableHandler() {
    HandlerArgs args;
    std::wstring table, newName;
    if (int status = readNames(args, {&table, &newName}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        checkName(newName);
        definition.SetName(newName.c_str());
        acedRetT();
    });
    return kArgOk;
}

int createIndexHandler() {
    HandlerArgs args;
    std::wstring table;
    CDaoIndexInfo index;
    if (int status = readNames(args, {&table, &index.m_strName}); status != kArgOk) {
        return status;
    }
    if (args.atEnd()) return kTooFewArgs;
    if (!readKeyFields(args.cursor(), index.m_fieldInfos)) return kWrongArgType;
    index.m_nFields = static_cast<short>(index.m_fieldInfos.size());
    for (bool* flag :
         {&index.m_bUnique, &index.m_bPrimary, &index.m_bIgnoreNulls, &index.m_bRequired}) {
        if (!args.atEnd() && !readBoolean(args.cursor(), *flag)) return kWrongArgType;
    }
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        checkName(index.m_strName);
        for (const CDaoIndexFieldInfo& field : index.m_fieldInfos)
            findField(definition, field.m_strName);
        definition.CreateIndex(index);
        acedRetT();
    });
    return kArgOk;
}

int relationDeleteHandler() {
    HandlerArgs args;
    std::wstring name;
    if (int status = readNames(args, {&name}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        checkName(name);
        for (const CDaoRelationInfo& relation : relationsOf(database)) {
            if (sameTableName(relation.m_strName, name)) {
                database.DeleteRelation(relation.m_strName.c_str());
                acedRetT();
                return;
            }
        }
        failNotFound(L"there is no relation '" + name + L"'");
    });
    return kArgOk;
}

}  // namespace

int kvCreateTable() {
    return runDatabaseCall(createTableHandler);
}
int kvDeleteTable() {
    return runDatabaseCall(deleteTableHandler);
}
int kvRenameTable() {
    return runDatabaseCall(renameTableHandler);
}
int kvCreateIndex() {
    return runDatabaseCall(createIndexHandler);
}
int kvRelationDelete() {
    return runDatabaseCall(relationDeleteHandler);
}

}  // namespace kelvo::database
