// SELECT: select lists and their column names, FROM with joins, derived tables and saved
// queries, GROUP BY, HAVING, UNION, ORDER BY, and TOP n [PERCENT].
//
// Column names follow Access: an expression without AS is Expr1000, Expr1001 ...; an
// aggregate over one field is SumOf<field> (and CountOf, AvgOf ...); a field named in
// two tables is <table>.<field>. TOP keeps rows that tie with the last one on the ORDER
// BY keys, as Access does: the LIMIT counts the rows ranked within the first n.
#include <algorithm>

#include "jet_select_core.h"

namespace kelvo::jet {
namespace {

// Names the output columns as Access does.
void nameItems(std::vector<Item>& items, int& exprNumber) {
    for (Item& item : items) {
        if (item.star) continue;
        if (!item.alias.empty()) {
            item.name = item.alias;
            item.emitAlias = true;
        } else if (!item.expr.parts.empty()) {
            item.name = item.expr.parts.back();
        } else if (!item.expr.aggregateName.empty()) {
            item.name = item.expr.aggregateName;
            item.emitAlias = true;
        } else {
            item.name = "Expr" + std::to_string(exprNumber++);
            item.emitAlias = true;
        }
    }
    for (Item& item : items) {
        if (item.star || !item.alias.empty() || item.expr.parts.size() != 2) continue;
        const auto same = std::count_if(items.begin(), items.end(), [&](const Item& other) {
            return !other.star && other.alias.empty() && !other.expr.parts.empty() &&
                   equalsNoCase(other.expr.parts.back(), item.expr.parts.back());
        });
        if (same > 1) {
            item.name = item.expr.parts[0] + "." + item.expr.parts[1];
            item.emitAlias = true;
        }
    }
}

std::string ceilingOf(const std::string& x) {
    return "(CAST(" + x + " AS INTEGER) + (" + x + " > CAST(" + x + " AS INTEGER)))";
}

// In a query that groups, a field named outside an aggregate must be one it groups by.
void checkGrouping(Translator& t, const std::vector<Item>& items, const std::vector<Expr>& groups) {
    for (const Item& item : items) {
        const std::vector<std::string>& parts = item.expr.parts;
        if (item.star || item.expr.aggregate || parts.empty()) continue;
        const bool found = std::any_of(groups.begin(), groups.end(), [&](const Expr& g) {
            if (g.parts.empty() || !equalsNoCase(g.parts.back(), parts.back())) return false;
            return g.parts.size() == 1 || parts.size() == 1 || equalsNoCase(g.parts[0], parts[0]);
        });
        if (!found) {
            std::string written = parts[0];
            if (parts.size() > 1) written += "." + parts[1];
            t.fail(3122, "You tried to execute a query that does not include the specified "
                         "expression '" + written + "' as part of an aggregate function.");
        }
    }
}

}  // namespace

std::string orderList(const std::vector<OrderKey>& keys) {
    std::string out;
    for (const OrderKey& k : keys)
        out += (out.empty() ? "" : ", ") + k.sql + " COLLATE JETNOCASE" +
               (k.descending ? " DESC" : "");
    return out;
}

// The LIMIT that keeps the first n (or n percent) rows, and those that tie with the last.
static std::string topLimit(const Core& core, const std::vector<OrderKey>& keys,
                            Translator& t) {
    const std::string n = *core.top;
    if (keys.empty()) {
        if (!core.percent) return " LIMIT " + n;
        return " LIMIT (SELECT " + ceilingOf("(count(*) * " + n + " / 100.0)") + " FROM (" +
               core.select() + "))";
    }
    std::string window;
    std::string source;
    if (core.distinct) {
        std::vector<OrderKey> mapped;
        for (const OrderKey& k : keys) {
            const Item* match = nullptr;
            for (const Item& item : core.items)
                if (!item.star && (item.sql == k.sql ||
                                   (k.parts.size() == 1 && equalsNoCase(item.name, k.parts[0]))))
                    match = &item;
            if (match == nullptr)
                t.fail(3093, "ORDER BY clause (" + k.sql + ") conflicts with DISTINCT.");
            mapped.push_back({Translator::quoteName(match->name), k.descending, {}});
        }
        window = orderList(mapped);
        source = " FROM (" + core.select() + ")";
    } else {
        std::vector<OrderKey> mapped = keys;
        for (OrderKey& k : mapped) {  // a key naming an alias ranks by the aliased expression
            if (k.parts.size() != 1) continue;
            for (const Item& item : core.items)
                if (!item.alias.empty() && equalsNoCase(item.alias, k.parts[0])) k.sql = item.sql;
        }
        window = orderList(mapped);
        source = core.body;
    }
    const std::string bound = core.percent ? ceilingOf("(jet_rows * " + n + " / 100.0)") : n;
    return " LIMIT (SELECT count(*) FROM (SELECT RANK() OVER (ORDER BY " + window +
           ") AS jet_rank, count(*) OVER () AS jet_rows" + source + ") WHERE jet_rank <= " +
           bound + ")";
}

Core selectCore(Translator& t, std::optional<std::string>* into) {
    Core core;
    t.expectKeyword("select", 3141,
                    "The SELECT statement includes a reserved word or an argument name that is "
                    "misspelled or missing, or the punctuation is incorrect.");
    if (t.acceptKeyword("distinct")) core.distinct = true;
    else if (!t.acceptKeyword("distinctrow")) t.acceptKeyword("all");
    if (t.acceptKeyword("top")) {
        if (t.peek().kind != TokenKind::Number)
            t.fail(3141, "The SELECT statement includes a reserved word or an argument name that "
                         "is misspelled or missing, or the punctuation is incorrect.");
        core.top = t.take().text;
        core.percent = t.acceptKeyword("percent");
    }
    do {
        Item item;
        if (t.atSymbol("*")) {
            t.take();
            item.sql = "*";
            item.star = true;
        } else if ((t.peek().kind == TokenKind::Name || t.peek().kind == TokenKind::Word) &&
                   (t.atSymbol(".", 1) || t.atSymbol("!", 1)) && t.atSymbol("*", 2)) {
            item.sql = Translator::quoteName(t.take().text) + ".*";
            t.take();
            t.take();
            item.star = true;
        } else {
            if (t.atReservedWord() && !t.atKeyword("not") && !t.atKeyword("exists") &&
                !(t.atSymbol("(", 1) && findFunction(t.peek().text) != nullptr))
                t.fail(3141, "The SELECT statement includes a reserved word or an argument name "
                             "that is misspelled or missing, or the punctuation is incorrect.");
            item.expr = t.expression();
            item.sql = Translator::value(item.expr);
            if (t.acceptKeyword("as"))
                item.alias = t.name(3141, "The SELECT statement includes a reserved word or an "
                                          "argument name that is misspelled or missing, or the "
                                          "punctuation is incorrect.");
        }
        core.items.push_back(std::move(item));
    } while (t.acceptSymbol(","));
    nameItems(core.items, t.expressionNumber);
    if (t.acceptKeyword("into")) {
        std::string target = t.name(3131, "Syntax error in FROM clause.");
        if (t.atKeyword("in")) t.fail(3131, "Queries on other database files are not supported.");
        if (into == nullptr) t.fail(3141, "The SELECT statement includes a reserved word or an "
                                          "argument name that is misspelled or missing, or the "
                                          "punctuation is incorrect.");
        *into = std::move(target);
    }
    if (t.acceptKeyword("from")) core.fromWhere += " FROM " + t.fromClause();
    if (t.acceptKeyword("where"))
        core.fromWhere += " WHERE " + Translator::condition(t.expression());
    core.body = core.fromWhere;
    std::vector<Expr> groups;
    bool grouped = false;
    if (t.atKeyword("group") && t.atKeyword("by", 1)) {
        t.take();
        t.take();
        grouped = true;
        std::string list;
        do {
            groups.push_back(t.expression());
            list += (list.empty() ? "" : ", ") + Translator::value(groups.back()) +
                    " COLLATE JETNOCASE";
        } while (t.acceptSymbol(","));
        core.body += " GROUP BY " + list;
    }
    if (t.acceptKeyword("having")) {
        grouped = true;
        core.body += " HAVING " + Translator::condition(t.expression());
    }
    for (const Item& item : core.items) grouped = grouped || item.expr.aggregate;
    if (grouped) checkGrouping(t, core.items, groups);
    return core;
}

std::vector<OrderKey> orderBy(Translator& t) {
    std::vector<OrderKey> keys;
    if (!(t.atKeyword("order") && t.atKeyword("by", 1))) return keys;
    t.take();
    t.take();
    do {
        Expr e = t.expression();
        OrderKey k{Translator::value(e), false, e.parts};
        if (t.acceptKeyword("desc") || t.acceptKeyword("descending")) k.descending = true;
        else if (!t.acceptKeyword("asc")) t.acceptKeyword("ascending");
        keys.push_back(std::move(k));
    } while (t.acceptSymbol(","));
    return keys;
}

SelectText Translator::selectStatement(bool topLevel, std::optional<std::string>* intoTable) {
    if (atKeyword("transform")) return crosstab();
    struct Member { Core core; bool wrapped = false; std::string sql; };
    std::vector<std::pair<std::string, Member>> members;  // (UNION operator, member)
    std::string op;
    do {
        Member m;
        if (acceptSymbol("(")) {  // (SELECT ...) as a union member
            SelectText inner = selectStatement(false);
            expectSymbol(")", 3141, "The SELECT statement includes a reserved word or an "
                                    "argument name that is misspelled or missing, or the "
                                    "punctuation is incorrect.");
            m.wrapped = true;
            m.sql = "SELECT * FROM (" + inner.sql + ")";
            for (const std::string& n : inner.names) m.core.items.push_back({"", "", {}, false, n, false});
        } else if (acceptKeyword("table")) {
            m.wrapped = true;
            m.sql = "SELECT * FROM " + tableName(false);
            m.core.items.push_back({"*", "", {}, true, "", false});
        } else {
            m.core = selectCore(*this, members.empty() ? intoTable : nullptr);
        }
        members.emplace_back(op, std::move(m));
        op = acceptKeyword("union") ? (acceptKeyword("all") ? " UNION ALL " : " UNION ") : "";
    } while (!op.empty());

    std::vector<OrderKey> keys = orderBy(*this);
    if (topLevel && acceptKeyword("with")) {
        if (!acceptKeyword("owneraccess") || !acceptKeyword("option"))
            fail(3142, "Characters found after end of SQL statement.");
    }

    SelectText out;
    const Core& first = members.front().second.core;
    for (const Item& item : first.items) {
        if (item.star) out.star = true;
        else out.names.push_back(item.name);
        if (!item.star && item.expr.parts.empty() && item.expr.type)
            out.types.emplace_back(item.name, *item.expr.type);
    }
    if (members.size() == 1 && !members.front().second.wrapped) {
        out.sql = first.select();
        if (!keys.empty()) out.sql += " ORDER BY " + orderList(keys);
        if (first.top) out.sql += topLimit(first, keys, *this);
        return out;
    }
    out.kind = QueryKind::Union;
    for (auto& [unionOp, m] : members) {
        std::string sql = m.wrapped ? m.sql : m.core.select();
        if (!m.wrapped && m.core.top)
            sql = "SELECT * FROM (" + sql + topLimit(m.core, {}, *this) + ")";
        out.sql += unionOp + sql;
    }
    for (OrderKey& k : keys)  // a compound sorts by its output columns
        if (!k.parts.empty()) k.sql = quoteName(k.parts.back());
    if (!keys.empty()) out.sql += " ORDER BY " + orderList(keys);
    if (members.size() == 1) out.kind = QueryKind::Select;
    return out;
}

std::string Translator::fromClause() {
    std::string out = joinChain();
    while (acceptSymbol(",")) out += ", " + joinChain();
    return out;
}

std::string Translator::joinChain() {
    std::string left = tableSource();
    while (true) {
        std::string kind;
        if (acceptKeyword("inner")) kind = "INNER";
        else if (acceptKeyword("left")) kind = "LEFT";
        else if (acceptKeyword("right")) kind = "RIGHT";
        else if (atKeyword("join")) kind = "INNER";
        else return left;
        if (kind != "INNER") acceptKeyword("outer");
        expectKeyword("join", 3131, "Syntax error in FROM clause.");
        std::string right = tableSource();
        expectKeyword("on", 3131, "Syntax error in JOIN operation.");
        left += " " + kind + " JOIN " + right + " ON " + condition(expression());
    }
}

std::string Translator::tableSource() {
    DepthGuard depth(*this);
    if (acceptSymbol("(")) {
        if (atKeyword("select")) {
            std::string sql = subquery();
            if (acceptKeyword("as") || peek().kind == TokenKind::Name ||
                (peek().kind == TokenKind::Word && !atReservedWord()))
                sql += " AS " + quoteName(name(3131, "Syntax error in FROM clause."));
            return sql;
        }
        std::string inner = joinChain();
        expectSymbol(")", 3131, "Syntax error in FROM clause.");
        return "(" + inner + ")";
    }
    const Token& t = peek();
    if (t.kind == TokenKind::Name && atSymbol(".", 1) && t.text.size() > 7 &&
        equalsNoCase(t.text.substr(0, 7), "select ")) {  // [SELECT ...]. AS alias
        const std::string inner = take().text;
        take();
        SelectText s = withTokens(inner, [&] { return selectStatement(false); });
        std::string sql = "(" + s.sql + ")";
        if (acceptKeyword("as") || peek().kind == TokenKind::Name ||
            (peek().kind == TokenKind::Word && !atReservedWord()))
            sql += " AS " + quoteName(name(3131, "Syntax error in FROM clause."));
        return sql;
    }
    return tableName(true);
}

std::string Translator::tableName(bool allowAlias) {
    const std::string table = name(3131, "Syntax error in FROM clause.");
    if (atKeyword("in")) fail(3131, "Queries on other database files are not supported.");
    std::string alias;
    if (allowAlias) {
        if (acceptKeyword("as")) alias = name(3131, "Syntax error in FROM clause.");
        else if (peek().kind == TokenKind::Name ||
                 (peek().kind == TokenKind::Word && !atReservedWord() &&
                  !atKeyword("full") && !atKeyword("outer")))
            alias = take().text;
    }
    std::optional<std::string> stored;
    if (options.savedQuery) stored = options.savedQuery(table);
    if (!stored) {
        if (!alias.empty()) aliases.emplace_back(alias, table);
        return quoteName(table) + (alias.empty() ? "" : " AS " + quoteName(alias));
    }
    if (++nesting > 16) fail(3103, "Circular reference caused by '" + table + "'.");
    SelectText s = withTokens(*stored, [&] {
        if (acceptKeyword("parameters")) parametersClause();
        SelectText inner = selectStatement(false);
        acceptSymbol(";");
        if (!atEnd()) fail(3142, "Characters found after end of SQL statement.");
        return inner;
    });
    --nesting;
    return "(" + s.sql + ") AS " + quoteName(alias.empty() ? table : alias);
}

}  // namespace kelvo::jet
