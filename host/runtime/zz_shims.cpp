#include "adslib.h"
#include "dbid.h"
int acdbGetObjectId(AcDbObjectId&, const ads_name) { return RTERROR; }
int acdbGetAdsName(ads_name, AcDbObjectId) { return RTERROR; }
