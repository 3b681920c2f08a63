// The proxy graphics of an entity: what its worldDraw draws, as the binary stream a drawing
// file carries (groups 92 and 310 of the entity) for programs that do not know the entity's
// class, so that they can still draw it.
//
// Stream: its size and number of records (32-bit little-endian), then each record as its
// size, its type and its data, padded to four bytes. Paths are written as polylines (type
// 6), filled ones as polygons (type 7) between fill on and off (type 20), texts as Unicode
// texts (type 36); all in world coordinates of the plan view.
#pragma once

#include <cstdint>
#include <vector>

class AcDbEntity;

namespace kelvo::host::render {

// Empty when the entity draws nothing.
std::vector<std::uint8_t> proxyGraphicsOf(AcDbEntity& entity);

}  // namespace kelvo::host::render
