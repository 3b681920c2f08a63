// Table recordsets: value types, BOF/EOF rules, moves, writes and their errors.
#include <algorithm>
#include <cmath>
#include <set>

#include "dao_test_support.h"

namespace {

using daotest::daoCode;
using daotest::daoError;

class DaoRecordset : public daotest::DaoTest {
protected:
    void SetUp() override {
        DaoTest::SetUp();
        makeParts(db_, path("parts.mdb"));
    }
    // Names of the records from the current one to EOF.
    static std::vector<std::wstring> namesToEnd(CDaoRecordset& rs) {
        std::vector<std::wstring> names;
        for (; !rs.IsEOF(); rs.MoveNext()) names.push_back(rs.GetFieldValue(L"sName").bstrVal);
        return names;
    }
    CDaoDatabase db_;
};

TEST_F(DaoRecordset, ValuesReadBackWithTheirVariantTypes) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    rs.AddNew();
    rs.SetFieldValue(L"sName", L"Valve");
    rs.SetFieldValue(L"iQty", COleVariant(7L));          // a Long into an Integer field
    rs.SetFieldValue(L"dPrice", COleVariant(L"12.5"));   // text that is a number
    rs.SetFieldValue(L"bActive", COleVariant(5));        // any non-zero is Yes
    rs.SetFieldValue(L"dtMade", COleVariant(L"3/5/2020 2:07:09 PM"));
    rs.SetFieldValue(L"cCost", COleVariant(1.23456));
    rs.SetFieldValue(L"mNote", COleVariant(std::wstring(3000, L'x')));
    rs.Update();
    rs.SetBookmark(rs.GetLastModifiedBookmark());
    EXPECT_EQ(rs.GetFieldValue(L"ixPart"), COleVariant(1));
    EXPECT_EQ(rs.GetFieldValue(L"sName"), COleVariant(L"Valve"));
    EXPECT_EQ(rs.GetFieldValue(L"iQty"), COleVariant(short{7}));
    EXPECT_EQ(rs.GetFieldValue(L"dPrice"), COleVariant(12.5));
    EXPECT_EQ(rs.GetFieldValue(L"bActive"), COleVariant::Bool(true));
    EXPECT_EQ(rs.GetFieldValue(L"dtMade").vt, VT_DATE);
    EXPECT_EQ(COleDateTime(rs.GetFieldValue(L"dtMade").date).Format(), L"3/5/2020 2:07:09 PM");
    EXPECT_EQ(rs.GetFieldValue(L"cCost"), COleVariant::Currency(12346));
    EXPECT_EQ(rs.GetFieldValue(L"mNote").bstrVal.size(), 3000u);
    // Unset fields are null; Yes/No is stored as -1 for SQL.
    rs.AddNew();
    rs.SetFieldValue(L"sName", L"Empty");
    rs.Update();
    rs.SetBookmark(rs.GetLastModifiedBookmark());
    EXPECT_EQ(rs.GetFieldValue(L"iQty").vt, VT_NULL);
    EXPECT_EQ(rs.GetFieldValue(L"dtMade").vt, VT_NULL);
    CDaoRecordset q(&db_);
    q.Open(dbOpenSnapshot, L"SELECT bActive, iQty * 2 AS Twice FROM tblPart WHERE sName = 'VALVE'");
    EXPECT_EQ(q.GetFieldValue(0), COleVariant::Bool(true));
    EXPECT_EQ(q.GetFieldValue(L"Twice"), COleVariant(14));
}

TEST_F(DaoRecordset, ConversionsThatFail) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    rs.AddNew();
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(L"iQty", COleVariant(40000)); }), 3421);
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(L"iQty", COleVariant(L"many")); }), 3421);
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(L"dtMade", COleVariant(L"2/30/2020")); }), 3421);
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(L"sName", COleVariant(std::wstring(21, L'a'))); }), 3163);
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(L"ixPart", COleVariant(5)); }), 3164);
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(L"nope", COleVariant(5)); }), 3265);
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(99, COleVariant(5)); }), 3265);
    rs.SetFieldValue(L"iQty", COleVariant(2.5));  // half to even
    EXPECT_EQ(rs.GetFieldValue(L"iQty"), COleVariant(short{2}));
    rs.CancelUpdate();
    EXPECT_EQ(daoCode([&] { rs.SetFieldValue(L"iQty", COleVariant(1)); }), 3020);
    EXPECT_EQ(daoCode([&] { rs.Update(); }), 3020);
}

TEST_F(DaoRecordset, BofAndEofFollowDao) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    EXPECT_TRUE(rs.IsBOF());
    EXPECT_TRUE(rs.IsEOF());
    EXPECT_EQ(daoCode([&] { rs.MoveFirst(); }), 3021);
    EXPECT_EQ(daoCode([&] { rs.MoveNext(); }), 3021);
    EXPECT_EQ(daoCode([&] { rs.GetFieldValue(0); }), 3021);
    for (const wchar_t* name : {L"a", L"b", L"c"}) addPart(rs, name, 1);
    rs.MoveFirst();
    EXPECT_FALSE(rs.IsBOF());
    rs.MovePrev();
    EXPECT_TRUE(rs.IsBOF());
    EXPECT_FALSE(rs.IsEOF());
    EXPECT_EQ(daoCode([&] { rs.GetFieldValue(0); }), 3021);
    EXPECT_EQ(daoCode([&] { rs.MovePrev(); }), 3021);
    rs.Move(1);  // from BOF, one step is the first record
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"a");
    rs.Move(5);  // past the end
    EXPECT_TRUE(rs.IsEOF());
    EXPECT_EQ(daoCode([&] { rs.MoveNext(); }), 3021);
    EXPECT_EQ(daoCode([&] { rs.Move(1); }), 3021);
    rs.MovePrev();  // from EOF, the last record
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"c");
    rs.Move(-2);
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"a");
    rs.MoveLast();
    rs.MoveNext();
    EXPECT_TRUE(rs.IsEOF());
    EXPECT_FALSE(rs.IsBOF());
}

TEST_F(DaoRecordset, IndexOrderAndLongWalks) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    db_.BeginTrans();
    for (int i = 0; i < 2000; ++i) {
        rs.AddNew();
        rs.SetFieldValue(L"sName", COleVariant(L"n" + std::to_wstring((i * 7919) % 2000)));
        if (i % 10 != 0) rs.SetFieldValue(L"iQty", COleVariant(static_cast<short>(i % 37)));
        rs.Update();
    }
    db_.CommitTrans();
    EXPECT_EQ(rs.GetRecordCount(), 2000);
    rs.SetCurrentIndex(L"ixQty");
    EXPECT_EQ(rs.GetCurrentIndex(), L"ixQty");
    // Forward: nulls first, keys never decrease, every record once.
    int seen = 0, nulls = 0, last = -1;
    std::set<long> ids;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext(), ++seen) {
        const COleVariant qty = rs.GetFieldValue(L"iQty");
        if (qty.vt == VT_NULL) {
            EXPECT_EQ(last, -1);
            ++nulls;
        } else {
            EXPECT_GE(qty.iVal, last);
            last = qty.iVal;
        }
        ids.insert(rs.GetFieldValue(L"ixPart").lVal);
    }
    EXPECT_EQ(seen, 2000);
    EXPECT_EQ(nulls, 200);
    EXPECT_EQ(ids.size(), 2000u);
    // Backward gives the same order reversed.
    std::vector<long> forward, backward;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) forward.push_back(rs.GetFieldValue(0).lVal);
    for (rs.MoveLast(); !rs.IsBOF(); rs.MovePrev()) backward.push_back(rs.GetFieldValue(0).lVal);
    std::reverse(backward.begin(), backward.end());
    EXPECT_EQ(forward, backward);
    // Skipping by n lands where n single steps do.
    rs.MoveFirst();
    rs.Move(1234);
    EXPECT_EQ(rs.GetFieldValue(0).lVal, forward[1234]);
    rs.Move(-1000);
    EXPECT_EQ(rs.GetFieldValue(0).lVal, forward[234]);
    // The text index orders without case.
    rs.SetCurrentIndex(L"sName");
    std::wstring previous;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) {
        const std::wstring name = rs.GetFieldValue(L"sName").bstrVal;
        EXPECT_LT(previous, name);
        previous = name;
    }
    EXPECT_EQ(daoError([&] { rs.SetCurrentIndex(L"nope"); }).second,
              L"'nope' isn't an index in this table. Look in the Indexes collection of the TableDef object to determine the valid index names.");
}

TEST_F(DaoRecordset, EditUpdateDeleteAndBookmarks) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    for (const wchar_t* name : {L"a", L"b", L"c", L"d"}) addPart(rs, name, 1);
    rs.SetCurrentIndex(L"sName");
    rs.MoveFirst();
    rs.MoveNext();
    const COleVariant markB = rs.GetBookmark();
    // Changing the key moves the record in the order; it stays current.
    rs.Edit();
    rs.SetFieldValue(L"sName", L"z");
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"z");  // the edit buffer
    rs.Update();
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"z");
    EXPECT_EQ(rs.GetLastModifiedBookmark(), markB);
    rs.MovePrev();
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"d");
    // Moving drops an edit.
    rs.Edit();
    rs.SetFieldValue(L"iQty", COleVariant(short{9}));
    rs.MoveFirst();
    rs.SetBookmark(markB);
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"z");
    rs.MoveFirst();
    EXPECT_EQ(rs.GetFieldValue(L"iQty"), COleVariant(short{1}));
    // Delete leaves no current record; the next move goes on from its place.
    rs.MoveNext();  // c
    rs.Delete();
    EXPECT_EQ(daoCode([&] { rs.GetFieldValue(0); }), 3021);
    EXPECT_EQ(daoCode([&] { rs.Delete(); }), 3021);
    EXPECT_EQ(daoCode([&] { rs.Edit(); }), 3021);
    rs.MoveNext();
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"d");
    EXPECT_EQ(rs.GetRecordCount(), 3);
    const COleVariant markD = rs.GetBookmark();
    rs.Delete();
    EXPECT_EQ(daoCode([&] { rs.SetBookmark(markD); }), 3159);
    // AddNew leaves the current record where it was.
    rs.SetBookmark(markB);
    addPart(rs, L"e", 3);
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"z");
    rs.SetBookmark(rs.GetLastModifiedBookmark());
    EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, L"e");
    EXPECT_EQ(rs.GetRecordCount(), 3);
    EXPECT_EQ(namesToEnd(rs), (std::vector<std::wstring>{L"e", L"z"}));
}

TEST_F(DaoRecordset, DeletingEveryRecordLeavesBothEnds) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    addPart(rs, L"only", 1);
    rs.MoveFirst();
    rs.Delete();
    rs.MoveNext();
    EXPECT_TRUE(rs.IsEOF());
    EXPECT_TRUE(rs.IsBOF());
}

TEST_F(DaoRecordset, WriteErrors) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    addPart(rs, L"Pump", 1);
    rs.AddNew();
    rs.SetFieldValue(L"sName", L"PUMP");  // the unique index compares without case
    const auto duplicate = daoError([&] { rs.Update(); });
    EXPECT_EQ(duplicate.first, 3022);
    EXPECT_TRUE(duplicate.second.starts_with(L"The changes you requested to the table were not successful"));
    EXPECT_EQ(rs.GetEditMode(), dbEditAdd);  // still pending after a failed write
    rs.SetFieldValue(L"sName", L"Fan");
    rs.Update();
    rs.AddNew();
    rs.SetFieldValue(L"iQty", COleVariant(short{1}));
    const auto required = daoError([&] { rs.Update(); });
    EXPECT_EQ(required.first, 3314);
    EXPECT_EQ(required.second,
              L"The field 'tblPart.sName' cannot contain a Null value because the Required property "
              L"for this field is set to True. Enter a value in this field.");
    rs.CancelUpdate();
    EXPECT_EQ(rs.GetRecordCount(), 2);
    CDaoRecordset none(&db_);
    EXPECT_EQ(daoError([&] { none.Open(dbOpenTable, L"tblNone"); }).second,
              L"The Microsoft Jet database engine cannot find the input table or query 'tblNone'. Make "
              L"sure it exists and that its name is spelled correctly.");
    EXPECT_EQ(daoCode([&] { rs.GetFieldValue(L"nope"); }), 3265);
    EXPECT_EQ(daoCode([&] { none.MoveNext(); }), 3420);
}

TEST_F(DaoRecordset, FieldAndIndexInformation) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    ASSERT_EQ(rs.GetFieldCount(), 8);
    CDaoFieldInfo info;
    rs.GetFieldInfo(0, info, AFX_DAO_ALL_INFO);
    EXPECT_EQ(info.m_strName, L"ixPart");
    EXPECT_EQ(info.m_nType, dbLong);
    EXPECT_TRUE(info.m_lAttributes & dbAutoIncrField);
    rs.GetFieldInfo(L"sname", info);
    EXPECT_EQ(info.m_nType, dbText);
    EXPECT_EQ(info.m_lSize, 20);
    EXPECT_TRUE(info.m_bRequired);
    EXPECT_EQ(info.m_nOrdinal, 1);
    rs.GetFieldInfo(L"mNote", info);
    EXPECT_EQ(info.m_nType, dbMemo);
    ASSERT_EQ(rs.GetIndexCount(), 3);
    CDaoIndexInfo index;
    rs.GetIndexInfo(0, index);
    EXPECT_EQ(index.m_strName, L"PrimaryKey");
    EXPECT_TRUE(index.m_bPrimary);
    rs.GetIndexInfo(L"SNAME", index);
    EXPECT_TRUE(index.m_bUnique);
    ASSERT_EQ(index.m_nFields, 1);
    EXPECT_EQ(index.m_fieldInfos[0].m_strName, L"sName");
}

TEST_F(DaoRecordset, CountsFollowOtherConnections) {
    CDaoRecordset rs(&db_);
    rs.Open(dbOpenTable, L"tblPart");
    addPart(rs, L"a", 1);
    EXPECT_EQ(rs.GetRecordCount(), 1);
    CDaoDatabase other;
    other.Open(db_.GetName().c_str());
    other.Execute(L"INSERT INTO tblPart (sName) VALUES ('b')");
    EXPECT_EQ(other.GetRecordsAffected(), 1);
    EXPECT_EQ(rs.GetRecordCount(), 2);
    CDaoRecordset second(&db_);
    second.Open(dbOpenTable, L"tblPart");
    second.MoveFirst();
    second.Delete();
    EXPECT_EQ(rs.GetRecordCount(), 1);
}

}  // namespace

namespace {

class DaoRecordsetClose : public daotest::DaoTest {};

TEST_F(DaoRecordsetClose, ClosingTheDatabaseClosesItsRecordsets) {
    CDaoDatabase db;
    makeParts(db, path("close.mdb"));
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"tblPart");
    addPart(rs, L"a", 1);
    rs.MoveFirst();
    rs.Edit();
    db.Close();
    EXPECT_FALSE(rs.IsOpen());
    EXPECT_EQ(daotest::daoCode([&] { rs.MoveNext(); }), 3420);
    // The same objects work again after a reopen.
    db.Open(path("close.mdb").c_str());
    rs.Open(dbOpenTable, L"tblPart");
    EXPECT_EQ(rs.GetRecordCount(), 1);
}

}  // namespace

namespace {

class DaoNames : public daotest::DaoTest {};

TEST_F(DaoNames, TableAndFieldNamesCompareWithoutCaseBeyondAscii) {
    CDaoDatabase db;
    db.Create(path("names.mdb").c_str());
    db.Execute(L"CREATE TABLE tblÄrger (sÖl TEXT(10))");
    db.Execute(L"INSERT INTO tblÄrger (sÖl) VALUES ('x')");
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"TBLärger");
    EXPECT_EQ(rs.GetName(), L"tblÄrger");
    EXPECT_EQ(rs.GetFieldValue(L"Söl").bstrVal, L"x");
}

}  // namespace

namespace {

class DaoTextFields : public daotest::DaoTest {};

TEST_F(DaoTextFields, OtherTypesIntoTextReadAsDaoWritesThem) {
    CDaoDatabase db;
    makeParts(db, path("text.mdb"));
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, L"tblPart");
    const std::pair<COleVariant, std::wstring> cases[] = {
        {COleVariant(0.1f), L"0.1"},
        {COleVariant(2.5), L"2.5"},
        {COleVariant(1.0 / 3.0), L"0.333333333333333"},
        {COleVariant(-7), L"-7"},
        {COleVariant::Bool(true), L"True"},
        {COleVariant::Date(COleDateTime(2021, 7, 4, 0, 0, 0).m_dt), L"7/4/2021"},
        {COleVariant::Currency(12345), L"1.2345"},
    };
    for (const auto& [value, text] : cases) {
        rs.AddNew();
        rs.SetFieldValue(L"sName", value);
        rs.Update();
        rs.SetBookmark(rs.GetLastModifiedBookmark());
        EXPECT_EQ(rs.GetFieldValue(L"sName").bstrVal, text);
    }
}

}  // namespace
