// Finding what the structure functions work on, with one clear error when it is not there.
#include "database/structure_lookup.h"

#include "adslib.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "database/current_connection.h"
#include "database/table_cursor.h"

namespace kelvo::database::structure {
namespace {

constexpr std::size_t kMaxNameLength = 64;

}  // namespace

// The current connection when its database is open; otherwise says so and answers null.
CDBConnection* openDatabase() {
    CDBConnection* connection = currentConnection();
    if (connection != nullptr && connection->isOpen()) return connection;
    acutPrintf(L"%s", L"\nKelvo Error: No database is open.");
    return nullptr;
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

// Refuses a change on a database that cannot be updated (the engine's 3027).
void requireWritable(CDaoDatabase& database) {
    if (!database.CanUpdate()) fail(dao::kReadOnly, dao::errorText(dao::kReadOnly));
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

}  // namespace kelvo::database::structure
