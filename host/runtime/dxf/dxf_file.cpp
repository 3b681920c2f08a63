// Reading an ASCII DXF file into sections and records.
//
// Two passes: the groups are split first with their bytes as they are, so that the
// header's $ACADVER and $DWGCODEPAGE choose how strings decode; then each group's text
// is decoded and the groups are gathered into sections and records.

#include "runtime/dxf/dxf_file.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

#include "runtime/dxf/dxf_error.h"
#include "runtime/dxf/dxf_text_codec.h"
#include "runtime/dxf/dxf_tokenizer.h"
#include "utf8.h"

namespace kelvo::host::dxf {
namespace {

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

// The value of header variable `name` (the group after "9 name"), or "".
std::string rawHeaderValue(const std::vector<RawGroup>& groups, std::string_view name) {
    for (size_t i = 0; i + 1 < groups.size(); ++i) {
        if (groups[i].code == 0 && trimmed(groups[i].value) == "ENDSEC") break;
        if (groups[i].code == 9 && trimmed(groups[i].value) == name)
            return std::string(trimmed(groups[i + 1].value));
    }
    return "";
}

bool isZero(const Group& g, std::wstring_view text) { return g.code == 0 && g.text == text; }

// Gathers the groups of a section body (after "2 NAME") into records, up to ENDSEC.
// Returns the index after ENDSEC (or the end, when the file lacks it).
size_t readRecords(const std::vector<Group>& groups, size_t i, Section& section) {
    while (i < groups.size() && groups[i].code != 0) section.preamble.push_back(groups[i++]);
    while (i < groups.size() && !isZero(groups[i], L"ENDSEC")) {
        if (isZero(groups[i], L"SECTION")) return i;   // a missing ENDSEC
        Record r;
        do r.groups.push_back(groups[i++]);
        while (i < groups.size() && groups[i].code != 0);
        section.records.push_back(std::move(r));
    }
    return i < groups.size() ? i + 1 : i;
}

// The header body: "9 $NAME" then its groups, up to ENDSEC.
size_t readHeader(const std::vector<Group>& groups, size_t i,
                  std::vector<HeaderVariable>& header) {
    while (i < groups.size() && groups[i].code != 0) {
        if (groups[i].code != 9) {   // a stray group before the first variable
            ++i;
            continue;
        }
        HeaderVariable v{groups[i++].text, {}};
        while (i < groups.size() && groups[i].code != 9 && groups[i].code != 0)
            v.groups.push_back(groups[i++]);
        header.push_back(std::move(v));
    }
    if (i < groups.size() && isZero(groups[i], L"ENDSEC")) ++i;
    return i;
}

}  // namespace

DxfFile DxfFile::parse(std::string_view data) {
    std::vector<RawGroup> raw;
    Tokenizer tokens(data);
    for (RawGroup g; tokens.next(g);) raw.push_back(std::move(g));

    DxfFile file;
    file.sawEof_ = tokens.sawEof();
    file.acadVersion_ = rawHeaderValue(raw, "$ACADVER");
    file.codePage_ = rawHeaderValue(raw, "$DWGCODEPAGE");
    TextCodec codec = TextCodec::forDrawing(file.acadVersion_, file.codePage_);

    std::vector<Group> groups;
    groups.reserve(raw.size());
    for (RawGroup& g : raw) {
        bool text = g.code == 0 || groupKind(g.code) == GroupKind::String ||
                    groupKind(g.code) == GroupKind::Comment;
        std::wstring value = text ? codec.decode(g.code == 0 ? trimmed(g.value) : g.value)
                                  : fromUtf8(trimmed(g.value), InvalidBytes::Latin1);
        groups.push_back(Group{g.code, std::move(value), g.line});
        std::string().swap(g.value);
    }

    size_t i = 0;
    while (i < groups.size()) {
        if (groups[i].code == 999) {   // a comment between sections
            ++i;
            continue;
        }
        if (!isZero(groups[i], L"SECTION"))
            throw DxfError("SECTION expected, found \"" + toUtf8(groups[i].text) + "\"",
                           groups[i].line);
        if (i + 1 >= groups.size() || groups[i + 1].code != 2)
            throw DxfError("section without a name", groups[i].line);
        std::wstring name = groups[i + 1].text;
        i += 2;
        if (name == L"HEADER") {
            i = readHeader(groups, i, file.header_);
            continue;
        }
        Section s;
        s.name = name;
        i = readRecords(groups, i, s);
        file.sections_.push_back(std::move(s));
    }
    return file;
}

DxfFile DxfFile::load(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw DxfError(std::strerror(errno));
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (in.bad()) throw DxfError(std::strerror(errno));
    return parse(bytes.view());
}

const HeaderVariable* DxfFile::headerVariable(std::wstring_view name) const {
    for (auto& v : header_)
        if (v.name == name) return &v;
    return nullptr;
}

const Section* DxfFile::section(std::wstring_view name) const {
    for (auto& s : sections_)
        if (s.name == name) return &s;
    return nullptr;
}

}  // namespace kelvo::host::dxf
