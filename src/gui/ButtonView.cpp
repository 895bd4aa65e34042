#include "gui/ButtonView.h"

#include <QPushButton>

#include "gui/FormView.h"

namespace kuvo {

ButtonView::ButtonView(FormView& v, CommandButton& c)
    : ControlView(v, c), c_(c), w_(new QPushButton(&v)) {
  w_->setAutoDefault(false);
  QObject::connect(w_, &QPushButton::clicked, Guard(), [this] {
    if (c_.Click) Raise([this] { c_.UserClick(); });
  });
  Watch(w_);
}

QWidget* ButtonView::Widget() const { return w_; }

void ButtonView::SyncOwn() {
  if (w_->text() != c_.Caption) w_->setText(c_.Caption);
}

}  // namespace kuvo
