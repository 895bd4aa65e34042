#pragma once

#include "core/Form.h"

namespace kuvo {

class NumerosAffines;

struct NumerosAffinesUi {
  explicit NumerosAffinesUi(NumerosAffines& f);
  PictureBox Picture1;  // a frame around the instructions
  Label Label1, Label2, Label4, Label7;
  Image Image6;
  Toolbar Toolbar1;            // numbers 1 to 49, and the 50th key
  ControlArray<Label> Label8;  // the chosen numbers
  CommandButton Recherche, Efface, Quitter;
  Label Label6;
  Grid Grille;
  Label Label3, Label5;
};

// The 49 numbers ranked by how often they came out in the draws that hold
// the one, two or three numbers chosen.
class NumerosAffines : public FormOf<NumerosAffines, NumerosAffinesUi> {
 public:
  static constexpr const char* kName = "NumerosAffines";
  explicit NumerosAffines(Program& program);

  void Toolbar1_ButtonClick(ToolbarButton& Button);
  void Recherche_Click();
  void Efface_Click();
  void Quitter_Click();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  void PlaceNumero(Int16& Numero, bool& Choisi);
  void RazTouches();
  // Adds the affine numbers of the draw in TirageLu to StatNumeros.
  void CompteTirage();
  // Adds one outing to the number at place `p` of TirageLu.
  void ComptePlace(int p);

  Int16 NbNumeros = 0;
  bool Choisi = false;
  Int16 Retenu[4] = {};
  Int16 TirageLu[8] = {};
};

}  // namespace kuvo
