#include "gui/ListViews.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QSignalBlocker>

#include "gui/FormView.h"

namespace kuvo {

ComboView::ComboView(FormView& v, ComboBox& c) : ControlView(v, c), c_(c), w_(new QComboBox(&v)) {
  w_->setMaxVisibleItems(16);
  w_->setInsertPolicy(QComboBox::NoInsert);
  QObject::connect(w_, &QComboBox::activated, Guard(), [this](int index) {
    if (index < 0 || index >= c_.ListCount()) return;
    Raise([this, index] { c_.UserPick(index); });
  });
  Watch(w_);
  SetEditable(c_.Style != 2);
}

QWidget* ComboView::Widget() const { return w_; }

void ComboView::SyncOwn() {
  QSignalBlocker block(w_);
  if ((c_.Style != 2) != w_->isEditable()) SetEditable(c_.Style != 2);
  if (first_ || c_.List != items_) {
    items_ = c_.List;
    w_->clear();
    w_->addItems(items_);
    index_ = -2;
  }
  if (c_.ListIndex() != index_ || w_->currentIndex() != c_.ListIndex()) {
    index_ = c_.ListIndex();
    w_->setCurrentIndex(index_);
  }
  if (w_->isEditable() && w_->currentText() != c_.Text) w_->setEditText(c_.Text);
  first_ = false;
}

void ComboView::SetEditable(bool editable) {
  w_->setEditable(editable);
  if (editable && w_->lineEdit()) {
    // Leaving the text or pressing Enter in it picks nothing: only a choice in
    // the list raises Click.
    QObject::disconnect(w_->lineEdit(), &QLineEdit::editingFinished, nullptr, nullptr);
    QObject::disconnect(w_->lineEdit(), &QLineEdit::returnPressed, nullptr, nullptr);
    QObject::connect(w_->lineEdit(), &QLineEdit::textEdited, Guard(),
                     [this](const QString& text) { Raise([this, text] { c_.UserType(text); }); });
    Watch(w_->lineEdit());
  }
}

ListView::ListView(FormView& v, ListBox& c) : ControlView(v, c), c_(c), w_(new QListWidget(&v)) {
  w_->setUniformItemSizes(true);
  QObject::connect(w_, &QListWidget::currentRowChanged, Guard(), [this](int row) {
    if (row < 0 || row >= c_.ListCount()) return;
    picked_ = true;
    Raise([this, row] { c_.UserPick(row); });
  });
  QObject::connect(w_, &QListWidget::itemClicked, Guard(), [this](QListWidgetItem* item) {
    const bool picked = picked_;
    picked_ = false;
    if (picked) return;  // the press already picked it
    const int row = w_->row(item);
    if (row >= 0 && row < c_.ListCount()) Raise([this, row] { c_.UserPick(row); });
  });
  QObject::connect(w_, &QListWidget::itemDoubleClicked, Guard(), [this] {
    if (c_.DblClick) Raise([this] { c_.UserDblClick(); });
  });
  Watch(w_);
  Watch(w_->viewport());
}

QWidget* ListView::Widget() const { return w_; }

bool ListView::OnEvent(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonPress) return ControlView::OnEvent(watched, event);
  if (watched != w_->viewport()) {
    // A press on the frame: whether it picks a row is told by currentRowChanged.
    picked_ = false;
    return ControlView::OnEvent(watched, event);
  }
  // A press on the items picks the row under it (Click when it changed), then
  // raises MouseDown, before the widget sees the press.
  auto* e = static_cast<QMouseEvent*>(event);
  const int row = w_->indexAt(e->position().toPoint()).row();
  const bool onItem = row >= 0 && row < c_.ListCount();
  const bool changed = onItem && row != c_.ListIndex();
  const QPointF at = Units(watched, e->position());
  const Int16 button = ButtonCode(e->button());
  const Int16 shift = ShiftCode(e->modifiers());
  if (!Raise([this, onItem, row, button, shift, at] {
        c_.UserPress(onItem ? row : -1, button, shift, at.x(), at.y());
      }))
    return true;
  // A release on the row this press picked raises no second Click.
  picked_ = changed;
  return false;
}

void ListView::SyncOwn() {
  QSignalBlocker block(w_);
  if (first_ || c_.List != items_) {
    items_ = c_.List;
    w_->clear();
    w_->addItems(items_);
    index_ = -2;
  }
  if (c_.ListIndex() != index_ || w_->currentRow() != c_.ListIndex()) {
    index_ = c_.ListIndex();
    w_->setCurrentRow(index_);
    if (index_ < 0) w_->clearSelection();
  }
  first_ = false;
}

}  // namespace kuvo
