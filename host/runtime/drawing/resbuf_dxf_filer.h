// The DXF filer over resbuf chains that entget, entmake, entmod and the table functions
// use. Writing collects an object's groups into a chain (references as entity names,
// handles as hex text, extended data in a separate chain). Reading walks a caller's chain
// of groups: with subclass markers (an entget list given back) each class reads its own
// part; without them (a list written by hand for entmake) every class reads the whole
// list and takes the groups it knows.
#pragma once

#include <utility>
#include <vector>

#include "dbfiler.h"
#include "runtime/drawing/resbuf_chain.h"

namespace kelvo::drawing {

class ResbufDxfFiler : public AcDbDxfFiler {
public:
    // A filer that writes.
    explicit ResbufDxfFiler(AcDbDatabase* db);
    // A filer that reads `items` (not taken; -1, 0 and the -3 part are skipped).
    ResbufDxfFiler(AcDbDatabase* db, const resbuf* items, bool modifying);

    // What was written: the groups, and the extended data (1001 ...) if any. The caller
    // takes the chains.
    resbuf* takeItems() { return std::exchange(items_, nullptr); }
    resbuf* takeXData() { return std::exchange(xdata_, nullptr); }
    ~ResbufDxfFiler() override;
    ResbufDxfFiler(const ResbufDxfFiler&) = delete;
    ResbufDxfFiler& operator=(const ResbufDxfFiler&) = delete;

    int rewindFiler() override;
    Acad::ErrorStatus filerStatus() const override { return status_; }
    AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
    void setFilerStatus(Acad::ErrorStatus status) override { status_ = status; }
    void resetFilerStatus() override { status_ = Acad::eOk; }
    AcDbDatabase* database() const override { return db_; }

    Acad::ErrorStatus readItem(resbuf* pItem) override;
    Acad::ErrorStatus pushBackItem() override;
    bool atEOF() override { return pos_ >= input_.size(); }
    bool atSubclassData(const ACHAR* subClassName) override;
    bool atExtendedData() override { return false; }
    bool atEndOfObject() override { return atEOF(); }
    bool isModifyingExistingObject() const override { return modifying_; }

    Acad::ErrorStatus writeItem(const resbuf& pItem) override;
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
    Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double val, int prec = kDfltPrec) override;
    Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int prec = kDfltPrec) override;
    Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int prec = kDfltPrec) override;
    Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int prec = kDfltPrec) override;
    Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int prec = kDfltPrec) override;
    Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int prec = kDfltPrec) override;
    Acad::ErrorStatus writeXDataStart() override;
    bool includesDefaultValues() const override { return false; }

private:
    Acad::ErrorStatus add(resbuf* node);

    AcDbDatabase* db_;
    resbuf* items_ = nullptr;
    resbuf* xdata_ = nullptr;
    resbuf* itemsTail_ = nullptr;
    resbuf* xdataTail_ = nullptr;
    bool inXData_ = false;

    std::vector<const resbuf*> input_;
    std::size_t pos_ = 0;
    bool hasMarkers_ = false;
    bool modifying_ = false;
    Acad::ErrorStatus status_ = Acad::eOk;
};

}  // namespace kelvo::drawing
