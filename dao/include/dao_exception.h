// The data access engine's exception: a DAO error number and its English message, plus the
// storage engine's own result code when one caused it. Thrown as a pointer, like every
// exception of the class library; whoever handles it finally calls Delete().
#pragma once

#include <string>

#include "afx.h"

// The error record a DAO exception carries (one per exception here).
struct CDaoErrorInfo {
    long m_lErrorCode = 0;
    std::wstring m_strSource = L"DAO.Database";
    std::wstring m_strDescription;
    std::wstring m_strHelpFile;
    long m_lHelpContext = 0;
};

class CDaoException : public CException {
public:
    CDaoException(long daoCode, std::wstring message, int sqliteCode = 0)
        : CException(message), daoCode_(daoCode), message_(std::move(message)),
          sqliteCode_(sqliteCode) {
        info_.m_lErrorCode = daoCode_;
        info_.m_strDescription = message_;
    }
    CDaoException(const CDaoException& other)
        : CException(other), daoCode_(other.daoCode_), message_(other.message_),
          sqliteCode_(other.sqliteCode_), info_(other.info_) {}
    CDaoException& operator=(const CDaoException&) = delete;

    long daoCode() const { return daoCode_; }
    const std::wstring& message() const { return message_; }
    // The SQLite result code behind the error (0 when the engine raised it itself).
    int sqliteCode() const { return sqliteCode_; }

    // The class library's view of the same: one error record.
    short GetErrorCount() const { return 1; }
    CDaoErrorInfo* m_pErrorInfo = &info_;

private:
    long daoCode_;
    std::wstring message_;
    int sqliteCode_;
    CDaoErrorInfo info_;
};
