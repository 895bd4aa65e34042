#include "gui/LineView.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "gui/FormView.h"

namespace kuvo {

// Paints one line within the rectangle that bounds it.
class LineWidget : public QWidget {
 public:
  using QWidget::QWidget;
  QPointF from, to;
  QColor colour;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setPen(QPen(colour, 1));
    p.drawLine(from, to);
  }
};

LineView::LineView(FormView& v, Line& c) : ControlView(v, c), c_(c), w_(new LineWidget(&v)) {
  w_->setAttribute(Qt::WA_TransparentForMouseEvents);
}

QWidget* LineView::Widget() const { return w_; }

QRect LineView::DesignRect() const {
  const int x1 = Px(c_.X1), y1 = Px(c_.Y1), x2 = Px(c_.X2), y2 = Px(c_.Y2);
  return QRect(QPoint(std::min(x1, x2), std::min(y1, y2)),
               QPoint(std::max(x1, x2), std::max(y1, y2)));
}

void LineView::SyncOwn() {
  const QRect r = DesignRect();
  const QPointF from(Px(c_.X1) - r.left() + 0.5, Px(c_.Y1) - r.top() + 0.5);
  const QPointF to(Px(c_.X2) - r.left() + 0.5, Px(c_.Y2) - r.top() + 0.5);
  const QColor colour = Colour(c_.BorderColor);
  if (from != w_->from || to != w_->to || colour != w_->colour) {
    w_->from = from;
    w_->to = to;
    w_->colour = colour;
    w_->update();
  }
}

}  // namespace kuvo
