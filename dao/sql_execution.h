// Jet SQL on a connection: parsing through the dialect's translator (names the database
// does not know become parameters, as in Access), preparing queries with their parameter
// values bound by name, and running action queries and DDL.
#pragma once

#include <string>
#include <vector>

#include "dao_field_info.h"
#include "jet_sql.h"
#include "sqlite_statement.h"

namespace dao {

class Connection;

// A query ready to run: the translation and its prepared statement, parameters not bound.
struct PreparedQuery {
    kelvo::jet::Query query;
    Statement statement;
    std::vector<std::string> implicitParameters;  // names taken as parameters
};

// Parses a statement (3075, 3131 ... on bad syntax; for queries, also prepares them).
kelvo::jet::Statement parseSql(Connection& connection, const std::wstring& sql);
PreparedQuery prepareQuery(Connection& connection, const std::wstring& sql);

// The parameters a statement takes: the declared ones, then the implicit ones.
std::vector<CDaoParameterInfo> queryParameters(const PreparedQuery& prepared);
// Binds the placeholders by name: 3061 "Too few parameters. Expected n." when values lack.
void bindParameters(PreparedQuery& prepared, const std::vector<CDaoParameterInfo>& values,
                    const std::vector<bool>& set);

// Runs a statement that returns no rows (action query, SELECT INTO, DDL, CREATE
// PROCEDURE) and returns the number of records it affected. 3065 for a select.
long executeSql(Connection& connection, const std::wstring& sql,
                const std::vector<CDaoParameterInfo>& values = {},
                const std::vector<bool>& set = {});

// The DAO type of a dialect type.
short daoType(kelvo::jet::DataType type);
// The DAO query type of a translated statement (dbQSelect, dbQAction ...).
short queryType(const kelvo::jet::Statement& statement);

// Carries out a DDL statement of the dialect through the catalog.
void executeDdl(Connection& connection, const kelvo::jet::Statement& statement);

}  // namespace dao
