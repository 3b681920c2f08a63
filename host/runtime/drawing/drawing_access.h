// What the host's file readers and writers (DXF, the binary drawing file) and its
// renderer need from a drawing database beyond the public object interface: its header
// variables, its tables and blocks in file order, the classes it uses, objects created by
// DXF name, and objects added under the handles a file gives them.
//
// Reading a file: make the database with AcDbDatabase(false) (no default tables), create
// each object with createObjectByDxfName, read its fields with dxfInFields or
// dwgInFields (references name handles: AcDbDatabase::getAcDbObjectId(id, true, handle)
// gives an id for a handle not read yet), add it with adoptObject under its handle and
// owner, set the tables with setTableIds, then call finishReading, which fills in what
// the file lacked (standard tables and records, model space) and links block markers.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "dbmain.h"
#include "dbsymtb.h"

namespace kelvo::drawing {

// --- header variables ----------------------------------------------------------------
// A value: real, integer, text (names of table records are given as text), point, or an
// id (only while setting).
using HeaderValue = std::variant<double, int, std::wstring, AcGePoint3d, AcDbObjectId>;

struct HeaderVariable {
    std::wstring name;   // with "$": "$DIMSCALE"
    int code;            // its DXF group code (10 for points)
    HeaderValue value;
};

// Every header variable the host keeps, in file order.
std::vector<HeaderVariable> headerVariables(const AcDbDatabase& db);
// One variable by name, with or without "$", any case ("DIMSCALE", "$dimscale"); nullopt
// when the host does not keep it. "$HANDSEED" answers the next handle as hex text.
std::optional<HeaderValue> getHeaderVariable(const AcDbDatabase& db, std::wstring_view name);
// Sets a variable: numbers convert between integer and real where the variable is real;
// a table-record variable ($CLAYER, $TEXTSTYLE, $CELTYPE) takes the record's name.
// eKeyNotFound for an unknown variable or record, eInvalidInput for a wrong kind of value.
Acad::ErrorStatus setHeaderVariable(AcDbDatabase& db, std::wstring_view name,
                                    const HeaderValue& value);

// --- tables, blocks, objects ---------------------------------------------------------
struct SymbolTableInfo {
    const wchar_t* dxfName;   // "LAYER", "LTYPE", "STYLE", "APPID", "BLOCK_RECORD"
    AcDbObjectId tableId;
};
// The symbol tables of the database in file order (LTYPE, LAYER, STYLE, APPID,
// BLOCK_RECORD); a table the database lacks has a null id.
std::vector<SymbolTableInfo> symbolTables(const AcDbDatabase& db);
// The records of a table, in order, without erased ones.
AcDbObjectIdArray tableRecords(AcDbObjectId tableId);
// Block definitions in order (model space and paper space first), without erased ones.
AcDbObjectIdArray blockDefinitions(const AcDbDatabase& db);
// The entities of a block definition in order, without erased ones. Sub-entities
// (attributes, vertices, SEQEND) are not listed: their owner's attributeIds/vertexIds and
// seqendId give them.
AcDbObjectIdArray blockEntities(AcDbObjectId blockId);
// Every object of the database that is not erased, in handle order.
AcDbObjectIdArray allObjects(const AcDbDatabase& db);

// The classes of objects in the database that are not the host's built-in classes (the
// CLASSES section), each once, in the order first met.
std::vector<AcRxClass*> customClasses(const AcDbDatabase& db);
// Whether a class is one of the host's own (LINE, LAYER ...).
bool isBuiltinClass(const AcRxClass* cls);

// A new object of the class registered under the DXF name. When no class has that name
// the answer is a proxy (AcDbProxyEntity when isEntity, else AcDbProxyObject) that keeps
// the DXF name and reads and writes back whatever data it is given. Null only for
// names of the file structure (SECTION, TABLE, ENDTAB, EOF).
AcDbObject* createObjectByDxfName(const wchar_t* dxfName, bool isEntity = true);

// Adds a new object read from a file under its handle and owner: an entity whose owner is
// a block table record is appended to that block; a symbol table record to its table
// (the table object must exist); anything else just gets the owner. The object is closed.
// eHandleInUse when an object with that handle is already there.
Acad::ErrorStatus adoptObject(AcDbDatabase& db, AcDbObject* object, AcDbHandle handle,
                              AcDbObjectId ownerId, AcDbObjectId& id);
// Puts an entity after all others in its block (used for entities read before their block
// record was known); the entity must be owned by the block already.
Acad::ErrorStatus appendToBlock(AcDbObjectId blockId, AcDbObjectId entityId);
// Names an object in a dictionary without changing its owner.
Acad::ErrorStatus setDictionaryEntry(AcDbObjectId dictionaryId, const wchar_t* name,
                                     AcDbObjectId entryId);

// One object's DWG stream, as its dwgOut writes it (fields, then extended data), and
// back. Reading creates the object of the named class; when the class is unknown, or its
// reader answers eMakeMeProxy (data of a newer version), the answer is a proxy that keeps
// the stream and writes it back unchanged. The object is not added to db; references are
// resolved in db by handle (creating the ids of handles not read yet).
Acad::ErrorStatus writeObjectToDwg(const AcDbObject& object, std::vector<std::uint8_t>& bytes);
Acad::ErrorStatus readObjectFromDwg(const std::wstring& className, const std::vector<std::uint8_t>& bytes,
                                    AcDbDatabase& db, AcDbObject*& object, bool isEntity = true);

enum class TableKind { Block, Layer, TextStyle, Linetype, RegApp, NamedObjects };
// Makes an object the database's table of that kind (or its named-object dictionary).
Acad::ErrorStatus setTableId(AcDbDatabase& db, TableKind kind, AcDbObjectId id);
// Completes a database read from a file: creates any missing table, standard record,
// model and paper space (with new handles above every handle read), links BLOCK/ENDBLK
// markers to their block records, resolves the default ids of the header, and reports
// (through `problems`, one line each) references to handles that never appeared.
Acad::ErrorStatus finishReading(AcDbDatabase& db, std::vector<std::wstring>* problems = nullptr);

// --- reading and writing whole files -------------------------------------------------
// The file layer registers its readers and writers here; AcDbDatabase::readDwgFile,
// saveAs, dxfIn and dxfOut call them (eNotImplementedYet while none is registered).
using DrawingFileReader = Acad::ErrorStatus (*)(AcDbDatabase& db, const std::wstring& path);
using DrawingFileWriter = Acad::ErrorStatus (*)(const AcDbDatabase& db, const std::wstring& path);
void registerDwgReader(DrawingFileReader reader);
void registerDwgWriter(DrawingFileWriter writer);
void registerDxfReader(DrawingFileReader reader);
void registerDxfWriter(DrawingFileWriter writer);

}  // namespace kelvo::drawing
