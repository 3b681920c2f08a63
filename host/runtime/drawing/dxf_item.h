// Reading DXF items one at a time with the string of each item released.
#pragma once

#include <string>

#include "dbfiler.h"

namespace kelvo::drawing {

// One item read from a DXF filer; owns its string or binary value.
class DxfItem {
public:
    DxfItem() { rb_.restype = RTNONE; rb_.rbnext = nullptr; }
    ~DxfItem() { clear(); }
    DxfItem(const DxfItem&) = delete;
    DxfItem& operator=(const DxfItem&) = delete;

    // Reads the next item; false at the end of the object (or on a filer error, kept in
    // the filer's status).
    bool read(AcDbDxfFiler* filer);
    int code() const { return rb_.restype; }
    double real() const;
    int integer() const;
    std::wstring text() const;
    AcGePoint3d point() const;
    AcDbObjectId id() const;   // entity-name items
    const resbuf& rb() const { return rb_; }

private:
    void clear();
    resbuf rb_;
};

// The loop every class's reader runs: reads items up to the next subclass marker (which
// is pushed back) or the end of the object, handing each to `handle`.
template <typename Handler>
Acad::ErrorStatus readClassItems(AcDbDxfFiler* filer, Handler handle) {
    DxfItem item;
    while (item.read(filer)) {
        if (item.code() == 100) {
            filer->pushBackItem();
            break;
        }
        handle(item);
    }
    Acad::ErrorStatus es = filer->filerStatus();
    return es == Acad::eEndOfObject || es == Acad::eEndOfFile ? Acad::eOk : es;
}

}  // namespace kelvo::drawing
