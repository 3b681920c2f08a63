// Access expressions run through the translator on SQLite: literals, operators, Null
// rules, comparisons without regard to case, and LIKE's wildcards.
#include "jet_test_support.h"

namespace kelvo::jet::testing {
namespace {

TEST(JetExpressions, LiteralsOfAccess) {
    JetDb db;
    EXPECT_EQ(db.value("True"), "-1");
    EXPECT_EQ(db.value("Yes"), "-1");
    EXPECT_EQ(db.value("False"), "0");
    EXPECT_EQ(db.value("Off"), "0");
    EXPECT_EQ(db.value("\"double \"\"quoted\"\" text\""), "double \"quoted\" text");
    EXPECT_EQ(db.value("'it''s'"), "it's");
    EXPECT_EQ(db.value("\"it's\""), "it's");
    EXPECT_EQ(db.value("&H1F"), "31");
    EXPECT_EQ(db.value(".5 * 2"), "1");
}

TEST(JetExpressions, DateLiteralsAreOleDates) {
    JetDb db;
    // 2003-01-31 is 37652 days after 1899-12-30.
    EXPECT_EQ(db.value("#1/31/2003#"), "37652");
    EXPECT_EQ(db.value("#2003-01-31#"), "37652");
    EXPECT_EQ(db.value("#31-Jan-2003#"), "37652");
    EXPECT_EQ(db.value("#January 31, 2003#"), "37652");
    EXPECT_EQ(db.value("#1/31/2003 14:30#"), "37652.6041666667");
    EXPECT_EQ(db.value("#1/31/2003 2:30 PM#"), "37652.6041666667");
    EXPECT_EQ(db.value("#12/31/1899#"), "1");
    EXPECT_EQ(db.value("#12/30/1899#"), "0");
    EXPECT_EQ(db.value("#12/29/1899 6:00#"), "-1.25");  // before the epoch, time counts forward
    EXPECT_EQ(db.value("#1/1/95#"), db.value("#1/1/1995#"));
    EXPECT_EQ(db.value("#1/1/29#"), db.value("#1/1/2029#"));
    EXPECT_EQ(db.value("#18:00#"), "0.75");
    EXPECT_EQ(syntaxCode("SELECT #2/30/2003#"), 3075);
    EXPECT_EQ(syntaxCode("SELECT #1/31/2003"), 3075);
    EXPECT_EQ(syntaxMessage("SELECT #13/13/2003#"),
              "Syntax error in date in query expression '#13/13/2003#'.");
}

TEST(JetExpressions, ArithmeticAsAccessDoesIt) {
    JetDb db;
    EXPECT_EQ(db.value("7 / 2"), "3.5");
    EXPECT_EQ(db.value("7 \\ 2"), "3");
    EXPECT_EQ(db.value("-7 \\ 2"), "-3");
    EXPECT_EQ(db.value("7.6 \\ 2"), "4");        // operands round first
    EXPECT_EQ(db.value("2.5 \\ 1"), "2");        // half to even
    EXPECT_EQ(db.value("10 Mod 3"), "1");
    EXPECT_EQ(db.value("-10 Mod 3"), "-1");      // sign of the dividend
    EXPECT_EQ(db.value("10.5 Mod 3"), "1");      // 10.5 rounds to 10
    EXPECT_EQ(db.value("2 ^ 10"), "1024");
    EXPECT_EQ(db.value("-2 ^ 2"), "-4");         // ^ binds tighter than negation
    EXPECT_EQ(db.value("2 ^ -1"), "0.5");
    EXPECT_EQ(db.value("1 + 2 * 3"), "7");
    EXPECT_EQ(db.value("(1 + 2) * 3"), "9");
    EXPECT_EQ(db.value("10 - 2 - 3"), "5");
    EXPECT_EQ(db.value("2 * 3 Mod 4"), "2");     // * before Mod
    EXPECT_EQ(db.runtimeError("1 / 0"), "Division by zero.");
    EXPECT_EQ(db.runtimeError("1 Mod 0"), "Division by zero.");
    EXPECT_EQ(db.value("Null / 0"), "NULL");
}

TEST(JetExpressions, ConcatenationAndPlus) {
    JetDb db;
    EXPECT_EQ(db.value("Null & \"a\""), "a");
    EXPECT_EQ(db.value("\"a\" & Null"), "a");
    EXPECT_EQ(db.value("Null & Null"), "NULL");
    EXPECT_EQ(db.value("\"n=\" & 1.5"), "n=1.5");
    EXPECT_EQ(db.value("1 & 2"), "12");
    EXPECT_EQ(db.value("\"a\" + \"b\""), "ab");
    EXPECT_EQ(db.value("\"a\" + Null"), "NULL");
    EXPECT_EQ(db.value("1 + 2"), "3");
    EXPECT_EQ(db.value("\"1\" + 2"), "3");
    EXPECT_EQ(db.runtimeError("\"a\" + 2"), "Data type mismatch in criteria expression.");
    EXPECT_EQ(db.value("1 + 2 & 3"), "33");  // + before &
}

TEST(JetExpressions, LogicAndComparisonsGiveMinusOne) {
    JetDb db;
    EXPECT_EQ(db.value("1 < 2"), "-1");
    EXPECT_EQ(db.value("1 > 2"), "0");
    EXPECT_EQ(db.value("1 <> 2"), "-1");
    EXPECT_EQ(db.value("Not 1 = 2"), "-1");
    EXPECT_EQ(db.value("Not True"), "0");
    EXPECT_EQ(db.value("Not False"), "-1");
    EXPECT_EQ(db.value("1 = 1 And 2 = 3"), "0");
    EXPECT_EQ(db.value("1 = 1 Or 2 = 3"), "-1");
    EXPECT_EQ(db.value("True Xor True"), "0");
    EXPECT_EQ(db.value("True Xor False"), "-1");
    EXPECT_EQ(db.value("False Imp False"), "-1");
    EXPECT_EQ(db.value("True Eqv False"), "0");
    EXPECT_EQ(db.value("Null = Null"), "NULL");
    EXPECT_EQ(db.value("Null Is Null"), "-1");
    EXPECT_EQ(db.value("1 Is Not Null"), "-1");
    EXPECT_EQ(db.value("5 Between 1 And 10"), "-1");
    EXPECT_EQ(db.value("5 Not Between 1 And 4"), "-1");
    EXPECT_EQ(db.value("3 In (1, 2, 3)"), "-1");
    EXPECT_EQ(db.value("4 Not In (1, 2, 3)"), "-1");
}

TEST(JetExpressions, TextComparesWithoutCase) {
    JetDb db;
    EXPECT_EQ(db.value("\"abc\" = \"ABC\""), "-1");
    EXPECT_EQ(db.value("\"straße\" = \"STRASSE\""), "0");        // simple folding only
    EXPECT_EQ(db.value("\"ÄÖÜ\" = \"äöü\""), "-1");
    EXPECT_EQ(db.value("\"ΣΊΣΥΦΟΣ\" = \"σίσυφος\""), "-1");    // final sigma folds too
    EXPECT_EQ(db.value("\"b\" > \"A\""), "-1");
    EXPECT_EQ(db.value("\"B\" Between \"a\" And \"c\""), "-1");
    EXPECT_EQ(db.value("\"X\" In (\"x\", \"y\")"), "-1");
    EXPECT_EQ(db.value("\"ab \" = \"ab\""), "0");  // trailing blanks count
}

TEST(JetExpressions, LikeWildcards) {
    JetDb db;
    EXPECT_EQ(db.value("\"Smith\" Like \"S*\""), "-1");
    EXPECT_EQ(db.value("\"smith\" Like \"S*H\""), "-1");
    EXPECT_EQ(db.value("\"Smith\" Like \"*mit*\""), "-1");
    EXPECT_EQ(db.value("\"Smith\" Like \"Sm?th\""), "-1");
    EXPECT_EQ(db.value("\"Smyth\" Like \"Sm[iy]th\""), "-1");
    EXPECT_EQ(db.value("\"Smath\" Like \"Sm[!iy]th\""), "-1");
    EXPECT_EQ(db.value("\"Smith\" Like \"Sm[!iy]th\""), "0");
    EXPECT_EQ(db.value("\"a5\" Like \"a#\""), "-1");
    EXPECT_EQ(db.value("\"ab\" Like \"a#\""), "0");
    EXPECT_EQ(db.value("\"q\" Like \"[a-z]\""), "-1");
    EXPECT_EQ(db.value("\"Q\" Like \"[a-z]\""), "-1");
    EXPECT_EQ(db.value("\"5\" Like \"[a-z]\""), "0");
    EXPECT_EQ(db.value("\"a*b\" Like \"a[*]b\""), "-1");
    EXPECT_EQ(db.value("\"axb\" Like \"a[*]b\""), "0");
    EXPECT_EQ(db.value("\"50%\" Like \"50%\""), "-1");   // % is an ordinary character
    EXPECT_EQ(db.value("\"500\" Like \"50%\""), "0");
    EXPECT_EQ(db.value("\"a_c\" Like \"a_c\""), "-1");
    EXPECT_EQ(db.value("\"abc\" Like \"a_c\""), "0");
    EXPECT_EQ(db.value("\"ÉCOLE\" Like \"é*\""), "-1");
    EXPECT_EQ(db.value("\"\" Like \"*\""), "-1");
    EXPECT_EQ(db.value("\"abc\" Not Like \"a*\""), "0");
    EXPECT_EQ(db.value("Null Like \"*\""), "NULL");
    EXPECT_EQ(db.value("\"aaaaaaaaaaaaaaaaaaaaaaaaaaaaab\" Like \"*a*a*a*a*a*a*c\""), "0");
    EXPECT_EQ(db.runtimeError("\"a\" Like \"[a\""), "Invalid pattern string.");
    EXPECT_EQ(db.runtimeError("\"a\" Like \"[z-a]\""), "Invalid pattern string.");
}

TEST(JetExpressions, MalformedExpressionsNameThemselves) {
    EXPECT_EQ(syntaxMessage("SELECT a FROM t WHERE a = = 1"),
              "Syntax error (missing operator) in query expression 'a = = 1'.");
    EXPECT_EQ(syntaxCode("SELECT (1 + 2 FROM t"), 3075);
    EXPECT_EQ(syntaxCode("SELECT 'abc FROM t"), 3075);
    EXPECT_EQ(syntaxCode("SELECT [abc FROM t"), 3075);
    EXPECT_EQ(syntaxMessage("SELECT Foo(1) FROM t"), "Undefined function 'Foo' in expression.");
    EXPECT_EQ(syntaxCode("SELECT DLookup(\"a\", \"t\") FROM t"), 3085);
    EXPECT_EQ(syntaxCode("SELECT Left(\"a\") FROM t"), 3075);  // wrong number of arguments
}

std::string repeated(std::string_view part, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += part;
    return out;
}

// Nesting deeper than the translator goes is "Query is too complex." (3360), never a crash;
// ordinary depths still translate and run.
TEST(JetExpressions, DeepNestingIsTooComplexNotACrash) {
    const std::string tooComplex = "Query is too complex.";
    const std::string parens = "SELECT " + repeated("(", 600) + "1" + repeated(")", 600);
    EXPECT_EQ(syntaxMessage(parens), tooComplex);
    EXPECT_EQ(syntaxCode("SELECT 1 FROM t WHERE " + repeated("NOT ", 5000) + "a = 1"), 3360);
    EXPECT_EQ(syntaxCode("SELECT " + repeated("-", 5000) + "1"), 3360);
    EXPECT_EQ(syntaxCode("SELECT " + repeated("+", 5000) + "1"), 3360);
    EXPECT_EQ(syntaxCode("SELECT " + repeated("Abs(", 2000) + "1" + repeated(")", 2000)), 3360);
    EXPECT_EQ(syntaxCode("SELECT * FROM " + repeated("(", 3000) + "t" + repeated(")", 3000)), 3360);
    EXPECT_EQ(
        syntaxCode("SELECT * FROM t WHERE a IN " + repeated("(SELECT a FROM t WHERE a IN ", 400) +
                   "(1)" + repeated(")", 400)),
        3360);

    // What nests less still runs (the sanitizers' larger frames allow fewer levels than
    // an ordinary build's 93 parentheses).
    JetDb db;
    EXPECT_EQ(db.value(repeated("(", 12) + "1 + 2" + repeated(")", 12)), "3");
    EXPECT_EQ(db.value(repeated("NOT ", 21) + "True"), "0");
    EXPECT_EQ(db.value(repeated("- ", 20) + "7"), "7");
}

}  // namespace
}  // namespace kelvo::jet::testing
