// The host's growable array (AcArray) over std::vector, with the host's method names.
#pragma once

#include <algorithm>
#include <vector>

template <typename T>
class AcArray {
public:
    AcArray() = default;
    explicit AcArray(int physicalLength) { items_.reserve(physicalLength > 0 ? physicalLength : 0); }
    AcArray(std::initializer_list<T> items) : items_(items) {}

    int length() const { return static_cast<int>(items_.size()); }
    int logicalLength() const { return length(); }
    bool isEmpty() const { return items_.empty(); }
    AcArray& setLogicalLength(int n) { items_.resize(n > 0 ? n : 0); return *this; }
    AcArray& setPhysicalLength(int n) { items_.reserve(n > 0 ? n : 0); return *this; }

    T& operator[](int i) { return items_[i]; }
    const T& operator[](int i) const { return items_[i]; }
    T& at(int i) { return items_.at(i); }
    const T& at(int i) const { return items_.at(i); }
    T& first() { return items_.front(); }
    const T& first() const { return items_.front(); }
    T& last() { return items_.back(); }
    const T& last() const { return items_.back(); }

    int append(const T& value) { items_.push_back(value); return length() - 1; }
    AcArray& append(const AcArray& other) {
        items_.insert(items_.end(), other.items_.begin(), other.items_.end());
        return *this;
    }
    AcArray& insertAt(int i, const T& value) { items_.insert(items_.begin() + i, value); return *this; }
    AcArray& removeAt(int i) { items_.erase(items_.begin() + i); return *this; }
    AcArray& removeLast() { items_.pop_back(); return *this; }
    AcArray& removeAll() { items_.clear(); return *this; }
    bool remove(const T& value) {
        auto it = std::find(items_.begin(), items_.end(), value);
        if (it == items_.end()) return false;
        items_.erase(it);
        return true;
    }
    bool contains(const T& value) const { return find(value) >= 0; }
    int find(const T& value) const {
        auto it = std::find(items_.begin(), items_.end(), value);
        return it == items_.end() ? -1 : static_cast<int>(it - items_.begin());
    }
    AcArray& reverse() { std::reverse(items_.begin(), items_.end()); return *this; }
    T* asArrayPtr() { return items_.data(); }
    const T* asArrayPtr() const { return items_.data(); }

    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }
    friend bool operator==(const AcArray& a, const AcArray& b) { return a.items_ == b.items_; }

private:
    std::vector<T> items_;
};
