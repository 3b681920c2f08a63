// kv_list_tables, kv_structure, kv_list_indexes, kv_indexFields, kv_indexUnique,
// kv_field_required, kv_attributes, kv_relationCount, kv_relationExists and
// kv_relationInfo: what a table is made of, read through the table definitions and the
// database's relations.
//
// A field description is an association list in the order of the data access object
// model's Field properties:
//   (("Name" . "sName") ("Type" . 10) ("Size" . 50) ("Attributes" . 34) ("Required")
//    ("AllowZeroLength" . T) ("DefaultValue" . "") ("OrdinalPosition" . 1))
// An index description:
//   (("Name" . "PrimaryKey") ("Fields" "ixA") ("Primary" . T) ("Unique" . T)
//    ("Required" . T) ("IgnoreNulls"))
// where a descending key field is written with a leading "-", as the model's Fields text.
// A relation description:
//   (("Name" . "AB") ("Table" . "A") ("ForeignTable" . "B") ("Attributes" . 4096)
//    ("Fields" ("ixA" . "lA")))
// with the field pairs as (field of Table . field of ForeignTable).
#include "database/structure_functions.h"

#include <string>
#include <utility>
#include <vector>

#include "adslib.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "bridge/value_list.h"
#include "dao.h"
#include "database/current_connection.h"
#include "database/db_connection.h"
#include "database/error_report.h"
#include "database/table_cursor.h"

namespace kelvo::database {
namespace {

constexpr std::size_t kMaxNameLength = 64;

// The current connection when its database is open; otherwise says so and answers null.
CDBConnection* openDatabase() {
    CDBConnection* connection = currentConnection();
    if (connection != nullptr && connection->isOpen()) return connection;
    acutPrintf(L"%s", L"\nKelvo Error: No database is open.");
    return nullptr;
}

// Runs `work` on the open database; its failure goes through the error report. The work
// sets the LISP result itself, once it has everything.
template <class Work>
void onDatabase(Work&& work) {
    CDBConnection* connection = openDatabase();
    if (connection == nullptr) return;
    if (!connection->withDatabase(std::forward<Work>(work))) reportError(connection);
}

[[noreturn]] void fail(long code, std::wstring text) {
    throw new CDaoException(code, std::move(text));
}

// The engine's "Item not found in this collection." with what was looked for.
[[noreturn]] void failNotFound(const std::wstring& what) {
    std::wstring text = dao::errorText(dao::kItemNotFound);
    if (!text.empty() && text.back() == L'.') text.pop_back();
    fail(dao::kItemNotFound, text + L": " + what + L".");
}

// Refuses a name the engine does not allow for a table, field, index or relation.
void checkName(const std::wstring& name) {
    bool valid = !name.empty() && name.size() <= kMaxNameLength && name.front() != L' ' &&
                 name.find_first_of(L".![]") == std::wstring::npos;
    for (wchar_t c : name) valid = valid && c >= L' ';
    if (!valid) fail(dao::kInvalidName, dao::errorText(dao::kInvalidName, {name}));
}

// Opens the definition of `table`: 3078 when the database has no such table.
void openTableDef(CDaoTableDef& definition, const std::wstring& table) {
    checkName(table);
    try {
        definition.Open(table.c_str());
    } catch (CDaoException* error) {
        if (error->daoCode() != dao::kItemNotFound) throw;
        error->Delete();
        fail(dao::kInputTableNotFound, dao::errorText(dao::kInputTableNotFound, {table}));
    }
}

CDaoFieldInfo findField(CDaoTableDef& definition, const std::wstring& field) {
    checkName(field);
    const short count = definition.GetFieldCount();
    for (short i = 0; i < count; ++i) {
        CDaoFieldInfo info;
        definition.GetFieldInfo(i, info, AFX_DAO_ALL_INFO);
        if (sameTableName(info.m_strName, field)) return info;
    }
    failNotFound(L"table '" + definition.GetName() + L"' has no field '" + field + L"'");
}

std::vector<CDaoIndexInfo> indexesOf(CDaoTableDef& definition) {
    std::vector<CDaoIndexInfo> indexes(static_cast<std::size_t>(definition.GetIndexCount()));
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        definition.GetIndexInfo(static_cast<int>(i), indexes[i], AFX_DAO_ALL_INFO);
    }
    return indexes;
}

CDaoIndexInfo findIndex(CDaoTableDef& definition, const std::wstring& index) {
    checkName(index);
    for (CDaoIndexInfo& info : indexesOf(definition)) {
        if (sameTableName(info.m_strName, index)) return info;
    }
    failNotFound(L"table '" + definition.GetName() + L"' has no index '" + index + L"'");
}

std::vector<CDaoRelationInfo> relationsOf(CDaoDatabase& database) {
    std::vector<CDaoRelationInfo> relations(static_cast<std::size_t>(database.GetRelationCount()));
    for (std::size_t i = 0; i < relations.size(); ++i) {
        database.GetRelationInfo(static_cast<int>(i), relations[i], AFX_DAO_ALL_INFO);
    }
    return relations;
}

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

// Refuses a change on a database that cannot be updated (the engine's 3027).
void requireWritable(CDaoDatabase& database) {
    if (!database.CanUpdate()) fail(dao::kReadOnly, dao::errorText(dao::kReadOnly));
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

// One entry of a description: ("key" . value), ("key" value ...) or ("key").
struct Property {
    std::wstring key;
    std::vector<const resbuf*> values;
};

// Reads a description, a list of properties, at the cursor. False (the cursor unmoved)
// when it is not such a list.
bool readProperties(Cursor& cursor, std::vector<Property>& properties) {
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
bool readDescriptions(Cursor& cursor, std::vector<std::vector<Property>>& descriptions) {
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

bool propertyText(const Property& property, std::wstring& out) {
    Cursor at = property.values.size() == 1 ? property.values[0] : nullptr;
    return at != nullptr && at->restype == RTSTR && readText(at, out);
}

template <class Integer>
bool propertyInteger(const Property& property, Integer& out) {
    Cursor at = property.values.size() == 1 ? property.values[0] : nullptr;
    std::int32_t value = 0;
    if (at == nullptr || at->restype == RTSTR || !readInteger(at, value)) return false;
    out = static_cast<Integer>(value);
    return true;
}

// ("key" . T) is true; ("key"), ("key" . nil) and ("key" . 0) are false.
bool propertyBoolean(const Property& property, bool& out) {
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
bool fieldFromDescription(const std::vector<Property>& description, CDaoFieldInfo& field) {
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
bool indexFromDescription(const std::vector<Property>& description, CDaoIndexInfo& index) {
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

// Reads the text arguments in order: too few arguments or a value that is not a text
// give the guard's status.
int readNames(HandlerArgs& args, std::initializer_list<std::wstring*> names) {
    for (std::wstring* name : names) {
        if (args.atEnd()) return kTooFewArgs;
        if (!readText(args.cursor(), *name)) return kWrongArgType;
    }
    return kArgOk;
}

int listTablesHandler() {
    HandlerArgs args;
    onDatabase([](CDaoDatabase& database) {
        std::vector<std::wstring> names(static_cast<std::size_t>(database.GetTableDefCount()));
        for (std::size_t i = 0; i < names.size(); ++i) {
            CDaoTableDefInfo info;
            database.GetTableDefInfo(static_cast<int>(i), info, AFX_DAO_PRIMARY_INFO);
            names[i] = std::move(info.m_strName);
        }
        returnTexts(names);
    });
    return kArgOk;
}

int structureHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        ResultBuilder out;
        out.open();
        const short count = definition.GetFieldCount();
        for (short i = 0; i < count; ++i) {
            CDaoFieldInfo info;
            definition.GetFieldInfo(i, info, AFX_DAO_ALL_INFO);
            addFieldDescription(out, info);
        }
        out.close();
    });
    return kArgOk;
}

int listIndexesHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    bool describe = false;
    if (!args.atEnd() && !readBoolean(args.cursor(), describe)) return kWrongArgType;
    onDatabase([&](CDaoDatabase& database) {
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        const std::vector<CDaoIndexInfo> indexes = indexesOf(definition);
        if (indexes.empty()) return;
        ResultBuilder out;
        out.open();
        for (const CDaoIndexInfo& index : indexes) {
            if (describe) {
                addIndexDescription(out, index);
            } else {
                out.addText(index.m_strName);
            }
        }
        out.close();
    });
    return kArgOk;
}

int indexFieldsHandler() {
    HandlerArgs args;
    std::wstring table, index;
    if (int status = readNames(args, {&table, &index}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        const CDaoIndexInfo info = findIndex(definition, index);
        std::vector<std::wstring> names;
        for (const CDaoIndexFieldInfo& field : info.m_fieldInfos) {
            names.push_back(keyFieldName(field));
        }
        returnTexts(names);
    });
    return kArgOk;
}

int indexUniqueHandler() {
    HandlerArgs args;
    std::wstring table, index;
    if (int status = readNames(args, {&table, &index}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        const CDaoIndexInfo info = findIndex(definition, index);
        if (info.m_bUnique || info.m_bPrimary) acedRetT();
    });
    return kArgOk;
}

int fieldRequiredHandler() {
    HandlerArgs args;
    std::wstring table, field;
    if (int status = readNames(args, {&table, &field}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        if (findField(definition, field).m_bRequired) acedRetT();
    });
    return kArgOk;
}

int attributesHandler() {
    HandlerArgs args;
    std::wstring table, field;
    if (int status = readNames(args, {&table, &field}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        returnInteger(findField(definition, field).m_lAttributes);
    });
    return kArgOk;
}

int relationCountHandler() {
    HandlerArgs args;
    std::wstring table;
    const bool ofTable = !args.atEnd();
    if (ofTable && !readText(args.cursor(), table)) return kWrongArgType;
    onDatabase([&](CDaoDatabase& database) {
        long count = 0;
        if (!ofTable) {
            count = database.GetRelationCount();
        } else {
            CDaoTableDef definition(&database);
            openTableDef(definition, table);
            for (const CDaoRelationInfo& relation : relationsOf(database)) {
                if (sameTableName(relation.m_strTable, table) ||
                    sameTableName(relation.m_strForeignTable, table)) {
                    ++count;
                }
            }
        }
        returnInteger(count);
    });
    return kArgOk;
}

int relationExistsHandler() {
    HandlerArgs args;
    std::wstring first, second;
    if (int status = readNames(args, {&first}); status != kArgOk) return status;
    const bool byTables = !args.atEnd();
    if (byTables && !readText(args.cursor(), second)) return kWrongArgType;
    onDatabase([&](CDaoDatabase& database) {
        if (byTables) {
            CDaoTableDef primary(&database), foreign(&database);
            openTableDef(primary, first);
            openTableDef(foreign, second);
        } else {
            checkName(first);
        }
        for (const CDaoRelationInfo& relation : relationsOf(database)) {
            const bool found = byTables ? sameTableName(relation.m_strTable, first) &&
                                              sameTableName(relation.m_strForeignTable, second)
                                        : sameTableName(relation.m_strName, first);
            if (found) {
                acedRetT();
                return;
            }
        }
    });
    return kArgOk;
}

int relationInfoHandler() {
    HandlerArgs args;
    if (args.atEnd()) return kTooFewArgs;
    std::wstring name;
    std::int32_t position = -1;
    const bool byName = args.cursor()->restype == RTSTR;
    if (byName ? !readText(args.cursor(), name) : !readInteger(args.cursor(), position)) {
        return kWrongArgType;
    }
    onDatabase([&](CDaoDatabase& database) {
        const std::vector<CDaoRelationInfo> relations = relationsOf(database);
        if (!byName) {
            if (position < 0 || position >= static_cast<std::int32_t>(relations.size())) {
                failNotFound(L"there is no relation at position " + std::to_wstring(position));
            }
            returnRelationDescription(relations[static_cast<std::size_t>(position)]);
            return;
        }
        checkName(name);
        for (const CDaoRelationInfo& relation : relations) {
            if (sameTableName(relation.m_strName, name)) {
                returnRelationDescription(relation);
                return;
            }
        }
        failNotFound(L"there is no relation '" + name + L"'");
    });
    return kArgOk;
}

int createTableHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    if (args.atEnd()) return kTooFewArgs;
    std::vector<std::vector<Property>> fieldDescriptions, indexDescriptions;
    if (!readDescriptions(args.cursor(), fieldDescriptions)) return kWrongArgType;
    if (!args.atEnd() && !readDescriptions(args.cursor(), indexDescriptions)) {
        return kWrongArgType;
    }
    std::vector<CDaoFieldInfo> fields(fieldDescriptions.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!fieldFromDescription(fieldDescriptions[i], fields[i])) return kBadArgData;
    }
    std::vector<CDaoIndexInfo> indexes(indexDescriptions.size());
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        if (!indexFromDescription(indexDescriptions[i], indexes[i])) return kBadArgData;
    }
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        checkName(table);
        CDaoTableDef definition(&database);
        definition.Create(table.c_str());
        for (CDaoFieldInfo& field : fields) {
            checkName(field.m_strName);
            definition.CreateField(field);
        }
        for (CDaoIndexInfo& index : indexes) {
            checkName(index.m_strName);
            for (const CDaoIndexFieldInfo& key : index.m_fieldInfos) {
                bool found = false;
                for (const CDaoFieldInfo& field : fields) {
                    found = found || sameTableName(field.m_strName, key.m_strName);
                }
                if (!found) {
                    failNotFound(L"index '" + index.m_strName + L"' names no field of table '" +
                                 table + L"': '" + key.m_strName + L"'");
                }
            }
            definition.CreateIndex(index);
        }
        definition.Append();
        acedRetT();
    });
    return kArgOk;
}

int deleteTableHandler() {
    HandlerArgs args;
    std::wstring table;
    if (int status = readNames(args, {&table}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        const std::wstring name = definition.GetName();
        definition.Close();
        database.DeleteTableDef(name.c_str());
        acedRetT();
    });
    return kArgOk;
}

int renameTableHandler() {
    HandlerArgs args;
    std::wstring table, newName;
    if (int status = readNames(args, {&table, &newName}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        checkName(newName);
        definition.SetName(newName.c_str());
        acedRetT();
    });
    return kArgOk;
}

int createIndexHandler() {
    HandlerArgs args;
    std::wstring table;
    CDaoIndexInfo index;
    if (int status = readNames(args, {&table, &index.m_strName}); status != kArgOk) {
        return status;
    }
    if (args.atEnd()) return kTooFewArgs;
    if (!readKeyFields(args.cursor(), index.m_fieldInfos)) return kWrongArgType;
    index.m_nFields = static_cast<short>(index.m_fieldInfos.size());
    for (bool* flag :
         {&index.m_bUnique, &index.m_bPrimary, &index.m_bIgnoreNulls, &index.m_bRequired}) {
        if (!args.atEnd() && !readBoolean(args.cursor(), *flag)) return kWrongArgType;
    }
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        CDaoTableDef definition(&database);
        openTableDef(definition, table);
        checkName(index.m_strName);
        for (const CDaoIndexFieldInfo& field : index.m_fieldInfos)
            findField(definition, field.m_strName);
        definition.CreateIndex(index);
        acedRetT();
    });
    return kArgOk;
}

int relationDeleteHandler() {
    HandlerArgs args;
    std::wstring name;
    if (int status = readNames(args, {&name}); status != kArgOk) return status;
    onDatabase([&](CDaoDatabase& database) {
        requireWritable(database);
        checkName(name);
        for (const CDaoRelationInfo& relation : relationsOf(database)) {
            if (sameTableName(relation.m_strName, name)) {
                database.DeleteRelation(relation.m_strName.c_str());
                acedRetT();
                return;
            }
        }
        failNotFound(L"there is no relation '" + name + L"'");
    });
    return kArgOk;
}

}  // namespace

int kvListTables() {
    return runDatabaseCall(listTablesHandler);
}
int kvStructure() {
    return runDatabaseCall(structureHandler);
}
int kvListIndexes() {
    return runDatabaseCall(listIndexesHandler);
}
int kvIndexFields() {
    return runDatabaseCall(indexFieldsHandler);
}
int kvIndexUnique() {
    return runDatabaseCall(indexUniqueHandler);
}
int kvFieldRequired() {
    return runDatabaseCall(fieldRequiredHandler);
}
int kvAttributes() {
    return runDatabaseCall(attributesHandler);
}
int kvRelationCount() {
    return runDatabaseCall(relationCountHandler);
}
int kvRelationExists() {
    return runDatabaseCall(relationExistsHandler);
}
int kvRelationInfo() {
    return runDatabaseCall(relationInfoHandler);
}
int kvCreateTable() {
    return runDatabaseCall(createTableHandler);
}
int kvDeleteTable() {
    return runDatabaseCall(deleteTableHandler);
}
int kvRenameTable() {
    return runDatabaseCall(renameTableHandler);
}
int kvCreateIndex() {
    return runDatabaseCall(createIndexHandler);
}
int kvRelationDelete() {
    return runDatabaseCall(relationDeleteHandler);
}

}  // namespace kelvo::database
