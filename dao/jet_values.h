// Reading SQLite values the way the dialect's functions see them, and answering with
// Access's results and errors. Internal to the functions' files.
#pragma once

#include <sqlite3.h>

#include <optional>
#include <string>
#include <string_view>

namespace kelvo::jet {

// Messages of the errors the functions raise (see daoErrorCode in jet_sql.h).
inline constexpr const char* kTypeMismatch = "Data type mismatch in criteria expression.";
inline constexpr const char* kInvalidNull = "Invalid use of Null.";
inline constexpr const char* kInvalidCall = "Invalid procedure call or argument.";
inline constexpr const char* kOverflow = "Overflow.";
inline constexpr const char* kDivisionByZero = "Division by zero.";
inline constexpr const char* kInvalidPattern = "Invalid pattern string.";

inline bool isNull(sqlite3_value* v) { return sqlite3_value_type(v) == SQLITE_NULL; }

// The number a value holds, or that its text spells (blanks around it allowed);
// nullopt for Null, blobs and text that is not a number.
std::optional<double> numberOf(sqlite3_value* v);

// The text of a value: text as is, numbers as Access writes them.
std::string textOf(sqlite3_value* v);

// A number as Access writes it: up to 15 significant digits, no trailing zeros, and
// exponents as "1E+20".
std::string numberText(double d);

// Round half to even at the given number of decimals (Access's Round and CInt).
double roundEven(double x, int decimals = 0);

// An OLE date from a number, or from date text; nullopt otherwise.
std::optional<double> dateOf(sqlite3_value* v);

void resultText(sqlite3_context* ctx, const std::string& text);
// Whole numbers as integers (when the source was an integer or preferInteger), else REAL.
void resultNumber(sqlite3_context* ctx, double d, bool preferInteger);
inline void resultError(sqlite3_context* ctx, const char* message) {
    sqlite3_result_error(ctx, message, -1);
}

// Registration of each family (jet_*_functions.cpp).
void registerTextFunctions(sqlite3* db);
void registerDateFunctions(sqlite3* db);
void registerConversionFunctions(sqlite3* db);
void registerMathFunctions(sqlite3* db);
void registerFormatFunctions(sqlite3* db);
void registerAggregateFunctions(sqlite3* db);
void registerLikeFunction(sqlite3* db);

// Adds one scalar function (deterministic unless stated); nArgs -1 for any count.
void addFunction(sqlite3* db, const char* name, int nArgs,
                 void (*fn)(sqlite3_context*, int, sqlite3_value**), bool deterministic = true);

}  // namespace kelvo::jet
