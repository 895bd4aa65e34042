// The operator's own files in the import window: which files take their path,
// and a load killed at any moment leaves the whole old history or the whole new
// one, with group tables that match it.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "ScriptRunner.h"
#include "ScriptedPlatform.h"
#include "TestSupport.h"
#include "core/OperatorFiles.h"

namespace kuvo {
namespace {

const QString kData = QStringLiteral(KUVO_SOURCE_DIR "/tests/data/convert/");

QByteArray Read(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<none>");
}

const char kImportHeader[] =
    "annee_numero_de_tirage;jour_de_tirage;date_de_tirage;date_de_forclusion;boule_1;boule_2;"
    "boule_3;boule_4;boule_5;Numero_Chance;combinaison_gagnante_en_ordre_croissant;"
    "nombre_de_gagnant_au_rang1;rapport_du_rang1;nombre_de_gagnant_au_rang2;rapport_du_rang2;"
    "nombre_de_gagnant_au_rang3;rapport_du_rang3;nombre_de_gagnant_au_rang4;rapport_du_rang4;"
    "nombre_de_gagnant_au_rang5;rapport_du_rang5;nombre_de_gagnant_au_rang6;rapport_du_rang6;"
    "numero_jokerplus;devise";

bool Operator(const QByteArray& bytes) { return convert::IsOperatorFile(bytes, 25); }

TEST(OperatorFileRoute, EachPublishedLayout) {
  EXPECT_FALSE(Operator(Read(kData + "operateur-2008a.csv")));    // 25 fields, YYYYMMDD
  EXPECT_TRUE(Operator(Read(kData + "operateur-2008b.csv")));     // 25 fields, DD/MM/YYYY
  EXPECT_TRUE(Operator(Read(kData + "operateur-2017.csv")));      // 34 fields
  EXPECT_TRUE(Operator(Read(kData + "operateur-2019.csv")));      // 49 fields
  EXPECT_FALSE(Operator(Read(kData + "echantillons-kuvo.csv")));  // the converter's output
  EXPECT_TRUE(Operator(Read(kData + "recouvrement.csv")));        // a byte-order mark
}

TEST(OperatorFileRoute, TheImportsOwnLayoutWhateverItsLineEnds) {
  const QByteArray line = "24003;SAMEDI;20240106;20240405;7;15;22;29;41;3;;;;;;;;;;;;;;;eur;";
  const QByteArray header(kImportHeader);
  EXPECT_FALSE(Operator(header + ";\n" + line + "\n"));
  EXPECT_FALSE(Operator(header + ";\r\n" + line + "\r\n"));
  EXPECT_FALSE(Operator(header + " ; \r\n" + line + "\r\n"));
  EXPECT_FALSE(Operator(header + "\n" + line + "\n"));
  // One column more than table Kuvo, or a date written day first.
  EXPECT_TRUE(Operator(header + ";extra;\r\n" + line + "\r\n"));
  EXPECT_TRUE(Operator(header + ";\n\n  \n24003;SAMEDI; 06/01/2024 ;x;7;15;22;29;41;3;\n"));
  EXPECT_TRUE(Operator(header + ";\n24003;SAMEDI;6/1/2024;x;7;15;22;29;41;3;\n"));
  EXPECT_FALSE(Operator(header + ";\n24003;SAMEDI;2024/01/06;x;7;15;22;29;41;3;\n"));
  EXPECT_FALSE(Operator(header + ";\n24003;SAMEDI;06-01-2024;x;7;15;22;29;41;3;\n"));
}

TEST(OperatorFileRoute, TheHeaderMustNameTheOperatorsColumns) {
  QByteArray wide = "DATE_DE_TIRAGE;Boule_1;boule_2;boule_3;boule_4;boule_5;numero_chance";
  for (int i = 0; i < 20; ++i) wide += ";c" + QByteArray::number(i);
  EXPECT_TRUE(Operator(wide + "\n"));
  EXPECT_TRUE(Operator("\xEF\xBB\xBF" + wide + "\n"));
  // Without the chance number, without a ball, without the date.
  EXPECT_FALSE(Operator(QByteArray(wide).replace("numero_chance", "chance") + "\n"));
  EXPECT_FALSE(Operator(QByteArray(wide).replace("boule_4", "b4") + "\n"));
  EXPECT_FALSE(Operator(QByteArray(wide).replace("DATE_DE_TIRAGE", "date") + "\n"));
  // The older game names a sixth ball or a complementary one: the reader refuses it.
  EXPECT_TRUE(Operator(QByteArray(wide).replace("numero_chance", "boule_6") + "\n"));
  EXPECT_TRUE(Operator(QByteArray(wide).replace("numero_chance", "boule_complementaire") + "\n"));
  EXPECT_FALSE(Operator(""));
  EXPECT_FALSE(Operator("\n\n"));
  EXPECT_FALSE(Operator("date_de_tirage;boule_1;boule_2;boule_3;boule_4;boule_5;numero_chance\n"));
  EXPECT_FALSE(
      Operator("date_de_tirage;boule_1;boule_2;boule_3;boule_4;boule_5;numero_chance\n;;\n"));
}

// A base of two draws, compiled at start, loading the operator's file of 2024
// (40 draws); the child process is killed at the moment `when` names.
struct Killed {
  QTemporaryDir dir;
  QByteArray file;

  Killed() {
    file = Read(kData + "operateur-2019.csv");
    QFile f(dir.filePath(QStringLiteral("Tirages.csv")));
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(file);
  }

  // Kills the load at yield `yield` (from the click), or at its closing message
  // when `yield` is 0. Returns whether the kill came.
  bool Run(long yield) {
    const pid_t child = fork();
    if (child == 0) {
      ScriptRunner runner(dir.path(), dir.path());
      runner.RunText(QStringLiteral(
          "store new\n"
          "sql \"INSERT INTO Kuvo (date_de_tirage, boule_1, boule_2, boule_3, boule_4, boule_5, "
          "Numero_Chance) VALUES ('20231227', 10, 20, 30, 40, 49, 1), ('20231230', 11, 21, 31, "
          "41, 45, 2)\"\n"
          "start\nmenu M_MiseJour\nanswer-file Tirages.csv\n"
          // A menu chosen during the compile: the end of its event commits
          // what the store holds, except the load's own transaction.
          "at-yield 10 menu M_MiseJour\n"));
      ScriptedPlatform& p = runner.platform();
      const long from = p.yields;
      auto yields = p.OnYield;
      p.OnYield = [&](long n) {
        if (yields) yields(n);
        if (yield > 0 && n - from == yield) kill(getpid(), SIGKILL);
      };
      auto out = p.Out;
      p.Out = [&](const QString& line) {
        if (yield == 0 && line.startsWith(QLatin1String("MSGBOX"))) kill(getpid(), SIGKILL);
        if (out) out(line);
      };
      runner.RunText(QStringLiteral("click ChargeMiseJour.Cmd_Importation\n"));
      _exit(3);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  }

  QString Query(const QString& sql) {
    return test::QueryFile(dir.filePath(QStringLiteral("Kuvo.Mdb")), sql);
  }

  // Each group table counts exactly the groups of the draws in Sorties.
  void ExpectGroupsMatchSorties() {
    const long draws = Query(QStringLiteral("SELECT count(*) FROM Sorties")).toLong();
    // Sums: 10 pairs, 10 triples, 5 quadruples, 1 quintuple a draw.
    EXPECT_EQ(Query(QStringLiteral("SELECT sum(Sorties) FROM Groupe2")).toLong(), 10 * draws);
    EXPECT_EQ(Query(QStringLiteral("SELECT sum(Sorties) FROM Groupe3")).toLong(), 10 * draws);
    EXPECT_EQ(Query(QStringLiteral("SELECT sum(Sorties) FROM Groupe4")).toLong(), 5 * draws);
    EXPECT_EQ(Query(QStringLiteral("SELECT sum(Sorties) FROM Groupe5")).toLong(), draws);
    // Every quintuple is the sorted key of a draw of Sorties, and the other way round.
    const QString keys = QStringLiteral(
        "SELECT group_concat(printf('%02d', n), ',') FROM (SELECT n FROM (SELECT numero1 AS n "
        "UNION ALL SELECT numero2 UNION ALL SELECT numero3 UNION ALL SELECT numero4 UNION ALL "
        "SELECT numero5) ORDER BY n)");
    EXPECT_EQ(Query(QStringLiteral("SELECT count(*) FROM Sorties WHERE (%1) NOT IN (SELECT "
                                   "Numeros FROM Groupe5)")
                        .arg(keys)),
              QStringLiteral("0"));
    EXPECT_EQ(Query(QStringLiteral("SELECT count(*) FROM Groupe5 WHERE Numeros NOT IN (SELECT "
                                   "(%1) FROM Sorties)")
                        .arg(keys)),
              QStringLiteral("0"));
  }

  void ExpectOld() {
    EXPECT_EQ(Query(QStringLiteral("SELECT group_concat(DateTirage || ':' || numero1, ' ') FROM "
                                   "(SELECT * FROM Sorties ORDER BY DateTirage)")),
              QStringLiteral("2023-12-27:10 2023-12-30:11"));
    EXPECT_EQ(Query(QStringLiteral("SELECT group_concat(date_de_tirage, ' ') FROM Kuvo")),
              QStringLiteral("20231227 20231230"));
    EXPECT_EQ(Query(QStringLiteral("SELECT count(*) FROM Groupe2")), QStringLiteral("20"));
    ExpectGroupsMatchSorties();
  }

  void ExpectFileAlone() {
    EXPECT_EQ(Read(dir.filePath(QStringLiteral("Tirages.csv"))), file);
    QStringList names = QDir(dir.path()).entryList(QDir::Files);
    names.removeAll(QStringLiteral("Kuvo.Mdb"));
    names.removeAll(QStringLiteral("Kuvo.Mdb-wal"));
    names.removeAll(QStringLiteral("Kuvo.Mdb-shm"));
    EXPECT_EQ(names, QStringList{QStringLiteral("Tirages.csv")});
  }
};

// The yields of the load: the first pass of the compile starts at 1 and runs
// 42 draws; the second starts at 44 and ends at 86.
TEST(OperatorFileKill, AnywhereInTheCompileLeavesTheWholeOldHistory) {
  for (long yield : {1L, 2L, 30L, 43L, 44L, 45L, 60L, 86L}) {
    SCOPED_TRACE(yield);
    Killed k;
    ASSERT_TRUE(k.Run(yield));
    k.ExpectOld();
    k.ExpectFileAlone();
  }
}

TEST(OperatorFileKill, AtTheClosingMessageTheWholeNewHistoryStands) {
  Killed k;
  ASSERT_TRUE(k.Run(0));
  EXPECT_EQ(k.Query(QStringLiteral("SELECT count(*) || ' ' || min(DateTirage) || ' ' || "
                                   "max(DateTirage) FROM Sorties")),
            QStringLiteral("42 2023-12-27 2024-07-24"));
  EXPECT_EQ(k.Query(QStringLiteral("SELECT count(*) FROM Kuvo")), QStringLiteral("42"));
  k.ExpectGroupsMatchSorties();
  k.ExpectFileAlone();
}

}  // namespace
}  // namespace kuvo
