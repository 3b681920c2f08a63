// Copying and building resbuf chains.

#include "runtime/drawing/resbuf_chain.h"

#include <cstdlib>
#include <cstring>

namespace kelvo::drawing {

resbuf* copyNode(const resbuf* rb) {
    resbuf* copy = acutNewRb(rb->restype);
    copy->resval = rb->resval;
    switch (rbKindOf(rb->restype)) {
        case RbKind::String:
            copy->resval.rstring = nullptr;
            if (rb->resval.rstring) acutNewString(rb->resval.rstring, copy->resval.rstring);
            break;
        case RbKind::Binary: {
            short n = rb->resval.rbinary.clen;
            copy->resval.rbinary.buf = static_cast<char*>(std::malloc(n > 0 ? n : 1));
            if (n > 0) std::memcpy(copy->resval.rbinary.buf, rb->resval.rbinary.buf, n);
            break;
        }
        default: break;
    }
    return copy;
}

resbuf* copyChain(const resbuf* first, const resbuf* stop) {
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    for (const resbuf* rb = first; rb && rb != stop; rb = rb->rbnext)
        appendNode(head, tail, copyNode(rb));
    return head;
}

resbuf* appendNode(resbuf*& head, resbuf*& tail, resbuf* node) {
    if (!node) return tail;
    if (!head) head = node;
    else tail->rbnext = node;
    tail = node;
    while (tail->rbnext) tail = tail->rbnext;
    return tail;
}

}  // namespace kelvo::drawing
