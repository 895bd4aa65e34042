#pragma once

#include <QPointF>
#include <QWidget>

namespace kuvo {

class DrawingArea;

// A drawing area on screen: its background, then the boxes drawn on it in
// drawing order, each cut off at the area's edges. The boxes are read from the
// control at every paint, so the drawing comes back whenever the area is
// uncovered.
class DrawingAreaWidget : public QWidget {
 public:
  DrawingAreaWidget(QWidget* parent, const DrawingArea* area);
  // The control is going: nothing more is painted from it.
  void Release() { area_ = nullptr; }
  // A point of the widget, in pixels, in the area's own unit.
  QPointF Units(QPointF pixels) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const DrawingArea* area_;
};

}  // namespace kuvo
