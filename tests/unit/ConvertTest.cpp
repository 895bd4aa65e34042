// The converter of the operator's history files: every published layout, the
// merge of several files, the checks and their messages, the written file.
#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include "Convert.h"
#include "TestSupport.h"
#include "core/Store.h"

namespace kuvo::convert {
namespace {

const QString kData = QStringLiteral(KUVO_SOURCE_DIR "/tests/data/convert/");

// Slices of the operator's files, one per layout, as published.
const QStringList kSamples = {
    QStringLiteral("operateur-2008a.csv"),  // 25 fields, YYYYMMDD, no closing ";"
    QStringLiteral("operateur-2008b.csv"),  // 25 fields, DD/MM/YYYY, closing ";"
    QStringLiteral("operateur-2017.csv"),   // 34 fields
    QStringLiteral("operateur-2019.csv"),   // 49 fields
};

const char kHeader[] =
    "annee_numero_de_tirage;jour_de_tirage;date_de_tirage;date_de_forclusion;boule_1;boule_2;"
    "boule_3;boule_4;boule_5;numero_chance;combinaison_gagnante_en_ordre_croissant;"
    "nombre_de_gagnant_au_rang1;rapport_du_rang1;nombre_de_gagnant_au_rang2;rapport_du_rang2;"
    "nombre_de_gagnant_au_rang3;rapport_du_rang3;nombre_de_gagnant_au_rang4;rapport_du_rang4;"
    "nombre_de_gagnant_au_rang5;rapport_du_rang5;nombre_de_gagnant_au_rang6;rapport_du_rang6;"
    "numero_jokerplus;devise;\n";

// Two draws of March 2012 in the reissued layout.
const char kLine1[] =
    "2012037;LUNDI   ;26/03/2012;26/05/2012;36;14;49;29;13;6;13-14-29-36-49+6;0;0;0;0;290;1739,4;"
    "13060;11,4;200381;5,3;291987;2;7 091 960;eur;\n";
const char kLine2[] =
    "2012036;SAMEDI  ;24/03/2012;24/05/2012;48;8;18;13;11;8;8-11-13-18-48+8;0;0;4;76948,4;988;"
    "670,4;39399;7,2;484409;4,2;587836;2;4 334 270;eur;\n";

QByteArray ReadFile(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return "<none>";
  return f.readAll();
}

// The lines of a history text after its header, by their date_de_tirage.
QHash<QString, QString> LinesByDate(const QString& text) {
  QHash<QString, QString> lines;
  const QStringList all = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  for (qsizetype i = 1; i < all.size(); ++i)
    lines.insert(all[i].section(QLatin1Char(';'), 2, 2), all[i]);
  return lines;
}

class ConvertTest : public ::testing::Test {
 protected:
  void Put(const char* name, const QByteArray& bytes) {
    QFile f(dir.filePath(QLatin1String(name)));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
  }
  QByteArray Get(const char* name) const { return ReadFile(dir.filePath(QLatin1String(name))); }
  // Runs the command in the test's folder.
  int Convert(const QStringList& args) {
    out.clear();
    err.clear();
    return convert::Run(args, dir.path(), out, err);
  }
  // Copies of the layout slices into the test's folder.
  QStringList Samples() {
    for (const QString& s : kSamples) QFile::copy(kData + s, dir.filePath(s));
    return kSamples;
  }
  // The refusal of a file named bad.csv holding `bytes`: exit status 1, no output.
  QString Refusal(const QByteArray& bytes) {
    Put("bad.csv", bytes);
    EXPECT_EQ(Convert({QStringLiteral("bad.csv")}), 1);
    EXPECT_EQ(out, QString());
    EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("Kuvo.csv"))));
    return err;
  }

  QTemporaryDir dir;
  QString out, err;
};

TEST_F(ConvertTest, ColumnsAreThoseOfTableKuvo) {
  QTemporaryDir store;
  const QString path = store.filePath(QStringLiteral("Kuvo.Mdb"));
  CreateStore(path, ShippedSchema());
  QStringList columns;
  for (int i = 0; i < 30; ++i) {
    const QString name = test::QueryFile(
        path, QStringLiteral("SELECT name FROM pragma_table_info('Kuvo') WHERE cid = %1").arg(i));
    if (name.isEmpty()) break;
    columns << name;
  }
  EXPECT_EQ(KuvoColumns(), columns);
  EXPECT_EQ(KuvoColumns().size(), 25);
}

// Each layout alone: every draw comes out exactly as the shipped history has it.
TEST_F(ConvertTest, EachLayoutGivesTheLinesOfTheShippedHistory) {
  const QHash<QString, QString> shipped = LinesByDate(ShippedHistory());
  ASSERT_EQ(shipped.size(), 2812);
  const QList<int> draws = {40, 40, 6, 40};
  for (int s = 0; s < kSamples.size(); ++s) {
    SCOPED_TRACE(kSamples[s].toStdString());
    QFile::copy(kData + kSamples[s], dir.filePath(kSamples[s]));
    ASSERT_EQ(Convert({kSamples[s], QStringLiteral("-o"), QStringLiteral("out.csv")}), 0)
        << err.toStdString();
    const QString written = QString::fromUtf8(Get("out.csv"));
    const QStringList lines = written.split(QLatin1Char('\n'));
    EXPECT_EQ(lines.first() + QLatin1Char('\n'),
              KuvoColumns().join(QLatin1Char(';')) + QStringLiteral(";\n"));
    EXPECT_EQ(lines.last(), QString());  // the last line ends with a line feed
    EXPECT_FALSE(written.contains(QLatin1Char('\r')));
    EXPECT_EQ(lines.size() - 2, draws[s]);
    for (qsizetype i = 1; i + 1 < lines.size(); ++i) {
      const QString date = lines[i].section(QLatin1Char(';'), 2, 2);
      EXPECT_EQ(lines[i], shipped.value(date)) << "date " << date.toStdString();
      if (i > 1) {
        EXPECT_LT(date, lines[i - 1].section(QLatin1Char(';'), 2, 2));  // newest first
      }
    }
  }
}

TEST_F(ConvertTest, FourLayoutsTogether) {
  const QStringList samples = Samples();
  ASSERT_EQ(Convert(samples), 0) << err.toStdString();
  EXPECT_EQ(out,
            QStringLiteral("126 tirages, du 26/12/2011 au 24/07/2024, écrits dans Kuvo.csv\n"));
  EXPECT_EQ(err, QString());
  // The file the import scenario loads is this very output.
  EXPECT_EQ(Get("Kuvo.csv"), ReadFile(kData + QStringLiteral("echantillons-kuvo.csv")));
  const QStringList lines =
      QString::fromUtf8(Get("Kuvo.csv")).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  QSet<QString> dates;
  for (qsizetype i = 1; i < lines.size(); ++i)
    dates.insert(lines[i].section(QLatin1Char(';'), 2, 2));
  EXPECT_EQ(dates.size(), 126);
  // The order of the files does not change the result.
  QStringList reversed(samples.rbegin(), samples.rend());
  ASSERT_EQ(Convert(reversed << QStringLiteral("-o") << QStringLiteral("other.csv")), 0);
  EXPECT_EQ(Get("other.csv"), Get("Kuvo.csv"));
}

// Draws met in two files, in two layouts, are one draw each. The second file
// has a byte-order mark, carriage returns and dates as DD/MM/YYYY.
TEST_F(ConvertTest, OverlapsAgreeAndNoDrawComesTwice) {
  QStringList files = Samples();
  QFile::copy(kData + QStringLiteral("recouvrement.csv"),
              dir.filePath(QStringLiteral("recouvrement.csv")));
  files << QStringLiteral("recouvrement.csv");
  ASSERT_EQ(Convert(files), 0) << err.toStdString();
  EXPECT_EQ(out,
            QStringLiteral("126 tirages, du 26/12/2011 au 24/07/2024, écrits dans Kuvo.csv\n"));
  EXPECT_EQ(Get("Kuvo.csv"), ReadFile(kData + QStringLiteral("echantillons-kuvo.csv")));
  // Alone it gives seven draws, the same as the shipped history's lines.
  ASSERT_EQ(
      Convert({QStringLiteral("recouvrement.csv"), QStringLiteral("-o"), QStringLiteral("r.csv")}),
      0);
  EXPECT_EQ(out, QStringLiteral("7 tirages, du 17/03/2012 au 24/07/2024, écrits dans r.csv\n"));
  const QHash<QString, QString> shipped = LinesByDate(ShippedHistory());
  const QHash<QString, QString> got = LinesByDate(QString::fromUtf8(Get("r.csv")));
  EXPECT_EQ(got.size(), 7);
  for (auto it = got.begin(); it != got.end(); ++it) EXPECT_EQ(it.value(), shipped.value(it.key()));
}

TEST_F(ConvertTest, ShippedHistoryConvertsToItself) {
  Put("history.csv", ShippedHistory().toUtf8());
  ASSERT_EQ(Convert({QStringLiteral("history.csv")}), 0) << err.toStdString();
  EXPECT_EQ(out,
            QStringLiteral("2812 tirages, du 06/10/2008 au 21/09/2026, écrits dans Kuvo.csv\n"));
  EXPECT_EQ(Get("Kuvo.csv"), ShippedHistory().toUtf8());
}

TEST_F(ConvertTest, OwnOutputGivesTheSameBytes) {
  ASSERT_EQ(Convert(Samples()), 0);
  const QByteArray first = Get("Kuvo.csv");
  ASSERT_EQ(
      Convert({QStringLiteral("Kuvo.csv"), QStringLiteral("-o"), QStringLiteral("again.csv")}), 0);
  EXPECT_EQ(Get("again.csv"), first);
  // In place too: everything is read before the output is replaced.
  ASSERT_EQ(Convert({QStringLiteral("-o"), QStringLiteral("Kuvo.csv"), QStringLiteral("Kuvo.csv")}),
            0);
  EXPECT_EQ(Get("Kuvo.csv"), first);
}

TEST_F(ConvertTest, ConflictingDuplicateNamesBothFilesAndLines) {
  Samples();
  // The draw of 24/03/2012 (line 3 of the 2008a slice) with 18 read as 19.
  QByteArray line2 = kLine2;
  line2.replace(";18;13;11;", ";19;13;11;");
  Put("autre.csv", QByteArray(kHeader) + kLine1 + line2);
  Put("Kuvo.csv", "kept");
  EXPECT_EQ(Convert({QStringLiteral("operateur-2008a.csv"), QStringLiteral("autre.csv")}), 1);
  EXPECT_EQ(err, QStringLiteral("kuvo-convert : le tirage du 24/03/2012 n'a pas les mêmes numéros "
                                "dans operateur-2008a.csv, ligne 3 (48-8-18-13-11, chance 8) et "
                                "dans autre.csv, ligne 3 (48-8-19-13-11, chance 8).\n"));
  EXPECT_EQ(out, QString());
  EXPECT_EQ(Get("Kuvo.csv"), QByteArray("kept"));  // the former output stands
  // A different chance number, or the same numbers in another order, conflict too.
  line2 = kLine2;
  line2.replace(";11;8;8-11", ";11;9;8-11");
  Put("autre.csv", QByteArray(kHeader) + line2);
  EXPECT_EQ(Convert({QStringLiteral("autre.csv"), QStringLiteral("operateur-2008a.csv")}), 1);
  EXPECT_EQ(err, QStringLiteral("kuvo-convert : le tirage du 24/03/2012 n'a pas les mêmes numéros "
                                "dans autre.csv, ligne 2 (48-8-18-13-11, chance 9) et dans "
                                "operateur-2008a.csv, ligne 3 (48-8-18-13-11, chance 8).\n"));
  line2 = kLine2;
  line2.replace(";48;8;18;", ";8;48;18;");
  Put("autre.csv", QByteArray(kHeader) + line2 + line2);
  EXPECT_EQ(Convert({QStringLiteral("autre.csv"), QStringLiteral("operateur-2008a.csv")}), 1);
  EXPECT_TRUE(
      err.contains(QStringLiteral("(8-48-18-13-11, chance 8) et dans operateur-2008a.csv")));
  // The same line twice in one file is one draw.
  Put("autre.csv", QByteArray(kHeader) + kLine2 + kLine2);
  EXPECT_EQ(Convert({QStringLiteral("autre.csv")}), 0);
  EXPECT_EQ(out, QStringLiteral("1 tirage, du 24/03/2012, écrit dans Kuvo.csv\n"));
}

TEST_F(ConvertTest, BadNumbers) {
  QByteArray line = kLine1;
  line.replace(";36;14;49;", ";36;14;50;");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + kLine2 + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 3, champ boule_3 : « 50 » n'est pas un "
                           "numéro de 1 à 49.\n"));
  line = kLine1;
  line.replace(";36;14;49;", ";0;14;49;");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 2, champ boule_1 : « 0 » n'est pas un "
                           "numéro de 1 à 49.\n"));
  line = kLine1;
  line.replace(";29;13;6;", ";29;1 3;6;");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 2, champ boule_5 : « 1 3 » n'est pas un "
                           "numéro de 1 à 49.\n"));
  line = kLine1;
  line.replace(";29;13;6;", ";29;;6;");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 2, champ boule_5 : « » n'est pas un "
                           "numéro de 1 à 49.\n"));
  line = kLine1;
  line.replace(";36;14;49;29;", ";36;14;49;14;");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 2, champ boule_4 : « 14 » est déjà "
                           "sorti dans ce tirage (boule_2).\n"));
  line = kLine1;
  line.replace(";13;6;13-", ";13;11;13-");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 2, champ numero_chance : « 11 » n'est "
                           "pas un numéro chance de 1 à 10.\n"));
}

TEST_F(ConvertTest, BadDates) {
  QByteArray line = kLine1;
  line.replace("26/03/2012;26/05", "31/02/2012;26/05");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 2, champ date_de_tirage : « 31/02/2012 » "
                           "n'est pas une date (AAAAMMJJ ou JJ/MM/AAAA).\n"));
  line = kLine1;
  line.replace("26/03/2012;26/05", "2012-03-26;26/05");
  EXPECT_TRUE(Refusal(QByteArray(kHeader) + line).contains(QStringLiteral("« 2012-03-26 »")));
  line = kLine1;
  line.replace("26/03/2012;26/05", "20121326;26/05");
  EXPECT_TRUE(Refusal(QByteArray(kHeader) + line).contains(QStringLiteral("« 20121326 »")));
  line = kLine1;
  line.replace("26/05/2012", "26/05/12");
  EXPECT_EQ(Refusal(QByteArray(kHeader) + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 2, champ date_de_forclusion : "
                           "« 26/05/12 » n'est pas une date (AAAAMMJJ ou JJ/MM/AAAA).\n"));
}

TEST_F(ConvertTest, MissingColumn) {
  QByteArray header = kHeader;
  header.replace("boule_3;", "");
  QByteArray line = kLine1;
  line.replace(";49;29;", ";29;");
  EXPECT_EQ(Refusal(header + line),
            QStringLiteral("kuvo-convert : bad.csv, ligne 1 : la colonne « boule_3 » manque dans "
                           "l'en-tête.\n"));
  header = kHeader;
  header.replace("numero_chance;", "chance;");
  EXPECT_EQ(Refusal(header + kLine1),
            QStringLiteral("kuvo-convert : bad.csv, ligne 1 : la colonne « numero_chance » manque "
                           "dans l'en-tête.\n"));
}

TEST_F(ConvertTest, LineWithAnotherNumberOfFields) {
  QByteArray line = kLine1;
  line.replace(";2;7 091 960;eur;", ";eur;");
  EXPECT_EQ(
      Refusal(QByteArray(kHeader) + kLine2 + line),
      QStringLiteral("kuvo-convert : bad.csv, ligne 3 : 23 champs, l'en-tête en annonce 25.\n"));
  line = kLine1;
  line.replace(";eur;", ";eur;x;");
  EXPECT_EQ(
      Refusal(QByteArray(kHeader) + line),
      QStringLiteral("kuvo-convert : bad.csv, ligne 2 : 26 champs, l'en-tête en annonce 25.\n"));
  line = kLine1;
  line.replace(";eur;", ";eur");
  line.replace("36;14;49;29;13;", "36;14;49;29;13");
  EXPECT_EQ(
      Refusal(QByteArray(kHeader) + line),
      QStringLiteral("kuvo-convert : bad.csv, ligne 2 : 24 champs, l'en-tête en annonce 25.\n"));
}

TEST_F(ConvertTest, EmptyFiles) {
  EXPECT_EQ(Refusal(""), QStringLiteral("kuvo-convert : bad.csv : le fichier est vide.\n"));
  EXPECT_EQ(Refusal("\n\r\n"), QStringLiteral("kuvo-convert : bad.csv : le fichier est vide.\n"));
  EXPECT_EQ(Refusal(kHeader),
            QStringLiteral("kuvo-convert : bad.csv : aucun tirage après la ligne d'en-tête.\n"));
}

TEST_F(ConvertTest, OlderGameIsRefused) {
  const QByteArray header =
      "annee_numero_de_tirage;jour_de_tirage;date_de_tirage;premier_ou_second_tirage;"
      "date_de_forclusion;boule_1;boule_2;boule_3;boule_4;boule_5;boule_6;boule_complementaire;"
      "nombre_de_gagnant_au_rang1;rapport_du_rang1;devise;\n";
  const QByteArray line = "2008078;SAMEDI  ;20080927;20081126;1;9;17;25;33;41;45;0;0;eur;\n";
  const QString message = Refusal(header + line);
  EXPECT_EQ(message,
            QStringLiteral("kuvo-convert : bad.csv : ce fichier est celui de l'ancien jeu, d'avant "
                           "octobre 2008 (six numéros et un numéro complémentaire, sans numéro "
                           "chance). Kuvo ne tient que les tirages du jeu actuel, depuis le 6 "
                           "octobre 2008.\n"));
  // Even among good files, nothing is written.
  Samples();
  EXPECT_EQ(Convert({kSamples[0], QStringLiteral("bad.csv")}), 1);
  EXPECT_EQ(err, message);
  EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("Kuvo.csv"))));
}

// Header names in any case, padded, behind a byte-order mark; padded fields;
// lines with or without their closing ";", line feeds or carriage returns.
TEST_F(ConvertTest, LenientReading) {
  QByteArray header = kHeader;
  header.replace("date_de_tirage", " DATE_DE_TIRAGE ");
  header.replace("boule_1;", "Boule_1  ;");
  QByteArray line1 = kLine1;
  line1.replace(";36;14;", "; 36 ;14;");
  line1.replace("eur;\n", "eur\r\n");
  const QByteArray bytes = "\xEF\xBB\xBF" + header + line1 + kLine2;
  Put("loose.csv", bytes);
  ASSERT_EQ(Convert({QStringLiteral("loose.csv")}), 0) << err.toStdString();
  EXPECT_EQ(Get("Kuvo.csv"),
            KuvoColumns().join(QLatin1Char(';')).toUtf8() + ";\n" +
                "2012037;LUNDI;20120326;20120526;36;14;49;29;13;6;13-14-29-36-49+6;0;0;0;0;290;"
                "1739,4;13060;11,4;200381;5,3;291987;2;7 091 960;eur;\n"
                "2012036;SAMEDI;20120324;20120524;48;8;18;13;11;8;8-11-13-18-48+8;0;0;4;76948,4;"
                "988;670,4;39399;7,2;484409;4,2;587836;2;4 334 270;eur;\n");
}

// A file in Latin-1 is written in UTF-8, as the import reads it.
TEST_F(ConvertTest, Latin1TextIsWrittenAsUtf8) {
  QByteArray line = kLine1;
  line.replace("LUNDI   ", "LUNDI \xE9t\xE9");
  Put("latin1.csv", QByteArray(kHeader) + line);
  ASSERT_EQ(Convert({QStringLiteral("latin1.csv")}), 0) << err.toStdString();
  EXPECT_TRUE(Get("Kuvo.csv").contains("\n2012037;LUNDI \xC3\xA9t\xC3\xA9;20120326;"));
}

// Columns the source lacks are left empty; numbers are written plainly and the
// sorted combination is made from them.
TEST_F(ConvertTest, MissingOptionalColumnsAreEmpty) {
  Put("short.csv",
      "date_de_tirage;boule_5;boule_4;boule_3;boule_2;boule_1;numero_chance\n"
      "06/10/2008;27;24;41;33;19;09\n");
  ASSERT_EQ(Convert({QStringLiteral("short.csv")}), 0) << err.toStdString();
  EXPECT_EQ(out, QStringLiteral("1 tirage, du 06/10/2008, écrit dans Kuvo.csv\n"));
  EXPECT_EQ(Get("Kuvo.csv"),
            KuvoColumns().join(QLatin1Char(';')).toUtf8() +
                ";\n;;20081006;;19;33;41;24;27;9;19-24-27-33-41+9;;;;;;;;;;;;;;;\n");
}

TEST_F(ConvertTest, CommandLine) {
  EXPECT_EQ(Convert({}), 2);
  EXPECT_EQ(err, QStringLiteral("usage : kuvo-convert [-o SORTIE] FICHIER...\n"));
  EXPECT_EQ(Convert({QStringLiteral("--help")}), 0);
  EXPECT_EQ(out, QStringLiteral("usage : kuvo-convert [-o SORTIE] FICHIER...\n"));
  EXPECT_EQ(Convert({QStringLiteral("-x"), QStringLiteral("a.csv")}), 2);
  EXPECT_EQ(err, QStringLiteral("kuvo-convert : option inconnue « -x ».\n"
                                "usage : kuvo-convert [-o SORTIE] FICHIER...\n"));
  EXPECT_EQ(Convert({QStringLiteral("a.csv"), QStringLiteral("-o")}), 2);
  EXPECT_TRUE(
      err.startsWith(QStringLiteral("kuvo-convert : -o attend le nom du fichier à écrire.")));
  EXPECT_EQ(Convert({QStringLiteral("absent.csv")}), 1);
  EXPECT_EQ(err, QStringLiteral("kuvo-convert : impossible de lire le fichier « absent.csv ».\n"));
  // A file whose name starts with "-" after "--".
  Put("-x.csv", QByteArray(kHeader) + kLine1);
  EXPECT_EQ(Convert({QStringLiteral("-o"), QStringLiteral("out.csv"), QStringLiteral("--"),
                     QStringLiteral("-x.csv")}),
            0);
  EXPECT_EQ(out, QStringLiteral("1 tirage, du 26/03/2012, écrit dans out.csv\n"));
}

TEST_F(ConvertTest, OutputThatCannotBeWrittenLeavesNothing) {
  Put("in.csv", QByteArray(kHeader) + kLine1);
  EXPECT_EQ(Convert({QStringLiteral("in.csv"), QStringLiteral("-o"),
                     QStringLiteral("no/such/dir/Kuvo.csv")}),
            1);
  EXPECT_EQ(err, QStringLiteral(
                     "kuvo-convert : impossible d'écrire le fichier « no/such/dir/Kuvo.csv ».\n"));
  EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
            QStringList{QStringLiteral("in.csv")});
}

}  // namespace
}  // namespace kuvo::convert
