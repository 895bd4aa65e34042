#include <gtest/gtest.h>
#include <QTemporaryDir>

#include "ScriptRunner.h"
#include "ScriptedPlatform.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "statistics/TirVerif.h"

namespace kuvo {
namespace {

// A program with `rows` pairs in Groupe2, the ranking window open on them.
struct VerifApp {
  QTemporaryDir dir;
  ScriptRunner runner{dir.path(), dir.path()};

  explicit VerifApp(int rows, const QString& more = {}) {
    const QString script =
        QStringLiteral(
            "store new\n"
            "sql \"INSERT INTO Sorties VALUES ('2024-03-04', 23, 7, 41, 2, 36, 5)\"\n"
            "sql \"WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < %1) "
            "INSERT INTO Groupe2 SELECT printf('%02d,%02d', 1 + (n - 1) / 40, 10 + (n - 1) % 40), "
            "n * 3 FROM c\"\n"
            "start\n"
            "menu M_StatVerif\n"
            "type TirVerif.Text2 \"2\"\n"
            "click TirVerif.Combo1 Numeros\n")
            .arg(rows) +
        more;
    runner.Run(ScriptRunner::Parse(script));
  }
  TirVerif& w() { return runner.program().Win<TirVerif>(); }
  ScriptedPlatform& sys() { return runner.platform(); }
  void Click(Control& c) {
    runner.program().RunEvent([&c] {
      if (c.Reachable() && c.Click) c.Click();
    });
  }
};

TEST(TirVerif, CombinationCountsBySize) {
  VerifApp app(3, QStringLiteral("sql \"INSERT INTO Groupe3 VALUES ('02,07,23', 1)\"\n"
                                 "sql \"INSERT INTO Groupe4 VALUES ('02,07,23,36', 1)\"\n"
                                 "sql \"INSERT INTO Groupe5 VALUES ('02,07,23,36,41', 1)\"\n"));
  const int expected[] = {1176, 18424, 211876, 1906884};
  for (int size = 2; size <= 5; ++size) {
    app.runner.program().RunEvent([&] { app.w().ui().Text2.Text = QString::number(size); });
    app.Click(app.w().ui().ChercheSorties);
    EXPECT_EQ(app.w().ui().Label7.Caption, QString::number(expected[size - 2]));
    EXPECT_EQ(app.w().ui().Label8.Caption, size == 2 ? QStringLiteral("3") : QStringLiteral("1"));
  }
}

TEST(TirVerif, ReportColumnsStartAt28And31) {
  VerifApp app(60);
  app.Click(app.w().ui().ChercheSorties);
  app.Click(app.w().ui().Imprimer);
  const QStringList record = app.sys().printer().Record();
  int headings = 0, rows = 0;
  for (const QString& entry : record) {
    const QString line = entry.mid(entry.indexOf(QLatin1String("| ")) + 2);
    if (line.contains(QLatin1String("SCORES"))) {
      ++headings;
      EXPECT_EQ(line.indexOf(QLatin1String("NUMEROS")), 5);
      EXPECT_EQ(line.indexOf(QLatin1String("SCORES")) + 1, 28);
    } else if (entry.startsWith(QLatin1String("| ")) && line.size() > 30 &&
               line.startsWith(QLatin1String("     0"))) {
      ++rows;
      // Character 31 on is the score; the key stands at 6 in a field of 25.
      EXPECT_EQ(line.mid(5, 5), line.mid(5, 25).trimmed());
      EXPECT_TRUE(line.at(30).isDigit()) << line.toStdString();
      EXPECT_EQ(line.at(29), QLatin1Char(' '));
    }
  }
  EXPECT_EQ(rows, 60);
  EXPECT_EQ(headings, 2);
  EXPECT_EQ(record.last(), QLatin1String("ENDDOC"));
}

TEST(TirVerif, FooterShowsThePageAsANumber) {
  VerifApp app(130);
  app.Click(app.w().ui().ChercheSorties);
  app.Click(app.w().ui().Imprimer);
  const QStringList footers = app.sys().printer().Record().filter(QStringLiteral("Page n°"));
  ASSERT_EQ(footers.size(), 2);
  EXPECT_EQ(footers[0], QStringLiteral("|                Page n°  1 "));
  EXPECT_EQ(footers[1], QStringLiteral("|                Page n°  2 "));
}

TEST(TirVerif, StopInTheYieldOfEveryRowEndsOnThatRow) {
  const int rows = 12;
  VerifApp app(rows);
  for (int k = 1; k <= rows; ++k) {
    const long first = app.sys().yields + 1;
    app.sys().OnYield = [&](long n) {
      if (n == first + k) app.Click(app.w().ui().ArretRecherche);
    };
    app.Click(app.w().ui().ChercheSorties);
    app.sys().OnYield = nullptr;
    const Grid& g = app.w().ui().Grille;
    EXPECT_EQ(app.w().ui().Gauge1.Value(), k);
    EXPECT_FALSE(g.TextMatrix(k, 1).isEmpty());
    if (k < rows) {
      EXPECT_TRUE(g.TextMatrix(k + 1, 0).isEmpty()) << k;
    }
    EXPECT_FALSE(g.Visible);
    EXPECT_FALSE(app.w().ui().Imprimer.Enabled);
    EXPECT_EQ(app.runner.program().M().ArretDemande, -1);
  }
}

TEST(TirVerif, StopInThePrintOfEveryRowAbandonsThenEnds) {
  const int rows = 5;
  VerifApp app(rows);
  for (int k = 1; k <= rows; ++k) {
    app.Click(app.w().ui().ChercheSorties);
    const int before = static_cast<int>(app.sys().printer().Record().size());
    const long first = app.sys().yields + 1;
    app.sys().OnYield = [&](long n) {
      if (n == first + k) app.Click(app.w().ui().ArretImpression);
    };
    app.Click(app.w().ui().Imprimer);
    app.sys().OnYield = nullptr;
    const QStringList doc = app.sys().printer().Record().mid(before);
    // Page, 8 lines of head, k rows, KILLDOC, ENDDOC.
    ASSERT_EQ(doc.size(), 1 + 8 + k + 2) << k;
    EXPECT_EQ(doc[doc.size() - 2], QLatin1String("KILLDOC"));
    EXPECT_EQ(doc.last(), QLatin1String("ENDDOC"));
    EXPECT_FALSE(app.w().ui().Imprimer.Enabled);
    EXPECT_FALSE(app.w().ui().ArretImpression.Visible);
  }
}

}  // namespace
}  // namespace kuvo
