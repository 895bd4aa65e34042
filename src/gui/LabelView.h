#pragma once

#include "gui/ControlView.h"

class QLabel;

namespace kuvo {

// A label: its caption in its colours, font and alignment, word-wrapped.
class LabelView : public ControlView {
 public:
  LabelView(FormView& v, Label& c);
  QWidget* Widget() const override;
  bool Lightweight() const override { return true; }
  QLabel* TheLabel() const { return w_; }

 protected:
  bool ClickFromMouse() const override { return true; }
  void SyncOwn() override;

 private:
  Label& c_;
  QLabel* w_;
  bool first_ = true;
  QString caption_;
  unsigned back_ = 0, fore_ = 0;
  bool bold_ = false;
  double size_ = 0, zoom_ = 1;
  int align_ = 0;
};

}  // namespace kuvo
