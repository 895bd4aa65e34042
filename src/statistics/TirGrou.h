#pragma once

#include "core/Form.h"

namespace kuvo {

class TirGrou;

struct TirGrouUi {
  explicit TirGrouUi(TirGrou& f);
  PictureBox Picture1;  // a frame around the instructions
  Label Label1, Label2, Label4, Label7;
  Image Image6;
  Toolbar Toolbar1;            // numbers 1 to 49, and the 50th key
  ControlArray<Label> Label3;  // the chosen numbers, one a label
  CommandButton Recherche, Efface, Quitter;
  PictureBox Picture2;  // holds the results, hidden until a draw is found
  Label Label5;
  ListBox Liste;
  Label Label6, Label9, Label10, Label8, Label12, Label11, Label13;
  Label Label14;
};

// The dates on which a chosen group of up to five numbers came out together,
// found by walking the draws one by one; a press on a date shows its draw.
class TirGrou : public FormOf<TirGrou, TirGrouUi> {
 public:
  static constexpr const char* kName = "TirGrou";
  explicit TirGrou(Program& program);

  // Counts the draws holding every piece of `Groupe` ("05,12,23,"), among
  // the five numbers and the chance number; while ModeGroupe is 1 it also
  // lists their dates.
  void ChercheSortieGroupe(const QString& Groupe, Int16& TailleGroupe, Int16& NbTrouves);

  void Toolbar1_ButtonClick(ToolbarButton& Button);
  void Recherche_Click();
  void Efface_Click();
  void Quitter_Click();
  void Liste_MouseDown(Int16 Button, Int16 Shift, double X, double Y);

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  void PlaceNumero(Int16& Numero, bool& Choisi);
  void RazTouches();

  Int16 NbNumeros = 0;
  bool Choisi = false;
};

}  // namespace kuvo
