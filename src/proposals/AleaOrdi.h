#pragma once

#include <array>
#include <functional>

#include "core/Form.h"

namespace kuvo {

class AleaOrdi;

struct AleaOrdiUi {
  explicit AleaOrdiUi(AleaOrdi& f);
  Label Label1;
  PictureBox Picture1;  // the five options and their lines
  OptionButton Tous, Pairs, Impairs, Zone, Predefinis;
  Line Line1, Line2, Line3, Line4, Line5, Line6, Line7, Line8, Line9, Line10;
  Label Label7, Label3, Label4;
  PictureBox Picture3;  // how many numbers of the parity asked
  Label Label2;
  TextBox Text1;
  PictureBox Picture4;  // the three zones; the chosen one is coloured
  Label Groupe16, Groupe32, Groupe49;
  Toolbar Toolbar1;            // numbers 1 to 49, and the 50th key
  ControlArray<Label> Label5;  // the numbers picked, never shown
  CommandButton Generer, Annuler, Quitter;
  Label Label15, Label14, Label6, Label8;
};

// Numbers proposed by chance alone, free or under one constraint: a count of
// even or odd numbers, a zone of the 49, or numbers picked on the keypad.
class AleaOrdi : public FormOf<AleaOrdi, AleaOrdiUi> {
 public:
  static constexpr const char* kName = "AleaOrdi";
  explicit AleaOrdi(Program& program);

  // Zone colours, blue-green-red: chosen, not chosen, not yet clicked.
  static constexpr unsigned kZoneChoisie = 0x00FFFF;
  static constexpr unsigned kZoneAutre = 0xFFFF00;
  static constexpr unsigned kZoneDepart = 0xFFFF80;

  void Tous_Click();
  void Pairs_Click();
  void Impairs_Click();
  void Zone_Click();
  void Predefinis_Click();
  void Groupe16_Click();
  void Groupe32_Click();
  void Groupe49_Click();
  // The mouse over option `option` (1 to 5) shows its lines and description.
  void Option_MouseMove(int option);
  void Toolbar1_ButtonClick(ToolbarButton& Button);
  void Generer_Click();
  void Annuler_Click();
  void Quitter_Click();

  // 1 to 49 and 1 to 10 from the platform's uniform generator.
  Int16 TireNumero();
  Int16 TireChance();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  void MajPredefinis(Int16& Numero, Int16& Etat);
  void EffacePredefinis();
  void ChoisitZone(Label& choisie);

  // Window variables: an unload leaves them as they are.
  Int16 Choix = 0;
  Int16 NbPredefinis = 0;
  Int16 EtatBouton = 0;
};

}  // namespace kuvo
