// Entity names and object ids. An entity name's first word is the object's id, so the
// two convert into each other; a null id has no name and a zero name has no object.

#include "adslib.h"
#include "dbid.h"

int acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    if (!name || name[0] == 0) {
        id.setNull();
        return RTERROR;
    }
    id = AcDbObjectId(name[0]);
    return RTNORM;
}

int acdbGetAdsName(ads_name name, AcDbObjectId id) {
    if (!name || id.isNull()) return RTERROR;
    name[0] = id.asOldId();
    name[1] = 0;
    return RTNORM;
}
