// The handler guard: runs an inner handler of a native LISP function, turns its
// argument status into the host's result code and prints the one message that goes
// with it. Nothing else in the module prints about arguments.
#pragma once

namespace kelvo {

// What an inner handler returns.
enum ArgStatus : int {
    kArgOk = 0,          // result set
    kTooFewArgs = 1,     // "\nToo few arguments passed.\n"
    kWrongArgType = 2,   // "\nWrong type of arguments passed.\n"
    kBadArgData = 3,     // "\nBad data passed .\n"
    kWantTextScreen = 4  // switches to the text screen, prints an empty text
};

using InnerHandler = int (*)();

// Calls `handler` and returns RSRSLT for status 0 (and any unknown status), RSERR for
// 1 to 4 after printing its message. A CException* thrown by the handler prints
// "\nGeneral Exception" and travels on; anything else prints "\nError" and travels on.
int runGuarded(InnerHandler handler);

// The per-call guard that runs before every function of the database table. The bridge
// knows nothing of connections: the module installs the database layer's guard when it
// starts and removes it when it stops.
using CallGuard = void (*)();
void setDatabaseCallGuard(CallGuard guard);

// The callback body of a database-table (kv_) function: the installed per-call guard,
// then runGuarded.
int runDatabaseCall(InnerHandler handler);

// Prints the message of `status` and returns its host result code (runGuarded uses it).
int reportStatus(int status);

}  // namespace kelvo
