// kuvo-convert [-o SORTIE] FICHIER...: merges the operator's history files, in any
// of their layouts since October 2008, into the file the import window reads
// (Kuvo.csv in the current folder by default).
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <cstdio>

#include "Convert.h"

namespace {

const char kUsage[] = "usage : kuvo-convert [-o SORTIE] FICHIER...";

const char kHelp[] =
    "usage : kuvo-convert [OPTION]... FICHIER...\n"
    "\n"
    "Réunit les fichiers d'historique du loto publiés par l'opérateur, dans tous\n"
    "les formats qu'il a employés depuis octobre 2008 (25, 34 ou 49 champs, dates\n"
    "AAAAMMJJ ou JJ/MM/AAAA), en un seul fichier au format Kuvo : une ligne par\n"
    "tirage, du plus récent au plus ancien. Chaque tirage est vérifié (date réelle,\n"
    "cinq numéros distincts de 1 à 49, numéro chance de 1 à 10) ; un tirage présent\n"
    "dans deux fichiers doit y porter les mêmes numéros.\n"
    "\n"
    "Options :\n"
    "  -o, --output SORTIE  écrit le résultat dans SORTIE (par défaut Kuvo.csv\n"
    "                       dans le dossier courant)\n"
    "  -h, --help           affiche cette aide et quitte\n"
    "  -v, --version        affiche la version et quitte\n"
    "\n"
    "Exemple :\n"
    "  kuvo-convert -o Kuvo.csv loto_2008.csv loto_2017.csv loto_201911.csv\n"
    "\n"
    "Codes de sortie :\n"
    "  0  le fichier a été écrit ; une ligne dit combien de tirages il contient\n"
    "  1  un fichier a été refusé : le message nomme le fichier, la ligne et le\n"
    "     champ en cause ; rien n'est écrit et une sortie antérieure reste intacte\n"
    "  2  ligne de commande incorrecte\n";

void Print(std::FILE* stream, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

// A mistake on the command line: the message, the usage line, status 2.
int Refuse(const QString& message) {
  Print(stderr, QStringLiteral("kuvo-convert : %1\n%2\n").arg(message, QLatin1String(kUsage)));
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QCommandLineParser parser;
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsCompactedShortOptions);
  const QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                                  QStringLiteral("fichier à écrire"), QStringLiteral("SORTIE"),
                                  QStringLiteral("Kuvo.csv"));
  const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                QStringLiteral("affiche l'aide"));
  const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                   QStringLiteral("affiche la version"));
  parser.addOptions({output, help, version});
  parser.addPositionalArgument(QStringLiteral("FICHIER"), QStringLiteral("fichiers à réunir"),
                               QStringLiteral("FICHIER..."));

  if (!parser.parse(app.arguments())) {
    const QStringList unknown = parser.unknownOptionNames();
    if (!unknown.isEmpty())
      return Refuse(
          QStringLiteral("option inconnue « %1 ».")
              .arg((unknown.first().size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) +
                   unknown.first()));
    return Refuse(QStringLiteral("-o attend le nom du fichier à écrire."));
  }
  if (parser.isSet(help)) {
    Print(stdout, QString::fromUtf8(kHelp));
    return 0;
  }
  if (parser.isSet(version)) {
    Print(stdout, QStringLiteral("kuvo-convert " KUVO_VERSION "\n"));
    return 0;
  }
  const QStringList inputs = parser.positionalArguments();
  if (inputs.isEmpty()) return Refuse(QStringLiteral("aucun fichier à convertir."));

  // The conversion itself takes the output and the files already sorted out.
  QStringList args{QStringLiteral("-o"), parser.value(output), QStringLiteral("--")};
  args += inputs;
  QString out, err;
  const int status = kuvo::convert::Run(args, QDir::currentPath(), out, err);
  Print(stdout, out);
  Print(stderr, err);
  return status;
}
