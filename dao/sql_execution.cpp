// Parsing, preparing and running Jet SQL on a connection.
#include "sql_execution.h"

#include <algorithm>

#include "catalog.h"
#include "dao_connection.h"
#include "dao_errors.h"
#include "dao_exception.h"
#include "sqlite_errors.h"
#include "table_ddl.h"

namespace dao {
namespace {

using kelvo::jet::DataType;
using kelvo::jet::Query;
using kelvo::jet::QueryKind;

bool equalsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

kelvo::jet::Statement parseWith(Connection& connection, const std::string& text,
                                const std::vector<std::string>& extra) {
    kelvo::jet::ParseOptions options;
    options.extraParameters = extra;
    options.database = connection.db();
    options.savedQuery = [&connection](std::string_view name) -> std::optional<std::string> {
        if (const auto stored = storedQuery(connection, wide(name))) return utf8(stored->sql);
        return std::nullopt;
    };
    try {
        return kelvo::jet::parse(text, options);
    } catch (const kelvo::jet::SyntaxError& error) {
        throw new CDaoException(error.daoCode, wide(error.what()));
    }
}

// Prepares without throwing; the SQLite message on failure.
bool tryPrepare(Connection& connection, const std::string& sql, Statement& out, int& code,
                std::string& message) {
    sqlite3_stmt* stmt = nullptr;
    code = sqlite3_prepare_v2(connection.db(), sql.c_str(), static_cast<int>(sql.size()), &stmt, nullptr);
    if (code == SQLITE_OK) {
        sqlite3_finalize(stmt);
        out = Statement(connection.db(), sql);
        return true;
    }
    code = sqlite3_extended_errcode(connection.db());
    message = sqlite3_errmsg(connection.db());
    return false;
}

const CDaoParameterInfo* findValue(const std::vector<CDaoParameterInfo>& values,
                                   const std::vector<bool>& set, std::string_view name,
                                   bool& isSet) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (equalsNoCase(utf8(values[i].m_strName), name)) {
            isSet = i < set.size() ? set[i] : true;
            return &values[i];
        }
    }
    isSet = false;
    return nullptr;
}

// Creates the table of a SELECT ... INTO from the select's columns (their declared types,
// or the types the translator knows of computed ones).
void createIntoTable(Connection& connection, PreparedQuery& prepared) {
    TableDesign design;
    design.name = wide(*prepared.query.intoTable);
    sqlite3_stmt* stmt = prepared.statement.get();
    for (int c = 0; c < sqlite3_column_count(stmt); ++c) {
        FieldDef field;
        field.name = wide(sqlite3_column_name(stmt, c));
        const char* declared = sqlite3_column_decltype(stmt, c);
        field.type = declared ? typeFromDeclared(declared, &field.size) : dbMemo;
        for (const auto& [name, type] : prepared.query.expressionTypes)
            if (equalsNoCase(name, utf8(field.name)) && daoType(type) != 0) field.type = daoType(type);
        if (field.type == dbText && field.size == 0) field.size = 255;
        design.fields.push_back(std::move(field));
    }
    createTable(connection, design);
}

}  // namespace

short daoType(DataType type) {
    switch (type) {
        case DataType::Boolean: return dbBoolean;
        case DataType::Byte: return dbByte;
        case DataType::Integer: return dbInteger;
        case DataType::Long: return dbLong;
        case DataType::Currency: return dbCurrency;
        case DataType::Single: return dbSingle;
        case DataType::Double: return dbDouble;
        case DataType::Date: return dbDate;
        case DataType::Text: return dbText;
        case DataType::LongBinary: return dbLongBinary;
        case DataType::Memo: return dbMemo;
        case DataType::Guid: return dbGUID;
        case DataType::Value: return 0;
    }
    return 0;
}

short queryType(const kelvo::jet::Statement& statement) {
    const Query* query = std::get_if<Query>(&statement);
    if (query == nullptr) return dbQDDL;
    switch (query->kind) {
        case QueryKind::Insert: return dbQAppend;
        case QueryKind::Update: return dbQUpdate;
        case QueryKind::Delete: return dbQDelete;
        case QueryKind::SelectInto: return dbQMakeTable;
        default: return dbQSelect;
    }
}

kelvo::jet::Statement parseSql(Connection& connection, const std::wstring& sql) {
    return parseWith(connection, utf8(sql), {});
}

PreparedQuery prepareQuery(Connection& connection, const std::wstring& sql) {
    const std::string text = utf8(sql);
    PreparedQuery prepared;
    for (;;) {
        kelvo::jet::Statement parsed = parseWith(connection, text, prepared.implicitParameters);
        Query* query = std::get_if<Query>(&parsed);
        if (query == nullptr) throwError(kInvalidSqlStatement);
        prepared.query = std::move(*query);
        int code = 0;
        std::string message;
        if (tryPrepare(connection, prepared.query.sqliteSql, prepared.statement, code, message))
            return prepared;
        // A name the database does not know is a parameter, as Access takes it.
        constexpr std::string_view kNoColumn = "no such column: ";
        if (!message.starts_with(kNoColumn)) throwSqliteError(code, message);
        const std::string name = message.substr(kNoColumn.size());
        for (const std::string& known : prepared.implicitParameters)
            if (equalsNoCase(known, name))
                throwError(kTooFewParameters, {std::to_wstring(prepared.implicitParameters.size())});
        prepared.implicitParameters.push_back(name);
    }
}

std::vector<CDaoParameterInfo> queryParameters(const PreparedQuery& prepared) {
    std::vector<CDaoParameterInfo> parameters;
    for (const auto& declared : prepared.query.parameters)
        parameters.push_back({wide(declared.name), daoType(declared.type), COleVariant::Null()});
    for (const auto& implicit : prepared.implicitParameters)
        parameters.push_back({wide(implicit), 0, COleVariant::Null()});
    return parameters;
}

void bindParameters(PreparedQuery& prepared, const std::vector<CDaoParameterInfo>& values,
                    const std::vector<bool>& set) {
    int missing = 0;
    const auto& names = prepared.query.placeholderNames;
    for (std::size_t i = 0; i < names.size(); ++i) {
        bool isSet = false;
        const CDaoParameterInfo* value = findValue(values, set, names[i], isSet);
        if (value == nullptr || !isSet) {
            ++missing;
            continue;
        }
        COleVariant bound = value->m_varValue;
        if (value->m_nType != 0 && bound.vt != VT_NULL && bound.vt != VT_EMPTY) {
            FieldDef typed;
            typed.type = value->m_nType;
            bound = convertForField(typed, bound, L"");
        }
        bindVariant(prepared.statement, static_cast<int>(i) + 1, bound);
    }
    if (missing > 0) throwError(kTooFewParameters, {std::to_wstring(missing)});
}

long executeSql(Connection& connection, const std::wstring& sql,
                const std::vector<CDaoParameterInfo>& values, const std::vector<bool>& set) {
    connection.requireWritable();
    kelvo::jet::Statement parsed = parseSql(connection, sql);
    if (!std::holds_alternative<Query>(parsed)) {
        executeDdl(connection, parsed);
        return 0;
    }
    PreparedQuery prepared = prepareQuery(connection, sql);
    if (prepared.query.returnsRows) throwError(kSelectNotExecutable);
    bindParameters(prepared, values, set);
    LockScope lock(LockAction::write);
    if (prepared.query.kind == QueryKind::SelectInto) {
        const std::wstring table = wide(*prepared.query.intoTable);
        if (connection.schema(table) != nullptr) throwError(kTableExists, {table});
        createIntoTable(connection, prepared);
        std::string columns;
        for (const FieldDef& field : connection.requireSchema(table).fields)
            columns += (columns.empty() ? "" : ", ") + quoteName(field.name);
        PreparedQuery insert = prepareQuery(connection, sql);
        Statement fill(connection.db(), "INSERT INTO " + quoteName(table) + " (" + columns + ") " +
                                            insert.query.sqliteSql);
        PreparedQuery carrier{insert.query, std::move(fill), insert.implicitParameters};
        bindParameters(carrier, values, set);
        WriteTransaction transaction(connection);
        carrier.statement.step();
        const long changed = sqlite3_changes(connection.db());
        transaction.commit();
        return changed;
    }
    WriteTransaction transaction(connection);
    prepared.statement.step();
    const long changed = sqlite3_changes(connection.db());
    transaction.commit();
    return changed;
}

}  // namespace dao
