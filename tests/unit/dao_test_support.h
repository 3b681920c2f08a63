// Shared pieces of the data access engine's tests: a fresh folder per test, and catching
// the engine's exceptions by DAO number.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "dao.h"

namespace daotest {

// The DAO number and message of what the call throws (0 and "" when it throws nothing).
inline std::pair<long, std::wstring> daoError(const std::function<void()>& call) {
    try {
        call();
    } catch (CDaoException* e) {
        std::pair<long, std::wstring> result{e->daoCode(), e->message()};
        e->Delete();
        return result;
    }
    return {0, L""};
}

inline long daoCode(const std::function<void()>& call) { return daoError(call).first; }

class DaoTest : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/kelvo-dao-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir_ = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    std::wstring path(const std::string& name) const { return (dir_ / name).wstring(); }

    // A new database with the table tblPart (ixPart AutoNumber primary key, sName Text(20)
    // Required with a unique index, iQty Integer, dPrice Double, bActive Yes/No, dtMade Date,
    // cCost Currency, mNote Memo) and an index ixQty on iQty.
    void makeParts(CDaoDatabase& db, const std::wstring& file) {
        db.Create(file.c_str());
        CDaoTableDef table(&db);
        table.Create(L"tblPart");
        table.CreateField(L"ixPart", dbLong, 4, dbAutoIncrField);
        CDaoFieldInfo name;
        name.m_strName = L"sName";
        name.m_nType = dbText;
        name.m_lSize = 20;
        name.m_bRequired = true;
        name.m_bAllowZeroLength = true;
        table.CreateField(name);
        table.CreateField(L"iQty", dbInteger, 2);
        table.CreateField(L"dPrice", dbDouble, 8);
        table.CreateField(L"bActive", dbBoolean, 1);
        table.CreateField(L"dtMade", dbDate, 8);
        table.CreateField(L"cCost", dbCurrency, 8);
        table.CreateField(L"mNote", dbMemo, 0);
        CDaoIndexInfo primary;
        primary.m_strName = L"PrimaryKey";
        primary.m_fieldInfos = {{L"ixPart", false}};
        primary.m_bPrimary = true;
        table.CreateIndex(primary);
        CDaoIndexInfo byName;
        byName.m_strName = L"sName";
        byName.m_fieldInfos = {{L"sName", false}};
        byName.m_bUnique = true;
        table.CreateIndex(byName);
        CDaoIndexInfo byQty;
        byQty.m_strName = L"ixQty";
        byQty.m_fieldInfos = {{L"iQty", false}};
        table.CreateIndex(byQty);
        table.Append();
    }

    // Appends a part through a table recordset.
    static void addPart(CDaoRecordset& rs, const wchar_t* name, short qty) {
        rs.AddNew();
        rs.SetFieldValue(L"sName", COleVariant(name));
        rs.SetFieldValue(L"iQty", COleVariant(qty));
        rs.Update();
    }

    std::filesystem::path dir_;
};

}  // namespace daotest
