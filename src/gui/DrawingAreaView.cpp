#include "gui/DrawingAreaView.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "core/Form.h"
#include "gui/Accessible.h"
#include "gui/FormView.h"

namespace kuvo {

// Paints the area from its control; once released, only its background.
class DrawingAreaWidget : public QWidget {
 public:
  DrawingAreaWidget(QWidget* parent, const DrawingArea* area) : QWidget(parent), area_(area) {
    // Every pixel is painted here: no need for Qt to clear first.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
  }
  void Release() { area_ = nullptr; }
  // Twips in one pixel of this area, the window's zoom included.
  double twipsPerPx = 15;
  // The border's thickness, in pixels.
  double Border() const { return area_ ? area_->BorderTwips() / twipsPerPx : 0; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    if (!area_) {
      p.fillRect(rect(), palette().window());
      return;
    }
    QRectF inner(rect());
    if (area_->BorderStyle) {
      p.fillRect(rect(), palette().dark());
      inner.adjust(Border(), Border(), -Border(), -Border());
    }
    p.fillRect(inner, Colour(area_->BackColor));
    p.setClipRect(inner);
    const double scale = area_->TwipsPerUnit() / twipsPerPx;
    for (const DrawingArea::Box& b : area_->Boxes()) {
      const QRectF box(QPointF(std::min(b.x1, b.x2), std::min(b.y1, b.y2)) * scale,
                       QPointF(std::max(b.x1, b.x2), std::max(b.y1, b.y2)) * scale);
      p.fillRect(box.translated(inner.topLeft()), Colour(b.colour));
    }
  }

 private:
  const DrawingArea* area_;
};

DrawingAreaView::DrawingAreaView(FormView& v, DrawingArea& c)
    : ControlView(v, c), c_(c), w_(new DrawingAreaWidget(&v, &c)) {
  accessible::SetRole(w_, QAccessible::Chart);
  w_->setAccessibleName(QStringLiteral("Graphique"));
  // The label along the area's top edge is where the window says what lies
  // under the pointer: it describes the area to a screen reader.
  for (Control* other : v.TheForm().Controls()) {
    if (other->Kind() != ControlKind::Label || other->Container != c.Container) continue;
    const int bottom = other->Top + other->Height;
    const int across =
        std::min(other->Left + other->Width, c.Left + c.Width) - std::max(other->Left, c.Left);
    if (bottom <= c.Top && bottom >= c.Top - 120 && across * 2 >= c.Width)
      caption_ = static_cast<const Label*>(other);
  }
  Watch(w_);
}

QWidget* DrawingAreaView::Widget() const { return w_; }

void DrawingAreaView::Detach() {
  w_->Release();
  ControlView::Detach();
}

QPointF DrawingAreaView::Units(QObject*, QPointF pos) const {
  const double border = w_->Border();
  return (pos - QPointF(border, border)) * TwipsPerPx() / c_.TwipsPerUnit();
}

void DrawingAreaView::SyncOwn() {
  const QString said = caption_ && !caption_->Caption.trimmed().isEmpty()
                           ? caption_->Caption.simplified()
                           : QStringLiteral("Barres des numéros");
  if (w_->accessibleDescription() != said) w_->setAccessibleDescription(said);
  const double twipsPerPx = TwipsPerPx();
  if (c_.Revision() != revision_ || c_.BackColor != back_ || c_.BorderStyle != border_ ||
      twipsPerPx != w_->twipsPerPx) {
    w_->twipsPerPx = twipsPerPx;
    revision_ = c_.Revision();
    back_ = c_.BackColor;
    border_ = c_.BorderStyle;
    w_->update();
  }
}

}  // namespace kuvo
