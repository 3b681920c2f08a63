// The per-call guard of the database functions.
#include "database/call_guard.h"

#include "acdocman.h"

namespace kelvo::database {
namespace {

std::wstring& checkedDocument() {
    static std::wstring name;
    return name;
}

}  // namespace

void checkCurrentDocument() {
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager != nullptr ? manager->curDocument() : nullptr;
    const ACHAR* fileName = document != nullptr ? document->fileName() : nullptr;
    checkedDocument() = fileName != nullptr ? fileName : L"";
}

const std::wstring& lastCheckedDocument() {
    return checkedDocument();
}

}  // namespace kelvo::database
