#pragma once

#include "gui/ControlView.h"

class QCheckBox;
class QRadioButton;

namespace kuvo {

// An option button: a click goes through the control's UserClick, which
// clears the other options of the same container.
class OptionView : public ControlView {
 public:
  OptionView(FormView& v, OptionButton& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override;

 private:
  OptionButton& c_;
  QRadioButton* w_;
};

// A check box: unchecked, checked or greyed (0, 1, 2).
class CheckView : public ControlView {
 public:
  CheckView(FormView& v, CheckBox& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override;

 private:
  CheckBox& c_;
  QCheckBox* w_;
};

}  // namespace kuvo
