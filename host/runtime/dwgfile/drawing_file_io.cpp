// Drawing files by format: ASCII DXF through the DXF reader and writer, this host's binary
// drawing file through the DWG filer; a file's format is recognised by its first bytes.
// AcDbDatabase::readDwgFile, saveAs, dxfIn and dxfOut reach these through the hooks
// registered below.

#include "runtime/dwgfile/drawing_file_io.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "adslib.h"
#include "dbmain.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/dwgfile/dwg_drawing_file.h"
#include "runtime/dxf/dxf_drawing_reader.h"
#include "runtime/dxf/dxf_drawing_writer.h"
#include "runtime/dxf/dxf_error.h"
#include "runtime/dxf/dxf_file.h"
#include "utf8.h"
#include "whole_file.h"

namespace kelvo::files {
namespace {

namespace fs = std::filesystem;

void say(std::wstring* why, const std::string& text) {
    if (why) *why = fromUtf8(text);
}

std::string firstBytes(const fs::path& file, size_t n) {
    std::ifstream in(file, std::ios::binary);
    std::string bytes(n, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(n));
    bytes.resize(static_cast<size_t>(in.gcount()));
    return bytes;
}

// Why FILE cannot be read, or "" when it can.
std::string unreadable(const fs::path& file) {
    std::error_code ec;
    if (!fs::exists(file, ec)) return "no such file";
    if (fs::is_directory(file, ec)) return "it is a folder";
    if (!fs::is_regular_file(file, ec)) return "it is not a regular file";
    std::ifstream in(file, std::ios::binary);
    if (!in) return std::strerror(errno);
    return "";
}

}  // namespace

DrawingFormat sniffFormat(const fs::path& file) {
    std::string head = firstBytes(file, 4096);
    if (head.starts_with(kDwgSignature.substr(0, 8))) return DrawingFormat::Dwg;
    // ASCII DXF: a group code line (digits, maybe blank-padded) and then a value line.
    size_t i = head.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    while (i < head.size() && (head[i] == ' ' || head[i] == '\t')) ++i;
    size_t digits = i;
    while (i < head.size() && head[i] >= '0' && head[i] <= '9') ++i;
    while (i < head.size() && (head[i] == ' ' || head[i] == '\r')) ++i;
    if (i > digits && i < head.size() && head[i] == '\n') return DrawingFormat::Dxf;
    return DrawingFormat::Unknown;
}

Acad::ErrorStatus readDrawing(AcDbDatabase& db, const fs::path& file, std::wstring* why) {
    if (std::string reason = unreadable(file); !reason.empty()) {
        say(why, reason);
        return Acad::eFileNotFound;
    }
    switch (sniffFormat(file)) {
        case DrawingFormat::Dxf: return readDxf(db, file, why);
        case DrawingFormat::Dwg: return readDwg(db, file, why);
        case DrawingFormat::Unknown: break;
    }
    say(why, "not a drawing file of this host and not ASCII DXF");
    return Acad::eInvalidDwgVersion;
}

Acad::ErrorStatus writeDrawing(AcDbDatabase& db, const fs::path& file, std::wstring* why) {
    std::string ext = file.extension().string();
    for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return ext == ".dxf" ? writeDxf(db, file, why) : writeDwg(db, file, why);
}

Acad::ErrorStatus readDxf(AcDbDatabase& db, const fs::path& file, std::wstring* why) {
    if (std::string reason = unreadable(file); !reason.empty()) {
        say(why, reason);
        return Acad::eFileNotFound;
    }
    try {
        host::dxf::DxfFile dxf = host::dxf::DxfFile::load(file);
        std::wstring skipped = host::dxf::readDrawingDxf(dxf, db);
        if (!skipped.empty()) acutPrintf(L"\n; %ls\n", skipped.c_str());
        return Acad::eOk;
    } catch (const host::dxf::DxfError& e) {
        say(why, e.what());
        return Acad::eDxfReadAborted;
    }
}

Acad::ErrorStatus writeDxf(AcDbDatabase& db, const fs::path& file, std::wstring* why) {
    std::string text;
    try {
        text = host::dxf::writeDrawingDxf(db);
    } catch (const host::dxf::DxfError& e) {
        say(why, e.what());
        return Acad::eFilerError;
    }
    if (const int error = writeWholeFile(file, text); error != 0) {
        say(why, std::strerror(error));
        return Acad::eFileAccessErr;
    }
    return Acad::eOk;
}

Acad::ErrorStatus readDwg(AcDbDatabase& db, const fs::path& file, std::wstring* why) {
    if (std::string reason = unreadable(file); !reason.empty()) {
        say(why, reason);
        return Acad::eFileNotFound;
    }
    std::ifstream in(file, std::ios::binary);
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) {
        say(why, std::strerror(errno));
        return Acad::eFileAccessErr;
    }
    return decodeDwgDrawing(db, bytes, why);
}

Acad::ErrorStatus writeDwg(AcDbDatabase& db, const fs::path& file, std::wstring* why) {
    std::vector<std::uint8_t> bytes;
    if (Acad::ErrorStatus es = encodeDwgDrawing(db, bytes, why); es != Acad::eOk) return es;
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (const int error = writeWholeFile(file, text); error != 0) {
        say(why, std::strerror(error));
        return Acad::eFileAccessErr;
    }
    return Acad::eOk;
}

namespace {

// The database's own file functions come here.
const bool kRegistered = [] {
    using kelvo::drawing::registerDwgReader;
    registerDwgReader(
        [](AcDbDatabase& db, const std::wstring& path) { return readDrawing(db, utf8Path(path)); });
    kelvo::drawing::registerDwgWriter([](const AcDbDatabase& db, const std::wstring& path) {
        return writeDrawing(const_cast<AcDbDatabase&>(db), utf8Path(path));
    });
    kelvo::drawing::registerDxfReader(
        [](AcDbDatabase& db, const std::wstring& path) { return readDxf(db, utf8Path(path)); });
    kelvo::drawing::registerDxfWriter([](const AcDbDatabase& db, const std::wstring& path) {
        return writeDxf(const_cast<AcDbDatabase&>(db), utf8Path(path));
    });
    return true;
}();

}  // namespace

}  // namespace kelvo::files
