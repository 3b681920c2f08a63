// The drawing database and its objects.
//
// A database owns every object added to it. An object is reached through its id and
// opened with acdbOpenObject (or AcDbObject::open through AcDbObjectPointer) for read,
// write or notify; it stays open until close(). Many readers may hold an object at once;
// a writer holds it alone:
//   open for read   while open for write -> eWasOpenForWrite
//   open for write  while open for read  -> eWasOpenForRead; while for write -> eWasOpenForWrite
//   open an erased object (unless asked to)                   -> eWasErased
// Objects that are not in a database (new, or held by value inside another object) are
// always writable and are deleted by whoever made them.
#pragma once

#include "acarray.h"
#include "acdb.h"
#include "acgi.h"
#include "adesk.h"
#include "adsdef.h"
#include "dbcolor.h"
#include "dbhandle.h"
#include "dbid.h"
#include "gearrays.h"
#include "gemat3d.h"
#include "rxobject.h"

class AcDbDwgFiler;
class AcDbDxfFiler;
class AcDbIdMapping;
class AcDbAuditInfo;
class AcDbBlockTable;
class AcDbLayerTable;
class AcDbTextStyleTable;
class AcDbLinetypeTable;
class AcDbRegAppTable;
class AcDbDictionary;
class AcDbGripData;
class AcDbEntity;
class AcDbObject;
using AcDbGripDataPtrArray = AcArray<AcDbGripData*>;

namespace kelvo::drawing {
class DatabaseAccess;
class ObjectAccess;
struct DatabaseData;
}  // namespace kelvo::drawing

// --- extents -------------------------------------------------------------------------
class KELVO_HOST_API AcDbExtents {
public:
    AcDbExtents();
    AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max);
    AcGePoint3d minPoint() const { return min_; }
    AcGePoint3d maxPoint() const { return max_; }
    Acad::ErrorStatus set(const AcGePoint3d& min, const AcGePoint3d& max);
    void addPoint(const AcGePoint3d& p);
    void addExt(const AcDbExtents& other);
    void expandBy(const AcGeVector3d& v);
    void transformBy(const AcGeMatrix3d& m);
    // True when no point has been added yet.
    bool isEmpty() const;

private:
    AcGePoint3d min_, max_;
};

// --- the database --------------------------------------------------------------------
class KELVO_HOST_API AcDbDatabase : public AcRxObject {
public:
    // buildDefaultDrawing: make the symbol tables with their standard records (layer "0",
    // linetypes BYBLOCK/BYLAYER/CONTINUOUS, text style "Standard", application "ACAD",
    // blocks "*Model_Space" and "*Paper_Space") and the named-object dictionary. Without
    // it the database is empty, ready to be read from a file.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;
    static AcRxClass* desc();
    AcRxClass* isA() const override;

    // Adds a new object (not yet in any database) and gives it an id and a handle. The
    // object stays open for write until its close(). The owner is set by the caller.
    Acad::ErrorStatus addAcDbObject(AcDbObject* pObj);
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& objId, AcDbObject* pObj);
    // The id of the object with this handle; eUnknownHandle when none.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound,
                                      const AcDbHandle& objHandle, Adesk::UInt32 xRefId = 0);

    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& pTable,
                                        AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& pTable,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& pTable,
                                     AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& pTable, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& pTable, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& pTable, AcDb::OpenMode mode);
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& pDict,
                                                AcDb::OpenMode mode = AcDb::kForRead);

    AcDbObjectId blockTableId() const;
    AcDbObjectId layerTableId() const;
    AcDbObjectId textStyleTableId() const;
    AcDbObjectId linetypeTableId() const;
    AcDbObjectId regAppTableId() const;
    AcDbObjectId namedObjectsDictionaryId() const;
    // The model space block ("*Model_Space"); this host has no paper space layouts in use.
    AcDbObjectId currentSpaceId() const;
    AcDbObjectId modelSpaceId() const;
    AcDbObjectId paperSpaceId() const;
    AcDbObjectId layerZero() const;
    AcDbObjectId byLayerLinetype() const;
    AcDbObjectId byBlockLinetype() const;
    AcDbObjectId continuousLinetype() const;

    // Header variables. Ids name records of this database's tables.
    double dimscale() const;
    Acad::ErrorStatus setDimscale(double value);
    double dimasz() const;
    Acad::ErrorStatus setDimasz(double value);
    double dimtxt() const;
    Acad::ErrorStatus setDimtxt(double value);
    double ltscale() const;
    Acad::ErrorStatus setLtscale(double value);
    double textsize() const;
    Acad::ErrorStatus setTextsize(double value);
    AcDbObjectId textstyle() const;
    Acad::ErrorStatus setTextstyle(AcDbObjectId id);
    AcDbObjectId clayer() const;
    Acad::ErrorStatus setClayer(AcDbObjectId id);
    AcDbObjectId celtype() const;
    Acad::ErrorStatus setCeltype(AcDbObjectId id);
    AcCmColor cecolor() const;
    Acad::ErrorStatus setCecolor(const AcCmColor& color);
    double celtscale() const;
    Acad::ErrorStatus setCeltscale(double value);
    AcDb::LineWeight celweight() const;
    Acad::ErrorStatus setCelweight(AcDb::LineWeight value);
    AcDb::UnitsValue insunits() const;
    Acad::ErrorStatus setInsunits(AcDb::UnitsValue units);
    AcGePoint3d insbase() const;
    Acad::ErrorStatus setInsbase(const AcGePoint3d& p);
    AcGePoint3d extmin() const;
    AcGePoint3d extmax() const;
    Acad::ErrorStatus setExtmin(const AcGePoint3d& p);
    Acad::ErrorStatus setExtmax(const AcGePoint3d& p);
    // Recomputes EXTMIN/EXTMAX from the model space entities.
    Acad::ErrorStatus updateExt(bool doBestFit = false);
    Adesk::Int16 pdmode() const;
    Acad::ErrorStatus setPdmode(Adesk::Int16 mode);
    double pdsize() const;
    Acad::ErrorStatus setPdsize(double size);
    double angbase() const;
    Acad::ErrorStatus setAngbase(double angle);
    bool angdir() const;
    Acad::ErrorStatus setAngdir(bool clockwise);
    Adesk::Int16 lunits() const;
    Acad::ErrorStatus setLunits(Adesk::Int16 units);
    Adesk::Int16 luprec() const;
    Acad::ErrorStatus setLuprec(Adesk::Int16 precision);
    Adesk::Int16 aunits() const;
    Acad::ErrorStatus setAunits(Adesk::Int16 units);
    Adesk::Int16 auprec() const;
    Acad::ErrorStatus setAuprec(Adesk::Int16 precision);
    double elevation() const;
    Acad::ErrorStatus setElevation(double value);
    double thickness() const;
    Acad::ErrorStatus setThickness(double value);
    double filletrad() const;
    Acad::ErrorStatus setFilletrad(double value);
    bool orthomode() const;
    Acad::ErrorStatus setOrthomode(bool on);
    bool tilemode() const;
    Acad::ErrorStatus setTilemode(bool on);
    // The next handle to be given out.
    AcDbHandle handseed() const;

    // Copies the objects into the owner (a block table record or a dictionary of this
    // database), with what they own; references among the copies point to the copies.
    Acad::ErrorStatus deepCloneObjects(const AcDbObjectIdArray& objectIds,
                                       const AcDbObjectId& owner, AcDbIdMapping& idMap,
                                       bool deferXlation = false);
    // Copies objects of another database into this one (owner is of this database); the
    // layers, linetypes, text styles and blocks they refer to are matched by name, and
    // copied when missing (or replaced, per drc).
    Acad::ErrorStatus wblockCloneObjects(const AcDbObjectIdArray& objectIds,
                                         const AcDbObjectId& owner, AcDbIdMapping& idMap,
                                         AcDb::DuplicateRecordCloning drc,
                                         bool deferXlation = false);
    // Makes a block named pBlockName in this database of the model space of pDb (with the
    // blocks, layers and styles it uses); pDb's insertion base becomes the block origin.
    // eDuplicateRecordName when this database has a block of that name already.
    Acad::ErrorStatus insert(AcDbObjectId& blockId, const ACHAR* pBlockName, AcDbDatabase* pDb,
                             bool preserveSourceDatabase = true);

    // Files. The formats are the host's drawing file (.dwg) and ASCII DXF; both are read
    // and written by the host's file layer (eNotImplementedYet while it is not present).
    Acad::ErrorStatus readDwgFile(const ACHAR* fileName);
    Acad::ErrorStatus saveAs(const ACHAR* fileName);
    Acad::ErrorStatus dxfIn(const ACHAR* fileName);
    Acad::ErrorStatus dxfOut(const ACHAR* fileName, int precision = 16);
    Acad::ErrorStatus getFilename(const ACHAR*& pOutput) const;
    void setFilename(const ACHAR* fileName);

private:
    friend class kelvo::drawing::DatabaseAccess;
    kelvo::drawing::DatabaseData* data_;
};

// --- objects -------------------------------------------------------------------------
class KELVO_HOST_API AcDbObject : public AcGiDrawable {
public:
    ACRX_DECLARE_MEMBERS(AcDbObject);
    ~AcDbObject() override;
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

    AcDbObjectId objectId() const;
    AcDbObjectId ownerId() const;
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId ownerId);
    void getAcDbHandle(AcDbHandle& handle) const;
    AcDbDatabase* database() const;

    // Ends this opening (see the rules at the top). An object not in a database is left
    // alone and the answer is eNotInDatabase.
    Acad::ErrorStatus close();
    Acad::ErrorStatus upgradeOpen();
    Acad::ErrorStatus downgradeOpen();
    // Erases (or, with false, brings back) the object; it must be open for write.
    Acad::ErrorStatus erase(Adesk::Boolean erasing = true);

    bool isErased() const;
    bool isReadEnabled() const;
    bool isWriteEnabled() const;
    bool isNotifyEnabled() const;
    bool isNewObject() const;
    bool isModified() const;
    // The assertions throw nothing; a violation is reported on the host's error output
    // and counted (tests read the count).
    void assertReadEnabled() const;
    void assertWriteEnabled(Adesk::Boolean autoUndo = true, Adesk::Boolean recordModified = true);
    void assertNotifyEnabled() const;

    // Extended data. xData(name) answers a new chain (1001 name, then its items) that the
    // caller releases with acutRelRb, or null when there is none; xData() answers the data
    // of every application. setXData replaces the data of each application named in the
    // chain (a 1001 group with nothing after it removes that application's data);
    // eRegappIdNotFound when an application is not in the registered-application table.
    virtual resbuf* xData(const ACHAR* regappName = nullptr) const;
    virtual Acad::ErrorStatus setXData(const resbuf* xdata);
    Acad::ErrorStatus xDataTransformBy(const AcGeMatrix3d& xform);

    AcDbObjectId extensionDictionary() const;
    Acad::ErrorStatus createExtensionDictionary();
    Acad::ErrorStatus releaseExtensionDictionary();

    // Filing. dwgOut/dxfOut write the object as a whole (its class, handle, owner, fields
    // and extended data); the *Fields functions are each class's own part, calling the
    // parent class's first.
    Acad::ErrorStatus dwgIn(AcDbDwgFiler* pFiler);
    Acad::ErrorStatus dwgOut(AcDbDwgFiler* pFiler) const;
    Acad::ErrorStatus dxfIn(AcDbDxfFiler* pFiler);
    Acad::ErrorStatus dxfOut(AcDbDxfFiler* pFiler) const;
    virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler);
    virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const;
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler);
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const;
    virtual Acad::ErrorStatus audit(AcDbAuditInfo* pAuditInfo);

    // Cloning: a copy added to the owner's database, owned by it, recorded in idMap; what
    // the object owns is copied with it. pClonedObject points at the copy, which is closed.
    // A copy into a block table record is appended to it.
    virtual Acad::ErrorStatus deepClone(AcDbObject* pOwnerObject, AcDbObject*& pClonedObject,
                                        AcDbIdMapping& idMap,
                                        Adesk::Boolean isPrimary = true) const;
    virtual Acad::ErrorStatus wblockClone(AcRxObject* pOwnerObject, AcDbObject*& pClonedObject,
                                          AcDbIdMapping& idMap,
                                          Adesk::Boolean isPrimary = true) const;
    // A copy not in any database, through the DWG copy filer.
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

    Adesk::Boolean isPersistent() const override;
    AcDbObjectId id() const override;

protected:
    AcDbObject();
    virtual Acad::ErrorStatus subOpen(AcDb::OpenMode mode);
    virtual Acad::ErrorStatus subClose();
    virtual Acad::ErrorStatus subErase(Adesk::Boolean erasing);
    Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
    void subViewportDraw(AcGiViewportDraw* vd) override;

private:
    friend class kelvo::drawing::ObjectAccess;
    AcDbStub* stub_ = nullptr;
    AcDbObjectId ownerId_;
    AcDbObjectId extensionDictionary_;
    resbuf* xdata_ = nullptr;   // every application's data, each part starting at 1001
    int readers_ = 0;
    bool writer_ = false;
    bool notifier_ = false;
    bool erased_ = false;
    bool modified_ = false;
};

// Opens the object for read, write or notify (see the rules at the top).
KELVO_HOST_API Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id,
                                                AcDb::OpenMode mode,
                                                bool openErased = false);
KELVO_HOST_API Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& pObj, AcDbObjectId id,
                                                    AcDb::OpenMode mode,
                                                    bool openErased = false);
KELVO_HOST_API Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& pEnt, AcDbObjectId id,
                                                    AcDb::OpenMode mode,
                                                    bool openErased = false);
// Opens as T; eNotThatKindOfClass (and nothing left open) when the object is not a T.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) {
    pObj = nullptr;
    AcDbObject* object = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(object, id, mode, openErased);
    if (es != Acad::eOk) return es;
    pObj = T::cast(object);
    if (pObj == nullptr) {
        object->close();
        return Acad::eNotThatKindOfClass;
    }
    return Acad::eOk;
}

// --- entities ------------------------------------------------------------------------
// The public entity operations check the open state and call the protected sub* hooks
// that each entity class overrides.
class KELVO_HOST_API AcDbEntity : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbEntity);
    ~AcDbEntity() override;

    // The block table record that owns the entity (its owner).
    AcDbObjectId blockId() const;

    AcCmColor color() const;
    virtual Acad::ErrorStatus setColor(const AcCmColor& color, Adesk::Boolean doSubents = true);
    Adesk::UInt16 colorIndex() const;
    virtual Acad::ErrorStatus setColorIndex(Adesk::UInt16 color, Adesk::Boolean doSubents = true);
    AcCmEntityColor entityColor() const;

    // layer() and linetype() answer a new string the caller frees with acutDelString.
    ACHAR* layer() const;
    AcDbObjectId layerId() const;
    // By name, looked up in the entity's database (the working database while the entity
    // is not in one); eKeyNotFound for an unknown layer.
    virtual Acad::ErrorStatus setLayer(const ACHAR* newVal, Adesk::Boolean doSubents = true,
                                       bool allowHiddenLayer = false);
    virtual Acad::ErrorStatus setLayer(AcDbObjectId newVal, Adesk::Boolean doSubents = true,
                                       bool allowHiddenLayer = false);
    ACHAR* linetype() const;
    AcDbObjectId linetypeId() const;
    virtual Acad::ErrorStatus setLinetype(const ACHAR* newVal, Adesk::Boolean doSubents = true);
    virtual Acad::ErrorStatus setLinetype(AcDbObjectId newVal, Adesk::Boolean doSubents = true);
    double linetypeScale() const;
    virtual Acad::ErrorStatus setLinetypeScale(double newVal, Adesk::Boolean doSubents = true);
    AcDb::Visibility visibility() const;
    virtual Acad::ErrorStatus setVisibility(AcDb::Visibility newVal,
                                            Adesk::Boolean doSubents = true);
    AcDb::LineWeight lineWeight() const;
    virtual Acad::ErrorStatus setLineWeight(AcDb::LineWeight newVal,
                                            Adesk::Boolean doSubents = true);
    // Colour, layer, linetype, linetype scale, visibility and line weight of pEntity.
    Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* pEntity, Adesk::Boolean doSubents = true);
    // The current layer, linetype, colour ... of the database (the entity's own, else pDb,
    // else the working database).
    void setDatabaseDefaults();
    void setDatabaseDefaults(AcDbDatabase* pDb);

    // New entities (not in a database) that together look like this one; the caller owns
    // them. eNotApplicable when the entity does not explode.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const;
    // Prints the entity's listing on the command line.
    void list() const;
    Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                     const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                     const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                     AcDbIntArray& geomIds) const;
    Acad::ErrorStatus getGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                    AcDbIntArray& geomIds) const;
    Acad::ErrorStatus moveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
    // The grip-data forms; eNotImplemented by default, which makes callers use the
    // point-array forms above.
    Acad::ErrorStatus getGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize,
                                    int gripSize, const AcGeVector3d& curViewDir,
                                    int bitflags) const;
    Acad::ErrorStatus moveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                       const AcGeVector3d& offset, int bitflags);
    Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const;
    Acad::ErrorStatus moveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);
    Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& pEnt) const;
    Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                    AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker = 0,
                                    Adesk::GsMarker otherGsMarker = 0) const;
    Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                    const AcGePlane& projPlane, AcGePoint3dArray& points,
                                    Adesk::GsMarker thisGsMarker = 0,
                                    Adesk::GsMarker otherGsMarker = 0) const;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
    // Draws the entity for a proxy's saved graphics; by default its worldDraw.
    virtual void saveAs(AcGiWorldDraw* mode, AcDb::SaveType st);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

protected:
    AcDbEntity();
    virtual Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const;
    virtual void subList() const;
    virtual Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode,
                                                Adesk::GsMarker gsSelectionMark,
                                                const AcGePoint3d& pickPoint,
                                                const AcGePoint3d& lastPoint,
                                                const AcGeMatrix3d& viewXform,
                                                AcGePoint3dArray& snapPoints,
                                                AcDbIntArray& geomIds) const;
    virtual Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints,
                                               AcDbIntArray& osnapModes,
                                               AcDbIntArray& geomIds) const;
    virtual Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices,
                                                  const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips,
                                               double curViewUnitSize, int gripSize,
                                               const AcGeVector3d& curViewDir,
                                               int bitflags) const;
    virtual Acad::ErrorStatus subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                                  const AcGeVector3d& offset, int bitflags);
    virtual Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const;
    virtual Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                     const AcGeVector3d& offset);
    virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform);
    virtual Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& xform,
                                                    AcDbEntity*& pEnt) const;
    virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                               AcGePoint3dArray& points,
                                               Adesk::GsMarker thisGsMarker,
                                               Adesk::GsMarker otherGsMarker) const;
    virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                               const AcGePlane& projPlane,
                                               AcGePoint3dArray& points,
                                               Adesk::GsMarker thisGsMarker,
                                               Adesk::GsMarker otherGsMarker) const;
    // Default: the extents of what worldDraw draws.
    virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
    Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;

private:
    friend class kelvo::drawing::ObjectAccess;
    AcDbObjectId layer_;
    AcDbObjectId linetype_;
    AcCmEntityColor color_;
    double linetypeScale_ = 1.0;
    AcDb::Visibility visibility_ = AcDb::kVisible;
    AcDb::LineWeight lineWeight_ = AcDb::kLnWtByLayer;
};

// Walks the entities of a block table record or the attributes of a block reference.
class KELVO_HOST_API AcDbObjectIterator {
public:
    virtual ~AcDbObjectIterator() = default;
    virtual bool done() const = 0;
    virtual void step(bool backwards = false, bool skipDeleted = true) = 0;
    virtual void start(bool atEnd = false) = 0;
    virtual AcDbObjectId objectId() const = 0;
};
