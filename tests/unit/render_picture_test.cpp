// Pictures of drawings: the colour index palette, fitting extents, and the pixels and SVG
// elements that cairo writes.

#include <gtest/gtest.h>

#include <cairo.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "runtime/render/aci_colors.h"
#include "runtime/render/picture.h"

// Fontconfig keeps its configuration for the life of the process, by design; under the
// leak checker that is not a leak of ours.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }

namespace {

using namespace kelvo::host::render;
namespace fs = std::filesystem;

class Png {
public:
    explicit Png(const fs::path& file) : s_(cairo_image_surface_create_from_png(file.c_str())) {}
    ~Png() { cairo_surface_destroy(s_); }
    bool ok() const { return cairo_surface_status(s_) == CAIRO_STATUS_SUCCESS; }
    int width() const { return cairo_image_surface_get_width(s_); }
    int height() const { return cairo_image_surface_get_height(s_); }
    Rgb at(Point2 p) const {
        int x = static_cast<int>(p.x), y = static_cast<int>(p.y);
        const unsigned char* row = cairo_image_surface_get_data(s_) + y * cairo_image_surface_get_stride(s_);
        uint32_t px = reinterpret_cast<const uint32_t*>(row)[x];
        return rgbFromPacked(px & 0xFFFFFF);
    }

private:
    cairo_surface_t* s_;
};

class RenderPicture : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = fs::temp_directory_path() / ("kelvo-render-" + std::to_string(::getpid()));
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }
    fs::path dir_;
};

Picture boxWithRedDiagonal() {
    Picture p;
    p.add(Path{{{0, 0}, {100, 0}, {100, 50}, {0, 50}}, true, false, aciToRgb(7)});
    p.add(Path{{{10, 10}, {90, 40}}, false, false, aciToRgb(1)});
    return p;
}

bool isWhite(Rgb c) { return c == Rgb{255, 255, 255}; }

TEST(RenderAciColors, NamedHuesAndGreys) {
    EXPECT_EQ(aciToRgb(1), (Rgb{255, 0, 0}));
    EXPECT_EQ(aciToRgb(3), (Rgb{0, 255, 0}));
    EXPECT_EQ(aciToRgb(5), (Rgb{0, 0, 255}));
    EXPECT_EQ(aciToRgb(10), aciToRgb(1));           // the hue rows start at red
    EXPECT_GT(aciToRgb(11).g, 100);                  // half saturation: paler
    EXPECT_LT(aciToRgb(18).r, aciToRgb(10).r);       // a darker shade of the same hue
    for (int i = 250; i < 255; ++i) {
        EXPECT_EQ(aciToRgb(i).r, aciToRgb(i).b);
        EXPECT_LT(aciToRgb(i).r, aciToRgb(i + 1).r);
    }
    EXPECT_EQ(aciToRgb(256), aciToRgb(7));
}

TEST(RenderFit, KeepsTheAspectAndCentres) {
    Extents e;
    e.add({0, 0});
    e.add({100, 50});
    Fit f = Fit::of(e, 200, 200, 0.1);
    EXPECT_DOUBLE_EQ(f.scale, 1.6);   // 160 pixels across for 100 units
    Point2 lo = f.toImage({0, 0}), hi = f.toImage({100, 50});
    EXPECT_DOUBLE_EQ(lo.x, 20);
    EXPECT_DOUBLE_EQ(hi.x, 180);
    EXPECT_DOUBLE_EQ((lo.y + hi.y) / 2, 100);   // centred vertically
    EXPECT_GT(lo.y, hi.y);                      // y grows downward in the image
}

TEST_F(RenderPicture, PngHasInkOnTheLinesAndBackgroundElsewhere) {
    Picture p = boxWithRedDiagonal();
    RenderOptions o{400, 300, 0.05};
    p.write(dir_ / "box.png", o);
    Png png(dir_ / "box.png");
    ASSERT_TRUE(png.ok());
    EXPECT_EQ(png.width(), 400);
    EXPECT_EQ(png.height(), 300);
    Fit f = p.fit(o);
    Rgb edge = png.at(f.toImage({50, 0}));
    EXPECT_FALSE(isWhite(edge));
    EXPECT_EQ(edge.r, edge.b);   // white in the drawing shows as black or grey, not a hue
    Rgb diag = png.at(f.toImage({50, 25}));
    EXPECT_GT(diag.r, 240);   // red ink, blended with the white around a thin line
    EXPECT_LT(diag.g, 200);
    EXPECT_NEAR(diag.g, diag.b, 2);
    EXPECT_TRUE(isWhite(png.at(f.toImage({80, 10}))));   // inside the box, off the line
    EXPECT_TRUE(isWhite(png.at({2, 2})));                 // the margin
}

TEST_F(RenderPicture, SvgHasOnePathPerPrimitiveAndText) {
    Picture p = boxWithRedDiagonal();
    p.add(Text{{10, 20}, 0, 5, 1, 0, L"AHU-1", aciToRgb(3)});
    p.write(dir_ / "box.svg");
    std::ifstream in(dir_ / "box.svg");
    std::stringstream ss;
    ss << in.rdbuf();
    std::string svg = ss.str();
    EXPECT_NE(svg.find("<svg"), std::string::npos);
    EXPECT_NE(svg.find("width=\"1024\""), std::string::npos);
    size_t strokes = 0;
    for (size_t i = 0; (i = svg.find("stroke-width", i)) != std::string::npos; ++i) ++strokes;
    EXPECT_EQ(strokes, 2u);
    EXPECT_NE(svg.find("rgb(100%,0%,0%)"), std::string::npos);   // the red diagonal
    EXPECT_NE(svg.find("glyph"), std::string::npos);             // the text's glyphs
}

TEST_F(RenderPicture, BadTargetsAreReported) {
    Picture p = boxWithRedDiagonal();
    EXPECT_THROW(p.write(dir_ / "box.jpg"), RenderError);
    EXPECT_THROW(p.write(dir_ / "missing" / "box.png"), RenderError);
    EXPECT_THROW(p.write(dir_ / "missing" / "box.svg"), RenderError);
    EXPECT_THROW(p.write(dir_ / "x.png", RenderOptions{0, 10, 0}), RenderError);
    Picture empty;
    empty.write(dir_ / "empty.png");   // an empty drawing: a blank page
    Png png(dir_ / "empty.png");
    EXPECT_TRUE(isWhite(png.at({512, 384})));
}

}  // namespace
