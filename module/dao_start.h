// Starting and stopping the data access engine for the module, once per load, with the
// driver-fix prompt when the engine cannot start.
#pragma once

namespace kelvo {

// Starts the engine unless this module already started it. False when the engine threw
// on start; the driver-fix prompt has then run.
bool startDao();
// Stops the engine if this module started it, and deletes the engine state.
void stopDao();
// Whether startDao has run (and not been undone by stopDao).
bool daoStarted();

}  // namespace kelvo
