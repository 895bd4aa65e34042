// Opening of the base view on the Qt platform (offscreen unless QT_QPA_PLATFORM
// says otherwise): the menu entry's handler with its progress window, one yield
// per draw, the four grids filled and the views brought in step, then one pass
// of the event loop that paints the window. Then the chart opened.
//
//   bench_tirbase [HISTORY.csv]
//
// First on the real history (the operator's file beside the project, or the one
// given), compiled by the first start; then on made-up histories of 2,812 to
// 30,000 draws written straight into Sorties, to show how the time grows.
#include <sqlite3.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTableView>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "core/Avance.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "gui/FormView.h"
#include "gui/QtPlatform.h"
#include "statistics/TirBase.h"
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

double Seconds(const QElapsedTimer& clock) { return clock.nsecsElapsed() / 1e9; }

// Writes `count` made-up draws straight into Sorties, one every two days.
void FillSorties(const QString& store, int count) {
  sqlite3* db = nullptr;
  sqlite3_open(store.toUtf8().constData(), &db);
  sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(db, "INSERT INTO Sorties VALUES (?, ?, ?, ?, ?, ?, ?)", -1, &insert, nullptr);
  QRandomGenerator rng(30000);
  QDate date(1850, 1, 1);
  for (int i = 0; i < count; ++i) {
    std::vector<int> pool;
    for (int k = 1; k <= 49; ++k) pool.push_back(k);
    const QByteArray iso = date.toString(Qt::ISODate).toUtf8();
    sqlite3_bind_text(insert, 1, iso.constData(), -1, SQLITE_TRANSIENT);
    for (int k = 0; k < 5; ++k) {
      const auto at = static_cast<int>(rng.bounded(static_cast<quint32>(pool.size())));
      sqlite3_bind_int(insert, 2 + k, pool[static_cast<size_t>(at)]);
      pool.erase(pool.begin() + at);
    }
    sqlite3_bind_int(insert, 7, 1 + static_cast<int>(rng.bounded(10u)));
    sqlite3_step(insert);
    sqlite3_reset(insert);
    date = date.addDays(2);
  }
  sqlite3_finalize(insert);
  sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(db);
}

struct Timing {
  double open = 0;   // the handler and the views in step
  double paint = 0;  // the event loop's pass that paints it
};

// Opens the base view `runs` times in a started program; the best of them.
Timing OpenBase(QtPlatform& sys, Program& app, int draws, int runs) {
  Timing best{1e9, 1e9};
  for (int r = 0; r < runs; ++r) {
    QElapsedTimer clock;
    clock.start();
    sys.Run([&] { app.Win<MDIKuvo>().M_StatToutes_Click(); });
    const double open = Seconds(clock);
    clock.restart();
    QCoreApplication::processEvents();
    const double paint = Seconds(clock);
    best.open = std::min(best.open, open);
    best.paint = std::min(best.paint, paint);
  }
  TirBase& w = app.Win<TirBase>();
  Check(w.Loaded() && w.Visible, "the window stands");
  Check(!app.Win<Avance>().Loaded(), "the progress window has gone");
  Check(w.ui().Liste3.Rows() == draws + 1, "one row of Liste3 a draw");
  Check(!w.ui().Liste3.TextMatrix(draws, 6).isEmpty(), "the last draw listed");
  Check(app.M().NbTirages == draws, "NbTirages counted");
  int total = 0;
  for (int i = 1; i <= 49; ++i) total += w.ui().Liste1.TextMatrix(i, 1).toInt();
  Check(total == 6 * draws, "six outings a draw");
  auto* view = dynamic_cast<FormView*>(sys.ViewOf(w));
  auto* table = view ? qobject_cast<QTableView*>(view->WidgetOf(w.ui().Liste3)) : nullptr;
  Check(table && table->model()->rowCount() == draws, "the grid's view holds every draw");
  return best;
}

// A program on the Qt platform in `folder`, started; returns the start time.
double Start(QtPlatform& sys, Program& app) {
  sys.Attach(app);
  QElapsedTimer clock;
  clock.start();
  app.Start();
  QCoreApplication::processEvents();
  return Seconds(clock);
}

void ChartFigures(QtPlatform& sys, Program& app) {
  TirBase& w = app.Win<TirBase>();
  QElapsedTimer clock;
  clock.start();
  sys.Run([&] { w.ui().GraphiquePlus.Click(); });
  QCoreApplication::processEvents();
  const double chart = Seconds(clock);
  clock.restart();
  sys.Run([&] { w.ui().Plus.Click(); });
  QCoreApplication::processEvents();
  const double plus = Seconds(clock);
  std::printf("  chart opened and painted: %.4f s; Plus: %.4f s\n", chart, plus);
  Check(w.ui().Picture1.Boxes().size() == 49, "49 bars after Plus");
}

// The window goes before the program, so that no view outlives its controls.
void Close(QtPlatform& sys, Program& app) {
  sys.Run([&] { app.Win<TirBase>().Unload(); });
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication qapp(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  SetRegional(QLocale(QStringLiteral("fr_FR")));
  const QString history =
      argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("/work/shared/data/history.csv");
  try {
    QFile file(history);
    if (file.open(QIODevice::ReadOnly)) {
      QTemporaryDir dir;
      CreateStore(dir.filePath(QStringLiteral("Kuvo.Mdb")), ShippedSchema(),
                  QString::fromUtf8(file.readAll()));
      QtPlatform sys(dir.path());
      Program app(sys, AllWindows());
      const double start = Start(sys, app);
      // The first start compiled Sorties; the next opening counts them.
      const int draws = static_cast<int>(
          app.M().BaseDonnees->OpenRecordset(QStringLiteral("Sorties"))->RecordCount());
      std::printf("real history %s: %d draws (first start with compilation %.2f s)\n",
                  qPrintable(history), draws, start);
      const Timing t = OpenBase(sys, app, draws, 5);
      std::printf("  base view opened: %.4f s (%.1f us a draw), painted in %.4f s more\n", t.open,
                  t.open * 1e6 / draws, t.paint);
      Check(t.open + t.paint < 0.1, "the real history opens in under 0.1 s");
      ChartFigures(sys, app);
      Close(sys, app);
    } else {
      std::printf("no history at %s: the real history is left out\n", qPrintable(history));
    }

    std::printf("made-up histories written into Sorties:\n");
    std::vector<std::pair<int, double>> figures;
    for (int draws : {2812, 7500, 15000, 30000}) {
      QTemporaryDir dir;
      const QString store = dir.filePath(QStringLiteral("Kuvo.Mdb"));
      CreateStore(store, ShippedSchema());
      FillSorties(store, draws);
      QtPlatform sys(dir.path());
      Program app(sys, AllWindows());
      Start(sys, app);
      const Timing t = OpenBase(sys, app, draws, 3);
      Close(sys, app);
      figures.emplace_back(draws, t.open + t.paint);
      std::printf("  %6d draws: opened in %.4f s (%.1f us a draw), painted in %.4f s more\n", draws,
                  t.open, t.open * 1e6 / draws, t.paint);
    }
    const double small = figures[1].second / figures[1].first;
    const double large = figures.back().second / figures.back().first;
    std::printf("time a draw, 30,000 against 7,500: %.2f\n", large / small);
    Check(figures.back().second < 1.0, "30,000 draws open in under 1 s");
    Check(large / small < 1.5, "the time grows linearly with the draws");
  } catch (const ProgramEnd&) {
    std::printf("the program ended\n");
    return 1;
  }
  std::printf(failures ? "%d check(s) failed\n" : "all checks passed\n", failures);
  return failures ? 1 : 0;
}
