// Drawings other programs read right: what a file says comes back out of a read and a write
// as the file said it (dictionaries, tables the host has no classes for, multiline text,
// polyline widths, objects kept as proxies, the oldest group order, carets), and nothing
// is added that the file did not say.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "dbents.h"
#include "dbmain.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/dxf/dxf_drawing_reader.h"
#include "runtime/dxf/dxf_drawing_writer.h"
#include "runtime/dxf/dxf_file.h"
#include "runtime/dxf/dxf_text_codec.h"

namespace {

using namespace kelvo::host::dxf;
using Groups = std::vector<std::pair<int, std::wstring>>;

// DXF text from code/value pairs.
std::string dxfText(const std::vector<std::pair<int, std::string>>& pairs) {
    std::string out;
    for (auto& [code, value] : pairs) out += std::to_string(code) + "\n" + value + "\n";
    return out;
}

std::string section(const std::string& name, const std::string& body) {
    return dxfText({{0, "SECTION"}, {2, name}}) + body + dxfText({{0, "ENDSEC"}});
}

std::string eof() {
    return dxfText({{0, "EOF"}});
}

// The file read into a new database and written again.
std::string roundTrip(const std::string& text, AcDbDatabase& db) {
    readDrawingDxf(DxfFile::parse(text), db);
    return writeDrawingDxf(db);
}

// The record of a type with the given handle (or the first of that type when handle is
// empty), in any section.
const Record* recordOf(const DxfFile& file, const std::wstring& type,
                       const std::wstring& handle = L"") {
    for (const Section& s : file.sections())
        for (const Record& r : s.records) {
            if (r.type() != type) continue;
            if (handle.empty()) return &r;
            for (const Group& g : r.groups)
                if ((g.code == 5 || g.code == 105) && g.text == handle) return &r;
        }
    return nullptr;
}

Groups groupsOf(const Record& r) {
    Groups out;
    for (const Group& g : r.groups) out.emplace_back(g.code, g.text);
    return out;
}

// The groups from the subclass marker `marker` on (to the record's end).
Groups groupsFrom(const Record& r, const std::wstring& marker) {
    Groups all = groupsOf(r), out;
    bool on = false;
    for (auto& g : all) {
        on = on || (g.first == 100 && g.second == marker);
        if (on) out.push_back(g);
    }
    return out;
}

// The first entity of model space of class T, open for read (null when there is none).
template <typename T>
T* firstEntity(AcDbDatabase& db) {
    for (AcDbObjectId id : kelvo::drawing::blockEntities(db.modelSpaceId())) {
        AcDbEntity* e = nullptr;
        if (acdbOpenObject(e, id, AcDb::kForRead) != Acad::eOk) continue;
        if (auto* t = T::cast(e)) return t;
        e->close();
    }
    return nullptr;
}

bool has(const Groups& groups, int code, const std::wstring& value) {
    for (auto& g : groups)
        if (g.first == code && g.second == value) return true;
    return false;
}

bool hasCode(const Groups& groups, int code) {
    for (auto& g : groups)
        if (g.first == code) return true;
    return false;
}

TEST(DxfInterchange, DictionariesKeepTheirEntryCodesAndFlags) {
    std::string text = section("OBJECTS", dxfText({
                                              {0, "DICTIONARY"},
                                              {5, "C"},
                                              {330, "0"},
                                              {100, "AcDbDictionary"},
                                              {281, "1"},
                                              {3, "ACAD_GROUP"},
                                              {350, "D"},
                                              {3, "KEEP"},
                                              {350, "E"},
                                              {0, "DICTIONARY"},
                                              {5, "D"},
                                              {330, "C"},
                                              {100, "AcDbDictionary"},
                                              {281, "1"},
                                              {0, "DICTIONARY"},
                                              {5, "E"},
                                              {330, "C"},
                                              {100, "AcDbDictionary"},
                                              {280, "1"},
                                              {281, "2"},
                                              {3, "ROW"},
                                              {360, "F"},
                                              {0, "XRECORD"},
                                              {5, "F"},
                                              {330, "E"},
                                              {100, "AcDbXrecord"},
                                              {280, "1"},
                                              {1, "kept"},
                                              {70, "7"},
                                          })) +
                       eof();
    AcDbDatabase db(false, true);
    DxfFile out = DxfFile::parse(roundTrip(text, db));
    const Record* root = recordOf(out, L"DICTIONARY", L"C");
    ASSERT_NE(root, nullptr);
    Groups g = groupsOf(*root);
    EXPECT_TRUE(has(g, 3, L"ACAD_GROUP")) << "entry names under group 3";
    EXPECT_TRUE(has(g, 350, L"D"));
    EXPECT_FALSE(hasCode(g, 300));
    const Record* hard = recordOf(out, L"DICTIONARY", L"E");
    ASSERT_NE(hard, nullptr);
    Groups h = groupsFrom(*hard, L"AcDbDictionary");
    EXPECT_EQ(
        h, (Groups{{100, L"AcDbDictionary"}, {280, L"1"}, {281, L"2"}, {3, L"ROW"}, {360, L"F"}}));
    const Record* xrecord = recordOf(out, L"XRECORD", L"F");
    ASSERT_NE(xrecord, nullptr);
    EXPECT_EQ(groupsFrom(*xrecord, L"AcDbXrecord"),
              (Groups{{100, L"AcDbXrecord"}, {280, L"1"}, {1, L"kept"}, {70, L"7"}}));
}

// A drawing's tables the host has no classes for: kept with their records, the objects
// they own pointing at them; text styles of shape files and complex linetypes whole.
std::string tablesDrawing() {
    return section("TABLES", dxfText({
                                 {0, "TABLE"},
                                 {2, "VPORT"},
                                 {5, "8"},
                                 {330, "0"},
                                 {100, "AcDbSymbolTable"},
                                 {70, "1"},
                                 {0, "VPORT"},
                                 {5, "29"},
                                 {102, "{ACAD_XDICTIONARY"},
                                 {360, "2A"},
                                 {102, "}"},
                                 {330, "8"},
                                 {100, "AcDbSymbolTableRecord"},
                                 {100, "AcDbViewportTableRecord"},
                                 {2, "*Active"},
                                 {70, "0"},
                                 {10, "0.0"},
                                 {20, "0.0"},
                                 {11, "1.0"},
                                 {21, "1.0"},
                                 {12, "210.0"},
                                 {22, "148.5"},
                                 {40, "297.0"},
                                 {41, "1.92"},
                                 {0, "ENDTAB"},
                                 {0, "TABLE"},
                                 {2, "STYLE"},
                                 {5, "3"},
                                 {330, "0"},
                                 {100, "AcDbSymbolTable"},
                                 {70, "2"},
                                 {0, "STYLE"},
                                 {5, "11"},
                                 {330, "3"},
                                 {100, "AcDbSymbolTableRecord"},
                                 {100, "AcDbTextStyleTableRecord"},
                                 {2, "Standard"},
                                 {70, "0"},
                                 {40, "0.0"},
                                 {41, "1.0"},
                                 {50, "0.0"},
                                 {71, "0"},
                                 {42, "2.5"},
                                 {3, "txt"},
                                 {4, ""},
                                 {0, "STYLE"},
                                 {5, "12"},
                                 {330, "3"},
                                 {100, "AcDbSymbolTableRecord"},
                                 {100, "AcDbTextStyleTableRecord"},
                                 {2, ""},
                                 {70, "1"},
                                 {40, "0.0"},
                                 {41, "1.0"},
                                 {50, "0.0"},
                                 {71, "0"},
                                 {42, "2.5"},
                                 {3, "ltypeshp.shx"},
                                 {4, ""},
                                 {0, "ENDTAB"},
                                 {0, "TABLE"},
                                 {2, "LTYPE"},
                                 {5, "5"},
                                 {330, "0"},
                                 {100, "AcDbSymbolTable"},
                                 {70, "1"},
                                 {0, "LTYPE"},
                                 {5, "14"},
                                 {330, "5"},
                                 {100, "AcDbSymbolTableRecord"},
                                 {100, "AcDbLinetypeTableRecord"},
                                 {2, "GAS_LINE"},
                                 {70, "0"},
                                 {3, "Gas line ----GAS----"},
                                 {72, "65"},
                                 {73, "3"},
                                 {40, "0.725"},
                                 {49, "0.5"},
                                 {74, "0"},
                                 {49, "-0.2"},
                                 {74, "2"},
                                 {75, "0"},
                                 {340, "11"},
                                 {46, "0.1"},
                                 {50, "0.0"},
                                 {44, "-0.1"},
                                 {45, "-0.05"},
                                 {9, "GAS"},
                                 {49, "-0.025"},
                                 {74, "0"},
                                 {0, "ENDTAB"},
                                 {0, "TABLE"},
                                 {2, "VIEW"},
                                 {5, "6"},
                                 {330, "0"},
                                 {100, "AcDbSymbolTable"},
                                 {70, "1"},
                                 {0, "VIEW"},
                                 {5, "30"},
                                 {330, "6"},
                                 {100, "AcDbSymbolTableRecord"},
                                 {100, "AcDbViewTableRecord"},
                                 {2, "FRONT"},
                                 {70, "0"},
                                 {40, "10.0"},
                                 {10, "5.0"},
                                 {20, "5.0"},
                                 {41, "12.0"},
                                 {0, "ENDTAB"},
                                 {0, "TABLE"},
                                 {2, "UCS"},
                                 {5, "7"},
                                 {330, "0"},
                                 {100, "AcDbSymbolTable"},
                                 {70, "1"},
                                 {0, "UCS"},
                                 {5, "31"},
                                 {330, "7"},
                                 {100, "AcDbSymbolTableRecord"},
                                 {100, "AcDbUCSTableRecord"},
                                 {2, "TILTED"},
                                 {70, "0"},
                                 {10, "1.0"},
                                 {20, "2.0"},
                                 {30, "0.0"},
                                 {11, "1.0"},
                                 {21, "0.0"},
                                 {31, "0.0"},
                                 {12, "0.0"},
                                 {22, "1.0"},
                                 {32, "0.0"},
                                 {0, "ENDTAB"},
                                 {0, "TABLE"},
                                 {2, "DIMSTYLE"},
                                 {5, "A"},
                                 {330, "0"},
                                 {100, "AcDbSymbolTable"},
                                 {70, "1"},
                                 {100, "AcDbDimStyleTable"},
                                 {71, "1"},
                                 {340, "27"},
                                 {0, "DIMSTYLE"},
                                 {105, "27"},
                                 {330, "A"},
                                 {100, "AcDbSymbolTableRecord"},
                                 {100, "AcDbDimStyleTableRecord"},
                                 {2, "ISO-25"},
                                 {70, "0"},
                                 {41, "2.5"},
                                 {42, "0.625"},
                                 {140, "2.5"},
                                 {340, "11"},
                                 {0, "ENDTAB"},
                             })) +
           section("OBJECTS", dxfText({
                                  {0, "DICTIONARY"},
                                  {5, "C"},
                                  {330, "0"},
                                  {100, "AcDbDictionary"},
                                  {281, "1"},
                                  {0, "DICTIONARY"},
                                  {5, "2A"},
                                  {330, "29"},
                                  {100, "AcDbDictionary"},
                                  {281, "1"},
                              })) +
           eof();
}

TEST(DxfInterchange, TablesWithoutClassesAreKeptWithTheirRecords) {
    AcDbDatabase db(false, true);
    std::string once = roundTrip(tablesDrawing(), db);
    DxfFile out = DxfFile::parse(once);
    const Record* active = recordOf(out, L"VPORT", L"29");
    ASSERT_NE(active, nullptr) << "the *Active viewport";
    Groups v = groupsFrom(*active, L"AcDbViewportTableRecord");
    EXPECT_TRUE(has(v, 2, L"*Active"));
    EXPECT_TRUE(has(v, 41, L"1.92"));
    EXPECT_TRUE(has(groupsOf(*active), 330, L"8")) << "owned by its table";
    const Record* vportTable = recordOf(out, L"TABLE", L"8");
    ASSERT_NE(vportTable, nullptr);
    EXPECT_TRUE(has(groupsOf(*vportTable), 2, L"VPORT"));
    EXPECT_NE(recordOf(out, L"VIEW", L"30"), nullptr);
    EXPECT_NE(recordOf(out, L"UCS", L"31"), nullptr);
    const Record* dimstyle = recordOf(out, L"DIMSTYLE", L"27");
    ASSERT_NE(dimstyle, nullptr);
    EXPECT_TRUE(has(groupsOf(*dimstyle), 105, L"27")) << "a dimension style's handle is group 105";
    EXPECT_FALSE(hasCode(groupsOf(*dimstyle), 5));
    EXPECT_TRUE(has(groupsOf(*dimstyle), 340, L"11"));
    // The viewport's extension dictionary is still its own.
    const Record* owned = recordOf(out, L"DICTIONARY", L"2A");
    ASSERT_NE(owned, nullptr);
    EXPECT_TRUE(has(groupsOf(*owned), 330, L"29"));
    // The shape file's style, without a name, and the linetype that draws its text.
    const Record* shapes = recordOf(out, L"STYLE", L"12");
    ASSERT_NE(shapes, nullptr);
    Groups st = groupsOf(*shapes);
    EXPECT_TRUE(has(st, 2, L""));
    EXPECT_TRUE(has(st, 3, L"ltypeshp.shx"));
    const Record* gas = recordOf(out, L"LTYPE", L"14");
    ASSERT_NE(gas, nullptr);
    Groups lt = groupsFrom(*gas, L"AcDbLinetypeTableRecord");
    Groups element = {{49, L"-0.2"}, {74, L"2"},    {75, L"0"},     {340, L"11"}, {46, L"0.1"},
                      {50, L"0.0"},  {44, L"-0.1"}, {45, L"-0.05"}, {9, L"GAS"}};
    auto at =
        std::search(lt.begin(), lt.end(), element.begin(), element.end(), [](auto& a, auto& b) {
            return a.first == b.first &&
                   (a.second == b.second || std::stod(a.second) == std::stod(b.second));
        });
    EXPECT_NE(at, lt.end()) << "the dash with its text element";
    // And a second trip changes nothing.
    AcDbDatabase again(false, true);
    EXPECT_EQ(roundTrip(once, again), once);
}

TEST(DxfInterchange, MultilineTextStopsAtItsEmbeddedObjectAndKeepsItsLineSpacing) {
    std::string text = section("ENTITIES", dxfText({
                                               {0, "MTEXT"},
                                               {5, "40"},
                                               {330, "1F"},
                                               {100, "AcDbEntity"},
                                               {8, "0"},
                                               {100, "AcDbMText"},
                                               {10, "100.0"},
                                               {20, "50.0"},
                                               {30, "0.0"},
                                               {40, "2.5"},
                                               {41, "80.0"},
                                               {71, "5"},
                                               {72, "1"},
                                               {1, "Two\\Plines"},
                                               {73, "2"},
                                               {44, "1.5"},
                                               {101, "Embedded Object"},
                                               {70, "1"},
                                               {10, "1.0"},
                                               {20, "0.0"},
                                               {30, "0.0"},
                                               {11, "0.0"},
                                               {21, "0.0"},
                                               {31, "0.0"},
                                               {40, "0.0"},
                                               {41, "0.0"},
                                               {42, "9.9"},
                                               {43, "9.9"},
                                               {71, "0"},
                                               {72, "0"},
                                               {44, "7.0"},
                                           })) +
                       eof();
    AcDbDatabase db(false, true);
    std::string once = roundTrip(text, db);
    auto* m = firstEntity<AcDbMText>(db);
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->location(), AcGePoint3d(100, 50, 0));
    EXPECT_EQ(m->textHeight(), 2.5);
    EXPECT_EQ(m->width(), 80.0);
    EXPECT_EQ(m->attachment(), AcDbMText::kMiddleCenter);
    EXPECT_EQ(m->lineSpacingFactor(), 1.5);
    EXPECT_EQ(m->lineSpacingStyle(), 2);
    m->close();
    DxfFile out = DxfFile::parse(once);
    const Record* written = recordOf(out, L"MTEXT", L"40");
    ASSERT_NE(written, nullptr);
    Groups g = groupsOf(*written);
    EXPECT_TRUE(has(g, 44, L"1.5"));
    EXPECT_TRUE(has(g, 73, L"2"));
    EXPECT_FALSE(hasCode(g, 47));
    AcDbDatabase again(false, true);
    EXPECT_EQ(roundTrip(once, again), once);
}

TEST(DxfInterchange, OldPolylineVerticesTakeThePolylineWidthsAndWriteOnlyTheirOwn) {
    std::string text =
        section("ENTITIES",
                dxfText({
                    {0, "POLYLINE"}, {8, "0"},    {66, "1"},    {10, "0.0"},   {20, "0.0"},
                    {30, "0.0"},     {40, "2.0"}, {41, "2.0"},  {0, "VERTEX"}, {8, "0"},
                    {10, "0.0"},     {20, "0.0"}, {30, "0.0"},  {0, "VERTEX"}, {8, "0"},
                    {10, "10.0"},    {20, "0.0"}, {30, "0.0"},  {40, "0.0"},   {41, "1.0"},
                    {0, "VERTEX"},   {8, "0"},    {10, "10.0"}, {20, "10.0"},  {30, "0.0"},
                    {0, "SEQEND"},   {8, "0"},
                })) +
        eof();
    AcDbDatabase db(false, true);
    DxfFile out = DxfFile::parse(roundTrip(text, db));
    std::vector<Groups> vertices;
    for (const Section& s : out.sections())
        for (const Record& r : s.records)
            if (r.type() == L"VERTEX") vertices.push_back(groupsFrom(r, L"AcDb2dVertex"));
    ASSERT_EQ(vertices.size(), 3u);
    EXPECT_FALSE(hasCode(vertices[0], 40)) << "the polyline's width, not a zero one";
    EXPECT_FALSE(hasCode(vertices[0], 41));
    EXPECT_TRUE(has(vertices[1], 40, L"0.0")) << "a width of its own";
    EXPECT_TRUE(has(vertices[1], 41, L"1.0"));
    auto* pl = firstEntity<AcDb2dPolyline>(db);
    ASSERT_NE(pl, nullptr);
    AcDbObjectIterator* it = pl->vertexIterator();
    AcDb2dVertex* v = nullptr;
    ASSERT_EQ(acdbOpenObject(v, it->objectId(), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(v->startWidth(), 2.0);
    EXPECT_EQ(v->endWidth(), 2.0);
    v->close();
    delete it;
    pl->close();
}

TEST(DxfInterchange, ProxiesWriteBackTheGroupsTheyWereRead) {
    // An entity and an object of classes the host does not know, with groups a reading
    // and writing by kinds would change: a point without z, an angle, a 16-bit value
    // above 32767, reals with every digit, a boundary of 2D vertices.
    Groups thing = {{100, L"AcDbThing"}, {10, L"1.5"},
                    {20, L"2.25"},       {50, L"33.333333333333336"},
                    {70, L"40000"},      {40, L"0.1234567890123456"},
                    {92, L"2"},          {10, L"0.0"},
                    {20, L"0.0"},        {10, L"5.0"},
                    {20, L"5.0"},        {330, L"41"}};
    std::vector<std::pair<int, std::string>> entity = {{0, "THING"},
                                                       {5, "40"},
                                                       {330, "1F"},
                                                       {100, "AcDbEntity"},
                                                       {8, "0"},
                                                       {92, "16"},
                                                       {310, "0000000000000000AAAAAAAABBBBBBBB"}};
    for (auto& [code, value] : thing)
        entity.emplace_back(code, std::string(value.begin(), value.end()));
    std::vector<std::pair<int, std::string>> object = {
        {0, "WIDGET"}, {5, "41"},   {330, "C"}, {100, "AcDbWidget"},
        {11, "3.0"},   {21, "4.0"}, {280, "1"}, {1, "a^ b"}};
    std::string text = section("CLASSES", dxfText({
                                              {0, "CLASS"},
                                              {1, "THING"},
                                              {2, "Thing"},
                                              {3, "Things"},
                                              {90, "1"},
                                              {280, "0"},
                                              {281, "1"},
                                              {0, "CLASS"},
                                              {1, "WIDGET"},
                                              {2, "Widget"},
                                              {3, "Things"},
                                              {90, "1"},
                                              {280, "0"},
                                              {281, "0"},
                                          })) +
                       section("ENTITIES", dxfText(entity)) +
                       section("OBJECTS", dxfText({
                                              {0, "DICTIONARY"},
                                              {5, "C"},
                                              {330, "0"},
                                              {100, "AcDbDictionary"},
                                              {281, "1"},
                                              {3, "W"},
                                              {350, "41"},
                                          }) + dxfText(object)) +
                       eof();
    AcDbDatabase db(false, true);
    std::string once = roundTrip(text, db);
    DxfFile out = DxfFile::parse(once);
    const Record* e = recordOf(out, L"THING", L"40");
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(groupsFrom(*e, L"AcDbThing"), thing);
    Groups common = groupsOf(*e);
    EXPECT_TRUE(has(common, 310, L"0000000000000000AAAAAAAABBBBBBBB")) << "its graphics kept";
    const Record* o = recordOf(out, L"WIDGET", L"41");
    ASSERT_NE(o, nullptr);
    EXPECT_EQ(groupsFrom(*o, L"AcDbWidget"),
              (Groups{{100, L"AcDbWidget"}, {11, L"3.0"}, {21, L"4.0"}, {280, L"1"}, {1, L"a^b"}}));
    AcDbDatabase again(false, true);
    EXPECT_EQ(roundTrip(once, again), once);
}

TEST(DxfInterchange, TheOldestGroupOrderReadsEveryCoordinate) {
    std::string text = section("ENTITIES", dxfText({
                                               {0, "LINE"},
                                               {8, "0"},
                                               {10, "1.0"},
                                               {11, "3.0"},
                                               {20, "2.0"},
                                               {21, "4.0"},
                                           })) +
                       eof();
    AcDbDatabase db(false, true);
    roundTrip(text, db);
    auto* line = firstEntity<AcDbLine>(db);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->startPoint(), AcGePoint3d(1, 2, 0));
    EXPECT_EQ(line->endPoint(), AcGePoint3d(3, 4, 0));
    line->close();
}

TEST(DxfInterchange, CaretsKeepTheTextAfterANullAndALiteralCaret) {
    EXPECT_EQ(caretEncode(resolveEscapes(L"abc^@def")), L"abc^@def");
    EXPECT_EQ(std::wstring(resolveEscapes(L"abc^@def").c_str()).size(), 7u) << "no 0 ends it early";
    EXPECT_EQ(caretEncode(resolveEscapes(L"abc^ def")), L"abc^ def");
    EXPECT_EQ(caretEncode(L"x^y"), L"x^ y");
}

TEST(DxfInterchange, ZeroThicknessIsNotWritten) {
    std::string text = section("ENTITIES", dxfText({
                                               {0, "LINE"},
                                               {5, "40"},
                                               {8, "0"},
                                               {10, "0.0"},
                                               {20, "0.0"},
                                               {11, "1.0"},
                                               {21, "1.0"},
                                               {0, "CIRCLE"},
                                               {5, "41"},
                                               {8, "0"},
                                               {10, "0.0"},
                                               {20, "0.0"},
                                               {40, "1.0"},
                                               {39, "2.5"},
                                           })) +
                       eof();
    AcDbDatabase db(false, true);
    DxfFile out = DxfFile::parse(roundTrip(text, db));
    for (const Section& s : out.sections())
        for (const Record& r : s.records) {
            bool thick = r.type() == L"CIRCLE";
            EXPECT_EQ(hasCode(groupsOf(r), 39), thick)
                << std::string(r.type().begin(), r.type().end());
        }
}

}  // namespace
