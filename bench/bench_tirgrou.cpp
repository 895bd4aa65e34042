// Times the two windows that walk the draws one by one: the group lookup of one
// number (its dates listed) and the affine numbers of three numbers (the 49
// ranked), each through the real handler from the click to the screen updated.
//
//   bench_tirgrou [--gui] [HISTORY.csv]
//
// The history is the operator's file (the real one beside the project by
// default); the draws are copied to Sorties as the compilation would. A second
// base of 30,000 draws repeats that history on later dates. With --gui the
// windows run on the Qt platform, offscreen unless QT_QPA_PLATFORM says
// otherwise; without it, on the scripted platform. Every result is checked
// against a count made here from the draws themselves.

#include <sqlite3.h>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <vector>

#include "ScriptedPlatform.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "gui/QtPlatform.h"
#include "statistics/NumerosAffines.h"
#include "statistics/TirGrou.h"
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

using Draw = std::array<int, 6>;  // five numbers, then the chance number

// The draws of a history in the operator's format, the oldest first.
std::vector<Draw> ReadHistory(const QString& csv) {
  std::vector<std::pair<QString, Draw>> dated;
  const QStringList lines = csv.split(QLatin1Char('\n'));
  for (qsizetype i = 1; i < lines.size(); ++i) {
    const QStringList f = lines[i].split(QLatin1Char(';'));
    if (f.size() < 10) continue;
    Draw d{};
    for (int k = 0; k < 5; ++k) d[static_cast<size_t>(k)] = f[4 + k].toInt();
    d[5] = f[9].toInt();
    dated.emplace_back(f[2], d);
  }
  std::sort(dated.begin(), dated.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<Draw> draws;
  for (const auto& [date, d] : dated) draws.push_back(d);
  return draws;
}

// A store whose Sorties holds `draws`, one a day from 1 January 1900.
void MakeStore(const QString& folder, const std::vector<Draw>& draws) {
  const QString path = QDir(folder).filePath(QStringLiteral("Kuvo.Mdb"));
  QFile::remove(path);
  CreateStore(path, ShippedSchema());
  sqlite3* db = nullptr;
  sqlite3_open(path.toUtf8().constData(), &db);
  sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(db, "INSERT INTO Sorties VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)", -1, &insert,
                     nullptr);
  QDate date(1900, 1, 1);
  for (const Draw& d : draws) {
    const QByteArray iso = date.toString(Qt::ISODate).toUtf8();
    sqlite3_bind_text(insert, 1, iso.constData(), -1, SQLITE_TRANSIENT);
    for (int k = 0; k < 6; ++k) sqlite3_bind_int(insert, k + 2, d[static_cast<size_t>(k)]);
    sqlite3_step(insert);
    sqlite3_reset(insert);
    date = date.addDays(1);
  }
  sqlite3_finalize(insert);
  sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(db);
}

// How many draws hold `n` at one of their six places.
int Holding(const std::vector<Draw>& draws, int n) {
  return static_cast<int>(std::count_if(draws.begin(), draws.end(), [n](const Draw& d) {
    return std::find(d.begin(), d.end(), n) != d.end();
  }));
}

// The outings counted for the numbers met with a, b and c, each draw once for
// every place of b that goes with a place of a (the first one) and of c.
std::array<int, 50> Affines(const std::vector<Draw>& draws, int a, int b, int c) {
  std::array<int, 50> count{};
  for (const Draw& d : draws) {
    const auto ia = std::find(d.begin(), d.end(), a);
    const auto ic = std::find(d.begin(), d.end(), c);
    if (ia == d.end() || ic == d.end()) continue;
    for (size_t j = 0; j < 6; ++j) {
      if (d[j] != b) continue;
      for (size_t p = 0; p < 6; ++p) {
        const auto place = d.begin() + static_cast<long>(p);
        if (place != ia && place != ic && p != j) ++count[static_cast<size_t>(d[p])];
      }
    }
  }
  return count;
}

double Millis(const QElapsedTimer& t) { return static_cast<double>(t.nsecsElapsed()) / 1e6; }

// The processor time of this thread so far, in milliseconds: on a shared
// machine it tells the work done apart from the waits for a processor.
double CpuMillis() {
  timespec ts{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) * 1e3 + static_cast<double>(ts.tv_nsec) / 1e6;
}

struct Timing {
  double best = 1e9, worst = 0, total = 0, cpuBest = 1e9;
  int runs = 0;
  // Times one run of `action`.
  void Run(const std::function<void()>& action) {
    QElapsedTimer t;
    const double cpu = CpuMillis();
    t.start();
    action();
    const double ms = Millis(t);
    cpuBest = std::min(cpuBest, CpuMillis() - cpu);
    best = std::min(best, ms);
    worst = std::max(worst, ms);
    total += ms;
    ++runs;
  }
  void Print() const {
    std::printf("best %.1f ms, mean %.1f ms, worst %.1f ms (processor time %.1f ms)\n", best,
                total / runs, worst, cpuBest);
  }
};

// The program on one platform, and how a user event runs there.
struct Session {
  Program& app;
  std::function<void(const std::function<void()>&)> run;
};

// Clicks a control as a user does: only when it can be reached.
void UserClick(Control& c) {
  if (c.Reachable() && c.Click) c.Click();
}

void Bench(Session& s, const std::vector<Draw>& draws, const char* label, double limitMs) {
  constexpr int kRuns = 7;
  // The group lookup of one number: the number of 1 to 10 that came out most,
  // as a number or as the chance number.
  int number = 1;
  for (int n = 2; n <= 10; ++n)
    if (Holding(draws, n) > Holding(draws, number)) number = n;
  s.run([&] { s.app.Win<MDIKuvo>().M_StatGroupes_Click(); });
  TirGrou& grou = s.app.Win<TirGrou>();
  s.run([&] { grou.Toolbar1_ButtonClick(grou.ui().Toolbar1.Buttons(number)); });
  Timing lookup;
  for (int r = 0; r < kRuns; ++r) {
    lookup.Run([&] { s.run([&] { UserClick(grou.ui().Recherche); }); });
  }
  const int found = Holding(draws, number);
  Check(grou.ui().Label8.Caption == QString::number(found), "the draws holding the number");
  Check(grou.ui().Liste.ListCount() == found, "one date listed a draw");
  std::printf("%s: group lookup of %d, %d dates listed: ", label, number,
              grou.ui().Liste.ListCount());
  lookup.Print();
  Check(lookup.best < limitMs, "group lookup within its time");

  // The affine numbers of the first three numbers of the latest draw.
  const Draw& last = draws.back();
  s.run([&] { s.app.Win<MDIKuvo>().M_NumAfines_Click(); });
  NumerosAffines& aff = s.app.Win<NumerosAffines>();
  s.run([&] {
    for (int k = 0; k < 3; ++k)
      aff.Toolbar1_ButtonClick(aff.ui().Toolbar1.Buttons(last[static_cast<size_t>(k)]));
  });
  Timing affines;
  for (int r = 0; r < kRuns; ++r) {
    affines.Run([&] { s.run([&] { UserClick(aff.ui().Recherche); }); });
  }
  const std::array<int, 50> expected = Affines(draws, last[0], last[1], last[2]);
  bool same = aff.ui().Grille.Rows() == 50;
  for (int i = 1; same && i <= 49; ++i) {
    const int n = aff.ui().Grille.TextMatrix(i, 0).toInt();
    same = n >= 1 && n <= 49 &&
           aff.ui().Grille.TextMatrix(i, 1) == QString::number(expected[static_cast<size_t>(n)]);
  }
  Check(same, "the outings of the affine numbers");
  Check(s.app.M().NbTirages == static_cast<int>(draws.size()), "the draw count refreshed");
  std::printf("%s: affine numbers of %d, %d, %d: ", label, last[0], last[1], last[2]);
  affines.Print();
  Check(affines.best < limitMs, "affine numbers within their time");
}

void RunOn(bool gui, const QString& folder, const std::vector<Draw>& draws, const char* label,
           double limitMs) {
  MakeStore(folder, draws);
  if (gui) {
    QtPlatform sys(folder);
    Program app(sys, AllWindows());
    sys.Attach(app);
    app.Start();
    Session s{app, [&sys](const std::function<void()>& h) { sys.Run(h); }};
    Bench(s, draws, label, limitMs);
    // The windows go before their views.
    sys.Run([&app] {
      for (Form* form : app.ExistingForms())
        if (form->Loaded()) form->Unload();
    });
  } else {
    ScriptedPlatform sys(folder);
    Program app(sys, AllWindows());
    app.Start();
    Session s{app, [&app](const std::function<void()>& h) { app.RunEvent(h); }};
    Bench(s, draws, label, limitMs);
  }
}

}  // namespace

int main(int argc, char** argv) {
  bool gui = false;
  QString historyArg;
  for (int i = 1; i < argc; ++i) {
    if (QLatin1String(argv[i]) == QLatin1String("--gui"))
      gui = true;
    else
      historyArg = QString::fromLocal8Bit(argv[i]);
  }
  if (gui && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  std::unique_ptr<QCoreApplication> qapp = gui ? std::make_unique<QApplication>(argc, argv)
                                               : std::make_unique<QCoreApplication>(argc, argv);
  SetRegional(QLocale(QStringLiteral("fr_FR")));

  QStringList candidates = {historyArg,
                            QStringLiteral(KUVO_SOURCE_DIR "/../shared/data/history.csv"),
                            QStringLiteral(KUVO_SOURCE_DIR "/../../shared/data/history.csv")};
  QString csv;
  for (const QString& path : candidates) {
    QFile file(path);
    if (!path.isEmpty() && file.open(QIODevice::ReadOnly)) {
      csv = QString::fromUtf8(file.readAll());
      std::printf("history: %s\n", qPrintable(QFileInfo(path).canonicalFilePath()));
      break;
    }
  }
  if (csv.isEmpty()) {
    std::printf("no real history found: the shipped demonstration history instead\n");
    csv = ShippedHistory();
  }
  const std::vector<Draw> real = ReadHistory(csv);
  std::vector<Draw> large;
  for (size_t i = 0; large.size() < 30000; ++i) large.push_back(real[i % real.size()]);

  QTemporaryDir temp;
  try {
    std::printf("%s platform\n", gui ? "Qt (offscreen)" : "scripted");
    RunOn(gui, temp.path(), real, qPrintable(QStringLiteral("%1 draws").arg(real.size())), 20);
    RunOn(gui, temp.path(), large, "30000 draws", 200);
  } catch (const ProgramEnd&) {
    std::printf("the program ended\n");
    return 1;
  }
  std::printf(failures ? "%d check(s) failed\n" : "all checks passed\n", failures);
  return failures ? 1 : 0;
}
