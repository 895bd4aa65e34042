#include "Convert.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace kuvo::convert {

namespace {

const char kUsage[] = "usage : kuvo-convert [-o SORTIE] FICHIER...";

QString DayText(const QDate& d) { return d.toString(QStringLiteral("dd/MM/yyyy")); }

}  // namespace

int Run(const QStringList& args, const QString& folder, QString& out, QString& err) {
  QString output = QStringLiteral("Kuvo.csv");
  QStringList inputs;
  bool options = true;
  for (int i = 0; i < args.size(); ++i) {
    const QString& a = args[i];
    if (options && a == QLatin1String("--")) {
      options = false;
    } else if (options && (a == QLatin1String("-h") || a == QLatin1String("--help"))) {
      out = QString::fromUtf8(kUsage) + QLatin1Char('\n');
      return 0;
    } else if (options && a == QLatin1String("-o")) {
      if (i + 1 >= args.size()) {
        err = QStringLiteral("kuvo-convert : -o attend le nom du fichier à écrire.\n%1\n")
                  .arg(QString::fromUtf8(kUsage));
        return 2;
      }
      output = args[++i];
    } else if (options && a.startsWith(QLatin1Char('-')) && a.size() > 1) {
      err = QStringLiteral("kuvo-convert : option inconnue « %1 ».\n%2\n")
                .arg(a, QString::fromUtf8(kUsage));
      return 2;
    } else {
      inputs << a;
    }
  }
  if (inputs.isEmpty()) {
    err = QString::fromUtf8(kUsage) + QLatin1Char('\n');
    return 2;
  }

  const QDir base(folder);
  try {
    History history;
    for (const QString& input : inputs) {
      QFile file(base.absoluteFilePath(input));
      if (!file.open(QIODevice::ReadOnly))
        throw ConvertError(QStringLiteral("impossible de lire le fichier « %1 ».").arg(input));
      history.Add(ReadHistory(input, file.readAll()));
    }
    // Written beside the output, then renamed over it: never half a file.
    QSaveFile save(base.absoluteFilePath(output));
    const QByteArray bytes = history.Render();
    if (!save.open(QIODevice::WriteOnly) || save.write(bytes) != bytes.size() || !save.commit())
      throw ConvertError(QStringLiteral("impossible d'écrire le fichier « %1 ».").arg(output));
    if (history.Size() == 1)
      out =
          QStringLiteral("1 tirage, du %1, écrit dans %2\n").arg(DayText(history.First()), output);
    else
      out = QStringLiteral("%1 tirages, du %2 au %3, écrits dans %4\n")
                .arg(history.Size())
                .arg(DayText(history.First()), DayText(history.Last()), output);
    return 0;
  } catch (const ConvertError& e) {
    err = QStringLiteral("kuvo-convert : ") + e.Text() + QLatin1Char('\n');
    return 1;
  }
}

}  // namespace kuvo::convert
