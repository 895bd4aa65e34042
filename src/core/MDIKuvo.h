#pragma once

#include "core/Form.h"

namespace kuvo {

class MDIKuvo;

struct MDIKuvoUi {
  explicit MDIKuvoUi(MDIKuvo& f);
  Menu M_Fichier, M_FichierPropos, M_FichierImprimante, Insert2, M_FichierQuitter;
  Menu M_Gestion, M_GestionSaisie, M_GestionModif, M_GestionSupprimer;
  Menu M_Stat, M_StatVerif, M_StatGroupes, M_NumAfines, Insert1, M_StatToutes, Insert4,
      M_StatMesNumeros;
  Menu M_Aleatoire, M_AleatoireBase, M_AleatoireGeneres;
  Menu M_MiseJour;
  Toolbar Toolbar2;
  StatusBar StatusBar1;
  CommonDialog CommonDialog1;
};

// The main window: menu, toolbar, status bar and the area of the child windows.
class MDIKuvo : public FormOf<MDIKuvo, MDIKuvoUi> {
 public:
  static constexpr const char* kName = "MDIKuvo";
  explicit MDIKuvo(Program& program);

  void MDIForm_Load();
  void Toolbar2_ButtonClick(ToolbarButton& Button);

  void M_FichierPropos_Click();
  void M_FichierImprimante_Click();
  void M_FichierQuitter_Click();
  void M_GestionSaisie_Click();
  void M_GestionModif_Click();
  void M_GestionSupprimer_Click();
  void M_StatVerif_Click();
  void M_StatGroupes_Click();
  void M_NumAfines_Click();
  void M_StatToutes_Click();
  void M_StatMesNumeros_Click();
  void M_AleatoireBase_Click();
  void M_AleatoireGeneres_Click();
  void M_MiseJour_Click();

 protected:
  void Form_Load() override { MDIForm_Load(); }

 private:
  // Shows the one instance of a window, by its name.
  void ShowWindow(const char* name, bool modal = false);
};

}  // namespace kuvo
