#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "core/Controls.h"
#include "core/Errors.h"
#include "core/Property.h"

namespace kuvo {

class Program;
class Platform;
class Module1;

// One window of the program: one instance for the whole run, created on first
// use. Its controls exist while it is loaded; its variables outlive an unload.
class Form {
 public:
  Form(Program& program, QString name);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const QString& Name() const { return name_; }
  Program& App() const { return program_; }
  Platform& Sys() const;
  Module1& M() const;

  bool Loaded() const { return loaded_; }
  // Loads the window: builds its controls from the design, then runs Form_Load.
  void Load();
  // Shows the window, loading it first; a modal show returns when it is unloaded.
  void Show(bool modal = false);
  void Hide();
  // Unloads the window: its controls go, its variables stay.
  void Unload();
  bool Modal() const { return modal_; }
  // The user closes the window by its frame. No handler of the window hears
  // it: a child window unloads; the main window ends the program (Program::Quit).
  void UserClose();

  // Properties of the window, restored by every load from the design.
  QString Caption;
  double Left = 0, Top = 0, Width = 6000, Height = 4000;  // twips
  bool Visible = false;
  bool Enabled = true;
  bool MDIChild = true;
  QString FontName = QStringLiteral("MS Sans Serif");
  double FontSize = 8.25;
  unsigned BackColor = Colours::ButtonFace;
  Control* ActiveControl = nullptr;

  // The controls of the loaded window, in design order.
  const std::vector<Control*>& Controls() const { return controls_; }
  Control* FindControl(const QString& name, int index = -1) const;
  // Every property of the window and of its controls, and its variables.
  void Describe(const PropertySink& sink) const;
  // Raised by every load, so that a view knows to rebuild.
  int Generation() const { return generation_; }

  // Places a child window the way every child window places itself.
  void PlaceAsChild();

  // What the outer size holds beyond the inner area: borders and title bar.
  static constexpr int kFrameWidthTwips = 90;
  static constexpr int kFrameHeightTwips = 375;
  // The inner height, where the controls lie, in twips.
  double ScaleHeight() const { return Height - kFrameHeightTwips; }

 protected:
  // Builds the controls and the window's design properties.
  virtual void CreateControls() = 0;
  virtual void DestroyControls() = 0;
  virtual void Form_Load() {}
  // The window's variables, for observers.
  virtual void DescribeVariables(const PropertySink&) const {}
  // A reference to the window or its controls loads it, as the platform does.
  void EnsureLoaded() {
    if (!loaded_) Load();
  }

 private:
  friend class Control;
  void Register(Control* control) { controls_.push_back(control); }
  void Unregister(Control* control);

  Program& program_;
  QString name_;
  bool loaded_ = false;
  bool loading_ = false;
  bool modal_ = false;
  int generation_ = 0;
  std::vector<Control*> controls_;
};

// A window whose controls are the members of `Ui`, built with the window itself:
// `ui()` loads the window when it is not loaded.
template <class Self, class Ui>
class FormOf : public Form {
 public:
  using Form::Form;
  Ui& ui() {
    EnsureLoaded();
    return *ui_;
  }

 protected:
  void CreateControls() final { ui_ = std::make_unique<Ui>(static_cast<Self&>(*this)); }
  void DestroyControls() final { ui_.reset(); }
  std::unique_ptr<Ui> ui_;
};

}  // namespace kuvo
