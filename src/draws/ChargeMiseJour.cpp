#include "draws/ChargeMiseJour.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <map>

#include "core/Avance.h"
#include "core/Module1.h"
#include "core/OperatorFiles.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/TextFiles.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

// The help text, line by line: the indent, then the words.
struct HelpLine {
  const char* indent;
  const char* text;
};
const HelpLine kHelp[] = {
    {"", "La récupération de tous les tirages se fait en deux étapes"},
    {"", ""},
    {"1        ", "Import du fichier contenant les tirages"},
    {"         ", "( Il est nécessaire d'être branché sur internet )"},
    {"         ", "Cliquer sur le bouton 'Importer le fichier d'internet '"},
    {"         ", "Votre navigateur s'ouvre"},
    {"         ", "Vous devez alors charger le fichier contenant"},
    {"         ", "l'historique, le sauvegarder et le décompresser"},
    {"         ", "(Le fichier décompressé s'appelle Kuvo.csv)"},
    {"", ""},
    {"         ", "Nota :"},
    {"                ", "Vous pouvez passer cette étape à condition"},
    {"                ", "d'avoir déjà ce fichier dans le format spécifié"},
    {"", ""},
    {"2        ", "Mise à jour de la base de données"},
    {"         ", "Cliquez sur le bouton  'Mise à jour de la base de données'"},
    {"", ""},
    {"", ""},
    {"         ", "En cas de problèmes avec la mise à jour de la base"},
    {"         ", "contactez moi à mon courriel (adresse dans 'A propos')"},
};

// The operator's page that offers the history file; the host is a build setting.
const char kHistoryPage[] = KUVO_OPERATOR_HOST "/jeux/kuvo/kuvo_s_historiques.php";

// The first `length` characters; a negative length is error 5.
QString LeftOf(const QString& text, qsizetype length) {
  if (length < 0) Raise(Err::InvalidCall);
  return text.left(length);
}

QByteArray LeftOf(const QByteArray& text, qsizetype length) {
  if (length < 0) Raise(Err::InvalidCall);
  return text.left(length);
}

// Cuts a line at every ";", empty fields kept; an empty line has no field.
QList<QByteArray> Split(const QByteArray& line) {
  if (line.isEmpty()) return {};
  return line.split(';');
}

// The line break of the program's messages: a line feed, then a carriage return.
const QString kBreak = QStringLiteral("\n\r");

const char* const kBalls[] = {"boule_1", "boule_2", "boule_3",
                              "boule_4", "boule_5", "Numero_Chance"};
const char* const kNumbers[] = {"numero1", "numero2", "numero3",
                                "numero4", "numero5", "NumeroChance"};

// A whole number held by the store; -1 for anything else.
int Whole(const Value& value) {
  bool ok = false;
  const qlonglong n = value.toLongLong(&ok);
  return ok && !value.isNull() ? static_cast<int>(n) : -1;
}

// A draw of the history as Sorties holds it: five numbers and the chance number.
struct BaseDraw {
  QDate date;
  Value numbers[6];
  bool Same(const convert::Draw& d) const {
    for (int k = 0; k < 5; ++k)
      if (Whole(numbers[k]) != d.numbers[k]) return false;
    return Whole(numbers[5]) == d.chance;
  }
};

// What a load of the operator's file did to the history.
struct Bilan {
  int added = 0;
  int corrected = 0;
  int total = 0;
  QDate firstAdded, lastAdded;
};

// A count and its noun, singular up to 1.
QString Count(int n, const char* one, const char* many) {
  return QStringLiteral("%1 %2").arg(n).arg(QString::fromUtf8(n > 1 ? many : one));
}

QString DayText(const QDate& date) { return FormatDate(date, QStringLiteral("dd mmmm yyyy")); }

// The history merged with the operator's file: the file's draws, and every draw
// of Sorties on a date the file lacks. The new rows of Kuvo are written newest
// first, as the operator's files and the converter write them; a draw kept from
// the base keeps its row of Kuvo when that row holds the same numbers.
Bilan Fusionne(Database& db, const convert::History& file) {
  std::vector<BaseDraw> base;
  {
    std::shared_ptr<Recordset> set = db.OpenRecordset(QStringLiteral("Sorties"));
    if (set->RecordCount() > 0) {
      set->MoveFirst();
      while (!set->Eof()) {
        BaseDraw d;
        d.date = set->Fields(QStringLiteral("DateTirage")).GetValue().toDate();
        for (int k = 0; k < 6; ++k)
          d.numbers[k] = set->Fields(QLatin1String(kNumbers[k])).GetValue();
        base.push_back(d);
        set->MoveNext();
      }
    }
    set->Close();
  }

  std::shared_ptr<Recordset> raw = db.OpenRecordset(QStringLiteral("Kuvo"));
  const int columns = raw->FieldCount();
  QHash<QString, int> at;
  for (int i = 0; i < columns; ++i) at.insert(raw->Fields(i).Name().toLower(), i);
  auto column = [&at](const char* name) {
    return at.value(QString::fromLatin1(name).toLower(), -1);
  };
  QHash<QString, QList<Value>> rawRows;  // by date_de_tirage, the first row of each
  if (raw->RecordCount() > 0) {
    raw->MoveFirst();
    while (!raw->Eof()) {
      QList<Value> row;
      for (int i = 0; i < columns; ++i) row << raw->Fields(i).GetValue();
      const int date = column("date_de_tirage");
      const QString key = date < 0 ? QString() : row[date].toString();
      if (!rawRows.contains(key)) rawRows.insert(key, row);
      raw->MoveNext();
    }
  }

  Bilan bilan;
  std::multimap<QDate, QList<Value>> merged;
  const std::map<QDate, convert::Draw>& draws = file.Draws();
  // A date of the base that the file gives: whether the base holds the file's
  // draw there and nothing else. A second draw of that date goes too, and the
  // date then counts as corrected.
  QHash<QDate, bool> inBase;
  for (const BaseDraw& d : base) {
    const auto found = draws.find(d.date);
    if (found != draws.end()) {
      inBase[d.date] = !inBase.contains(d.date) && d.Same(found->second);
      continue;
    }
    // A draw the file lacks stays, with its row of Kuvo when that row agrees.
    const QString key = d.date.toString(QStringLiteral("yyyyMMdd"));
    auto old = rawRows.constFind(key);
    bool agrees = old != rawRows.constEnd();
    for (int k = 0; agrees && k < 6; ++k) {
      const int c = column(kBalls[k]);
      agrees = c >= 0 && Whole(old.value()[c]) == Whole(d.numbers[k]);
    }
    QList<Value> row(columns);
    if (agrees) {
      row = old.value();
    } else {
      auto put = [&](const char* name, const Value& v) {
        if (const int c = column(name); c >= 0) row[c] = v;
      };
      put("date_de_tirage", key);
      for (int k = 0; k < 6; ++k) put(kBalls[k], d.numbers[k]);
    }
    merged.emplace(d.date, row);
  }
  for (const auto& [date, draw] : draws) {
    QList<Value> row;
    for (const QByteArray& field : draw.text.split(';')) row << QString::fromUtf8(field);
    merged.emplace(date, row);
    if (!inBase.contains(date)) {
      if (bilan.added++ == 0) bilan.firstAdded = date;
      bilan.lastAdded = date;
    } else if (!inBase.value(date)) {
      ++bilan.corrected;
    }
  }
  bilan.total = static_cast<int>(merged.size());

  db.Execute(QStringLiteral("DELETE * FROM ") + QStringLiteral("Kuvo"));
  for (auto it = merged.rbegin(); it != merged.rend(); ++it) {
    raw->AddNew();
    const QList<Value>& row = it->second;
    for (int i = 0; i < row.size(); ++i)
      if (!row[i].isNull()) raw->Fields(i).SetValue(row[i]);
    raw->Update();
  }
  raw->Close();
  return bilan;
}

}  // namespace

ChargeMiseJourUi::ChargeMiseJourUi(ChargeMiseJour& f)
    : Image6(f, "Image6"),
      Text1(f, "Text1"),
      ImportFichier(f, "ImportFichier"),
      Cmd_Importation(f, "Cmd_Importation"),
      Quitter(f, "Quitter"),
      CommonDialog1(f, "CommonDialog1"),
      Line1(f, "Line1"),
      Line2(f, "Line2"),
      Line3(f, "Line3"),
      Line4(f, "Line4") {
  f.Caption = QStringLiteral("Chargement fichier et mise à jour de la Base de données");
  f.Width = 9150;
  f.Height = 7350;

  Image6.Move(240, 240, 480, 480);
  Image6.Picture = 1;

  Text1.MultiLine = true;
  Text1.Move(960, 240, 7815, 4815);

  // A frame of four lines around the buttons.
  const int x1 = 960, x2 = 8775, y1 = 5280, y2 = 6600;
  Line1.X1 = x1, Line1.Y1 = y1, Line1.X2 = x2, Line1.Y2 = y1;
  Line2.X1 = x2, Line2.Y1 = y1, Line2.X2 = x2, Line2.Y2 = y2;
  Line3.X1 = x1, Line3.Y1 = y2, Line3.X2 = x2, Line3.Y2 = y2;
  Line4.X1 = x1, Line4.Y1 = y1, Line4.X2 = x1, Line4.Y2 = y2;

  ImportFichier.Caption = QStringLiteral("Importer le fichier d'internet");
  ImportFichier.Move(1200, 5520, 3015, 495);
  ImportFichier.Click = [&f] { f.ImportFichier_Click(); };

  Cmd_Importation.Caption = QStringLiteral("Mise à jour de la base de données");
  Cmd_Importation.Move(4440, 5520, 3015, 495);
  Cmd_Importation.Click = [&f] { f.Cmd_Importation_Click(); };

  Quitter.Caption = QStringLiteral("<< Retour");
  Quitter.Move(7680, 5520, 975, 495);
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

ChargeMiseJour::ChargeMiseJour(Program& program) : FormOf(program, kName) {}

ChargeMiseJour::~ChargeMiseJour() = default;

void ChargeMiseJour::Form_Load() {
  PlaceAsChild();
  QString text;
  for (const HelpLine& line : kHelp)
    text += QString::fromUtf8(line.indent) + QString::fromUtf8(line.text) + QStringLiteral("\r\n");
  ui().Text1.Text = text;
}

void ChargeMiseJour::ImportFichier_Click() {
  Sys().ShellExecute(QStringLiteral("Open"), QString::fromUtf8(kHistoryPage));
}

void ChargeMiseJour::Cmd_Importation_Click() {
  {
    CommonDialog& dialog = ui().CommonDialog1;
    dialog.Filter = QStringLiteral("Tous les fichiers (*.csv)|*.csv|");
    dialog.ShowOpen();
  }
  {
    const QString chosen = ui().CommonDialog1.FileName;
    QByteArray bytes;
    if (FichierOperateur(chosen, bytes)) return ChargeFichierOperateur(chosen, bytes);
    // While the operator's file loads, no other file may replace the history
    // under it.
    if (!chosen.isEmpty() && M().BaseDonnees && M().BaseDonnees->InUnit()) return DejaEnCours();
  }
  // The operator's file waits for the end of these passes: its merge would read
  // a history they have half replaced.
  struct EnCours {
    Int32& n;
    ~EnCours() { --n; }
  } enCours{++ImportsEnCours};
  // No control is held past this point: the passes let events through, and the
  // user may close the window meanwhile.
  try {
    const QString chosen = ui().CommonDialog1.FileName;
    const QString stem = LeftOf(chosen, chosen.size() - 4);  // a cancel gives "": error 5
    const QString temporary = stem + QStringLiteral(".csvtxt");
    TextFiles& files = App().Files();
    Platform& sys = Sys();

    // Each pass reads file number 1 and writes number 2. A number left open by
    // a failed pass stays taken: every later import then fails on it (error 55).
    constexpr int in = 1;
    constexpr int out = 2;

    // First pass: a line feed ends a line, which goes out with a "c" behind it,
    // so that the line reading (which stops at carriage returns) can see it.
    files.Open(chosen, TextFiles::Mode::Input, in);
    files.Open(temporary, TextFiles::Mode::Output, out);
    LigneTexte.resize(0);
    while (!files.Eof(in)) {
      const char c = files.InputChar(in);
      if (c == '\n') {
        LigneTexte += 'c';
        files.PrintLine(out, LigneTexte);
        LigneTexte.resize(0);
      } else {
        LigneTexte += c;
      }
      sys.DoEvents();
    }
    files.Close(in);
    files.Close(out);

    // Second pass: the chosen file is rewritten, each line without its "c" and
    // the closing character before it.
    files.Open(temporary, TextFiles::Mode::Input, in);
    files.Open(stem + QStringLiteral(".csv"), TextFiles::Mode::Output, out);
    while (!files.Eof(in)) {
      LigneTexte = files.LineInput(in);
      if (LigneTexte.endsWith('c')) files.PrintLine(out, LeftOf(LigneTexte, LigneTexte.size() - 2));
    }
    files.Close(in);
    files.Close(out);
    files.Kill(temporary);

    Module1& m = M();
    m.BaseDonnees->Execute(QStringLiteral("DELETE * FROM ") + QStringLiteral("Kuvo"));

    // Third pass: the header is dropped; field i of a line goes to column i.
    NomFichier = chosen;
    files.Open(NomFichier, TextFiles::Mode::Input, in);
    LigneTexte = files.LineInput(in);
    RsKuvo = m.BaseDonnees->OpenRecordset(QStringLiteral("Kuvo"));
    while (!files.Eof(in)) {
      LigneTexte = files.LineInput(in);
      Champs = Split(LigneTexte);
      RsKuvo->AddNew();
      for (IndiceChamp = 0; IndiceChamp <= Champs.size() - 1; ++IndiceChamp)
        RsKuvo->Fields(IndiceChamp).SetValue(QString::fromUtf8(Champs[IndiceChamp]));
      RsKuvo->Update();
    }
    files.Close(in);
    RsKuvo->Close();
    RsKuvo.reset();

    for (const char* table : {"Groupe2", "Groupe3", "Groupe4", "Groupe5", "Sorties"})
      m.BaseDonnees->Execute(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
    m.CompileBase();
    sys.MsgBox(QStringLiteral("Importation et mise à jour de la base de données réussie"),
               Mb::Information | Mb::OkOnly, QString());
    sys.SetMousePointer(Pointer::Default);
  } catch (const VbError& e) {
    // A cancelled dialog ends here without a word. Nothing is undone or closed:
    // open files, the temporary file and the wait pointer stay as they are.
    if (e.Number() == Err::InvalidCall) return;
    const QString lineEnd = QStringLiteral("\n\r");
    Sys().MsgBox(QStringLiteral("Il s'est produit une erreur inconnue") + lineEnd +
                     QStringLiteral("Contactez moi à mon courriel") + lineEnd +
                     QStringLiteral("'Adresse dans A Propos") + lineEnd,
                 Mb::Critical, QString());
  }
}

bool ChargeMiseJour::FichierOperateur(const QString& chosen, QByteArray& bytes) {
  if (chosen.isEmpty()) return false;
  QFile file(chosen);
  if (!file.open(QIODevice::ReadOnly)) return false;
  bytes = file.readAll();
  int columns = 0;
  try {
    columns = M().BaseDonnees->OpenRecordset(QStringLiteral("Kuvo"))->FieldCount();
  } catch (const VbError&) {
    return false;  // the import's own path meets the same failure
  }
  return convert::IsOperatorFile(bytes, columns);
}

void ChargeMiseJour::ChargeFichierOperateur(const QString& chosen, const QByteArray& bytes) {
  Platform& sys = Sys();
  Database& db = *M().BaseDonnees;
  // The file is read and checked whole before anything changes.
  convert::History file;
  try {
    file.Add(convert::ReadHistory(QFileInfo(chosen).fileName(), bytes));
  } catch (const convert::ConvertError& e) {
    sys.MsgBox(QStringLiteral("Le fichier ne peut pas être chargé :") + kBreak + e.Text() + kBreak +
                   QStringLiteral("La base de données n'a pas été modifiée."),
               Mb::Exclamation, QString());
    return;
  }
  if (db.InUnit() || ImportsEnCours > 0) return DejaEnCours();

  // The merge, the emptied tables and the compile are one transaction: a
  // failure or the end of the program on the way leaves the old history whole.
  Bilan bilan;
  try {
    db.BeginUnit();
    struct Undo {
      Database& db;
      ~Undo() { db.RollbackUnit(); }
    } undo{db};
    bilan = Fusionne(db, file);
    for (const char* table : {"Groupe2", "Groupe3", "Groupe4", "Groupe5", "Sorties"})
      db.Execute(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
    M().CompileBase();
    db.CommitUnit();
  } catch (const VbError& e) {
    if (Form* avance = App().FormByName(QLatin1String(Avance::kName), false);
        avance && avance->Loaded())
      avance->Unload();
    sys.SetMousePointer(Pointer::Default);
    sys.MsgBox(QStringLiteral("La mise à jour de la base de données n'a pas pu se faire :") +
                   kBreak + e.Description() + kBreak +
                   QStringLiteral("La base de données est restée telle qu'elle était."),
               Mb::Critical, QString());
    return;
  }

  QString text;
  const QString total = Count(bilan.total, "tirage", "tirages");
  if (bilan.added == 0 && bilan.corrected == 0) {
    text = QStringLiteral(
               "Le fichier n'apporte aucun tirage nouveau : la base de données était "
               "déjà à jour.") +
           kBreak + QStringLiteral("Elle compte %1.").arg(total);
  } else {
    text = QStringLiteral("Mise à jour de la base de données réussie.") + kBreak;
    if (bilan.added == 0)
      text += QStringLiteral("Aucun tirage ajouté.");
    else if (bilan.added == 1)
      text += QStringLiteral("1 tirage ajouté, celui du %1.").arg(DayText(bilan.firstAdded));
    else
      text += QStringLiteral("%1 tirages ajoutés, du %2 au %3.")
                  .arg(bilan.added)
                  .arg(DayText(bilan.firstAdded), DayText(bilan.lastAdded));
    text += kBreak;
    if (bilan.corrected == 0)
      text += QStringLiteral("Aucun tirage corrigé.");
    else
      text += Count(bilan.corrected, "tirage corrigé", "tirages corrigés") +
              QStringLiteral(" d'après le fichier.");
    text += kBreak + QStringLiteral("La base de données compte maintenant %1.").arg(total);
  }
  sys.MsgBox(text, Mb::Information | Mb::OkOnly, QString());
  sys.SetMousePointer(Pointer::Default);
}

void ChargeMiseJour::DejaEnCours() {
  Sys().MsgBox(QStringLiteral("Une mise à jour de la base de données est déjà en cours."),
               Mb::Exclamation, QString());
}

void ChargeMiseJour::Quitter_Click() { Unload(); }

void ChargeMiseJour::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("LigneTexte"), PropValue::Text(QString::fromUtf8(LigneTexte)));
  for (qsizetype i = 0; i < Champs.size(); ++i)
    sink(QStringLiteral("Champs(%1)").arg(i), PropValue::Text(QString::fromUtf8(Champs[i])));
  sink(QStringLiteral("IndiceChamp"), PropValue::Int(IndiceChamp));
  sink(QStringLiteral("NomFichier"), PropValue::Text(NomFichier));
}

}  // namespace kuvo
