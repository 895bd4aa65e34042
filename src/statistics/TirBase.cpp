#include "statistics/TirBase.h"

#include <cmath>

#include "core/Avance.h"
#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

// The window's two heights: the grids alone, then the grids over the chart.
constexpr int kCourte = 5300;
constexpr int kHaute = 9300;

const QString kNumeros[] = {QStringLiteral("numero1"), QStringLiteral("numero2"),
                            QStringLiteral("numero3"), QStringLiteral("numero4"),
                            QStringLiteral("numero5")};
const QString kChance = QStringLiteral("NumeroChance");

void SetLabel(Label& label, const char* caption, int left, int top, int width) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, 255);
}

void SetGrid(Grid& grid, int rows, int cols, const char* format, std::initializer_list<int> widths,
             int left, int top, int width, int height) {
  grid.SetRows(rows);
  grid.SetCols(cols);
  grid.FixedRows = 1;
  grid.SetFixedCols(1);
  grid.SetFormatString(QString::fromUtf8(format));
  int col = 0;
  for (int w : widths) grid.SetColWidth(col++, w);
  grid.Move(left, top, width, height);
}

// A value of the store used as an index of StatNumeros: a whole number, or a
// number rounded as an index is.
Int16 Indice(const QVariant& value) {
  if (value.isNull()) Raise(Err::InvalidUseOfNull);
  if (value.typeId() == QMetaType::LongLong) return ToInt16(value.toLongLong());
  return CInt(CDbl(ValueText(value)));
}

// The statistics record of a number; a number outside 0..49 is out of range.
EnregStat& Element(std::vector<EnregStat>& stat, int number) {
  if (number < 0 || number >= static_cast<int>(stat.size())) Raise(Err::SubscriptOutOfRange);
  return stat[static_cast<size_t>(number)];
}

}  // namespace

TirBaseUi::TirBaseUi(TirBase& f)
    : Label1(f, "Label1"),
      Liste1(f, "Liste1"),
      Label5(f, "Label5"),
      Liste2(f, "Liste2"),
      Label3(f, "Label3"),
      Liste3(f, "Liste3"),
      Label2(f, "Label2"),
      Liste4(f, "Liste4"),
      Image6(f, "Image6"),
      Quitter(f, "Quitter"),
      GraphiquePlus(f, "GraphiquePlus"),
      GraphiqueMoins(f, "GraphiqueMoins"),
      Label4(f, "Label4"),
      Picture1(f, "Picture1"),
      Picture2(f, "Picture2"),
      Plus(f, "Plus"),
      Moins(f, "Moins") {
  f.Caption = QStringLiteral("Visualisation de la Base");
  f.Width = 13080;
  f.Height = kHaute;

  // Four grids side by side, each under its heading.
  SetLabel(Label1, "Numéros par ordre croissant", 120, 120, 2640);
  SetGrid(Liste1, 50, 3, " Numéro | Sorties|   %  ", {780, 720, 660}, 120, 420, 2520, 3600);
  SetLabel(Label5, "Numéros taux de Reusite", 2760, 120, 2520);
  SetGrid(Liste2, 50, 3, " Numéro | Sorties|   %  ", {780, 720, 660}, 2760, 420, 2520, 3600);
  SetLabel(Label3, "", 5400, 120, 4800);
  SetGrid(Liste3, 2, 7, "Date                        |  1 |  2 |  3 |  4 |  5 | Chance",
          {1800, 375, 375, 375, 375, 375, 720}, 5400, 420, 4800, 3600);
  SetLabel(Label2, "Numéro Chance", 10320, 120, 2400);
  SetGrid(Liste4, 11, 3, " Numéro | Sorties|   %  ", {780, 720, 600}, 10320, 420, 2400, 2880);
  Image6.Picture = 2;
  Image6.Move(11280, 3480, 480, 480);

  // The buttons along the lower edge of the short form; the two chart buttons
  // share one place.
  Quitter.Caption = QStringLiteral("<<  &Retour au menu");
  Quitter.Move(120, 4200, 2400, 420);
  GraphiquePlus.Caption = QStringLiteral("&Graphique  >>");
  GraphiquePlus.Move(10320, 4200, 2400, 420);
  GraphiqueMoins.Caption = QStringLiteral("<<  &Graphique");
  GraphiqueMoins.Move(10320, 4200, 2400, 420);
  GraphiqueMoins.Visible = false;

  // The chart, below the lower edge of the short form: its caption, the
  // drawing area and its scale buttons beside it.
  Label4.Move(120, 4925, 8535, 225);
  Picture1.Move(120, 5150, 8535, 3495);
  Picture1.ScaleMode = Scale::Millimetres;
  Picture1.BorderStyle = 0;
  Picture2.Move(8880, 5150, 1200, 3495);
  Plus.Caption = QStringLiteral("+");
  Plus.Container = &Picture2;
  Plus.Move(240, 840, 720, 615);
  Moins.Caption = QStringLiteral("-");
  Moins.Container = &Picture2;
  Moins.Move(240, 1920, 720, 615);

  Quitter.Click = [&f] { f.Quitter_Click(); };
  GraphiquePlus.Click = [&f] { f.GraphiquePlus_Click(); };
  GraphiqueMoins.Click = [&f] { f.GraphiqueMoins_Click(); };
  Plus.Click = [&f] { f.Plus_Click(); };
  Moins.Click = [&f] { f.Moins_Click(); };
  Picture1.MouseMove = [&f](Int16 button, Int16 shift, double x, double y) {
    f.Picture1_MouseMove(button, shift, x, y);
  };
}

TirBase::TirBase(Program& program) : FormOf(program, kName) {}

void TirBase::Form_Load() {
  Module1& m = M();
  Platform& sys = Sys();
  TirBaseUi& u = ui();

  Height = kCourte;
  PlaceAsChild();
  sys.SetMousePointer(Pointer::Wait);
  m.StatNumeros.assign(50, EnregStat{});

  // Chance numbers are counted in a table of this load only; a count never
  // reached stays empty.
  QVariant TableChance[11][3];
  for (int i = 1; i <= 10; ++i) TableChance[i][1] = i;

  Recordset& rs = *m.RsSorties;
  m.NbTirages = ToInt16(rs.RecordCount());
  rs.SetIndex(QStringLiteral("DateTirage"));
  rs.MoveLast();
  rs.MoveFirst();
  Avance& avance = App().Win<Avance>();
  avance.Depart(QStringLiteral("Lecture de la base de données"), Add16(m.NbTirages, 1), 1);
  u.Liste3.SetRows(Add16(m.NbTirages, 1));

  Int16 ligne = 1;
  while (!rs.Eof()) {
    const QVariant date = rs.Fields(QStringLiteral("DateTirage")).GetValue();
    if (date.isNull()) Raise(Err::InvalidUseOfNull);
    u.Liste3.SetTextMatrix(ligne, 0, FormatDate(date.toDate(), QStringLiteral("dd mmmm yyyy")));
    QVariant valeurs[6];
    for (int k = 0; k < 5; ++k) valeurs[k] = rs.Fields(kNumeros[k]).GetValue();
    valeurs[5] = rs.Fields(kChance).GetValue();
    for (int k = 0; k < 6; ++k) u.Liste3.SetTextMatrix(ligne, k + 1, ValueText(valeurs[k]));

    // The chance number counts as an outing of the number of the same value.
    for (const QVariant& v : valeurs) {
      EnregStat& e = Element(m.StatNumeros, Indice(v));
      e.NbSorties = Add16(e.NbSorties, 1);
    }
    const double chance = valeurs[5].toDouble();
    for (int i = 1; i <= 10; ++i) {
      if (TableChance[i][1].toDouble() == chance) {
        TableChance[i][2] = TableChance[i][2].isNull() ? 1 : TableChance[i][2].toInt() + 1;
        break;
      }
    }
    avance.Increment();
    rs.MoveNext();
    ligne = Add16(ligne, 1);
  }

  u.Label3.Caption =
      QStringLiteral("  Nombre de tirages :  ") + Str(m.NbTirages) + QStringLiteral("  ");

  // Rates rounded to one decimal through their text, before the ranking.
  for (int i = 1; i <= 49; ++i) {
    EnregStat& e = m.StatNumeros[static_cast<size_t>(i)];
    e.Numero = i;
    const double x = static_cast<double>(e.NbSorties) / static_cast<double>(m.NbTirages) * 100;
    e.Taux = x == 0 ? 0 : CDbl(FormatNumber(x, QStringLiteral("##.#")));
    u.Liste1.SetTextMatrix(i, 0, QString::number(i));
    u.Liste1.SetTextMatrix(i, 1, QString::number(e.NbSorties));
    u.Liste1.SetTextMatrix(i, 2, NumText(e.Taux));
  }
  avance.Unload();

  m.TriTaux(49, m.StatNumeros);
  for (int i = 1; i <= 49; ++i) {
    const EnregStat& e = m.StatNumeros[static_cast<size_t>(i)];
    u.Liste2.SetTextMatrix(i, 0, NumText(e.Numero));
    u.Liste2.SetTextMatrix(i, 1, QString::number(e.NbSorties));
    u.Liste2.SetTextMatrix(i, 2, NumText(e.Taux));
  }

  // The chance numbers in their own order, with the mask's text as it stands.
  for (int i = 1; i <= 10; ++i) {
    const QVariant& compte = TableChance[i][2];
    u.Liste4.SetTextMatrix(i, 0, TableChance[i][1].toString());
    u.Liste4.SetTextMatrix(i, 1, compte.isNull() ? QString() : compte.toString());
    const double taux = 100 * (compte.toDouble() / m.NbTirages);
    u.Liste4.SetTextMatrix(i, 2, FormatNumber(taux, QStringLiteral("##.#")));
  }
  sys.SetMousePointer(Pointer::Default);
}

void TirBase::Quitter_Click() { Unload(); }

void TirBase::CalculeBase() { Base = ui().Picture1.ScaleHeight() - 2; }

void TirBase::DessineBarres() {
  DrawingArea& chart = ui().Picture1;
  for (int i = 1; i <= 49; ++i) {
    const double Hauteur = (Base / Echelle) * Element(M().StatNumeros, i).Taux;
    const int couleur = std::floor(i / 2.0) == i / 2.0 ? 13 : 10;
    chart.LineBF((i - 1) * 3 + 2, Base, (i - 0.5) * 3 + 2, Base - Hauteur, QBColor(couleur));
  }
}

void TirBase::GraphiquePlus_Click() {
  ui().GraphiqueMoins.Visible = true;
  ui().GraphiquePlus.Visible = false;
  Height = kHaute;
  PlaceAsChild();
  CalculeBase();
  Echelle = 50;
  M().TriNumeros();
  DessineBarres();
}

void TirBase::GraphiqueMoins_Click() {
  ui().GraphiqueMoins.Visible = false;
  ui().GraphiquePlus.Visible = true;
  Height = kCourte;
  PlaceAsChild();
}

void TirBase::Plus_Click() {
  CalculeBase();
  Echelle = Sub16(Echelle, 5);
  if (Echelle < 15) Echelle = 15;
  M().TriNumeros();
  ui().Picture1.Cls();
  DessineBarres();
}

void TirBase::Moins_Click() {
  CalculeBase();
  Echelle = Add16(Echelle, 5);
  if (Echelle > 80) Echelle = 80;
  M().TriNumeros();
  ui().Picture1.Cls();
  DessineBarres();
}

void TirBase::Picture1_MouseMove(Int16, Int16, double X, double Y) {
  TirBaseUi& u = ui();
  const Int16 Colonne = CInt(std::floor((X - 1) / 3) + 1);
  if (Colonne > 0 && Colonne < 50) {
    const EnregStat& e = Element(M().StatNumeros, Colonne);
    u.Label4.Caption = QStringLiteral("Numéro  ") + Str(Colonne) + QStringLiteral(" :   ") +
                       QStringLiteral("Nombre de Sorties  ") + Str(e.NbSorties) +
                       QStringLiteral(";    ") + QStringLiteral("Taux de réusite  ") + Str(e.Taux) +
                       QStringLiteral(" %");
  } else {
    u.Label4.Caption.clear();
  }
  // The heading of Liste1, not Label4, empties on the chart's upper and lower edges.
  if (Y <= 0.5 || Y >= u.Picture1.ScaleHeight() - 1) u.Label1.Caption.clear();
}

void TirBase::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("Echelle"), PropValue::Int(Echelle));
  sink(QStringLiteral("Base"), PropValue::Double(Base));
}

}  // namespace kuvo
