// The English messages of the DAO errors the engine raises. Inserts are written |1, |2 ...
// in the message templates and filled in order.
#include "dao_errors.h"

#include <algorithm>
#include <iterator>

#include "dao_exception.h"

namespace dao {
namespace {

struct Message {
    long code;
    const wchar_t* text;
};

// clang-format off
constexpr Message kMessages[] = {
    {kInvalidArgument, L"Invalid argument."},
    {kDatabaseExclusive, L"Database '|1' is exclusively locked."},
    {kTableLockedOnOpen, L"You tried to lock table '|1' while opening it, but the table cannot be locked because it is currently in use. Wait a moment, and then try the operation again."},
    {kTableExists, L"Table '|1' already exists."},
    {kObjectNotFound, L"The Microsoft Jet database engine could not find the object '|1'. Make sure the object exists and that you spell its name and the path name correctly."},
    {kObjectExists, L"Object '|1' already exists."},
    {kNotAnIndex, L"'|1' isn't an index in this table. Look in the Indexes collection of the TableDef object to determine the valid index names."},
    {kNoCurrentIndex, L"Operation invalid without a current index."},
    {kUpdateWithoutEdit, L"Update or CancelUpdate without AddNew or Edit."},
    {kNoCurrentRecord, L"No current record."},
    {kDuplicateKey, L"The changes you requested to the table were not successful because they would create duplicate values in the index, primary key, or relationship. Change the data in the field or fields that contain duplicate data, remove the index, or redefine the index to permit duplicate entries and try again."},
    {kFileNotFound, L"Could not find file '|1'."},
    {kDiskFull, L"Not enough space on disk."},
    {kReadOnly, L"Cannot update. Database or object is read-only."},
    {kNotInTransaction, L"You tried to commit or rollback a transaction without first beginning a transaction."},
    {kResourceExceeded, L"System resource exceeded."},
    {kDiskOrNetwork, L"Disk or network error."},
    {kInvalidPath, L"'|1' is not a valid path. Make sure that the path name is spelled correctly and that you are connected to the server on which the file resides."},
    {kFileInUse, L"Could not use '|1'; file already in use."},
    {kSaveLocked, L"Could not save; currently locked by another user."},
    {kCannotOpenDatabase, L"Cannot open database '|1'. It may not be a database that your application recognizes, or the file may be corrupt."},
    {kCannotLockFile, L"Could not lock file."},
    {kCannotOpenFile, L"The Microsoft Jet database engine cannot open the file '|1'. It is already opened exclusively by another user, or you need permission to view its data."},
    {kTooFewParameters, L"Too few parameters. Expected |1."},
    {kSelectNotExecutable, L"Cannot execute a select query."},
    {kUnknownFieldName, L"The Microsoft Jet database engine does not recognize '|1' as a valid field name or expression."},
    {kNotUpdatableQuery, L"Operation must use an updateable query."},
    {kSyntaxMissingOperator, L"Syntax error (missing operator) in query expression '|1'."},
    {kInputTableNotFound, L"The Microsoft Jet database engine cannot find the input table or query '|1'. Make sure it exists and that its name is spelled correctly."},
    {kUndefinedFunction, L"Undefined function '|1' in expression."},
    {kInvalidName, L"'|1' is not a valid name. Make sure that it does not include invalid characters or punctuation and that it is not too long."},
    {kInsertUnknownField, L"The INSERT INTO statement contains the following unknown field name: '|1'. Make sure you have typed the name correctly, and try the operation again."},
    {kInvalidSqlStatement, L"Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'."},
    {kSyntaxFrom, L"Syntax error in FROM clause."},
    {kRecordLockedSave, L"Could not save record; currently locked by another user."},
    {kInvalidBookmark, L"Not a valid bookmark."},
    {kFieldTooSmall, L"The field is too small to accept the amount of data you attempted to add. Try inserting or pasting less data."},
    {kFieldNotUpdatable, L"Field cannot be updated."},
    {kRecordDeleted, L"Record is deleted."},
    {kSaveLockedByUser, L"Could not save; currently locked by user '|1' on machine '|2'."},
    {kReadLockedByUser, L"Could not read; currently locked by user '|1' on machine '|2'."},
    {kUpdateLockedSession, L"Could not update; currently locked by another session on this machine."},
    {kTableLockedByUser, L"Table '|1' is exclusively locked by user '|2' on machine '|3'."},
    {kFieldDefinedTwice, L"Cannot define field more than once."},
    {kOutputTableNotFound, L"Could not find output table '|1'."},
    {kWriteConflict, L"The Microsoft Jet database engine stopped the process because you and another user are attempting to change the same data at the same time."},
    {kRelatedRecordRequired, L"You cannot add or change a record because a related record is required in table '|1'."},
    {kSaveLockedOther, L"Could not save; currently locked by another user."},
    {kDatabaseExists, L"Database already exists."},
    {kTableInUse, L"The database engine could not lock table '|1' because it is already in use by another person or process."},
    {kTableLockedInUse, L"Could not lock table '|1'; currently in use by user '|2' on machine '|3'."},
    {kUpdateLocked, L"Could not update; currently locked."},
    {kInvalidOperation, L"Invalid operation."},
    {kNotSupported, L"Operation is not supported for this type of object."},
    {kUpdateLockedByUser, L"Could not update; currently locked by user '|1' on machine '|2'."},
    {kNoFieldDefined, L"No field defined--cannot append TableDef or Index."},
    {kItemNotFound, L"Item not found in this collection."},
    {kFieldInIndex, L"Cannot delete a field that is part of an index or is needed by the system."},
    {kPrimaryKeyExists, L"Primary key already exists."},
    {kIndexExists, L"Index already exists."},
    {kSyntaxConstraint, L"Syntax error in CONSTRAINT clause."},
    {kSyntaxCreateTable, L"Syntax error in CREATE TABLE statement."},
    {kSyntaxCreateIndex, L"Syntax error in CREATE INDEX statement."},
    {kSyntaxFieldDefinition, L"Syntax error in field definition."},
    {kSyntaxAlterTable, L"Syntax error in ALTER TABLE statement."},
    {kSyntaxDrop, L"Syntax error in DROP TABLE or DROP INDEX statement."},
    {kRequiredNull, L"The field '|1' cannot contain a Null value because the Required property for this field is set to True. Enter a value in this field."},
    {kZeroLength, L"Field '|1' cannot be a zero-length string."},
    {kUnrecognizedFormat, L"Unrecognized database format '|1'."},
    {kQueryTooComplex, L"Query is too complex."},
    {kNameExistsInCollection, L"Cannot append. An object with that name already exists in the collection."},
    {kTableOrConstraintNotFound, L"Cannot find table or constraint."},
    {kTableNotExists, L"Table '|1' does not exist."},
    {kFieldExists, L"Field '|1' already exists in table '|2'."},
    {kObjectInvalid, L"Object invalid or no longer set."},
    {kConversionError, L"Data type conversion error."},
    {kTypeMismatch, L"Data type mismatch in criteria expression."},
    {kEngineInitFailed, L"Couldn't initialize DAO/Jet db engine."},
};
// clang-format on

// Lock conflicts: locked table, record or page, or a user conflict.
constexpr long kLockErrors[] = {3009, 3046, 3158, 3164, 3186, 3187, 3188, 3189,
                                3202, 3211, 3212, 3218, 3225, 3260, 3261};

}  // namespace

std::wstring errorText(long code, std::initializer_list<std::wstring_view> inserts) {
    const auto found = std::find_if(std::begin(kMessages), std::end(kMessages),
                                    [code](const Message& m) { return m.code == code; });
    if (found == std::end(kMessages))
        return L"Reserved error (" + std::to_wstring(code) + L"); there is no message for this error.";
    std::wstring text;
    for (const wchar_t* p = found->text; *p != 0; ++p) {
        if (*p == L'|' && p[1] >= L'1' && p[1] <= L'9') {
            const auto index = static_cast<std::size_t>(p[1] - L'1');
            if (index < inserts.size()) text += *(inserts.begin() + index);
            ++p;
        } else {
            text += *p;
        }
    }
    return text;
}

void throwError(long code, std::initializer_list<std::wstring_view> inserts, int sqliteCode) {
    throw new CDaoException(code, errorText(code, inserts), sqliteCode);
}

bool isLockError(long code) {
    return std::find(std::begin(kLockErrors), std::end(kLockErrors), code) !=
           std::end(kLockErrors);
}

}  // namespace dao
