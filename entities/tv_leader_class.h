// The run-time class of TVLeader, the product's two-segment leader entity. Module start
// registers it and module stop removes it; the entity itself grows here later.
#pragma once

class AcRxClass;

namespace kelvo {

// Registers "TVLeader" (parent "AcDbEntity", DXF name "TVLEADER"). When the host knows
// a class of that name with another descriptor, the host stops with "Class mismatch".
AcRxClass* registerTvLeaderClass();
// Removes the class registered by registerTvLeaderClass (nothing when none).
void unregisterTvLeaderClass();
// The registered descriptor, or null.
AcRxClass* tvLeaderClass();

}  // namespace kelvo
