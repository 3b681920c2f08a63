// Attribute definitions (in block definitions) and attributes (of block references).

#include "adslib.h"
#include "dbents.h"
#include "dbfiler.h"
#include "runtime/drawing/dxf_item.h"
#include "runtime/drawing/enum_values.h"

using namespace kelvo::drawing;

namespace {

ACHAR* newString(const std::wstring& s) {
    ACHAR* out = nullptr;
    acutNewString(s.c_str(), out);
    return out;
}

// Attribute flags: 1 invisible, 2 constant, 4 verify, 8 preset.
Adesk::Int16 withFlag(Adesk::Int16 flags, int bit, bool on) {
    return static_cast<Adesk::Int16>(on ? flags | bit : flags & ~bit);
}

}  // namespace

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText)

AcDbAttributeDefinition::AcDbAttributeDefinition() = default;
AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text,
                                                 const ACHAR* tag, const ACHAR* prompt,
                                                 AcDbObjectId style)
    : AcDbText(position, text, style), tag_(tag ? tag : L""), prompt_(prompt ? prompt : L"") {}
AcDbAttributeDefinition::~AcDbAttributeDefinition() = default;

ACHAR* AcDbAttributeDefinition::tag() const { return newString(tag_); }
const ACHAR* AcDbAttributeDefinition::tagConst() const { return tag_.c_str(); }
Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!tag || !*tag || std::wstring(tag).find(L' ') != std::wstring::npos) return Acad::eInvalidInput;
    tag_ = tag;
    return Acad::eOk;
}
ACHAR* AcDbAttributeDefinition::prompt() const { return newString(prompt_); }
const ACHAR* AcDbAttributeDefinition::promptConst() const { return prompt_.c_str(); }
Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    prompt_ = prompt ? prompt : L"";
    return Acad::eOk;
}
bool AcDbAttributeDefinition::isInvisible() const { return flags_ & 1; }
bool AcDbAttributeDefinition::isConstant() const { return flags_ & 2; }
bool AcDbAttributeDefinition::isVerifiable() const { return flags_ & 4; }
bool AcDbAttributeDefinition::isPreset() const { return flags_ & 8; }
Acad::ErrorStatus AcDbAttributeDefinition::setInvisible(bool v) { flags_ = withFlag(flags_, 1, v); return Acad::eOk; }
Acad::ErrorStatus AcDbAttributeDefinition::setConstant(bool v) { flags_ = withFlag(flags_, 2, v); return Acad::eOk; }
Acad::ErrorStatus AcDbAttributeDefinition::setVerifiable(bool v) { flags_ = withFlag(flags_, 4, v); return Acad::eOk; }
Acad::ErrorStatus AcDbAttributeDefinition::setPreset(bool v) { flags_ = withFlag(flags_, 8, v); return Acad::eOk; }
Adesk::Int16 AcDbAttributeDefinition::flags() const { return flags_; }

// A definition shows its tag.
Adesk::Boolean AcDbAttributeDefinition::subWorldDraw(AcGiWorldDraw* wd) {
    std::wstring value = textStringConst();
    AcDbText copy(position(), tag_.c_str(), textStyle(), height(), rotation());
    copy.setNormal(normal());
    copy.setWidthFactor(widthFactor());
    copy.setOblique(oblique());
    return copy.worldDraw(wd);
}

Acad::ErrorStatus AcDbAttributeDefinition::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbText::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(tag_.c_str());
    filer->writeString(prompt_.c_str());
    filer->writeInt16(flags_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttributeDefinition::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbText::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    ACHAR* tag = nullptr;
    ACHAR* prompt = nullptr;
    filer->readString(&tag);
    filer->readString(&prompt);
    filer->readInt16(&flags_);
    tag_ = tag ? tag : L"";
    prompt_ = prompt ? prompt : L"";
    acutDelString(tag);
    acutDelString(prompt);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbText");
    dxfOutTextFields(filer);
    filer->writeString(AcDb::kDxfSubclass, L"AcDbAttributeDefinition");
    filer->writeString(AcDb::kDxfAttributePrompt, prompt_.c_str());
    filer->writeString(AcDb::kDxfAttributeTag, tag_.c_str());
    filer->writeInt16(AcDb::kDxfInt16, flags_);
    filer->writeInt16(static_cast<AcDb::DxfCode>(74), static_cast<Adesk::Int16>(verticalMode()));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (filer->atSubclassData(L"AcDbText")) {
        es = dxfInTextFields(filer);
        if (es != Acad::eOk) return es;
    }
    if (!filer->atSubclassData(L"AcDbAttributeDefinition")) return Acad::eOk;
    return readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 2: tag_ = item.text(); break;
            case 3: prompt_ = item.text(); break;
            case 70: flags_ = static_cast<Adesk::Int16>(item.integer()); break;
            case 74:
                if (kelvo::drawing::isTextVertMode(item.integer()))
                    setVerticalMode(static_cast<AcDb::TextVertMode>(item.integer()));
                break;
            default: break;
        }
    });
}

// --- attributes --------------------------------------------------------------------------

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbAttribute, AcDbText)

AcDbAttribute::AcDbAttribute() = default;
AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                             AcDbObjectId style)
    : AcDbText(position, text, style), tag_(tag ? tag : L"") {}
AcDbAttribute::~AcDbAttribute() = default;

ACHAR* AcDbAttribute::tag() const { return newString(tag_); }
const ACHAR* AcDbAttribute::tagConst() const { return tag_.c_str(); }
Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!tag || !*tag) return Acad::eInvalidInput;
    tag_ = tag;
    return Acad::eOk;
}
bool AcDbAttribute::isInvisible() const { return flags_ & 1; }
Acad::ErrorStatus AcDbAttribute::setInvisible(bool v) { flags_ = withFlag(flags_, 1, v); return Acad::eOk; }
bool AcDbAttribute::isConstant() const { return flags_ & 2; }
bool AcDbAttribute::isVerifiable() const { return flags_ & 4; }
bool AcDbAttribute::isPreset() const { return flags_ & 8; }
Adesk::Int16 AcDbAttribute::flags() const { return flags_; }

Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* def,
                                                       const AcGeMatrix3d& xform) {
    if (!def) return Acad::eNullObjectPointer;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    setPosition(def->position());
    setAlignmentPoint(def->alignmentPoint());
    setNormal(def->normal());
    setHeight(def->height() > 0 ? def->height() : 1.0);
    setRotation(def->rotation());
    setWidthFactor(def->widthFactor());
    setOblique(def->oblique());
    setTextStyle(def->textStyle());
    setHorizontalMode(def->horizontalMode());
    setVerticalMode(def->verticalMode());
    setTextString(def->textStringConst());
    tag_ = def->tagConst();
    flags_ = def->flags();
    setPropertiesFrom(def);
    return transformBy(xform);
}

Adesk::Boolean AcDbAttribute::subWorldDraw(AcGiWorldDraw* wd) {
    if (isInvisible()) return true;
    return AcDbText::subWorldDraw(wd);
}

Acad::ErrorStatus AcDbAttribute::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus es = AcDbText::dwgOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(tag_.c_str());
    filer->writeInt16(flags_);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttribute::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbText::dwgInFields(filer);
    if (es != Acad::eOk) return es;
    ACHAR* tag = nullptr;
    filer->readString(&tag);
    filer->readInt16(&flags_);
    tag_ = tag ? tag : L"";
    acutDelString(tag);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttribute::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer);
    if (es != Acad::eOk) return es;
    filer->writeString(AcDb::kDxfSubclass, L"AcDbText");
    dxfOutTextFields(filer);
    filer->writeString(AcDb::kDxfSubclass, L"AcDbAttribute");
    filer->writeString(AcDb::kDxfAttributeTag, tag_.c_str());
    filer->writeInt16(AcDb::kDxfInt16, flags_);
    filer->writeInt16(static_cast<AcDb::DxfCode>(74), static_cast<Adesk::Int16>(verticalMode()));
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttribute::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dxfInFields(filer);
    if (es != Acad::eOk) return es;
    if (filer->atSubclassData(L"AcDbText")) {
        es = dxfInTextFields(filer);
        if (es != Acad::eOk) return es;
    }
    if (!filer->atSubclassData(L"AcDbAttribute")) return Acad::eOk;
    return readClassItems(filer, [&](const DxfItem& item) {
        switch (item.code()) {
            case 2: tag_ = item.text(); break;
            case 70: flags_ = static_cast<Adesk::Int16>(item.integer()); break;
            case 74:
                if (kelvo::drawing::isTextVertMode(item.integer()))
                    setVerticalMode(static_cast<AcDb::TextVertMode>(item.integer()));
                break;
            default: break;
        }
    });
}
