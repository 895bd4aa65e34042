#include "gui/FocusRing.h"

#include <QPainter>
#include <algorithm>

#include "gui/DesignPalette.h"

namespace kuvo {

FocusRing::FocusRing(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void FocusRing::Show(bool shown, const QRect& area) {
  if (shown) {
    setGeometry(area);
    raise();
    update();
  }
  setVisible(shown);
}

void FocusRing::paintEvent(QPaintEvent*) {
  QPainter p(this);
  const int w = width(), h = height();
  const int thick = std::max(2, std::min({w, h, 48}) / 12);
  auto frame = [&p](QRect r, int t, const QColor& c) {
    p.fillRect(r.left(), r.top(), r.width(), t, c);
    p.fillRect(r.left(), r.bottom() + 1 - t, r.width(), t, c);
    p.fillRect(r.left(), r.top(), t, r.height(), c);
    p.fillRect(r.right() + 1 - t, r.top(), t, r.height(), c);
  };
  frame(rect(), thick, FocusColour());
  frame(rect().adjusted(thick, thick, -thick, -thick), 1, Qt::white);
}

}  // namespace kuvo
