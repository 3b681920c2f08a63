// Entity names and object ids. A name converts to an id only when it names an object of
// an open drawing's database, and an id to a name likewise. The drawing databases hold
// no objects yet (entities come with the drawing database), so every name and every id
// is unknown and both conversions answer RTERROR.

#include "adslib.h"
#include "dbid.h"

int acdbGetObjectId(AcDbObjectId& id, const ads_name) {
    id.setNull();
    return RTERROR;
}

int acdbGetAdsName(ads_name, AcDbObjectId) { return RTERROR; }
