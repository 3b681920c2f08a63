// Fuzz target: the argument readers and the host's value-list conversion. The bytes are
// a small program and a value list: the first byte says how many reader calls follow
// (one byte each), the rest are decoded into a resbuf chain (any node type, any order:
// lists need not balance, as a careless module's result need not). Every reader keeps its
// contract (on failure the cursor does not move; on success it moves forward along the
// chain or, where documented, stays), and the chain converts to LISP values and back to a
// chain that reads as the same values.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "adslib.h"
#include "bridge/arg_readers.h"
#include "fuzz_check.h"
#include "lisp/interp.h"
#include "runtime/value_resbuf.h"
#include "utf8.h"

namespace {

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    bool empty() const { return pos_ >= size_; }
    std::uint8_t byte() { return empty() ? 0 : data_[pos_++]; }
    template <typename T>
    T value() {
        T out{};
        unsigned char raw[sizeof(T)] = {};
        for (unsigned char& b : raw) b = byte();
        std::memcpy(&out, raw, sizeof(T));
        return out;
    }
    std::wstring text() {
        std::string utf8;
        for (std::uint8_t n = byte() % 24; n > 0 && !empty(); --n) utf8.push_back(char(byte()));
        return kelvo::fromUtf8(utf8);
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t pos_ = 0;
};

// The value of a node of `type`, by the kind of value that type carries.
void fillValue(resbuf* rb, Bytes& in) {
    switch (rbKindOf(rb->restype)) {
        case RbKind::Real:
            rb->resval.rreal = in.value<double>();
            break;
        case RbKind::Point:
            for (double& c : rb->resval.rpoint) c = in.value<double>();
            break;
        case RbKind::Short:
            rb->resval.rint = in.value<short>();
            break;
        case RbKind::Long:
            rb->resval.rlong = in.value<std::int32_t>();
            break;
        case RbKind::Int64:
            rb->resval.mnInt64 = in.value<std::int64_t>();
            break;
        case RbKind::String:
            acutNewString(in.text().c_str(), rb->resval.rstring);
            break;
        case RbKind::Name:
            rb->resval.rlname[0] = in.value<std::int64_t>();
            break;
        case RbKind::Binary: {
            const short n = in.byte() % 16;
            rb->resval.rbinary.clen = n;
            rb->resval.rbinary.buf = static_cast<char*>(std::malloc(n + 1));
            for (short i = 0; i < n; ++i) rb->resval.rbinary.buf[i] = char(in.byte());
            break;
        }
        case RbKind::None:
            break;
    }
}

short nodeType(Bytes& in) {
    static const short kTypes[] = {RTSHORT, RTLONG, RTREAL, RTSTR,   RTLB,      RTLE,
                                   RTDOTE,  RTNIL,  RTT,    RTPOINT, RT3DPOINT, RTENAME,
                                   RTPICKS, RTVOID, RTANG,  RTDXF0};
    const std::uint8_t b = in.byte();
    if (b < 0xC0) return kTypes[b % 16];
    return in.value<short>();  // a group code (or any other number)
}

struct Chain {
    resbuf* head = nullptr;
    ~Chain() { acutRelRb(head); }
};

resbuf* decodeChain(Bytes& in) {
    Chain chain;
    resbuf** tail = &chain.head;
    for (int n = 0; n < 512 && !in.empty(); ++n) {
        resbuf* rb = acutNewRb(nodeType(in));
        *tail = rb;
        tail = &rb->rbnext;
        fillValue(rb, in);
    }
    resbuf* head = chain.head;
    chain.head = nullptr;
    return head;
}

bool isAhead(kelvo::Cursor from, kelvo::Cursor to) {
    for (kelvo::Cursor at = from; at != nullptr; at = at->rbnext)
        if (at == to) return true;
    return to == nullptr;
}

// Runs reader `op` at `at`; true when it read something.
bool runReader(std::uint8_t op, kelvo::Cursor& at) {
    std::wstring text;
    std::unique_ptr<char[]> narrow;
    double real = 0;
    std::int32_t integer = 0;
    bool flag = false;
    std::uint16_t daoFlag = 0;
    ads_name name = {0, 0};
    ads_point point = {0, 0, 0};
    AcDbObjectId id;
    switch (op % 17) {
        case 0:
            return kelvo::readText(at, text);
        case 1:
            return kelvo::readNarrowText(at, narrow);
        case 2:
            return kelvo::readReal(at, real);
        case 3:
            return kelvo::readNumber(at, real);
        case 4:
            return kelvo::readInteger(at, integer);
        case 5:
            return kelvo::readBoolean(at, flag);
        case 6:
            return kelvo::readDaoBoolean(at, daoFlag);
        case 7:
            return kelvo::readListBegin(at);
        case 8:
            return kelvo::readListEnd(at);
        case 9:
            return kelvo::skipArgument(at);
        case 10:
            return kelvo::readSelectionSet(at, name);
        case 11:
            return kelvo::readEntity(at, name);
        case 12:
            return kelvo::readObject(at, id);
        case 13: {
            const kelvo::Cursor before = at;
            FUZZ_CHECK(!kelvo::isDottedPair(at) || at == before, "isDottedPair does not move");
            return false;
        }
        case 14:
            return kelvo::readNamedInteger(at, text, integer);
        case 15:
            return kelvo::read3dPoint(at, point);
        default:
            return kelvo::read2dPoint(at, point);
    }
}

std::wstring printed(const std::vector<lisp::Value>& values) {
    std::wstring out;
    for (const lisp::Value& v : values) out += lisp::Interp::prin1String(v) + L" ";
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes in(data, size);
    std::vector<std::uint8_t> program(in.byte() % 32);
    for (std::uint8_t& op : program) op = in.byte();
    Chain chain{decodeChain(in)};

    kelvo::Cursor at = chain.head;
    for (std::uint8_t op : program) {
        const kelvo::Cursor before = at;
        if (runReader(op, at)) {
            FUZZ_CHECK(isAhead(before, at), "a reader moves forward along the chain");
        } else {
            FUZZ_CHECK(at == before, "a reader that fails leaves the cursor where it was");
        }
    }

    // What the host makes of the chain as a module's result, and the chain it would
    // build from those values as arguments: the same values again.
    const std::vector<lisp::Value> values = kelvo::host::chainToValues(chain.head);
    (void)kelvo::host::chainToList(chain.head);
    (void)kelvo::host::chainToValue(chain.head);
    try {
        Chain again{kelvo::host::valuesToChain(values)};
        FUZZ_CHECK(printed(kelvo::host::chainToValues(again.head)) == printed(values),
                   "values become a chain that reads back as the same values");
    } catch (const lisp::Error&) {
        // A value with no value-list form: refused with an error, as the host does.
    }
    return 0;
}
