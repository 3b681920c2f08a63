// The filers' default behaviour.

#include <cstdlib>

#include "adslib.h"
#include "dbfiler.h"
#include "runtime/drawing/dxf_item.h"

AcDbDwgFiler::~AcDbDwgFiler() = default;

Acad::ErrorStatus AcDbDwgFiler::dwgVersion(AcDb::AcDbDwgVersion& ver,
                                           AcDb::MaintenanceReleaseVersion& maintVer) const {
    ver = AcDb::kDHL_CURRENT;
    maintVer = AcDb::kMReleaseCurrent;
    return Acad::eOk;
}

AcDbDatabase* AcDbDwgFiler::database() const {
    return nullptr;
}
Acad::ErrorStatus AcDbDwgFiler::seek(Adesk::Int64, int) {
    return Acad::eNotApplicable;
}
Adesk::Int64 AcDbDwgFiler::tell() const {
    return 0;
}
bool AcDbDwgFiler::usesReferences() const {
    return false;
}
Acad::ErrorStatus AcDbDwgFiler::addReferences(AcDbObjectIdArray&) {
    return Acad::eOk;
}

AcDbDxfFiler::~AcDbDxfFiler() = default;

Acad::ErrorStatus AcDbDxfFiler::dwgVersion(AcDb::AcDbDwgVersion& ver,
                                           AcDb::MaintenanceReleaseVersion& maintVer) const {
    ver = AcDb::kDHL_CURRENT;
    maintVer = AcDb::kMReleaseCurrent;
    return Acad::eOk;
}

int AcDbDxfFiler::precision() const {
    return precision_;
}
void AcDbDxfFiler::setPrecision(int prec) {
    precision_ = prec;
}
Acad::ErrorStatus AcDbDxfFiler::readResBuf(resbuf* pItem) {
    return readItem(pItem);
}
void AcDbDxfFiler::haltAtClassBoundaries(bool) {}
bool AcDbDxfFiler::isModifyingExistingObject() const {
    return false;
}
Acad::ErrorStatus AcDbDxfFiler::writeResBuf(const resbuf& pItem) {
    return writeItem(pItem);
}
Acad::ErrorStatus AcDbDxfFiler::writeAngle(AcDb::DxfCode code, double angle, int prec) {
    return writeDouble(code, angle, prec);
}
Acad::ErrorStatus AcDbDxfFiler::writeXDataStart() {
    return Acad::eOk;
}
bool AcDbDxfFiler::objectGroupTexts(std::vector<AcDbDxfGroupText>&) const {
    return false;
}
Acad::ErrorStatus AcDbDxfFiler::writeGroupText(int, const std::wstring&) {
    return Acad::eNotImplemented;
}

Acad::ErrorStatus AcDbDxfFiler::readPoint3dItem(int code, AcGePoint3d& value) {
    kelvo::drawing::DxfItem item;
    if (!item.read(this)) return filerStatus();
    if (item.code() != code) {
        pushBackItem();
        return Acad::eBadDxfSequence;
    }
    value = item.point();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDxfFiler::readDoubleItem(int code, double& value) {
    kelvo::drawing::DxfItem item;
    if (!item.read(this)) return filerStatus();
    if (item.code() != code) {
        pushBackItem();
        return Acad::eBadDxfSequence;
    }
    value = item.real();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDxfFiler::readStringItem(int code, std::wstring& value) {
    kelvo::drawing::DxfItem item;
    if (!item.read(this)) return filerStatus();
    if (item.code() != code) {
        pushBackItem();
        return Acad::eBadDxfSequence;
    }
    value = item.text();
    return Acad::eOk;
}
