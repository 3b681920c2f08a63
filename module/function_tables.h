// The two LISP function tables and their definition in a drawing. The database table
// takes codes 0 to 61, the general table the codes after it, in table order.
#pragma once

#include <span>

#include "adslib.h"

namespace kelvo {

struct LispFunction {
    const ACHAR* name;
    // The callback the host calls; null for a function not built yet, which then gets
    // the table's shared "not available in this build" callback.
    AcedFunction callback;
};

std::span<const LispFunction> databaseFunctions();
std::span<const LispFunction> generalFunctions();

// The general table's base code: the length of the database table.
int databaseTableLength();

// Defines both tables in the current document: acedDefun then acedRegFunc for each
// entry, database table first. Results of the host calls are not checked.
void defineDatabaseFunctions();
void defineGeneralFunctions();

// Removes a table's definitions (acedRegFunc(nullptr) then acedUndef for each entry).
// Kept beside the definers; the module never undefines its functions.
void undefineTable(std::span<const LispFunction> table, int base);

// The LISP name of function code `code`, or null for a code outside both tables.
const ACHAR* functionNameForCode(int code);

}  // namespace kelvo
