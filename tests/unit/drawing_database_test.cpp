// The drawing database: default tables, ids and handles, the open and close rules,
// erasing, and extended data.

#include <gtest/gtest.h>

#include <memory>

#include "adslib.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"

namespace {

// Adds an entity to model space and answers its id (closed).
AcDbObjectId addToModelSpace(AcDbDatabase& db, AcDbEntity* entity) {
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    space->close();
    return id;
}

TEST(DrawingDatabase, DefaultDrawingHasTheStandardRecords) {
    AcDbDatabase db;
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db.getLayerTable(layers), Acad::eOk);
    EXPECT_TRUE(layers->has(L"0"));
    layers->close();
    AcDbBlockTable* blocks = nullptr;
    ASSERT_EQ(db.getBlockTable(blocks), Acad::eOk);
    AcDbObjectId model;
    EXPECT_EQ(blocks->getAt(L"*model_space", model), Acad::eOk);   // names ignore case
    EXPECT_EQ(model, db.modelSpaceId());
    blocks->close();
    for (const wchar_t* name : {L"ByLayer", L"BYBLOCK", L"continuous"}) {
        AcDbLinetypeTable* linetypes = nullptr;
        ASSERT_EQ(db.getLinetypeTable(linetypes), Acad::eOk);
        EXPECT_TRUE(linetypes->has(name)) << name;
        linetypes->close();
    }
    AcDbDictionary* nod = nullptr;
    ASSERT_EQ(db.getNamedObjectsDictionary(nod), Acad::eOk);
    EXPECT_TRUE(nod->has(L"ACAD_GROUP"));
    nod->close();
    EXPECT_DOUBLE_EQ(db.dimscale(), 1.0);
    EXPECT_EQ(db.clayer(), db.layerZero());
}

TEST(DrawingDatabase, HandlesAreUniqueAndFindTheirObjects) {
    AcDbDatabase db;
    AcDbObjectId a = addToModelSpace(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    AcDbObjectId b = addToModelSpace(db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 1, 0)));
    EXPECT_NE(a.handle(), b.handle());
    EXPECT_LT(a.handle().value(), db.handseed().value());
    AcDbObjectId found;
    ASSERT_EQ(db.getAcDbObjectId(found, false, b.handle()), Acad::eOk);
    EXPECT_EQ(found, b);
    EXPECT_EQ(db.getAcDbObjectId(found, false, db.handseed()), Acad::eUnknownHandle);
    ACHAR text[32];
    ASSERT_TRUE(a.handle().getIntoAsciiBuffer(text, 32));
    EXPECT_EQ(AcDbHandle(text), a.handle());
}

TEST(DrawingDatabase, OpenRulesAnswerTheHostStatuses) {
    AcDbDatabase db;
    AcDbObjectId id = addToModelSpace(db, new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 2));
    AcDbEntity* writer = nullptr;
    ASSERT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eOk);
    AcDbEntity* other = nullptr;
    EXPECT_EQ(acdbOpenObject(other, id, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(acdbOpenObject(other, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
    EXPECT_EQ(other, nullptr);
    writer->close();

    AcDbEntity* r1 = nullptr;
    AcDbEntity* r2 = nullptr;
    ASSERT_EQ(acdbOpenObject(r1, id, AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(acdbOpenObject(r2, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(r1, r2);
    EXPECT_EQ(acdbOpenObject(other, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_EQ(r1->upgradeOpen(), Acad::eHadMultipleReaders);
    r2->close();
    EXPECT_EQ(r1->upgradeOpen(), Acad::eOk);
    EXPECT_TRUE(r1->isWriteEnabled());
    r1->close();

    AcDbLine* line = nullptr;
    EXPECT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eNotThatKindOfClass);
    EXPECT_EQ(acdbOpenObject(other, AcDbObjectId(), AcDb::kForRead), Acad::eNullObjectId);
    EXPECT_NE(acdbOpenObject(other, AcDbObjectId(std::int64_t{0x1234}), AcDb::kForRead), Acad::eOk);
}

TEST(DrawingDatabase, ErasedObjectsOpenOnlyWhenAsked) {
    AcDbDatabase db;
    AcDbObjectId id = addToModelSpace(db, new AcDbPoint(AcGePoint3d(1, 2, 3)));
    {
        AcDbObjectPointer<AcDbPoint> point(id, AcDb::kForRead);
        ASSERT_EQ(point.openStatus(), Acad::eOk);
        EXPECT_EQ(point->erase(), Acad::eNotOpenForWrite);
    }
    {
        AcDbObjectPointer<AcDbPoint> point(id, AcDb::kForWrite);
        ASSERT_EQ(point->erase(), Acad::eOk);
        EXPECT_EQ(point->erase(), Acad::eWasErased);
    }
    EXPECT_TRUE(id.isErased());
    AcDbObjectPointer<AcDbPoint> closedOne(id, AcDb::kForRead);
    EXPECT_EQ(closedOne.openStatus(), Acad::eWasErased);
    AcDbObjectPointer<AcDbPoint> erasedOne(id, AcDb::kForWrite, true);
    ASSERT_EQ(erasedOne.openStatus(), Acad::eOk);
    EXPECT_EQ(erasedOne->erase(false), Acad::eOk);
    EXPECT_FALSE(erasedOne->isErased());
}

TEST(DrawingDatabase, StaleIdsAreInvalidOnceTheDatabaseIsGone) {
    AcDbObjectId id;
    {
        AcDbDatabase db;
        id = addToModelSpace(db, new AcDbPoint(AcGePoint3d()));
        EXPECT_TRUE(id.isValid());
    }
    EXPECT_FALSE(id.isValid());
    AcDbObject* object = nullptr;
    EXPECT_NE(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
}

TEST(DrawingDatabase, SymbolTableAddRefusesBadAndDuplicateNames) {
    AcDbDatabase db;
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db.getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    auto bad = std::make_unique<AcDbLayerTableRecord>();
    EXPECT_EQ(bad->setName(L"a<b"), Acad::eInvalidSymbolTableName);
    auto duplicate = std::make_unique<AcDbLayerTableRecord>();
    duplicate->setName(L"0");
    EXPECT_EQ(layers->add(duplicate.get()), Acad::eDuplicateRecordName);
    auto wrongKind = std::make_unique<AcDbTextStyleTableRecord>();
    wrongKind->setName(L"Notes");
    EXPECT_EQ(layers->AcDbSymbolTable::add(wrongKind.get()), Acad::eWrongObjectType);
    auto good = new AcDbLayerTableRecord();
    good->setName(L"Ducts");
    AcDbObjectId id;
    ASSERT_EQ(layers->add(id, good), Acad::eOk);
    good->close();
    layers->close();

    AcDbLayerTable* again = nullptr;
    db.getLayerTable(again);
    AcDbLayerTableIterator* it = nullptr;
    again->newIterator(it);
    std::vector<std::wstring> names;
    for (; !it->done(); it->step()) {
        AcDbLayerTableRecord* record = nullptr;
        ASSERT_EQ(it->getRecord(record, AcDb::kForRead), Acad::eOk);
        names.push_back(record->name());
        record->close();
    }
    delete it;
    again->close();
    EXPECT_EQ(names, (std::vector<std::wstring>{L"0", L"Ducts"}));
}

TEST(DrawingDatabase, ExtendedDataNeedsARegisteredApplication) {
    AcDbDatabase db;
    AcDbObjectId id = addToModelSpace(db, new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 1, 0)));
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    resbuf* data = acutBuildList(AcDb::kDxfRegAppName, L"TARVIK", AcDb::kDxfXdAsciiString, L"size",
                                 AcDb::kDxfXdInteger32, std::int32_t{12}, 0);
    EXPECT_EQ(line->setXData(data), Acad::eRegappIdNotFound);
    EXPECT_EQ(line->xData(L"TARVIK"), nullptr);

    AcDbRegAppTable* apps = nullptr;
    ASSERT_EQ(db.getRegAppTable(apps, AcDb::kForWrite), Acad::eOk);
    auto* app = new AcDbRegAppTableRecord();
    app->setName(L"TARVIK");
    ASSERT_EQ(apps->add(app), Acad::eOk);
    app->close();
    apps->close();

    ASSERT_EQ(line->setXData(data), Acad::eOk);
    acutRelRb(data);
    resbuf* back = line->xData(L"tarvik");
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->restype, AcDb::kDxfRegAppName);
    ASSERT_NE(back->rbnext, nullptr);
    EXPECT_STREQ(back->rbnext->resval.rstring, L"size");
    ASSERT_NE(back->rbnext->rbnext, nullptr);
    EXPECT_EQ(back->rbnext->rbnext->resval.rlong, 12);
    EXPECT_EQ(back->rbnext->rbnext->rbnext, nullptr);
    acutRelRb(back);

    // An application part with nothing after its name removes that application's data.
    resbuf* clear = acutBuildList(AcDb::kDxfRegAppName, L"TARVIK", 0);
    ASSERT_EQ(line->setXData(clear), Acad::eOk);
    acutRelRb(clear);
    EXPECT_EQ(line->xData(L"TARVIK"), nullptr);
}

TEST(DrawingDatabase, HeaderVariablesByName) {
    AcDbDatabase db;
    using kelvo::drawing::HeaderValue;
    EXPECT_EQ(kelvo::drawing::setHeaderVariable(db, L"dimscale", HeaderValue(48)), Acad::eOk);
    EXPECT_DOUBLE_EQ(db.dimscale(), 48.0);
    auto clayer = kelvo::drawing::getHeaderVariable(db, L"$CLAYER");
    ASSERT_TRUE(clayer);
    EXPECT_EQ(std::get<std::wstring>(*clayer), L"0");
    EXPECT_EQ(kelvo::drawing::setHeaderVariable(db, L"CLAYER", HeaderValue(std::wstring(L"none"))),
              Acad::eKeyNotFound);
    EXPECT_EQ(kelvo::drawing::setHeaderVariable(db, L"NOSUCHVAR", HeaderValue(1.0)), Acad::eKeyNotFound);
    EXPECT_FALSE(kelvo::drawing::getHeaderVariable(db, L"NOSUCHVAR"));
}

}  // namespace
