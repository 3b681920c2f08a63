// Small helpers for resbuf chains owned by the drawing code.
#pragma once

#include <memory>

#include "adslib.h"

namespace kelvo::drawing {

struct RbDeleter {
    void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using RbChain = std::unique_ptr<resbuf, RbDeleter>;

// A copy of one node (its string or binary value duplicated), not linked.
resbuf* copyNode(const resbuf* rb);
// A copy of the nodes from `first` up to (not including) `stop`.
resbuf* copyChain(const resbuf* first, const resbuf* stop = nullptr);
// Appends `node` (or a chain) at the end of the chain at *head; answers the new tail.
resbuf* appendNode(resbuf*& head, resbuf*& tail, resbuf* node);

}  // namespace kelvo::drawing
