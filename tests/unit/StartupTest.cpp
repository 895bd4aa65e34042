// Start-up, the progress window, the group tables and the ordering routine.
#include <QRandomGenerator>
#include <algorithm>
#include <map>

#include "TestSupport.h"
#include "core/Avance.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Store.h"

namespace kuvo::test {
namespace {

QString Kuvo(std::initializer_list<std::array<int, 6>> draws) {
  QString sql;
  int day = 1;
  for (const auto& d : draws) {
    sql += KuvoInsert(QStringLiteral("202001%1").arg(day++, 2, 10, QLatin1Char('0')), d[0], d[1],
                      d[2], d[3], d[4], d[5]);
  }
  return QStringLiteral("sql \"%1\"\n").arg(sql);
}

TEST(Startup, FirstStartCompilesAndLeavesThePanelsEmpty) {
  TestApp app;
  const QString out =
      app.Run(QStringLiteral("store new\n") + Kuvo({{23, 7, 41, 2, 36, 4}, {1, 2, 3, 4, 5, 6}}) +
              QStringLiteral("start\n"));
  EXPECT_EQ(out, "SHOW MDIKuvo\nSHOW Avance\nUNLOAD Avance\nSHOW Avance\nUNLOAD Avance\n");
  EXPECT_EQ(app.Query("SELECT count(*) FROM Sorties"), "2");
  EXPECT_EQ(app.Query("SELECT count(*) FROM Groupe2"), "20");
  EXPECT_EQ(app.Run("get MDIKuvo.StatusBar1.Panels(1).Text\n"
                    "get MDIKuvo.StatusBar1.Panels(2).Text\n"
                    "get MDIKuvo.StatusBar1.Panels(3).Text\n"
                    "get Module1.NbTirages\nget Screen.MousePointer\nget MDIKuvo.Visible\n"),
            "MDIKuvo.StatusBar1.Panels(1).Text = \"\"\n"
            "MDIKuvo.StatusBar1.Panels(2).Text = \"\"\n"
            "MDIKuvo.StatusBar1.Panels(3).Text = \"\"\n"
            "Module1.NbTirages = 0\nScreen.MousePointer = 0\nMDIKuvo.Visible = True\n");
  // The generator was not seeded: it gives its default sequence.
  EXPECT_FLOAT_EQ(app.platform().Rnd(), 0.7055475f);
}

TEST(Startup, NextStartFillsThePanelsAndSeeds) {
  TestApp first;
  first.Run(QStringLiteral("store new\n") + Kuvo({{23, 7, 41, 2, 36, 4}, {1, 2, 3, 4, 5, 6}}) +
            QStringLiteral("start\n"));
  first.program().M().BaseDonnees->CommitPending();

  ScriptRunner second(first.dir.path(), first.dir.path());
  second.platform().secondsSinceMidnight = 12345.67;
  const QString out = second.RunText(
      "today 2000-03-04\nstart\nget MDIKuvo.StatusBar1.Panels(1).Text\n"
      "get MDIKuvo.StatusBar1.Panels(2).Text\nget MDIKuvo.StatusBar1.Panels(3).Text\n"
      "get Module1.NbTirages\n");
  EXPECT_EQ(
      out,
      "SHOW MDIKuvo\n"
      "MDIKuvo.StatusBar1.Panels(1).Text = \"     Nombre de Tirages  :   2     \"\n"
      "MDIKuvo.StatusBar1.Panels(2).Text = \"     Dernière mise à jour  :  02 janvier 2020     \"\n"
      "MDIKuvo.StatusBar1.Panels(3).Text = \"     04 mars 2000     \"\n"
      "Module1.NbTirages = 2\n");
  EXPECT_NE(second.platform().Rnd(), 0.7055475f);
  // The set stays on the most recent draw.
  EXPECT_EQ(
      second.program().M().RsSorties->Fields(QStringLiteral("DateTirage")).GetValue().toDate(),
      QDate(2020, 1, 2));
}

TEST(Startup, PanelOneWith1234Draws) {
  TestApp app;
  app.Run(
      "store new\n"
      "sql \"WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c WHERE x < 1234) "
      "INSERT INTO Sorties SELECT date('2000-01-01', '+' || x || ' days'), 1, 2, 3, 4, 5, 6 "
      "FROM c\"\n"
      "start\n");
  EXPECT_EQ(
      app.Run("get MDIKuvo.StatusBar1.Panels(1).Text\nget MDIKuvo.StatusBar1.Panels(2).Text\n"),
      "MDIKuvo.StatusBar1.Panels(1).Text = \"     Nombre de Tirages  :   1234     \"\n"
      "MDIKuvo.StatusBar1.Panels(2).Text = \"     Dernière mise à jour  :  19 mai 2003     \"\n");
}

TEST(Startup, MoreThan32767DrawsOverflow) {
  TestApp app;
  const QString out = app.Run(
      "store new\n"
      "sql \"WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c WHERE x < 32768) "
      "INSERT INTO Sorties SELECT date('1900-01-01', '+' || x || ' days'), 1, 2, 3, 4, 5, 6 "
      "FROM c\"\n"
      "start\nget MDIKuvo.Loaded\n");
  EXPECT_EQ(out, "FATAL 6 \"Dépassement de capacité\"\n");
}

TEST(Startup, EmptyKuvoEndsWithTheErrorReportAfterShowingTheMainWindow) {
  TestApp app;
  EXPECT_EQ(app.Run("store new\nstart\nget MDIKuvo.Visible\n"),
            "SHOW MDIKuvo\nFATAL 3021 \"Aucun enregistrement en cours.\"\n");
  EXPECT_TRUE(app.runner.Ended());
}

TEST(Startup, MissingStoreEndsWithTheErrorReport) {
  TestApp app;
  const QString out = app.Run("start\n");
  EXPECT_TRUE(out.startsWith("FATAL 3024 ")) << out.toStdString();
}

TEST(Startup, StaleGroupTablesAreCompiledOnTop) {
  TestApp app;
  app.Run(QStringLiteral("store new\nsql \"INSERT INTO Groupe2 VALUES ('01,02', 5)\"\n") +
          Kuvo({{1, 2, 3, 4, 5, 6}}) + QStringLiteral("start\n"));
  EXPECT_EQ(app.Query("SELECT Sorties FROM Groupe2 WHERE Numeros = '01,02'"), "6");
  EXPECT_EQ(app.Query("SELECT count(*) FROM Groupe2"), "10");
}

TEST(Startup, QuitEndsAtOnceAndSkipsTheRest) {
  TestApp app;
  const QString out = app.Run(QStringLiteral("store new\n") + Kuvo({{1, 2, 3, 4, 5, 6}}) +
                              QStringLiteral("start\nmenu M_FichierQuitter\nget MDIKuvo.Loaded\n"));
  EXPECT_TRUE(out.endsWith("UNLOAD MDIKuvo\n")) << out.toStdString();
  EXPECT_TRUE(app.runner.Ended());
}

TEST(Startup, ToolbarAndMenuCaptionsAsDesigned) {
  TestApp app;
  app.Run(QStringLiteral("store new\n") + Kuvo({{1, 2, 3, 4, 5, 6}}) + QStringLiteral("start\n"));
  MDIKuvoUi& ui = app.program().Win<MDIKuvo>().ui();
  ASSERT_EQ(ui.Toolbar2.ButtonCount(), 17);
  for (int separator : {4, 9, 12, 14, 16}) EXPECT_EQ(ui.Toolbar2.Buttons(separator).Style, 3);
  EXPECT_EQ(ui.Toolbar2.Buttons(10).ToolTipText,
            QStringLiteral("Numéros Générés  à partir de la Base de Données"));
  EXPECT_EQ(ui.Toolbar2.Buttons(13).ToolTipText, QStringLiteral("Mes Tirages Préférés "));
  EXPECT_EQ(ui.Toolbar2.Buttons(5).ToolTipText, QStringLiteral("Sorties groupées de numèros"));
  EXPECT_EQ(ui.M_MiseJour.Caption, QStringLiteral("&Mise à jour de la Base de Données"));
  EXPECT_EQ(ui.M_MiseJour.ParentMenu, nullptr);
  EXPECT_EQ(ui.Insert2.Caption, QStringLiteral("-"));
  EXPECT_EQ(app.program().Win<MDIKuvo>().Caption, QStringLiteral("Kuvo"));
}

// The progress window.
struct AvanceTest : ::testing::Test {
  TestApp app;
  Avance& avance() { return app.program().Win<Avance>(); }
  void SetUp() override {
    app.Run(QStringLiteral("store new\n") + Kuvo({{1, 2, 3, 4, 5, 6}}) + QStringLiteral("start\n"));
  }
};

TEST_F(AvanceTest, StepOneWithMaximumNPlusOneStopsAtN) {
  avance().Depart(QStringLiteral("x"), 11, 1);
  for (int i = 0; i < 10; ++i) avance().Increment();
  EXPECT_EQ(avance().ui().Gauge1.Value(), 10);
  EXPECT_EQ(avance().ui().Gauge1.Max(), 11);
  EXPECT_EQ(app.platform().MousePointer(), 11);
}

TEST_F(AvanceTest, MoreIncrementsThanTheMaximumEndWithoutError) {
  avance().Depart(QStringLiteral("x"), 3, 1);
  for (int i = 0; i < 10; ++i) EXPECT_NO_THROW(avance().Increment());
  EXPECT_EQ(avance().ui().Gauge1.Value(), 3);
}

TEST_F(AvanceTest, EachIncrementYields) {
  avance().Depart(QStringLiteral("x"), 5, 1);
  const long before = app.platform().yields;
  avance().Increment();
  avance().Increment();
  EXPECT_EQ(app.platform().yields, before + 2);
}

TEST_F(AvanceTest, MaximumOfZeroIsRefusedToTheCaller) {
  try {
    avance().Depart(QStringLiteral("x"), 0, 1);
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.Number(), 380);
  }
}

TEST_F(AvanceTest, PlacesItselfCentredAcrossWithItsLowerEdgeOnTheMiddle) {
  avance().Depart(QStringLiteral("Lecture"), 5, 1);
  EXPECT_EQ(avance().Left, (15360 - avance().Width) / 2);
  EXPECT_EQ(avance().Top, 11520 / 2 - avance().Height);
  EXPECT_EQ(avance().ui().Label1.Caption, QStringLiteral("Lecture"));
}

TEST_F(AvanceTest, FinalEmptiesTheBarRestoresThePointerAndUnloads) {
  avance().Depart(QStringLiteral("x"), 5, 1);
  avance().Increment();
  avance().Final();
  EXPECT_FALSE(avance().Loaded());
  EXPECT_EQ(app.platform().MousePointer(), 0);
}

TEST_F(AvanceTest, FermeFenetresLeavesTheProgressWindowAndSwallowsErrors) {
  avance().Depart(QStringLiteral("x"), 5, 1);
  EXPECT_NO_THROW(app.program().M().FermeFenetres());
  EXPECT_TRUE(avance().Loaded());
}

// The group tables.
struct GroupsTest : ::testing::Test {
  TestApp app;
  Module1& m() { return app.program().M(); }
  void SetUp() override {
    // One draw compiles at start; the group tables are then emptied for the test.
    app.Run(QStringLiteral("store new\n") + Kuvo({{40, 41, 42, 43, 44, 1}}) +
            QStringLiteral("start\n"));
    for (const char* t : {"Groupe2", "Groupe3", "Groupe4", "Groupe5"})
      m().BaseDonnees->Execute(QStringLiteral("DELETE * FROM %1").arg(QLatin1String(t)));
  }
  QString Rows() {
    return app.Query(
        "SELECT (SELECT count(*) FROM Groupe2) || ',' || (SELECT count(*) FROM Groupe3) || ',' ||"
        " (SELECT count(*) FROM Groupe4) || ',' || (SELECT count(*) FROM Groupe5) || ' ' ||"
        " (SELECT group_concat(DISTINCT s) FROM (SELECT Sorties s FROM Groupe2 UNION ALL"
        "  SELECT Sorties FROM Groupe3 UNION ALL SELECT Sorties FROM Groupe4 UNION ALL"
        "  SELECT Sorties FROM Groupe5))");
  }
};

TEST_F(GroupsTest, FirstDrawCreates26RowsCountedOnce) {
  m().MajGroupes(QStringLiteral("23,07,41,02,36"));
  EXPECT_EQ(Rows(), "10,10,5,1 1");
  EXPECT_EQ(app.Query("SELECT Numeros FROM Groupe5"), "02,07,23,36,41");
  EXPECT_EQ(app.Query("SELECT group_concat(Numeros, ' ') FROM Groupe2"),
            "02,07 02,23 02,36 02,41 07,23 07,36 07,41 23,36 23,41 36,41");
  EXPECT_EQ(app.Query("SELECT group_concat(Numeros, ' ') FROM Groupe4"),
            "02,07,23,36 02,07,23,41 02,07,36,41 02,23,36,41 07,23,36,41");
}

TEST_F(GroupsTest, TheSameDrawAgainRaisesAll26ToTwo) {
  m().MajGroupes(QStringLiteral("23,07,41,02,36"));
  m().MajGroupes(QStringLiteral("02,07,23,36,41"));
  EXPECT_EQ(Rows(), "10,10,5,1 2");
}

TEST_F(GroupsTest, AFailureAfterTheCountsKeepsThemInTheFile) {
  // The event counts a draw and then fails: the program ends with its report,
  // and the counts made before the failure are in the file, nothing undone.
  QString seen;
  app.platform().Out = [&seen](const QString& line) { seen += line + QLatin1Char('\n'); };
  EXPECT_THROW(app.program().RunEvent([this] {
    m().MajGroupes(QStringLiteral("23,07,41,02,36"));
    m().MajGroupes(QStringLiteral("02,07,23,36,41"));
    Raise(Err::Overflow);
  }),
               ProgramEnd);
  EXPECT_EQ(seen, QStringLiteral("FATAL 6 \"Dépassement de capacité\"\n"));
  EXPECT_EQ(QueryFile(app.StorePath(),
                      "SELECT (SELECT count(*) || '/' || sum(Sorties) FROM Groupe2) || ' ' ||"
                      " (SELECT Sorties FROM Groupe5 WHERE Numeros = '02,07,23,36,41')"),
            "10/20 2");
}

TEST_F(GroupsTest, RsGroupeIsLeftOnGroupe5) {
  m().MajGroupes(QStringLiteral("23,07,41,02,36"));
  ASSERT_TRUE(m().RsGroupe);
  m().RsGroupe->Seek(QStringLiteral("="), QStringLiteral("02,07,23,36,41"));
  EXPECT_FALSE(m().RsGroupe->NoMatch());
}

TEST(Groups, OneDigitNumberGetsItsLeadingZeroInTheKeyOnly) {
  TestApp app;
  app.Run(QStringLiteral("store new\n") + Kuvo({{7, 12, 3, 44, 45, 2}}) +
          QStringLiteral("start\n"));
  EXPECT_EQ(app.Query("SELECT Numeros FROM Groupe5"), "03,07,12,44,45");
  EXPECT_EQ(app.Query("SELECT numero1 || ' ' || numero3 FROM Sorties"), "7 3");
}

TEST(Groups, ARepeatedNumberFromTheFileIsCountedAsItStands) {
  TestApp app;
  app.Run(QStringLiteral("store new\n") + Kuvo({{5, 5, 1, 2, 3, 4}}) + QStringLiteral("start\n"));
  EXPECT_EQ(app.Query("SELECT Sorties FROM Groupe2 WHERE Numeros = '05,05'"), "1");
  EXPECT_EQ(app.Query("SELECT Numeros FROM Groupe5"), "01,02,03,05,05");
}

TEST(Groups, CompiledRowsComeInTheOrderOfTheirFirstDraw) {
  TestApp app;
  app.Run(QStringLiteral("store new\n") +
          Kuvo({{23, 7, 41, 2, 36, 1}, {1, 2, 3, 4, 5, 2}, {2, 7, 23, 1, 3, 3}}) +
          QStringLiteral("start\n"));
  EXPECT_EQ(app.Query("SELECT group_concat(rowid || ':' || Numeros || '=' || Sorties, ' ') FROM "
                      "(SELECT rowid, * FROM Groupe2 ORDER BY rowid)"),
            "1:02,07=2 2:02,23=2 3:02,36=1 4:02,41=1 5:07,23=2 6:07,36=1 7:07,41=1 8:23,36=1 "
            "9:23,41=1 10:36,41=1 11:01,02=2 12:01,03=2 13:01,04=1 14:01,05=1 15:02,03=2 "
            "16:02,04=1 17:02,05=1 18:03,04=1 19:03,05=1 20:04,05=1 21:01,07=1 22:01,23=1 "
            "23:03,07=1 24:03,23=1");
  EXPECT_EQ(app.Query("SELECT group_concat(rowid || ':' || Numeros, ' ') FROM "
                      "(SELECT rowid, * FROM Groupe5 ORDER BY rowid)"),
            "1:02,07,23,36,41 2:01,02,03,04,05 3:01,02,03,07,23");
}

TEST(Groups, AnEventServedDuringTheCompileSeesAndChangesTheCountsSoFar) {
  TestApp app;
  // Yields, counted from the start: the main window's, the start of each pass
  // and each row. At the 7th, after the first draw of the second pass, the
  // counts so far are read and one is changed from outside.
  const QString out = app.Run(
      QStringLiteral("store new\n") +
      Kuvo({{23, 7, 41, 2, 36, 1}, {1, 2, 3, 4, 5, 2}, {2, 7, 23, 1, 3, 3}}) +
      QStringLiteral("at-yield 7 sql \"SELECT count(*), sum(Sorties) FROM Groupe3\"\n"
                     "at-yield 7 sql \"UPDATE Groupe2 SET Sorties = 40 WHERE Numeros = '02,07'\"\n"
                     "at-yield 8 sql \"SELECT Numeros || '=' || Sorties FROM Groupe2 WHERE "
                     "Numeros IN ('01,02', '02,07') ORDER BY Numeros\"\n"
                     "start\n"));
  EXPECT_EQ(out,
            "SHOW MDIKuvo\nSHOW Avance\nUNLOAD Avance\nSHOW Avance\n10|10\n"
            "01,02=1\n02,07=40\nUNLOAD Avance\n");
  EXPECT_EQ(app.Query("SELECT Sorties FROM Groupe2 WHERE Numeros = '02,07'"), "41");
  EXPECT_EQ(app.Query("SELECT sum(Sorties) FROM Groupe2"), "69");
}

TEST(Groups, CompiledHistoryMatchesAnIndependentCount) {
  TestApp app;
  QRandomGenerator rng(20081006);
  QString sql;
  std::map<QString, int> expected;
  for (int d = 0; d < 400; ++d) {
    std::vector<int> pool(49);
    for (int i = 0; i < 49; ++i) pool[static_cast<size_t>(i)] = i + 1;
    std::vector<int> draw;
    for (int k = 0; k < 5; ++k) {
      const int at = static_cast<int>(rng.bounded(static_cast<quint32>(pool.size())));
      draw.push_back(pool[static_cast<size_t>(at)]);
      pool.erase(pool.begin() + at);
    }
    const QDate date = QDate(2008, 10, 6).addDays(d * 2);
    sql += KuvoInsert(date.toString(QStringLiteral("yyyyMMdd")), draw[0], draw[1], draw[2], draw[3],
                      draw[4], 1 + d % 10);
    std::sort(draw.begin(), draw.end());
    for (int mask = 0; mask < 32; ++mask) {
      if (std::popcount(static_cast<unsigned>(mask)) < 2) continue;
      QStringList key;
      for (int k = 0; k < 5; ++k)
        if (mask & (1 << k))
          key << QStringLiteral("%1").arg(draw[static_cast<size_t>(k)], 2, 10, QLatin1Char('0'));
      ++expected[key.join(QLatin1Char(','))];
    }
  }
  app.Run(QStringLiteral("store new\nsql \"BEGIN; %1 COMMIT;\"\nstart\n").arg(sql));
  app.program().M().BaseDonnees->CommitPending();

  sqlite3* db = nullptr;
  ASSERT_EQ(
      sqlite3_open_v2(app.StorePath().toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr),
      SQLITE_OK);
  std::map<QString, int> actual;
  for (const char* t : {"Groupe2", "Groupe3", "Groupe4", "Groupe5"}) {
    sqlite3_stmt* stmt = nullptr;
    const QByteArray q =
        QStringLiteral("SELECT Numeros, Sorties FROM %1").arg(QLatin1String(t)).toUtf8();
    ASSERT_EQ(sqlite3_prepare_v2(db, q.constData(), -1, &stmt, nullptr), SQLITE_OK);
    while (sqlite3_step(stmt) == SQLITE_ROW)
      actual[QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)))] =
          sqlite3_column_int(stmt, 1);
    sqlite3_finalize(stmt);
  }
  sqlite3_close(db);
  EXPECT_EQ(actual.size(), expected.size());
  EXPECT_TRUE(actual == expected);
}

// The ordering routine.
struct TriTauxTest : ::testing::Test {
  TestApp app;
  std::vector<EnregStat> Make(std::initializer_list<double> rates) {
    std::vector<EnregStat> v(rates.size() + 1);
    int i = 1;
    for (double r : rates) {
      v[static_cast<size_t>(i)].Numero = i;
      v[static_cast<size_t>(i)].NbSorties = static_cast<Int16>(i * 10);
      v[static_cast<size_t>(i)].Taux = r;
      ++i;
    }
    return v;
  }
  static std::vector<double> Numbers(const std::vector<EnregStat>& v) {
    std::vector<double> out;
    for (size_t i = 1; i < v.size(); ++i) out.push_back(v[i].Numero);
    return out;
  }
};

TEST_F(TriTauxTest, EqualRatesChangePlacesAsTheStepsSay) {
  auto v = Make({1, 1, 1, 2});
  app.program().M().TriTaux(4, v);
  EXPECT_EQ(Numbers(v), (std::vector<double>{4, 1, 3, 2}));
  EXPECT_EQ(v[1].NbSorties, 40);  // whole records move
}

TEST_F(TriTauxTest, DescendingByRate) {
  auto v = Make({3.5, 12.25, 0, 7, 12.3, 1});
  app.program().M().TriTaux(6, v);
  EXPECT_EQ(Numbers(v), (std::vector<double>{5, 2, 4, 1, 6, 3}));
}

TEST_F(TriTauxTest, ZeroOrOneElementChangesNothingButThePointer) {
  auto v = Make({1, 5});
  app.platform().SetMousePointer(11);
  app.program().M().TriTaux(0, v);
  EXPECT_EQ(Numbers(v), (std::vector<double>{1, 2}));
  EXPECT_EQ(app.platform().MousePointer(), 0);
  app.program().M().TriTaux(1, v);
  EXPECT_EQ(Numbers(v), (std::vector<double>{1, 2}));
}

TEST_F(TriTauxTest, AllEqualKeepsTheOrder) {
  auto v = Make({2, 2, 2, 2, 2, 2, 2});
  app.program().M().TriTaux(7, v);
  EXPECT_EQ(Numbers(v), (std::vector<double>{1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(TriTauxTest, ElementZeroIsNeverTouched) {
  auto v = Make({1, 9});
  v[0].Taux = 100;
  v[0].Numero = 99;
  app.program().M().TriTaux(2, v);
  EXPECT_EQ(v[0].Numero, 99);
  EXPECT_EQ(Numbers(v), (std::vector<double>{2, 1}));
}

}  // namespace
}  // namespace kuvo::test
