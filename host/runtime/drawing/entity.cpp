// Entities: the properties every entity has (layer, linetype, colour ...), their filing,
// and the public operations that check the open state and call each class's hooks.

#include "adslib.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"
#include "runtime/drawing/extents_draw.h"
#include "runtime/drawing/enum_values.h"

using namespace kelvo::drawing;

namespace {

AcDbDatabase* databaseFor(const AcDbObject& o) {
    AcDbDatabase* db = o.database();
    return db ? db : workingDatabase();
}

// A record of the table by name in db; creates a layer when asked (entmake does).
AcDbObjectId recordByName(AcDbObjectId tableId, const std::wstring& name) {
    auto* table = AcDbSymbolTable::cast(peekObject(tableId));
    AcDbObjectId id;
    if (table) table->getAt(name.c_str(), id);
    return id;
}

AcDbObjectId findOrMakeLayer(AcDbDatabase* db, const std::wstring& name) {
    if (!db) return {};
    AcDbObjectId id = recordByName(db->layerTableId(), name);
    if (!id.isNull()) return id;
    AcDbLayerTable* table = nullptr;
    if (acdbOpenObject(table, db->layerTableId(), AcDb::kForWrite) != Acad::eOk) return {};
    auto* layer = new AcDbLayerTableRecord();
    if (layer->setName(name.c_str()) != Acad::eOk || table->add(id, layer) != Acad::eOk) {
        delete layer;
        table->close();
        return {};
    }
    layer->setLinetypeObjectId(db->continuousLinetype());
    layer->close();
    table->close();
    return id;
}

std::wstring recordName(AcDbObjectId id) {
    auto* record = AcDbSymbolTableRecord::cast(peekObject(id));
    return record ? record->name() : L"";
}

ACHAR* newString(const std::wstring& s) {
    ACHAR* out = nullptr;
    acutNewString(s.c_str(), out);
    return out;
}

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbEntity, AcDbObject)

AcDbEntity::AcDbEntity() = default;
AcDbEntity::~AcDbEntity() = default;

AcDbObjectId AcDbEntity::blockId() const { return ownerId(); }

AcCmColor AcDbEntity::color() const { return AcCmColor(color_); }
AcCmEntityColor AcDbEntity::entityColor() const { return color_; }
Adesk::UInt16 AcDbEntity::colorIndex() const { return static_cast<Adesk::UInt16>(color_.colorIndex()); }

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, Adesk::Boolean) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    color_ = color.entityColor();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 color, Adesk::Boolean) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (color > 256) return Acad::eOutOfRange;
    color_.setColorIndex(static_cast<Adesk::Int16>(color));
    return Acad::eOk;
}

ACHAR* AcDbEntity::layer() const { return newString(recordName(layer_)); }
AcDbObjectId AcDbEntity::layerId() const { return layer_; }

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* newVal, Adesk::Boolean doSubents,
                                       bool allowHiddenLayer) {
    AcDbDatabase* db = databaseFor(*this);
    if (!newVal || !db) return Acad::eInvalidInput;
    AcDbObjectId id = recordByName(db->layerTableId(), newVal);
    if (id.isNull()) return Acad::eKeyNotFound;
    return setLayer(id, doSubents, allowHiddenLayer);
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId newVal, Adesk::Boolean, bool) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!AcDbLayerTableRecord::cast(peekObject(newVal))) return Acad::eInvalidLayer;
    layer_ = newVal;
    return Acad::eOk;
}

ACHAR* AcDbEntity::linetype() const { return newString(recordName(linetype_)); }
AcDbObjectId AcDbEntity::linetypeId() const { return linetype_; }

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* newVal, Adesk::Boolean doSubents) {
    AcDbDatabase* db = databaseFor(*this);
    if (!newVal || !db) return Acad::eInvalidInput;
    AcDbObjectId id = recordByName(db->linetypeTableId(), newVal);
    if (id.isNull()) return Acad::eKeyNotFound;
    return setLinetype(id, doSubents);
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId newVal, Adesk::Boolean) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!AcDbLinetypeTableRecord::cast(peekObject(newVal))) return Acad::eUndefinedLineType;
    linetype_ = newVal;
    return Acad::eOk;
}

double AcDbEntity::linetypeScale() const { return linetypeScale_; }

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double newVal, Adesk::Boolean) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (newVal <= 0) return Acad::eBadLinetypeScale;
    linetypeScale_ = newVal;
    return Acad::eOk;
}

AcDb::Visibility AcDbEntity::visibility() const { return visibility_; }

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility newVal, Adesk::Boolean) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    visibility_ = newVal;
    return Acad::eOk;
}

AcDb::LineWeight AcDbEntity::lineWeight() const { return lineWeight_; }

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight newVal, Adesk::Boolean) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    lineWeight_ = newVal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* pEntity, Adesk::Boolean) {
    if (!pEntity) return Acad::eNullEntityPointer;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    color_ = pEntity->color_;
    layer_ = pEntity->layer_;
    linetype_ = pEntity->linetype_;
    linetypeScale_ = pEntity->linetypeScale_;
    visibility_ = pEntity->visibility_;
    lineWeight_ = pEntity->lineWeight_;
    return Acad::eOk;
}

void AcDbEntity::setDatabaseDefaults() { setDatabaseDefaults(databaseFor(*this)); }

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* pDb) {
    if (!pDb) return;
    layer_ = pDb->clayer();
    linetype_ = pDb->celtype();
    color_ = pDb->cecolor().entityColor();
    linetypeScale_ = pDb->celtscale();
    lineWeight_ = pDb->celweight();
}

// --- the public operations -------------------------------------------------------------

Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray& entitySet) const {
    assertReadEnabled();
    return subExplode(entitySet);
}

void AcDbEntity::list() const {
    assertReadEnabled();
    subList();
}

Acad::ErrorStatus AcDbEntity::getOsnapPoints(AcDb::OsnapMode osnapMode,
                                             Adesk::GsMarker gsSelectionMark,
                                             const AcGePoint3d& pickPoint,
                                             const AcGePoint3d& lastPoint,
                                             const AcGeMatrix3d& viewXform,
                                             AcGePoint3dArray& snapPoints,
                                             AcDbIntArray& geomIds) const {
    assertReadEnabled();
    return subGetOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform,
                             snapPoints, geomIds);
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                            AcDbIntArray& geomIds) const {
    assertReadEnabled();
    return subGetGripPoints(gripPoints, osnapModes, geomIds);
}

Acad::ErrorStatus AcDbEntity::moveGripPointsAt(const AcDbIntArray& indices,
                                               const AcGeVector3d& offset) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcDbGripDataPtrArray& grips, double curViewUnitSize,
                                            int gripSize, const AcGeVector3d& curViewDir,
                                            int bitflags) const {
    assertReadEnabled();
    return subGetGripPoints(grips, curViewUnitSize, gripSize, curViewDir, bitflags);
}

Acad::ErrorStatus AcDbEntity::moveGripPointsAt(const AcDbVoidPtrArray& gripAppData,
                                               const AcGeVector3d& offset, int bitflags) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    return subMoveGripPointsAt(gripAppData, offset, bitflags);
}

Acad::ErrorStatus AcDbEntity::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
    assertReadEnabled();
    return subGetStretchPoints(stretchPoints);
}

Acad::ErrorStatus AcDbEntity::moveStretchPointsAt(const AcDbIntArray& indices,
                                                  const AcGeVector3d& offset) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    return subMoveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& xform) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    return subTransformBy(xform);
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& pEnt) const {
    assertReadEnabled();
    return subGetTransformedCopy(xform, pEnt);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                            AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                            Adesk::GsMarker otherGsMarker) const {
    assertReadEnabled();
    return subIntersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                            const AcGePlane& projPlane, AcGePoint3dArray& points,
                                            Adesk::GsMarker thisGsMarker,
                                            Adesk::GsMarker otherGsMarker) const {
    assertReadEnabled();
    return subIntersectWith(pEnt, intType, projPlane, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    assertReadEnabled();
    return subGetGeomExtents(extents);
}

void AcDbEntity::saveAs(AcGiWorldDraw* mode, AcDb::SaveType) { worldDraw(mode); }

// --- the hooks' defaults ---------------------------------------------------------------

Acad::ErrorStatus AcDbEntity::subExplode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }

void AcDbEntity::subList() const {
    AcRxClass* cls = isA();
    ACHAR handle[32] = L"";
    objectId().handle().getIntoAsciiBuffer(handle, 32);
    acutPrintf(L"                  %s    Layer: \"%s\"\n", cls ? cls->name() : L"",
               recordName(layer_).c_str());
    acutPrintf(L"                            Space: Model space\n");
    acutPrintf(L"                   Handle = %s\n", handle);
}

Acad::ErrorStatus AcDbEntity::subGetOsnapPoints(AcDb::OsnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                                const AcGePoint3d&, const AcGeMatrix3d&,
                                                AcGePoint3dArray&, AcDbIntArray&) const {
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcGePoint3dArray&, AcDbIntArray&, AcDbIntArray&) const {
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcDbIntArray&, const AcGeVector3d&) {
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcDbGripDataPtrArray&, double, int,
                                               const AcGeVector3d&, int) const {
    return Acad::eNotImplemented;
}

Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcDbVoidPtrArray&, const AcGeVector3d&, int) {
    return Acad::eNotImplemented;
}

Acad::ErrorStatus AcDbEntity::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
    AcDbIntArray modes, ids;
    return subGetGripPoints(stretchPoints, modes, ids);
}

Acad::ErrorStatus AcDbEntity::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                     const AcGeVector3d& offset) {
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::subGetTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& pEnt) const {
    pEnt = AcDbEntity::cast(clone());
    if (!pEnt) return Acad::eNotApplicable;
    Acad::ErrorStatus es = pEnt->transformBy(xform);
    if (es != Acad::eOk) {
        delete pEnt;
        pEnt = nullptr;
    }
    return es;
}

// By default the straight pieces both entities draw are intersected (curves as chords).
Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                               AcGePoint3dArray& points, Adesk::GsMarker,
                                               Adesk::GsMarker) const {
    if (!pEnt) return Acad::eNullEntityPointer;
    std::vector<std::pair<AcGePoint3d, AcGePoint3d>> mine, theirs;
    drawnSegments(*this, mine);
    drawnSegments(*pEnt, theirs);
    AcDb::Intersect pieces = intType == AcDb::kOnBothOperands ? intType : AcDb::kOnBothOperands;
    for (const auto& [a1, a2] : mine)
        for (const auto& [b1, b2] : theirs) intersectSegments(a1, a2, b1, b2, pieces, points);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                               const AcGePlane&, AcGePoint3dArray& points,
                                               Adesk::GsMarker thisGsMarker,
                                               Adesk::GsMarker otherGsMarker) const {
    return subIntersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents& extents) const {
    return extentsOfDrawing(*this, extents);
}

Adesk::UInt32 AcDbEntity::subSetAttributes(AcGiDrawableTraits* traits) {
    if (traits) {
        traits->setTrueColor(color_);
        traits->setLayer(layer_);
        traits->setLineType(linetype_);
        traits->setLineTypeScale(linetypeScale_);
        traits->setLineWeight(lineWeight_);
    }
    return kDrawableIsAnEntity;
}

Adesk::Boolean AcDbEntity::subWorldDraw(AcGiWorldDraw*) { return true; }

// --- filing ----------------------------------------------------------------------------

Acad::ErrorStatus AcDbEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeHardPointerId(layer_);
    filer->writeHardPointerId(linetype_);
    filer->writeUInt8(static_cast<Adesk::UInt8>(color_.colorMethod()));
    filer->writeInt16(color_.colorIndex());
    filer->writeUInt32(color_.rgb());
    filer->writeDouble(linetypeScale_);
    filer->writeInt16(static_cast<Adesk::Int16>(visibility_));
    filer->writeInt16(static_cast<Adesk::Int16>(lineWeight_));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    AcDbHardPointerId layer, linetype;
    Adesk::UInt8 method = 0;
    Adesk::Int16 index = 0, visibility = 0, weight = 0;
    Adesk::UInt32 rgb = 0;
    filer->readHardPointerId(&layer);
    filer->readHardPointerId(&linetype);
    filer->readUInt8(&method);
    filer->readInt16(&index);
    filer->readUInt32(&rgb);
    filer->readDouble(&linetypeScale_);
    filer->readInt16(&visibility);
    filer->readInt16(&weight);
    if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
    layer_ = layer;
    linetype_ = linetype;
    if (method == AcCmEntityColor::kByColor)
        color_.setRGB(static_cast<Adesk::UInt8>(rgb >> 16), static_cast<Adesk::UInt8>(rgb >> 8),
                      static_cast<Adesk::UInt8>(rgb));
    else
        color_.setColorIndex(index);
    if (visibility != AcDb::kVisible && visibility != AcDb::kInvisible)
        return Acad::eBadVisibilityValue;
    if (!kelvo::drawing::isLineWeight(weight)) return Acad::eBadLineWeightValue;
    visibility_ = static_cast<AcDb::Visibility>(visibility);
    lineWeight_ = static_cast<AcDb::LineWeight>(weight);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbEntity");
    filer->writeString(AcDb::kDxfLayerName, recordName(layer_).c_str());
    AcDbDatabase* db = database();
    if (!linetype_.isNull() && (!db || linetype_ != db->byLayerLinetype()))
        filer->writeString(AcDb::kDxfLinetypeName, recordName(linetype_).c_str());
    if (!color_.isByLayer()) filer->writeInt16(AcDb::kDxfColor, color_.colorIndex());
    if (color_.isByColor()) filer->writeInt32(AcDb::kDxfColorRGB, static_cast<Adesk::Int32>(color_.rgb()));
    if (lineWeight_ != AcDb::kLnWtByLayer)
        filer->writeInt16(AcDb::kDxfLineWeight, static_cast<Adesk::Int16>(lineWeight_));
    if (linetypeScale_ != 1.0) filer->writeDouble(AcDb::kDxfLinetypeScale, linetypeScale_);
    if (visibility_ == AcDb::kInvisible) filer->writeInt16(AcDb::kDxfVisibility, 1);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbEntity")) return Acad::eOk;
    AcDbDatabase* db = filer->database() ? filer->database() : databaseFor(*this);
    Acad::ErrorStatus bad = Acad::eOk;
    es = readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case AcDb::kDxfLayerName: {
                AcDbObjectId id = findOrMakeLayer(db, item.text());
                if (id.isNull()) bad = Acad::eBadLayerName;
                else layer_ = id;
                break;
            }
            case AcDb::kDxfLinetypeName: {
                AcDbObjectId id = db ? recordByName(db->linetypeTableId(), item.text()) : AcDbObjectId();
                if (id.isNull()) bad = Acad::eBadLinetypeName;
                else linetype_ = id;
                break;
            }
            case AcDb::kDxfColor:
                if (item.integer() < 0 || item.integer() > 256) bad = Acad::eBadColorIndex;
                else color_.setColorIndex(static_cast<Adesk::Int16>(item.integer()));
                break;
            case AcDb::kDxfColorRGB: {
                auto rgb = static_cast<std::uint32_t>(item.integer());
                color_.setRGB(static_cast<Adesk::UInt8>(rgb >> 16), static_cast<Adesk::UInt8>(rgb >> 8),
                              static_cast<Adesk::UInt8>(rgb));
                break;
            }
            case AcDb::kDxfLineWeight:
                if (!kelvo::drawing::isLineWeight(item.integer())) bad = Acad::eBadLineWeightValue;
                else lineWeight_ = static_cast<AcDb::LineWeight>(item.integer());
                break;
            case AcDb::kDxfLinetypeScale:
                if (item.real() <= 0) bad = Acad::eBadLinetypeScale;
                else linetypeScale_ = item.real();
                break;
            case AcDb::kDxfVisibility:
                if (item.integer() != 0 && item.integer() != 1) bad = Acad::eBadVisibilityValue;
                else visibility_ = item.integer() ? AcDb::kInvisible : AcDb::kVisible;
                break;
            default: break;
        }
    });
    return es != Acad::eOk ? es : bad;
}
