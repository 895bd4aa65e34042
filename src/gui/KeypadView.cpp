#include "gui/KeypadView.h"

#include <QToolButton>
#include <QWidget>
#include <algorithm>

#include "gui/FormView.h"
#include "gui/KeypadFaces.h"
#include "gui/Pictures.h"

namespace kuvo {

ToolbarView::ToolbarView(FormView& v, Toolbar& c) : ControlView(v, c), c_(c), w_(new QWidget(&v)) {
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
    if (k.button->toolTip() != b.ToolTipText) k.button->setToolTip(b.ToolTipText);
    if (k.button->isEnabled() != b.Enabled) k.button->setEnabled(b.Enabled);
    if (k.button->isVisibleTo(w_) != b.Visible) k.button->setVisible(b.Visible);
  }
}

void ToolbarView::Rebuild() {
  for (Key& k : keys_) delete k.button;
  keys_.clear();
  laidOut_ = w_->size();
  revision_ = -1;
  const Toolbar& bar = c_;
  const int n = bar.ButtonCount();
  if (bar.IsKeypad) {
    const int perRow = 10;
    const int rows = std::max(1, (n + perRow - 1) / perRow);
    const int kw = std::max(12, laidOut_.width() / perRow);
    const int kh = laidOut_.height() > 0 ? std::max(12, laidOut_.height() / rows) : kw;
    for (int i = 0; i < n; ++i) {
      Key k;
      if (bar.Buttons(i + 1).Style != 3) {
        k.button = MakeButton(i + 1);
        k.button->setGeometry((i % perRow) * kw, (i / perRow) * kh, kw, kh);
        k.button->setIconSize(QSize(kw - 4, kh - 4));
      }
      keys_.push_back(k);
    }
  } else {
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
}

QToolButton* ToolbarView::MakeButton(int index) {
  auto* b = new QToolButton(w_);
  b->setAutoRaise(!c_.IsKeypad);
  b->setFocusPolicy(Qt::NoFocus);
  QObject::connect(b, &QToolButton::clicked, Guard(),
                   [this, index] { Raise([this, index] { c_.UserClick(index); }); });
  b->show();
  return b;
}

}  // namespace kuvo
