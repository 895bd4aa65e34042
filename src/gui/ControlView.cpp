#include "gui/ControlView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include "core/Form.h"
#include "gui/FormView.h"

namespace kuvo {

bool ControlView::IsPressKey(const QKeyEvent& e) {
  const int key = e.key();
  return (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter ||
          key == Qt::Key_Select) &&
         !(e.modifiers() & ~Qt::KeypadModifier);
}

Int16 ButtonCode(Qt::MouseButtons b) {
  Int16 code = 0;
  if (b & Qt::LeftButton) code |= 1;
  if (b & Qt::RightButton) code |= 2;
  if (b & Qt::MiddleButton) code |= 4;
  return code;
}

Int16 ShiftCode(Qt::KeyboardModifiers m) {
  Int16 code = 0;
  if (m & Qt::ShiftModifier) code |= 1;
  if (m & Qt::ControlModifier) code |= 2;
  if (m & Qt::AltModifier) code |= 4;
  return code;
}

QColor Colour(unsigned bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

void ApplyBackColour(QWidget* w, unsigned bgr, QPalette::ColorRole role) {
  if (bgr == Colours::ButtonFace) {
    w->setAutoFillBackground(false);
    w->setPalette(QPalette());
    return;
  }
  QPalette pal = w->palette();
  pal.setColor(role, Colour(bgr));
  w->setPalette(pal);
  w->setAutoFillBackground(true);
}

int KeyAscii(const QKeyEvent* e) {
  switch (e->key()) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return 0;
    default: break;
  }
  const QString t = e->text();
  if (t.isEmpty()) return 0;
  const char16_t u = t.at(0).unicode();
  return u < 0x8000 ? u : 0;
}

ControlView::ControlView(FormView& view, Control& c)
    : view_(view), c_(c), guard_(std::make_unique<QObject>()) {}

ControlView::~ControlView() = default;

void ControlView::Sync() {
  if (!guard_) return;
  if (Widget()) SyncPlacement();
  SyncOwn();
}

void ControlView::Detach() { guard_.reset(); }

QRect ControlView::DesignRect() const {
  return QRect(Px(c_.Left), Px(c_.Top), Px(c_.Width), Px(c_.Height));
}

QPointF ControlView::Units(QObject* watched, QPointF pos) const {
  if (auto* w = qobject_cast<QWidget*>(watched); w && w != Widget() && Widget())
    pos = w->mapTo(Widget(), pos.toPoint());
  return pos * TwipsPerPx();
}

int ControlView::Px(double twips) const { return kuvo::Px(twips, view_.Zoom()); }

double ControlView::TwipsPerPx() const { return TwipsPerPixel() / view_.Zoom(); }

bool ControlView::Raise(const std::function<void()>& handler) {
  // A control out of the user's reach takes no event; a timer's tick is none.
  if (c_.Kind() != ControlKind::Timer && !c_.Reachable()) return false;
  return guard_ && view_.Raise(handler);
}

void ControlView::Watch(QObject* object) { view_.Watch(object, this); }

void ControlView::SyncPlacement() {
  QWidget* w = Widget();
  const QRect r = DesignRect();
  if (first_ || r != rect_) {
    rect_ = r;
    w->setGeometry(r);
  }
  if (first_ || c_.Enabled != enabled_) {
    enabled_ = c_.Enabled;
    w->setEnabled(enabled_);
  }
  if (first_ || c_.Visible != visible_) {
    visible_ = c_.Visible;
    w->setVisible(visible_);
  }
  if (first_ || c_.ToolTipText != tip_) {
    tip_ = c_.ToolTipText;
    w->setToolTip(tip_);
  }
  first_ = false;
}

bool ControlView::OnEvent(QObject* watched, QEvent* event) {
  if (!guard_) return event->type() == QEvent::KeyPress;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove: {
      auto* e = static_cast<QMouseEvent*>(event);
      const QPointF at = Units(watched, e->position());
      const Int16 shift = ShiftCode(e->modifiers());
      if (event->type() == QEvent::MouseButtonPress) {
        if (c_.MouseDown) {
          const Int16 b = ButtonCode(e->button());
          Raise([this, b, shift, at] { c_.UserMouseDown(b, shift, at.x(), at.y()); });
        }
      } else if (event->type() == QEvent::MouseButtonRelease) {
        const Int16 b = ButtonCode(e->button());
        if (c_.MouseUp &&
            !Raise([this, b, shift, at] { c_.UserMouseUp(b, shift, at.x(), at.y()); }))
          return true;
        auto* w = qobject_cast<QWidget*>(watched);
        if (ClickFromMouse() && e->button() == Qt::LeftButton && w &&
            w->rect().contains(e->position().toPoint()) && c_.Click)
          Raise([this] { c_.UserClick(); });
      } else if (c_.MouseMove) {
        const Int16 b = ButtonCode(e->buttons());
        Raise([this, b, shift, at] { c_.UserMouseMove(b, shift, at.x(), at.y()); });
      }
      return false;
    }
    case QEvent::MouseButtonDblClick:
      if (ClickFromMouse() && c_.DblClick) Raise([this] { c_.UserDblClick(); });
      return false;
    case QEvent::KeyPress: {
      if (!c_.KeyPress) return false;
      const int ascii = KeyAscii(static_cast<QKeyEvent*>(event));
      if (ascii == 0) return false;
      Int16 key = static_cast<Int16>(ascii);
      if (!Raise([this, &key] { key = c_.UserKey(key); })) return true;
      return key == 0;
    }
    case QEvent::FocusIn: c_.UserFocus(); return false;
    default: return false;
  }
}

}  // namespace kuvo
