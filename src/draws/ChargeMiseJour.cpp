#include "draws/ChargeMiseJour.h"

#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/TextFiles.h"

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

void ChargeMiseJour::Quitter_Click() { Unload(); }

void ChargeMiseJour::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("LigneTexte"), PropValue::Text(QString::fromUtf8(LigneTexte)));
  for (qsizetype i = 0; i < Champs.size(); ++i)
    sink(QStringLiteral("Champs(%1)").arg(i), PropValue::Text(QString::fromUtf8(Champs[i])));
  sink(QStringLiteral("IndiceChamp"), PropValue::Int(IndiceChamp));
  sink(QStringLiteral("NomFichier"), PropValue::Text(NomFichier));
}

}  // namespace kuvo
