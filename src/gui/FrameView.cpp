#include "gui/FrameView.h"

#include <QGroupBox>

#include "gui/FormView.h"

namespace kuvo {

FrameView::FrameView(FormView& v, Frame& c) : ControlView(v, c), c_(c), w_(new QGroupBox(&v)) {
  Watch(w_);
}

QWidget* FrameView::Widget() const { return w_; }

void FrameView::SyncOwn() {
  if (w_->title() != c_.Caption) w_->setTitle(c_.Caption);
}

}  // namespace kuvo
