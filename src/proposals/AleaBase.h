#pragma once

#include <QHash>
#include <QString>
#include <memory>

#include "core/Form.h"
#include "core/Module1.h"
#include "core/Store.h"

namespace kuvo {

class AleaBase;

struct AleaBaseUi {
  explicit AleaBaseUi(AleaBase& f);
  // The period: the list of draw dates and the four figures under it.
  Label Label2;
  ComboBox Combo1;
  Label Label8, Label6, Label5, Label9, Label10, Label11, Label12, Label13;
  // The options, with the two lines that mark each one under the mouse.
  Label Label1;
  PictureBox Picture1;
  OptionButton Chauds, Froids, SansReus, JePense;
  Line Line1, Line2, Line3, Line4, Line5, Line6, Line7, Line8;
  Label Label7, Label3, Label4;
  CommandButton Generer, Annuler, Quitter;
  // The proposal and its details: rows 0 to 4 the numbers, row 5 the chance number.
  Label Label15, Label14, Label23, Label24;
  Label Label16, Label17, Label18, Label19;
  ControlArray<Label> Label20, Label21, Label22;
  Label Label25;
};

// Proposes five numbers and a chance number from how often each came out since
// a chosen date, by one of four strategies.
class AleaBase : public FormOf<AleaBase, AleaBaseUi> {
 public:
  static constexpr const char* kName = "AleaBase";
  explicit AleaBase(Program& program);

  void Combo1_Click();
  void Chauds_Click();
  void Froids_Click();
  void SansReus_Click();
  void JePense_Click();
  void Chauds_MouseMove(Int16 Button, Int16 Shift, double X, double Y);
  void Froids_MouseMove(Int16 Button, Int16 Shift, double X, double Y);
  void SansReus_MouseMove(Int16 Button, Int16 Shift, double X, double Y);
  void JePense_MouseMove(Int16 Button, Int16 Shift, double X, double Y);
  void Generer_Click();
  void Annuler_Click();
  void Quitter_Click();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  // Opens the draws from the date in Label6 on.
  void OuvrePeriode();
  void ChoisitOption(Int16 code);
  void DecritOption(Line& haut, Line& bas, const char* ligne1, const char* ligne2);
  // Counts the outings of the period into StatNumeros and StatChance, ranks
  // both and gives the number of draws counted.
  Int32 CompteSorties();
  // The strategies; SansReus is false when it ended the run with its message.
  void Chauds();
  void Froids();
  bool SansReus();
  void JePense(Int32 TotalTirages);
  void AjouteNumero(double Numero);
  // Shows the list without its last ", ".
  void AfficheListe();
  void RemplitLigne(int r, const EnregStat& e);

  // Window variables: they outlive the controls.
  std::shared_ptr<Recordset> RsPeriode;
  Int16 Choix = 0;
  QString ListeNumeros;
  // The date of every text in the list, to build the period statement.
  QHash<QString, QDate> DatesListe;
};

}  // namespace kuvo
