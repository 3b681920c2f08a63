// Pictures through cairo: one path per drawn primitive, texts with a sans face, a white
// background, and white drawing colours (ACI 7) turned black so that they show.

#include "runtime/render/picture.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "utf8.h"

namespace kelvo::host::render {
namespace {

struct SurfaceDeleter {
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
struct ContextDeleter {
    void operator()(cairo_t* c) const { cairo_destroy(c); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using Context = std::unique_ptr<cairo_t, ContextDeleter>;

// A text's box is guessed from its length: characters about 0.7 of the height wide.
constexpr double kCharWidth = 0.7;
// The capital height of a sans face is about 0.72 of its em size.
constexpr double kCapHeight = 0.72;

void setColor(cairo_t* cr, Rgb c) {
    if (c == Rgb{255, 255, 255}) c = Rgb{0, 0, 0};
    cairo_set_source_rgb(cr, c.r / 255.0, c.g / 255.0, c.b / 255.0);
}

void drawPath(cairo_t* cr, const Fit& fit, const Path& path) {
    if (path.points.empty()) return;
    setColor(cr, path.color);
    Point2 first = fit.toImage(path.points.front());
    cairo_move_to(cr, first.x, first.y);
    if (path.points.size() == 1) cairo_line_to(cr, first.x + 0.5, first.y);   // a dot
    for (size_t i = 1; i < path.points.size(); ++i) {
        Point2 p = fit.toImage(path.points[i]);
        cairo_line_to(cr, p.x, p.y);
    }
    if (path.closed || path.filled) cairo_close_path(cr);
    if (path.filled) cairo_fill_preserve(cr);
    cairo_stroke(cr);
}

void drawText(cairo_t* cr, const Fit& fit, const Text& text) {
    if (text.text.empty() || text.height * fit.scale < 0.5) return;
    std::string utf8 = toUtf8(text.text);
    Point2 at = fit.toImage(text.position);
    cairo_save(cr);
    setColor(cr, text.color);
    cairo_translate(cr, at.x, at.y);
    cairo_rotate(cr, -text.angle);
    cairo_matrix_t shear;
    cairo_matrix_init(&shear, text.widthFactor, 0, -std::tan(text.oblique), 1, 0, 0);
    cairo_transform(cr, &shear);
    cairo_select_font_face(cr, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, text.height * fit.scale / kCapHeight);
    cairo_move_to(cr, 0, 0);
    cairo_show_text(cr, utf8.c_str());
    cairo_restore(cr);
}

void paint(cairo_t* cr, const Picture& picture, const Fit& fit) {
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_paint(cr);
    cairo_set_line_width(cr, 1.0);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    for (const Path& p : picture.paths()) drawPath(cr, fit, p);
    for (const Text& t : picture.texts()) drawText(cr, fit, t);
}

void check(cairo_status_t status, const std::filesystem::path& file) {
    if (status != CAIRO_STATUS_SUCCESS)
        throw RenderError("cannot write " + file.string() + ": " + cairo_status_to_string(status));
}

void checkOptions(const RenderOptions& o) {
    if (o.width < 1 || o.height < 1 || o.width > 16384 || o.height > 16384)
        throw RenderError("picture size must be 1 to 16384 pixels each way");
}

}  // namespace

void Extents::add(Point2 p) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
    if (empty) {
        minX = maxX = p.x;
        minY = maxY = p.y;
        empty = false;
        return;
    }
    minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
    minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
}

Fit Fit::of(const Extents& e, int width, int height, double marginFraction) {
    Fit f;
    f.width = width, f.height = height;
    double margin = std::min(width, height) * marginFraction;
    double w = e.empty ? 0 : e.maxX - e.minX, h = e.empty ? 0 : e.maxY - e.minY;
    double availW = std::max(1.0, width - 2 * margin), availH = std::max(1.0, height - 2 * margin);
    if (w <= 0 && h <= 0) f.scale = 1;
    else if (w <= 0) f.scale = availH / h;
    else if (h <= 0) f.scale = availW / w;
    else f.scale = std::min(availW / w, availH / h);
    double cx = e.empty ? 0 : (e.minX + e.maxX) / 2, cy = e.empty ? 0 : (e.minY + e.maxY) / 2;
    f.offsetX = width / 2.0 - cx * f.scale;
    f.offsetY = height / 2.0 + cy * f.scale;
    return f;
}

void Picture::add(Path path) { paths_.push_back(std::move(path)); }
void Picture::add(Text text) { texts_.push_back(std::move(text)); }

Extents Picture::extents() const {
    Extents e;
    for (const Path& p : paths_)
        for (Point2 q : p.points) e.add(q);
    for (const Text& t : texts_) {
        double len = t.height * kCharWidth * t.widthFactor * static_cast<double>(t.text.size());
        double c = std::cos(t.angle), s = std::sin(t.angle);
        Point2 p = t.position;
        e.add(p);
        e.add({p.x + c * len, p.y + s * len});
        e.add({p.x - s * t.height, p.y + c * t.height});
        e.add({p.x + c * len - s * t.height, p.y + s * len + c * t.height});
    }
    return e;
}

Fit Picture::fit(const RenderOptions& o) const { return Fit::of(extents(), o.width, o.height, o.margin); }

void Picture::writeSvg(const std::filesystem::path& file, const RenderOptions& o) const {
    checkOptions(o);
    Surface surface(cairo_svg_surface_create(file.c_str(), o.width, o.height));
    check(cairo_surface_status(surface.get()), file);
    {
        Context cr(cairo_create(surface.get()));
        paint(cr.get(), *this, fit(o));
        check(cairo_status(cr.get()), file);
    }
    cairo_surface_finish(surface.get());
    check(cairo_surface_status(surface.get()), file);
}

void Picture::writePng(const std::filesystem::path& file, const RenderOptions& o) const {
    checkOptions(o);
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, o.width, o.height));
    check(cairo_surface_status(surface.get()), file);
    Context cr(cairo_create(surface.get()));
    paint(cr.get(), *this, fit(o));
    check(cairo_status(cr.get()), file);
    check(cairo_surface_write_to_png(surface.get(), file.c_str()), file);
}

void Picture::write(const std::filesystem::path& file, const RenderOptions& o) const {
    std::string ext = file.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), ::tolower);
    if (ext == ".svg") return writeSvg(file, o);
    if (ext == ".png") return writePng(file, o);
    throw RenderError("cannot render to " + file.string() + ": the file name must end in .svg or .png");
}

}  // namespace kelvo::host::render
