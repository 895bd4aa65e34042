#include "statistics/TirGrou.h"

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

// The columns of a draw, in the order its text is built.
const char* const kColumns[] = {"numero1", "numero2", "numero3",
                                "numero4", "numero5", "NumeroChance"};

// The signed-number text of a column of the current draw: " 3".
QString SignedText(Recordset& rs, const char* column) {
  return Str(Val(ValueText(rs.Fields(QLatin1String(column)).GetValue())));
}

}  // namespace

TirGrouUi::TirGrouUi(TirGrou& f)
    : Picture1(f, "Picture1"),
      Label1(f, "Label1"),
      Label2(f, "Label2"),
      Label4(f, "Label4"),
      Label7(f, "Label7"),
      Image6(f, "Image6"),
      Toolbar1(f, "Toolbar1"),
      Label3(f, "Label3", 0, 4),
      Recherche(f, "Recherche"),
      Efface(f, "Efface"),
      Quitter(f, "Quitter"),
      Picture2(f, "Picture2"),
      Label5(f, "Label5"),
      Liste(f, "Liste"),
      Label6(f, "Label6"),
      Label9(f, "Label9"),
      Label10(f, "Label10"),
      Label8(f, "Label8"),
      Label12(f, "Label12"),
      Label11(f, "Label11"),
      Label13(f, "Label13"),
      Label14(f, "Label14") {
  f.Caption = QStringLiteral("Sorties d'un groupe de numéros");
  f.Width = 11280;
  f.Height = 7200;

  // The two steps, in a frame over the keypad.
  constexpr int left = 240;
  Picture1.Move(left, 120, kKeysAcross * kKey, 780);
  SetLabel(Label1, "1", 120, 90, 300);
  SetLabel(Label2, "Sélectionnez les numéros (5 maxi)", 480, 90, 4200);
  SetLabel(Label4, "2", 120, 420, 300);
  SetLabel(Label7, "... et cliquez sur Recherche", 480, 420, 4200);
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

  // The chosen numbers under the keypad.
  constexpr int chosenTop = 3900;
  for (int i = 0; i <= 4; ++i) {
    Label& n = Label3(i);
    SetLabel(n, "0", left + i * 720, chosenTop, 600, 420);
    n.Alignment = 2;
    n.FontBold = true;
    n.FontSize = 12;
    n.BackColor = Colours::White;
  }

  constexpr int buttonsTop = 4560;
  Recherche.Caption = QStringLiteral("&Recherche");
  Recherche.Move(left, buttonsTop, 2160, 480);
  Efface.Caption = QString::fromUtf8("&Efface la sélection");
  Efface.Move(left + 2400, buttonsTop, 3000, 480);

  // The results on the right: the dates, then the counts and the draw pressed.
  Picture2.Move(5880, 120, 5160, 5280);
  Picture2.Visible = false;
  SetLabel(Label5, "Dates des Tirages", 120, 120, 2400);
  Label5.FontBold = true;
  Liste.Move(120, 420, 2400, 4680);
  SetLabel(Label6, "NbTirages ", 2760, 420, 1200);
  SetLabel(Label9, "", 3960, 420, 1080);
  SetLabel(Label10, "Réussites", 2760, 780, 1200);
  SetLabel(Label8, "", 3960, 780, 1080);
  SetLabel(Label12, "", 3960, 1140, 720);
  SetLabel(Label11, "%", 4740, 1140, 300);
  SetLabel(Label13, "", 2760, 1740, 2280, 480);
  for (Label* value : {&Label9, &Label8, &Label12, &Label13}) {
    value->FontBold = true;
    value->BackColor = Colours::White;
  }
  Label12.Alignment = 1;
  for (Control* c : std::initializer_list<Control*>{&Label5, &Liste, &Label6, &Label9, &Label10,
                                                    &Label8, &Label12, &Label11, &Label13})
    c->Container = &Picture2;

  SetLabel(Label14,
           "Nota.-   Les sorties groupées de jusqu'à 5 numéros, ne tiennent pas compte du "
           "numéro de la chance",
           left, 5640, 10800, 480);
  Quitter.Caption = QStringLiteral("<<  &Retour");
  Quitter.Move(8640, 6240, 2400, 480);

  Toolbar1.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar1_ButtonClick(b); };
  Recherche.Click = [&f] { f.Recherche_Click(); };
  Efface.Click = [&f] { f.Efface_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
  Liste.MouseDown = [&f](Int16 b, Int16 s, double x, double y) { f.Liste_MouseDown(b, s, x, y); };
}

TirGrou::TirGrou(Program& program) : FormOf(program, kName) {}

void TirGrou::Form_Load() {
  PlaceAsChild();
  NbNumeros = 0;
  // The count of the moment, as the shared variable holds it.
  ui().Label9.Caption = QString::number(M().NbTirages);
}

void TirGrou::Toolbar1_ButtonClick(ToolbarButton& Button) {
  Int16 Numero = KeyNumber(Button);
  // The 50th key is no number: it leads to the about window.
  if (Numero == 50) {
    App().Win<Propos>().Show(true);
    return;
  }
  ToolbarButton& key = ui().Toolbar1.Buttons(Numero);
  if (key.Image == Numero) {
    // One above the maximum: PlaceNumero refuses the sixth number.
    if (NbNumeros < 6) {
      key.Image = Numero + KeypadMarked;
      Choisi = true;
    }
  } else {
    key.Image = Numero;
    Choisi = false;
  }
  PlaceNumero(Numero, Choisi);
}

void TirGrou::PlaceNumero(Int16& Numero, bool& Choisi) {
  TirGrouUi& u = ui();
  if (!Choisi) {
    NbNumeros = Sub16(NbNumeros, 1);
    if (NbNumeros < 1) NbNumeros = 0;
    // The other labels stay where they are, so a gap may open.
    for (int i = 0; i <= 4; ++i)
      if (Val(u.Label3(i).Caption) == Numero) u.Label3(i).Caption.clear();
    return;
  }
  NbNumeros = Add16(NbNumeros, 1);
  if (NbNumeros > 5) {
    NbNumeros = 5;
    u.Toolbar1.Buttons(Numero).Image = Numero;
  }
  for (int i = 0; i <= 4; ++i) {
    if (Val(u.Label3(i).Caption) == 0) {
      u.Label3(i).Caption = QString::number(Numero);
      break;
    }
  }
}

void TirGrou::RazTouches() {
  TirGrouUi& u = ui();
  for (int k = 1; k <= 49; ++k) u.Toolbar1.Buttons(k).Image = k;
  for (int i = 0; i <= 4; ++i) u.Label3(i).Caption = QStringLiteral("0");
}

void TirGrou::Efface_Click() {
  NbNumeros = 0;
  RazTouches();
  TirGrouUi& u = ui();
  for (int i = 0; i <= 4; ++i) u.Label3(i).Caption.clear();
  u.Liste.Clear();
  u.Picture2.Visible = false;
}

void TirGrou::Recherche_Click() {
  if (NbNumeros < 1) {
    Sys().MsgBox(QString::fromUtf8("Au moins un numéro"), Mb::OkOnly | Mb::Information, QString());
    return;
  }
  // The first NbNumeros labels, in their order, gaps included.
  QString groupe;
  for (int i = 0; i <= NbNumeros - 1; ++i) {
    QString piece = ui().Label3(i).Caption;
    if (piece.size() == 1) piece.prepend(QLatin1Char('0'));
    groupe += piece + QLatin1Char(',');
  }
  ui().Label8.Caption.clear();
  ui().Liste.Clear();
  Int16 taille = NbNumeros;
  Int16 trouves = 0;
  ChercheSortieGroupe(groupe, taille, trouves);
  TirGrouUi& u = ui();
  if (trouves != 0) {
    u.Label8.Caption = QString::number(trouves);
    const double taux = DivDbl(Val(u.Label8.Caption), Val(u.Label9.Caption)) * 100;
    u.Label12.Caption = FormatNumber(taux, QStringLiteral("##.#"));
  } else {
    u.Picture2.Visible = false;
    Sys().MsgBox(QString::fromUtf8("Pas de sorties groupées des numéros sélectionnés\n\r"),
                 Mb::OkOnly | Mb::Information, QString());
  }
}

void TirGrou::ChercheSortieGroupe(const QString& Groupe, Int16& TailleGroupe, Int16& NbTrouves) {
  NbTrouves = 0;
  // Each piece keeps its comma; a text after the last comma is dropped.
  QString pieces[7];
  QString courant;
  Int16 compte = 0;
  for (const QChar c : Groupe) {
    if (c != QLatin1Char(',')) {
      courant += c;
    } else {
      compte = Add16(compte, 1);
      if (compte > 6) Raise(Err::SubscriptOutOfRange);
      pieces[compte] = courant + QLatin1Char(',');
      courant.clear();
    }
  }

  Recordset& rs = *M().RsSorties;
  const bool listing = M().ModeGroupe == 1;
  TirGrouUi& u = ui();
  // The columns are looked up once; each reads the current draw.
  std::vector<Field> columns;
  for (const char* column : kColumns) columns.push_back(rs.Fields(QLatin1String(column)));
  const Field date = rs.Fields(QStringLiteral("DateTirage"));
  rs.MoveFirst();
  while (!rs.Eof()) {
    // "03,12,45,46,49,07,": the five numbers and the chance number, two digits each.
    QString tirage;
    for (const Field& column : columns) {
      QString t = ValueText(column.GetValue()).trimmed();
      if (t.size() == 1) t.prepend(QLatin1Char('0'));
      tirage += t + QLatin1Char(',');
    }
    Int16 presents = 0;
    for (int k = 1; k <= TailleGroupe; ++k) {
      if (k > 6) Raise(Err::SubscriptOutOfRange);
      if (tirage.contains(pieces[k])) ++presents;
    }
    if (presents == TailleGroupe) {
      NbTrouves = Add16(NbTrouves, 1);
      if (listing) {
        u.Picture2.Visible = true;
        u.Liste.AddItem(FormatDate(date.GetValue().toDate(), QStringLiteral("dd mmmm yyyy")));
      }
    }
    rs.MoveNext();
  }
}

void TirGrou::Liste_MouseDown(Int16, Int16, double, double) {
  TirGrouUi& u = ui();
  const QString item = u.Liste.Item(u.Liste.ListIndex());
  u.Label13.Caption = item;
  // The store reads the date from the item's text; a miss is not looked at.
  Recordset& rs = *M().RsSorties;
  rs.SetIndex(QStringLiteral("DateTirage"));
  rs.Seek(QStringLiteral("="), item);
  QStringList numbers;
  for (const char* column : kColumns) numbers << SignedText(rs, column);
  u.Label13.Caption = numbers.join(QLatin1Char(','));
}

void TirGrou::Quitter_Click() {
  M().ModeGroupe = 0;
  Unload();
}

void TirGrou::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("NbNumeros"), PropValue::Int(NbNumeros));
  sink(QStringLiteral("Choisi"), PropValue::Bool(Choisi));
}

}  // namespace kuvo
