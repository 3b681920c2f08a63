// List results grown at the tail, and the single-value result rules.
#include "bridge/result_builder.h"

#include <new>

#include "adslib.h"

namespace kelvo {

void ResultBuilder::append(resbuf* nodes) {
    if (nodes == nullptr) throw std::bad_alloc();
    if (head_ == nullptr) {
        head_.reset(nodes);
    } else {
        *tail_ = nodes;
    }
    resbuf* last = nodes;
    while (last->rbnext != nullptr) last = last->rbnext;
    tail_ = &last->rbnext;
}

void ResultBuilder::open() {
    append(acutBuildList(RTLB, 0));
}

void ResultBuilder::close() {
    append(acutBuildList(RTLE, 0));
    acedRetList(head_.get());
    head_.reset();
    tail_ = nullptr;
}

void ResultBuilder::endList() {
    append(acutBuildList(RTLE, 0));
}

void ResultBuilder::addBoolPair(const std::wstring& key, bool value) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, value ? RTT : RTNIL, RTLE, 0));
}

void ResultBuilder::addText(const std::wstring& text) {
    append(acutBuildList(RTSTR, text.c_str(), 0));
}

void ResultBuilder::addReal(double value) {
    append(acutBuildList(RTREAL, value, 0));
}

void ResultBuilder::addBool(bool value) {
    append(acutBuildList(value ? RTT : RTNIL, 0));
}

void ResultBuilder::addPoint(const ads_point point) {
    append(acutBuildList(RT3DPOINT, point, 0));
}

void ResultBuilder::addPair(const std::wstring& key, std::int32_t value) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTLONG, value, RTLE, 0));
}

void ResultBuilder::addPair(const std::wstring& key, double value) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTREAL, value, RTLE, 0));
}

void ResultBuilder::addPair(const std::wstring& key, const std::wstring& value) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTSTR, value.c_str(), RTLE, 0));
}

void ResultBuilder::addNilPair(const std::wstring& key) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTNIL, RTLE, 0));
}

void ResultBuilder::addPair(const std::wstring& key, AcDbObjectId id) {
    ads_name name{};
    if (id.isNull() || acdbGetAdsName(name, id) != RTNORM) {
        addNilPair(key);
        return;
    }
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTENAME, name, RTLE, 0));
}

void ResultBuilder::addPair(double key, std::int32_t value) {
    append(acutBuildList(RTLB, RTREAL, key, RTDOTE, RTLONG, value, RTLE, 0));
}

void ResultBuilder::addPair(std::int32_t key, double value) {
    append(acutBuildList(RTLB, RTLONG, key, RTDOTE, RTREAL, value, RTLE, 0));
}

void ResultBuilder::addPair(std::int32_t key, std::int32_t value) {
    append(acutBuildList(RTLB, RTLONG, key, RTDOTE, RTLONG, value, RTLE, 0));
}

bool ResultBuilder::addPair(const std::wstring& key, const resbuf& value) {
    switch (value.restype) {
        case RTREAL:
            addPair(key, value.resval.rreal);
            return true;
        case RTSHORT:
            append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTSHORT,
                                 static_cast<int>(value.resval.rint), RTLE, 0));
            return true;
        case RTLONG:
            addPair(key, static_cast<std::int32_t>(value.resval.rlong));
            return true;
        case RTSTR:
            addPair(key, std::wstring(value.resval.rstring ? value.resval.rstring : L""));
            return true;
        case RTPOINT:
        case RT3DPOINT:
            append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, value.restype,
                                 value.resval.rpoint, RTLE, 0));
            return true;
        default:
            return false;
    }
}

void returnInteger(std::int64_t value) {
    if (value == static_cast<std::int16_t>(value)) {
        acedRetInt(static_cast<int>(value));
    } else {
        acedRetReal(static_cast<double>(value));
    }
}

void returnObjectId(AcDbObjectId id) {
    ads_name name{};
    if (acdbGetAdsName(name, id) == RTNORM) {
        acedRetName(name, RTENAME);
    } else {
        acedRetNil();
    }
}

}  // namespace kelvo
