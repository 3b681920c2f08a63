// The drawing database. Each open document owns one.
#pragma once

#include "adsdef.h"
#include "dbid.h"

class KELVO_HOST_API AcDbDatabase {
public:
    AcDbDatabase();
    virtual ~AcDbDatabase();
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;
};
