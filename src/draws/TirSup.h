#pragma once

#include <memory>

#include "core/Form.h"
#include "core/Store.h"

namespace kuvo {

class TirSup;

struct TirSupUi {
  explicit TirSupUi(TirSup& f);
  Label Label1, Label2, Label4, Label3, Label5, Label6;
  Label Label23;
  ComboBox Combo1;
  Grid Grille;
  CommandButton MiseJour, Quitter;
};

// Deletion of a draw: a date, one of its draws in the grid, and one click
// removes that row of Sorties, with no question asked.
class TirSup : public FormOf<TirSup, TirSupUi> {
 public:
  static constexpr const char* kName = "TirSup";
  explicit TirSup(Program& program);

  // Fills the list with the date of every draw, oldest first.
  void RemplitFenetre();
  void Combo1_Click();
  void Grille_Click();
  void MiseJour_Click();
  void Quitter_Click();

 protected:
  void Form_Load() override;

 private:
  // Window variable: it outlives the controls.
  std::shared_ptr<Recordset> RsTirage;
};

}  // namespace kuvo
