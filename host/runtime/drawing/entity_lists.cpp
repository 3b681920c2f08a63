// Entities and table records as DXF group lists: entget, entmake, entmod, entdel,
// entnext, entlast, tblsearch, tblnext, regapp.

#include "runtime/drawing/entity_lists.h"

#include <cwchar>

#include "adslib.h"
#include "dbsymtb.h"
#include "lisp/wcmatch.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/drawing/object_filing.h"
#include "runtime/drawing/resbuf_dxf_filer.h"

namespace kelvo::drawing {

ListState::~ListState() {
    dropBlock();
    dropComplex();
}

void ListState::dropBlock() {
    for (AcDbEntity* e : blockEntities) delete e;
    blockEntities.clear();
    blockOpen = false;
}

void ListState::dropComplex() {
    delete complexOwner;
    complexOwner = nullptr;
}

namespace {

std::wstring textOf(const resbuf* rb) {
    return rb && rbKindOf(rb->restype) == RbKind::String && rb->resval.rstring ? rb->resval.rstring : L"";
}

const resbuf* findGroup(const resbuf* list, int code) {
    for (const resbuf* rb = list; rb; rb = rb->rbnext) {
        if (rb->restype == AcDb::kDxfXDataStart) return nullptr;
        if (rb->restype == code || (code == 0 && rb->restype == RTDXF0)) return rb;
    }
    return nullptr;
}

// The extended data part of a list: what follows its -3 node.
const resbuf* xdataPart(const resbuf* list) {
    for (const resbuf* rb = list; rb; rb = rb->rbnext)
        if (rb->restype == AcDb::kDxfXDataStart) return rb->rbnext;
    return nullptr;
}

bool appWanted(const std::wstring& app, const std::vector<std::wstring>& patterns) {
    std::wstring name = upperName(app);
    for (const std::wstring& p : patterns)
        if (lisp::wcmatch(name, upperName(p))) return true;
    return false;
}

resbuf* appendTo(resbuf*& head, resbuf*& tail, resbuf* node) { return appendNode(head, tail, node); }

// The layout an entity is drawn in, as its list names it: "Model" for model space,
// "Layout1" for paper space; empty for an entity of a block definition. Attributes and
// vertices are in the layout of the entity they belong to.
std::wstring layoutOf(const AcDbObject& object) {
    AcDbObjectId owner = object.ownerId();
    if (AcDbEntity::cast(peekObject(owner))) owner = peekObject(owner)->ownerId();
    const AcDbDatabase* db = object.database();
    if (db == nullptr || owner.isNull()) return {};
    if (owner == db->modelSpaceId()) return L"Model";
    if (owner == db->paperSpaceId()) return L"Layout1";
    return {};
}

bool hasGroup(const resbuf* items, int code) {
    for (const resbuf* rb = items; rb; rb = rb->rbnext)
        if (rb->restype == code) return true;
    return false;
}

// Puts (67 . space) and (410 . layout) after the (100 . "AcDbEntity") marker, as the host
// lists an entity of model or paper space: 67 is 0 in model space and 1 in paper space.
void addLayoutGroups(const AcDbObject& object, resbuf* items) {
    if (!AcDbEntity::cast(&object) || hasGroup(items, 67) || hasGroup(items, AcDb::kDxfLayoutName))
        return;
    const std::wstring layout = layoutOf(object);
    if (layout.empty()) return;
    resbuf* marker = items;
    while (marker && !(marker->restype == AcDb::kDxfSubclass && textOf(marker) == L"AcDbEntity"))
        marker = marker->rbnext;
    if (!marker) return;
    resbuf* space = acutNewRb(67);
    space->resval.rint = layout == L"Model" ? 0 : 1;
    resbuf* name = acutNewRb(AcDb::kDxfLayoutName);
    acutNewString(layout.c_str(), name->resval.rstring);
    space->rbnext = name;
    name->rbnext = marker->rbnext;
    marker->rbnext = space;
}

}  // namespace

bool listsPointsIn2d(const resbuf* list, int code) {
    return code == AcDb::kDxfXCoord && upperName(textOf(findGroup(list, 0))) == L"LWPOLYLINE";
}

resbuf* entityData(AcDbObjectId id, const std::vector<std::wstring>* apps) {
    AcDbObject* object = peekObject(id);
    if (!object || object->isErased()) return nullptr;
    ResbufDxfFiler filer(object->database());
    ++ObjectAccess::readersRef(*object);
    Acad::ErrorStatus es = object->dxfOut(&filer);
    --ObjectAccess::readersRef(*object);
    if (es != Acad::eOk) return nullptr;
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    resbuf* name = acutNewRb(-1);
    name->resval.rlname[0] = id.asOldId();
    appendTo(head, tail, name);
    // As the host lists an entity: its type, owner and handle first.
    resbuf* items = filer.takeItems();
    if (items && items->rbnext && items->rbnext->restype == AcDb::kDxfHandle) {
        resbuf* handle = items->rbnext;
        resbuf* before = handle;
        while (before->rbnext && before->rbnext->restype != AcDb::kDxfSoftPointerId &&
               before->rbnext->restype != AcDb::kDxfSubclass)
            before = before->rbnext;
        if (before->rbnext && before->rbnext->restype == AcDb::kDxfSoftPointerId) {
            resbuf* owner = before->rbnext;
            before->rbnext = owner->rbnext;
            items->rbnext = owner;
            owner->rbnext = handle;
        }
    }
    addLayoutGroups(*object, items);
    appendTo(head, tail, items);
    RbChain xdata(filer.takeXData());
    if (apps && xdata) {
        resbuf* kept = nullptr;
        resbuf* keptTail = nullptr;
        bool keep = false;
        for (const resbuf* rb = xdata.get(); rb; rb = rb->rbnext) {
            if (rb->restype == AcDb::kDxfRegAppName) keep = appWanted(textOf(rb), *apps);
            if (keep) appendTo(kept, keptTail, copyNode(rb));
        }
        if (kept) {
            appendTo(head, tail, acutNewRb(AcDb::kDxfXDataStart));
            appendTo(head, tail, kept);
        }
    }
    return head;
}

namespace {

AcDbObjectId recordIn(AcDbObjectId tableId, const std::wstring& name) {
    auto* table = AcDbSymbolTable::cast(peekObject(tableId));
    AcDbObjectId id;
    if (table) table->getAt(name.c_str(), id);
    return id;
}

// Reads the list into a new object of the type and sets its extended data.
// Text placed by its alignment point takes its start point from it, as the host does when
// a list makes or changes it.
void placeText(AcDbObject* object, AcDbDatabase* db) {
    if (auto* text = AcDbText::cast(object)) text->adjustAlignment(db);
}

Acad::ErrorStatus readNew(AcDbDatabase& db, AcDbObject* object, const resbuf* list) {
    ResbufDxfFiler filer(&db, list, false);
    Acad::ErrorStatus es = object->dxfIn(&filer);
    if (es != Acad::eOk) return es;
    placeText(object, &db);
    if (const resbuf* xdata = xdataPart(list)) return object->setXData(xdata);
    return Acad::eOk;
}

Acad::ErrorStatus appendToSpace(AcDbDatabase& db, AcDbEntity* entity, AcDbObjectId& id) {
    ListState& state = DatabaseAccess::data(db).lists;
    if (state.blockOpen) {
        state.blockEntities.push_back(entity);
        return Acad::eOk;
    }
    AcDbBlockTableRecord* space = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    es = space->appendAcDbEntity(id, entity);
    space->close();
    if (es == Acad::eOk) entity->close();
    return es;
}

MakeResult startBlock(AcDbDatabase& db, const resbuf* list) {
    ListState& state = DatabaseAccess::data(db).lists;
    if (state.blockOpen) return {Acad::eCannotNestBlockDefs};
    std::wstring name = textOf(findGroup(list, 2));
    if (name.empty()) return {Acad::eNullBlockName};
    if (name[0] == L'*') {
        int n = 0;
        do name = L"*U" + std::to_wstring(++n);
        while (!recordIn(db.blockTableId(), name).isNull());
    } else {
        auto record = std::make_unique<AcDbBlockTableRecord>();
        if (record->setName(name.c_str()) != Acad::eOk) return {Acad::eInvalidBlockName};
        if (!recordIn(db.blockTableId(), name).isNull()) return {Acad::eDuplicateRecordName};
    }
    state.blockOpen = true;
    state.blockName = name;
    const resbuf* base = findGroup(list, 10);
    state.blockOrigin = base ? AcGePoint3d(base->resval.rpoint[0], base->resval.rpoint[1], base->resval.rpoint[2])
                             : AcGePoint3d();
    AcDbObjectId layer = recordIn(db.layerTableId(), textOf(findGroup(list, 8)));
    state.blockLayer = layer.isNull() ? db.layerZero() : layer;
    return {};
}

MakeResult endBlock(AcDbDatabase& db) {
    ListState& state = DatabaseAccess::data(db).lists;
    if (!state.blockOpen) return {Acad::eInvalidInput};
    if (state.complexOwner) return {Acad::eBadDxfSequence};
    AcDbBlockTable* table = nullptr;
    Acad::ErrorStatus es = db.getBlockTable(table, AcDb::kForWrite);
    if (es != Acad::eOk) return {es};
    auto* block = new AcDbBlockTableRecord();
    block->setName(state.blockName.c_str());
    AcDbObjectId blockId;
    es = table->add(blockId, block);
    table->close();
    if (es != Acad::eOk) {
        delete block;
        state.dropBlock();
        return {es};
    }
    block->setOrigin(state.blockOrigin);
    for (AcDbEntity* marker : {static_cast<AcDbEntity*>(new AcDbBlockBegin()),
                               static_cast<AcDbEntity*>(new AcDbBlockEnd())}) {
        AcDbObjectId markerId;
        addObject(db, marker, markerId);
        ObjectAccess::setOwner(*marker, blockId);
        marker->setLayer(state.blockLayer);
        (AcDbBlockBegin::cast(marker) ? ObjectAccess::blockBegin(*block) : ObjectAccess::blockEnd(*block)) = markerId;
        marker->close();
    }
    for (AcDbEntity* e : state.blockEntities) {
        if (block->appendAcDbEntity(e) == Acad::eOk) e->close();
        else delete e;
    }
    state.blockEntities.clear();
    state.blockOpen = false;
    block->close();
    MakeResult result;
    result.id = blockId;
    result.blockName = state.blockName;
    return result;
}

MakeResult makeRecord(AcDbDatabase& db, const std::wstring& type, const resbuf* list) {
    AcDbObjectId tableId = type == L"LAYER" ? db.layerTableId() : type == L"STYLE" ? db.textStyleTableId()
                           : type == L"LTYPE" ? db.linetypeTableId() : db.regAppTableId();
    AcDbObject* made = createObjectByDxfName(type.c_str(), false);
    auto* record = AcDbSymbolTableRecord::cast(made);
    if (!record) {
        delete made;
        return {Acad::eWrongObjectType};
    }
    Acad::ErrorStatus es = readNew(db, record, list);
    if (es == Acad::eOk && record->name().empty()) es = Acad::eInvalidSymbolTableName;
    AcDbSymbolTable* table = nullptr;
    if (es == Acad::eOk) es = acdbOpenObject(table, tableId, AcDb::kForWrite);
    MakeResult result;
    if (es == Acad::eOk) {
        es = table->add(result.id, record);
        table->close();
    }
    if (es != Acad::eOk) {
        delete record;
        return {es};
    }
    record->close();
    return result;
}

MakeResult makeEntity(AcDbDatabase& db, const std::wstring& type, const resbuf* list) {
    ListState& state = DatabaseAccess::data(db).lists;
    bool subentity = type == L"VERTEX" || type == L"ATTRIB";
    if (subentity != (state.complexOwner != nullptr) || type == L"SEQEND") {
        if (type != L"SEQEND" || !state.complexOwner) {
            state.dropComplex();
            return {Acad::eBadDxfSequence};
        }
        AcDbEntity* owner = std::exchange(state.complexOwner, nullptr);
        MakeResult result;
        result.status = appendToSpace(db, owner, result.id);
        if (result.status != Acad::eOk) delete owner;
        return result;
    }
    AcDbObject* made = createObjectByDxfName(type.c_str(), true);
    auto* entity = AcDbEntity::cast(made);
    if (!entity || AcDbProxyEntity::cast(entity) || AcDbBlockBegin::cast(entity) || AcDbBlockEnd::cast(entity)) {
        delete made;
        return {Acad::eInvalidInput};
    }
    entity->setDatabaseDefaults(&db);
    entity->setLinetype(db.byLayerLinetype());
    Acad::ErrorStatus es = readNew(db, entity, list);
    if (es != Acad::eOk) {
        delete entity;
        return {es};
    }
    if (subentity) {
        if (auto* vertex = AcDb2dVertex::cast(entity); vertex && AcDb2dPolyline::cast(state.complexOwner))
            es = AcDb2dPolyline::cast(state.complexOwner)->appendVertex(vertex);
        else if (auto* attribute = AcDbAttribute::cast(entity); attribute && AcDbBlockReference::cast(state.complexOwner))
            es = AcDbBlockReference::cast(state.complexOwner)->appendAttribute(attribute);
        else
            es = Acad::eBadDxfSequence;
        if (es != Acad::eOk) {
            delete entity;
            state.dropComplex();
        }
        return {es};
    }
    const resbuf* follows = findGroup(list, AcDb::kDxfHasSubentities);
    bool complex = AcDb2dPolyline::cast(entity) ||
                   (AcDbBlockReference::cast(entity) && follows && follows->resval.rint == 1);
    if (complex) {
        state.complexOwner = entity;
        return {};
    }
    MakeResult result;
    result.status = appendToSpace(db, entity, result.id);
    if (result.status != Acad::eOk) delete entity;
    return result;
}

}  // namespace

MakeResult makeFromList(AcDbDatabase& db, const resbuf* list) {
    std::wstring type = upperName(textOf(findGroup(list, 0)));
    if (type.empty()) return {Acad::eMissingDxfField};
    // The type comes first, or second after an entity name.
    const resbuf* first = list && list->restype == -1 ? list->rbnext : list;
    if (!first || (first->restype != 0 && first->restype != RTDXF0)) return {Acad::eBadDxfSequence};
    if (type == L"BLOCK") return startBlock(db, list);
    if (type == L"ENDBLK") return endBlock(db);
    if (type == L"LAYER" || type == L"STYLE" || type == L"LTYPE" || type == L"APPID")
        return makeRecord(db, type, list);
    return makeEntity(db, type, list);
}

Acad::ErrorStatus modifyFromList(const resbuf* list) {
    const resbuf* name = findGroup(list, -1);
    if (!name) return Acad::eMissingDxfField;
    AcDbObjectId id(name->resval.rlname[0]);
    AcDbObject* object = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(object, id, AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    const resbuf* type = findGroup(list, 0);
    if (type && !ObjectAccess::proxy(*object) &&
        upperName(textOf(type)) != upperName(dxfNameOf(object->isA()))) {
        object->close();
        return Acad::eWrongObjectType;   // an entity cannot change its type
    }
    // What the object was, so that a list it refuses part way leaves it unchanged.
    DwgMemoryFiler saved(AcDb::kUndoFiler, object->database());
    bool restorable = object->dwgOut(&saved) == Acad::eOk;
    ResbufDxfFiler filer(object->database(), list, true);
    es = object->dxfIn(&filer);
    if (es == Acad::eOk) placeText(object, object->database());
    if (es == Acad::eOk)
        if (const resbuf* xdata = xdataPart(list)) es = object->setXData(xdata);
    if (es != Acad::eOk && restorable) {
        saved.rewind();
        object->dwgIn(&saved);
    }
    object->close();
    return es;
}

Acad::ErrorStatus deleteOrRestore(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(entity, id, AcDb::kForWrite, true);
    if (es != Acad::eOk) return es;
    if (AcDbAttribute::cast(entity) || AcDbVertex::cast(entity) || AcDbSequenceEnd::cast(entity)) {
        entity->close();
        return Acad::eIllegalEntityType;
    }
    es = entity->erase(!entity->isErased());
    entity->close();
    return es;
}

namespace {

AcDbObjectIdArray subentitiesOf(AcDbObject* o) {
    AcDbObjectIdArray out;
    if (auto* ref = AcDbBlockReference::cast(o)) {
        out = ref->attributeIds();
        if (!out.isEmpty() && !ref->seqendId().isNull()) out.append(ref->seqendId());
    } else if (auto* pline = AcDb2dPolyline::cast(o)) {
        out = pline->vertexIds();
        if (!pline->seqendId().isNull()) out.append(pline->seqendId());
    }
    return out;
}

AcDbObjectId firstLive(const AcDbObjectIdArray& ids, int from) {
    for (int i = from; i < ids.length(); ++i)
        if (peekObject(ids[i]) && !ids[i].isErased()) return ids[i];
    return {};
}

}  // namespace

AcDbObjectId nextEntity(const AcDbDatabase& db, AcDbObjectId after) {
    if (after.isNull()) return firstLive(blockEntities(db.modelSpaceId()), 0);
    AcDbObject* current = peekObject(after);
    if (!current || current->database() != &db) return {};
    AcDbObjectIdArray subs = subentitiesOf(current);
    if (!subs.isEmpty()) return firstLive(subs, 0);
    AcDbObject* owner = peekObject(current->ownerId());
    if (owner && !AcDbBlockTableRecord::cast(owner)) {
        AcDbObjectIdArray siblings = subentitiesOf(owner);
        int at = siblings.find(after);
        if (at >= 0 && at + 1 < siblings.length()) return firstLive(siblings, at + 1);
        current = owner;
        owner = peekObject(owner->ownerId());
    }
    auto* block = AcDbBlockTableRecord::cast(owner);
    if (!block) return {};
    int at = block->entityIds().find(current->objectId());
    return at < 0 ? AcDbObjectId() : firstLive(block->entityIds(), at + 1);
}

AcDbObjectId lastEntity(const AcDbDatabase& db) {
    AcDbObjectIdArray ids = blockEntities(db.modelSpaceId());
    return ids.isEmpty() ? AcDbObjectId() : ids.last();
}

// --- tables ----------------------------------------------------------------------------

namespace {

AcDbObjectId tableNamed(const AcDbDatabase& db, const std::wstring& table) {
    std::wstring t = upperName(table);
    if (t == L"LAYER") return db.layerTableId();
    if (t == L"LTYPE") return db.linetypeTableId();
    if (t == L"STYLE") return db.textStyleTableId();
    if (t == L"APPID") return db.regAppTableId();
    if (t == L"BLOCK") return db.blockTableId();
    return {};
}

bool keptInEntry(int code) {
    return code != -1 && code != 5 && code != 100 && code != 102 && code != 330 && code != 360 &&
           code != 290 && code != 370 && code != 390 && code != 347 && code != 348 && code != 340;
}

resbuf* entryOf(AcDbObjectId recordId) {
    auto* record = AcDbSymbolTableRecord::cast(peekObject(recordId));
    if (!record || record->isErased()) return nullptr;
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    if (auto* block = AcDbBlockTableRecord::cast(record)) {
        resbuf* type = acutNewRb(0);
        acutNewString(L"BLOCK", type->resval.rstring);
        appendTo(head, tail, type);
        resbuf* name = acutNewRb(2);
        acutNewString(block->name().c_str(), name->resval.rstring);
        appendTo(head, tail, name);
        resbuf* flags = acutNewRb(70);
        flags->resval.rint = static_cast<short>((block->isAnonymous() ? 1 : 0) | (block->hasAttributeDefinitions() ? 2 : 0));
        appendTo(head, tail, flags);
        resbuf* base = acutNewRb(10);
        for (int i = 0; i < 3; ++i) base->resval.rpoint[i] = block->origin()[i];
        appendTo(head, tail, base);
        AcDbObjectId first = firstLive(block->entityIds(), 0);
        if (!first.isNull()) {
            resbuf* entity = acutNewRb(-2);
            entity->resval.rlname[0] = first.asOldId();
            appendTo(head, tail, entity);
        }
        return head;
    }
    RbChain all(entityData(recordId, nullptr));
    for (const resbuf* rb = all.get(); rb; rb = rb->rbnext)
        if (keptInEntry(rb->restype)) appendTo(head, tail, copyNode(rb));
    return head;
}

}  // namespace

resbuf* tableEntry(const AcDbDatabase& db, const std::wstring& table, const std::wstring& name, bool setNext) {
    AcDbObjectId tableId = tableNamed(db, table);
    AcDbObjectId recordId = recordIn(tableId, name);
    if (recordId.isNull()) return nullptr;
    if (setNext) {
        AcDbObjectIdArray ids = tableRecords(tableId);
        DatabaseAccess::data(db).lists.tableCursors[upperName(table)] = ids.find(recordId) + 1;
    }
    return entryOf(recordId);
}

resbuf* nextTableEntry(const AcDbDatabase& db, const std::wstring& table, bool rewind) {
    AcDbObjectId tableId = tableNamed(db, table);
    if (tableId.isNull()) return nullptr;
    int& cursor = DatabaseAccess::data(db).lists.tableCursors[upperName(table)];
    if (rewind) cursor = 0;
    AcDbObjectIdArray ids = tableRecords(tableId);
    if (upperName(table) == L"BLOCK") {
        // Model and paper space are not listed as blocks.
        AcDbObjectIdArray named;
        for (AcDbObjectId id : ids)
            if (auto* b = AcDbBlockTableRecord::cast(peekObject(id)); b && !b->isLayout()) named.append(id);
        ids = named;
    }
    if (cursor < 0 || cursor >= ids.length()) return nullptr;
    return entryOf(ids[cursor++]);
}

bool registerApplication(AcDbDatabase& db, const std::wstring& name) {
    if (name.empty() || !recordIn(db.regAppTableId(), name).isNull()) return false;
    AcDbRegAppTable* table = nullptr;
    if (db.getRegAppTable(table, AcDb::kForWrite) != Acad::eOk) return false;
    auto* record = new AcDbRegAppTableRecord();
    Acad::ErrorStatus es = record->setName(name.c_str());
    if (es == Acad::eOk) es = table->add(record);
    table->close();
    if (es != Acad::eOk) {
        delete record;
        return false;
    }
    record->close();
    return true;
}

}  // namespace kelvo::drawing
