#pragma once

#include <QSize>
#include <vector>

#include "gui/ControlView.h"

class QToolButton;

namespace kuvo {

// A toolbar inside a window: a row of picture buttons, or for a keypad a grid
// of keys ten to a row, whose faces show the key plain or marked by its image
// number. A click on a key raises ButtonClick with that key.
class ToolbarView : public ControlView {
 public:
  ToolbarView(FormView& v, Toolbar& c);
  QWidget* Widget() const override;

 protected:
  QRect DesignRect() const override;
  void SyncOwn() override;

 private:
  struct Key {
    QToolButton* button = nullptr;
    int image = -1;
  };

  void Rebuild();
  QToolButton* MakeButton(int index);

  Toolbar& c_;
  QWidget* w_;
  std::vector<Key> keys_;
  QSize laidOut_;
  int revision_ = -1;
};

}  // namespace kuvo
