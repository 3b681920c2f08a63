// This host's binary drawing file: a drawing written and read back is the same drawing
// (its DXF text, handles included, is unchanged), objects of classes unknown when it is
// read are kept as they were, and damaged or foreign files are refused with a reason.

#include <gtest/gtest.h>

#include <memory>

#include "dbents.h"
#include "dbfiler.h"
#include "dbobjptr.h"
#include "dbmain.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/dwgfile/dwg_drawing_file.h"
#include "runtime/dxf/dxf_drawing_reader.h"
#include "runtime/dxf/dxf_drawing_writer.h"
#include "runtime/dxf/dxf_file.h"

namespace {

using kelvo::files::decodeDwgDrawing;
using kelvo::files::encodeDwgDrawing;
namespace fs = std::filesystem;

const fs::path kTestData = KELVO_SOURCE_DIR "/../shared/testdata/dxf";

AcDbObjectId append(AcDbDatabase& db, AcDbEntity* entity) {
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    space->appendAcDbEntity(id, entity);
    entity->close();
    space->close();
    return id;
}

std::vector<std::uint8_t> encoded(const AcDbDatabase& db) {
    std::vector<std::uint8_t> bytes;
    std::wstring why;
    EXPECT_EQ(encodeDwgDrawing(db, bytes, &why), Acad::eOk) << std::string(why.begin(), why.end());
    return bytes;
}

// A class of this test's own, unknown to the host when the file is read back.
class TestPump : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(TestPump);
    double flow = 0;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
        if (es != Acad::eOk) return es;
        filer->writeDouble(flow);
        return filer->filerStatus();
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
        if (es != Acad::eOk) return es;
        filer->readDouble(&flow);
        return filer->filerStatus();
    }
};
ACRX_DXF_DEFINE_MEMBERS(TestPump, AcDbEntity, AcDb::kDHL_CURRENT, 0, 1, TESTPUMP, KelvoTests)

TEST(DwgFile, ADrawingComesBackTheSameWithItsHandles) {
    AcDbDatabase db;
    db.setDimscale(48.0);
    append(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0)));
    AcDbObjectId circle = append(db, new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2));
    {
        AcDbObjectPointer<AcDbEntity> e(circle, AcDb::kForWrite);
        e->setColorIndex(5);
    }
    // A block with an attribute, and a reference to it with its attribute.
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(db.getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* block = new AcDbBlockTableRecord();
    block->setName(L"VALVE");
    AcDbObjectId blockId;
    table->add(blockId, block);
    block->appendAcDbEntity(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    block->close();
    table->close();
    auto* ref = new AcDbBlockReference(AcGePoint3d(10, 10, 0), blockId);
    AcDbObjectId refId = append(db, ref);
    {
        AcDbObjectPointer<AcDbBlockReference> r(refId, AcDb::kForWrite);
        auto* attribute = new AcDbAttribute(AcGePoint3d(10, 11, 0), L"V-1", L"TAG");
        r->appendAttribute(attribute);
        attribute->close();
    }
    // Blocks made through the table get their BLOCK and ENDBLK markers when the drawing is
    // completed, as reading does.
    kelvo::drawing::finishReading(db);
    std::string before = kelvo::host::dxf::writeDrawingDxf(db);

    AcDbDatabase back(false, true);
    std::wstring why;
    ASSERT_EQ(decodeDwgDrawing(back, encoded(db), &why), Acad::eOk) << std::string(why.begin(), why.end());
    EXPECT_EQ(kelvo::host::dxf::writeDrawingDxf(back), before);
    EXPECT_DOUBLE_EQ(back.dimscale(), 48.0);
    EXPECT_EQ(back.handseed().value(), db.handseed().value());
    AcDbObjectId found;
    ASSERT_EQ(back.getAcDbObjectId(found, false, circle.handle()), Acad::eOk);
    AcDbObjectPointer<AcDbCircle> c(found, AcDb::kForRead);
    ASSERT_EQ(c.openStatus(), Acad::eOk);
    EXPECT_EQ(c->colorIndex(), 5);
}

// What the host keeps of each test drawing survives the binary file too.
TEST(DwgFile, EveryTestDrawingThroughTheBinaryFile) {
    for (const auto& entry : fs::directory_iterator(kTestData)) {
        std::string ext = entry.path().extension().string();
        if (ext != ".dxf" && ext != ".DXF") continue;
        SCOPED_TRACE(entry.path().filename().string());
        AcDbDatabase db(false, true);
        kelvo::host::dxf::readDrawingDxf(kelvo::host::dxf::DxfFile::load(entry.path()), db);
        AcDbDatabase back(false, true);
        ASSERT_EQ(decodeDwgDrawing(back, encoded(db)), Acad::eOk);
        auto types = [](const AcDbDatabase& d) {
            std::vector<std::wstring> out;
            for (AcDbObjectId id : kelvo::drawing::blockEntities(d.modelSpaceId()))
                out.push_back(id.objectClass()->name());
            return out;
        };
        EXPECT_EQ(types(back), types(db));
        EXPECT_EQ(kelvo::drawing::allObjects(back).length(), kelvo::drawing::allObjects(db).length());
    }
}

TEST(DwgFile, AnObjectOfAClassUnknownOnReadingIsKeptAsItWas) {
    TestPump::rxInit();
    AcDbDatabase db;
    auto* pump = new TestPump();
    pump->flow = 12.5;
    append(db, pump);
    std::vector<std::uint8_t> bytes = encoded(db);
    deleteAcRxClass(TestPump::desc());

    AcDbDatabase back(false, true);
    ASSERT_EQ(decodeDwgDrawing(back, bytes), Acad::eOk);
    AcDbObjectIdArray ids = kelvo::drawing::blockEntities(back.modelSpaceId());
    ASSERT_EQ(ids.length(), 1);
    AcDbObjectPointer<AcDbProxyEntity> proxy(ids[0], AcDb::kForRead);
    ASSERT_EQ(proxy.openStatus(), Acad::eOk);
    EXPECT_STREQ(proxy->originalClassName(), L"TestPump");
    proxy.close();
    EXPECT_EQ(encoded(back), bytes);   // written back byte for byte
}

TEST(DwgFile, DamagedOrForeignBytesAreRefusedWithAReason) {
    AcDbDatabase db;
    append(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0)));
    std::vector<std::uint8_t> bytes = encoded(db);
    std::wstring why;

    AcDbDatabase full;   // a database with the default drawing in it
    EXPECT_EQ(decodeDwgDrawing(full, bytes, &why), Acad::eWrongDatabase);
    EXPECT_EQ(why, L"a drawing file is read into a new, empty database");

    std::vector<std::uint8_t> foreign(bytes);
    foreign[0] = 'X';
    AcDbDatabase a(false, true);
    EXPECT_EQ(decodeDwgDrawing(a, foreign, &why), Acad::eInvalidDwgVersion);
    EXPECT_EQ(why, L"not a drawing file of this host");

    std::vector<std::uint8_t> cut(bytes.begin(), bytes.begin() + static_cast<long>(bytes.size() / 2));
    AcDbDatabase b(false, true);
    why.clear();
    EXPECT_NE(decodeDwgDrawing(b, cut, &why), Acad::eOk);
    EXPECT_FALSE(why.empty());

    // Text-mode damage (line ends changed) shows in the signature.
    std::vector<std::uint8_t> mangled(bytes);
    mangled.erase(mangled.begin() + 8);   // "\r\n" became "\n"
    AcDbDatabase c(false, true);
    EXPECT_EQ(decodeDwgDrawing(c, mangled, &why), Acad::eInvalidDwgVersion);
}

}  // namespace
