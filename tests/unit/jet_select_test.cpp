// SELECT as Access writes it: column names, joins, TOP with ties, DISTINCTROW, unions,
// parameters, saved queries, derived tables and crosstabs.
#include "jet_test_support.h"

namespace kelvo::jet::testing {
namespace {

class JetSelect : public ::testing::Test {
protected:
    void SetUp() override {
        db.exec(
            "CREATE TABLE Customers (ID INTEGER PRIMARY KEY, Name TEXT COLLATE JETNOCASE,"
            " City TEXT COLLATE JETNOCASE);"
            "INSERT INTO Customers VALUES (1, 'Alfa', 'Berlin'), (2, 'beta', 'London'),"
            " (3, 'Gamma', 'berlin'), (4, 'Delta', NULL);"
            "CREATE TABLE Orders (OrderID INTEGER PRIMARY KEY, CustomerID INTEGER,"
            " Amount REAL, OrderDate REAL);"
            "INSERT INTO Orders VALUES (10, 1, 100, 37652), (11, 1, 50, 37653),"
            " (12, 2, 75, 37700), (13, 3, 75, 37800), (14, 3, 20, 37801);"
            "CREATE TABLE Suppliers (ID INTEGER PRIMARY KEY, Name TEXT, City TEXT);"
            "INSERT INTO Suppliers VALUES (1, 'Exotic', 'London'), (2, 'Tokyo Traders', 'Tokyo');");
    }
    JetDb db;
};

TEST_F(JetSelect, ColumnNamesFollowAccess) {
    std::vector<std::string> names;
    db.query("SELECT Customers.Name, Orders.Amount * 2, Sum(Orders.Amount), Count(*), "
             "Orders.OrderID AS N FROM Customers INNER JOIN Orders ON Customers.ID = "
             "Orders.CustomerID GROUP BY Customers.Name, Orders.Amount, Orders.OrderID",
             {}, &names);
    EXPECT_EQ(names, (Row{"Name", "Expr1000", "SumOfAmount", "Expr1001", "N"}));
    db.query("SELECT Customers.Name, Suppliers.Name FROM Customers, Suppliers", {}, &names);
    EXPECT_EQ(names, (Row{"Customers.Name", "Suppliers.Name"}));
}

TEST_F(JetSelect, NestedJoinsAndOuterJoins) {
    db.exec("CREATE TABLE Lines (OrderID INTEGER, Qty INTEGER);"
            "INSERT INTO Lines VALUES (10, 1), (10, 2), (12, 5);");
    Rows rows = db.query(
        "SELECT Customers.Name, Sum(Lines.Qty) AS Total FROM (Customers INNER JOIN Orders ON "
        "Customers.ID = Orders.CustomerID) INNER JOIN Lines ON Orders.OrderID = Lines.OrderID "
        "GROUP BY Customers.Name ORDER BY Customers.Name");
    EXPECT_EQ(rows, (Rows{{"Alfa", "3"}, {"beta", "5"}}));
    rows = db.query("SELECT c.Name, o.OrderID FROM Customers AS c LEFT JOIN Orders AS o ON "
                    "c.ID = o.CustomerID WHERE o.OrderID Is Null");
    EXPECT_EQ(rows, (Rows{{"Delta", "NULL"}}));
    rows = db.query("SELECT Customers!Name FROM Orders RIGHT JOIN Customers ON "
                    "Orders.CustomerID = Customers.ID WHERE Orders.OrderID Is Null");
    EXPECT_EQ(rows, (Rows{{"Delta"}}));
}

TEST_F(JetSelect, TextMatchesWithoutCaseInWhereGroupAndOrder) {
    EXPECT_EQ(db.query("SELECT Name FROM Customers WHERE City = 'BERLIN' ORDER BY Name"),
              (Rows{{"Alfa"}, {"Gamma"}}));
    EXPECT_EQ(db.query("SELECT Name FROM Customers ORDER BY Name"),
              (Rows{{"Alfa"}, {"beta"}, {"Delta"}, {"Gamma"}}));
    EXPECT_EQ(db.query("SELECT City, Count(*) FROM Customers WHERE City Is Not Null GROUP BY City"),
              (Rows{{"Berlin", "2"}, {"London", "1"}}));
    EXPECT_EQ(db.query("SELECT Name FROM Customers WHERE Name Like 'B*' OR Name Like '*MM*' "
                       "ORDER BY Name DESC"),
              (Rows{{"Gamma"}, {"beta"}}));
}

TEST_F(JetSelect, TopKeepsTiesOnTheLastRow) {
    // Amounts 100, 75, 75, 50, 20: the top 2 are 100 and both 75s.
    EXPECT_EQ(db.query("SELECT TOP 2 OrderID FROM Orders ORDER BY Amount DESC, OrderID").size(), 2u);
    EXPECT_EQ(db.query("SELECT TOP 2 Amount FROM Orders ORDER BY Amount DESC"),
              (Rows{{"100"}, {"75"}, {"75"}}));
    EXPECT_EQ(db.query("SELECT TOP 1 Amount FROM Orders ORDER BY Amount"), (Rows{{"20"}}));
    EXPECT_EQ(db.query("SELECT TOP 3 OrderID FROM Orders").size(), 3u);
    // 40 percent of 5 rows is 2 rows, and the tie brings a third.
    EXPECT_EQ(db.query("SELECT TOP 40 PERCENT Amount FROM Orders ORDER BY Amount DESC"),
              (Rows{{"100"}, {"75"}, {"75"}}));
    EXPECT_EQ(db.query("SELECT TOP 50 PERCENT OrderID FROM Orders").size(), 3u);  // rounds up
    EXPECT_EQ(db.query("SELECT DISTINCT TOP 2 Amount FROM Orders ORDER BY Amount DESC"),
              (Rows{{"100"}, {"75"}}));
    EXPECT_EQ(db.query("SELECT TOP 1 CustomerID, Sum(Amount) AS Total FROM Orders GROUP BY "
                       "CustomerID ORDER BY Sum(Amount) DESC"),
              (Rows{{"1", "150"}}));
    EXPECT_EQ(syntaxCode("SELECT DISTINCT TOP 2 Amount FROM Orders ORDER BY OrderID"), 3093);
}

TEST_F(JetSelect, DistinctRowAndStars) {
    EXPECT_EQ(db.query("SELECT DISTINCTROW Customers.* FROM Customers WHERE ID = 1"),
              (Rows{{"1", "Alfa", "Berlin"}}));
    EXPECT_EQ(db.query("SELECT * FROM Suppliers WHERE ID = 2"),
              (Rows{{"2", "Tokyo Traders", "Tokyo"}}));
    EXPECT_EQ(db.query("SELECT DISTINCT City FROM Customers WHERE City Is Not Null").size(), 2u);
}

TEST_F(JetSelect, UnionsAndTheirOrder) {
    std::vector<std::string> names;
    Rows rows = db.query("SELECT City, Name FROM Customers WHERE City Is Not Null UNION SELECT "
                         "City, Name FROM Suppliers ORDER BY City, Name",
                         {}, &names);
    EXPECT_EQ(names, (Row{"City", "Name"}));
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_EQ(rows.front(), (Row{"Berlin", "Alfa"}));
    EXPECT_EQ(rows.back(), (Row{"Tokyo", "Tokyo Traders"}));
    EXPECT_EQ(db.query("SELECT City FROM Suppliers UNION ALL SELECT City FROM Suppliers").size(),
              4u);
    EXPECT_EQ(db.query("TABLE Suppliers UNION TABLE Suppliers").size(), 2u);
    EXPECT_EQ(std::get<Query>(parse("SELECT a FROM t UNION SELECT b FROM u")).kind,
              QueryKind::Union);
}

TEST_F(JetSelect, DeclaredAndImplicitParameters) {
    const Query q = db.translate(
        "PARAMETERS [Start Date] DateTime, [Who] Text(50);\n"
        "SELECT OrderID FROM Orders INNER JOIN Customers ON Orders.CustomerID = Customers.ID "
        "WHERE OrderDate >= [start date] AND Customers.Name = [Who] AND Amount > "
        "[Forms]![Main]![MinAmount] ORDER BY OrderID");
    ASSERT_EQ(q.parameters.size(), 2u);
    EXPECT_EQ(q.parameters[0].name, "Start Date");
    EXPECT_EQ(q.parameters[0].type, DataType::Date);
    EXPECT_EQ(q.parameters[1].type, DataType::Text);
    EXPECT_EQ(q.placeholderNames, (Row{"Start Date", "Who", "[Forms]![Main]![MinAmount]"}));
    EXPECT_EQ(db.run(q, {{"start date", 37653.0}, {"WHO", std::string("gamma")},
                         {"[forms]![main]![minamount]", 30LL}}),
              (Rows{{"13"}}));
    ParseOptions options;
    options.extraParameters = {"Beginning Date"};
    const Query implicit = db.translate(
        "SELECT Count(*) FROM Orders WHERE OrderDate Between [Beginning Date] And #1/1/2010#",
        options);
    EXPECT_EQ(db.run(implicit, {{"Beginning Date", 37700LL}}), (Rows{{"3"}}));
    EXPECT_EQ(syntaxCode("PARAMETERS a Long, a Long; SELECT 1"), 3079);
    EXPECT_EQ(syntaxCode("PARAMETERS a Widget; SELECT 1"), 3079);
}

TEST_F(JetSelect, SavedQueriesAndDerivedTables) {
    ParseOptions options;
    options.savedQuery = [](std::string_view name) -> std::optional<std::string> {
        if (name == "Big Orders")
            return "PARAMETERS Least Long; SELECT OrderID, CustomerID FROM Orders WHERE Amount >= Least";
        if (name == "Loop") return "SELECT * FROM Loop";
        return std::nullopt;
    };
    const Query q = db.translate(
        "SELECT c.Name, b.OrderID FROM Customers AS c INNER JOIN [Big Orders] AS b ON c.ID = "
        "b.CustomerID ORDER BY b.OrderID",
        options);
    EXPECT_EQ(db.run(q, {{"Least", 75LL}}), (Rows{{"Alfa", "10"}, {"beta", "12"}, {"Gamma", "13"}}));
    EXPECT_THROW(parse("SELECT * FROM Loop", options), SyntaxError);
    EXPECT_EQ(db.query("SELECT q.n FROM [SELECT Count(*) AS n FROM Orders]. AS q"), (Rows{{"5"}}));
    EXPECT_EQ(db.query("SELECT q.n FROM (SELECT Count(*) AS n FROM Orders) AS q"), (Rows{{"5"}}));
    EXPECT_EQ(db.query("SELECT Name FROM Customers WHERE ID IN (SELECT CustomerID FROM Orders "
                       "WHERE Amount > 60) AND EXISTS (SELECT * FROM Suppliers) ORDER BY Name"),
              (Rows{{"Alfa"}, {"beta"}, {"Gamma"}}));
}

TEST_F(JetSelect, SelectIntoNamesItsTable) {
    const Query q = db.translate("SELECT Name INTO [Berlin Customers] FROM Customers WHERE City = 'berlin'");
    EXPECT_EQ(q.kind, QueryKind::SelectInto);
    EXPECT_FALSE(q.returnsRows);
    EXPECT_EQ(q.intoTable, "Berlin Customers");
    EXPECT_EQ(db.run(q).size(), 2u);
}

TEST_F(JetSelect, CrosstabWithAndWithoutHeadings) {
    Query q = db.translate(
        "TRANSFORM Sum(Amount) AS Total SELECT CustomerID FROM Orders GROUP BY CustomerID "
        "PIVOT \"Y\" & Year(OrderDate) IN (\"Y2003\", \"Y2004\")");
    EXPECT_EQ(q.kind, QueryKind::Crosstab);
    std::vector<std::string> names;
    // 37652..37801 are Jan..Jun 2003.
    EXPECT_EQ(db.run(q, {}, &names), (Rows{{"1", "150", "NULL"}, {"2", "75", "NULL"}, {"3", "95", "NULL"}}));
    EXPECT_EQ(names, (Row{"CustomerID", "Y2003", "Y2004"}));

    ParseOptions options;
    options.database = db.handle();
    q = db.translate("TRANSFORM Count(*) SELECT City FROM Customers GROUP BY City PIVOT Name Like 'G*'",
                     options);
    db.run(q, {}, &names);
    EXPECT_EQ(names, (Row{"City", "-1", "0"}));
    EXPECT_THROW(parse("TRANSFORM Count(*) SELECT City FROM Customers GROUP BY City PIVOT Name"),
                 SyntaxError);  // no headings and no database to read them from
}

TEST_F(JetSelect, MalformedSelects) {
    EXPECT_EQ(syntaxCode("SELECT  FROM  "), 3141);
    EXPECT_EQ(syntaxCode("SELECT a FROM"), 3131);
    EXPECT_EQ(syntaxCode("SELECT a FROM t INNER JOIN u"), 3131);
    EXPECT_EQ(syntaxCode("SELECT a FROM t; x"), 3142);
    EXPECT_EQ(syntaxCode("FROB t"), 3129);
    EXPECT_EQ(syntaxCode("SELECT a FROM t IN 'other.mdb'"), 3131);
    EXPECT_EQ(syntaxCode("SELECT a FROM t WHERE a > ALL (SELECT b FROM u)"), 3075);
    EXPECT_EQ(syntaxMessage("SELECT t.a, Sum(b) FROM t"),
              "You tried to execute a query that does not include the specified expression "
              "'t.a' as part of an aggregate function.");
    EXPECT_EQ(syntaxCode("SELECT a, b, Count(*) FROM t GROUP BY a"), 3122);
    EXPECT_EQ(syntaxCode("SELECT t.a, Count(*) FROM t GROUP BY a HAVING Count(*) > 1"), 0);
    EXPECT_EQ(syntaxCode("SELECT a FROM t GROUP BY a HAVING Count(*) > 1"), 0);
}

}  // namespace
}  // namespace kelvo::jet::testing
