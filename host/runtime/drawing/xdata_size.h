// The size of extended data as an object holds it (xdsize, xdroom).
#pragma once

#include <cstddef>

#include "adsdef.h"

namespace kelvo::drawing {

// The bytes a chain of extended data takes in an object (application names and items;
// a -3 marker counts nothing), and the most one object may hold.
std::size_t xdataBytes(const resbuf* xdata);
std::size_t xdataLimit();

}  // namespace kelvo::drawing
