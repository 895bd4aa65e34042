#pragma once

#include <QFrame>
#include <functional>

#include "gui/ControlView.h"

namespace kuvo {

// The drawing unit of a picture in twips per unit (1 for twips, 1440 / 25.4 for
// millimetres). Pictures are in twips unless a window's code installs a hook.
using PictureScaleHook = std::function<double(const PictureBox& picture)>;
void SetPictureScaleHook(PictureScaleHook hook);
double PictureTwipsPerUnit(const PictureBox& picture);

// A drawing area on screen: its back colour, the animation cell it shows, then
// the boxes drawn on it, in its own unit.
class PictureWidget : public QFrame {
 public:
  PictureWidget(QWidget* parent, const PictureBox* pic);
  // The control is going: nothing more is read from it.
  void Release() { pic_ = nullptr; }
  // Twips in one pixel of this picture, zoom included.
  double twipsPerPx = 15;

 protected:
  void paintEvent(QPaintEvent* e) override;

 private:
  const PictureBox* pic_;
};

// A picture box: a drawing area whose mouse events come in its own unit.
class PictureView : public ControlView {
 public:
  PictureView(FormView& v, PictureBox& c);
  QWidget* Widget() const override;
  void Detach() override;

 protected:
  bool ClickFromMouse() const override { return true; }
  QPointF Units(QObject* watched, QPointF pos) const override;
  void SyncOwn() override;

 private:
  PictureBox& c_;
  PictureWidget* w_;
  int revision_ = -1, picture_ = -1;
  unsigned back_ = 0;
  bool first_ = true;
};

class DecorationWidget;

// An image: one of the program's small decorations, under the other controls.
class ImageView : public ControlView {
 public:
  ImageView(FormView& v, Image& c);
  QWidget* Widget() const override;
  bool Lightweight() const override { return true; }

 protected:
  bool ClickFromMouse() const override { return true; }
  void SyncOwn() override;

 private:
  Image& c_;
  DecorationWidget* w_;
};

}  // namespace kuvo
