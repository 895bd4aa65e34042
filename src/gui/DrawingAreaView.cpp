#include "gui/DrawingAreaView.h"

#include <QPainter>
#include <algorithm>

#include "core/DrawingArea.h"

namespace kuvo {

namespace {

constexpr double kTwipsPerPixel = 15.0;

QColor Bgr(unsigned bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

}  // namespace

DrawingAreaWidget::DrawingAreaWidget(QWidget* parent, const DrawingArea* area)
    : QWidget(parent), area_(area) {
  // Every pixel is painted here: no need for Qt to clear first.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

QPointF DrawingAreaWidget::Units(QPointF pixels) const {
  if (!area_) return pixels;
  const double border = area_->BorderTwips() / kTwipsPerPixel;
  return (pixels - QPointF(border, border)) * kTwipsPerPixel / area_->TwipsPerUnit();
}

void DrawingAreaWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  if (!area_) {
    p.fillRect(rect(), palette().window());
    return;
  }
  QRectF inner(rect());
  if (area_->BorderStyle) {
    const double border = area_->BorderTwips() / kTwipsPerPixel;
    p.fillRect(rect(), palette().dark());
    inner.adjust(border, border, -border, -border);
  }
  p.fillRect(inner, Bgr(area_->BackColor));
  p.setClipRect(inner);
  const double scale = area_->TwipsPerUnit() / kTwipsPerPixel;
  for (const DrawingArea::Box& b : area_->Boxes()) {
    const QRectF box(QPointF(std::min(b.x1, b.x2), std::min(b.y1, b.y2)) * scale,
                     QPointF(std::max(b.x1, b.x2), std::max(b.y1, b.y2)) * scale);
    p.fillRect(box.translated(inner.topLeft()), Bgr(b.colour));
  }
}

}  // namespace kuvo
