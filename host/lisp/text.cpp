// Whole-file reading.
#include "text.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#include "interp.h"

namespace lisp {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

bool readFileBytes(const std::filesystem::path& file, std::string& out) {
    out.clear();
    std::unique_ptr<std::FILE, FileCloser> in(std::fopen(file.c_str(), "rb"));
    if (!in) return false;
    char block[65536];
    for (;;) {
        const std::size_t n = std::fread(block, 1, sizeof block, in.get());
        out.append(block, n);
        if (n < sizeof block) break;
    }
    if (std::ferror(in.get())) {
        if (errno == 0) errno = EIO;
        return false;
    }
    return true;
}

std::wstring readTextFile(const std::filesystem::path& file) {
    std::string bytes;
    if (!readFileBytes(file, bytes)) throw Error(L"cannot read file: " + file.wstring());
    return fromUtf8(bytes);
}

}  // namespace lisp
