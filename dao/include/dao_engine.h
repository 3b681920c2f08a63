// Starting and stopping the data access engine (SQLite underneath), and the module
// state word that selects the engine version.
//
// States: stopped -> started [AfxDaoInit] -> stopped [AfxDaoTerm]. AfxDaoInit on a
// started engine does nothing. Starting fails with a CDaoException* when the storage
// engine cannot initialise, or when the KELVO_FAULT environment variable contains
// "dao-init" (fault injection for tests of the start-up failure path).
#pragma once

// What the module keeps about the engine: the version it binds to (0x0601 asks for
// DAO 3.6) and the per-module engine state, created by AfxDaoInit and deleted by the
// module after AfxDaoTerm.
struct DaoEngineState {
    bool started = false;
};

struct AFX_MODULE_STATE {
    unsigned long m_dwVersion = 0;
    DaoEngineState* m_pDaoState = nullptr;
};

// The module's own state (one per module that links the engine).
AFX_MODULE_STATE* AfxGetModuleState();

// Starts the engine. Throws CDaoException* on failure.
void AfxDaoInit();
// Stops the engine; safe to call when it was never started.
void AfxDaoTerm();
