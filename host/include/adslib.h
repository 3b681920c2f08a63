// The host's C-level programming interface: external function registration, argument
// and result calls, value-list construction, printing, variables and object names.
#pragma once

#include "adsdef.h"

class AcDbObjectId;

// --- external functions ------------------------------------------------------------
// acedDefun defines LISP name `name` with function code `code` in the current document;
// acedRegFunc attaches the callback that the host calls for that code. A callback takes
// no arguments and returns RSRSLT or RSERR.
using AcedFunction = int (*)();
KELVO_HOST_API int acedDefun(const ACHAR* name, int code);
KELVO_HOST_API int acedUndef(const ACHAR* name, int code);
KELVO_HOST_API int acedRegFunc(AcedFunction callback, int code);
KELVO_HOST_API int acedGetFunCode();

// The arguments of the external call in progress, as a new list that the caller owns
// and releases with acutRelRb. Null when the call has no arguments.
KELVO_HOST_API resbuf* acedGetArgs();

// Results of the external call in progress. The list given to acedRetList and acedRetVal
// is copied; the caller keeps ownership of it.
KELVO_HOST_API int acedRetNil();
KELVO_HOST_API int acedRetT();
KELVO_HOST_API int acedRetVoid();
KELVO_HOST_API int acedRetInt(int value);
KELVO_HOST_API int acedRetReal(ads_real value);
KELVO_HOST_API int acedRetStr(const ACHAR* value);
KELVO_HOST_API int acedRetPoint(const ads_point value);
KELVO_HOST_API int acedRetName(const ads_name value, int type);
KELVO_HOST_API int acedRetVal(const resbuf* value);
KELVO_HOST_API int acedRetList(const resbuf* list);

// Calls a LISP function: `args` starts with the function's name (RTSTR) followed by its
// arguments. On RTNORM *result holds the function's value as a new chain the caller
// releases (a single RTNIL node for nil). RTERROR when the call failed.
KELVO_HOST_API int acedInvoke(const resbuf* args, resbuf** result);

// Host system variables. acedGetVar fills *result in place; a string value is a new
// allocation that the caller frees with acutDelString. RTERROR for an unknown name.
KELVO_HOST_API int acedGetVar(const ACHAR* name, resbuf* result);
KELVO_HOST_API int acedSetVar(const ACHAR* name, const resbuf* value);

KELVO_HOST_API int acedTextScr();
KELVO_HOST_API int acedGraphScr();

// --- value lists ---------------------------------------------------------------------
// acutBuildList(type, value, type, value, ..., 0): RTSTR takes const ACHAR*, RTREAL a
// double, RTSHORT an int, RTLONG an int32, RTPOINT/RT3DPOINT an ads_point, RTENAME/RTPICKS
// an ads_name, RTLB/RTLE/RTDOTE/RTNIL/RTT nothing. Group codes take the value of their
// kind (rbKindOf). Returns null on an unknown code.
KELVO_HOST_API resbuf* acutBuildList(int type, ...);
KELVO_HOST_API resbuf* acutNewRb(int type);
KELVO_HOST_API int acutRelRb(resbuf* list);   // releases the whole chain and its strings
KELVO_HOST_API int acutNewString(const ACHAR* source, ACHAR*& dest);
KELVO_HOST_API void acutDelString(ACHAR*& string);

// Prints on the command line. `format` follows printf with wide-string arguments for %s
// and %ls (the host's convention: %s takes an ACHAR string).
KELVO_HOST_API int acutPrintf(const ACHAR* format, ...);

// --- object names ------------------------------------------------------------------
KELVO_HOST_API int acdbGetObjectId(AcDbObjectId& id, const ads_name name);
KELVO_HOST_API int acdbGetAdsName(ads_name name, AcDbObjectId id);
