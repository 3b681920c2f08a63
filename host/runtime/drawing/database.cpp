// The drawing database: its objects by handle, its tables and the default drawing.

#include <cwctype>
#include <mutex>
#include <unordered_set>

#include "dbdict.h"
#include "dbents.h"
#include "runtime/drawing/drawing_internal.h"

namespace kelvo::drawing {
namespace {

std::unordered_set<const AcDbStub*>& liveStubs() {
    static std::unordered_set<const AcDbStub*> stubs;
    return stubs;
}

// Adds a new object owned by `owner` and closes it.
AcDbObjectId addOwned(AcDbDatabase& db, AcDbObject* object, AcDbObjectId owner) {
    AcDbObjectId id;
    addObject(db, object, id);
    ObjectAccess::setOwner(*object, owner);
    object->close();
    return id;
}

template <class Table>
AcDbObjectId addTable(AcDbDatabase& db) {
    return addOwned(db, new Table(), AcDbObjectId());
}

// Adds a record to a table without opening the table (the database is being built).
AcDbObjectId addRecord(AcDbDatabase& db, AcDbObjectId tableId, AcDbSymbolTableRecord* record,
                       const wchar_t* name) {
    record->setName(name);
    AcDbObjectId id = addOwned(db, record, tableId);
    auto* table = static_cast<AcDbSymbolTable*>(peekObject(tableId));
    ObjectAccess::records(*table).append(id);
    return id;
}

AcDbObjectId addBlock(AcDbDatabase& db, AcDbObjectId tableId, const wchar_t* name) {
    auto* record = new AcDbBlockTableRecord();
    AcDbObjectId id = addRecord(db, tableId, record, name);
    auto* begin = new AcDbBlockBegin();
    auto* end = new AcDbBlockEnd();
    ObjectAccess::blockBegin(*record) = addOwned(db, begin, id);
    ObjectAccess::blockEnd(*record) = addOwned(db, end, id);
    ObjectAccess::layer(*begin) = DatabaseAccess::data(db).layerZero;
    ObjectAccess::layer(*end) = DatabaseAccess::data(db).layerZero;
    return id;
}

void buildDefaultDrawing(AcDbDatabase& db) {
    DatabaseData& d = DatabaseAccess::data(db);
    d.blockTable = addTable<AcDbBlockTable>(db);
    d.layerTable = addTable<AcDbLayerTable>(db);
    d.textStyleTable = addTable<AcDbTextStyleTable>(db);
    d.linetypeTable = addTable<AcDbLinetypeTable>(db);
    d.regAppTable = addTable<AcDbRegAppTable>(db);
    d.namedObjects = addOwned(db, new AcDbDictionary(), AcDbObjectId());

    d.byBlock = addRecord(db, d.linetypeTable, new AcDbLinetypeTableRecord(), L"ByBlock");
    d.byLayer = addRecord(db, d.linetypeTable, new AcDbLinetypeTableRecord(), L"ByLayer");
    auto* continuous = new AcDbLinetypeTableRecord();
    continuous->setComments(L"Solid line");
    d.continuous = addRecord(db, d.linetypeTable, continuous, L"Continuous");

    auto* zero = new AcDbLayerTableRecord();
    zero->setColor(AcCmEntityColor(7));
    zero->setLinetypeObjectId(d.continuous);
    d.layerZero = addRecord(db, d.layerTable, zero, L"0");

    auto* standard = new AcDbTextStyleTableRecord();
    standard->setFileName(L"txt");
    d.standardStyle = addRecord(db, d.textStyleTable, standard, L"Standard");
    addRecord(db, d.regAppTable, new AcDbRegAppTableRecord(), L"ACAD");

    d.modelSpace = addBlock(db, d.blockTable, ACDB_MODEL_SPACE);
    d.paperSpace = addBlock(db, d.blockTable, ACDB_PAPER_SPACE);

    AcDbDictionary* nod = nullptr;
    acdbOpenObject(nod, d.namedObjects, AcDb::kForWrite);
    auto* groups = new AcDbDictionary();
    AcDbObjectId groupsId;
    if (nod->setAt(L"ACAD_GROUP", groups, groupsId) == Acad::eOk) groups->close();
    else delete groups;
    nod->close();
}

}  // namespace

bool isLiveStub(const AcDbStub* stub) { return stub && liveStubs().contains(stub); }
void registerStub(const AcDbStub* stub) { liveStubs().insert(stub); }
void unregisterStub(const AcDbStub* stub) { liveStubs().erase(stub); }

AcDbStub* DatabaseAccess::newStub(AcDbDatabase& db, AcDbHandle handle) {
    DatabaseData& d = data(db);
    if (handle.isNull()) handle = AcDbHandle(d.handseed);
    if (handle.value() >= d.handseed) d.handseed = handle.value() + 1;
    auto stub = std::make_unique<AcDbStub>();
    stub->database = &db;
    stub->handle = handle;
    AcDbStub* raw = stub.get();
    d.stubs[handle.value()] = std::move(stub);
    registerStub(raw);
    return raw;
}

AcDbStub* DatabaseAccess::findStub(const AcDbDatabase& db, AcDbHandle handle) {
    auto& stubs = data(db).stubs;
    auto it = stubs.find(handle.value());
    return it == stubs.end() ? nullptr : it->second.get();
}

AcDbObject* peekObject(AcDbObjectId id) {
    return isLiveStub(id.stub()) ? id.stub()->object : nullptr;
}

Acad::ErrorStatus addObject(AcDbDatabase& db, AcDbObject* object, AcDbObjectId& id,
                            AcDbHandle handle) {
    if (object == nullptr) return Acad::eNullObjectPointer;
    if (ObjectAccess::stub(*object) != nullptr) return Acad::eAlreadyInDb;
    AcDbStub* stub = nullptr;
    if (!handle.isNull()) {
        stub = DatabaseAccess::findStub(db, handle);
        if (stub && stub->object) return Acad::eHandleInUse;
    }
    if (!stub) stub = DatabaseAccess::newStub(db, handle);
    ++DatabaseAccess::data(db).writeCount;
    stub->object = object;
    ObjectAccess::setStub(*object, stub);
    ObjectAccess::openForWrite(*object);
    id = AcDbObjectId(stub);
    materializeSubentities(*object);
    return Acad::eOk;
}

std::wstring upperName(std::wstring_view name) {
    std::wstring u(name);
    for (auto& c : u) c = static_cast<wchar_t>(std::towupper(c));
    return u;
}

}  // namespace kelvo::drawing

using kelvo::drawing::DatabaseAccess;
using kelvo::drawing::DatabaseData;
using kelvo::drawing::ObjectAccess;

AcRxClass* AcDbDatabase::desc() { return acrxFindClass(L"AcDbDatabase"); }
AcRxClass* AcDbDatabase::isA() const { return desc(); }

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) : data_(new DatabaseData) {
    if (buildDefaultDrawing) {
        kelvo::drawing::buildDefaultDrawing(*this);
        kelvo::drawing::initHeaderVariables(*this);
    }
}

AcDbDatabase::~AcDbDatabase() {
    // Objects first (their destructors may look at other objects' stubs), then the stubs.
    for (auto& [handle, stub] : data_->stubs) {
        delete stub->object;
        stub->object = nullptr;
    }
    for (auto& [handle, stub] : data_->stubs) kelvo::drawing::unregisterStub(stub.get());
    delete data_;
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* pObj) {
    AcDbObjectId id;
    return addAcDbObject(id, pObj);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& objId, AcDbObject* pObj) {
    return kelvo::drawing::addObject(*this, pObj, objId);
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound,
                                                const AcDbHandle& objHandle, Adesk::UInt32) {
    retId.setNull();
    if (objHandle.isNull()) return Acad::eNullHandle;
    AcDbStub* stub = DatabaseAccess::findStub(*this, objHandle);
    if (!stub) {
        if (!createIfNotFound) return Acad::eUnknownHandle;
        stub = DatabaseAccess::newStub(*this, objHandle);
    }
    retId = AcDbObjectId(stub);
    return Acad::eOk;
}

namespace {

template <class Table>
Acad::ErrorStatus openTable(AcDbObjectId id, Table*& table, AcDb::OpenMode mode) {
    table = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    return acdbOpenObject(table, id, mode);
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& t, AcDb::OpenMode m) {
    return openTable(data_->blockTable, t, m);
}
Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& t, AcDb::OpenMode m) {
    return openTable(data_->layerTable, t, m);
}
Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& t, AcDb::OpenMode m) {
    return openTable(data_->textStyleTable, t, m);
}
Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& t, AcDb::OpenMode m) {
    return openTable(data_->linetypeTable, t, m);
}
Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& t, AcDb::OpenMode m) {
    return openTable(data_->regAppTable, t, m);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& t, AcDb::OpenMode m) {
    return getBlockTable(t, m);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& t, AcDb::OpenMode m) {
    return getLayerTable(t, m);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& t, AcDb::OpenMode m) {
    return getTextStyleTable(t, m);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& t, AcDb::OpenMode m) {
    return getLinetypeTable(t, m);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbRegAppTable*& t, AcDb::OpenMode m) {
    return getRegAppTable(t, m);
}
Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
    return openTable(data_->namedObjects, d, m);
}

AcDbObjectId AcDbDatabase::blockTableId() const { return data_->blockTable; }
AcDbObjectId AcDbDatabase::layerTableId() const { return data_->layerTable; }
AcDbObjectId AcDbDatabase::textStyleTableId() const { return data_->textStyleTable; }
AcDbObjectId AcDbDatabase::linetypeTableId() const { return data_->linetypeTable; }
AcDbObjectId AcDbDatabase::regAppTableId() const { return data_->regAppTable; }
AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return data_->namedObjects; }
AcDbObjectId AcDbDatabase::currentSpaceId() const { return data_->modelSpace; }
AcDbObjectId AcDbDatabase::modelSpaceId() const { return data_->modelSpace; }
AcDbObjectId AcDbDatabase::paperSpaceId() const { return data_->paperSpace; }
AcDbObjectId AcDbDatabase::layerZero() const { return data_->layerZero; }
AcDbObjectId AcDbDatabase::byLayerLinetype() const { return data_->byLayer; }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return data_->byBlock; }
AcDbObjectId AcDbDatabase::continuousLinetype() const { return data_->continuous; }
AcDbHandle AcDbDatabase::handseed() const { return AcDbHandle(data_->handseed); }

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& pOutput) const {
    pOutput = data_->fileName.c_str();
    return Acad::eOk;
}

void AcDbDatabase::setFilename(const ACHAR* fileName) { data_->fileName = fileName ? fileName : L""; }

// --- object ids ----------------------------------------------------------------------

const AcDbObjectId AcDbObjectId::kNull;

bool AcDbObjectId::isValid() const { return kelvo::drawing::isLiveStub(stub_); }

bool AcDbObjectId::isErased() const {
    AcDbObject* o = kelvo::drawing::peekObject(*this);
    return o && o->isErased();
}

AcDbDatabase* AcDbObjectId::database() const { return isValid() ? stub_->database : nullptr; }

AcDbHandle AcDbObjectId::handle() const { return isValid() ? stub_->handle : AcDbHandle(); }

AcRxClass* AcDbObjectId::objectClass() const {
    AcDbObject* o = kelvo::drawing::peekObject(*this);
    return o ? o->isA() : nullptr;
}
