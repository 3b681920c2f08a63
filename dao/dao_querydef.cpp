// CDaoQueryDef: temporary and stored queries with their parameters.
#include "dao_querydef.h"

#include "catalog.h"
#include "dao_connection.h"
#include "dao_database.h"
#include "dao_errors.h"
#include "sql_execution.h"

namespace {

dao::Connection& connectionOf(CDaoDatabase* database) {
    if (database == nullptr || database->connection() == nullptr) dao::throwError(dao::kObjectInvalid);
    return *database->connection();
}

}  // namespace

CDaoQueryDef::CDaoQueryDef(CDaoDatabase* database) : m_pDatabase(database) {}
CDaoQueryDef::~CDaoQueryDef() = default;

void CDaoQueryDef::requireOpen() const {
    if (!open_) dao::throwError(dao::kObjectInvalid);
}

// Reads the statement's type and parameters (its syntax errors are thrown). A query
// whose tables do not exist yet keeps its declared parameters only.
void CDaoQueryDef::readParameters() {
    dao::Connection& connection = connectionOf(m_pDatabase);
    const kelvo::jet::Statement parsed = dao::parseSql(connection, sql_);
    type_ = dao::queryType(parsed);
    parameters_.clear();
    if (const auto* query = std::get_if<kelvo::jet::Query>(&parsed)) {
        try {
            parameters_ = dao::queryParameters(dao::prepareQuery(connection, sql_));
        } catch (CDaoException* e) {
            e->Delete();
            for (const auto& declared : query->parameters)
                parameters_.push_back({dao::wide(declared.name), dao::daoType(declared.type),
                                       COleVariant::Null()});
        }
    }
    parameterSet_.assign(parameters_.size(), false);
}

void CDaoQueryDef::Create(const wchar_t* name, const wchar_t* sql) {
    dao::Connection& connection = connectionOf(m_pDatabase);
    const std::wstring queryName = name ? name : L"";
    if (!queryName.empty() && (dao::storedQuery(connection, queryName) || connection.schema(queryName)))
        dao::throwError(dao::kObjectExists, {queryName});
    name_ = queryName;
    sql_ = sql ? sql : L"";
    stored_ = false;
    if (!sql_.empty()) readParameters();
    open_ = true;
}

void CDaoQueryDef::Append() {
    requireOpen();
    if (name_.empty() || stored_) dao::throwError(dao::kInvalidOperation);
    dao::Connection& connection = connectionOf(m_pDatabase);
    connection.requireWritable();
    dao::StoredQuery query;
    query.name = name_;
    query.sql = sql_;
    query.type = type_;
    dao::addStoredQuery(connection, query);
    stored_ = true;
}

void CDaoQueryDef::Open(const wchar_t* name) {
    const auto query = dao::storedQuery(connectionOf(m_pDatabase), name ? name : L"");
    if (!query) dao::throwError(dao::kItemNotFound);
    name_ = query->name;
    sql_ = query->sql;
    stored_ = true;
    readParameters();
    open_ = true;
}

void CDaoQueryDef::Close() {
    open_ = stored_ = false;
    name_.clear();
    sql_.clear();
    parameters_.clear();
    parameterSet_.clear();
}

void CDaoQueryDef::SetSQL(const wchar_t* sql) {
    requireOpen();
    const std::wstring previous = sql_;
    sql_ = sql ? sql : L"";
    try {
        readParameters();
        if (stored_) {
            dao::Connection& connection = connectionOf(m_pDatabase);
            connection.requireWritable();
            dao::updateStoredQuery(connection, name_, sql_, type_);
        }
    } catch (CDaoException*) {
        sql_ = previous;
        throw;
    }
}

short CDaoQueryDef::GetType() const {
    requireOpen();
    return type_;
}

bool CDaoQueryDef::GetReturnsRecords() const { return GetType() == dbQSelect; }

bool CDaoQueryDef::CanUpdate() const { return m_pDatabase != nullptr && m_pDatabase->CanUpdate(); }

short CDaoQueryDef::GetParameterCount() const {
    requireOpen();
    return static_cast<short>(parameters_.size());
}

void CDaoQueryDef::GetParameterInfo(int index, CDaoParameterInfo& info, DWORD) const {
    requireOpen();
    if (index < 0 || index >= static_cast<int>(parameters_.size())) dao::throwError(dao::kItemNotFound);
    info = parameters_[static_cast<std::size_t>(index)];
}

int CDaoQueryDef::parameterIndex(const wchar_t* name) const {
    requireOpen();
    for (std::size_t i = 0; i < parameters_.size(); ++i)
        if (dao::sameName(parameters_[i].m_strName, name ? name : L"")) return static_cast<int>(i);
    dao::throwError(dao::kItemNotFound);
}

COleVariant CDaoQueryDef::GetParamValue(const wchar_t* name) const {
    return GetParamValue(parameterIndex(name));
}

COleVariant CDaoQueryDef::GetParamValue(int index) const {
    CDaoParameterInfo info;
    GetParameterInfo(index, info);
    return info.m_varValue;
}

void CDaoQueryDef::SetParamValue(const wchar_t* name, const COleVariant& value) {
    SetParamValue(parameterIndex(name), value);
}

void CDaoQueryDef::SetParamValue(int index, const COleVariant& value) {
    requireOpen();
    if (index < 0 || index >= static_cast<int>(parameters_.size())) dao::throwError(dao::kItemNotFound);
    parameters_[static_cast<std::size_t>(index)].m_varValue = value;
    parameterSet_[static_cast<std::size_t>(index)] = true;
}

void CDaoQueryDef::Execute(int) {
    requireOpen();
    recordsAffected_ = 0;
    recordsAffected_ = dao::executeSql(connectionOf(m_pDatabase), sql_, parameters_, parameterSet_);
}
