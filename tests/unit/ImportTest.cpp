#include <gtest/gtest.h>
#include <QFile>
#include <QTemporaryDir>

#include "ScriptRunner.h"
#include "core/Errors.h"
#include "core/Form.h"
#include "core/Program.h"
#include "core/TextFiles.h"

namespace kuvo {
namespace {

const char kHeader[] =
    "annee_numero_de_tirage;jour_de_tirage;date_de_tirage;date_de_forclusion;boule_1;boule_2;"
    "boule_3;boule_4;boule_5;Numero_Chance;combinaison_gagnante_en_ordre_croissant;"
    "nombre_de_gagnant_au_rang1;rapport_du_rang1;nombre_de_gagnant_au_rang2;rapport_du_rang2;"
    "nombre_de_gagnant_au_rang3;rapport_du_rang3;nombre_de_gagnant_au_rang4;rapport_du_rang4;"
    "nombre_de_gagnant_au_rang5;rapport_du_rang5;nombre_de_gagnant_au_rang6;rapport_du_rang6;"
    "numero_jokerplus;devise;";
const char kLine[] =
    "24001;LUNDI;20240101;20240401;5;12;33;48;19;9;5-12-19-33-48+9;1;2000000,00;3;50000,00;20;"
    "1500,00;600;300,00;2500;25,00;35000;6,00;;eur;";

// A base of one draw, compiled at start, with the import window open.
const char kSetUp[] = R"kvs(store new
sql "INSERT INTO Kuvo (date_de_tirage, boule_1, boule_2, boule_3, boule_4, boule_5, Numero_Chance) VALUES ('20231227', 10, 20, 30, 40, 49, 1)"
start
menu M_MiseJour
)kvs";

const QString kCritical = QStringLiteral(
    "MSGBOX critical \"\" \"Il s'est produit une erreur inconnue\\n\\rContactez moi à mon "
    "courriel\\n\\r'Adresse dans A Propos\\n\\r\"\n");

// Runs a script in `folder` with a program of its own, and returns what it printed.
QString RunScript(const QString& folder, const QString& script) {
  ScriptRunner runner(folder, folder);
  runner.Run(ScriptRunner::Parse(script));
  return runner.Output();
}

void Put(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
  f.write(bytes);
}

QByteArray Get(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return "<none>";
  return f.readAll();
}

TEST(Import, HeaderOnlyFileLeavesABaseThatEndsTheNextStart) {
  QTemporaryDir dir;
  Put(dir.filePath("Kuvo.csv"), QByteArray(kHeader) + "\n");
  const QString first = RunScript(dir.path(), QString::fromUtf8(kSetUp) +
                                                  "answer-file Kuvo.csv\n"
                                                  "click ChargeMiseJour.Cmd_Importation\n"
                                                  "sql \"SELECT count(*) FROM Sorties\"\n");
  EXPECT_TRUE(first.endsWith(kCritical + "0\n")) << qPrintable(first);

  // The next start finds Sorties empty and compiles the empty Kuvo.
  const QString second = RunScript(dir.path(), QStringLiteral("start\nget MDIKuvo.Loaded\n"));
  EXPECT_EQ(second,
            QStringLiteral("SHOW MDIKuvo\nFATAL 3021 \"Aucun enregistrement en cours.\"\n"));
}

TEST(Import, FilesOfAFailedPassStayOpenAndRefuseASecondOpen) {
  QTemporaryDir dir;
  const QString chosen = dir.filePath("Kuvo.csv");
  const QString temporary = dir.filePath("Kuvo.csvtxt");
  Put(chosen, QByteArray(kHeader) + "\r\n" + kLine + "\r\n");
  ScriptRunner runner(dir.path(), dir.path());
  runner.Run(ScriptRunner::Parse(QString::fromUtf8(kSetUp) +
                                 "answer-file Kuvo.csv\n"
                                 "click ChargeMiseJour.Cmd_Importation\n"));
  EXPECT_FALSE(runner.Output().contains("MSGBOX")) << qPrintable(runner.Output());

  TextFiles& files = runner.program().Files();
  EXPECT_TRUE(files.IsOpen(temporary));
  EXPECT_TRUE(files.IsOpen(chosen));
  EXPECT_TRUE(files.IsOpen(1));  // the temporary file, read by the second pass
  EXPECT_TRUE(files.IsOpen(2));  // the chosen file, written by it
  EXPECT_EQ(Get(chosen), "");
  // Numbers 1 and 2 stay taken, whatever file is opened under them.
  const QString other = dir.filePath("Autre.csv");
  Put(other, QByteArray(kHeader) + "\n" + kLine + "\n");
  int number = 0;
  try {
    files.Open(other, TextFiles::Mode::Input, 1);
  } catch (const VbError& e) {
    number = e.Number();
  }
  EXPECT_EQ(number, Err::FileAlreadyOpen);
  EXPECT_FALSE(files.IsOpen(other));
}

TEST(Import, LinesWrittenBeforeAFailureReachTheFileAtTheEndOfTheProgram) {
  QTemporaryDir dir;
  const QString chosen = dir.filePath("Kuvo.csv");
  // The empty line stops the second pass after the header and one line.
  Put(chosen, QByteArray(kHeader) + "\n" + kLine + "\n\n" + kLine + "\n");
  {
    ScriptRunner runner(dir.path(), dir.path());
    runner.Run(ScriptRunner::Parse(QString::fromUtf8(kSetUp) +
                                   "answer-file Kuvo.csv\n"
                                   "click ChargeMiseJour.Cmd_Importation\n"));
    EXPECT_EQ(Get(chosen), "");
  }
  QByteArray header(kHeader), line(kLine);
  header.chop(1);
  line.chop(1);
  EXPECT_EQ(Get(chosen), header + "\r\n" + line + "\r\n");
}

TEST(Import, LastPassReadsTheChosenFile) {
  QTemporaryDir dir;
  Put(dir.filePath("Kuvo.csv"), QByteArray(kHeader) + "\n" + kLine + "\n");
  ScriptRunner runner(dir.path(), dir.path());
  runner.Run(ScriptRunner::Parse(QString::fromUtf8(kSetUp) +
                                 "answer-file Kuvo.csv\n"
                                 "click ChargeMiseJour.Cmd_Importation\n"));
  Form* form = runner.program().FormByName(QStringLiteral("ChargeMiseJour"), false);
  ASSERT_NE(form, nullptr);
  QString name;
  form->Describe([&](const QString& n, const PropValue& v) {
    if (n == QLatin1String("NomFichier")) name = v.Format();
  });
  EXPECT_EQ(name, QStringLiteral("\"%1\"").arg(dir.filePath("Kuvo.csv")));
  EXPECT_FALSE(runner.program().Files().IsOpen(dir.filePath("Kuvo.csv")));
}

}  // namespace
}  // namespace kuvo
