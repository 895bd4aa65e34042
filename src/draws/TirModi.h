#pragma once

#include <memory>

#include "core/Form.h"
#include "core/Store.h"

namespace kuvo {

class TirModi;

struct TirModiUi {
  explicit TirModiUi(TirModi& f);
  Label Label1, Label2, Label4, Label3, Label5, Label6, Label17, Label18, Label8, Label7;
  Label Label23;
  ComboBox Combo1;
  Label Label19;
  Grid Grille;
  Label Label9, Label10, Label11, Label12, Label13, Label15;
  ControlArray<Label> Label16;  // the five numbers, then the chance number
  Toolbar Toolbar1;             // numbers 1 to 49, and the 50th key
  CommandButton MiseAJour, Annuler, Quitter;
};

// Correction of a draw: a date, one of its draws in the grid, then a label and
// its new number on the keypad; the commit rewrites that row of Sorties only.
class TirModi : public FormOf<TirModi, TirModiUi> {
 public:
  static constexpr const char* kName = "TirModi";
  explicit TirModi(Program& program);

  void Combo1_Click();
  void Grille_Click();
  void Label16_MouseUp(Int16 Index, Int16 Button, Int16 Shift, double X, double Y);
  void Toolbar1_ButtonClick(ToolbarButton& Button);
  void MiseAJour_Click();
  void Annuler_Click();
  void Quitter_Click();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  void RemiseAZero();
  void ChangeNumero(Int16& N);

  // Window variables: they outlive the controls, an unload leaves them as they are.
  std::shared_ptr<Recordset> RsTirage;
  Int16 LigneCourante = 0;
  bool LigneChoisie = false;
};

}  // namespace kuvo
