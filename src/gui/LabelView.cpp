#include "gui/LabelView.h"

#include <QLabel>

#include "gui/FormView.h"

namespace kuvo {

LabelView::LabelView(FormView& v, Label& c) : ControlView(v, c), c_(c), w_(new QLabel(&v)) {
  w_->setTextFormat(Qt::PlainText);
  w_->setWordWrap(true);
  Watch(w_);
}

QWidget* LabelView::Widget() const { return w_; }

void LabelView::SyncOwn() {
  if (first_ || c_.Caption != caption_) {
    caption_ = c_.Caption;
    w_->setText(caption_);
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
