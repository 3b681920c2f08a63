// Fuzz target: the ASCII DXF reader. The bytes are a DXF file; a file the reader takes is
// written back as DXF, and that text read and written again must come out the same (the
// writer's output is a fixed point of reading). Only DxfError may leave the reader, as
// only DxfError is caught where the host opens a drawing.
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dbmain.h"
#include "fuzz_check.h"
#include "runtime/dxf/dxf_drawing_reader.h"
#include "runtime/dxf/dxf_drawing_writer.h"
#include "runtime/dxf/dxf_error.h"
#include "runtime/dxf/dxf_file.h"

namespace {

using namespace kelvo::host::dxf;

// Group codes outside 16 bits are a known fault being fixed on its own (they alias
// other codes and end in an invalid free); such inputs are left out here until that fix
// lands, so that a run finds new faults only.
bool hasWideGroupCode(std::string_view text) {
    bool codeLine = true;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (codeLine) {
            while (!line.empty() && (line.front() == ' ' || line.front() == '\t'))
                line.remove_prefix(1);
            long long code = 0;
            auto [ptr, ec] = std::from_chars(line.data(), line.data() + line.size(), code);
            if (ec == std::errc::result_out_of_range) return true;
            if (ec == std::errc() && (code < -32768 || code > 32767)) return true;
        }
        codeLine = !codeLine;
    }
    return false;
}

std::string readAndWrite(std::string_view text) {
    AcDbDatabase db(false, true);
    readDrawingDxf(DxfFile::parse(text), db);
    return writeDrawingDxf(db);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (hasWideGroupCode(text)) return 0;
    std::string written;
    try {
        written = readAndWrite(text);
    } catch (const DxfError&) {
        return 0;  // refused with a reason: what the host reports
    }
    std::string again;
    try {
        again = readAndWrite(written);
    } catch (const DxfError& e) {
        FUZZ_CHECK(false, "the reader takes what the writer wrote");
    }
    FUZZ_CHECK(readAndWrite(again) == again, "written DXF reads back to the same text");
    return 0;
}
