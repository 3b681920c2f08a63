// Symbol table records: the name every record has, and the layer, text style, linetype
// and registered-application records.

#include <cwchar>

#include "adslib.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/enum_values.h"

using namespace kelvo::drawing;

namespace {

bool validName(const std::wstring& name) {
    if (name.empty() || name.size() > 255) return false;
    return name.find_first_of(L"<>/\\\":;?*|,=`") == std::wstring::npos;
}

ACHAR* newString(const std::wstring& s) {
    ACHAR* out = nullptr;
    acutNewString(s.c_str(), out);
    return out;
}

std::wstring recordName(AcDbObjectId id) {
    auto* record = AcDbSymbolTableRecord::cast(peekObject(id));
    return record ? record->name() : L"";
}

AcDbObjectId lookUp(AcDbDatabase* db, AcDbObjectId tableId, const std::wstring& name) {
    auto* table = AcDbSymbolTable::cast(peekObject(tableId));
    AcDbObjectId id;
    if (db && table) table->getAt(name.c_str(), id);
    return id;
}

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject)

AcDbSymbolTableRecord::AcDbSymbolTableRecord() = default;
AcDbSymbolTableRecord::~AcDbSymbolTableRecord() = default;

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& pName) const {
    assertReadEnabled();
    pName = newString(name_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& pName) const {
    assertReadEnabled();
    pName = name_.c_str();
    return Acad::eOk;
}

const std::wstring& AcDbSymbolTableRecord::name() const {
    return name_;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* pName) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    std::wstring name = pName ? pName : L"";
    bool anonymous = !name.empty() && name[0] == L'*';
    if (!validName(anonymous ? name.substr(1) : name) && !(anonymous && name.size() > 1))
        return Acad::eInvalidSymbolTableName;
    if (auto* table = AcDbSymbolTable::cast(peekObject(ownerId()))) {
        AcDbObjectId other;
        if (table->getAt(name.c_str(), other) == Acad::eOk && other != objectId())
            return Acad::eDuplicateRecordName;
    }
    name_ = std::move(name);
    return Acad::eOk;
}

bool AcDbSymbolTableRecord::isDependent() const {
    return (flags_ & 16) != 0;
}
bool AcDbSymbolTableRecord::isResolved() const {
    return (flags_ & 32) != 0;
}
bool AcDbSymbolTableRecord::isRenamable() const {
    return !name_.empty() && name_[0] != L'*';
}
Adesk::Int16 AcDbSymbolTableRecord::flags() const {
    return flags_;
}
void AcDbSymbolTableRecord::setFlags(Adesk::Int16 flags) {
    flags_ = flags;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(name_.c_str());
    filer->writeInt16(flags_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    ACHAR* name = nullptr;
    filer->readString(&name);
    filer->readInt16(&flags_);
    if (name) name_ = name;
    acutDelString(name);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbObject::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbSymbolTableRecord");
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbObject::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    filer->atSubclassData(L"AcDbSymbolTableRecord");
    return Acad::eOk;
}

// The name and flags that follow each record class's own subclass marker.
namespace {

void writeNameAndFlags(AcDbDxfFiler* filer, const AcDbSymbolTableRecord& r, Adesk::Int16 flags) {
    filer->writeString(AcDb::kDxfSymbolTableName, r.name().c_str());
    filer->writeInt16(AcDb::kDxfInt16, flags);
}

// Handles 2 and 70 for any record; false for other codes.
bool readNameOrFlags(AcDbSymbolTableRecord& r, const DxfItem& item, Acad::ErrorStatus& bad) {
    if (item.code() == AcDb::kDxfSymbolTableName) {
        // A text style that loads a shape file has no name.
        if (item.text().empty() && AcDbTextStyleTableRecord::cast(&r)) return true;
        Acad::ErrorStatus es = r.setName(item.text().c_str());
        if (es != Acad::eOk) bad = es;
        return true;
    }
    if (item.code() == AcDb::kDxfInt16) {
        r.setFlags(static_cast<Adesk::Int16>(item.integer()));
        return true;
    }
    return false;
}

}  // namespace

// --- layers ----------------------------------------------------------------------------

ACRX_DXF_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT, 0, 0,
                        LAYER, ObjectDBX)

AcDbLayerTableRecord::AcDbLayerTableRecord() = default;
AcDbLayerTableRecord::~AcDbLayerTableRecord() = default;

bool AcDbLayerTableRecord::isFrozen() const {
    return (flags() & 1) != 0;
}
Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    setFlags(static_cast<Adesk::Int16>(frozen ? flags() | 1 : flags() & ~1));
    return Acad::eOk;
}
bool AcDbLayerTableRecord::isOff() const {
    return off_;
}
void AcDbLayerTableRecord::setIsOff(bool off) {
    off_ = off;
}
bool AcDbLayerTableRecord::isLocked() const {
    return (flags() & 4) != 0;
}
void AcDbLayerTableRecord::setIsLocked(bool locked) {
    setFlags(static_cast<Adesk::Int16>(locked ? flags() | 4 : flags() & ~4));
}
bool AcDbLayerTableRecord::isHidden() const {
    return hidden_;
}
Acad::ErrorStatus AcDbLayerTableRecord::setIsHidden(bool hidden) {
    hidden_ = hidden;
    return Acad::eOk;
}
bool AcDbLayerTableRecord::isPlottable() const {
    return plottable_;
}
Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    plottable_ = plottable;
    return Acad::eOk;
}
AcCmColor AcDbLayerTableRecord::color() const {
    return color_;
}
void AcDbLayerTableRecord::setColor(const AcCmColor& color) {
    color_ = color;
}
AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const {
    return linetype_;
}
Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(const AcDbObjectId& id) {
    if (!AcDbLinetypeTableRecord::cast(peekObject(id))) return Acad::eInvalidInput;
    linetype_ = id;
    return Acad::eOk;
}
AcDb::LineWeight AcDbLayerTableRecord::lineWeight() const {
    return lineWeight_;
}
Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
    lineWeight_ = weight;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLayerTableRecord::description(ACHAR*& pDescription) const {
    pDescription = newString(description_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLayerTableRecord::setDescription(const ACHAR* pDescription) {
    description_ = pDescription ? pDescription : L"";
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeBool(off_);
    filer->writeBool(hidden_);
    filer->writeBool(plottable_);
    filer->writeInt16(color_.colorIndex());
    filer->writeHardPointerId(linetype_);
    filer->writeInt16(static_cast<Adesk::Int16>(lineWeight_));
    filer->writeString(description_.c_str());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int16 color = 7, weight = 0;
    AcDbHardPointerId linetype;
    ACHAR* description = nullptr;
    filer->readBool(&off_);
    filer->readBool(&hidden_);
    filer->readBool(&plottable_);
    filer->readInt16(&color);
    filer->readHardPointerId(&linetype);
    filer->readInt16(&weight);
    filer->readString(&description);
    if (description) description_ = description;
    acutDelString(description);
    color_.setColorIndex(color);
    linetype_ = linetype;
    if (filer->filerStatus() == Acad::eOk && !kelvo::drawing::isLineWeight(weight))
        return Acad::eBadLineWeightValue;
    lineWeight_ = static_cast<AcDb::LineWeight>(weight);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbLayerTableRecord");
    writeNameAndFlags(filer, *this, flags());
    Adesk::Int16 color = color_.colorIndex();
    filer->writeInt16(AcDb::kDxfColor, static_cast<Adesk::Int16>(off_ ? -color : color));
    filer->writeString(AcDb::kDxfLinetypeName, recordName(linetype_).c_str());
    if (!plottable_) filer->writeBool(AcDb::kDxfBool, false);
    filer->writeInt16(AcDb::kDxfLineWeight, static_cast<Adesk::Int16>(lineWeight_));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbLayerTableRecord")) return Acad::eOk;
    AcDbDatabase* db = filer->database() ? filer->database() : database();
    if (!db) db = workingDatabase();
    Acad::ErrorStatus bad = Acad::eOk;
    es = readClassItems(filer, [&](const DxfItem& item) {
        if (readNameOrFlags(*this, item, bad)) return;
        switch (item.code()) {
            case AcDb::kDxfColor: {
                int c = item.integer();
                off_ = c < 0;
                if (c < 0) c = -c;
                if (c < 1 || c > 255)
                    bad = Acad::eBadColorIndex;
                else
                    color_.setColorIndex(static_cast<Adesk::Int16>(c));
                break;
            }
            case AcDb::kDxfLinetypeName: {
                AcDbObjectId id =
                    lookUp(db, db ? db->linetypeTableId() : AcDbObjectId(), item.text());
                if (id.isNull())
                    bad = Acad::eBadLinetypeName;
                else
                    linetype_ = id;
                break;
            }
            case AcDb::kDxfBool: plottable_ = item.integer() != 0; break;
            case AcDb::kDxfLineWeight:
                if (!kelvo::drawing::isLineWeight(item.integer())) bad = Acad::eBadLineWeightValue;
                else lineWeight_ = static_cast<AcDb::LineWeight>(item.integer());
                break;
            default: break;
        }
    });
    if (linetype_.isNull() && db) linetype_ = db->continuousLinetype();
    return es != Acad::eOk ? es : bad;
}

// --- text styles -----------------------------------------------------------------------

ACRX_DXF_DEFINE_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT, 0, 0,
                        STYLE, ObjectDBX)

AcDbTextStyleTableRecord::AcDbTextStyleTableRecord() = default;
AcDbTextStyleTableRecord::~AcDbTextStyleTableRecord() = default;

Adesk::Boolean AcDbTextStyleTableRecord::isShapeFile() const {
    return (flags() & 1) != 0;
}
void AcDbTextStyleTableRecord::setIsShapeFile(Adesk::Boolean shape) {
    setFlags(static_cast<Adesk::Int16>(shape ? flags() | 1 : flags() & ~1));
}
Adesk::Boolean AcDbTextStyleTableRecord::isVertical() const {
    return (flags() & 4) != 0;
}
void AcDbTextStyleTableRecord::setIsVertical(Adesk::Boolean vertical) {
    setFlags(static_cast<Adesk::Int16>(vertical ? flags() | 4 : flags() & ~4));
}
double AcDbTextStyleTableRecord::textSize() const {
    return textSize_;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    if (size < 0) return Acad::eNegativeValueNotAllowed;
    textSize_ = size;
    return Acad::eOk;
}
double AcDbTextStyleTableRecord::xScale() const {
    return xScale_;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
    if (scale <= 0) return Acad::eOutOfRange;
    xScale_ = scale;
    return Acad::eOk;
}
double AcDbTextStyleTableRecord::obliquingAngle() const {
    return oblique_;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
    oblique_ = angle;
    return Acad::eOk;
}
Adesk::UInt8 AcDbTextStyleTableRecord::flagBits() const {
    return flagBits_;
}
void AcDbTextStyleTableRecord::setFlagBits(Adesk::UInt8 flags) {
    flagBits_ = flags;
}
double AcDbTextStyleTableRecord::priorSize() const {
    return priorSize_;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setPriorSize(double size) {
    priorSize_ = size;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(ACHAR*& name) const {
    name = newString(fileName_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(const ACHAR*& name) const {
    name = fileName_.c_str();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) {
    fileName_ = name ? name : L"";
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(ACHAR*& name) const {
    name = newString(bigFontFileName_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(const ACHAR*& name) const {
    name = bigFontFileName_.c_str();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
    bigFontFileName_ = name ? name : L"";
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeDouble(textSize_);
    filer->writeDouble(xScale_);
    filer->writeDouble(oblique_);
    filer->writeDouble(priorSize_);
    filer->writeUInt8(flagBits_);
    filer->writeString(fileName_.c_str());
    filer->writeString(bigFontFileName_.c_str());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    ACHAR* file = nullptr;
    ACHAR* bigFont = nullptr;
    filer->readDouble(&textSize_);
    filer->readDouble(&xScale_);
    filer->readDouble(&oblique_);
    filer->readDouble(&priorSize_);
    filer->readUInt8(&flagBits_);
    filer->readString(&file);
    filer->readString(&bigFont);
    if (file) fileName_ = file;
    if (bigFont) bigFontFileName_ = bigFont;
    acutDelString(file);
    acutDelString(bigFont);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbTextStyleTableRecord");
    writeNameAndFlags(filer, *this, flags());
    filer->writeDouble(AcDb::kDxfTxtSize, textSize_);
    filer->writeDouble(AcDb::kDxfTxtStyleXScale, xScale_);
    filer->writeDouble(AcDb::kDxfAngle, oblique_);
    filer->writeInt16(AcDb::kDxfTxtStyleFlags, flagBits_);
    filer->writeDouble(AcDb::kDxfTxtStylePSize, priorSize_);
    filer->writeString(AcDb::kDxfTextFontFile, fileName_.c_str());
    filer->writeString(AcDb::kDxfTextBigFontFile, bigFontFileName_.c_str());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbTextStyleTableRecord")) return Acad::eOk;
    Acad::ErrorStatus bad = Acad::eOk;
    es = readClassItems(filer, [&](const DxfItem& item) {
        if (readNameOrFlags(*this, item, bad)) return;
        switch (item.code()) {
            case AcDb::kDxfTxtSize:
                textSize_ = item.real();
                break;
            case AcDb::kDxfTxtStyleXScale:
                xScale_ = item.real();
                break;
            case AcDb::kDxfAngle:
                oblique_ = item.real();
                break;
            case AcDb::kDxfTxtStyleFlags:
                flagBits_ = static_cast<Adesk::UInt8>(item.integer());
                break;
            case AcDb::kDxfTxtStylePSize:
                priorSize_ = item.real();
                break;
            case AcDb::kDxfTextFontFile:
                fileName_ = item.text();
                break;
            case AcDb::kDxfTextBigFontFile:
                bigFontFileName_ = item.text();
                break;
            default:
                break;
        }
    });
    return es != Acad::eOk ? es : bad;
}

// --- linetypes -------------------------------------------------------------------------

ACRX_DXF_DEFINE_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT, 0, 0,
                        LTYPE, ObjectDBX)

AcDbLinetypeTableRecord::AcDbLinetypeTableRecord() = default;
AcDbLinetypeTableRecord::~AcDbLinetypeTableRecord() = default;

Acad::ErrorStatus AcDbLinetypeTableRecord::comments(ACHAR*& s) const {
    s = newString(comments_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLinetypeTableRecord::comments(const ACHAR*& s) const {
    s = comments_.c_str();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* s) {
    comments_ = s ? s : L"";
    return Acad::eOk;
}
double AcDbLinetypeTableRecord::patternLength() const {
    return patternLength_;
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setPatternLength(double length) {
    patternLength_ = length;
    return Acad::eOk;
}
int AcDbLinetypeTableRecord::numDashes() const {
    return static_cast<int>(dashes_.size());
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setNumDashes(int count) {
    if (count < 0 || count > 12) return Acad::eOutOfRange;
    dashes_.resize(count);
    return Acad::eOk;
}
double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index >= 0 && index < numDashes() ? dashes_[index] : 0.0;
}
Acad::ErrorStatus AcDbLinetypeTableRecord::setDashLengthAt(int index, double value) {
    if (index < 0 || index >= numDashes()) return Acad::eInvalidIndex;
    dashes_[index] = value;
    return Acad::eOk;
}
bool AcDbLinetypeTableRecord::isScaledToFit() const {
    return scaledToFit_;
}
void AcDbLinetypeTableRecord::setIsScaledToFit(bool v) {
    scaledToFit_ = v;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(comments_.c_str());
    filer->writeDouble(patternLength_);
    filer->writeBool(scaledToFit_);
    filer->writeInt32(numDashes());
    for (double d : dashes_) filer->writeDouble(d);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    ACHAR* comments = nullptr;
    Adesk::Int32 n = 0;
    filer->readString(&comments);
    filer->readDouble(&patternLength_);
    filer->readBool(&scaledToFit_);
    filer->readInt32(&n);
    if (comments) comments_ = comments;
    acutDelString(comments);
    dashes_.clear();
    elements_.clear();  // the binary drawing keeps the dashes alone
    for (Adesk::Int32 i = 0; i < n && i < 12 && filer->filerStatus() == Acad::eOk; ++i) {
        double d = 0;
        filer->readDouble(&d);
        dashes_.push_back(d);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbLinetypeTableRecord");
    writeNameAndFlags(filer, *this, flags());
    filer->writeString(AcDb::kDxfDescription, comments_.c_str());
    filer->writeInt16(AcDb::kDxfLinetypeAlign, 65);
    filer->writeInt16(AcDb::kDxfLinetypePDC, static_cast<Adesk::Int16>(numDashes()));
    filer->writeDouble(AcDb::kDxfReal, patternLength_);
    for (size_t i = 0; i < dashes_.size(); ++i) {
        filer->writeDouble(AcDb::kDxfDashLength, dashes_[i]);
        DashElement e = i < elements_.size() ? elements_[i] : DashElement{};
        filer->writeInt16(static_cast<AcDb::DxfCode>(74), e.flags);
        if (!(e.flags & 6)) continue;
        filer->writeInt16(static_cast<AcDb::DxfCode>(75), e.shape);
        filer->writeObjectId(static_cast<AcDb::DxfCode>(340), e.style);
        filer->writeDouble(static_cast<AcDb::DxfCode>(46), e.scale);
        filer->writeDouble(static_cast<AcDb::DxfCode>(50), e.rotation);
        filer->writeDouble(static_cast<AcDb::DxfCode>(44), e.xOffset);
        filer->writeDouble(static_cast<AcDb::DxfCode>(45), e.yOffset);
        if (e.flags & 2) filer->writeString(static_cast<AcDb::DxfCode>(9), e.text.c_str());
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbLinetypeTableRecord")) return Acad::eOk;
    Acad::ErrorStatus bad = Acad::eOk;
    bool sawDash = false;
    es = readClassItems(filer, [&](const DxfItem& item) {
        if (readNameOrFlags(*this, item, bad)) return;
        switch (item.code()) {
            case AcDb::kDxfDescription:
                comments_ = item.text();
                break;
            case AcDb::kDxfReal:
                patternLength_ = item.real();
                break;
            case AcDb::kDxfDashLength:
                if (!sawDash) {
                    dashes_.clear();
                    elements_.clear();
                }
                sawDash = true;
                if (dashes_.size() < 12) {
                    dashes_.push_back(item.real());
                    elements_.emplace_back();
                }
                break;
            default:
                if (!sawDash || elements_.empty()) break;
                switch (DashElement& e = elements_.back(); item.code()) {
                    case 74:
                        e.flags = static_cast<Adesk::Int16>(item.integer());
                        break;
                    case 75:
                        e.shape = static_cast<Adesk::Int16>(item.integer());
                        break;
                    case 340:
                        e.style = item.id();
                        break;
                    case 46:
                        e.scale = item.real();
                        break;
                    case 50:
                        e.rotation = item.real();
                        break;
                    case 44:
                        e.xOffset = item.real();
                        break;
                    case 45:
                        e.yOffset = item.real();
                        break;
                    case 9:
                        e.text = item.text();
                        break;
                    default:
                        break;
                }
                break;
        }
    });
    return es != Acad::eOk ? es : bad;
}

// --- registered applications -------------------------------------------------------------

ACRX_DXF_DEFINE_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT, 0, 0,
                        APPID, ObjectDBX)

AcDbRegAppTableRecord::AcDbRegAppTableRecord() = default;
AcDbRegAppTableRecord::~AcDbRegAppTableRecord() = default;

Acad::ErrorStatus AcDbRegAppTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbRegAppTableRecord");
    writeNameAndFlags(filer, *this, flags());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbRegAppTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbRegAppTableRecord")) return Acad::eOk;
    Acad::ErrorStatus bad = Acad::eOk;
    es = readClassItems(filer, [&](const DxfItem& item) { readNameOrFlags(*this, item, bad); });
    return es != Acad::eOk ? es : bad;
}
