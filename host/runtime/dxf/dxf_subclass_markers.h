// Subclass markers for records of files written before they existed (R12 and older):
// the host's objects read their groups class by class, after each class's marker (group
// 100), so a record without markers gets them here, with its groups sorted into the
// classes they belong to. Records that have markers are given as they are, except that
// 3D polylines and their vertices are read as the host's 2D polyline (which keeps Z), and
// an array of inserts (MINSERT) as its first insert.
#pragma once

#include <vector>

#include "runtime/dxf/dxf_group.h"

namespace kelvo::host::dxf {

// The groups after the record's group 0, with markers; `type` is the record's type
// ("LINE", "LAYER" ...). Types the host has no layout for come back unchanged.
std::vector<Group> withSubclassMarkers(const std::wstring& type, const std::vector<Group>& groups);

// Whether records of a type without markers are given them (they can then be kept).
bool hasLayout(const std::wstring& type);

// Whether a record (its groups after group 0) carries any subclass marker.
bool hasSubclassMarkers(const std::vector<Group>& groups);

}  // namespace kelvo::host::dxf
