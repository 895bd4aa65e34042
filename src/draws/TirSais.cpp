#include "draws/TirSais.h"

#include "about/Propos.h"
#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

const QString kFree = QStringLiteral("?");

// Keypad keys are square; the number keypad wraps after ten keys.
constexpr int kKey = 540;
constexpr int kKeysAcross = 10;

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
}

}  // namespace

TirSaisUi::TirSaisUi(TirSais& f)
    : MiseJour(f, "MiseJour"),
      EffaceNumeros(f, "EffaceNumeros"),
      Quitter(f, "Quitter"),
      Calendar1(f, "Calendar1"),
      Label1(f, "Label1"),
      Label2(f, "Label2"),
      Label3(f, "Label3"),
      Label4(f, "Label4"),
      Label5(f, "Label5"),
      Label6(f, "Label6"),
      Label7(f, "Label7"),
      Label8(f, "Label8"),
      Label9(f, "Label9"),
      Label10(f, "Label10"),
      Label11(f, "Label11"),
      Label13(f, "Label13"),
      Label14(f, "Label14"),
      Label15(f, "Label15"),
      Label12(f, "Label12", 0, 5),
      Label19(f, "Label19"),
      Toolbar1(f, "Toolbar1"),
      Toolbar2(f, "Toolbar2") {
  f.Caption = QStringLiteral("Saisie d'un Tirage");
  f.Width = 10860;
  f.Height = 6840;

  // The keypads on the left, numbers over chance numbers.
  constexpr int left = 240;
  SetLabel(Label15, "Numéros de 1 à 5", left, 120, 5400);
  Label15.FontBold = true;
  Toolbar1.MakeKeypad(50);
  Toolbar1.Move(left, 420, kKeysAcross * kKey, 5 * kKey);
  SetLabel(Label14, "Numéro de la chance", left, 3300, 5400);
  Label14.FontBold = true;
  Toolbar2.MakeKeypad(10);
  Toolbar2.Move(left, 3600, kKeysAcross * kKey, kKey);

  // The steps to follow and the calendar on the right.
  constexpr int right = 6000;
  constexpr int stepWidth = 4200;
  SetLabel(Label1, "1", right, 120, 300);
  SetLabel(Label2, "Sélectionnez les 5 numéros", right + 360, 120, stepWidth);
  SetLabel(Label4, "2", right, 420, 300);
  SetLabel(Label3, "puis le numéro de la chance", right + 360, 420, stepWidth);
  SetLabel(Label5, "3", right, 720, 300);
  SetLabel(Label6, "... et la date du tirage", right + 360, 720, stepWidth);
  SetLabel(Label8, "4", right, 1020, 300);
  SetLabel(Label7, "Cliquez ensuite sur Mise à Jour", right + 360, 1020, stepWidth);
  for (Label* step : {&Label1, &Label4, &Label5, &Label8}) {
    step->FontBold = true;
    step->ForeColor = Colours::Red;
  }
  Calendar1.Move(right, 1440, 4440, 2700);

  // The slots of the entry under the keypads.
  constexpr int slotsTop = 4800;
  constexpr int slot = 600;
  SetLabel(Label9, "Numéros", left, slotsTop - 300, 3600);
  for (int k = 0; k <= 5; ++k) {
    Label& s = Label12(k);
    const int at = k < 5 ? left + k * (slot + 120) : left + 3960;
    SetLabel(s, "?", at, slotsTop, slot, 420);
    s.Alignment = 2;
    s.FontBold = true;
    s.FontSize = 12;
    s.BackColor = Colours::White;
  }
  SetLabel(Label10, "Numéro de la chance", left + 3960, slotsTop - 300, 2400);
  SetLabel(Label13, "(entre 1 et 10)", left + 3960 + slot + 120, slotsTop + 90, 1500);
  SetLabel(Label11, "Date", right + 480, slotsTop - 300, 2400);
  SetLabel(Label19, "?", right + 480, slotsTop, 1920, 420);
  Label19.Alignment = 2;
  Label19.FontBold = true;
  Label19.FontSize = 12;
  Label19.BackColor = Colours::White;

  // The buttons along the bottom.
  constexpr int buttonsTop = 5700;
  MiseJour.Caption = QString::fromUtf8("&Mise à Jour");
  MiseJour.Enabled = false;
  MiseJour.Move(left, buttonsTop, 2400, 480);
  EffaceNumeros.Caption = QString::fromUtf8("&Effacer ces numéros");
  EffaceNumeros.Move(left + 2640, buttonsTop, 2760, 480);
  Quitter.Caption = QStringLiteral("<<  &Retour");
  Quitter.Move(right + 2040, buttonsTop, 2400, 480);

  Toolbar1.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar1_ButtonClick(b); };
  Toolbar2.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar2_ButtonClick(b); };
  Calendar1.Click = [&f] { f.Calendar1_Click(); };
  EffaceNumeros.Click = [&f] { f.EffaceNumeros_Click(); };
  MiseJour.Click = [&f] { f.MiseJour_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

TirSais::TirSais(Program& program) : FormOf(program, kName) {}

void TirSais::Form_Load() {
  // The calendar opens on today's month with no day chosen.
  Calendar& calendar = ui().Calendar1;
  const QDate today = Sys().Today();
  calendar.SetDay(today.day());
  calendar.SetMonth(today.month());
  calendar.SetYear(today.year());
  calendar.SetValue(QDate());
  PlaceAsChild();
}

void TirSais::Toolbar1_ButtonClick(ToolbarButton& Button) {
  Int16 N = KeyNumber(Button);
  // The 50th key is no number: it leads to the about window.
  if (N == 50) {
    App().Win<Propos>().Show(true);
    return;
  }
  ToolbarButton& key = ui().Toolbar1.Buttons(N);
  if (key.Image != N) {
    key.Image = N;
    Choisi = false;
  } else if (NbNumeros < 6) {
    // Always taken: a sixth number is marked here and refused by PlaceNumero.
    key.Image = N + KeypadMarked;
    Choisi = true;
  }
  PlaceNumero(N, Choisi);
}

void TirSais::PlaceNumero(Int16& N, bool& Choisi) {
  TirSaisUi& u = ui();
  if (Choisi) {
    NbNumeros = Add16(NbNumeros, 1);
    if (NbNumeros < 6) {
      for (int k = 0; k <= 4; ++k) {
        if (Val(u.Label12(k).Caption) == 0) {
          u.Label12(k).Caption = QString::number(N);
          ControlToutFait();
          break;
        }
      }
    } else {
      NbNumeros = 5;
      u.Toolbar1.Buttons(N).Image = N;
    }
  } else {
    NbNumeros = Sub16(NbNumeros, 1);
    if (NbNumeros < 1) NbNumeros = 0;
    for (int k = 0; k <= 4; ++k) {
      if (Val(u.Label12(k).Caption) == N) {
        u.Label12(k).Caption = kFree;
        ControlToutFait();
        break;
      }
    }
  }
}

void TirSais::Toolbar2_ButtonClick(ToolbarButton& Button) {
  TirSaisUi& u = ui();
  const Int16 N = KeyNumber(Button);
  ToolbarButton& key = u.Toolbar2.Buttons(N);
  Label& chance = u.Label12(5);
  // Only the marked key can free the slot; another key waits until it is free.
  if (chance.Caption != kFree) {
    if (key.Image == N + KeypadMarked) {
      key.Image = N;
      chance.Caption = kFree;
    }
  } else if (key.Image == N) {
    key.Image = N + KeypadMarked;
    chance.Caption = QString::number(N);
  }
}

void TirSais::Calendar1_Click() {
  TirSaisUi& u = ui();
  DateChoisie = u.Calendar1.Value();
  u.Label19.Caption = ShortDate(DateChoisie);
  ControlToutFait();
}

void TirSais::ControlToutFait() {
  TirSaisUi& u = ui();
  bool complete = u.Label19.Caption != kFree;
  for (int k = 0; k <= 5; ++k) complete = complete && u.Label12(k).Caption != kFree;
  u.MiseJour.Enabled = complete;
}

void TirSais::EffaceSaisie() {
  TirSaisUi& u = ui();
  NbNumeros = 0;
  u.MiseJour.Enabled = false;
  u.Label19.Caption = kFree;
  for (int k = 0; k <= 5; ++k) u.Label12(k).Caption = kFree;
  // The 50th key keeps its own picture.
  for (int k = 1; k <= 49; ++k) u.Toolbar1.Buttons(k).Image = k;
  for (int k = 1; k <= 10; ++k) u.Toolbar2.Buttons(k).Image = k;
}

void TirSais::EffaceNumeros_Click() { EffaceSaisie(); }

void TirSais::MiseJour_Click() {
  TirSaisUi& u = ui();
  Recordset& sorties = *M().RsSorties;
  // The store converts the slot texts; nothing here checks them.
  sorties.AddNew();
  static const char* const kNumbers[] = {"numero1", "numero2", "numero3", "numero4", "numero5"};
  for (int k = 0; k <= 4; ++k)
    sorties.Fields(QLatin1String(kNumbers[k])).SetValue(u.Label12(k).Caption);
  sorties.Fields(QStringLiteral("NumeroChance")).SetValue(u.Label12(5).Caption);
  sorties.Fields(QStringLiteral("DateTirage")).SetValue(u.Label19.Caption);
  sorties.Update();

  // The draw text of the group tables: two digits a number, in slot order.
  QString tirage;
  for (int k = 0; k <= 4; ++k) {
    QString piece = Str(Val(u.Label12(k).Caption)).trimmed();
    if (piece.size() == 1) piece.prepend(QLatin1Char('0'));
    if (k < 4) piece += QLatin1Char(',');
    tirage += piece;
  }
  M().MajGroupes(tirage);
  EffaceSaisie();
}

void TirSais::Quitter_Click() { Unload(); }

void TirSais::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("NbNumeros"), PropValue::Int(NbNumeros));
  sink(QStringLiteral("Choisi"), PropValue::Bool(Choisi));
  sink(QStringLiteral("DateChoisie"), PropValue::Date(DateChoisie));
}

}  // namespace kuvo
