// Filing: every entity through the DWG filer and the group-list filer and back, the DWG
// filer's failures, cloning within and between databases, and a custom class kept as a
// proxy when its reader meets a newer version.

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "adslib.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbpl.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/drawing/resbuf_chain.h"
#include "runtime/drawing/resbuf_dxf_filer.h"

namespace {

using kelvo::drawing::DwgMemoryFiler;
using kelvo::drawing::RbChain;

AcDbObjectId append(AcDbDatabase& db, AcDbEntity* entity, AcDbObjectId block = {}) {
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, block.isNull() ? db.modelSpaceId() : block, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    space->close();
    return id;
}

// The entity's groups without its name, owner and handle.
std::vector<std::wstring> groups(AcDbObjectId id) {
    RbChain data(kelvo::drawing::entityData(id, nullptr));
    std::vector<std::wstring> out;
    for (const resbuf* rb = data.get(); rb; rb = rb->rbnext) {
        if (rb->restype == -1 || rb->restype == 5 || rb->restype == 330) continue;
        std::wstring text = std::to_wstring(rb->restype) + L":";
        switch (rbKindOf(rb->restype)) {
            case RbKind::String: text += rb->resval.rstring; break;
            case RbKind::Real: text += std::to_wstring(rb->resval.rreal); break;
            case RbKind::Point:
                for (double v : rb->resval.rpoint) text += std::to_wstring(v) + L",";
                break;
            case RbKind::Short: text += std::to_wstring(rb->resval.rint); break;
            case RbKind::Long: text += std::to_wstring(rb->resval.rlong); break;
            default: break;
        }
        out.push_back(text);
    }
    return out;
}

// One of each entity kind, with values away from the defaults.
std::vector<std::function<AcDbEntity*()>> entityMakers() {
    return {
        [] { return new AcDbLine(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6)); },
        [] { return new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d(0, 1, 1), 2.5); },
        [] { return new AcDbArc(AcGePoint3d(0, 0, 0), 3, 0.5, 2.0); },
        [] { return new AcDbPoint(AcGePoint3d(7, 8, 9)); },
        [] {
            auto* t = new AcDbText(AcGePoint3d(1, 1, 0), L"Supply", AcDbObjectId(), 2.5, 0.3);
            t->setWidthFactor(0.8);
            return t;
        },
        [] {
            auto* m = new AcDbMText();
            m->setContents(L"Line one\\PLine two");
            m->setTextHeight(2);
            m->setWidth(40);
            m->setAttachment(AcDbMText::kMiddleCenter);
            m->setBackgroundFill(true);
            return m;
        },
        [] {
            auto* p = new AcDbPolyline();
            p->addVertexAt(0, AcGePoint2d(0, 0), 0.5, 1, 2);
            p->addVertexAt(1, AcGePoint2d(10, 0));
            p->addVertexAt(2, AcGePoint2d(10, 10));
            p->setClosed(true);
            p->setElevation(3);
            return p;
        },
        [] {
            auto* l = new AcDbLeader();
            l->appendVertex(AcGePoint3d(0, 0, 0));
            l->appendVertex(AcGePoint3d(5, 5, 0));
            l->appendVertex(AcGePoint3d(9, 5, 0));
            return l;
        },
        [] {
            auto* f = new AcDbFace(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(1, 1, 1),
                                   AcGePoint3d(0, 1, 1));
            f->makeEdgeInvisibleAt(2);
            return f;
        },
    };
}

TEST(DrawingFiling, EveryEntityComesBackThroughTheDwgFiler) {
    AcDbDatabase db;
    for (auto& make : entityMakers()) {
        AcDbObjectId id = append(db, make());
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(entity->clone()));
        ASSERT_NE(copy, nullptr) << entity->isA()->name();
        entity.close();
        AcDbObjectId copyId = append(db, copy.release());
        EXPECT_EQ(groups(copyId), groups(id)) << copyId.objectClass()->name();
    }
}

TEST(DrawingFiling, EveryEntityComesBackThroughItsGroupList) {
    AcDbDatabase db;
    for (auto& make : entityMakers()) {
        AcDbObjectId id = append(db, make());
        RbChain data(kelvo::drawing::entityData(id, nullptr));
        kelvo::drawing::MakeResult made = kelvo::drawing::makeFromList(db, data.get());
        ASSERT_EQ(made.status, Acad::eOk) << id.objectClass()->name();
        EXPECT_EQ(groups(made.id), groups(id)) << id.objectClass()->name();
    }
}

TEST(DrawingFiling, DwgFilerReportsWrongTypesAndTheEnd) {
    DwgMemoryFiler filer;
    filer.writeInt32(7);
    filer.writeString(L"text");
    filer.rewind();
    double d = 0;
    EXPECT_EQ(filer.readDouble(&d), Acad::eDwgObjectImproperlyRead);
    Adesk::Int32 n = 0;
    EXPECT_EQ(filer.readInt32(&n), Acad::eDwgObjectImproperlyRead);   // the failure stays
    filer.resetFilerStatus();
    ASSERT_EQ(filer.readInt32(&n), Acad::eOk);
    EXPECT_EQ(n, 7);
    ACHAR* s = nullptr;
    ASSERT_EQ(filer.readString(&s), Acad::eOk);
    EXPECT_STREQ(s, L"text");
    acutDelString(s);
    EXPECT_EQ(filer.readInt32(&n), Acad::eEndOfFile);
}

TEST(DrawingFiling, DeepCloneCopiesWhatTheEntityOwns) {
    AcDbDatabase db;
    AcGePoint3dArray points;
    points.append(AcGePoint3d(0, 0, 0));
    points.append(AcGePoint3d(5, 0, 0));
    points.append(AcGePoint3d(5, 5, 0));
    AcDbObjectId pline = append(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, points));
    AcDbIdMapping map;
    AcDbObjectIdArray ids;
    ids.append(pline);
    ASSERT_EQ(db.deepCloneObjects(ids, db.modelSpaceId(), map), Acad::eOk);
    AcDbIdPair pair(pline, {}, false);
    ASSERT_TRUE(map.compute(pair));
    AcDbObjectPointer<AcDb2dPolyline> original(pline, AcDb::kForRead);
    AcDbObjectPointer<AcDb2dPolyline> copy(pair.value(), AcDb::kForRead);
    ASSERT_EQ(copy.openStatus(), Acad::eOk);
    ASSERT_EQ(copy->vertexIds().length(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NE(copy->vertexIds()[i], original->vertexIds()[i]);   // new vertices ...
        AcDbObjectPointer<AcDb2dVertex> v(copy->vertexIds()[i], AcDb::kForRead);
        EXPECT_EQ(v->ownerId(), pair.value());                       // ... owned by the copy
        EXPECT_TRUE(v->position().isEqualTo(points[i]));
    }
    EXPECT_NE(copy->seqendId(), original->seqendId());
    EXPECT_EQ(kelvo::drawing::blockEntities(db.modelSpaceId()).length(), 2);
}

TEST(DrawingFiling, InsertMakesABlockWithWhatItUses) {
    AcDbDatabase source;
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(source.getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    auto* layer = new AcDbLayerTableRecord();
    layer->setName(L"Tags");
    layer->setColor(AcCmEntityColor(3));
    AcDbObjectId layerId;
    ASSERT_EQ(layers->add(layerId, layer), Acad::eOk);
    layer->close();
    layers->close();
    auto* circle = new AcDbCircle(AcGePoint3d(2, 2, 0), AcGeVector3d::kZAxis, 1);
    circle->setDatabaseDefaults(&source);
    circle->setLayer(layerId);
    append(source, circle);
    source.setInsbase(AcGePoint3d(2, 2, 0));

    AcDbDatabase target;
    AcDbObjectId block;
    ASSERT_EQ(target.insert(block, L"TAG1", &source), Acad::eOk);
    AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    EXPECT_TRUE(record->origin().isEqualTo(AcGePoint3d(2, 2, 0)));
    ASSERT_EQ(record->entityIds().length(), 1);
    AcDbObjectPointer<AcDbCircle> copy(record->entityIds()[0], AcDb::kForRead);
    ASSERT_EQ(copy.openStatus(), Acad::eOk);
    EXPECT_EQ(copy->database(), &target);
    AcDbObjectPointer<AcDbLayerTableRecord> copiedLayer(copy->layerId(), AcDb::kForRead);
    ASSERT_EQ(copiedLayer.openStatus(), Acad::eOk);
    EXPECT_EQ(copiedLayer->name(), L"Tags");
    EXPECT_EQ(copiedLayer->database(), &target);
    EXPECT_EQ(copiedLayer->color().colorIndex(), 3);
    AcDbObjectId again;
    EXPECT_EQ(target.insert(again, L"TAG1", &source), Acad::eDuplicateRecordName);
}

// A class of the test's own, filed with a version number as custom entities do.
class TestTag : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(TestTag);
    static constexpr Adesk::Int32 kVersion = 2;
    Adesk::Int32 writeVersion = kVersion;
    double size = 0;

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
        if (es != Acad::eOk) return es;
        filer->writeInt32(writeVersion);
        filer->writeDouble(size);
        return filer->filerStatus();
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
        if (es != Acad::eOk) return es;
        Adesk::Int32 version = 0;
        filer->readInt32(&version);
        if (version > kVersion) return Acad::eMakeMeProxy;
        filer->readDouble(&size);
        return filer->filerStatus();
    }
};
ACRX_DXF_DEFINE_MEMBERS(TestTag, AcDbEntity, AcDb::kDHL_CURRENT, 0, 1, TESTTAG, KelvoTests)

TEST(DrawingFiling, ACustomClassFilesItselfAndANewerVersionBecomesAProxy) {
    TestTag::rxInit();
    ASSERT_NE(acrxFindClassByDxfName(L"TESTTAG"), nullptr);
    AcDbDatabase db;
    auto* tag = new TestTag();
    tag->size = 4.5;
    AcDbObjectId id = append(db, tag);

    std::vector<std::uint8_t> bytes;
    ASSERT_EQ(kelvo::drawing::writeObjectToDwg(*kelvo::drawing::peekObject(id), bytes), Acad::eOk);
    AcDbObject* read = nullptr;
    ASSERT_EQ(kelvo::drawing::readObjectFromDwg(L"TestTag", bytes, db, read), Acad::eOk);
    std::unique_ptr<AcDbObject> keep(read);
    ASSERT_NE(TestTag::cast(read), nullptr);
    EXPECT_DOUBLE_EQ(TestTag::cast(read)->size, 4.5);

    // Written by a newer version: kept as a proxy that writes back the same stream.
    {
        AcDbObjectPointer<TestTag> writer(id, AcDb::kForWrite);
        writer->writeVersion = 3;
    }
    ASSERT_EQ(kelvo::drawing::writeObjectToDwg(*kelvo::drawing::peekObject(id), bytes), Acad::eOk);
    AcDbObject* proxyObject = nullptr;
    ASSERT_EQ(kelvo::drawing::readObjectFromDwg(L"TestTag", bytes, db, proxyObject), Acad::eOk);
    std::unique_ptr<AcDbObject> proxyKeep(proxyObject);
    auto* proxy = AcDbProxyEntity::cast(proxyObject);
    ASSERT_NE(proxy, nullptr);
    EXPECT_STREQ(proxy->originalClassName(), L"TestTag");
    EXPECT_STREQ(proxy->originalDxfName(), L"TESTTAG");
    EXPECT_EQ(proxy->layerId(), db.layerZero());   // the common part is understood
    std::vector<std::uint8_t> again;
    ASSERT_EQ(kelvo::drawing::writeObjectToDwg(*proxyObject, again), Acad::eOk);
    EXPECT_EQ(again, bytes);

    // An unknown class is a proxy too; an unknown DXF name gives one that keeps its groups.
    AcDbObject* unknown = nullptr;
    ASSERT_EQ(kelvo::drawing::readObjectFromDwg(L"NoSuchClass", bytes, db, unknown), Acad::eOk);
    std::unique_ptr<AcDbObject> unknownKeep(unknown);
    EXPECT_NE(AcDbProxyEntity::cast(unknown), nullptr);
    deleteAcRxClass(TestTag::desc());
}

TEST(DrawingFiling, AnUnknownDxfNameKeepsItsGroups) {
    AcDbDatabase db;
    std::unique_ptr<AcDbObject> object(kelvo::drawing::createObjectByDxfName(L"ACME_WIDGET"));
    ASSERT_NE(AcDbProxyEntity::cast(object.get()), nullptr);
    RbChain input(acutBuildList(RTDXF0, L"ACME_WIDGET", 100, L"AcDbEntity", 8, L"0", 100, L"AcmeWidget",
                                40, 2.5, 1, L"spare", 0));
    kelvo::drawing::ResbufDxfFiler in(&db, input.get(), false);
    ASSERT_EQ(object->dxfIn(&in), Acad::eOk);
    kelvo::drawing::ResbufDxfFiler out(&db);
    ASSERT_EQ(object->dxfOut(&out), Acad::eOk);
    RbChain written(out.takeItems());
    std::vector<int> codes;
    for (const resbuf* rb = written.get(); rb; rb = rb->rbnext) codes.push_back(rb->restype);
    EXPECT_EQ(codes, (std::vector<int>{0, 100, 8, 100, 40, 1}));
    EXPECT_STREQ(written->resval.rstring, L"ACME_WIDGET");
}

}  // namespace
