// The connection's rules that LISP cannot easily reach: the same-database test, the
// lock-conflict retry, the open statuses, and the compaction box and its computer name.
#include <gtest/gtest.h>
#include <unistd.h>

#include <climits>
#include <filesystem>
#include <fstream>

#include "dao.h"
#include "database/current_connection.h"
#include "database/database_functions.h"
#include "database/db_connection.h"
#include "database/error_report.h"
#include "database/lock_retry.h"
#include "module_test_support.h"
#include "utf8.h"

namespace kelvo::database {
namespace {

namespace fs = std::filesystem;

TEST(DatabaseConnection, SameDatabaseIgnoresCaseAndSlashesAndTakesSubstrings) {
    const std::wstring open = L"/work/Projects/Plant.mdb";
    EXPECT_TRUE(pathNamesDatabase(L"/work/Projects/Plant.mdb", open));
    EXPECT_TRUE(pathNamesDatabase(L"/WORK/projects/plant.MDB", open));
    EXPECT_TRUE(pathNamesDatabase(L"\\work\\Projects\\Plant.mdb", open));
    EXPECT_TRUE(pathNamesDatabase(L"plant.mdb", open));
    EXPECT_TRUE(pathNamesDatabase(L"ant.m", open));  // a substring, however short
    EXPECT_FALSE(pathNamesDatabase(L"/work/Projects/Plant.mdb.bak", open));
    EXPECT_FALSE(pathNamesDatabase(L"other.mdb", open));
    EXPECT_FALSE(pathNamesDatabase(L"", open));
    EXPECT_FALSE(isSameDatabase(nullptr, open));
}

// Throws the listed DAO codes one per attempt, then succeeds.
struct ScriptedAttempt {
    std::vector<long> codes;
    int calls = 0;
    void operator()() {
        if (calls < static_cast<int>(codes.size())) {
            const long code = codes[static_cast<std::size_t>(calls++)];
            throw new CDaoException(code, L"scripted");
        }
        ++calls;
    }
};

TEST(DatabaseConnection, LockConflictsAreRetriedOtherErrorsAreNot) {
    for (long code : {3009L, 3046L, 3158L, 3164L, 3186L, 3187L, 3188L, 3189L, 3202L, 3211L,
                      3212L, 3218L, 3225L, 3260L, 3261L}) {
        EXPECT_TRUE(isLockConflict(code)) << code;
    }
    for (long code : {3021L, 3022L, 3027L, 3043L, 3343L, 3190L, 3262L}) {
        EXPECT_FALSE(isLockConflict(code)) << code;
    }
    ScriptedAttempt conflicted{{3260, 3218}};
    EXPECT_EQ(runWithLockRetry(std::ref(conflicted)), 3);
    ScriptedAttempt failed{{3260, 3022}};
    try {
        runWithLockRetry(std::ref(failed));
        ADD_FAILURE() << "the duplicate key should travel on";
    } catch (CDaoException* error) {
        EXPECT_EQ(error->daoCode(), 3022);
        error->Delete();
    }
    EXPECT_EQ(failed.calls, 2);
}

TEST(DatabaseConnection, TwentyConflictsEndTheRetry) {
    ScriptedAttempt locked{std::vector<long>(25, 3260)};
    try {
        runWithLockRetry(std::ref(locked));
        ADD_FAILURE() << "the twentieth conflict should travel on";
    } catch (CDaoException* error) {
        EXPECT_EQ(error->daoCode(), 3260);
        error->Delete();
    }
    EXPECT_EQ(locked.calls, kMaxLockAttempts);
}

TEST(DatabaseConnection, ErrorReportPrintsEachCodeAsItsOwnText) {
    test::CapturedOutput printed;
    recordAndPrintError(dao::kDiskOrNetwork, L"Disk or network error.");
    // The two texts follow each other with nothing between them.
    EXPECT_EQ(printed.text(),
              L"\nA disk or network error occurred while trying to access the database."
              L"Try the command again. If it continues to not work, try restarting AutoCAD. If "
              L"that does not fix the error, try restarting your computer.");
    EXPECT_EQ(lastErrorText(), L"(3043) Disk or network error.");

    test::CapturedOutput quiet;
    recordAndPrintError(dao::kNoCurrentRecord, L"No current record.");
    EXPECT_EQ(quiet.text(), L"");
    EXPECT_EQ(lastErrorText(), L"(3021) No current record.");

    test::CapturedOutput other;
    recordAndPrintError(dao::kDuplicateKey, L"Duplicate.");
    EXPECT_EQ(other.text(), L"\nKelvo Error: Duplicate.");
    resetLastErrorText();
}

class DatabaseFiles : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  ("kelvo-db-" + std::to_string(::getpid()) + "-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }
    std::wstring path(const char* name) const { return fromUtf8((folder_ / name).string()); }

    fs::path folder_;
};

TEST_F(DatabaseFiles, OpenAnswersNameRepairOrNothing) {
    CDBConnection connection;
    ASSERT_TRUE(connection.create(path("a.mdb")));
    EXPECT_FALSE(connection.isOpen());  // create closes at once
    EXPECT_FALSE(connection.create(path("a.mdb")));
    long code = 0;
    std::wstring text;
    connection.lastError(code, text);
    EXPECT_EQ(code, dao::kDatabaseExists);

    EXPECT_EQ(connection.open(path("a.mdb"), false), path("a.mdb"));
    EXPECT_FALSE(connection.hasError());
    EXPECT_TRUE(connection.canUpdate());
    EXPECT_EQ(connection.open(path("a.mdb"), true), path("a.mdb"));
    EXPECT_FALSE(connection.canUpdate());

    std::ofstream(folder_ / "text.mdb") << "not a database\n";
    EXPECT_EQ(connection.open(path("text.mdb"), false), CDBConnection::kRepair);
    EXPECT_TRUE(connection.hasError());
    EXPECT_FALSE(connection.isOpen());
    EXPECT_EQ(connection.open(path("missing.mdb"), false), L"");
    connection.lastError(code, text);
    EXPECT_EQ(code, dao::kFileNotFound);
}

TEST_F(DatabaseFiles, AClosedDatabaseIsNeverTakenForTheFileAPathNames) {
    fs::create_directories(folder_ / "data");
    CDBConnection maker;
    ASSERT_TRUE(maker.create(path("data/plant.mdb")));
    const auto connect = [](const std::wstring& file) {
        return test::call(kvConnect, test::texts({file.c_str()}));
    };
    ASSERT_EQ(connect(path("data/plant.mdb")).result, L"T");
    EXPECT_EQ(connect(L"lant.mdb").result, L"T");  // a part of the open database's path
    EXPECT_EQ(currentPath(), path("data/plant.mdb"));
    test::call(kvCloseDb);
    const auto missing = connect(L"lant.mdb");
    EXPECT_EQ(missing.result, L"nil");
    EXPECT_NE(missing.printed.find(L"Could not find file"), std::wstring::npos);
    EXPECT_EQ(currentPath(), L"");
    ASSERT_EQ(connect(path("data/plant.mdb")).result, L"T");  // the same object again
    deleteAllConnections();
}

TEST_F(DatabaseFiles, ReadOnlyDatabaseRefusesWritesWithoutRunningThem) {
    CDBConnection connection;
    ASSERT_TRUE(connection.create(path("r.mdb")));
    connection.open(path("r.mdb"), false);
    long affected = 0;
    ASSERT_TRUE(connection.execute(L"CREATE TABLE T (n LONG)", affected));
    connection.open(path("r.mdb"), true);
    EXPECT_FALSE(connection.execute(L"INSERT INTO T (n) VALUES (1)", affected));
    long code = 0;
    std::wstring text;
    connection.lastError(code, text);
    EXPECT_EQ(code, dao::kReadOnly);
    connection.open(path("r.mdb"), false);
    ASSERT_TRUE(connection.openTable(L"T", L""));
    long count = -1;
    ASSERT_TRUE(connection.recordCount(count));
    EXPECT_EQ(count, 0);
}

// Another connection changes a record between the read and the replace: a replace that
// writes a field the other changed is refused (DAO 3197) rather than writing back the old
// value unseen, and leaves the record as committed for the next read; one that writes only
// fields nobody changed goes through. Every action statement is retried on locked files.
TEST_F(DatabaseFiles, StaleReplaceIsRefusedAndTheRecordIsReadAgain) {
    CDBConnection mine, other;
    ASSERT_TRUE(mine.create(path("s.mdb")));
    ASSERT_EQ(mine.open(path("s.mdb"), false), path("s.mdb"));
    ASSERT_EQ(other.open(path("s.mdb"), false), path("s.mdb"));
    long affected = 0;
    ASSERT_TRUE(mine.execute(
        L"CREATE TABLE T (id LONG CONSTRAINT PrimaryKey PRIMARY KEY, a LONG, b LONG)", affected));
    ASSERT_TRUE(mine.execute(L"INSERT INTO T (id, a, b) VALUES (1, 10, 20)", affected));
    ASSERT_TRUE(mine.openTable(L"T", L"PrimaryKey"));
    VariantArray record;
    ASSERT_TRUE(mine.moveFirst(record));

    ASSERT_TRUE(other.execute(L"UPDATE T SET a = 11", affected));
    EXPECT_EQ(affected, 1);
    VariantArray written;
    EXPECT_FALSE(mine.replace({COleVariant(L"a"), COleVariant(static_cast<long>(99))}, written));
    long code = 0;
    std::wstring text;
    mine.lastError(code, text);
    EXPECT_EQ(code, dao::kWriteConflict);
    ASSERT_TRUE(mine.readRecord(record));
    ASSERT_EQ(record.size(), 6u);
    EXPECT_EQ(record[3].lVal, 11);  // the other connection's value, kept

    // Only b, which nobody else changed: written.
    ASSERT_TRUE(other.execute(L"UPDATE T SET a = 12", affected));
    EXPECT_TRUE(mine.replace({COleVariant(L"b"), COleVariant(static_cast<long>(21))}, written));
    ASSERT_TRUE(mine.readRecord(record));
    EXPECT_EQ(record[3].lVal, 12);
    EXPECT_EQ(record[5].lVal, 21);
}

// The computer name the compaction box shows, or empty when it does not fit the
// 15-character buffer (terminator included) and no box is shown.
std::wstring boxComputerName() {
    char name[HOST_NAME_MAX + 1] = {};
    if (::gethostname(name, sizeof name - 1) != 0) return {};
    const std::wstring wide = fromUtf8(name);
    return wide.size() < 15 ? wide : std::wstring();
}

TEST_F(DatabaseFiles, CompactionFailureShowsTheBoxOnlyWhenAsked) {
    CDBConnection made;
    ASSERT_TRUE(made.create(path("src.mdb")));
    ASSERT_TRUE(made.create(path("dst.mdb")));
    test::ScriptedUi ui;
    resetLastErrorText();

    auto outcome = test::call(kvCompact, test::texts({path("src.mdb").c_str(),
                                                      path("dst.mdb").c_str()}));
    EXPECT_EQ(outcome.result, std::to_wstring(dao::kDatabaseExists));
    EXPECT_NE(outcome.printed.find(L"\nKelvo Error: "), std::wstring::npos);
    EXPECT_EQ(lastErrorText().rfind(L"(3204) ", 0), 0u);
    EXPECT_TRUE(ui->boxes.empty());

    auto args = test::texts({path("src.mdb").c_str(), path("dst.mdb").c_str()});
    args->rbnext->rbnext = acutBuildList(RTT, 0);
    outcome = test::call(kvCompact, args);
    EXPECT_EQ(outcome.result, std::to_wstring(dao::kDatabaseExists));
    const std::wstring name = boxComputerName();
    if (name.empty()) {
        EXPECT_TRUE(ui->boxes.empty());
    } else {
        ASSERT_EQ(ui->boxes.size(), 1u);
        EXPECT_EQ(ui->boxes[0].caption, L"Database Error");
        EXPECT_EQ(ui->boxes[0].style, MB_ICONERROR);
        EXPECT_EQ(ui->boxes[0].text, dao::errorText(dao::kDatabaseExists) +
                                         L"\n(Your computer name is " + name + L".)");
    }

    outcome = test::call(kvCompact, test::texts({path("src.mdb").c_str(),
                                                 path("new.mdb").c_str()}));
    EXPECT_EQ(outcome.result, L"\"OK\"");
    EXPECT_TRUE(fs::exists(folder_ / "new.mdb"));
}

}  // namespace
}  // namespace kelvo::database
