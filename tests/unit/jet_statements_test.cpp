// INSERT, UPDATE and DELETE run on SQLite, and DDL read into its description.
#include "jet_test_support.h"

namespace kelvo::jet::testing {
namespace {

class JetActions : public ::testing::Test {
protected:
    void SetUp() override {
        db.exec("CREATE TABLE Items (ID INTEGER PRIMARY KEY, Name TEXT COLLATE JETNOCASE,"
                " Price REAL, Active INTEGER);"
                "INSERT INTO Items VALUES (1, 'Bolt', 1.5, -1), (2, 'Nut', 0.25, -1),"
                " (3, 'Washer', 0.1, 0);"
                "CREATE TABLE Stock (ItemID INTEGER, Qty INTEGER);"
                "INSERT INTO Stock VALUES (1, 10), (2, 0), (3, 5);");
    }
    JetDb db;
};

TEST_F(JetActions, InsertValuesAndSelect) {
    EXPECT_EQ(db.action("INSERT INTO Items (ID, Name, Price, Active) VALUES (4, \"Screw\", 2 / 4, "
                        "True)"),
              1);
    EXPECT_EQ(db.query("SELECT Name, Price, Active FROM Items WHERE ID = 4"),
              (Rows{{"Screw", "0.5", "-1"}}));
    EXPECT_EQ(db.action("INSERT INTO Items SELECT ID + 10, Name & ' copy', Price, Active FROM Items "
                        "WHERE Active"),
              3);
    EXPECT_EQ(db.query("SELECT Name FROM Items WHERE ID = 14"), (Rows{{"Screw copy"}}));
    EXPECT_EQ(syntaxCode("INSERT INTO Items (ID VALUES (1)"), 3134);
    EXPECT_EQ(syntaxCode("INSERT Items VALUES (1)"), 3134);
}

TEST_F(JetActions, UpdateOneTableAndOverAJoin) {
    EXPECT_EQ(db.action("UPDATE Items SET Price = Price * 2, Name = UCase(Name) WHERE Name Like 'b*'"),
              1);
    EXPECT_EQ(db.query("SELECT Name, Price FROM Items WHERE ID = 1"), (Rows{{"BOLT", "3"}}));
    EXPECT_EQ(db.action("UPDATE Items INNER JOIN Stock ON Items.ID = Stock.ItemID SET "
                        "Items.Active = False WHERE Stock.Qty = 0"),
              1);
    EXPECT_EQ(db.query("SELECT ID FROM Items WHERE Not Active ORDER BY ID"), (Rows{{"2"}, {"3"}}));
    EXPECT_EQ(db.action("UPDATE Stock AS s INNER JOIN Items AS i ON s.ItemID = i.ID SET s.Qty = "
                        "s.Qty + 1 WHERE i.Name = 'washer'"),
              1);
    EXPECT_EQ(db.query("SELECT Qty FROM Stock WHERE ItemID = 3"), (Rows{{"6"}}));
    EXPECT_EQ(syntaxCode("UPDATE Items LEFT JOIN Stock ON Items.ID = Stock.ItemID SET Items.Price = 1"),
              3144);
    EXPECT_EQ(syntaxCode("UPDATE Items SET WHERE ID = 1"), 3144);
}

TEST_F(JetActions, DeleteForms) {
    EXPECT_EQ(db.action("DELETE * FROM Stock WHERE Qty = 0"), 1);
    EXPECT_EQ(db.action("DELETE Items.* FROM Items INNER JOIN Stock ON Items.ID = Stock.ItemID "
                        "WHERE Stock.Qty > 6"),
              1);
    EXPECT_EQ(db.query("SELECT ID FROM Items ORDER BY ID"), (Rows{{"2"}, {"3"}}));
    EXPECT_EQ(db.action("DELETE i.* FROM Items AS i INNER JOIN Stock AS s ON i.ID = s.ItemID"), 1);
    EXPECT_EQ(db.action("DELETE FROM Items"), 1);
    const Query q = db.translate("DELETE FROM Items WHERE ID = 1");
    EXPECT_EQ(q.kind, QueryKind::Delete);
    EXPECT_FALSE(q.returnsRows);
}

TEST(JetDdl, CreateTableWithAccessTypes) {
    const auto s = parse(
        "CREATE TABLE [Fixture Types] (ixID COUNTER CONSTRAINT pk PRIMARY KEY, sName TEXT(50) NOT "
        "NULL, sNote MEMO, bPlot YESNO, iColor SHORT, nCount LONG, dHeight DOUBLE, fScale "
        "SINGLE, cCost CURRENCY, tWhen DATETIME, bytFlag BYTE, oPic LONGBINARY, sCode CHAR, "
        "sAny VARCHAR DEFAULT 'x', sWhole TEXT, CONSTRAINT uq UNIQUE (sName, iColor))");
    const auto& t = std::get<CreateTable>(s);
    EXPECT_EQ(t.name, "Fixture Types");
    ASSERT_EQ(t.columns.size(), 15u);
    EXPECT_TRUE(t.columns[0].autoIncrement);
    EXPECT_EQ(t.columns[0].type, DataType::Long);
    EXPECT_EQ(t.columns[1].type, DataType::Text);
    EXPECT_EQ(t.columns[1].size, 50);
    EXPECT_TRUE(t.columns[1].required);
    const DataType expected[] = {DataType::Memo,     DataType::Boolean, DataType::Integer,
                                 DataType::Long,     DataType::Double,  DataType::Single,
                                 DataType::Currency, DataType::Date,    DataType::Byte,
                                 DataType::LongBinary};
    for (size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(t.columns[i + 2].type, expected[i]) << t.columns[i + 2].name;
    EXPECT_EQ(t.columns[12].size, 1);    // CHAR alone is one character
    EXPECT_EQ(t.columns[13].defaultSql, "'x'");
    EXPECT_EQ(t.columns[14].size, 255);  // TEXT alone is 255
    ASSERT_EQ(t.indexes.size(), 2u);
    EXPECT_EQ(t.indexes[0].name, "pk");
    EXPECT_TRUE(t.indexes[0].primary);
    EXPECT_EQ(t.indexes[1].name, "uq");
    EXPECT_TRUE(t.indexes[1].unique);
    EXPECT_FALSE(t.indexes[1].primary);
    EXPECT_EQ(t.indexes[1].columns.size(), 2u);
}

TEST(JetDdl, RelationsFromForeignKeys) {
    const auto s = parse(
        "CREATE TABLE Orders (ID AUTOINCREMENT PRIMARY KEY, CustID LONG REFERENCES Customers "
        "(ID) ON DELETE CASCADE, A INT, B INT, CONSTRAINT fkAB FOREIGN KEY (A, B) REFERENCES "
        "Pairs (X, Y) ON UPDATE CASCADE)");
    const auto& t = std::get<CreateTable>(s);
    ASSERT_EQ(t.relations.size(), 2u);
    EXPECT_EQ(t.indexes[0].name, "PrimaryKey");
    EXPECT_EQ(t.relations[0].name, "CustomersOrders");
    EXPECT_EQ(t.relations[0].table, "Customers");
    EXPECT_EQ(t.relations[0].foreignTable, "Orders");
    EXPECT_TRUE(t.relations[0].cascadeDelete);
    EXPECT_FALSE(t.relations[0].cascadeUpdate);
    EXPECT_EQ(t.relations[1].name, "fkAB");
    EXPECT_EQ(t.relations[1].fields,
              (std::vector<std::pair<std::string, std::string>>{{"X", "A"}, {"Y", "B"}}));
    EXPECT_TRUE(t.relations[1].cascadeUpdate);
}

TEST(JetDdl, IndexesDropsAndAlters) {
    auto index = std::get<CreateIndex>(
        parse("CREATE UNIQUE INDEX ixName ON Items (Name ASC, Price DESC) WITH IGNORE NULL")).index;
    EXPECT_EQ(index.table, "Items");
    EXPECT_TRUE(index.unique);
    EXPECT_TRUE(index.ignoreNulls);
    EXPECT_EQ(index.columns[1], (std::pair<std::string, bool>{"Price", true}));
    index = std::get<CreateIndex>(parse("CREATE INDEX PrimaryKey ON Items (ID) WITH PRIMARY")).index;
    EXPECT_TRUE(index.primary && index.unique && index.disallowNulls);

    EXPECT_EQ(std::get<DropTable>(parse("DROP TABLE [Old Items]")).name, "Old Items");
    const auto drop = std::get<DropIndex>(parse("DROP INDEX ixName ON Items;"));
    EXPECT_EQ(drop.index, "ixName");
    EXPECT_EQ(drop.table, "Items");

    auto alter = std::get<AlterTable>(parse("ALTER TABLE Items ADD COLUMN Weight DOUBLE, Tag TEXT(10)"));
    EXPECT_EQ(alter.action, AlterTable::Action::AddColumns);
    EXPECT_EQ(alter.columns.size(), 2u);
    alter = std::get<AlterTable>(parse("ALTER TABLE Items DROP COLUMN Weight"));
    EXPECT_EQ(alter.action, AlterTable::Action::DropColumn);
    EXPECT_EQ(alter.name, "Weight");
    alter = std::get<AlterTable>(parse("ALTER TABLE Items ALTER COLUMN Tag TEXT(20)"));
    EXPECT_EQ(alter.action, AlterTable::Action::AlterColumn);
    EXPECT_EQ(alter.columns.at(0).size, 20);
    alter = std::get<AlterTable>(parse("ALTER TABLE Items ADD CONSTRAINT fk FOREIGN KEY (GroupID) "
                                       "REFERENCES Groups (ID)"));
    EXPECT_EQ(alter.action, AlterTable::Action::AddConstraint);
    EXPECT_EQ(alter.relations.at(0).table, "Groups");
    alter = std::get<AlterTable>(parse("ALTER TABLE Items DROP CONSTRAINT fk"));
    EXPECT_EQ(alter.action, AlterTable::Action::DropConstraint);
}

TEST(JetDdl, StoredProcedures) {
    const auto p = std::get<CreateProcedure>(
        parse("CREATE PROCEDURE ItemsOver (MinPrice CURRENCY, [Name Part] TEXT) AS SELECT * FROM "
              "Items WHERE Price > MinPrice AND Name Like [Name Part];"));
    EXPECT_EQ(p.name, "ItemsOver");
    ASSERT_EQ(p.parameters.size(), 2u);
    EXPECT_EQ(p.parameters[0].type, DataType::Currency);
    // The stored text declares its parameters and reads back as a query that takes them.
    const auto q = std::get<Query>(parse(p.jetSql));
    ASSERT_EQ(q.parameters.size(), 2u);
    EXPECT_EQ(q.parameters[1].name, "Name Part");
    EXPECT_EQ(q.placeholderNames, (std::vector<std::string>{"MinPrice", "Name Part"}));
    EXPECT_EQ(syntaxCode("CREATE PROCEDURE P (a LONG) AS SELECT FROM"), 3141);
}

TEST(JetDdl, MalformedDdlGetsItsOwnError) {
    EXPECT_EQ(syntaxCode("CREATE TABLE T (a WIDGET)"), 3292);
    EXPECT_EQ(syntaxCode("CREATE TABLE T (a TEXT(0))"), 3292);
    EXPECT_EQ(syntaxCode("CREATE TABLE T a LONG"), 3290);
    EXPECT_EQ(syntaxCode("CREATE TABLE T (a LONG, A TEXT)"), 3191);
    EXPECT_EQ(syntaxCode("CREATE INDEX ix Items (a)"), 3291);
    EXPECT_EQ(syntaxCode("CREATE INDEX ix ON Items (a) WITH SOMETHING"), 3291);
    EXPECT_EQ(syntaxCode("DROP INDEX ix"), 3295);
    EXPECT_EQ(syntaxCode("ALTER TABLE T RENAME TO U"), 3293);
    EXPECT_EQ(syntaxCode("CREATE TABLE T (a LONG, CHECK (a > 0))"), 3290);
}

TEST(JetDdl, TypeNamesRoundTrip) {
    for (DataType t : {DataType::Boolean, DataType::Byte, DataType::Integer, DataType::Long,
                       DataType::Currency, DataType::Single, DataType::Double, DataType::Date,
                       DataType::Text, DataType::LongBinary, DataType::Memo, DataType::Guid})
        EXPECT_EQ(typeFromName(typeName(t)), t) << typeName(t);
    EXPECT_EQ(typeFromName("IEEEDouble"), DataType::Double);
    EXPECT_EQ(typeFromName("oleobject"), DataType::LongBinary);
    EXPECT_FALSE(typeFromName("widget").has_value());
}

}  // namespace
}  // namespace kelvo::jet::testing
