// The group search called with group texts a user cannot type, and the list
// commands of the scenario driver.
#include "TestSupport.h"
#include "core/Texts.h"
#include "statistics/TirGrou.h"

namespace kuvo::test {
namespace {

struct TirGrouTest : ::testing::Test {
  TestApp app;
  void SetUp() override {
    app.Run(QStringLiteral(
        "store new\n"
        "sql \"INSERT INTO Sorties VALUES ('2024-01-06', 3, 12, 45, 46, 49, 7), "
        "('2024-01-10', 7, 12, 20, 31, 44, 3), ('2024-01-13', 5, 7, 23, 30, 41, 7), "
        "('2024-01-20', 17, 27, 37, 47, 1, 10), ('2024-01-24', 2, 4, 6, 8, 10, 1)\"\n"
        "start\n"
        "menu M_StatGroupes\n"));
  }
  TirGrou& w() { return app.program().Win<TirGrou>(); }
  // The number of draws found for `groupe`, `taille` pieces of it searched.
  int Found(const QString& groupe, Int16 taille) {
    Int16 trouves = -1;
    try {
      app.program().RunEvent([&] { w().ChercheSortieGroupe(groupe, taille, trouves); });
    } catch (const ProgramEnd&) {
      return -1;
    }
    return trouves;
  }
};

TEST_F(TirGrouTest, PiecesKeepTheirCommaAndMatchWholeNumbers) {
  EXPECT_EQ(Found(QStringLiteral("07,"), 1), 3);
  EXPECT_EQ(Found(QStringLiteral("07,12,"), 2), 2);
  EXPECT_EQ(Found(QStringLiteral("12,07,"), 2), 2);
  // "7," alone would match the end of 17, 27, 37 and 47.
  EXPECT_EQ(Found(QStringLiteral("7,"), 1), 4);
  // The comma alone is in every draw.
  EXPECT_EQ(Found(QStringLiteral(",12,"), 2), 2);
  EXPECT_EQ(Found(QStringLiteral(","), 1), 5);
}

TEST_F(TirGrouTest, TextAfterTheLastCommaIsDropped) {
  EXPECT_EQ(Found(QStringLiteral("07,12"), 1), 3);
  EXPECT_EQ(Found(QStringLiteral("07"), 0), 5);
}

TEST_F(TirGrouTest, OnlyTheFirstPiecesAreSearched) {
  EXPECT_EQ(Found(QStringLiteral("07,05,"), 1), 3);
  EXPECT_EQ(Found(QStringLiteral("07,05,"), 2), 1);
}

TEST_F(TirGrouTest, DatesAreListedOnlyInGroupMode) {
  EXPECT_EQ(Found(QStringLiteral("12,"), 1), 2);
  EXPECT_EQ(w().ui().Liste.ListCount(), 2);
  EXPECT_TRUE(w().ui().Picture2.Visible);
  app.program().RunEvent([&] {
    w().ui().Liste.Clear();
    w().ui().Picture2.Visible = false;
  });
  app.program().M().ModeGroupe = 0;
  EXPECT_EQ(Found(QStringLiteral("12,"), 1), 2);
  EXPECT_EQ(w().ui().Liste.ListCount(), 0);
  EXPECT_FALSE(w().ui().Picture2.Visible);
}

TEST_F(TirGrouTest, TheGroupTextIsLeftUnchanged) {
  const QString groupe = QStringLiteral("07,12,");
  Int16 taille = 2;
  Int16 trouves = 0;
  app.program().RunEvent([&] { w().ChercheSortieGroupe(groupe, taille, trouves); });
  EXPECT_EQ(groupe, QStringLiteral("07,12,"));
  EXPECT_EQ(taille, 2);
}

TEST_F(TirGrouTest, MoreThanSixPiecesAreOutOfRange) {
  app.Run(QStringLiteral("get TirGrou.Loaded\n"));
  EXPECT_EQ(Found(QStringLiteral("01,02,03,04,05,06,"), 6), 0);
  const QString out = app.Run(QStringLiteral("get TirGrou.Loaded\n"));
  EXPECT_EQ(out, QStringLiteral("TirGrou.Loaded = True\n"));
  EXPECT_EQ(Found(QStringLiteral("01,02,03,04,05,06,07,"), 1), -1);
  EXPECT_TRUE(app.program().Ended());
  EXPECT_TRUE(app.runner.Output().endsWith(
      QStringLiteral("FATAL 9 \"L'indice n'appartient pas à la sélection\"\n")));
}

TEST_F(TirGrouTest, MouseOnAListItemNeedsAnItemOfTheList) {
  app.Run(QStringLiteral("click TirGrou.Toolbar1 N12\nclick TirGrou.Recherche\n"));
  // The script's own mistakes, each told by its message.
  auto run = [this](const char* line) {
    try {
      app.Run(QString::fromUtf8(line));
    } catch (const ScriptError& e) {
      return QString::fromUtf8(e.what());
    }
    return QString();
  };
  EXPECT_EQ(run("mouse TirGrou.Liste down #2\n"), QStringLiteral("no item #2"));
  EXPECT_EQ(run("mouse TirGrou.Liste down \"13 janvier 2024\"\n"),
            QStringLiteral("no item 13 janvier 2024"));
  EXPECT_EQ(run("mouse TirGrou.Liste move #0\n"), QStringLiteral("mouse on an item: down or up"));
  // Two words after the event are a position, not an item and a word more.
  EXPECT_EQ(run("mouse TirGrou.Liste down #0 1\n"), QStringLiteral("not a number: #0"));
  EXPECT_TRUE(run("mouse TirGrou.Liste up #1 30 40\n").isEmpty());
  EXPECT_EQ(w().ui().Liste.ListIndex(), -1);
  EXPECT_TRUE(run("mouse TirGrou.Liste down #1 30 40\n").isEmpty());
  EXPECT_EQ(w().ui().Liste.ListIndex(), 1);
  EXPECT_EQ(w().ui().Label13.Caption, QStringLiteral(" 7, 12, 20, 31, 44, 3"));
}

}  // namespace
}  // namespace kuvo::test
