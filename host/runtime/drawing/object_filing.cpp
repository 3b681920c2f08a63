// Filing helpers: extended data in DWG streams, DXF names, copies through the copy filer.

#include "runtime/drawing/object_filing.h"

#include <cstdlib>

#include "adslib.h"
#include "runtime/drawing/dwg_memory_filer.h"
#include "runtime/drawing/resbuf_chain.h"

namespace kelvo::drawing {

// Extended data: a count of items, then each item's code and value by its kind.
Acad::ErrorStatus writeXDataToDwg(AcDbDwgFiler* filer, const resbuf* xdata) {
    Adesk::Int32 count = 0;
    for (const resbuf* rb = xdata; rb; rb = rb->rbnext) ++count;
    filer->writeInt32(count);
    for (const resbuf* rb = xdata; rb; rb = rb->rbnext) {
        filer->writeInt16(rb->restype);
        switch (rbKindOf(rb->restype)) {
            case RbKind::String: filer->writeString(rb->resval.rstring); break;
            case RbKind::Real: filer->writeDouble(rb->resval.rreal); break;
            case RbKind::Point:
                filer->writePoint3d(
                    AcGePoint3d(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]));
                break;
            case RbKind::Short: filer->writeInt16(rb->resval.rint); break;
            case RbKind::Long: filer->writeInt32(rb->resval.rlong); break;
            case RbKind::Binary: filer->writeBChunk(rb->resval.rbinary); break;
            default: break;
        }
    }
    return filer->filerStatus();
}

Acad::ErrorStatus readXDataFromDwg(AcDbDwgFiler* filer, resbuf*& xdata) {
    xdata = nullptr;
    Adesk::Int32 count = 0;
    if (filer->readInt32(&count) != Acad::eOk) return filer->filerStatus();
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    for (Adesk::Int32 i = 0; i < count; ++i) {
        Adesk::Int16 code = 0;
        if (filer->readInt16(&code) != Acad::eOk) break;
        resbuf* rb = acutNewRb(code);
        appendNode(head, tail, rb);
        switch (rbKindOf(code)) {
            case RbKind::String: filer->readString(&rb->resval.rstring); break;
            case RbKind::Real: filer->readDouble(&rb->resval.rreal); break;
            case RbKind::Point: {
                AcGePoint3d p;
                filer->readPoint3d(&p);
                for (int k = 0; k < 3; ++k) rb->resval.rpoint[k] = p[k];
                break;
            }
            case RbKind::Short: filer->readInt16(&rb->resval.rint); break;
            case RbKind::Long: filer->readInt32(&rb->resval.rlong); break;
            case RbKind::Binary: filer->readBChunk(&rb->resval.rbinary); break;
            default: break;
        }
    }
    if (filer->filerStatus() != Acad::eOk) {
        acutRelRb(head);
        return filer->filerStatus();
    }
    xdata = head;
    return Acad::eOk;
}

const ACHAR* dxfNameOf(const AcRxClass* cls) {
    for (const AcRxClass* c = cls; c; c = c->myParent())
        if (c->dxfName() && *c->dxfName()) return c->dxfName();
    return L"";
}

AcRxObject* cloneThroughFiler(const AcDbObject& source) {
    AcRxClass* cls = source.isA();
    AcRxObject* made = cls ? cls->create() : nullptr;
    auto* copy = AcDbObject::cast(made);
    if (!copy) {
        delete made;
        return nullptr;
    }
    if (copyThroughFiler(*copy, &source) != Acad::eOk) {
        delete copy;
        return nullptr;
    }
    return copy;
}

Acad::ErrorStatus copyThroughFiler(AcDbObject& target, const AcRxObject* source) {
    auto* from = AcDbObject::cast(source);
    if (!from || from->isA() != target.isA()) return Acad::eWrongObjectType;
    if (!target.isWriteEnabled()) return Acad::eNotOpenForWrite;
    DwgMemoryFiler filer(AcDb::kCopyFiler, from->database());
    Acad::ErrorStatus es = from->dwgOut(&filer);
    if (es != Acad::eOk) return es;
    filer.rewind();
    return target.dwgIn(&filer);
}

}  // namespace kelvo::drawing
