#pragma once

#include <QDate>

#include "core/Form.h"

namespace kuvo {

class TirSais;

struct TirSaisUi {
  explicit TirSaisUi(TirSais& f);
  CommandButton MiseJour;
  CommandButton EffaceNumeros;
  CommandButton Quitter;
  Calendar Calendar1;
  Label Label1, Label2, Label3, Label4, Label5, Label6, Label7, Label8;
  Label Label9, Label10, Label11, Label13, Label14, Label15;
  ControlArray<Label> Label12;  // the five number slots, then the chance slot
  Label Label19;                // the date slot
  Toolbar Toolbar1;             // numbers 1 to 49, and the 50th key
  Toolbar Toolbar2;             // chance numbers 1 to 10
};

// Entry of a new draw: five numbers and a chance number picked on keypads, a day
// picked on the calendar, then one click writes the draw and its groups.
class TirSais : public FormOf<TirSais, TirSaisUi> {
 public:
  static constexpr const char* kName = "TirSais";
  explicit TirSais(Program& program);

  void Toolbar1_ButtonClick(ToolbarButton& Button);
  void Toolbar2_ButtonClick(ToolbarButton& Button);
  void Calendar1_Click();
  void EffaceNumeros_Click();
  void MiseJour_Click();
  void Quitter_Click();
  // Enables MiseJour when the seven slots are all filled.
  void ControlToutFait();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  void PlaceNumero(Int16& N, bool& Choisi);
  void EffaceSaisie();

  // Window variables: they outlive the controls, an unload leaves them as they are.
  Int16 NbNumeros = 0;
  bool Choisi = false;
  QDate DateChoisie;
};

}  // namespace kuvo
