#pragma once

#include <memory>

#include "core/Form.h"
#include "core/Store.h"

namespace kuvo {

class TirVerif;

struct TirVerifUi {
  explicit TirVerifUi(TirVerif& f);
  Label Label12, Label11, Label10, Label14, Label4, Label3;
  Label Label2;
  TextBox Text2;
  Label Label1;
  ComboBox Combo1;
  OptionButton Option1, Option2;
  CommandButton ChercheSorties, ArretRecherche, Imprimer, ArretImpression, Quitter;
  Label Label5, Label7, Label6, Label8;
  Grid Grille;
  ProgressBar Gauge1;
};

// Ranks the pairs, triples, quadruples or quintuples that came out, from the
// group tables, and prints the ranking as a report.
class TirVerif : public FormOf<TirVerif, TirVerifUi> {
 public:
  static constexpr const char* kName = "TirVerif";
  explicit TirVerif(Program& program);

  // Column headings at the head of every printed page.
  void DebutPage();
  // Prints one line of the report, in bold when `gras` is -1, and starts a new
  // page once the page holds 65 counted lines.
  void Imprimeligne(const QString& texte, Int16 gras);
  // One gauge step and a yield, once per row listed.
  void Increment();
  // A yield, once per row printed.
  void IncrementImpression();

  void Text2_KeyPress(Int16& KeyAscii);
  void Combo1_Change();
  void ChercheSorties_Click();
  void ArretRecherche_Click();
  void Imprimer_Click();
  void ArretImpression_Click();
  void Quitter_Click();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  Int16 TailleGroupe = 0;
  Int16 NbBoules = 0;
  Int32 NbCombinaisons = 0;
  Int16 NbLignes = 0;
  std::shared_ptr<Recordset> RsClassement;
};

}  // namespace kuvo
