#include "gui/ChoiceViews.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QSignalBlocker>

#include "gui/FormView.h"

namespace kuvo {

OptionView::OptionView(FormView& v, OptionButton& c)
    : ControlView(v, c), c_(c), w_(new QRadioButton(&v)) {
  w_->setAutoExclusive(false);
  // An option that describes itself under the mouse follows it without a button held.
  w_->setMouseTracking(static_cast<bool>(c.MouseMove));
  QObject::connect(w_, &QRadioButton::clicked, Guard(),
                   [this] { Raise([this] { c_.UserClick(); }); });
  Watch(w_);
}

QWidget* OptionView::Widget() const { return w_; }

void OptionView::SyncOwn() {
  if (w_->text() != c_.Caption) w_->setText(c_.Caption);
  if (w_->isChecked() != c_.Value) {
    QSignalBlocker block(w_);
    w_->setChecked(c_.Value);
  }
}

CheckView::CheckView(FormView& v, CheckBox& c) : ControlView(v, c), c_(c), w_(new QCheckBox(&v)) {
  w_->setTristate(false);
  QObject::connect(w_, &QCheckBox::clicked, Guard(), [this] { Raise([this] { c_.UserClick(); }); });
  Watch(w_);
}

QWidget* CheckView::Widget() const { return w_; }

void CheckView::SyncOwn() {
  if (w_->text() != c_.Caption) w_->setText(c_.Caption);
  const Qt::CheckState want = c_.Value == 1   ? Qt::Checked
                              : c_.Value == 2 ? Qt::PartiallyChecked
                                              : Qt::Unchecked;
  if (w_->checkState() != want) {
    QSignalBlocker block(w_);
    w_->setCheckState(want);
  }
}

}  // namespace kuvo
