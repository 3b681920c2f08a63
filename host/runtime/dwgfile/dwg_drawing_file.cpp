// This host's binary drawing file: the whole database through the DWG filer.

#include "runtime/dwgfile/dwg_drawing_file.h"

#include <cstring>

#include "adslib.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/drawing/proxy_data.h"
#include "utf8.h"

namespace kelvo::files {
namespace {

using kelvo::drawing::DatabaseAccess;
using kelvo::drawing::DatabaseData;
using kelvo::drawing::DwgMemoryFiler;
using kelvo::drawing::HeaderValue;

constexpr Adesk::Int32 kFormatVersion = 1;

// Header values by kind, as the variant's index.
enum class ValueKind : Adesk::UInt8 { Real, Integer, Text, Point, Reference };

void say(std::wstring* why, const std::wstring& text) {
    if (why) *why = text;
}

std::uint64_t handleOf(AcDbObjectId id) { return id.isNull() ? 0 : id.handle().value(); }

// --- writing ---------------------------------------------------------------------------

void writeHeaderValue(DwgMemoryFiler& f, const HeaderValue& value) {
    f.writeUInt8(static_cast<Adesk::UInt8>(value.index()));
    switch (static_cast<ValueKind>(value.index())) {
        case ValueKind::Real: f.writeDouble(std::get<double>(value)); break;
        case ValueKind::Integer: f.writeInt32(std::get<int>(value)); break;
        case ValueKind::Text: f.writeString(std::get<std::wstring>(value).c_str()); break;
        case ValueKind::Point: f.writePoint3d(std::get<AcGePoint3d>(value)); break;
        case ValueKind::Reference: f.writeUInt64(handleOf(std::get<AcDbObjectId>(value))); break;
    }
}

void writeHeader(DwgMemoryFiler& f, const DatabaseData& d) {
    f.writeInt32(static_cast<Adesk::Int32>(d.header.size()));
    for (const auto& [name, value] : d.header) {
        f.writeString(name.c_str());
        writeHeaderValue(f, value);
    }
}

Acad::ErrorStatus writeObjects(DwgMemoryFiler& f, const AcDbDatabase& db, std::wstring* why) {
    AcDbObjectIdArray ids = kelvo::drawing::allObjects(db);
    f.writeInt32(ids.length());
    for (AcDbObjectId id : ids) {
        const AcDbObject* object = kelvo::drawing::peekObject(id);
        std::vector<std::uint8_t> stream;
        Acad::ErrorStatus es = kelvo::drawing::writeObjectToDwg(*object, stream);
        const ACHAR* className = object->isA() ? object->isA()->name() : L"";
        if (auto* proxy = kelvo::drawing::ObjectAccess::proxy(*object); proxy && proxy->fromDwg)
            className = proxy->className.c_str();   // its stream is its original class's
        if (es != Acad::eOk) {
            say(why, std::wstring(L"cannot write an object of class ") + className + L" (" +
                         acadErrorStatusText(es) + L")");
            return es;
        }
        f.writeString(className);
        f.writeBool(AcDbEntity::cast(object) != nullptr);
        f.writeUInt64(handleOf(id));
        f.writeInt32(static_cast<Adesk::Int32>(stream.size()));
        f.writeBytes(stream.data(), stream.size());
    }
    return f.filerStatus();
}

// --- reading ---------------------------------------------------------------------------

AcDbObjectId idOf(AcDbDatabase& db, std::uint64_t handle) {
    AcDbObjectId id;
    if (handle) db.getAcDbObjectId(id, true, AcDbHandle(handle));
    return id;
}

bool readHeaderValue(DwgMemoryFiler& f, AcDbDatabase& db, HeaderValue& value) {
    Adesk::UInt8 kind = 0;
    f.readUInt8(&kind);
    switch (static_cast<ValueKind>(kind)) {
        case ValueKind::Real: {
            double v = 0;
            f.readDouble(&v);
            value = v;
            break;
        }
        case ValueKind::Integer: {
            Adesk::Int32 v = 0;
            f.readInt32(&v);
            value = static_cast<int>(v);
            break;
        }
        case ValueKind::Text: {
            ACHAR* text = nullptr;
            f.readString(&text);
            value = std::wstring(text ? text : L"");
            acutDelString(text);
            break;
        }
        case ValueKind::Point: {
            AcGePoint3d p;
            f.readPoint3d(&p);
            value = p;
            break;
        }
        case ValueKind::Reference: {
            Adesk::UInt64 h = 0;
            f.readUInt64(&h);
            value = idOf(db, h);
            break;
        }
        default: return false;
    }
    return f.filerStatus() == Acad::eOk;
}

Acad::ErrorStatus readHeader(DwgMemoryFiler& f, AcDbDatabase& db) {
    DatabaseData& d = DatabaseAccess::data(db);
    Adesk::Int32 n = 0;
    f.readInt32(&n);
    for (Adesk::Int32 i = 0; i < n && f.filerStatus() == Acad::eOk; ++i) {
        ACHAR* name = nullptr;
        f.readString(&name);
        std::wstring key = name ? name : L"";
        acutDelString(name);
        HeaderValue value;
        if (!readHeaderValue(f, db, value)) return Acad::eDwgObjectImproperlyRead;
        d.header[key] = value;
    }
    return f.filerStatus();
}

Acad::ErrorStatus readTables(DwgMemoryFiler& f, AcDbDatabase& db, std::vector<AcDbObjectId>& tables) {
    for (int i = 0; i < 6; ++i) {
        Adesk::UInt64 h = 0;
        f.readUInt64(&h);
        tables.push_back(idOf(db, h));
    }
    Adesk::UInt64 seed = 0;
    f.readUInt64(&seed);
    DatabaseData& d = DatabaseAccess::data(db);
    if (seed > d.handseed) d.handseed = seed;
    return f.filerStatus();
}

// The symbol tables (their classes have no constructor in the class dictionary); object
// stays null for other classes.
Acad::ErrorStatus readTable(const std::wstring& className, const std::vector<std::uint8_t>& stream,
                            AcDbDatabase& db, AcDbObject*& object) {
    object = nullptr;
    if (className == L"AcDbBlockTable") object = new AcDbBlockTable();
    else if (className == L"AcDbLayerTable") object = new AcDbLayerTable();
    else if (className == L"AcDbTextStyleTable") object = new AcDbTextStyleTable();
    else if (className == L"AcDbLinetypeTable") object = new AcDbLinetypeTable();
    else if (className == L"AcDbRegAppTable") object = new AcDbRegAppTable();
    if (!object) return Acad::eOk;
    DwgMemoryFiler filer(AcDb::kFileFiler, &db);
    filer.setBytes(stream);
    Acad::ErrorStatus es = object->dwgIn(&filer);
    if (es != Acad::eOk) {
        delete object;
        object = nullptr;
    }
    return es;
}

Acad::ErrorStatus readObject(DwgMemoryFiler& f, AcDbDatabase& db, std::wstring* why) {
    ACHAR* name = nullptr;
    bool entity = false;
    Adesk::UInt64 handle = 0;
    Adesk::Int32 size = 0;
    f.readString(&name);
    std::wstring className = name ? name : L"";
    acutDelString(name);
    f.readBool(&entity);
    f.readUInt64(&handle);
    f.readInt32(&size);
    // A size beyond the bytes left is damage, found before anything is allocated for it.
    const auto left = static_cast<Adesk::Int64>(f.bytes().size()) - f.tell();
    if (f.filerStatus() != Acad::eOk || size < 0 || size > left)
        return Acad::eDwgObjectImproperlyRead;
    std::vector<std::uint8_t> stream(static_cast<size_t>(size));
    if (f.readBytes(stream.data(), stream.size()) != Acad::eOk) return f.filerStatus();
    AcDbObject* object = nullptr;
    Acad::ErrorStatus es = readTable(className, stream, db, object);
    if (es == Acad::eOk && !object) es = kelvo::drawing::readObjectFromDwg(className, stream, db, object, entity);
    if (es != Acad::eOk) {
        say(why, L"cannot read an object of class " + className + L" (" + acadErrorStatusText(es) + L")");
        return es;
    }
    AcDbObjectId owner = object->ownerId();
    AcDbObjectId id;
    es = kelvo::drawing::addObject(db, object, id, AcDbHandle(handle));
    if (es != Acad::eOk) {
        delete object;
        say(why, L"two objects under one handle in the file");
        return es;
    }
    kelvo::drawing::ObjectAccess::setOwner(*object, owner);
    object->close();
    return Acad::eOk;
}

bool isEmpty(const AcDbDatabase& db) {
    for (const auto& [handle, stub] : DatabaseAccess::data(db).stubs)
        if (stub->object) return false;
    return true;
}

}  // namespace

Acad::ErrorStatus encodeDwgDrawing(const AcDbDatabase& db, std::vector<std::uint8_t>& bytes,
                                   std::wstring* why) {
    const DatabaseData& d = DatabaseAccess::data(db);
    DwgMemoryFiler f(AcDb::kFileFiler, const_cast<AcDbDatabase*>(&db));
    f.writeInt32(kFormatVersion);
    writeHeader(f, d);
    for (AcDbObjectId table : {d.blockTable, d.layerTable, d.textStyleTable, d.linetypeTable,
                               d.regAppTable, d.namedObjects})
        f.writeUInt64(handleOf(table));
    f.writeUInt64(d.handseed);
    if (Acad::ErrorStatus es = writeObjects(f, db, why); es != Acad::eOk) return es;
    bytes.assign(kDwgSignature.begin(), kDwgSignature.end());
    bytes.insert(bytes.end(), f.bytes().begin(), f.bytes().end());
    return Acad::eOk;
}

Acad::ErrorStatus decodeDwgDrawing(AcDbDatabase& db, const std::vector<std::uint8_t>& bytes,
                                   std::wstring* why) {
    if (!isEmpty(db)) {
        say(why, L"a drawing file is read into a new, empty database");
        return Acad::eWrongDatabase;
    }
    if (bytes.size() < kDwgSignature.size() ||
        std::memcmp(bytes.data(), kDwgSignature.data(), kDwgSignature.size()) != 0) {
        say(why, L"not a drawing file of this host");
        return Acad::eInvalidDwgVersion;
    }
    DwgMemoryFiler f(AcDb::kFileFiler, &db);
    f.setBytes(std::vector<std::uint8_t>(bytes.begin() + kDwgSignature.size(), bytes.end()));
    Adesk::Int32 version = 0;
    f.readInt32(&version);
    if (f.filerStatus() == Acad::eOk && version != kFormatVersion) {
        say(why, L"a drawing file of a newer format (" + std::to_wstring(version) + L")");
        return Acad::eInvalidDwgVersion;
    }
    std::vector<AcDbObjectId> tables;
    Adesk::Int32 count = 0;
    Acad::ErrorStatus es = readHeader(f, db);
    if (es == Acad::eOk) es = readTables(f, db, tables);
    if (es == Acad::eOk) es = f.readInt32(&count);
    for (Adesk::Int32 i = 0; i < count && es == Acad::eOk; ++i) es = readObject(f, db, why);
    if (es != Acad::eOk) {
        if (why && why->empty()) say(why, L"the file is damaged (" + std::wstring(acadErrorStatusText(es)) + L")");
        return es;
    }
    using kelvo::drawing::TableKind;
    const TableKind kinds[] = {TableKind::Block, TableKind::Layer, TableKind::TextStyle,
                               TableKind::Linetype, TableKind::RegApp, TableKind::NamedObjects};
    for (int i = 0; i < 6; ++i)
        if (!tables[i].isNull()) kelvo::drawing::setTableId(db, kinds[i], tables[i]);
    return kelvo::drawing::finishReading(db);
}

}  // namespace kelvo::files
