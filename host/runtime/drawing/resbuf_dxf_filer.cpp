// The resbuf-backed DXF filer.

#include "runtime/drawing/resbuf_dxf_filer.h"

#include <cstdlib>
#include <cstring>

#include "adslib.h"
#include "runtime/drawing/drawing_internal.h"

namespace kelvo::drawing {

ResbufDxfFiler::ResbufDxfFiler(AcDbDatabase* db) : db_(db) {}

ResbufDxfFiler::ResbufDxfFiler(AcDbDatabase* db, const resbuf* items, bool modifying)
    : db_(db), modifying_(modifying) {
    for (const resbuf* rb = items; rb; rb = rb->rbnext) {
        if (rb->restype == AcDb::kDxfXDataStart) break;
        if (rb->restype == -1 || rb->restype == 0 || rb->restype == RTDXF0) continue;
        if (rb->restype == AcDb::kDxfSubclass) hasMarkers_ = true;
        input_.push_back(rb);
    }
}

ResbufDxfFiler::~ResbufDxfFiler() {
    acutRelRb(items_);
    acutRelRb(xdata_);
}

int ResbufDxfFiler::rewindFiler() {
    pos_ = 0;
    status_ = Acad::eOk;
    return 0;
}

Acad::ErrorStatus ResbufDxfFiler::readItem(resbuf* pItem) {
    if (status_ != Acad::eOk) return status_;
    if (pos_ >= input_.size()) {
        status_ = Acad::eEndOfObject;
        return status_;
    }
    resbuf* copy = copyNode(input_[pos_++]);
    *pItem = *copy;
    pItem->rbnext = nullptr;
    std::free(copy);   // the value now belongs to *pItem
    return Acad::eOk;
}

Acad::ErrorStatus ResbufDxfFiler::pushBackItem() {
    if (pos_ == 0) return Acad::eInvalidInput;
    --pos_;
    status_ = Acad::eOk;
    return Acad::eOk;
}

// With markers: steps to the named class's marker when it comes next (or later in the
// list, skipping another class's part). Without markers: every class reads the list from
// its start.
bool ResbufDxfFiler::atSubclassData(const ACHAR* name) {
    if (!name) return false;
    if (!hasMarkers_) {
        pos_ = 0;
        status_ = Acad::eOk;
        return true;
    }
    for (std::size_t i = pos_; i < input_.size(); ++i) {
        const resbuf* rb = input_[i];
        if (rb->restype == AcDb::kDxfSubclass && rb->resval.rstring &&
            std::wcscmp(rb->resval.rstring, name) == 0) {
            pos_ = i + 1;
            status_ = Acad::eOk;
            return true;
        }
    }
    return false;
}

Acad::ErrorStatus ResbufDxfFiler::add(resbuf* node) {
    if (inXData_) appendNode(xdata_, xdataTail_, node);
    else appendNode(items_, itemsTail_, node);
    return Acad::eOk;
}

Acad::ErrorStatus ResbufDxfFiler::writeItem(const resbuf& item) { return add(copyNode(&item)); }

Acad::ErrorStatus ResbufDxfFiler::writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) {
    if (id.isNull()) return Acad::eOk;
    resbuf* rb = acutNewRb(code);
    rb->resval.rlname[0] = id.asOldId();
    return add(rb);
}

Acad::ErrorStatus ResbufDxfFiler::writeString(AcDb::DxfCode code, const ACHAR* value) {
    resbuf* rb = acutNewRb(code);
    acutNewString(value ? value : L"", rb->resval.rstring);
    return add(rb);
}

Acad::ErrorStatus ResbufDxfFiler::writeBChunk(AcDb::DxfCode code, const ads_binary& val) {
    resbuf* rb = acutNewRb(code);
    rb->resval.rbinary.clen = val.clen;
    rb->resval.rbinary.buf = static_cast<char*>(std::malloc(val.clen > 0 ? val.clen : 1));
    if (val.clen > 0) std::memcpy(rb->resval.rbinary.buf, val.buf, val.clen);
    return add(rb);
}

Acad::ErrorStatus ResbufDxfFiler::writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) {
    ACHAR text[32];
    val.getIntoAsciiBuffer(text, 32);
    return writeString(code, text);
}

// Integers go in the value slot of the group code's kind.
namespace {
resbuf* integerNode(int code, std::int64_t value) {
    resbuf* rb = acutNewRb(code);
    switch (rbKindOf(code)) {
        case RbKind::Short: rb->resval.rint = static_cast<short>(value); break;
        case RbKind::Long: rb->resval.rlong = static_cast<std::int32_t>(value); break;
        case RbKind::Int64: rb->resval.mnInt64 = value; break;
        case RbKind::Real: rb->resval.rreal = static_cast<double>(value); break;
        default: rb->resval.rlong = static_cast<std::int32_t>(value); break;
    }
    return rb;
}
}  // namespace

Acad::ErrorStatus ResbufDxfFiler::writeInt8(AcDb::DxfCode c, Adesk::Int8 v) { return add(integerNode(c, v)); }
Acad::ErrorStatus ResbufDxfFiler::writeInt64(AcDb::DxfCode c, Adesk::Int64 v) { return add(integerNode(c, v)); }
Acad::ErrorStatus ResbufDxfFiler::writeInt32(AcDb::DxfCode c, Adesk::Int32 v) { return add(integerNode(c, v)); }
Acad::ErrorStatus ResbufDxfFiler::writeInt16(AcDb::DxfCode c, Adesk::Int16 v) { return add(integerNode(c, v)); }
Acad::ErrorStatus ResbufDxfFiler::writeUInt32(AcDb::DxfCode c, Adesk::UInt32 v) { return add(integerNode(c, v)); }
Acad::ErrorStatus ResbufDxfFiler::writeUInt16(AcDb::DxfCode c, Adesk::UInt16 v) { return add(integerNode(c, v)); }
Acad::ErrorStatus ResbufDxfFiler::writeUInt8(AcDb::DxfCode c, Adesk::UInt8 v) { return add(integerNode(c, v)); }
Acad::ErrorStatus ResbufDxfFiler::writeBoolean(AcDb::DxfCode c, Adesk::Boolean v) { return add(integerNode(c, v ? 1 : 0)); }
Acad::ErrorStatus ResbufDxfFiler::writeBool(AcDb::DxfCode c, bool v) { return add(integerNode(c, v ? 1 : 0)); }

Acad::ErrorStatus ResbufDxfFiler::writeDouble(AcDb::DxfCode code, double val, int) {
    resbuf* rb = acutNewRb(code);
    rb->resval.rreal = val;
    return add(rb);
}

Acad::ErrorStatus ResbufDxfFiler::writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int) {
    resbuf* rb = acutNewRb(code);
    for (int i = 0; i < 3; ++i) rb->resval.rpoint[i] = val[i];
    return add(rb);
}

Acad::ErrorStatus ResbufDxfFiler::writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int prec) {
    return writePoint3d(code, AcGePoint3d(val.x, val.y, 0), prec);
}
Acad::ErrorStatus ResbufDxfFiler::writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int prec) {
    return writePoint3d(code, AcGePoint3d(val.x, val.y, 0), prec);
}
Acad::ErrorStatus ResbufDxfFiler::writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int prec) {
    return writePoint3d(code, AcGePoint3d(val.x, val.y, val.z), prec);
}
Acad::ErrorStatus ResbufDxfFiler::writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int prec) {
    return writePoint3d(code, AcGePoint3d(val.sx, val.sy, val.sz), prec);
}

Acad::ErrorStatus ResbufDxfFiler::writeXDataStart() {
    inXData_ = true;
    return Acad::eOk;
}

}  // namespace kelvo::drawing
