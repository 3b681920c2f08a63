// Proxy graphics: the stream an entity's drawing becomes, in the layout other programs
// read (sizes and record types as 32-bit little-endian, reals as 64-bit, UTF-16 texts).

#include <gtest/gtest.h>

#include <cstring>

#include "dbents.h"
#include "dbmain.h"
#include "dbsolid.h"
#include "runtime/render/proxy_graphics.h"

namespace {

using kelvo::host::render::proxyGraphicsOf;

std::uint32_t u32(const std::vector<std::uint8_t>& b, size_t at) {
    return b[at] | (b[at + 1] << 8) | (b[at + 2] << 16) |
           (static_cast<std::uint32_t>(b[at + 3]) << 24);
}

double real(const std::vector<std::uint8_t>& b, size_t at) {
    std::uint64_t bits = 0;
    for (int i = 7; i >= 0; --i) bits = (bits << 8) | b[at + i];
    double v;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

// The record types of a stream, checking that the sizes add up.
std::vector<std::uint32_t> recordTypes(const std::vector<std::uint8_t>& b) {
    std::vector<std::uint32_t> out;
    EXPECT_EQ(u32(b, 0), b.size());
    size_t at = 8;
    while (at + 8 <= b.size()) {
        std::uint32_t size = u32(b, at);
        EXPECT_EQ(size % 4, 0u);
        EXPECT_GE(size, 8u);
        if (size < 8) break;
        out.push_back(u32(b, at + 4));
        at += size;
    }
    EXPECT_EQ(at, b.size());
    EXPECT_EQ(u32(b, 4), out.size());
    return out;
}

TEST(DxfProxyGraphics, ALineIsATwoPointPolyline) {
    AcDbDatabase db;
    AcDbLine line(AcGePoint3d(1, 2, 0), AcGePoint3d(4, 6, 0));
    std::vector<std::uint8_t> b = proxyGraphicsOf(line);
    ASSERT_EQ(recordTypes(b), std::vector<std::uint32_t>{6});
    EXPECT_EQ(u32(b, 16), 2u);
    EXPECT_EQ(real(b, 20), 1.0);
    EXPECT_EQ(real(b, 28), 2.0);
    EXPECT_EQ(real(b, 44), 4.0);
    EXPECT_EQ(real(b, 52), 6.0);
}

TEST(DxfProxyGraphics, FilledAreasAreFilledPolygonsAndTextIsUnicode) {
    AcDbDatabase db;
    AcDbSolid solid(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 0),
                    AcGePoint3d(1, 1, 0));
    EXPECT_EQ(recordTypes(proxyGraphicsOf(solid)), (std::vector<std::uint32_t>{20, 7, 20}));
    AcDbText text(AcGePoint3d(0, 0, 0), L"S\u00E9", AcDbObjectId(), 2.0, 0.0);
    std::vector<std::uint8_t> b = proxyGraphicsOf(text);
    ASSERT_EQ(recordTypes(b), std::vector<std::uint32_t>{36});
    EXPECT_EQ(real(b, 16 + 9 * 8), 2.0) << "height after position, normal and direction";
    size_t chars = 16 + 12 * 8;
    EXPECT_EQ(b[chars], 'S');
    EXPECT_EQ(b[chars + 2], 0xE9);
    EXPECT_EQ(b[chars + 4], 0);
    EXPECT_EQ(b[chars + 5], 0);
}

TEST(DxfProxyGraphics, NothingDrawnIsNoStream) {
    AcDbDatabase db;
    AcDbText empty(AcGePoint3d(0, 0, 0), L"", AcDbObjectId(), 2.0, 0.0);
    EXPECT_TRUE(proxyGraphicsOf(empty).empty());
}

}  // namespace
