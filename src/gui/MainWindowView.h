#pragma once

#include <QMainWindow>
#include <QString>
#include <vector>

#include "gui/FormWindow.h"

class QAction;
class QLabel;
class QMdiArea;
class QMenu;
class QToolBar;

namespace kuvo {

class Form;
class Menu;
class Toolbar;
class StatusBar;
class QtPlatform;

// The view of the main window: its menu bar built from its Menu controls, its
// toolbar, its status bar panels and the work area of the child windows.
class MainWindowView : public QMainWindow, public FormWindow {
 public:
  MainWindowView(QtPlatform& platform, Form& form);
  ~MainWindowView() override;

  Form& TheForm() const override { return form_; }
  QWidget* Frame() override { return this; }
  void ShowWindow(bool modal) override;
  void Sync() override;
  void Detach() override;
  void Focus(Control& control) override;
  void RefreshNow(Control& control) override;

  QMdiArea* WorkArea() const { return area_; }
  QToolBar* ToolBar() const { return toolbar_; }
  // The texts shown in the status bar panels, in order.
  QStringList PanelTexts() const;
  // The action of a menu entry, for tests and for the menu bar.
  QAction* ActionOf(const Menu& menu) const;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  struct MenuEntry {
    Menu* menu;
    QAction* action;  // the entry, or the title action of a submenu
    QMenu* submenu;   // null for a plain entry
    QString caption;
    bool enabled, visible, checked;
  };
  struct ToolEntry {
    int index;  // from 1
    QAction* action;
    int image;
  };
  void BuildMenus();
  void BuildToolbar();
  void BuildStatusBar();
  void SyncMenus();
  void SyncToolbar();
  void SyncPanels();
  bool Raise(const std::function<void()>& handler);

  QtPlatform& platform_;
  Form& form_;
  bool attached_ = true;
  bool placed_ = false;
  QMdiArea* area_ = nullptr;
  QToolBar* toolbar_ = nullptr;
  Toolbar* bar_ = nullptr;
  StatusBar* status_ = nullptr;
  std::vector<MenuEntry> menus_;
  std::vector<ToolEntry> tools_;
  std::vector<QLabel*> panels_;
  int toolRevision_ = -1;
  QString caption_;
  bool enabled_ = true;
};

}  // namespace kuvo
