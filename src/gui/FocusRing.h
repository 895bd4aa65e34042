#pragma once

#include <QWidget>

namespace kuvo {

// The keyboard focus drawn on a key or a clickable label: a dark ring with a
// white line inside, which stands out on a light, a coloured or a dark
// background. It lies over its parent's content and lets the mouse through.
class FocusRing : public QWidget {
 public:
  explicit FocusRing(QWidget* parent);
  // Shows the ring over `area` of the parent, or hides it.
  void Show(bool shown, const QRect& area);

 protected:
  void paintEvent(QPaintEvent* e) override;
};

}  // namespace kuvo
