// Function calls in expressions: the table of the dialect's functions and the few that
// translate to SQLite syntax rather than to a call (IIf, Switch, Choose, Nz, IsNull,
// Count(*)). Each other function is a registered SQLite function, jet_<name>.
#include <array>
#include <cctype>

#include "jet_translator.h"

namespace kelvo::jet {
namespace {

using T = DataType;
constexpr std::optional<DataType> kAny = std::nullopt;

constexpr std::array<FunctionInfo, 90> kFunctions = {{
    // aggregates
    {"sum", "sum", 1, 1, true, kAny},
    {"avg", "avg", 1, 1, true, T::Double},
    {"count", "count", 1, 1, true, T::Long},
    {"min", "min", 1, 1, true, kAny},
    {"max", "max", 1, 1, true, kAny},
    {"first", "jet_first", 1, 1, true, kAny},
    {"last", "jet_last", 1, 1, true, kAny},
    {"stdev", "jet_stdev", 1, 1, true, T::Double},
    {"stdevp", "jet_stdevp", 1, 1, true, T::Double},
    {"var", "jet_var", 1, 1, true, T::Double},
    {"varp", "jet_varp", 1, 1, true, T::Double},
    // translated in place
    {"iif", "", 3, 3, false, kAny},
    {"switch", "", 2, 64, false, kAny},
    {"choose", "", 2, 64, false, kAny},
    {"nz", "", 1, 2, false, kAny},
    {"isnull", "", 1, 1, false, T::Boolean},
    // text
    {"len", "jet_len", 1, 1, false, T::Long},
    {"mid", "jet_mid", 2, 3, false, T::Text},
    {"left", "jet_left", 2, 2, false, T::Text},
    {"right", "jet_right", 2, 2, false, T::Text},
    {"ucase", "jet_ucase", 1, 1, false, T::Text},
    {"lcase", "jet_lcase", 1, 1, false, T::Text},
    {"trim", "jet_trim", 1, 1, false, T::Text},
    {"ltrim", "jet_ltrim", 1, 1, false, T::Text},
    {"rtrim", "jet_rtrim", 1, 1, false, T::Text},
    {"instr", "jet_instr", 2, 4, false, T::Long},
    {"instrrev", "jet_instrrev", 2, 4, false, T::Long},
    {"replace", "jet_replace", 3, 6, false, T::Text},
    {"space", "jet_space", 1, 1, false, T::Text},
    {"string", "jet_string", 2, 2, false, T::Text},
    {"strcomp", "jet_strcomp", 2, 3, false, T::Integer},
    {"strreverse", "jet_strreverse", 1, 1, false, T::Text},
    {"strconv", "jet_strconv", 2, 3, false, T::Text},
    {"asc", "jet_asc", 1, 1, false, T::Integer},
    {"ascw", "jet_asc", 1, 1, false, T::Integer},
    {"chr", "jet_chr", 1, 1, false, T::Text},
    {"chrw", "jet_chr", 1, 1, false, T::Text},
    {"format", "jet_format", 1, 4, false, T::Text},
    {"formatnumber", "jet_formatnumber", 1, 2, false, T::Text},
    {"formatcurrency", "jet_formatcurrency", 1, 2, false, T::Text},
    {"formatpercent", "jet_formatpercent", 1, 2, false, T::Text},
    {"formatdatetime", "jet_formatdatetime", 1, 2, false, T::Text},
    // dates
    {"now", "jet_now", 0, 0, false, T::Date},
    {"date", "jet_date", 0, 0, false, T::Date},
    {"time", "jet_time", 0, 0, false, T::Date},
    {"year", "jet_year", 1, 1, false, T::Integer},
    {"month", "jet_month", 1, 1, false, T::Integer},
    {"day", "jet_day", 1, 1, false, T::Integer},
    {"hour", "jet_hour", 1, 1, false, T::Integer},
    {"minute", "jet_minute", 1, 1, false, T::Integer},
    {"second", "jet_second", 1, 1, false, T::Integer},
    {"weekday", "jet_weekday", 1, 2, false, T::Integer},
    {"dateadd", "jet_dateadd", 3, 3, false, T::Date},
    {"datediff", "jet_datediff", 3, 5, false, T::Long},
    {"datepart", "jet_datepart", 2, 4, false, T::Integer},
    {"dateserial", "jet_dateserial", 3, 3, false, T::Date},
    {"datevalue", "jet_datevalue", 1, 1, false, T::Date},
    {"timeserial", "jet_timeserial", 3, 3, false, T::Date},
    {"timevalue", "jet_timevalue", 1, 1, false, T::Date},
    {"monthname", "jet_monthname", 1, 2, false, T::Text},
    {"weekdayname", "jet_weekdayname", 1, 3, false, T::Text},
    // conversions
    {"cstr", "jet_cstr", 1, 1, false, T::Text},
    {"cint", "jet_cint", 1, 1, false, T::Integer},
    {"clng", "jet_clng", 1, 1, false, T::Long},
    {"cdbl", "jet_cdbl", 1, 1, false, T::Double},
    {"csng", "jet_csng", 1, 1, false, T::Single},
    {"ccur", "jet_ccur", 1, 1, false, T::Currency},
    {"cbyte", "jet_cbyte", 1, 1, false, T::Byte},
    {"cdate", "jet_cdate", 1, 1, false, T::Date},
    {"cvdate", "jet_cdate", 1, 1, false, T::Date},
    {"cbool", "jet_cbool", 1, 1, false, T::Boolean},
    {"cvar", "jet_cvar", 1, 1, false, kAny},
    {"val", "jet_val", 1, 1, false, T::Double},
    {"str", "jet_str", 1, 1, false, T::Text},
    {"hex", "jet_hex", 1, 1, false, T::Text},
    {"oct", "jet_oct", 1, 1, false, T::Text},
    {"isnumeric", "jet_isnumeric", 1, 1, false, T::Boolean},
    {"isdate", "jet_isdate", 1, 1, false, T::Boolean},
    // numbers
    {"abs", "jet_abs", 1, 1, false, kAny},
    {"int", "jet_int", 1, 1, false, kAny},
    {"fix", "jet_fix", 1, 1, false, kAny},
    {"round", "jet_round", 1, 2, false, kAny},
    {"sgn", "jet_sgn", 1, 1, false, T::Integer},
    {"sqr", "jet_sqr", 1, 1, false, T::Double},
    {"exp", "jet_exp", 1, 1, false, T::Double},
    {"log", "jet_log", 1, 1, false, T::Double},
    {"sin", "jet_sin", 1, 1, false, T::Double},
    {"cos", "jet_cos", 1, 1, false, T::Double},
    {"tan", "jet_tan", 1, 1, false, T::Double},
    {"atn", "jet_atn", 1, 1, false, T::Double},
}};

std::string lowered(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (!out.empty() && out.back() == '$') out.pop_back();
    return out;
}

// How Access names the column of an aggregate over one field: SumOfPrice.
std::string_view aggregatePrefix(std::string_view jetName) {
    static constexpr std::pair<std::string_view, std::string_view> kNames[] = {
        {"sum", "Sum"},     {"avg", "Avg"},     {"count", "Count"}, {"min", "Min"},
        {"max", "Max"},     {"first", "First"}, {"last", "Last"},   {"stdev", "StDev"},
        {"stdevp", "StDevP"}, {"var", "Var"},   {"varp", "VarP"}};
    for (const auto& [name, prefix] : kNames)
        if (name == jetName) return prefix;
    return {};
}

}  // namespace

const FunctionInfo* findFunction(std::string_view jetName) {
    const std::string key = lowered(jetName);
    for (const FunctionInfo& f : kFunctions)
        if (f.jetName == key) return &f;
    return nullptr;
}

Expr Translator::functionCall(const Token& nameToken) {
    const std::string written = nameToken.text;
    const FunctionInfo* info = findFunction(written);
    if (info == nullptr) fail(3085, "Undefined function '" + written + "' in expression.");
    take();  // (
    std::vector<Expr> args;
    bool countStar = false;
    if (info->jetName == "count" && atSymbol("*") && atSymbol(")", 1)) {
        take();
        countStar = true;
    } else if (!atSymbol(")")) {
        do args.push_back(operand(0)); while (acceptSymbol(","));
    }
    if (!acceptSymbol(")")) failExpression("Missing ), ], or Item");
    const int n = countStar ? 1 : static_cast<int>(args.size());
    const bool pairsOk = info->jetName != "switch" || n % 2 == 0;
    if (n < info->minArgs || n > info->maxArgs || !pairsOk)
        failExpression("Wrong number of arguments used with function");

    Expr e;
    e.type = info->type;
    for (const Expr& a : args) e.aggregate = e.aggregate || a.aggregate;
    const std::string_view fn = info->jetName;
    if (fn == "iif") {
        e.sql = "(CASE WHEN " + condition(args[0]) + " THEN " + value(args[1]) + " ELSE " +
                value(args[2]) + " END)";
    } else if (fn == "switch") {
        e.sql = "(CASE";
        for (size_t i = 0; i < args.size(); i += 2)
            e.sql += " WHEN " + condition(args[i]) + " THEN " + value(args[i + 1]);
        e.sql += " END)";
    } else if (fn == "choose") {
        e.sql = "(CASE jet_fix(" + value(args[0]) + ")";
        for (size_t i = 1; i < args.size(); ++i)
            e.sql += " WHEN " + std::to_string(i) + " THEN " + value(args[i]);
        e.sql += " END)";
    } else if (fn == "nz") {
        e.sql = "COALESCE(" + value(args[0]) + ", " + (args.size() > 1 ? value(args[1]) : "''") +
                ")";
    } else if (fn == "isnull") {
        e.sql = "(" + value(args[0]) + " IS NULL)";
        e.predicate = true;
    } else if (info->aggregate) {
        const std::string guard = aggregateFilter;
        std::string arg = countStar ? (guard.empty() ? "*" : "1") : value(args[0]);
        if (!guard.empty()) arg = "CASE WHEN " + guard + " THEN " + arg + " END";
        e.sql = std::string(info->sqlName) + "(" + arg + ")";
        e.aggregate = true;
        if (!countStar && !args[0].parts.empty())
            e.aggregateName = std::string(aggregatePrefix(fn)) + "Of" + args[0].parts.back();
    } else {
        e.sql = std::string(info->sqlName) + "(";
        for (size_t i = 0; i < args.size(); ++i) e.sql += (i ? ", " : "") + value(args[i]);
        e.sql += ")";
    }
    return e;
}

}  // namespace kelvo::jet
