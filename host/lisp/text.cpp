// Whole-file reading.
#include "text.h"

#include <fstream>
#include <sstream>

#include "interp.h"

namespace lisp {

std::wstring readTextFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw Error(L"cannot read file: " + file.wstring());
    std::ostringstream buf;
    buf << in.rdbuf();
    return fromUtf8(buf.str());
}

}  // namespace lisp
