// The record of a cloning operation: for each source id, the id of its copy.
#pragma once

#include <map>

#include "acdb.h"
#include "dbid.h"

class KELVO_HOST_API AcDbIdPair {
public:
    AcDbIdPair() = default;
    AcDbIdPair(AcDbObjectId key, AcDbObjectId value, bool isCloned, bool isPrimary = false,
               bool isOwnerXlated = true)
        : key_(key), value_(value), cloned_(isCloned), primary_(isPrimary),
          ownerXlated_(isOwnerXlated) {}
    AcDbObjectId key() const { return key_; }
    AcDbObjectId value() const { return value_; }
    bool isCloned() const { return cloned_; }
    bool isPrimary() const { return primary_; }
    bool isOwnerXlated() const { return ownerXlated_; }
    void setKey(AcDbObjectId key) { key_ = key; }
    void setValue(AcDbObjectId value) { value_ = value; }
    void setIsCloned(bool cloned) { cloned_ = cloned; }
    void setIsPrimary(bool primary) { primary_ = primary; }
    void setIsOwnerXlated(bool xlated) { ownerXlated_ = xlated; }

private:
    AcDbObjectId key_, value_;
    bool cloned_ = false, primary_ = false, ownerXlated_ = true;
};

class KELVO_HOST_API AcDbIdMapping {
public:
    AcDbIdMapping() = default;
    Acad::ErrorStatus assign(const AcDbIdPair& pair);
    // Looks pair.key() up and fills the rest; false when it is not mapped.
    bool compute(AcDbIdPair& pair) const;
    bool del(AcDbObjectId key);
    AcDbDatabase* destDb() const { return dest_; }
    void setDestDb(AcDbDatabase* db) { dest_ = db; }
    AcDbDatabase* origDb() const { return orig_; }
    void setOrigDb(AcDbDatabase* db) { orig_ = db; }
    AcDb::DeepCloneType deepCloneContext() const { return context_; }
    void setDeepCloneContext(AcDb::DeepCloneType context) { context_ = context; }
    AcDb::DuplicateRecordCloning duplicateRecordCloning() const { return drc_; }
    void setDuplicateRecordCloning(AcDb::DuplicateRecordCloning drc) { drc_ = drc; }
    const std::map<AcDbObjectId, AcDbIdPair>& pairs() const { return pairs_; }

private:
    std::map<AcDbObjectId, AcDbIdPair> pairs_;
    AcDbDatabase* dest_ = nullptr;
    AcDbDatabase* orig_ = nullptr;
    AcDb::DeepCloneType context_ = AcDb::kDcCopy;
    AcDb::DuplicateRecordCloning drc_ = AcDb::kDrcIgnore;
};
