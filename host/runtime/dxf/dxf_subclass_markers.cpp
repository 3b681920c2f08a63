// Subclass markers for old records.

#include "runtime/dxf/dxf_subclass_markers.h"

#include <algorithm>
#include <map>
#include <set>

namespace kelvo::host::dxf {
namespace {

// One class of a record's layout: its marker and the codes it holds; the default class
// takes every code no other class names.
struct ClassPart {
    const wchar_t* marker;
    std::set<int> codes;
    bool takesTheRest = false;
};

struct Layout {
    bool entity;                   // has the AcDbEntity part
    std::vector<ClassPart> parts;  // in file order
};

// Codes of the AcDbObject part (handle, reactors, owner) and of the AcDbEntity part.
bool isObjectCode(int code) {
    return code == 5 || code == 105 || code == 102 || code == 330 || code == 360;
}
bool isEntityCode(int code) {
    static const std::set<int> kCodes = {8,   6,   62,  67,  370, 48,  60,
                                         420, 430, 440, 410, 347, 284, 390};
    return kCodes.contains(code);
}

const std::set<int> kTextCodes = {1,  7,  10, 20, 30, 11, 21,  31,  39,
                                  40, 41, 50, 51, 71, 72, 210, 220, 230};

Layout entityOf(std::vector<ClassPart> parts) {
    return {true, std::move(parts)};
}
Layout recordOf(const wchar_t* marker) {
    return {false, {{L"AcDbSymbolTableRecord", {}}, {marker, {}, true}}};
}

const std::map<std::wstring, Layout>& layouts() {
    static const std::map<std::wstring, Layout> list = {
        {L"LINE", entityOf({{L"AcDbLine", {}, true}})},
        {L"POINT", entityOf({{L"AcDbPoint", {}, true}})},
        {L"CIRCLE", entityOf({{L"AcDbCircle", {}, true}})},
        {L"ARC", entityOf({{L"AcDbCircle", {}, true}, {L"AcDbArc", {50, 51}}})},
        {L"TEXT", entityOf({{L"AcDbText", {}, true}, {L"AcDbText", {73}}})},
        {L"ATTDEF", entityOf({{L"AcDbText", kTextCodes}, {L"AcDbAttributeDefinition", {}, true}})},
        {L"ATTRIB", entityOf({{L"AcDbText", kTextCodes}, {L"AcDbAttribute", {}, true}})},
        {L"INSERT", entityOf({{L"AcDbBlockReference", {}, true}})},
        {L"POLYLINE", entityOf({{L"AcDb2dPolyline", {}, true}})},
        {L"VERTEX", entityOf({{L"AcDbVertex", {}}, {L"AcDb2dVertex", {}, true}})},
        {L"3DFACE", entityOf({{L"AcDbFace", {}, true}})},
        {L"SOLID", entityOf({{L"AcDbTrace", {}, true}})},
        {L"DIMENSION", entityOf({{L"AcDbDimension", {}, true}})},
        {L"VIEWPORT", entityOf({{L"AcDbViewport", {}, true}})},
        {L"SEQEND", entityOf({})},
        {L"BLOCK", entityOf({{L"AcDbBlockBegin", {}, true}})},
        {L"ENDBLK", entityOf({{L"AcDbBlockEnd", {}, true}})},
        {L"LAYER", recordOf(L"AcDbLayerTableRecord")},
        {L"LTYPE", recordOf(L"AcDbLinetypeTableRecord")},
        {L"STYLE", recordOf(L"AcDbTextStyleTableRecord")},
        {L"APPID", recordOf(L"AcDbRegAppTableRecord")},
        {L"BLOCK_RECORD", recordOf(L"AcDbBlockTableRecord")},
    };
    return list;
}

Group marker(const wchar_t* name, int line) {
    return Group{100, name, line};
}

// 3D polylines are read as 2D ones (the vertex keeps its Z).
std::wstring renamed(const std::wstring& text) {
    if (text == L"AcDb3dPolyline") return L"AcDb2dPolyline";
    if (text == L"AcDb3dPolylineVertex") return L"AcDb2dVertex";
    if (text == L"AcDbMInsertBlock") return L"AcDbBlockReference";
    return text;
}

// Which part of the layout a group belongs to (-1: none takes it).
int partOf(const Layout& layout, int code) {
    int fallback = -1;
    for (size_t i = 0; i < layout.parts.size(); ++i) {
        if (layout.parts[i].codes.contains(code)) return static_cast<int>(i);
        if (layout.parts[i].takesTheRest) fallback = static_cast<int>(i);
    }
    return fallback;
}

}  // namespace

bool hasLayout(const std::wstring& type) {
    return layouts().contains(type);
}

bool hasSubclassMarkers(const std::vector<Group>& groups) {
    return std::any_of(groups.begin(), groups.end(), [](const Group& g) { return g.code == 100; });
}

std::vector<Group> withSubclassMarkers(const std::wstring& type, const std::vector<Group>& groups) {
    if (hasSubclassMarkers(groups)) {
        std::vector<Group> out = groups;
        for (Group& g : out)
            if (g.code == 100) g.text = renamed(g.text);
        return out;
    }
    auto it = layouts().find(type);
    if (it == layouts().end()) return groups;
    const Layout& layout = it->second;
    int line = groups.empty() ? 0 : groups.front().line;
    std::vector<Group> out, entity;
    std::vector<std::vector<Group>> parts(layout.parts.size());
    for (const Group& g : groups) {
        if (isObjectCode(g.code))
            out.push_back(g);
        else if (layout.entity && isEntityCode(g.code))
            entity.push_back(g);
        else if (int part = partOf(layout, g.code); part >= 0)
            parts[part].push_back(g);
    }
    if (layout.entity) {
        out.push_back(marker(L"AcDbEntity", line));
        out.insert(out.end(), entity.begin(), entity.end());
    }
    for (size_t i = 0; i < parts.size(); ++i) {
        out.push_back(marker(layout.parts[i].marker, line));
        out.insert(out.end(), parts[i].begin(), parts[i].end());
    }
    return out;
}

}  // namespace kelvo::host::dxf
