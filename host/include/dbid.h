// Object ids of the drawing database. An id names one object of one open database for
// as long as that database lives: it stays the same when the object is erased, closed
// or reopened. The entity name that LISP sees is the same id.
#pragma once

#include <cstdint>
#include <functional>

#include "acarray.h"
#include "adsdef.h"
#include "dbhandle.h"

class AcDbDatabase;
class AcRxClass;
struct AcDbStub;   // the database's record of one object; private to the host

class KELVO_HOST_API AcDbObjectId {
public:
    AcDbObjectId() = default;
    AcDbObjectId(AcDbStub* stub) : stub_(stub) {}   // NOLINT: as the host converts
    // An id from its old integer form (asOldId). It is checked against the open databases
    // before any use, so a stale or made-up number is just an invalid id.
    explicit AcDbObjectId(std::int64_t oldId) : stub_(reinterpret_cast<AcDbStub*>(oldId)) {}

    bool isNull() const { return stub_ == nullptr; }
    void setNull() { stub_ = nullptr; }
    // Not null and naming an object of a database that is still open.
    bool isValid() const;
    bool isErased() const;
    bool isEffectivelyErased() const { return isErased(); }
    AcDbDatabase* database() const;
    AcDbDatabase* originalDatabase() const { return database(); }
    AcDbHandle handle() const;
    // The class of the object, or null when the id is not valid.
    AcRxClass* objectClass() const;

    std::int64_t asOldId() const { return reinterpret_cast<std::int64_t>(stub_); }
    AcDbObjectId& setFromOldId(std::int64_t oldId) {
        stub_ = reinterpret_cast<AcDbStub*>(oldId);
        return *this;
    }
    AcDbStub* stub() const { return stub_; }

    friend bool operator==(AcDbObjectId a, AcDbObjectId b) { return a.stub_ == b.stub_; }
    friend bool operator!=(AcDbObjectId a, AcDbObjectId b) { return a.stub_ != b.stub_; }
    friend bool operator<(AcDbObjectId a, AcDbObjectId b) {
        return std::less<AcDbStub*>()(a.stub_, b.stub_);
    }

    static const AcDbObjectId kNull;

private:
    AcDbStub* stub_ = nullptr;
};

// References between objects, as filed: an owner keeps its parts through ownership ids,
// other references are pointers. Hard references keep the target alive when purging and
// cloning; soft ones do not.
class KELVO_HOST_API AcDbHardOwnershipId : public AcDbObjectId {
public:
    AcDbHardOwnershipId() = default;
    AcDbHardOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}   // NOLINT
};

class KELVO_HOST_API AcDbSoftOwnershipId : public AcDbObjectId {
public:
    AcDbSoftOwnershipId() = default;
    AcDbSoftOwnershipId(const AcDbObjectId& id) : AcDbObjectId(id) {}   // NOLINT
};

class KELVO_HOST_API AcDbHardPointerId : public AcDbObjectId {
public:
    AcDbHardPointerId() = default;
    AcDbHardPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}   // NOLINT
};

class KELVO_HOST_API AcDbSoftPointerId : public AcDbObjectId {
public:
    AcDbSoftPointerId() = default;
    AcDbSoftPointerId(const AcDbObjectId& id) : AcDbObjectId(id) {}   // NOLINT
};

using AcDbObjectIdArray = AcArray<AcDbObjectId>;
using AcDbIntArray = AcArray<int>;
using AcDbVoidPtrArray = AcArray<void*>;

template <>
struct std::hash<AcDbObjectId> {
    std::size_t operator()(const AcDbObjectId& id) const noexcept {
        return std::hash<AcDbStub*>()(id.stub());
    }
};
