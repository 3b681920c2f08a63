// Arrays of geometry values.
#pragma once

#include "acarray.h"
#include "gepnt3d.h"

using AcGePoint3dArray = AcArray<AcGePoint3d>;
using AcGePoint2dArray = AcArray<AcGePoint2d>;
using AcGeVector3dArray = AcArray<AcGeVector3d>;
using AcGeDoubleArray = AcArray<double>;
using AcGeIntArray = AcArray<int>;
