// Table definitions: designs, changes to existing tables, and their errors.
#include <algorithm>

#include "dao_test_support.h"

namespace {

using daotest::daoCode;

class DaoTableDef : public daotest::DaoTest {
protected:
    void SetUp() override {
        DaoTest::SetUp();
        makeParts(db_, path("td.mdb"));
        CDaoRecordset rs(&db_);
        rs.Open(dbOpenTable, L"tblPart");
        addPart(rs, L"Valve", 3);
        addPart(rs, L"Pump", 5);
    }
    std::vector<std::wstring> fieldNames(const wchar_t* table) {
        CDaoTableDef td(&db_);
        td.Open(table);
        std::vector<std::wstring> names;
        CDaoFieldInfo info;
        for (short i = 0; i < td.GetFieldCount(); ++i) {
            td.GetFieldInfo(i, info);
            names.push_back(info.m_strName);
        }
        return names;
    }
    CDaoDatabase db_;
};

TEST_F(DaoTableDef, DesignErrors) {
    CDaoTableDef td(&db_);
    EXPECT_EQ(daoCode([&] { td.Create(L"TBLPART"); }), 3010);
    td.Create(L"tblNew");
    EXPECT_EQ(daoCode([&] { td.Append(); }), 3264);
    td.CreateField(L"a", dbLong, 4);
    EXPECT_EQ(daoCode([&] { td.CreateField(L"A", dbText, 10); }), 3191);
    EXPECT_EQ(daoCode([&] { td.CreateField(L"bad.name", dbText, 10); }), 3125);
    EXPECT_EQ(daoCode([&] { td.CreateField(L"b", dbText, 300); }), 3001);
    CDaoIndexInfo index;
    index.m_strName = L"ixB";
    index.m_fieldInfos = {{L"b", false}};
    td.CreateIndex(index);
    EXPECT_EQ(daoCode([&] { td.Append(); }), 3265);  // the index names a missing field
    td.DeleteIndex(L"ixB");
    td.Append();
    EXPECT_EQ(db_.GetTableDefCount(), 2);
    EXPECT_EQ(daoCode([&] { CDaoTableDef t(&db_); t.Open(L"tblNone"); }), 3265);
}

TEST_F(DaoTableDef, FieldsAddedAndDeletedKeepTheData) {
    CDaoTableDef td(&db_);
    td.Open(L"tblPart");
    td.CreateField(L"sColor", dbText, 12);
    CDaoFieldInfo required;
    required.m_strName = L"iLevel";
    required.m_nType = dbInteger;
    required.m_bRequired = true;
    required.m_strDefaultValue = L"4";
    td.CreateField(required);  // a Required field with a default: the table is rebuilt
    EXPECT_EQ(daoCode([&] { td.CreateField(L"sColor", dbText, 5); }), 3191);
    EXPECT_EQ(daoCode([&] { td.DeleteField(L"sName"); }), 3280);  // it is indexed
    td.DeleteField(L"mNote");
    EXPECT_EQ(daoCode([&] { td.DeleteField(L"mNote"); }), 3265);
    const auto names = fieldNames(L"tblPart");
    EXPECT_EQ(names.back(), L"iLevel");
    EXPECT_EQ(std::count(names.begin(), names.end(), L"mNote"), 0);
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    rs.SetCurrentIndex(L"sName");
    const COleVariant pump(L"pump");
    ASSERT_TRUE(rs.Seek(L"=", &pump));
    EXPECT_EQ(rs.GetFieldValue(L"iQty"), COleVariant(short{5}));
    EXPECT_EQ(rs.GetFieldValue(L"iLevel"), COleVariant(short{4}));
    EXPECT_EQ(rs.GetFieldValue(L"sColor").vt, VT_NULL);
    EXPECT_EQ(rs.GetIndexCount(), 3);  // the indexes came through the rebuild
    // AutoNumber continues after the rebuild.
    addPart(rs, L"Fan", 1);
    rs.SetBookmark(rs.GetLastModifiedBookmark());
    EXPECT_EQ(rs.GetFieldValue(L"ixPart"), COleVariant(3));
}

TEST_F(DaoTableDef, IndexesAndPrimaryKeys) {
    db_.Execute(L"CREATE TABLE tblPair (sA TEXT(5), sB TEXT(5), iNum SHORT)");
    CDaoTableDef td(&db_);
    td.Open(L"tblPair");
    EXPECT_EQ(td.GetIndexCount(), 0);
    CDaoIndexInfo primary;
    primary.m_strName = L"PrimaryKey";
    primary.m_fieldInfos = {{L"sA", false}, {L"sB", false}};
    primary.m_bPrimary = true;
    td.CreateIndex(primary);
    EXPECT_EQ(daoCode([&] { td.CreateIndex(primary); }), 3284);
    primary.m_strName = L"Other";
    EXPECT_EQ(daoCode([&] { td.CreateIndex(primary); }), 3283);
    CDaoIndexInfo info;
    td.GetIndexInfo(L"PrimaryKey", info);
    EXPECT_TRUE(info.m_bPrimary);
    EXPECT_EQ(info.m_nFields, 2);
    CDaoFieldInfo field;
    td.GetFieldInfo(L"sA", field);
    EXPECT_TRUE(field.m_bRequired);  // primary key fields are required
    db_.Execute(L"INSERT INTO tblPair (sA, sB) VALUES ('x', 'y')");
    EXPECT_EQ(daoCode([&] { db_.Execute(L"INSERT INTO tblPair (sA, sB) VALUES ('X', 'Y')"); }), 3022);
    td.DeleteIndex(L"PrimaryKey");
    db_.Execute(L"INSERT INTO tblPair (sA, sB) VALUES ('X', 'Y')");
    EXPECT_EQ(td.GetRecordCount(), 2);
}

TEST_F(DaoTableDef, RenameKeepsIndexesAndQueriesSeeTheNewName) {
    CDaoTableDef td(&db_);
    td.Open(L"tblPart");
    td.SetName(L"tblItem");
    EXPECT_EQ(td.GetName(), L"tblItem");
    td.Close();
    CDaoRecordset rs(&db_);
    EXPECT_EQ(daoCode([&] { rs.Open(dbOpenTable, L"tblPart"); }), 3078);
    rs.Open(dbOpenTable, L"tblItem");
    rs.SetCurrentIndex(L"sName");
    rs.MoveFirst();
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"Pump");
    rs.Close();
    db_.Execute(L"CREATE TABLE tblOther (a LONG)");
    td.Open(L"tblItem");
    EXPECT_EQ(daoCode([&] { td.SetName(L"tblOther"); }), 3010);
}

// The engine cannot lock a table that a recordset has open: its structure stays as it is.
TEST_F(DaoTableDef, StructureChangesWaitForTheTablesRecordsetsToClose) {
    db_.Execute(L"CREATE TABLE tblOther (a LONG, b LONG)");
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    rs.MoveFirst();
    const std::wstring inUse =
        L"The database engine could not lock table 'tblPart' because it is already in use by "
        L"another person or process.";
    EXPECT_EQ(daotest::daoError([&] { db_.Execute(L"ALTER TABLE tblPart DROP COLUMN mNote"); }),
              std::make_pair(3211L, inUse));
    for (const wchar_t* sql : {L"ALTER TABLE TBLPART ADD COLUMN sMore TEXT(10)",
                               L"ALTER TABLE tblPart ALTER COLUMN mNote TEXT(50)",
                               L"CREATE INDEX ixPrice ON tblPart (dPrice)",
                               L"DROP INDEX ixQty ON tblPart", L"DROP TABLE tblPart"}) {
        EXPECT_EQ(daoCode([&] { db_.Execute(sql); }), 3211) << sql;
    }
    CDaoTableDef td(&db_);
    td.Open(L"tblPart");
    EXPECT_EQ(daoCode([&] { td.DeleteField(L"mNote"); }), 3211);
    EXPECT_EQ(daoCode([&] { td.SetName(L"tblItem"); }), 3211);
    td.Close();
    EXPECT_EQ(fieldNames(L"tblPart").size(), 8u);
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"Valve");
    // Other tables change freely, and this one once its recordset has closed.
    db_.Execute(L"ALTER TABLE tblOther DROP COLUMN b");
    rs.Close();
    db_.Execute(L"ALTER TABLE tblPart DROP COLUMN mNote");
    EXPECT_EQ(fieldNames(L"tblPart").size(), 7u);
}

}  // namespace

namespace {

class DaoCounter : public daotest::DaoTest {};

TEST_F(DaoCounter, AutoNumberThatIsNotTheKeyCountsUp) {
    CDaoDatabase db;
    db.Create(path("counter.mdb").c_str());
    db.Execute(L"CREATE TABLE tblCode (sCode TEXT(5) CONSTRAINT PrimaryKey PRIMARY KEY, ixSeq COUNTER)");
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"tblCode");
    for (const wchar_t* code : {L"b", L"a", L"c"}) {
        rs.AddNew();
        rs.SetFieldValue(L"sCode", COleVariant(code));
        rs.Update();
    }
    db.Execute(L"INSERT INTO tblCode (sCode) VALUES ('d')");
    rs.SetCurrentIndex(L"PrimaryKey");
    std::vector<long> sequence;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) sequence.push_back(rs.GetFieldValue(L"ixSeq").lVal);
    EXPECT_EQ(sequence, (std::vector<long>{2, 1, 3, 4}));
    CDaoFieldInfo info;
    rs.GetFieldInfo(L"ixSeq", info);
    EXPECT_TRUE(info.m_lAttributes & dbAutoIncrField);
}

}  // namespace
