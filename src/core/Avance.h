#pragma once

#include "core/Form.h"

namespace kuvo {

class Avance;

struct AvanceUi {
  explicit AvanceUi(Avance& f);
  Label Label1;
  ProgressBar Gauge1;
  Image Image6;
};

// The progress window shown during long passes over the base.
class Avance : public FormOf<Avance, AvanceUi> {
 public:
  static constexpr const char* kName = "Avance";
  explicit Avance(Program& program);

  // Starts a pass: text, maximum of the bar and step of each Increment.
  void Depart(const QString& Libelle, Int16 Maximum, Int16 Pas);
  // One step forward; a step past the maximum leaves the bar full.
  void Increment();
  // Ends a pass.
  void Final();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  Int16 Pas = 0;
};

}  // namespace kuvo
