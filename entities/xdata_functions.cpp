// kv_xdput-list, kv_xdget, kv_xdget-list and kv_xdget-all.
#include "entities/xdata_functions.h"

#include <algorithm>
#include <string>
#include <vector>

#include "adslib.h"
#include "entities/tarvik_xdata.h"
#include "entities/xdata_types.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"

namespace kelvo {
namespace {

// A chain grown at its tail, starting with (1001 "TARVIK").
class TarvikChain {
public:
    TarvikChain() : head_(acutBuildList(AcDb::kDxfRegAppName, kTarvikApplication, 0)) {
        tail_ = head_.get();
    }
    void add(resbuf* nodes) {
        tail_->rbnext = nodes;
        while (tail_->rbnext != nullptr) tail_ = tail_->rbnext;
    }
    const resbuf* get() const { return head_.get(); }

private:
    ValueList head_;
    resbuf* tail_;
};

enum class ValueKind { Stored, Dropped, Refused };

// Reads the value after a key and appends the pair to the chain.
ValueKind readValue(Cursor& cursor, const std::wstring& key, TarvikChain& chain) {
    std::wstring text;
    double real = 0.0;
    if (readText(cursor, text)) {
        chain.add(acutBuildList(AcDb::kDxfXdAsciiString, key.c_str(), AcDb::kDxfXdAsciiString,
                                text.c_str(), 0));
        return ValueKind::Stored;
    }
    if (cursor != nullptr && cursor->restype == RTREAL && readReal(cursor, real)) {
        chain.add(acutBuildList(AcDb::kDxfXdAsciiString, key.c_str(), AcDb::kDxfXdReal, real, 0));
        return ValueKind::Stored;
    }
    if (cursor != nullptr && (cursor->restype == RTSHORT || cursor->restype == RTLONG)) {
        std::int32_t integer = 0;
        readInteger(cursor, integer);
        chain.add(acutBuildList(AcDb::kDxfXdAsciiString, key.c_str(), AcDb::kDxfXdInteger32,
                                integer, 0));
        return ValueKind::Stored;
    }
    if (cursor != nullptr && cursor->restype == RTNIL) {
        cursor = cursor->rbnext;
        return ValueKind::Dropped;
    }
    return ValueKind::Refused;
}

int xdputListHandler() {
    HandlerArgs args;
    AcDbObjectId id;
    if (!readObject(args.cursor(), id)) return kWrongArgType;
    TarvikChain chain;
    if (args.atEnd()) {
        if (writeTarvikData(id, chain.get()) == Acad::eOk) acedRetT();
        return kArgOk;
    }
    if (!readListBegin(args.cursor())) return kWrongArgType;
    // Keys and values until something other than a text comes where a key is expected
    // (the list's end, as a rule): what was built so far is written.
    std::wstring key;
    while (readText(args.cursor(), key)) {
        if (readValue(args.cursor(), key, chain) == ValueKind::Refused) return kWrongArgType;
    }
    if (writeTarvikData(id, chain.get()) == Acad::eOk) acedRetT();
    return kArgOk;
}

// Returns a stored value: a text as a new string, anything else as a copy of its item
// with the LISP type of its group code. Kinds LISP cannot take give nil.
void returnStoredValue(const resbuf& value) {
    resbuf copy = value;
    copy.rbnext = nullptr;
    copy.restype = static_cast<short>(lispTypeOfGroupCode(value.restype));
    switch (copy.restype) {
        case RTSTR:
            acedRetStr(value.resval.rstring != nullptr ? value.resval.rstring : L"");
            break;
        case RTREAL:
        case RTSHORT:
        case RTLONG:
        case RT3DPOINT:
            acedRetVal(&copy);
            break;
        default:
            break;
    }
}

int xdgetHandler() {
    HandlerArgs args;
    AcDbObjectId id;
    std::wstring key;
    if (!readObject(args.cursor(), id)) return kWrongArgType;
    if (!readText(args.cursor(), key)) return kWrongArgType;
    const ValueList data = readTarvikData(id);
    if (const resbuf* value = findTarvikValue(data.get(), key)) returnStoredValue(*value);
    return kArgOk;
}

// Adds (key . value) with the value's LISP type; entity names, binary chunks and other
// kinds add nothing.
void addStoredPair(ResultBuilder& result, const std::wstring& key, const resbuf& value) {
    resbuf typed = value;
    typed.rbnext = nullptr;
    typed.restype = static_cast<short>(lispTypeOfGroupCode(value.restype));
    result.addPair(key, typed);
}

// Returns the pairs of `data` whose keys pass `wanted`, or leaves nil when there is no data.
template <class Wanted>
void returnPairs(const resbuf* data, Wanted wanted) {
    if (data == nullptr) return;
    ResultBuilder result;
    result.open();
    forEachTarvikPair(data, [&](const std::wstring& key, const resbuf& value) {
        if (wanted(key)) addStoredPair(result, key, value);
    });
    result.close();
}

// A list of texts: list begin, texts, list end.
bool readKeyList(Cursor& cursor, std::vector<std::wstring>& keys) {
    Cursor at = cursor;
    if (!readListBegin(at)) return false;
    while (!readListEnd(at)) {
        std::wstring key;
        if (!readText(at, key)) return false;
        keys.push_back(std::move(key));
    }
    cursor = at;
    return true;
}

int xdgetListHandler() {
    HandlerArgs args;
    AcDbObjectId id;
    std::vector<std::wstring> keys;
    if (!readObject(args.cursor(), id)) return kWrongArgType;
    if (!readKeyList(args.cursor(), keys)) return kWrongArgType;
    const ValueList data = readTarvikData(id);
    returnPairs(data.get(), [&](const std::wstring& key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    });
    return kArgOk;
}

int xdgetAllHandler() {
    HandlerArgs args;
    AcDbObjectId id;
    if (!readObject(args.cursor(), id)) return kWrongArgType;
    const ValueList data = readTarvikData(id);
    returnPairs(data.get(), [](const std::wstring&) { return true; });
    return kArgOk;
}

}  // namespace

int kvXdputList() {
    return runDatabaseCall(xdputListHandler);
}
int kvXdget() {
    return runDatabaseCall(xdgetHandler);
}
int kvXdgetList() {
    return runDatabaseCall(xdgetListHandler);
}
int kvXdgetAll() {
    return runDatabaseCall(xdgetAllHandler);
}

}  // namespace kelvo
