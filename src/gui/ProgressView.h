#pragma once

#include "gui/ControlView.h"

class QProgressBar;

namespace kuvo {

// A progress bar: the control's value between its minimum and maximum.
class ProgressView : public ControlView {
 public:
  static constexpr int kSteps = 10000;
  ProgressView(FormView& v, ProgressBar& c);
  QWidget* Widget() const override;

 protected:
  void SyncOwn() override;

 private:
  ProgressBar& c_;
  QProgressBar* w_;
};

}  // namespace kuvo
