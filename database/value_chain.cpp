// Value lists grown at the tail.
#include "database/value_chain.h"

#include <new>

#include "adslib.h"

namespace kelvo::database {

void ValueChain::append(resbuf* node) {
    if (node == nullptr) throw std::bad_alloc();
    if (head_ == nullptr) {
        head_.reset(node);
    } else {
        *tail_ = node;
    }
    while (node->rbnext != nullptr) node = node->rbnext;
    tail_ = &node->rbnext;
}

void ValueChain::appendMarker(short type) {
    append(acutNewRb(type));
}

void ValueChain::appendText(const wchar_t* text) {
    resbuf* node = acutNewRb(RTSTR);
    if (node != nullptr && acutNewString(text, node->resval.rstring) != RTNORM) {
        acutRelRb(node);
        node = nullptr;
    }
    append(node);
}

void ValueChain::returnAsResult() {
    acedRetList(head_.get());
    head_.reset();
    tail_ = nullptr;
}

}  // namespace kelvo::database
