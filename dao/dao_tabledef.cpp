// CDaoTableDef: table designs, and changes to existing tables.
#include "dao_tabledef.h"

#include "dao_connection.h"
#include "dao_database.h"
#include "dao_errors.h"
#include "info_records.h"
#include "table_ddl.h"

namespace {

dao::Connection& connectionOf(CDaoDatabase* database) {
    if (database == nullptr || database->connection() == nullptr) dao::throwError(dao::kObjectInvalid);
    return *database->connection();
}

}  // namespace

CDaoTableDef::CDaoTableDef(CDaoDatabase* database) : m_pDatabase(database) {}
CDaoTableDef::~CDaoTableDef() = default;

void CDaoTableDef::requireOpen() const {
    if (state_ == State::closed) dao::throwError(dao::kObjectInvalid);
}

void CDaoTableDef::Open(const wchar_t* name) {
    const dao::TableSchema* schema = connectionOf(m_pDatabase).schema(name ? name : L"");
    if (schema == nullptr) dao::throwError(dao::kItemNotFound);
    name_ = schema->name;
    state_ = State::open;
}

void CDaoTableDef::Create(const wchar_t* name, long, const wchar_t*, const wchar_t*) {
    const std::wstring tableName = name ? name : L"";
    if (connectionOf(m_pDatabase).schema(tableName) != nullptr)
        dao::throwError(dao::kTableExists, {tableName});
    name_ = tableName;
    fields_.clear();
    indexes_.clear();
    state_ = State::designing;
}

void CDaoTableDef::Append() {
    if (state_ != State::designing) dao::throwError(dao::kInvalidOperation);
    dao::TableDesign design;
    design.name = name_;
    for (const CDaoFieldInfo& field : fields_) design.fields.push_back(dao::fieldFromInfo(field));
    for (const CDaoIndexInfo& index : indexes_) design.indexes.push_back(dao::indexFromInfo(index));
    dao::createTable(connectionOf(m_pDatabase), design);
    fields_.clear();
    indexes_.clear();
    state_ = State::open;
}

void CDaoTableDef::Close() {
    state_ = State::closed;
    fields_.clear();
    indexes_.clear();
}

void CDaoTableDef::SetName(const wchar_t* name) {
    requireOpen();
    const std::wstring newName = name ? name : L"";
    if (state_ == State::open) dao::renameTable(connectionOf(m_pDatabase), name_, newName);
    name_ = newName;
}

bool CDaoTableDef::CanUpdate() const { return m_pDatabase != nullptr && m_pDatabase->CanUpdate(); }

long CDaoTableDef::GetRecordCount() {
    requireOpen();
    if (state_ == State::designing) return 0;
    dao::Connection& connection = connectionOf(m_pDatabase);
    dao::Statement count(connection.db(), "SELECT count(*) FROM " + dao::quoteName(name_));
    count.step();
    const long records = static_cast<long>(count.integer(0));
    count.reset();
    return records;
}

void CDaoTableDef::CreateField(const wchar_t* name, short type, long size, long attributes) {
    CDaoFieldInfo info;
    info.m_strName = name ? name : L"";
    info.m_nType = type;
    info.m_lSize = size;
    info.m_lAttributes = attributes;
    info.m_bAllowZeroLength = true;
    CreateField(info);
}

void CDaoTableDef::CreateField(CDaoFieldInfo& info) {
    requireOpen();
    const dao::FieldDef field = dao::fieldFromInfo(info);
    if (state_ == State::open) {
        dao::addField(connectionOf(m_pDatabase), name_, field);
        return;
    }
    dao::checkField(field);
    for (const CDaoFieldInfo& existing : fields_)
        if (dao::sameName(existing.m_strName, info.m_strName)) dao::throwError(dao::kFieldDefinedTwice);
    fields_.push_back(info);
}

void CDaoTableDef::DeleteField(const wchar_t* name) {
    requireOpen();
    if (state_ == State::open) {
        dao::dropField(connectionOf(m_pDatabase), name_, name ? name : L"");
        return;
    }
    for (auto it = fields_.begin(); it != fields_.end(); ++it)
        if (dao::sameName(it->m_strName, name ? name : L"")) {
            fields_.erase(it);
            return;
        }
    dao::throwError(dao::kItemNotFound);
}

void CDaoTableDef::DeleteField(int index) {
    CDaoFieldInfo info;
    GetFieldInfo(index, info);
    DeleteField(info.m_strName.c_str());
}

short CDaoTableDef::GetFieldCount() {
    requireOpen();
    if (state_ == State::designing) return static_cast<short>(fields_.size());
    return static_cast<short>(connectionOf(m_pDatabase).requireSchema(name_).fields.size());
}

void CDaoTableDef::GetFieldInfo(int index, CDaoFieldInfo& info, DWORD) {
    requireOpen();
    if (state_ == State::designing) {
        if (index < 0 || index >= static_cast<int>(fields_.size())) dao::throwError(dao::kItemNotFound);
        info = fields_[static_cast<std::size_t>(index)];
        info.m_nOrdinal = static_cast<short>(index);
        return;
    }
    const dao::TableSchema& schema = connectionOf(m_pDatabase).requireSchema(name_);
    if (index < 0 || index >= static_cast<int>(schema.fields.size())) dao::throwError(dao::kItemNotFound);
    info = dao::fieldInfo(schema.fields[static_cast<std::size_t>(index)], index, schema.name, CanUpdate());
}

void CDaoTableDef::GetFieldInfo(const wchar_t* name, CDaoFieldInfo& info, DWORD level) {
    const short count = GetFieldCount();
    for (int i = 0; i < count; ++i) {
        GetFieldInfo(i, info, level);
        if (dao::sameName(info.m_strName, name ? name : L"")) return;
    }
    dao::throwError(dao::kItemNotFound);
}

void CDaoTableDef::CreateIndex(CDaoIndexInfo& info) {
    requireOpen();
    if (state_ == State::open) {
        dao::createIndex(connectionOf(m_pDatabase), name_, dao::indexFromInfo(info));
        return;
    }
    for (const CDaoIndexInfo& existing : indexes_)
        if (dao::sameName(existing.m_strName, info.m_strName)) dao::throwError(dao::kIndexExists);
    indexes_.push_back(info);
}

void CDaoTableDef::DeleteIndex(const wchar_t* name) {
    requireOpen();
    if (state_ == State::open) {
        dao::dropIndex(connectionOf(m_pDatabase), name_, name ? name : L"");
        return;
    }
    for (auto it = indexes_.begin(); it != indexes_.end(); ++it)
        if (dao::sameName(it->m_strName, name ? name : L"")) {
            indexes_.erase(it);
            return;
        }
    dao::throwError(dao::kItemNotFound);
}

void CDaoTableDef::DeleteIndex(int index) {
    CDaoIndexInfo info;
    GetIndexInfo(index, info);
    DeleteIndex(info.m_strName.c_str());
}

short CDaoTableDef::GetIndexCount() {
    requireOpen();
    if (state_ == State::designing) return static_cast<short>(indexes_.size());
    return static_cast<short>(connectionOf(m_pDatabase).requireSchema(name_).indexes.size());
}

void CDaoTableDef::GetIndexInfo(int index, CDaoIndexInfo& info, DWORD) {
    requireOpen();
    if (state_ == State::designing) {
        if (index < 0 || index >= static_cast<int>(indexes_.size())) dao::throwError(dao::kItemNotFound);
        info = indexes_[static_cast<std::size_t>(index)];
        return;
    }
    const dao::TableSchema& schema = connectionOf(m_pDatabase).requireSchema(name_);
    if (index < 0 || index >= static_cast<int>(schema.indexes.size())) dao::throwError(dao::kItemNotFound);
    info = dao::indexInfo(schema.indexes[static_cast<std::size_t>(index)], schema.fields);
}

void CDaoTableDef::GetIndexInfo(const wchar_t* name, CDaoIndexInfo& info, DWORD level) {
    const short count = GetIndexCount();
    for (int i = 0; i < count; ++i) {
        GetIndexInfo(i, info, level);
        if (dao::sameName(info.m_strName, name ? name : L"")) return;
    }
    dao::throwError(dao::kItemNotFound);
}
