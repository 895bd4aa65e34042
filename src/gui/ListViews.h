#pragma once

#include <QStringList>

#include "gui/ControlView.h"

class QComboBox;
class QListWidget;

namespace kuvo {

// A combo box: a drop-down list, editable unless its style is 2. A pick from
// the list goes through the control's UserPick, typing through Change.
class ComboView : public ControlView {
 public:
  ComboView(FormView& v, ComboBox& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override;

 private:
  void SetEditable(bool editable);
  ComboBox& c_;
  QComboBox* w_;
  QStringList items_;
  int index_ = -2;
  bool first_ = true;
};

// A list box: one pick at a time, by the mouse or the keyboard, through the
// control's UserPick; a double click raises DblClick.
class ListView : public ControlView {
 public:
  ListView(FormView& v, ListBox& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }
  bool OnEvent(QObject* watched, QEvent* event) override;

 protected:
  void SyncOwn() override;

 private:
  ListBox& c_;
  QListWidget* w_;
  QStringList items_;
  int index_ = -2;
  bool first_ = true;
  bool picked_ = false;
};

}  // namespace kuvo
