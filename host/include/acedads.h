// The host's C-level entity, table and selection-set calls, the same operations as the
// LISP functions entget, entmake, entmod, entdel, entnext, entlast, handent, tblsearch,
// tblnext, regapp and ssget/ssadd/ssname/sslength/ssdel/ssfree.
#pragma once

#include "adsdef.h"

// A new chain (-1 name, 0 type, the entity's groups); xdata of the listed applications
// (a chain of RTSTR names, "*" for all) follows a -3 group. Null when the name is not an
// entity of an open drawing or was deleted.
KELVO_HOST_API resbuf* acdbEntGet(const ads_name ent);
KELVO_HOST_API resbuf* acdbEntGetX(const ads_name ent, const resbuf* apps);
KELVO_HOST_API int acdbEntMake(const resbuf* ent);
KELVO_HOST_API int acdbEntMakeX(const resbuf* entm, ads_name result);
KELVO_HOST_API int acdbEntMod(const resbuf* ent);
KELVO_HOST_API int acdbEntDel(const ads_name ent);   // deletes, or brings back a deleted one
KELVO_HOST_API int acdbEntNext(const ads_name ent, ads_name result);   // null ent: first
KELVO_HOST_API int acdbEntLast(ads_name result);
KELVO_HOST_API int acdbHandEnt(const ACHAR* handle, ads_name entres);
KELVO_HOST_API int acdbEntUpd(const ads_name ent);
KELVO_HOST_API resbuf* acdbTblNext(const ACHAR* tblname, int rewind);
KELVO_HOST_API resbuf* acdbTblSearch(const ACHAR* tblname, const ACHAR* sym, int setnext);
KELVO_HOST_API int acdbTblObjName(const ACHAR* tblname, const ACHAR* sym, ads_name result);
KELVO_HOST_API int acdbRegApp(const ACHAR* appname);

// Selection sets. Only the "X" (whole drawing, with a filter list) and "L" (last entity)
// modes select without a person; other modes answer RTREJ.
KELVO_HOST_API int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2,
                             const resbuf* filter, ads_name ss);
KELVO_HOST_API int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result);
KELVO_HOST_API int acedSSDel(const ads_name ename, const ads_name ss);
KELVO_HOST_API int acedSSFree(const ads_name sname);
KELVO_HOST_API int acedSSLength(const ads_name sname, std::int32_t* len);
KELVO_HOST_API int acedSSName(const ads_name ss, std::int32_t i, ads_name entres);
KELVO_HOST_API int acedSSMemb(const ads_name ename, const ads_name ss);
