// The dialect's functions as SQLite functions: text, dates, conversions, numbers,
// Format and the aggregates.
#include "jet_test_support.h"

#include "jet_dates.h"

namespace kelvo::jet::testing {
namespace {

TEST(JetFunctions, Text) {
    JetDb db;
    EXPECT_EQ(db.value("Len('Größe')"), "5");
    EXPECT_EQ(db.value("Len(Null)"), "NULL");
    EXPECT_EQ(db.value("Mid('Größe', 3, 2)"), "öß");
    EXPECT_EQ(db.value("Mid('abc', 2)"), "bc");
    EXPECT_EQ(db.value("Mid('abc', 5)"), "");
    EXPECT_EQ(db.runtimeError("Mid('abc', 0)"), "Invalid procedure call or argument.");
    EXPECT_EQ(db.value("Left('abc', 5) & '|' & Right('abc', 2) & '|' & Left$('abc', 1)"), "abc|bc|a");
    EXPECT_EQ(db.value("UCase('straße é')"), "STRAßE É");
    EXPECT_EQ(db.value("LCase('ÀB')"), "àb");
    EXPECT_EQ(db.value("'[' & Trim('  a b  ') & '|' & LTrim(' a ') & '|' & RTrim(' a ') & ']'"),
              "[a b|a | a]");
    EXPECT_EQ(db.value("InStr('Hello', 'L')"), "3");          // text compare by default
    EXPECT_EQ(db.value("InStr(4, 'Hello', 'l')"), "4");
    EXPECT_EQ(db.value("InStr(1, 'Hello', 'L', 0)"), "0");    // binary compare
    EXPECT_EQ(db.value("InStr('abc', '')"), "1");
    EXPECT_EQ(db.value("InStrRev('a.b.c', '.')"), "4");
    EXPECT_EQ(db.value("Replace('aXbxc', 'x', '-')"), "a-b-c");
    EXPECT_EQ(db.value("Replace('aXbxc', 'x', '-', 1, 1)"), "a-bxc");
    EXPECT_EQ(db.value("Replace('aXbxc', 'x', '-', 3)"), "b-c");  // from the start position
    EXPECT_EQ(db.value("'[' & Space(3) & ']' & String(3, '*') & String(2, 65)"), "[   ]***AA");
    EXPECT_EQ(db.value("StrComp('abc', 'ABC') & StrComp('a', 'b') & StrComp('b', 'A', 0)"), "0-11");
    EXPECT_EQ(db.value("StrReverse('abç')"), "çba");
    EXPECT_EQ(db.value("StrConv('hello wORLD', 3)"), "Hello World");
    EXPECT_EQ(db.value("Asc('A') + Asc('é')"), "298");
    EXPECT_EQ(db.value("Chr(65) & Chr(233)"), "Aé");
}

TEST(JetFunctions, ChoicesAndNulls) {
    JetDb db;
    EXPECT_EQ(db.value("IIf(1 > 2, 'yes', 'no')"), "no");
    EXPECT_EQ(db.value("IIf(Null, 'yes', 'no')"), "no");
    EXPECT_EQ(db.value("IIf(-1, 'yes', 'no')"), "yes");
    EXPECT_EQ(db.value("Nz(Null, 5)"), "5");
    EXPECT_EQ(db.value("Nz(Null)"), "");
    EXPECT_EQ(db.value("Nz(3, 5)"), "3");
    EXPECT_EQ(db.value("IsNull(Null) & IsNull(0)"), "-10");
    EXPECT_EQ(db.value("Switch(1 > 2, 'a', 2 > 1, 'b')"), "b");
    EXPECT_EQ(db.value("Switch(False, 'a')"), "NULL");
    EXPECT_EQ(db.value("Choose(2, 'a', 'b', 'c')"), "b");
    EXPECT_EQ(db.value("Choose(4, 'a', 'b', 'c')"), "NULL");
    EXPECT_EQ(syntaxCode("SELECT Switch(1, 2, 3)"), 3075);
}

TEST(JetFunctions, Dates) {
    JetDb db;
    const std::string d = "#1/31/2003 14:05:09#";  // a Friday
    EXPECT_EQ(db.value("Year(" + d + ") & '-' & Month(" + d + ") & '-' & Day(" + d + ")"), "2003-1-31");
    EXPECT_EQ(db.value("Hour(" + d + ") & ':' & Minute(" + d + ") & ':' & Second(" + d + ")"), "14:5:9");
    EXPECT_EQ(db.value("Weekday(" + d + ")"), "6");
    EXPECT_EQ(db.value("Weekday(" + d + ", 2)"), "5");  // weeks from Monday
    EXPECT_EQ(db.value("Year('7/4/1999')"), "1999");    // date text is read as a date
    EXPECT_EQ(db.value("DateSerial(2003, 1, 31)"), "37652");
    EXPECT_EQ(db.value("DateSerial(2003, 13, 1) = #1/1/2004#"), "-1");
    EXPECT_EQ(db.value("DateSerial(2004, 3, 0) = #2/29/2004#"), "-1");
    EXPECT_EQ(db.value("DateSerial(99, 1, 1) = #1/1/1999#"), "-1");
    EXPECT_EQ(db.value("DateAdd('m', 1, #1/31/2003#) = #2/28/2003#"), "-1");
    EXPECT_EQ(db.value("DateAdd('yyyy', 1, #2/29/2004#) = #2/28/2005#"), "-1");
    EXPECT_EQ(db.value("DateAdd('q', -1, #5/15/2003#) = #2/15/2003#"), "-1");
    EXPECT_EQ(db.value("DateAdd('d', 1, #12/29/1899 6:00#)"), "0.25");
    EXPECT_EQ(db.value("DateAdd('h', 12, #1/31/2003 18:00#) = #2/1/2003 6:00#"), "-1");
    EXPECT_EQ(db.value("DateDiff('d', #1/31/2003#, #3/1/2003#)"), "29");
    EXPECT_EQ(db.value("DateDiff('m', #1/31/2003#, #2/1/2003#)"), "1");
    EXPECT_EQ(db.value("DateDiff('yyyy', #12/31/2003#, #1/1/2004#)"), "1");
    EXPECT_EQ(db.value("DateDiff('h', #1/1/2003 23:59#, #1/2/2003 0:01#)"), "1");
    EXPECT_EQ(db.value("DateDiff('ww', #1/31/2003#, #2/2/2003#)"), "1");  // crosses a Sunday
    EXPECT_EQ(db.value("DateDiff('ww', #2/2/2003#, #2/8/2003#)"), "0");
    EXPECT_EQ(db.value("DateDiff('w', #1/1/2003#, #1/15/2003#)"), "2");
    EXPECT_EQ(db.value("DatePart('q', " + d + ")"), "1");
    EXPECT_EQ(db.value("DatePart('y', #3/1/2004#)"), "61");
    EXPECT_EQ(db.value("DatePart('ww', #1/4/2003#)"), "1");
    EXPECT_EQ(db.value("DatePart('ww', #1/5/2003#)"), "2");
    EXPECT_EQ(db.value("DateValue('1/31/2003 14:30')"), "37652");
    EXPECT_EQ(db.value("TimeValue('6:00 PM')"), "0.75");
    EXPECT_EQ(db.value("TimeSerial(25, 0, 0)"), "1.04166666666667");
    EXPECT_EQ(db.value("CDate('January 31, 2003')"), "37652");
    EXPECT_EQ(db.value("IsDate('2/29/2003') & IsDate('2/28/2003')"), "0-1");
    EXPECT_EQ(db.value("MonthName(2) & WeekdayName(1, True)"), "FebruarySun");
    EXPECT_EQ(db.runtimeError("Year('not a date')"), "Data type mismatch in criteria expression.");
    EXPECT_EQ(db.runtimeError("DateAdd('zz', 1, #1/1/2003#)"), "Invalid procedure call or argument.");
    // Now, Date and Time agree with the clock they read.
    const double before = nowOleDate();
    const double now = std::stod(db.value("Now()"));
    EXPECT_GE(now, before - 1.0 / 86400);
    EXPECT_EQ(std::stod(db.value("Date()")), std::floor(now));
    EXPECT_LT(std::stod(db.value("Time()")), 1.0);
}

TEST(JetFunctions, Conversions) {
    JetDb db;
    EXPECT_EQ(db.value("CInt(2.5) & CInt(3.5) & CInt(-2.5)"), "24-2");  // half to even
    EXPECT_EQ(db.runtimeError("CInt(32768)"), "Overflow.");
    EXPECT_EQ(db.value("CLng('  12 ')"), "12");
    EXPECT_EQ(db.runtimeError("CLng('12a')"), "Data type mismatch in criteria expression.");
    EXPECT_EQ(db.runtimeError("CLng(Null)"), "Invalid use of Null.");
    EXPECT_EQ(db.runtimeError("CByte(256)"), "Overflow.");
    EXPECT_EQ(db.value("CDbl('1.5e3')"), "1500");
    EXPECT_EQ(db.value("CSng(0.1) = 0.1"), "0");  // single precision
    EXPECT_EQ(db.value("CCur(1.23456)"), "1.2346");
    EXPECT_EQ(db.value("CCur(0.00005)"), "0");     // half to even at four decimals
    EXPECT_EQ(db.value("CBool(5) & CBool(0) & CBool('True')"), "-10-1");
    EXPECT_EQ(db.value("CStr(1.5) & CStr(1E+20) & CStr(0.1 + 0.2)"), "1.51E+200.3");
    EXPECT_EQ(db.value("Val('  12 34abc')"), "1234");
    EXPECT_EQ(db.value("Val('&HFF') + Val('1.5e2') + Val('x')"), "405");
    EXPECT_EQ(db.value("'[' & Str(5) & '][' & Str(-5) & ']'"), "[ 5][-5]");
    EXPECT_EQ(db.value("Hex(255) & ' ' & Hex(-1) & ' ' & Oct(8)"), "FF FFFFFFFF 10");
    EXPECT_EQ(db.value("IsNumeric('1.5') & IsNumeric('x') & IsNumeric(Null)"), "-100");
}

TEST(JetFunctions, Numbers) {
    JetDb db;
    EXPECT_EQ(db.value("Int(-2.5) & ' ' & Fix(-2.5) & ' ' & Int(7)"), "-3 -2 7");
    EXPECT_EQ(db.value("Round(2.5) & ' ' & Round(3.5) & ' ' & Round(2.125, 2) & ' ' & Round(2.375, 2)"),
              "2 4 2.12 2.38");  // halves exact in binary go to even
    EXPECT_EQ(db.value("Round(-1.5)"), "-2");
    EXPECT_EQ(db.value("Abs(-3) & ' ' & Sgn(-3) & ' ' & Sgn(0) & ' ' & Sqr(16)"), "3 -1 0 4");
    EXPECT_EQ(db.runtimeError("Sqr(-1)"), "Invalid procedure call or argument.");
    EXPECT_EQ(db.runtimeError("Log(0)"), "Invalid procedure call or argument.");
    EXPECT_EQ(db.value("Round(Exp(1), 4) & ' ' & Round(Atn(1) * 4, 5)"), "2.7183 3.14159");
}

TEST(JetFunctions, FormatDatesAndNumbers) {
    JetDb db;
    const std::string d = "#1/5/2003 14:05:09#";  // a Sunday
    EXPECT_EQ(db.value("Format(" + d + ", 'yyyy-mm-dd')"), "2003-01-05");
    EXPECT_EQ(db.value("Format(" + d + ", 'Short Date')"), "1/5/2003");
    EXPECT_EQ(db.value("Format(" + d + ", 'Long Date')"), "Sunday, January 5, 2003");
    EXPECT_EQ(db.value("Format(" + d + ", 'Medium Date')"), "05-Jan-03");
    EXPECT_EQ(db.value("Format(" + d + ", 'Long Time')"), "2:05:09 PM");
    EXPECT_EQ(db.value("Format(" + d + ", 'Short Time')"), "14:05");
    EXPECT_EQ(db.value("Format(" + d + ", 'General Date')"), "1/5/2003 2:05:09 PM");
    EXPECT_EQ(db.value("Format(" + d + ", 'hh:mm:ss')"), "14:05:09");  // mm after hh: minutes
    EXPECT_EQ(db.value("Format(" + d + ", 'ddd d mmm yy, h AM/PM')"), "Sun 5 Jan 03, 2 PM");
    EXPECT_EQ(db.value("Format(" + d + ", '\"Q\"q yyyy')"), "Q1 2003");
    EXPECT_EQ(db.value("Format(1234.5, '0.00')"), "1234.50");
    EXPECT_EQ(db.value("Format(1234.5, '#,##0.00')"), "1,234.50");
    EXPECT_EQ(db.value("Format(1234567, 'Standard')"), "1,234,567.00");
    EXPECT_EQ(db.value("Format(1234.5, 'Currency')"), "$1,234.50");
    EXPECT_EQ(db.value("Format(-1234.5, 'Currency')"), "($1,234.50)");
    EXPECT_EQ(db.value("Format(0.125, 'Percent')"), "12.50%");
    EXPECT_EQ(db.value("Format(-3.14159, '0.0')"), "-3.1");
    EXPECT_EQ(db.value("Format(5, '000')"), "005");
    EXPECT_EQ(db.value("Format(0.5, '#.##')"), ".5");
    EXPECT_EQ(db.value("Format(0, '0;(0);\"zero\"')"), "zero");
    EXPECT_EQ(db.value("Format(1234.5, 'Scientific')"), "1.23E+03");
    EXPECT_EQ(db.value("Format(5551234, '000-0000')"), "555-1234");
    EXPECT_EQ(db.value("Format(1, 'Yes/No') & Format(0, 'True/False')"), "YesFalse");
    EXPECT_EQ(db.value("Format('abc', '>')"), "ABC");
    EXPECT_EQ(db.value("Format(1.5)"), "1.5");
    EXPECT_EQ(db.value("Format(Null, '0.00')"), "NULL");
    EXPECT_EQ(db.value("FormatNumber(1234.567)"), "1,234.57");
    EXPECT_EQ(db.value("FormatCurrency(-5, 0)"), "($5)");
    EXPECT_EQ(db.value("FormatDateTime(" + d + ", 2)"), "1/5/2003");
}

TEST(JetFunctions, Aggregates) {
    JetDb db;
    db.exec("CREATE TABLE v (g INTEGER, x REAL, seq INTEGER);"
            "INSERT INTO v VALUES (1, 2, 1), (1, 4, 2), (1, 4, 3), (1, 4, 4), (1, 5, 5), (1, 5, 6),"
            " (1, 7, 7), (1, 9, 8), (2, NULL, 1), (2, 3, 2);");
    // 2 4 4 4 5 5 7 9: mean 5, population variance 4, sample variance 32/7.
    EXPECT_EQ(db.query("SELECT StDevP(x), VarP(x), Round(Var(x), 6), First(x), Last(x) FROM "
                       "(SELECT * FROM v ORDER BY seq) WHERE g = 1"),
              (Rows{{"2", "4", "4.571429", "2", "9"}}));
    EXPECT_EQ(db.query("SELECT StDev(x), Var(x), VarP(x), First(x), Last(x) FROM "
                       "(SELECT * FROM v ORDER BY seq) WHERE g = 2"),
              (Rows{{"NULL", "NULL", "0", "NULL", "3"}}));
    EXPECT_EQ(db.query("SELECT StDev(x) FROM v WHERE g = 3"), (Rows{{"NULL"}}));
    std::vector<std::string> names;
    db.query("SELECT g, First(x), StDev(x) FROM v GROUP BY g", {}, &names);
    EXPECT_EQ(names, (Row{"g", "FirstOfx", "StDevOfx"}));
}

}  // namespace
}  // namespace kelvo::jet::testing
