// Selection: the "X" filter of ssget over the whole drawing, and the process's selection
// sets.
//
// A filter is a list of groups that an entity must all match; a group (code . value)
// matches when the entity has that group with a matching value: text by wildcard without
// regard to case, numbers by the relational operator of a preceding (-4 . "op") group
// ("=", "!=", "/=", "<>", "<", "<=", ">", ">=", "*", "&" any bit, "&=" all bits; for
// points one operator per coordinate, "op,op,op"). (-4 . "<AND") ... (-4 . "AND>") and
// likewise OR, XOR and NOT group tests; (-3 ("APP")) asks for extended data of an
// application. An entity without a colour or linetype group has (62 . 256) and
// (6 . "BYLAYER"); its layout group (410) is "Model" in model space and "Layout1" in
// paper space. An operator this list does not name makes the filter invalid.

#include <algorithm>
#include <cmath>
#include <cwctype>
#include <map>

#include "adslib.h"
#include "lisp/wcmatch.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/drawing/resbuf_chain.h"

namespace kelvo::drawing {
namespace {

using Nodes = std::vector<const resbuf*>;

std::wstring textOf(const resbuf* rb) {
    return rb && rbKindOf(rb->restype) == RbKind::String && rb->resval.rstring ? rb->resval.rstring : L"";
}

bool compareNumber(double have, double want, const std::wstring& op) {
    if (op == L"*") return true;
    if (op == L"=") return std::fabs(have - want) < 1e-10;
    if (op == L"!=" || op == L"/=" || op == L"<>") return std::fabs(have - want) >= 1e-10;
    if (op == L"<") return have < want;
    if (op == L"<=") return have <= want;
    if (op == L">") return have > want;
    if (op == L">=") return have >= want;
    auto h = static_cast<long long>(have), w = static_cast<long long>(want);
    if (op == L"&") return (h & w) != 0;
    if (op == L"&=") return (h & w) == w;
    return false;
}

bool isRelationalOperator(const std::wstring& op) {
    static const std::wstring known[] = {L"*", L"=", L"!=", L"/=", L"<>", L"<", L"<=",
                                         L">", L">=", L"&", L"&="};
    std::size_t start = 0;
    while (true) {
        std::size_t comma = op.find(L',', start);
        std::wstring one = op.substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start);
        if (std::find(std::begin(known), std::end(known), one) == std::end(known)) return false;
        if (comma == std::wstring::npos) return true;
        start = comma + 1;
    }
}

bool compareItem(const resbuf* have, const resbuf* want, const std::wstring& op) {
    switch (rbKindOf(want->restype)) {
        case RbKind::String: {
            bool match = lisp::wcmatch(upperName(textOf(have)), upperName(textOf(want)));
            if (op == L"!=" || op == L"/=" || op == L"<>") return !match;
            return op == L"*" || match;
        }
        case RbKind::Point: {
            std::vector<std::wstring> ops;
            std::size_t start = 0;
            while (true) {
                std::size_t comma = op.find(L',', start);
                ops.push_back(op.substr(start, comma == std::wstring::npos ? std::wstring::npos : comma - start));
                if (comma == std::wstring::npos) break;
                start = comma + 1;
            }
            for (int i = 0; i < 3; ++i)
                if (!compareNumber(have->resval.rpoint[i], want->resval.rpoint[i],
                                   ops.size() == 3 ? ops[i] : ops[0]))
                    return false;
            return true;
        }
        case RbKind::Name: return have->resval.rlname[0] == want->resval.rlname[0];
        case RbKind::Real: return compareNumber(have->resval.rreal, want->resval.rreal, op);
        case RbKind::Short: case RbKind::Long: {
            auto value = [](const resbuf* rb) {
                return rbKindOf(rb->restype) == RbKind::Short ? double(rb->resval.rint) : double(rb->resval.rlong);
            };
            return compareNumber(value(have), value(want), op);
        }
        default: return false;
    }
}

class FilterEvaluator {
public:
    FilterEvaluator(const Nodes& filter, const resbuf* data, const std::vector<std::wstring>& apps,
                    const wchar_t* layout)
        : filter_(filter), data_(data), apps_(apps), layout_(layout) {}

    // The tests from pos to the closing operator `close` (or the end), combined by `kind`.
    bool group(std::size_t& pos, const std::wstring& kind, const std::wstring& close, bool& ok) {
        std::vector<bool> results;
        while (pos < filter_.size()) {
            const resbuf* rb = filter_[pos];
            if (rb->restype == -4) {
                std::wstring op = upperName(textOf(rb));
                if (op == close) {
                    ++pos;
                    return combine(kind, results, ok);
                }
                if (!op.empty() && op[0] == L'<' && op.size() > 2 && std::iswalpha(op[1])) {
                    std::wstring inner = op.substr(1);
                    ++pos;
                    results.push_back(group(pos, inner, inner + L">", ok));
                    continue;
                }
                ++pos;   // a relational operator for the next group
                if (pos >= filter_.size() || !isRelationalOperator(op)) {
                    ok = false;
                    return false;
                }
                results.push_back(test(filter_[pos++], op));
                continue;
            }
            if (rb->restype == AcDb::kDxfXDataStart) {
                ++pos;
                bool any = false;
                while (pos < filter_.size() && filter_[pos]->restype == AcDb::kDxfRegAppName) {
                    std::wstring pattern = upperName(textOf(filter_[pos++]));
                    for (const std::wstring& app : apps_)
                        if (lisp::wcmatch(upperName(app), pattern)) any = true;
                }
                results.push_back(any);
                continue;
            }
            results.push_back(test(rb, L"="));
            ++pos;
        }
        if (!close.empty()) ok = false;   // an operator group that never closes
        return combine(kind, results, ok);
    }

private:
    static bool combine(const std::wstring& kind, const std::vector<bool>& r, bool& ok) {
        int count = 0;
        for (bool b : r) count += b ? 1 : 0;
        if (kind == L"AND") return count == static_cast<int>(r.size());
        if (kind == L"OR") return count > 0;
        if (kind == L"XOR") {
            if (r.size() != 2) ok = false;
            return count == 1;
        }
        if (kind == L"NOT") {
            if (r.size() != 1) ok = false;
            return count == 0;
        }
        ok = false;
        return false;
    }

    bool test(const resbuf* want, const std::wstring& op) const {
        bool seen = false;
        int code = want->restype == RTDXF0 ? 0 : want->restype;   // group 0 in a built list
        for (const resbuf* rb = data_; rb; rb = rb->rbnext) {
            if (rb->restype == AcDb::kDxfXDataStart) break;
            if (rb->restype != code) continue;
            seen = true;
            if (compareItem(rb, want, op)) return true;
        }
        if (seen) return false;
        // The defaults an entity has without writing them.
        resbuf stand{};
        stand.restype = want->restype;
        if (want->restype == AcDb::kDxfColor) stand.resval.rint = 256;
        else if (want->restype == AcDb::kDxfLinetypeName) stand.resval.rstring = const_cast<ACHAR*>(L"BYLAYER");
        else if (want->restype == 67 || want->restype == AcDb::kDxfVisibility) stand.resval.rint = 0;
        else if (want->restype == 410) stand.resval.rstring = const_cast<ACHAR*>(layout_);
        else return false;
        return compareItem(&stand, want, op);
    }

    const Nodes& filter_;
    const resbuf* data_;
    const std::vector<std::wstring>& apps_;
    const wchar_t* layout_;
};

std::map<std::int64_t, std::vector<AcDbObjectId>>& sets() {
    static std::map<std::int64_t, std::vector<AcDbObjectId>> all;
    return all;
}

}  // namespace

Acad::ErrorStatus selectAll(const AcDbDatabase& db, const resbuf* filter, std::vector<AcDbObjectId>& out) {
    out.clear();
    Nodes nodes;
    for (const resbuf* rb = filter; rb; rb = rb->rbnext) nodes.push_back(rb);
    static const std::vector<std::wstring> all{L"*"};
    {
        // The filter's form is checked once, so that a bad one is refused in an empty drawing too.
        const std::vector<std::wstring> none;
        bool ok = true;
        std::size_t pos = 0;
        FilterEvaluator check(nodes, nullptr, none, L"Model");
        check.group(pos, L"AND", L"", ok);
        if (!ok || pos != nodes.size()) return Acad::eInvalidInput;
    }
    for (AcDbObjectId space : {db.modelSpaceId(), db.paperSpaceId()}) {
        const wchar_t* layout = space == db.modelSpaceId() ? L"Model" : L"Layout1";
        for (AcDbObjectId id : blockEntities(space)) {
            RbChain data(entityData(id, &all));
            std::vector<std::wstring> apps;
            bool inXData = false;
            for (const resbuf* rb = data.get(); rb; rb = rb->rbnext) {
                if (rb->restype == AcDb::kDxfXDataStart) inXData = true;
                if (inXData && rb->restype == AcDb::kDxfRegAppName) apps.push_back(textOf(rb));
            }
            bool ok = true;
            std::size_t pos = 0;
            FilterEvaluator evaluator(nodes, data.get(), apps, layout);
            bool pass = evaluator.group(pos, L"AND", L"", ok);
            if (!ok || pos != nodes.size()) return Acad::eInvalidInput;
            if (pass) out.push_back(id);
        }
    }
    return Acad::eOk;
}

std::int64_t newSelectionSet(std::vector<AcDbObjectId> ids) {
    static std::int64_t next = 0;
    sets()[++next] = std::move(ids);
    return next;
}

std::vector<AcDbObjectId>* selectionSet(std::int64_t number) {
    auto it = sets().find(number);
    return it == sets().end() ? nullptr : &it->second;
}

bool freeSelectionSet(std::int64_t number) { return sets().erase(number) > 0; }

}  // namespace kelvo::drawing
