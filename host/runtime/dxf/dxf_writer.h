// Writes ASCII DXF groups: the code right-aligned in three columns on its own line, then
// the value line. Reals are written so that they read back to the same double.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "runtime/dxf/dxf_group.h"
#include "runtime/dxf/dxf_text_codec.h"

namespace kelvo::host::dxf {

class Writer {
public:
    // Appends to `out`; `codec` encodes string values and must outlive the writer.
    Writer(std::string& out, const TextCodec& codec, bool crlf = false);

    void string(int code, std::wstring_view text);
    void real(int code, double value);
    void integer(int code, std::int64_t value);
    void handle(int code, std::uint64_t handle);   // upper-case hexadecimal
    // A 3D point as groups code, code+10, code+20 (2D: without the third).
    void point(int code, double x, double y, double z);
    void point2d(int code, double x, double y);
    // A group read from a file, written back by its code's kind (numbers normalised).
    void group(const Group& g);

    const TextCodec& codec() const { return codec_; }

private:
    void codeLine(int code);
    void valueLine(std::string_view value);

    std::string& out_;
    const TextCodec& codec_;
    const char* eol_;
};

// The text of a real as a DXF value: shortest form that reads back exactly, with a
// decimal point ("1.0", "0.25", "1e-09"); not-a-number and infinities as "0.0".
std::string formatReal(double value);

}  // namespace kelvo::host::dxf
