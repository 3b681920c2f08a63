// Ownership of host value lists (resbuf chains). Every chain the module receives from
// acedGetArgs, or builds with acutBuildList, is held in a ValueList so that it is
// released with acutRelRb on every path, failures and exceptions included.
#pragma once

#include <memory>

#include "adslib.h"

namespace kelvo {

struct ValueListDeleter {
    void operator()(resbuf* list) const noexcept {
        if (list != nullptr) acutRelRb(list);
    }
};

using ValueList = std::unique_ptr<resbuf, ValueListDeleter>;

// The argument list of the external call in progress, with a cursor for the readers.
// Taking it sets the default result nil (acedRetNil), as every handler starts.
class HandlerArgs {
public:
    HandlerArgs();
    HandlerArgs(const HandlerArgs&) = delete;
    HandlerArgs& operator=(const HandlerArgs&) = delete;

    // The cursor the argument readers move; null past the last argument.
    const resbuf*& cursor() { return cursor_; }
    bool atEnd() const { return cursor_ == nullptr; }

private:
    ValueList list_;
    const resbuf* cursor_;
};

}  // namespace kelvo
