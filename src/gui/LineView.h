#pragma once

#include "gui/ControlView.h"

namespace kuvo {

class LineWidget;

// A line from (X1, Y1) to (X2, Y2) in its border colour; it takes no mouse.
class LineView : public ControlView {
 public:
  LineView(FormView& v, Line& c);
  QWidget* Widget() const override;
  bool Lightweight() const override { return true; }

 protected:
  QRect DesignRect() const override;
  void SyncOwn() override;

 private:
  Line& c_;
  LineWidget* w_;
};

}  // namespace kuvo
