// Numbers read from a file that become enumerations: whether each is one of the
// enumeration's values (casting any other number to it is undefined).
#pragma once

#include "acdb.h"

namespace kelvo::drawing {

inline bool isLineWeight(int value) {
    switch (value) {
        case AcDb::kLnWt000: case AcDb::kLnWt005: case AcDb::kLnWt009: case AcDb::kLnWt013:
        case AcDb::kLnWt015: case AcDb::kLnWt018: case AcDb::kLnWt020: case AcDb::kLnWt025:
        case AcDb::kLnWt030: case AcDb::kLnWt035: case AcDb::kLnWt040: case AcDb::kLnWt050:
        case AcDb::kLnWt053: case AcDb::kLnWt060: case AcDb::kLnWt070: case AcDb::kLnWt080:
        case AcDb::kLnWt090: case AcDb::kLnWt100: case AcDb::kLnWt106: case AcDb::kLnWt120:
        case AcDb::kLnWt140: case AcDb::kLnWt158: case AcDb::kLnWt200: case AcDb::kLnWt211:
        case AcDb::kLnWtByLayer: case AcDb::kLnWtByBlock: case AcDb::kLnWtByLwDefault:
            return true;
        default:
            return false;
    }
}

inline bool isTextHorzMode(int value) { return value >= AcDb::kTextLeft && value <= AcDb::kTextFit; }
inline bool isTextVertMode(int value) { return value >= AcDb::kTextBase && value <= AcDb::kTextTop; }

}  // namespace kelvo::drawing
