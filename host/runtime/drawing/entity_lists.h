// Entities and table records as lists of DXF groups: what entget, entmake, entmod,
// entdel, entnext, entlast, handent, tblsearch, tblnext and regapp do, on flat resbuf
// chains as the host's C calls see them (the extended data follows a -3 node: 1001 name,
// then its groups, for each application).
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

namespace kelvo::drawing {

// The entity's list: (-1 name) (0 type) then its groups; with `apps` (names, wildcards
// allowed, "*" for all), the extended data of the matching applications after a -3 node.
// An entity of model or paper space has (67 . 0) or (67 . 1) and (410 . layout) after its
// (100 . "AcDbEntity"). Null for an id that is not an object of an open drawing, or an
// erased one.
resbuf* entityData(AcDbObjectId id, const std::vector<std::wstring>* apps);
// Whether LISP shows the points of group `code` of this list as 2D points: the vertices
// (10) of a lightweight polyline. The chain itself holds them with z 0.
bool listsPointsIn2d(const resbuf* list, int code);

struct MakeResult {
    MakeResult() = default;
    MakeResult(Acad::ErrorStatus s) : status(s) {}   // NOLINT: a failure converts
    Acad::ErrorStatus status = Acad::eOk;
    AcDbObjectId id;          // the entity or record made (null while a block or complex
                              // entity is still being made)
    std::wstring blockName;   // set when ENDBLK completed a block definition
};
// Makes an entity (appended to model space, or to the block definition being made),
// starts or ends a block definition (BLOCK, ENDBLK), builds a complex entity (POLYLINE or
// INSERT with attributes, then its VERTEX or ATTRIB lists, then SEQEND), or adds a table
// record (LAYER, STYLE, LTYPE, APPID).
MakeResult makeFromList(AcDbDatabase& db, const resbuf* list);
// Changes the object named by the list's -1 group to the list's groups.
Acad::ErrorStatus modifyFromList(const resbuf* list);
// Erases the entity, or brings back an erased one.
Acad::ErrorStatus deleteOrRestore(AcDbObjectId id);
// The entity after `after` (the first of model space when null): the attributes or
// vertices of an entity that has them come after it, then its SEQEND.
AcDbObjectId nextEntity(const AcDbDatabase& db, AcDbObjectId after);
AcDbObjectId lastEntity(const AcDbDatabase& db);
// A table entry as tblsearch shows it: (0 . "LAYER") (2 . name) (70 . flags) and the
// record's own groups; a block's entry has (10 base point) and (-2 . first entity).
resbuf* tableEntry(const AcDbDatabase& db, const std::wstring& table, const std::wstring& name,
                   bool setNext);
resbuf* nextTableEntry(const AcDbDatabase& db, const std::wstring& table, bool rewind);
// Adds an application name; false when it is there already or not a valid name.
bool registerApplication(AcDbDatabase& db, const std::wstring& name);

// The entities of the whole drawing (model space and paper space, not erased) that pass
// a selection filter (null: all); eInvalidInput for a malformed filter.
Acad::ErrorStatus selectAll(const AcDbDatabase& db, const resbuf* filter,
                            std::vector<AcDbObjectId>& out);

// Selection sets of the process, by number.
std::int64_t newSelectionSet(std::vector<AcDbObjectId> ids);
std::vector<AcDbObjectId>* selectionSet(std::int64_t number);
bool freeSelectionSet(std::int64_t number);

}  // namespace kelvo::drawing
