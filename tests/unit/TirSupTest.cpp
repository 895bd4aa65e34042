// Draw deletion and correction: what stays in the store when the program ends
// on a failure, and the list's retry of a missing record.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "TestSupport.h"

namespace kuvo::test {
namespace {

const QString kTwoDates = QStringLiteral(
    "store new\n"
    "sql \"INSERT INTO Sorties VALUES ('2024-03-04', 23, 7, 41, 2, 36, 4), "
    "('2024-03-06', 2, 7, 11, 23, 45, 1)\"\n"
    "sql \"INSERT INTO Groupe5 VALUES ('02,07,23,36,41', 1), ('02,07,11,23,45', 1)\"\n"
    "start\n");

TEST(TirSup, TheLastDrawIsGoneWhenTheListFailsToBeRebuilt) {
  TestApp app;
  app.Run(kTwoDates + QStringLiteral("menu M_GestionSupprimer\n"
                                     "click TirSup.Combo1 #1\n"
                                     "click TirSup.Grille 1\n"
                                     "click TirSup.MiseJour\n"
                                     "click TirSup.Combo1 #0\n"
                                     "click TirSup.Grille 1\n"));
  EXPECT_EQ(app.Query(QStringLiteral("SELECT count(*) FROM Sorties")), "1");
  const QString out = app.Run(QStringLiteral("click TirSup.MiseJour\n"));
  EXPECT_EQ(out, QStringLiteral("FATAL 3021 \"Aucun enregistrement en cours.\"\n"));
  EXPECT_TRUE(app.runner.Ended());
  // The deletion stands; the group tables still hold both draws.
  EXPECT_EQ(QueryFile(app.StorePath(), QStringLiteral("SELECT count(*) FROM Sorties")), "0");
  EXPECT_EQ(QueryFile(app.StorePath(), QStringLiteral("SELECT count(*) FROM Groupe5")), "2");
}

TEST(TirSup, ADeletionWithNoMatchingRowDeletesNothing) {
  TestApp app;
  const QString out = app.Run(kTwoDates + QStringLiteral("menu M_GestionSupprimer\n"
                                                         "click TirSup.Combo1 #0\n"
                                                         "click TirSup.Quitter\n"
                                                         "menu M_GestionSupprimer\n"
                                                         "click TirSup.Grille 1\n"
                                                         "click TirSup.MiseJour\n"));
  EXPECT_TRUE(out.endsWith(QStringLiteral("FATAL 3021 \"Aucun enregistrement en cours.\"\n")))
      << out.toStdString();
  EXPECT_EQ(QueryFile(app.StorePath(), QStringLiteral("SELECT count(*) FROM Sorties")), "2");
}

TEST(TirModi, ACommitWithNoMatchingRowWritesNothing) {
  TestApp app;
  QString script = kTwoDates + QStringLiteral(
                                   "menu M_GestionModif\n"
                                   "click TirModi.Combo1 #0\n"
                                   "click TirModi.Quitter\n"
                                   "menu M_GestionModif\n");
  for (int k = 0; k <= 5; ++k)
    script += QStringLiteral("mouse TirModi.Label16(%1) up\nclick TirModi.Toolbar1 N%2\n")
                  .arg(k)
                  .arg(k + 1);
  script += QStringLiteral("click TirModi.MiseAJour\n");
  const QString out = app.Run(script);
  EXPECT_TRUE(out.endsWith(QStringLiteral("FATAL 3021 \"Aucun enregistrement en cours.\"\n")))
      << out.toStdString();
  EXPECT_EQ(QueryFile(app.StorePath(),
                      QStringLiteral("SELECT group_concat(numero1 || '-' || NumeroChance) FROM "
                                     "(SELECT * FROM Sorties ORDER BY rowid)")),
            "23-4,2-1");
}

// A date whose draws were removed behind the window's back gives an empty set:
// the missing record is retried without end, and the window hangs. The child
// process is stopped from outside after a while.
TEST(TirSupDeathTest, AChoiceOfADateWithNoDrawRetriesForEver) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        TestApp app;
        app.Run(kTwoDates + QStringLiteral("menu M_GestionSupprimer\n"
                                           "sql \"DELETE FROM Sorties WHERE DateTirage = "
                                           "'2024-03-06'\"\n"));
        std::thread([] {
          std::this_thread::sleep_for(std::chrono::milliseconds(700));
          std::_Exit(42);
        }).detach();
        app.Run(QStringLiteral("click TirSup.Combo1 \"06 mars 2024\"\n"));
        std::_Exit(1);
      },
      ::testing::ExitedWithCode(42), "");
}

// The same date in the correction has no handler: the program ends at once.
TEST(TirModi, AChoiceOfADateWithNoDrawEndsTheProgram) {
  TestApp app;
  const QString out =
      app.Run(kTwoDates + QStringLiteral("menu M_GestionModif\n"
                                         "sql \"DELETE FROM Sorties WHERE DateTirage = "
                                         "'2024-03-06'\"\n"
                                         "click TirModi.Combo1 \"06 mars 2024\"\n"));
  EXPECT_TRUE(out.endsWith(QStringLiteral("FATAL 3021 \"Aucun enregistrement en cours.\"\n")))
      << out.toStdString();
}

}  // namespace
}  // namespace kuvo::test
