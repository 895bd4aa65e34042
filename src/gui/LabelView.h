#pragma once

#include "gui/ControlView.h"

class QLabel;

namespace kuvo {

class FocusRing;

// A label: its caption in its colours, font and alignment, word-wrapped. A
// label that answers the mouse is a stop of the Tab chain, ringed while it has
// the focus, where Space or Enter clicks it; to a screen reader it is a button.
class LabelView : public ControlView {
 public:
  LabelView(FormView& v, Label& c);
  QWidget* Widget() const override;
  bool Lightweight() const override { return true; }
  bool Focusable() const override { return clickable_; }
  bool OnEvent(QObject* watched, QEvent* event) override;
  QLabel* TheLabel() const { return w_; }

 protected:
  bool ClickFromMouse() const override { return true; }
  void SyncOwn() override;

 private:
  // A click from the keyboard: the button goes down and up at the label's
  // centre, as the mouse's would.
  void Press();
  void ShowRing();

  Label& c_;
  QLabel* w_;
  bool clickable_ = false;
  FocusRing* ring_ = nullptr;  // made at the first focus, beside the label
  bool first_ = true;
  QString caption_;
  unsigned back_ = 0, fore_ = 0;
  bool bold_ = false;
  double size_ = 0, zoom_ = 1;
  int align_ = 0;
};

}  // namespace kuvo
