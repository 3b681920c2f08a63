// The drawing's undo history: steps taken back put every object back exactly, behind the
// same id; marks, groups and the refusal while an object is open.

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "dbents.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "runtime/commands/undo_log.h"
#include "runtime/drawing/drawing_access.h"

namespace {

using kelvo::commands::UndoLog;

AcDbObjectId addLine(AcDbDatabase& db, double x) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
    auto* line = new AcDbLine(AcGePoint3d(x, 0, 0), AcGePoint3d(x, 1, 0));
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
    line->close();
    return id;
}

std::vector<std::uint8_t> image(AcDbObjectId id) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead, true);
    std::vector<std::uint8_t> bytes;
    EXPECT_EQ(kelvo::drawing::writeObjectToDwg(*object.object(), bytes), Acad::eOk);
    return bytes;
}

void move(AcDbObjectId id, double dx) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    entity->transformBy(AcGeMatrix3d::translation(AcGeVector3d(dx, 0, 0)));
}

std::size_t modelCount(AcDbDatabase& db) {
    return kelvo::drawing::blockEntities(db.modelSpaceId()).length();
}

TEST(UndoLog, AStepTakenBackRestoresObjectsExactlyBehindTheirIds) {
    AcDbDatabase db;
    UndoLog log(db);
    AcDbObjectId a = addLine(db, 0);
    log.checkpoint(L"LINE", true);
    auto before = image(a);
    auto spaceBefore = image(db.modelSpaceId());
    move(a, 5);
    AcDbObjectId b = addLine(db, 9);
    log.checkpoint(L"MOVE", true);
    ASSERT_NE(image(a), before);

    auto outcome = log.undo(1);
    EXPECT_EQ(outcome.labels, std::vector<std::wstring>{L"MOVE"});
    EXPECT_EQ(image(a), before);                       // same id, same data
    EXPECT_EQ(image(db.modelSpaceId()), spaceBefore);  // the block's list too
    EXPECT_TRUE(b.isErased());                         // made in the step
    EXPECT_EQ(modelCount(db), 1u);

    outcome = log.undo(1);
    EXPECT_TRUE(a.isErased());
    EXPECT_TRUE(outcome.everything);
}

TEST(UndoLog, ErasedObjectsComeBackAndHeaderVariablesAreRestored) {
    AcDbDatabase db;
    AcDbObjectId a = addLine(db, 0);
    UndoLog log(db);
    {
        AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForWrite);
        auto* layer = new AcDbLayerTableRecord();
        layer->setName(L"Pipes");
        AcDbObjectId id;
        ASSERT_EQ(layers->add(id, layer), Acad::eOk);
        layer->close();
        db.setClayer(id);
    }
    {
        AcDbObjectPointer<AcDbEntity> entity(a, AcDb::kForWrite);
        entity->erase();
    }
    log.checkpoint(L"ERASE", true);
    log.undo(1);
    EXPECT_FALSE(a.isErased());
    EXPECT_EQ(db.clayer(), db.layerZero());
    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForRead);
    ASSERT_EQ(layers.openStatus(), Acad::eOk);
    EXPECT_FALSE(layers->has(L"Pipes"));
}

TEST(UndoLog, GroupsAreOneStepAndNumbersStopAtMarks) {
    AcDbDatabase db;
    UndoLog log(db);
    addLine(db, 0);
    log.checkpoint(L"LINE", true);
    log.mark();
    log.begin();
    addLine(db, 1);
    log.checkpoint(L"LINE", true);
    addLine(db, 2);
    log.checkpoint(L"LINE", true);
    log.end();
    EXPECT_EQ(modelCount(db), 3u);

    auto outcome = log.undo(5);  // the group, then the mark stops it
    EXPECT_EQ(outcome.labels, std::vector<std::wstring>{L"GROUP"});
    EXPECT_TRUE(outcome.hitMark);
    EXPECT_EQ(modelCount(db), 1u);

    outcome = log.back();  // removes the mark, nothing else
    EXPECT_TRUE(outcome.hitMark);
    EXPECT_EQ(modelCount(db), 1u);
    EXPECT_FALSE(log.hasMark());
    outcome = log.back();  // no mark: everything
    EXPECT_EQ(modelCount(db), 0u);
    EXPECT_TRUE(outcome.everything);
}

TEST(UndoLog, ChangesBetweenCheckpointsAreTheirOwnStep) {
    AcDbDatabase db;
    UndoLog log(db);
    AcDbObjectId a = addLine(db, 0);
    log.checkpoint(L"");  // what LISP did before the next command
    log.checkpoint(L"ZOOM", true);
    auto outcome = log.undo(1);
    EXPECT_EQ(outcome.labels, std::vector<std::wstring>{L"ZOOM"});
    EXPECT_FALSE(a.isErased());
    log.undo(1);
    EXPECT_TRUE(a.isErased());
}

TEST(UndoLog, RefusesWhileAnObjectIsOpenAndChangesNothing) {
    AcDbDatabase db;
    UndoLog log(db);
    AcDbObjectId a = addLine(db, 0);
    log.checkpoint(L"LINE", true);
    AcDbObjectPointer<AcDbEntity> open(a, AcDb::kForRead);
    EXPECT_THROW(log.undo(1), std::runtime_error);
    open.close();
    EXPECT_FALSE(a.isErased());
    log.undo(1);
    EXPECT_TRUE(a.isErased());
}

}  // namespace
