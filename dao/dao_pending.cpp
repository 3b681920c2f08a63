// Engine calls whose implementation has not landed yet: each says so when called.
#include "dao.h"
#include "dao_connection.h"
#include "dao_cursor.h"

namespace {
[[noreturn]] void pending(const wchar_t* what) {
    throw new CDaoException(dao::kNotSupported, std::wstring(what) + L": not implemented yet.");
}
}  // namespace



void CDaoWorkspace::CompactDatabase(const wchar_t*, const wchar_t*, const wchar_t*, int) { pending(L"CompactDatabase"); }

CDaoDatabase::CDaoDatabase() = default;
CDaoDatabase::~CDaoDatabase() = default;
void CDaoDatabase::Open(const wchar_t*, bool, bool, const wchar_t*) { pending(L"CDaoDatabase::Open"); }
void CDaoDatabase::Create(const wchar_t*, const wchar_t*, int) { pending(L"CDaoDatabase::Create"); }
void CDaoDatabase::Close() {}
bool CDaoDatabase::IsOpen() const { return false; }
bool CDaoDatabase::CanUpdate() const { return false; }
std::wstring CDaoDatabase::GetName() const { pending(L"CDaoDatabase::GetName"); }
std::wstring CDaoDatabase::GetConnect() const { pending(L"CDaoDatabase::GetConnect"); }
void CDaoDatabase::Execute(const wchar_t*, int) { pending(L"CDaoDatabase::Execute"); }
long CDaoDatabase::GetRecordsAffected() const { pending(L"CDaoDatabase::GetRecordsAffected"); }
void CDaoDatabase::BeginTrans() { pending(L"CDaoDatabase::BeginTrans"); }
void CDaoDatabase::CommitTrans() { pending(L"CDaoDatabase::CommitTrans"); }
void CDaoDatabase::Rollback() { pending(L"CDaoDatabase::Rollback"); }
short CDaoDatabase::GetTableDefCount() { pending(L"GetTableDefCount"); }
void CDaoDatabase::GetTableDefInfo(int, CDaoTableDefInfo&, DWORD) { pending(L"GetTableDefInfo"); }
void CDaoDatabase::GetTableDefInfo(const wchar_t*, CDaoTableDefInfo&, DWORD) { pending(L"GetTableDefInfo"); }
void CDaoDatabase::DeleteTableDef(const wchar_t*) { pending(L"DeleteTableDef"); }
short CDaoDatabase::GetQueryDefCount() { pending(L"GetQueryDefCount"); }
void CDaoDatabase::GetQueryDefInfo(int, CDaoQueryDefInfo&, DWORD) { pending(L"GetQueryDefInfo"); }
void CDaoDatabase::GetQueryDefInfo(const wchar_t*, CDaoQueryDefInfo&, DWORD) { pending(L"GetQueryDefInfo"); }
void CDaoDatabase::DeleteQueryDef(const wchar_t*) { pending(L"DeleteQueryDef"); }
short CDaoDatabase::GetRelationCount() { pending(L"GetRelationCount"); }
void CDaoDatabase::GetRelationInfo(int, CDaoRelationInfo&, DWORD) { pending(L"GetRelationInfo"); }
void CDaoDatabase::GetRelationInfo(const wchar_t*, CDaoRelationInfo&, DWORD) { pending(L"GetRelationInfo"); }
void CDaoDatabase::CreateRelation(const wchar_t*, const wchar_t*, const wchar_t*, long, const wchar_t*, const wchar_t*) { pending(L"CreateRelation"); }
void CDaoDatabase::CreateRelation(CDaoRelationInfo&) { pending(L"CreateRelation"); }
void CDaoDatabase::DeleteRelation(const wchar_t*) { pending(L"DeleteRelation"); }

CDaoRecordset::CDaoRecordset(CDaoDatabase* database) : m_pDatabase(database) {}
CDaoRecordset::~CDaoRecordset() = default;
void CDaoRecordset::Open(int, const wchar_t*, int) { pending(L"CDaoRecordset::Open"); }
void CDaoRecordset::Open(CDaoQueryDef*, int, int) { pending(L"CDaoRecordset::Open"); }
void CDaoRecordset::Open(CDaoTableDef*, int, int) { pending(L"CDaoRecordset::Open"); }
void CDaoRecordset::Close() { cursor_.reset(); }
bool CDaoRecordset::IsOpen() const { return cursor_ != nullptr; }
bool CDaoRecordset::IsBOF() const { pending(L"IsBOF"); }
bool CDaoRecordset::IsEOF() const { pending(L"IsEOF"); }
void CDaoRecordset::MoveFirst() { pending(L"MoveFirst"); }
void CDaoRecordset::MoveLast() { pending(L"MoveLast"); }
void CDaoRecordset::MoveNext() { pending(L"MoveNext"); }
void CDaoRecordset::MovePrev() { pending(L"MovePrev"); }
void CDaoRecordset::Move(long) { pending(L"Move"); }
long CDaoRecordset::GetRecordCount() { pending(L"GetRecordCount"); }
short CDaoRecordset::GetFieldCount() { pending(L"GetFieldCount"); }
void CDaoRecordset::GetFieldInfo(int, CDaoFieldInfo&, DWORD) { pending(L"GetFieldInfo"); }
void CDaoRecordset::GetFieldInfo(const wchar_t*, CDaoFieldInfo&, DWORD) { pending(L"GetFieldInfo"); }
COleVariant CDaoRecordset::GetFieldValue(int) { pending(L"GetFieldValue"); }
COleVariant CDaoRecordset::GetFieldValue(const wchar_t*) { pending(L"GetFieldValue"); }
void CDaoRecordset::SetFieldValue(int, const COleVariant&) { pending(L"SetFieldValue"); }
void CDaoRecordset::SetFieldValue(const wchar_t*, const COleVariant&) { pending(L"SetFieldValue"); }
void CDaoRecordset::SetFieldValueNull(int) { pending(L"SetFieldValueNull"); }
void CDaoRecordset::SetFieldValueNull(const wchar_t*) { pending(L"SetFieldValueNull"); }
void CDaoRecordset::AddNew() { pending(L"AddNew"); }
void CDaoRecordset::Edit() { pending(L"Edit"); }
void CDaoRecordset::Update() { pending(L"Update"); }
void CDaoRecordset::CancelUpdate() { pending(L"CancelUpdate"); }
void CDaoRecordset::Delete() { pending(L"Delete"); }
short CDaoRecordset::GetEditMode() const { pending(L"GetEditMode"); }
bool CDaoRecordset::CanUpdate() const { pending(L"CanUpdate"); }
COleVariant CDaoRecordset::GetBookmark() { pending(L"GetBookmark"); }
void CDaoRecordset::SetBookmark(const COleVariant&) { pending(L"SetBookmark"); }
COleVariant CDaoRecordset::GetLastModifiedBookmark() { pending(L"GetLastModifiedBookmark"); }
void CDaoRecordset::SetCurrentIndex(const wchar_t*) { pending(L"SetCurrentIndex"); }
std::wstring CDaoRecordset::GetCurrentIndex() { pending(L"GetCurrentIndex"); }
bool CDaoRecordset::Seek(const wchar_t*, const COleVariant*, int) { pending(L"Seek"); }
bool CDaoRecordset::Seek(const wchar_t*, const COleVariant*, const COleVariant*, const COleVariant*) { pending(L"Seek"); }
void CDaoRecordset::SetLockingMode(bool pessimistic) { pessimistic_ = pessimistic; }
bool CDaoRecordset::GetLockingMode() const { return pessimistic_; }
std::wstring CDaoRecordset::GetName() const { pending(L"GetName"); }
std::wstring CDaoRecordset::GetSQL() const { pending(L"GetSQL"); }
short CDaoRecordset::GetType() const { pending(L"GetType"); }
long CDaoRecordset::GetAbsolutePosition() { pending(L"GetAbsolutePosition"); }
void CDaoRecordset::Requery() { pending(L"Requery"); }
short CDaoRecordset::GetIndexCount() { pending(L"GetIndexCount"); }
void CDaoRecordset::GetIndexInfo(int, CDaoIndexInfo&, DWORD) { pending(L"GetIndexInfo"); }
void CDaoRecordset::GetIndexInfo(const wchar_t*, CDaoIndexInfo&, DWORD) { pending(L"GetIndexInfo"); }
dao::Cursor& CDaoRecordset::cursor() const { pending(L"cursor"); }

CDaoQueryDef::CDaoQueryDef(CDaoDatabase* database) : m_pDatabase(database) {}
CDaoQueryDef::~CDaoQueryDef() = default;
void CDaoQueryDef::Create(const wchar_t*, const wchar_t*) { pending(L"CDaoQueryDef::Create"); }
void CDaoQueryDef::Append() { pending(L"CDaoQueryDef::Append"); }
void CDaoQueryDef::Open(const wchar_t*) { pending(L"CDaoQueryDef::Open"); }
void CDaoQueryDef::Close() { open_ = false; }
void CDaoQueryDef::SetSQL(const wchar_t*) { pending(L"SetSQL"); }
short CDaoQueryDef::GetType() const { pending(L"GetType"); }
bool CDaoQueryDef::GetReturnsRecords() const { pending(L"GetReturnsRecords"); }
bool CDaoQueryDef::CanUpdate() const { pending(L"CanUpdate"); }
short CDaoQueryDef::GetParameterCount() const { pending(L"GetParameterCount"); }
void CDaoQueryDef::GetParameterInfo(int, CDaoParameterInfo&, DWORD) const { pending(L"GetParameterInfo"); }
COleVariant CDaoQueryDef::GetParamValue(const wchar_t*) const { pending(L"GetParamValue"); }
COleVariant CDaoQueryDef::GetParamValue(int) const { pending(L"GetParamValue"); }
void CDaoQueryDef::SetParamValue(const wchar_t*, const COleVariant&) { pending(L"SetParamValue"); }
void CDaoQueryDef::SetParamValue(int, const COleVariant&) { pending(L"SetParamValue"); }
void CDaoQueryDef::Execute(int) { pending(L"CDaoQueryDef::Execute"); }
void CDaoQueryDef::requireOpen() const { pending(L"requireOpen"); }

CDaoTableDef::CDaoTableDef(CDaoDatabase* database) : m_pDatabase(database) {}
CDaoTableDef::~CDaoTableDef() = default;
void CDaoTableDef::Open(const wchar_t*) { pending(L"CDaoTableDef::Open"); }
void CDaoTableDef::Create(const wchar_t*, long, const wchar_t*, const wchar_t*) { pending(L"CDaoTableDef::Create"); }
void CDaoTableDef::Append() { pending(L"CDaoTableDef::Append"); }
void CDaoTableDef::Close() { state_ = State::closed; }
void CDaoTableDef::SetName(const wchar_t*) { pending(L"SetName"); }
bool CDaoTableDef::CanUpdate() const { pending(L"CanUpdate"); }
long CDaoTableDef::GetRecordCount() { pending(L"GetRecordCount"); }
void CDaoTableDef::CreateField(const wchar_t*, short, long, long) { pending(L"CreateField"); }
void CDaoTableDef::CreateField(CDaoFieldInfo&) { pending(L"CreateField"); }
void CDaoTableDef::DeleteField(const wchar_t*) { pending(L"DeleteField"); }
void CDaoTableDef::DeleteField(int) { pending(L"DeleteField"); }
short CDaoTableDef::GetFieldCount() { pending(L"GetFieldCount"); }
void CDaoTableDef::GetFieldInfo(int, CDaoFieldInfo&, DWORD) { pending(L"GetFieldInfo"); }
void CDaoTableDef::GetFieldInfo(const wchar_t*, CDaoFieldInfo&, DWORD) { pending(L"GetFieldInfo"); }
void CDaoTableDef::CreateIndex(CDaoIndexInfo&) { pending(L"CreateIndex"); }
void CDaoTableDef::DeleteIndex(const wchar_t*) { pending(L"DeleteIndex"); }
void CDaoTableDef::DeleteIndex(int) { pending(L"DeleteIndex"); }
short CDaoTableDef::GetIndexCount() { pending(L"GetIndexCount"); }
void CDaoTableDef::GetIndexInfo(int, CDaoIndexInfo&, DWORD) { pending(L"GetIndexInfo"); }
void CDaoTableDef::GetIndexInfo(const wchar_t*, CDaoIndexInfo&, DWORD) { pending(L"GetIndexInfo"); }
void CDaoTableDef::requireOpen() const { pending(L"requireOpen"); }

