#include "gui/TimerView.h"

#include "core/Form.h"
#include "gui/FormView.h"

namespace kuvo {

TimerView::TimerView(FormView& v, Timer& c) : ControlView(v, c), c_(c) {
  QObject::connect(&timer_, &QTimer::timeout, Guard(), [this] {
    if (c_.Tick) Raise([this] { c_.Tick(); });
  });
}

void TimerView::Detach() {
  timer_.stop();
  ControlView::Detach();
}

void TimerView::SyncOwn() {
  const bool run = c_.Enabled && c_.Interval > 0 && c_.Parent().Loaded();
  if (run && (!timer_.isActive() || timer_.interval() != c_.Interval))
    timer_.start(c_.Interval);
  else if (!run && timer_.isActive())
    timer_.stop();
}

}  // namespace kuvo
