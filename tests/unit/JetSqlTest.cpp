#include "core/JetSql.h"

#include <gtest/gtest.h>

#include "core/Errors.h"

// Readable texts in failure messages.
static void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace kuvo {
namespace {

// Statements are translated as on a day of 2026: two-digit years read 1946 to 2045.
constexpr int kThisYear = 2026;

QString Sql(const char* statement) {
  return TranslateJet(QString::fromUtf8(statement), kThisYear).sql;
}

QString DateOf(const char* literal, int currentYear) {
  return TranslateJet(
             QStringLiteral("DELETE FROM Sorties WHERE DateTirage = ") + QString::fromUtf8(literal),
             currentYear)
      .sql.section(QLatin1Char('\''), 1, 1);
}

TEST(JetSqlTest, DeleteStarLosesTheStar) {
  EXPECT_EQ(Sql("DELETE * FROM Kuvo"), QStringLiteral("DELETE FROM Kuvo"));
  EXPECT_EQ(Sql("delete  *  from Groupe2"), QStringLiteral("DELETE FROM Groupe2"));
  EXPECT_EQ(Sql("DELETE *FROM Sorties"), QStringLiteral("DELETE FROM Sorties"));
  EXPECT_TRUE(TranslateJet(QStringLiteral("DELETE * FROM Kuvo"), kThisYear).baseTable.isEmpty());
}

TEST(JetSqlTest, DeleteWithoutStarIsKept) {
  EXPECT_EQ(Sql("DELETE FROM Groupe3 WHERE Sorties = 0"),
            QStringLiteral("DELETE FROM Groupe3 WHERE Sorties = 0"));
}

TEST(JetSqlTest, DateLiteralWithBlanks) {
  const JetTranslation t = TranslateJet(
      QStringLiteral("select * from Sorties where DateTirage >= #03 04 00#"), kThisYear);
  EXPECT_EQ(t.sql, QStringLiteral("select rowid,* from Sorties where DateTirage >= '2000-03-04'"));
  EXPECT_EQ(t.baseTable, QStringLiteral("Sorties"));
}

TEST(JetSqlTest, DateLiteralAfterTwoBlanks) {
  EXPECT_EQ(Sql("select * from Sorties where DateTirage  = #03 04 00#"),
            QStringLiteral("select rowid,* from Sorties where DateTirage  = '2000-03-04'"));
}

TEST(JetSqlTest, DateLiteralWithSlashesAndFourDigitYear) {
  EXPECT_EQ(Sql("DELETE FROM Sorties WHERE DateTirage < #12/31/1999#"),
            QStringLiteral("DELETE FROM Sorties WHERE DateTirage < '1999-12-31'"));
  EXPECT_EQ(Sql("DELETE FROM Sorties WHERE DateTirage < #2/9/2008#"),
            QStringLiteral("DELETE FROM Sorties WHERE DateTirage < '2008-02-09'"));
}

TEST(JetSqlTest, DateLiteralIsoForm) {
  EXPECT_EQ(Sql("DELETE FROM Sorties WHERE DateTirage < #2008-02-09#"),
            QStringLiteral("DELETE FROM Sorties WHERE DateTirage < '2008-02-09'"));
}

TEST(JetSqlTest, TwoDigitYearsFallInAWindowAroundThisYear) {
  // In 2026 the window runs from 1946 to 2045.
  EXPECT_EQ(DateOf("#01 02 29#", 2026), QStringLiteral("2029-01-02"));
  EXPECT_EQ(DateOf("#01 02 30#", 2026), QStringLiteral("2030-01-02"));
  EXPECT_EQ(DateOf("#12 31 45#", 2026), QStringLiteral("2045-12-31"));
  EXPECT_EQ(DateOf("#01 01 46#", 2026), QStringLiteral("1946-01-01"));
  EXPECT_EQ(DateOf("#12 31 99#", 2026), QStringLiteral("1999-12-31"));
  EXPECT_EQ(DateOf("#01 02 00#", 2026), QStringLiteral("2000-01-02"));
}

TEST(JetSqlTest, TwoDigitYearWindowSlidesWithTheClock) {
  // In 2031: 1951 to 2050.
  EXPECT_EQ(DateOf("#01 04 30#", 2031), QStringLiteral("2030-01-04"));
  EXPECT_EQ(DateOf("#12 31 50#", 2031), QStringLiteral("2050-12-31"));
  EXPECT_EQ(DateOf("#01 01 51#", 2031), QStringLiteral("1951-01-01"));
  // In 2069: 1989 to 2088.
  EXPECT_EQ(DateOf("#06 15 88#", 2069), QStringLiteral("2088-06-15"));
  EXPECT_EQ(DateOf("#06 15 89#", 2069), QStringLiteral("1989-06-15"));
  EXPECT_EQ(DateOf("#06 15 08#", 2069), QStringLiteral("2008-06-15"));
  // The first year of a century and the last one.
  EXPECT_EQ(DateOf("#01 01 20#", 2000), QStringLiteral("1920-01-01"));
  EXPECT_EQ(DateOf("#01 01 19#", 2000), QStringLiteral("2019-01-01"));
}

TEST(JetSqlTest, FourDigitYearsIgnoreTheWindow) {
  EXPECT_EQ(DateOf("#01/02/1930#", 2069), QStringLiteral("1930-01-02"));
  EXPECT_EQ(DateOf("#2090-01-02#", 2026), QStringLiteral("2090-01-02"));
}

TEST(JetSqlTest, BadDateLiteralRaises3075) {
  try {
    TranslateJet(QStringLiteral("select * from Sorties where DateTirage = #13 45 00#"), kThisYear);
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.Number(), 3075);
  }
}

TEST(JetSqlTest, DoubleQuotedTextsBecomeSingleQuoted) {
  const JetTranslation t = TranslateJet(
      QStringLiteral("select * from Sorties where format(DateTirage,\"dd mm yy\") = \"04 03 00\""),
      kThisYear);
  EXPECT_EQ(t.sql,
            QStringLiteral(
                "select rowid,* from Sorties where format(DateTirage,'dd mm yy') = '04 03 00'"));
  EXPECT_EQ(t.baseTable, QStringLiteral("Sorties"));
}

TEST(JetSqlTest, QuotesInsideTexts) {
  EXPECT_EQ(Sql("UPDATE Kuvo SET devise = \"l'euro\""),
            QStringLiteral("UPDATE Kuvo SET devise = 'l''euro'"));
  EXPECT_EQ(Sql("UPDATE Kuvo SET devise = \"a\"\"b\""),
            QStringLiteral("UPDATE Kuvo SET devise = 'a\"b'"));
}

TEST(JetSqlTest, SingleQuotedTextsAndBracketsAreKept) {
  EXPECT_EQ(Sql("UPDATE Kuvo SET devise = 'a \"#1#\" ''b''' WHERE [jour_de_tirage] = 'LUNDI'"),
            QStringLiteral(
                "UPDATE Kuvo SET devise = 'a \"#1#\" ''b''' WHERE [jour_de_tirage] = 'LUNDI'"));
}

TEST(JetSqlTest, SelectStarWithoutBlank) {
  const JetTranslation asc =
      TranslateJet(QStringLiteral("select* from Groupe2 order by Sorties ASC "), kThisYear);
  EXPECT_EQ(asc.sql, QStringLiteral("select rowid,* from Groupe2 order by Sorties ASC "));
  EXPECT_EQ(asc.baseTable, QStringLiteral("Groupe2"));
  EXPECT_EQ(Sql("select* from Groupe5 order by Sorties DESC "),
            QStringLiteral("select rowid,* from Groupe5 order by Sorties DESC "));
}

TEST(JetSqlTest, SelectStarOfATableAlone) {
  const JetTranslation t = TranslateJet(QStringLiteral("SELECT * FROM [Groupe4];"), kThisYear);
  EXPECT_EQ(t.sql, QStringLiteral("select rowid,* FROM [Groupe4];"));
  EXPECT_EQ(t.baseTable, QStringLiteral("Groupe4"));
}

TEST(JetSqlTest, OtherSelectsHaveNoBaseTable) {
  const JetTranslation joined =
      TranslateJet(QStringLiteral("select* from Groupe2, Groupe3"), kThisYear);
  EXPECT_EQ(joined.sql, QStringLiteral("select * from Groupe2, Groupe3"));
  EXPECT_TRUE(joined.baseTable.isEmpty());
  const JetTranslation counted = TranslateJet(
      QStringLiteral("select count(*) from Sorties where DateTirage > #1 1 01#"), kThisYear);
  EXPECT_EQ(counted.sql,
            QStringLiteral("select count(*) from Sorties where DateTirage > '2001-01-01'"));
  EXPECT_TRUE(counted.baseTable.isEmpty());
}

TEST(JetSqlTest, PlainStatementsAreUnchanged) {
  EXPECT_EQ(Sql("UPDATE Groupe2 SET Sorties = Sorties + 1"),
            QStringLiteral("UPDATE Groupe2 SET Sorties = Sorties + 1"));
  EXPECT_EQ(Sql(""), QString());
}

}  // namespace
}  // namespace kuvo
