#pragma once

class QWidget;

namespace kuvo {

class Form;
class Control;

// What the platform asks of the view of a window, whatever its kind.
class FormWindow {
 public:
  virtual ~FormWindow() = default;
  virtual Form& TheForm() const = 0;
  // The widget that is the window on screen: top-level, sub-window or main window.
  virtual QWidget* Frame() = 0;
  // Puts the window on screen; a modal one blocks the others.
  virtual void ShowWindow(bool modal) = 0;
  // Brings the widgets in step with the state, touching only what changed.
  virtual void Sync() = 0;
  // The window is being unloaded: forget its controls and go away.
  virtual void Detach() = 0;
  virtual void Focus(Control& control) = 0;
  // Syncs one control and paints it at once.
  virtual void RefreshNow(Control& control) = 0;
};

}  // namespace kuvo
