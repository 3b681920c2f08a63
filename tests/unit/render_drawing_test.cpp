// Pictures of a drawing's model space through each entity's worldDraw: colours by index,
// by layer and by block, block references through their blocks, custom entities through
// their own drawing, hidden layers left out, and the pixels and SVG elements written.

#include <gtest/gtest.h>

#include <cairo.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "runtime/render/picture.h"
#include "runtime/render/render_drawing.h"

namespace {

using namespace kelvo::host::render;
namespace fs = std::filesystem;

const Rgb kWhite{255, 255, 255};

AcDbObjectId append(AcDbDatabase& db, AcDbEntity* entity, AcDbObjectId block = {}) {
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, block.isNull() ? db.modelSpaceId() : block, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    space->appendAcDbEntity(id, entity);
    entity->close();
    space->close();
    return id;
}

AcDbObjectId addLayer(AcDbDatabase& db, const wchar_t* name, int color, bool off = false) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord();
    layer->setName(name);
    layer->setColor(AcCmEntityColor(static_cast<Adesk::Int16>(color)));
    layer->setIsOff(off);
    AcDbObjectId id;
    table->add(id, layer);
    layer->close();
    table->close();
    return id;
}

AcDbObjectId addBlock(AcDbDatabase& db, const wchar_t* name) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* block = new AcDbBlockTableRecord();
    block->setName(name);
    AcDbObjectId id;
    table->add(id, block);
    block->close();
    table->close();
    return id;
}

AcDbLine* lineOf(double x0, double y0, double x1, double y1, int color = 256) {
    auto* line = new AcDbLine(AcGePoint3d(x0, y0, 0), AcGePoint3d(x1, y1, 0));
    line->setColorIndex(static_cast<Adesk::UInt16>(color));
    return line;
}

// Lines are antialiased: a pixel on a one-pixel line is the line's colour blended a little
// with the background.
bool near(Rgb pixel, Rgb color) {
    auto close = [](int a, int b) { return std::abs(a - b) < 0x60; };
    return !(pixel == kWhite) && close(pixel.r, color.r) && close(pixel.g, color.g) && close(pixel.b, color.b);
}

bool hasPathOf(const Picture& p, Rgb color) {
    for (const Path& path : p.paths())
        if (path.color == color) return true;
    return false;
}

// A drawing custom to this test: a triangle drawn by its own worldDraw.
class Triangle : public AcDbEntity {
protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override {
        AcGePoint3d points[] = {{0, 0, 0}, {4, 0, 0}, {0, 3, 0}};
        wd->geometry().polygon(3, points);
        return true;
    }
};

class Png {
public:
    explicit Png(const fs::path& file) : s_(cairo_image_surface_create_from_png(file.c_str())) {}
    ~Png() { cairo_surface_destroy(s_); }
    bool ok() const { return cairo_surface_status(s_) == CAIRO_STATUS_SUCCESS; }
    Rgb at(Point2 p) const {
        int x = static_cast<int>(p.x), y = static_cast<int>(p.y);
        const unsigned char* row = cairo_image_surface_get_data(s_) + y * cairo_image_surface_get_stride(s_);
        uint32_t px = reinterpret_cast<const uint32_t*>(row)[x];
        return rgbFromPacked(px & 0xFFFFFF);
    }

private:
    cairo_surface_t* s_;
};

TEST(RenderDrawing, ColoursComeFromTheEntityItsLayerOrItsBlockReference) {
    AcDbDatabase db;
    AcDbObjectId pipes = addLayer(db, L"PIPES", 5);
    AcDbObjectId hidden = addLayer(db, L"HIDDEN", 6, true);
    append(db, lineOf(0, 0, 100, 0, 1));                      // red by index
    AcDbLine* byLayer = lineOf(0, 10, 100, 10);
    byLayer->setLayer(pipes);
    append(db, byLayer);                                         // blue by layer
    AcDbLine* off = lineOf(0, 20, 100, 20);
    off->setLayer(hidden);
    append(db, off);                                             // on a layer that is off
    AcDbObjectId block = addBlock(db, L"TAG");
    append(db, lineOf(0, 0, 5, 5, 0), block);                    // by block
    auto* ref = new AcDbBlockReference(AcGePoint3d(50, 50, 0), block);
    ref->setColorIndex(3);
    append(db, ref);

    Picture picture = renderModelSpace(db);
    EXPECT_TRUE(hasPathOf(picture, aciToRgb(1)));
    EXPECT_TRUE(hasPathOf(picture, aciToRgb(5)));
    EXPECT_TRUE(hasPathOf(picture, aciToRgb(3)));
    EXPECT_FALSE(hasPathOf(picture, aciToRgb(6)));
    // The block's line lands where the reference puts it.
    bool placed = false;
    for (const Path& path : picture.paths())
        if (path.color == aciToRgb(3))
            placed = path.points.front().x == 50 && path.points.front().y == 50 &&
                     path.points.back().x == 55 && path.points.back().y == 55;
    EXPECT_TRUE(placed);
}

TEST(RenderDrawing, PixelsWhereTheLinesAreAndBackgroundElsewhere) {
    AcDbDatabase db;
    append(db, lineOf(0, 0, 100, 0, 1));
    append(db, lineOf(0, 0, 0, 60, 5));
    append(db, new AcDbCircle(AcGePoint3d(50, 30, 0), AcGeVector3d::kZAxis, 10));
    Picture picture = renderModelSpace(db);
    fs::path file = fs::temp_directory_path() / ("kelvo-render-" + std::to_string(::getpid()) + ".png");
    RenderOptions options;
    picture.write(file, options);
    Png png(file);
    ASSERT_TRUE(png.ok());
    Fit fit = picture.fit(options);
    EXPECT_TRUE(near(png.at(fit.toImage({50, 0})), aciToRgb(1)));
    EXPECT_TRUE(near(png.at(fit.toImage({0, 30})), aciToRgb(5)));
    EXPECT_EQ(png.at(fit.toImage({75, 45})), kWhite);   // nothing there
    EXPECT_EQ(png.at(fit.toImage({50, 30})), kWhite);   // inside the circle
    EXPECT_NE(png.at(fit.toImage({60, 30})), kWhite);   // on the circle
    fs::remove(file);
}

TEST(RenderDrawing, SvgHasAnElementPerPathInItsColour) {
    AcDbDatabase db;
    append(db, lineOf(0, 0, 10, 0, 1));
    append(db, lineOf(0, 5, 10, 5, 3));
    Picture picture = renderModelSpace(db);
    fs::path file = fs::temp_directory_path() / ("kelvo-render-" + std::to_string(::getpid()) + ".svg");
    picture.write(file);
    std::ifstream in(file);
    std::stringstream text;
    text << in.rdbuf();
    std::string svg = text.str();
    int paths = 0;
    for (size_t i = 0; (i = svg.find("<path", i)) != std::string::npos; ++i) ++paths;
    EXPECT_EQ(paths, 2);
    EXPECT_NE(svg.find("stroke:rgb(100%,0%,0%)"), std::string::npos) << svg;
    fs::remove(file);
}

TEST(RenderDrawing, CustomEntitiesDrawThemselves) {
    Triangle triangle;
    Picture picture;
    renderEntity(triangle, picture);
    ASSERT_EQ(picture.paths().size(), 1u);
    EXPECT_TRUE(picture.paths()[0].closed);
    EXPECT_EQ(picture.paths()[0].points.size(), 3u);
    Extents e = picture.extents();
    EXPECT_DOUBLE_EQ(e.maxX, 4);
    EXPECT_DOUBLE_EQ(e.maxY, 3);
}

}  // namespace
