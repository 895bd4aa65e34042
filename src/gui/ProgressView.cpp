#include "gui/ProgressView.h"

#include <QProgressBar>
#include <algorithm>
#include <cmath>

#include "gui/FormView.h"

namespace kuvo {

ProgressView::ProgressView(FormView& v, ProgressBar& c)
    : ControlView(v, c), c_(c), w_(new QProgressBar(&v)) {
  w_->setRange(0, kSteps);
  w_->setTextVisible(false);
  w_->setValue(0);
}

QWidget* ProgressView::Widget() const { return w_; }

void ProgressView::SyncOwn() {
  const double span = c_.Max() - c_.Min();
  const int v =
      span > 0 ? static_cast<int>(std::lround((c_.Value() - c_.Min()) / span * kSteps)) : 0;
  if (w_->value() != v) w_->setValue(std::clamp(v, 0, kSteps));
}

}  // namespace kuvo
