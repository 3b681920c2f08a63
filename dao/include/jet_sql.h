// The engine's SQL dialect: statements as Access users write them, translated for SQLite.
//
// parse() reads one statement of the Access dialect (UTF-8) and returns either a Query,
// whose SQLite text is ready to prepare, or a structured DDL statement that the catalog
// carries out itself (it owns how tables, indexes and relations are stored). Nothing is
// executed here. The SQLite text needs the connection to have had registerCollation()
// and registerFunctions() called on it: it calls the dialect's functions under their
// "jet_" names and compares text with the JETNOCASE collation.
//
// What the translation does:
//   #date# literals       -> a REAL literal, the OLE automation date (days since
//                            1899-12-30, time as the fraction); dates are REAL here
//   True/False/Yes/No/On/Off -> -1 / 0
//   "text"                -> a string literal (never an identifier); [name] -> "name"
//   a & b                 -> concatenation where Null counts as ""
//   a + b                 -> jet_add: numbers add, two texts concatenate
//   Mod, \, ^             -> jet_mod, jet_intdiv, jet_pow
//   x LIKE p              -> jet_like(p, x): * ? # [list] [!list] [a-z], case-insensitive;
//                            % and _ are plain characters, as in Access's default mode
//   comparisons, ORDER BY, GROUP BY, IN, BETWEEN -> COLLATE JETNOCASE (text compares
//                            case-insensitively, as in Access)
//   TOP n [PERCENT], DISTINCTROW, SELECT ... INTO, PARAMETERS, TRANSFORM ... PIVOT with
//   an IN list, nested parenthesised joins, DELETE t.* FROM, UPDATE over joins.
// Names of declared parameters (and names of the form A!B!C, which can only be
// parameters) become numbered placeholders ?1, ?2 ... listed in placeholderNames.
#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

struct sqlite3;

namespace kelvo::jet {

// Access/DAO field types. Value is the untyped parameter type of PARAMETERS
// (a parameter declared "Value" takes whatever it is given).
enum class DataType {
    Boolean,
    Byte,
    Integer,
    Long,
    Currency,
    Single,
    Double,
    Date,
    Text,
    LongBinary,
    Memo,
    Guid,
    Value
};

// The Access type name of a field type, as DDL writes it ("TEXT", "LONG", "DATETIME" ...).
std::string_view typeName(DataType type);
// The field type of an Access DDL or PARAMETERS type name (any of the synonyms, any
// case: "COUNTER" gives Long, "VARCHAR" Text, "IEEEDOUBLE" Double ...); nullopt when
// the name is not a type.
std::optional<DataType> typeFromName(std::string_view name);

struct ColumnDef {
    std::string name;
    DataType type = DataType::Text;
    int size = 0;                     // Text: n (255 when not given); 0 for other types
    bool autoIncrement = false;       // COUNTER / AUTOINCREMENT
    bool required = false;            // NOT NULL
    std::optional<std::string> defaultSql;  // DEFAULT expression, translated for SQLite
};

struct IndexDef {
    std::string name;
    std::string table;
    std::vector<std::pair<std::string, bool>> columns;  // column name, descending
    bool unique = false;
    bool primary = false;
    bool ignoreNulls = false;    // WITH IGNORE NULL
    bool disallowNulls = false;  // WITH DISALLOW NULL
};

// A relation (FOREIGN KEY ... REFERENCES): table holds the referenced (primary) key,
// foreignTable the referencing columns; fields pairs (primary column, foreign column).
struct RelationDef {
    std::string name;
    std::string table;
    std::string foreignTable;
    std::vector<std::pair<std::string, std::string>> fields;
    bool cascadeUpdate = false;
    bool cascadeDelete = false;
};

struct CreateTable {
    std::string name;
    std::vector<ColumnDef> columns;
    std::vector<IndexDef> indexes;        // PRIMARY KEY and UNIQUE constraints
    std::vector<RelationDef> relations;   // FOREIGN KEY constraints
};

struct CreateIndex {
    IndexDef index;
};

struct DropTable {
    std::string name;
};

struct DropIndex {
    std::string index;
    std::string table;
};

struct AlterTable {
    enum class Action { AddColumns, DropColumn, AlterColumn, AddConstraint, DropConstraint };
    std::string table;
    Action action = Action::AddColumns;
    std::vector<ColumnDef> columns;       // AddColumns (one or more), AlterColumn (one)
    std::string name;                     // DropColumn: the column; DropConstraint: the name
    std::vector<IndexDef> indexes;        // AddConstraint, and column constraints of AddColumns
    std::vector<RelationDef> relations;   // AddConstraint FOREIGN KEY
};

struct Parameter {
    std::string name;
    DataType type = DataType::Value;
};

enum class QueryKind { Select, Insert, Update, Delete, SelectInto, Union, Crosstab };

struct Query {
    QueryKind kind = QueryKind::Select;
    std::string sqliteSql;
    std::vector<Parameter> parameters;          // declared by PARAMETERS, in order
    std::vector<std::string> placeholderNames;  // name bound to ?1, ?2 ... (index + 1)
    bool returnsRows = true;
    std::optional<std::string> intoTable;       // SELECT ... INTO: sqliteSql is the SELECT
    // Output columns computed by an expression whose type is known (a date function, a
    // conversion, a comparison ...), by output name. Columns read straight from a table
    // are not listed: their declared type tells.
    std::vector<std::pair<std::string, DataType>> expressionTypes;
};

// CREATE PROCEDURE name (p1 TYPE, ...) AS <statement>: a stored query. jetSql is the
// query as it should be stored, with the parameters as a PARAMETERS declaration.
struct CreateProcedure {
    std::string name;
    std::vector<Parameter> parameters;
    std::string jetSql;
};

using Statement = std::variant<Query, CreateTable, CreateIndex, DropTable, DropIndex,
                               AlterTable, CreateProcedure>;

// A statement the dialect does not accept, with DAO's error number and English message:
// 3075 "Syntax error (missing operator) in query expression '...'." and its kin,
// 3085 "Undefined function '<name>' in expression.", 3129 invalid statement,
// 3131 "Syntax error in FROM clause.", 3134 INSERT INTO, 3144 UPDATE,
// 3290 CREATE TABLE, 3291 CREATE INDEX, 3292 field definition, 3293 ALTER TABLE,
// 3295 DROP, 3142 characters after the end of the statement.
struct SyntaxError : std::runtime_error {
    SyntaxError(long code, const std::string& message)
        : std::runtime_error(message), daoCode(code) {}
    long daoCode;
};

// What the translator may ask of the database while it reads a statement.
struct ParseOptions {
    // Names that are parameters though no PARAMETERS clause declares them (Access asks
    // for any name that is not a field; SQLite reports such a name as "no such column:
    // <name>", so a caller can parse again with the name added here).
    std::vector<std::string> extraParameters;
    // The stored SQL of the saved query of this name, or nullopt when the name is not a
    // saved query. A saved query named in FROM becomes a subquery under its name.
    std::function<std::optional<std::string>(std::string_view name)> savedQuery;
    // Used only by TRANSFORM ... PIVOT without an IN list, to read the pivot values.
    sqlite3* database = nullptr;
};

// Reads one statement. Throws SyntaxError. Parameter names compare case-insensitively;
// a reference A!B!C is named "[A]![B]![C]".
Statement parse(std::string_view jetSql, const ParseOptions& options = {});

// Registers the collation JETNOCASE: case-insensitive over all of Unicode (UTF-8 text),
// a total order consistent with its equality, trailing blanks significant.
void registerCollation(sqlite3* db);

// Registers the dialect's scalar functions (jet_iif, jet_nz, jet_format ...), jet_like,
// the aggregates jet_first, jet_last, jet_stdev, jet_stdevp, jet_var, jet_varp, and the
// operators' helpers. Each is deterministic unless it reads the clock.
void registerFunctions(sqlite3* db);

// The DAO error number of an error message that one of the functions above raised
// inside SQLite ("Data type mismatch in criteria expression." is 3464, "Invalid use of
// Null." 94, "Overflow." 6, "Division by zero." 11, "Invalid procedure call or argument."
// 5, "Invalid pattern string." 93); 0 for any other message.
long daoErrorCode(std::string_view message);

}  // namespace kelvo::jet
