// JETNOCASE: case-insensitive for all of Unicode, a total order that unique indexes and
// ORDER BY can rely on.
#include "jet_test_support.h"

#include <algorithm>

#include "text_collation.h"

namespace kelvo::jet::testing {
namespace {

const std::vector<std::string> kSamples = {
    "", " ", "a", "A", "ab", "AB", "ab ", "aB", "b", "B", "z", "Z", "_", "0", "9",
    "é", "É", "e", "straße", "STRASSE", "STRAẞE", "σ", "Σ", "ς", "Ω", "ω", "k", "K",
    "\xE2\x84\xAA",  // KELVIN SIGN, folds to k
    "я", "Я", "日本", "a\xFF", "a\xC3", "\xF0\x9F\x98\x80", "Ǆ", "ǆ", "ǅ"};

int sign(int v) { return (v > 0) - (v < 0); }

TEST(JetCollation, TotalOrderConsistentWithEquality) {
    for (const auto& a : kSamples) {
        EXPECT_EQ(compareNoCase(a, a), 0) << a;
        for (const auto& b : kSamples) {
            const int ab = sign(compareNoCase(a, b));
            EXPECT_EQ(ab, -sign(compareNoCase(b, a))) << a << " / " << b;
            EXPECT_EQ(ab == 0, lowerText(upperText(a)) == lowerText(upperText(b)))
                << a << " / " << b;
            for (const auto& c : kSamples) {
                if (ab <= 0 && sign(compareNoCase(b, c)) <= 0) {
                    EXPECT_LE(compareNoCase(a, c), 0) << a << " / " << b << " / " << c;
                }
            }
        }
    }
}

TEST(JetCollation, CaseFoldsAcrossScripts) {
    EXPECT_EQ(compareNoCase("ÀÉÎÕÜ", "àéîõü"), 0);
    EXPECT_EQ(compareNoCase("ЖУРНАЛ", "журнал"), 0);
    EXPECT_EQ(compareNoCase("ΣΟΦΙΑ", "σοφια"), 0);
    EXPECT_EQ(compareNoCase("\xE2\x84\xAA", "k"), 0);       // Kelvin sign
    EXPECT_NE(compareNoCase("straße", "strasse"), 0);       // one to one folding only
    EXPECT_NE(compareNoCase("é", "e"), 0);                   // accents count
    EXPECT_LT(compareNoCase("ab", "ab "), 0);                // trailing blanks count
    EXPECT_LT(compareNoCase("apple", "Banana"), 0);
    EXPECT_GT(compareNoCase("b", "A"), 0);
    EXPECT_LT(compareNoCase("a\xC3", "a\xFF"), 0);           // invalid bytes still order
    EXPECT_NE(compareNoCase("a\xC3", "a\xE3"), 0);
}

TEST(JetCollation, UniqueIndexAndOrderInSqlite) {
    JetDb db;
    db.exec("CREATE TABLE t (name TEXT COLLATE JETNOCASE UNIQUE)");
    db.exec("INSERT INTO t VALUES ('Émile'), ('zoë'), ('Adam'), ('émilie')");
    EXPECT_THROW(db.exec("INSERT INTO t VALUES ('ÉMILE')"), std::runtime_error);
    EXPECT_THROW(db.exec("INSERT INTO t VALUES ('ADAM')"), std::runtime_error);
    db.exec("INSERT INTO t VALUES ('Adam ')");  // a trailing blank makes another key
    EXPECT_EQ(db.query("SELECT name FROM t ORDER BY name"),
              (Rows{{"Adam"}, {"Adam "}, {"zoë"}, {"Émile"}, {"émilie"}}));
    EXPECT_EQ(db.query("SELECT name FROM t WHERE name = 'ZOË'"), (Rows{{"zoë"}}));
    db.exec("PRAGMA integrity_check");
    EXPECT_EQ(db.query("SELECT Count(*) FROM t WHERE name > 'adam'"), (Rows{{"4"}}));
}

TEST(JetCollation, CaseMappingForUCaseAndLCase) {
    EXPECT_EQ(upperText("ǆemal straße ω"), "ǄEMAL STRAßE Ω");
    EXPECT_EQ(lowerText("ǄEMAL ÀÉ"), "ǆemal àé");
    EXPECT_EQ(lowerText("ABC\xFF"), "abc\xFF");  // undecodable bytes pass through
}

}  // namespace
}  // namespace kelvo::jet::testing
