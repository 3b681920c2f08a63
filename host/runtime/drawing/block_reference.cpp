// Block references: a block definition placed with a position, scale, rotation and
// normal, with the attributes it owns.

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"
#include "runtime/drawing/object_filing.h"

using namespace kelvo::drawing;

namespace {

class IdIterator : public AcDbObjectIterator {
public:
    explicit IdIterator(AcDbObjectIdArray ids) : ids_(std::move(ids)) {}
    bool done() const override { return index_ < 0 || index_ >= ids_.length(); }
    void step(bool backwards, bool) override { index_ += backwards ? -1 : 1; }
    void start(bool atEnd) override { index_ = atEnd ? ids_.length() - 1 : 0; }
    AcDbObjectId objectId() const override { return done() ? AcDbObjectId() : ids_[index_]; }

private:
    AcDbObjectIdArray ids_;
    int index_ = 0;
};

}  // namespace

namespace kelvo::drawing {
AcDbObjectIterator* newIdIterator(const AcDbObjectIdArray& ids) { return new IdIterator(ids); }
}  // namespace kelvo::drawing

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity)

AcDbBlockReference::AcDbBlockReference() = default;
AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRec)
    : block_(blockTableRec), position_(position) {}
AcDbBlockReference::~AcDbBlockReference() {
    for (AcDbAttribute* a : pendingAttributes_) delete a;
}

AcDbObjectId AcDbBlockReference::blockTableRecord() const { return block_; }
Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId id) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!id.isNull() && !AcDbBlockTableRecord::cast(peekObject(id))) return Acad::eInvalidInput;
    block_ = id;
    return Acad::eOk;
}
AcGePoint3d AcDbBlockReference::position() const { return position_; }
Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& p) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    position_ = p;
    return Acad::eOk;
}
AcGeScale3d AcDbBlockReference::scaleFactors() const { return scale_; }
Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& s) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    scale_ = s;
    return Acad::eOk;
}
double AcDbBlockReference::rotation() const { return rotation_; }
Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    rotation_ = normalizeAngle(angle);
    return Acad::eOk;
}
AcGeVector3d AcDbBlockReference::normal() const { return normal_; }
Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    normal_ = n.normal();
    return Acad::eOk;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    AcGePoint3d origin;
    if (auto* block = AcDbBlockTableRecord::cast(peekObject(block_))) origin = block->origin();
    return AcGeMatrix3d::translation(position_.asVector()) * AcGeMatrix3d::planeToWorld(normal_) *
           AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis) *
           AcGeMatrix3d().setToScaling(scale_) *
           AcGeMatrix3d::translation(-origin.asVector());
}

// Takes the placement from a transform of block coordinates (no shear assumed).
Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& xform) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    AcGePoint3d origin;
    if (auto* block = AcDbBlockTableRecord::cast(peekObject(block_))) origin = block->origin();
    AcGePoint3d o;
    AcGeVector3d x, y, z;
    xform.getCoordSystem(o, x, y, z);
    double sx = x.length(), sy = y.length(), sz = z.length();
    if (sx == 0 || sy == 0 || sz == 0) return Acad::eInvalidInput;
    AcGeVector3d n = x.crossProduct(y).normal();
    if (n.dotProduct(z) < 0) sz = -sz;
    normal_ = n;
    AcGeVector3d ox = ocsXAxis(n), oy = n.crossProduct(ox);
    rotation_ = normalizeAngle(std::atan2(x.dotProduct(oy), x.dotProduct(ox)));
    scale_ = AcGeScale3d(sx, sy, sz);
    position_ = xform * origin;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* pAttr) {
    AcDbObjectId id;
    return appendAttribute(id, pAttr);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& attId, AcDbAttribute* pAttr) {
    attId.setNull();
    if (!pAttr) return Acad::eNullObjectPointer;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!pAttr->objectId().isNull()) return Acad::eAlreadyInDb;
    if (!database()) {
        pendingAttributes_.append(pAttr);
        return Acad::eOk;
    }
    Acad::ErrorStatus es = addObject(*database(), pAttr, attId);
    if (es != Acad::eOk) return es;
    ObjectAccess::setOwner(*pAttr, objectId());
    if (pAttr->layerId().isNull()) pAttr->setPropertiesFrom(this);
    attributes_.append(attId);
    if (seqend_.isNull()) {
        auto* end = new AcDbSequenceEnd();
        end->setPropertiesFrom(this);
        addObject(*database(), end, seqend_);
        ObjectAccess::setOwner(*end, objectId());
        end->close();
    }
    return Acad::eOk;
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const { return newIdIterator(attributes_); }
AcDbObjectIdArray AcDbBlockReference::attributeIds() const { return attributes_; }
AcDbObjectId AcDbBlockReference::seqendId() const { return seqend_; }

Acad::ErrorStatus AcDbBlockReference::explodeToOwnerSpace() const {
    AcDbBlockTableRecord* owner = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(owner, ownerId(), AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    AcDbVoidPtrArray parts;
    es = explode(parts);
    for (void* p : parts) {
        auto* e = static_cast<AcDbEntity*>(p);
        if (owner->appendAcDbEntity(e) == Acad::eOk) e->close();
        else delete e;
    }
    owner->close();
    return es;
}

Acad::ErrorStatus AcDbBlockReference::subErase(Adesk::Boolean erasing) {
    for (AcDbObjectId id : attributes_)
        if (AcDbObject* o = peekObject(id)) ObjectAccess::setErased(*o, erasing);
    if (AcDbObject* o = peekObject(seqend_)) ObjectAccess::setErased(*o, erasing);
    return Acad::eOk;
}

Adesk::Boolean AcDbBlockReference::subWorldDraw(AcGiWorldDraw* wd) {
    auto* block = AcDbBlockTableRecord::cast(peekObject(block_));
    if (!block) return true;
    AcGiWorldGeometry& g = wd->geometry();
    g.pushModelTransform(blockTransform());
    for (AcDbObjectId id : block->entityIds()) {
        AcDbEntity* e = AcDbEntity::cast(peekObject(id));
        if (!e || e->isErased() || e->visibility() == AcDb::kInvisible) continue;
        if (AcDbAttributeDefinition::cast(e)) continue;   // definitions show through attributes
        g.draw(e);
    }
    g.popModelTransform();
    for (AcDbObjectId id : attributes_) {
        AcDbEntity* e = AcDbEntity::cast(peekObject(id));
        if (e && !e->isErased()) g.draw(e);
    }
    return true;
}

void AcDbBlockReference::subList() const {
    AcDbEntity::subList();
    auto* block = AcDbBlockTableRecord::cast(peekObject(block_));
    acutPrintf(L"                  BLOCK REFERENCE  Block Name: \"%s\"\n", block ? block->name().c_str() : L"");
    acutPrintf(L"                at point, X=%10.4f  Y=%10.4f  Z=%10.4f\n", position_.x, position_.y, position_.z);
    acutPrintf(L"   X scale factor: %10.4f\n   Y scale factor: %10.4f\n", scale_.sx, scale_.sy);
    acutPrintf(L"   rotation angle: %10.4f\n", rotation_ * 180 / std::numbers::pi);
}

Acad::ErrorStatus AcDbBlockReference::subExplode(AcDbVoidPtrArray& entitySet) const {
    auto* block = AcDbBlockTableRecord::cast(peekObject(block_));
    if (!block) return Acad::eInvalidInput;
    AcGeMatrix3d xform = blockTransform();
    AcDbVoidPtrArray made;
    for (AcDbObjectId id : block->entityIds()) {
        AcDbEntity* e = AcDbEntity::cast(peekObject(id));
        if (!e || e->isErased()) continue;
        ++ObjectAccess::readersRef(*e);
        auto* copy = AcDbEntity::cast(e->clone());
        --ObjectAccess::readersRef(*e);
        if (!copy) continue;
        ObjectAccess::setOwner(*copy, AcDbObjectId());
        Acad::ErrorStatus es = copy->transformBy(xform);
        if (es != Acad::eOk) {
            delete copy;
            for (void* p : made) delete static_cast<AcDbEntity*>(p);
            return es == Acad::eCannotScaleNonUniformly ? Acad::eExplodeBeforeTransform : es;
        }
        made.append(copy);
    }
    entitySet.append(made);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                                        const AcGePoint3d&, const AcGePoint3d&,
                                                        const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                                        AcDbIntArray&) const {
    if (mode == AcDb::kOsModeIns) snaps.append(position_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                                       AcDbIntArray&) const {
    grips.append(position_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                          const AcGeVector3d& offset) {
    if (!indices.contains(0)) return Acad::eOk;
    return subTransformBy(AcGeMatrix3d::translation(offset));
}

// The reference and its attributes move together.
Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeMatrix3d placed = xform * blockTransform();
    Acad::ErrorStatus es = setBlockTransform(placed);
    if (es != Acad::eOk) return es;
    for (AcDbObjectId id : attributes_) {
        AcDbEntity* a = AcDbEntity::cast(peekObject(id));
        if (!a) continue;
        bool wasWriter = ObjectAccess::writer(*a);
        ObjectAccess::writerRef(*a) = true;
        a->transformBy(xform);
        ObjectAccess::writerRef(*a) = wasWriter;
    }
    for (AcDbAttribute* a : pendingAttributes_) a->transformBy(xform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subGetGeomExtents(AcDbExtents& extents) const {
    return AcDbEntity::subGetGeomExtents(extents);
}

Acad::ErrorStatus AcDbBlockReference::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeHardPointerId(block_);
    filer->writePoint3d(position_);
    filer->writeScale3d(scale_);
    filer->writeDouble(rotation_);
    filer->writeVector3d(normal_);
    filer->writeInt32(attributes_.length());
    for (AcDbObjectId id : attributes_) filer->writeHardOwnershipId(id);
    filer->writeHardOwnershipId(seqend_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    AcDbHardPointerId block;
    Adesk::Int32 n = 0;
    filer->readHardPointerId(&block);
    filer->readPoint3d(&position_);
    filer->readScale3d(&scale_);
    filer->readDouble(&rotation_);
    filer->readVector3d(&normal_);
    filer->readInt32(&n);
    block_ = block;
    AcDbObjectIdArray ids;
    for (Adesk::Int32 i = 0; i < n && filer->filerStatus() == Acad::eOk; ++i) {
        AcDbHardOwnershipId id;
        filer->readHardOwnershipId(&id);
        if (!id.isNull()) ids.append(id);
    }
    AcDbHardOwnershipId seqend;
    filer->readHardOwnershipId(&seqend);
    attributes_ = ids;
    seqend_ = seqend;
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbBlockReference");
    if (!attributes_.isEmpty()) filer->writeInt16(AcDb::kDxfHasSubentities, 1);
    auto* block = AcDbBlockTableRecord::cast(peekObject(block_));
    filer->writeString(AcDb::kDxfBlockName, block ? block->name().c_str() : L"");
    filer->writePoint3d(AcDb::kDxfXCoord, wcsToOcs(position_, normal_));
    if (scale_.sx != 1 || filer->includesDefaultValues()) filer->writeDouble(AcDb::kDxfTxtStyleXScale, scale_.sx);
    if (scale_.sy != 1 || filer->includesDefaultValues()) filer->writeDouble(AcDb::kDxfTxtStylePSize, scale_.sy);
    if (scale_.sz != 1 || filer->includesDefaultValues()) filer->writeDouble(AcDb::kDxfViewFrontClip, scale_.sz);
    if (rotation_ != 0 || filer->includesDefaultValues()) filer->writeDouble(AcDb::kDxfAngle, rotation_);
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockReference::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbBlockReference")) return Acad::eOk;
    AcDbDatabase* db = filer->database() ? filer->database() : database();
    if (!db) db = workingDatabase();
    AcGePoint3d ocs = wcsToOcs(position_, normal_);
    Acad::ErrorStatus bad = Acad::eOk;
    es = readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 2: {
                auto* table = AcDbSymbolTable::cast(peekObject(db ? db->blockTableId() : AcDbObjectId()));
                AcDbObjectId id;
                if (!table || table->getAt(item.text().c_str(), id) != Acad::eOk) bad = Acad::eInvalidBlockName;
                else if (auto* record = AcDbBlockTableRecord::cast(peekObject(id)); record && record->isLayout())
                    bad = Acad::eInvalidBlockName;   // a space holds references, it is not inserted
                else block_ = id;
                break;
            }
            case 10: ocs = item.point(); break;
            case 41: scale_.sx = item.real(); break;
            case 42: scale_.sy = item.real(); break;
            case 43: scale_.sz = item.real(); break;
            case 50: rotation_ = normalizeAngle(item.real()); break;
            case 210: normal_ = item.point().asVector().normal(); break;
            default: break;
        }
    });
    if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
    position_ = ocsToWcs(ocs, normal_);
    if (es == Acad::eOk && block_.isNull()) return Acad::eInvalidBlockName;
    return es != Acad::eOk ? es : bad;
}
