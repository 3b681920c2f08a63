// DXF items read from a filer.

#include "runtime/drawing/dxf_item.h"

#include <cstdlib>

#include "adslib.h"

namespace kelvo::drawing {

void DxfItem::clear() {
    RbKind kind = rbKindOf(rb_.restype);
    if (kind == RbKind::String && rb_.resval.rstring) acutDelString(rb_.resval.rstring);
    if (kind == RbKind::Binary) std::free(rb_.resval.rbinary.buf);
    rb_.restype = RTNONE;
    rb_.resval = {};
}

bool DxfItem::read(AcDbDxfFiler* filer) {
    clear();
    rb_.resval = {};
    if (filer->readItem(&rb_) != Acad::eOk) {
        rb_.restype = RTNONE;
        return false;
    }
    return true;
}

double DxfItem::real() const {
    switch (rbKindOf(rb_.restype)) {
        case RbKind::Real: return rb_.resval.rreal;
        case RbKind::Short: return rb_.resval.rint;
        case RbKind::Long: return rb_.resval.rlong;
        case RbKind::Int64: return static_cast<double>(rb_.resval.mnInt64);
        default: return 0;
    }
}

int DxfItem::integer() const {
    switch (rbKindOf(rb_.restype)) {
        case RbKind::Short: return rb_.resval.rint;
        case RbKind::Long: return rb_.resval.rlong;
        case RbKind::Int64: return static_cast<int>(rb_.resval.mnInt64);
        case RbKind::Real: return static_cast<int>(rb_.resval.rreal);
        default: return 0;
    }
}

std::wstring DxfItem::text() const {
    if (rbKindOf(rb_.restype) == RbKind::String && rb_.resval.rstring) return rb_.resval.rstring;
    return {};
}

AcGePoint3d DxfItem::point() const {
    if (rbKindOf(rb_.restype) == RbKind::Point)
        return {rb_.resval.rpoint[0], rb_.resval.rpoint[1], rb_.resval.rpoint[2]};
    return {};
}

AcDbObjectId DxfItem::id() const {
    if (rbKindOf(rb_.restype) == RbKind::Name) return AcDbObjectId(rb_.resval.rlname[0]);
    return {};
}

}  // namespace kelvo::drawing
