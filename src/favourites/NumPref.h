#pragma once

#include "core/Form.h"

namespace kuvo {

class NumPref;

struct NumPrefUi {
  explicit NumPrefUi(NumPref& f);
  Grid Grille;
  Toolbar Toolbar1;            // numbers 1 to 49
  Toolbar Toolbar2;            // chance numbers 1 to 10
  ControlArray<Label> Label3;  // the five numbers picked, then the chance number
  CommandButton Saisir, Supprime, Compare, Retour;
  Label Label1, Label4, Label2, Label17, Label6, Label7, Label9, Label8, Label10;
};

// The player's favourite draws: kept in MesNumeros, shown in a grid, deleted
// one at a time, and compared position by position with a draw keyed in.
class NumPref : public FormOf<NumPref, NumPrefUi> {
 public:
  static constexpr const char* kName = "NumPref";
  explicit NumPref(Program& program);

  void Toolbar1_ButtonClick(ToolbarButton& Button);
  void Toolbar2_ButtonClick(ToolbarButton& Button);
  void Grille_Click();
  void Saisir_Click();
  void Supprime_Click();
  void Compare_Click();
  void Retour_Click();
  // Enables Saisir when the six slots all hold a number.
  void ControlToutFait();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  void PlaceNumero(Int16& Numero, Int16& Choisi);
  void PlaceChance(Int16& Numero, Int16& Choisi);
  void RemiseAZero();

  // Window variables: an unload leaves them as they are.
  Int16 NbNumeros = 0;
  Int16 NbChance = 0;
  Int16 Choisi = 0;
  QString TexteLigne;
  Int16 LigneChoisie = 0;
};

}  // namespace kuvo
