// One DXF group: a group code and its value, and what kind of value each code carries.
#pragma once

#include <cstdint>
#include <string>

namespace kelvo::host::dxf {

// The value kind a group code carries in ASCII DXF.
enum class GroupKind { String, Double, Int16, Int32, Int64, Bool, Handle, Binary, Comment };

// By the code ranges of the DXF reference: 0-9 strings, 10-59 reals, 60-79 int16 ...
// Unknown ranges read as strings, so nothing is lost.
GroupKind groupKind(int code);

// A group with its value still as the text of its value line (without line end). `line`
// is the 1-based line of the group code, for messages.
struct RawGroup {
    int code = 0;
    std::string value;
    int line = 0;
};

// A group whose text is decoded to wide characters (code page, \U+ escapes, carets).
struct Group {
    int code = 0;
    std::wstring text;
    int line = 0;

    // Numeric views of the text; `ok` (when given) says whether the whole text parsed.
    double toDouble(bool* ok = nullptr) const;
    std::int64_t toInt(bool* ok = nullptr) const;
    // Handles are hexadecimal; 0 when the text is not one.
    std::uint64_t toHandle() const;
};

}  // namespace kelvo::host::dxf
