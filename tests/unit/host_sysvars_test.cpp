// System variables through getvar/setvar and acedGetVar/acedSetVar: the table, where each
// value lives (drawing, session, worked out), and the writes that are refused.

#include <gtest/gtest.h>

#include "acdocman.h"
#include "adslib.h"
#include "lisp/interp.h"
#include "runtime/drawing/drawing_access.h"
#include "runtime/host.h"
#include "runtime/sysvar_table.h"

namespace {

using kelvo::host::Host;
using kelvo::host::SysvarScope;
using kelvo::host::SysvarType;

class HostSysvars : public ::testing::Test {
protected:
    void SetUp() override {
        Host::instance().setOutput([](std::wstring_view) {});
        Host::instance().newDocument();
    }
    void TearDown() override {
        Host::instance().shutdown();
        Host::instance().setOutput(nullptr);
    }
    std::wstring run(std::wstring_view source) {
        return lisp::Interp::prin1String(Host::instance().interp().evalString(source));
    }
    std::wstring error(std::wstring_view source) {
        try {
            Host::instance().interp().evalString(source);
        } catch (const lisp::Error& e) {
            return e.message();
        }
        return L"";
    }
};

TEST(SysvarTable, EveryRowIsWellFormed) {
    EXPECT_GT(kelvo::host::sysvarCount(), 1000u);
    const auto* lunits = kelvo::host::findSysvar(L"lunits");
    ASSERT_NE(lunits, nullptr);
    EXPECT_EQ(lunits->type, SysvarType::Int);
    EXPECT_EQ(lunits->scope, SysvarScope::Drawing);
    EXPECT_EQ(*lunits->low, 1);
    EXPECT_EQ(*lunits->high, 5);
    const auto* extmin = kelvo::host::findSysvar(L"EXTMIN");
    ASSERT_NE(extmin, nullptr);
    EXPECT_TRUE(extmin->readOnly);
    EXPECT_EQ(extmin->type, SysvarType::List);
    EXPECT_EQ(kelvo::host::findSysvar(L"NO-SUCH-VARIABLE"), nullptr);
}

TEST_F(HostSysvars, EveryVariableReadsWithItsType) {
    for (const wchar_t* name : {L"CMDECHO", L"OSMODE", L"ERRNO", L"USERI5", L"MAXSORT"})
        EXPECT_EQ(run(std::wstring(L"(type (getvar \"") + name + L"\"))"), L"INT") << name;
    for (const wchar_t* name : {L"DATE", L"CDATE", L"USERR1", L"TDCREATE", L"DIMSCALE", L"SNAPANG"})
        EXPECT_EQ(run(std::wstring(L"(type (getvar \"") + name + L"\"))"), L"REAL") << name;
    for (const wchar_t* name : {L"CTAB", L"HANDSEED", L"DWGNAME", L"DWGPREFIX", L"ACADVER",
                                L"USERS1", L"CECOLOR", L"CLAYER"})
        EXPECT_EQ(run(std::wstring(L"(type (getvar \"") + name + L"\"))"), L"STR") << name;
    EXPECT_EQ(run(L"(list (getvar \"CTAB\") (getvar \"CECOLOR\") (getvar \"cmdecho\") (getvar "
                  L"\"nosuch\"))"),
              L"(\"Model\" \"BYLAYER\" 1 nil)");
    EXPECT_EQ(run(L"(wcmatch (getvar \"DWGNAME\") \"Drawing#*.dwg\")"), L"T");
}

TEST_F(HostSysvars, WritesOutsideTheRulesAreRefusedAndChangeNothing) {
    EXPECT_EQ(error(L"(setvar \"EXTMIN\" '(0 0 0))"),
              L"variable setting rejected: \"EXTMIN\" (0 0 0)");
    EXPECT_EQ(error(L"(setvar \"ERRNO\" 0)"), L"variable setting rejected: \"ERRNO\" 0");
    EXPECT_EQ(error(L"(setvar \"DWGNAME\" \"x.dwg\")"),
              L"variable setting rejected: \"DWGNAME\" \"x.dwg\"");
    EXPECT_EQ(error(L"(setvar \"LUNITS\" 9)"), L"variable setting rejected: \"LUNITS\" 9");
    EXPECT_EQ(error(L"(setvar \"CMDECHO\" 2)"), L"variable setting rejected: \"CMDECHO\" 2");
    EXPECT_EQ(error(L"(setvar \"USERI1\" 1.5)"), L"variable setting rejected: \"USERI1\" 1.5");
    EXPECT_EQ(error(L"(setvar \"USERI1\" 40000)"), L"variable setting rejected: \"USERI1\" 40000");
    EXPECT_EQ(error(L"(setvar \"USERS1\" 5)"), L"variable setting rejected: \"USERS1\" 5");
    EXPECT_EQ(error(L"(setvar \"NOSUCH\" 5)"), L"variable setting rejected: \"NOSUCH\" 5");
    EXPECT_EQ(run(L"(list (getvar \"LUNITS\") (getvar \"CMDECHO\") (getvar \"USERI1\") (getvar "
                  L"\"USERS1\"))"),
              L"(2 1 0 \"\")");
    // a real variable takes an integer, as a real
    EXPECT_EQ(run(L"(setvar \"USERR1\" 2)"), L"2");
    EXPECT_EQ(run(L"(getvar \"USERR1\")"), L"2.0");
    EXPECT_EQ(run(L"(progn (setvar \"CECOLOR\" \"1\") (getvar \"CECOLOR\"))"), L"\"1\"");
    EXPECT_EQ(error(L"(setvar \"CECOLOR\" \"purple\")"),
              L"variable setting rejected: \"CECOLOR\" \"purple\"");
}

TEST_F(HostSysvars, DrawingVariablesBelongToTheirDrawingAndSessionVariablesToAll) {
    run(L"(setvar \"USERI1\" 7) (setvar \"CMDECHO\" 0) (setvar \"LUNITS\" 4)");
    Host::instance().newDocument();
    EXPECT_EQ(run(L"(list (getvar \"USERI1\") (getvar \"CMDECHO\") (getvar \"LUNITS\"))"),
              L"(0 0 2)");
    ASSERT_TRUE(Host::instance().activateDocument(0));
    EXPECT_EQ(run(L"(list (getvar \"USERI1\") (getvar \"CMDECHO\") (getvar \"LUNITS\"))"),
              L"(7 0 4)");
    // LUNITS is the drawing's header variable: the database holds it
    auto* db = acDocManagerPtr()->curDocument()->database();
    EXPECT_EQ(db->lunits(), 4);
    run(L"(setvar \"CMDECHO\" 1)");
}

TEST_F(HostSysvars, TheHostSetsWhatLispCannot) {
    EXPECT_EQ(run(L"(progn (findfile \"/no/such/path/at/all\") (getvar \"ERRNO\"))"), L"22");
    EXPECT_EQ(run(L"(progn (handent \"ZZZZ\") (getvar \"ERRNO\"))"), L"13");
    // the drawing reader sets read-only header variables through the drawing itself
    auto* db = acDocManagerPtr()->curDocument()->database();
    EXPECT_EQ(kelvo::drawing::setHeaderVariable(*db, L"$EXTMIN", AcGePoint3d(1, 2, 3)), Acad::eOk);
    EXPECT_EQ(run(L"(getvar \"EXTMIN\")"), L"(1.0 2.0 3.0)");
    resbuf value{};
    value.restype = RTSHORT;
    value.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"ERRNO", &value), RTERROR);
    value.resval.rint = 3;
    EXPECT_EQ(acedSetVar(L"USERI2", &value), RTNORM);
    EXPECT_EQ(run(L"(getvar \"USERI2\")"), L"3");
    EXPECT_NE(run(L"(getvar \"HANDSEED\")"), L"nil");
}

}  // namespace
