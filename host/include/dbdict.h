// Dictionaries: named references to objects they own (the named-object dictionary, the
// extension dictionaries of objects), and extended records (Xrecord) that keep a resbuf
// chain of data.
#pragma once

#include <map>
#include <string>

#include "dbmain.h"

class AcDbDictionaryIterator;

class KELVO_HOST_API AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary);
    AcDbDictionary();
    ~AcDbDictionary() override;

    Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObject*& entryObj,
                            AcDb::OpenMode mode) const;
    Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& entryId) const;
    Acad::ErrorStatus nameAt(AcDbObjectId objId, ACHAR*& name) const;
    bool has(const ACHAR* entryName) const;
    bool has(AcDbObjectId objId) const;
    Adesk::UInt32 numEntries() const;
    // Sets (or replaces) an entry; the dictionary takes ownership of a new object (added
    // to the dictionary's database).
    Acad::ErrorStatus setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId);
    Acad::ErrorStatus remove(const ACHAR* key);
    Acad::ErrorStatus remove(const ACHAR* key, AcDbObjectId& returnId);
    Acad::ErrorStatus setName(const ACHAR* oldName, const ACHAR* newName);
    // A new iterator in name order; the caller deletes it.
    AcDbDictionaryIterator* newIterator() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend class kelvo::drawing::ObjectAccess;
    friend class AcDbDictionaryIterator;
    std::map<std::wstring, AcDbObjectId> entries_;  // names as given; upper-case keys
    std::map<std::wstring, std::wstring> names_;
    // As files give them: entries owned hard (360, else 350), the hard-owner flag (280)
    // and the duplicate-name rule for merging (281).
    bool hardEntries_ = false;
    Adesk::Int16 hardOwnerFlag_ = 0, mergeStyle_ = 1;
};

class KELVO_HOST_API AcDbDictionaryIterator {
public:
    const ACHAR* name() const;
    AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& pObject, AcDb::OpenMode mode);
    bool done() const;
    bool next();

private:
    friend class AcDbDictionary;
    explicit AcDbDictionaryIterator(const AcDbDictionary* dict);
    std::vector<std::pair<std::wstring, AcDbObjectId>> entries_;
    std::size_t index_ = 0;
};

class KELVO_HOST_API AcDbXrecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord);
    AcDbXrecord();
    ~AcDbXrecord() override;
    // A new chain the caller releases with acutRelRb (null when empty).
    Acad::ErrorStatus rbChain(resbuf** ppRb, AcDbDatabase* auxDb = nullptr) const;
    Acad::ErrorStatus setFromRbChain(const resbuf& pRb, AcDbDatabase* auxDb = nullptr);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    resbuf* data_ = nullptr;
};
