// Smart pointers that open an object for their lifetime and close it when they go.
#pragma once

#include "dbmain.h"

template <class T>
class AcDbObjectPointer {
public:
    AcDbObjectPointer() = default;
    AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        open(id, mode, openErased);
    }
    ~AcDbObjectPointer() { close(); }
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;

    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        close();
        status_ = acdbOpenObject(object_, id, mode, openErased);
        return status_;
    }
    // Takes a new object (not in a database); it is deleted by this pointer unless it was
    // added to a database or released.
    Acad::ErrorStatus create() {
        close();
        object_ = new T();
        status_ = Acad::eOk;
        return status_;
    }
    Acad::ErrorStatus acquire(T*& object) {
        close();
        object_ = object;
        object = nullptr;
        status_ = object_ ? Acad::eOk : Acad::eNullObjectPointer;
        return status_;
    }
    Acad::ErrorStatus release(T*& object) {
        object = object_;
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        return Acad::eOk;
    }
    // Closes the object (or deletes it when it never went into a database).
    Acad::ErrorStatus close() {
        if (object_ == nullptr) return Acad::eNullObjectPointer;
        T* object = object_;
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        if (object->objectId().isNull()) {
            delete object;
            return Acad::eOk;
        }
        return object->close();
    }
    Acad::ErrorStatus openStatus() const { return status_; }
    T* object() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    T* object_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNullObjectPointer;
};

using AcDbEntityPointer = AcDbObjectPointer<AcDbEntity>;
