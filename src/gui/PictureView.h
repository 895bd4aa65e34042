#pragma once

#include <QFrame>

#include "gui/ControlView.h"

namespace kuvo {

// A picture on screen: its back colour and the animation cell it shows.
class PictureWidget : public QFrame {
 public:
  PictureWidget(QWidget* parent, const PictureBox* pic);
  // The control is going: nothing more is read from it.
  void Release() { pic_ = nullptr; }

 protected:
  void paintEvent(QPaintEvent* e) override;

 private:
  const PictureBox* pic_;
};

// A picture box, which may hold other controls; its mouse events come in twips
// from its inner corner.
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
  int picture_ = -1;
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
