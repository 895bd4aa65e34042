// The favourites window: its keypads, the grid rows it adds and removes, and
// the store it leaves behind when a deletion finds no row.
#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/Controls.h"
#include "favourites/NumPref.h"

namespace kuvo {
namespace {

using test::TestApp;

const char* const kStart =
    "store new\n"
    "sql \"INSERT INTO Sorties VALUES ('2024-03-02', 1, 2, 3, 4, 5, 6)\"\n"
    "start\n";

TEST(NumPref, KeypadsHoldFortyNineNumbersAndTenChanceNumbers) {
  TestApp app;
  app.Run(QString::fromLatin1(kStart) + QStringLiteral("menu M_StatMesNumeros\n"));
  NumPref& w = app.program().Win<NumPref>();
  ASSERT_TRUE(w.Loaded());
  const NumPrefUi& u = w.ui();
  EXPECT_EQ(u.Toolbar1.ButtonCount(), 49);
  EXPECT_EQ(u.Toolbar2.ButtonCount(), 10);
  EXPECT_TRUE(u.Toolbar1.IsKeypad);
  for (int k = 1; k <= 49; ++k) {
    EXPECT_EQ(u.Toolbar1.Buttons(k).Key, QStringLiteral("N%1").arg(k));
    EXPECT_EQ(u.Toolbar1.Buttons(k).Image, k);
  }
  EXPECT_EQ(u.Grille.Cols(), 6);
  EXPECT_EQ(u.Grille.FixedRows, 1);
  EXPECT_EQ(u.Label3.LBound(), 0);
  EXPECT_EQ(u.Label3.UBound(), 5);
}

TEST(NumPref, ControlToutFaitNeedsSixSlotsWithANumber) {
  TestApp app;
  app.Run(QString::fromLatin1(kStart) + QStringLiteral("menu M_StatMesNumeros\n"));
  NumPref& w = app.program().Win<NumPref>();
  NumPrefUi& u = w.ui();
  for (int i = 0; i <= 5; ++i) u.Label3(i).Caption = QString::number(i + 1);
  w.ControlToutFait();
  EXPECT_TRUE(u.Saisir.Enabled);
  // "?", "", "0" and the design text all read as 0.
  for (const char* text : {"?", "", "0", "Label3"}) {
    u.Label3(2).Caption = QLatin1String(text);
    w.ControlToutFait();
    EXPECT_FALSE(u.Saisir.Enabled) << text;
  }
  u.Label3(2).Caption = QStringLiteral("12abc");
  w.ControlToutFait();
  EXPECT_TRUE(u.Saisir.Enabled);
}

TEST(NumPref, FailedDeletionOnAnEmptyTableEndsTheProgramWithNothingWritten) {
  TestApp app;
  const QString out =
      app.Run(QString::fromLatin1(kStart) + QStringLiteral("menu M_StatMesNumeros\n"
                                                           "click NumPref.Grille 1\n"
                                                           "click NumPref.Supprime\n"
                                                           "get NumPref.Loaded\n"));
  EXPECT_TRUE(out.endsWith(QStringLiteral("FATAL 3021 \"Aucun enregistrement en cours.\"\n")))
      << out.toStdString();
  EXPECT_TRUE(app.program().Ended());
  EXPECT_EQ(app.Query(QStringLiteral("SELECT count(*) FROM MesNumeros")), "0");
}

TEST(NumPref, ManyFavouritesFillTheGridInTableOrder) {
  TestApp app;
  QString script = QStringLiteral("store new\n");
  for (int r = 1; r <= 40; ++r)
    script += QStringLiteral("sql \"INSERT INTO MesNumeros VALUES (%1, 2, 3, 4, 5, %2)\"\n")
                  .arg(r)
                  .arg(r % 10 + 1);
  script += QStringLiteral(
      "sql \"INSERT INTO Sorties VALUES ('2024-03-02', 1, 2, 3, 4, 5, 6)\"\n"
      "start\n"
      "menu M_StatMesNumeros\n");
  app.Run(script);
  const Grid& g = app.program().Win<NumPref>().ui().Grille;
  ASSERT_EQ(g.Rows(), 41);
  for (int r = 1; r <= 40; ++r) {
    EXPECT_EQ(g.TextMatrix(r, 0), QString::number(r));
    EXPECT_EQ(g.TextMatrix(r, 5), QString::number(r % 10 + 1));
  }
}

struct GridRows : ::testing::Test {
  TestApp app;
  NumPref& w = app.program().Win<NumPref>();
};

TEST_F(GridRows, AddItemSplitsItsTextAtTabs) {
  app.Run(QString::fromLatin1(kStart));
  Grid& g = w.ui().Grille;
  g.AddItem(QStringLiteral("4\t8\t15"));
  ASSERT_EQ(g.Rows(), 3);
  EXPECT_EQ(g.TextMatrix(2, 0), "4");
  EXPECT_EQ(g.TextMatrix(2, 2), "15");
  EXPECT_EQ(g.TextMatrix(2, 3), "");
  g.AddItem(QString());
  EXPECT_EQ(g.Rows(), 4);
  EXPECT_EQ(g.TextMatrix(3, 0), "");
}

TEST_F(GridRows, RemoveItemShiftsTheRowsBelowAndKeepsTheLastRow) {
  app.Run(QString::fromLatin1(kStart));
  Grid& g = w.ui().Grille;
  g.SetRows(4);
  for (int r = 1; r <= 3; ++r) g.SetTextMatrix(r, 0, QString::number(r * 10));
  g.Row = 3;
  g.RemoveItem(1);
  ASSERT_EQ(g.Rows(), 3);
  EXPECT_EQ(g.TextMatrix(1, 0), "20");
  EXPECT_EQ(g.TextMatrix(2, 0), "30");
  EXPECT_EQ(g.Row, 2);
  EXPECT_EQ(g.TextMatrix(0, 5), QString::fromUtf8(" N° Pref"));
  g.RemoveItem(2);
  ASSERT_EQ(g.Rows(), 2);
  try {
    g.RemoveItem(1);
    FAIL() << "the last row went";
  } catch (const VbError& e) {
    EXPECT_EQ(e.Number(), 30015);
  }
  try {
    g.RemoveItem(5);
    FAIL() << "a row outside the grid went";
  } catch (const VbError& e) {
    EXPECT_EQ(e.Number(), 381);
  }
}

}  // namespace
}  // namespace kuvo
