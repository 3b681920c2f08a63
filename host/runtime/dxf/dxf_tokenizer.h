// Splits the text of an ASCII DXF file into groups: a group-code line and a value line,
// each ended by LF or CR LF. Reading stops at the group (0, EOF); what follows it is
// ignored, as CAD programs do.
#pragma once

#include <string_view>

#include "runtime/dxf/dxf_group.h"

namespace kelvo::host::dxf {

class Tokenizer {
public:
    // `data` must outlive the tokenizer. Throws DxfError at once for a binary DXF file.
    explicit Tokenizer(std::string_view data);

    // The next group, or false at (0, EOF) or at the end of the data. Throws DxfError
    // for a code line that is not a number and for a code without its value line.
    bool next(RawGroup& group);
    bool sawEof() const { return sawEof_; }

private:
    bool nextLine(std::string_view& line);

    std::string_view data_;
    size_t pos_ = 0;
    int line_ = 0;
    bool sawEof_ = false;
};

}  // namespace kelvo::host::dxf
