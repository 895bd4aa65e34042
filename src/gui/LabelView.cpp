#include "gui/LabelView.h"

#include <QKeyEvent>
#include <QLabel>

#include "gui/Accessible.h"
#include "gui/FocusRing.h"
#include "gui/FormView.h"

namespace kuvo {

LabelView::LabelView(FormView& v, Label& c) : ControlView(v, c), c_(c), w_(new QLabel(&v)) {
  w_->setTextFormat(Qt::PlainText);
  w_->setWordWrap(true);
  if (c.Click || c.MouseDown || c.MouseUp) {
    w_->setFocusPolicy(Qt::TabFocus);
    accessible::SetRole(w_, QAccessible::Button);
    clickable_ = true;
  }
  Watch(w_);
}

bool LabelView::OnEvent(QObject* watched, QEvent* event) {
  if (clickable_ && watched == w_) {
    switch (event->type()) {
      case QEvent::KeyPress: {
        const auto* e = static_cast<QKeyEvent*>(event);
        if (IsPressKey(*e)) {
          if (!e->isAutoRepeat()) Press();
          return true;
        }
        break;
      }
      case QEvent::FocusIn:
      case QEvent::FocusOut: ShowRing(); break;
      default: break;
    }
  }
  return ControlView::OnEvent(watched, event);
}

void LabelView::ShowRing() {
  // Around the label rather than over its text, which may fill it.
  if (!ring_ && w_->parentWidget()) ring_ = new FocusRing(w_->parentWidget());
  if (ring_) ring_->Show(w_->hasFocus(), w_->geometry().adjusted(-3, -3, 3, 3));
}

void LabelView::Press() {
  const QPointF at = QPointF(w_->width() / 2.0, w_->height() / 2.0) * TwipsPerPx();
  if (c_.MouseDown) Raise([this, at] { c_.UserMouseDown(1, 0, at.x(), at.y()); });
  if (c_.MouseUp && !Raise([this, at] { c_.UserMouseUp(1, 0, at.x(), at.y()); })) return;
  if (c_.Click) Raise([this] { c_.UserClick(); });
}

QWidget* LabelView::Widget() const { return w_; }

void LabelView::SyncOwn() {
  if (first_ || c_.Caption != caption_) {
    caption_ = c_.Caption;
    w_->setText(caption_);
    if (clickable_) w_->setAccessibleName(caption_.simplified());
  }
  if (first_ || c_.BackColor != back_ || c_.ForeColor != fore_) {
    back_ = c_.BackColor;
    fore_ = c_.ForeColor;
    ApplyBackColour(w_, back_);
    QPalette pal = w_->palette();
    pal.setColor(QPalette::WindowText, Colour(fore_));
    w_->setPalette(pal);
  }
  if (first_ || c_.FontBold != bold_ || c_.FontSize != size_ || view_.Zoom() != zoom_) {
    bold_ = c_.FontBold;
    size_ = c_.FontSize;
    zoom_ = view_.Zoom();
    QFont f = w_->font();
    f.setBold(bold_);
    if (size_ > 0) f.setPointSizeF(size_ * zoom_);
    w_->setFont(f);
  }
  if (first_ || c_.Alignment != align_) {
    align_ = c_.Alignment;
    const Qt::Alignment h = align_ == 1   ? Qt::AlignRight
                            : align_ == 2 ? Qt::AlignHCenter
                                          : Qt::AlignLeft;
    w_->setAlignment(h | Qt::AlignTop);
  }
  first_ = false;
}

}  // namespace kuvo
