#include "gui/PictureView.h"

#include <QPainter>

#include "core/Form.h"
#include "gui/Accessible.h"
#include "gui/FormView.h"
#include "gui/Pictures.h"

namespace kuvo {

PictureWidget::PictureWidget(QWidget* parent, const PictureBox* pic) : QFrame(parent), pic_(pic) {
  setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  setLineWidth(2);
}

void PictureWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  // The border as four bands one pixel wide, in the style's frame colour: at a
  // scale such as 150 % a widget may start mid device pixel, where a drawn line
  // falls outside it and the edge is lost.
  const QColor edge = palette().color(QPalette::Window).darker(140).lighter(108);
  const int w = width(), h = height();
  p.fillRect(0, 0, w, 1, edge);
  p.fillRect(0, h - 1, w, 1, edge);
  p.fillRect(0, 0, 1, h, edge);
  p.fillRect(w - 1, 0, 1, h, edge);
  if (!pic_) return;
  const QRect inner = contentsRect();
  p.setClipRect(inner);
  if (pic_->BackColor != Colours::ButtonFace) p.fillRect(inner, Colour(pic_->BackColor));
  if (pic_->Picture >= 0) DrawAnimationCell(p, QRectF(inner), pic_->Picture);
}

PictureView::PictureView(FormView& v, PictureBox& c)
    : ControlView(v, c), c_(c), w_(new PictureWidget(&v, &c)) {
  w_->setMouseTracking(static_cast<bool>(c.MouseMove));
  // A picture holding controls is a panel to a screen reader, any other one
  // a picture.
  bool holds = false;
  for (const Control* other : v.TheForm().Controls()) holds = holds || other->Container == &c;
  accessible::SetRole(w_, holds ? QAccessible::Grouping : QAccessible::Graphic);
  Watch(w_);
}

QWidget* PictureView::Widget() const { return w_; }

void PictureView::Detach() {
  w_->Release();
  ControlView::Detach();
}

QPointF PictureView::Units(QObject*, QPointF pos) const {
  const QPointF inner = pos - QPointF(w_->contentsRect().topLeft());
  return inner * TwipsPerPx();
}

void PictureView::SyncOwn() {
  if (first_ || c_.Picture != picture_ || c_.BackColor != back_) {
    picture_ = c_.Picture;
    back_ = c_.BackColor;
    w_->update();
    if (picture_ >= 0 && w_->accessibleName().isEmpty()) {
      w_->setAccessibleName(QStringLiteral("Animation"));
      w_->setAccessibleDescription(QStringLiteral("Une boule de loto qui roule"));
    }
  }
  first_ = false;
}

// Paints one decoration over its whole rectangle.
class DecorationWidget : public QWidget {
 public:
  using QWidget::QWidget;
  int picture = 0;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    DrawDecoration(p, QRectF(rect()), picture);
  }
};

ImageView::ImageView(FormView& v, Image& c)
    : ControlView(v, c), c_(c), w_(new DecorationWidget(&v)) {
  accessible::SetRole(w_, QAccessible::Graphic);
  Watch(w_);
}

QWidget* ImageView::Widget() const { return w_; }

void ImageView::SyncOwn() {
  if (w_->picture != c_.Picture || w_->accessibleName().isEmpty()) {
    w_->picture = c_.Picture;
    w_->update();
    w_->setAccessibleName(DecorationName(c_.Picture));
  }
}

}  // namespace kuvo
