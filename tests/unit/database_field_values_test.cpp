// The text rule of database field values: trimmed, except under "s_" names.
#include <gtest/gtest.h>

#include "database/field_values.h"

namespace kelvo {
namespace {

TEST(FieldValues, OrdinaryTextLosesTrailingBlanksOnly) {
    EXPECT_EQ(lispFieldText(L"sName", L"abc  "), L"abc");
    EXPECT_EQ(lispFieldText(L"sName", L"  a b  "), L"  a b");
    EXPECT_EQ(lispFieldText(L"sName", L"   "), L"");
    EXPECT_EQ(lispFieldText(L"sName", L"a\t"), L"a\t");  // blanks only
}

TEST(FieldValues, SUnderscoreFieldsKeepTheirBlanksButOneBlankIsEmpty) {
    EXPECT_EQ(lispFieldText(L"s_name", L"abc  "), L"abc  ");
    EXPECT_EQ(lispFieldText(L"s_name", L" "), L"");
    EXPECT_EQ(lispFieldText(L"s_name", L"  "), L"  ");
}

TEST(FieldValues, PrefixIsCaseSensitive) {
    EXPECT_EQ(lispFieldText(L"S_name", L"abc "), L"abc");
    EXPECT_EQ(lispFieldText(L"s", L"abc "), L"abc");
    EXPECT_FALSE(trimsFieldText(L"s_"));
}

}  // namespace
}  // namespace kelvo
