#include "gui/CalendarView.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTextCharFormat>

#include "core/Texts.h"
#include "gui/FormView.h"

namespace kuvo {

CalendarView::CalendarView(FormView& v, Calendar& c)
    : ControlView(v, c), c_(c), w_(new QCalendarWidget(&v)) {
  w_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  w_->setGridVisible(true);
  // Day and month names follow the program's regional settings.
  w_->setLocale(Regional());
  w_->setAccessibleName(QStringLiteral("Calendrier"));
  // Week-ends in a red that reads on white (Qt's pure red does not).
  QTextCharFormat weekEnd = w_->weekdayTextFormat(Qt::Saturday);
  weekEnd.setForeground(QColor(0xC0, 0x00, 0x00));
  w_->setWeekdayTextFormat(Qt::Saturday, weekEnd);
  w_->setWeekdayTextFormat(Qt::Sunday, weekEnd);
  plain_ = w_->palette();
  QObject::connect(w_, &QCalendarWidget::clicked, Guard(),
                   [this](QDate day) { Raise([this, day] { c_.UserPick(day); }); });
  Watch(w_);
  // The days are a table inside the calendar, which takes its focus and keys.
  days_ = w_->findChild<QAbstractItemView*>();
  if (days_) Watch(days_);
}

QWidget* CalendarView::Widget() const { return w_; }

bool CalendarView::OnEvent(QObject* watched, QEvent* event) {
  if (days_ && watched == days_) {
    switch (event->type()) {
      case QEvent::KeyPress: {
        // The arrow keys move the table's cursor; Space or Enter clicks its day.
        const auto* e = static_cast<QKeyEvent*>(event);
        if (IsPressKey(*e)) {
          const QDate day = w_->selectedDate();
          if (!e->isAutoRepeat() && day.isValid()) Raise([this, day] { c_.UserPick(day); });
          return true;
        }
        break;
      }
      case QEvent::FocusIn: ShowChoice(); break;
      case QEvent::FocusOut: {
        // Leaving the calendar, the chosen day shows again where the cursor was.
        if (value_.isValid() && w_->selectedDate() != value_) {
          QSignalBlocker block(w_);
          w_->setSelectedDate(value_);
        }
        ShowChoice();
        break;
      }
      default: break;
    }
  }
  return ControlView::OnEvent(watched, event);
}

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
  if (value_.isValid()) w_->setSelectedDate(value_);
  ShowChoice();
  if (shown_.isValid()) w_->setCurrentPage(shown_.year(), shown_.month());
}

void CalendarView::ShowChoice() {
  // With no day chosen the selection is drawn like any other day, unless the
  // keyboard is on the calendar: then it is the cursor, and shows.
  const bool shown = value_.isValid() || (days_ && days_->hasFocus());
  if (shown == highlighted_) return;
  highlighted_ = shown;
  QPalette pal = plain_;
  if (!shown) {
    pal.setColor(QPalette::Highlight, pal.color(QPalette::Base));
    pal.setColor(QPalette::HighlightedText, pal.color(QPalette::Text));
  }
  w_->setPalette(pal);
}

}  // namespace kuvo
