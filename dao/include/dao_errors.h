// The DAO error numbers the engine raises, their English messages, and the throw helper
// every part of the engine uses, so that one number always reads the same.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace dao {

constexpr long kInvalidArgument = 3001;
constexpr long kDatabaseExclusive = 3006;
constexpr long kTableLockedOnOpen = 3009;
constexpr long kTableExists = 3010;
constexpr long kObjectNotFound = 3011;
constexpr long kObjectExists = 3012;
constexpr long kNotAnIndex = 3015;
constexpr long kNoCurrentIndex = 3019;
constexpr long kUpdateWithoutEdit = 3020;
constexpr long kNoCurrentRecord = 3021;
constexpr long kDuplicateKey = 3022;
constexpr long kFileNotFound = 3024;
constexpr long kDiskFull = 3026;
constexpr long kReadOnly = 3027;
constexpr long kNotInTransaction = 3034;
constexpr long kResourceExceeded = 3035;
constexpr long kDiskOrNetwork = 3043;
constexpr long kInvalidPath = 3044;
constexpr long kFileInUse = 3045;
constexpr long kSaveLocked = 3046;
constexpr long kCannotOpenDatabase = 3049;
constexpr long kCannotLockFile = 3050;
constexpr long kCannotOpenFile = 3051;
constexpr long kTooFewParameters = 3061;
constexpr long kSelectNotExecutable = 3065;
constexpr long kUnknownFieldName = 3070;
constexpr long kNotUpdatableQuery = 3073;
constexpr long kSyntaxMissingOperator = 3075;
constexpr long kInputTableNotFound = 3078;
constexpr long kUndefinedFunction = 3085;
constexpr long kInvalidName = 3125;
constexpr long kInsertUnknownField = 3127;
constexpr long kInvalidSqlStatement = 3129;
constexpr long kSyntaxFrom = 3131;
constexpr long kRecordLockedSave = 3158;
constexpr long kInvalidBookmark = 3159;
constexpr long kFieldTooSmall = 3163;
constexpr long kFieldNotUpdatable = 3164;
constexpr long kRecordDeleted = 3167;
constexpr long kSaveLockedByUser = 3186;
constexpr long kReadLockedByUser = 3187;
constexpr long kUpdateLockedSession = 3188;
constexpr long kTableLockedByUser = 3189;
constexpr long kFieldDefinedTwice = 3191;
constexpr long kOutputTableNotFound = 3192;
constexpr long kWriteConflict = 3197;
constexpr long kRelatedRecordRequired = 3201;
constexpr long kSaveLockedOther = 3202;
constexpr long kDatabaseExists = 3204;
constexpr long kTableInUse = 3211;
constexpr long kTableLockedInUse = 3212;
constexpr long kUpdateLocked = 3218;
constexpr long kInvalidOperation = 3219;
constexpr long kNotSupported = 3251;
constexpr long kUpdateLockedByUser = 3260;
constexpr long kNoFieldDefined = 3264;
constexpr long kItemNotFound = 3265;
constexpr long kFieldInIndex = 3280;
constexpr long kPrimaryKeyExists = 3283;
constexpr long kIndexExists = 3284;
constexpr long kSyntaxConstraint = 3289;
constexpr long kSyntaxCreateTable = 3290;
constexpr long kSyntaxCreateIndex = 3291;
constexpr long kSyntaxFieldDefinition = 3292;
constexpr long kSyntaxAlterTable = 3293;
constexpr long kSyntaxDrop = 3295;
constexpr long kRequiredNull = 3314;
constexpr long kZeroLength = 3315;
constexpr long kUnrecognizedFormat = 3343;
constexpr long kQueryTooComplex = 3360;
constexpr long kNameExistsInCollection = 3367;
constexpr long kTableOrConstraintNotFound = 3371;
constexpr long kTableNotExists = 3376;
constexpr long kFieldExists = 3380;
constexpr long kObjectInvalid = 3420;
constexpr long kConversionError = 3421;
constexpr long kTypeMismatch = 3464;
constexpr long kEngineInitFailed = 3633;

// The English message of a DAO error, with its inserts filled in order (the table name,
// the path ...). An unknown number gives "Reserved error (<n>); there is no message for
// this error."
std::wstring errorText(long code, std::initializer_list<std::wstring_view> inserts = {});

// Throws new CDaoException(code, errorText(code, inserts), sqliteCode).
[[noreturn]] void throwError(long code, std::initializer_list<std::wstring_view> inserts = {},
                             int sqliteCode = 0);

// Whether a DAO error is a lock conflict (a locked table, record or page, or a user
// conflict): the errors a caller retries on.
bool isLockError(long code);

}  // namespace dao
