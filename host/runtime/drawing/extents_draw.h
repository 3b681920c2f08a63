// A drawing context that draws nothing but collects the extents of what it is given:
// the default getGeomExtents of entities, and what renderers use to fit a drawing.
#pragma once

#include "acgi.h"
#include "dbmain.h"

namespace kelvo::drawing {

// Draws `drawable` into an extents collector; eInvalidExtents when it drew nothing.
Acad::ErrorStatus extentsOfDrawing(const AcGiDrawable& drawable, AcDbExtents& extents);

// The width of a text line as this host lays text out: each character is 0.8 of the
// height wide (times the width factor); used by text extents and the renderer.
double textAdvance(const wchar_t* text, double height, double widthFactor);

}  // namespace kelvo::drawing
