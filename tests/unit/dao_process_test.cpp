// Several processes writing one database file: lock conflicts come back as DAO lock
// errors at once, and a caller that retries on them loses no update.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "dao_test_support.h"

namespace {

using daotest::daoCode;

class DaoProcesses : public daotest::DaoTest {};

constexpr int kRounds = 60;

// Runs one write until it goes through, retrying on lock errors as the database layer
// does. Returns the lock errors met, or minus the number of any other error.
int retried(CDaoRecordset& rs, const std::function<void()>& write) {
    for (int attempt = 0; attempt < 2000; ++attempt) {
        try {
            write();
            return attempt;
        } catch (CDaoException* e) {
            const long code = e->daoCode();
            e->Delete();
            if (!dao::isLockError(code)) return -static_cast<int>(code);
            if (rs.GetEditMode() != dbEditNone) rs.CancelUpdate();
            std::this_thread::sleep_for(std::chrono::milliseconds(1 + attempt % 5));
        }
    }
    return -1;
}

// One writer: kRounds times, raise the shared counter by one under Edit, and log a row.
// Returns the number of lock errors met, or minus the number of any other error.
int writer(const std::wstring& file, int who) {
    int conflicts = 0;
    try {
        CDaoDatabase db;
        db.Open(file.c_str());
        CDaoRecordset counter(&db);
        counter.Open(dbOpenTable, L"tblCounter");
        counter.SetCurrentIndex(L"PrimaryKey");
        counter.SetLockingMode(true);
        CDaoRecordset log(&db);
        log.Open(dbOpenTable, L"tblLog");
        bool found = true;
        for (int round = 0; round < kRounds && found; ++round) {
            const int raised = retried(counter, [&] {
                const COleVariant key(1);
                found = counter.Seek(L"=", &key);
                counter.Edit();
                const long n = counter.GetFieldValue(L"n").lVal;
                counter.SetFieldValue(L"n", COleVariant(n + 1));
                counter.Update();
            });
            const int logged = retried(log, [&] {
                log.AddNew();
                log.SetFieldValue(L"iWho", COleVariant(short(who)));
                log.Update();
            });
            if (raised < 0) return raised;
            if (logged < 0) return logged;
            conflicts += raised + logged;
        }
        if (!found) return -1;
    } catch (CDaoException* e) {
        const long code = e->daoCode();
        e->Delete();
        return -static_cast<int>(code);
    }
    return conflicts;
}

TEST_F(DaoProcesses, RetriedWritesFromTwoProcessesAreAllKept) {
    const std::wstring file = path("shared.mdb");
    {
        CDaoDatabase db;
        db.Create(file.c_str());
        db.Execute(L"CREATE TABLE tblCounter (id LONG CONSTRAINT PrimaryKey PRIMARY KEY, n LONG)");
        db.Execute(L"CREATE TABLE tblLog (ixLog COUNTER PRIMARY KEY, iWho SHORT)");
        db.Execute(L"INSERT INTO tblCounter (id, n) VALUES (1, 0)");
    }
    std::vector<pid_t> children;
    int pipes[2][2];
    for (int who = 0; who < 2; ++who) {
        ASSERT_EQ(pipe(pipes[who]), 0);
        const pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            close(pipes[who][0]);
            const int conflicts = writer(file, who);
            const ssize_t written = write(pipes[who][1], &conflicts, sizeof conflicts);
            _exit(written == sizeof conflicts && conflicts >= 0 ? 0 : 1);
        }
        close(pipes[who][1]);
        children.push_back(pid);
    }
    int conflicts = 0;
    for (int who = 0; who < 2; ++who) {
        int status = 0;
        ASSERT_EQ(waitpid(children[static_cast<std::size_t>(who)], &status, 0), children[static_cast<std::size_t>(who)]);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "writer " << who;
        int count = 0;
        if (read(pipes[who][0], &count, sizeof count) == sizeof count) {
            EXPECT_GE(count, 0) << "writer " << who << " failed with DAO error " << -count;
            conflicts += std::max(count, 0);
        }
        close(pipes[who][0]);
    }
    CDaoDatabase db;
    db.Open(file.c_str());
    CDaoRecordset counter(&db);
    counter.Open(dbOpenTable, L"tblCounter");
    EXPECT_EQ(counter.GetFieldValue(L"n").lVal, 2 * kRounds);
    CDaoRecordset log(&db);
    log.Open(dbOpenTable, L"tblLog");
    EXPECT_EQ(log.GetRecordCount(), 2 * kRounds);
    RecordProperty("lock_conflicts", conflicts);
}

TEST_F(DaoProcesses, HeldLocksGiveLockErrorsPromptly) {
    const std::wstring file = path("locked.mdb");
    CDaoDatabase first;
    first.Create(file.c_str());
    first.Execute(L"CREATE TABLE t (id LONG CONSTRAINT PrimaryKey PRIMARY KEY, n LONG)");
    first.Execute(L"INSERT INTO t (id, n) VALUES (1, 0)");
    CDaoRecordset holder(&first);
    holder.Open(dbOpenTable, L"t");
    holder.SetLockingMode(true);
    holder.Edit();  // holds the write lock until Update or CancelUpdate

    CDaoDatabase second;
    second.Open(file.c_str());
    CDaoRecordset other(&second);
    other.Open(dbOpenTable, L"t");
    other.SetLockingMode(true);
    EXPECT_EQ(daoCode([&] { other.Edit(); }), 3260);
    other.SetLockingMode(false);
    other.Edit();
    other.SetFieldValue(L"n", COleVariant(5));
    EXPECT_EQ(daoCode([&] { other.Update(); }), 3218);
    EXPECT_EQ(daoCode([&] { second.Execute(L"DELETE FROM t"); }), 3218);
    holder.CancelUpdate();
    other.Update();
    EXPECT_EQ(other.GetFieldValue(L"n").lVal, 5);

    // An exclusive open keeps every other connection out.
    first.Close();
    second.Close();
    CDaoDatabase exclusive;
    exclusive.Open(file.c_str(), true);
    EXPECT_EQ(daoCode([&] { CDaoDatabase d; d.Open(file.c_str()); }), 3045);
}

TEST_F(DaoProcesses, OptimisticEditsSeeChangesMadeMeanwhile) {
    const std::wstring file = path("optimistic.mdb");
    CDaoDatabase first;
    first.Create(file.c_str());
    first.Execute(L"CREATE TABLE t (id LONG CONSTRAINT PrimaryKey PRIMARY KEY, n LONG)");
    first.Execute(L"INSERT INTO t (id, n) VALUES (1, 0)");
    CDaoRecordset rs(&first);
    rs.Open(dbOpenTable, L"t");
    rs.SetLockingMode(false);
    rs.Edit();
    CDaoDatabase second;
    second.Open(file.c_str());
    second.Execute(L"UPDATE t SET n = 9");
    rs.SetFieldValue(L"n", COleVariant(1));
    EXPECT_EQ(daoCode([&] { rs.Update(); }), 3197);
    rs.CancelUpdate();
    rs.Move(0);
    EXPECT_EQ(rs.GetFieldValue(L"n").lVal, 9);
}

// A move serves its read-ahead batch only while the file is unchanged: a record another
// connection changed after the batch was read comes back as committed.
TEST_F(DaoProcesses, MovesGiveRecordsAsCommittedByOthers) {
    const std::wstring file = path("moves.mdb");
    CDaoDatabase first;
    first.Create(file.c_str());
    first.Execute(L"CREATE TABLE t (id LONG CONSTRAINT PrimaryKey PRIMARY KEY, n LONG)");
    for (int id = 1; id <= 6; ++id)
        first.Execute((L"INSERT INTO t (id, n) VALUES (" + std::to_wstring(id) + L", 0)").c_str());
    CDaoRecordset rs(&first);
    rs.Open(dbOpenTable, L"t");
    rs.SetCurrentIndex(L"PrimaryKey");
    rs.MoveFirst();
    EXPECT_EQ(rs.GetFieldValue(L"n").lVal, 0);

    CDaoDatabase second;
    second.Open(file.c_str());
    second.Execute(L"UPDATE t SET n = id * 10");
    rs.MoveNext();
    EXPECT_EQ(rs.GetFieldValue(L"id").lVal, 2);
    EXPECT_EQ(rs.GetFieldValue(L"n").lVal, 20);
    second.Execute(L"DELETE FROM t WHERE id = 3");
    rs.MoveNext();
    EXPECT_EQ(rs.GetFieldValue(L"id").lVal, 4);
    rs.MovePrev();
    EXPECT_EQ(rs.GetFieldValue(L"id").lVal, 2);
    second.Execute(L"UPDATE t SET n = 7 WHERE id = 1");
    rs.MovePrev();
    EXPECT_EQ(rs.GetFieldValue(L"n").lVal, 7);
}

}  // namespace
