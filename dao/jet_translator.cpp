// The translator's token cursor, names, parameters, and the choice of statement.
#include "jet_translator.h"

#include <algorithm>
#include <array>

namespace kelvo::jet {
namespace {

// Words that end an expression or start a clause; never read as a field name.
constexpr std::array<std::string_view, 40> kReserved = {
    "select",    "from",        "where",  "group",  "order",  "having", "by",   "and",
    "or",        "not",         "as",     "on",     "join",   "inner",  "left", "right",
    "union",     "into",        "values", "set",    "in",     "is",     "like", "between",
    "distinct",  "distinctrow", "top",    "xor",    "eqv",    "imp",    "mod",  "pivot",
    "transform", "with",        "insert", "update", "delete", "exists", "all",  "parameters"};

}  // namespace

Translator::Translator(std::string_view sql, const ParseOptions& opts)
    : options(opts), sql_(sql), tokens_(tokenize(sql)) {}

const Token& Translator::peek(size_t ahead) const {
    const size_t i = pos_ + ahead;
    return i < tokens_.size() ? tokens_[i] : tokens_.back();
}

const Token& Translator::take() {
    const Token& t = peek();
    if (pos_ + 1 < tokens_.size()) ++pos_;
    return t;
}

bool Translator::atKeyword(std::string_view word, size_t ahead) const {
    return isKeyword(peek(ahead), word);
}

bool Translator::atSymbol(std::string_view symbol, size_t ahead) const {
    const Token& t = peek(ahead);
    return t.kind == TokenKind::Symbol && t.text == symbol;
}

bool Translator::acceptKeyword(std::string_view word) {
    if (!atKeyword(word)) return false;
    take();
    return true;
}

bool Translator::acceptSymbol(std::string_view symbol) {
    if (!atSymbol(symbol)) return false;
    take();
    return true;
}

void Translator::expectKeyword(std::string_view word, long code, const std::string& message) {
    if (!acceptKeyword(word)) fail(code, message);
}

void Translator::expectSymbol(std::string_view symbol, long code, const std::string& message) {
    if (!acceptSymbol(symbol)) fail(code, message);
}

bool Translator::atReservedWord(size_t ahead) const {
    const Token& t = peek(ahead);
    if (t.kind != TokenKind::Word) return false;
    for (std::string_view word : kReserved)
        if (equalsNoCase(t.text, word)) return true;
    return false;
}

std::string Translator::textFrom(size_t tokenIndex) const {
    if (tokenIndex >= tokens_.size()) return {};
    const size_t begin = tokens_[tokenIndex].begin;
    size_t end = peek().kind == TokenKind::End ? sql_.size() : peek().end;
    while (end > begin && (sql_[end - 1] == ';' || sql_[end - 1] == ' ')) --end;
    return end > begin ? sql_.substr(begin, end - begin) : std::string{};
}

Translator::DepthGuard::DepthGuard(Translator& translator) : translator_(translator) {
    char here = 0;
    const auto at = reinterpret_cast<std::uintptr_t>(&here);
    if (translator_.depth_ == 0) translator_.stackTop_ = at;
    const std::uintptr_t used =
        translator_.stackTop_ > at ? translator_.stackTop_ - at : at - translator_.stackTop_;
    if (translator_.depth_ >= kMaxDepth || used > kMaxStackBytes)
        translator_.fail(3360, "Query is too complex.");
    ++translator_.depth_;
}

void Translator::fail(long code, const std::string& message) const {
    throw SyntaxError(code, message);
}

void Translator::failExpression(std::string_view kind) const {
    // The expression runs on to the end of its clause: a comma or clause word outside
    // parentheses, or the end of the statement.
    size_t end = pos_;
    int depth = 0;
    for (; end < tokens_.size() && tokens_[end].kind != TokenKind::End; ++end) {
        const Token& t = tokens_[end];
        if (t.kind == TokenKind::Symbol && t.text == "(") ++depth;
        if (t.kind == TokenKind::Symbol && t.text == ")" && --depth < 0) break;
        if (depth == 0 &&
            ((t.kind == TokenKind::Symbol && (t.text == "," || t.text == ";")) ||
             isKeyword(t, "from") || isKeyword(t, "where") || isKeyword(t, "group") ||
             isKeyword(t, "order") || isKeyword(t, "having") || isKeyword(t, "union")))
            break;
    }
    const size_t begin = tokens_[std::min(exprStart_, tokens_.size() - 1)].begin;
    const size_t stop = end > exprStart_ ? tokens_[end - 1].end : begin;
    const std::string text = stop > begin ? sql_.substr(begin, stop - begin) : std::string{};
    fail(3075, std::string(kind) + " in query expression '" + text + "'.");
}

std::string Translator::name(long code, const std::string& message) {
    const Token& t = peek();
    if (t.kind == TokenKind::Name || (t.kind == TokenKind::Word && !atReservedWord()))
        return take().text;
    fail(code, message);
}

std::string Translator::quoteName(std::string_view name) {
    return "[" + std::string(name) + "]";
}

std::string Translator::quoteString(std::string_view text) {
    std::string out = "'";
    for (char c : text) {
        if (c == '\'') out += '\'';
        out += c;
    }
    return out + "'";
}

// PARAMETERS name type [, name type] ;
void Translator::parametersClause() {
    const std::string bad = "Syntax error in PARAMETER clause.";
    do {
        std::vector<std::string> parts{name(3079, bad)};
        std::string separators;
        while ((atSymbol("!") || atSymbol(".")) &&
               (peek(1).kind == TokenKind::Name || peek(1).kind == TokenKind::Word)) {
            separators += take().text;
            parts.push_back(take().text);
        }
        std::string full = parts[0];
        if (parts.size() > 1) {
            full = quoteName(parts[0]);
            for (size_t i = 1; i < parts.size(); ++i)
                full += std::string(1, separators[i - 1]) + quoteName(parts[i]);
        }
        const Token& typeToken = peek();
        if (typeToken.kind != TokenKind::Word) fail(3079, bad);
        const auto type = typeFromName(typeToken.text);
        if (!type) fail(3079, bad);
        take();
        if (acceptSymbol("(")) {  // Text(50)
            if (peek().kind != TokenKind::Number) fail(3079, bad);
            take();
            expectSymbol(")", 3079, bad);
        }
        for (const Parameter& p : declared)
            if (equalsNoCase(p.name, full)) fail(3079, bad);
        declared.push_back({full, *type});
    } while (acceptSymbol(","));
    expectSymbol(";", 3079, bad);
}

std::optional<std::string> Translator::parameterFor(const std::vector<std::string>& parts,
                                                    std::string_view separators) {
    std::string full = parts[0];
    if (parts.size() > 1) {
        full = quoteName(parts[0]);
        for (size_t i = 1; i < parts.size(); ++i)
            full += std::string(1, separators[i - 1]) + quoteName(parts[i]);
    }
    for (const Parameter& p : declared)
        if (equalsNoCase(p.name, full)) return placeholder(p.name);
    for (const std::string& extra : options.extraParameters)
        if (equalsNoCase(extra, full)) return placeholder(extra);
    if (parts.size() >= 3) return placeholder(full);  // Forms!Form!Control
    return std::nullopt;
}

std::string Translator::placeholder(const std::string& paramName) {
    for (size_t i = 0; i < placeholderNames.size(); ++i)
        if (equalsNoCase(placeholderNames[i], paramName)) return "?" + std::to_string(i + 1);
    placeholderNames.push_back(paramName);
    return "?" + std::to_string(placeholderNames.size());
}

Statement Translator::statement() {
    if (acceptKeyword("parameters")) parametersClause();
    Statement result;
    if (atKeyword("select") || atKeyword("transform") || atSymbol("(") || atKeyword("table")) {
        Query q;
        std::optional<std::string> into;
        SelectText s = selectStatement(true, &into);
        q.sqliteSql = std::move(s.sql);
        q.expressionTypes = std::move(s.types);
        q.intoTable = std::move(into);
        q.kind = q.intoTable ? QueryKind::SelectInto : s.kind;
        q.returnsRows = !q.intoTable;
        result = std::move(q);
    } else if (atKeyword("insert")) {
        result = insertStatement();
    } else if (atKeyword("update")) {
        result = updateStatement();
    } else if (atKeyword("delete")) {
        result = deleteStatement();
    } else if (atKeyword("create") && declared.empty()) {
        result = createStatement();
    } else if (atKeyword("drop") && declared.empty()) {
        result = dropStatement();
    } else if (atKeyword("alter") && declared.empty()) {
        result = alterStatement();
    } else {
        fail(3129,
             "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or "
             "'UPDATE'.");
    }
    acceptSymbol(";");
    if (!atEnd()) fail(3142, "Characters found after end of SQL statement.");
    if (auto* q = std::get_if<Query>(&result)) {
        q->parameters = declared;
        q->placeholderNames = placeholderNames;
    }
    return result;
}

Statement parse(std::string_view jetSql, const ParseOptions& options) {
    Translator translator(jetSql, options);
    return translator.statement();
}

}  // namespace kelvo::jet
