// CDaoRecordset: opens the right cursor and hands every call to it.
#include "dao_recordset.h"

#include <cwctype>

#include "catalog.h"
#include "dao_connection.h"
#include "dao_database.h"
#include "dao_errors.h"
#include "dao_querydef.h"
#include "dao_tabledef.h"
#include "info_records.h"
#include "query_cursor.h"
#include "table_cursor.h"

namespace {

dao::Connection& connectionOf(CDaoDatabase* database) {
    if (database == nullptr || database->connection() == nullptr) dao::throwError(dao::kObjectInvalid);
    return *database->connection();
}

// Whether a recordset source is SQL rather than the name of a table or query.
bool isSql(std::wstring_view source) {
    std::size_t i = 0;
    while (i < source.size() && (std::iswspace(source[i]) || source[i] == L'(')) ++i;
    std::wstring word;
    while (i < source.size() && std::iswalpha(source[i])) word += static_cast<wchar_t>(std::towupper(source[i++]));
    return i < source.size() && (word == L"SELECT" || word == L"TRANSFORM" || word == L"PARAMETERS");
}

}  // namespace

CDaoRecordset::CDaoRecordset(CDaoDatabase* database) : m_pDatabase(database) {}
CDaoRecordset::~CDaoRecordset() = default;

dao::Cursor& CDaoRecordset::cursor() const {
    if (!cursor_ || cursor_->detached()) dao::throwError(dao::kObjectInvalid);
    return *cursor_;
}

void CDaoRecordset::Open(int openType, const wchar_t* source, int options) {
    if (IsOpen()) dao::throwError(dao::kInvalidOperation);
    cursor_.reset();
    dao::Connection& connection = connectionOf(m_pDatabase);
    const std::wstring text = source ? source : L"";
    const bool readOnly = (options & dbReadOnly) != 0;
    if (!isSql(text)) {
        if (const dao::TableSchema* schema = connection.schema(text)) {
            const short type = static_cast<short>(openType == AFX_DAO_USE_DEFAULT_TYPE ? dbOpenTable : openType);
            cursor_ = std::make_unique<dao::TableCursor>(connection, *schema, type, readOnly);
            return;
        }
        if (const auto stored = dao::storedQuery(connection, text)) {
            if (openType == dbOpenTable) dao::throwError(dao::kNotSupported);
            dao::PreparedQuery prepared = dao::prepareQuery(connection, stored->sql);
            if (!prepared.query.returnsRows) dao::throwError(dao::kInvalidOperation);
            dao::bindParameters(prepared, {}, {});
            cursor_ = std::make_unique<dao::QueryCursor>(prepared, stored->name, stored->sql,
                                                         static_cast<short>(openType == AFX_DAO_USE_DEFAULT_TYPE ? dbOpenDynaset : openType));
            return;
        }
        dao::throwError(dao::kInputTableNotFound, {text});
    }
    if (openType == dbOpenTable) dao::throwError(dao::kNotSupported);
    dao::PreparedQuery prepared = dao::prepareQuery(connection, text);
    if (!prepared.query.returnsRows) dao::throwError(dao::kInvalidOperation);
    dao::bindParameters(prepared, {}, {});
    cursor_ = std::make_unique<dao::QueryCursor>(
        prepared, text, text, static_cast<short>(openType == AFX_DAO_USE_DEFAULT_TYPE ? dbOpenDynaset : openType));
}

void CDaoRecordset::Open(CDaoQueryDef* queryDef, int openType, int) {
    if (IsOpen()) dao::throwError(dao::kInvalidOperation);
    cursor_.reset();
    if (queryDef == nullptr || !queryDef->IsOpen()) dao::throwError(dao::kObjectInvalid);
    if (openType == dbOpenTable) dao::throwError(dao::kNotSupported);
    dao::Connection& connection = connectionOf(queryDef->m_pDatabase);
    dao::PreparedQuery prepared = dao::prepareQuery(connection, queryDef->sql_);
    if (!prepared.query.returnsRows) dao::throwError(dao::kInvalidOperation);
    dao::bindParameters(prepared, queryDef->parameters_, queryDef->parameterSet_);
    cursor_ = std::make_unique<dao::QueryCursor>(
        prepared, queryDef->name_.empty() ? queryDef->sql_ : queryDef->name_, queryDef->sql_,
        static_cast<short>(openType == AFX_DAO_USE_DEFAULT_TYPE ? dbOpenDynaset : openType));
}

void CDaoRecordset::Open(CDaoTableDef* tableDef, int openType, int options) {
    if (tableDef == nullptr || !tableDef->IsOpen()) dao::throwError(dao::kObjectInvalid);
    m_pDatabase = tableDef->m_pDatabase;
    const std::wstring name = tableDef->GetName();
    Open(openType == AFX_DAO_USE_DEFAULT_TYPE ? dbOpenTable : openType, name.c_str(), options);
}

void CDaoRecordset::Close() { cursor_.reset(); }
bool CDaoRecordset::IsOpen() const { return cursor_ != nullptr && !cursor_->detached(); }
bool CDaoRecordset::IsBOF() const { return cursor().isBOF(); }
bool CDaoRecordset::IsEOF() const { return cursor().isEOF(); }
void CDaoRecordset::MoveFirst() { cursor().moveFirst(); }
void CDaoRecordset::MoveLast() { cursor().moveLast(); }
void CDaoRecordset::MoveNext() { cursor().moveNext(); }
void CDaoRecordset::MovePrev() { cursor().movePrev(); }
void CDaoRecordset::Move(long rows) { cursor().move(rows); }
long CDaoRecordset::GetRecordCount() { return cursor().recordCount(); }
short CDaoRecordset::GetFieldCount() { return static_cast<short>(cursor().fields().size()); }

void CDaoRecordset::GetFieldInfo(int index, CDaoFieldInfo& info, DWORD) {
    dao::Cursor& c = cursor();
    const int at = c.checkedIndex(index);
    const dao::TableSchema* schema = c.schema();
    info = dao::fieldInfo(c.fields()[static_cast<std::size_t>(at)], at,
                          schema ? schema->name : std::wstring(), c.canUpdate());
}

void CDaoRecordset::GetFieldInfo(const wchar_t* name, CDaoFieldInfo& info, DWORD level) {
    GetFieldInfo(cursor().fieldIndex(name ? name : L""), info, level);
}

COleVariant CDaoRecordset::GetFieldValue(int index) { return cursor().value(index); }

COleVariant CDaoRecordset::GetFieldValue(const wchar_t* name) {
    dao::Cursor& c = cursor();
    return c.value(c.fieldIndex(name ? name : L""));
}

void CDaoRecordset::SetFieldValue(int index, const COleVariant& value) { cursor().setValue(index, value); }

void CDaoRecordset::SetFieldValue(const wchar_t* name, const COleVariant& value) {
    dao::Cursor& c = cursor();
    c.setValue(c.fieldIndex(name ? name : L""), value);
}

void CDaoRecordset::SetFieldValueNull(int index) { SetFieldValue(index, COleVariant::Null()); }
void CDaoRecordset::SetFieldValueNull(const wchar_t* name) { SetFieldValue(name, COleVariant::Null()); }

void CDaoRecordset::AddNew() { cursor().addNew(); }
void CDaoRecordset::Edit() { cursor().edit(pessimistic_); }
void CDaoRecordset::Update() { cursor().update(); }
void CDaoRecordset::CancelUpdate() { cursor().cancelUpdate(); }
void CDaoRecordset::Delete() { cursor().remove(); }
short CDaoRecordset::GetEditMode() const { return cursor().editMode(); }
bool CDaoRecordset::CanUpdate() const { return cursor().canUpdate(); }

COleVariant CDaoRecordset::GetBookmark() { return cursor().bookmark(); }
void CDaoRecordset::SetBookmark(const COleVariant& bookmark) { cursor().setBookmark(bookmark); }
COleVariant CDaoRecordset::GetLastModifiedBookmark() { return cursor().lastModified(); }

void CDaoRecordset::SetCurrentIndex(const wchar_t* index) { cursor().setIndex(index ? index : L""); }
std::wstring CDaoRecordset::GetCurrentIndex() { return cursor().index(); }

bool CDaoRecordset::Seek(const wchar_t* comparison, const COleVariant* keys, int count) {
    return cursor().seek(comparison ? comparison : L"", keys, count);
}

bool CDaoRecordset::Seek(const wchar_t* comparison, const COleVariant* key1,
                         const COleVariant* key2, const COleVariant* key3) {
    std::vector<COleVariant> keys;
    for (const COleVariant* key : {key1, key2, key3}) {
        if (key == nullptr) break;
        keys.push_back(*key);
    }
    return Seek(comparison, keys.data(), static_cast<int>(keys.size()));
}

void CDaoRecordset::SetLockingMode(bool pessimistic) { pessimistic_ = pessimistic; }
bool CDaoRecordset::GetLockingMode() const { return pessimistic_; }
std::wstring CDaoRecordset::GetName() const { return cursor().name(); }
std::wstring CDaoRecordset::GetSQL() const { return cursor().sql(); }
short CDaoRecordset::GetType() const { return cursor().type(); }
long CDaoRecordset::GetAbsolutePosition() { return cursor().absolutePosition(); }
void CDaoRecordset::Requery() { cursor().requery(); }

short CDaoRecordset::GetIndexCount() {
    const dao::TableSchema* schema = cursor().schema();
    return static_cast<short>(schema ? schema->indexes.size() : 0);
}

void CDaoRecordset::GetIndexInfo(int index, CDaoIndexInfo& info, DWORD) {
    const dao::TableSchema* schema = cursor().schema();
    if (schema == nullptr || index < 0 || index >= static_cast<int>(schema->indexes.size()))
        dao::throwError(dao::kItemNotFound);
    info = dao::indexInfo(schema->indexes[static_cast<std::size_t>(index)], schema->fields);
}

void CDaoRecordset::GetIndexInfo(const wchar_t* name, CDaoIndexInfo& info, DWORD level) {
    const dao::TableSchema* schema = cursor().schema();
    if (schema != nullptr)
        for (std::size_t i = 0; i < schema->indexes.size(); ++i)
            if (dao::sameName(schema->indexes[i].name, name ? name : L"")) {
                GetIndexInfo(static_cast<int>(i), info, level);
                return;
            }
    dao::throwError(dao::kItemNotFound);
}
