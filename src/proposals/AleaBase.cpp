#include "proposals/AleaBase.h"

#include <cmath>

#include "core/Platform.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

const QString kMasqueDate = QStringLiteral("dd mmmm yyyy");

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
}

// A figure shown in a white box.
void SetValueBox(Label& label, int left, int top, int width, int alignment = 2) {
  label.Move(left, top, width, 255);
  label.BackColor = Colours::White;
  label.Alignment = alignment;
}

void SetLine(Line& line, int x1, int x2, int y) {
  line.X1 = x1;
  line.X2 = x2;
  line.Y1 = line.Y2 = y;
  line.BorderColor = Colours::Red;
  line.Visible = false;
}

// A numeric column read into a 16-bit integer, as an assignment does: rounded,
// with error 6 beyond the type and error 94 for an empty value.
Int16 ShortValue(const Value& value) {
  if (value.isNull()) Raise(Err::InvalidUseOfNull);
  switch (value.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int: return ToInt16(value.toLongLong());
    case QMetaType::QString: return CInt(CDbl(value.toString()));
    default: return CInt(value.toDouble());
  }
}

// Element k of a statistics array; outside its bounds, error 9.
EnregStat& Element(std::vector<EnregStat>& stats, int k) {
  if (k < 0 || k >= static_cast<int>(stats.size())) Raise(Err::SubscriptOutOfRange);
  return stats[static_cast<size_t>(k)];
}

// The rate of a count among the draws counted, in percent.
double Rate(Int16 count, Int32 draws) { return count / static_cast<double>(draws) * 100; }

}  // namespace

AleaBaseUi::AleaBaseUi(AleaBase& f)
    : Label2(f, "Label2"),
      Combo1(f, "Combo1"),
      Label8(f, "Label8"),
      Label6(f, "Label6"),
      Label5(f, "Label5"),
      Label9(f, "Label9"),
      Label10(f, "Label10"),
      Label11(f, "Label11"),
      Label12(f, "Label12"),
      Label13(f, "Label13"),
      Label1(f, "Label1"),
      Picture1(f, "Picture1"),
      Chauds(f, "Chauds"),
      Froids(f, "Froids"),
      SansReus(f, "SansReus"),
      JePense(f, "JePense"),
      Line1(f, "Line1"),
      Line2(f, "Line2"),
      Line3(f, "Line3"),
      Line4(f, "Line4"),
      Line5(f, "Line5"),
      Line6(f, "Line6"),
      Line7(f, "Line7"),
      Line8(f, "Line8"),
      Label7(f, "Label7"),
      Label3(f, "Label3"),
      Label4(f, "Label4"),
      Generer(f, "Generer"),
      Annuler(f, "Annuler"),
      Quitter(f, "Quitter"),
      Label15(f, "Label15"),
      Label14(f, "Label14"),
      Label23(f, "Label23"),
      Label24(f, "Label24"),
      Label16(f, "Label16"),
      Label17(f, "Label17"),
      Label18(f, "Label18"),
      Label19(f, "Label19"),
      Label20(f, "Label20", 0, 5),
      Label21(f, "Label21", 0, 5),
      Label22(f, "Label22", 0, 5),
      Label25(f, "Label25") {
  f.Caption = QStringLiteral("Numéros Générés  à partir de la Base de Données");
  f.Width = 9240;
  f.Height = 7560;

  // The period on the left: the list of dates, then its figures.
  SetLabel(Label2, "Sélection de Date", 240, 240, 3960);
  Label2.FontBold = true;
  Combo1.Move(240, 540, 2640, 315);
  Combo1.Style = 0;
  SetLabel(Label8, "Date début", 240, 1080, 1800);
  SetValueBox(Label6, 2040, 1080, 2160, 0);
  SetLabel(Label5, "Date finale", 240, 1380, 1800);
  SetValueBox(Label9, 2040, 1380, 2160, 0);
  SetLabel(Label10, "Total Tirages ", 240, 1680, 1800);
  SetValueBox(Label11, 2040, 1680, 900, 1);
  SetLabel(Label12, "Tirages sélectionnés", 240, 1980, 1800);
  SetValueBox(Label13, 2040, 1980, 900, 1);

  // The four options on the right, each between its two lines.
  SetLabel(Label1, "Votre Choix", 4680, 240, 4200);
  Label1.FontBold = true;
  Picture1.Move(4680, 540, 4200, 1920);
  OptionButton* options[] = {&Chauds, &Froids, &SansReus, &JePense};
  const char* captions[] = {"Numéros CHAUDS depuis...", "Numéros FROIDS depuis...",
                            "Sans réussite depuis...", "Les Numéros que je pense"};
  Line* lines[] = {&Line1, &Line2, &Line3, &Line4, &Line5, &Line6, &Line7, &Line8};
  for (int k = 0; k < 4; ++k) {
    const int top = 150 + k * 450;
    options[k]->Caption = QString::fromUtf8(captions[k]);
    options[k]->Move(300, top, 3600, 300);
    options[k]->Container = &Picture1;
    SetLine(*lines[2 * k], 180, 3960, top - 45);
    SetLine(*lines[2 * k + 1], 180, 3960, top + 345);
    lines[2 * k]->Container = lines[2 * k + 1]->Container = &Picture1;
  }
  SetLabel(Label7, "Description des fonctions", 4680, 2580, 4200);
  Label7.FontBold = true;
  Label3.Move(4680, 2880, 4200, 255);
  Label3.Visible = false;
  Label4.Move(4680, 3135, 4200, 255);
  Label4.Visible = false;

  Generer.Caption = QStringLiteral("Générér");
  Generer.Move(240, 2580, 1980, 420);
  Generer.Enabled = false;
  Annuler.Caption = QStringLiteral("Annuler l'opération");
  Annuler.Move(2340, 2580, 1980, 420);
  Quitter.Caption = QStringLiteral("<< &Retour");
  Quitter.Move(7320, 6480, 1560, 420);

  // The proposal, then its details row by row.
  SetLabel(Label15, "Numéros générés", 240, 3660, 1800);
  Label15.FontBold = true;
  SetValueBox(Label14, 2040, 3660, 3000);
  Label14.FontBold = true;
  SetLabel(Label23, "Numéro Chance", 5400, 3660, 1500);
  Label23.FontBold = true;
  SetValueBox(Label24, 6960, 3660, 600);
  Label24.FontBold = true;
  SetLabel(Label16, "Détails", 240, 4140, 1500);
  Label16.FontBold = true;
  SetLabel(Label17, "Numéro", 2040, 4140, 1080);
  SetLabel(Label18, "Sorties", 3240, 4140, 1080);
  SetLabel(Label19, "Réussite %", 4440, 4140, 1080);
  for (int r = 0; r <= 5; ++r) {
    const int top = 4440 + r * 300 + (r == 5 ? 120 : 0);
    SetValueBox(Label20(r), 2040, top, 1080);
    SetValueBox(Label21(r), 3240, top, 1080);
    SetValueBox(Label22(r), 4440, top, 1080);
  }
  SetLabel(Label25, "Numéro Chance", 240, 4440 + 5 * 300 + 120, 1500);

  Combo1.Click = [&f] { f.Combo1_Click(); };
  Chauds.Click = [&f] { f.Chauds_Click(); };
  Froids.Click = [&f] { f.Froids_Click(); };
  SansReus.Click = [&f] { f.SansReus_Click(); };
  JePense.Click = [&f] { f.JePense_Click(); };
  Chauds.MouseMove = [&f](Int16 b, Int16 s, double x, double y) { f.Chauds_MouseMove(b, s, x, y); };
  Froids.MouseMove = [&f](Int16 b, Int16 s, double x, double y) { f.Froids_MouseMove(b, s, x, y); };
  SansReus.MouseMove = [&f](Int16 b, Int16 s, double x, double y) {
    f.SansReus_MouseMove(b, s, x, y);
  };
  JePense.MouseMove = [&f](Int16 b, Int16 s, double x, double y) {
    f.JePense_MouseMove(b, s, x, y);
  };
  Generer.Click = [&f] { f.Generer_Click(); };
  Annuler.Click = [&f] { f.Annuler_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

AleaBase::AleaBase(Program& program) : FormOf(program, kName) {}

void AleaBase::Form_Load() {
  PlaceAsChild();
  Recordset& sorties = *M().RsSorties;
  sorties.SetIndex(QStringLiteral("DateTirage"));
  sorties.MoveFirst();
  auto dateText = [&sorties] {
    return FormatDate(sorties.Fields(QStringLiteral("DateTirage")).GetValue().toDate(),
                      kMasqueDate);
  };
  ui().Combo1.Text = dateText();
  ui().Label6.Caption = ui().Combo1.Text;

  // One entry per draw, oldest first; the dates are kept beside their texts.
  DatesListe.clear();
  QStringList dates;
  while (!sorties.Eof()) {
    const QDate date = sorties.Fields(QStringLiteral("DateTirage")).GetValue().toDate();
    const QString text = FormatDate(date, kMasqueDate);
    DatesListe.insert(text, date);
    dates << text;
    sorties.MoveNext();
  }
  for (const QString& text : dates) ui().Combo1.AddItem(text);

  sorties.MoveLast();
  ui().Label9.Caption = dateText();
  ui().Label11.Caption = QString::number(sorties.RecordCount());
  ui().Label13.Caption = QString::number(sorties.RecordCount());
  OuvrePeriode();
  Choix = 0;
}

void AleaBase::OuvrePeriode() {
  const QString text = ui().Label6.Caption;
  const auto known = DatesListe.constFind(text);
  const QDate date = known != DatesListe.constEnd() ? known.value() : DateFromText(text);
  RsPeriode = M().BaseDonnees->OpenRecordset(
      QStringLiteral("select * from Sorties where DateTirage >= ") + QLatin1Char('#') +
      FormatDate(date, QStringLiteral("mm dd yy")) + QLatin1Char('#'));
}

void AleaBase::Combo1_Click() {
  ui().Label6.Caption = ui().Combo1.Text;
  OuvrePeriode();
  RsPeriode->MoveLast();
  RsPeriode->MoveFirst();
  ui().Label13.Caption = QString::number(RsPeriode->RecordCount());
}

void AleaBase::ChoisitOption(Int16 code) {
  ui().Picture1.Enabled = false;
  Choix = code;
  ui().Generer.Enabled = true;
}

void AleaBase::Chauds_Click() { ChoisitOption(1); }
void AleaBase::Froids_Click() { ChoisitOption(2); }
void AleaBase::SansReus_Click() { ChoisitOption(3); }
void AleaBase::JePense_Click() { ChoisitOption(4); }

void AleaBase::DecritOption(Line& haut, Line& bas, const char* ligne1, const char* ligne2) {
  AleaBaseUi& u = ui();
  for (Line* line :
       {&u.Line1, &u.Line2, &u.Line3, &u.Line4, &u.Line5, &u.Line6, &u.Line7, &u.Line8})
    line->Visible = line == &haut || line == &bas;
  u.Label3.Visible = true;
  u.Label4.Visible = true;
  u.Label3.Caption = QString::fromUtf8(ligne1);
  u.Label4.Caption = QString::fromUtf8(ligne2);
}

void AleaBase::Chauds_MouseMove(Int16, Int16, double, double) {
  DecritOption(ui().Line1, ui().Line2, "Numéros possedant la frequence de sortie",
               "la plus forte depuis la date sélectionnée.");
}

void AleaBase::Froids_MouseMove(Int16, Int16, double, double) {
  DecritOption(ui().Line3, ui().Line4, "Numéros possedant la frequence de sortie",
               "la plus faible depuis la date sélectionnée.");
}

void AleaBase::SansReus_MouseMove(Int16, Int16, double, double) {
  DecritOption(ui().Line5, ui().Line6, "Ces numéros ne sont jamais sortis depuis",
               "la date sélectionnée.");
}

void AleaBase::JePense_MouseMove(Int16, Int16, double, double) {
  DecritOption(ui().Line7, ui().Line8, "Je fais mon enquête et vous donne les",
               "résultats que je préfère. Bonne chance");
}

void AleaBase::Generer_Click() {
  if (Choix == 0) return;
  Sys().SetMousePointer(Pointer::Wait);
  ui().Generer.Enabled = false;
  const Int32 TotalTirages = CompteSorties();
  switch (Choix) {
    case 1: Chauds(); break;
    case 2: Froids(); break;
    case 3:
      if (!SansReus()) return;
      break;
    case 4: JePense(TotalTirages); break;
    default: break;
  }
  Sys().SetMousePointer(Pointer::Default);
}

Int32 AleaBase::CompteSorties() {
  std::vector<EnregStat>& numeros = M().StatNumeros;
  std::vector<EnregStat>& chance = M().StatChance;
  numeros.assign(50, EnregStat{});
  chance.assign(11, EnregStat{});
  for (int i = 1; i <= 10; ++i) chance[i].Numero = i;
  for (int i = 1; i <= 49; ++i) numeros[i].Numero = i;

  static const QString kNumeros[] = {QStringLiteral("numero1"), QStringLiteral("numero2"),
                                     QStringLiteral("numero3"), QStringLiteral("numero4"),
                                     QStringLiteral("numero5")};
  static const QString kChance = QStringLiteral("NumeroChance");
  Int16 Tirage[6] = {};
  Recordset& periode = *RsPeriode;
  periode.MoveFirst();
  while (!periode.Eof()) {
    for (int j = 1; j <= 5; ++j) Tirage[j] = ShortValue(periode.Fields(kNumeros[j - 1]).GetValue());
    EnregStat& tiree = Element(chance, ShortValue(periode.Fields(kChance).GetValue()));
    tiree.NbSorties = Add16(tiree.NbSorties, 1);
    for (int j = 1; j <= 5; ++j) {
      EnregStat& sorti = Element(numeros, Tirage[j]);
      sorti.NbSorties = Add16(sorti.NbSorties, 1);
    }
    periode.MoveNext();
  }
  const Int32 TotalTirages = ToInt32(periode.RecordCount());

  for (int i = 1; i <= 49; ++i) numeros[i].Taux = Rate(numeros[i].NbSorties, TotalTirages);
  M().TriTaux(49, numeros);
  for (int i = 1; i <= 10; ++i) chance[i].Taux = Rate(chance[i].NbSorties, TotalTirages);
  M().TriTaux(10, chance);
  return TotalTirages;
}

void AleaBase::AjouteNumero(double Numero) {
  QString t = Str(Numero).trimmed();
  if (t.size() == 1) t.prepend(QLatin1Char(' '));
  ListeNumeros += t + QStringLiteral(", ");
}

void AleaBase::AfficheListe() { ui().Label14.Caption = ListeNumeros.left(ListeNumeros.size() - 2); }

void AleaBase::RemplitLigne(int r, const EnregStat& e) {
  ui().Label20(r).Caption = Str(e.Numero).trimmed();
  ui().Label21(r).Caption = QString::number(e.NbSorties);
  ui().Label22(r).Caption = FormatNumber(e.Taux, QStringLiteral("##.##"));
}

void AleaBase::Chauds() {
  std::vector<EnregStat>& numeros = M().StatNumeros;
  const std::vector<EnregStat>& chance = M().StatChance;
  ListeNumeros.clear();
  for (int i = 1; i <= 5; ++i) {
    AjouteNumero(numeros[i].Numero);
    RemplitLigne(i - 1, numeros[i]);
  }
  AfficheListe();
  // The most frequent chance number, shown with the rate of the least frequent.
  ui().Label20(5).Caption = Str(chance[1].Numero).trimmed();
  ui().Label21(5).Caption = QString::number(chance[1].NbSorties);
  ui().Label22(5).Caption = FormatNumber(chance[10].Taux, QStringLiteral("##.##"));
  ui().Label24.Caption = ui().Label20(5).Caption;
}

void AleaBase::Froids() {
  const std::vector<EnregStat>& numeros = M().StatNumeros;
  ListeNumeros.clear();
  int k = 0;
  for (int i = 49; i >= 44; --i) {
    AjouteNumero(numeros[i].Numero);
    RemplitLigne(k, numeros[i]);
    ++k;
  }
  AfficheListe();
  RemplitLigne(5, M().StatChance[10]);
  ui().Label24.Caption = ui().Label20(5).Caption;
}

bool AleaBase::SansReus() {
  std::vector<EnregStat>& numeros = M().StatNumeros;
  std::vector<EnregStat>& chance = M().StatChance;
  ListeNumeros.clear();
  Int16 NbZero = 0;
  Int16 RangChance = 0;
  // The numbers never drawn, weakest rank first, gathered at the head of the
  // ranking; the scan stops short of the elements it has written itself.
  for (int i = 49; i > NbZero; --i) {
    if (numeros[i].NbSorties != 0) continue;
    ++NbZero;
    if (NbZero == 5) break;
    numeros[NbZero].Numero = numeros[i].Numero;
    numeros[NbZero].NbSorties = 0;
  }
  for (int i = 10; i >= 1; --i) {
    if (chance[i].NbSorties != 0) continue;
    RangChance = static_cast<Int16>(i);
    // The value is taken from the numbers' ranking, at the same rank.
    chance[RangChance].Numero = numeros[i].Numero;
    break;
  }
  if (NbZero == 0 || RangChance == 0) {
    const QString crlf = QStringLiteral("\n\r");
    Sys().MsgBox(QStringLiteral("Depuis le ") + ui().Combo1.Text +
                     QStringLiteral(", ou bien tous les numéros") + crlf +
                     QStringLiteral("ou bien les numéros de la chance") + crlf +
                     QStringLiteral("sont sortis au moins 1 fois"),
                 Mb::OkOnly + Mb::Information, QString());
    return false;
  }
  if (NbZero > 5) NbZero = 5;
  int k = 0;
  for (int i = 1; i <= NbZero; ++i) {
    AjouteNumero(numeros[i].Numero);
    ui().Label20(k).Caption = Str(numeros[i].Numero).trimmed();
    ui().Label21(k).Caption = QStringLiteral("0");
    ui().Label22(k).Caption = QStringLiteral("0");
    ++k;
  }
  AfficheListe();
  RemplitLigne(5, chance[RangChance]);
  ui().Label24.Caption = ui().Label20(5).Caption;
  return true;
}

void AleaBase::JePense(Int32 TotalTirages) {
  std::vector<EnregStat>& numeros = M().StatNumeros;
  ListeNumeros.clear();
  // The ten best numbers weigh least, the ten weakest most.
  for (int i = 1; i <= 49; ++i) numeros[i].Taux *= i < 11 ? 20.0 : (i <= 39 ? 50.0 : 80.0);
  M().TriTaux(49, numeros);
  for (int i = 1; i <= 5; ++i) {
    AjouteNumero(numeros[i].Numero);
    numeros[i].Taux = Rate(numeros[i].NbSorties, TotalTirages);
    RemplitLigne(i - 1, numeros[i]);
  }
  AfficheListe();
  // A chance number of uniform rank: r is below 1 by at least its last bit, so
  // the rank stays within 1..10.
  const double r = Sys().Rnd();
  const Int16 Rang = static_cast<Int16>(std::floor(10 * r + 1));
  RemplitLigne(5, Element(M().StatChance, Rang));
  ui().Label24.Caption = ui().Label20(5).Caption;
}

void AleaBase::Annuler_Click() {
  AleaBaseUi& u = ui();
  u.Picture1.Enabled = true;
  for (Line* line : {&u.Line1, &u.Line2, &u.Line3, &u.Line4, &u.Line5, &u.Line6})
    line->Visible = false;
  u.Generer.Enabled = false;
  Choix = 0;
  Recordset& sorties = *M().RsSorties;
  sorties.MoveFirst();
  u.Combo1.Text =
      FormatDate(sorties.Fields(QStringLiteral("DateTirage")).GetValue().toDate(), kMasqueDate);
  u.Label6.Caption = u.Combo1.Text;
  u.Label13.Caption.clear();
  u.Label14.Caption.clear();
  u.Label24.Caption.clear();
  for (int i = 0; i <= 5; ++i) {
    u.Label20(i).Caption.clear();
    u.Label21(i).Caption.clear();
    u.Label22(i).Caption.clear();
  }
}

void AleaBase::Quitter_Click() {
  Choix = 0;
  Unload();
}

void AleaBase::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("Choix"), PropValue::Int(Choix));
  sink(QStringLiteral("ListeNumeros"), PropValue::Text(ListeNumeros));
}

}  // namespace kuvo
