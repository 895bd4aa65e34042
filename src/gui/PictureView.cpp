#include "gui/PictureView.h"

#include <QPainter>
#include <algorithm>

#include "gui/FormView.h"
#include "gui/Pictures.h"

namespace kuvo {

namespace {

PictureScaleHook& ScaleHook() {
  static PictureScaleHook hook;
  return hook;
}

}  // namespace

void SetPictureScaleHook(PictureScaleHook hook) { ScaleHook() = std::move(hook); }

double PictureTwipsPerUnit(const PictureBox& picture) {
  if (ScaleHook()) {
    const double s = ScaleHook()(picture);
    if (s > 0) return s;
  }
  return 1.0;
}

PictureWidget::PictureWidget(QWidget* parent, const PictureBox* pic) : QFrame(parent), pic_(pic) {
  setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  setLineWidth(2);
}

void PictureWidget::paintEvent(QPaintEvent* e) {
  QFrame::paintEvent(e);
  if (!pic_) return;
  QPainter p(this);
  const QRect inner = contentsRect();
  p.setClipRect(inner);
  if (pic_->BackColor != Colours::ButtonFace) p.fillRect(inner, Colour(pic_->BackColor));
  if (pic_->Picture >= 0) DrawAnimationCell(p, QRectF(inner), pic_->Picture);
  const double pxPerUnit = PictureTwipsPerUnit(*pic_) / twipsPerPx;
  p.translate(inner.topLeft());
  for (const DrawnBox& b : pic_->Drawing) {
    const QRectF r(QPointF(std::min(b.x1, b.x2) * pxPerUnit, std::min(b.y1, b.y2) * pxPerUnit),
                   QPointF(std::max(b.x1, b.x2) * pxPerUnit, std::max(b.y1, b.y2) * pxPerUnit));
    p.fillRect(r, Colour(b.colour));
  }
}

PictureView::PictureView(FormView& v, PictureBox& c)
    : ControlView(v, c), c_(c), w_(new PictureWidget(&v, &c)) {
  w_->setMouseTracking(static_cast<bool>(c.MouseMove));
  Watch(w_);
}

QWidget* PictureView::Widget() const { return w_; }

void PictureView::Detach() {
  w_->Release();
  ControlView::Detach();
}

QPointF PictureView::Units(QObject*, QPointF pos) const {
  const QPointF inner = pos - QPointF(w_->contentsRect().topLeft());
  return inner * TwipsPerPx() / PictureTwipsPerUnit(c_);
}

void PictureView::SyncOwn() {
  const double twipsPerPx = TwipsPerPx();
  if (first_ || c_.Revision != revision_ || c_.Picture != picture_ || c_.BackColor != back_ ||
      twipsPerPx != w_->twipsPerPx) {
    w_->twipsPerPx = twipsPerPx;
    revision_ = c_.Revision;
    picture_ = c_.Picture;
    back_ = c_.BackColor;
    w_->update();
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
  Watch(w_);
}

QWidget* ImageView::Widget() const { return w_; }

void ImageView::SyncOwn() {
  if (w_->picture != c_.Picture) {
    w_->picture = c_.Picture;
    w_->update();
  }
}

}  // namespace kuvo
