// The module's life in the host: start and stop of the module, and the opening and
// closing of each drawing. The exported entry point only dispatches here.
#pragma once

#include "rxobject.h"

namespace kelvo {

// kInitAppMsg: companion module, running lock, random seed, data access engine, editor
// reactor, host flags, run-time classes. kRetError when the engine fails to start (the
// driver-fix prompt has run and the later steps are skipped), else kRetOK.
AcRx::AppRetCode startModule(void* pkt);
// kUnloadAppMsg: removes the TVLeader class, stops the engine, detaches and deletes the
// reactor, unloads the companion module. The LISP names stay defined.
AcRx::AppRetCode stopModule();
// kLoadDwgMsg: prints the loading line, defines the database table (codes 0..61), adds
// the current document's record, defines the general table (codes from 62).
AcRx::AppRetCode openDrawing();
// kUnloadDwgMsg: runs the database per-call guard, drops the current connection, drops
// the head record, and drops every record when no other document stays open.
AcRx::AppRetCode closeDrawing();

// The entry point's dispatch: the four messages above, kRetOK for any other. An exception
// (memory running out) is printed and answers kRetError; none leaves the module.
AcRx::AppRetCode dispatchAppMessage(AcRx::AppMsgCode msg, void* pkt);

}  // namespace kelvo
