#include "gui/CalendarView.h"

#include <QCalendarWidget>
#include <QSignalBlocker>

#include "core/Texts.h"
#include "gui/FormView.h"

namespace kuvo {

CalendarView::CalendarView(FormView& v, Calendar& c)
    : ControlView(v, c), c_(c), w_(new QCalendarWidget(&v)) {
  w_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  w_->setGridVisible(true);
  // Day and month names follow the program's regional settings.
  w_->setLocale(Regional());
  plain_ = w_->palette();
  QObject::connect(w_, &QCalendarWidget::clicked, Guard(),
                   [this](QDate day) { Raise([this, day] { c_.UserPick(day); }); });
  Watch(w_);
}

QWidget* CalendarView::Widget() const { return w_; }

void CalendarView::SyncOwn() {
  const int narrow = w_->width() < 280 ? 1 : 0;
  if (narrow != narrow_) {
    narrow_ = narrow;
    w_->setHorizontalHeaderFormat(narrow ? QCalendarWidget::SingleLetterDayNames
                                         : QCalendarWidget::ShortDayNames);
  }
  if (!first_ && c_.Value() == value_ && c_.Shown() == shown_) return;
  first_ = false;
  value_ = c_.Value();
  shown_ = c_.Shown();
  QSignalBlocker block(w_);
  if (value_.isValid()) {
    w_->setPalette(plain_);
    w_->setSelectedDate(value_);
  } else {
    // No day chosen: the selection is drawn like any other day.
    QPalette pal = plain_;
    pal.setColor(QPalette::Highlight, pal.color(QPalette::Base));
    pal.setColor(QPalette::HighlightedText, pal.color(QPalette::Text));
    w_->setPalette(pal);
  }
  if (shown_.isValid()) w_->setCurrentPage(shown_.year(), shown_.month());
}

}  // namespace kuvo
