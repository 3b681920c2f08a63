// A value list grown at its tail, owned until it is handed to LISP: the one list
// builder of the database functions' records and result sets.
#pragma once

#include "adsdef.h"
#include "bridge/value_list.h"

namespace kelvo::database {

class ValueChain {
public:
    ValueChain() = default;
    ValueChain(const ValueChain&) = delete;
    ValueChain& operator=(const ValueChain&) = delete;

    // Links `node` at the tail. A null node (the host could not allocate) throws
    // std::bad_alloc; what was built so far is released with the chain.
    void append(resbuf* node);
    // A node of a type without value: RTLB, RTLE, RTDOTE, RTNIL, RTT.
    void appendMarker(short type);
    void appendText(const wchar_t* text);

    bool empty() const { return head_ == nullptr; }
    const resbuf* head() const { return head_.get(); }

    // Sets the chain as the function's result (acedRetList copies it) and releases it.
    void returnAsResult();

private:
    ValueList head_;
    resbuf** tail_ = nullptr;
};

}  // namespace kelvo::database
