// Multiline text. The contents keep their format codes; text() strips them. Layout uses
// this host's text metrics (see textAdvance): lines break at "\P" and, when a width is
// set, at spaces before the width is exceeded.

#include <sstream>
#include <vector>

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"
#include "runtime/drawing/extents_draw.h"

using namespace kelvo::drawing;

namespace {

// Removes format codes: \P is a paragraph break; \~ a space; \\ \{ \} literal; other
// codes up to their ';' (\f..;, \H..; ...) or a single letter (\L \l \O \o \K \k) are dropped;
// braces group and are dropped.
std::wstring plainText(const std::wstring& s) {
    std::wstring out;
    for (std::size_t i = 0; i < s.size(); ++i) {
        wchar_t c = s[i];
        if (c == L'{' || c == L'}') continue;
        if (c != L'\\' || i + 1 >= s.size()) {
            out += c;
            continue;
        }
        wchar_t code = s[++i];
        switch (code) {
            case L'P':
            case L'n':
                out += L'\n';
                break;
            case L'~':
                out += L' ';
                break;
            case L'\\':
            case L'{':
            case L'}':
                out += code;
                break;
            case L'L':
            case L'l':
            case L'O':
            case L'o':
            case L'K':
            case L'k':
                break;
            default: {
                std::size_t end = s.find(L';', i);
                if (end == std::wstring::npos) return out;
                i = end;
            }
        }
    }
    return out;
}

std::vector<std::wstring> layoutLines(const std::wstring& text, double width, double height) {
    std::vector<std::wstring> lines;
    std::wstringstream paragraphs(text);
    std::wstring paragraph;
    while (std::getline(paragraphs, paragraph, L'\n')) {
        if (width <= 0) {
            lines.push_back(paragraph);
            continue;
        }
        std::wstring line;
        std::wstringstream words(paragraph);
        std::wstring word;
        while (words >> word) {
            std::wstring candidate = line.empty() ? word : line + L" " + word;
            if (!line.empty() && textAdvance(candidate.c_str(), height, 1.0) > width) {
                lines.push_back(line);
                line = word;
            } else {
                line = candidate;
            }
        }
        lines.push_back(line);
    }
    if (lines.empty()) lines.emplace_back();
    return lines;
}

constexpr double kLineSpacing = 5.0 / 3.0;  // baseline to baseline, in text heights

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbMText, AcDbEntity)

AcDbMText::AcDbMText() = default;
AcDbMText::~AcDbMText() = default;

#define KELVO_MTEXT_SETTER(NAME, MEMBER, TYPE)                \
    Acad::ErrorStatus AcDbMText::NAME(TYPE v) {               \
        if (!isWriteEnabled()) return Acad::eNotOpenForWrite; \
        MEMBER = v;                                           \
        return Acad::eOk;                                     \
    }
KELVO_MTEXT_SETTER(setLocation, location_, const AcGePoint3d&)
KELVO_MTEXT_SETTER(setAttachment, attachment_, AttachmentPoint)
KELVO_MTEXT_SETTER(setFlowDirection, flow_, FlowDirection)
KELVO_MTEXT_SETTER(setTextStyle, style_, AcDbObjectId)
KELVO_MTEXT_SETTER(setBackgroundFill, backgroundFill_, bool)
KELVO_MTEXT_SETTER(setUseBackgroundColor, useBackgroundColor_, bool)
KELVO_MTEXT_SETTER(setBackgroundFillColor, backgroundColor_, const AcCmColor&)
#undef KELVO_MTEXT_SETTER

AcGePoint3d AcDbMText::location() const {
    return location_;
}
AcGeVector3d AcDbMText::normal() const {
    return normal_;
}
Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    double angle = rotation();
    normal_ = n.normal();
    return setRotation(angle);
}
AcGeVector3d AcDbMText::direction() const {
    return direction_;
}
Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& d) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    AcGeVector3d inPlane = d - normal_ * d.dotProduct(normal_);
    if (inPlane.isZeroLength()) return Acad::eInvalidInput;
    direction_ = inPlane.normal();
    return Acad::eOk;
}
double AcDbMText::rotation() const {
    AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
    return normalizeAngle(std::atan2(direction_.dotProduct(y), direction_.dotProduct(x)));
}
Acad::ErrorStatus AcDbMText::setRotation(double angle) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
    direction_ = x * std::cos(angle) + y * std::sin(angle);
    return Acad::eOk;
}
double AcDbMText::width() const {
    return width_;
}
Acad::ErrorStatus AcDbMText::setWidth(double w) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (w < 0) return Acad::eNegativeValueNotAllowed;
    width_ = w;
    return Acad::eOk;
}
double AcDbMText::textHeight() const {
    return height_;
}
Acad::ErrorStatus AcDbMText::setTextHeight(double h) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (h <= 0) return Acad::eInvalidInput;
    height_ = h;
    return Acad::eOk;
}
AcDbMText::AttachmentPoint AcDbMText::attachment() const {
    return attachment_;
}
AcDbMText::FlowDirection AcDbMText::flowDirection() const {
    return flow_;
}
AcDbObjectId AcDbMText::textStyle() const {
    return style_;
}
double AcDbMText::lineSpacingFactor() const {
    return lineSpacing_;
}
Acad::ErrorStatus AcDbMText::setLineSpacingFactor(double f) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (f < 0.25 || f > 4.0) return Acad::eOutOfRange;
    lineSpacing_ = f;
    return Acad::eOk;
}
Adesk::Int16 AcDbMText::lineSpacingStyle() const {
    return lineSpacingStyle_;
}
Acad::ErrorStatus AcDbMText::setLineSpacingStyle(Adesk::Int16 style) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (style != 1 && style != 2) return Acad::eOutOfRange;
    lineSpacingStyle_ = style;
    return Acad::eOk;
}
ACHAR* AcDbMText::contents() const {
    ACHAR* out = nullptr;
    acutNewString(contents_.c_str(), out);
    return out;
}
const ACHAR* AcDbMText::contentsConst() const {
    return contents_.c_str();
}
Acad::ErrorStatus AcDbMText::setContents(const ACHAR* text) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    contents_ = text ? text : L"";
    return Acad::eOk;
}
std::wstring AcDbMText::text() const {
    return plainText(contents_);
}

double AcDbMText::actualHeight() const {
    auto lines = layoutLines(text(), width_, height_);
    return height_ +
           (static_cast<double>(lines.size()) - 1) * height_ * kLineSpacing * lineSpacing_;
}

double AcDbMText::actualWidth() const {
    double widest = 0;
    for (const std::wstring& line : layoutLines(text(), width_, height_))
        widest = std::max(widest, textAdvance(line.c_str(), height_, 1.0));
    return widest;
}

bool AcDbMText::backgroundFillOn() const {
    return backgroundFill_;
}
bool AcDbMText::useBackgroundColorOn() const {
    return useBackgroundColor_;
}
double AcDbMText::getBackgroundScaleFactor() const {
    return backgroundScale_;
}
Acad::ErrorStatus AcDbMText::setBackgroundScaleFactor(double scale) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (scale < 1.0 || scale > 5.0) return Acad::eOutOfRange;
    backgroundScale_ = scale;
    return Acad::eOk;
}
AcCmColor AcDbMText::getBackgroundFillColor() const {
    return backgroundColor_;
}

Adesk::Boolean AcDbMText::subWorldDraw(AcGiWorldDraw* wd) {
    auto lines = layoutLines(text(), width_, height_);
    double total = actualHeight();
    double boxWidth = width_ > 0 ? width_ : actualWidth();
    int column = (attachment_ - 1) % 3;  // 0 left, 1 centre, 2 right
    int row = (attachment_ - 1) / 3;     // 0 top, 1 middle, 2 bottom
    AcGeVector3d up = normal_.crossProduct(direction_);
    double top = row == 0 ? 0 : row == 1 ? total / 2 : total;
    AcGePoint3d origin = location_ + up * top - direction_ * (boxWidth * column / 2.0);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        double lineWidth = textAdvance(lines[i].c_str(), height_, 1.0);
        double dx = (boxWidth - lineWidth) * column / 2.0;
        double dy = height_ + static_cast<double>(i) * height_ * kLineSpacing * lineSpacing_;
        AcGePoint3d base = origin + direction_ * dx - up * dy;
        wd->geometry().text(base, normal_, direction_, height_, 1.0, 0.0, lines[i].c_str());
    }
    return true;
}

void AcDbMText::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"         Location:  X=%10.4f  Y=%10.4f  Z=%10.4f\n", location_.x, location_.y,
               location_.z);
    acutPrintf(L"         Width:     %10.4f\n         Text height: %10.4f\n", width_, height_);
    acutPrintf(L"         Contents:  %s\n", contents_.c_str());
}

// One text entity per line, placed as drawn.
Acad::ErrorStatus AcDbMText::subExplode(AcDbVoidPtrArray& entitySet) const {
    auto lines = layoutLines(text(), width_, height_);
    double total = actualHeight();
    double boxWidth = width_ > 0 ? width_ : actualWidth();
    int column = (attachment_ - 1) % 3, row = (attachment_ - 1) / 3;
    AcGeVector3d up = normal_.crossProduct(direction_);
    AcGePoint3d origin = location_ +
                         up * (row == 0   ? 0
                               : row == 1 ? total / 2
                                          : total) -
                         direction_ * (boxWidth * column / 2.0);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        double dx = (boxWidth - textAdvance(lines[i].c_str(), height_, 1.0)) * column / 2.0;
        double dy = height_ + static_cast<double>(i) * height_ * kLineSpacing * lineSpacing_;
        auto* t =
            new AcDbText(origin + direction_ * dx - up * dy, lines[i].c_str(), style_, height_);
        t->setNormal(normal_);
        t->setRotation(rotation());
        t->setPropertiesFrom(this);
        entitySet.append(t);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                              AcDbIntArray&) const {
    grips.append(location_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                 const AcGeVector3d& offset) {
    if (indices.contains(0)) location_ += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                               const AcGePoint3d&, const AcGePoint3d&,
                                               const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                               AcDbIntArray&) const {
    if (mode == AcDb::kOsModeIns) snaps.append(location_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d dir = direction_ * height_;
    AcGeVector3d w = direction_ * width_;
    dir.transformBy(xform);
    w.transformBy(xform);
    location_.transformBy(xform);
    normal_ = transformNormal(normal_, xform);
    height_ = dir.length();
    width_ = w.length();
    direction_ = dir.normal();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
    return AcDbEntity::subGetGeomExtents(extents);
}

Acad::ErrorStatus AcDbMText::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writePoint3d(location_);
    filer->writeVector3d(normal_);
    filer->writeVector3d(direction_);
    filer->writeDouble(width_);
    filer->writeDouble(height_);
    filer->writeDouble(lineSpacing_);
    filer->writeInt16(static_cast<Adesk::Int16>(attachment_));
    filer->writeInt16(static_cast<Adesk::Int16>(flow_));
    filer->writeHardPointerId(style_);
    filer->writeString(contents_.c_str());
    filer->writeBool(backgroundFill_);
    filer->writeBool(useBackgroundColor_);
    filer->writeDouble(backgroundScale_);
    filer->writeInt16(backgroundColor_.colorIndex());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbMText::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    Adesk::Int16 attachment = 1, flow = 1, color = 256;
    AcDbHardPointerId style;
    ACHAR* contents = nullptr;
    filer->readPoint3d(&location_);
    filer->readVector3d(&normal_);
    filer->readVector3d(&direction_);
    filer->readDouble(&width_);
    filer->readDouble(&height_);
    filer->readDouble(&lineSpacing_);
    filer->readInt16(&attachment);
    filer->readInt16(&flow);
    filer->readHardPointerId(&style);
    filer->readString(&contents);
    filer->readBool(&backgroundFill_);
    filer->readBool(&useBackgroundColor_);
    filer->readDouble(&backgroundScale_);
    filer->readInt16(&color);
    contents_ = contents ? contents : L"";
    acutDelString(contents);
    attachment_ = static_cast<AttachmentPoint>(attachment);
    flow_ = static_cast<FlowDirection>(flow);
    style_ = style;
    backgroundColor_.setColorIndex(color);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbMText::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbMText");
    filer->writePoint3d(AcDb::kDxfXCoord, location_);
    filer->writeDouble(AcDb::kDxfReal, height_);
    filer->writeDouble(AcDb::kDxfTxtStyleXScale, width_);
    filer->writeInt16(AcDb::kDxfRegAppFlags, static_cast<Adesk::Int16>(attachment_));
    filer->writeInt16(AcDb::kDxfLinetypeAlign, static_cast<Adesk::Int16>(flow_));
    // Contents longer than 250 characters go in 3 groups ahead of the last part in 1.
    std::size_t pos = 0;
    while (contents_.size() - pos > 250) {
        filer->writeString(AcDb::kDxfAttributePrompt, contents_.substr(pos, 250).c_str());
        pos += 250;
    }
    filer->writeString(AcDb::kDxfText, contents_.substr(pos).c_str());
    auto* style = AcDbSymbolTableRecord::cast(peekObject(style_));
    filer->writeString(AcDb::kDxfTextStyleName, style ? style->name().c_str() : L"Standard");
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    filer->writeVector3d(static_cast<AcDb::DxfCode>(11), direction_);
    filer->writeInt16(static_cast<AcDb::DxfCode>(73), lineSpacingStyle_);
    filer->writeDouble(static_cast<AcDb::DxfCode>(44), lineSpacing_);
    if (backgroundFill_) {
        filer->writeInt32(AcDb::kDxfInt32, useBackgroundColor_ ? 3 : 1);
        filer->writeInt16(static_cast<AcDb::DxfCode>(63), backgroundColor_.colorIndex());
        filer->writeDouble(static_cast<AcDb::DxfCode>(45), backgroundScale_);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbMText::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbMText")) return Acad::eOk;
    AcDbDatabase* db = filer->database() ? filer->database() : database();
    if (!db) db = workingDatabase();
    std::wstring head, last;
    bool sawText = false, sawDirection = false;
    double angle = 0;
    bool sawAngle = false;
    Acad::ErrorStatus bad = Acad::eOk;
    bool embedded = false;  // an embedded object's groups repeat codes of the text's own
    es = readClassItems(filer, [&](const DxfItem& item) {
        if (embedded || item.code() == 101) {
            embedded = true;
            return;
        }
        switch (item.code()) {
            case 10:
                location_ = item.point();
                break;
            case 40:
                height_ = item.real();
                break;
            case 41:
                width_ = item.real();
                break;
            case 71:
                attachment_ = static_cast<AttachmentPoint>(std::clamp(item.integer(), 1, 9));
                break;
            case 72:
                flow_ = static_cast<FlowDirection>(item.integer());
                break;
            case 3:
                head += item.text();
                sawText = true;
                break;
            case 1:
                last = item.text();
                sawText = true;
                break;
            case 7: {
                auto* table =
                    AcDbSymbolTable::cast(peekObject(db ? db->textStyleTableId() : AcDbObjectId()));
                AcDbObjectId id;
                if (!table || table->getAt(item.text().c_str(), id) != Acad::eOk)
                    bad = Acad::eInvalidTextStyle;
                else
                    style_ = id;
                break;
            }
            case 210:
                normal_ = item.point().asVector().normal();
                break;
            case 11:
                direction_ = item.point().asVector().normal();
                sawDirection = true;
                break;
            case 50:
                angle = item.real();
                sawAngle = true;
                break;
            case 44:
                lineSpacing_ = item.real();
                break;
            case 73:
                lineSpacingStyle_ = static_cast<Adesk::Int16>(item.integer() == 2 ? 2 : 1);
                break;
            case 90:
                backgroundFill_ = item.integer() & 1;
                useBackgroundColor_ = (item.integer() & 2) != 0;
                break;
            case 63:
                backgroundColor_.setColorIndex(static_cast<Adesk::Int16>(item.integer()));
                break;
            case 45:
                backgroundScale_ = item.real();
                break;
            default:
                break;
        }
    });
    if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
    if (sawText) contents_ = head + last;
    if (sawAngle && !sawDirection) {
        AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
        direction_ = x * std::cos(angle) + y * std::sin(angle);
    }
    if (direction_.isZeroLength()) direction_ = ocsXAxis(normal_);
    if (style_.isNull() && db) style_ = db->textstyle();
    if (height_ <= 0 && db) height_ = db->textsize();
    return es != Acad::eOk ? es : bad;
}
