#include "core/Avance.h"

#include "core/Platform.h"

namespace kuvo {

Avance::Avance(Program& program) : FormOf(program, kName) {}

AvanceUi::AvanceUi(Avance& f) : Label1(f, "Label1"), Gauge1(f, "Gauge1"), Image6(f, "Image6") {
  f.Caption = QString();
  f.MDIChild = false;
  f.Width = 5400;
  f.Height = 1500;
  Image6.Left = 120;
  Image6.Top = 180;
  Image6.Width = 480;
  Image6.Height = 480;
  Image6.Picture = 1;
  Label1.Left = 720;
  Label1.Top = 180;
  Label1.Width = 4440;
  Label1.Height = 300;
  Gauge1.Left = 720;
  Gauge1.Top = 600;
  Gauge1.Width = 4440;
  Gauge1.Height = 300;
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
