// Expressions: Access operators and their precedence, literals, field references and
// parameters, written as SQLite text.
//
// Levels, loosest first: Imp, Eqv, Xor, Or, And, Not, comparisons (= <> < > <= >= Like
// Is Between In), &, + -, Mod, \, * /, unary -, ^. Comparisons compare text with the
// JETNOCASE collation. Logical results are SQLite conditions until used as a value,
// where they read -1 (True) or 0 (False).
#include <string>

#include "jet_translator.h"

namespace kelvo::jet {
namespace {

enum Level { Imp, Eqv, Xor, Or, And, Not, Compare, Concat, Add, Mod, IntDiv, Mul, Negate, Power,
             Primary };

Expr predicate(std::string sql) {
    Expr e;
    e.sql = std::move(sql);
    e.predicate = true;
    e.type = DataType::Boolean;
    return e;
}

Expr valueExpr(std::string sql, std::optional<DataType> type = std::nullopt) {
    Expr e;
    e.sql = std::move(sql);
    e.type = type;
    return e;
}

// A value turned into a 1/0 condition, for the logical operators that compare truths.
std::string truth(const Expr& e) {
    return e.predicate ? "(" + e.sql + ")" : "((" + e.sql + ") <> 0)";
}

Expr combine(const Expr& a, const Expr& b, Expr result) {
    result.aggregate = a.aggregate || b.aggregate;
    return result;
}

const char* kCollate = " COLLATE JETNOCASE";

}  // namespace

std::string Translator::value(const Expr& e) {
    return e.predicate ? "(-(" + e.sql + "))" : e.sql;
}

Expr Translator::expression() {
    const size_t saved = exprStart_;
    exprStart_ = pos_;
    Expr e = operand(Imp);
    exprStart_ = saved;
    return e;
}

Expr Translator::operand(int level) {
    DepthGuard depth(*this);
    switch (level) {
        case Imp: case Eqv: case Xor: case Or: case And: {
            static constexpr std::string_view kWords[] = {"imp", "eqv", "xor", "or", "and"};
            Expr left = operand(level + 1);
            while (acceptKeyword(kWords[level])) {
                Expr right = operand(level + 1);
                std::string sql;
                if (level == And) sql = "(" + left.sql + " AND " + right.sql + ")";
                else if (level == Or) sql = "(" + left.sql + " OR " + right.sql + ")";
                else if (level == Xor) sql = "(" + truth(left) + " <> " + truth(right) + ")";
                else if (level == Eqv) sql = "(" + truth(left) + " = " + truth(right) + ")";
                else sql = "(NOT " + truth(left) + " OR " + truth(right) + ")";
                left = combine(left, right, predicate(sql));
            }
            return left;
        }
        case Not: {
            if (!acceptKeyword("not")) return operand(Compare);
            Expr inner = operand(Not);
            Expr e = inner.predicate ? predicate("(NOT " + inner.sql + ")")
                                     : valueExpr("(~" + inner.sql + ")", DataType::Long);
            e.aggregate = inner.aggregate;
            return e;
        }
        case Compare: {
            Expr left = operand(Concat);
            while (true) {
                const Token& t = peek();
                static constexpr std::string_view kOps[] = {"=", "<>", "<", ">", "<=", ">="};
                bool isOp = false;
                for (std::string_view op : kOps)
                    if (t.kind == TokenKind::Symbol && t.text == op) isOp = true;
                if (isOp) {
                    const std::string op = take().text;
                    if (atKeyword("any") || atKeyword("some") || atKeyword("all")) {
                        failExpression("Comparison with ANY, SOME or ALL is not supported");
                    }
                    Expr right = operand(Concat);
                    left = combine(left, right,
                                   predicate("(" + value(left) + kCollate + " " + op + " " +
                                             value(right) + ")"));
                    continue;
                }
                if (pivotExpression && atKeyword("in")) return left;
                const bool negated = atKeyword("not") &&
                                     (atKeyword("like", 1) || atKeyword("between", 1) ||
                                      atKeyword("in", 1));
                if (negated) take();
                const std::string no = negated ? "NOT " : "";
                if (acceptKeyword("like")) {
                    Expr pattern = operand(Concat);
                    left = combine(left, pattern,
                                   predicate("(" + no + "jet_like(" + value(pattern) + ", " +
                                             value(left) + "))"));
                } else if (acceptKeyword("between")) {
                    Expr low = operand(Concat);
                    if (!acceptKeyword("and")) failExpression();
                    Expr high = operand(Concat);
                    Expr e = predicate("(" + value(left) + kCollate + " " + no + "BETWEEN " +
                                       value(low) + " AND " + value(high) + ")");
                    e.aggregate = left.aggregate || low.aggregate || high.aggregate;
                    left = e;
                } else if (acceptKeyword("in")) {
                    if (!acceptSymbol("(")) failExpression();
                    std::string list;
                    bool aggregate = left.aggregate;
                    if (atKeyword("select")) {
                        list = subquery();
                    } else {
                        list = "(";
                        do {
                            Expr item = expression();
                            aggregate = aggregate || item.aggregate;
                            list += (list.size() > 1 ? ", " : "") + value(item);
                        } while (acceptSymbol(","));
                        if (!acceptSymbol(")")) failExpression("Missing ), ], or Item");
                        list += ")";
                    }
                    Expr e = predicate("(" + value(left) + kCollate + " " + no + "IN " + list +
                                       ")");
                    e.aggregate = aggregate;
                    left = e;
                } else if (!negated && acceptKeyword("is")) {
                    const bool isNot = acceptKeyword("not");
                    if (!acceptKeyword("null")) failExpression();
                    Expr e = predicate("(" + value(left) + (isNot ? " IS NOT NULL)" : " IS NULL)"));
                    e.aggregate = left.aggregate;
                    left = e;
                } else {
                    if (negated) failExpression();
                    return left;
                }
            }
        }
        case Concat: case Add: case Mod: case IntDiv: case Mul: {
            Expr left = operand(level + 1);
            while (true) {
                std::string sql;
                if (level == Concat && acceptSymbol("&")) {
                    Expr r = operand(level + 1);
                    left = combine(left, r, valueExpr("jet_cat(" + value(left) + ", " + value(r) +
                                                      ")", DataType::Text));
                } else if (level == Add && (atSymbol("+") || atSymbol("-"))) {
                    const bool plus = take().text == "+";
                    Expr r = operand(level + 1);
                    sql = plus ? "jet_add(" + value(left) + ", " + value(r) + ")"
                               : "(" + value(left) + " - " + value(r) + ")";
                    left = combine(left, r, valueExpr(sql));
                } else if (level == Mod && acceptKeyword("mod")) {
                    Expr r = operand(level + 1);
                    left = combine(left, r, valueExpr("jet_mod(" + value(left) + ", " + value(r) +
                                                      ")", DataType::Long));
                } else if (level == IntDiv && acceptSymbol("\\")) {
                    Expr r = operand(level + 1);
                    left = combine(left, r, valueExpr("jet_intdiv(" + value(left) + ", " +
                                                      value(r) + ")", DataType::Long));
                } else if (level == Mul && (atSymbol("*") || atSymbol("/"))) {
                    const bool times = take().text == "*";
                    Expr r = operand(level + 1);
                    sql = times ? "(" + value(left) + " * " + value(r) + ")"
                                : "jet_div(" + value(left) + ", " + value(r) + ")";
                    left = combine(left, r, valueExpr(sql, times ? std::nullopt
                                                                 : std::optional(DataType::Double)));
                } else {
                    return left;
                }
            }
        }
        case Negate: {
            if (acceptSymbol("-")) {
                Expr inner = operand(Negate);
                Expr e = valueExpr("(-" + value(inner) + ")", inner.type);
                e.aggregate = inner.aggregate;
                return e;
            }
            if (acceptSymbol("+")) return operand(Negate);
            return operand(Power);
        }
        case Power: {
            Expr left = operand(Primary);
            while (acceptSymbol("^")) {
                Expr r = operand(atSymbol("-") ? Negate : Primary);
                left = combine(left, r, valueExpr("jet_pow(" + value(left) + ", " + value(r) + ")",
                                                  DataType::Double));
            }
            return left;
        }
        default:
            return primary();
    }
}

Expr Translator::primary() {
    const Token& t = peek();
    switch (t.kind) {
        case TokenKind::Number: {
            const std::string text = take().text;
            const bool whole = text.find_first_of(".eE") == std::string::npos;
            return valueExpr(text, whole ? DataType::Long : DataType::Double);
        }
        case TokenKind::String:
            return valueExpr(quoteString(take().text), DataType::Text);
        case TokenKind::Date:
            return valueExpr(take().text, DataType::Date);
        case TokenKind::Name:
            return reference();
        case TokenKind::Symbol:
            if (t.text == "(") return parenthesised();
            failExpression();
        case TokenKind::Word:
            break;
        case TokenKind::End:
            failExpression();
    }
    if (atKeyword("true") || atKeyword("yes") || atKeyword("on")) {
        take();
        return valueExpr("-1", DataType::Boolean);
    }
    if (atKeyword("false") || atKeyword("no") || atKeyword("off")) {
        take();
        return valueExpr("0", DataType::Boolean);
    }
    if (acceptKeyword("null")) return valueExpr("NULL");
    if (acceptKeyword("exists")) {
        if (!acceptSymbol("(") || !atKeyword("select")) failExpression();
        return predicate("(EXISTS " + subquery() + ")");
    }
    if (atSymbol("(", 1) && (!atReservedWord() || findFunction(peek().text) != nullptr))
        return functionCall(take());
    if (atReservedWord()) failExpression();
    return reference();
}

Expr Translator::parenthesised() {
    take();  // (
    if (atKeyword("select")) return valueExpr(subquery());
    Expr inner = expression();
    if (!acceptSymbol(")")) failExpression("Missing ), ], or Item");
    inner.sql = "(" + inner.sql + ")";
    inner.parts.clear();
    return inner;
}

std::string Translator::subquery() {
    SelectText s = selectStatement(false);
    if (!acceptSymbol(")")) failExpression("Missing ), ], or Item");
    return "(" + s.sql + ")";
}

// A field reference [Table].[Field], Table!Field, or a parameter.
Expr Translator::reference() {
    std::vector<std::string> parts{take().text};
    std::string separators;
    while ((atSymbol(".") || atSymbol("!")) &&
           (peek(1).kind == TokenKind::Name || peek(1).kind == TokenKind::Word)) {
        separators += take().text;
        parts.push_back(take().text);
    }
    if (auto param = parameterFor(parts, separators)) return valueExpr(*param);
    if (parts.size() > 2) failExpression();
    Expr e;
    for (const std::string& part : parts) e.sql += (e.sql.empty() ? "" : ".") + quoteName(part);
    e.parts = parts;
    return e;
}

}  // namespace kelvo::jet
