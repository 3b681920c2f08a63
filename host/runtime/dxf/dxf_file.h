// An ASCII DXF file as sections of records: the header variables, then each section
// (CLASSES, TABLES, BLOCKS, ENTITIES, OBJECTS, and any other) as the records that start
// at each group 0. Strings are decoded by the file's version and code page.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/dxf/dxf_group.h"

namespace kelvo::host::dxf {

// A record: its groups from the group 0 that starts it (groups[0]) up to the next group 0.
struct Record {
    std::vector<Group> groups;
    const std::wstring& type() const { return groups.front().text; }
    int line() const { return groups.front().line; }
};

// A header variable: its name ("$ACADVER") and the groups of its value.
struct HeaderVariable {
    std::wstring name;
    std::vector<Group> groups;
};

// Most sections are records; a few (THUMBNAILIMAGE, ACDSDATA) start with groups before
// their first group 0, which are kept as the section's preamble.
struct Section {
    std::wstring name;
    std::vector<Group> preamble;
    std::vector<Record> records;
};

class DxfFile {
public:
    // Throws DxfError for text that is not DXF (with the line where reading stopped).
    static DxfFile parse(std::string_view data);
    // Throws DxfError naming the reason when the file cannot be read.
    static DxfFile load(const std::filesystem::path& file);

    const std::string& acadVersion() const { return acadVersion_; }   // "" when absent
    const std::string& codePage() const { return codePage_; }
    const std::vector<HeaderVariable>& header() const { return header_; }
    const HeaderVariable* headerVariable(std::wstring_view name) const;
    const std::vector<Section>& sections() const { return sections_; }
    const Section* section(std::wstring_view name) const;
    bool sawEof() const { return sawEof_; }

private:
    std::string acadVersion_, codePage_;
    std::vector<HeaderVariable> header_;
    std::vector<Section> sections_;
    bool sawEof_ = false;
};

}  // namespace kelvo::host::dxf
