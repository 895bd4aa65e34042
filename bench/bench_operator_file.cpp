// Times the load of the operator's current file (the layout published since
// November 2019: 49 fields, dates DD/MM/YYYY) into the shipped base, against
// the import of the same merged history through the import's own path, each on
// a fresh copy of the same base, in one run.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "ScriptedPlatform.h"
#include "core/Module1.h"
#include "core/OperatorFiles.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "draws/ChargeMiseJour.h"
#include "windows/Windows.h"

namespace kuvo {
namespace {

class CountingPlatform : public ScriptedPlatform {
 public:
  using ScriptedPlatform::ScriptedPlatform;
  QStringList messages;
  int MsgBox(const QString& prompt, int style, const QString& title) override {
    messages << prompt;
    return ScriptedPlatform::MsgBox(prompt, style, title);
  }
};

// DD/MM/YYYY from YYYYMMDD.
QByteArray DayFirst(const QByteArray& date) {
  if (date.size() != 8) return date;
  return date.mid(6, 2) + '/' + date.mid(4, 2) + '/' + date.left(4);
}

// The operator's current file as it would be published: every draw of the
// shipped history since 4 November 2019, newest first, in the layout of 2019
// (the header of the real slice), the columns it shares with the import's
// layout filled from the shipped history.
QByteArray CurrentFile() {
  QFile slice(QStringLiteral(KUVO_SOURCE_DIR "/tests/data/convert/operateur-2019.csv"));
  if (!slice.open(QIODevice::ReadOnly)) return {};
  QByteArray header = slice.readLine().trimmed();
  if (header.endsWith(';')) header.chop(1);
  const QList<QByteArray> names = header.split(';');

  const QList<QByteArray> lines = ShippedHistory().toUtf8().split('\n');
  QHash<QByteArray, int> from;
  const QList<QByteArray> columns = lines[0].split(';');
  for (int i = 0; i < columns.size(); ++i) from.insert(columns[i].toLower(), i);

  QByteArray out = header + ";\n";
  for (qsizetype l = 1; l < lines.size(); ++l) {
    QList<QByteArray> fields = lines[l].split(';');
    if (fields.size() < columns.size() - 1) continue;
    if (fields[from.value("date_de_tirage")] < "20191104") continue;
    QByteArray line;
    for (int i = 0; i < names.size(); ++i) {
      if (i > 0) line += ';';
      const QByteArray name = names[i].toLower();
      const int at = from.value(name, -1);
      if (at < 0 || at >= fields.size()) continue;
      if (name == "date_de_tirage" || name == "date_de_forclusion")
        line += DayFirst(fields[at]);
      else
        line += fields[at];
    }
    out += line + ";\n";
  }
  return out;
}

// Loads `file` from the import window into a base holding the shipped history,
// compiled; returns the milliseconds of the click.
double TimeLoad(const char* title, const QByteArray& file) {
  QTemporaryDir dir;
  CreateStore(dir.filePath(QStringLiteral("Kuvo.Mdb")), ShippedSchema(), ShippedHistory());
  const QString chosen = dir.filePath(QStringLiteral("Kuvo.csv"));
  {
    QFile f(chosen);
    if (!f.open(QIODevice::WriteOnly)) return -1;
    f.write(file);
  }
  CountingPlatform platform(dir.path());
  Program program(platform, AllWindows());
  QElapsedTimer clock;
  try {
    program.Start();  // compiles the shipped history: not timed
    platform.fileAnswers.push_back(chosen);
    ChargeMiseJour& window = program.Win<ChargeMiseJour>();
    window.Show();
    clock.start();
    program.RunEvent([&window] { window.Cmd_Importation_Click(); });
  } catch (const ProgramEnd&) {
    std::printf("%s: the program ended\n", title);
    return -1;
  }
  const double ms = clock.nsecsElapsed() / 1e6;
  int lines = 0;
  for (char c : file) lines += c == '\n';
  std::printf("%s: %lld bytes, %d lines: %.1f ms\n", title, static_cast<long long>(file.size()),
              lines, ms);
  std::printf("  message: %s\n",
              platform.messages.isEmpty()
                  ? "(none)"
                  : qPrintable(platform.messages.join(QStringLiteral(" / "))
                                   .replace(QStringLiteral("\n\r"), QStringLiteral(" "))));
  return ms;
}

}  // namespace
}  // namespace kuvo

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  kuvo::SetRegional(QLocale(QStringLiteral("fr_FR")));
  const QByteArray current = kuvo::CurrentFile();
  // The same history merged outside the program, as the converter writes it.
  kuvo::convert::History merged;
  merged.Add(
      kuvo::convert::ReadHistory(QStringLiteral("history.csv"), kuvo::ShippedHistory().toUtf8()));
  merged.Add(kuvo::convert::ReadHistory(QStringLiteral("current.csv"), current));
  // Alternated rounds on a shared machine; the medians are compared.
  std::vector<double> own, operatorFile;
  for (int round = 0; round < 5; ++round) {
    own.push_back(kuvo::TimeLoad("import of the merged history", merged.Render()));
    operatorFile.push_back(kuvo::TimeLoad("operator's current file", current));
  }
  std::sort(own.begin(), own.end());
  std::sort(operatorFile.begin(), operatorFile.end());
  const double a = own[own.size() / 2], b = operatorFile[operatorFile.size() / 2];
  std::printf("medians: import %.1f ms, operator's file %.1f ms\n", a, b);
  if (a > 0 && b > 0)
    std::printf("ratio operator's file / import: %.2f (target: at most 1.5)\n", b / a);
  return 0;
}
