#include "core/Form.h"

#include <algorithm>

#include "core/Platform.h"
#include "core/Program.h"

namespace kuvo {

Form::Form(Program& program, QString name) : program_(program), name_(std::move(name)) {}

Form::~Form() = default;

Platform& Form::Sys() const { return program_.Sys(); }
Module1& Form::M() const { return program_.M(); }

void Form::Load() {
  if (loaded_ || loading_) return;
  loading_ = true;
  // The design's properties come back with every load.
  Caption.clear();
  Left = Top = 0;
  Width = 6000;
  Height = 4000;
  Visible = false;
  Enabled = true;
  MDIChild = true;
  FontName = QStringLiteral("MS Sans Serif");
  FontSize = 8.25;
  BackColor = Colours::ButtonFace;
  ActiveControl = nullptr;
  CreateControls();
  loaded_ = true;
  loading_ = false;
  ++generation_;
  Sys().FormLoaded(*this);
  Form_Load();
}

void Form::Show(bool modal) {
  EnsureLoaded();
  if (modal) {
    if (Visible) Raise(Err::FormAlreadyShown);
    Visible = true;
    modal_ = true;
    Sys().FormShown(*this, true);
    Sys().RunModal(*this);
    modal_ = false;
    return;
  }
  if (Visible) return;
  Visible = true;
  Sys().FormShown(*this, false);
}

void Form::Hide() {
  if (!Visible) return;
  Visible = false;
  Sys().FormHidden(*this);
}

void Form::Unload() {
  if (!loaded_) return;
  Sys().FormUnloaded(*this);
  Visible = false;
  ActiveControl = nullptr;
  loaded_ = false;
  DestroyControls();
  controls_.clear();
}

void Form::UserClose() {
  if (&App().MainForm() == this)
    App().Quit();
  else
    Unload();
}

void Form::Unregister(Control* control) {
  auto it = std::find(controls_.begin(), controls_.end(), control);
  if (it != controls_.end()) controls_.erase(it);
}

Control* Form::FindControl(const QString& name, int index) const {
  for (Control* c : controls_)
    if (c->Name() == name && c->Index() == index) return c;
  return nullptr;
}

void Form::Describe(const PropertySink& sink) const {
  sink(QStringLiteral("Loaded"), PropValue::Bool(loaded_));
  if (loaded_) {
    sink(QStringLiteral("Caption"), PropValue::Text(Caption));
    sink(QStringLiteral("Visible"), PropValue::Bool(Visible));
    sink(QStringLiteral("Enabled"), PropValue::Bool(Enabled));
    sink(QStringLiteral("Left"), PropValue::Double(Left));
    sink(QStringLiteral("Top"), PropValue::Double(Top));
    sink(QStringLiteral("Width"), PropValue::Double(Width));
    sink(QStringLiteral("Height"), PropValue::Double(Height));
    sink(QStringLiteral("FontName"), PropValue::Text(FontName));
    sink(QStringLiteral("FontSize"), PropValue::Double(FontSize));
    sink(QStringLiteral("ActiveControl"),
         PropValue::Text(ActiveControl ? ActiveControl->FullName() : QString()));
    for (const Control* c : controls_) {
      const QString prefix = c->FullName() + QLatin1Char('.');
      c->Describe([&](const QString& n, const PropValue& v) { sink(prefix + n, v); });
    }
  }
  DescribeVariables(sink);
}

void Form::PlaceAsChild() {
  // The main window's toolbar, the main window loading first when it is not.
  Form& main = program_.MainForm();
  main.EnsureLoaded();
  double toolbar = 0;
  for (const Control* c : main.Controls())
    if (c->Kind() == ControlKind::Toolbar) {
      toolbar = c->Height;
      break;
    }
  Top = (Sys().ScreenHeight() - 4 * toolbar - Height) / 2;
  Left = (Sys().ScreenWidth() - Width) / 2;
}

}  // namespace kuvo
