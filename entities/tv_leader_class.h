// The run-time class of TVLeader. Module start registers it and module stop removes it.
#pragma once

class AcRxClass;

namespace kelvo {

// The application description written with the class into drawing files.
extern const wchar_t* const kTvLeaderAppDescription;

// Registers "TVLeader" (parent "AcDbCurve", drawing version 1, maintenance version 1,
// proxy flags 1, DXF name "TVLEADER") once and keeps its descriptor. When the class
// dictionary already holds a "TVLeader" that this module did not create, the host is
// stopped with "Class mismatch".
AcRxClass* registerTvLeaderClass();
// Removes the class registered by registerTvLeaderClass (nothing when none).
void unregisterTvLeaderClass();
// The registered descriptor, or null.
AcRxClass* tvLeaderClass();

}  // namespace kelvo
