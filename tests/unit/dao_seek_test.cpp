// Seeks on one- and two-field indexes: case-insensitive text, nulls, comparisons.
#include "dao_test_support.h"

namespace {

using daotest::daoCode;

class DaoSeek : public daotest::DaoTest {
protected:
    void SetUp() override {
        DaoTest::SetUp();
        db_.Create(path("seek.mdb").c_str());
        db_.Execute(
            L"CREATE TABLE tblKey (ixKey COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, ixSystem LONG, "
            L"sKey TEXT(30), dValue DOUBLE)");
        db_.Execute(L"CREATE UNIQUE INDEX isxSystemKey ON tblKey (ixSystem, sKey)");
        db_.Execute(L"CREATE INDEX isxKey ON tblKey (sKey)");
        db_.Execute(L"CREATE INDEX isxValueDown ON tblKey (dValue DESC)");
        rs_.Open(dbOpenTable, L"tblKey");
        add(COleVariant::Null(), L"Wall", 1.0);
        add(COleVariant::Null(), L"Door", 2.0);
        add(COleVariant(1), L"Wall", 3.0);
        add(COleVariant(1), L"ÄBC", 4.0);
        add(COleVariant(2), L"Wall", 5.0);
        add(COleVariant(2), L"Roof", COleVariant::Null());
    }
    void add(const COleVariant& system, const wchar_t* key, const COleVariant& value) {
        rs_.AddNew();
        rs_.SetFieldValue(L"ixSystem", system);
        rs_.SetFieldValue(L"sKey", COleVariant(key));
        rs_.SetFieldValue(L"dValue", value);
        rs_.Update();
    }
    double value() { return rs_.GetFieldValue(L"dValue").dblVal; }

    CDaoDatabase db_;
    CDaoRecordset rs_{&db_};
};

TEST_F(DaoSeek, NeedsACurrentIndex) {
    const COleVariant key(L"Wall");
    EXPECT_EQ(daoCode([&] { rs_.Seek(L"=", &key); }), 3019);
    rs_.SetCurrentIndex(L"isxKey");
    const COleVariant keys[2] = {COleVariant(L"a"), COleVariant(L"b")};
    EXPECT_EQ(daoCode([&] { rs_.Seek(L"=", keys, 2); }), 3001);
    EXPECT_EQ(daoCode([&] { rs_.Seek(L"~", keys, 1); }), 3001);
}

TEST_F(DaoSeek, OneFieldTextWithoutCase) {
    rs_.SetCurrentIndex(L"isxKey");
    const COleVariant lower(L"äbc");
    ASSERT_TRUE(rs_.Seek(L"=", &lower));
    EXPECT_EQ(rs_.GetFieldValue(L"sKey").bstrVal, L"ÄBC");
    const COleVariant wall(L"WALL");
    ASSERT_TRUE(rs_.Seek(L"=", &wall));
    EXPECT_EQ(value(), 1.0);  // the first in index order (then by record)
    rs_.MoveNext();
    EXPECT_EQ(value(), 3.0);
    const COleVariant missing(L"Floor");
    EXPECT_FALSE(rs_.Seek(L"=", &missing));
    EXPECT_EQ(daoCode([&] { rs_.GetFieldValue(0); }), 3021);
    // After a failed seek the cursor can be moved again.
    rs_.MoveFirst();
    EXPECT_EQ(rs_.GetFieldValue(L"sKey").bstrVal, L"Door");
}

TEST_F(DaoSeek, TwoFieldsWithNulls) {
    rs_.SetCurrentIndex(L"isxSystemKey");
    const COleVariant general[2] = {COleVariant::Null(), COleVariant(L"wall")};
    ASSERT_TRUE(rs_.Seek(L"=", general, 2));
    EXPECT_EQ(value(), 1.0);
    const COleVariant second[2] = {COleVariant(2L), COleVariant(L"wall")};
    ASSERT_TRUE(rs_.Seek(L"=", second, 2));
    EXPECT_EQ(value(), 5.0);
    // A key given as text for a Long field converts.
    const COleVariant asText[2] = {COleVariant(L"1"), COleVariant(L"äbc")};
    ASSERT_TRUE(rs_.Seek(L"=", asText, 2));
    EXPECT_EQ(value(), 4.0);
    // A leading part of the key.
    const COleVariant first = COleVariant(2);
    ASSERT_TRUE(rs_.Seek(L"=", &first, 1));
    EXPECT_EQ(rs_.GetFieldValue(L"sKey").bstrVal, L"Roof");
    const COleVariant none[2] = {COleVariant(3), COleVariant(L"Wall")};
    EXPECT_FALSE(rs_.Seek(L"=", none, 2));
}

TEST_F(DaoSeek, Comparisons) {
    rs_.SetCurrentIndex(L"isxKey");
    const COleVariant e(L"E");
    ASSERT_TRUE(rs_.Seek(L">=", &e));
    EXPECT_EQ(rs_.GetFieldValue(L"sKey").bstrVal, L"Roof");
    const COleVariant roof(L"roof");
    ASSERT_TRUE(rs_.Seek(L">", &roof));
    EXPECT_EQ(rs_.GetFieldValue(L"sKey").bstrVal, L"Wall");
    ASSERT_TRUE(rs_.Seek(L"<", &roof));
    EXPECT_EQ(rs_.GetFieldValue(L"sKey").bstrVal, L"Door");
    ASSERT_TRUE(rs_.Seek(L"<=", &roof));
    EXPECT_EQ(rs_.GetFieldValue(L"sKey").bstrVal, L"Roof");
    // ÄBC sorts after the ASCII letters; "A" is before everything.
    const COleVariant a(L"A");
    EXPECT_FALSE(rs_.Seek(L"<", &a));
    // A descending index: ">" goes on towards smaller values, nulls last.
    rs_.SetCurrentIndex(L"isxValueDown");
    const COleVariant three(3.0);
    ASSERT_TRUE(rs_.Seek(L">", &three));
    EXPECT_EQ(value(), 2.0);
    rs_.MoveNext();
    rs_.MoveNext();
    EXPECT_EQ(rs_.GetFieldValue(L"dValue").vt, VT_NULL);
    rs_.MoveNext();
    EXPECT_TRUE(rs_.IsEOF());
}

TEST_F(DaoSeek, PrimaryKeyIsTheRowId) {
    rs_.SetCurrentIndex(L"PrimaryKey");
    const COleVariant id(4);
    ASSERT_TRUE(rs_.Seek(L"=", &id));
    EXPECT_EQ(value(), 4.0);
    rs_.MoveNext();
    EXPECT_EQ(rs_.GetFieldValue(L"ixKey"), COleVariant(5));
    const COleVariant gone(99);
    EXPECT_FALSE(rs_.Seek(L"=", &gone));
}

}  // namespace
