// Tag blocks: looked up in the drawing, else loaded from NAME.dwg on the support path.
#include "entities/block_lookup.h"

#include <array>

#include "adslib.h"
#include "dbapserv.h"
#include "dbmain.h"
#include "dbsymtb.h"
#include "host_ui.h"

namespace kelvo {
namespace {

constexpr int kPathCapacity = 4096;

AcDbObjectId blockInTable(AcDbDatabase* db, const std::wstring& name) {
    AcDbBlockTable* table = nullptr;
    if (db->getSymbolTable(table, AcDb::kForRead) != Acad::eOk) return {};
    AcDbObjectId id;
    const Acad::ErrorStatus es = table->getAt(name.c_str(), id);
    table->close();
    return es == Acad::eOk ? id : AcDbObjectId();
}

void showMissingBlockBox(const std::wstring& name) {
    const std::wstring text = L"Block " + name +
                              L" could not be found.\nLocate this drawing and place it in your "
                              L"AutoCAD support path.";
    hostMessageBox(nullptr, text.c_str(), L"Tarvik", MB_OK | MB_ICONERROR);
}

void reportUnreadableBlock(const std::wstring& name, const ACHAR* path, Acad::ErrorStatus es) {
    acutPrintf(L"\nBlock %s could not be read from %s (status %d).", name.c_str(), path,
               static_cast<int>(es));
}

AcDbObjectId insertBlockFile(AcDbDatabase* db, const std::wstring& name, const ACHAR* path) {
    AcDbDatabase source(false, true);
    Acad::ErrorStatus es = source.readDwgFile(path);
    AcDbObjectId id;
    if (es == Acad::eOk) es = db->insert(id, name.c_str(), &source);
    if (es != Acad::eOk) {
        reportUnreadableBlock(name, path, es);
        return {};
    }
    return id;
}

}  // namespace

AcDbObjectId findOrLoadBlock(AcDbDatabase* db, const std::wstring& name) {
    if (db == nullptr) return {};
    if (AcDbObjectId id = blockInTable(db, name); !id.isNull()) return id;
    std::array<ACHAR, kPathCapacity> path{};
    const std::wstring file = name + L".dwg";
    AcDbHostApplicationServices* services = acdbHostApplicationServices();
    if (name.empty() || services == nullptr ||
        services->findFile(path.data(), kPathCapacity, file.c_str(), db) != Acad::eOk) {
        showMissingBlockBox(name);
        return {};
    }
    return insertBlockFile(db, name, path.data());
}

}  // namespace kelvo
