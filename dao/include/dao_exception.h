// The data access engine's exception: a DAO error number and its English message.
// Thrown as a pointer, like every exception of the class library; whoever handles it
// finally calls Delete().
#pragma once

#include <string>

#include "afx.h"

class CDaoException : public CException {
public:
    CDaoException(long daoCode, std::wstring message)
        : CException(message), daoCode_(daoCode), message_(std::move(message)) {}

    long daoCode() const { return daoCode_; }
    const std::wstring& message() const { return message_; }

private:
    long daoCode_;
    std::wstring message_;
};
