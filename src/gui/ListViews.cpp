#include "gui/ListViews.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QListWidget>
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
    QObject::connect(w_->lineEdit(), &QLineEdit::textEdited, Guard(), [this](const QString& text) {
      c_.Text = text;
      if (c_.Change) Raise([this] { c_.Change(); });
    });
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
    if (c_.DblClick) Raise([this] { c_.DblClick(); });
  });
  Watch(w_);
  Watch(w_->viewport());
}

QWidget* ListView::Widget() const { return w_; }

bool ListView::OnEvent(QObject* watched, QEvent* event) {
  // A new press: whether it picks a new row is told by currentRowChanged.
  if (event->type() == QEvent::MouseButtonPress) picked_ = false;
  return ControlView::OnEvent(watched, event);
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
