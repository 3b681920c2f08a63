// Whole-file reading.
#include "text.h"

#include <fstream>
#include <sstream>

#include "interp.h"

namespace lisp {

std::wstring readTextFile(const std::filesystem::path& file) {
    std::error_code ec;
    if (std::filesystem::exists(file, ec) && !std::filesystem::is_regular_file(file, ec))
        throw Error(L"cannot read file: " + kelvo::widePath(file) + L" is not a regular file");
    std::ifstream in(file, std::ios::binary);
    if (!in) throw Error(L"cannot read file: " + kelvo::widePath(file));
    std::ostringstream buf;
    buf << in.rdbuf();
    return fromUtf8(buf.str());
}

}  // namespace lisp
