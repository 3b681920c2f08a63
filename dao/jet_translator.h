// The translator from Access SQL to SQLite: one recursive-descent reader over the tokens
// that writes SQLite text as it goes. Its parts live in one file each: the token cursor
// and parameters (jet_translator.cpp), expressions (jet_expression.cpp), function calls
// (jet_function_calls.cpp), SELECT and FROM (jet_select.cpp), crosstabs
// (jet_crosstab.cpp), INSERT/UPDATE/DELETE (jet_action_queries.cpp) and DDL (jet_ddl.cpp).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jet_lexer.h"
#include "jet_sql.h"

namespace kelvo::jet {

// A translated expression. predicate: the SQLite text is a condition (1/0/NULL) that
// reads -1/0 as a value only after value() turns it so.
struct Expr {
    std::string sql;
    bool predicate = false;
    bool aggregate = false;          // holds an aggregate function
    std::vector<std::string> parts;  // a plain field reference: its name parts
    std::string aggregateName;       // Sum(field) and kin: "SumOf<field>"
    std::optional<DataType> type;    // known result type
};

// One translated SELECT (or compound): the SQLite text and its output columns.
struct SelectText {
    std::string sql;
    std::vector<std::string> names;  // output names, empty for * items
    std::vector<std::pair<std::string, DataType>> types;
    bool star = false;
    QueryKind kind = QueryKind::Select;  // Select, Union or Crosstab
};

class Translator {
public:
    Translator(std::string_view sql, const ParseOptions& options);
    Statement statement();

    // Token cursor.
    const Token& peek(size_t ahead = 0) const;
    const Token& take();
    bool atKeyword(std::string_view word, size_t ahead = 0) const;
    bool atSymbol(std::string_view symbol, size_t ahead = 0) const;
    bool acceptKeyword(std::string_view word);
    bool acceptSymbol(std::string_view symbol);
    void expectKeyword(std::string_view word, long code, const std::string& message);
    void expectSymbol(std::string_view symbol, long code, const std::string& message);
    bool atEnd() const { return peek().kind == TokenKind::End; }
    bool atReservedWord(size_t ahead = 0) const;
    std::string textFrom(size_t tokenIndex) const;  // statement text from a token on
    size_t position() const { return pos_; }
    void seek(size_t tokenIndex) { pos_ = tokenIndex; }
    [[noreturn]] void fail(long code, const std::string& message) const;
    [[noreturn]] void failExpression(
        std::string_view kind = "Syntax error (missing operator)") const;

    // A name: [bracketed] or a bare word that is not reserved. Fails with code/message.
    std::string name(long code, const std::string& message);
    static std::string quoteName(std::string_view name);    // [name]
    static std::string quoteString(std::string_view text);  // 'text'

    // Parameters.
    void parametersClause();
    std::optional<std::string> parameterFor(const std::vector<std::string>& parts,
                                            std::string_view separators);
    std::string placeholder(const std::string& name);

    // Expressions.
    Expr expression();        // a whole expression; remembers where it starts
    Expr operand(int level);  // the operator levels
    static std::string value(const Expr& e);
    static std::string condition(const Expr& e) { return e.sql; }
    Expr primary();
    Expr reference();
    Expr functionCall(const Token& nameToken);
    Expr parenthesised();
    std::string subquery();        // after "(": SELECT ... ")" as "(SELECT ...)"
    std::string aggregateFilter;   // crosstab: the CASE guard put on aggregate arguments
    bool pivotExpression = false;  // crosstab: IN after the PIVOT expression is its headings

    // Queries.
    SelectText selectStatement(bool topLevel, std::optional<std::string>* intoTable = nullptr);
    SelectText crosstab();
    std::string fromClause();
    std::string tableSource();
    std::string joinChain();
    std::string tableName(bool allowAlias);
    Query insertStatement();
    Query updateStatement();
    Query deleteStatement();

    // DDL.
    Statement createStatement();
    Statement dropStatement();
    AlterTable alterStatement();
    ColumnDef columnDefinition(long code, const std::string& message);

    // Runs a nested token stream (a saved query or a [SELECT ...]. derived table).
    template <typename F>
    auto withTokens(std::string_view sql, F body) {
        std::vector<Token> saved = std::move(tokens_);
        const size_t savedPos = pos_;
        const size_t savedStart = exprStart_;
        const std::string savedSql = sql_;
        sql_ = std::string(sql);
        tokens_ = tokenize(sql_);
        pos_ = 0;
        struct Restore {
            Translator& t;
            std::vector<Token>& saved;
            size_t pos, start;
            const std::string& sqlText;
            ~Restore() {
                t.tokens_ = std::move(saved);
                t.pos_ = pos;
                t.exprStart_ = start;
                t.sql_ = sqlText;
            }
        } restore{*this, saved, savedPos, savedStart, savedSql};
        return body();
    }

    // The parser is recursive; a statement nested deeper than this (operator levels,
    // parentheses, NOTs and signs, subqueries, parenthesised joins) fails with DAO 3360
    // "Query is too complex." instead of running out of stack. The stack the parse has
    // used is bounded too, for builds whose frames are larger (the sanitizers' are
    // several times larger): a parse that has used more than kMaxStackBytes fails the
    // same way, whatever its depth.
    static constexpr int kMaxDepth = 1500;
    static constexpr std::uintptr_t kMaxStackBytes = 4u << 20;
    class DepthGuard {
    public:
        explicit DepthGuard(Translator& translator);
        ~DepthGuard() { --translator_.depth_; }
        DepthGuard(const DepthGuard&) = delete;
        DepthGuard& operator=(const DepthGuard&) = delete;

    private:
        Translator& translator_;
    };

    const ParseOptions& options;
    std::vector<Parameter> declared;                           // PARAMETERS, in order
    std::vector<std::string> placeholderNames;                 // ?1, ?2 ...
    int expressionNumber = 1000;                               // the next ExprNNNN name
    int nesting = 0;                                           // saved queries inside saved queries
    std::vector<std::pair<std::string, std::string>> aliases;  // (alias, table) of FROM

private:
    std::string sql_;
    std::vector<Token> tokens_;
    size_t pos_ = 0;
    size_t exprStart_ = 0;
    int depth_ = 0;
    std::uintptr_t stackTop_ = 0;  // where the outermost guarded call's frame was
};

// Jet names of the functions callable in expressions, and how each translates.
struct FunctionInfo {
    std::string_view jetName;  // lower case, without a trailing $
    std::string_view sqlName;  // the SQLite function called
    int minArgs;
    int maxArgs;
    bool aggregate;
    std::optional<DataType> type;
};
const FunctionInfo* findFunction(std::string_view jetName);

}  // namespace kelvo::jet
