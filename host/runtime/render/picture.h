// A picture of a drawing: flat paths and texts in drawing (world XY) coordinates with
// their colours, and its output to SVG or PNG through cairo, fitted to the picture's
// extents with a margin on a white background.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "runtime/render/aci_colors.h"

namespace kelvo::host::render {

struct Point2 {
    double x = 0, y = 0;
};

struct Path {
    std::vector<Point2> points;
    bool closed = false;
    bool filled = false;
    Rgb color;
};

struct Text {
    Point2 position;     // start of the baseline
    double angle = 0;    // of the baseline, radians counter-clockwise
    double height = 1;   // capital height, drawing units
    double widthFactor = 1;
    double oblique = 0;  // radians
    std::wstring text;
    Rgb color;
};

struct Extents {
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    bool empty = true;
    void add(Point2 p);
};

// Where drawing coordinates land on an image of a given size: uniform scale, centred,
// y up in the drawing and down in the image.
struct Fit {
    double scale = 1, offsetX = 0, offsetY = 0;
    int width = 0, height = 0;
    static Fit of(const Extents& extents, int width, int height, double marginFraction);
    Point2 toImage(Point2 p) const { return {offsetX + p.x * scale, offsetY - p.y * scale}; }
};

class RenderError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct RenderOptions {
    int width = 1024;
    int height = 768;
    double margin = 0.05;   // of the image's smaller side, on each side
};

class Picture {
public:
    void add(Path path);
    void add(Text text);
    const std::vector<Path>& paths() const { return paths_; }
    const std::vector<Text>& texts() const { return texts_; }
    // Of every path point and each text's approximate box.
    Extents extents() const;
    Fit fit(const RenderOptions& options) const;

    // By the file's extension (.svg or .png); throws RenderError with the reason.
    void write(const std::filesystem::path& file, const RenderOptions& options = {}) const;
    void writeSvg(const std::filesystem::path& file, const RenderOptions& options = {}) const;
    void writePng(const std::filesystem::path& file, const RenderOptions& options = {}) const;

private:
    std::vector<Path> paths_;
    std::vector<Text> texts_;
};

}  // namespace kelvo::host::render
