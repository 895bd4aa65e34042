// Lists the whole quintuple table of the shipped history in the ranking window,
// ascending and descending by score, through the real handler (one gauge step
// and one yield per row), checks that a stop clicked during the list ends it on
// the row just written, and prints the ranking.
//
//   bench_verif [--gui] [FOLDER]
//
// Without --gui the window runs on the scripted platform and its printer. With
// --gui (a build that links the Qt views, KUVO_BENCH_GUI) it runs on the Qt
// platform, offscreen unless QT_QPA_PLATFORM says otherwise, with the real stop
// button clicked from a timer and the report printed to the platform's printer
// (a PDF file in FOLDER when the machine has no printer).
// FOLDER keeps the compiled store between runs (a temporary folder otherwise).

#include <QCoreApplication>
#include <QDir>
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
#include "statistics/TirVerif.h"
#include "windows/Windows.h"

#ifdef KUVO_BENCH_GUI
#include <QAbstractButton>
#include <QApplication>
#include <QPrinter>
#include <QTimer>

#include "gui/FormView.h"
#include "gui/QtPlatform.h"
#endif

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

double Seconds(const QElapsedTimer& clock) { return clock.nsecsElapsed() / 1e9; }

// The program on one platform: how a user event is run there.
struct Session {
  Program& app;
  std::function<void(const std::function<void()>&)> run;
  TirVerif& w() { return app.Win<TirVerif>(); }
};

// Sets the quintuples by score in the given direction, then times the search.
double Search(Session& s, bool ascending) {
  s.run([&] {
    s.w().ui().Text2.Text = QStringLiteral("5");
    s.w().ui().Combo1.SetListIndex(1);
    if (ascending)
      s.w().ui().Option1.SetValue(true);
    else
      s.w().ui().Option2.SetValue(true);
  });
  QElapsedTimer clock;
  clock.start();
  s.run([&] { UserClick(s.w().ui().ChercheSorties); });
  return Seconds(clock);
}

// Lists both ways twice, reporting the second pass of each.
long ListBothWays(Session& s, const std::function<long()>& yields) {
  Search(s, true);
  Search(s, false);
  const long rows = s.w().ui().Label8.Caption.toLong();
  for (bool ascending : {true, false}) {
    const long before = yields ? yields() : 0;
    const double t = Search(s, ascending);
    std::printf("Groupe5 by Sorties %s: %ld rows in %.3f s (%.1f us a row)",
                ascending ? "ASC " : "DESC", rows, t, t * 1e6 / std::max(1L, rows));
    if (yields) std::printf(", %ld yields", yields() - before);
    std::printf("\n");
    Check(static_cast<long>(s.w().ui().Gauge1.Value()) == rows, "one gauge step a row");
    if (yields) Check(yields() - before == rows + 1, "one yield a row and one before the loop");
    Check(s.w().ui().Grille.Visible && s.w().ui().Imprimer.Enabled, "a complete search");
    Check(s.w().ui().Grille.TextMatrix(static_cast<int>(rows), 0).size() == 14,
          "the last row is filled");
  }
  return rows;
}

// True when the list ended on row k: k rows written, the next one empty.
bool EndedOnRow(TirVerif& w, long k, long rows) {
  const Grid& g = w.ui().Grille;
  return w.ui().Gauge1.Value() == k && !g.TextMatrix(static_cast<int>(k), 1).isEmpty() &&
         (k == rows || g.TextMatrix(static_cast<int>(k + 1), 0).isEmpty()) && !g.Visible &&
         !w.ui().Imprimer.Enabled;
}

int RunScripted(const QString& folder, bool fresh) {
  ScriptedPlatform sys(folder);
  Program app(sys, AllWindows());
  QElapsedTimer clock;
  clock.start();
  app.Start();
  if (fresh) std::printf("start with compilation of the shipped history: %.2f s\n", Seconds(clock));
  Session s{app, [&app](const std::function<void()>& h) { app.RunEvent(h); }};
  s.run([&] { app.Win<MDIKuvo>().M_StatVerif_Click(); });
  const long rows = ListBothWays(s, [&sys] { return sys.yields; });

  // The stop, clicked in the yield that follows row k.
  for (long k : {1L, 2L, 57L, 1000L, rows - 1, rows}) {
    const long first = sys.yields + 1;  // the yield before the loop
    sys.OnYield = [&](long n) {
      if (n == first + k) UserClick(s.w().ui().ArretRecherche);
    };
    s.run([&] { UserClick(s.w().ui().ChercheSorties); });
    sys.OnYield = nullptr;
    const bool ok = EndedOnRow(s.w(), k, rows) && sys.yields - first + 1 == k + 1;
    std::printf("stop in the yield of row %ld: %s\n", k,
                ok ? "stopped after exactly that row" : "WRONG");
    Check(ok, "the stop ends the list on the row just written");
  }

  Search(s, false);
  const int before = static_cast<int>(sys.printer().Record().size());
  clock.restart();
  s.run([&] { UserClick(s.w().ui().Imprimer); });
  const double printing = Seconds(clock);
  const QStringList record = sys.printer().Record().mid(before);
  std::printf("report of Groupe5 (scripted printer): %lld lines, %lld pages, %.3f s\n",
              static_cast<long long>(record.size()),
              static_cast<long long>(record.filter(QStringLiteral("PAGE ")).size()), printing);
  Check(record.size() > rows && record.last() == QStringLiteral("ENDDOC"), "the whole report");
  return 0;
}

#ifdef KUVO_BENCH_GUI
// The Qt platform, with a printed file left where it is rather than shown.
class BenchPlatform : public QtPlatform {
 public:
  using QtPlatform::QtPlatform;
  void OpenDocument(const QString&) override {}
};

int RunGui(const QString& folder, bool fresh) {
  QApplication::setQuitOnLastWindowClosed(false);
  BenchPlatform sys(folder);
  Program app(sys, AllWindows());
  sys.Attach(app);
  QElapsedTimer clock;
  clock.start();
  app.Start();
  if (fresh) std::printf("start with compilation of the shipped history: %.2f s\n", Seconds(clock));
  Session s{app, [&sys](const std::function<void()>& h) { sys.Run(h); }};
  s.run([&] { app.Win<MDIKuvo>().M_StatVerif_Click(); });
  const long rows = ListBothWays(s, nullptr);

  // The real stop button, clicked from a timer that falls inside the list: the
  // list ends on the row written when the click came through.
  const double perRow = Search(s, true) / std::max(1L, rows);
  for (double share : {0.25, 0.5, 0.75}) {
    const int delay = std::max(1, static_cast<int>(share * rows * perRow * 1000));
    double atClick = -1;
    QTimer::singleShot(delay, [&] {
      atClick = s.w().ui().Gauge1.Value();
      auto* view = dynamic_cast<FormView*>(sys.ViewOf(s.w()));
      auto* button = view
                         ? qobject_cast<QAbstractButton*>(view->WidgetOf(s.w().ui().ArretRecherche))
                         : nullptr;
      if (button) button->click();
    });
    s.run([&] { UserClick(s.w().ui().ChercheSorties); });
    // A timer that came after the list fires here.
    QElapsedTimer waited;
    waited.start();
    while (atClick < 0 && waited.elapsed() < delay + 1000) QCoreApplication::processEvents();
    const long end = static_cast<long>(s.w().ui().Gauge1.Value());
    if (atClick <= 0 || atClick >= rows) {
      std::printf("stop at %d ms: the click came %s the list\n", delay,
                  atClick <= 0 ? "before" : "after");
      continue;
    }
    const bool ok = atClick == end && EndedOnRow(s.w(), end, rows);
    std::printf("stop clicked at %d ms, on row %ld: list ended on row %ld\n", delay,
                static_cast<long>(atClick), end);
    Check(ok, "the stop ends the list on the row just written");
  }

  Search(s, false);
  QPrinter& printer = sys.ThePrinter();
  // Without a printer, the report goes to the benchmark's folder.
  if (printer.outputFormat() == QPrinter::PdfFormat)
    printer.setOutputFileName(QDir(folder).filePath(QStringLiteral("Kuvo-rapport.pdf")));
  clock.restart();
  s.run([&] { UserClick(s.w().ui().Imprimer); });
  const double printing = Seconds(clock);
  const QString out = printer.outputFileName();
  std::printf("report of Groupe5 (Qt printer%s%s): %.3f s\n", out.isEmpty() ? "" : " to ",
              qPrintable(out), printing);
  if (!out.isEmpty()) Check(QFile(out).size() > 0, "the report file");
  return 0;
}
#endif

}  // namespace

int main(int argc, char** argv) {
  bool gui = false;
  QString folderArg;
  for (int i = 1; i < argc; ++i) {
    if (QLatin1String(argv[i]) == QLatin1String("--gui"))
      gui = true;
    else
      folderArg = QString::fromLocal8Bit(argv[i]);
  }
#ifdef KUVO_BENCH_GUI
  if (gui && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  std::unique_ptr<QCoreApplication> qapp = gui ? std::make_unique<QApplication>(argc, argv)
                                               : std::make_unique<QCoreApplication>(argc, argv);
#else
  if (gui) {
    std::printf("this build has no Qt views: run without --gui\n");
    return 2;
  }
  QCoreApplication qapp(argc, argv);
#endif
  SetRegional(QLocale(QStringLiteral("fr_FR")));
  QTemporaryDir temp;
  const QString folder = folderArg.isEmpty() ? temp.path() : folderArg;
  QDir().mkpath(folder);
  const QString store = QDir(folder).filePath(QStringLiteral("Kuvo.Mdb"));
  const bool fresh = !QFile::exists(store);
  if (fresh) CreateStore(store, ShippedSchema(), ShippedHistory());

  try {
#ifdef KUVO_BENCH_GUI
    if (gui)
      RunGui(folder, fresh);
    else
      RunScripted(folder, fresh);
#else
    RunScripted(folder, fresh);
#endif
  } catch (const ProgramEnd&) {
    std::printf("the program ended\n");
    return 1;
  }
  std::printf(failures ? "%d check(s) failed\n" : "all checks passed\n", failures);
  return failures ? 1 : 0;
}
