#pragma once

#include <QTimer>

#include "gui/ControlView.h"

namespace kuvo {

// A timer: nothing on screen, a Tick every Interval milliseconds while it is
// enabled and its window loaded.
class TimerView : public ControlView {
 public:
  TimerView(FormView& v, Timer& c);
  QWidget* Widget() const override { return nullptr; }
  void Detach() override;

 protected:
  void SyncOwn() override;

 private:
  Timer& c_;
  QTimer timer_;
};

}  // namespace kuvo
