// AcGePoint3dArray and the other geometry arrays.
#pragma once

#include "gearrays.h"
