// Opening, creating, compacting and listing databases, and the errors of each.
#include <fstream>

#include "dao_test_support.h"

namespace {

using daotest::daoCode;
using daotest::daoError;

class DaoDatabase : public daotest::DaoTest {};

TEST_F(DaoDatabase, CreateOpenAndName) {
    const std::wstring file = path("new.mdb");
    {
        CDaoDatabase db;
        db.Create(file.c_str());
        EXPECT_TRUE(db.IsOpen());
        EXPECT_TRUE(db.CanUpdate());
        EXPECT_EQ(db.GetName(), file);
        EXPECT_EQ(db.GetTableDefCount(), 0);  // the catalog is not listed
    }
    CDaoDatabase again;
    again.Open(file.c_str());
    EXPECT_TRUE(again.CanUpdate());
    again.Close();
    EXPECT_FALSE(again.IsOpen());
    again.Close();  // closing twice does nothing
}

TEST_F(DaoDatabase, CreateAndOpenErrors) {
    const std::wstring file = path("a.mdb");
    CDaoDatabase db;
    db.Create(file.c_str());
    db.Close();
    EXPECT_EQ(daoCode([&] { CDaoDatabase d; d.Create(file.c_str()); }), 3204);
    const auto missing = daoError([&] { CDaoDatabase d; d.Open(path("none.mdb").c_str()); });
    EXPECT_EQ(missing.first, 3024);
    EXPECT_EQ(missing.second, L"Could not find file '" + path("none.mdb") + L"'.");
    EXPECT_EQ(daoCode([&] { CDaoDatabase d; d.Create(path("no/such/dir.mdb").c_str()); }), 3044);
}

TEST_F(DaoDatabase, ForeignAndDamagedFilesAreUnrecognized) {
    const std::wstring text = path("notes.mdb");
    std::ofstream(std::filesystem::path(text)) << "this is not a database at all, just some text\n";
    const auto foreign = daoError([&] { CDaoDatabase d; d.Open(text.c_str()); });
    EXPECT_EQ(foreign.first, 3343);
    EXPECT_EQ(foreign.second, L"Unrecognized database format '" + text + L"'.");
    const std::wstring empty = path("empty.mdb");
    std::ofstream(std::filesystem::path(empty)).close();
    EXPECT_EQ(daoCode([&] { CDaoDatabase d; d.Open(empty.c_str()); }), 3343);

    // A real database with pages overwritten in the middle.
    const std::wstring file = path("damaged.mdb");
    {
        CDaoDatabase db;
        makeParts(db, file);
        CDaoRecordset rs(&db);
        rs.Open(dbOpenTable, L"tblPart");
        db.BeginTrans();
        for (int i = 0; i < 300; ++i)
            addPart(rs, (L"part " + std::to_wstring(i)).c_str(), static_cast<short>(i));
        db.CommitTrans();
    }
    const auto size = std::filesystem::file_size(std::filesystem::path(file));
    {
        std::fstream f(std::filesystem::path(file), std::ios::in | std::ios::out | std::ios::binary);
        f.seekp(static_cast<std::streamoff>(size / 2));
        const std::string junk(8192, '\x5a');
        f.write(junk.data(), static_cast<std::streamsize>(junk.size()));
    }
    EXPECT_EQ(daoCode([&] { CDaoDatabase d; d.Open(file.c_str()); }), 3343);
}

TEST_F(DaoDatabase, ReadOnlyOpenRefusesWrites) {
    const std::wstring file = path("ro.mdb");
    {
        CDaoDatabase db;
        makeParts(db, file);
    }
    CDaoDatabase db;
    db.Open(file.c_str(), false, true);
    EXPECT_FALSE(db.CanUpdate());
    EXPECT_EQ(daoCode([&] { db.Execute(L"DELETE FROM tblPart"); }), 3027);
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"tblPart");
    EXPECT_FALSE(rs.CanUpdate());
    EXPECT_EQ(daoCode([&] { rs.AddNew(); }), 3027);
    CDaoTableDef td(&db);
    EXPECT_EQ(daoCode([&] { td.Create(L"tblNew"); td.CreateField(L"a", dbLong, 4); td.Append(); }), 3027);

    // A file without write permission opens read-only by itself, for root too (whom the
    // system would let write it).
    db.Close();
    std::filesystem::permissions(std::filesystem::path(file), std::filesystem::perms::owner_read);
    CDaoDatabase locked;
    locked.Open(file.c_str());
    EXPECT_FALSE(locked.CanUpdate());
    EXPECT_EQ(daoCode([&] { locked.Execute(L"DELETE FROM tblPart"); }), 3027);
}

TEST_F(DaoDatabase, CompactMakesAWorkingCopyAndRefusesAnExistingDestination) {
    const std::wstring file = path("src.mdb");
    {
        CDaoDatabase db;
        makeParts(db, file);
        CDaoRecordset rs(&db);
        rs.Open(dbOpenTable, L"tblPart");
        db.BeginTrans();
        for (int i = 0; i < 50; ++i) addPart(rs, (L"p" + std::to_wstring(i)).c_str(), 1);
        db.CommitTrans();
        db.Execute(L"DELETE FROM tblPart WHERE sName <> 'p7'");
        CDaoQueryDef q(&db);
        q.Create(L"qryAll", L"SELECT * FROM tblPart");
        q.Append();
    }
    const std::wstring copy = path("copy.mdb");
    CDaoWorkspace::CompactDatabase(file.c_str(), copy.c_str());
    EXPECT_LE(std::filesystem::file_size(std::filesystem::path(copy)),
              std::filesystem::file_size(std::filesystem::path(file)));
    CDaoDatabase db;
    db.Open(copy.c_str());
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"tblPart");
    EXPECT_EQ(rs.GetRecordCount(), 1);
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"p7");
    EXPECT_EQ(db.GetQueryDefCount(), 1);
    EXPECT_EQ(daoCode([&] { CDaoWorkspace::CompactDatabase(file.c_str(), copy.c_str()); }), 3204);
    EXPECT_EQ(daoCode([&] { CDaoWorkspace::CompactDatabase(path("none.mdb").c_str(), path("x.mdb").c_str()); }),
              3024);
}

TEST_F(DaoDatabase, TablesAreListedByNameAndDeleted) {
    CDaoDatabase db;
    makeParts(db, path("t.mdb"));
    db.Execute(L"CREATE TABLE tblAlpha (ixA COUNTER PRIMARY KEY, sA TEXT(10))");
    ASSERT_EQ(db.GetTableDefCount(), 2);
    CDaoTableDefInfo info;
    db.GetTableDefInfo(0, info);
    EXPECT_EQ(info.m_strName, L"tblAlpha");
    db.GetTableDefInfo(L"TBLPART", info, AFX_DAO_ALL_INFO);
    EXPECT_EQ(info.m_strName, L"tblPart");
    EXPECT_EQ(info.m_lRecordCount, 0);
    EXPECT_EQ(daoCode([&] { db.GetTableDefInfo(5, info); }), 3265);
    db.DeleteTableDef(L"tblAlpha");
    EXPECT_EQ(db.GetTableDefCount(), 1);
    EXPECT_EQ(daoCode([&] { db.DeleteTableDef(L"tblAlpha"); }), 3265);
    const auto dropped = daoError([&] { db.Execute(L"DROP TABLE tblAlpha"); });
    EXPECT_EQ(dropped.first, 3376);
}

TEST_F(DaoDatabase, RelationsAreKeptInTheFile) {
    const std::wstring file = path("rel.mdb");
    {
        CDaoDatabase db;
        makeParts(db, file);
        db.Execute(L"CREATE TABLE tblUse (ixUse COUNTER PRIMARY KEY, ixPart LONG)");
        db.CreateRelation(L"PartUse", L"tblPart", L"tblUse", 0, L"ixPart", L"ixPart");
        EXPECT_EQ(daoCode([&] { db.CreateRelation(L"PartUse", L"tblPart", L"tblUse", 0, L"ixPart", L"ixPart"); }),
                  3012);
        EXPECT_EQ(daoCode([&] { db.CreateRelation(L"Bad", L"tblPart", L"tblNone", 0, L"ixPart", L"ixPart"); }),
                  3078);
    }
    CDaoDatabase db;
    db.Open(file.c_str());
    ASSERT_EQ(db.GetRelationCount(), 1);
    CDaoRelationInfo info;
    db.GetRelationInfo(0, info);
    EXPECT_EQ(info.m_strTable, L"tblPart");
    EXPECT_EQ(info.m_strForeignTable, L"tblUse");
    ASSERT_EQ(info.m_nFields, 1);
    EXPECT_EQ(info.m_fieldInfos[0].m_strForeignName, L"ixPart");
    db.DeleteRelation(L"partuse");
    EXPECT_EQ(db.GetRelationCount(), 0);
    EXPECT_EQ(daoCode([&] { db.DeleteRelation(L"PartUse"); }), 3265);
}

TEST_F(DaoDatabase, TransactionsCommitOrRollBack) {
    CDaoDatabase db;
    makeParts(db, path("tx.mdb"));
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"tblPart");
    db.BeginTrans();
    addPart(rs, L"kept", 1);
    db.CommitTrans();
    db.BeginTrans();
    addPart(rs, L"dropped", 2);
    db.Rollback();
    EXPECT_EQ(rs.GetRecordCount(), 1);
    EXPECT_EQ(daoCode([&] { db.CommitTrans(); }), 3034);
}

}  // namespace
