#pragma once

#include "gui/ControlView.h"

class QGroupBox;

namespace kuvo {

// A frame: a titled box that holds the controls placed in it.
class FrameView : public ControlView {
 public:
  FrameView(FormView& v, Frame& c);
  QWidget* Widget() const override;

 protected:
  bool ClickFromMouse() const override { return true; }
  void SyncOwn() override;

 private:
  Frame& c_;
  QGroupBox* w_;
};

}  // namespace kuvo
