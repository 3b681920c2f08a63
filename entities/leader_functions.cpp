// The five leader functions. Scales given from LISP are multiplied by the drawing scale
// (DIMSCALE of the current drawing); blocks are found or loaded by block_lookup.
#include "entities/leader_functions.h"

#include <memory>
#include <string>

#include "adslib.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "entities/block_lookup.h"
#include "entities/drawing_scale.h"
#include "entities/tv_leader.h"
#include "host_ui.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"

namespace kelvo {
namespace {

struct LeaderPoints {
    AcGePoint3d start, middle, end;
};

AcGePoint3d toPoint(const ads_point p) {
    return {p[X], p[Y], p[Z]};
}

// A point as the point reader takes it, or a list of two or three numbers (LISP passes a
// list of integers such as (0 0) as a list, not as a point).
bool readLeaderPoint(Cursor& cursor, ads_point out) {
    if (read3dPoint(cursor, out)) return true;
    Cursor at = cursor;
    ads_point point{0, 0, 0};
    if (!readListBegin(at) || !read3dPoint(at, point) || !readListEnd(at)) return false;
    for (int i = 0; i < 3; ++i) out[i] = point[i];
    cursor = at;
    return true;
}

// (start middle end): list begin, three points, list end.
bool readLeaderPoints(Cursor& cursor, LeaderPoints& out) {
    Cursor at = cursor;
    ads_point p[3];
    if (!readListBegin(at)) return false;
    for (ads_point& point : p) {
        if (!readLeaderPoint(at, point)) return false;
    }
    if (!readListEnd(at)) return false;
    out = {toPoint(p[0]), toPoint(p[1]), toPoint(p[2])};
    cursor = at;
    return true;
}

AcDbObjectId layerNamed(AcDbDatabase* db, const std::wstring& name) {
    AcDbLayerTable* table = nullptr;
    if (db == nullptr || db->getSymbolTable(table, AcDb::kForRead) != Acad::eOk) return {};
    AcDbObjectId id;
    const Acad::ErrorStatus es = table->getAt(name.c_str(), id);
    table->close();
    return es == Acad::eOk ? id : AcDbObjectId();
}

// The host's alert: a plain box with the host's caption.
void hostAlert(const ACHAR* text) {
    hostMessageBox(hostMainWindow(), text, L"AutoCAD", MB_OK);
}

// Appends the entity to model space of db and closes it; answers its id (null when it
// could not be appended, and then the entity is deleted).
AcDbObjectId appendToModelSpace(AcDbDatabase* db, std::unique_ptr<AcDbEntity> entity) {
    AcDbBlockTable* table = nullptr;
    if (db->getSymbolTable(table, AcDb::kForRead) != Acad::eOk) {
        hostAlert(L"Failed to get block table!");
        return {};
    }
    AcDbBlockTableRecord* space = nullptr;
    Acad::ErrorStatus es = table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
    table->close();
    if (es != Acad::eOk) return {};
    AcDbObjectId id;
    es = space->appendAcDbEntity(id, entity.get());
    space->close();
    if (es != Acad::eOk) return {};
    entity.release()->close();
    return id;
}

// Appends the entity to the block table record `ownerId` and closes it; answers its id,
// null when it could not be appended (the entity is then deleted).
AcDbObjectId appendToBlock(AcDbObjectId ownerId, std::unique_ptr<AcDbEntity> entity) {
    AcDbObjectPointer<AcDbBlockTableRecord> owner(ownerId, AcDb::kForWrite);
    if (owner.openStatus() != Acad::eOk) return {};
    AcDbObjectId id;
    if (owner->appendAcDbEntity(id, entity.get()) != Acad::eOk) return {};
    entity.release()->close();
    return id;
}

int insertHandler() {
    HandlerArgs args;
    LeaderPoints points;
    std::wstring layerName, blockName;
    double scale = 0.0;
    if (!readLeaderPoints(args.cursor(), points)) return kWrongArgType;
    if (!readText(args.cursor(), layerName)) return kWrongArgType;
    AcDbDatabase* db = currentDatabase();
    const AcDbObjectId layerId = layerNamed(db, layerName);
    if (layerId.isNull()) return kArgOk;
    if (!readText(args.cursor(), blockName)) return kWrongArgType;
    const AcDbObjectId blockId = findOrLoadBlock(db, blockName);
    if (blockId.isNull()) return kArgOk;
    if (!readNumber(args.cursor(), scale)) return kWrongArgType;
    scale *= drawingScale(db);
    auto leader = std::make_unique<TVLeader>(points.start, points.middle, points.end, scale,
                                             blockId, layerId);
    const AcDbObjectId id = appendToModelSpace(db, std::move(leader));
    if (!id.isNull()) returnObjectId(id);
    return kArgOk;
}

// Opens the leader named by the next argument. False (status in `status`) when the
// argument is not an entity name; an entity that is not a TVLeader or cannot be opened
// leaves the pointer empty with status 0 (the answer is nil).
bool openLeader(Cursor& cursor, AcDbObjectPointer<TVLeader>& leader, AcDb::OpenMode mode,
                int& status) {
    AcDbObjectId id;
    if (!readObject(cursor, id)) {
        status = kWrongArgType;
        return false;
    }
    status = kArgOk;
    return leader.open(id, mode) == Acad::eOk;
}

int setPointsHandler() {
    HandlerArgs args;
    AcDbObjectPointer<TVLeader> leader;
    int status = kArgOk;
    if (!openLeader(args.cursor(), leader, AcDb::kForWrite, status)) return status;
    LeaderPoints points;
    if (!readLeaderPoints(args.cursor(), points)) return kWrongArgType;
    leader->setPoints(points.start, points.middle, points.end);
    acedRetT();
    return kArgOk;
}

int setBlockHandler() {
    HandlerArgs args;
    AcDbObjectPointer<TVLeader> leader;
    int status = kArgOk;
    if (!openLeader(args.cursor(), leader, AcDb::kForWrite, status)) return status;
    std::wstring blockName;
    if (!readText(args.cursor(), blockName)) return kWrongArgType;
    const AcDbObjectId blockId = findOrLoadBlock(leader->database(), blockName);
    if (!blockId.isNull()) leader->setBlock(blockId);
    acedRetT();
    return kArgOk;
}

int setOffsetHandler() {
    HandlerArgs args;
    AcDbObjectPointer<TVLeader> leader;
    int status = kArgOk;
    if (!openLeader(args.cursor(), leader, AcDb::kForWrite, status)) return status;
    double scale = 0.0;
    if (!readNumber(args.cursor(), scale)) return kWrongArgType;
    leader->setScale(scale * currentDrawingScale());
    acedRetT();
    return kArgOk;
}

// A new entity with the leader's layer and linetype.
template <class Entity, class... Args>
std::unique_ptr<AcDbEntity> partOf(const TVLeader& leader, Args&&... args) {
    auto entity = std::make_unique<Entity>(std::forward<Args>(args)...);
    entity->setLayer(leader.layerId());
    entity->setLinetype(leader.linetypeId());
    return entity;
}

// The tag as a drawing entity: the leader's block at the tag's position, rotation and
// scale. Null when the leader has no block left to insert.
std::unique_ptr<AcDbEntity> tagInsert(const TVLeader& leader) {
    const AcDbObjectId blockId = leader.blockId();
    if (blockId.isNull() || !blockId.isValid() || blockId.isErased()) return nullptr;
    const AcDbBlockReference& tag = leader.tag();
    auto insert = partOf<AcDbBlockReference>(leader, tag.position(), blockId);
    auto* reference = static_cast<AcDbBlockReference*>(insert.get());
    reference->setRotation(tag.rotation());
    reference->setScaleFactors(tag.scaleFactors());
    return insert;
}

// Returns (name ...) of the ids, skipping null ones.
void returnNames(const AcDbObjectId (&ids)[3]) {
    ValueList list(acutBuildList(RTLB, 0));
    resbuf* tail = list.get();
    for (const AcDbObjectId& id : ids) {
        ads_name name;
        if (id.isNull() || acdbGetAdsName(name, id) != RTNORM) continue;
        tail->rbnext = acutBuildList(RTENAME, name, 0);
        tail = tail->rbnext;
    }
    tail->rbnext = acutBuildList(RTLE, 0);
    acedRetList(list.get());
}

int explodeHandler() {
    HandlerArgs args;
    AcDbObjectPointer<TVLeader> leader;
    int status = kArgOk;
    if (!openLeader(args.cursor(), leader, AcDb::kForRead, status)) return status;
    const TVLeader& source = *leader.object();
    const AcDbObjectId owner = source.ownerId();
    std::unique_ptr<AcDbEntity> tag = tagInsert(source);
    const AcDbObjectId ids[3] = {
        appendToBlock(owner, partOf<AcDbLine>(source, source.startPoint(), source.middlePoint())),
        appendToBlock(owner, partOf<AcDbLine>(source, source.middlePoint(), source.tailPoint())),
        tag ? appendToBlock(owner, std::move(tag)) : AcDbObjectId()};
    returnNames(ids);
    return kArgOk;
}

}  // namespace

int tvLeaderInsert() {
    return runGuarded(insertHandler);
}
int tvLeaderSetPoints() {
    return runGuarded(setPointsHandler);
}
int tvLeaderSetBlock() {
    return runGuarded(setBlockHandler);
}
int tvLeaderSetOffset() {
    return runGuarded(setOffsetHandler);
}
int tvLeaderExplode() {
    return runGuarded(explodeHandler);
}

}  // namespace kelvo
