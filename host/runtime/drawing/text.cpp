// Single-line text. The position is kept in world coordinates; DXF gives the insertion
// and alignment points in the object coordinates of the normal.

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/entity_support.h"
#include "runtime/drawing/extents_draw.h"
#include "runtime/drawing/enum_values.h"

using namespace kelvo::drawing;

namespace {

ACHAR* newString(const std::wstring& s) {
    ACHAR* out = nullptr;
    acutNewString(s.c_str(), out);
    return out;
}

std::wstring styleName(AcDbObjectId id) {
    auto* r = AcDbSymbolTableRecord::cast(peekObject(id));
    return r ? r->name() : L"Standard";
}

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbText, AcDbEntity)

AcDbText::AcDbText() = default;
AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style,
                   double height, double rotation)
    : position_(position),
      alignment_(position),
      rotation_(rotation),
      height_(height),
      text_(text ? text : L""),
      style_(style) {}
AcDbText::~AcDbText() = default;

#define KELVO_SETTER(NAME, MEMBER, TYPE)                      \
    Acad::ErrorStatus AcDbText::NAME(TYPE v) {                \
        if (!isWriteEnabled()) return Acad::eNotOpenForWrite; \
        MEMBER = v;                                           \
        return Acad::eOk;                                     \
    }
KELVO_SETTER(setPosition, position_, const AcGePoint3d&)
KELVO_SETTER(setAlignmentPoint, alignment_, const AcGePoint3d&)
KELVO_SETTER(setThickness, thickness_, double)
KELVO_SETTER(setOblique, oblique_, double)
KELVO_SETTER(setRotation, rotation_, double)
KELVO_SETTER(setTextStyle, style_, AcDbObjectId)
KELVO_SETTER(setHorizontalMode, horizontal_, AcDb::TextHorzMode)
KELVO_SETTER(setVerticalMode, vertical_, AcDb::TextVertMode)
#undef KELVO_SETTER

AcGePoint3d AcDbText::position() const {
    return position_;
}
AcGePoint3d AcDbText::alignmentPoint() const {
    return alignment_;
}
bool AcDbText::isDefaultAlignment() const {
    return horizontal_ == AcDb::kTextLeft && vertical_ == AcDb::kTextBase;
}
AcGeVector3d AcDbText::normal() const {
    return normal_;
}
Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& n) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (n.isZeroLength()) return Acad::eInvalidInput;
    normal_ = n.normal();
    return Acad::eOk;
}
double AcDbText::thickness() const {
    return thickness_;
}
double AcDbText::oblique() const {
    return oblique_;
}
double AcDbText::rotation() const {
    return rotation_;
}
double AcDbText::height() const {
    return height_;
}
Acad::ErrorStatus AcDbText::setHeight(double h) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (h <= 0) return Acad::eInvalidInput;
    height_ = h;
    return Acad::eOk;
}
double AcDbText::widthFactor() const {
    return widthFactor_;
}
Acad::ErrorStatus AcDbText::setWidthFactor(double w) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (w <= 0) return Acad::eInvalidInput;
    widthFactor_ = w;
    return Acad::eOk;
}
ACHAR* AcDbText::textString() const {
    return newString(text_);
}
const ACHAR* AcDbText::textStringConst() const {
    return text_.c_str();
}
Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    text_ = text ? text : L"";
    return Acad::eOk;
}
AcDbObjectId AcDbText::textStyle() const {
    return style_;
}
bool AcDbText::isMirroredInX() const {
    return (generation_ & 2) != 0;
}
bool AcDbText::isMirroredInY() const {
    return (generation_ & 4) != 0;
}
Acad::ErrorStatus AcDbText::mirrorInX(bool m) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    generation_ = static_cast<Adesk::Int16>(m ? generation_ | 2 : generation_ & ~2);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbText::mirrorInY(bool m) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    generation_ = static_cast<Adesk::Int16>(m ? generation_ | 4 : generation_ & ~4);
    return Acad::eOk;
}
AcDb::TextHorzMode AcDbText::horizontalMode() const {
    return horizontal_;
}
AcDb::TextVertMode AcDbText::verticalMode() const {
    return vertical_;
}

// Places the text so that its alignment point is where the mode says (this host's text
// metrics: see textAdvance).
Acad::ErrorStatus AcDbText::adjustAlignment(const AcDbDatabase*) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (isDefaultAlignment()) return Acad::eOk;
    double width = textAdvance(text_.c_str(), height_, widthFactor_);
    double dx = 0, dy = 0;
    switch (horizontal_) {
        case AcDb::kTextCenter:
            dx = -width / 2;
            break;
        case AcDb::kTextRight:
            dx = -width;
            break;
        case AcDb::kTextMid:
            dx = -width / 2;
            break;
        default:
            break;
    }
    switch (vertical_) {
        case AcDb::kTextBottom:
            dy = 0;
            break;
        case AcDb::kTextVertMid:
            dy = -height_ / 2;
            break;
        case AcDb::kTextTop:
            dy = -height_;
            break;
        default:
            break;
    }
    if (horizontal_ == AcDb::kTextMid) dy = -height_ / 2;
    AcGeVector3d x = ocsXAxis(normal_);
    AcGeVector3d y = normal_.crossProduct(x);
    AcGeVector3d dir = x * std::cos(rotation_) + y * std::sin(rotation_);
    AcGeVector3d up = normal_.crossProduct(dir);
    position_ = alignment_ + dir * dx + up * dy;
    return Acad::eOk;
}

Adesk::Boolean AcDbText::subWorldDraw(AcGiWorldDraw* wd) {
    AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
    AcGeVector3d dir = x * std::cos(rotation_) + y * std::sin(rotation_);
    wd->geometry().text(position_, normal_, dir, height_, widthFactor_, oblique_, text_.c_str());
    return true;
}

void AcDbText::subList() const {
    AcDbEntity::subList();
    acutPrintf(L"                  Style = \"%s\"\n", styleName(style_).c_str());
    acutPrintf(L"         start point, X=%10.4f  Y=%10.4f  Z=%10.4f\n", position_.x, position_.y,
               position_.z);
    acutPrintf(L"                 height %10.4f\n", height_);
    acutPrintf(L"                   text %s\n", text_.c_str());
}

Acad::ErrorStatus AcDbText::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker,
                                              const AcGePoint3d&, const AcGePoint3d&,
                                              const AcGeMatrix3d&, AcGePoint3dArray& snaps,
                                              AcDbIntArray&) const {
    if (mode == AcDb::kOsModeIns) snaps.append(isDefaultAlignment() ? position_ : alignment_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetGripPoints(AcGePoint3dArray& grips, AcDbIntArray&,
                                             AcDbIntArray&) const {
    grips.append(position_);
    if (!isDefaultAlignment()) grips.append(alignment_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subMoveGripPointsAt(const AcDbIntArray& indices,
                                                const AcGeVector3d& offset) {
    if (!indices.isEmpty()) {
        position_ += offset;
        alignment_ += offset;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& xform) {
    AcGeVector3d x = ocsXAxis(normal_), y = normal_.crossProduct(x);
    AcGeVector3d dir = x * std::cos(rotation_) + y * std::sin(rotation_);
    AcGeVector3d up = normal_.crossProduct(dir) * height_;
    dir.transformBy(xform);
    up.transformBy(xform);
    position_.transformBy(xform);
    alignment_.transformBy(xform);
    normal_ = transformNormal(normal_, xform);
    if (xform.det() < 0) normal_ = -normal_;
    height_ = up.length();
    AcGeVector3d nx = ocsXAxis(normal_), ny = normal_.crossProduct(nx);
    rotation_ = normalizeAngle(std::atan2(dir.dotProduct(ny), dir.dotProduct(nx)));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
    return AcDbEntity::subGetGeomExtents(extents);
}

Acad::ErrorStatus AcDbText::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writePoint3d(position_);
    filer->writePoint3d(alignment_);
    filer->writeVector3d(normal_);
    filer->writeDouble(thickness_);
    filer->writeDouble(oblique_);
    filer->writeDouble(rotation_);
    filer->writeDouble(height_);
    filer->writeDouble(widthFactor_);
    filer->writeString(text_.c_str());
    filer->writeHardPointerId(style_);
    filer->writeInt16(generation_);
    filer->writeInt16(static_cast<Adesk::Int16>(horizontal_));
    filer->writeInt16(static_cast<Adesk::Int16>(vertical_));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbText::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    ACHAR* text = nullptr;
    AcDbHardPointerId style;
    Adesk::Int16 h = 0, v = 0;
    filer->readPoint3d(&position_);
    filer->readPoint3d(&alignment_);
    filer->readVector3d(&normal_);
    filer->readDouble(&thickness_);
    filer->readDouble(&oblique_);
    filer->readDouble(&rotation_);
    filer->readDouble(&height_);
    filer->readDouble(&widthFactor_);
    filer->readString(&text);
    filer->readHardPointerId(&style);
    filer->readInt16(&generation_);
    filer->readInt16(&h);
    filer->readInt16(&v);
    text_ = text ? text : L"";
    acutDelString(text);
    style_ = style;
    if (filer->filerStatus() == Acad::eOk &&
        (!kelvo::drawing::isTextHorzMode(h) || !kelvo::drawing::isTextVertMode(v)))
        return Acad::eInvalidInput;
    horizontal_ = static_cast<AcDb::TextHorzMode>(h);
    vertical_ = static_cast<AcDb::TextVertMode>(v);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbText::dxfOutTextFields(AcDbDxfFiler* filer) const {
    if (thickness_ != 0) filer->writeDouble(AcDb::kDxfThickness, thickness_);
    filer->writePoint3d(AcDb::kDxfXCoord, wcsToOcs(position_, normal_));
    filer->writeDouble(AcDb::kDxfTxtSize, height_);
    filer->writeString(AcDb::kDxfText, text_.c_str());
    filer->writeDouble(AcDb::kDxfAngle, rotation_);
    filer->writeDouble(AcDb::kDxfTxtStyleXScale, widthFactor_);
    filer->writeDouble(static_cast<AcDb::DxfCode>(51), oblique_);
    filer->writeString(AcDb::kDxfTextStyleName, styleName(style_).c_str());
    filer->writeInt16(AcDb::kDxfRegAppFlags, generation_);
    filer->writeInt16(AcDb::kDxfLinetypeAlign, static_cast<Adesk::Int16>(horizontal_));
    if (!isDefaultAlignment() || filer->includesDefaultValues())
        filer->writePoint3d(static_cast<AcDb::DxfCode>(11), wcsToOcs(alignment_, normal_));
    filer->writeVector3d(AcDb::kDxfNormalX, normal_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbText::dxfInTextFields(AcDbDxfFiler* filer) {
    AcDbDatabase* db = filer->database() ? filer->database() : database();
    if (!db) db = workingDatabase();
    AcGePoint3d ocsPosition = wcsToOcs(position_, normal_);
    AcGePoint3d ocsAlignment = wcsToOcs(alignment_, normal_);
    bool sawAlignment = false;
    Acad::ErrorStatus bad = Acad::eOk;
    Acad::ErrorStatus es = readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 10:
                ocsPosition = item.point();
                break;
            case 11:
                ocsAlignment = item.point();
                sawAlignment = true;
                break;
            case 39:
                thickness_ = item.real();
                break;
            case 40:
                height_ = item.real();
                break;
            case 1:
                text_ = item.text();
                break;
            case 50:
                rotation_ = item.real();
                break;
            case 41:
                widthFactor_ = item.real();
                break;
            case 51:
                oblique_ = item.real();
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
            case 71: generation_ = static_cast<Adesk::Int16>(item.integer()); break;
            case 72:
                if (!kelvo::drawing::isTextHorzMode(item.integer())) bad = Acad::eInvalidInput;
                else horizontal_ = static_cast<AcDb::TextHorzMode>(item.integer());
                break;
            case 73:
                if (!kelvo::drawing::isTextVertMode(item.integer())) bad = Acad::eInvalidInput;
                else vertical_ = static_cast<AcDb::TextVertMode>(item.integer());
                break;
            case 210: normal_ = item.point().asVector().normal(); break;
            default: break;
        }
    });
    if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
    position_ = ocsToWcs(ocsPosition, normal_);
    alignment_ = sawAlignment ? ocsToWcs(ocsAlignment, normal_) : ocsToWcs(ocsAlignment, normal_);
    if (style_.isNull() && db) style_ = db->textstyle();
    if (es == Acad::eOk && height_ <= 0 && db) height_ = db->textsize();
    return es != Acad::eOk ? es : bad;
}

Acad::ErrorStatus AcDbText::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbText");
    dxfOutTextFields(filer);
    filer->writeString(AcDb::kDxfSubclass, L"AcDbText");
    filer->writeInt16(AcDb::kDxfLinetypePDC, static_cast<Adesk::Int16>(vertical_));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbText::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (!filer->atSubclassData(L"AcDbText")) return Acad::eOk;
    es = dxfInTextFields(filer);
    if (es != Acad::eOk) return es;
    if (filer->atSubclassData(L"AcDbText"))
        es = readClassItems(filer, [&](const DxfItem& item) {
            if (item.code() == 73) vertical_ = static_cast<AcDb::TextVertMode>(item.integer());
        });
    return es;
}
