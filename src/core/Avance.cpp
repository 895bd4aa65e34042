#include "core/Avance.h"

#include "core/Platform.h"

namespace kuvo {

Avance::Avance(Program& program) : FormOf(program, kName) {}

AvanceUi::AvanceUi(Avance& f) : Label1(f, "Label1"), Gauge1(f, "Gauge1"), Image6(f, "Image6") {
  f.Caption = QString();
  f.MDIChild = false;
  f.Width = 5400;
  f.Height = 1500;
  Image6.Move(120, 180, 480, 480);
  Image6.Picture = 1;
  Label1.Move(720, 180, 4440, 300);
  Gauge1.Move(720, 600, 4440, 300);
}

void Avance::Form_Load() {
  // Centred across, with its lower edge on the middle of the screen.
  Left = (Sys().ScreenWidth() - Width) / 2;
  Top = Sys().ScreenHeight() / 2.0 - Height;
}

void Avance::Depart(const QString& Libelle, Int16 Maximum, Int16 Pas) {
  AvanceUi& u = ui();
  u.Label1.Caption = Libelle;
  u.Gauge1.SetMax(Maximum);
  u.Gauge1.SetValue(0);
  this->Pas = Pas;
  Show();
  Sys().DoEvents();
  Sys().SetMousePointer(Pointer::Wait);
}

void Avance::Increment() {
  try {
    ProgressBar& gauge = ui().Gauge1;
    gauge.SetValue(gauge.Value() + Pas);
  } catch (const VbError&) {
    // A value past the maximum is refused and the bar stays where it was.
  }
  Sys().DoEvents();
}

void Avance::Final() {
  ui().Gauge1.SetValue(0);
  Sys().SetMousePointer(Pointer::Default);
  Unload();
}

void Avance::DescribeVariables(const PropertySink& sink) const {
  sink(QStringLiteral("Pas"), PropValue::Int(Pas));
}

}  // namespace kuvo
