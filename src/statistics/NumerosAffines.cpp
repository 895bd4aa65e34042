#include "statistics/NumerosAffines.h"

#include "about/Propos.h"
#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

// Keypad keys are square; the keypad wraps after ten keys.
constexpr int kKey = 540;
constexpr int kKeysAcross = 10;

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
}

// A column of the current draw read as a 16-bit integer.
Int16 ColumnInt16(const Field& column) {
  const Value v = column.GetValue();
  if (v.isNull()) Raise(Err::InvalidUseOfNull);
  if (v.typeId() == QMetaType::QString) return CInt(CDbl(v.toString()));
  return CInt(v.toDouble());
}

const char* const kColumns[] = {"numero1", "numero2", "numero3",
                                "numero4", "numero5", "NumeroChance"};

}  // namespace

NumerosAffinesUi::NumerosAffinesUi(NumerosAffines& f)
    : Picture1(f, "Picture1"),
      Label1(f, "Label1"),
      Label2(f, "Label2"),
      Label4(f, "Label4"),
      Label7(f, "Label7"),
      Image6(f, "Image6"),
      Toolbar1(f, "Toolbar1"),
      Label8(f, "Label8", 0, 2),
      Recherche(f, "Recherche"),
      Efface(f, "Efface"),
      Quitter(f, "Quitter"),
      Label6(f, "Label6"),
      Grille(f, "Grille"),
      Label3(f, "Label3"),
      Label5(f, "Label5") {
  f.Caption = QString::fromUtf8("Numéros Affines");
  f.Width = 10200;
  f.Height = 7200;

  // The two steps, in a frame over the keypad.
  constexpr int left = 240;
  Picture1.Move(left, 120, kKeysAcross * kKey, 780);
  SetLabel(Label1, "1", 120, 90, 300);
  SetLabel(Label2, "Choisir les nombres (3 maximum)", 480, 90, 4200);
  SetLabel(Label4, "2", 120, 420, 300);
  SetLabel(Label7, "... et cliquer Chercher", 480, 420, 4200);
  for (Label* l : {&Label1, &Label2, &Label4, &Label7}) l->Container = &Picture1;
  for (Label* step : {&Label1, &Label4}) {
    step->FontBold = true;
    step->ForeColor = Colours::Red;
  }
  Image6.Move(4800, 150, 480, 480);
  Image6.Container = &Picture1;
  Image6.Picture = 2;

  Toolbar1.MakeKeypad(50);
  Toolbar1.Move(left, 1020, kKeysAcross * kKey, 5 * kKey);

  // The chosen numbers under the keypad, then the buttons.
  for (int i = 0; i <= 2; ++i) {
    Label& n = Label8(i);
    SetLabel(n, "", left + i * 720, 3900, 600, 420);
    n.Alignment = 2;
    n.FontBold = true;
    n.FontSize = 12;
    n.BackColor = Colours::White;
  }
  Recherche.Caption = QStringLiteral("&Chercher");
  Recherche.Move(left, 4560, 2160, 480);
  Efface.Caption = QString::fromUtf8("&Effacer la sélection");
  Efface.Move(left + 2400, 4560, 3000, 480);

  // The ranking on the right.
  SetLabel(Label6, "Numéros Affines", 5880, 120, 3960);
  Label6.FontBold = true;
  Grille.Move(5880, 420, 3960, 4620);
  Grille.SetCols(3);
  Grille.FixedRows = 1;
  Grille.SetFixedCols(1);
  Grille.SetFormatString(QString::fromUtf8("Numéros | Sorties |   %  "));
  for (int c = 0; c <= 2; ++c) Grille.SetColWidth(c, 1080);

  // The notes along the bottom.
  SetLabel(Label3,
           "Si Vous choisissez un seul numéro, vous aurez tous les numéros sortis avec lui "
           "ainsi que le nombre de sorties",
           left, 5280, 9600, 420);
  SetLabel(Label5,
           "En choisissant deux ou trois, vous aurez  les numéros qui seront  sortis avec "
           "l'ensemble de ceux sélectionnés.",
           left, 5700, 9600, 420);
  Quitter.Caption = QStringLiteral("<<  &Quitter");
  Quitter.Move(7440, 6240, 2400, 480);

  Toolbar1.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar1_ButtonClick(b); };
  Recherche.Click = [&f] { f.Recherche_Click(); };
  Efface.Click = [&f] { f.Efface_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

NumerosAffines::NumerosAffines(Program& program) : FormOf(program, kName) {}

void NumerosAffines::Form_Load() {
  PlaceAsChild();
  NbNumeros = 0;
}

void NumerosAffines::Toolbar1_ButtonClick(ToolbarButton& Button) {
  Int16 Numero = KeyNumber(Button);
  // The 50th key is no number: it leads to the about window, not modal here.
  if (Numero == 50) {
    App().Win<Propos>().Show(false);
    return;
  }
  ToolbarButton& key = ui().Toolbar1.Buttons(Numero);
  if (key.Image == Numero) {
    // At the maximum, neither the image nor Choisi changes.
    if (NbNumeros < 3) {
      key.Image = Numero + KeypadMarked;
      Choisi = true;
    }
  } else {
    key.Image = Numero;
    Choisi = false;
  }
  PlaceNumero(Numero, Choisi);
}

void NumerosAffines::PlaceNumero(Int16& Numero, bool& Choisi) {
  NumerosAffinesUi& u = ui();
  if (!Choisi) {
    NbNumeros = Sub16(NbNumeros, 1);
    if (NbNumeros < 1) NbNumeros = 0;
    for (int i = 0; i <= 2; ++i)
      if (Val(u.Label8(i).Caption) == Numero) u.Label8(i).Caption.clear();
    return;
  }
  NbNumeros = Add16(NbNumeros, 1);
  if (NbNumeros > 3) NbNumeros = 3;
  for (int i = 0; i <= 2; ++i) {
    if (Val(u.Label8(i).Caption) == 0) {
      u.Label8(i).Caption = QString::number(Numero);
      break;
    }
  }
}

void NumerosAffines::RazTouches() {
  for (int k = 1; k <= 49; ++k) ui().Toolbar1.Buttons(k).Image = k;
}

void NumerosAffines::Efface_Click() {
  NbNumeros = 0;
  RazTouches();
  NumerosAffinesUi& u = ui();
  for (int i = 0; i <= 2; ++i) u.Label8(i).Caption.clear();
  u.Grille.SetRows(2);
  for (int c = 0; c <= 2; ++c) u.Grille.SetTextMatrix(1, c, QString());
}

void NumerosAffines::Recherche_Click() {
  if (NbNumeros == 0) {
    Sys().MsgBox(QString::fromUtf8("Sélectionnez au moins un numéro"), Mb::OkOnly | Mb::Information,
                 QString());
    return;
  }
  Module1& m = M();
  m.StatNumeros.assign(50, EnregStat{});
  for (int i = 1; i <= 49; ++i) m.StatNumeros[static_cast<size_t>(i)].Numero = i;

  // The chosen numbers from index 1, gaps among the labels closed.
  Int16 compte = 0;
  for (int i = 0; i <= 2; ++i) {
    const QString caption = ui().Label8(i).Caption;
    if (caption.isEmpty()) continue;
    compte = Add16(compte, 1);
    Retenu[compte] = CInt(CDbl(caption));
  }

  Recordset& rs = *m.RsSorties;
  // The columns are looked up once; each reads the current draw.
  std::vector<Field> columns;
  for (const char* column : kColumns) columns.push_back(rs.Fields(QLatin1String(column)));
  rs.MoveFirst();
  while (!rs.Eof()) {
    for (int p = 1; p <= 6; ++p) TirageLu[p] = ColumnInt16(columns[static_cast<size_t>(p - 1)]);
    CompteTirage();
    rs.MoveNext();
  }
  m.NbTirages = ToInt16(rs.RecordCount());

  // Rates of all draws, rounded through the mask and read back.
  const double tirages = static_cast<double>(rs.RecordCount());
  for (int i = 1; i <= 49; ++i) {
    EnregStat& e = m.StatNumeros[static_cast<size_t>(i)];
    if (e.NbSorties != 0)
      e.Taux = CDbl(FormatNumber(DivDbl(e.NbSorties, tirages) * 100, QStringLiteral("##.##")));
    else
      e.Taux = 0;
  }
  m.TriTaux(49, m.StatNumeros);

  Grid& grille = ui().Grille;
  grille.SetRows(50);
  for (int i = 1; i <= 49; ++i) {
    const EnregStat& e = m.StatNumeros[static_cast<size_t>(i)];
    grille.SetTextMatrix(i, 0, NumText(e.Numero));
    grille.SetTextMatrix(i, 1, NumText(e.NbSorties));
    grille.SetTextMatrix(i, 2, NumText(e.Taux));
  }
}

void NumerosAffines::ComptePlace(int p) {
  // Element n is still number n while the draws are counted.
  const int n = TirageLu[p];
  std::vector<EnregStat>& stat = M().StatNumeros;
  if (n < 0 || n >= static_cast<int>(stat.size())) Raise(Err::SubscriptOutOfRange);
  EnregStat& e = stat[static_cast<size_t>(n)];
  e.NbSorties = Add16(e.NbSorties, 1);
}

void NumerosAffines::CompteTirage() {
  // The chance number is a sixth place, both where a chosen number may stand
  // and where an affine number is counted.
  if (NbNumeros == 1) {
    for (int i = 1; i <= 6; ++i) {
      if (TirageLu[i] != Retenu[1]) continue;
      for (int p = 1; p <= 6; ++p)
        if (p != i) ComptePlace(p);
      return;
    }
  } else if (NbNumeros == 2) {
    Int16 Trouve = 0;
    for (int i = 1; i <= 6; ++i) {
      if (TirageLu[i] == Retenu[1]) {
        for (int j = 1; j <= 6; ++j) {
          if (TirageLu[j] != Retenu[2]) continue;
          for (int p = 1; p <= 6; ++p)
            if (p != i && p != j) ComptePlace(p);
          Trouve = 1;
          break;
        }
      }
      if (Trouve == 1) return;
    }
  } else if (NbNumeros == 3) {
    // Every place of the second number counts, so a draw can count twice.
    Int16 Trouve = 0;
    for (int i = 1; i <= 6; ++i) {
      if (TirageLu[i] == Retenu[1]) {
        for (int j = 1; j <= 6; ++j) {
          if (TirageLu[j] != Retenu[2]) continue;
          for (int k = 1; k <= 6; ++k) {
            if (TirageLu[k] != Retenu[3]) continue;
            for (int p = 1; p <= 6; ++p)
              if (p != i && p != j && p != k) ComptePlace(p);
            Trouve = 1;
            break;
          }
        }
      }
      if (Trouve == 1) return;
    }
  }
}

void NumerosAffines::Quitter_Click() { Unload(); }

void NumerosAffines::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("NbNumeros"), PropValue::Int(NbNumeros));
  sink(QStringLiteral("Choisi"), PropValue::Bool(Choisi));
  for (int i = 0; i <= 3; ++i) sink(QStringLiteral("Retenu(%1)").arg(i), PropValue::Int(Retenu[i]));
  for (int i = 0; i <= 7; ++i)
    sink(QStringLiteral("TirageLu(%1)").arg(i), PropValue::Int(TirageLu[i]));
}

}  // namespace kuvo
