// Access field type names and their synonyms in DDL and PARAMETERS.
#include <utility>

#include "jet_lexer.h"
#include "jet_sql.h"

namespace kelvo::jet {
namespace {

using T = DataType;
constexpr std::pair<std::string_view, DataType> kNames[] = {
    {"bit", T::Boolean},        {"yesno", T::Boolean},       {"logical", T::Boolean},
    {"logical1", T::Boolean},   {"boolean", T::Boolean},     {"byte", T::Byte},
    {"tinyint", T::Byte},       {"integer1", T::Byte},       {"short", T::Integer},
    {"smallint", T::Integer},   {"integer2", T::Integer},    {"long", T::Long},
    {"int", T::Long},           {"integer", T::Long},        {"integer4", T::Long},
    {"counter", T::Long},       {"autoincrement", T::Long},  {"identity", T::Long},
    {"currency", T::Currency},  {"money", T::Currency},      {"single", T::Single},
    {"real", T::Single},        {"float4", T::Single},       {"ieeesingle", T::Single},
    {"double", T::Double},      {"float", T::Double},        {"float8", T::Double},
    {"ieeedouble", T::Double},  {"number", T::Double},       {"numeric", T::Double},
    {"decimal", T::Double},     {"datetime", T::Date},       {"date", T::Date},
    {"time", T::Date},          {"timestamp", T::Date},      {"text", T::Text},
    {"char", T::Text},          {"varchar", T::Text},        {"character", T::Text},
    {"string", T::Text},        {"alphanumeric", T::Text},   {"memo", T::Memo},
    {"longtext", T::Memo},      {"longchar", T::Memo},       {"note", T::Memo},
    {"longbinary", T::LongBinary}, {"oleobject", T::LongBinary}, {"image", T::LongBinary},
    {"general", T::LongBinary}, {"binary", T::LongBinary},   {"varbinary", T::LongBinary},
    {"guid", T::Guid},          {"uniqueidentifier", T::Guid}, {"nchar", T::Text},
    {"nvarchar", T::Text},      {"ntext", T::Memo},          {"value", T::Value},
};

}  // namespace

std::string_view typeName(DataType type) {
    switch (type) {
        case T::Boolean: return "BIT";
        case T::Byte: return "BYTE";
        case T::Integer: return "SHORT";
        case T::Long: return "LONG";
        case T::Currency: return "CURRENCY";
        case T::Single: return "SINGLE";
        case T::Double: return "DOUBLE";
        case T::Date: return "DATETIME";
        case T::Text: return "TEXT";
        case T::LongBinary: return "LONGBINARY";
        case T::Memo: return "MEMO";
        case T::Guid: return "GUID";
        case T::Value: return "VALUE";
    }
    return "VALUE";
}

std::optional<DataType> typeFromName(std::string_view name) {
    for (const auto& [word, type] : kNames)
        if (equalsNoCase(word, name)) return type;
    return std::nullopt;
}

}  // namespace kelvo::jet
