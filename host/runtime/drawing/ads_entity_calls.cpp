// The host's C-level entity, table and selection-set calls over the current drawing.

#include <algorithm>
#include <cwchar>

#include "acedads.h"
#include "adslib.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/drawing/resbuf_chain.h"

using namespace kelvo::drawing;

namespace {

AcDbObjectId idOf(const ads_name name) {
    AcDbObjectId id;
    return name && acdbGetObjectId(id, name) == RTNORM ? id : AcDbObjectId();
}

int nameOf(AcDbObjectId id, ads_name out) {
    if (id.isNull()) return RTERROR;
    return acdbGetAdsName(out, id);
}

std::vector<AcDbObjectId>* setOf(const ads_name ss) { return ss ? selectionSet(ss[0]) : nullptr; }

}  // namespace

resbuf* acdbEntGet(const ads_name ent) { return entityData(idOf(ent), nullptr); }

resbuf* acdbEntGetX(const ads_name ent, const resbuf* apps) {
    std::vector<std::wstring> names;
    for (const resbuf* rb = apps; rb; rb = rb->rbnext)
        if (rb->restype == RTSTR && rb->resval.rstring) names.push_back(rb->resval.rstring);
    return entityData(idOf(ent), &names);
}

int acdbEntMake(const resbuf* ent) {
    AcDbDatabase* db = workingDatabase();
    if (!db || !ent) return RTERROR;
    return makeFromList(*db, ent).status == Acad::eOk ? RTNORM : RTREJ;
}

int acdbEntMakeX(const resbuf* ent, ads_name result) {
    AcDbDatabase* db = workingDatabase();
    if (!db || !ent) return RTERROR;
    MakeResult made = makeFromList(*db, ent);
    if (made.status != Acad::eOk) return RTREJ;
    return made.id.isNull() ? RTNORM : nameOf(made.id, result);
}

int acdbEntMod(const resbuf* ent) { return modifyFromList(ent) == Acad::eOk ? RTNORM : RTREJ; }
int acdbEntDel(const ads_name ent) { return deleteOrRestore(idOf(ent)) == Acad::eOk ? RTNORM : RTERROR; }
int acdbEntUpd(const ads_name ent) { return idOf(ent).isNull() ? RTERROR : RTNORM; }

int acdbEntNext(const ads_name ent, ads_name result) {
    AcDbDatabase* db = workingDatabase();
    if (!db) return RTERROR;
    AcDbObjectId after;
    if (ent && (ent[0] != 0 || ent[1] != 0)) {
        after = idOf(ent);
        if (after.isNull()) return RTERROR;
    }
    return nameOf(nextEntity(*db, after), result);
}

int acdbEntLast(ads_name result) {
    AcDbDatabase* db = workingDatabase();
    return db ? nameOf(lastEntity(*db), result) : RTERROR;
}

int acdbHandEnt(const ACHAR* handle, ads_name entres) {
    AcDbDatabase* db = workingDatabase();
    AcDbHandle h(handle);
    AcDbObjectId id;
    if (!db || h.isNull() || db->getAcDbObjectId(id, false, h) != Acad::eOk) return RTERROR;
    // An erased entity is still found, as handent finds it, so that it can be brought back.
    return nameOf(id, entres);
}

resbuf* acdbTblNext(const ACHAR* tblname, int rewind) {
    AcDbDatabase* db = workingDatabase();
    return db && tblname ? nextTableEntry(*db, tblname, rewind != 0) : nullptr;
}

resbuf* acdbTblSearch(const ACHAR* tblname, const ACHAR* sym, int setnext) {
    AcDbDatabase* db = workingDatabase();
    return db && tblname && sym ? tableEntry(*db, tblname, sym, setnext != 0) : nullptr;
}

int acdbTblObjName(const ACHAR* tblname, const ACHAR* sym, ads_name result) {
    AcDbDatabase* db = workingDatabase();
    if (!db || !tblname || !sym) return RTERROR;
    std::wstring t = upperName(tblname);
    AcDbObjectId tableId = t == L"LAYER" ? db->layerTableId() : t == L"LTYPE" ? db->linetypeTableId()
                         : t == L"STYLE" ? db->textStyleTableId() : t == L"APPID" ? db->regAppTableId()
                         : t == L"BLOCK" ? db->blockTableId() : AcDbObjectId();
    auto* table = AcDbSymbolTable::cast(peekObject(tableId));
    AcDbObjectId id;
    if (!table || table->getAt(sym, id) != Acad::eOk) return RTERROR;
    return nameOf(id, result);
}

int acdbRegApp(const ACHAR* appname) {
    AcDbDatabase* db = workingDatabase();
    return db && appname && registerApplication(*db, appname) ? RTNORM : RTERROR;
}

int acedSSGet(const ACHAR* str, const void*, const void*, const resbuf* filter, ads_name ss) {
    AcDbDatabase* db = workingDatabase();
    if (!db) return RTERROR;
    std::wstring mode = str ? upperName(str) : L"";
    std::vector<AcDbObjectId> ids;
    if (mode == L"X") {
        if (selectAll(*db, filter, ids) != Acad::eOk) return RTERROR;
    } else if (mode == L"L") {
        AcDbObjectId last = lastEntity(*db);
        if (!last.isNull()) ids.push_back(last);
    } else {
        return RTREJ;   // picking on the screen: not available in this host
    }
    if (ids.empty()) return RTERROR;
    ss[0] = newSelectionSet(std::move(ids));
    ss[1] = 0;
    return RTNORM;
}

int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result) {
    AcDbObjectId id = ename ? idOf(ename) : AcDbObjectId();
    if (ename && id.isNull()) return RTERROR;
    if (!sname) {
        result[0] = newSelectionSet(id.isNull() ? std::vector<AcDbObjectId>{} : std::vector<AcDbObjectId>{id});
        result[1] = 0;
        return RTNORM;
    }
    std::vector<AcDbObjectId>* set = setOf(sname);
    if (!set) return RTERROR;
    if (!id.isNull() && std::find(set->begin(), set->end(), id) == set->end()) set->push_back(id);
    result[0] = sname[0];
    result[1] = 0;
    return RTNORM;
}

int acedSSDel(const ads_name ename, const ads_name ss) {
    std::vector<AcDbObjectId>* set = setOf(ss);
    AcDbObjectId id = idOf(ename);
    auto it = set ? std::find(set->begin(), set->end(), id) : std::vector<AcDbObjectId>::iterator();
    if (!set || it == set->end()) return RTERROR;
    set->erase(it);
    return RTNORM;
}

int acedSSFree(const ads_name sname) { return sname && freeSelectionSet(sname[0]) ? RTNORM : RTERROR; }

int acedSSLength(const ads_name sname, std::int32_t* len) {
    std::vector<AcDbObjectId>* set = setOf(sname);
    if (!set || !len) return RTERROR;
    *len = static_cast<std::int32_t>(set->size());
    return RTNORM;
}

int acedSSName(const ads_name ss, std::int32_t i, ads_name entres) {
    std::vector<AcDbObjectId>* set = setOf(ss);
    if (!set || i < 0 || static_cast<std::size_t>(i) >= set->size()) return RTERROR;
    return nameOf((*set)[static_cast<std::size_t>(i)], entres);
}

int acedSSMemb(const ads_name ename, const ads_name ss) {
    std::vector<AcDbObjectId>* set = setOf(ss);
    AcDbObjectId id = idOf(ename);
    return set && !id.isNull() && std::find(set->begin(), set->end(), id) != set->end() ? RTNORM : RTERROR;
}
