// Compilation of a history into Sorties and the group tables through the real
// start-up (progress window and yields included), against a bare lower bound
// measured in the same run: every count in memory, then every row written in
// one transaction. Also the start-up on a compiled base, on the scripted
// platform and on the Qt platform (run with QT_QPA_PLATFORM=offscreen).
//
// bench_compile [HISTORY.csv] [--runs N] [--only shipped|given|synthetic]: the
// shipped history (the 2,812 published draws), the given file too, and 30,000
// made-up draws. Each figure is the best of a few runs, in elapsed time and in
// processor time (the latter steadier on a busy machine); the ratio of compile
// to lower bound is printed for each.
#include <sqlite3.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <algorithm>
#include <bit>
#include <cstdio>
#include <ctime>
#include <map>
#include <unordered_map>

#include "ScriptRunner.h"
#include "core/MDIKuvo.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "gui/QtPlatform.h"
#include "windows/Windows.h"

using namespace kuvo;

namespace {

struct Draw {
  QString date;  // YYYY-MM-DD
  int n[5];
  int chance;
};

// The draws of a history text in the operator's format.
std::vector<Draw> ReadHistory(const QString& csv) {
  std::vector<Draw> draws;
  const QStringList lines = csv.split(QLatin1Char('\n'));
  for (qsizetype i = 1; i < lines.size(); ++i) {
    const QStringList f = lines[i].split(QLatin1Char(';'));
    if (f.size() < 10) continue;
    Draw d;
    const QString& t = f[2];
    d.date = t.left(4) + QLatin1Char('-') + t.mid(4, 2) + QLatin1Char('-') + t.mid(6, 2);
    for (int k = 0; k < 5; ++k) d.n[k] = f[4 + k].toInt();
    d.chance = f[9].toInt();
    draws.push_back(d);
  }
  return draws;
}

// A made-up history of `count` draws in the operator's format.
QString SyntheticHistory(int count) {
  QRandomGenerator rng(30000);
  QString csv = QStringLiteral(
      "annee_numero_de_tirage;jour_de_tirage;date_de_tirage;date_de_forclusion;boule_1;boule_2;"
      "boule_3;boule_4;boule_5;Numero_Chance;combinaison_gagnante_en_ordre_croissant;"
      "nombre_de_gagnant_au_rang1;rapport_du_rang1;nombre_de_gagnant_au_rang2;rapport_du_rang2;"
      "nombre_de_gagnant_au_rang3;rapport_du_rang3;nombre_de_gagnant_au_rang4;rapport_du_rang4;"
      "nombre_de_gagnant_au_rang5;rapport_du_rang5;nombre_de_gagnant_au_rang6;rapport_du_rang6;"
      "numero_jokerplus;devise;\n");
  QDate date(1850, 1, 1);
  for (int i = 0; i < count; ++i) {
    std::vector<int> pool;
    for (int k = 1; k <= 49; ++k) pool.push_back(k);
    QStringList n;
    for (int k = 0; k < 5; ++k) {
      const auto at = static_cast<int>(rng.bounded(static_cast<quint32>(pool.size())));
      n << QString::number(pool[static_cast<size_t>(at)]);
      pool.erase(pool.begin() + at);
    }
    csv += QStringLiteral("%1;LUNDI;%2;%2;%3;%4;;0;0;0;0;0;0;0;0;0;0;0;0;;eur;\n")
               .arg(i)
               .arg(date.toString(QStringLiteral("yyyyMMdd")), n.join(QLatin1Char(';')))
               .arg(1 + static_cast<int>(rng.bounded(10u)));
    date = date.addDays(2);
  }
  return csv;
}

double Seconds(const QElapsedTimer& t) { return static_cast<double>(t.nsecsElapsed()) / 1e9; }

// Processor time of the process so far, in seconds.
double CpuSeconds() {
  timespec ts{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) / 1e9;
}

// Elapsed and processor time of one run.
struct Timing {
  double wall = 0;
  double cpu = 0;
};

void Exec(sqlite3* db, const char* sql) { sqlite3_exec(db, sql, nullptr, nullptr, nullptr); }

// A new store file at `path`, with `csv` as its raw history; whatever stood
// there before (its write-ahead log included) is gone.
void FreshStore(const QString& path, const QString& csv = QString()) {
  QFile::remove(path);
  QFile::remove(path + QStringLiteral("-wal"));
  QFile::remove(path + QStringLiteral("-shm"));
  CreateStore(path, ShippedSchema(), csv);
}

// The bare lower bound: counts in memory, rows written in one transaction.
Timing LowerBound(const QString& folder, const QString& csv) {
  const QString path = folder + QStringLiteral("/bound.Mdb");
  FreshStore(path);
  QElapsedTimer t;
  t.start();
  const double cpu = CpuSeconds();
  const std::vector<Draw> draws = ReadHistory(csv);
  std::unordered_map<std::string, int> counts;
  char key[16];
  for (const Draw& d : draws) {
    int s[5];
    std::copy(d.n, d.n + 5, s);
    std::sort(s, s + 5);
    for (unsigned mask = 0; mask < 32; ++mask) {
      if (std::popcount(mask) < 2) continue;
      int len = 0;
      for (int k = 0; k < 5; ++k)
        if (mask & (1u << k))
          len += std::snprintf(key + len, sizeof key - static_cast<size_t>(len),
                               len ? ",%02d" : "%02d", s[k]);
      ++counts[std::string(key, static_cast<size_t>(len))];
    }
  }
  sqlite3* db = nullptr;
  sqlite3_open(path.toUtf8().constData(), &db);
  Exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; BEGIN");
  sqlite3_stmt* draw = nullptr;
  sqlite3_prepare_v2(db, "INSERT INTO Sorties VALUES (?,?,?,?,?,?,?)", -1, &draw, nullptr);
  for (const Draw& d : draws) {
    const QByteArray date = d.date.toUtf8();
    sqlite3_bind_text(draw, 1, date.constData(), -1, SQLITE_TRANSIENT);
    for (int k = 0; k < 5; ++k) sqlite3_bind_int(draw, 2 + k, d.n[k]);
    sqlite3_bind_int(draw, 7, d.chance);
    sqlite3_step(draw);
    sqlite3_reset(draw);
  }
  sqlite3_finalize(draw);
  sqlite3_stmt* group[4] = {};
  for (int size = 2; size <= 5; ++size)
    sqlite3_prepare_v2(
        db, QStringLiteral("INSERT INTO Groupe%1 VALUES (?,?)").arg(size).toUtf8().constData(), -1,
        &group[size - 2], nullptr);
  for (const auto& [k, c] : counts) {
    sqlite3_stmt* s = group[(k.size() + 1) / 3 - 2];
    sqlite3_bind_text(s, 1, k.data(), static_cast<int>(k.size()), SQLITE_STATIC);
    sqlite3_bind_int(s, 2, c);
    sqlite3_step(s);
    sqlite3_reset(s);
  }
  for (sqlite3_stmt* s : group) sqlite3_finalize(s);
  Exec(db, "COMMIT");
  sqlite3_close(db);
  return {Seconds(t), CpuSeconds() - cpu};
}

// The real thing: a first start on a store whose draws are only in Kuvo.
Timing Compile(const QString& folder, const QString& csv) {
  FreshStore(folder + QStringLiteral("/Kuvo.Mdb"), csv);
  ScriptRunner runner(folder, folder);
  QElapsedTimer t;
  t.start();
  const double cpu = CpuSeconds();
  const QString out = runner.RunText(QStringLiteral("start\n"));
  const Timing timing{Seconds(t), CpuSeconds() - cpu};
  if (out.contains(QLatin1String("FATAL"))) std::printf("  compile failed: %s\n", qPrintable(out));
  return timing;
}

// The same first start on the Qt platform, with its windows shown and its
// message loop served as the compile yields.
Timing QtCompile(const QString& folder, const QString& csv) {
  FreshStore(folder + QStringLiteral("/Kuvo.Mdb"), csv);
  QtPlatform platform(folder);
  Program program(platform, AllWindows());
  platform.Attach(program);
  QElapsedTimer t;
  t.start();
  const double cpu = CpuSeconds();
  program.Start();
  QApplication::processEvents();
  return {Seconds(t), CpuSeconds() - cpu};
}

void Report(const char* name, const QString& csv, int runs, bool withQt) {
  const size_t draws = ReadHistory(csv).size();
  QTemporaryDir a, b;
  // Bound and compile run in turns, so that a busy spell of the machine weighs on both.
  Timing bound{1e9, 1e9}, real{1e9, 1e9}, qt{1e9, 1e9};
  for (int i = 0; i < runs; ++i) {
    const Timing tb = LowerBound(b.path(), csv);
    const Timing tc = Compile(a.path(), csv);
    bound = {std::min(bound.wall, tb.wall), std::min(bound.cpu, tb.cpu)};
    real = {std::min(real.wall, tc.wall), std::min(real.cpu, tc.cpu)};
    if (withQt) {
      QTemporaryDir q;
      const Timing tq = QtCompile(q.path(), csv);
      qt = {std::min(qt.wall, tq.wall), std::min(qt.cpu, tq.cpu)};
    }
  }
  std::printf(
      "%-34s %6zu draws  compile %.3f s  lower bound %.3f s  ratio %.2fx"
      "  (processor time %.3f s / %.3f s, ratio %.2fx)\n",
      name, draws, real.wall, bound.wall, real.wall / bound.wall, real.cpu, bound.cpu,
      real.cpu / bound.cpu);
  if (withQt)
    std::printf(
        "%-34s on the Qt platform  compile %.3f s  ratio %.2fx  (processor time %.3f s, "
        "ratio %.2fx)\n",
        "", qt.wall, qt.wall / bound.wall, qt.cpu, qt.cpu / bound.cpu);
  // Start-up on the compiled base, scripted platform.
  ScriptRunner again(a.path(), a.path());
  QElapsedTimer t;
  t.start();
  again.RunText(QStringLiteral("start\n"));
  std::printf("%-34s start-up on the compiled base (scripted) %.3f s\n", "", Seconds(t));
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  SetRegional(QLocale(QStringLiteral("fr_FR")));

  int runs = 3;
  QString given;
  QString only;  // --only shipped|given|synthetic: that history alone, for profiling
  for (int i = 1; i < argc; ++i) {
    const QString arg = QString::fromLocal8Bit(argv[i]);
    if (arg == QLatin1String("--runs") && i + 1 < argc)
      runs = std::max(1, QString::fromLocal8Bit(argv[++i]).toInt());
    else if (arg == QLatin1String("--only") && i + 1 < argc)
      only = QString::fromLocal8Bit(argv[++i]);
    else
      given = arg;
  }
  // The Qt platform needs a display, offscreen at least.
  const bool withQt = QGuiApplication::platformName() != QLatin1String("minimal");
  auto wanted = [&](const char* name) { return only.isEmpty() || only == QLatin1String(name); };

  if (wanted("shipped")) Report("shipped history", ShippedHistory(), runs, withQt);
  QFile file(given);
  if (!given.isEmpty() && wanted("given") && file.open(QIODevice::ReadOnly))
    Report("given history", QString::fromUtf8(file.readAll()), runs, withQt);
  if (wanted("synthetic")) Report("synthetic history", SyntheticHistory(30000), runs, withQt);
  if (!only.isEmpty()) return 0;

  // Start-up of the program on the Qt platform, to the main window with its panels.
  QTemporaryDir dir;
  CreateStore(dir.filePath(QStringLiteral("Kuvo.Mdb")), ShippedSchema(), ShippedHistory());
  {
    ScriptRunner compile(dir.path(), dir.path());
    compile.RunText(QStringLiteral("start\n"));
  }
  QtPlatform platform(dir.path());
  Program program(platform, AllWindows());
  platform.Attach(program);
  QElapsedTimer t;
  t.start();
  program.Start();
  QApplication::processEvents();
  const double startup = Seconds(t);
  const QString panel = program.Win<MDIKuvo>().ui().StatusBar1.Panels(1).Text;
  std::printf("Qt start-up on a compiled base of the shipped history: %.3f s (%s)\n", startup,
              qPrintable(panel.trimmed()));
  return 0;
}
