#pragma once

#include "core/Controls.h"
#include "gui/ControlView.h"

namespace kuvo {

class DrawingAreaWidget;

// A drawing area: its background, then the boxes drawn on it in drawing order,
// each cut off at the area's edges. The boxes are read from the control at
// every paint, so the drawing comes back whenever the area is uncovered. Mouse
// events come in the area's own unit. To a screen reader it is a chart,
// described by the label along its top edge, where the window says what lies
// under the pointer.
class DrawingAreaView : public ControlView {
 public:
  DrawingAreaView(FormView& v, DrawingArea& c);
  QWidget* Widget() const override;
  void Detach() override;

 protected:
  bool ClickFromMouse() const override { return true; }
  QPointF Units(QObject* watched, QPointF pos) const override;
  void SyncOwn() override;

 private:
  DrawingArea& c_;
  DrawingAreaWidget* w_;
  int revision_ = -1;
  unsigned back_ = 0;
  int border_ = -1;
  const Label* caption_ = nullptr;
};

}  // namespace kuvo
