// The pieces of a SELECT shared by plain selects, unions and crosstabs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jet_translator.h"

namespace kelvo::jet {

struct Item {
    std::string sql;
    std::string alias;  // explicit AS name
    Expr expr;
    bool star = false;
    std::string name;   // output name
    bool emitAlias = false;
};

struct OrderKey {
    std::string sql;
    bool descending = false;
    std::vector<std::string> parts;
};

struct Core {
    bool distinct = false;
    std::optional<std::string> top;
    bool percent = false;
    std::vector<Item> items;
    std::string fromWhere;  // " FROM ... WHERE ..."
    std::string body;       // fromWhere + " GROUP BY ... HAVING ..."

    std::string itemList() const {
        std::string out;
        for (const Item& item : items) {
            if (!out.empty()) out += ", ";
            out += item.sql;
            if (item.emitAlias) out += " AS " + Translator::quoteName(item.name);
        }
        return out;
    }
    std::string select() const {
        return std::string("SELECT ") + (distinct ? "DISTINCT " : "") + itemList() + body;
    }
};

// SELECT ... [HAVING ...], without ORDER BY. into receives SELECT ... INTO's table
// (INTO is refused when into is null).
Core selectCore(Translator& t, std::optional<std::string>* into);
// ORDER BY keys, or none.
std::vector<OrderKey> orderBy(Translator& t);
// The keys as SQLite's ORDER BY list.
std::string orderList(const std::vector<OrderKey>& keys);

}  // namespace kelvo::jet
