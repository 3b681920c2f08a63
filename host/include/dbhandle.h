// Object handles: 64-bit numbers unique within one drawing database, written in hex.
#pragma once

#include <cstdint>

#include "adsdef.h"

class KELVO_HOST_API AcDbHandle {
public:
    AcDbHandle() = default;
    AcDbHandle(std::uint64_t value) : value_(value) {}   // NOLINT: the host converts freely
    // From hex text ("1F"); an invalid text gives the null handle.
    explicit AcDbHandle(const ACHAR* hex);

    bool isNull() const { return value_ == 0; }
    void setNull() { value_ = 0; }
    std::uint64_t value() const { return value_; }
    // Writes the handle as upper-case hex without leading zeros into `buffer` (at least
    // 17 characters); false when the buffer is too small.
    bool getIntoAsciiBuffer(ACHAR* buffer, std::size_t size = 17) const;
    AcDbHandle& operator++() { ++value_; return *this; }
    AcDbHandle operator+(std::uint64_t n) const { return AcDbHandle(value_ + n); }
    friend bool operator==(AcDbHandle a, AcDbHandle b) { return a.value_ == b.value_; }
    friend bool operator!=(AcDbHandle a, AcDbHandle b) { return a.value_ != b.value_; }
    friend bool operator<(AcDbHandle a, AcDbHandle b) { return a.value_ < b.value_; }

private:
    std::uint64_t value_ = 0;
};
