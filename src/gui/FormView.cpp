#include "gui/FormView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "core/Controls.h"
#include "core/Form.h"
#include "gui/ButtonView.h"
#include "gui/CalendarView.h"
#include "gui/ChoiceViews.h"
#include "gui/ControlView.h"
#include "gui/DesignPalette.h"
#include "gui/DrawingAreaView.h"
#include "gui/FrameView.h"
#include "gui/GridView.h"
#include "gui/KeypadView.h"
#include "gui/LabelView.h"
#include "gui/LineView.h"
#include "gui/ListViews.h"
#include "gui/PictureView.h"
#include "gui/ProgressView.h"
#include "gui/QtPlatform.h"
#include "gui/StatusView.h"
#include "gui/TextBoxView.h"
#include "gui/TimerView.h"

namespace kuvo {

namespace {

// The frame a window's outer size includes: borders and title bar, in pixels.
constexpr int kFrameWidth = 6;
constexpr int kFrameHeight = 25;

QFont FormFont(const Form& form, double zoom) {
  QFont f = QApplication::font();
  if (QFontDatabase::hasFamily(form.FontName)) f.setFamily(form.FontName);
  f.setPointSizeF((form.FontSize > 0 ? form.FontSize : 8.25) * zoom);
  return f;
}

std::unique_ptr<ControlView> MakeView(FormView& v, Control& c) {
  switch (c.Kind()) {
    case ControlKind::Label: return std::make_unique<LabelView>(v, static_cast<Label&>(c));
    case ControlKind::CommandButton:
      return std::make_unique<ButtonView>(v, static_cast<CommandButton&>(c));
    case ControlKind::TextBox: return std::make_unique<TextBoxView>(v, static_cast<TextBox&>(c));
    case ControlKind::ComboBox: return std::make_unique<ComboView>(v, static_cast<ComboBox&>(c));
    case ControlKind::ListBox: return std::make_unique<ListView>(v, static_cast<ListBox&>(c));
    case ControlKind::OptionButton:
      return std::make_unique<OptionView>(v, static_cast<OptionButton&>(c));
    case ControlKind::CheckBox: return std::make_unique<CheckView>(v, static_cast<CheckBox&>(c));
    case ControlKind::Frame: return std::make_unique<FrameView>(v, static_cast<Frame&>(c));
    case ControlKind::PictureBox:
      return std::make_unique<PictureView>(v, static_cast<PictureBox&>(c));
    case ControlKind::Image: return std::make_unique<ImageView>(v, static_cast<Image&>(c));
    case ControlKind::Line: return std::make_unique<LineView>(v, static_cast<Line&>(c));
    case ControlKind::Grid: return std::make_unique<GridView>(v, static_cast<Grid&>(c));
    case ControlKind::Toolbar: return std::make_unique<ToolbarView>(v, static_cast<Toolbar&>(c));
    case ControlKind::StatusBar: return std::make_unique<StatusView>(v, static_cast<StatusBar&>(c));
    case ControlKind::ProgressBar:
      return std::make_unique<ProgressView>(v, static_cast<ProgressBar&>(c));
    case ControlKind::Calendar: return std::make_unique<CalendarView>(v, static_cast<Calendar&>(c));
    case ControlKind::Timer: return std::make_unique<TimerView>(v, static_cast<Timer&>(c));
    case ControlKind::DrawingArea:
      return std::make_unique<DrawingAreaView>(v, static_cast<DrawingArea&>(c));
    case ControlKind::CommonDialog:
    case ControlKind::Menu: return std::make_unique<NullView>(v, c);
  }
  return std::make_unique<NullView>(v, c);
}

}  // namespace

FormView::FormView(QtPlatform& platform, Form& form)
    : QWidget(nullptr), platform_(platform), form_(form) {
  // The window keeps the design's light colours on any desktop, and paints
  // them itself, being drawn inside a frame of the main window's colours.
  setPalette(DesignPalette());
  setAutoFillBackground(true);
  setFont(FormFont(form, zoom_));
  Build();
}

FormView::~FormView() = default;

void FormView::Build() {
  resize(std::max(1, Px(form_.Width, zoom_) - kFrameWidth),
         std::max(1, Px(form_.Height, zoom_) - kFrameHeight));
  for (Control* c : form_.Controls()) controls_.push_back(MakeView(*this, *c));
  // Contained controls go into their frame or picture.
  for (auto& cv : controls_) {
    Control* box = cv->TheControl().Container;
    if (!box || !cv->Widget()) continue;
    if (ControlView* holder = ViewOfControl(*box); holder && holder->Content())
      cv->Widget()->setParent(holder->Content());
  }
  // Labels, lines and images lie under the other controls, as they do on the
  // platform where they have no window of their own.
  for (auto& cv : controls_)
    if (cv->Lightweight() && cv->Widget()) cv->Widget()->lower();
  // A label's access key goes to the control after it.
  for (size_t i = 0; i < controls_.size(); ++i) {
    if (controls_[i]->TheControl().Kind() != ControlKind::Label) continue;
    auto* label = static_cast<QLabel*>(controls_[i]->Widget());
    if (!static_cast<const Label&>(controls_[i]->TheControl()).Caption.contains(QLatin1Char('&')))
      continue;
    QWidget* buddy = label;
    for (size_t j = i + 1; j < controls_.size(); ++j)
      if (controls_[j]->Focusable() && controls_[j]->Widget()) {
        buddy = controls_[j]->Widget();
        break;
      }
    label->setBuddy(buddy);
  }
  Sync();
}

QWidget* FormView::Frame() { return sub_ ? static_cast<QWidget*>(sub_) : this; }

ControlView* FormView::ViewOfControl(const Control& control) const {
  for (const auto& cv : controls_)
    if (&cv->TheControl() == &control) return cv.get();
  return nullptr;
}

QWidget* FormView::WidgetOf(const Control& control) const {
  ControlView* cv = attached_ ? ViewOfControl(control) : nullptr;
  return cv ? cv->Widget() : nullptr;
}

void FormView::Watch(QObject* object, ControlView* view) {
  watched_.insert(object, view);
  object->installEventFilter(this);
  // A control with a MouseMove handler hears the mouse pass over it, buttons up.
  if (auto* w = qobject_cast<QWidget*>(object); w && view->TheControl().MouseMove)
    w->setMouseTracking(true);
}

bool FormView::Raise(const std::function<void()>& handler) {
  if (!attached_) return false;
  platform_.Run(handler);
  return attached_;
}

void FormView::ShowWindow(bool modal) {
  if (!attached_) return;
  if (!placed_) {
    placed_ = true;
    geometry_ = QRect();
    QMdiArea* area = platform_.WorkArea();
    if (form_.MDIChild && !modal && area) {
      sub_ = area->addSubWindow(this, Qt::SubWindow | Qt::CustomizeWindowHint |
                                          Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                          Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
      sub_->setAttribute(Qt::WA_DeleteOnClose, false);
      sub_->installEventFilter(this);
    } else {
      setParent(platform_.MainWidget(), Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                            Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    }
  }
  if (!sub_ && modal != modal_) {
    modal_ = modal;
    const bool shown = isVisible();
    if (shown) hide();
    setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
  }
  SyncWindow();
  Frame()->show();
  Frame()->raise();
  if (sub_ && platform_.WorkArea())
    platform_.WorkArea()->setActiveSubWindow(sub_);
  else
    activateWindow();
  visible_ = true;
  Sync();
  FocusFirstControl();
}

void FormView::FocusFirstControl() {
  // The keyboard starts on the window's first control, as on the platform, and
  // not on the menu or the window that opened it.
  const QWidget* now = QApplication::focusWidget();
  if (now && isAncestorOf(now)) return;
  for (QWidget* w = nextInFocusChain(); w && w != this; w = w->nextInFocusChain())
    if (isAncestorOf(w) && (w->focusPolicy() & Qt::TabFocus) && w->isEnabled() &&
        w->isVisibleTo(this) && !w->focusProxy()) {
      w->setFocus(Qt::TabFocusReason);
      return;
    }
}

QRect FormView::Room() const {
  QMdiArea* area = platform_.WorkArea();
  const bool child = sub_ || (!placed_ && form_.MDIChild && area);
  const QScreen* screen = QGuiApplication::primaryScreen();
  const QRect desk = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
  if (!child) return desk;
  QWidget* main = platform_.MainWidget();
  if (!area || !main) return QRect(QPoint(0, 0), desk.size());
  // The work area of the main window maximised on the screen: the screen less
  // the main window's title, menu, tool and status bars. The window manager
  // may not have maximised it yet, so the bars are measured, not the area.
  const QRect outer = main->frameGeometry();
  const bool framed = main->isVisible() && outer.height() > main->height();
  // The area's inside, without the scroll bars a larger window may have shown.
  QSize inside = area->viewport()->size();
  if (area->verticalScrollBar()->isVisible()) inside.rwidth() += area->verticalScrollBar()->width();
  if (area->horizontalScrollBar()->isVisible())
    inside.rheight() += area->horizontalScrollBar()->height();
  const int bars = (framed ? outer.height() : main->height() + kFrameHeight) - inside.height();
  const int sides = (framed ? outer.width() : main->width() + kFrameWidth) - inside.width();
  // A pixel each way is kept for the rounding of scaled screens.
  return QRect(0, 0, desk.width() - std::max(0, sides) - 1, desk.height() - std::max(0, bars) - 1);
}

void FormView::ApplyGeometry() {
  const QRect room = Room();
  // A window larger than its room is drawn smaller, fonts and all, so that all
  // of it can be seen and used.
  const double width = Px(form_.Width), height = Px(form_.Height);
  double zoom = 1.0;
  if (width > room.width() && width > 0) zoom = std::min(zoom, room.width() / width);
  if (height > room.height() && height > 0) zoom = std::min(zoom, room.height() / height);
  zoom = std::max(0.5, std::floor(zoom * 1000) / 1000);
  while (zoom > 0.5 &&
         (Px(form_.Width, zoom) > room.width() || Px(form_.Height, zoom) > room.height()))
    zoom -= 0.001;
  if (zoom != zoom_) {
    zoom_ = zoom;
    setFont(FormFont(form_, zoom_));
  }
  QRect r(Px(form_.Left, zoom_), Px(form_.Top, zoom_), Px(form_.Width, zoom_),
          Px(form_.Height, zoom_));
  // Kept inside its room, so that no part of it lies out of reach.
  r.moveLeft(
      std::clamp(r.left(), room.left(), std::max(room.left(), room.right() + 1 - r.width())));
  r.moveTop(std::clamp(r.top(), room.top(), std::max(room.top(), room.bottom() + 1 - r.height())));
  if (r == geometry_) return;
  geometry_ = r;
  if (sub_) {
    // The frame fixes the size; the view inside fills whatever it holds.
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    sub_->setFixedSize(r.size());
    sub_->move(r.topLeft());
  } else {
    setFixedSize(std::max(1, r.width() - kFrameWidth), std::max(1, r.height() - kFrameHeight));
    if (isWindow()) move(r.topLeft());
  }
}

void FormView::SyncWindow() {
  if (!captionSet_ || caption_ != form_.Caption) {
    captionSet_ = true;
    caption_ = form_.Caption;
    setWindowTitle(caption_);
    // Inside the main window the title belongs to the frame: the view is
    // named after it too.
    setAccessibleName(caption_);
    if (sub_) sub_->setWindowTitle(caption_);
  }
  ApplyGeometry();
  if (form_.Enabled != enabled_) {
    enabled_ = form_.Enabled;
    setEnabled(enabled_);
  }
  if (placed_ && form_.Visible != visible_) {
    visible_ = form_.Visible;
    Frame()->setVisible(visible_);
  }
}

void FormView::Sync() {
  if (!attached_) return;
  SyncWindow();
  for (auto& cv : controls_) cv->Sync();
}

void FormView::Detach() {
  if (!attached_) return;
  attached_ = false;
  for (auto& cv : controls_) cv->Detach();
  for (auto it = watched_.begin(); it != watched_.end(); ++it) it.key()->removeEventFilter(this);
  watched_.clear();
  if (sub_) sub_->removeEventFilter(this);
  QWidget* frame = Frame();
  frame->hide();
  frame->deleteLater();
}

void FormView::Focus(Control& control) {
  if (QWidget* w = WidgetOf(control)) w->setFocus(Qt::OtherFocusReason);
}

void FormView::RefreshNow(Control& control) {
  if (!attached_) return;
  if (ControlView* cv = ViewOfControl(control)) {
    cv->Sync();
    if (cv->Widget() && cv->Widget()->isVisible()) cv->Widget()->repaint();
  }
}

void FormView::CloseByFrame() {
  Form* form = &form_;
  Raise([form] { form->UserClose(); });
}

void FormView::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (attached_) CloseByFrame();
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  if (sub_ && watched == sub_ && event->type() == QEvent::Close) {
    event->ignore();
    if (attached_) CloseByFrame();
    return true;
  }
  if (!attached_) return false;
  ControlView* cv = watched_.value(watched);
  return cv ? cv->OnEvent(watched, event) : false;
}

}  // namespace kuvo
