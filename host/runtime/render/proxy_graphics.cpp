// Proxy graphics streams from an entity's picture.

#include "runtime/render/proxy_graphics.h"

#include <cmath>
#include <cstring>
#include <string>

#include "dbmain.h"
#include "runtime/render/render_drawing.h"

namespace kelvo::host::render {
namespace {

enum RecordType : std::uint32_t { kPolyline = 6, kPolygon = 7, kFill = 20, kUnicodeText = 36 };

class StreamWriter {
public:
    void begin(RecordType type) {
        start_ = bytes_.size();
        u32(0);  // size, set by end()
        u32(type);
    }
    void end() {
        while (bytes_.size() % 4) bytes_.push_back(0);
        put(start_, static_cast<std::uint32_t>(bytes_.size() - start_));
        ++count_;
    }
    void u32(std::uint32_t v) {
        for (int i = 0; i < 4; ++i) bytes_.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
    }
    void real(double v) {
        std::uint64_t bits;
        std::memcpy(&bits, &v, sizeof bits);
        for (int i = 0; i < 8; ++i) bytes_.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
    }
    void point(double x, double y, double z = 0) {
        real(x);
        real(y);
        real(z);
    }
    // UTF-16 little-endian, ended by a zero character.
    void unicode(const std::wstring& text) {
        auto unit = [this](std::uint32_t u) {
            bytes_.push_back(static_cast<std::uint8_t>(u));
            bytes_.push_back(static_cast<std::uint8_t>(u >> 8));
        };
        for (wchar_t c : text) {
            auto code = static_cast<std::uint32_t>(c);
            if (code > 0xFFFF) {
                code -= 0x10000;
                unit(0xD800 + (code >> 10));
                unit(0xDC00 + (code & 0x3FF));
            } else {
                unit(code);
            }
        }
        unit(0);
    }
    std::vector<std::uint8_t> finish() {
        if (count_ == 0) return {};
        std::vector<std::uint8_t> out;
        out.reserve(bytes_.size() + 8);
        std::swap(out, bytes_);
        bytes_.assign(8, 0);
        bytes_.insert(bytes_.end(), out.begin(), out.end());
        put(0, static_cast<std::uint32_t>(bytes_.size()));
        put(4, count_);
        return std::move(bytes_);
    }

private:
    void put(size_t at, std::uint32_t v) {
        for (int i = 0; i < 4; ++i) bytes_[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
    }
    std::vector<std::uint8_t> bytes_;
    size_t start_ = 0;
    std::uint32_t count_ = 0;
};

void fill(StreamWriter& w, bool on) {
    w.begin(kFill);
    w.u32(on ? 1 : 0);
    w.end();
}

void path(StreamWriter& w, const Path& p) {
    if (p.points.empty()) return;
    bool polygon = p.filled && p.points.size() > 2;
    if (polygon) fill(w, true);
    w.begin(polygon ? kPolygon : kPolyline);
    bool close = p.closed && !polygon && p.points.size() > 2;
    w.u32(static_cast<std::uint32_t>(p.points.size() + (close ? 1 : 0)));
    for (const Point2& q : p.points) w.point(q.x, q.y);
    if (close) w.point(p.points.front().x, p.points.front().y);
    w.end();
    if (polygon) fill(w, false);
}

void text(StreamWriter& w, const Text& t) {
    w.begin(kUnicodeText);
    w.point(t.position.x, t.position.y);
    w.point(0, 0, 1);                               // normal
    w.point(std::cos(t.angle), std::sin(t.angle));  // direction
    w.real(t.height);
    w.real(t.widthFactor);
    w.real(t.oblique);
    w.unicode(t.text);
    w.end();
}

}  // namespace

std::vector<std::uint8_t> proxyGraphicsOf(AcDbEntity& entity) {
    Picture picture;
    renderEntity(entity, picture);
    StreamWriter w;
    for (const Path& p : picture.paths()) path(w, p);
    for (const Text& t : picture.texts()) text(w, t);
    return w.finish();
}

}  // namespace kelvo::host::render
