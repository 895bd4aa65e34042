// Lists the whole quintuple table of the shipped history in the ranking window,
// ascending and descending by score, through the real handler (one gauge step
// and one yield per row), checks that a stop clicked in the yield of row k ends
// the list on row k, and prints the ranking.
//
//   bench_verif [FOLDER]
//
// FOLDER keeps the compiled store between runs (a temporary folder otherwise).

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "ScriptedPlatform.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "statistics/TirVerif.h"

using namespace kuvo;

namespace {

int failures = 0;

void Check(bool ok, const char* what) {
  if (!ok) {
    ++failures;
    std::printf("  FAILED: %s\n", what);
  }
}

// Clicks a control as a user does: only when it can be reached.
void UserClick(Control& c) {
  if (c.Reachable() && c.Click) c.Click();
}

struct Listing {
  double seconds = 0;
  long yields = 0;
  long rows = 0;
};

// One search of the quintuples by score, as the user starts it.
Listing Search(Program& app, ScriptedPlatform& sys, bool ascending) {
  TirVerif& w = app.Win<TirVerif>();
  app.RunEvent([&] {
    w.ui().Text2.Text = QStringLiteral("5");
    w.ui().Combo1.SetListIndex(1);
    if (ascending)
      w.ui().Option1.SetValue(true);
    else
      w.ui().Option2.SetValue(true);
  });
  const long before = sys.yields;
  QElapsedTimer clock;
  clock.start();
  app.RunEvent([&] { UserClick(w.ui().ChercheSorties); });
  Listing l;
  l.seconds = clock.nsecsElapsed() / 1e9;
  l.yields = sys.yields - before;
  l.rows = static_cast<long>(w.ui().Gauge1.Value());
  return l;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication qapp(argc, argv);
  SetRegional(QLocale(QStringLiteral("fr_FR")));
  QTemporaryDir temp;
  const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : temp.path();
  QDir().mkpath(folder);
  const QString store = QDir(folder).filePath(QStringLiteral("Kuvo.Mdb"));
  const bool fresh = !QFile::exists(store);
  if (fresh) CreateStore(store, ShippedSchema(), ShippedHistory());

  ScriptedPlatform sys(folder);
  Program app(sys);
  QElapsedTimer clock;
  clock.start();
  try {
    app.Start();
  } catch (const ProgramEnd&) {
    std::printf("the program ended at start\n");
    return 1;
  }
  if (fresh)
    std::printf("start with compilation of the shipped history: %.2f s\n",
                clock.nsecsElapsed() / 1e9);

  app.RunEvent([&] { app.Win<MDIKuvo>().M_StatVerif_Click(); });
  TirVerif& w = app.Win<TirVerif>();

  // Two warm-up passes, then the measured ones.
  Search(app, sys, true);
  Search(app, sys, false);
  const long rows = w.ui().Label8.Caption.toLong();
  for (bool ascending : {true, false}) {
    const Listing l = Search(app, sys, ascending);
    std::printf("Groupe5 by Sorties %s: %ld rows, %ld yields, %.3f s (%.1f us a row)\n",
                ascending ? "ASC " : "DESC", l.rows, l.yields, l.seconds,
                l.seconds * 1e6 / std::max(1L, l.rows));
    Check(l.rows == rows, "one gauge step a row");
    Check(l.yields == rows + 1, "one yield a row and one before the loop");
    Check(w.ui().Grille.Visible && w.ui().Imprimer.Enabled, "a complete search");
  }
  Check(w.ui().Grille.TextMatrix(static_cast<int>(rows), 0).size() == 14, "the last row is filled");

  // The stop, clicked in the yield that follows row k.
  for (long k : {1L, 2L, 57L, 1000L, rows - 1, rows}) {
    const long first = sys.yields + 1;  // the yield before the loop
    sys.OnYield = [&](long n) {
      if (n == first + k) UserClick(w.ui().ArretRecherche);
    };
    app.RunEvent([&] { UserClick(w.ui().ChercheSorties); });
    sys.OnYield = nullptr;
    const Grid& g = w.ui().Grille;
    const bool stoppedOnK = w.ui().Gauge1.Value() == k && sys.yields - first + 1 == k + 1 &&
                            !g.TextMatrix(static_cast<int>(k), 1).isEmpty() &&
                            (k == rows || g.TextMatrix(static_cast<int>(k + 1), 0).isEmpty());
    std::printf("stop in the yield of row %ld: %s\n", k,
                stoppedOnK ? "stopped after exactly that row" : "WRONG");
    Check(stoppedOnK, "the stop ends the list on the row just written");
    Check(!g.Visible && !w.ui().Imprimer.Enabled, "a stopped search hides the grid");
  }

  // The report of the whole table, on the platform's printer.
  Search(app, sys, false);
  const int before = static_cast<int>(sys.printer().Record().size());
  clock.restart();
  app.RunEvent([&] { UserClick(w.ui().Imprimer); });
  const double printing = clock.nsecsElapsed() / 1e9;
  const QStringList record = sys.printer().Record().mid(before);
  std::printf("report of Groupe5 (scripted printer): %lld lines, %lld pages, %.3f s\n",
              static_cast<long long>(record.size()),
              static_cast<long long>(record.filter(QStringLiteral("PAGE ")).size()), printing);
  Check(record.size() > rows && record.last() == QStringLiteral("ENDDOC"), "the whole report");

  std::printf(failures ? "%d check(s) failed\n" : "all checks passed\n", failures);
  return failures ? 1 : 0;
}
