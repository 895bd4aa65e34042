#include "statistics/TirVerif.h"

#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

const QString kBlanks5 = QStringLiteral("     ");

}  // namespace

TirVerifUi::TirVerifUi(TirVerif& f)
    : Label12(f, "Label12"),
      Label11(f, "Label11"),
      Label10(f, "Label10"),
      Label14(f, "Label14"),
      Label4(f, "Label4"),
      Label3(f, "Label3"),
      Label2(f, "Label2"),
      Text2(f, "Text2"),
      Label1(f, "Label1"),
      Combo1(f, "Combo1"),
      Option1(f, "Option1"),
      Option2(f, "Option2"),
      ChercheSorties(f, "ChercheSorties"),
      ArretRecherche(f, "ArretRecherche"),
      Imprimer(f, "Imprimer"),
      ArretImpression(f, "ArretImpression"),
      Quitter(f, "Quitter"),
      Label5(f, "Label5"),
      Label7(f, "Label7"),
      Label6(f, "Label6"),
      Label8(f, "Label8"),
      Grille(f, "Grille"),
      Gauge1(f, "Gauge1") {
  f.Caption = QStringLiteral("Recherche des sorties groupées de numéros");
  f.Width = 7320;
  f.Height = 7080;

  // The three steps of the instructions.
  Label12.Caption = QStringLiteral("1");
  Label12.Move(240, 240, 300, 255);
  Label11.Caption = QStringLiteral("Sélectionnez le nombre   ( 2 à 5 )");
  Label11.Move(600, 240, 4440, 255);
  Label10.Caption = QStringLiteral("2");
  Label10.Move(240, 540, 300, 255);
  Label14.Caption = QStringLiteral("puis le mode de classement ...");
  Label14.Move(600, 540, 4440, 255);
  Label4.Caption = QStringLiteral("3");
  Label4.Move(240, 840, 300, 255);
  Label3.Caption = QStringLiteral("... et cliquez sur Recherche");
  Label3.Move(600, 840, 4440, 255);

  // Group size, sort column and direction.
  Label2.Caption = QStringLiteral("Nombre de numéros");
  Label2.Move(240, 1380, 1800, 255);
  Text2.Move(2160, 1320, 615, 315);
  Label1.Caption = QStringLiteral("Classement par");
  Label1.Move(240, 1800, 1800, 255);
  Combo1.Move(2160, 1740, 1575, 315);
  Combo1.Style = 2;
  Option1.Caption = QStringLiteral("Croisant");
  Option1.Value = true;
  Option1.Move(3960, 1320, 1335, 255);
  Option2.Caption = QStringLiteral("Decroissant");
  Option2.Move(3960, 1680, 1335, 255);

  // Buttons on the right; each stop button stands in place of what it stops.
  ChercheSorties.Caption = QStringLiteral("&Recherche");
  ChercheSorties.Move(5520, 1260, 1575, 420);
  ArretRecherche.Caption = QStringLiteral("Arrêter la recherche ");
  ArretRecherche.Move(5520, 1260, 1575, 420);
  ArretRecherche.Visible = false;
  Imprimer.Caption = QStringLiteral("&Imprimer");
  Imprimer.Move(5520, 2400, 1575, 420);
  Imprimer.Enabled = false;
  ArretImpression.Caption = QStringLiteral("Arrêter l'impression");
  ArretImpression.Move(5520, 2940, 1575, 420);
  ArretImpression.Visible = false;
  Quitter.Caption = QStringLiteral("<<  &Retour");
  Quitter.Move(5520, 6060, 1575, 420);

  // The two values of the last search.
  Label5.Caption = QStringLiteral("Combinaisons possibles");
  Label5.Move(240, 2400, 2040, 255);
  Label7.Move(2400, 2400, 1335, 255);
  Label6.Caption = QStringLiteral("Réussites");
  Label6.Move(240, 2760, 2040, 255);
  Label8.Move(2400, 2760, 1335, 255);

  // The ranking and the progress of its listing.
  Grille.Move(240, 3240, 2640, 3240);
  Grille.FixedRows = 1;
  Grille.SetFixedCols(0);
  Grille.Visible = false;
  Gauge1.Move(3120, 3240, 2160, 255);

  Text2.KeyPress = [&f](Int16& k) { f.Text2_KeyPress(k); };
  Combo1.Change = [&f] { f.Combo1_Change(); };
  ChercheSorties.Click = [&f] { f.ChercheSorties_Click(); };
  ArretRecherche.Click = [&f] { f.ArretRecherche_Click(); };
  Imprimer.Click = [&f] { f.Imprimer_Click(); };
  ArretImpression.Click = [&f] { f.ArretImpression_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

TirVerif::TirVerif(Program& program) : FormOf(program, kName) {}

void TirVerif::Form_Load() {
  PlaceAsChild();
  ui().Combo1.AddItem(QStringLiteral("Numeros"));
  ui().Combo1.AddItem(QStringLiteral("Sorties"));
}

void TirVerif::Text2_KeyPress(Int16& KeyAscii) {
  if (KeyAscii == 13) ui().Combo1.SetFocus();
}

void TirVerif::Combo1_Change() { ui().ChercheSorties.SetFocus(); }

void TirVerif::ChercheSorties_Click() {
  NbBoules = 49;
  TailleGroupe = CInt(Val(ui().Text2.Text));
  if (TailleGroupe < 2 || TailleGroupe > 5) {
    Sys().MsgBox(QStringLiteral("Sélectionnez un nombre compris entre 2 et 5"), Mb::Exclamation,
                 QString());
    ui().Text2.SetFocus();
    return;
  }
  if (ui().Combo1.Text.isEmpty()) {
    Sys().MsgBox(QStringLiteral("Sélectionnez un ordre de sortie"), Mb::Exclamation, QString());
    ui().Combo1.SetFocus();
    return;
  }
  ui().ArretRecherche.Visible = true;
  ui().ChercheSorties.Visible = false;
  ui().Quitter.Enabled = false;

  // Combinations of TailleGroupe among NbBoules, by the factorials.
  double factBoules = 1, factTaille = 1, factReste = 1;
  for (int k = 1; k <= NbBoules; ++k) factBoules *= k;
  for (int k = 1; k <= TailleGroupe; ++k) factTaille *= k;
  for (int k = 1; k <= NbBoules - TailleGroupe; ++k) factReste *= k;
  NbCombinaisons = CLng(factBoules / factTaille / factReste);

  QString table;
  if (TailleGroupe == 2) table = QStringLiteral("Groupe2");
  if (TailleGroupe == 3) table = QStringLiteral("Groupe3");
  if (TailleGroupe == 4) table = QStringLiteral("Groupe4");
  if (TailleGroupe == 5) table = QStringLiteral("Groupe5");
  if (TailleGroupe == 6) table = QStringLiteral("Groupe6");

  {
    Grid& grille = ui().Grille;
    grille.Clear();
    grille.SetTextMatrix(0, 0, QStringLiteral("Numéros"));
    grille.SetTextMatrix(0, 1, QStringLiteral("Scores"));
    grille.SetColWidth(0, 1500);
    grille.SetColWidth(1, 700);
    grille.Visible = true;
  }

  QString sens = QStringLiteral(" ASC ");
  if (!ui().Option1.Value) sens = QStringLiteral(" DESC ");
  RsClassement =
      M().BaseDonnees->OpenRecordset(QStringLiteral("select* from ") + table +
                                     QStringLiteral(" order by ") + ui().Combo1.Text + sens);
  RsClassement->MoveLast();
  RsClassement->MoveFirst();
  ui().Grille.SetRows(static_cast<int>(RsClassement->RecordCount() + 1));

  ui().Label8.Caption = QString::number(RsClassement->RecordCount());
  ui().Label7.Caption = QString::number(NbCombinaisons);
  ui().Label8.Refresh();
  ui().Label7.Refresh();

  Sys().SetMousePointer(Pointer::Wait);
  ui().Gauge1.Visible = true;
  ui().Gauge1.SetMax(static_cast<double>(RsClassement->RecordCount() + 1));
  ui().Gauge1.SetValue(0);
  Sys().DoEvents();

  Int16 i = 1;
  M().ArretDemande = 0;
  while (!RsClassement->Eof()) {
    // Controls are reached afresh after every yield: the user may have closed
    // the window meanwhile, and reaching it loads it again.
    Grid& grille = ui().Grille;
    grille.Row = i;
    grille.Col = 0;
    grille.SetText(ValueText(RsClassement->Fields(QStringLiteral("Numeros")).GetValue()));
    grille.Col = 1;
    grille.SetText(ValueText(RsClassement->Fields(QStringLiteral("Sorties")).GetValue()));
    Increment();
    if (M().ArretDemande == -1) break;
    RsClassement->MoveNext();
    i = Add16(i, 1);
  }

  if (M().ArretDemande != 0) {
    ui().Grille.Visible = false;
    ui().Imprimer.Enabled = false;
  } else {
    ui().Imprimer.Enabled = true;
  }
  ui().Quitter.Enabled = true;
  ui().Gauge1.Visible = false;
  ui().ChercheSorties.Visible = true;
  ui().ArretRecherche.Visible = false;
  Sys().SetMousePointer(Pointer::Default);
}

void TirVerif::Increment() {
  ProgressBar& gauge = ui().Gauge1;
  gauge.SetValue(gauge.Value() + 1);
  Sys().DoEvents();
}

void TirVerif::IncrementImpression() { Sys().DoEvents(); }

void TirVerif::ArretRecherche_Click() { M().ArretDemande = -1; }

void TirVerif::ArretImpression_Click() { M().ArretDemande = -1; }

void TirVerif::Imprimer_Click() {
  const QString nomPolice = FontName;
  const double taillePolice = FontSize;
  Printer& printer = Sys().CurrentPrinter();
  printer.SetFontName(QStringLiteral("Courier New"));
  printer.SetFontSize(11);
  NbLignes = 0;
  ui().ArretImpression.Visible = true;

  Imprimeligne(QString(), 0);
  Imprimeligne(QStringLiteral("          RESULTAT DES SORTIES GROUPEES DE ") + ui().Text2.Text +
                   QStringLiteral(" NUMEROS"),
               -1);
  Imprimeligne(QString(), -1);
  Imprimeligne(kBlanks5 + QStringLiteral("NOMBRE DE COMBINAISONS ") + ui().Label7.Caption, -1);
  Imprimeligne(kBlanks5 + QStringLiteral("NOMBRE DE REUSSITES ") + ui().Label8.Caption, -1);
  Imprimeligne(kBlanks5 + QStringLiteral("CLASSEMENT PAR ") + ui().Combo1.Text +
                   QStringLiteral(" ORDRE ") +
                   (ui().Option1.Value ? QStringLiteral("CROISANT") : QStringLiteral("DECROISANT")),
               -1);
  DebutPage();
  Sys().DoEvents();

  M().ArretDemande = 0;
  RsClassement->MoveFirst();
  const QString blanks50(50, QLatin1Char(' '));
  while (!RsClassement->Eof()) {
    const QString numeros = ValueText(RsClassement->Fields(QStringLiteral("Numeros")).GetValue());
    const QString sorties = ValueText(RsClassement->Fields(QStringLiteral("Sorties")).GetValue());
    Imprimeligne(kBlanks5 + (numeros + blanks50).left(25) + sorties, 0);
    IncrementImpression();
    if (M().ArretDemande == -1) {
      Sys().CurrentPrinter().KillDoc();
      break;
    }
    RsClassement->MoveNext();
  }
  Sys().CurrentPrinter().EndDoc();

  FontName = nomPolice;
  FontSize = taillePolice;
  ui().ArretImpression.Visible = false;
  ui().Imprimer.Enabled = false;
}

void TirVerif::DebutPage() {
  Imprimeligne(QString(), 0);
  Imprimeligne(kBlanks5 + QStringLiteral("NUMEROS               SCORES"), -1);
}

void TirVerif::Imprimeligne(const QString& texte, Int16 gras) {
  Printer& printer = Sys().CurrentPrinter();
  if (gras == -1) printer.SetFontBold(true);
  printer.PrintLine(texte);
  printer.SetFontBold(false);
  NbLignes = Add16(NbLignes, 1);
  if (NbLignes > 64) {
    // The page number prints as a number does: a blank before it and after it.
    printer.PrintLine(QStringLiteral("               Page n° ") + Str(printer.Page()) +
                      QLatin1Char(' '));
    printer.NewPage();
    NbLignes = 0;
    DebutPage();
  }
}

void TirVerif::Quitter_Click() { Unload(); }

void TirVerif::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("TailleGroupe"), PropValue::Int(TailleGroupe));
  sink(QStringLiteral("NbBoules"), PropValue::Int(NbBoules));
  sink(QStringLiteral("NbCombinaisons"), PropValue::Int(NbCombinaisons));
  sink(QStringLiteral("NbLignes"), PropValue::Int(NbLignes));
}

}  // namespace kuvo
