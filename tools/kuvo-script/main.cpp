// kuvo-script: runs a scenario script against the window logic and prints what
// a user would see.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

#include "ScriptRunner.h"

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  QString script;
  QString folder;
  for (int i = 1; i < args.size(); ++i) {
    if (args[i] == QLatin1String("--folder") && i + 1 < args.size()) {
      folder = args[++i];
    } else if (script.isEmpty()) {
      script = args[i];
    } else {
      std::fprintf(stderr, "usage: kuvo-script SCRIPT [--folder DIR]\n");
      return 2;
    }
  }
  if (script.isEmpty()) {
    std::fprintf(stderr, "usage: kuvo-script SCRIPT [--folder DIR]\n");
    return 2;
  }
  QFile file(script);
  if (!file.open(QIODevice::ReadOnly)) {
    std::fprintf(stderr, "kuvo-script: cannot read %s\n", qPrintable(script));
    return 2;
  }
  const QString text = QString::fromUtf8(file.readAll());

  std::unique_ptr<QTemporaryDir> temporary;
  if (folder.isEmpty()) {
    temporary = std::make_unique<QTemporaryDir>();
    folder = temporary->path();
  } else {
    QDir().mkpath(folder);
    folder = QDir(folder).absolutePath();
  }

  try {
    auto lines = kuvo::ScriptRunner::Parse(text);
    kuvo::ScriptRunner runner(folder, QFileInfo(script).absolutePath());
    runner.Echo = [](const QString& s) {
      const QByteArray bytes = s.toUtf8();
      std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
      std::fputc('\n', stdout);
    };
    runner.Run(std::move(lines));
  } catch (const kuvo::ScriptError& e) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s:%d: %s\n", qPrintable(script), e.line, e.what());
    return 2;
  }
  return 0;
}
