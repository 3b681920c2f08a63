// Reading, walking and writing the "TARVIK" extended data of an object.
#include "entities/tarvik_xdata.h"

#include "dbmain.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "entities/xdata_types.h"

namespace kelvo {
namespace {

bool isKeyItem(const resbuf* item) {
    return lispTypeOfGroupCode(item->restype) == RTSTR;
}

std::wstring textOf(const resbuf* item) {
    return item->resval.rstring != nullptr ? item->resval.rstring : L"";
}

// The first item after the application name.
const resbuf* firstItem(const resbuf* data) {
    return data != nullptr ? data->rbnext : nullptr;
}

}  // namespace

Acad::ErrorStatus registerTarvikApplication(AcDbDatabase* db) {
    if (db == nullptr) return Acad::eNoDatabase;
    AcDbRegAppTable* table = nullptr;
    Acad::ErrorStatus es = db->getSymbolTable(table, AcDb::kForRead);
    if (es != Acad::eOk) return es;
    if (!table->has(kTarvikApplication)) {
        es = table->upgradeOpen();
        if (es == Acad::eOk) {
            auto* record = new AcDbRegAppTableRecord();
            es = record->setName(kTarvikApplication);
            if (es == Acad::eOk) es = table->add(record);
            if (es == Acad::eOk) {
                record->close();
            } else {
                delete record;
            }
        }
    }
    table->close();
    return es;
}

ValueList readTarvikData(AcDbObjectId id) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead);
    if (object.openStatus() != Acad::eOk) return {};
    return ValueList(object->xData(kTarvikApplication));
}

Acad::ErrorStatus writeTarvikData(AcDbObjectId id, const resbuf* data) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    if (object.openStatus() != Acad::eOk) return object.openStatus();
    const Acad::ErrorStatus es = registerTarvikApplication(object->database());
    if (es != Acad::eOk) return es;
    return object->setXData(data);
}

const resbuf* findTarvikValue(const resbuf* data, const std::wstring& key) {
    for (const resbuf* item = firstItem(data); item != nullptr;) {
        if (!isKeyItem(item)) {
            item = item->rbnext;
        } else if (textOf(item) == key) {
            return item->rbnext;
        } else {
            item = item->rbnext != nullptr ? item->rbnext->rbnext : nullptr;
        }
    }
    return nullptr;
}

void forEachTarvikPair(const resbuf* data,
                       const std::function<void(const std::wstring&, const resbuf&)>& visit) {
    for (const resbuf* item = firstItem(data); item != nullptr;) {
        if (!isKeyItem(item)) {
            item = item->rbnext;
            continue;
        }
        const resbuf* value = item->rbnext;
        if (value == nullptr) return;
        const std::wstring key = textOf(item);
        if (!key.empty()) visit(key, *value);
        item = value->rbnext;
    }
}

}  // namespace kelvo
