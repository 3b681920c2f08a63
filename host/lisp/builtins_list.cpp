// List functions: construction, access (car .. cddddr), search and the higher-order
// functions that take a function argument.
#include <algorithm>
#include <optional>

#include "args.h"
#include "interp_impl.h"
#include "library.h"

namespace lisp {

namespace {

// The car of a list, or nil; any other value is an error.
Value checkedCar(const Value& v) {
    if (!v.isList()) badArgType(L"consp", v);
    return v.car();
}

Value checkedCdr(const Value& v) {
    if (!v.isList()) badArgType(L"consp", v);
    return v.cdr();
}

// The c[ad]+r functions: `path` is the letters between c and r, applied right to left.
void defineCxr(Interp& in, const std::wstring& path) {
    in.defineSubr(L"c" + path + L"r", [path](Interp&, std::vector<Value>& args) {
        Args a(args, 1, 1);
        Value v = a[0];
        for (auto it = path.rbegin(); it != path.rend(); ++it)
            v = *it == L'a' ? checkedCar(v) : checkedCdr(v);
        return v;
    });
}

void defineAllCxr(Interp& in) {
    std::vector<std::wstring> paths{L"a", L"d"};
    for (std::size_t i = 0; i < paths.size(); ++i) {
        defineCxr(in, paths[i]);
        if (paths[i].size() < 4) {
            paths.push_back(L"a" + paths[i]);
            paths.push_back(L"d" + paths[i]);
        }
    }
}

// The elements of a proper list argument; a dotted list is an error.
std::vector<Value> properList(const Args& a, std::size_t i) {
    Value p = a.list(i);
    std::vector<Value> out;
    for (; p.isCons(); p = p.cdr()) out.push_back(p.car());
    if (!p.isNil()) badArgType(L"listp", a[i]);
    return out;
}

Value fnCons(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    return Value::cons(a[0], a[1]);
}

Value fnList(Interp&, std::vector<Value>& args) { return Value::list(args); }

Value fnListStar(Interp&, std::vector<Value>& args) {
    Args a(args, 1, kAnyCount);
    Value tail = args.back();
    args.pop_back();
    return Value::list(args, tail);
}

Value fnAppend(Interp&, std::vector<Value>& args) {
    Args a(args, 0, kAnyCount);
    if (args.empty()) return {};
    std::vector<Value> items;
    for (std::size_t i = 0; i + 1 < args.size(); ++i) {
        auto part = properList(a, i);
        items.insert(items.end(), part.begin(), part.end());
    }
    return Value::list(items, a.list(args.size() - 1));
}

Value fnReverse(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    auto items = properList(a, 0);
    std::reverse(items.begin(), items.end());
    return Value::list(items);
}

Value fnLength(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    return Value::integer(static_cast<std::int32_t>(properList(a, 0).size()));
}

Value fnListLength(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    Value p = a.list(0);
    std::int32_t n = 0;
    for (; p.isCons(); p = p.cdr()) ++n;
    return p.isNil() ? Value::integer(n) : Value();
}

Value fnNth(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    std::int32_t n = a.integer(0);
    Value p = a.list(1);
    for (; n > 0 && p.isCons(); --n) p = p.cdr();
    return n < 0 ? Value() : p.car();
}

Value fnLast(Interp&, std::vector<Value>& args) {
    Args a(args, 1, 1);
    Value p = a.list(0);
    while (p.cdr().isCons()) p = p.cdr();
    return p.car();
}

Value fnMember(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    for (Value p = a.list(1); p.isCons(); p = p.cdr())
        if (lispEqual(a[0], p.car())) return p;
    return {};
}

Value fnAssoc(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    for (Value p = a.list(1); p.isCons(); p = p.cdr())
        if (p.car().isCons() && lispEqual(a[0], p.car().car())) return p.car();
    return {};
}

// A copy of `tree` with every part equal to `old` replaced by `fresh`. Built with a stack
// of the lists being copied rather than by recursion, so that any length or depth works.
Value substTree(const Value& fresh, const Value& old, const Value& tree) {
    struct Open {
        Value rest;                // what is left of the list after the element in work
        std::vector<Value> items;  // the copied elements so far
    };
    std::vector<Open> open;
    Value next = tree;  // a part still to copy
    Value done;         // the copy of the part just finished
    bool haveNext = true;
    for (;;) {
        if (haveNext) {
            haveNext = false;
            if (lispEqual(old, next)) {
                done = fresh;
            } else if (!next.isCons()) {
                done = next;
            } else {
                open.push_back({next.cdr(), {}});
                next = next.car();
                haveNext = true;
                continue;
            }
        }
        if (open.empty()) return done;
        Open& list = open.back();
        list.items.push_back(std::move(done));
        if (list.rest.isCons() && !lispEqual(old, list.rest)) {
            next = list.rest.car();
            list.rest = list.rest.cdr();
            haveNext = true;
            continue;
        }
        done = Value::list(list.items, lispEqual(old, list.rest) ? fresh : list.rest);
        open.pop_back();
    }
}

Value fnSubst(Interp&, std::vector<Value>& args) {
    Args a(args, 3, 3);
    return substTree(a[0], a[1], a.list(2));
}

Value fnPosition(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    std::int32_t i = 0;
    for (Value p = a.list(1); p.isCons(); p = p.cdr(), ++i)
        if (lispEqual(a[0], p.car())) return Value::integer(i);
    return {};
}

Value fnRemove(Interp&, std::vector<Value>& args) {
    Args a(args, 2, 2);
    std::vector<Value> kept;
    for (const Value& v : properList(a, 1))
        if (!lispEqual(a[0], v)) kept.push_back(v);
    return Value::list(kept);
}

Value fnMapcar(Interp& in, std::vector<Value>& args) {
    Args a(args, 2, kAnyCount);
    Value fn = resolveFunction(in, a[0]);
    std::vector<Value> lists(args.begin() + 1, args.end());
    for (std::size_t i = 1; i < args.size(); ++i) a.list(i);
    std::vector<Value> results;
    for (;;) {
        std::vector<Value> callArgs;
        for (auto& l : lists) {
            if (!l.isCons()) return Value::list(results);
            callArgs.push_back(l.car());
            l = l.cdr();
        }
        results.push_back(callFunction(in, fn, callArgs));
    }
}

// Calls a one-argument predicate on each element; `onMatch(rest, result)` returns the
// answer that ends the scan, or nullopt to go on.
template <class OnMatch>
Value scanList(Interp& in, std::vector<Value>& args, OnMatch onMatch) {
    Args a(args, 2, 2);
    Value fn = resolveFunction(in, a[0]);
    for (Value p = a.list(1); p.isCons(); p = p.cdr()) {
        std::vector<Value> callArgs{p.car()};
        if (auto r = onMatch(p, callFunction(in, fn, callArgs))) return *r;
    }
    return {};
}

Value fnMemberIf(Interp& in, std::vector<Value>& args) {
    return scanList(in, args, [](const Value& p, const Value& r) {
        return !r.isNil() ? std::optional(p) : std::nullopt;
    });
}

Value fnMemberIfNot(Interp& in, std::vector<Value>& args) {
    return scanList(in, args, [](const Value& p, const Value& r) {
        return r.isNil() ? std::optional(p) : std::nullopt;
    });
}

// Calls the predicate on the first elements of every list, then on the second ones,
// and so on until the shortest list ends; returns the first result for which `stop`
// holds, or nullopt.
template <class Stop>
std::optional<Value> scanLists(Interp& in, std::vector<Value>& args, Stop stop) {
    Args a(args, 2, kAnyCount);
    Value fn = resolveFunction(in, a[0]);
    std::vector<Value> lists;
    for (std::size_t i = 1; i < args.size(); ++i) lists.push_back(a.list(i));
    for (;;) {
        std::vector<Value> callArgs;
        for (auto& l : lists) {
            if (!l.isCons()) return std::nullopt;
            callArgs.push_back(l.car());
            l = l.cdr();
        }
        Value r = callFunction(in, fn, callArgs);
        if (stop(r)) return r;
    }
}

Value fnSome(Interp& in, std::vector<Value>& args) {
    return scanLists(in, args, [](const Value& r) { return !r.isNil(); }).value_or(Value());
}

Value fnEvery(Interp& in, std::vector<Value>& args) {
    return boolValue(!scanLists(in, args, [](const Value& r) { return r.isNil(); }));
}

Value filterList(Interp& in, std::vector<Value>& args, bool keepMatches) {
    Args a(args, 2, 2);
    Value fn = resolveFunction(in, a[0]);
    std::vector<Value> kept;
    for (const Value& v : properList(a, 1)) {
        std::vector<Value> callArgs{v};
        if (callFunction(in, fn, callArgs).isNil() != keepMatches) kept.push_back(v);
    }
    return Value::list(kept);
}

Value fnRemoveIf(Interp& in, std::vector<Value>& args) { return filterList(in, args, false); }
Value fnRemoveIfNot(Interp& in, std::vector<Value>& args) { return filterList(in, args, true); }

// Indices of the list sorted by the comparison function (stable).
std::vector<std::size_t> sortedIndices(Interp& in, std::vector<Value>& args, std::vector<Value>& items) {
    Args a(args, 2, 2);
    items = properList(a, 0);
    Value fn = resolveFunction(in, a[1]);
    std::vector<std::size_t> idx(items.size());
    for (std::size_t i = 0; i < idx.size(); ++i) idx[i] = i;
    std::stable_sort(idx.begin(), idx.end(), [&](std::size_t x, std::size_t y) {
        std::vector<Value> callArgs{items[x], items[y]};
        return !callFunction(in, fn, callArgs).isNil();
    });
    return idx;
}

// (vl-sort list fn): as the host does, an integer equal to the one before it in the
// sorted list is dropped ((vl-sort '(3 2 1 3) '<) is (1 2 3)); other values are kept.
Value fnSort(Interp& in, std::vector<Value>& args) {
    std::vector<Value> items;
    std::vector<Value> out;
    for (std::size_t i : sortedIndices(in, args, items)) {
        const Value& v = items[i];
        if (v.type() == Type::Int && !out.empty() && out.back().type() == Type::Int &&
            out.back().asInt() == v.asInt())
            continue;
        out.push_back(v);
    }
    return Value::list(out);
}

Value fnSortI(Interp& in, std::vector<Value>& args) {
    std::vector<Value> items;
    std::vector<Value> out;
    for (std::size_t i : sortedIndices(in, args, items)) out.push_back(Value::integer(static_cast<std::int32_t>(i)));
    return Value::list(out);
}

const Builtin kListLib[] = {
    {L"cons", fnCons},
    {L"list", fnList},
    {L"vl-list*", fnListStar},
    {L"append", fnAppend},
    {L"reverse", fnReverse},
    {L"length", fnLength},
    {L"vl-list-length", fnListLength},
    {L"nth", fnNth},
    {L"last", fnLast},
    {L"member", fnMember},
    {L"assoc", fnAssoc},
    {L"subst", fnSubst},
    {L"vl-position", fnPosition},
    {L"vl-remove", fnRemove},
    {L"mapcar", fnMapcar},
    {L"vl-member-if", fnMemberIf},
    {L"vl-member-if-not", fnMemberIfNot},
    {L"vl-some", fnSome},
    {L"vl-every", fnEvery},
    {L"vl-remove-if", fnRemoveIf},
    {L"vl-remove-if-not", fnRemoveIfNot},
    {L"vl-sort", fnSort},
    {L"vl-sort-i", fnSortI},
};

}  // namespace

void openListLib(Interp& in) {
    defineAllCxr(in);
    openLibrary(in, kListLib);
}

}  // namespace lisp
