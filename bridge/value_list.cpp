// Taking the argument list of an external call.
#include "bridge/value_list.h"

namespace kelvo {
namespace {

// Every handler starts with a nil result, so that any early return gives LISP nil.
resbuf* takeArgumentList() {
    acedRetNil();
    return acedGetArgs();
}

}  // namespace

HandlerArgs::HandlerArgs() : list_(takeArgumentList()), cursor_(list_.get()) {}

}  // namespace kelvo
