#pragma once

#include <QColor>
#include <QPalette>
#include <QPointF>
#include <QRect>
#include <QString>
#include <functional>
#include <memory>

#include "core/Controls.h"
#include "gui/Twips.h"

class QEvent;
class QKeyEvent;
class QObject;
class QWidget;

namespace kuvo {

class FormView;

// One control on screen: its widget, the state last pushed to it, and the
// user's actions on it turned into the control's events. Each kind of control
// has its view in a file of its own; the form view creates and places them.
class ControlView {
 public:
  ControlView(FormView& view, Control& c);
  virtual ~ControlView();
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  Control& TheControl() const { return c_; }
  // The widget showing the control; null for controls with nothing to show.
  virtual QWidget* Widget() const = 0;
  // Where the controls it contains go.
  virtual QWidget* Content() const { return Widget(); }
  // Labels, lines and images lie under the other controls.
  virtual bool Lightweight() const { return false; }
  // Can take the focus (the target of a label's access key).
  virtual bool Focusable() const { return false; }

  // Brings the widget in step with the control: placement, then its own state.
  void Sync();
  // The window is going: no more signals, no more reads of the control.
  virtual void Detach();

  // Mouse, key and focus events of the watched widgets; true to consume.
  virtual bool OnEvent(QObject* watched, QEvent* event);

 protected:
  virtual void SyncOwn() = 0;
  virtual QRect DesignRect() const;
  // Mouse position in the control's unit.
  virtual QPointF Units(QObject* watched, QPointF pos) const;
  // True for controls whose Click comes from a plain mouse click on them.
  virtual bool ClickFromMouse() const { return false; }
  // Context of the widget's signal connections: gone once the view detaches.
  QObject* Guard() const { return guard_.get(); }
  // Twips to pixels at the window's zoom, and the twips in one pixel.
  int Px(double twips) const;
  double TwipsPerPx() const;
  // Runs a handler of the control as a user event; false when the window went
  // or the control is out of the user's reach.
  bool Raise(const std::function<void()>& handler);
  // Routes the mouse, key and focus events of a widget to OnEvent.
  void Watch(QObject* object);
  // Space, Enter or Select with no modifier but the keypad's: the keys that
  // press what has the focus.
  static bool IsPressKey(const QKeyEvent& e);

  FormView& view_;
  Control& c_;

 private:
  void SyncPlacement();
  std::unique_ptr<QObject> guard_;
  bool first_ = true;
  QRect rect_;
  bool enabled_ = true, visible_ = true;
  QString tip_;
};

// Controls with nothing on screen: dialogs and menus.
class NullView : public ControlView {
 public:
  using ControlView::ControlView;
  QWidget* Widget() const override { return nullptr; }

 protected:
  void SyncOwn() override {}
};

// The mouse buttons and the Shift, Ctrl and Alt keys as the mouse events give
// them: 1, 2, 4 for left, right, middle; 1, 2, 4 for Shift, Ctrl, Alt.
Int16 ButtonCode(Qt::MouseButtons b);
Int16 ShiftCode(Qt::KeyboardModifiers m);

// Colours are kept blue-green-red.
QColor Colour(unsigned bgr);
// The background of a control: the system's face colour stands for the
// platform's own window colour.
void ApplyBackColour(QWidget* w, unsigned bgr, QPalette::ColorRole role = QPalette::Window);
// The character code a key gives, as KeyPress sees it; 0 for keys without one.
int KeyAscii(const QKeyEvent* e);

}  // namespace kuvo
