// Entity names and object ids. An entity name is the object's id: a name converts to an
// id only when it names an object of a database that is still open, and an id to a name
// likewise; anything else answers RTERROR.

#include "adslib.h"
#include "dbid.h"
#include "runtime/drawing/drawing_internal.h"

int acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    id.setNull();
    if (!name) return RTERROR;
    AcDbObjectId candidate(name[0]);
    if (!kelvo::drawing::peekObject(candidate)) return RTERROR;
    id = candidate;
    return RTNORM;
}

int acdbGetAdsName(ads_name name, AcDbObjectId id) {
    if (!name || !kelvo::drawing::peekObject(id)) return RTERROR;
    name[0] = id.asOldId();
    name[1] = 0;
    return RTNORM;
}
