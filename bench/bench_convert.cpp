// Times the history converter: the four layout slices of the operator's files,
// a made-up file of 3,000 draws in the newest layout (49 fields, DD/MM/YYYY),
// and all of them together; each read, checked, merged and written, in the
// program's own function and as the kuvo-convert program beside this one.
//
//   bench_convert [RUNS]
#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "Convert.h"

namespace {

const QStringList kSamples = {
    QStringLiteral("operateur-2008a.csv"), QStringLiteral("operateur-2008b.csv"),
    QStringLiteral("operateur-2017.csv"), QStringLiteral("operateur-2019.csv")};

int failures = 0;

// `count` draws on Mondays, Wednesdays and Saturdays after the slices' last
// date, newest first, in the layout of the 2019 slice (its header reused).
QByteArray MadeUpHistory(const QString& header, int count) {
  QRandomGenerator rng(2024);
  QList<QByteArray> lines;
  QDate day(2024, 7, 29);
  const char* names[] = {"", "LUNDI", "", "MERCREDI", "", "", "SAMEDI", ""};
  const int columns = static_cast<int>(header.count(QLatin1Char(';')));  // closing ";" included
  while (lines.size() < count) {
    const int dow = day.dayOfWeek();
    if (dow == 1 || dow == 3 || dow == 6) {
      int n[5];
      for (int k = 0; k < 5;) {
        n[k] = static_cast<int>(rng.bounded(1, 50));
        if (std::find(n, n + k, n[k]) == n + k) ++k;
      }
      QStringList f;
      f << QString::number(day.year() * 1000 + static_cast<int>(lines.size()) % 1000)
        << QString::fromLatin1(names[dow]) << day.toString(QStringLiteral("dd/MM/yyyy"))
        << day.addDays(60).toString(QStringLiteral("dd/MM/yyyy"));
      for (int v : n) f << QString::number(v);
      f << QString::number(rng.bounded(1, 11)) << QString();
      while (f.size() < columns)
        f << QString::number(rng.bounded(0, 100000)) + QStringLiteral(",5");
      lines.prepend(f.join(QLatin1Char(';')).toUtf8() + ";\n");
    }
    day = day.addDays(1);
  }
  QByteArray out = header.toUtf8() + '\n';
  for (const QByteArray& l : lines) out += l;
  return out;
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

void Time(const char* title, const QString& folder, const QStringList& files, int runs,
          const QString& expected) {
  std::vector<double> inside, program;
  QString out, err;
  for (int r = 0; r < runs; ++r) {
    QElapsedTimer t;
    t.start();
    const int status = kuvo::convert::Run(files, folder, out, err);
    inside.push_back(t.nsecsElapsed() / 1e9);
    if (status != 0 || !out.startsWith(expected)) {
      ++failures;
      std::printf("  FAILED: %s%s", qPrintable(out), qPrintable(err));
    }
  }
  const QString binary = QCoreApplication::applicationDirPath() + QStringLiteral("/kuvo-convert");
  for (int r = 0; r < runs && QFile::exists(binary); ++r) {
    QProcess p;
    p.setWorkingDirectory(folder);
    QElapsedTimer t;
    t.start();
    p.start(binary, files);
    p.waitForFinished(-1);
    program.push_back(t.nsecsElapsed() / 1e9);
    if (p.exitCode() != 0) ++failures;
  }
  std::printf("%-34s in-process median %.4f s (best %.4f)", title, Median(inside),
              *std::min_element(inside.begin(), inside.end()));
  if (!program.empty()) std::printf(", program median %.4f s", Median(program));
  std::printf("  -> %s", qPrintable(out));
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 15;
  QTemporaryDir dir;
  const QString data = QStringLiteral(KUVO_SOURCE_DIR "/tests/data/convert/");
  for (const QString& s : kSamples) QFile::copy(data + s, dir.filePath(s));
  QFile sample(data + kSamples[3]);
  if (!sample.open(QIODevice::ReadOnly)) {
    std::printf("no layout slices in %s\n", qPrintable(data));
    return 1;
  }
  const QString header = QString::fromUtf8(sample.readLine()).trimmed();
  {
    QFile f(dir.filePath(QStringLiteral("tirages-3000.csv")));
    if (!f.open(QIODevice::WriteOnly)) return 1;
    f.write(MadeUpHistory(header, 3000));
  }

  Time("four layout slices (126 draws)", dir.path(), kSamples, runs,
       QStringLiteral("126 tirages, du 26/12/2011 au 24/07/2024"));
  Time("3,000 draws, 49 fields", dir.path(), {QStringLiteral("tirages-3000.csv")}, runs,
       QStringLiteral("3000 tirages, du 29/07/2024"));
  Time("all five files (3,126 draws)", dir.path(), kSamples + QStringList{"tirages-3000.csv"}, runs,
       QStringLiteral("3126 tirages, du 26/12/2011"));
  if (failures) std::printf("%d FAILURES\n", failures);
  return failures ? 1 : 0;
}
