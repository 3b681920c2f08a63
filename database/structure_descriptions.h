// The descriptions the structure functions give and take, in the data access object
// model's terms. A field description:
//   (("Name" . "sName") ("Type" . 10) ("Size" . 50) ("Attributes" . 34) ("Required")
//    ("AllowZeroLength" . T) ("DefaultValue" . "") ("OrdinalPosition" . 1))
// An index description, a descending key field written with a leading "-" as the model's
// Fields text writes it:
//   (("Name" . "PrimaryKey") ("Fields" "ixA") ("Primary" . T) ("Unique" . T)
//    ("Required" . T) ("IgnoreNulls"))
// A relation description, each pair (field of Table . field of ForeignTable):
//   (("Name" . "AB") ("Table" . "A") ("ForeignTable" . "B") ("Attributes" . 4096)
//    ("Fields" ("ixA" . "lA")))
// What is given can be handed back unchanged; keys are read without case.
#pragma once

#include <string>
#include <vector>

#include "bridge/arg_readers.h"
#include "bridge/result_builder.h"
#include "dao.h"

namespace kelvo::database::structure {

// A key field's name, with "-" before it when descending.
std::wstring keyFieldName(const CDaoIndexFieldInfo& field);
void addFieldDescription(ResultBuilder& out, const CDaoFieldInfo& field);
void addIndexDescription(ResultBuilder& out, const CDaoIndexInfo& index);
void returnRelationDescription(const CDaoRelationInfo& relation);
// The texts as a list result; nil for none.
void returnTexts(const std::vector<std::wstring>& texts);

// The key fields of a new index: one name, or a list of names. False when it is neither.
bool readKeyFields(Cursor& cursor, std::vector<CDaoIndexFieldInfo>& fields);

// One entry of a description: ("key" . value), ("key" value ...) or ("key").
struct Property {
    std::wstring key;
    std::vector<const resbuf*> values;
};
using Description = std::vector<Property>;

// A list of descriptions (nil for none). False (the cursor unmoved) when the argument is
// not one.
bool readDescriptions(Cursor& cursor, std::vector<Description>& descriptions);
// False for an unknown key, a value of the wrong kind, or a field without Name or Type.
bool fieldFromDescription(const Description& description, CDaoFieldInfo& field);
// False for an unknown key, a value of the wrong kind, or no Name or Fields.
bool indexFromDescription(const Description& description, CDaoIndexInfo& index);

}  // namespace kelvo::database::structure
