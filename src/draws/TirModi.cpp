#include "draws/TirModi.h"

#include "about/Propos.h"
#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

// The label chosen for change turns dark red.
constexpr unsigned kChosen = 0x0000C0;

constexpr int kKey = 450;
constexpr int kKeysAcross = 10;

const char* const kNumbers[] = {"numero1", "numero2", "numero3", "numero4", "numero5"};

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
}

// The date text of the list as the statement wants it; a text that is no date
// goes through as it stands.
QString StatementDate(const QString& text, const char* mask) {
  return IsDateText(text) ? FormatDate(DateFromText(text), QLatin1String(mask)) : text;
}

// A cell of the grid against a column of the current draw: a missing value
// equals no number, not even the 0 of an empty cell.
bool SameNumber(const QString& cell, const Value& value) {
  return !value.isNull() && Val(cell) == value.toDouble();
}

}  // namespace

TirModiUi::TirModiUi(TirModi& f)
    : Label1(f, "Label1"),
      Label2(f, "Label2"),
      Label4(f, "Label4"),
      Label3(f, "Label3"),
      Label5(f, "Label5"),
      Label6(f, "Label6"),
      Label17(f, "Label17"),
      Label18(f, "Label18"),
      Label8(f, "Label8"),
      Label7(f, "Label7"),
      Label23(f, "Label23"),
      Combo1(f, "Combo1"),
      Label19(f, "Label19"),
      Grille(f, "Grille"),
      Label9(f, "Label9"),
      Label10(f, "Label10"),
      Label11(f, "Label11"),
      Label12(f, "Label12"),
      Label13(f, "Label13"),
      Label15(f, "Label15"),
      Label16(f, "Label16", 0, 5),
      Toolbar1(f, "Toolbar1"),
      MiseAJour(f, "MiseAJour"),
      Annuler(f, "Annuler"),
      Quitter(f, "Quitter") {
  f.Caption = QStringLiteral("Modification d'un tirage");
  f.Width = 9720;
  f.Height = 6480;

  // The steps to follow, on the left.
  constexpr int left = 240;
  constexpr int stepWidth = 3960;
  SetLabel(Label1, "1", left, 120, 240);
  SetLabel(Label2, "Sélectionnez la date du tirage", left + 300, 120, stepWidth);
  SetLabel(Label4, "2", left, 390, 240);
  SetLabel(Label3, "puis le tirage", left + 300, 390, stepWidth);
  SetLabel(Label5, "3", left, 660, 240);
  SetLabel(Label6, "Modifiez les numéros ...", left + 300, 660, stepWidth);
  SetLabel(Label17, "4", left, 930, 240);
  SetLabel(Label18, "Cliquez sur le numèro à modifier, puis sur le nouveau numèro ...", left + 300,
           930, stepWidth, 450);
  SetLabel(Label8, "5", left, 1410, 240);
  SetLabel(Label7, "... et en suite sur Mise à Jour", left + 300, 1410, stepWidth);
  for (Label* step : {&Label1, &Label4, &Label5, &Label17, &Label8}) {
    step->FontBold = true;
    step->ForeColor = Colours::Red;
  }

  // The date, then its draws.
  SetLabel(Label23, "Date du Tirage", left, 1860, 2400);
  Label23.FontBold = true;
  Combo1.Text = QString::fromUtf8("Sélectionnez une date");
  Combo1.Move(left, 2130, 3000, 315);
  SetLabel(Label19, "Liste des numèros à modifier", left, 2640, 3960);
  Label19.FontBold = true;
  Grille.Move(left, 2910, 4260, 2040);
  Grille.SetCols(8);
  Grille.FixedRows = 1;
  Grille.SetFixedCols(1);
  Grille.SetFormatString(QString::fromUtf8(" N° | 1 | 2 | 3 | 4 | 5 | Chance"));
  for (int c = 0; c <= 5; ++c) Grille.SetColWidth(c, 480);
  Grille.SetColWidth(6, 720);
  Grille.SetColWidth(7, 240);
  Grille.Visible = false;

  // The draw under correction, over the keypad, on the right.
  constexpr int right = 4800;
  constexpr int slot = 600;
  Label* heads[] = {&Label9, &Label10, &Label11, &Label12, &Label13, &Label15};
  for (int k = 0; k <= 5; ++k) {
    const int at = right + k * (slot + 90) + (k == 5 ? 180 : 0);
    SetLabel(*heads[k], k < 5 ? "n°" : "Chance", at, 120, k < 5 ? slot : slot + 240);
    heads[k]->Alignment = 2;
    Label& number = Label16(k);
    SetLabel(number, "", at, 390, slot, 420);
    number.Alignment = 2;
    number.FontBold = true;
    number.FontSize = 12;
    number.BackColor = Colours::Teal;
    number.ForeColor = Colours::White;
  }
  Toolbar1.MakeKeypad(50);
  Toolbar1.Move(right, 1080, kKeysAcross * kKey, 5 * kKey);

  // The buttons along the bottom.
  constexpr int buttonsTop = 5280;
  MiseAJour.Caption = QString::fromUtf8("&Mise à Jour");
  MiseAJour.Move(left, buttonsTop, 2040, 480);
  Annuler.Caption = QStringLiteral("&Annuler");
  Annuler.Move(left + 2220, buttonsTop, 2040, 480);
  Quitter.Caption = QStringLiteral("<<  &Retour");
  Quitter.Move(right + 2460, buttonsTop, 2040, 480);

  Combo1.Click = [&f] { f.Combo1_Click(); };
  Grille.Click = [&f] { f.Grille_Click(); };
  for (int k = 0; k <= 5; ++k)
    Label16(k).MouseUp = [&f, k](Int16 button, Int16 shift, double x, double y) {
      f.Label16_MouseUp(static_cast<Int16>(k), button, shift, x, y);
    };
  Toolbar1.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar1_ButtonClick(b); };
  MiseAJour.Click = [&f] { f.MiseAJour_Click(); };
  Annuler.Click = [&f] { f.Annuler_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

TirModi::TirModi(Program& program) : FormOf(program, kName) {}

void TirModi::Form_Load() {
  PlaceAsChild();
  Recordset& sorties = *M().RsSorties;
  sorties.SetIndex(QStringLiteral("DateTirage"));
  sorties.MoveFirst();
  ComboBox& dates = ui().Combo1;
  while (!sorties.Eof()) {
    dates.AddItem(FormatDate(sorties.Fields(QStringLiteral("DateTirage")).GetValue().toDate(),
                             QStringLiteral("dd mmmm yyyy")));
    sorties.MoveNext();
  }
  LigneChoisie = false;
}

void TirModi::Combo1_Click() {
  TirModiUi& u = ui();
  const QString date = StatementDate(u.Combo1.Text, "mm dd yy");
  RsTirage = M().BaseDonnees->OpenRecordset(
      QStringLiteral("select * from Sorties where DateTirage  = #") + date + QLatin1Char('#'));
  RsTirage->MoveLast();
  RsTirage->MoveFirst();
  Grid& grille = u.Grille;
  grille.SetRows(static_cast<int>(RsTirage->RecordCount() + 1));
  // Each cell is written at the grid's current cell, which ends on the last row.
  auto cell = [&grille](int col, const QString& text) {
    grille.Col = col;
    grille.SetText(text);
  };
  Int16 i = 1;
  while (!RsTirage->Eof()) {
    grille.Row = i;
    cell(0, QString::number(i));
    for (int k = 0; k < 5; ++k)
      cell(k + 1, ValueText(RsTirage->Fields(QLatin1String(kNumbers[k])).GetValue()));
    cell(6, ValueText(RsTirage->Fields(QStringLiteral("NumeroChance")).GetValue()));
    RsTirage->MoveNext();
    i = Add16(i, 1);
  }
  grille.Visible = true;
}

void TirModi::Grille_Click() {
  RemiseAZero();
  TirModiUi& u = ui();
  u.Grille.Visible = true;
  u.MiseAJour.Enabled = true;
  LigneCourante = 0;
  for (int k = 0; k <= 5; ++k) u.Label16(k).Caption = u.Grille.TextMatrix(u.Grille.Row, k + 1);
}

void TirModi::Label16_MouseUp(Int16 Index, Int16, Int16, double, double) {
  LigneCourante = Index;
  LigneChoisie = true;
  // The label chosen before keeps its colour.
  ui().Label16(Index).BackColor = kChosen;
}

void TirModi::Toolbar1_ButtonClick(ToolbarButton& Button) {
  Int16 N = KeyNumber(Button);
  // The 50th key is no number: it leads to the about window.
  if (N == 50) {
    App().Win<Propos>().Show(true);
    return;
  }
  ChangeNumero(N);
}

void TirModi::ChangeNumero(Int16& N) {
  if (!LigneChoisie) return;
  // The label stays chosen: the next key overwrites it.
  Label& number = ui().Label16(LigneCourante);
  number.Caption = QString::number(N);
  number.BackColor = Colours::Teal;
  number.ForeColor = Colours::Yellow;
}

void TirModi::MiseAJour_Click() {
  TirModiUi& u = ui();
  // The keypad offers 1 to 49 for the chance number too.
  const double chance = Val(u.Label16(5).Caption);
  if (chance < 1 || chance > 10) {
    Sys().MsgBox(
        QString::fromUtf8("La numéro de la chance doit être \n\rcompris entre 1 et 10 inclus"),
        Mb::Exclamation, QString());
    return;
  }
  bool same = false;
  for (int i = 0; i <= 4; ++i)
    for (int j = i + 1; j <= 4; ++j)
      if (Val(u.Label16(i).Caption) == Val(u.Label16(j).Caption)) same = true;
  if (same) {
    Sys().MsgBox(
        QString::fromUtf8(
            "Au moins 2 numèros identiques dans la sélection\n\rCorrigez avant de continuer"),
        Mb::Critical, QString());
    return;
  }

  // The draw as it was, and the first row of the date that holds it.
  QString before[6];
  for (int k = 0; k <= 5; ++k) before[k] = u.Grille.TextMatrix(u.Grille.Row, k + 1);
  if (!RsTirage) Raise(Err::ObjectNotSet);
  RsTirage->MoveFirst();
  while (!RsTirage->Eof()) {
    bool found = true;
    for (int k = 0; k < 5; ++k)
      found =
          found && SameNumber(before[k], RsTirage->Fields(QLatin1String(kNumbers[k])).GetValue());
    found =
        found && SameNumber(before[5], RsTirage->Fields(QStringLiteral("NumeroChance")).GetValue());
    if (found) break;
    RsTirage->MoveNext();
  }
  RsTirage->Edit();
  for (int k = 0; k < 5; ++k)
    RsTirage->Fields(QLatin1String(kNumbers[k])).SetValue(Val(u.Label16(k).Caption));
  RsTirage->Fields(QStringLiteral("NumeroChance")).SetValue(Val(u.Label16(5).Caption));
  RsTirage->Update();
  u.MiseAJour.Enabled = false;
  RemiseAZero();
}

void TirModi::RemiseAZero() {
  TirModiUi& u = ui();
  u.Grille.Visible = false;
  LigneChoisie = false;
  for (int k = 0; k <= 5; ++k) {
    Label& number = u.Label16(k);
    number.Caption.clear();
    number.ForeColor = Colours::White;
    number.BackColor = Colours::Teal;
  }
  // Nothing here marks a key; the keys are set back all the same.
  for (int k = 1; k <= 49; ++k) u.Toolbar1.Buttons(k).Image = k;
}

void TirModi::Annuler_Click() { RemiseAZero(); }

void TirModi::Quitter_Click() { Unload(); }

void TirModi::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("LigneCourante"), PropValue::Int(LigneCourante));
  sink(QStringLiteral("LigneChoisie"), PropValue::Bool(LigneChoisie));
}

}  // namespace kuvo
