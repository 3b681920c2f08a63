// What a proxy keeps of the object it stands for.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "adsdef.h"
#include "dbfiler.h"

namespace kelvo::drawing {

struct ProxyData {
    ~ProxyData();
    void setDxfItems(resbuf* items);  // takes the chain

    std::wstring className, dxfName, appName;
    int proxyFlags = 0;
    bool fromDwg = false;  // dwgBytes is the object's whole stream
    std::vector<std::uint8_t> dwgBytes;
    resbuf* dxfItems = nullptr;  // the groups after the common part
    // Read from a DXF file: the same groups as the file has them, written back unchanged
    // to a file (entityExtras: the groups of the common entity part the host keeps no
    // field for, such as the proxy graphics).
    bool fromDxfFile = false;
    std::vector<AcDbDxfGroupText> dxfGroups, entityExtras;
};

}  // namespace kelvo::drawing
