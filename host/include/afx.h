// The host class library's exception base. Exceptions of the class library are thrown
// as pointers and deleted by whoever finally handles them, with Delete().
#pragma once

#include <string>

#include "adsdef.h"

class KELVO_HOST_API CException {
public:
    explicit CException(std::wstring message = {}) : message_(std::move(message)) {}
    virtual ~CException();
    virtual std::wstring errorMessage() const { return message_; }
    void Delete() { delete this; }

private:
    std::wstring message_;
};

// The class library's invalid-argument exception (an empty list asked for its head ...).
class KELVO_HOST_API CInvalidArgException : public CException {
public:
    CInvalidArgException() : CException(L"Invalid argument") {}
};
