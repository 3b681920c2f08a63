// ASCII DXF group output.

#include "runtime/dxf/dxf_writer.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace kelvo::host::dxf {

std::string formatReal(double value) {
    if (!std::isfinite(value)) return "0.0";
    if (value == 0.0) return "0.0";   // also -0
    char buf[40];
    auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value);
    std::string text(buf, end);
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

Writer::Writer(std::string& out, const TextCodec& codec, bool crlf)
    : out_(out), codec_(codec), eol_(crlf ? "\r\n" : "\n") {}

void Writer::codeLine(int code) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "%3d", code);
    out_ += buf;
    out_ += eol_;
}

void Writer::valueLine(std::string_view value) {
    out_ += value;
    out_ += eol_;
}

void Writer::string(int code, std::wstring_view text) {
    codeLine(code);
    valueLine(codec_.encode(text));
}

void Writer::real(int code, double value) {
    codeLine(code);
    valueLine(formatReal(value));
}

void Writer::integer(int code, std::int64_t value) {
    codeLine(code);
    // Short integers are right-aligned in six columns by tradition.
    char buf[32];
    std::snprintf(buf, sizeof buf, groupKind(code) == GroupKind::Int16 ? "%6lld" : "%lld",
                  static_cast<long long>(value));
    valueLine(buf);
}

void Writer::handle(int code, std::uint64_t h) {
    codeLine(code);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%llX", static_cast<unsigned long long>(h));
    valueLine(buf);
}

void Writer::point(int code, double x, double y, double z) {
    real(code, x);
    real(code + 10, y);
    real(code + 20, z);
}

void Writer::point2d(int code, double x, double y) {
    real(code, x);
    real(code + 10, y);
}

void Writer::group(const Group& g) {
    bool ok = false;
    switch (groupKind(g.code)) {
        case GroupKind::Double: {
            double v = g.toDouble(&ok);
            if (ok) return real(g.code, v);
            break;
        }
        case GroupKind::Int16:
        case GroupKind::Int32:
        case GroupKind::Int64:
        case GroupKind::Bool: {
            std::int64_t v = g.toInt(&ok);
            if (ok) return integer(g.code, v);
            break;
        }
        default: break;
    }
    string(g.code, g.text);
}

}  // namespace kelvo::host::dxf
