#pragma once

#include "gui/ControlView.h"

class QPushButton;

namespace kuvo {

// A command button: its caption, and Click when pushed.
class ButtonView : public ControlView {
 public:
  ButtonView(FormView& v, CommandButton& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override;

 private:
  CommandButton& c_;
  QPushButton* w_;
};

}  // namespace kuvo
