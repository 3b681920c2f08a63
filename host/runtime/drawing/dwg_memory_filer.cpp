// The typed in-memory DWG filer.

#include "runtime/drawing/dwg_memory_filer.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "adslib.h"
#include "dbmain.h"
#include "runtime/drawing/drawing_internal.h"

namespace kelvo::drawing {

enum class DwgMemoryFiler::Tag : std::uint8_t {
    Int8 = 1, String, BChunk, Handle, Int64, Int32, Int16, UInt64, UInt32, UInt16, UInt8,
    Boolean, Bool, Double, Point2d, Point3d, Vector2d, Vector3d, Scale3d, Bytes,
    HardOwnership, SoftOwnership, HardPointer, SoftPointer,
};

DwgMemoryFiler::DwgMemoryFiler(AcDb::FilerType type, AcDbDatabase* db) : type_(type), db_(db) {}

void DwgMemoryFiler::setBytes(std::vector<std::uint8_t> bytes) {
    bytes_ = std::move(bytes);
    pos_ = 0;
    status_ = Acad::eOk;
}

void DwgMemoryFiler::appendRaw(const std::vector<std::uint8_t>& raw) {
    if (status_ == Acad::eOk) bytes_.insert(bytes_.end(), raw.begin(), raw.end());
}

void DwgMemoryFiler::rewind() {
    pos_ = 0;
    status_ = Acad::eOk;
}

Acad::ErrorStatus DwgMemoryFiler::seek(Adesk::Int64 offset, int method) {
    Adesk::Int64 base = method == 0 ? 0 : method == 1 ? static_cast<Adesk::Int64>(pos_)
                                                      : static_cast<Adesk::Int64>(bytes_.size());
    Adesk::Int64 target = base + offset;
    if (target < 0 || target > static_cast<Adesk::Int64>(bytes_.size())) return Acad::eInvalidInput;
    pos_ = static_cast<std::size_t>(target);
    return Acad::eOk;
}

Acad::ErrorStatus DwgMemoryFiler::put(Tag tag, const void* data, std::size_t n) {
    if (status_ != Acad::eOk) return status_;
    bytes_.push_back(static_cast<std::uint8_t>(tag));
    const auto* p = static_cast<const std::uint8_t*>(data);
    bytes_.insert(bytes_.end(), p, p + n);
    return Acad::eOk;
}

Acad::ErrorStatus DwgMemoryFiler::get(Tag tag, void* data, std::size_t n) {
    if (status_ != Acad::eOk) return status_;
    if (pos_ >= bytes_.size() || bytes_.size() - pos_ < n + 1) {
        status_ = Acad::eEndOfFile;
        return status_;
    }
    if (bytes_[pos_] != static_cast<std::uint8_t>(tag)) {
        status_ = Acad::eDwgObjectImproperlyRead;
        return status_;
    }
    std::memcpy(data, bytes_.data() + pos_ + 1, n);
    pos_ += n + 1;
    return Acad::eOk;
}

bool DwgMemoryFiler::carriesIds() const {
    return type_ != AcDb::kFileFiler;
}

Acad::ErrorStatus DwgMemoryFiler::writeId(Tag tag, const AcDbObjectId& id) {
    std::uint64_t handle = id.handle().value();
    if (!carriesIds()) return put(tag, &handle, sizeof handle);
    std::uint64_t both[2] = {handle, static_cast<std::uint64_t>(id.asOldId())};
    return put(tag, both, sizeof both);
}

Acad::ErrorStatus DwgMemoryFiler::readId(Tag tag, IdKind kind, AcDbObjectId& id) {
    std::uint64_t both[2] = {0, 0};
    Acad::ErrorStatus es = get(tag, both, carriesIds() ? sizeof both : sizeof both[0]);
    if (es != Acad::eOk) return es;
    id.setNull();
    if (both[0] == 0 && both[1] == 0) return Acad::eOk;
    AcDbObjectId source(static_cast<std::int64_t>(both[1]));
    if (translator_ && carriesIds()) {
        id = translator_(source, kind);
    } else if (db_ && both[0] != 0) {
        db_->getAcDbObjectId(id, true, AcDbHandle(both[0]));
    } else if (source.isValid()) {
        id = source;
    }
    return Acad::eOk;
}

#define KELVO_ID_IO(NAME, TYPE, TAG, KIND)                                     \
    Acad::ErrorStatus DwgMemoryFiler::read##NAME(TYPE* pVal) {                 \
        AcDbObjectId id;                                                       \
        Acad::ErrorStatus es = readId(Tag::TAG, IdKind::KIND, id);             \
        if (es == Acad::eOk) *pVal = id;                                       \
        return es;                                                             \
    }                                                                          \
    Acad::ErrorStatus DwgMemoryFiler::write##NAME(const TYPE& val) {           \
        return writeId(Tag::TAG, val);                                         \
    }
KELVO_ID_IO(HardOwnershipId, AcDbHardOwnershipId, HardOwnership, HardOwnership)
KELVO_ID_IO(SoftOwnershipId, AcDbSoftOwnershipId, SoftOwnership, SoftOwnership)
KELVO_ID_IO(HardPointerId, AcDbHardPointerId, HardPointer, HardPointer)
KELVO_ID_IO(SoftPointerId, AcDbSoftPointerId, SoftPointer, SoftPointer)
#undef KELVO_ID_IO

#define KELVO_VALUE_IO(NAME, TYPE, TAG)                                             \
    Acad::ErrorStatus DwgMemoryFiler::read##NAME(TYPE* pVal) {                      \
        return get(Tag::TAG, pVal, sizeof(TYPE));                                   \
    }                                                                               \
    Acad::ErrorStatus DwgMemoryFiler::write##NAME(TYPE val) { return put(Tag::TAG, &val, sizeof val); }
KELVO_VALUE_IO(Int8, Adesk::Int8, Int8)
KELVO_VALUE_IO(Int64, Adesk::Int64, Int64)
KELVO_VALUE_IO(Int32, Adesk::Int32, Int32)
KELVO_VALUE_IO(Int16, Adesk::Int16, Int16)
KELVO_VALUE_IO(UInt64, Adesk::UInt64, UInt64)
KELVO_VALUE_IO(UInt32, Adesk::UInt32, UInt32)
KELVO_VALUE_IO(UInt16, Adesk::UInt16, UInt16)
KELVO_VALUE_IO(UInt8, Adesk::UInt8, UInt8)
KELVO_VALUE_IO(Boolean, Adesk::Boolean, Boolean)
KELVO_VALUE_IO(Double, double, Double)
#undef KELVO_VALUE_IO

// A bool is written as one byte, 0 or 1; any other byte is damage (and no bool).
Acad::ErrorStatus DwgMemoryFiler::readBool(bool* pVal) {
    std::uint8_t byte = 0;
    Acad::ErrorStatus es = get(Tag::Bool, &byte, sizeof byte);
    if (es != Acad::eOk) return es;
    if (byte > 1) return status_ = Acad::eDwgObjectImproperlyRead;
    *pVal = byte == 1;
    return Acad::eOk;
}
Acad::ErrorStatus DwgMemoryFiler::writeBool(bool val) {
    const std::uint8_t byte = val ? 1 : 0;
    return put(Tag::Bool, &byte, sizeof byte);
}

#define KELVO_GEOMETRY_IO(NAME, TYPE, TAG, N)                                          \
    Acad::ErrorStatus DwgMemoryFiler::read##NAME(TYPE* pVal) {                         \
        double v[N];                                                                   \
        Acad::ErrorStatus es = get(Tag::TAG, v, sizeof v);                             \
        if (es == Acad::eOk)                                                           \
            for (int i = 0; i < N; ++i) (*pVal)[i] = v[i];                             \
        return es;                                                                     \
    }                                                                                  \
    Acad::ErrorStatus DwgMemoryFiler::write##NAME(const TYPE& val) {                   \
        double v[N];                                                                   \
        for (int i = 0; i < N; ++i) v[i] = val[i];                                     \
        return put(Tag::TAG, v, sizeof v);                                             \
    }
KELVO_GEOMETRY_IO(Point2d, AcGePoint2d, Point2d, 2)
KELVO_GEOMETRY_IO(Point3d, AcGePoint3d, Point3d, 3)
KELVO_GEOMETRY_IO(Vector2d, AcGeVector2d, Vector2d, 2)
KELVO_GEOMETRY_IO(Vector3d, AcGeVector3d, Vector3d, 3)
KELVO_GEOMETRY_IO(Scale3d, AcGeScale3d, Scale3d, 3)
#undef KELVO_GEOMETRY_IO

Acad::ErrorStatus DwgMemoryFiler::readAcDbHandle(AcDbHandle* pVal) {
    std::uint64_t v = 0;
    Acad::ErrorStatus es = get(Tag::Handle, &v, sizeof v);
    if (es == Acad::eOk) *pVal = AcDbHandle(v);
    return es;
}

Acad::ErrorStatus DwgMemoryFiler::writeAcDbHandle(const AcDbHandle& val) {
    std::uint64_t v = val.value();
    return put(Tag::Handle, &v, sizeof v);
}

// A string: its length in characters (uint32), then the characters as 32-bit units.
Acad::ErrorStatus DwgMemoryFiler::writeString(const ACHAR* pVal) {
    const ACHAR* s = pVal ? pVal : L"";
    std::uint32_t n = static_cast<std::uint32_t>(std::wcslen(s));
    std::vector<std::uint8_t> data(sizeof n + n * sizeof(std::uint32_t));
    std::memcpy(data.data(), &n, sizeof n);
    for (std::uint32_t i = 0; i < n; ++i) {
        std::uint32_t c = static_cast<std::uint32_t>(s[i]);
        std::memcpy(data.data() + sizeof n + i * sizeof c, &c, sizeof c);
    }
    return put(Tag::String, data.data(), data.size());
}

Acad::ErrorStatus DwgMemoryFiler::readString(ACHAR** pVal) {
    *pVal = nullptr;
    if (status_ != Acad::eOk) return status_;
    std::uint32_t n = 0;
    std::size_t start = pos_;
    if (get(Tag::String, &n, sizeof n) != Acad::eOk) return status_;
    if (bytes_.size() - pos_ < static_cast<std::size_t>(n) * 4) {
        pos_ = start;
        status_ = Acad::eEndOfFile;
        return status_;
    }
    auto* s = static_cast<ACHAR*>(std::malloc((n + 1) * sizeof(ACHAR)));
    for (std::uint32_t i = 0; i < n; ++i) {
        std::uint32_t c = 0;
        std::memcpy(&c, bytes_.data() + pos_ + i * 4, 4);
        s[i] = static_cast<ACHAR>(c);
    }
    s[n] = 0;
    pos_ += static_cast<std::size_t>(n) * 4;
    *pVal = s;
    return Acad::eOk;
}

Acad::ErrorStatus DwgMemoryFiler::writeBChunk(const ads_binary& val) {
    std::uint32_t n = val.clen > 0 ? static_cast<std::uint32_t>(val.clen) : 0;
    std::vector<std::uint8_t> data(sizeof n + n);
    std::memcpy(data.data(), &n, sizeof n);
    if (n) std::memcpy(data.data() + sizeof n, val.buf, n);
    return put(Tag::BChunk, data.data(), data.size());
}

Acad::ErrorStatus DwgMemoryFiler::readBChunk(ads_binary* pVal) {
    pVal->clen = 0;
    pVal->buf = nullptr;
    std::uint32_t n = 0;
    if (get(Tag::BChunk, &n, sizeof n) != Acad::eOk) return status_;
    if (bytes_.size() - pos_ < n || n > 0x7fff) {
        status_ = Acad::eEndOfFile;
        return status_;
    }
    pVal->buf = static_cast<char*>(std::malloc(n ? n : 1));
    if (n) std::memcpy(pVal->buf, bytes_.data() + pos_, n);
    pVal->clen = static_cast<short>(n);
    pos_ += n;
    return Acad::eOk;
}

Acad::ErrorStatus DwgMemoryFiler::writeBytes(const void* pSrc, Adesk::UIntPtr nBytes) {
    std::uint64_t n = nBytes;
    std::vector<std::uint8_t> data(sizeof n + nBytes);
    std::memcpy(data.data(), &n, sizeof n);
    if (nBytes) std::memcpy(data.data() + sizeof n, pSrc, nBytes);
    return put(Tag::Bytes, data.data(), data.size());
}

Acad::ErrorStatus DwgMemoryFiler::readBytes(void* pDest, Adesk::UIntPtr nBytes) {
    std::uint64_t n = 0;
    std::size_t start = pos_;
    if (get(Tag::Bytes, &n, sizeof n) != Acad::eOk) return status_;
    if (n != nBytes || bytes_.size() - pos_ < n) {
        pos_ = start;
        status_ = n != nBytes ? Acad::eDwgObjectImproperlyRead : Acad::eEndOfFile;
        return status_;
    }
    if (n) std::memcpy(pDest, bytes_.data() + pos_, n);
    pos_ += n;
    return Acad::eOk;
}

}  // namespace kelvo::drawing
