// Start and stop of the data access engine over SQLite.
#include "dao_engine.h"

#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "dao_exception.h"

namespace {

// DAO's "couldn't initialize DAO/Jet db engine" error.
constexpr long kDaoEngineInitFailed = 3633;

bool faultInjected() {
    const char* fault = std::getenv("KELVO_FAULT");
    return fault != nullptr && std::strstr(fault, "dao-init") != nullptr;
}

[[noreturn]] void throwInitFailure(const std::wstring& detail) {
    throw new CDaoException(kDaoEngineInitFailed,
                            L"Couldn't initialize data access engine (" + detail + L").");
}

}  // namespace

AFX_MODULE_STATE* AfxGetModuleState() {
    static AFX_MODULE_STATE state;
    return &state;
}

void AfxDaoInit() {
    AFX_MODULE_STATE* state = AfxGetModuleState();
    if (state->m_pDaoState != nullptr && state->m_pDaoState->started) return;
    if (faultInjected()) throwInitFailure(L"fault injected");
    if (const int rc = sqlite3_initialize(); rc != SQLITE_OK) {
        const std::string text = sqlite3_errstr(rc);
        throwInitFailure(std::wstring(text.begin(), text.end()));
    }
    if (state->m_pDaoState == nullptr) state->m_pDaoState = new DaoEngineState;
    state->m_pDaoState->started = true;
}

void AfxDaoTerm() {
    AFX_MODULE_STATE* state = AfxGetModuleState();
    if (state->m_pDaoState == nullptr || !state->m_pDaoState->started) return;
    state->m_pDaoState->started = false;
}
