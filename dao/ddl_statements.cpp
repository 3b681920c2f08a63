// DDL statements of the SQL dialect, carried out through the same table code that
// CDaoTableDef uses.
#include <variant>

#include "catalog.h"
#include "dao_connection.h"
#include "dao_errors.h"
#include "sql_execution.h"
#include "table_ddl.h"

namespace dao {
namespace {

namespace jet = kelvo::jet;

FieldDef fieldOf(const jet::ColumnDef& column) {
    FieldDef field;
    field.name = wide(column.name);
    field.type = daoType(column.type);
    field.size = field.type == dbText ? (column.size > 0 ? column.size : 255) : defaultFieldSize(field.type);
    field.counter = column.autoIncrement;
    field.required = column.required;
    if (column.defaultSql) field.defaultSql = *column.defaultSql;
    return field;
}

IndexDesign indexOf(const jet::IndexDef& index) {
    IndexDesign design;
    design.name = wide(index.name);
    for (const auto& [column, descending] : index.columns) design.fields.emplace_back(wide(column), descending);
    design.primary = index.primary;
    design.unique = index.unique || index.primary;
    design.ignoreNulls = index.ignoreNulls;
    design.required = index.disallowNulls || index.primary;
    if (design.name.empty()) design.name = design.primary ? L"PrimaryKey" : design.fields.front().first;
    return design;
}

CDaoRelationInfo relationOf(const jet::RelationDef& relation) {
    CDaoRelationInfo info;
    info.m_strName = wide(relation.name);
    info.m_strTable = wide(relation.table);
    info.m_strForeignTable = wide(relation.foreignTable);
    info.m_lAttributes = (relation.cascadeUpdate ? dbRelationUpdateCascade : 0) |
                         (relation.cascadeDelete ? dbRelationDeleteCascade : 0);
    for (const auto& [primary, foreign] : relation.fields)
        info.m_fieldInfos.push_back({wide(primary), wide(foreign)});
    info.m_nFields = static_cast<short>(info.m_fieldInfos.size());
    if (info.m_strName.empty()) info.m_strName = info.m_strTable + info.m_strForeignTable;
    return info;
}

void run(Connection& connection, const jet::CreateTable& create) {
    TableDesign design;
    design.name = wide(create.name);
    for (const auto& column : create.columns) design.fields.push_back(fieldOf(column));
    for (const auto& index : create.indexes) design.indexes.push_back(indexOf(index));
    createTable(connection, design);
    for (const auto& relation : create.relations) addRelation(connection, relationOf(relation));
}

void run(Connection& connection, const jet::AlterTable& alter) {
    const std::wstring table = wide(alter.table);
    using Action = jet::AlterTable::Action;
    switch (alter.action) {
        case Action::AddColumns:
            for (const auto& column : alter.columns) addField(connection, table, fieldOf(column));
            for (const auto& index : alter.indexes) createIndex(connection, table, indexOf(index));
            break;
        case Action::DropColumn: dropField(connection, table, wide(alter.name)); break;
        case Action::AlterColumn:
            for (const auto& column : alter.columns) alterField(connection, table, fieldOf(column));
            break;
        case Action::AddConstraint:
            for (const auto& index : alter.indexes) createIndex(connection, table, indexOf(index));
            for (const auto& relation : alter.relations) addRelation(connection, relationOf(relation));
            break;
        case Action::DropConstraint: {
            const std::wstring name = wide(alter.name);
            const TableSchema& schema = connection.requireSchema(table);
            if (schema.index(name) != nullptr) {
                dropIndex(connection, table, name);
            } else {
                deleteRelation(connection, name);
            }
            break;
        }
    }
}

}  // namespace

void executeDdl(Connection& connection, const jet::Statement& statement) {
    connection.requireWritable();
    if (const auto* create = std::get_if<jet::CreateTable>(&statement)) {
        run(connection, *create);
    } else if (const auto* index = std::get_if<jet::CreateIndex>(&statement)) {
        createIndex(connection, wide(index->index.table), indexOf(index->index));
    } else if (const auto* drop = std::get_if<jet::DropTable>(&statement)) {
        dropTable(connection, wide(drop->name), kTableNotExists);
    } else if (const auto* dropIdx = std::get_if<jet::DropIndex>(&statement)) {
        dropIndex(connection, wide(dropIdx->table), wide(dropIdx->index));
    } else if (const auto* alter = std::get_if<jet::AlterTable>(&statement)) {
        run(connection, *alter);
    } else if (const auto* procedure = std::get_if<jet::CreateProcedure>(&statement)) {
        StoredQuery query;
        query.name = wide(procedure->name);
        query.sql = wide(procedure->jetSql);
        query.type = queryType(parseSql(connection, query.sql));
        addStoredQuery(connection, query);
    }
    connection.schemaChanged();
}

}  // namespace dao
