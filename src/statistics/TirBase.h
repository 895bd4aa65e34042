#pragma once

#include "core/Form.h"

namespace kuvo {

class TirBase;

struct TirBaseUi {
  explicit TirBaseUi(TirBase& f);
  Label Label1;  // heading of Liste1
  Grid Liste1;   // the numbers in numeric order
  Label Label5;  // heading of Liste2
  Grid Liste2;   // the numbers ranked by rate
  Label Label3;  // heading of Liste3: the number of draws
  Grid Liste3;   // every draw, the oldest first
  Label Label2;  // heading of Liste4
  Grid Liste4;   // the chance numbers
  Image Image6;
  CommandButton Quitter;
  CommandButton GraphiquePlus, GraphiqueMoins;
  // The chart, below the lower edge of the short form.
  Label Label4;
  DrawingArea Picture1;
  PictureBox Picture2;
  CommandButton Plus, Moins;
};

// The whole base at a glance: how often each number and each chance number came
// out, the numbers ranked by rate, every draw, and a bar chart of the rates.
class TirBase : public FormOf<TirBase, TirBaseUi> {
 public:
  static constexpr const char* kName = "TirBase";
  explicit TirBase(Program& program);

  void Quitter_Click();
  void GraphiquePlus_Click();
  void GraphiqueMoins_Click();
  void Plus_Click();
  void Moins_Click();
  void Picture1_MouseMove(Int16 Button, Int16 Shift, double X, double Y);

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  // The inner height of the chart in millimetres, less 2: where the bars stand.
  void CalculeBase();
  // The 49 bars over what the chart holds.
  void DessineBarres();

  Int16 Echelle = 0;  // the rate the chart's full height stands for
  double Base = 0;
};

}  // namespace kuvo
