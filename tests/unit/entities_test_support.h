// Helpers for the drawing-side tests: a drawing with layers and tag blocks, and a DXF
// filer that keeps its items in memory so that DXF filing is read back as written.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbmain.h"
#include "dbsymtb.h"

namespace kelvo::test {

inline AcDbObjectId addLayer(AcDbDatabase& db, const wchar_t* name) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(db.getSymbolTable(table, AcDb::kForWrite), Acad::eOk);
    auto* record = new AcDbLayerTableRecord();
    record->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, record), Acad::eOk);
    record->close();
    table->close();
    return id;
}

// A unit tag: a circle of radius 0.5 about the origin and a line across it.
inline AcDbObjectId addTagBlock(AcDbDatabase& db, const wchar_t* name) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db.getSymbolTable(table, AcDb::kForWrite), Acad::eOk);
    auto* block = new AcDbBlockTableRecord();
    block->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, block), Acad::eOk);
    table->close();
    auto* circle = new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 0.5);
    auto* line = new AcDbLine(AcGePoint3d(-0.5, 0, 0), AcGePoint3d(0.5, 0, 0));
    for (AcDbEntity* entity : {static_cast<AcDbEntity*>(circle), static_cast<AcDbEntity*>(line)}) {
        EXPECT_EQ(block->appendAcDbEntity(entity), Acad::eOk);
        entity->close();
    }
    block->close();
    return id;
}

// Appends to model space and closes; answers the id.
inline AcDbObjectId addToModelSpace(AcDbDatabase& db, AcDbEntity* entity) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db.getSymbolTable(table, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
    table->close();
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    space->close();
    return id;
}

// One DXF item as written.
struct DxfRecord {
    DxfRecord(int c, std::wstring t = L"") : code(c), text(std::move(t)) {}
    static DxfRecord pointItem(int c, const AcGePoint3d& p) {
        DxfRecord r(c);
        r.point = p;
        return r;
    }
    static DxfRecord integerItem(int c, std::int64_t v) {
        DxfRecord r(c);
        r.integer = v;
        return r;
    }
    int code;
    std::wstring text;
    double real = 0;
    AcGePoint3d point;
    std::int64_t integer = 0;
};

// A DXF filer over a list of items: what is written is appended; reading walks the list
// (readItem answers eEndOfObject past the end, leaving the status alone).
class ListDxfFiler : public AcDbDxfFiler {
public:
    explicit ListDxfFiler(AcDbDatabase* db = nullptr) : db_(db) {}
    std::vector<DxfRecord> items;

    // Reading from the first item again.
    void startReading() { next_ = 0; }
    // The first item of that code, or null.
    const DxfRecord* find(int code) const {
        for (const DxfRecord& item : items)
            if (item.code == code) return &item;
        return nullptr;
    }

    int rewindFiler() override { next_ = 0; return 0; }
    Acad::ErrorStatus filerStatus() const override { return status_; }
    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    void setFilerStatus(Acad::ErrorStatus status) override { status_ = status; }
    void resetFilerStatus() override { status_ = Acad::eOk; }
    AcDbDatabase* database() const override { return db_; }

    Acad::ErrorStatus readItem(resbuf* item) override {
        if (next_ >= items.size()) return Acad::eEndOfObject;
        const DxfRecord& r = items[next_++];
        item->rbnext = nullptr;
        item->restype = static_cast<short>(r.code);
        switch (rbKindOf(r.code)) {
            case RbKind::String: acutNewString(r.text.c_str(), item->resval.rstring); break;
            case RbKind::Real: item->resval.rreal = r.real; break;
            case RbKind::Point:
                item->resval.rpoint[0] = r.point.x;
                item->resval.rpoint[1] = r.point.y;
                item->resval.rpoint[2] = r.point.z;
                break;
            case RbKind::Short: item->resval.rint = static_cast<short>(r.integer); break;
            case RbKind::Name:
                item->resval.rlname[0] = r.integer;
                item->resval.rlname[1] = 0;
                break;
            default: item->resval.rlong = static_cast<std::int32_t>(r.integer); break;
        }
        return Acad::eOk;
    }
    Acad::ErrorStatus pushBackItem() override {
        if (next_ > 0) --next_;
        return Acad::eOk;
    }
    bool atEOF() override { return next_ >= items.size(); }
    bool atSubclassData(const ACHAR* name) override {
        if (next_ < items.size() && items[next_].code == 100 && items[next_].text == name) {
            ++next_;
            return true;
        }
        return false;
    }
    bool atExtendedData() override { return next_ < items.size() && items[next_].code >= 1000; }
    bool atEndOfObject() override { return next_ >= items.size(); }

    Acad::ErrorStatus writeItem(const resbuf& item) override {
        switch (rbKindOf(item.restype)) {
            case RbKind::String: return writeString(code(item.restype), item.resval.rstring);
            case RbKind::Real: return writeDouble(code(item.restype), item.resval.rreal, kDfltPrec);
            case RbKind::Point:
                return writePoint3d(code(item.restype),
                                    AcGePoint3d(item.resval.rpoint[0], item.resval.rpoint[1],
                                                item.resval.rpoint[2]),
                                    kDfltPrec);
            case RbKind::Short: return writeInt16(code(item.restype), item.resval.rint);
            default: return writeInt32(code(item.restype), item.resval.rlong);
        }
    }
    Acad::ErrorStatus writeObjectId(AcDb::DxfCode c, const AcDbObjectId& id) override {
        return addInteger(c, id.asOldId());
    }
    Acad::ErrorStatus writeInt8(AcDb::DxfCode c, Adesk::Int8 v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeString(AcDb::DxfCode c, const ACHAR* v) override {
        items.emplace_back(c, v ? v : L"");
        return status_;
    }
    Acad::ErrorStatus writeBChunk(AcDb::DxfCode c, const ads_binary&) override { return addInteger(c, 0); }
    Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode c, const AcDbHandle&) override {
        return writeString(c, L"0");
    }
    Acad::ErrorStatus writeInt64(AcDb::DxfCode c, Adesk::Int64 v) override {
        return addInteger(c, v);
    }
    Acad::ErrorStatus writeInt32(AcDb::DxfCode c, Adesk::Int32 v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeInt16(AcDb::DxfCode c, Adesk::Int16 v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeUInt32(AcDb::DxfCode c, Adesk::UInt32 v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeUInt16(AcDb::DxfCode c, Adesk::UInt16 v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeUInt8(AcDb::DxfCode c, Adesk::UInt8 v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeBoolean(AcDb::DxfCode c, Adesk::Boolean v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeBool(AcDb::DxfCode c, bool v) override { return addInteger(c, v); }
    Acad::ErrorStatus writeDouble(AcDb::DxfCode c, double v, int) override {
        DxfRecord r(c);
        r.real = v;
        items.push_back(r);
        return status_;
    }
    Acad::ErrorStatus writePoint2d(AcDb::DxfCode c, const AcGePoint2d& v, int) override {
        return writePoint3d(c, AcGePoint3d(v.x, v.y, 0), kDfltPrec);
    }
    Acad::ErrorStatus writePoint3d(AcDb::DxfCode c, const AcGePoint3d& v, int) override {
        items.push_back(DxfRecord::pointItem(c, v));
        return status_;
    }
    Acad::ErrorStatus writeVector2d(AcDb::DxfCode c, const AcGeVector2d& v, int) override {
        return writePoint3d(c, AcGePoint3d(v.x, v.y, 0), kDfltPrec);
    }
    Acad::ErrorStatus writeVector3d(AcDb::DxfCode c, const AcGeVector3d& v, int) override {
        return writePoint3d(c, AcGePoint3d(v.x, v.y, v.z), kDfltPrec);
    }
    Acad::ErrorStatus writeScale3d(AcDb::DxfCode c, const AcGeScale3d& v, int) override {
        return writePoint3d(c, AcGePoint3d(v.sx, v.sy, v.sz), kDfltPrec);
    }
    bool includesDefaultValues() const override { return true; }

private:
    static AcDb::DxfCode code(int c) { return static_cast<AcDb::DxfCode>(c); }
    Acad::ErrorStatus addInteger(AcDb::DxfCode c, std::int64_t v) {
        items.push_back(DxfRecord::integerItem(c, v));
        return status_;
    }

    AcDbDatabase* db_;
    std::size_t next_ = 0;
    Acad::ErrorStatus status_ = Acad::eOk;
};

}  // namespace kelvo::test
