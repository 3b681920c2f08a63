// AcDbDxfFiler over DXF files: a reading filer over one record's groups, and a writing
// filer over a Writer. Points travel as groups code, code+10, code+20; object ids as
// hexadecimal handles, turned back into ids on reading through a map the drawing reader
// fills (file handle -> id).
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "dbfiler.h"
#include "runtime/dxf/dxf_group.h"
#include "runtime/dxf/dxf_writer.h"

namespace kelvo::host::dxf {

// Angles (groups 50 to 58) are degrees in files and radians in objects and resbufs.
bool isAngle(int code);
constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;

// The id of an object by its handle in the file being read (null when unknown).
using HandleResolver = std::function<AcDbObjectId(std::uint64_t handle)>;

class DxfInFiler : public AcDbDxfFiler {
public:
    // Reads groups[first..]; the groups must outlive the filer.
    DxfInFiler(AcDbDatabase* db, const std::vector<Group>& groups, size_t first,
               HandleResolver resolve);

    int rewindFiler() override;
    Acad::ErrorStatus filerStatus() const override { return status_; }
    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    void setFilerStatus(Acad::ErrorStatus status) override { status_ = status; }
    void resetFilerStatus() override { status_ = Acad::eOk; }
    AcDbDatabase* database() const override { return db_; }
    Acad::ErrorStatus readItem(resbuf* pItem) override;
    Acad::ErrorStatus pushBackItem() override;
    bool atEOF() override { return pos_ >= groups_.size(); }
    bool atSubclassData(const ACHAR* subClassName) override;
    bool atExtendedData() override;
    bool atEndOfObject() override { return atEOF(); }

    Acad::ErrorStatus writeItem(const resbuf&) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeObjectId(AcDb::DxfCode, const AcDbObjectId&) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeInt8(AcDb::DxfCode, Adesk::Int8) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeString(AcDb::DxfCode, const ACHAR*) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeBChunk(AcDb::DxfCode, const ads_binary&) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode, const AcDbHandle&) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeInt64(AcDb::DxfCode, Adesk::Int64) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeInt32(AcDb::DxfCode, Adesk::Int32) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeInt16(AcDb::DxfCode, Adesk::Int16) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeUInt32(AcDb::DxfCode, Adesk::UInt32) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeUInt16(AcDb::DxfCode, Adesk::UInt16) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeUInt8(AcDb::DxfCode, Adesk::UInt8) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeBoolean(AcDb::DxfCode, Adesk::Boolean) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeBool(AcDb::DxfCode, bool) override { return Acad::eIsReading; }
    Acad::ErrorStatus writeDouble(AcDb::DxfCode, double, int) override { return Acad::eIsReading; }
    Acad::ErrorStatus writePoint2d(AcDb::DxfCode, const AcGePoint2d&, int) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writePoint3d(AcDb::DxfCode, const AcGePoint3d&, int) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeVector2d(AcDb::DxfCode, const AcGeVector2d&, int) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeVector3d(AcDb::DxfCode, const AcGeVector3d&, int) override {
        return Acad::eIsReading;
    }
    Acad::ErrorStatus writeScale3d(AcDb::DxfCode, const AcGeScale3d&, int) override {
        return Acad::eIsReading;
    }
    bool includesDefaultValues() const override { return true; }
    bool objectGroupTexts(std::vector<AcDbDxfGroupText>& groups) const override;

    // Whether groups from 1000 on are extended data, which readItem gives only after
    // atExtendedData (yes, except for records whose data may use any code: XRECORD).
    void setStopsAtExtendedData(bool stops) { stopsAtExtendedData_ = stops; }

    // Where reading stands (the index of the next group).
    size_t position() const { return pos_; }

private:
    AcDbDatabase* db_;
    const std::vector<Group>& groups_;
    size_t first_, pos_, last_;  // last_: where the last item read started
    HandleResolver resolve_;
    Acad::ErrorStatus status_ = Acad::eOk;
    bool inExtendedData_ = false;
    bool stopsAtExtendedData_ = true;
};

class DxfOutFiler : public AcDbDxfFiler {
public:
    DxfOutFiler(AcDbDatabase* db, Writer& writer) : db_(db), w_(writer) {}

    int rewindFiler() override { return 0; }
    Acad::ErrorStatus filerStatus() const override { return status_; }
    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    void setFilerStatus(Acad::ErrorStatus status) override { status_ = status; }
    void resetFilerStatus() override { status_ = Acad::eOk; }
    AcDbDatabase* database() const override { return db_; }
    Acad::ErrorStatus readItem(resbuf*) override { return Acad::eIsWriting; }
    Acad::ErrorStatus pushBackItem() override { return Acad::eIsWriting; }
    bool atEOF() override { return false; }
    bool atSubclassData(const ACHAR*) override { return false; }
    bool atExtendedData() override { return false; }
    bool atEndOfObject() override { return false; }

    Acad::ErrorStatus writeItem(const resbuf& item) override;
    Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) override;
    Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 val) override;
    Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* pVal) override;
    Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& val) override;
    Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) override;
    Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 val) override;
    Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 val) override;
    Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 val) override;
    Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 val) override;
    Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 val) override;
    Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 val) override;
    Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean val) override;
    Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool val) override;
    Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double val, int prec) override;
    Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int prec) override;
    Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int prec) override;
    Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int prec) override;
    Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int prec) override;
    Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int prec) override;
    bool includesDefaultValues() const override { return true; }
    Acad::ErrorStatus writeGroupText(int code, const std::wstring& text) override;

    // Entities written while this is set are marked as paper space's (group 67).
    void setPaperSpace(bool paper) { paperSpace_ = paper; }
    // The proxy graphics of the next entity written: its size (92) and its data (310)
    // go at the end of its common entity part, before its next subclass marker.
    void setProxyGraphics(std::vector<std::uint8_t> graphics) { graphics_ = std::move(graphics); }

private:
    void writeProxyGraphics();

    Acad::ErrorStatus integer(int code, std::int64_t value);

    AcDbDatabase* db_;
    Writer& w_;
    Acad::ErrorStatus status_ = Acad::eOk;
    bool paperSpace_ = false;
    bool inEntityPart_ = false;
    std::vector<std::uint8_t> graphics_;
};

}  // namespace kelvo::host::dxf
