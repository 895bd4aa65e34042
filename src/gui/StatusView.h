#pragma once

#include <vector>

#include "gui/ControlView.h"

class QLabel;

namespace kuvo {

// A status bar inside a window: its panels side by side, each showing its text.
class StatusView : public ControlView {
 public:
  StatusView(FormView& v, StatusBar& c);
  QWidget* Widget() const override;

 protected:
  QRect DesignRect() const override;
  void SyncOwn() override;

 private:
  StatusBar& c_;
  QWidget* w_;
  std::vector<QLabel*> panels_;
  int width_ = -1;
};

}  // namespace kuvo
