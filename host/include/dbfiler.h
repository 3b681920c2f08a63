// Filers: what objects write their fields to and read them from.
//
// AcDbDwgFiler is a typed binary stream: values are read back in the order and with the
// types they were written. References to other objects are written as ids and travel as
// handles; a cloning filer translates them. Once a read or write fails the filer keeps
// the failure as its status (filerStatus) until resetFilerStatus.
//
// AcDbDxfFiler is a stream of DXF group-code items. Objects write their subclass marker
// (group 100) followed by their groups; on reading, atSubclassData(name) steps over the
// marker of the named class, readItem gives the next item, pushBackItem returns the last
// one to the stream. Reference groups (330..369, 390..399) are written with
// writeObjectId; a file filer writes the handle, and on reading every filer gives a
// reference item with the id in resval.rlname[0] (AcDbObjectId::asOldId), a file filer
// resolving the handle with AcDbDatabase::getAcDbObjectId(id, true, handle). Groups 5 and
// 105 (own handle) and 1005 (handle in extended data) stay hex text. Angles (groups
// 50..58) are radians in objects and in resbufs; a file filer writes and reads them in
// degrees, as drawing files hold them.
#pragma once

#include <string>
#include <vector>

#include "acdb.h"
#include "adesk.h"
#include "adsdef.h"
#include "dbhandle.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "rxobject.h"

class AcDbDatabase;
class AcDbAuditInfo;

class KELVO_HOST_API AcDbDwgFiler : public AcRxObject {
public:
    ~AcDbDwgFiler() override;

    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual AcDb::FilerType filerType() const = 0;
    virtual void setFilerStatus(Acad::ErrorStatus status) = 0;
    virtual void resetFilerStatus() = 0;
    // The drawing version being filed (the current version for copies).
    virtual Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& ver,
                                         AcDb::MaintenanceReleaseVersion& maintVer) const;
    // The database the objects come from (writing) or go to (reading); may be null.
    virtual AcDbDatabase* database() const;

    virtual Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* pVal) = 0;
    virtual Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& val) = 0;
    virtual Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* pVal) = 0;
    virtual Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& val) = 0;
    virtual Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* pVal) = 0;
    virtual Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& val) = 0;
    virtual Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* pVal) = 0;
    virtual Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& val) = 0;

    virtual Acad::ErrorStatus readInt8(Adesk::Int8* pVal) = 0;
    virtual Acad::ErrorStatus writeInt8(Adesk::Int8 val) = 0;
    // A string read is a new allocation the caller frees with acutDelString.
    virtual Acad::ErrorStatus readString(ACHAR** pVal) = 0;
    virtual Acad::ErrorStatus writeString(const ACHAR* pVal) = 0;
    // Binary chunk: the buffer read is a new allocation (std::malloc; free with std::free).
    virtual Acad::ErrorStatus readBChunk(ads_binary* pVal) = 0;
    virtual Acad::ErrorStatus writeBChunk(const ads_binary& val) = 0;
    virtual Acad::ErrorStatus readAcDbHandle(AcDbHandle* pVal) = 0;
    virtual Acad::ErrorStatus writeAcDbHandle(const AcDbHandle& val) = 0;
    virtual Acad::ErrorStatus readInt64(Adesk::Int64* pVal) = 0;
    virtual Acad::ErrorStatus writeInt64(Adesk::Int64 val) = 0;
    virtual Acad::ErrorStatus readInt32(Adesk::Int32* pVal) = 0;
    virtual Acad::ErrorStatus writeInt32(Adesk::Int32 val) = 0;
    virtual Acad::ErrorStatus readInt16(Adesk::Int16* pVal) = 0;
    virtual Acad::ErrorStatus writeInt16(Adesk::Int16 val) = 0;
    virtual Acad::ErrorStatus readUInt64(Adesk::UInt64* pVal) = 0;
    virtual Acad::ErrorStatus writeUInt64(Adesk::UInt64 val) = 0;
    virtual Acad::ErrorStatus readUInt32(Adesk::UInt32* pVal) = 0;
    virtual Acad::ErrorStatus writeUInt32(Adesk::UInt32 val) = 0;
    virtual Acad::ErrorStatus readUInt16(Adesk::UInt16* pVal) = 0;
    virtual Acad::ErrorStatus writeUInt16(Adesk::UInt16 val) = 0;
    virtual Acad::ErrorStatus readUInt8(Adesk::UInt8* pVal) = 0;
    virtual Acad::ErrorStatus writeUInt8(Adesk::UInt8 val) = 0;
    virtual Acad::ErrorStatus readBoolean(Adesk::Boolean* pVal) = 0;
    virtual Acad::ErrorStatus writeBoolean(Adesk::Boolean val) = 0;
    virtual Acad::ErrorStatus readBool(bool* pVal) = 0;
    virtual Acad::ErrorStatus writeBool(bool val) = 0;
    virtual Acad::ErrorStatus readDouble(double* pVal) = 0;
    virtual Acad::ErrorStatus writeDouble(double val) = 0;
    virtual Acad::ErrorStatus readPoint2d(AcGePoint2d* pVal) = 0;
    virtual Acad::ErrorStatus writePoint2d(const AcGePoint2d& val) = 0;
    virtual Acad::ErrorStatus readPoint3d(AcGePoint3d* pVal) = 0;
    virtual Acad::ErrorStatus writePoint3d(const AcGePoint3d& val) = 0;
    virtual Acad::ErrorStatus readVector2d(AcGeVector2d* pVal) = 0;
    virtual Acad::ErrorStatus writeVector2d(const AcGeVector2d& val) = 0;
    virtual Acad::ErrorStatus readVector3d(AcGeVector3d* pVal) = 0;
    virtual Acad::ErrorStatus writeVector3d(const AcGeVector3d& val) = 0;
    virtual Acad::ErrorStatus readScale3d(AcGeScale3d* pVal) = 0;
    virtual Acad::ErrorStatus writeScale3d(const AcGeScale3d& val) = 0;
    virtual Acad::ErrorStatus readBytes(void* pDest, Adesk::UIntPtr nBytes) = 0;
    virtual Acad::ErrorStatus writeBytes(const void* pSrc, Adesk::UIntPtr nBytes) = 0;

    // Stream position, for filers that can seek (eNotApplicable otherwise).
    virtual Acad::ErrorStatus seek(Adesk::Int64 nOffset, int nMethod);
    virtual Adesk::Int64 tell() const;
    // Whether the filer wants references collected (cloning and wblock filers).
    virtual bool usesReferences() const;
    virtual Acad::ErrorStatus addReferences(AcDbObjectIdArray& ids);
};

// One group of a file as it was read: its code, the text of its value, and for reference
// groups the object the handle names (null when the file has no such object).
struct AcDbDxfGroupText {
    int code = 0;
    std::wstring text;
    AcDbObjectId id;
};

// DXF group-code filer.
class KELVO_HOST_API AcDbDxfFiler : public AcRxObject {
public:
    ~AcDbDxfFiler() override;
    enum { kDfltPrec = -1, kMaxPrec = 16 };

    virtual int rewindFiler() = 0;
    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual AcDb::FilerType filerType() const = 0;
    virtual void setFilerStatus(Acad::ErrorStatus status) = 0;
    virtual void resetFilerStatus() = 0;
    virtual Acad::ErrorStatus dwgVersion(AcDb::AcDbDwgVersion& ver,
                                         AcDb::MaintenanceReleaseVersion& maintVer) const;
    virtual AcDbDatabase* database() const = 0;
    virtual int precision() const;
    virtual void setPrecision(int prec);

    // Reading. readItem fills the caller's resbuf (a string value is a new allocation the
    // caller frees with acutDelString); eEndOfObject at the end of the object's items.
    virtual Acad::ErrorStatus readItem(resbuf* pItem) = 0;
    virtual Acad::ErrorStatus readResBuf(resbuf* pItem);
    // Puts the last item read back in front of the stream.
    virtual Acad::ErrorStatus pushBackItem() = 0;
    virtual bool atEOF() = 0;
    // Steps over the subclass marker of the named class when it is next; false when the
    // next item is not that marker (the stream is left as it was).
    virtual bool atSubclassData(const ACHAR* subClassName) = 0;
    virtual bool atExtendedData() = 0;
    virtual bool atEndOfObject() = 0;
    virtual void haltAtClassBoundaries(bool halt);
    // Whether the object being read already has its values (entmod) rather than being new.
    virtual bool isModifyingExistingObject() const;

    // Writing.
    virtual Acad::ErrorStatus writeItem(const resbuf& pItem) = 0;
    virtual Acad::ErrorStatus writeResBuf(const resbuf& pItem);
    virtual Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) = 0;
    virtual Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 val) = 0;
    virtual Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* pVal) = 0;
    virtual Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& val) = 0;
    virtual Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) = 0;
    virtual Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 val) = 0;
    virtual Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 val) = 0;
    virtual Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 val) = 0;
    virtual Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 val) = 0;
    virtual Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 val) = 0;
    virtual Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 val) = 0;
    virtual Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean val) = 0;
    virtual Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool val) = 0;
    virtual Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double val, int prec = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val,
                                           int prec = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val,
                                           int prec = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val,
                                            int prec = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val,
                                            int prec = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val,
                                           int prec = kDfltPrec) = 0;
    virtual Acad::ErrorStatus writeAngle(AcDb::DxfCode code, double angle, int prec = kDfltPrec);
    virtual Acad::ErrorStatus writeXDataStart();
    // Whether values equal to their defaults are written too (entget: no, files: yes).
    virtual bool includesDefaultValues() const = 0;

    // Objects kept as they were read (proxies) go through these, so that what they hold
    // is written back group for group. Reading a file: every group of the object being
    // read, after its group 0, as the file has it (false from filers without file text).
    virtual bool objectGroupTexts(std::vector<AcDbDxfGroupText>& groups) const;
    // Writing a file: a group by the text of its value (eNotImplemented from filers that
    // do not write file text; the caller then writes its items).
    virtual Acad::ErrorStatus writeGroupText(int code, const std::wstring& text);

    // Helpers every reader uses: read the next item expecting `code`; eBadDxfSequence
    // (item pushed back) when another code comes.
    Acad::ErrorStatus readPoint3dItem(int code, AcGePoint3d& value);
    Acad::ErrorStatus readDoubleItem(int code, double& value);
    Acad::ErrorStatus readStringItem(int code, std::wstring& value);

private:
    int precision_ = kDfltPrec;
};

// The audit pass's record of errors found and fixed.
class KELVO_HOST_API AcDbAuditInfo {
public:
    bool fixErrors() const { return fix_; }
    void setFixErrors(bool fix) { fix_ = fix; }
    int numErrors() const { return errors_; }
    void errorsFound(int count) { errors_ += count; }

private:
    bool fix_ = false;
    int errors_ = 0;
};
