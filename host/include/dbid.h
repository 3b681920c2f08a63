// Object ids of the drawing database.
#pragma once

#include <cstdint>

#include "adsdef.h"

class AcDbDatabase;

class KELVO_HOST_API AcDbObjectId {
public:
    AcDbObjectId() = default;
    explicit AcDbObjectId(std::int64_t handle) : handle_(handle) {}
    bool isNull() const { return handle_ == 0; }
    std::int64_t asOldId() const { return handle_; }
    void setNull() { handle_ = 0; }
    friend bool operator==(AcDbObjectId a, AcDbObjectId b) { return a.handle_ == b.handle_; }
    static const AcDbObjectId kNull;

private:
    std::int64_t handle_ = 0;
};
