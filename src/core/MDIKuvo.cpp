#include "core/MDIKuvo.h"

#include "core/Module1.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

struct ToolbarEntry {
  const char* tip;  // null for a separator
  void (MDIKuvo::*handler)();
};

// The toolbar's buttons by position, each a shortcut to a menu entry.
const ToolbarEntry kToolbar[17] = {
    {"Saisir un nouveau tirage", &MDIKuvo::M_GestionSaisie_Click},
    {"Modifier un tirage", &MDIKuvo::M_GestionModif_Click},
    {"Supprimer un tirage", &MDIKuvo::M_GestionSupprimer_Click},
    {nullptr, nullptr},
    {"Sorties groupées de numèros", &MDIKuvo::M_StatVerif_Click},
    {"Verifier un groupe de numèros", &MDIKuvo::M_StatGroupes_Click},
    {"Numéros Affines", &MDIKuvo::M_NumAfines_Click},
    {"Visualisation de la Base", &MDIKuvo::M_StatToutes_Click},
    {nullptr, nullptr},
    {"Numéros Générés  à partir de la Base de Données", &MDIKuvo::M_AleatoireBase_Click},
    {"Numéros aléatoires générés par l'ordinateur", &MDIKuvo::M_AleatoireGeneres_Click},
    {nullptr, nullptr},
    {"Mes Tirages Préférés ", &MDIKuvo::M_StatMesNumeros_Click},
    {nullptr, nullptr},
    {"A Propos de Kuvo", &MDIKuvo::M_FichierPropos_Click},
    {nullptr, nullptr},
    {"Quitter le programme Kuvo", &MDIKuvo::M_FichierQuitter_Click},
};

const QString kFiveBlanks = QStringLiteral("     ");

}  // namespace

MDIKuvoUi::MDIKuvoUi(MDIKuvo& f)
    : M_Fichier(f, "M_Fichier"),
      M_FichierPropos(f, "M_FichierPropos"),
      M_FichierImprimante(f, "M_FichierImprimante"),
      Insert2(f, "Insert2"),
      M_FichierQuitter(f, "M_FichierQuitter"),
      M_Gestion(f, "M_Gestion"),
      M_GestionSaisie(f, "M_GestionSaisie"),
      M_GestionModif(f, "M_GestionModif"),
      M_GestionSupprimer(f, "M_GestionSupprimer"),
      M_Stat(f, "M_Stat"),
      M_StatVerif(f, "M_StatVerif"),
      M_StatGroupes(f, "M_StatGroupes"),
      M_NumAfines(f, "M_NumAfines"),
      Insert1(f, "Insert1"),
      M_StatToutes(f, "M_StatToutes"),
      Insert4(f, "Insert4"),
      M_StatMesNumeros(f, "M_StatMesNumeros"),
      M_Aleatoire(f, "M_Aleatoire"),
      M_AleatoireBase(f, "M_AleatoireBase"),
      M_AleatoireGeneres(f, "M_AleatoireGeneres"),
      M_MiseJour(f, "M_MiseJour"),
      Toolbar2(f, "Toolbar2"),
      StatusBar1(f, "StatusBar1"),
      CommonDialog1(f, "CommonDialog1") {
  f.Caption = QStringLiteral("Kuvo");
  f.MDIChild = false;
  f.Width = 12000;
  f.Height = 9000;

  struct Entry {
    Menu& menu;
    Menu* parent;
    const char* caption;
    void (MDIKuvo::*handler)();
  };
  const Entry entries[] = {
      {M_Fichier, nullptr, "&Fichier", nullptr},
      {M_FichierPropos, &M_Fichier, "A Propos...", &MDIKuvo::M_FichierPropos_Click},
      {M_FichierImprimante, &M_Fichier, "&Configuration Imprimante...",
       &MDIKuvo::M_FichierImprimante_Click},
      {Insert2, &M_Fichier, "-", nullptr},
      {M_FichierQuitter, &M_Fichier, "&Quitter", &MDIKuvo::M_FichierQuitter_Click},
      {M_Gestion, nullptr, "&Gestion des Tirages", nullptr},
      {M_GestionSaisie, &M_Gestion, "&Saisir", &MDIKuvo::M_GestionSaisie_Click},
      {M_GestionModif, &M_Gestion, "&Modifier", &MDIKuvo::M_GestionModif_Click},
      {M_GestionSupprimer, &M_Gestion, "&Supprimer", &MDIKuvo::M_GestionSupprimer_Click},
      {M_Stat, nullptr, "&Statistiques", nullptr},
      {M_StatVerif, &M_Stat, "&Sorties groupées de Numéros", &MDIKuvo::M_StatVerif_Click},
      {M_StatGroupes, &M_Stat, "Verifier un &Groupe de Numéros", &MDIKuvo::M_StatGroupes_Click},
      {M_NumAfines, &M_Stat, "Numéros Affines", &MDIKuvo::M_NumAfines_Click},
      {Insert1, &M_Stat, "-", nullptr},
      {M_StatToutes, &M_Stat, "&Visualiser la Base", &MDIKuvo::M_StatToutes_Click},
      {Insert4, &M_Stat, "-", nullptr},
      {M_StatMesNumeros, &M_Stat, "&Mes Tirages Préférés", &MDIKuvo::M_StatMesNumeros_Click},
      {M_Aleatoire, nullptr, "&Sélection de Numéros", nullptr},
      {M_AleatoireBase, &M_Aleatoire, "&Suivant la Base de Données",
       &MDIKuvo::M_AleatoireBase_Click},
      {M_AleatoireGeneres, &M_Aleatoire, "&Générés par l'ordinateur",
       &MDIKuvo::M_AleatoireGeneres_Click},
      {M_MiseJour, nullptr, "&Mise à jour de la Base de Données", &MDIKuvo::M_MiseJour_Click},
  };
  for (const Entry& e : entries) {
    e.menu.Caption = QString::fromUtf8(e.caption);
    e.menu.ParentMenu = e.parent;
    if (e.handler) e.menu.Click = [&f, h = e.handler] { (f.*h)(); };
  }

  Toolbar2.Height = 540;
  int image = 0;
  for (const ToolbarEntry& t : kToolbar) {
    if (t.tip) {
      ToolbarButton& b = Toolbar2.AddButton({}, ++image, 0);
      b.ToolTipText = QString::fromUtf8(t.tip);
    } else {
      Toolbar2.AddButton({}, 0, 3);
    }
  }
  Toolbar2.ButtonClick = [&f](ToolbarButton& b) { f.Toolbar2_ButtonClick(b); };

  StatusBar1.SetPanelCount(3);
}

MDIKuvo::MDIKuvo(Program& program) : FormOf(program, kName) {}

void MDIKuvo::MDIForm_Load() {
  Module1& m = M();
  m.CheminAppli = Sys().AppPath();
  if (!m.CheminAppli.endsWith(QLatin1Char('/')) && !m.CheminAppli.endsWith(QLatin1Char('\\')))
    m.CheminAppli += QLatin1Char('/');
  m.BaseDonnees = Database::OpenDatabase(m.CheminAppli + QStringLiteral("Kuvo.Mdb"));
  // Two-digit years in statements are read around the platform's date.
  m.BaseDonnees->SetClock([&sys = Sys()] { return sys.Today(); });
  m.RsSorties = m.BaseDonnees->OpenRecordset(QStringLiteral("Sorties"));
  m.RsMesNumeros = m.BaseDonnees->OpenRecordset(QStringLiteral("MesNumeros"));
  m.RsSorties->SetIndex(QStringLiteral("DateTirage"));
  if (m.RsSorties->RecordCount() == 0) {
    Sys().DoEvents();
    m.CompileBase();
    return;
  }
  m.RsSorties->MoveFirst();
  m.RsSorties->MoveLast();
  m.NbTirages = ToInt16(m.RsSorties->RecordCount());
  Sys().Randomize();
  StatusBar& bar = ui().StatusBar1;
  bar.Panels(1).Text =
      kFiveBlanks + QStringLiteral("Nombre de Tirages  :  ") + Str(m.NbTirages) + kFiveBlanks;
  bar.Panels(2).Text =
      kFiveBlanks + QStringLiteral("Dernière mise à jour  :  ") +
      FormatDate(m.RsSorties->Fields(QStringLiteral("DateTirage")).GetValue().toDate(),
                 QStringLiteral("dd mmmm yyyy")) +
      kFiveBlanks;
  bar.Panels(3).Text =
      kFiveBlanks + FormatDate(Sys().Today(), QStringLiteral("dd mmmm yyyy")) + kFiveBlanks;
}

void MDIKuvo::Toolbar2_ButtonClick(ToolbarButton& Button) {
  if (Button.Index < 1 || Button.Index > 17) return;
  const ToolbarEntry& e = kToolbar[Button.Index - 1];
  if (e.handler) (this->*e.handler)();
}

void MDIKuvo::ShowWindow(const char* name, bool modal) {
  Form* form = App().FormByName(QLatin1String(name), true);
  if (!form) Raise(Err::ObjectNotSet);
  form->Show(modal);
}

void MDIKuvo::M_FichierPropos_Click() { ShowWindow("Propos", true); }

void MDIKuvo::M_FichierImprimante_Click() {
  CommonDialog& dialog = ui().CommonDialog1;
  dialog.Flags = 64;
  dialog.SetAction(5);
}

void MDIKuvo::M_FichierQuitter_Click() {
  // The child windows go with the main window.
  App().Quit();
}

void MDIKuvo::M_GestionSaisie_Click() {
  M().FermeFenetres();
  ShowWindow("TirSais");
}

void MDIKuvo::M_GestionModif_Click() {
  M().FermeFenetres();
  ShowWindow("TirModi");
}

void MDIKuvo::M_GestionSupprimer_Click() {
  M().FermeFenetres();
  ShowWindow("TirSup");
}

void MDIKuvo::M_StatVerif_Click() {
  M().FermeFenetres();
  ShowWindow("TirVerif");
}

void MDIKuvo::M_StatGroupes_Click() {
  M().FermeFenetres();
  M().ModeGroupe = 1;
  ShowWindow("TirGrou");
}

void MDIKuvo::M_NumAfines_Click() {
  M().FermeFenetres();
  ShowWindow("NumerosAffines");
}

void MDIKuvo::M_StatToutes_Click() {
  M().FermeFenetres();
  ShowWindow("TirBase");
}

void MDIKuvo::M_StatMesNumeros_Click() {
  M().FermeFenetres();
  ShowWindow("NumPref");
}

void MDIKuvo::M_AleatoireBase_Click() {
  M().FermeFenetres();
  ShowWindow("AleaBase");
}

void MDIKuvo::M_AleatoireGeneres_Click() {
  M().FermeFenetres();
  ShowWindow("AleaOrdi");
}

void MDIKuvo::M_MiseJour_Click() { ShowWindow("ChargeMiseJour"); }

}  // namespace kuvo
