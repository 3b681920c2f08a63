// The result builders: a list result grown at its tail, and the single-value results
// that need a rule (integers that may not fit in 16 bits, object ids).
#pragma once

#include <cstdint>
#include <string>

#include "adsdef.h"
#include "bridge/value_list.h"
#include "dbid.h"

namespace kelvo {

// Builds a list result node by node. The list is owned until close(), which returns it
// to LISP with acedRetList and releases it; a builder dropped without close() releases
// what it built and sets no result.
class ResultBuilder {
public:
    ResultBuilder() = default;
    ResultBuilder(const ResultBuilder&) = delete;
    ResultBuilder& operator=(const ResultBuilder&) = delete;

    void open();   // RTLB
    void close();  // RTLE, then acedRetList and release
    // A list inside the list: beginList() is RTLB, endList() its RTLE.
    void beginList() { open(); }
    void endList();
    bool empty() const { return head_ == nullptr; }

    void addText(const std::wstring& text);
    void addReal(double value);
    void addBool(bool value);  // T or nil
    void addPoint(const ads_point point);

    // Dotted pairs: (first . second).
    void addPair(const std::wstring& key, std::int32_t value);
    void addPair(const std::wstring& key, double value);
    void addPair(const std::wstring& key, const std::wstring& value);
    void addNilPair(const std::wstring& key);
    // (key . T), or (key . nil) when false.
    void addBoolPair(const std::wstring& key, bool value);
    // (key . entity name), or (key . nil) for a null id or one without a name.
    void addPair(const std::wstring& key, AcDbObjectId id);
    void addPair(double key, std::int32_t value);
    void addPair(std::int32_t key, double value);
    void addPair(std::int32_t key, std::int32_t value);
    // (key . value) for a host value of type RTREAL, RTPOINT, RT3DPOINT, RTSHORT, RTSTR
    // or RTLONG, copied as it is. Returns false (adding nothing) for any other type.
    bool addPair(const std::wstring& key, const resbuf& value);

private:
    // Links `nodes` (a chain; null means the host could not allocate: std::bad_alloc)
    // at the tail.
    void append(resbuf* nodes);

    ValueList head_;
    resbuf** tail_ = nullptr;  // the last node's rbnext, while head_ is set
};

// acedRetInt when the value fits in 16 bits, otherwise acedRetReal.
void returnInteger(std::int64_t value);
// The object's entity name, or nil when acdbGetAdsName cannot convert it.
void returnObjectId(AcDbObjectId id);

}  // namespace kelvo
