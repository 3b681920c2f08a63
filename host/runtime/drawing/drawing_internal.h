// The drawing database's private parts: the stub that records each object of a database,
// the database's own data, and access to the private fields of objects. Private to
// host/runtime/drawing.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "dbents.h"
#include "dbmain.h"
#include "dbproxy.h"
#include "dbsymtb.h"

// One object of one database: its handle and the object itself (null for a handle that
// is referred to but not read yet). The stub lives as long as its database.
struct AcDbStub {
    AcDbDatabase* database = nullptr;
    AcDbHandle handle;
    AcDbObject* object = nullptr;  // owned
};

namespace kelvo::drawing {

struct ProxyData;

// Whether the stub belongs to a database that is still open (a stale or made-up id is not).
bool isLiveStub(const AcDbStub* stub);
void registerStub(const AcDbStub* stub);
void unregisterStub(const AcDbStub* stub);

// What entmake, tblnext and the selection functions keep between calls for one drawing:
// the block definition being made (BLOCK ... ENDBLK), the complex entity being made
// (POLYLINE ... SEQEND, INSERT ... SEQEND) and the table cursors.
struct ListState {
    ListState() = default;
    ~ListState();
    ListState(const ListState&) = delete;
    ListState& operator=(const ListState&) = delete;
    void dropBlock();
    void dropComplex();

    bool blockOpen = false;
    std::wstring blockName;
    AcGePoint3d blockOrigin;
    AcDbObjectId blockLayer;
    std::vector<AcDbEntity*> blockEntities;    // owned until the block is made
    AcDbEntity* complexOwner = nullptr;        // owned until SEQEND
    std::map<std::wstring, int> tableCursors;  // upper-case table name -> next index
};

// A header variable's value.
using HeaderValue = std::variant<double, int, std::wstring, AcGePoint3d, AcDbObjectId>;

struct DatabaseData {
    std::uint64_t handseed = 1;
    std::map<std::uint64_t, std::unique_ptr<AcDbStub>> stubs;  // by handle
    AcDbObjectId blockTable, layerTable, textStyleTable, linetypeTable, regAppTable;
    AcDbObjectId namedObjects;
    AcDbObjectId modelSpace, paperSpace, layerZero, byLayer, byBlock, continuous, standardStyle;
    std::map<std::wstring, HeaderValue> header;  // upper-case names without "$"
    std::wstring fileName;
    ListState lists;
    // Counts openings for write and added objects: while it stands still, no object of
    // the database has changed (the undo history skips its comparison then).
    std::uint64_t writeCount = 0;
    // Tables read from a file that the host has no classes for (VPORT, VIEW, UCS,
    // DIMSTYLE): by name, the table object and then its records, all kept as proxies.
    std::map<std::wstring, std::vector<AcDbObjectId>> keptTables;
};

class DatabaseAccess {
public:
    static DatabaseData& data(const AcDbDatabase& db) { return *db.data_; }
    // A new stub with the next handle (or the given one), registered.
    static AcDbStub* newStub(AcDbDatabase& db, AcDbHandle handle = AcDbHandle());
    static AcDbStub* findStub(const AcDbDatabase& db, AcDbHandle handle);
};

class ObjectAccess {
public:
    static AcDbStub* stub(const AcDbObject& o) { return o.stub_; }
    static void setStub(AcDbObject& o, AcDbStub* s) { o.stub_ = s; }
    static void setOwner(AcDbObject& o, AcDbObjectId id) { o.ownerId_ = id; }
    static void setErased(AcDbObject& o, bool erased) { o.erased_ = erased; }
    static void openForWrite(AcDbObject& o) { o.writer_ = true; }
    static int readers(const AcDbObject& o) { return o.readers_; }
    static bool writer(const AcDbObject& o) { return o.writer_; }
    static int& readersRef(AcDbObject& o) { return o.readers_; }
    static bool& writerRef(AcDbObject& o) { return o.writer_; }
    static bool& notifierRef(AcDbObject& o) { return o.notifier_; }
    static Acad::ErrorStatus callSubOpen(AcDbObject& o, AcDb::OpenMode mode) {
        return o.subOpen(mode);
    }
    static resbuf*& xdata(AcDbObject& o) { return o.xdata_; }
    static const resbuf* xdata(const AcDbObject& o) { return o.xdata_; }
    static AcDbObjectId& extensionDictionary(AcDbObject& o) { return o.extensionDictionary_; }
    static AcDbObjectIdArray& records(AcDbSymbolTable& t) { return t.records_; }
    static AcDbObjectIdArray& entities(AcDbBlockTableRecord& b) { return b.entities_; }
    static AcDbObjectId& blockBegin(AcDbBlockTableRecord& b) { return b.begin_; }
    static AcDbObjectId& blockEnd(AcDbBlockTableRecord& b) { return b.end_; }
    static AcDbObjectId& layer(AcDbEntity& e) { return e.layer_; }
    static AcDbObjectIdArray& attributes(AcDbBlockReference& r) { return r.attributes_; }
    static AcDbObjectId& seqend(AcDbBlockReference& r) { return r.seqend_; }
    static AcArray<AcDbAttribute*>& pending(AcDbBlockReference& r) { return r.pendingAttributes_; }
    static ProxyData* proxy(const AcDbObject& o) {
        if (auto* e = dynamic_cast<const AcDbProxyEntity*>(&o)) return e->data_;
        if (auto* p = dynamic_cast<const AcDbProxyObject*>(&o)) return p->data_;
        return nullptr;
    }
    static AcDbObjectIdArray& vertices(AcDb2dPolyline& p) { return p.vertices_; }
    static AcDbObjectId& seqend(AcDb2dPolyline& p) { return p.seqend_; }
    static AcArray<AcDb2dVertex*>& pending(AcDb2dPolyline& p) { return p.pendingVertices_; }
    static AcDbObjectId& linetype(AcDbEntity& e) { return e.linetype_; }
};

// The object behind an id without opening it (null when the id is not live or the object
// is not read yet). For the host's own bookkeeping only.
AcDbObject* peekObject(AcDbObjectId id);

// Adds a new object to db, with a new handle or the given one (which must be free or a
// forward reference not yet filled); the object comes out open for write.
Acad::ErrorStatus addObject(AcDbDatabase& db, AcDbObject* object, AcDbObjectId& id,
                            AcDbHandle handle = AcDbHandle());

// How many open-state assertions failed (tests read it).
int& assertionFailures();

// Adds the sub-entities waiting in a new block reference (attributes) or 2D polyline
// (vertices) to the database it has just joined, with their SEQEND.
void materializeSubentities(AcDbObject& owner);

// Upper-case copy for name comparisons.
std::wstring upperName(std::wstring_view name);

// The working database of the host (the current document's), or null.
AcDbDatabase* workingDatabase();

// Sets the header variables of a new drawing to their defaults.
void initHeaderVariables(AcDbDatabase& db);

// Registers the built-in classes in the class dictionary; called once by it.
void registerBuiltinClasses();

}  // namespace kelvo::drawing
