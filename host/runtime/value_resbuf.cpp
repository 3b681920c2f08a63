#include "runtime/value_resbuf.h"

#include <cstdint>
#include <vector>

#include "adslib.h"
#include "lisp/interp.h"

namespace kelvo::host {
namespace {

using lisp::Type;
using lisp::Value;

// Appends nodes at the tail of a chain it owns until released to the caller.
class ChainBuilder {
public:
    ~ChainBuilder() { acutRelRb(head_); }
    resbuf* add(int type) {
        resbuf* rb = acutNewRb(type);
        *tail_ = rb;
        tail_ = &rb->rbnext;
        return rb;
    }
    resbuf* release() {
        resbuf* h = head_;
        head_ = nullptr;
        tail_ = &head_;
        return h;
    }

private:
    resbuf* head_ = nullptr;
    resbuf** tail_ = &head_;
};

bool isPoint(const Value& v) {
    auto items = v.toVector();
    if (items.size() < 2 || items.size() > 3) return false;
    Value rest = v;
    for (size_t i = 0; i < items.size(); ++i) rest = rest.cdr();
    if (!rest.isNil()) return false;
    for (const Value& item : items)
        if (item.type() != Type::Real) return false;
    return true;
}

// Writes a value that is not a list to open (an atom or a point); false for a list.
bool appendLeaf(ChainBuilder& out, const Value& v) {
    switch (v.type()) {
        case Type::Nil:
            out.add(RTNIL);
            return true;
        case Type::Int: {
            std::int32_t i = v.asInt();
            if (i == static_cast<short>(i)) out.add(RTSHORT)->resval.rint = static_cast<short>(i);
            else out.add(RTLONG)->resval.rlong = i;
            return true;
        }
        case Type::Real:
            out.add(RTREAL)->resval.rreal = v.asReal();
            return true;
        case Type::Str:
            acutNewString(v.asString().c_str(), out.add(RTSTR)->resval.rstring);
            return true;
        case Type::Sym:
            if (v.isT()) {
                out.add(RTT);
                return true;
            }
            break;
        case Type::Ename: case Type::Pickset: {
            resbuf* rb = out.add(v.type() == Type::Ename ? RTENAME : RTPICKS);
            rb->resval.rlname[0] = v.handleId();
            rb->resval.rlname[1] = 0;
            return true;
        }
        case Type::Cons: {
            if (!isPoint(v)) return false;
            auto items = v.toVector();
            resbuf* rb = out.add(items.size() == 2 ? RTPOINT : RT3DPOINT);
            for (size_t i = 0; i < 3; ++i)
                rb->resval.rpoint[i] = i < items.size() ? items[i].asReal() : 0.0;
            return true;
        }
        default: break;
    }
    throw lisp::Error(L"bad argument type for an external function: " +
                      lisp::Interp::prin1String(v));
}

// Lists are written with a stack of the lists still open rather than by recursion, so
// that any depth of nesting converts.
void append(ChainBuilder& out, const Value& value) {
    if (appendLeaf(out, value)) return;
    out.add(RTLB);
    std::vector<Value> open{value};  // the rest of each open list still to write
    while (!open.empty()) {
        Value& rest = open.back();
        if (!rest.isCons()) {
            if (!rest.isNil()) {
                out.add(RTDOTE);
                appendLeaf(out, rest);
            }
            out.add(RTLE);
            open.pop_back();
            continue;
        }
        Value item = rest.car();
        rest = rest.cdr();
        if (!appendLeaf(out, item)) {
            out.add(RTLB);
            open.push_back(std::move(item));
        }
    }
}

// Reads one value at *rb and moves past it.
Value readValue(const resbuf*& rb);

Value pointValue(const double* p, bool threeD) {
    if (threeD) return Value::list({Value::real(p[0]), Value::real(p[1]), Value::real(p[2])});
    return Value::list({Value::real(p[0]), Value::real(p[1])});
}

// A node of an entity-data group code becomes (code . value), or (code x y z) for points.
Value groupValue(const resbuf* rb) {
    Value code = Value::integer(rb->restype == RTDXF0 ? 0 : rb->restype);
    switch (rbKindOf(rb->restype)) {
        case RbKind::Real: return Value::cons(code, Value::real(rb->resval.rreal));
        case RbKind::Point: return Value::cons(code, pointValue(rb->resval.rpoint, true));
        case RbKind::Short: return Value::cons(code, Value::integer(rb->resval.rint));
        case RbKind::Long: return Value::cons(code, Value::integer(rb->resval.rlong));
        case RbKind::Int64:
            return Value::cons(code, Value::real(static_cast<double>(rb->resval.mnInt64)));
        case RbKind::String:
            return Value::cons(code, Value::string(rb->resval.rstring ? rb->resval.rstring : L""));
        case RbKind::Name: return Value::cons(code, Value::ename(rb->resval.rlname[0]));
        default: return Value::list({code});
    }
}

Value readList(const resbuf*& rb);

Value readValue(const resbuf*& rb) {
    const resbuf* node = rb;
    rb = rb->rbnext;
    switch (node->restype) {
        case RTREAL: case RTANG: case RTORINT: return Value::real(node->resval.rreal);
        case RTSHORT: return Value::integer(node->resval.rint);
        case RTLONG: return Value::integer(node->resval.rlong);
        case RTSTR: return Value::string(node->resval.rstring ? node->resval.rstring : L"");
        case RTDXF0: return groupValue(node);
        case RTPOINT: return pointValue(node->resval.rpoint, false);
        case RT3DPOINT: return pointValue(node->resval.rpoint, true);
        case RTENAME: return Value::ename(node->resval.rlname[0]);
        case RTPICKS: return Value::pickset(node->resval.rlname[0]);
        case RTT: return Value::t();
        case RTLB: return readList(rb);
        case RTNIL: case RTNONE: case RTVOID: case RTLE: case RTDOTE: return {};
        default: return groupValue(node);
    }
}

// The list whose RTLB was just passed. Nested lists are read with a stack of the lists
// still open rather than by recursion, so that any depth of nesting converts.
Value readList(const resbuf*& rb) {
    struct Open {
        std::vector<Value> items;
        Value tail;
        bool dotted = false;  // after RTDOTE: the next value is the tail
    };
    std::vector<Open> open(1);
    for (;;) {
        Value done;
        if (!rb || rb->restype == RTLE) {
            if (rb) rb = rb->rbnext;
            done = Value::list(open.back().items, open.back().tail);
            open.pop_back();
            if (open.empty()) return done;
        } else if (rb->restype == RTDOTE) {
            rb = rb->rbnext;
            if (rb && rb->restype != RTLE) open.back().dotted = true;
            continue;
        } else if (rb->restype == RTLB) {
            rb = rb->rbnext;
            open.emplace_back();
            continue;
        } else {
            done = readValue(rb);
        }
        Open& outer = open.back();
        if (outer.dotted) {
            outer.tail = std::move(done);
            outer.dotted = false;
        } else {
            outer.items.push_back(std::move(done));
        }
    }
}

}  // namespace

resbuf* valuesToChain(const std::vector<Value>& values) {
    ChainBuilder out;
    for (const Value& v : values) append(out, v);
    return out.release();
}

resbuf* valueToChain(const Value& value) {
    ChainBuilder out;
    append(out, value);
    return out.release();
}

std::vector<Value> chainToValues(const resbuf* chain) {
    std::vector<Value> values;
    while (chain) values.push_back(readValue(chain));
    return values;
}

Value chainToList(const resbuf* chain) {
    if (!chain) return {};
    const resbuf* rb = chain;
    if (chain->restype == RTLB) {
        Value first = readValue(rb);
        if (!rb) return first;
    }
    return Value::list(chainToValues(chain));
}

Value chainToValue(const resbuf* chain) {
    if (!chain) return {};
    return readValue(chain);
}

}  // namespace kelvo::host
