// TVLeader in drawing files. One field list per format, read and written side by side.
//
// DWG, object version 2: Int32 version, Point3d start, middle, end, Double scale, Bool
// has-block, and the block's hard pointer only when it has one. Version 1 (older) had the
// same layout with the scale stored before the drawing scale was applied, so a version-1
// scale is multiplied by the drawing's DIMSCALE on reading. Version 3 and above come from
// a newer module: eMakeMeProxy, and the host keeps the object as a proxy.
//
// DXF: subclass "TVLeader", 10 start, 11 middle, 12 end, 40 scale. The block is not filed
// in DXF.
#include "entities/tv_leader.h"

#include "adslib.h"
#include "dbfiler.h"
#include "entities/drawing_scale.h"

namespace {

constexpr Adesk::Int32 kCurrentVersion = 2;
constexpr Adesk::Int32 kFirstUnreadableVersion = 3;
constexpr const ACHAR* kSubclass = L"TVLeader";

// Whether the id names a block that is still there (and so worth filing).
bool isLiveBlock(AcDbObjectId id) {
    return !id.isNull() && id.isValid() && !id.isErased();
}

// Frees what a DXF filer's readItem allocated into an item.
void releaseItemValue(resbuf& item) {
    if (rbKindOf(item.restype) == RbKind::String && item.resval.rstring != nullptr)
        acutDelString(item.resval.rstring);
}

AcGePoint3d pointOf(const resbuf& item) {
    return {item.resval.rpoint[0], item.resval.rpoint[1], item.resval.rpoint[2]};
}

// The database a version-1 scale takes its drawing scale from: the one being read,
// else the current document's.
const AcDbDatabase* scaleSource(const AcDbDwgFiler* filer) {
    if (filer->database() != nullptr) return filer->database();
    return kelvo::currentDatabase();
}

}  // namespace

Acad::ErrorStatus TVLeader::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    Acad::ErrorStatus es = AcDbCurve::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    const bool hasBlock = isLiveBlock(blockId_);
    if ((es = filer->writeInt32(kCurrentVersion)) != Acad::eOk) return es;
    if ((es = filer->writePoint3d(start_)) != Acad::eOk) return es;
    if ((es = filer->writePoint3d(middle_)) != Acad::eOk) return es;
    if ((es = filer->writePoint3d(end_)) != Acad::eOk) return es;
    if ((es = filer->writeDouble(scale_)) != Acad::eOk) return es;
    if ((es = filer->writeBool(hasBlock)) != Acad::eOk) return es;
    if (hasBlock && (es = filer->writeHardPointerId(blockId_)) != Acad::eOk) return es;
    return filer->filerStatus();
}

Acad::ErrorStatus TVLeader::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    Acad::ErrorStatus es = AcDbCurve::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int32 version = 0;
    if ((es = filer->readInt32(&version)) != Acad::eOk) return es;
    if (version >= kFirstUnreadableVersion) return Acad::eMakeMeProxy;
    if (version == 1) return readVersion1(filer);
    if (version == 2) return readVersion2(filer);
    return filer->filerStatus();
}

Acad::ErrorStatus TVLeader::readVersion1(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es;
    double scale = 0.0;
    if ((es = filer->readPoint3d(&start_)) != Acad::eOk) return es;
    if ((es = filer->readPoint3d(&middle_)) != Acad::eOk) return es;
    if ((es = filer->readPoint3d(&end_)) != Acad::eOk) return es;
    if ((es = filer->readDouble(&scale)) != Acad::eOk) return es;
    scale *= kelvo::drawingScale(scaleSource(filer));
    if ((es = readBlock(filer)) != Acad::eOk) return es;
    synchronise();
    setScale(scale);
    return filer->filerStatus();
}

Acad::ErrorStatus TVLeader::readVersion2(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es;
    double scale = 0.0;
    if ((es = filer->readPoint3d(&start_)) != Acad::eOk) return es;
    if ((es = filer->readPoint3d(&middle_)) != Acad::eOk) return es;
    if ((es = filer->readPoint3d(&end_)) != Acad::eOk) return es;
    if ((es = filer->readDouble(&scale)) != Acad::eOk) return es;
    if ((es = readBlock(filer)) != Acad::eOk) return es;
    synchronise();
    setScale(scale);
    if (!layerId().isNull()) tag_.setLayer(layerId(), true, false);
    return filer->filerStatus();
}

// An object read over an older state (undo, copy) must not keep a block it no longer has.
Acad::ErrorStatus TVLeader::readBlock(AcDbDwgFiler* filer) {
    blockId_.setNull();
    bool hasBlock = false;
    Acad::ErrorStatus es = filer->readBool(&hasBlock);
    if (es != Acad::eOk) return es;
    if (hasBlock) {
        AcDbHardPointerId id;
        if ((es = filer->readHardPointerId(&id)) != Acad::eOk) return es;
        blockId_ = id;
    }
    tag_.setBlockTableRecord(blockId_);
    return Acad::eOk;
}

Acad::ErrorStatus TVLeader::dxfOutFields(AcDbDxfFiler* filer) const {
    assertReadEnabled();
    Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    if ((es = filer->writeString(AcDb::kDxfSubclass, kSubclass)) != Acad::eOk) return es;
    if ((es = filer->writePoint3d(AcDb::kDxfXCoord, start_)) != Acad::eOk) return es;
    if ((es = filer->writePoint3d(static_cast<AcDb::DxfCode>(11), middle_)) != Acad::eOk) return es;
    if ((es = filer->writePoint3d(static_cast<AcDb::DxfCode>(12), end_)) != Acad::eOk) return es;
    if ((es = filer->writeDouble(AcDb::kDxfReal, scale_)) != Acad::eOk) return es;
    return filer->filerStatus();
}

Acad::ErrorStatus TVLeader::dxfInFields(AcDbDxfFiler* filer) {
    assertWriteEnabled();
    Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(kSubclass)) return Acad::eBadDxfSequence;
    resbuf item{};
    while (filer->readItem(&item) == Acad::eOk) {
        const int code = item.restype;
        if (code == AcDb::kDxfSubclass || code == AcDb::kDxfXDataStart || code >= 1000) {
            // The next class's data or the extended data: not ours to read.
            releaseItemValue(item);
            filer->pushBackItem();
            break;
        }
        switch (code) {
            case 10: start_ = pointOf(item); break;
            case 11: middle_ = pointOf(item); break;
            case 12: end_ = pointOf(item); break;
            case 40: setScale(item.resval.rreal); break;
            default: break;
        }
        releaseItemValue(item);
    }
    synchronise();
    es = filer->filerStatus();
    return es == Acad::eEndOfObject || es == Acad::eEndOfFile ? Acad::eOk : es;
}
