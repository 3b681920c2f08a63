// Unicode simple case mappings (see jet_case_tables.cpp), sorted by code point.
#pragma once

#include <cstddef>

namespace kelvo::jet {

struct CaseMapping {
    char32_t from;
    char32_t to;
};

extern const CaseMapping kFoldMappings[];
extern const size_t kFoldMappingsSize;
extern const CaseMapping kLowerMappings[];
extern const size_t kLowerMappingsSize;
extern const CaseMapping kUpperMappings[];
extern const size_t kUpperMappingsSize;

}  // namespace kelvo::jet
