#include "gui/StatusView.h"

#include <QLabel>
#include <algorithm>

#include "gui/FormView.h"

namespace kuvo {

StatusView::StatusView(FormView& v, StatusBar& c) : ControlView(v, c), c_(c), w_(new QWidget(&v)) {}

QWidget* StatusView::Widget() const { return w_; }

QRect StatusView::DesignRect() const {
  QRect r = ControlView::DesignRect();
  // A status bar without a size lies along the bottom of the window.
  if (r.width() <= 0) {
    const int h = r.height() > 0 ? r.height() : 22;
    r = QRect(0, view_.height() - h, view_.width(), h);
  }
  return r;
}

void StatusView::SyncOwn() {
  if (static_cast<int>(panels_.size()) != c_.PanelCount() || w_->width() != width_) {
    for (QLabel* l : panels_) delete l;
    panels_.clear();
    width_ = w_->width();
    const int n = std::max(1, c_.PanelCount());
    for (int i = 0; i < c_.PanelCount(); ++i) {
      auto* l = new QLabel(w_);
      l->setTextFormat(Qt::PlainText);
      l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
      l->setGeometry(i * width_ / n, 1, width_ / n - 2, w_->height() - 2);
      l->show();
      panels_.push_back(l);
    }
  }
  for (int i = 0; i < c_.PanelCount(); ++i) {
    const QString& t = static_cast<const StatusBar&>(c_).Panels(i + 1).Text;
    if (panels_[static_cast<size_t>(i)]->text() != t) panels_[static_cast<size_t>(i)]->setText(t);
  }
}

}  // namespace kuvo
