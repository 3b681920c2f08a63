// The host's built-in run-time classes, registered in the class dictionary in parent
// order when the dictionary is first used.

#include "dbdict.h"
#include "dbents.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbproxy.h"
#include "dbsolid.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"

namespace kelvo::drawing {
namespace {

struct Builtin {
    const wchar_t* name;
    const wchar_t* parent;
    const wchar_t* dxfName;
    AcRxPseudoConstructor make;
};

template <class T>
AcRxObject* make() {
    return new T();
}

const std::vector<Builtin>& builtins() {
    static const std::vector<Builtin> list = {
        {L"AcGiDrawable", L"AcRxObject", L"", nullptr},
        {L"AcDbDatabase", L"AcRxObject", L"", nullptr},
        {L"AcDbObject", L"AcGiDrawable", L"", nullptr},
        {L"AcDbEntity", L"AcDbObject", L"", nullptr},
        {L"AcDbCurve", L"AcDbEntity", L"", nullptr},
        {L"AcDbSymbolTable", L"AcDbObject", L"", nullptr},
        {L"AcDbBlockTable", L"AcDbSymbolTable", L"", nullptr},
        {L"AcDbLayerTable", L"AcDbSymbolTable", L"", nullptr},
        {L"AcDbTextStyleTable", L"AcDbSymbolTable", L"", nullptr},
        {L"AcDbLinetypeTable", L"AcDbSymbolTable", L"", nullptr},
        {L"AcDbRegAppTable", L"AcDbSymbolTable", L"", nullptr},
        {L"AcDbSymbolTableRecord", L"AcDbObject", L"", nullptr},
        {L"AcDbBlockTableRecord", L"AcDbSymbolTableRecord", L"BLOCK_RECORD",
         make<AcDbBlockTableRecord>},
        {L"AcDbLayerTableRecord", L"AcDbSymbolTableRecord", L"LAYER", make<AcDbLayerTableRecord>},
        {L"AcDbTextStyleTableRecord", L"AcDbSymbolTableRecord", L"STYLE",
         make<AcDbTextStyleTableRecord>},
        {L"AcDbLinetypeTableRecord", L"AcDbSymbolTableRecord", L"LTYPE",
         make<AcDbLinetypeTableRecord>},
        {L"AcDbRegAppTableRecord", L"AcDbSymbolTableRecord", L"APPID", make<AcDbRegAppTableRecord>},
        {L"AcDbDictionary", L"AcDbObject", L"DICTIONARY", make<AcDbDictionary>},
        {L"AcDbXrecord", L"AcDbObject", L"XRECORD", make<AcDbXrecord>},
        {L"AcDbBlockBegin", L"AcDbEntity", L"BLOCK", make<AcDbBlockBegin>},
        {L"AcDbBlockEnd", L"AcDbEntity", L"ENDBLK", make<AcDbBlockEnd>},
        {L"AcDbSequenceEnd", L"AcDbEntity", L"SEQEND", make<AcDbSequenceEnd>},
        {L"AcDbLine", L"AcDbCurve", L"LINE", make<AcDbLine>},
        {L"AcDbCircle", L"AcDbCurve", L"CIRCLE", make<AcDbCircle>},
        {L"AcDbArc", L"AcDbCircle", L"ARC", make<AcDbArc>},
        {L"AcDbPoint", L"AcDbEntity", L"POINT", make<AcDbPoint>},
        {L"AcDbText", L"AcDbEntity", L"TEXT", make<AcDbText>},
        {L"AcDbAttributeDefinition", L"AcDbText", L"ATTDEF", make<AcDbAttributeDefinition>},
        {L"AcDbAttribute", L"AcDbText", L"ATTRIB", make<AcDbAttribute>},
        {L"AcDbBlockReference", L"AcDbEntity", L"INSERT", make<AcDbBlockReference>},
        {L"AcDbVertex", L"AcDbEntity", L"", nullptr},
        {L"AcDb2dVertex", L"AcDbVertex", L"VERTEX", make<AcDb2dVertex>},
        {L"AcDb2dPolyline", L"AcDbCurve", L"POLYLINE", make<AcDb2dPolyline>},
        {L"AcDbPolyline", L"AcDbCurve", L"LWPOLYLINE", make<AcDbPolyline>},
        {L"AcDbMText", L"AcDbEntity", L"MTEXT", make<AcDbMText>},
        {L"AcDbLeader", L"AcDbCurve", L"LEADER", make<AcDbLeader>},
        {L"AcDbFace", L"AcDbEntity", L"3DFACE", make<AcDbFace>},
        {L"AcDbSolid", L"AcDbEntity", L"SOLID", make<AcDbSolid>},
        {L"AcDbProxyEntity", L"AcDbEntity", L"ACAD_PROXY_ENTITY", make<AcDbProxyEntity>},
        {L"AcDbProxyObject", L"AcDbObject", L"ACAD_PROXY_OBJECT", make<AcDbProxyObject>},
    };
    return list;
}

}  // namespace

void registerBuiltinClasses() {
    for (const Builtin& b : builtins())
        newAcRxClass(b.name, b.parent, AcDb::kDHL_CURRENT, 0, 0, b.make, b.dxfName, L"ObjectDBX");
}

bool isBuiltinClass(const AcRxClass* cls) {
    if (!cls) return false;
    for (const Builtin& b : builtins())
        if (std::wstring_view(cls->name()) == b.name) return true;
    return std::wstring_view(cls->name()) == L"AcRxObject" ||
           std::wstring_view(cls->name()) == L"AcRxClass";
}

}  // namespace kelvo::drawing
