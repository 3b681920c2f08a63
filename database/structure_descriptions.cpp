// Building and reading the structure descriptions.
#include "database/structure_descriptions.h"

#include <cstdint>
#include <utility>

#include "adslib.h"
#include "database/table_cursor.h"

namespace kelvo::database::structure {

// A key field as the model's Fields text writes it: a leading "-" when descending.
std::wstring keyFieldName(const CDaoIndexFieldInfo& field) {
    return field.m_bDescending ? L"-" + field.m_strName : field.m_strName;
}

void addFieldDescription(ResultBuilder& out, const CDaoFieldInfo& field) {
    out.beginList();
    out.addPair(L"Name", field.m_strName);
    out.addPair(L"Type", static_cast<std::int32_t>(field.m_nType));
    out.addPair(L"Size", static_cast<std::int32_t>(field.m_lSize));
    out.addPair(L"Attributes", static_cast<std::int32_t>(field.m_lAttributes));
    out.addBoolPair(L"Required", field.m_bRequired);
    out.addBoolPair(L"AllowZeroLength", field.m_bAllowZeroLength);
    out.addPair(L"DefaultValue", field.m_strDefaultValue);
    out.addPair(L"OrdinalPosition", static_cast<std::int32_t>(field.m_nOrdinal));
    out.endList();
}

void addIndexDescription(ResultBuilder& out, const CDaoIndexInfo& index) {
    out.beginList();
    out.addPair(L"Name", index.m_strName);
    out.beginList();
    out.addText(L"Fields");
    for (const CDaoIndexFieldInfo& field : index.m_fieldInfos) out.addText(keyFieldName(field));
    out.endList();
    out.addBoolPair(L"Primary", index.m_bPrimary);
    out.addBoolPair(L"Unique", index.m_bUnique || index.m_bPrimary);
    out.addBoolPair(L"Required", index.m_bRequired || index.m_bPrimary);
    out.addBoolPair(L"IgnoreNulls", index.m_bIgnoreNulls);
    out.endList();
}

void returnRelationDescription(const CDaoRelationInfo& relation) {
    ResultBuilder out;
    out.open();
    out.addPair(L"Name", relation.m_strName);
    out.addPair(L"Table", relation.m_strTable);
    out.addPair(L"ForeignTable", relation.m_strForeignTable);
    out.addPair(L"Attributes", static_cast<std::int32_t>(relation.m_lAttributes));
    out.beginList();
    out.addText(L"Fields");
    for (const CDaoRelationFieldInfo& pair : relation.m_fieldInfos) {
        out.addPair(pair.m_strName, pair.m_strForeignName);
    }
    out.endList();
    out.close();
}

void returnTexts(const std::vector<std::wstring>& texts) {
    if (texts.empty()) return;
    ResultBuilder out;
    out.open();
    for (const std::wstring& text : texts) out.addText(text);
    out.close();
}

// The key fields of a new index: one name, or a list of names; a leading "-" makes the
// field descending. False when the argument is neither.
bool readKeyFields(Cursor& cursor, std::vector<CDaoIndexFieldInfo>& fields) {
    std::wstring name;
    auto add = [&fields](std::wstring text) {
        CDaoIndexFieldInfo field;
        field.m_bDescending = !text.empty() && text.front() == L'-';
        field.m_strName = field.m_bDescending ? text.substr(1) : std::move(text);
        fields.push_back(std::move(field));
    };
    if (readText(cursor, name)) {
        add(std::move(name));
        return true;
    }
    Cursor at = cursor;
    if (!readListBegin(at)) return false;
    while (!readListEnd(at)) {
        if (!readText(at, name)) return false;
        add(std::move(name));
    }
    cursor = at;
    return !fields.empty();
}

// Reads a description, a list of properties, at the cursor. False (the cursor unmoved)
// when it is not such a list.
static bool readProperties(Cursor& cursor, std::vector<Property>& properties) {
    Cursor at = cursor;
    if (!readListBegin(at)) return false;
    while (!readListEnd(at)) {
        Property property;
        if (!readListBegin(at) || !readText(at, property.key)) return false;
        if (at != nullptr && at->restype == RTDOTE) at = at->rbnext;
        for (; at != nullptr && at->restype != RTLE; at = at->rbnext) {
            if (at->restype == RTLB || at->restype == RTDOTE) return false;
            property.values.push_back(at);
        }
        if (!readListEnd(at)) return false;
        properties.push_back(std::move(property));
    }
    cursor = at;
    return true;
}

// A list of descriptions (nil for none).
bool readDescriptions(Cursor& cursor, std::vector<Description>& descriptions) {
    if (cursor != nullptr && cursor->restype == RTNIL) {
        cursor = cursor->rbnext;
        return true;
    }
    Cursor at = cursor;
    if (!readListBegin(at)) return false;
    while (!readListEnd(at)) {
        descriptions.emplace_back();
        if (!readProperties(at, descriptions.back())) return false;
    }
    cursor = at;
    return true;
}

static bool propertyText(const Property& property, std::wstring& out) {
    Cursor at = property.values.size() == 1 ? property.values[0] : nullptr;
    return at != nullptr && at->restype == RTSTR && readText(at, out);
}

template <class Integer>
static bool propertyInteger(const Property& property, Integer& out) {
    Cursor at = property.values.size() == 1 ? property.values[0] : nullptr;
    std::int32_t value = 0;
    if (at == nullptr || at->restype == RTSTR || !readInteger(at, value)) return false;
    out = static_cast<Integer>(value);
    return true;
}

// ("key" . T) is true; ("key"), ("key" . nil) and ("key" . 0) are false.
static bool propertyBoolean(const Property& property, bool& out) {
    if (property.values.size() > 1) return false;
    out = false;
    if (property.values.empty()) return true;
    const resbuf& value = *property.values[0];
    if (value.restype == RTSHORT)
        out = value.resval.rint != 0;
    else if (value.restype == RTLONG)
        out = value.resval.rlong != 0;
    else
        out = value.restype != RTNIL;
    return true;
}

// A field description as kv_structure gives it. False for an unknown key, a value of
// the wrong kind, or no Name or Type.
bool fieldFromDescription(const Description& description, CDaoFieldInfo& field) {
    field.m_bAllowZeroLength = true;
    bool named = false, typed = false;
    for (const Property& property : description) {
        bool ok = false;
        if (sameTableName(property.key, L"Name")) {
            ok = named = propertyText(property, field.m_strName);
        } else if (sameTableName(property.key, L"Type")) {
            ok = typed = propertyInteger(property, field.m_nType);
        } else if (sameTableName(property.key, L"Size")) {
            ok = propertyInteger(property, field.m_lSize);
        } else if (sameTableName(property.key, L"Attributes")) {
            ok = propertyInteger(property, field.m_lAttributes);
        } else if (sameTableName(property.key, L"Required")) {
            ok = propertyBoolean(property, field.m_bRequired);
        } else if (sameTableName(property.key, L"AllowZeroLength")) {
            ok = propertyBoolean(property, field.m_bAllowZeroLength);
        } else if (sameTableName(property.key, L"DefaultValue")) {
            ok = propertyText(property, field.m_strDefaultValue);
        } else if (sameTableName(property.key, L"OrdinalPosition")) {
            ok = propertyInteger(property, field.m_nOrdinal);  // the list's order rules
        }
        if (!ok) return false;
    }
    return named && typed;
}

// An index description as kv_list_indexes gives it with its describe flag.
bool indexFromDescription(const Description& description, CDaoIndexInfo& index) {
    bool named = false;
    for (const Property& property : description) {
        bool ok = false;
        if (sameTableName(property.key, L"Name")) {
            ok = named = propertyText(property, index.m_strName);
        } else if (sameTableName(property.key, L"Fields")) {
            ok = !property.values.empty();
            for (const resbuf* value : property.values) {
                std::wstring name;
                Cursor at = value;
                ok = ok && value->restype == RTSTR && readText(at, name);
                CDaoIndexFieldInfo field;
                field.m_bDescending = !name.empty() && name.front() == L'-';
                field.m_strName = field.m_bDescending ? name.substr(1) : name;
                index.m_fieldInfos.push_back(std::move(field));
            }
        } else if (sameTableName(property.key, L"Primary")) {
            ok = propertyBoolean(property, index.m_bPrimary);
        } else if (sameTableName(property.key, L"Unique")) {
            ok = propertyBoolean(property, index.m_bUnique);
        } else if (sameTableName(property.key, L"Required")) {
            ok = propertyBoolean(property, index.m_bRequired);
        } else if (sameTableName(property.key, L"IgnoreNulls")) {
            ok = propertyBoolean(property, index.m_bIgnoreNulls);
        }
        if (!ok) return false;
    }
    index.m_nFields = static_cast<short>(index.m_fieldInfos.size());
    return named && !index.m_fieldInfos.empty();
}

}  // namespace kelvo::database::structure
