#pragma once

#include "gui/ControlView.h"

class QLineEdit;
class QPlainTextEdit;

namespace kuvo {

// A text box, one line or several: typing goes through KeyPress, which may
// refuse or change the key, then Change.
class TextBoxView : public ControlView {
 public:
  TextBoxView(FormView& v, TextBox& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return true; }
  bool OnEvent(QObject* watched, QEvent* event) override;

 protected:
  void SyncOwn() override;

 private:
  TextBox& c_;
  QLineEdit* line_ = nullptr;
  QPlainTextEdit* multi_ = nullptr;
  QString text_;
  bool first_ = true;
  bool syncing_ = false;
};

}  // namespace kuvo
