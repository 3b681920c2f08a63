// Writing a drawing as ASCII DXF.
//
// Layout: the header variables the host keeps; the custom classes of objects in the
// drawing; the symbol tables in the standard order (tables the host does not keep are
// written empty, with handles above every handle in use); every block between its BLOCK
// and ENDBLK (model and paper space empty there, their entities in ENTITIES); then every
// object that is neither an entity nor a table or record, the named-object dictionary
// first. An entity's sub-entities (attributes, vertices, the end marker) follow it.

#include "runtime/dxf/dxf_drawing_writer.h"

#include <algorithm>
#include <map>
#include <set>

#include "dbents.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/proxy_data.h"
#include "runtime/dxf/dxf_error.h"
#include "runtime/dxf/dxf_file_filer.h"
#include "runtime/render/proxy_graphics.h"
#include "utf8.h"

namespace kelvo::host::dxf {
namespace {

using kelvo::drawing::DatabaseAccess;
using kelvo::drawing::DatabaseData;
using kelvo::drawing::ObjectAccess;

class DrawingWriter {
public:
    DrawingWriter(const AcDbDatabase& db, std::string& out)
        : db_(db),
          data_(DatabaseAccess::data(db)),
          codec_(TextCodec::codePage("ANSI_1252")),
          w_(out, codec_, true),
          filer_(const_cast<AcDbDatabase*>(&db), w_) {
        // Handles for what has no object here come right after the last one in use, so
        // that a file read and written again gives them the same handles.
        for (auto& [handle, stub] : data_.stubs)
            if (handle >= nextHandle_) nextHandle_ = handle + 1;
    }

    void write() {
        collect();
        std::uint64_t seedAfter =
            std::max<std::uint64_t>(data_.handseed, nextHandle_ + reservedHandles());
        header(seedAfter);
        classes();
        tables();
        blocks();
        entities();
        objects();
        w_.string(0, L"EOF");
    }

private:
    // Handles written for things the database has no object for: the tables it does not
    // keep, and the markers of blocks that have none.
    std::uint64_t reservedHandles() const {
        std::uint64_t n = 9;  // at most every table
        if (auto* table = AcDbSymbolTable::cast(kelvo::drawing::peekObject(data_.blockTable)))
            for (auto& id : ObjectAccess::records(*table))
                if (AcDbBlockTableRecord::cast(kelvo::drawing::peekObject(id))) n += 2;
        return n;
    }

    void section(const wchar_t* name) {
        w_.string(0, L"SECTION");
        w_.string(2, name);
    }
    void endSection() { w_.string(0, L"ENDSEC"); }

    // The objects that are neither entities nor tables nor records, and the classes used.
    void collect() {
        std::set<AcDbObjectId> inTables;
        for (auto& [name, ids] : data_.keptTables) inTables.insert(ids.begin(), ids.end());
        for (auto& [handle, stub] : data_.stubs) {
            AcDbObject* o = stub->object;
            if (!o || o->isErased() || inTables.count(o->objectId())) continue;
            noteClass(*o);
            if (AcDbEntity::cast(o)) continue;
            if (AcDbSymbolTable::cast(o) || AcDbSymbolTableRecord::cast(o)) continue;
            others_.push_back(o);
        }
    }

    // A class of the CLASSES section: a class of a module, or the one a proxy stands for.
    void noteClass(const AcDbObject& o) {
        bool entity = AcDbEntity::cast(&o) != nullptr;
        if (const kelvo::drawing::ProxyData* p = ObjectAccess::proxy(o)) {
            if (p->className.empty()) return;
            CustomClass& c = custom_[p->dxfName];
            c = {p->className, p->appName, p->proxyFlags, entity, c.count + 1};
            return;
        }
        AcRxClass* cls = o.isA();
        if (!cls || kelvo::drawing::isBuiltinClass(cls) || !cls->dxfName() || !*cls->dxfName())
            return;
        CustomClass& c = custom_[cls->dxfName()];
        c = {cls->name(), cls->appName() ? cls->appName() : L"", cls->proxyFlags(), entity,
             c.count + 1};
    }

    void header(std::uint64_t seed) {
        section(L"HEADER");
        w_.string(9, L"$ACADVER");
        w_.string(1, L"AC1015");
        w_.string(9, L"$DWGCODEPAGE");
        w_.string(3, L"ANSI_1252");
        for (const auto& v : kelvo::drawing::headerVariables(db_)) {
            if (v.name == L"$ACADVER" || v.name == L"$DWGCODEPAGE" || v.name == L"$HANDSEED")
                continue;
            w_.string(9, v.name);
            std::visit([&](const auto& value) { headerValue(v.code, value); }, v.value);
        }
        if (!kelvo::drawing::getHeaderVariable(db_, L"$PROXYGRAPHICS")) {  // they are written
            w_.string(9, L"$PROXYGRAPHICS");
            w_.integer(70, 1);
        }
        w_.string(9, L"$HANDSEED");
        w_.handle(5, seed);
        endSection();
    }
    void headerValue(int code, double v) { w_.real(code, v); }
    void headerValue(int code, int v) { w_.integer(code, v); }
    void headerValue(int code, const std::wstring& v) { w_.string(code, v); }
    void headerValue(int code, const AcGePoint3d& p) { w_.point(code, p.x, p.y, p.z); }
    void headerValue(int code, const AcDbObjectId& id) {
        // Records are named by their names, other objects by their handles.
        auto* r = AcDbSymbolTableRecord::cast(kelvo::drawing::peekObject(id));
        if (r)
            w_.string(code, r->name());
        else
            w_.handle(code, id.isNull() ? 0 : id.handle().value());
    }

    void classes() {
        section(L"CLASSES");
        for (auto& [dxfName, c] : custom_) {
            w_.string(0, L"CLASS");
            w_.string(1, dxfName);
            w_.string(2, c.name);
            w_.string(3, c.app);
            w_.integer(90, c.proxyFlags);
            w_.integer(91, c.count);
            w_.integer(280, 0);
            w_.integer(281, c.entity ? 1 : 0);
        }
        endSection();
    }

    // Writes one object through its dxfOut, open for read while it writes.
    void object(const AcDbObject& o) {
        auto& mutableObject = const_cast<AcDbObject&>(o);
        ++ObjectAccess::readersRef(mutableObject);
        Acad::ErrorStatus es = o.dxfOut(&filer_);
        --ObjectAccess::readersRef(mutableObject);
        if (es == Acad::eOk) es = filer_.filerStatus();
        if (es != Acad::eOk)
            throw DxfError("cannot write an object of class " +
                           (o.isA() ? toUtf8(o.isA()->name()) : std::string("?")) + " (" +
                           toUtf8(acadErrorStatusText(es)) + ")");
    }

    // A table kept as it was read: its own record, its records, its end.
    bool keptTable(const wchar_t* name) {
        auto it = data_.keptTables.find(name);
        if (it == data_.keptTables.end() || it->second.empty()) return false;
        for (const AcDbObjectId& id : it->second)
            if (auto* o = kelvo::drawing::peekObject(id); o && !o->isErased()) object(*o);
        w_.string(0, L"ENDTAB");
        return true;
    }

    void table(const wchar_t* name, AcDbObjectId tableId) {
        if (tableId.isNull() && keptTable(name)) return;
        AcDbSymbolTable* t =
            tableId.isNull() ? nullptr : AcDbSymbolTable::cast(kelvo::drawing::peekObject(tableId));
        AcDbObjectIdArray records = t ? ObjectAccess::records(*t) : AcDbObjectIdArray();
        w_.string(0, L"TABLE");
        w_.string(2, name);
        w_.handle(5, t ? tableId.handle().value() : nextHandle_++);
        w_.handle(330, 0);
        w_.string(100, L"AcDbSymbolTable");
        int live = 0;
        for (auto& id : records)
            if (auto* r = kelvo::drawing::peekObject(id); r && !r->isErased()) ++live;
        w_.integer(70, live);
        if (std::wstring_view(name) == L"DIMSTYLE") {  // its table has a subclass of its own
            w_.string(100, L"AcDbDimStyleTable");
            w_.integer(71, 0);
        }
        for (auto& id : records)
            if (auto* r = kelvo::drawing::peekObject(id); r && !r->isErased()) object(*r);
        w_.string(0, L"ENDTAB");
    }

    void tables() {
        section(L"TABLES");
        table(L"VPORT", {});
        table(L"LTYPE", data_.linetypeTable);
        table(L"LAYER", data_.layerTable);
        table(L"STYLE", data_.textStyleTable);
        table(L"VIEW", {});
        table(L"UCS", {});
        table(L"APPID", data_.regAppTable);
        table(L"DIMSTYLE", {});
        table(L"BLOCK_RECORD", data_.blockTable);
        endSection();
    }

    // Whether an entity is of a class a module brought (not a proxy, not the host's).
    static bool isCustom(const AcDbEntity& e) {
        AcRxClass* cls = e.isA();
        return !ObjectAccess::proxy(e) && cls && !kelvo::drawing::isBuiltinClass(cls);
    }

    // An entity, then its attributes or vertices and their end marker, in their order.
    // An entity of a module's class carries what it draws as proxy graphics.
    void entityWithSubEntities(AcDbEntity& e) {
        if (isCustom(e)) {
            ++ObjectAccess::readersRef(e);
            filer_.setProxyGraphics(kelvo::host::render::proxyGraphicsOf(e));
            --ObjectAccess::readersRef(e);
        }
        object(e);
        filer_.setProxyGraphics({});
        AcDbObjectIdArray subs;
        AcDbObjectId end;
        bool isPolyline = false;
        if (auto* ref = AcDbBlockReference::cast(&e)) {
            subs = ObjectAccess::attributes(*ref);
            end = ObjectAccess::seqend(*ref);
        } else if (auto* pl = AcDb2dPolyline::cast(&e)) {
            subs = ObjectAccess::vertices(*pl);
            end = ObjectAccess::seqend(*pl);
            isPolyline = true;
        }
        // A polyline always says that followers come (66), so it always ends with its
        // marker, vertices or not; an insert has one only after attributes.
        if (subs.isEmpty() && !isPolyline) return;
        subs.append(end);
        for (const AcDbObjectId& id : subs)
            if (auto* sub = AcDbEntity::cast(kelvo::drawing::peekObject(id));
                sub && !sub->isErased())
                object(*sub);
    }

    void blockEntities(AcDbBlockTableRecord& block) {
        for (auto& id : ObjectAccess::entities(block)) {
            AcDbObject* o = kelvo::drawing::peekObject(id);
            if (auto* e = o ? AcDbEntity::cast(o) : nullptr; e && !e->isErased())
                entityWithSubEntities(*e);
        }
    }

    // The BLOCK or ENDBLK of a block that has no marker object, under a handle of its own.
    void blockMarker(const wchar_t* type, const AcDbBlockTableRecord& block) {
        bool begin = std::wstring_view(type) == L"BLOCK";
        w_.string(0, type);
        w_.handle(5, nextHandle_++);
        w_.handle(330, block.objectId().handle().value());
        w_.string(100, L"AcDbEntity");
        w_.string(8, L"0");
        w_.string(100, begin ? L"AcDbBlockBegin" : L"AcDbBlockEnd");
        if (!begin) return;
        w_.string(2, block.name());
        w_.integer(70, 0);
        AcGePoint3d origin = block.origin();
        w_.point(10, origin.x, origin.y, origin.z);
        w_.string(3, block.name());
        w_.string(1, L"");
    }

    void blocks() {
        section(L"BLOCKS");
        auto* table = AcDbSymbolTable::cast(kelvo::drawing::peekObject(data_.blockTable));
        if (table)
            for (auto& id : ObjectAccess::records(*table)) {
                auto* block = AcDbBlockTableRecord::cast(kelvo::drawing::peekObject(id));
                if (!block || block->isErased()) continue;
                if (auto* begin = kelvo::drawing::peekObject(ObjectAccess::blockBegin(*block)))
                    object(*begin);
                else
                    blockMarker(L"BLOCK", *block);
                if (id != data_.modelSpace && id != data_.paperSpace) blockEntities(*block);
                if (auto* end = kelvo::drawing::peekObject(ObjectAccess::blockEnd(*block)))
                    object(*end);
                else
                    blockMarker(L"ENDBLK", *block);
            }
        endSection();
    }

    void entities() {
        section(L"ENTITIES");
        for (AcDbObjectId space : {data_.modelSpace, data_.paperSpace})
            if (auto* block = AcDbBlockTableRecord::cast(kelvo::drawing::peekObject(space))) {
                filer_.setPaperSpace(space == data_.paperSpace);
                blockEntities(*block);
            }
        filer_.setPaperSpace(false);
        endSection();
    }

    void objects() {
        section(L"OBJECTS");
        if (auto* root = kelvo::drawing::peekObject(data_.namedObjects)) object(*root);
        for (AcDbObject* o : others_)
            if (o->objectId() != data_.namedObjects) object(*o);
        endSection();
    }

    const AcDbDatabase& db_;
    DatabaseData& data_;
    TextCodec codec_;
    Writer w_;
    DxfOutFiler filer_;
    std::uint64_t nextHandle_ = 1;
    std::vector<AcDbObject*> others_;
    struct CustomClass {
        std::wstring name, app;
        int proxyFlags = 0;
        bool entity = false;
        int count = 0;
    };
    std::map<std::wstring, CustomClass> custom_;  // by DXF name
};

}  // namespace

std::string writeDrawingDxf(const AcDbDatabase& db) {
    std::string out;
    DrawingWriter(db, out).write();
    return out;
}

}  // namespace kelvo::host::dxf
