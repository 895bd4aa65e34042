// The draw entry: what the store keeps when a commit is refused, and the
// number read from a keypad key.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <QTemporaryDir>

#include "ScriptRunner.h"
#include "TestSupport.h"
#include "core/Controls.h"

namespace kuvo {
namespace {

using test::QueryFile;

TEST(TirSais, RefusedChanceNumberEndsTheProgramAndWritesNothing) {
  QTemporaryDir dir;
  ScriptRunner runner(dir.path(), dir.path());
  runner.Run(ScriptRunner::Parse(
      QStringLiteral("store new\n"
                     "sql \"INSERT INTO Sorties VALUES ('2024-03-02', 1, 2, 3, 4, 5, 6)\"\n"
                     "sql \"INSERT INTO Groupe2 VALUES ('02,07', 3)\"\n"
                     "start\n"
                     "menu M_GestionSaisie\n"
                     "click TirSais.Toolbar1 N23\n"
                     "click TirSais.Toolbar1 N7\n"
                     "click TirSais.Toolbar1 N41\n"
                     "click TirSais.Toolbar1 N2\n"
                     "click TirSais.Toolbar1 N36\n"
                     "click TirSais.Toolbar2 N4\n"
                     "click TirSais.Calendar1 2024-03-04\n"
                     "click TirSais.Toolbar2 N4\n"
                     "click TirSais.MiseJour\n"
                     "get TirSais.NbNumeros\n")));
  EXPECT_TRUE(runner.Output().endsWith(
      QStringLiteral("FATAL 3421 \"Erreur de conversion de type de données.\"\n")))
      << runner.Output().toStdString();
  const QString store = dir.filePath(QStringLiteral("Kuvo.Mdb"));
  EXPECT_EQ(QueryFile(store, QStringLiteral("SELECT count(*) FROM Sorties")), "1");
  EXPECT_EQ(QueryFile(store, QStringLiteral("SELECT count(*) FROM Sorties WHERE numero1 = 23")),
            "0");
  EXPECT_EQ(QueryFile(store, QStringLiteral("SELECT count(*) || '|' || sum(Sorties) FROM Groupe2")),
            "1|3");
  for (const char* table : {"Groupe3", "Groupe4", "Groupe5"})
    EXPECT_EQ(QueryFile(store, QStringLiteral("SELECT count(*) FROM %1").arg(table)), "0");
}

TEST(Keypad, KeyNumberIsTheTextKeyWithoutItsFirstCharacter) {
  ToolbarButton b;
  b.Key = QStringLiteral("N7");
  EXPECT_EQ(KeyNumber(b), 7);
  b.Key = QStringLiteral("N50");
  EXPECT_EQ(KeyNumber(b), 50);
  b.Key = QStringLiteral("X10");
  EXPECT_EQ(KeyNumber(b), 10);
  b.Key = QStringLiteral("N");
  EXPECT_EQ(KeyNumber(b), 0);
  EXPECT_EQ(KeypadMarked, 50);
}

}  // namespace
}  // namespace kuvo
