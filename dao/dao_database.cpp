// CDaoDatabase: opening, SQL, and the tables, queries and relations of a database.
#include "dao_database.h"

#include "catalog.h"
#include "dao_connection.h"
#include "dao_errors.h"
#include "sql_execution.h"
#include "table_ddl.h"

namespace {

dao::Connection& openConnection(const std::unique_ptr<dao::Connection>& connection) {
    if (!connection) dao::throwError(dao::kObjectInvalid);
    return *connection;
}

template <typename T>
const T& byIndex(const std::vector<T>& items, int index) {
    if (index < 0 || index >= static_cast<int>(items.size())) dao::throwError(dao::kItemNotFound);
    return items[static_cast<std::size_t>(index)];
}

}  // namespace

CDaoDatabase::CDaoDatabase() = default;
CDaoDatabase::~CDaoDatabase() = default;

void CDaoDatabase::Open(const wchar_t* path, bool exclusive, bool readOnly, const wchar_t* connect) {
    if (connection_) dao::throwError(dao::kInvalidOperation);
    connection_ = std::make_unique<dao::Connection>(path ? path : L"", dao::Connection::Mode::open,
                                                    exclusive, readOnly);
    connection_->connectString = connect ? connect : L"";
}

void CDaoDatabase::Create(const wchar_t* path, const wchar_t*, int) {
    if (connection_) dao::throwError(dao::kInvalidOperation);
    connection_ = std::make_unique<dao::Connection>(path ? path : L"", dao::Connection::Mode::create,
                                                    false, false);
}

void CDaoDatabase::Close() { connection_.reset(); }

bool CDaoDatabase::IsOpen() const { return connection_ != nullptr; }

bool CDaoDatabase::CanUpdate() const { return connection_ && connection_->canUpdate(); }

std::wstring CDaoDatabase::GetName() const { return openConnection(connection_).path(); }

std::wstring CDaoDatabase::GetConnect() const { return openConnection(connection_).connectString; }

void CDaoDatabase::Execute(const wchar_t* sql, int) {
    dao::Connection& connection = openConnection(connection_);
    connection.recordsAffected = 0;
    connection.recordsAffected = dao::executeSql(connection, sql ? sql : L"");
}

long CDaoDatabase::GetRecordsAffected() const { return openConnection(connection_).recordsAffected; }

void CDaoDatabase::BeginTrans() { openConnection(connection_).beginUserTransaction(); }
void CDaoDatabase::CommitTrans() { openConnection(connection_).commitUserTransaction(); }
void CDaoDatabase::Rollback() { openConnection(connection_).rollbackUserTransaction(); }

short CDaoDatabase::GetTableDefCount() {
    return static_cast<short>(dao::userTables(openConnection(connection_)).size());
}

void CDaoDatabase::GetTableDefInfo(int index, CDaoTableDefInfo& info, DWORD level) {
    const auto names = dao::userTables(openConnection(connection_));
    GetTableDefInfo(byIndex(names, index).c_str(), info, level);
}

void CDaoDatabase::GetTableDefInfo(const wchar_t* name, CDaoTableDefInfo& info, DWORD level) {
    dao::Connection& connection = openConnection(connection_);
    const dao::TableSchema* schema = connection.schema(name ? name : L"");
    if (schema == nullptr) dao::throwError(dao::kItemNotFound);
    info = CDaoTableDefInfo{};
    info.m_strName = schema->name;
    info.m_bUpdatable = connection.canUpdate();
    info.m_strSrcTableName = schema->name;
    if (level >= AFX_DAO_ALL_INFO) {
        dao::Statement count(connection.db(), "SELECT count(*) FROM " + dao::quoteName(schema->name));
        count.step();
        info.m_lRecordCount = static_cast<long>(count.integer(0));
        count.reset();
    }
}

void CDaoDatabase::DeleteTableDef(const wchar_t* name) {
    dao::dropTable(openConnection(connection_), name ? name : L"", dao::kItemNotFound);
}

short CDaoDatabase::GetQueryDefCount() {
    return static_cast<short>(dao::storedQueries(openConnection(connection_)).size());
}

namespace {

void fillQueryInfo(const dao::StoredQuery& query, CDaoQueryDefInfo& info) {
    info = CDaoQueryDefInfo{};
    info.m_strName = query.name;
    info.m_nType = query.type;
    info.m_strSQL = query.sql;
    info.m_dateCreated = COleDateTime(query.created);
    info.m_dateLastUpdated = COleDateTime(query.updated);
    info.m_bReturnsRecords = query.type == dbQSelect;
}

}  // namespace

void CDaoDatabase::GetQueryDefInfo(int index, CDaoQueryDefInfo& info, DWORD) {
    fillQueryInfo(byIndex(dao::storedQueries(openConnection(connection_)), index), info);
}

void CDaoDatabase::GetQueryDefInfo(const wchar_t* name, CDaoQueryDefInfo& info, DWORD) {
    const auto query = dao::storedQuery(openConnection(connection_), name ? name : L"");
    if (!query) dao::throwError(dao::kItemNotFound);
    fillQueryInfo(*query, info);
}

void CDaoDatabase::DeleteQueryDef(const wchar_t* name) {
    dao::Connection& connection = openConnection(connection_);
    connection.requireWritable();
    dao::deleteStoredQuery(connection, name ? name : L"");
}

short CDaoDatabase::GetRelationCount() {
    return static_cast<short>(dao::relations(openConnection(connection_)).size());
}

void CDaoDatabase::GetRelationInfo(int index, CDaoRelationInfo& info, DWORD) {
    info = byIndex(dao::relations(openConnection(connection_)), index);
}

void CDaoDatabase::GetRelationInfo(const wchar_t* name, CDaoRelationInfo& info, DWORD) {
    for (const auto& relation : dao::relations(openConnection(connection_))) {
        if (dao::sameName(relation.m_strName, name ? name : L"")) {
            info = relation;
            return;
        }
    }
    dao::throwError(dao::kItemNotFound);
}

void CDaoDatabase::CreateRelation(const wchar_t* name, const wchar_t* table,
                                  const wchar_t* foreignTable, long attributes,
                                  const wchar_t* field, const wchar_t* foreignField) {
    CDaoRelationInfo info;
    info.m_strName = name ? name : L"";
    info.m_strTable = table ? table : L"";
    info.m_strForeignTable = foreignTable ? foreignTable : L"";
    info.m_lAttributes = attributes;
    info.m_fieldInfos.push_back({field ? field : L"", foreignField ? foreignField : L""});
    info.m_nFields = 1;
    CreateRelation(info);
}

void CDaoDatabase::CreateRelation(CDaoRelationInfo& info) {
    dao::Connection& connection = openConnection(connection_);
    connection.requireWritable();
    const dao::TableSchema* primary = connection.schema(info.m_strTable);
    const dao::TableSchema* foreign = connection.schema(info.m_strForeignTable);
    if (primary == nullptr) dao::throwError(dao::kInputTableNotFound, {info.m_strTable});
    if (foreign == nullptr) dao::throwError(dao::kInputTableNotFound, {info.m_strForeignTable});
    if (info.m_strName.empty() || info.m_fieldInfos.empty()) dao::throwError(dao::kInvalidArgument);
    for (const auto& field : info.m_fieldInfos)
        if (primary->fieldIndex(field.m_strName) < 0 || foreign->fieldIndex(field.m_strForeignName) < 0)
            dao::throwError(dao::kItemNotFound);
    info.m_nFields = static_cast<short>(info.m_fieldInfos.size());
    dao::addRelation(connection, info);
}

void CDaoDatabase::DeleteRelation(const wchar_t* name) {
    dao::Connection& connection = openConnection(connection_);
    connection.requireWritable();
    dao::deleteRelation(connection, name ? name : L"");
}
