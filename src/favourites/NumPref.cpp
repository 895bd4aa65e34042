#include "favourites/NumPref.h"

#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

constexpr int kKey = 480;
constexpr int kKeysAcross = 10;

const char* const kColumns[] = {"numero1", "numero2", "numero3",
                                "numero4", "numero5", "NumeroChance"};

// A line break inside a message: line feed, then carriage return.
const QString kBreak = QStringLiteral("\n\r");

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
}

void SetButton(CommandButton& button, const char* caption, int left, int top, int width) {
  button.Caption = QString::fromUtf8(caption);
  button.Move(left, top, width, 420);
}

}  // namespace

NumPrefUi::NumPrefUi(NumPref& f)
    : Grille(f, "Grille"),
      Toolbar1(f, "Toolbar1"),
      Toolbar2(f, "Toolbar2"),
      Label3(f, "Label3", 0, 5),
      Saisir(f, "Saisir"),
      Supprime(f, "Supprime"),
      Compare(f, "Compare"),
      Retour(f, "Retour"),
      Label1(f, "Label1"),
      Label4(f, "Label4"),
      Label2(f, "Label2"),
      Label17(f, "Label17"),
      Label6(f, "Label6"),
      Label7(f, "Label7"),
      Label9(f, "Label9"),
      Label8(f, "Label8"),
      Label10(f, "Label10") {
  f.Caption = QString::fromUtf8("Mes Tirages Préférés ");
  f.Width = 11520;
  f.Height = 7320;

  // The favourites on the left, with deletion and comparison under them.
  constexpr int left = 240;
  constexpr int leftWidth = 4560;
  SetLabel(Label1, "Mes tirages préférés", left, 120, leftWidth);
  Label1.FontBold = true;
  Grille.SetCols(6);
  Grille.SetRows(2);
  Grille.FixedRows = 1;
  Grille.SetFixedCols(0);
  Grille.SetFormatString(QString::fromUtf8("  N° 1 | N° 2 | N° 3 | N° 4 | N° 5 | N° Pref"));
  for (int c = 0; c < 6; ++c) Grille.SetColWidth(c, 720);
  Grille.Move(left, 420, leftWidth, 3360);

  SetLabel(Label7, "Supprimer un tirage", left, 3960, leftWidth);
  Label7.FontBold = true;
  SetLabel(Label9, "Cliquez (dans la liste) sur le tirage, puis sur &Supprimer", left, 4230,
           leftWidth, 420);
  SetButton(Supprime, "S&upprimer", left, 4680, 1800);
  Supprime.Enabled = false;

  SetLabel(Label8, "Comparer un tirage", left, 5280, leftWidth);
  Label8.FontBold = true;
  SetLabel(Label10,
           "Entrer les 5 numéros, puis le numéro de la chance et ensuite cliquez sur &Comparer",
           left, 5550, leftWidth, 420);
  SetButton(Compare, "&Comparer", left, 6000, 1800);

  // The keypads and the slots of the draw on the right.
  constexpr int right = 5160;
  constexpr int rightWidth = 6120;
  SetLabel(Label17, "Saisir un nouveau tirage preferé", right, 120, rightWidth);
  Label17.FontBold = true;
  SetLabel(Label6,
           "Entrer les 5 numéros, puis lenuméro de la chance et ensuite cliquez sur &Saisir", right,
           390, rightWidth, 420);
  SetLabel(Label4, "Numéros", right, 900, 2400);
  Toolbar1.MakeKeypad(49);
  Toolbar1.Move(right, 1140, kKeysAcross * kKey, 5 * kKey);
  SetLabel(Label2, "Numéro Chance", right, 3660, 2400);
  Toolbar2.MakeKeypad(10);
  Toolbar2.Move(right, 3900, kKeysAcross * kKey, kKey);

  constexpr int slot = 720;
  for (int k = 0; k <= 5; ++k) {
    Label& s = Label3(k);
    const int at = k < 5 ? right + k * (slot + 60) : right + 4320;
    SetLabel(s, "Label3", at, 4560, slot, 420);
    s.Alignment = 2;
    s.FontBold = true;
    s.BackColor = Colours::White;
  }
  SetButton(Saisir, "&Saisir", right, 5160, 1800);
  Saisir.Enabled = false;
  SetButton(Retour, "<<  &Retour", right + 4080, 6000, 1800);

  Toolbar1.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar1_ButtonClick(b); };
  Toolbar2.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar2_ButtonClick(b); };
  Grille.Click = [&f] { f.Grille_Click(); };
  Saisir.Click = [&f] { f.Saisir_Click(); };
  Supprime.Click = [&f] { f.Supprime_Click(); };
  Compare.Click = [&f] { f.Compare_Click(); };
  Retour.Click = [&f] { f.Retour_Click(); };
}

NumPref::NumPref(Program& program) : FormOf(program, kName) {}

void NumPref::Form_Load() {
  PlaceAsChild();
  // Only the count of numbers starts afresh; the other variables keep their values.
  NbNumeros = 0;
  Recordset& mes = *M().RsMesNumeros;
  if (mes.RecordCount() == 0) return;
  mes.MoveLast();
  mes.MoveFirst();
  const long long n = mes.RecordCount();
  Grid& grille = ui().Grille;
  grille.SetRows(static_cast<int>(n + 2));
  int i = 1;
  for (;; ++i) {
    grille.Row = i;
    if (mes.Eof()) break;
    for (int c = 0; c <= 5; ++c)
      grille.SetTextMatrix(i, c, ValueText(mes.Fields(QLatin1String(kColumns[c])).GetValue()));
    mes.MoveNext();
  }
  // The row after the last favourite is still empty: it goes.
  grille.RemoveItem(i);
}

void NumPref::Toolbar1_ButtonClick(ToolbarButton& Button) {
  Int16 k = KeyNumber(Button);
  ToolbarButton& key = ui().Toolbar1.Buttons(k);
  if (key.Image == k) {
    if (NbNumeros < 6) {
      key.Image = k + KeypadMarked;
      Choisi = -1;
    }
  } else {
    key.Image = k;
    Choisi = 0;
  }
  PlaceNumero(k, Choisi);
}

void NumPref::PlaceNumero(Int16& Numero, Int16& Choisi) {
  NumPrefUi& u = ui();
  if (Choisi != 0) {
    NbNumeros = Add16(NbNumeros, 1);
    if (NbNumeros > 5) {
      // A sixth number is refused without a word.
      NbNumeros = 5;
      u.Toolbar1.Buttons(Numero).Image = Numero;
    } else {
      for (int i = 0; i <= 4; ++i) {
        if (Val(u.Label3(i).Caption) == 0) {
          u.Label3(i).Caption = QString::number(Numero);
          ControlToutFait();
          break;
        }
      }
    }
  } else {
    NbNumeros = Sub16(NbNumeros, 1);
    if (NbNumeros < 1) NbNumeros = 0;
    for (int i = 0; i <= 4; ++i) {
      if (Val(u.Label3(i).Caption) == Numero) {
        u.Label3(i).Caption.clear();
        ControlToutFait();
        break;
      }
    }
  }
}

void NumPref::Toolbar2_ButtonClick(ToolbarButton& Button) {
  Int16 k = KeyNumber(Button);
  ToolbarButton& key = ui().Toolbar2.Buttons(k);
  if (key.Image == k) {
    if (NbChance < 2) {
      key.Image = k + KeypadMarked;
      Choisi = -1;
    }
  } else {
    key.Image = k;
    Choisi = 0;
  }
  PlaceChance(k, Choisi);
}

void NumPref::PlaceChance(Int16& Numero, Int16& Choisi) {
  NumPrefUi& u = ui();
  // The slots searched run from 5 to 6, one past the last slot: slot 5 is
  // always the one found first.
  if (Choisi != 0) {
    NbChance = Add16(NbChance, 1);
    if (NbChance < 2) {
      for (int i = 5; i <= 6; ++i) {
        if (Val(u.Label3(i).Caption) == 0) {
          u.Label3(i).Caption = QString::number(Numero);
          ControlToutFait();
          break;
        }
      }
    } else {
      NbChance = 1;
      u.Toolbar2.Buttons(Numero).Image = Numero;
    }
  } else {
    NbChance = Sub16(NbChance, 1);
    if (NbChance < 1) NbChance = 0;
    for (int i = 5; i <= 6; ++i) {
      if (Val(u.Label3(i).Caption) == Numero) {
        u.Label3(i).Caption = QStringLiteral("?");
        ControlToutFait();
        break;
      }
    }
  }
}

void NumPref::ControlToutFait() {
  NumPrefUi& u = ui();
  bool complete = true;
  for (int i = 0; i <= 5; ++i) complete = complete && Val(u.Label3(i).Caption) != 0;
  u.Saisir.Enabled = complete;
}

void NumPref::RemiseAZero() {
  NumPrefUi& u = ui();
  for (int i = 1; i <= 49; ++i) u.Toolbar1.Buttons(i).Image = i;
  for (int i = 1; i <= 10; ++i) u.Toolbar2.Buttons(i).Image = i;
  for (int i = 0; i <= 5; ++i) u.Label3(i).Caption.clear();
  u.Saisir.Enabled = false;
  u.Supprime.Enabled = false;
  NbNumeros = 0;
  NbChance = 0;
}

void NumPref::Saisir_Click() {
  NumPrefUi& u = ui();
  Recordset& mes = *M().RsMesNumeros;
  mes.AddNew();
  for (int c = 0; c <= 5; ++c) mes.Fields(QLatin1String(kColumns[c])).SetValue(u.Label3(c).Caption);
  mes.Update();

  Grid& grille = u.Grille;
  grille.AddItem(QString());
  grille.Row = static_cast<int>(mes.RecordCount());
  for (int c = 0; c <= 5; ++c) grille.SetTextMatrix(grille.Row, c, u.Label3(c).Caption);
  grille.Refresh();
  RemiseAZero();
  NbNumeros = 0;
}

void NumPref::Grille_Click() {
  NumPrefUi& u = ui();
  LigneChoisie = ToInt16(u.Grille.Row);
  TexteLigne.clear();
  for (int c = 0; c <= 5; ++c) TexteLigne += u.Grille.TextMatrix(LigneChoisie, c);
  u.Supprime.Enabled = true;
}

void NumPref::Supprime_Click() {
  NumPrefUi& u = ui();
  Recordset& mes = *M().RsMesNumeros;
  mes.MoveLast();
  mes.MoveFirst();
  // A favourite is known by its six texts run together, without separators.
  bool found = false;
  while (!mes.Eof()) {
    QString joined;
    for (const char* column : kColumns)
      joined += ValueText(mes.Fields(QLatin1String(column)).GetValue()).trimmed();
    if (joined.trimmed() == TexteLigne) {
      found = true;
      break;
    }
    mes.MoveNext();
  }
  if (found) {
    mes.Delete();
    Grid& grille = u.Grille;
    if (grille.Rows() > 2) {
      grille.RemoveItem(LigneChoisie);
    } else {
      // The grid keeps one row under its header.
      grille.Row = 1;
      for (int c = 0; c <= 5; ++c) grille.SetTextMatrix(1, c, QString());
    }
  }
  RemiseAZero();
}

void NumPref::Compare_Click() {
  NumPrefUi& u = ui();
  Grid& grille = u.Grille;
  Int16 Reussites = 0;
  const int rows = grille.Rows();
  std::vector<QString> TexteFavori(static_cast<size_t>(rows + 1));
  std::vector<QString> Reussite(static_cast<size_t>(rows + 1));
  for (int i = 1; i <= rows - 1; ++i) {
    grille.Row = i;
    QString& favori = TexteFavori[static_cast<size_t>(i)];
    QString& reussite = Reussite[static_cast<size_t>(i)];
    for (int j = 0; j <= 5; ++j) favori += QStringLiteral(" - ") + grille.TextMatrix(i, j);
    // Position by position: the keyed number j against column j only.
    for (int j = 0; j <= 5; ++j) {
      const QString cell = grille.TextMatrix(i, j);
      if (cell == u.Label3(j).Caption) {
        if (!reussite.isEmpty()) reussite += QStringLiteral(" - ");
        reussite += cell;
        Reussites = Add16(Reussites, 1);
      }
    }
  }
  QString message;
  if (Reussites == 0) {
    message = QString::fromUtf8("Pas de réussite dans ce tirage");
  } else {
    message = QString::fromUtf8("Liste des réussites") + QLatin1Char(' ') + kBreak + kBreak;
    for (int i = 0; i <= rows; ++i) {
      const QString& reussite = Reussite[static_cast<size_t>(i)];
      if (reussite.isEmpty()) continue;
      message += QStringLiteral("Dans le tirage") + QLatin1Char(' ') +
                 TexteFavori[static_cast<size_t>(i)] + QStringLiteral("  => ") + reussite + kBreak +
                 kBreak;
    }
  }
  Sys().MsgBox(message, Mb::OkOnly, QString());
  RemiseAZero();
}

void NumPref::Retour_Click() { Unload(); }

void NumPref::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("NbNumeros"), PropValue::Int(NbNumeros));
  sink(QStringLiteral("NbChance"), PropValue::Int(NbChance));
  sink(QStringLiteral("Choisi"), PropValue::Int(Choisi));
  sink(QStringLiteral("TexteLigne"), PropValue::Text(TexteLigne));
  sink(QStringLiteral("LigneChoisie"), PropValue::Int(LigneChoisie));
}

}  // namespace kuvo
