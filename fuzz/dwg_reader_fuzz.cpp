// Fuzz target: the host's binary drawing file reader. The bytes are a file; a file the
// reader takes is encoded again, and those bytes must decode and encode to themselves.
// The reader answers a status for any damage and never throws.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "dbmain.h"
#include "fuzz_check.h"
#include "runtime/dwgfile/dwg_drawing_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::uint8_t> bytes(data, data + size);
    AcDbDatabase db(false, true);
    std::wstring why;
    if (kelvo::files::decodeDwgDrawing(db, bytes, &why) != Acad::eOk) {
        FUZZ_CHECK(!why.empty(), "a refused file comes with a reason");
        return 0;
    }
    std::vector<std::uint8_t> encoded;
    if (kelvo::files::encodeDwgDrawing(db, encoded) != Acad::eOk) return 0;
    AcDbDatabase back(false, true);
    FUZZ_CHECK(kelvo::files::decodeDwgDrawing(back, encoded) == Acad::eOk,
               "the reader takes what the writer wrote");
    std::vector<std::uint8_t> again;
    FUZZ_CHECK(kelvo::files::encodeDwgDrawing(back, again) == Acad::eOk,
               "a drawing read back writes again");
    FUZZ_CHECK(again == encoded, "written bytes read back to the same bytes");
    return 0;
}
