// Whole drawings in DXF: every test drawing reads, what the host keeps survives a write and
// a second read unchanged, old files get their records laid out by subclass, unknown types
// are reported, and the database's own file functions reach the files.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "adslib.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/dwgfile/drawing_file_io.h"
#include "runtime/dxf/dxf_drawing_reader.h"
#include "runtime/dxf/dxf_drawing_writer.h"
#include "runtime/dxf/dxf_error.h"
#include "runtime/dxf/dxf_file.h"
#include "runtime/dxf/dxf_subclass_markers.h"

namespace {

using namespace kelvo::host::dxf;
namespace fs = std::filesystem;

const fs::path kTestData = KELVO_SOURCE_DIR "/../shared/testdata/dxf";

std::vector<fs::path> testDrawings() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(kTestData)) {
        std::string ext = entry.path().extension().string();
        for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (ext == ".dxf") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The DXF name of each entity of a block, in order.
std::vector<std::wstring> entityTypes(AcDbObjectId block) {
    std::vector<std::wstring> out;
    for (AcDbObjectId id : kelvo::drawing::blockEntities(block)) {
        AcDbEntity* e = nullptr;
        if (acdbOpenObject(e, id, AcDb::kForRead) != Acad::eOk) continue;
        out.push_back(e->isA()->dxfName());
        e->close();
    }
    return out;
}

std::map<std::wstring, int> counts(const std::vector<std::wstring>& types) {
    std::map<std::wstring, int> out;
    for (const auto& t : types) ++out[t];
    return out;
}

// Entities of a type in a file's ENTITIES section.
int entitiesInFile(const DxfFile& file, const std::wstring& type) {
    int n = 0;
    if (const Section* s = file.section(L"ENTITIES"))
        for (const Record& r : s->records) {
            bool paper = false;
            for (const Group& g : r.groups) paper = paper || (g.code == 67 && g.toInt() == 1);
            if (r.type() == type && !paper) ++n;
        }
    return n;
}

class TempDir {
public:
    TempDir() : path_(fs::temp_directory_path() / ("kelvo-dxf-" + std::to_string(::getpid()))) {
        fs::create_directories(path_);
    }
    ~TempDir() { fs::remove_all(path_); }
    fs::path operator/(const std::string& name) const { return path_ / name; }

private:
    fs::path path_;
};

TEST(DxfDrawing, EveryTestDrawingReadsAndKeepsWhatTheHostSupports) {
    const auto files = testDrawings();
    ASSERT_GE(files.size(), 29u) << "test drawings missing in " << kTestData;
    for (const fs::path& path : files) {
        SCOPED_TRACE(path.filename().string());
        DxfFile file = DxfFile::load(path);
        AcDbDatabase db(false, true);
        std::wstring report;
        ASSERT_NO_THROW(report = readDrawingDxf(file, db));
        // Every object the host has a class for reads whole (an array of inserts is the one
        // exception, said so).
        std::wstring partly = report.substr(std::min(report.find(L"read in part"), report.size()));
        if (path.filename() == "ezdxf__multi_insert_with_attribs.dxf")
            EXPECT_EQ(partly, L"read in part 1 INSERT (an array read as its first insert)");
        else
            EXPECT_EQ(partly, L"") << std::string(report.begin(), report.end());
        auto types = counts(entityTypes(db.modelSpaceId()));
        for (const wchar_t* type :
             {L"LINE", L"CIRCLE", L"ARC", L"TEXT", L"LWPOLYLINE", L"INSERT", L"POINT", L"MTEXT"})
            EXPECT_EQ(types[type], entitiesInFile(file, type))
                << std::string(type, type + wcslen(type));
        EXPECT_FALSE(db.layerZero().isNull());
        EXPECT_FALSE(db.byLayerLinetype().isNull());
    }
}

bool sameGroup(const Group& a, const Group& b) {
    if (a.code != b.code) return false;
    if (a.text == b.text) return true;
    if (groupKind(a.code) != GroupKind::Double) return false;
    double x = a.toDouble(), y = b.toDouble();
    return std::fabs(x - y) <= 1e-9 * std::max({1.0, std::fabs(x), std::fabs(y)});
}

// The types of the records that differ between two DXF texts, section by section (reals
// compared to 1e-9 relative: directions may be normalised again on the way).
std::map<std::wstring, int> differences(const std::string& a, const std::string& b) {
    DxfFile fa = DxfFile::parse(a), fb = DxfFile::parse(b);
    std::map<std::wstring, int> out;
    for (const Section& sa : fa.sections()) {
        const Section* sb = fb.section(sa.name);
        if (!sb || sb->records.size() != sa.records.size()) {
            ++out[L"section " + sa.name];
            continue;
        }
        for (size_t i = 0; i < sa.records.size(); ++i) {
            const auto& ga = sa.records[i].groups;
            const auto& gb = sb->records[i].groups;
            bool same =
                ga.size() == gb.size() && std::equal(ga.begin(), ga.end(), gb.begin(), sameGroup);
            if (!same) ++out[sa.records[i].type()];
        }
    }
    return out;
}

std::string narrow(const std::map<std::wstring, int>& counts) {
    std::string out;
    for (auto& [type, n] : counts)
        out += std::string(type.begin(), type.end()) + " x" + std::to_string(n) + " ";
    return out;
}

// Written, read again and written again, a drawing gives the same text: nothing the host
// keeps was lost or changed on the way.
TEST(DxfDrawing, WriteReadWriteIsStable) {
    for (const fs::path& path : testDrawings()) {
        SCOPED_TRACE(path.filename().string());
        AcDbDatabase first(false, true);
        readDrawingDxf(DxfFile::load(path), first);
        std::string once = writeDrawingDxf(first);
        AcDbDatabase second(false, true);
        readDrawingDxf(DxfFile::parse(once), second);
        std::string twice = writeDrawingDxf(second);
        EXPECT_EQ(narrow(differences(once, twice)), "");
        EXPECT_EQ(entityTypes(first.modelSpaceId()), entityTypes(second.modelSpaceId()));
    }
}

TEST(DxfDrawing, WrittenFilesAreR2000WithEveryHandleBelowTheSeed) {
    AcDbDatabase db;
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 5, 0));
    AcDbBlockTableRecord* ms = nullptr;
    ASSERT_EQ(acdbOpenObject(ms, db.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    ms->appendAcDbEntity(line);
    line->close();
    ms->close();
    DxfFile file = DxfFile::parse(writeDrawingDxf(db));
    EXPECT_EQ(file.acadVersion(), "AC1015");
    const HeaderVariable* seed = file.headerVariable(L"$HANDSEED");
    ASSERT_NE(seed, nullptr);
    std::uint64_t next = seed->groups.front().toHandle();
    std::set<std::uint64_t> handles;
    for (const Section& s : file.sections())
        for (const Record& r : s.records)
            for (const Group& g : r.groups)
                if (g.code == 5 || g.code == 105) {
                    EXPECT_LT(g.toHandle(), next);
                    EXPECT_TRUE(handles.insert(g.toHandle()).second)
                        << "handle twice: " << g.toHandle();
                }
    EXPECT_FALSE(file.header().empty());
    for (const wchar_t* name : {L"CLASSES", L"TABLES", L"BLOCKS", L"ENTITIES", L"OBJECTS"})
        EXPECT_NE(file.section(name), nullptr);
    EXPECT_EQ(entitiesInFile(file, L"LINE"), 1);
}

TEST(DxfDrawing, ABlockWithoutMarkerObjectsIsWrittenBetweenBlockAndEndblk) {
    AcDbDatabase db;
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(db.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* block = new AcDbBlockTableRecord();
    block->setName(L"VALVE");
    block->setOrigin(AcGePoint3d(1, 2, 0));
    table->add(block);
    block->appendAcDbEntity(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    block->close();
    table->close();
    DxfFile file = DxfFile::parse(writeDrawingDxf(db));
    std::vector<std::wstring> types;
    for (const Record& r : file.section(L"BLOCKS")->records) types.push_back(r.type());
    EXPECT_EQ(types, (std::vector<std::wstring>{L"BLOCK", L"ENDBLK", L"BLOCK", L"ENDBLK", L"BLOCK",
                                                L"LINE", L"ENDBLK"}));
    AcDbDatabase back(false, true);
    readDrawingDxf(file, back);
    AcDbBlockTable* backTable = nullptr;
    ASSERT_EQ(back.getBlockTable(backTable, AcDb::kForRead), Acad::eOk);
    AcDbObjectId valve;
    EXPECT_EQ(backTable->getAt(L"VALVE", valve), Acad::eOk);
    backTable->close();
    EXPECT_EQ(entityTypes(valve), std::vector<std::wstring>{L"LINE"});
    AcDbBlockTableRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, valve, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(record->origin(), AcGePoint3d(1, 2, 0));
    record->close();
}

// Old records without subclass markers get them, each group in its class.
TEST(DxfDrawing, OldRecordsAreLaidOutBySubclass) {
    std::vector<Group> arc = {{8, L"walls", 2}, {10, L"1", 3},  {20, L"2", 4}, {40, L"3", 5},
                              {50, L"0", 6},    {51, L"90", 7}, {62, L"1", 8}};
    std::vector<Group> out = withSubclassMarkers(L"ARC", arc);
    std::vector<std::pair<int, std::wstring>> seen;
    for (const Group& g : out) seen.push_back({g.code, g.text});
    std::vector<std::pair<int, std::wstring>> expected = {
        {100, L"AcDbEntity"}, {8, L"walls"}, {62, L"1"},        {100, L"AcDbCircle"}, {10, L"1"},
        {20, L"2"},           {40, L"3"},    {100, L"AcDbArc"}, {50, L"0"},           {51, L"90"}};
    EXPECT_EQ(seen, expected);

    std::vector<Group> modern = {{100, L"AcDbEntity", 1}, {100, L"AcDb3dPolyline", 2}};
    EXPECT_EQ(withSubclassMarkers(L"POLYLINE", modern)[1].text, L"AcDb2dPolyline");
    std::vector<Group> unknown = {{8, L"0", 1}, {10, L"1", 2}};
    EXPECT_EQ(withSubclassMarkers(L"TRACE", unknown).size(), 2u);
}

TEST(DxfDrawing, AnR12ArcReadsWithItsAnglesInRadians) {
    const char* text =
        "0\nSECTION\n2\nENTITIES\n0\nARC\n8\nPIPES\n62\n3\n10\n1.0\n20\n2.0\n30\n0.0\n40\n5."
        "0\n50\n90.0\n51\n180.0\n"
        "0\nENDSEC\n0\nEOF\n";
    AcDbDatabase db(false, true);
    readDrawingDxf(DxfFile::parse(text), db);
    auto ids = kelvo::drawing::blockEntities(db.modelSpaceId());
    ASSERT_EQ(ids.length(), 1);
    AcDbArc* arc = nullptr;
    ASSERT_EQ(acdbOpenObject(arc, ids[0], AcDb::kForRead), Acad::eOk);
    EXPECT_DOUBLE_EQ(arc->radius(), 5.0);
    EXPECT_NEAR(arc->startAngle(), 3.14159265358979 / 2, 1e-12);
    EXPECT_NEAR(arc->endAngle(), 3.14159265358979, 1e-12);
    EXPECT_EQ(arc->colorIndex(), 3);
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, arc->layerId(), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(layer->name(), L"PIPES");
    layer->close();
    arc->close();
    // Written back in degrees.
    std::string out = writeDrawingDxf(db);
    EXPECT_NE(out.find(" 50\r\n90.0\r\n"), std::string::npos);
}

TEST(DxfDrawing, UnknownTypesAreReportedOnceWithTheirCounts) {
    const char* text =
        "0\nSECTION\n2\nENTITIES\n"
        "0\nTRACE\n8\n0\n10\n0\n20\n0\n"
        "0\nTRACE\n8\n0\n10\n0\n20\n0\n"
        "0\nHATCH\n5\nA0\n100\nAcDbEntity\n8\n0\n100\nAcDbHatch\n2\nSOLID\n"
        "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n1\n"
        "0\nPOLYLINE\n8\n0\n66\n1\n70\n64\n0\nVERTEX\n8\n0\n10\n1\n20\n1\n70\n192\n"
        "0\nVERTEX\n8\n0\n70\n128\n71\n1\n0\nSEQEND\n8\n0\n"
        "0\nENDSEC\n0\nEOF\n";
    AcDbDatabase db(false, true);
    std::wstring report = readDrawingDxf(DxfFile::parse(text), db);
    EXPECT_EQ(report, L"skipped 2 TRACE; kept as proxies 1 HATCH, 1 POLYLINE (mesh)");
    // A mesh is kept as it is: the polyline, its vertices and its end, one after the other.
    EXPECT_EQ(entityTypes(db.modelSpaceId()),
              (std::vector<std::wstring>{L"ACAD_PROXY_ENTITY", L"LINE", L"ACAD_PROXY_ENTITY",
                                         L"ACAD_PROXY_ENTITY", L"ACAD_PROXY_ENTITY",
                                         L"ACAD_PROXY_ENTITY"}));
    // The proxy writes back what it read.
    std::string out = writeDrawingDxf(db);
    EXPECT_NE(out.find("HATCH\r\n  5\r\nA0\r\n"), std::string::npos);
    EXPECT_NE(out.find("AcDbHatch\r\n  2\r\nSOLID\r\n"), std::string::npos);
    EXPECT_NE(out.find("VERTEX\r\n  5\r\n"), std::string::npos) << "the mesh's vertices";
}

TEST(DxfDrawing, HeaderVariablesAndExtendedDataComeThrough) {
    AcDbDatabase db(false, true);
    readDrawingDxf(DxfFile::load(kTestData / "dxfparser__extendeddata.dxf"), db);
    auto ids = kelvo::drawing::blockEntities(db.modelSpaceId());
    ASSERT_GT(ids.length(), 0);
    AcDbEntity* e = nullptr;
    ASSERT_EQ(acdbOpenObject(e, ids[0], AcDb::kForRead), Acad::eOk);
    resbuf* xdata = e->xData(L"QCAD");
    e->close();
    ASSERT_NE(xdata, nullptr);
    ASSERT_NE(xdata->rbnext, nullptr);
    EXPECT_EQ(xdata->rbnext->restype, 1000);
    acutRelRb(xdata);

    AcDbDatabase text(false, true);
    DxfFile file = DxfFile::load(kTestData / "ezdxf__text.dxf");
    readDrawingDxf(file, text);
    const HeaderVariable* dimscale = file.headerVariable(L"$DIMSCALE");
    ASSERT_NE(dimscale, nullptr);
    EXPECT_DOUBLE_EQ(text.dimscale(), dimscale->groups.front().toDouble());
}

TEST(DxfDrawing, TheDatabaseFileFunctionsReadAndWriteBothFormats) {
    TempDir dir;
    AcDbDatabase source(false, true);
    ASSERT_EQ(source.dxfIn((kTestData / "libredwg__sample_2000.dxf").wstring().c_str()), Acad::eOk);
    auto before = entityTypes(source.modelSpaceId());
    ASSERT_FALSE(before.empty());
    for (const char* name : {"copy.dxf", "copy.dwg"}) {
        SCOPED_TRACE(name);
        fs::path file = dir / name;
        ASSERT_EQ(source.saveAs(file.wstring().c_str()), Acad::eOk);
        AcDbDatabase back(false, true);
        ASSERT_EQ(back.readDwgFile(file.wstring().c_str()), Acad::eOk);
        EXPECT_EQ(entityTypes(back.modelSpaceId()), before);
        const ACHAR* fileName = nullptr;
        back.getFilename(fileName);
        EXPECT_EQ(fs::path(fileName), file);
    }
    EXPECT_EQ(kelvo::files::sniffFormat(dir / "copy.dwg"), kelvo::files::DrawingFormat::Dwg);
    EXPECT_EQ(kelvo::files::sniffFormat(dir / "copy.dxf"), kelvo::files::DrawingFormat::Dxf);
}

TEST(DxfDrawing, FilesThatCannotBeReadSayWhy) {
    TempDir dir;
    AcDbDatabase db(false, true);
    std::wstring why;
    EXPECT_EQ(kelvo::files::readDrawing(db, dir / "absent.dwg", &why), Acad::eFileNotFound);
    EXPECT_EQ(why, L"no such file");
    std::ofstream(dir / "notes.txt") << "hello\n";
    EXPECT_EQ(kelvo::files::readDrawing(db, dir / "notes.txt", &why), Acad::eInvalidDwgVersion);
    EXPECT_EQ(why, L"not a drawing file of this host and not ASCII DXF");
    std::ofstream(dir / "broken.dxf") << "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\n";
    EXPECT_NE(kelvo::files::readDrawing(db, dir / "broken.dxf", &why), Acad::eOk);
    EXPECT_NE(why.find(L"line"), std::wstring::npos);
}

}  // namespace
