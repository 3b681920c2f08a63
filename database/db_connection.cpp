// CDBConnection: the database itself and the last error.
#include "database/db_connection.h"

#include "database/table_cursor.h"

namespace {

// The engine answers this for a file that is damaged or not a database at all.
constexpr long kNeedsRepair = dao::kUnrecognizedFormat;

}  // namespace

CDBConnection::CDBConnection() = default;

CDBConnection::~CDBConnection() {
    close();
}

std::wstring CDBConnection::open(const std::wstring& path, bool readOnly) {
    clearError();
    close();
    try {
        database_.Open(path.c_str(), false, readOnly, L"");
        return database_.GetName();
    } catch (CDaoException* error) {
        const bool repair = error->daoCode() == kNeedsRepair;
        recordError(error);
        return repair ? kRepair : L"";
    }
}

bool CDBConnection::create(const std::wstring& path) {
    clearError();
    try {
        database_.Create(path.c_str(), dbLangGeneral, 0);
        database_.Close();
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

void CDBConnection::close() {
    closeAllTables();
    if (database_.IsOpen()) database_.Close();
}

bool CDBConnection::isOpen() const {
    return database_.IsOpen();
}

bool CDBConnection::canUpdate() const {
    return database_.IsOpen() && database_.CanUpdate();
}

std::wstring CDBConnection::databasePath() const {
    return database_.IsOpen() ? database_.GetName() : std::wstring();
}

bool CDBConnection::tableExists(const std::wstring& name, VARIANT_BOOL& answer) {
    clearError();
    answer = VARIANT_FALSE;
    if (!database_.IsOpen()) return true;
    try {
        const short count = database_.GetTableDefCount();
        for (short i = 0; i < count; ++i) {
            CDaoTableDefInfo info;
            database_.GetTableDefInfo(i, info, AFX_DAO_PRIMARY_INFO);
            if (kelvo::database::sameTableName(info.m_strName, name)) {
                answer = VARIANT_TRUE;
                break;
            }
        }
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

bool CDBConnection::requireWritableDatabase() {
    if (!database_.IsOpen()) return false;
    if (database_.CanUpdate()) return true;
    errorCode_ = dao::kReadOnly;
    errorText_ = dao::errorText(dao::kReadOnly);
    errorFlag_ = true;
    return false;
}

bool CDBConnection::compact(const std::wstring& source, const std::wstring& destination) {
    clearError();
    try {
        CDaoWorkspace::CompactDatabase(source.c_str(), destination.c_str(), dbLangGeneral, 0);
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

void CDBConnection::lastError(long& code, std::wstring& text) const {
    code = errorCode_;
    text = errorText_;
}

void CDBConnection::recordError(long code, std::wstring text) {
    errorCode_ = code;
    errorText_ = std::move(text);
    errorFlag_ = true;
}

void CDBConnection::recordError(CDaoException* error) {
    errorCode_ = error->daoCode();
    errorText_ = error->message();
    errorFlag_ = true;
    error->Delete();
}
