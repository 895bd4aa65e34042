#include "proposals/AleaOrdi.h"

#include <cmath>

#include "about/Propos.h"
#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

constexpr int kKey = 480;
constexpr int kKeysAcross = 10;

struct Description {
  const char* first;
  const char* second;
};

// The two lines describing each option, in option order.
const Description kDescriptions[5] = {
    {"Numéros générés sans aucun paramètre", " défini. Ils sont compris entre 1 et 49."},
    {"Numéros générés avec un nombre fixe de", "numéros pairs. Il faut spécier combien."},
    {"Numéros générés avec un nombre fixe de", "numéros impairs. Il faut spécier combien."},
    {"Numéros aléatoires compris dans une zone", "de muméros pré-déterminée."},
    {"Numéros aléatoires qui comprendront un ou", "plusieurs de vos muméros favorits."},
};

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
}

// Even when its half equals the integer part of its half.
bool Pair(double value) { return value / 2 == std::floor(value / 2); }

Line* Lines(AleaOrdiUi& u, int k) {
  Line* lines[] = {&u.Line1, &u.Line2, &u.Line3, &u.Line4, &u.Line5,
                   &u.Line6, &u.Line7, &u.Line8, &u.Line9, &u.Line10};
  return lines[k];
}

}  // namespace

AleaOrdiUi::AleaOrdiUi(AleaOrdi& f)
    : Label1(f, "Label1"),
      Picture1(f, "Picture1"),
      Tous(f, "Tous"),
      Pairs(f, "Pairs"),
      Impairs(f, "Impairs"),
      Zone(f, "Zone"),
      Predefinis(f, "Predefinis"),
      Line1(f, "Line1"),
      Line2(f, "Line2"),
      Line3(f, "Line3"),
      Line4(f, "Line4"),
      Line5(f, "Line5"),
      Line6(f, "Line6"),
      Line7(f, "Line7"),
      Line8(f, "Line8"),
      Line9(f, "Line9"),
      Line10(f, "Line10"),
      Label7(f, "Label7"),
      Label3(f, "Label3"),
      Label4(f, "Label4"),
      Picture3(f, "Picture3"),
      Label2(f, "Label2"),
      Text1(f, "Text1"),
      Picture4(f, "Picture4"),
      Groupe16(f, "Groupe16"),
      Groupe32(f, "Groupe32"),
      Groupe49(f, "Groupe49"),
      Toolbar1(f, "Toolbar1"),
      Label5(f, "Label5", 0, 4),
      Generer(f, "Generer"),
      Annuler(f, "Annuler"),
      Quitter(f, "Quitter"),
      Label15(f, "Label15"),
      Label14(f, "Label14"),
      Label6(f, "Label6"),
      Label8(f, "Label8") {
  f.Caption = QString::fromUtf8("Numéros aléatoires générés par l'ordinateur");
  f.Width = 10080;
  f.Height = 6480;

  // The options on the left, each between its two lines once described.
  constexpr int left = 240;
  constexpr int leftWidth = 4200;
  SetLabel(Label1, "Votre Choix", left, 120, leftWidth);
  Label1.FontBold = true;
  Picture1.Move(left, 420, leftWidth, 2400);
  OptionButton* options[] = {&Tous, &Pairs, &Impairs, &Zone, &Predefinis};
  const char* captions[] = {"Sans restriction", "Avec N numéros pairs", "Avec N numéros impairs",
                            "Compris dans une zone définie", "Avec des numéros pré-définis"};
  for (int k = 0; k < 5; ++k) {
    OptionButton& o = *options[k];
    o.Caption = QString::fromUtf8(captions[k]);
    o.Container = &Picture1;
    const int top = 180 + k * 420;
    o.Move(240, top, 3600, 300);
    for (int side = 0; side < 2; ++side) {
      Line& l = *Lines(*this, 2 * k + side);
      l.Container = &Picture1;
      l.X1 = 120;
      l.X2 = leftWidth - 180;
      l.Y1 = l.Y2 = side == 0 ? top - 45 : top + 345;
      l.BorderColor = Colours::Red;
      l.Visible = false;
    }
  }

  SetLabel(Label7, "Description des fonctions", left, 3000, leftWidth);
  Label7.FontBold = true;
  SetLabel(Label3, "", left, 3300, leftWidth);
  Label3.Visible = false;
  SetLabel(Label4, "", left, 3555, leftWidth);
  Label4.Visible = false;

  // The parity count and the zones share one place: one shows at a time.
  Picture3.Move(left, 4020, leftWidth, 1080);
  Picture3.Visible = false;
  SetLabel(Label2, "Nombre de numéros pairs", 120, 120, 3960);
  Label2.Container = &Picture3;
  Text1.Move(120, 480, 1200, 375);
  Text1.Container = &Picture3;

  Picture4.Move(left, 4020, leftWidth, 1080);
  Picture4.Visible = false;
  Label* zones[] = {&Groupe16, &Groupe32, &Groupe49};
  const char* zoneCaptions[] = {"1 à 16", "16 à 32", "33 à 49"};
  for (int k = 0; k < 3; ++k) {
    Label& z = *zones[k];
    SetLabel(z, zoneCaptions[k], 120 + k * 1380, 330, 1200, 420);
    z.Container = &Picture4;
    z.Alignment = 2;
    z.FontBold = true;
    z.BackColor = AleaOrdi::kZoneDepart;
  }

  // The keypad on the right, over the proposal.
  constexpr int right = 4800;
  Toolbar1.MakeKeypad(50);
  Toolbar1.Move(right, 420, kKeysAcross * kKey, 5 * kKey);
  Toolbar1.Visible = false;
  for (int k = 0; k <= 4; ++k) {
    SetLabel(Label5(k), "Label5", right + k * 600, 2940, 540);
    Label5(k).Visible = false;
  }

  SetLabel(Label15, "Numéros générés", right, 3300, 3000);
  Label15.FontBold = true;
  SetLabel(Label14, "", right, 3600, 3000, 420);
  SetLabel(Label6, "Numéro Chance", right + 3240, 3300, 1560);
  Label6.FontBold = true;
  SetLabel(Label8, "", right + 3240, 3600, 960, 420);
  for (Label* out : {&Label14, &Label8}) {
    out->FontBold = true;
    out->FontSize = 12;
    out->Alignment = 2;
    out->BackColor = Colours::White;
  }

  Generer.Caption = QString::fromUtf8("Générér");
  Generer.Move(right, 4440, 2160, 480);
  Annuler.Caption = QString::fromUtf8("Annuler l'opération");
  Annuler.Move(right + 2400, 4440, 2400, 480);
  Quitter.Caption = QStringLiteral("<<  &Retour ");
  Quitter.Move(right + 2400, 5280, 2400, 480);

  Tous.Click = [&f] { f.Tous_Click(); };
  Pairs.Click = [&f] { f.Pairs_Click(); };
  Impairs.Click = [&f] { f.Impairs_Click(); };
  Zone.Click = [&f] { f.Zone_Click(); };
  Predefinis.Click = [&f] { f.Predefinis_Click(); };
  for (int k = 0; k < 5; ++k)
    options[k]->MouseMove = [&f, k](Int16, Int16, double, double) { f.Option_MouseMove(k + 1); };
  Groupe16.Click = [&f] { f.Groupe16_Click(); };
  Groupe32.Click = [&f] { f.Groupe32_Click(); };
  Groupe49.Click = [&f] { f.Groupe49_Click(); };
  Toolbar1.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar1_ButtonClick(b); };
  Generer.Click = [&f] { f.Generer_Click(); };
  Annuler.Click = [&f] { f.Annuler_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

AleaOrdi::AleaOrdi(Program& program) : FormOf(program, kName) {}

void AleaOrdi::Form_Load() {
  PlaceAsChild();
  Choix = 0;
  NbPredefinis = 0;
  M().CasesAleaOrdi.assign(50, false);
}

Int16 AleaOrdi::TireNumero() {
  const float r = Sys().Rnd();
  return static_cast<Int16>(std::floor(49.0L * r + 1));
}

Int16 AleaOrdi::TireChance() {
  const float r = Sys().Rnd();
  return static_cast<Int16>(std::floor(10.0L * r + 1));
}

void AleaOrdi::Tous_Click() {
  Choix = 1;
  ui().Picture1.Enabled = false;
}

void AleaOrdi::Pairs_Click() {
  AleaOrdiUi& u = ui();
  Choix = 2;
  u.Picture1.Enabled = false;
  u.Picture3.Visible = true;
  u.Label2.Caption = QString::fromUtf8("Nombre de numéros pairs");
  u.Text1.SetFocus();
}

void AleaOrdi::Impairs_Click() {
  AleaOrdiUi& u = ui();
  Choix = 3;
  u.Picture1.Enabled = false;
  u.Picture3.Visible = true;
  u.Label2.Caption = QString::fromUtf8("Nombre de numéros impairs");
  u.Text1.SetFocus();
}

void AleaOrdi::Zone_Click() {
  AleaOrdiUi& u = ui();
  Choix = 4;
  u.Picture1.Enabled = false;
  u.Picture4.Visible = true;
}

void AleaOrdi::Predefinis_Click() {
  AleaOrdiUi& u = ui();
  Choix = 5;
  u.Picture1.Enabled = false;
  u.Toolbar1.Visible = true;
}

void AleaOrdi::ChoisitZone(Label& choisie) {
  AleaOrdiUi& u = ui();
  for (Label* z : {&u.Groupe16, &u.Groupe32, &u.Groupe49})
    z->BackColor = z == &choisie ? kZoneChoisie : kZoneAutre;
}

void AleaOrdi::Groupe16_Click() { ChoisitZone(ui().Groupe16); }
void AleaOrdi::Groupe32_Click() { ChoisitZone(ui().Groupe32); }
void AleaOrdi::Groupe49_Click() { ChoisitZone(ui().Groupe49); }

void AleaOrdi::Option_MouseMove(int option) {
  AleaOrdiUi& u = ui();
  for (int k = 0; k < 10; ++k) Lines(u, k)->Visible = k / 2 == option - 1;
  const Description& d = kDescriptions[option - 1];
  u.Label3.Visible = true;
  u.Label4.Visible = true;
  u.Label3.Caption = QString::fromUtf8(d.first);
  u.Label4.Caption = QString::fromUtf8(d.second);
}

void AleaOrdi::Toolbar1_ButtonClick(ToolbarButton& Button) {
  Int16 n = KeyNumber(Button);
  // The 50th key is no number: it leads to the about window, not modal.
  if (n == 50) {
    App().Win<Propos>().Show(false);
    return;
  }
  ToolbarButton& key = ui().Toolbar1.Buttons(n);
  if (key.Image == n) {
    if (NbPredefinis < 5) {
      key.Image = n + KeypadMarked;
      EtatBouton = -1;
    }
  } else {
    key.Image = n;
    EtatBouton = 0;
  }
  MajPredefinis(n, EtatBouton);
}

void AleaOrdi::MajPredefinis(Int16& Numero, Int16& Etat) {
  AleaOrdiUi& u = ui();
  if (Etat == 0) {
    NbPredefinis = Sub16(NbPredefinis, 1);
    if (NbPredefinis < 1) NbPredefinis = 0;
    for (int i = 0; i <= 4; ++i)
      if (Val(u.Label5(i).Caption) == Numero) u.Label5(i).Caption.clear();
  } else {
    NbPredefinis = Add16(NbPredefinis, 1);
    if (NbPredefinis > 5) NbPredefinis = 5;
    // A full keypad has no free slot: the number is not kept.
    for (int i = 0; i <= 4; ++i) {
      if (Val(u.Label5(i).Caption) == 0) {
        u.Label5(i).Caption = QString::number(Numero);
        break;
      }
    }
  }
}

void AleaOrdi::EffacePredefinis() {
  AleaOrdiUi& u = ui();
  NbPredefinis = 0;
  for (int i = 0; i <= 4; ++i) u.Label5(i).Caption.clear();
  // The 50th key keeps its own picture.
  for (int i = 1; i <= 49; ++i) u.Toolbar1.Buttons(i).Image = i;
}

void AleaOrdi::Generer_Click() {
  AleaOrdiUi& u = ui();
  std::array<Int16, 7> Tirage{};
  Int16 Chance = 0;
  double NbDemandes = 0;
  double Compteur = 0;
  double Continuer = 1;
  double Doublon = 0;

  // Positions 0 to 6; any other index is the subscript fault.
  auto at = [&Tirage](double k) -> Int16& {
    const long index = CLng(k);
    if (index < 0 || index > 6) Raise(Err::SubscriptOutOfRange);
    return Tirage[static_cast<size_t>(index)];
  };
  // One phase: a candidate that passes the rule and stands nowhere in the
  // scanned positions is accepted, until the counter reaches `fin`.
  auto phase = [&](const std::function<bool(Int16)>& regle, double debut, double dernier,
                   double fin) {
    while (Continuer == 1) {
      const Int16 candidat = TireNumero();
      if (!regle(candidat)) continue;
      Doublon = 0;
      for (double j = debut; j <= dernier; ++j)
        if (at(j) == candidat) Doublon = 1;
      if (Doublon == 0) {
        Compteur += 1;
        at(Compteur) = candidat;
      }
      if (Compteur == fin) Continuer = 0;
    }
  };
  auto toujours = [](Int16) { return true; };
  auto pair = [](Int16 v) { return Pair(v); };
  auto impair = [](Int16 v) { return !Pair(v); };

  Continuer = 1;
  Compteur = 0;
  if (Choix == 1) {
    phase(toujours, 1, 5, 5);
    Chance = TireChance();
  }
  if (Choix == 2 || Choix == 3) {
    NbDemandes = Val(u.Text1.Text);
    if (NbDemandes < 1 || NbDemandes > 5) {
      Sys().MsgBox(QStringLiteral("Entrez un nombre compris entre 1 et 5"), Mb::OkOnly, QString());
      u.Text1.SetFocus();
      return;
    }
  }
  if (Choix == 2) {
    phase(pair, 1, NbDemandes, NbDemandes);
    Continuer = 1;
    Compteur = NbDemandes;
    if (Compteur == 5) Continuer = 0;
    phase(impair, NbDemandes + 1, 6, 6);
    do Chance = TireChance();
    while (!Pair(Chance));
  }
  if (Choix == 3) {
    phase(impair, 1, NbDemandes, NbDemandes);
    Continuer = 1;
    Compteur = NbDemandes;
    // Compared with 6, so that the second phase always runs.
    if (Compteur == 6) Continuer = 0;
    phase(pair, NbDemandes + 1, 6, 6);
    do Chance = TireChance();
    while (Pair(Chance));
  }
  if (Choix == 4) {
    if (u.Groupe16.BackColor == kZoneAutre && u.Groupe32.BackColor == kZoneAutre &&
        u.Groupe49.BackColor == kZoneAutre) {
      Sys().MsgBox(QString::fromUtf8("Sélectionnez une zone"), Mb::OkOnly, QString());
      return;
    }
    if (u.Groupe16.BackColor == kZoneChoisie)
      phase([](Int16 v) { return v < 17; }, 1, 5, 5);
    else if (u.Groupe32.BackColor == kZoneChoisie)
      phase([](Int16 v) { return v > 16 && v < 33; }, 1, 5, 5);
    else if (u.Groupe49.BackColor == kZoneChoisie)
      phase([](Int16 v) { return v > 32; }, 1, 5, 5);
    Chance = TireChance();
  }
  if (Choix == 5) {
    // The picks stand first, in slot order.
    Compteur = 0;
    for (int i = 0; i <= 4; ++i) {
      const double pick = Val(u.Label5(i).Caption);
      if (pick != 0) {
        Compteur += 1;
        at(Compteur) = CInt(pick);
      }
    }
    phase(toujours, 1, 6, 6);
    Chance = TireChance();
  }

  QString ListeNumeros;
  for (int i = 1; i <= 5; ++i) {
    QString t = QString::number(at(i));
    if (t.size() == 1) t.prepend(QLatin1Char(' '));
    ListeNumeros += t + QLatin1Char(',');
  }
  ListeNumeros.chop(1);
  u.Label14.Caption = ListeNumeros;
  u.Label8.Caption = QString::number(Chance);
}

void AleaOrdi::Annuler_Click() {
  AleaOrdiUi& u = ui();
  u.Picture1.Enabled = true;
  Choix = 0;
  for (int k = 0; k < 10; ++k) Lines(u, k)->Visible = false;
  u.Label3.Visible = false;
  u.Label4.Visible = false;
  u.Label14.Caption.clear();
  u.Label8.Caption.clear();
  u.Picture3.Visible = false;
  u.Picture4.Visible = false;
  u.Toolbar1.Visible = false;
  EffacePredefinis();
}

void AleaOrdi::Quitter_Click() { Unload(); }

void AleaOrdi::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("Choix"), PropValue::Int(Choix));
  sink(QStringLiteral("NbPredefinis"), PropValue::Int(NbPredefinis));
  sink(QStringLiteral("EtatBouton"), PropValue::Int(EtatBouton));
}

}  // namespace kuvo
