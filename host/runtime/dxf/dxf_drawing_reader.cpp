// Reading a DXF drawing into a database, in two passes.
//
// Pass 1 makes every object in its place, empty: table records in their table (a record
// whose name the database has already is that record), blocks with their markers,
// entities in their block with their attributes and vertices, objects with their owner;
// each keeps its file handle when that handle is free in the database, and the reader
// notes which object each file handle became. Pass 2 reads each object's groups through
// its dxfIn (subclass markers added to records of old files), with the handles of
// pointer groups turned into the objects of pass 1, so that references may point
// forward. Then the header variables, and whatever a drawing needs that the file lacked.

#include "runtime/dxf/dxf_drawing_reader.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>

#include "dbents.h"
#include "dbmain.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/proxy_data.h"
#include "runtime/dxf/dxf_error.h"
#include "runtime/dxf/dxf_file_filer.h"
#include "runtime/dxf/dxf_subclass_markers.h"
#include "utf8.h"

namespace kelvo::host::dxf {
namespace {

using kelvo::drawing::DatabaseAccess;
using kelvo::drawing::DatabaseData;
using kelvo::drawing::ObjectAccess;
using kelvo::drawing::peekObject;
using kelvo::drawing::TableKind;

const Group* find(const Record& r, int code) {
    for (const Group& g : r.groups)
        if (g.code == code) return &g;
    return nullptr;
}

std::wstring text(const Record& r, int code) {
    const Group* g = find(r, code);
    return g ? g->text : std::wstring();
}

std::uint64_t handleOf(const Record& r) {
    const Group* g = find(r, r.type() == L"DIMSTYLE" ? 105 : 5);
    return g ? g->toHandle() : 0;
}

AcGePoint3d pointOf(const Record& r, int code) {
    const Group* x = find(r, code);
    const Group* y = find(r, code + 10);
    const Group* z = find(r, code + 20);
    return {x ? x->toDouble() : 0, y ? y->toDouble() : 0, z ? z->toDouble() : 0};
}

// The groups with each point's y and z right after its x. The oldest files give the
// coordinates of two points interleaved (10, 11, 20, 21, ...); a y or z is looked for up to
// the next x of the same point code, a few groups on. Records laid out by subclasses
// always keep a point's groups together, and are left as they are.
std::vector<Group> pointsTogether(const std::vector<Group>& groups) {
    std::vector<Group> out;
    out.reserve(groups.size());
    std::vector<bool> taken(groups.size(), false);
    for (size_t i = 0; i < groups.size(); ++i) {
        if (taken[i]) continue;
        const Group& g = groups[i];
        out.push_back(g);
        if (g.code >= 1000 || rbKindOf(g.code) != RbKind::Point) continue;
        size_t from = i + 1;
        for (int k = 1; k <= 2; ++k) {
            int want = g.code + 10 * k;
            size_t j = from;
            while (j < groups.size() && j < from + 16 &&
                   (taken[j] ||
                    (groups[j].code != want && groups[j].code != g.code && groups[j].code != 0)))
                ++j;
            if (j >= groups.size() || j >= from + 16 || groups[j].code != want) break;
            taken[j] = true;
            out.push_back(groups[j]);
            from = j + 1;
        }
    }
    return out;
}

// Polygon and polyface meshes (POLYLINE flags 16 and 64), which the host has no entity for.
bool isMesh(const Record& r) {
    if (r.type() != L"POLYLINE") return false;
    for (const Group& g : r.groups)
        if (g.code == 70) return (g.toInt() & (16 | 64)) != 0;
    return false;
}

// A text style record that loads a shape file (flag 1): such records have no name.
bool isShapeFileStyle(const Record& r) {
    const Group* flags = find(r, 70);
    return r.type() == L"STYLE" && flags && (flags->toInt() & 1);
}

bool isInsertArray(const Record& r) {
    for (const Group& g : r.groups)
        if (g.code == 100 && g.text == L"AcDbMInsertBlock") return true;
    return false;
}

bool isTableKept(const std::wstring& name, TableKind& kind) {
    static const std::map<std::wstring, TableKind> kTables = {
        {L"LAYER", TableKind::Layer},        {L"LTYPE", TableKind::Linetype},
        {L"STYLE", TableKind::TextStyle},    {L"APPID", TableKind::RegApp},
        {L"BLOCK_RECORD", TableKind::Block},
    };
    auto it = kTables.find(name);
    if (it == kTables.end()) return false;
    kind = it->second;
    return true;
}

// Old files name the two spaces "$MODEL_SPACE" and "$PAPER_SPACE".
std::wstring blockName(std::wstring name) {
    std::wstring upper = kelvo::drawing::upperName(name);
    if (upper == L"$MODEL_SPACE") return ACDB_MODEL_SPACE;
    if (upper == L"$PAPER_SPACE") return ACDB_PAPER_SPACE;
    return name;
}

std::wstring counted(const std::map<std::wstring, int>& counts) {
    std::wstring out;
    for (auto& [type, count] : counts)
        out += (out.empty() ? L"" : L", ") + std::to_wstring(count) + L" " + type;
    return out;
}

class DrawingReader {
public:
    DrawingReader(const DxfFile& file, AcDbDatabase& db)
        : file_(file), db_(db), data_(DatabaseAccess::data(db)) {}

    std::wstring read() {
        // What the reader makes itself comes above every handle the file says it uses, so
        // that no object of the file loses its handle to one made before it is read.
        if (const HeaderVariable* seed = file_.headerVariable(L"$HANDSEED");
            seed && !seed->groups.empty())
            data_.handseed = std::max(data_.handseed, seed->groups.front().toHandle());
        if (auto* s = file_.section(L"CLASSES")) classes(*s);
        if (auto* s = file_.section(L"TABLES")) tables(*s);
        ensureSpaces();  // for files without a BLOCK_RECORD table
        if (auto* s = file_.section(L"BLOCKS")) blocks(*s);
        ensureSpaces();
        if (auto* s = file_.section(L"ENTITIES")) entities(*s);
        if (auto* s = file_.section(L"OBJECTS")) objects(*s);
        finish();  // every object of the file is in: what it lacks comes under new handles
        registerApplications();
        fields();
        header();
        finish();
        return report();
    }

private:
    // --- making objects ----------------------------------------------------------------

    AcRxClass* classOf(const std::wstring& type) const {
        if (AcRxClass* cls = acrxFindClassByDxfName(type.c_str())) return cls;
        auto it = customClasses_.find(type);
        return it == customClasses_.end() ? nullptr : acrxFindClass(it->second.name.c_str());
    }

    // A new object of the record's type: a proxy when the host has no class for it and
    // the record is laid out by subclasses (else it is skipped: null).
    AcDbObject* make(const Record& r, bool entity) {
        const std::wstring& type = r.type();
        AcRxClass* cls = classOf(type);
        AcRxObject* made = cls ? cls->create() : nullptr;
        if (auto* object = made ? AcDbObject::cast(made) : nullptr) {
            if (!AcDbProxyEntity::cast(object) && !AcDbProxyObject::cast(object)) return object;
            nameProxy(*object, type);
            return object;
        }
        delete made;
        if (!entity) {  // objects are kept, as they are
            auto* proxy = new AcDbProxyObject();
            nameProxy(*proxy, type);
            return proxy;
        }
        if (!hasSubclassMarkers(r.groups) && !hasLayout(type)) {
            ++skipped_[type];
            return nullptr;
        }
        auto* proxy = new AcDbProxyEntity();
        nameProxy(*proxy, type);
        ++proxies_[type];
        return proxy;
    }

    void nameProxy(AcDbObject& proxy, const std::wstring& type) const {
        kelvo::drawing::ProxyData* data = ObjectAccess::proxy(proxy);
        if (!data || !data->dxfName.empty()) return;
        data->dxfName = type;
        auto it = customClasses_.find(type);
        if (it == customClasses_.end()) return;
        data->className = it->second.name;
        data->appName = it->second.app;
        data->proxyFlags = it->second.proxyFlags;
    }

    // Adds a new object with the file's handle when it is free, owned by `owner`; notes it
    // for pass 2. The object is closed.
    AcDbObjectId add(AcDbObject* object, const Record& r, AcDbObjectId owner) {
        std::uint64_t fileHandle = handleOf(r);
        AcDbHandle handle;
        if (AcDbStub* stub =
                fileHandle ? DatabaseAccess::findStub(db_, AcDbHandle(fileHandle)) : nullptr;
            fileHandle && (!stub || !stub->object))
            handle = AcDbHandle(fileHandle);
        AcDbObjectId id;
        if (kelvo::drawing::addObject(db_, object, id, handle) != Acad::eOk) {
            delete object;
            throw DxfError("cannot add a " + toUtf8(r.type()), r.line());
        }
        ObjectAccess::setOwner(*object, owner);
        object->close();
        note(r, id, owner);
        return id;
    }

    void note(const Record& r, AcDbObjectId id, AcDbObjectId owner) {
        if (std::uint64_t h = handleOf(r)) ids_[h] = id;
        pending_.push_back({id, owner, &r});
    }

    void classes(const Section& s) {
        for (const Record& r : s.records)
            if (r.type() == L"CLASS") {
                const Group* flags = find(r, 90);
                customClasses_[text(r, 1)] = {text(r, 2), text(r, 3),
                                              flags ? static_cast<int>(flags->toInt()) : 0};
            }
    }

    void tables(const Section& s) {
        AcDbObjectId table;
        std::vector<AcDbObjectId>* kept = nullptr;  // a table kept as it is
        for (size_t i = 0; i < s.records.size(); ++i) {
            const Record& r = s.records[i];
            if (r.type() == L"TABLE") {
                table = tableNamed(r);
                // (an empty one is written as the writer writes it, as if it were absent)
                bool empty = i + 1 >= s.records.size() || s.records[i + 1].type() == L"ENDTAB";
                kept = table.isNull() && !empty ? keptTable(r) : nullptr;
                continue;
            }
            if (r.type() == L"ENDTAB") {
                table = {};
                kept = nullptr;
            } else if (kept && !kept->empty()) {
                auto* proxy = new AcDbProxyObject();
                nameProxy(*proxy, r.type());
                kept->push_back(add(proxy, r, kept->front()));
            } else if (!table.isNull()) {
                record(r, table);
            }
        }
    }

    // A table the host has no classes for, kept with its records as they are, to be
    // written back in its place. Null for a table given twice or without a name.
    std::vector<AcDbObjectId>* keptTable(const Record& r) {
        std::wstring name = kelvo::drawing::upperName(text(r, 2));
        if (name.empty() || data_.keptTables.count(name)) return nullptr;
        auto* proxy = new AcDbProxyObject();
        nameProxy(*proxy, L"TABLE");
        std::vector<AcDbObjectId>& kept = data_.keptTables[name];
        kept.push_back(add(proxy, r, AcDbObjectId()));
        return &kept;
    }

    // The database's table a TABLE record starts, made with the file's handle when the
    // database has none; null for tables the host does not keep.
    AcDbObjectId tableNamed(const Record& r) {
        TableKind kind;
        if (!isTableKept(text(r, 2), kind)) return {};
        AcDbObjectId table = tableId(kind);
        if (table.isNull() || !peekObject(table)) {
            table = add(newTable(kind), r, AcDbObjectId());
            pending_.pop_back();  // the table object has no fields of its own to read
            kelvo::drawing::setTableId(db_, kind, table);
        }
        if (std::uint64_t h = handleOf(r)) ids_[h] = table;
        return table;
    }

    AcDbObjectId tableId(TableKind kind) const {
        switch (kind) {
            case TableKind::Block:
                return data_.blockTable;
            case TableKind::Layer:
                return data_.layerTable;
            case TableKind::TextStyle:
                return data_.textStyleTable;
            case TableKind::Linetype:
                return data_.linetypeTable;
            case TableKind::RegApp:
                return data_.regAppTable;
            case TableKind::NamedObjects:
                break;
        }
        return data_.namedObjects;
    }

    static AcDbObject* newTable(TableKind kind) {
        switch (kind) {
            case TableKind::Block:
                return new AcDbBlockTable();
            case TableKind::Layer:
                return new AcDbLayerTable();
            case TableKind::TextStyle:
                return new AcDbTextStyleTable();
            case TableKind::Linetype:
                return new AcDbLinetypeTable();
            default:
                return new AcDbRegAppTable();
        }
    }

    // The block table and the two spaces, for blocks and entities to go in (the rest of
    // what a drawing needs comes at the end, so that the file's own objects come first).
    void ensureSpaces() {
        if (!peekObject(data_.blockTable)) {
            AcDbObjectId id;
            AcDbObject* table = new AcDbBlockTable();
            kelvo::drawing::addObject(db_, table, id);
            table->close();
            kelvo::drawing::setTableId(db_, TableKind::Block, id);
        }
        for (auto [name, slot] : {std::pair{ACDB_MODEL_SPACE, &data_.modelSpace},
                                  std::pair{ACDB_PAPER_SPACE, &data_.paperSpace}}) {
            if (peekObject(*slot)) continue;
            synthetic_.push_back(Record{{Group{0, L"BLOCK_RECORD", 0}}});
            *slot = record(synthetic_.back(), data_.blockTable, name);
        }
    }

    // What every drawing has and the file has not given.
    void finish() {
        std::vector<std::wstring> ignored;
        kelvo::drawing::finishReading(db_, &ignored);
    }

    // A symbol table record: the database's own record of that name, else a new one.
    AcDbObjectId record(const Record& r, AcDbObjectId tableId, const std::wstring& givenName = {}) {
        std::wstring name = givenName.empty() ? text(r, 2) : givenName;
        auto* table = AcDbSymbolTable::cast(peekObject(tableId));
        if (!table || (name.empty() && !isShapeFileStyle(r))) return {};
        AcDbObjectId existing;
        if (!name.empty() && table->getAt(name.c_str(), existing) == Acad::eOk) {
            note(r, existing, tableId);
            return existing;
        }
        AcDbObject* object = make(r, false);
        auto* rec = object ? AcDbSymbolTableRecord::cast(object) : nullptr;
        if (!rec) {
            delete object;
            return {};
        }
        if (!name.empty()) rec->setName(name.c_str());
        AcDbObjectId id = add(object, r, tableId);
        ObjectAccess::records(*table).append(id);
        return id;
    }

    void blocks(const Section& s) {
        AcDbObjectId block;
        for (size_t i = 0; i < s.records.size(); ++i) {
            const Record& r = s.records[i];
            if (r.type() == L"BLOCK") {
                block = blockBegun(r);
            } else if (r.type() == L"ENDBLK") {
                if (auto* b = AcDbBlockTableRecord::cast(peekObject(block)))
                    marker(r, block, ObjectAccess::blockEnd(*b), [] { return new AcDbBlockEnd(); });
                block = {};
            } else if (!block.isNull()) {
                i = entity(s, i, block);
            }
        }
    }

    // The block record a BLOCK begins (made here for files without a BLOCK_RECORD table),
    // with its origin and its BLOCK marker.
    AcDbObjectId blockBegun(const Record& r) {
        std::wstring name = blockName(text(r, 2));
        auto* table = AcDbSymbolTable::cast(peekObject(data_.blockTable));
        AcDbObjectId id;
        if (!table || name.empty()) return id;
        if (table->getAt(name.c_str(), id) != Acad::eOk) {
            synthetic_.push_back(Record{{Group{0, L"BLOCK_RECORD", r.line()}}});
            id = record(synthetic_.back(), data_.blockTable, name);
        }
        AcDbBlockTableRecord* block = nullptr;
        if (acdbOpenObject(block, id, AcDb::kForWrite) != Acad::eOk) return {};
        block->setOrigin(pointOf(r, 10));
        block->close();
        marker(r, id, ObjectAccess::blockBegin(*block), [] { return new AcDbBlockBegin(); });
        return id;
    }

    // A block's BLOCK or ENDBLK marker: the block's own when it has one, else a new one.
    template <typename Make>
    void marker(const Record& r, AcDbObjectId block, AcDbObjectId& slot, Make make) {
        if (peekObject(slot)) {
            if (std::uint64_t h = handleOf(r)) ids_[h] = slot;
            pending_.push_back({slot, block, &r});
            return;
        }
        slot = add(make(), r, block);
    }

    void entities(const Section& s) {
        for (size_t i = 0; i < s.records.size(); ++i) {
            const Group* paper = find(s.records[i], 67);
            i = entity(s, i, paper && paper->toInt() == 1 ? data_.paperSpace : data_.modelSpace);
        }
    }

    // The entity at records[i] in block `block`, with the attributes or vertices that
    // follow it up to SEQEND. Returns the index of its last record.
    size_t entity(const Section& s, size_t i, AcDbObjectId block) {
        const Record& r = s.records[i];
        AcDbObjectId id;
        if (isMesh(r)) {  // its vertices are faces and corners, not a path
            return meshKept(s, i, block);
        } else if (AcDbObject* object = make(r, true)) {
            if (!AcDbEntity::cast(object)) {
                delete object;
                ++skipped_[r.type()];
            } else if (auto* owner = AcDbBlockTableRecord::cast(peekObject(block))) {
                id = add(object, r, block);
                ObjectAccess::entities(*owner).append(id);
                if (isInsertArray(r)) ++partly_[L"INSERT (an array read as its first insert)"];
            } else {
                delete object;
            }
        }
        bool hasFollowers = r.type() == L"POLYLINE" || (r.type() == L"INSERT" && find(r, 66));
        if (!hasFollowers) return i;
        bool ended = false;
        while (i + 1 < s.records.size() && isFollower(s.records[i + 1].type())) {
            const Record& sub = s.records[++i];
            subEntity(sub, id);
            if ((ended = sub.type() == L"SEQEND")) break;
        }
        if (!ended) endMarker(id);
        return i;
    }

    static bool isFollower(const std::wstring& type) {
        return type == L"VERTEX" || type == L"ATTRIB" || type == L"SEQEND";
    }

    // The end marker a polyline or an insert with attributes has, when the file gave none.
    void endMarker(AcDbObjectId ownerId) {
        AcDbObject* owner = peekObject(ownerId);
        auto* ref = owner ? AcDbBlockReference::cast(owner) : nullptr;
        auto* pl = owner ? AcDb2dPolyline::cast(owner) : nullptr;
        if (!ref && !pl) return;
        AcDbObjectId& slot = ref ? ObjectAccess::seqend(*ref) : ObjectAccess::seqend(*pl);
        if (!slot.isNull()) return;
        auto* end = new AcDbSequenceEnd();
        AcDbObjectId id;
        if (kelvo::drawing::addObject(db_, end, id) != Acad::eOk) {
            delete end;
            return;
        }
        ObjectAccess::setOwner(*end, ownerId);
        ObjectAccess::layer(*end) = ObjectAccess::layer(*AcDbEntity::cast(owner));
        end->close();
        slot = id;
    }

    // A polygon or polyface mesh, which the host has no entity for: the polyline, its
    // vertices and its end marker kept as they are, one after the other in the block (the
    // vertices owned by the polyline). Returns the index of its last record.
    size_t meshKept(const Section& s, size_t i, AcDbObjectId block) {
        auto* owner = AcDbBlockTableRecord::cast(peekObject(block));
        AcDbObjectId mesh;
        for (size_t first = i; i < s.records.size(); ++i) {
            const Record& r = s.records[i];
            if (i > first && r.type() != L"VERTEX" && r.type() != L"SEQEND") return i - 1;
            auto* proxy = new AcDbProxyEntity();
            nameProxy(*proxy, r.type());
            if (!owner) {
                delete proxy;
            } else {
                AcDbObjectId id = add(proxy, r, i == first ? block : mesh);
                ObjectAccess::entities(*owner).append(id);
                if (i == first) mesh = id;
            }
            if (r.type() == L"SEQEND") break;
        }
        ++proxies_[L"POLYLINE (mesh)"];
        return std::min(i, s.records.size() - 1);
    }

    // An attribute, vertex or end marker of the entity `ownerId` (skipped with it when it
    // was skipped; skipped and counted when that entity does not take it).
    void subEntity(const Record& r, AcDbObjectId ownerId) {
        AcDbObject* owner = peekObject(ownerId);
        auto* ref = owner ? AcDbBlockReference::cast(owner) : nullptr;
        auto* pl = owner ? AcDb2dPolyline::cast(owner) : nullptr;
        if (!owner) return;  // its entity was skipped, and said so
        if (!ref && !pl) {
            if (r.type() != L"SEQEND") ++skipped_[r.type()];
            return;
        }
        AcDbObject* object = make(r, true);
        if (!object) return;
        bool fits = AcDbSequenceEnd::cast(object) || (ref && AcDbAttribute::cast(object)) ||
                    (pl && AcDb2dVertex::cast(object));
        if (!fits) {
            delete object;
            ++skipped_[r.type()];
            return;
        }
        AcDbObjectId id = add(object, r, ownerId);
        if (AcDbSequenceEnd::cast(peekObject(id))) {
            (ref ? ObjectAccess::seqend(*ref) : ObjectAccess::seqend(*pl)) = id;
        } else if (ref) {
            ObjectAccess::attributes(*ref).append(id);
        } else {
            ObjectAccess::vertices(*pl).append(id);
        }
    }

    void objects(const Section& s) {
        for (size_t i = 0; i < s.records.size(); ++i) {
            const Record& r = s.records[i];
            if (i == 0 && r.type() == L"DICTIONARY" && peekObject(data_.namedObjects)) {
                if (std::uint64_t h = handleOf(r)) ids_[h] = data_.namedObjects;
                pending_.push_back({data_.namedObjects, AcDbObjectId(), &r});
                continue;
            }
            AcDbObject* object = make(r, false);
            if (!object) continue;
            if (AcDbEntity::cast(object)) {  // an entity where objects belong
                delete object;
                ++skipped_[r.type()];
                continue;
            }
            AcDbObjectId id = add(object, r, AcDbObjectId());
            if (i == 0 && r.type() == L"DICTIONARY") data_.namedObjects = id;
        }
    }

    // --- pass 2 --------------------------------------------------------------------------

    // Applications named in extended data are registered, so that the data is kept.
    void registerApplications() {
        std::set<std::wstring> names;
        for (auto& p : pending_)
            for (const Group& g : p.record->groups)
                if (g.code == 1001 && !g.text.empty()) names.insert(g.text);
        AcDbObjectId table = data_.regAppTable;
        auto* apps = AcDbSymbolTable::cast(peekObject(table));
        for (const std::wstring& name : names) {
            AcDbObjectId id;
            if (!apps || apps->getAt(name.c_str(), id) == Acad::eOk) continue;
            auto* app = new AcDbRegAppTableRecord();
            app->setName(name.c_str());
            kelvo::drawing::addObject(db_, app, id);
            ObjectAccess::setOwner(*app, table);
            app->close();
            ObjectAccess::records(*apps).append(id);
        }
    }

    void fields() {
        HandleResolver resolve = [this](std::uint64_t h) {
            auto it = ids_.find(h);
            return it == ids_.end() ? AcDbObjectId() : it->second;
        };
        for (auto& p : pending_) {
            AcDbObject* object = nullptr;
            if (acdbOpenObject(object, p.id, AcDb::kForWrite) != Acad::eOk) continue;
            std::vector<Group> groups(p.record->groups.begin() + 1, p.record->groups.end());
            if (!hasSubclassMarkers(groups)) groups = pointsTogether(groups);
            groups = withSubclassMarkers(p.record->type(), groups);
            DxfInFiler filer(&db_, groups, 0, resolve);
            filer.setStopsAtExtendedData(p.record->type() != L"XRECORD");
            Acad::ErrorStatus es = object->dxfIn(&filer);
            if (!p.owner.isNull() || object->ownerId().isNull())
                ObjectAccess::setOwner(*object, p.owner);
            object->close();
            if (es != Acad::eOk) ++partly_[p.record->type()];
        }
    }

    // The header variables the host keeps, from the file's HEADER.
    void header() {
        for (const HeaderVariable& v : file_.header()) {
            auto current = kelvo::drawing::getHeaderVariable(db_, v.name);
            if (v.name == L"$HANDSEED" && !v.groups.empty()) {  // new objects go above it
                data_.handseed = std::max(data_.handseed, v.groups.front().toHandle());
                continue;
            }
            if (!current || v.groups.empty()) continue;
            const Group& g = v.groups.front();
            kelvo::drawing::HeaderValue value;
            switch (current->index()) {
                case 0:
                    value = g.toDouble();
                    break;
                case 1:
                    value = static_cast<int>(g.toInt());
                    break;
                case 3: {
                    double xyz[3] = {0, 0, 0};
                    for (const Group& c : v.groups)
                        if (c.code % 10 == 0 && c.code >= 10 && c.code <= 30)
                            xyz[c.code / 10 - 1] = c.toDouble();
                    value = AcGePoint3d(xyz[0], xyz[1], xyz[2]);
                    break;
                }
                default:
                    value = g.text;
                    break;
            }
            kelvo::drawing::setHeaderVariable(db_, v.name,
                                              value);  // a record it lacks: kept as it was
        }
    }

    std::wstring report() const {
        std::wstring out;
        auto part = [&out](const wchar_t* what, const std::map<std::wstring, int>& counts) {
            if (counts.empty()) return;
            out += std::wstring(out.empty() ? L"" : L"; ") + what + counted(counts);
        };
        part(L"skipped ", skipped_);
        part(L"kept as proxies ", proxies_);
        part(L"read in part ", partly_);
        return out;
    }

    struct CustomClass {
        std::wstring name, app;
        int proxyFlags = 0;
    };
    struct Pending {
        AcDbObjectId id, owner;
        const Record* record;
    };

    const DxfFile& file_;
    AcDbDatabase& db_;
    DatabaseData& data_;
    std::map<std::wstring, CustomClass> customClasses_;  // by DXF name
    std::map<std::uint64_t, AcDbObjectId> ids_;          // file handle -> id
    std::vector<Pending> pending_;
    std::map<std::wstring, int> skipped_, proxies_, partly_;
    std::deque<Record> synthetic_;
};

}  // namespace

std::wstring readDrawingDxf(const DxfFile& file, AcDbDatabase& db) {
    return DrawingReader(file, db).read();
}

}  // namespace kelvo::host::dxf
