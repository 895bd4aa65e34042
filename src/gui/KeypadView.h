#pragma once

#include <QSize>
#include <vector>

#include "gui/ControlView.h"

class QKeyEvent;
class QToolButton;

namespace kuvo {

class FocusRing;

// A toolbar inside a window: a row of picture buttons, or for a keypad a grid
// of keys ten to a row, whose faces show the key plain or marked by its image
// number. A click on a key raises ButtonClick with that key.
//
// A keypad is one stop of the Tab chain. Within it a cursor, drawn as a ring
// around its key, moves with the arrow keys (left and right along the keys, up
// and down by rows, Home and End to the first and last key), passing over keys
// that are disabled or hidden; Space or Enter presses the key under it, as a
// click does. For a screen reader each key is a button named by its number
// ("Numéro 12", "Chance 3"), checked while its face shows it marked, and the
// cursor's key is the one with the focus.
class ToolbarView : public ControlView {
 public:
  ToolbarView(FormView& v, Toolbar& c);
  QWidget* Widget() const override;
  bool Focusable() const override { return c_.IsKeypad; }
  bool OnEvent(QObject* watched, QEvent* event) override;

  // The key under the keyboard cursor, from 1; 0 when there is none.
  int Cursor() const { return cursor_; }

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
  // The click of key `index`, from the mouse, the keyboard or a screen reader.
  void Press(int index);
  // A key the cursor may stand on: shown, enabled, not a separator.
  bool Usable(int index) const;
  // The usable key reached from `from` by steps of `step`; `from` when none.
  int Walk(int from, int step) const;
  bool KeyFromKeyboard(const QKeyEvent& e);
  void MoveCursor(int index);
  // Puts the cursor on a usable key, the nearest after the one it was on.
  void KeepCursorUsable();
  void ShowCursor();
  QString KeyName(int index) const;

  Toolbar& c_;
  QWidget* w_;
  FocusRing* ring_;
  std::vector<Key> keys_;
  QSize laidOut_;
  int revision_ = -1;
  int perRow_ = 1;
  int cursor_ = 0;
};

}  // namespace kuvo
