#pragma once

#include <QHash>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "gui/FormWindow.h"
#include "gui/Twips.h"

class QMdiSubWindow;

namespace kuvo {

class Form;
class Control;
class QtPlatform;
class ControlView;

// The view of any window: one view per control (each kind in its own file),
// placed from its twips, rendering the control's state and forwarding the
// user's actions as events. An MDI child goes into the main window's work
// area, any other window stands on its own.
class FormView : public QWidget, public FormWindow {
 public:
  FormView(QtPlatform& platform, Form& form);
  ~FormView() override;

  Form& TheForm() const override { return form_; }
  QWidget* Frame() override;
  void ShowWindow(bool modal) override;
  void Sync() override;
  void Detach() override;
  void Focus(Control& control) override;
  void RefreshNow(Control& control) override;

  bool Attached() const { return attached_; }
  // The widget that shows a control (null for controls with nothing visible).
  QWidget* WidgetOf(const Control& control) const;
  QtPlatform& Platform() const { return platform_; }
  // Below 1 when the window is drawn smaller, fonts included, to fit the room
  // it stands in (the main window's work area, or the screen).
  double Zoom() const { return zoom_; }

  // Runs a user event on this window; false when the window went away meanwhile.
  bool Raise(const std::function<void()>& handler);
  // Routes the mouse, key and focus events of a control's widget.
  void Watch(QObject* object, ControlView* view);

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void SyncWindow();
  void ApplyGeometry();
  // The room the window stands in: the work area for a child window, the
  // screen for another; its top left corner is where the window's place counts from.
  QRect Room() const;
  void CloseByFrame();
  void FocusFirstControl();
  ControlView* ViewOfControl(const Control& control) const;

  QtPlatform& platform_;
  Form& form_;
  bool attached_ = true;
  bool placed_ = false;
  bool modal_ = false;
  QPointer<QMdiSubWindow> sub_;
  std::vector<std::unique_ptr<ControlView>> controls_;
  QHash<QObject*, ControlView*> watched_;

  // What was last pushed to the window, so that only changes are applied.
  QString caption_;
  bool captionSet_ = false;
  QRect geometry_;
  double zoom_ = 1.0;
  bool visible_ = false;
  bool enabled_ = true;
};

}  // namespace kuvo
