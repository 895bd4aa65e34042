// Times the history import end to end on the scripted platform, on the shipped
// history of published draws (line feeds, as the import takes it).
#include <sqlite3.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

#include "ScriptedPlatform.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "draws/ChargeMiseJour.h"
#include "windows/Windows.h"

namespace kuvo {
namespace {

// Marks the moments where one step of the import hands over to the next: the
// last yield of the first pass, the statements of the store, the wait pointer
// of the compilation and the closing message.
class TimedPlatform : public ScriptedPlatform {
 public:
  using ScriptedPlatform::ScriptedPlatform;
  QElapsedTimer clock;
  long firstPassCharacters = 0;
  qint64 firstPassEnd = -1, kuvoEmptied = -1, groupsEmptied = -1, compileStart = -1,
         compileEnd = -1;
  long yieldsSeen = 0;
  QStringList messages;

  void DoEvents() override {
    ScriptedPlatform::DoEvents();
    if (++yieldsSeen == firstPassCharacters) firstPassEnd = clock.nsecsElapsed();
  }
  void SetMousePointer(int pointer) override {
    ScriptedPlatform::SetMousePointer(pointer);
    if (pointer == Pointer::Wait && compileStart < 0 && groupsEmptied >= 0)
      compileStart = clock.nsecsElapsed();
  }
  int MsgBox(const QString& prompt, int style, const QString& title) override {
    if (compileEnd < 0) compileEnd = clock.nsecsElapsed();
    messages << prompt;
    return ScriptedPlatform::MsgBox(prompt, style, title);
  }
  void Statement(const char* sql) {
    const QByteArray text(sql);
    if (kuvoEmptied < 0 && text.startsWith("DELETE") && text.contains("Kuvo"))
      kuvoEmptied = clock.nsecsElapsed();
    else if (groupsEmptied < 0 && text.startsWith("DELETE") && text.contains("Groupe2"))
      groupsEmptied = clock.nsecsElapsed();
  }
};

int Trace(unsigned, void* context, void* statement, void*) {
  static_cast<TimedPlatform*>(context)->Statement(
      sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
  return 0;
}

double Ms(qint64 ns) { return ns / 1e6; }

void Line(const char* what, qint64 from, qint64 to, qint64 total) {
  if (from < 0 || to < 0) {
    std::printf("  %-34s      -\n", what);
    return;
  }
  std::printf("  %-34s %8.1f ms  %5.1f %%\n", what, Ms(to - from), 100.0 * (to - from) / total);
}

// Imports `history` (the file's bytes) into a base that holds the shipped
// history, compiled, and prints the time of each step.
void TimeImport(const char* title, const QByteArray& history) {
  QTemporaryDir dir;
  const QString store = dir.filePath(QStringLiteral("Kuvo.Mdb"));
  CreateStore(store, ShippedSchema(), ShippedHistory());
  const QString chosen = dir.filePath(QStringLiteral("Kuvo.csv"));
  {
    QFile f(chosen);
    if (!f.open(QIODevice::WriteOnly)) return;
    f.write(history);
  }

  TimedPlatform platform(dir.path());
  Program program(platform, AllWindows());
  try {
    program.Start();  // compiles the shipped history: not timed
    sqlite3_trace_v2(program.M().BaseDonnees->Handle(), SQLITE_TRACE_STMT, &Trace, &platform);

    platform.fileAnswers.push_back(chosen);
    platform.firstPassCharacters = history.size();
    platform.yieldsSeen = 0;
    ChargeMiseJour& window = program.Win<ChargeMiseJour>();
    window.Show();
    platform.clock.start();
    program.RunEvent([&window] { window.Cmd_Importation_Click(); });
  } catch (const ProgramEnd&) {
    std::printf("%s: the program ended\n", title);
    return;
  }
  const qint64 total = platform.clock.nsecsElapsed();

  int lines = 0;
  for (char c : history)
    if (c == '\n') ++lines;
  std::printf("%s: %lld bytes, %d lines\n", title, static_cast<long long>(history.size()), lines);
  std::printf("  message: %s\n",
              platform.messages.isEmpty() ? "(none)" : qPrintable(platform.messages.join(" / ")));
  Line("first pass (character by character)", 0, platform.firstPassEnd, total);
  Line("second pass and deletion", platform.firstPassEnd, platform.kuvoEmptied, total);
  Line("third pass (Kuvo filled)", platform.kuvoEmptied, platform.groupsEmptied, total);
  Line("deletes of the five tables", platform.groupsEmptied, platform.compileStart, total);
  Line("compilation", platform.compileStart, platform.compileEnd, total);
  std::printf("  %-34s %8.1f ms\n", "total", Ms(total));

  sqlite3* db = program.M().BaseDonnees->Handle();
  sqlite3_trace_v2(db, 0, nullptr, nullptr);
  for (const char* table : {"Kuvo", "Sorties", "Groupe2", "Groupe5"}) {
    sqlite3_stmt* stmt = nullptr;
    const QByteArray sql = QByteArray("SELECT count(*) FROM ") + table;
    if (sqlite3_prepare_v2(db, sql.constData(), -1, &stmt, nullptr) == SQLITE_OK &&
        sqlite3_step(stmt) == SQLITE_ROW)
      std::printf("  rows in %-8s %lld\n", table, sqlite3_column_int64(stmt, 0));
    sqlite3_finalize(stmt);
  }
}

}  // namespace
}  // namespace kuvo

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  kuvo::SetRegional(QLocale(QStringLiteral("fr_FR")));
  kuvo::TimeImport("shipped history", kuvo::ShippedHistory().toUtf8());
  return 0;
}
