// Record lists and result sets between the connection's arrays and LISP.
#include "database/record_lists.h"

#include "adslib.h"
#include "database/field_values.h"

namespace kelvo::database {
namespace {

bool isStructure(short type) {
    return type == RTLB || type == RTLE || type == RTDOTE;
}

const wchar_t* nameOf(const COleVariant& name) {
    return name.vt == VT_BSTR ? name.bstrVal.c_str() : L"";
}

const wchar_t* structureMarker(short type) {
    switch (type) {
        case RTLB:
            return L"*RTLB*";
        case RTLE:
            return L"*RTLE*";
        default:
            return L"*RTDOTE*";
    }
}

}  // namespace

void appendRecordList(ValueChain& chain, const VariantArray& pairs, std::size_t first,
                      std::size_t last) {
    chain.appendMarker(RTLB);
    for (std::size_t i = first; i + 1 < last; i += 2) {
        const wchar_t* name = nameOf(pairs[i]);
        chain.appendMarker(RTLB);
        chain.appendText(name);
        chain.appendMarker(RTDOTE);
        chain.append(newFieldValueNode(pairs[i + 1], trimsFieldText(name)));
        chain.appendMarker(RTLE);
    }
    chain.appendMarker(RTLE);
}

void returnRecord(const VariantArray& pairs) {
    if (pairs.empty()) return;
    ValueChain chain;
    appendRecordList(chain, pairs, 0, pairs.size());
    chain.returnAsResult();
}

void ResultSetBuilder::row(const VariantArray& pairs) {
    if (chain_.empty()) chain_.appendMarker(RTLB);
    appendRecordList(chain_, pairs, 0, pairs.size());
}

void ResultSetBuilder::returnAsResult() {
    if (chain_.empty()) return;
    chain_.appendMarker(RTLE);
    chain_.returnAsResult();
}

bool recordFromLisp(const resbuf* node, VariantArray& pairs) {
    pairs.clear();
    while (node != nullptr) {
        if (isStructure(node->restype)) {
            node = node->rbnext;
            continue;
        }
        if (node->restype != RTSTR) return false;
        const wchar_t* name = node->resval.rstring != nullptr ? node->resval.rstring : L"";
        node = node->rbnext;
        if (node != nullptr && node->restype == RTDOTE) node = node->rbnext;
        if (node == nullptr) break;
        COleVariant value = COleVariant::Null();
        if (node->restype != RTLE) {
            if (!fieldValueFromLisp(*node, value)) return false;
            node = node->rbnext;
        }
        pairs.emplace_back(name);
        pairs.push_back(std::move(value));
    }
    return true;
}

bool argumentsFromLisp(const resbuf* node, VariantArray& values) {
    values.clear();
    for (; node != nullptr; node = node->rbnext) {
        if (isStructure(node->restype)) {
            values.emplace_back(structureMarker(node->restype));
            continue;
        }
        COleVariant value;
        if (!fieldValueFromLisp(*node, value)) return false;
        values.push_back(std::move(value));
    }
    return true;
}

}  // namespace kelvo::database
