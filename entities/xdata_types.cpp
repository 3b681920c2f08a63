// Group code to LISP result type.
#include "entities/xdata_types.h"

#include "adsdef.h"

namespace kelvo {
namespace {

struct CodeRange {
    int first, last;
    short type;
};

// In the order they are tried: 1004 before the 999-1009 text range.
constexpr CodeRange kRanges[] = {
    {0, 9, RTSTR},         {10, 17, RT3DPOINT},   {38, 59, RTREAL},     {60, 79, RTSHORT},
    {90, 99, RTLONG},      {100, 102, RTSTR},     {105, 105, RTSTR},    {110, 112, RTSTR},
    {140, 149, RTREAL},    {170, 179, RTSHORT},   {210, 219, RT3DPOINT}, {270, 299, RTSHORT},
    {300, 309, RTSTR},     {310, 369, RTENAME},   {370, 389, RTSHORT},  {390, 399, RTENAME},
    {400, 409, RTSHORT},   {410, 419, RTSTR},     {1004, 1004, 1004},   {999, 1009, RTSTR},
    {1010, 1013, RT3DPOINT}, {1038, 1059, RTREAL}, {1060, 1070, RTSHORT}, {1071, 1071, RTLONG},
};

}  // namespace

int lispTypeOfGroupCode(int code) {
    if (code < 0 || code >= RTNONE) return code;
    for (const CodeRange& range : kRanges) {
        if (code >= range.first && code <= range.last) return range.type;
    }
    return RTNONE;
}

}  // namespace kelvo
