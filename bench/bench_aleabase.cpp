// Times Generer of the proposal window over the whole history, for each of the
// four strategies: on the real history (2,812 draws) and on 30,000 draws made
// by repeating it day after day. Checks the counts against a count of its own.
//
//   bench_aleabase [--gui] [--history FILE]
//
// Without --gui the window runs on the scripted platform. With --gui it runs on
// the Qt platform, offscreen unless QT_QPA_PLATFORM says otherwise, and every
// click goes through the real widgets, the views' update included; the message
// box of a proposal without result is answered at once.
// FILE is the operator's history file (default: the shared real history).

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>

#include "ScriptedPlatform.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "gui/FormView.h"
#include "gui/QtPlatform.h"
#include "proposals/AleaBase.h"
#include "windows/Windows.h"

using namespace kuvo;

namespace {

int failures = 0;

void Check(bool ok, const char* what) {
  if (!ok) {
    ++failures;
    std::printf("  FAILED: %s\n", what);
  }
}

double Millis(const QElapsedTimer& clock) { return clock.nsecsElapsed() / 1e6; }

// The Qt platform with its message boxes answered at once.
class BenchPlatform : public QtPlatform {
 public:
  using QtPlatform::QtPlatform;
  int boxes = 0;
  int MsgBox(const QString&, int, const QString&) override {
    ++boxes;
    return Mb::AnswerOk;
  }
};

// A store whose Sorties holds the history, repeated day after day up to
// `draws` rows when `draws` is given.
QString MakeStore(const QString& folder, const QString& history, int draws) {
  const QString path = folder + QStringLiteral("/Kuvo.Mdb");
  CreateStore(path, ShippedSchema(), history);
  auto db = Database::OpenDatabase(path);
  const QString date = QStringLiteral(
      "substr(date_de_tirage, 1, 4) || '-' || substr(date_de_tirage, 5, 2) || '-' || "
      "substr(date_de_tirage, 7, 2)");
  if (draws == 0) {
    db->Execute(QStringLiteral("INSERT INTO Sorties SELECT %1, boule_1, boule_2, boule_3, boule_4, "
                               "boule_5, Numero_Chance FROM Kuvo")
                    .arg(date));
  } else {
    db->Execute(QStringLiteral(
                    "WITH RECURSIVE c(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM c WHERE n < %1), "
                    "k AS (SELECT row_number() OVER (ORDER BY rowid) - 1 AS r, * FROM Kuvo) "
                    "INSERT INTO Sorties SELECT date('1945-01-01', '+' || n || ' days'), boule_1, "
                    "boule_2, boule_3, boule_4, boule_5, Numero_Chance FROM c JOIN k "
                    "ON k.r = n % (SELECT count(*) FROM Kuvo)")
                    .arg(draws - 1));
  }
  db->CommitPending();
  return path;
}

// The outings of each number and chance number in Sorties, counted apart.
struct Counts {
  long draws = 0;
  long numbers[50] = {};
  long chances[11] = {};
};

Counts CountApart(const QString& path) {
  Counts c;
  auto db = Database::OpenDatabase(path);
  auto rs = db->OpenRecordset(QStringLiteral("select * from Sorties"));
  static const char* const kNames[] = {"numero1", "numero2", "numero3", "numero4", "numero5"};
  while (!rs->Eof()) {
    ++c.draws;
    for (const char* name : kNames) ++c.numbers[rs->Fields(QLatin1String(name)).GetValue().toInt()];
    ++c.chances[rs->Fields(QStringLiteral("NumeroChance")).GetValue().toInt()];
    rs->MoveNext();
  }
  return c;
}

// The program on one platform: how a user clicks there.
struct Session {
  Program& app;
  std::function<void(Control&)> click;
  AleaBase& w() { return app.Win<AleaBase>(); }
};

bool SameCounts(Module1& m, const Counts& c) {
  if (m.StatNumeros.size() != 50 || m.StatChance.size() != 11) return false;
  long total = 0;
  for (int k = 1; k <= 49; ++k) {
    const EnregStat& e = m.StatNumeros[k];
    total += e.NbSorties;
    if (e.NbSorties != c.numbers[static_cast<int>(e.Numero)]) return false;
  }
  for (int k = 1; k <= 10; ++k)
    if (m.StatChance[k].NbSorties != c.chances[static_cast<int>(m.StatChance[k].Numero)])
      return false;
  return total == 5 * c.draws;
}

// Opens the window, then runs each strategy `runs` times; returns the slowest run.
double RunAll(Session& s, const Counts& counts, int runs) {
  QElapsedTimer clock;
  clock.start();
  s.click(s.app.Win<MDIKuvo>().ui().Toolbar2);
  std::printf("  window opened with %ld dates in %.1f ms\n", counts.draws, Millis(clock));
  Check(s.w().ui().Combo1.ListCount() == counts.draws, "one date a draw");
  const char* names[] = {"Chauds", "Froids", "SansReus", "JePense"};
  double slowest = 0;
  for (int k = 0; k < 4; ++k) {
    OptionButton* options[] = {&s.w().ui().Chauds, &s.w().ui().Froids, &s.w().ui().SansReus,
                               &s.w().ui().JePense};
    std::vector<double> times;
    for (int r = 0; r < runs; ++r) {
      s.click(s.w().ui().Annuler);
      s.click(*options[k]);
      clock.restart();
      s.click(s.w().ui().Generer);
      times.push_back(Millis(clock));
      Check(SameCounts(s.app.M(), counts), "the counts of the period");
      Check(!s.w().ui().Generer.Enabled, "one run");
    }
    std::sort(times.begin(), times.end());
    std::printf("  Generer %-8s  min %6.2f ms  median %6.2f ms  max %6.2f ms  (%s)\n", names[k],
                times.front(), times[times.size() / 2], times.back(),
                qPrintable(s.w().ui().Label14.Caption.isEmpty()
                               ? QStringLiteral("message")
                               : s.w().ui().Label14.Caption + QStringLiteral(" + ") +
                                     s.w().ui().Label24.Caption));
    slowest = std::max(slowest, times.back());
  }
  return slowest;
}

double RunScripted(const QString& folder, const Counts& counts, int runs) {
  ScriptedPlatform sys(folder);
  Program app(sys, AllWindows());
  app.Start();
  Session s{app, [&app](Control& c) {
              app.RunEvent([&c] {
                if (!c.Reachable()) return;
                if (c.Kind() == ControlKind::OptionButton)
                  static_cast<OptionButton&>(c).UserClick();
                else if (c.Kind() == ControlKind::Toolbar)
                  static_cast<Toolbar&>(c).ButtonClick(static_cast<Toolbar&>(c).Buttons(10));
                else if (c.Click)
                  c.Click();
              });
            }};
  return RunAll(s, counts, runs);
}

double RunGui(const QString& folder, const Counts& counts, int runs) {
  BenchPlatform sys(folder);
  Program app(sys, AllWindows());
  sys.Attach(app);
  app.Start();
  Session s{app, [&](Control& c) {
              if (c.Kind() == ControlKind::Toolbar) {
                // The main toolbar's button 10, as the user hits it.
                sys.Run([&] { app.Win<MDIKuvo>().M_AleatoireBase_Click(); });
                return;
              }
              auto* view = dynamic_cast<FormView*>(sys.ViewOf(c.Parent()));
              auto* button = view ? qobject_cast<QAbstractButton*>(view->WidgetOf(c)) : nullptr;
              Check(button != nullptr, "a button on screen");
              if (button) button->click();
            }};
  const double slowest = RunAll(s, counts, runs);
  std::printf("  message boxes answered: %d\n", sys.boxes);
  return slowest;
}

}  // namespace

int main(int argc, char** argv) {
  bool gui = false;
  QString historyPath = QStringLiteral("/work/shared/data/history.csv");
  for (int i = 1; i < argc; ++i) {
    if (QLatin1String(argv[i]) == QLatin1String("--gui"))
      gui = true;
    else if (QLatin1String(argv[i]) == QLatin1String("--history") && i + 1 < argc)
      historyPath = QString::fromLocal8Bit(argv[++i]);
  }
  if (gui && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  std::unique_ptr<QCoreApplication> qapp = gui ? std::make_unique<QApplication>(argc, argv)
                                               : std::make_unique<QCoreApplication>(argc, argv);
  if (gui) QApplication::setQuitOnLastWindowClosed(false);
  SetRegional(QLocale(QStringLiteral("fr_FR")));

  QFile file(historyPath);
  if (!file.open(QIODevice::ReadOnly)) {
    std::printf("cannot read the history %s\n", qPrintable(historyPath));
    return 2;
  }
  const QString history = QString::fromUtf8(file.readAll());

  struct Case {
    const char* what;
    int draws;  // 0: the history as it is
    double limitMs;
  };
  const Case cases[] = {{"the real history", 0, 20}, {"30,000 draws", 30000, 200}};
  try {
    for (const Case& c : cases) {
      QTemporaryDir dir;
      const QString path = MakeStore(dir.path(), history, c.draws);
      const Counts counts = CountApart(path);
      std::printf("%s, %s platform: %ld draws\n", c.what, gui ? "Qt" : "scripted", counts.draws);
      const double slowest =
          gui ? RunGui(dir.path(), counts, 7) : RunScripted(dir.path(), counts, 7);
      std::printf("  slowest Generer %.2f ms (limit %.0f ms)\n", slowest, c.limitMs);
      Check(slowest < c.limitMs, "Generer within its limit");
    }
  } catch (const ProgramEnd&) {
    std::printf("the program ended\n");
    return 1;
  }
  std::printf(failures ? "%d check(s) failed\n" : "all checks passed\n", failures);
  return failures ? 1 : 0;
}
