// Correction and deletion of a draw on a full history: opening each window
// (its list of every date), choosing the last date, committing a correction,
// deleting a draw (which rebuilds the list). On the scripted platform, and the
// openings on the Qt platform too (run with QT_QPA_PLATFORM=offscreen).
//
// bench_correction [HISTORY.csv]: the operator's real file of
// /work/shared/data/history.csv by default, else the shipped demonstration
// history.
#include <sqlite3.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "ScriptRunner.h"
#include "core/MDIKuvo.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "gui/QtPlatform.h"
#include "windows/Windows.h"

using namespace kuvo;

namespace {

double Seconds(const QElapsedTimer& t) { return static_cast<double>(t.nsecsElapsed()) / 1e9; }

// A store whose Sorties holds every draw of a history text in the operator's
// format; returns the number of draws.
int MakeStore(const QString& path, const QString& csv) {
  CreateStore(path, ShippedSchema());
  sqlite3* db = nullptr;
  sqlite3_open(path.toUtf8().constData(), &db);
  sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(db, "INSERT INTO Sorties VALUES (?,?,?,?,?,?,?)", -1, &insert, nullptr);
  int draws = 0;
  const QStringList lines = csv.split(QLatin1Char('\n'));
  for (qsizetype i = 1; i < lines.size(); ++i) {
    const QStringList f = lines[i].split(QLatin1Char(';'));
    if (f.size() < 10) continue;
    const QString& t = f[2];
    const QByteArray date =
        (t.left(4) + QLatin1Char('-') + t.mid(4, 2) + QLatin1Char('-') + t.mid(6, 2)).toUtf8();
    sqlite3_bind_text(insert, 1, date.constData(), -1, SQLITE_TRANSIENT);
    for (int k = 0; k < 6; ++k) sqlite3_bind_int(insert, 2 + k, f[4 + k].toInt());
    sqlite3_step(insert);
    sqlite3_reset(insert);
    ++draws;
  }
  sqlite3_finalize(insert);
  sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(db);
  return draws;
}

// Runs a piece of script `times` times and prints the median and the worst.
void Time(ScriptRunner& runner, const char* what, const QString& script, int times,
          const QString& before = {}) {
  std::vector<double> runs;
  for (int i = 0; i < times; ++i) {
    if (!before.isEmpty()) runner.RunText(before);
    QElapsedTimer t;
    t.start();
    const QString out = runner.RunText(script);
    runs.push_back(Seconds(t));
    if (out.contains(QLatin1String("FATAL")) || out.contains(QLatin1String("MSGBOX")) ||
        out.contains(QLatin1String("IGNORED"))) {
      std::printf("%s: %s\n", what, qPrintable(out));
      return;
    }
  }
  std::sort(runs.begin(), runs.end());
  std::printf("%-44s median %7.2f ms, worst %7.2f ms (%d runs)\n", what,
              runs[runs.size() / 2] * 1e3, runs.back() * 1e3, times);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  SetRegional(QLocale(QStringLiteral("fr_FR")));

  QString csv = ShippedHistory();
  const char* source = "shipped demonstration history";
  QFile file(argc > 1 ? QString::fromLocal8Bit(argv[1])
                      : QStringLiteral("/work/shared/data/history.csv"));
  if (file.open(QIODevice::ReadOnly)) {
    csv = QString::fromUtf8(file.readAll());
    source = "real history";
  }
  QTemporaryDir dir;
  const int draws = MakeStore(dir.filePath(QStringLiteral("Kuvo.Mdb")), csv);
  std::printf("%s: %d draws\n", source, draws);

  {
    ScriptRunner runner(dir.path(), dir.path());
    runner.RunText(QStringLiteral("start\n"));
    const QString last = QStringLiteral("#%1").arg(draws - 1);
    Time(runner, "correction: opening (list of every date)",
         QStringLiteral("menu M_GestionModif\n"), 20);
    Time(runner, "correction: last date chosen",
         QStringLiteral("click TirModi.Combo1 %1\n").arg(last), 20);
    Time(runner, "correction: commit",
         QStringLiteral("mouse TirModi.Label16(5) up\nclick TirModi.Toolbar1 N5\n"
                        "click TirModi.MiseAJour\n"),
         20, QStringLiteral("click TirModi.Combo1 %1\nclick TirModi.Grille 1\n").arg(last));
    Time(runner, "deletion: opening (list of every date)",
         QStringLiteral("menu M_GestionSupprimer\n"), 20);
    Time(runner, "deletion: first date chosen (text compare)",
         QStringLiteral("click TirSup.Combo1 #0\n"), 20);
    Time(runner, "deletion: delete and list rebuilt", QStringLiteral("click TirSup.MiseJour\n"), 20,
         QStringLiteral("click TirSup.Combo1 #0\nclick TirSup.Grille 1\n"));
  }

  // The openings on the Qt platform, the combo's list on screen included.
  QtPlatform platform(dir.path());
  Program program(platform, AllWindows());
  platform.Attach(program);
  program.Start();
  QApplication::processEvents();
  MDIKuvo& main = program.Win<MDIKuvo>();
  for (auto [what, open] : {std::pair{"Qt: correction opened", &MDIKuvo::M_GestionModif_Click},
                            std::pair{"Qt: deletion opened", &MDIKuvo::M_GestionSupprimer_Click}}) {
    QElapsedTimer t;
    t.start();
    program.RunEvent([&main, open = open] { (main.*open)(); });
    QApplication::processEvents();
    std::printf("%-44s %7.2f ms\n", what, Seconds(t) * 1e3);
  }
  return 0;
}
