// What LISP written for a CAD host relies on: = and /= on every type, text to distances
// and angles, units, case beyond ASCII, vl-sort's duplicates, the shared namespaces,
// vl-exit-with-value, trans, autoload, and the clear error of what this host cannot do.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "lisp_test_support.h"

namespace lisp::test {
namespace {

TEST(LispCompat, EqualityTakesEveryType) {
    TestInterp t;
    EXPECT_EQ(
        t.run(L"(list (= (type \"x\") 'STR) (= 'a 'a) (= nil nil) (= \"a\" \"a\") (= 1 1.0 1))"),
        L"(T T T T T)");
    EXPECT_EQ(t.run(L"(list (= \"a\" 1) (= 1 nil) (= 'a 'b) (= '(1) '(1)) (= \"a\" 'a))"),
              L"(nil nil nil nil nil)");
    EXPECT_EQ(t.run(L"(list (/= \"a\" 1) (/= 'a 'a) (/= 1 2 3) (/= 1 2 2) (= 'a))"),
              L"(T nil T nil T)");
    // the ordering comparisons still want numbers or strings
    EXPECT_EQ(t.error(L"(< 'a 'b)"), L"bad argument type: numberp: A");
}

TEST(LispCompat, DistofReadsEveryUnitMode) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (distof \"1.00E+02\" 1) (distof \"-12.5\" 2) (distof \"1'-5.50\\\"\" 3)"
                    L" (distof \"1'-5 1/2\\\"\" 4) (distof \"17 1/2\" 5) (distof \"17-1/2\" 5))"),
              L"(100.0 -12.5 17.5 17.5 17.5 17.5)");
    EXPECT_EQ(
        t.run(L"(list (distof \"2'\" 4) (distof \"3/4\" 5) (distof \"17.5\" 4) (distof \"1e3\"))"),
        L"(24.0 0.75 17.5 1000.0)");
    EXPECT_EQ(
        t.run(
            L"(list (distof \"\") (distof \"abc\" 2) (distof \"1'-5\\\"\" 2) (distof \"1/0\" 5))"),
        L"(nil nil nil nil)");
    // what rtos writes, distof reads back
    EXPECT_EQ(t.run(L"(list (distof (rtos 17.5 4 2) 4) (distof (rtos 17.5 3 2) 3) (distof (rtos "
                    L"17.5 5 2) 5))"),
              L"(17.5 17.5 17.5)");
    EXPECT_EQ(t.error(L"(distof \"1\" 7)"), L"bad argument value: units mode 7");
}

TEST(LispCompat, AngtofReadsEveryAngleMode) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(mapcar '(lambda (x) (rtos x 2 6))"
                    L" (list (angtof \"90\" 0) (angtof \"45d30'\" 1) (angtof \"100g\" 2) (angtof "
                    L"\"1.5r\" 3)"
                    L" (angtof \"N 45d0'0\\\" E\" 4) (angtof \"S 45d W\" 4) (angtof \"-90\" 0)))"),
              L"(\"1.570796\" \"0.794125\" \"1.570796\" \"1.500000\" \"0.785398\" \"3.926991\" "
              L"\"4.712389\")");
    EXPECT_EQ(t.run(L"(list (angtof \"x\") (angtof \"N 45d\" 4) (angtof \"45d30'\" 0))"),
              L"(nil nil nil)");
}

TEST(LispCompat, CvunitConvertsWithinAQuantity) {
    TestInterp t;
    EXPECT_EQ(
        t.run(L"(list (cvunit 1 \"inch\" \"cm\") (cvunit 1 \"mile\" \"feet\") (cvunit 100 "
              L"\"celsius\" \"fahrenheit\")"
              L" (cvunit 1 \"sq foot\" \"square inches\") (cvunit 1 \"cu meter\" \"liters\"))"),
        L"(2.54 5280.0 212.0 144.0 1000.0)");
    EXPECT_EQ(t.run(L"(cvunit '(1 2 3) \"foot\" \"inch\")"), L"(12.0 24.0 36.0)");
    EXPECT_EQ(t.run(L"(list (cvunit 1 \"inch\" \"kg\") (cvunit 1 \"furlong\" \"parsec\") (cvunit 1 "
                    L"\"sq kg\" \"sq g\"))"),
              L"(nil nil nil)");
    EXPECT_EQ(t.run(L"(cvunit 180 \"degree\" \"radian\")"), L"3.14159");
}

TEST(LispCompat, CaseBeyondAscii) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (strcase \"\u00e4\u00f6\u00fc\u00e9 \u03b1\u03b2 \u0436\u0449 \u0161\")"
                    L" (xstrcase \"\u00c4\u00c9\u0391\u0416\" T) (strcase \"\u00df1\"))"),
              L"(\"\u00c4\u00d6\u00dc\u00c9 \u0391\u0392 \u0416\u0429 \u0160\" "
              L"\"\u00e4\u00e9\u03b1\u0436\" \"\u00df1\")");
}

TEST(LispCompat, VlSortDropsDuplicateIntegersOnly) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(vl-sort '(3 2 1 3 2) '<)"), L"(1 2 3)");
    EXPECT_EQ(t.run(L"(vl-sort '(3 2 1 3) '>)"), L"(3 2 1)");
    EXPECT_EQ(t.run(L"(vl-sort '(2.5 1 2.5 \"a\") '(lambda (a b) (< (vl-princ-to-string a) "
                    L"(vl-princ-to-string b))))"),
              L"(1 2.5 2.5 \"a\")");
    EXPECT_EQ(t.run(L"(vl-sort-i '(3 2 1 3) '<)"), L"(2 1 0 3)");
}

TEST(LispCompat, BlackboardAndPropagationReachEveryInterpreter) {
    TestInterp a, b;
    a.run(L"(vl-bb-set 'kelvo-test-shared 42)");
    EXPECT_EQ(b.run(L"(vl-bb-ref 'kelvo-test-shared)"), L"42");
    EXPECT_EQ(b.run(L"kelvo-test-shared"), L"nil");  // the blackboard is not the document
    b.run(L"(vl-bb-set 'kelvo-test-shared nil)");
    EXPECT_EQ(a.run(L"(vl-bb-ref 'kelvo-test-shared)"), L"nil");

    a.run(L"(setq kelvo-test-prop \"everywhere\") (vl-propagate 'kelvo-test-prop)");
    EXPECT_EQ(b.run(L"kelvo-test-prop"), L"\"everywhere\"");
    TestInterp later;
    EXPECT_EQ(later.run(L"kelvo-test-prop"), L"\"everywhere\"");

    EXPECT_EQ(a.run(L"(vl-doc-set 'kelvo-doc 5) (list kelvo-doc (vl-doc-ref 'kelvo-doc))"),
              L"(5 5)");
    EXPECT_EQ(b.run(L"(vl-doc-ref 'kelvo-doc)"), L"nil");
    EXPECT_EQ(a.error(L"(vl-doc-import \"app\" 'no-such-function)"),
              L"vl-doc-import: no function NO-SUCH-FUNCTION to import");
}

TEST(LispCompat, ExitWithValueAndError) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(vl-catch-all-apply '(lambda () (vl-exit-with-value 99) 1) nil)"), L"99");
    EXPECT_EQ(
        t.run(
            L"(vl-catch-all-error-message (vl-catch-all-apply 'vl-exit-with-error '(\"custom\")))"),
        L"\"custom\"");
    EXPECT_THROW(t.run(L"(vl-exit-with-value 1)"), ExitWithValue);
}

TEST(LispCompat, WhatAHeadlessHostCannotDoSaysSo) {
    TestInterp t;
    EXPECT_EQ(t.error(L"(new_dialog \"x\" 1)"),
              L"NEW_DIALOG is not available: this host has no dialog boxes (the dialog language)");
    EXPECT_EQ(t.error(L"(grdraw '(0 0) '(1 1) 1)"),
              L"GRDRAW is not available: this host has no graphics screen");
    EXPECT_EQ(
        t.error(L"(vlax-get-acad-object)"),
        L"VLAX-GET-ACAD-OBJECT is not available: this host has no automation objects (VLAX-...)");
    EXPECT_EQ(t.error(L"(apply 'vla-get-name '(nil))"),
              L"VLA-GET-NAME is not available: this host has no automation objects (VLA-...)");
    EXPECT_EQ(t.error(L"(no-such-function)"), L"no function definition: NO-SUCH-FUNCTION");
    // and what it can do, it does
    EXPECT_EQ(t.run(L"(list (vl-load-com) (gc) (type pause) pause (vports))"),
              L"(nil nil STR \"\\\\\" ((1 (0.0 0.0) (1.0 1.0))))");
    EXPECT_EQ(t.run(L"(list (ssgetfirst) (sssetfirst nil) (setview '((40 . 1.0))))"),
              L"((nil nil) (nil nil) nil)");
}

TEST(LispCompat, TransBetweenWorldAndObjectSystems) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (trans '(1 2 3) 0 1) (trans '(1 2) 1 0))"),
              L"((1.0 2.0 3.0) (1.0 2.0 0.0))");
    // an object system whose extrusion is the world's x axis: its x axis is world y
    EXPECT_EQ(t.run(L"(trans '(1 2 3) '(1 0 0) 0)"), L"(3.0 1.0 2.0)");
    EXPECT_EQ(t.run(L"(trans (trans '(1 2 3) 0 '(0.6 0 0.8)) '(0.6 0 0.8) 0)"), L"(1.0 2.0 3.0)");
    EXPECT_EQ(t.error(L"(trans '(1 2) 0 '(0 0 0))"), L"bad argument value: zero extrusion vector");
}

TEST(LispCompat, AtofReadsOnlyDecimalNumbers) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(list (atof \"0x1p4\") (atof \"inf\") (atof \"1.5e2x\") (atof \"2e\") (atof "
                    L"\" -.25\"))"),
              L"(0.0 0.0 150.0 2.0 -0.25)");
}

TEST(LispCompat, VariablesOfTheHostDriveFormatting) {
    std::map<std::wstring, Value> vars = {
        {L"LUNITS", Value::integer(4)},  {L"LUPREC", Value::integer(1)},
        {L"AUNITS", Value::integer(3)},  {L"AUPREC", Value::integer(2)},
        {L"DIMZIN", Value::integer(8)},  {L"UNITMODE", Value::integer(1)},
        {L"MAXSORT", Value::integer(2)}, {L"EXTNAMES", Value::integer(0)}};
    InterpIO io;
    io.getVar = [&](std::wstring_view name) -> std::optional<Value> {
        auto it = vars.find(std::wstring(name));
        if (it == vars.end()) return std::nullopt;
        return it->second;
    };
    io.setVar = [&](std::wstring_view name, Value v) { vars[std::wstring(name)] = std::move(v); };
    Interp in(io);
    auto run = [&](const wchar_t* source) { return Interp::prin1String(in.evalString(source)); };
    EXPECT_EQ(run(L"(list (rtos 17.5) (rtos 12.5 2 4) (rtos 17.5 5 2) (angtos pi))"),
              L"(\"1'5-1/2\\\"\" \"12.5\" \"17-1/2\" \"3.14r\")");
    EXPECT_EQ(run(L"(list (acad_strlsort '(\"b\" \"a\")) (acad_strlsort '(\"c\" \"b\" \"a\")))"),
              L"((\"a\" \"b\") nil)");
    EXPECT_EQ(run(L"(list (snvalid \"Has Space\") (snvalid \"Old_Name-1$\"))"), L"(nil T)");
    EXPECT_EQ(run(L"(distof \"1'6\\\"\")"), L"18.0");
    in.evalString(L"(findfile \"/no/such/file/anywhere\")");
    EXPECT_EQ(Interp::prin1String(vars[L"ERRNO"]), L"22");
    in.evalString(L"(open \"/no/such/dir/file\" \"r\")");
    EXPECT_EQ(Interp::prin1String(vars[L"ERRNO"]), L"22");
}

TEST(LispCompat, AutoloadLoadsTheFileOnTheFirstCall) {
    auto dir =
        std::filesystem::temp_directory_path() / ("kelvo-autoload-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    auto file = dir / "tool.lsp";
    {
        std::ofstream out(file);
        out << "(setq loads (1+ (if loads loads 0)))\n(defun c:tool (x) (list 'tool x))\n";
    }
    InterpIO io;
    io.findFile = [](std::wstring_view name) -> std::optional<std::filesystem::path> {
        std::filesystem::path p(name);
        if (std::filesystem::exists(p)) return p;
        return std::nullopt;
    };
    Interp in(io);
    auto run = [&](const std::wstring& source) {
        return Interp::prin1String(in.evalString(source));
    };
    std::wstring name = file.wstring();
    run(L"(autoload \"" + name + L"\" '(\"tool\" \"other\"))");
    EXPECT_EQ(run(L"loads"), L"nil");
    EXPECT_EQ(run(L"(c:tool 1)"), L"(TOOL 1)");
    EXPECT_EQ(run(L"(list (c:tool 2) loads)"), L"((TOOL 2) 1)");
    try {
        run(L"(c:other)");
        ADD_FAILURE() << "c:other ran";
    } catch (const Error& e) {
        EXPECT_EQ(e.message(), L"C:OTHER is not defined by " + name);
    }
    std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace lisp::test
