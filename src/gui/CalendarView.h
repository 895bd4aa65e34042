#pragma once

#include <QDate>

#include "gui/ControlView.h"

class QAbstractItemView;
class QCalendarWidget;

namespace kuvo {

// A calendar: the month shown, the day chosen if any, in the regional
// language; a click on a day goes through the control's UserPick. From the
// keyboard, the arrow keys move a cursor over the days and Space or Enter
// clicks the day under it.
class CalendarView : public ControlView {
 public:
  CalendarView(FormView& v, Calendar& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }
  bool OnEvent(QObject* watched, QEvent* event) override;

 protected:
  void SyncOwn() override;

 private:
  void ShowChoice();

  Calendar& c_;
  QCalendarWidget* w_;
  QAbstractItemView* days_ = nullptr;
  QPalette plain_;
  QDate value_, shown_;
  bool first_ = true;
  bool highlighted_ = true;
  int narrow_ = -1;
};

}  // namespace kuvo
