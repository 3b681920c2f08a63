// The host application's services to the drawing database: the working database and the
// search for support files.

#include <cwchar>
#include <filesystem>

#include "dbapserv.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/host_impl.h"
#include "utf8.h"

namespace fs = std::filesystem;

namespace kelvo::drawing {
namespace {

AcDbDatabase*& explicitWorkingDatabase() {
    static AcDbDatabase* db = nullptr;
    return db;
}

class HostServices : public AcDbHostApplicationServices {};

std::vector<fs::path> supportFolders() {
    std::vector<fs::path> folders;
    auto prefix = host::Host::instance().getVar(L"ACADPREFIX");
    if (prefix && prefix->type() == lisp::Type::Str) {
        std::wstring all = prefix->asString();
        std::size_t start = 0;
        while (start <= all.size()) {
            std::size_t end = all.find(L';', start);
            if (end == std::wstring::npos) end = all.size();
            if (end > start) folders.push_back(utf8Path(all.substr(start, end - start)));
            start = end + 1;
        }
    }
    if (host::Document* doc = host::Host::instance().impl().currentDocument()) {
        const fs::path drawing = utf8Path(doc->fileName());
        if (drawing.has_parent_path()) folders.push_back(drawing.parent_path());
    }
    return folders;
}

}  // namespace

AcDbDatabase* workingDatabase() {
    if (explicitWorkingDatabase()) return explicitWorkingDatabase();
    host::Document* doc = host::Host::instance().impl().currentDocument();
    return doc ? doc->database() : nullptr;
}

}  // namespace kelvo::drawing

Acad::ErrorStatus AcDbHostApplicationServices::findFile(ACHAR* out, int size, const ACHAR* name,
                                                        AcDbDatabase*, FindFileHint) {
    if (!out || size <= 0 || !name || !*name) return Acad::eInvalidInput;
    const fs::path file = kelvo::utf8Path(name);
    fs::path found;
    std::error_code ec;
    if (file.has_parent_path() || file.is_absolute()) {
        if (fs::is_regular_file(file, ec)) found = fs::absolute(file, ec);
    } else {
        for (const fs::path& folder : kelvo::drawing::supportFolders()) {
            if (fs::is_regular_file(folder / file, ec)) {
                found = fs::absolute(folder / file, ec);
                break;
            }
        }
    }
    if (found.empty()) return Acad::eFileNotFound;
    std::wstring text = kelvo::widePath(found);
    if (static_cast<int>(text.size()) + 1 > size) return Acad::eBufferTooSmall;
    std::wcscpy(out, text.c_str());
    return Acad::eOk;
}

AcDbDatabase* AcDbHostApplicationServices::workingDatabase() const {
    return kelvo::drawing::workingDatabase();
}

void AcDbHostApplicationServices::setWorkingDatabase(AcDbDatabase* pDatabase) {
    kelvo::drawing::explicitWorkingDatabase() = pDatabase;
}

const ACHAR* AcDbHostApplicationServices::program() const { return L"kelvo-host"; }
const ACHAR* AcDbHostApplicationServices::product() const { return L"kelvo-host"; }

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static kelvo::drawing::HostServices services;
    return &services;
}
