#include "gui/KeypadView.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QWidget>
#include <algorithm>

#include "gui/Accessible.h"
#include "gui/FocusRing.h"
#include "gui/FormView.h"
#include "gui/KeypadFaces.h"
#include "gui/Pictures.h"

namespace kuvo {

ToolbarView::ToolbarView(FormView& v, Toolbar& c)
    : ControlView(v, c), c_(c), w_(new QWidget(&v)), ring_(new FocusRing(w_)) {
  if (c.IsKeypad) {
    // One stop of the Tab chain; a click on a key leaves the focus where it is.
    w_->setFocusPolicy(Qt::TabFocus);
    accessible::SetRole(w_, QAccessible::Grouping);
    const bool chance = c.ButtonCount() <= 10;
    w_->setAccessibleName(chance ? QStringLiteral("Numéros de la chance")
                                 : QStringLiteral("Numéros"));
  } else {
    accessible::SetRole(w_, QAccessible::ToolBar);
  }
  Watch(w_);
}

QWidget* ToolbarView::Widget() const { return w_; }

QRect ToolbarView::DesignRect() const {
  QRect r = ControlView::DesignRect();
  // A toolbar without a size lies along the top of the window.
  if (r.width() <= 0) r = QRect(0, 0, view_.width(), r.height() > 0 ? r.height() : 30);
  return r;
}

void ToolbarView::SyncOwn() {
  const QSize size = w_->size();
  if (c_.ButtonCount() != static_cast<int>(keys_.size()) || size != laidOut_) Rebuild();
  if (c_.Revision == revision_) return;
  revision_ = c_.Revision;
  const Toolbar& bar = c_;
  for (int i = 1; i <= bar.ButtonCount(); ++i) {
    const ToolbarButton& b = bar.Buttons(i);
    Key& k = keys_[static_cast<size_t>(i - 1)];
    if (!k.button) continue;
    if (k.image != b.Image) {
      k.image = b.Image;
      k.button->setIcon(bar.IsKeypad ? KeypadIcon(b.Image) : ToolbarIcon(b.Image));
      if (!bar.IsKeypad && b.Image == 0) k.button->setText(b.Key);
    }
    if (bar.IsKeypad) {
      const bool number = KeyNumber(b) != kKeypadAboutKey || bar.ButtonCount() < kKeypadAboutKey;
      accessible::SetKey(k.button, number, KeypadFaceMarked(b.Image));
    }
    const QString name = KeyName(i);
    if (k.button->accessibleName() != name) k.button->setAccessibleName(name);
    if (k.button->toolTip() != b.ToolTipText) k.button->setToolTip(b.ToolTipText);
    if (k.button->isEnabled() != b.Enabled) k.button->setEnabled(b.Enabled);
    if (k.button->isVisibleTo(w_) != b.Visible) k.button->setVisible(b.Visible);
  }
  KeepCursorUsable();
  ShowCursor();
}

void ToolbarView::Rebuild() {
  accessible::SetCursorKey(w_, nullptr);
  for (Key& k : keys_) delete k.button;
  keys_.clear();
  laidOut_ = w_->size();
  revision_ = -1;
  const Toolbar& bar = c_;
  const int n = bar.ButtonCount();
  if (bar.IsKeypad) {
    perRow_ = 10;
    const int rows = std::max(1, (n + perRow_ - 1) / perRow_);
    const int kw = std::max(12, laidOut_.width() / perRow_);
    const int kh = laidOut_.height() > 0 ? std::max(12, laidOut_.height() / rows) : kw;
    for (int i = 0; i < n; ++i) {
      Key k;
      if (bar.Buttons(i + 1).Style != 3) {
        k.button = MakeButton(i + 1);
        k.button->setGeometry((i % perRow_) * kw, (i / perRow_) * kh, kw, kh);
        k.button->setIconSize(QSize(kw - 4, kh - 4));
      }
      keys_.push_back(k);
    }
  } else {
    perRow_ = std::max(1, n);
    const int side = std::max(16, laidOut_.height() > 0 ? laidOut_.height() - 4 : 28);
    int x = 2;
    for (int i = 0; i < n; ++i) {
      Key k;
      if (bar.Buttons(i + 1).Style == 3) {
        x += 8;
      } else {
        k.button = MakeButton(i + 1);
        k.button->setGeometry(x, 2, side, side);
        k.button->setIconSize(QSize(side - 8, side - 8));
        x += side;
      }
      keys_.push_back(k);
    }
  }
  ring_->raise();
}

QToolButton* ToolbarView::MakeButton(int index) {
  QToolButton* b = c_.IsKeypad ? new KeyButton(w_) : new QToolButton(w_);
  b->setAutoRaise(!c_.IsKeypad);
  b->setFocusPolicy(Qt::NoFocus);
  QObject::connect(b, &QToolButton::clicked, Guard(), [this, index] {
    // The keyboard goes on from the key last clicked.
    if (Usable(index)) MoveCursor(index);
    Press(index);
  });
  b->show();
  return b;
}

void ToolbarView::Press(int index) {
  Raise([this, index] { c_.UserClick(index); });
}

bool ToolbarView::Usable(int index) const {
  if (index < 1 || index > c_.ButtonCount()) return false;
  const ToolbarButton& b = static_cast<const Toolbar&>(c_).Buttons(index);
  const Key& k =
      keys_.size() >= static_cast<size_t>(index) ? keys_[static_cast<size_t>(index - 1)] : Key{};
  return k.button && b.Style != 3 && b.Visible && b.Enabled;
}

int ToolbarView::Walk(int from, int step) const {
  for (int i = from + step; i >= 1 && i <= c_.ButtonCount(); i += step)
    if (Usable(i)) return i;
  return from;
}

bool ToolbarView::OnEvent(QObject* watched, QEvent* event) {
  if (watched == w_) {
    switch (event->type()) {
      case QEvent::KeyPress:
        if (KeyFromKeyboard(*static_cast<QKeyEvent*>(event))) return true;
        break;
      case QEvent::FocusIn:
        KeepCursorUsable();
        ShowCursor();
        accessible::AnnounceCursorKey(w_);
        break;
      case QEvent::FocusOut: ShowCursor(); break;
      default: break;
    }
  }
  return ControlView::OnEvent(watched, event);
}

// Moves the cursor or presses its key; false for a key the keypad leaves to others.
bool ToolbarView::KeyFromKeyboard(const QKeyEvent& e) {
  if (!c_.IsKeypad || (e.modifiers() & ~Qt::KeypadModifier)) return false;
  KeepCursorUsable();
  switch (e.key()) {
    case Qt::Key_Left: MoveCursor(Walk(cursor_, -1)); return true;
    case Qt::Key_Right: MoveCursor(Walk(cursor_, 1)); return true;
    case Qt::Key_Up: MoveCursor(Walk(cursor_, -perRow_)); return true;
    case Qt::Key_Down: MoveCursor(Walk(cursor_, perRow_)); return true;
    case Qt::Key_Home: MoveCursor(Walk(0, 1)); return true;
    case Qt::Key_End: MoveCursor(Walk(c_.ButtonCount() + 1, -1)); return true;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Select:
      // A key held down presses once, as a mouse button held does.
      if (!e.isAutoRepeat() && Usable(cursor_)) Press(cursor_);
      return true;
    default: return false;
  }
}

void ToolbarView::MoveCursor(int index) {
  if (index == cursor_ || !Usable(index)) return;
  cursor_ = index;
  ShowCursor();
  accessible::AnnounceCursorKey(w_);
}

void ToolbarView::KeepCursorUsable() {
  if (Usable(cursor_)) return;
  int next = Walk(std::max(0, cursor_ - 1), 1);
  if (!Usable(next)) next = Walk(c_.ButtonCount() + 1, -1);
  cursor_ = Usable(next) ? next : 0;
}

void ToolbarView::ShowCursor() {
  QWidget* key = Usable(cursor_) ? keys_[static_cast<size_t>(cursor_ - 1)].button : nullptr;
  accessible::SetCursorKey(w_, key);
  ring_->Show(key && w_->hasFocus(), key ? key->geometry() : QRect());
}

QString ToolbarView::KeyName(int index) const {
  const ToolbarButton& b = static_cast<const Toolbar&>(c_).Buttons(index);
  if (!c_.IsKeypad) return b.ToolTipText;
  const int n = KeyNumber(b);
  if (c_.ButtonCount() <= 10) return QStringLiteral("Chance %1").arg(n);
  if (n == kKeypadAboutKey) return QStringLiteral("A Propos de Kuvo");
  return QStringLiteral("Numéro %1").arg(n);
}

}  // namespace kuvo
