// Symbol tables and their records: blocks, layers, text styles, linetypes and registered
// applications. A table owns its records; names are unique in a table and compared
// without regard to case. Records are walked in the order they were added.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

class AcDbSymbolTableIterator;
class AcDbSymbolTableRecord;
class AcDbBlockTableRecord;
class AcDbBlockTableRecordIterator;
class AcDbBlockBegin;
class AcDbBlockEnd;

// --- tables --------------------------------------------------------------------------
class KELVO_HOST_API AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable);
    ~AcDbSymbolTable() override;

    // eKeyNotFound when no record has the name; an erased record counts only when asked.
    Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbSymbolTableRecord*& pRec,
                            AcDb::OpenMode openMode, bool openErasedRec = false) const;
    Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& recordId,
                            bool getErasedRecord = false) const;
    bool has(const ACHAR* name) const;
    bool has(AcDbObjectId id) const;
    // Adds a new record (not yet in a database); the table must be open for write.
    // eDuplicateRecordName when the name is taken, eInvalidSymbolTableName when it is not
    // a valid name, eWrongObjectType when the record is of another table's kind.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* pRecord);
    Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbSymbolTableRecord* pRecord);
    // A new iterator the caller deletes.
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& pIterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;
    // The record ids in order (erased ones too).
    const AcDbObjectIdArray& recordIds() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    AcDbSymbolTable();
    // The record class this table holds.
    virtual AcRxClass* recordClass() const = 0;

private:
    friend class kelvo::drawing::ObjectAccess;
    AcDbObjectIdArray records_;
};

class KELVO_HOST_API AcDbSymbolTableIterator {
public:
    virtual ~AcDbSymbolTableIterator();
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    AcDbObjectId getRecordId() const;
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& pRecord, AcDb::OpenMode openMode,
                                bool openErasedRec = false) const;
    Acad::ErrorStatus seek(AcDbObjectId id);

protected:
    friend class AcDbSymbolTable;
    AcDbSymbolTableIterator(const AcDbSymbolTable* table, bool atBeginning, bool skipDeleted);

private:
    void skipErased(bool forward);
    AcDbObjectIdArray ids_;
    int index_ = 0;
    bool skipDeleted_ = true;
};

// Typed tables: the same operations with the table's record type.
#define KELVO_DECLARE_SYMBOL_TABLE(TABLE, RECORD, ITERATOR)                                     \
    class RECORD;                                                                               \
    class KELVO_HOST_API ITERATOR : public AcDbSymbolTableIterator {                            \
    public:                                                                                     \
        using AcDbSymbolTableIterator::getRecord;                                               \
        Acad::ErrorStatus getRecord(RECORD*& pRecord, AcDb::OpenMode openMode,                  \
                                    bool openErasedRec = false) const;                          \
                                                                                                \
    protected:                                                                                  \
        friend class TABLE;                                                                     \
        ITERATOR(const AcDbSymbolTable* table, bool atBeginning, bool skipDeleted)              \
            : AcDbSymbolTableIterator(table, atBeginning, skipDeleted) {}                       \
    };                                                                                          \
    class KELVO_HOST_API TABLE : public AcDbSymbolTable {                                       \
    public:                                                                                     \
        ACRX_DECLARE_MEMBERS(TABLE);                                                            \
        TABLE();                                                                                \
        ~TABLE() override;                                                                      \
        using AcDbSymbolTable::add;                                                             \
        using AcDbSymbolTable::getAt;                                                           \
        using AcDbSymbolTable::newIterator;                                                     \
        Acad::ErrorStatus getAt(const ACHAR* entryName, RECORD*& pRec, AcDb::OpenMode openMode, \
                                bool openErasedRec = false) const;                              \
        Acad::ErrorStatus add(RECORD* pRecord);                                                 \
        Acad::ErrorStatus add(AcDbObjectId& recordId, RECORD* pRecord);                         \
        Acad::ErrorStatus newIterator(ITERATOR*& pIterator, bool atBeginning = true,            \
                                      bool skipDeleted = true) const;                           \
                                                                                                \
    protected:                                                                                  \
        AcRxClass* recordClass() const override;                                                \
    };

KELVO_DECLARE_SYMBOL_TABLE(AcDbBlockTable, AcDbBlockTableRecord, AcDbBlockTableIterator)
KELVO_DECLARE_SYMBOL_TABLE(AcDbLayerTable, AcDbLayerTableRecord, AcDbLayerTableIterator)
KELVO_DECLARE_SYMBOL_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord, AcDbTextStyleTableIterator)
KELVO_DECLARE_SYMBOL_TABLE(AcDbLinetypeTable, AcDbLinetypeTableRecord, AcDbLinetypeTableIterator)
KELVO_DECLARE_SYMBOL_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord, AcDbRegAppTableIterator)

#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"

// --- records -------------------------------------------------------------------------
class KELVO_HOST_API AcDbSymbolTableRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);
    ~AcDbSymbolTableRecord() override;

    // getName(ACHAR*&) gives a new string the caller frees with acutDelString;
    // getName(const ACHAR*&) points into the record while it is open.
    Acad::ErrorStatus getName(ACHAR*& pName) const;
    Acad::ErrorStatus getName(const ACHAR*& pName) const;
    const std::wstring& name() const;
    // eInvalidSymbolTableName for an empty name or one with characters names cannot hold
    // (<>/\":;?*|,=`); eDuplicateRecordName when another record of the table has it.
    Acad::ErrorStatus setName(const ACHAR* pName);
    bool isDependent() const;
    bool isResolved() const;
    bool isRenamable() const;
    // The group 70 flags of the record.
    Adesk::Int16 flags() const;
    void setFlags(Adesk::Int16 flags);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    AcDbSymbolTableRecord();

private:
    std::wstring name_;
    Adesk::Int16 flags_ = 0;
};

class KELVO_HOST_API AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);
    AcDbBlockTableRecord();
    ~AcDbBlockTableRecord() override;

    // Adds a new entity to the database and to this block (open for write); the entity
    // stays open for write until its close().
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* pEntity);
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& pOutputId, AcDbEntity* pEntity);
    // A new iterator over the entities, in order; the caller deletes it.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& pIterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;
    // The entity ids in order (erased ones too).
    const AcDbObjectIdArray& entityIds() const;

    AcGePoint3d origin() const;
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    Acad::ErrorStatus comments(ACHAR*& pComments) const;
    Acad::ErrorStatus setComments(const ACHAR* pComments);
    Acad::ErrorStatus pathName(ACHAR*& pPath) const;
    Acad::ErrorStatus setPathName(const ACHAR* pPath);
    bool isAnonymous() const;
    bool isLayout() const;
    bool hasAttributeDefinitions() const;
    bool isFromExternalReference() const;
    // The BLOCK and ENDBLK markers.
    Acad::ErrorStatus openBlockBegin(AcDbBlockBegin*& pBlockBegin, AcDb::OpenMode openMode);
    Acad::ErrorStatus openBlockEnd(AcDbBlockEnd*& pBlockEnd, AcDb::OpenMode openMode);
    AcDbObjectId blockBeginId() const;
    AcDbObjectId blockEndId() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    friend class kelvo::drawing::ObjectAccess;
    AcDbObjectIdArray entities_;
    AcGePoint3d origin_;
    std::wstring comments_, path_;
    AcDbObjectId begin_, end_;
};

class KELVO_HOST_API AcDbBlockTableRecordIterator {
public:
    ~AcDbBlockTableRecordIterator();
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getEntityId(AcDbObjectId& entityId) const;
    Acad::ErrorStatus getEntity(AcDbEntity*& pEntity, AcDb::OpenMode openMode,
                                bool openErasedEntity = false) const;
    Acad::ErrorStatus seek(AcDbObjectId id);

private:
    friend class AcDbBlockTableRecord;
    AcDbBlockTableRecordIterator(const AcDbBlockTableRecord* block, bool atBeginning,
                                 bool skipDeleted);
    void skipErased(bool forward);
    AcDbObjectIdArray ids_;
    int index_ = 0;
    bool skipDeleted_ = true;
};

class KELVO_HOST_API AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);
    AcDbLayerTableRecord();
    ~AcDbLayerTableRecord() override;

    bool isFrozen() const;
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isOff() const;
    void setIsOff(bool off);
    bool isLocked() const;
    void setIsLocked(bool locked);
    bool isHidden() const;
    Acad::ErrorStatus setIsHidden(bool hidden);
    bool isPlottable() const;
    Acad::ErrorStatus setIsPlottable(bool plottable);
    AcCmColor color() const;
    void setColor(const AcCmColor& color);
    AcDbObjectId linetypeObjectId() const;
    Acad::ErrorStatus setLinetypeObjectId(const AcDbObjectId& id);
    AcDb::LineWeight lineWeight() const;
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
    Acad::ErrorStatus description(ACHAR*& pDescription) const;
    Acad::ErrorStatus setDescription(const ACHAR* pDescription);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    bool off_ = false, hidden_ = false, plottable_ = true;
    AcCmColor color_ = AcCmEntityColor(7);
    AcDbHardPointerId linetype_;
    AcDb::LineWeight lineWeight_ = AcDb::kLnWtByLwDefault;
    std::wstring description_;
};

class KELVO_HOST_API AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);
    AcDbTextStyleTableRecord();
    ~AcDbTextStyleTableRecord() override;

    Adesk::Boolean isShapeFile() const;
    void setIsShapeFile(Adesk::Boolean shape);
    Adesk::Boolean isVertical() const;
    void setIsVertical(Adesk::Boolean vertical);
    double textSize() const;
    Acad::ErrorStatus setTextSize(double size);
    double xScale() const;
    Acad::ErrorStatus setXScale(double scale);
    double obliquingAngle() const;
    Acad::ErrorStatus setObliquingAngle(double angle);
    Adesk::UInt8 flagBits() const;
    void setFlagBits(Adesk::UInt8 flags);
    double priorSize() const;
    Acad::ErrorStatus setPriorSize(double size);
    Acad::ErrorStatus fileName(ACHAR*& fileName) const;
    Acad::ErrorStatus fileName(const ACHAR*& fileName) const;
    Acad::ErrorStatus setFileName(const ACHAR* fileName);
    Acad::ErrorStatus bigFontFileName(ACHAR*& fileName) const;
    Acad::ErrorStatus bigFontFileName(const ACHAR*& fileName) const;
    Acad::ErrorStatus setBigFontFileName(const ACHAR* fileName);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    double textSize_ = 0, xScale_ = 1, oblique_ = 0, priorSize_ = 2.5;
    Adesk::UInt8 flagBits_ = 0;
    std::wstring fileName_, bigFontFileName_;
};

class KELVO_HOST_API AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);
    AcDbLinetypeTableRecord();
    ~AcDbLinetypeTableRecord() override;

    Acad::ErrorStatus comments(ACHAR*& pString) const;
    Acad::ErrorStatus comments(const ACHAR*& pString) const;
    Acad::ErrorStatus setComments(const ACHAR* pString);
    double patternLength() const;
    Acad::ErrorStatus setPatternLength(double length);
    int numDashes() const;
    Acad::ErrorStatus setNumDashes(int count);
    double dashLengthAt(int index) const;
    Acad::ErrorStatus setDashLengthAt(int index, double value);
    bool isScaledToFit() const;
    void setIsScaledToFit(bool scaledToFit);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

private:
    std::wstring comments_;
    double patternLength_ = 0;
    std::vector<double> dashes_;
    // A dash's embedded shape or text (complex linetypes), as files give it: flags (74:
    // 2 text, 4 shape), shape number, style, scale, rotation, offsets and text.
    struct DashElement {
        Adesk::Int16 flags = 0, shape = 0;
        AcDbObjectId style;
        double scale = 1, rotation = 0, xOffset = 0, yOffset = 0;
        std::wstring text;
    };
    std::vector<DashElement> elements_;  // one per dash
    bool scaledToFit_ = false;
};

class KELVO_HOST_API AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);
    AcDbRegAppTableRecord();
    ~AcDbRegAppTableRecord() override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
};
