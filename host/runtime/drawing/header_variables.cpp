// Header variables of a drawing: their names, DXF group codes and defaults, and the
// database's getters and setters for them.

#include <algorithm>
#include <cmath>

#include "dbsymtb.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/drawing/drawing_internal.h"

namespace kelvo::drawing {
namespace {

struct VariableEntry {
    const wchar_t* name;
    int code;
    HeaderValue initial;
};

// The variables this host keeps, in the order a drawing file lists them. Ids are filled
// in by initHeaderVariables.
const std::vector<VariableEntry>& variableEntries() {
    static const std::vector<VariableEntry> list = {
        {L"INSBASE", 10, AcGePoint3d()},
        {L"EXTMIN", 10, AcGePoint3d(1e20, 1e20, 1e20)},
        {L"EXTMAX", 10, AcGePoint3d(-1e20, -1e20, -1e20)},
        {L"ORTHOMODE", 70, 0},
        {L"LTSCALE", 40, 1.0},
        {L"TEXTSIZE", 40, 2.5},
        {L"TEXTSTYLE", 7, AcDbObjectId()},
        {L"CLAYER", 8, AcDbObjectId()},
        {L"CELTYPE", 6, AcDbObjectId()},
        {L"CECOLOR", 62, 256},
        {L"CELTSCALE", 40, 1.0},
        {L"CELWEIGHT", 370, -1},
        {L"DIMSCALE", 40, 1.0},
        {L"DIMASZ", 40, 2.5},
        {L"DIMTXT", 40, 2.5},
        {L"LUNITS", 70, 2},
        {L"LUPREC", 70, 4},
        {L"AUNITS", 70, 0},
        {L"AUPREC", 70, 0},
        {L"ANGBASE", 50, 0.0},
        {L"ANGDIR", 70, 0},
        {L"PDMODE", 70, 0},
        {L"PDSIZE", 40, 0.0},
        {L"ELEVATION", 40, 0.0},
        {L"THICKNESS", 40, 0.0},
        {L"FILLETRAD", 40, 0.0},
        {L"TILEMODE", 70, 1},
        {L"INSUNITS", 70, 4},
    };
    return list;
}

const VariableEntry* findVariable(const std::wstring& name) {
    for (const auto& s : variableEntries())
        if (name == s.name) return &s;
    return nullptr;
}

std::wstring plainName(std::wstring_view name) {
    std::wstring u = upperName(name);
    if (!u.empty() && u[0] == L'$') u.erase(0, 1);
    return u;
}

HeaderValue& slot(const AcDbDatabase& db, const wchar_t* name) {
    auto& header = DatabaseAccess::data(db).header;
    auto it = header.find(name);
    if (it == header.end()) it = header.emplace(name, findVariable(name)->initial).first;
    return it->second;
}

double realVar(const AcDbDatabase& db, const wchar_t* name) {
    const HeaderValue& v = slot(db, name);
    if (auto* d = std::get_if<double>(&v)) return *d;
    if (auto* i = std::get_if<int>(&v)) return *i;
    return 0;
}

int intVar(const AcDbDatabase& db, const wchar_t* name) {
    const HeaderValue& v = slot(db, name);
    if (auto* i = std::get_if<int>(&v)) return *i;
    if (auto* d = std::get_if<double>(&v)) return static_cast<int>(*d);
    return 0;
}

AcGePoint3d pointVar(const AcDbDatabase& db, const wchar_t* name) {
    const HeaderValue& v = slot(db, name);
    auto* p = std::get_if<AcGePoint3d>(&v);
    return p ? *p : AcGePoint3d();
}

AcDbObjectId idVar(const AcDbDatabase& db, const wchar_t* name) {
    const HeaderValue& v = slot(db, name);
    auto* id = std::get_if<AcDbObjectId>(&v);
    return id ? *id : AcDbObjectId();
}

Acad::ErrorStatus setVar(const AcDbDatabase& db, const wchar_t* name, HeaderValue value) {
    slot(db, name) = std::move(value);
    return Acad::eOk;
}

// The table a name-valued variable refers to.
AcDbObjectId tableOf(const AcDbDatabase& db, const std::wstring& name) {
    if (name == L"TEXTSTYLE") return db.textStyleTableId();
    if (name == L"CLAYER") return db.layerTableId();
    if (name == L"CELTYPE") return db.linetypeTableId();
    return {};
}

std::wstring recordName(AcDbObjectId id) {
    auto* record = AcDbSymbolTableRecord::cast(peekObject(id));
    return record ? record->name() : L"";
}

// Whether a numeric variable accepts a value; setvar and a drawing file's header go
// through it, as the typed setters do through their own checks.
bool acceptable(const std::wstring& name, double v) {
    if (!std::isfinite(v)) return false;
    auto within = [&](double low, double high) { return v >= low && v <= high; };
    if (name == L"DIMSCALE" || name == L"DIMASZ" || name == L"FILLETRAD") return v >= 0;
    if (name == L"DIMTXT" || name == L"LTSCALE" || name == L"TEXTSIZE" || name == L"CELTSCALE")
        return v > 0;
    if (name == L"LUNITS") return within(1, 5);
    if (name == L"LUPREC" || name == L"AUPREC") return within(0, 8);
    if (name == L"AUNITS") return within(0, 4);
    if (name == L"ORTHOMODE" || name == L"ANGDIR" || name == L"TILEMODE") return within(0, 1);
    if (name == L"CECOLOR") return within(0, 256);
    if (name == L"INSUNITS") return within(0, 20);
    if (name == L"CELWEIGHT") {
        // by block, by layer, default, or one of the standard weights in hundredths of a mm
        static const int weights[] = {-3, -2, -1, 0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40,
                                      50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
        return std::find(std::begin(weights), std::end(weights), v) != std::end(weights);
    }
    return true;
}

}  // namespace

void initHeaderVariables(AcDbDatabase& db) {
    DatabaseData& d = DatabaseAccess::data(db);
    for (const auto& s : variableEntries()) d.header[s.name] = s.initial;
    d.header[L"TEXTSTYLE"] = d.standardStyle;
    d.header[L"CLAYER"] = d.layerZero;
    d.header[L"CELTYPE"] = d.byLayer;
}

std::vector<HeaderVariable> headerVariables(const AcDbDatabase& db) {
    std::vector<HeaderVariable> out;
    for (const auto& s : variableEntries()) {
        HeaderVariable v{std::wstring(L"$") + s.name, s.code, slot(db, s.name)};
        if (auto* id = std::get_if<AcDbObjectId>(&v.value)) v.value = recordName(*id);
        out.push_back(std::move(v));
    }
    return out;
}

std::optional<HeaderValue> getHeaderVariable(const AcDbDatabase& db, std::wstring_view name) {
    std::wstring key = plainName(name);
    if (key == L"HANDSEED") {
        wchar_t buffer[32];
        db.handseed().getIntoAsciiBuffer(buffer, 32);
        return HeaderValue(std::wstring(buffer));
    }
    const VariableEntry* entry = findVariable(key);
    if (!entry) return std::nullopt;
    HeaderValue v = slot(db, entry->name);
    if (auto* id = std::get_if<AcDbObjectId>(&v)) v = recordName(*id);
    return v;
}

Acad::ErrorStatus setHeaderVariable(AcDbDatabase& db, std::wstring_view name,
                                    const HeaderValue& value) {
    std::wstring key = plainName(name);
    const VariableEntry* entry = findVariable(key);
    if (!entry) return Acad::eKeyNotFound;
    HeaderValue& target = slot(db, entry->name);
    if (std::holds_alternative<AcDbObjectId>(entry->initial)) {
        auto* text = std::get_if<std::wstring>(&value);
        if (!text) return Acad::eInvalidInput;
        auto* table = AcDbSymbolTable::cast(peekObject(tableOf(db, key)));
        AcDbObjectId id;
        if (!table || table->getAt(text->c_str(), id) != Acad::eOk) return Acad::eKeyNotFound;
        target = id;
        return Acad::eOk;
    }
    if (std::holds_alternative<double>(entry->initial)) {
        double v = 0;
        if (auto* i = std::get_if<int>(&value)) v = *i;
        else if (auto* d = std::get_if<double>(&value)) v = *d;
        else return Acad::eInvalidInput;
        if (!acceptable(key, v)) return Acad::eOutOfRange;
        target = v;
        return Acad::eOk;
    }
    if (std::holds_alternative<int>(entry->initial)) {
        auto* i = std::get_if<int>(&value);
        if (!i) return Acad::eInvalidInput;
        if (!acceptable(key, *i)) return Acad::eOutOfRange;
        target = *i;
        return Acad::eOk;
    }
    if (value.index() != entry->initial.index()) return Acad::eInvalidInput;
    target = value;
    return Acad::eOk;
}

}  // namespace kelvo::drawing

using namespace kelvo::drawing;

double AcDbDatabase::dimscale() const { return realVar(*this, L"DIMSCALE"); }
Acad::ErrorStatus AcDbDatabase::setDimscale(double v) {
    if (v < 0) return Acad::eOutOfRange;
    return setVar(*this, L"DIMSCALE", v);
}
double AcDbDatabase::dimasz() const { return realVar(*this, L"DIMASZ"); }
Acad::ErrorStatus AcDbDatabase::setDimasz(double v) {
    if (v < 0) return Acad::eOutOfRange;
    return setVar(*this, L"DIMASZ", v);
}
double AcDbDatabase::dimtxt() const { return realVar(*this, L"DIMTXT"); }
Acad::ErrorStatus AcDbDatabase::setDimtxt(double v) {
    if (v <= 0) return Acad::eOutOfRange;
    return setVar(*this, L"DIMTXT", v);
}
double AcDbDatabase::ltscale() const { return realVar(*this, L"LTSCALE"); }
Acad::ErrorStatus AcDbDatabase::setLtscale(double v) {
    if (v <= 0) return Acad::eOutOfRange;
    return setVar(*this, L"LTSCALE", v);
}
double AcDbDatabase::textsize() const { return realVar(*this, L"TEXTSIZE"); }
Acad::ErrorStatus AcDbDatabase::setTextsize(double v) {
    if (v <= 0) return Acad::eOutOfRange;
    return setVar(*this, L"TEXTSIZE", v);
}
AcDbObjectId AcDbDatabase::textstyle() const { return idVar(*this, L"TEXTSTYLE"); }
Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId id) {
    if (!AcDbTextStyleTableRecord::cast(peekObject(id))) return Acad::eInvalidInput;
    return setVar(*this, L"TEXTSTYLE", id);
}
AcDbObjectId AcDbDatabase::clayer() const { return idVar(*this, L"CLAYER"); }
Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId id) {
    if (!AcDbLayerTableRecord::cast(peekObject(id))) return Acad::eInvalidInput;
    return setVar(*this, L"CLAYER", id);
}
AcDbObjectId AcDbDatabase::celtype() const { return idVar(*this, L"CELTYPE"); }
Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId id) {
    if (!AcDbLinetypeTableRecord::cast(peekObject(id))) return Acad::eInvalidInput;
    return setVar(*this, L"CELTYPE", id);
}
AcCmColor AcDbDatabase::cecolor() const {
    AcCmColor c;
    c.setColorIndex(static_cast<Adesk::Int16>(intVar(*this, L"CECOLOR")));
    return c;
}
Acad::ErrorStatus AcDbDatabase::setCecolor(const AcCmColor& c) {
    return setVar(*this, L"CECOLOR", static_cast<int>(c.colorIndex()));
}
double AcDbDatabase::celtscale() const { return realVar(*this, L"CELTSCALE"); }
Acad::ErrorStatus AcDbDatabase::setCeltscale(double v) {
    if (v <= 0) return Acad::eOutOfRange;
    return setVar(*this, L"CELTSCALE", v);
}
AcDb::LineWeight AcDbDatabase::celweight() const {
    return static_cast<AcDb::LineWeight>(intVar(*this, L"CELWEIGHT"));
}
Acad::ErrorStatus AcDbDatabase::setCelweight(AcDb::LineWeight v) {
    return setVar(*this, L"CELWEIGHT", static_cast<int>(v));
}
AcDb::UnitsValue AcDbDatabase::insunits() const {
    return static_cast<AcDb::UnitsValue>(intVar(*this, L"INSUNITS"));
}
Acad::ErrorStatus AcDbDatabase::setInsunits(AcDb::UnitsValue v) {
    return setVar(*this, L"INSUNITS", static_cast<int>(v));
}
AcGePoint3d AcDbDatabase::insbase() const { return pointVar(*this, L"INSBASE"); }
Acad::ErrorStatus AcDbDatabase::setInsbase(const AcGePoint3d& p) { return setVar(*this, L"INSBASE", p); }
AcGePoint3d AcDbDatabase::extmin() const { return pointVar(*this, L"EXTMIN"); }
AcGePoint3d AcDbDatabase::extmax() const { return pointVar(*this, L"EXTMAX"); }
Acad::ErrorStatus AcDbDatabase::setExtmin(const AcGePoint3d& p) { return setVar(*this, L"EXTMIN", p); }
Acad::ErrorStatus AcDbDatabase::setExtmax(const AcGePoint3d& p) { return setVar(*this, L"EXTMAX", p); }
Adesk::Int16 AcDbDatabase::pdmode() const { return static_cast<Adesk::Int16>(intVar(*this, L"PDMODE")); }
Acad::ErrorStatus AcDbDatabase::setPdmode(Adesk::Int16 v) { return setVar(*this, L"PDMODE", int(v)); }
double AcDbDatabase::pdsize() const { return realVar(*this, L"PDSIZE"); }
Acad::ErrorStatus AcDbDatabase::setPdsize(double v) { return setVar(*this, L"PDSIZE", v); }
double AcDbDatabase::angbase() const { return realVar(*this, L"ANGBASE"); }
Acad::ErrorStatus AcDbDatabase::setAngbase(double v) { return setVar(*this, L"ANGBASE", v); }
bool AcDbDatabase::angdir() const { return intVar(*this, L"ANGDIR") != 0; }
Acad::ErrorStatus AcDbDatabase::setAngdir(bool v) { return setVar(*this, L"ANGDIR", v ? 1 : 0); }
Adesk::Int16 AcDbDatabase::lunits() const { return static_cast<Adesk::Int16>(intVar(*this, L"LUNITS")); }
Acad::ErrorStatus AcDbDatabase::setLunits(Adesk::Int16 v) {
    if (v < 1 || v > 5) return Acad::eOutOfRange;
    return setVar(*this, L"LUNITS", int(v));
}
Adesk::Int16 AcDbDatabase::luprec() const { return static_cast<Adesk::Int16>(intVar(*this, L"LUPREC")); }
Acad::ErrorStatus AcDbDatabase::setLuprec(Adesk::Int16 v) {
    if (v < 0 || v > 8) return Acad::eOutOfRange;
    return setVar(*this, L"LUPREC", int(v));
}
Adesk::Int16 AcDbDatabase::aunits() const { return static_cast<Adesk::Int16>(intVar(*this, L"AUNITS")); }
Acad::ErrorStatus AcDbDatabase::setAunits(Adesk::Int16 v) {
    if (v < 0 || v > 4) return Acad::eOutOfRange;
    return setVar(*this, L"AUNITS", int(v));
}
Adesk::Int16 AcDbDatabase::auprec() const { return static_cast<Adesk::Int16>(intVar(*this, L"AUPREC")); }
Acad::ErrorStatus AcDbDatabase::setAuprec(Adesk::Int16 v) {
    if (v < 0 || v > 8) return Acad::eOutOfRange;
    return setVar(*this, L"AUPREC", int(v));
}
double AcDbDatabase::elevation() const { return realVar(*this, L"ELEVATION"); }
Acad::ErrorStatus AcDbDatabase::setElevation(double v) { return setVar(*this, L"ELEVATION", v); }
double AcDbDatabase::thickness() const { return realVar(*this, L"THICKNESS"); }
Acad::ErrorStatus AcDbDatabase::setThickness(double v) { return setVar(*this, L"THICKNESS", v); }
double AcDbDatabase::filletrad() const { return realVar(*this, L"FILLETRAD"); }
Acad::ErrorStatus AcDbDatabase::setFilletrad(double v) {
    if (v < 0) return Acad::eOutOfRange;
    return setVar(*this, L"FILLETRAD", v);
}
bool AcDbDatabase::orthomode() const { return intVar(*this, L"ORTHOMODE") != 0; }
Acad::ErrorStatus AcDbDatabase::setOrthomode(bool v) { return setVar(*this, L"ORTHOMODE", v ? 1 : 0); }
bool AcDbDatabase::tilemode() const { return intVar(*this, L"TILEMODE") != 0; }
Acad::ErrorStatus AcDbDatabase::setTilemode(bool v) { return setVar(*this, L"TILEMODE", v ? 1 : 0); }
