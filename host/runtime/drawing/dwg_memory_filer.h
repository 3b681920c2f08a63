// The host's DWG filer: a typed binary stream in memory. Each value is written with a
// tag of its type, so a read of the wrong type fails (eDwgObjectImproperlyRead) instead of
// misreading; reading past the end fails with eEndOfFile. After the first failure every
// further call answers that status and changes nothing.
//
// References are written as handles. A file filer writes only the handle and resolves it
// on reading in its database (creating the id of a handle not read yet). Copy, clone and
// undo filers also carry the id itself, so that a reader can translate references of
// another database (setIdTranslator) during cloning.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "dbfiler.h"

namespace kelvo::drawing {

enum class IdKind { HardOwnership, SoftOwnership, HardPointer, SoftPointer };

class DwgMemoryFiler : public AcDbDwgFiler {
public:
    explicit DwgMemoryFiler(AcDb::FilerType type = AcDb::kCopyFiler, AcDbDatabase* db = nullptr);

    // Called for every reference read (when set): the id as written (of the source
    // database) and its kind; answers the id to store.
    using IdTranslator = std::function<AcDbObjectId(AcDbObjectId source, IdKind kind)>;
    void setIdTranslator(IdTranslator translator) { translator_ = std::move(translator); }
    void setDatabase(AcDbDatabase* db) { db_ = db; }

    const std::vector<std::uint8_t>& bytes() const { return bytes_; }
    void setBytes(std::vector<std::uint8_t> bytes);
    // Appends bytes of another stream as they are (a proxy writing back what it read).
    void appendRaw(const std::vector<std::uint8_t>& raw);
    // Back to the start for reading what was written.
    void rewind();
    bool atEnd() const { return pos_ >= bytes_.size(); }

    Acad::ErrorStatus filerStatus() const override { return status_; }
    AcDb::FilerType filerType() const override { return type_; }
    void setFilerStatus(Acad::ErrorStatus status) override { status_ = status; }
    void resetFilerStatus() override { status_ = Acad::eOk; }
    AcDbDatabase* database() const override { return db_; }
    Acad::ErrorStatus seek(Adesk::Int64 offset, int method) override;
    Adesk::Int64 tell() const override { return static_cast<Adesk::Int64>(pos_); }

    Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* pVal) override;
    Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& val) override;
    Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* pVal) override;
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& val) override;
    Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* pVal) override;
    Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& val) override;
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* pVal) override;
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& val) override;
    Acad::ErrorStatus readInt8(Adesk::Int8* pVal) override;
    Acad::ErrorStatus writeInt8(Adesk::Int8 val) override;
    Acad::ErrorStatus readString(ACHAR** pVal) override;
    Acad::ErrorStatus writeString(const ACHAR* pVal) override;
    Acad::ErrorStatus readBChunk(ads_binary* pVal) override;
    Acad::ErrorStatus writeBChunk(const ads_binary& val) override;
    Acad::ErrorStatus readAcDbHandle(AcDbHandle* pVal) override;
    Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& val) override;
    Acad::ErrorStatus readInt64(Adesk::Int64* pVal) override;
    Acad::ErrorStatus writeInt64(Adesk::Int64 val) override;
    Acad::ErrorStatus readInt32(Adesk::Int32* pVal) override;
    Acad::ErrorStatus writeInt32(Adesk::Int32 val) override;
    Acad::ErrorStatus readInt16(Adesk::Int16* pVal) override;
    Acad::ErrorStatus writeInt16(Adesk::Int16 val) override;
    Acad::ErrorStatus readUInt64(Adesk::UInt64* pVal) override;
    Acad::ErrorStatus writeUInt64(Adesk::UInt64 val) override;
    Acad::ErrorStatus readUInt32(Adesk::UInt32* pVal) override;
    Acad::ErrorStatus writeUInt32(Adesk::UInt32 val) override;
    Acad::ErrorStatus readUInt16(Adesk::UInt16* pVal) override;
    Acad::ErrorStatus writeUInt16(Adesk::UInt16 val) override;
    Acad::ErrorStatus readUInt8(Adesk::UInt8* pVal) override;
    Acad::ErrorStatus writeUInt8(Adesk::UInt8 val) override;
    Acad::ErrorStatus readBoolean(Adesk::Boolean* pVal) override;
    Acad::ErrorStatus writeBoolean(Adesk::Boolean val) override;
    Acad::ErrorStatus readBool(bool* pVal) override;
    Acad::ErrorStatus writeBool(bool val) override;
    Acad::ErrorStatus readDouble(double* pVal) override;
    Acad::ErrorStatus writeDouble(double val) override;
    Acad::ErrorStatus readPoint2d(AcGePoint2d* pVal) override;
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& val) override;
    Acad::ErrorStatus readPoint3d(AcGePoint3d* pVal) override;
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& val) override;
    Acad::ErrorStatus readVector2d(AcGeVector2d* pVal) override;
    Acad::ErrorStatus writeVector2d(const AcGeVector2d& val) override;
    Acad::ErrorStatus readVector3d(AcGeVector3d* pVal) override;
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& val) override;
    Acad::ErrorStatus readScale3d(AcGeScale3d* pVal) override;
    Acad::ErrorStatus writeScale3d(const AcGeScale3d& val) override;
    Acad::ErrorStatus readBytes(void* pDest, Adesk::UIntPtr nBytes) override;
    Acad::ErrorStatus writeBytes(const void* pSrc, Adesk::UIntPtr nBytes) override;

private:
    enum class Tag : std::uint8_t;
    Acad::ErrorStatus put(Tag tag, const void* data, std::size_t n);
    Acad::ErrorStatus get(Tag tag, void* data, std::size_t n);
    Acad::ErrorStatus writeId(Tag tag, const AcDbObjectId& id);
    Acad::ErrorStatus readId(Tag tag, IdKind kind, AcDbObjectId& id);
    bool carriesIds() const;

    AcDb::FilerType type_;
    AcDbDatabase* db_;
    std::vector<std::uint8_t> bytes_;
    std::size_t pos_ = 0;
    Acad::ErrorStatus status_ = Acad::eOk;
    IdTranslator translator_;
};

}  // namespace kelvo::drawing
