// What a proxy keeps of the object it stands for.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "adsdef.h"

namespace kelvo::drawing {

struct ProxyData {
    ~ProxyData();
    void setDxfItems(resbuf* items);   // takes the chain

    std::wstring className, dxfName, appName;
    int proxyFlags = 0;
    bool fromDwg = false;                 // dwgBytes is the object's whole stream
    std::vector<std::uint8_t> dwgBytes;
    resbuf* dxfItems = nullptr;           // the groups after the common part
};

}  // namespace kelvo::drawing
