// SQL through the engine: Execute, temporary and stored query definitions, parameters.
#include "dao_test_support.h"

namespace {

using daotest::daoCode;
using daotest::daoError;

class DaoQuery : public daotest::DaoTest {
protected:
    void SetUp() override {
        DaoTest::SetUp();
        file_ = path("q.mdb");
        makeParts(db_, file_);
        db_.Execute(L"INSERT INTO tblPart (sName, iQty, bActive) VALUES ('Valve', 3, True)");
        db_.Execute(L"INSERT INTO tblPart (sName, iQty, bActive) VALUES ('Pump', 5, False)");
        db_.Execute(L"INSERT INTO tblPart (sName, iQty, bActive) VALUES ('Fan', 8, Yes)");
    }
    // The names a select returns, in order.
    std::vector<std::wstring> names(CDaoRecordset& rs) {
        std::vector<std::wstring> result;
        if (rs.IsBOF() && rs.IsEOF()) return result;
        for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) result.push_back(rs.GetFieldValue(L"sName").bstrVal);
        return result;
    }
    std::wstring file_;
    CDaoDatabase db_;
};

TEST_F(DaoQuery, ExecuteCountsRecordsAndRefusesSelects) {
    db_.Execute(L"UPDATE tblPart SET iQty = iQty + 1 WHERE bActive = True");
    EXPECT_EQ(db_.GetRecordsAffected(), 2);
    EXPECT_EQ(daoCode([&] { db_.Execute(L"SELECT * FROM tblPart"); }), 3065);
    EXPECT_EQ(daoCode([&] { db_.Execute(L"DELETE FROM tblNone"); }), 3078);
    const long syntax = daoCode([&] { db_.Execute(L"SELECT * FROM WHERE"); });
    EXPECT_TRUE(syntax == 3131 || syntax == 3075) << syntax;
    CDaoQueryDef temp(&db_);
    temp.Create(nullptr, L"DELETE FROM tblPart WHERE sName LIKE 'p*'");
    temp.Execute();
    EXPECT_EQ(temp.GetRecordsAffected(), 1);
    EXPECT_EQ(db_.GetQueryDefCount(), 0);  // temporary: never stored
}

TEST_F(DaoQuery, RecordsetsOnSqlAndTheirOrder) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenSnapshot, L"SELECT * FROM tblPart WHERE iQty > 2 ORDER BY sName");
    EXPECT_EQ(names(rs), (std::vector<std::wstring>{L"Fan", L"Pump", L"Valve"}));
    EXPECT_EQ(rs.GetRecordCount(), 3);
    EXPECT_FALSE(rs.CanUpdate());
    rs.MoveFirst();
    EXPECT_EQ(daoCode([&] { rs.Edit(); }), 3027);
    EXPECT_EQ(daoCode([&] { rs.SetCurrentIndex(L"sName"); }), 3251);
    CDaoRecordset empty(&db_);
    empty.Open(dbOpenDynaset, L"SELECT * FROM tblPart WHERE sName = 'none'");
    EXPECT_TRUE(empty.IsBOF());
    EXPECT_TRUE(empty.IsEOF());
    CDaoRecordset table(&db_);
    EXPECT_EQ(daoCode([&] { table.Open(dbOpenTable, L"SELECT * FROM tblPart"); }), 3251);
}

TEST_F(DaoQuery, UnknownNamesAreParameters) {
    CDaoRecordset rs(&db_);
    const auto missing = daoError([&] { rs.Open(dbOpenSnapshot, L"SELECT * FROM tblPart WHERE iQtyy = 3"); });
    EXPECT_EQ(missing.first, 3061);
    EXPECT_EQ(missing.second, L"Too few parameters. Expected 1.");
    CDaoQueryDef q(&db_);
    q.Create(nullptr, L"SELECT sName FROM tblPart WHERE iQty >= [Smallest] ORDER BY iQty");
    ASSERT_EQ(q.GetParameterCount(), 1);
    q.SetParamValue(L"smallest", COleVariant(5));
    rs.Open(&q);
    EXPECT_EQ(names(rs), (std::vector<std::wstring>{L"Pump", L"Fan"}));
    EXPECT_EQ(daoCode([&] { q.SetParamValue(L"Other", COleVariant(1)); }), 3265);
}

TEST_F(DaoQuery, StoredQueriesWithParametersLastAcrossReopen) {
    {
        CDaoQueryDef q(&db_);
        q.Create(L"qryByQty", L"PARAMETERS pMin Short, pName Text; SELECT * FROM tblPart "
                              L"WHERE iQty >= pMin AND sName <> pName ORDER BY sName");
        EXPECT_EQ(q.GetType(), dbQSelect);
        q.Append();
        EXPECT_EQ(daoCode([&] { CDaoQueryDef d(&db_); d.Create(L"QRYBYQTY", L"SELECT 1"); }), 3012);
        CDaoQueryDef action(&db_);
        action.Create(L"qryZero", L"UPDATE tblPart SET iQty = 0 WHERE sName = [Which]");
        action.Append();
        db_.Close();
    }
    db_.Open(file_.c_str());
    ASSERT_EQ(db_.GetQueryDefCount(), 2);
    CDaoQueryDefInfo info;
    db_.GetQueryDefInfo(0, info);
    EXPECT_EQ(info.m_strName, L"qryByQty");
    EXPECT_TRUE(info.m_bReturnsRecords);
    db_.GetQueryDefInfo(L"qryzero", info);
    EXPECT_EQ(info.m_nType, dbQUpdate);
    EXPECT_FALSE(info.m_bReturnsRecords);

    CDaoQueryDef q(&db_);
    q.Open(L"qryByQty");
    ASSERT_EQ(q.GetParameterCount(), 2);
    CDaoParameterInfo parameter;
    q.GetParameterInfo(0, parameter);
    EXPECT_EQ(parameter.m_strName, L"pMin");
    EXPECT_EQ(parameter.m_nType, dbInteger);
    q.SetParamValue(L"pMin", COleVariant(L"4"));  // converted to the declared type
    CDaoRecordset rs(&db_);
    EXPECT_EQ(daoError([&] { rs.Open(&q); }).second, L"Too few parameters. Expected 1.");
    q.SetParamValue(L"pName", COleVariant(L"FAN"));
    rs.Open(&q);
    EXPECT_EQ(names(rs), (std::vector<std::wstring>{L"Pump"}));
    rs.Close();

    CDaoQueryDef action(&db_);
    action.Open(L"qryZero");
    action.SetParamValue(L"Which", COleVariant(L"pump"));
    action.Execute();
    EXPECT_EQ(action.GetRecordsAffected(), 1);

    // SetSQL on a stored query stores the new text.
    q.SetSQL(L"SELECT * FROM tblPart WHERE bActive = False");
    q.Close();
    CDaoRecordset byName(&db_);
    byName.Open(dbOpenSnapshot, L"qryByQty");
    EXPECT_EQ(names(byName), (std::vector<std::wstring>{L"Pump"}));
    EXPECT_EQ(daoCode([&] { q.Open(L"qryNone"); }), 3265);
    db_.DeleteQueryDef(L"qryZero");
    EXPECT_EQ(db_.GetQueryDefCount(), 1);
}

TEST_F(DaoQuery, DdlThroughSql) {
    db_.Execute(L"CREATE TABLE tblLayer (ixLayer COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, "
                L"sName TEXT(40) NOT NULL, bPlot YESNO, iColor SHORT, dtWhen DATETIME)");
    db_.Execute(L"CREATE UNIQUE INDEX isxName ON tblLayer (sName)");
    db_.Execute(L"INSERT INTO tblLayer (sName, bPlot, iColor, dtWhen) VALUES ('A', True, 7, #3/5/2020#)");
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblLayer");
    EXPECT_EQ(rs.GetFieldValue(L"bPlot"), COleVariant::Bool(true));
    EXPECT_EQ(rs.GetFieldValue(L"iColor"), COleVariant(short{7}));
    EXPECT_EQ(COleDateTime(rs.GetFieldValue(L"dtWhen").date).Format(), L"3/5/2020");
    rs.Close();
    db_.Execute(L"ALTER TABLE tblLayer ADD COLUMN sNote TEXT(10)");
    db_.Execute(L"SELECT sName, iColor INTO tblCopy FROM tblLayer");
    EXPECT_EQ(db_.GetRecordsAffected(), 1);
    CDaoTableDef copy(&db_);
    copy.Open(L"tblCopy");
    CDaoFieldInfo info;
    copy.GetFieldInfo(L"iColor", info);
    EXPECT_EQ(info.m_nType, dbInteger);
    db_.Execute(L"DROP INDEX isxName ON tblLayer");
    db_.Execute(L"INSERT INTO tblLayer (sName) VALUES ('a')");
    db_.Execute(L"CREATE PROCEDURE qryLayers AS SELECT * FROM tblLayer");
    EXPECT_EQ(db_.GetQueryDefCount(), 1);
    EXPECT_EQ(daoCode([&] { db_.Execute(L"CREATE TABLE tblLayer (a LONG)"); }), 3010);
}

}  // namespace
