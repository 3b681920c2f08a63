// What file readers and writers use: walking the database, creating objects by DXF name,
// adopting objects read from files, single-object DWG streams, and the file hooks behind
// AcDbDatabase's file functions.

#include "runtime/drawing/drawing_access.h"

#include <cstring>
#include <set>

#include "dbdict.h"
#include "dbproxy.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/drawing/proxy_data.h"

namespace kelvo::drawing {
namespace {

struct FileHooks {
    DrawingFileReader dwgReader = nullptr, dxfReader = nullptr;
    DrawingFileWriter dwgWriter = nullptr, dxfWriter = nullptr;
};

FileHooks& hooks() {
    static FileHooks h;
    return h;
}

AcDbObjectIdArray liveIds(const AcDbObjectIdArray& ids) {
    AcDbObjectIdArray out;
    for (AcDbObjectId id : ids)
        if (peekObject(id) && !id.isErased()) out.append(id);
    return out;
}

}  // namespace

std::vector<SymbolTableInfo> symbolTables(const AcDbDatabase& db) {
    return {{L"LTYPE", db.linetypeTableId()},
            {L"LAYER", db.layerTableId()},
            {L"STYLE", db.textStyleTableId()},
            {L"APPID", db.regAppTableId()},
            {L"BLOCK_RECORD", db.blockTableId()}};
}

AcDbObjectIdArray tableRecords(AcDbObjectId tableId) {
    auto* table = AcDbSymbolTable::cast(peekObject(tableId));
    return table ? liveIds(table->recordIds()) : AcDbObjectIdArray();
}

AcDbObjectIdArray blockDefinitions(const AcDbDatabase& db) {
    AcDbObjectIdArray out;
    if (!db.modelSpaceId().isNull()) out.append(db.modelSpaceId());
    if (!db.paperSpaceId().isNull()) out.append(db.paperSpaceId());
    for (AcDbObjectId id : tableRecords(db.blockTableId()))
        if (!out.contains(id)) out.append(id);
    return out;
}

AcDbObjectIdArray blockEntities(AcDbObjectId blockId) {
    auto* block = AcDbBlockTableRecord::cast(peekObject(blockId));
    return block ? liveIds(block->entityIds()) : AcDbObjectIdArray();
}

AcDbObjectIdArray allObjects(const AcDbDatabase& db) {
    AcDbObjectIdArray out;
    for (const auto& [handle, stub] : DatabaseAccess::data(db).stubs)
        if (stub->object && !stub->object->isErased()) out.append(AcDbObjectId(stub.get()));
    return out;
}

std::vector<AcRxClass*> customClasses(const AcDbDatabase& db) {
    std::vector<AcRxClass*> out;
    std::set<AcRxClass*> seen;
    for (AcDbObjectId id : allObjects(db)) {
        AcRxClass* cls = peekObject(id)->isA();
        if (!cls || isBuiltinClass(cls) || seen.contains(cls)) continue;
        seen.insert(cls);
        out.push_back(cls);
    }
    return out;
}

AcDbObject* createObjectByDxfName(const wchar_t* dxfName, bool isEntity) {
    if (!dxfName) return nullptr;
    std::wstring name = upperName(dxfName);
    if (name == L"SECTION" || name == L"ENDSEC" || name == L"TABLE" || name == L"ENDTAB" ||
        name == L"EOF")
        return nullptr;
    if (AcRxClass* cls = acrxFindClassByDxfName(name.c_str())) {
        AcRxObject* made = cls->create();
        if (auto* object = AcDbObject::cast(made)) return object;
        delete made;
    }
    AcDbObject* proxy = isEntity ? static_cast<AcDbObject*>(new AcDbProxyEntity())
                                 : static_cast<AcDbObject*>(new AcDbProxyObject());
    ProxyData* data = ObjectAccess::proxy(*proxy);
    data->dxfName = name;
    data->className = name;
    return proxy;
}

Acad::ErrorStatus adoptObject(AcDbDatabase& db, AcDbObject* object, AcDbHandle handle,
                              AcDbObjectId ownerId, AcDbObjectId& id) {
    Acad::ErrorStatus es = addObject(db, object, id, handle);
    if (es != Acad::eOk) return es;
    ObjectAccess::setOwner(*object, ownerId);
    AcDbObject* owner = peekObject(ownerId);
    if (auto* block = AcDbBlockTableRecord::cast(owner)) {
        bool sub = AcDbBlockBegin::cast(object) || AcDbBlockEnd::cast(object);
        if (AcDbBlockBegin::cast(object)) ObjectAccess::blockBegin(*block) = id;
        if (AcDbBlockEnd::cast(object)) ObjectAccess::blockEnd(*block) = id;
        if (!sub && AcDbEntity::cast(object) && !ObjectAccess::entities(*block).contains(id))
            ObjectAccess::entities(*block).append(id);
    } else if (auto* table = AcDbSymbolTable::cast(owner)) {
        if (AcDbSymbolTableRecord::cast(object) && !ObjectAccess::records(*table).contains(id))
            ObjectAccess::records(*table).append(id);
    }
    object->close();
    return Acad::eOk;
}

Acad::ErrorStatus appendToBlock(AcDbObjectId blockId, AcDbObjectId entityId) {
    auto* block = AcDbBlockTableRecord::cast(peekObject(blockId));
    AcDbObject* entity = peekObject(entityId);
    if (!block || !AcDbEntity::cast(entity)) return Acad::eInvalidInput;
    ObjectAccess::setOwner(*entity, blockId);
    ObjectAccess::entities(*block).remove(entityId);
    ObjectAccess::entities(*block).append(entityId);
    return Acad::eOk;
}

Acad::ErrorStatus setDictionaryEntry(AcDbObjectId dictionaryId, const wchar_t* name, AcDbObjectId entryId) {
    auto* dict = AcDbDictionary::cast(peekObject(dictionaryId));
    AcDbObject* entry = peekObject(entryId);
    if (!dict || !entry || !name) return Acad::eInvalidInput;
    AcDbObjectId owner = entry->ownerId();
    bool& writer = ObjectAccess::writerRef(*dict);
    bool was = writer;
    writer = true;
    AcDbObjectId ignored;
    Acad::ErrorStatus es = dict->setAt(name, entry, ignored);
    writer = was;
    ObjectAccess::setOwner(*entry, owner.isNull() ? dictionaryId : owner);
    return es;
}

Acad::ErrorStatus setTableId(AcDbDatabase& db, TableKind kind, AcDbObjectId id) {
    DatabaseData& d = DatabaseAccess::data(db);
    AcDbObject* object = peekObject(id);
    if (!object || object->database() != &db) return Acad::eInvalidInput;
    switch (kind) {
        case TableKind::Block: d.blockTable = id; break;
        case TableKind::Layer: d.layerTable = id; break;
        case TableKind::TextStyle: d.textStyleTable = id; break;
        case TableKind::Linetype: d.linetypeTable = id; break;
        case TableKind::RegApp: d.regAppTable = id; break;
        case TableKind::NamedObjects: d.namedObjects = id; break;
    }
    return Acad::eOk;
}

namespace {

// A slot that names no object, or an object of another kind (a damaged file), gets a new
// table.
template <class Table>
AcDbObjectId ensureTable(AcDbDatabase& db, AcDbObjectId& slot) {
    if (slot.isNull() || !Table::cast(peekObject(slot))) {
        AcDbObjectId id;
        auto* table = new Table();
        addObject(db, table, id);
        table->close();
        slot = id;
    }
    return slot;
}

template <class Record>
AcDbObjectId ensureRecord(AcDbDatabase& db, AcDbObjectId tableId, const wchar_t* name,
                          void (*setUp)(Record&, AcDbDatabase&) = nullptr) {
    auto* table = AcDbSymbolTable::cast(peekObject(tableId));
    AcDbObjectId id;
    if (table->getAt(name, id) == Acad::eOk) return id;
    auto* record = new Record();
    record->setName(name);
    if (setUp) setUp(*record, db);
    addObject(db, record, id);
    ObjectAccess::setOwner(*record, tableId);
    ObjectAccess::records(*table).append(id);
    record->close();
    return id;
}

void ensureMarkers(AcDbDatabase& db, AcDbObjectId blockId) {
    auto* block = AcDbBlockTableRecord::cast(peekObject(blockId));
    if (!block) return;
    DatabaseData& d = DatabaseAccess::data(db);
    auto add = [&](AcDbEntity* marker, AcDbObjectId& slot) {
        if (!slot.isNull() && peekObject(slot)) {
            delete marker;
            return;
        }
        addObject(db, marker, slot);
        ObjectAccess::setOwner(*marker, blockId);
        ObjectAccess::layer(*marker) = d.layerZero;
        marker->close();
    };
    add(new AcDbBlockBegin(), ObjectAccess::blockBegin(*block));
    add(new AcDbBlockEnd(), ObjectAccess::blockEnd(*block));
}

}  // namespace

Acad::ErrorStatus finishReading(AcDbDatabase& db, std::vector<std::wstring>* problems) {
    DatabaseData& d = DatabaseAccess::data(db);
    ensureTable<AcDbBlockTable>(db, d.blockTable);
    ensureTable<AcDbLayerTable>(db, d.layerTable);
    ensureTable<AcDbTextStyleTable>(db, d.textStyleTable);
    ensureTable<AcDbLinetypeTable>(db, d.linetypeTable);
    ensureTable<AcDbRegAppTable>(db, d.regAppTable);
    if (d.namedObjects.isNull() || !AcDbDictionary::cast(peekObject(d.namedObjects))) {
        auto* nod = new AcDbDictionary();
        addObject(db, nod, d.namedObjects);
        nod->close();
    }
    d.byBlock = ensureRecord<AcDbLinetypeTableRecord>(db, d.linetypeTable, L"ByBlock");
    d.byLayer = ensureRecord<AcDbLinetypeTableRecord>(db, d.linetypeTable, L"ByLayer");
    d.continuous = ensureRecord<AcDbLinetypeTableRecord>(db, d.linetypeTable, L"Continuous");
    d.layerZero = ensureRecord<AcDbLayerTableRecord>(db, d.layerTable, L"0",
        [](AcDbLayerTableRecord& r, AcDbDatabase& owner) {
            r.setColor(AcCmEntityColor(7));
            r.setLinetypeObjectId(DatabaseAccess::data(owner).continuous);
        });
    d.standardStyle = ensureRecord<AcDbTextStyleTableRecord>(db, d.textStyleTable, L"Standard",
        [](AcDbTextStyleTableRecord& r, AcDbDatabase&) { r.setFileName(L"txt"); });
    ensureRecord<AcDbRegAppTableRecord>(db, d.regAppTable, L"ACAD");
    d.modelSpace = ensureRecord<AcDbBlockTableRecord>(db, d.blockTable, ACDB_MODEL_SPACE);
    d.paperSpace = ensureRecord<AcDbBlockTableRecord>(db, d.blockTable, ACDB_PAPER_SPACE);
    for (AcDbObjectId id : tableRecords(d.blockTable)) ensureMarkers(db, id);
    // Header defaults for what the file did not give.
    auto header = d.header;
    initHeaderVariables(db);
    for (auto& [name, value] : header) d.header[name] = value;
    for (const char* which : {"TEXTSTYLE", "CLAYER", "CELTYPE"}) {
        std::wstring key(which, which + std::strlen(which));
        auto* id = std::get_if<AcDbObjectId>(&d.header[key]);
        if (!id || !peekObject(*id))
            d.header[key] = key == L"TEXTSTYLE" ? d.standardStyle : key == L"CLAYER" ? d.layerZero : d.byLayer;
    }
    if (problems)
        for (const auto& [handle, stub] : d.stubs)
            if (!stub->object) {
                wchar_t text[40];
                stub->handle.getIntoAsciiBuffer(text, 40);
                problems->push_back(L"reference to handle " + std::wstring(text) + L" that is not in the file");
            }
    return Acad::eOk;
}

Acad::ErrorStatus writeObjectToDwg(const AcDbObject& object, std::vector<std::uint8_t>& bytes) {
    DwgMemoryFiler filer(AcDb::kFileFiler, object.database());
    AcDbObject& o = const_cast<AcDbObject&>(object);
    ++ObjectAccess::readersRef(o);
    Acad::ErrorStatus es = object.dwgOut(&filer);
    --ObjectAccess::readersRef(o);
    bytes = filer.bytes();
    return es;
}

Acad::ErrorStatus readObjectFromDwg(const std::wstring& className, const std::vector<std::uint8_t>& bytes,
                                    AcDbDatabase& db, AcDbObject*& object, bool isEntity) {
    object = nullptr;
    AcRxClass* cls = acrxFindClass(className.c_str());
    AcRxObject* made = cls ? cls->create() : nullptr;
    AcDbObject* candidate = AcDbObject::cast(made);
    if (made && !candidate) delete made;
    if (candidate) {
        DwgMemoryFiler filer(AcDb::kFileFiler, &db);
        filer.setBytes(bytes);
        Acad::ErrorStatus es = candidate->dwgIn(&filer);
        if (es == Acad::eOk) {
            object = candidate;
            return Acad::eOk;
        }
        isEntity = AcDbEntity::cast(candidate) != nullptr;
        delete candidate;
        if (es != Acad::eMakeMeProxy) return es;
    }
    AcDbObject* proxy = isEntity ? static_cast<AcDbObject*>(new AcDbProxyEntity())
                                 : static_cast<AcDbObject*>(new AcDbProxyObject());
    ProxyData* data = ObjectAccess::proxy(*proxy);
    data->className = className;
    data->dxfName = cls && cls->dxfName() && *cls->dxfName() ? cls->dxfName() : upperName(className);
    data->appName = cls ? cls->appName() : L"";
    data->proxyFlags = cls ? cls->proxyFlags() : 0;
    data->fromDwg = true;
    data->dwgBytes = bytes;
    // Only the common part is understood; it gives the proxy its owner, layer and colour.
    DwgMemoryFiler filer(AcDb::kFileFiler, &db);
    filer.setBytes(bytes);
    if (isEntity) static_cast<AcDbProxyEntity*>(proxy)->AcDbEntity::dwgInFields(&filer);
    else proxy->AcDbObject::dwgInFields(&filer);
    object = proxy;
    return Acad::eOk;
}

void registerDwgReader(DrawingFileReader reader) { hooks().dwgReader = reader; }
void registerDwgWriter(DrawingFileWriter writer) { hooks().dwgWriter = writer; }
void registerDxfReader(DrawingFileReader reader) { hooks().dxfReader = reader; }
void registerDxfWriter(DrawingFileWriter writer) { hooks().dxfWriter = writer; }

}  // namespace kelvo::drawing

using namespace kelvo::drawing;

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName) {
    if (!fileName) return Acad::eInvalidInput;
    if (!hooks().dwgReader) return Acad::eNotImplementedYet;
    Acad::ErrorStatus es = hooks().dwgReader(*this, fileName);
    if (es == Acad::eOk) setFilename(fileName);
    return es;
}

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName) {
    if (!fileName) return Acad::eInvalidInput;
    if (!hooks().dwgWriter) return Acad::eNotImplementedYet;
    Acad::ErrorStatus es = hooks().dwgWriter(*this, fileName);
    if (es == Acad::eOk) setFilename(fileName);
    return es;
}

Acad::ErrorStatus AcDbDatabase::dxfIn(const ACHAR* fileName) {
    if (!fileName) return Acad::eInvalidInput;
    if (!hooks().dxfReader) return Acad::eNotImplementedYet;
    return hooks().dxfReader(*this, fileName);
}

Acad::ErrorStatus AcDbDatabase::dxfOut(const ACHAR* fileName, int) {
    if (!fileName) return Acad::eInvalidInput;
    if (!hooks().dxfWriter) return Acad::eNotImplementedYet;
    return hooks().dxfWriter(*this, fileName);
}

Acad::ErrorStatus AcDbDatabase::updateExt(bool) {
    AcDbExtents all;
    for (AcDbObjectId id : blockEntities(modelSpaceId())) {
        AcDbEntity* e = AcDbEntity::cast(peekObject(id));
        AcDbExtents one;
        if (e && e->getGeomExtents(one) == Acad::eOk) all.addExt(one);
    }
    if (all.isEmpty()) return Acad::eInvalidExtents;
    setExtmin(all.minPoint());
    setExtmax(all.maxPoint());
    return Acad::eOk;
}
