// ASCII DXF groups from the file's text.

#include "runtime/dxf/dxf_tokenizer.h"

#include <charconv>

#include "runtime/dxf/dxf_error.h"

namespace kelvo::host::dxf {
namespace {

constexpr std::string_view kBinarySentinel = "AutoCAD Binary DXF";

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
    return s;
}

}  // namespace

Tokenizer::Tokenizer(std::string_view data) : data_(data) {
    if (data_.starts_with(kBinarySentinel))
        throw DxfError("binary DXF files are not supported; save the drawing as ASCII DXF");
    // A byte-order mark before the first group is not part of it.
    if (data_.starts_with("\xEF\xBB\xBF")) pos_ = 3;
}

bool Tokenizer::nextLine(std::string_view& line) {
    if (pos_ >= data_.size()) return false;
    size_t end = data_.find('\n', pos_);
    if (end == std::string_view::npos) end = data_.size();
    line = data_.substr(pos_, end - pos_);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    pos_ = end + 1;
    ++line_;
    return true;
}

bool Tokenizer::next(RawGroup& group) {
    if (sawEof_) return false;
    std::string_view codeLine;
    // Blank lines at the very end of a file are not a group.
    do {
        if (!nextLine(codeLine)) return false;
    } while (trimmed(codeLine).empty() && pos_ >= data_.size());
    std::string_view digits = trimmed(codeLine);
    int code = 0;
    auto [ptr, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), code);
    if (digits.empty() || ec != std::errc() || ptr != digits.data() + digits.size())
        throw DxfError("group code expected, found \"" + std::string(digits.substr(0, 40)) + "\"",
                       line_);
    group.code = code;
    group.line = line_;
    std::string_view value;
    if (!nextLine(value)) throw DxfError("group code " + std::to_string(code) + " has no value",
                                         group.line);
    group.value.assign(value);
    if (code == 0 && trimmed(value) == "EOF") {
        sawEof_ = true;
        return false;
    }
    return true;
}

}  // namespace kelvo::host::dxf
