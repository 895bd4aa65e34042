#include "gui/MainWindowView.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include "core/Controls.h"
#include "core/Form.h"
#include "core/Program.h"
#include "gui/DesignPalette.h"
#include "gui/FormView.h"
#include "gui/Pictures.h"
#include "gui/QtPlatform.h"

namespace kuvo {

MainWindowView::MainWindowView(QtPlatform& platform, Form& form)
    : QMainWindow(nullptr), platform_(platform), form_(form) {
  // The design's light colours, as in every window of the program.
  setPalette(DesignPalette());
  area_ = new QMdiArea(this);
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setBackground(QColor(128, 128, 128));
  setCentralWidget(area_);
  for (Control* c : form.Controls()) {
    if (c->Kind() == ControlKind::Toolbar && !bar_) bar_ = static_cast<Toolbar*>(c);
    if (c->Kind() == ControlKind::StatusBar && !status_) status_ = static_cast<StatusBar*>(c);
  }
  BuildMenus();
  BuildToolbar();
  BuildStatusBar();
  Sync();
}

MainWindowView::~MainWindowView() = default;

bool MainWindowView::Raise(const std::function<void()>& handler) {
  if (!attached_) return false;
  platform_.Run(handler);
  return attached_;
}

void MainWindowView::BuildMenus() {
  // Entries come in design order; an entry whose parent is null belongs to
  // the menu bar, and one that heads no entry is a command of the bar itself.
  std::vector<Menu*> all;
  for (Control* c : form_.Controls())
    if (c->Kind() == ControlKind::Menu) all.push_back(static_cast<Menu*>(c));
  auto hasChildren = [&all](const Menu* m) {
    for (const Menu* other : all)
      if (other->ParentMenu == m) return true;
    return false;
  };
  std::vector<std::pair<const Menu*, QMenu*>> submenus;
  auto submenuOf = [&submenus](const Menu* m) -> QMenu* {
    for (auto& [menu, sub] : submenus)
      if (menu == m) return sub;
    return nullptr;
  };
  for (Menu* m : all) {
    QMenu* parentMenu = m->ParentMenu ? submenuOf(m->ParentMenu) : nullptr;
    if (m->ParentMenu && !parentMenu) continue;
    MenuEntry e{m, nullptr, nullptr, QString(), true, true, false};
    if (hasChildren(m)) {
      e.submenu = parentMenu ? parentMenu->addMenu(m->Caption) : menuBar()->addMenu(m->Caption);
      e.submenu->setPalette(DesignPalette());
      e.action = e.submenu->menuAction();
      submenus.emplace_back(m, e.submenu);
    } else if (m->Caption == QLatin1String("-")) {
      e.action = parentMenu ? parentMenu->addSeparator() : menuBar()->addSeparator();
    } else {
      e.action = new QAction(m->Caption, this);
      if (parentMenu)
        parentMenu->addAction(e.action);
      else
        menuBar()->addAction(e.action);
      QObject::connect(e.action, &QAction::triggered, this,
                       [this, m] { Raise([m] { m->UserClick(); }); });
    }
    e.caption = m->Caption;
    menus_.push_back(e);
  }
}

void MainWindowView::BuildToolbar() {
  if (!bar_) return;
  toolbar_ = addToolBar(QString());
  toolbar_->setMovable(false);
  toolbar_->setFloatable(false);
  toolbar_->toggleViewAction()->setVisible(false);
  const int height = bar_->Height > 0 ? Px(bar_->Height) : 36;
  const int icon = std::max(16, height - 12);
  toolbar_->setIconSize(QSize(icon, icon));
  const Toolbar& bar = *bar_;
  for (int i = 1; i <= bar.ButtonCount(); ++i) {
    const ToolbarButton& b = bar.Buttons(i);
    if (b.Style == 3) {
      tools_.push_back({i, toolbar_->addSeparator(), 0});
      continue;
    }
    QAction* a = toolbar_->addAction(ToolbarIcon(b.Image), b.ToolTipText);
    a->setToolTip(b.ToolTipText);
    Toolbar* target = bar_;
    QObject::connect(a, &QAction::triggered, this,
                     [this, target, i] { Raise([target, i] { target->UserClick(i); }); });
    tools_.push_back({i, a, b.Image});
  }
}

void MainWindowView::BuildStatusBar() {
  if (!status_) return;
  for (int i = 1; i <= status_->PanelCount(); ++i) {
    auto* label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    statusBar()->addWidget(label, 1);
    panels_.push_back(label);
  }
}

void MainWindowView::SyncMenus() {
  for (MenuEntry& e : menus_) {
    const Menu& m = *e.menu;
    if (m.Caption != e.caption) {
      e.caption = m.Caption;
      if (m.Caption != QLatin1String("-")) e.action->setText(m.Caption);
    }
    if (m.Enabled != e.enabled) {
      e.enabled = m.Enabled;
      e.action->setEnabled(m.Enabled);
    }
    if (m.Visible != e.visible) {
      e.visible = m.Visible;
      e.action->setVisible(m.Visible);
    }
    if (m.Checked != e.checked && !e.submenu) {
      e.checked = m.Checked;
      e.action->setCheckable(m.Checked || e.action->isCheckable());
      e.action->setChecked(m.Checked);
    }
  }
}

void MainWindowView::SyncToolbar() {
  if (!bar_ || !toolbar_) return;
  if (bar_->Revision == toolRevision_) return;
  toolRevision_ = bar_->Revision;
  const Toolbar& bar = *bar_;
  if (bar.Visible != toolbar_->isVisibleTo(this)) toolbar_->setVisible(bar.Visible);
  if (bar.Enabled != toolbar_->isEnabled()) toolbar_->setEnabled(bar.Enabled);
  for (ToolEntry& t : tools_) {
    if (t.index > bar.ButtonCount() || t.action->isSeparator()) continue;
    const ToolbarButton& b = bar.Buttons(t.index);
    if (b.Image != t.image) {
      t.image = b.Image;
      t.action->setIcon(ToolbarIcon(b.Image));
    }
    if (t.action->toolTip() != b.ToolTipText) t.action->setToolTip(b.ToolTipText);
    if (t.action->isEnabled() != b.Enabled) t.action->setEnabled(b.Enabled);
    if (t.action->isVisible() != b.Visible) t.action->setVisible(b.Visible);
  }
}

void MainWindowView::SyncPanels() {
  if (!status_) return;
  const StatusBar& bar = *status_;
  for (int i = 1; i <= bar.PanelCount() && i <= static_cast<int>(panels_.size()); ++i) {
    QLabel* l = panels_[static_cast<size_t>(i - 1)];
    if (l->text() != bar.Panels(i).Text) l->setText(bar.Panels(i).Text);
  }
  if (bar.Visible != statusBar()->isVisibleTo(this)) statusBar()->setVisible(bar.Visible);
}

void MainWindowView::Sync() {
  if (!attached_) return;
  if (caption_ != form_.Caption || windowTitle() != form_.Caption) {
    caption_ = form_.Caption;
    setWindowTitle(caption_);
  }
  if (enabled_ != form_.Enabled) {
    enabled_ = form_.Enabled;
    setEnabled(enabled_);
  }
  SyncMenus();
  SyncToolbar();
  SyncPanels();
  // Hidden by its code, the main window takes its child windows with it.
  if (placed_ && form_.Visible != isVisible()) setVisible(form_.Visible);
}

void MainWindowView::ShowWindow(bool) {
  if (!attached_) return;
  // The main window takes the whole screen, maximised by the window manager
  // so that its title bar stays in reach: the child windows place themselves
  // by the screen's size.
  Sync();
  if (!placed_) {
    placed_ = true;
    resize(Px(form_.Width), Px(form_.Height));
    showMaximized();
  } else {
    show();
  }
  raise();
  activateWindow();
}

void MainWindowView::Detach() {
  if (!attached_) return;
  attached_ = false;
  menus_.clear();
  tools_.clear();
  bar_ = nullptr;
  status_ = nullptr;
  hide();
  deleteLater();
}

void MainWindowView::Focus(Control&) { activateWindow(); }

void MainWindowView::RefreshNow(Control&) {
  Sync();
  repaint();
}

QStringList MainWindowView::PanelTexts() const {
  QStringList out;
  for (const QLabel* l : panels_) out << l->text();
  return out;
}

QAction* MainWindowView::ActionOf(const Menu& menu) const {
  for (const MenuEntry& e : menus_)
    if (e.menu == &menu) return e.action;
  return nullptr;
}

void MainWindowView::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (!attached_) return;
  // Closed by its frame: the child windows go, then the main window, then the
  // program ends.
  Form* main = &form_;
  Raise([main] { main->UserClose(); });
}

}  // namespace kuvo
