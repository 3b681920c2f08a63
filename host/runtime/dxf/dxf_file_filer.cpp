// The DXF file filers: group items to and from resbufs.

#include "runtime/dxf/dxf_file_filer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <numbers>

#include "adslib.h"
#include "gepnt2d.h"
#include "gescl3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

namespace kelvo::host::dxf {
namespace {

ACHAR* newString(const std::wstring& text) {
    ACHAR* out = nullptr;
    acutNewString(text.c_str(), out);
    return out;
}

// Binary chunks are hex text in files.
bool hexToBytes(const std::wstring& hex, ads_binary& out) {
    if (hex.size() % 2) return false;
    out.clen = static_cast<short>(hex.size() / 2);
    out.buf = static_cast<char*>(std::malloc(hex.size() / 2 + 1));
    for (size_t i = 0; i < hex.size(); i += 2) {
        int v = static_cast<int>(std::wcstol(hex.substr(i, 2).c_str(), nullptr, 16));
        out.buf[i / 2] = static_cast<char>(v);
    }
    return true;
}

}  // namespace

bool isAngle(int code) {
    return code >= 50 && code <= 58;
}

// --- reading -------------------------------------------------------------------------

DxfInFiler::DxfInFiler(AcDbDatabase* db, const std::vector<Group>& groups, size_t first,
                       HandleResolver resolve)
    : db_(db),
      groups_(groups),
      first_(first),
      pos_(first),
      last_(first),
      resolve_(std::move(resolve)) {}

int DxfInFiler::rewindFiler() {
    pos_ = last_ = first_;
    inExtendedData_ = false;
    status_ = Acad::eOk;
    return 0;
}

Acad::ErrorStatus DxfInFiler::readItem(resbuf* item) {
    if (!item) return Acad::eNullObjectPointer;
    if (atEOF()) return Acad::eEndOfObject;
    // A class's reader stops where extended data begins; only a reader that asked
    // atExtendedData goes on into it.
    if (stopsAtExtendedData_ && groups_[pos_].code >= 1000 && !inExtendedData_)
        return Acad::eEndOfObject;
    last_ = pos_;
    const Group& g = groups_[pos_++];
    item->restype = static_cast<short>(g.code);
    item->rbnext = nullptr;
    switch (rbKindOf(g.code)) {
        case RbKind::Point: {
            // x, then y and z when the next groups are this point's.
            double v[3] = {g.toDouble(), 0, 0};
            for (int k = 1;
                 k <= 2 && pos_ < groups_.size() && groups_[pos_].code == g.code + 10 * k; ++k)
                v[k] = groups_[pos_++].toDouble();
            std::memcpy(item->resval.rpoint, v, sizeof v);
            break;
        }
        case RbKind::Real:
            item->resval.rreal = isAngle(g.code) ? g.toDouble() * kRadiansPerDegree : g.toDouble();
            break;
        case RbKind::Short:
            item->resval.rint = static_cast<short>(g.toInt());
            break;
        case RbKind::Long:
            item->resval.rlong = static_cast<std::int32_t>(g.toInt());
            break;
        case RbKind::Int64:
            item->resval.mnInt64 = g.toInt();
            break;
        case RbKind::Name: {
            AcDbObjectId id = resolve_ ? resolve_(g.toHandle()) : AcDbObjectId();
            item->resval.rlname[0] = id.asOldId();
            item->resval.rlname[1] = 0;
            break;
        }
        case RbKind::Binary:
            if (!hexToBytes(g.text, item->resval.rbinary)) {
                item->resval.rbinary = ads_binary{};
                return status_ = Acad::eInvalidDxfCode;
            }
            break;
        // Codes a value list has no kind for (booleans 290-299 ...) carry a whole number;
        // nothing is allocated for them, since nothing would free it.
        case RbKind::None:
            item->resval.rlong = static_cast<std::int32_t>(g.toInt());
            break;
        case RbKind::String:
            item->resval.rstring = newString(g.text);
            break;
    }
    return Acad::eOk;
}

Acad::ErrorStatus DxfInFiler::pushBackItem() {
    if (last_ >= pos_) return Acad::eInvalidInput;
    pos_ = last_;
    return Acad::eOk;
}

bool DxfInFiler::atSubclassData(const ACHAR* name) {
    if (atEOF() || !name || groups_[pos_].code != 100 || groups_[pos_].text != name) return false;
    last_ = pos_++;
    return true;
}

bool DxfInFiler::atExtendedData() {
    inExtendedData_ = !atEOF() && groups_[pos_].code >= 1000;
    return inExtendedData_;
}

bool DxfInFiler::objectGroupTexts(std::vector<AcDbDxfGroupText>& groups) const {
    groups.clear();
    groups.reserve(groups_.size() - first_);
    for (size_t i = first_; i < groups_.size(); ++i) {
        const Group& g = groups_[i];
        AcDbDxfGroupText text{g.code, g.text, AcDbObjectId()};
        if (g.code < 1000 && rbKindOf(g.code) == RbKind::Name && resolve_)
            text.id = resolve_(g.toHandle());
        groups.push_back(std::move(text));
    }
    return true;
}

// --- writing -------------------------------------------------------------------------

Acad::ErrorStatus DxfOutFiler::writeGroupText(int code, const std::wstring& text) {
    w_.string(code, text);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeItem(const resbuf& item) {
    int code = item.restype;
    switch (rbKindOf(code)) {
        case RbKind::Point:
            w_.point(code, item.resval.rpoint[0], item.resval.rpoint[1], item.resval.rpoint[2]);
            break;
        case RbKind::Real:
            return writeDouble(static_cast<AcDb::DxfCode>(code), item.resval.rreal, kDfltPrec);
        case RbKind::Short:
            w_.integer(code, item.resval.rint);
            break;
        case RbKind::Long:
            w_.integer(code, item.resval.rlong);
            break;
        case RbKind::Int64:
            w_.integer(code, item.resval.mnInt64);
            break;
        case RbKind::Name: {
            AcDbObjectId id(item.resval.rlname[0]);
            return writeObjectId(static_cast<AcDb::DxfCode>(code), id);
        }
        case RbKind::Binary:
            return writeBChunk(static_cast<AcDb::DxfCode>(code), item.resval.rbinary);
        case RbKind::None:
            w_.integer(code, item.resval.rlong);
            break;
        case RbKind::String:
            w_.string(code, item.resval.rstring ? item.resval.rstring : L"");
            break;
    }
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) {
    w_.handle(code, id.isNull() ? 0 : id.handle().value());
    return status_;
}

Acad::ErrorStatus DxfOutFiler::integer(int code, std::int64_t value) {
    w_.integer(code, value);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeInt8(AcDb::DxfCode c, Adesk::Int8 v) {
    return integer(c, v);
}
Acad::ErrorStatus DxfOutFiler::writeInt64(AcDb::DxfCode c, Adesk::Int64 v) {
    return integer(c, v);
}
Acad::ErrorStatus DxfOutFiler::writeInt32(AcDb::DxfCode c, Adesk::Int32 v) {
    return integer(c, v);
}
Acad::ErrorStatus DxfOutFiler::writeInt16(AcDb::DxfCode c, Adesk::Int16 v) {
    return integer(c, v);
}
Acad::ErrorStatus DxfOutFiler::writeUInt32(AcDb::DxfCode c, Adesk::UInt32 v) {
    return integer(c, v);
}
Acad::ErrorStatus DxfOutFiler::writeUInt16(AcDb::DxfCode c, Adesk::UInt16 v) {
    return integer(c, v);
}
Acad::ErrorStatus DxfOutFiler::writeUInt8(AcDb::DxfCode c, Adesk::UInt8 v) {
    return integer(c, v);
}
Acad::ErrorStatus DxfOutFiler::writeBoolean(AcDb::DxfCode c, Adesk::Boolean v) {
    return integer(c, v ? 1 : 0);
}
Acad::ErrorStatus DxfOutFiler::writeBool(AcDb::DxfCode c, bool v) {
    return integer(c, v ? 1 : 0);
}

void DxfOutFiler::writeProxyGraphics() {
    static const char* kHex = "0123456789ABCDEF";
    w_.integer(92, static_cast<std::int64_t>(graphics_.size()));
    for (size_t at = 0; at < graphics_.size(); at += 127) {  // 127 bytes a group
        std::wstring hex;
        for (size_t i = at; i < std::min(graphics_.size(), at + 127); ++i) {
            hex += static_cast<wchar_t>(kHex[graphics_[i] >> 4]);
            hex += static_cast<wchar_t>(kHex[graphics_[i] & 15]);
        }
        w_.string(310, hex);
    }
    graphics_.clear();
}

Acad::ErrorStatus DxfOutFiler::writeString(AcDb::DxfCode code, const ACHAR* text) {
    if (code == AcDb::kDxfSubclass) {
        if (inEntityPart_ && !graphics_.empty()) writeProxyGraphics();
        inEntityPart_ = text && std::wstring_view(text) == L"AcDbEntity";
    }
    w_.string(code, text ? text : L"");
    if (paperSpace_ && code == AcDb::kDxfSubclass && text &&
        std::wstring_view(text) == L"AcDbEntity")
        w_.integer(67, 1);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeBChunk(AcDb::DxfCode code, const ads_binary& val) {
    static const char* kHex = "0123456789ABCDEF";
    std::wstring hex;
    for (short i = 0; i < val.clen; ++i) {
        auto b = static_cast<unsigned char>(val.buf[i]);
        hex += static_cast<wchar_t>(kHex[b >> 4]);
        hex += static_cast<wchar_t>(kHex[b & 15]);
    }
    w_.string(code, hex);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) {
    w_.handle(code, val.value());
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeDouble(AcDb::DxfCode code, double val, int) {
    w_.real(code, isAngle(code) ? val / kRadiansPerDegree : val);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writePoint2d(AcDb::DxfCode code, const AcGePoint2d& p, int) {
    w_.point2d(code, p.x, p.y);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writePoint3d(AcDb::DxfCode code, const AcGePoint3d& p, int) {
    w_.point(code, p.x, p.y, p.z);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeVector2d(AcDb::DxfCode code, const AcGeVector2d& v, int) {
    w_.point2d(code, v.x, v.y);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeVector3d(AcDb::DxfCode code, const AcGeVector3d& v, int) {
    w_.point(code, v.x, v.y, v.z);
    return status_;
}

Acad::ErrorStatus DxfOutFiler::writeScale3d(AcDb::DxfCode code, const AcGeScale3d& s, int) {
    // Scale factors are separate groups (41, 42, 43), not a point.
    w_.real(code, s.sx);
    w_.real(code + 1, s.sy);
    w_.real(code + 2, s.sz);
    return status_;
}

}  // namespace kelvo::host::dxf
