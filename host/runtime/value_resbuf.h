// Conversion between LISP values and value lists, as the host does at every external
// call: arguments out as a resbuf chain, results back as values.
#pragma once

#include <vector>

#include "adsdef.h"
#include "lisp/value.h"

namespace kelvo::host {

// A new chain for a run of values (an argument list); the caller releases it. Lists
// become RTLB ... RTLE, dotted pairs use RTDOTE, a list of two or three reals becomes a
// point. Throws lisp::Error for a value that has no value-list form (a function, a file).
resbuf* valuesToChain(const std::vector<lisp::Value>& values);
resbuf* valueToChain(const lisp::Value& value);

// The values of a chain read from its head: each top-level value in turn.
std::vector<lisp::Value> chainToValues(const resbuf* chain);
// What acedRetList returns: the chain's values as a list; a chain that is one list
// (RTLB ... RTLE) is that list.
lisp::Value chainToList(const resbuf* chain);
// The first value of a chain (acedRetVal); nil for an empty chain.
lisp::Value chainToValue(const resbuf* chain);

}  // namespace kelvo::host
