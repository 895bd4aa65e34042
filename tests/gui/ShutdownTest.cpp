// The program run as `main` runs it, ended by each of its ends: afterwards the
// store is one whole file, alone in its folder.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <csignal>

#include "core/Controls.h"
#include "core/Form.h"
#include "core/Program.h"
#include "core/Store.h"
#include "gui/Desktop.h"
#include "gui/MainWindowView.h"
#include "gui/QtPlatform.h"
#include "windows/Windows.h"

namespace kuvo::testing {
namespace {

// The real platform, its end of program included; only its message boxes are
// answered at once.
class Answering : public QtPlatform {
 public:
  using QtPlatform::QtPlatform;
  QStringList boxes, fatals;
  int MsgBox(const QString& prompt, int, const QString&) override {
    boxes << prompt;
    return Mb::AnswerOk;
  }
  void ReportFatal(int number, const QString& text) override { fatals << FatalText(number, text); }
  // Whether a handler is letting events through.
  int yielding = 0;
  void DoEvents() override {
    ++yielding;
    struct Done {
      int& n;
      ~Done() { --n; }
    } done{yielding};
    QtPlatform::DoEvents();
  }
};

// Runs `act` from the program's own loop, once no handler is letting events
// through (the first start's compile).
void WhenIdle(Answering& platform, QObject* context, const std::function<void()>& act) {
  QTimer::singleShot(0, context, [&platform, context, act] {
    if (platform.yielding)
      WhenIdle(platform, context, act);
    else
      act();
  });
}

// Runs the program as `main` does, `act` once its loop runs: until it ends,
// then the views go, then the program. Returns what `main` would return.
int RunAsMain(Answering& platform, const std::function<void(Program&)>& act) {
  int status = -1;
  {
    Program program(platform, AllWindows());
    platform.Attach(program);
    SessionEnd session([&platform] { platform.EndSession(); });
    QObject context;
    WhenIdle(platform, &context, [&] { act(program); });
    // A program that does not end fails the test instead of hanging it.
    QTimer::singleShot(60000, &context, [] { QCoreApplication::exit(2); });
    status = platform.Exec();
    platform.Release();
  }
  return status;
}

// One value read by a connection of its own.
QString Query(const QString& path, const char* sql) {
  sqlite3* db = nullptr;
  QString result;
  if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) ==
      SQLITE_OK) {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW)
      result = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
  }
  sqlite3_close(db);
  return result;
}

// A history of `count` draws in the operator's layout.
QString History(int count) {
  QString csv = QStringLiteral(
      "annee_numero_de_tirage;jour_de_tirage;date_de_tirage;date_de_forclusion;boule_1;boule_2;"
      "boule_3;boule_4;boule_5;Numero_Chance;\n");
  for (int i = 0; i < count; ++i)
    csv += QStringLiteral("2024%1;LUNDI;2024%2%3;20241231;%4;%5;%6;%7;%8;%9;\n")
               .arg(i, 3, 10, QLatin1Char('0'))
               .arg(i / 28 + 1, 2, 10, QLatin1Char('0'))
               .arg(i % 28 + 1, 2, 10, QLatin1Char('0'))
               .arg(i % 9 + 1)
               .arg(i % 9 + 11)
               .arg(i % 9 + 21)
               .arg(i % 9 + 31)
               .arg(i % 9 + 41)
               .arg(i % 10 + 1);
  return csv;
}

struct ShutdownTest : ::testing::Test {
  void SetUp() override {
    CreateStore(Store(), ShippedSchema(), History(120));
    platform = std::make_unique<Answering>(dir.path());
  }
  QString Store() const { return dir.filePath(QStringLiteral("Kuvo.Mdb")); }

  // The first start compiles; a favourite is added in its window; then `end`.
  int CompileAddAFavouriteThen(const std::function<void(Program&)>& end) {
    return RunAsMain(*platform, [this, end](Program& program) {
      Form& main = program.MainForm();
      platform->Run([&main] { main.FindControl(QStringLiteral("M_StatMesNumeros"))->UserClick(); });
      Form* pref = program.FormByName(QStringLiteral("NumPref"), false);
      ASSERT_NE(pref, nullptr);
      auto* numbers = static_cast<Toolbar*>(pref->FindControl(QStringLiteral("Toolbar1")));
      auto* chance = static_cast<Toolbar*>(pref->FindControl(QStringLiteral("Toolbar2")));
      for (int n : {23, 7, 41, 2, 36}) platform->Run([numbers, n] { numbers->UserClick(n); });
      platform->Run([chance] { chance->UserClick(4); });
      platform->Run([pref] { pref->FindControl(QStringLiteral("Saisir"))->UserClick(); });
      end(program);
    });
  }

  // A copy of Kuvo.Mdb alone holds the compiled draws and the favourite, and
  // nothing else stands beside the store.
  void ExpectOneWholeFile() {
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("Kuvo.Mdb")});
    QTemporaryDir copy;
    const QString alone = copy.filePath(QStringLiteral("Kuvo.Mdb"));
    ASSERT_TRUE(QFile::copy(Store(), alone));
    EXPECT_EQ(Query(alone, "SELECT COUNT(*) FROM Sorties"), QStringLiteral("120"));
    EXPECT_GT(Query(alone, "SELECT COUNT(*) FROM Groupe2").toInt(), 0);
    EXPECT_EQ(Query(alone,
                    "SELECT numero1||','||numero2||','||numero3||','||numero4||','||numero5||"
                    "'/'||NumeroChance FROM MesNumeros"),
              QStringLiteral("23,7,41,2,36/4"));
  }

  QTemporaryDir dir;
  std::unique_ptr<Answering> platform;
};

TEST_F(ShutdownTest, QuitterLeavesTheWholeStoreInKuvoMdbAlone) {
  const int status = CompileAddAFavouriteThen([this](Program& program) {
    auto& quit = static_cast<Menu&>(*program.MainForm().FindControl("M_FichierQuitter"));
    platform->MainWindow()->ActionOf(quit)->trigger();
  });
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(platform->fatals.isEmpty());
  ExpectOneWholeFile();
}

TEST_F(ShutdownTest, TheMainWindowClosedByItsFrameLeavesTheWholeStore) {
  const int status =
      CompileAddAFavouriteThen([this](Program&) { platform->MainWindow()->close(); });
  EXPECT_EQ(status, 0);
  ExpectOneWholeFile();
}

TEST_F(ShutdownTest, TheEndOfTheSessionLeavesTheWholeStore) {
  const int status = CompileAddAFavouriteThen([](Program&) { std::raise(SIGTERM); });
  EXPECT_EQ(status, 0);
  ExpectOneWholeFile();
}

TEST_F(ShutdownTest, TheEndAfterTheErrorReportLeavesTheWholeStore) {
  const int status = CompileAddAFavouriteThen(
      [this](Program&) { platform->Run([] { Raise(Err::DivisionByZero); }); });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(platform->fatals.size(), 1);
  ExpectOneWholeFile();
}

TEST_F(ShutdownTest, BetweenTwoEventsKuvoMdbAloneIsWhole) {
  RunAsMain(*platform, [this](Program& program) {
    // While the program runs, a copy of the file alone holds what was done.
    QTemporaryDir copy;
    const QString alone = copy.filePath(QStringLiteral("Kuvo.Mdb"));
    EXPECT_TRUE(QFile::copy(Store(), alone));
    EXPECT_EQ(Query(alone, "SELECT COUNT(*) FROM Sorties"), QStringLiteral("120"));
    platform->Run([&program] { program.Quit(); });
  });
}

TEST(FreshStoreTest, AStaleLogBesideADeletedStoreGoesBeforeTheFreshCopy) {
  QTemporaryDir root;
  const QString program = root.filePath(QStringLiteral("bin"));
  const QString user = root.filePath(QStringLiteral("user"));
  QDir().mkpath(program);
  QDir().mkpath(root.filePath(QStringLiteral("store")));
  QDir().mkpath(user);
  CreateStore(root.filePath(QStringLiteral("store/Kuvo.Mdb")), ShippedSchema(), History(30));
  // The user's store, with its last writes still in the log, as a process
  // killed outright leaves it; then the store alone is deleted.
  const QString mine = user + QStringLiteral("/Kuvo.Mdb");
  CreateStore(mine, ShippedSchema(), History(5));
  {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(mine.toUtf8().constData(), &db), SQLITE_OK);
    sqlite3_db_config(db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_exec(db,
                 "PRAGMA journal_mode=WAL; DELETE FROM Kuvo; "
                 "INSERT INTO MesNumeros VALUES (1, 2, 3, 4, 5, 6);",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
  }
  ASSERT_TRUE(QFile::exists(mine + QStringLiteral("-wal")));
  QFile::remove(mine);

  EXPECT_EQ(ApplicationFolder(program, user), user);
  EXPECT_FALSE(QFile::exists(mine + QStringLiteral("-wal")));
  EXPECT_FALSE(QFile::exists(mine + QStringLiteral("-shm")));
  EXPECT_EQ(Query(mine, "SELECT COUNT(*) FROM Kuvo"), QStringLiteral("30"));
  EXPECT_EQ(Query(mine, "SELECT COUNT(*) FROM MesNumeros"), QStringLiteral("0"));
}

}  // namespace
}  // namespace kuvo::testing
