#pragma once

#include <QDate>

#include "gui/ControlView.h"

class QCalendarWidget;

namespace kuvo {

// A calendar: the month shown, the day chosen if any, in the regional
// language; a click on a day goes through the control's UserPick.
class CalendarView : public ControlView {
 public:
  CalendarView(FormView& v, Calendar& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override;

 private:
  Calendar& c_;
  QCalendarWidget* w_;
  QPalette plain_;
  QDate value_, shown_;
  bool first_ = true;
  int narrow_ = -1;
};

}  // namespace kuvo
